// The report kit: definitions read from z_report, laid out over a dataset
// and written as PDF (read back with pdftotext), pages that break with the
// header repeated and numbered, layouts built in code, preview and print,
// and the messages of templates that cannot be used. On both engines.
#include <QApplication>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QRawFont>
#include <QFontDatabase>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "data/MidasQuery.h"
#include "report/Report.h"
#include "report/ReportTemplate.h"
#include "Corpus.h"
#include "Fixtures.h"
#include "ScreenHarness.h"

using namespace tarvin::test;
using tarvin::report::EReportError;
using tarvin::report::TReport;
using tarvin::report::TReportBand;
using tarvin::report::TReportLayout;

namespace {

const QString kAlarmList = QStringLiteral("报警提醒清单");

// A CJK font gives one glyph to several code points (an ideograph and its
// radical forms), and the PDF writer names each glyph by the lowest of
// them: 用 comes back as the Kangxi radical ⽤, 页 as the radical ⻚, 户 as
// ⼾. Texts are compared as the font sees them: every character replaced by
// the lowest code point that shares its glyph, then NFKC-normalised (which
// also makes ： a plain colon).
QString asTheFontSeesIt(const QString& s) {
    static const std::vector<char16_t> canonical = [] {
        std::vector<char16_t> m(0x10000);
        tarvin::report::TReportFont song;
        song.family = QStringLiteral("宋体");
        const QRawFont raw = QRawFont::fromFont(tarvin::report::MakeFont(song), QFontDatabase::SimplifiedChinese);
        QHash<quint32, char16_t> first;
        for (char32_t c = 0; c < 0x10000; ++c) {
            m[c] = char16_t(c);
            if (c < 0x80 || (c >= 0xD800 && c < 0xE000)) continue;
            const QList<quint32> g = raw.glyphIndexesForString(QString(QChar(char16_t(c))));
            if (g.isEmpty() || !g[0]) continue;
            const auto it = first.constFind(g[0]);
            if (it == first.constEnd()) first.insert(g[0], char16_t(c));
            else m[c] = *it;
        }
        return m;
    }();
    QString out = s;
    for (QChar& c : out) c = QChar(canonical[c.unicode()]);
    return out.normalized(QString::NormalizationForm_KC);
}

// The text of a PDF (one page, or all), normalised as above; pdftotext ends
// each page with a form feed.
QString pdfText(const QString& path, int page = 0) {
    QProcess p;
    QStringList args{QStringLiteral("-enc"), QStringLiteral("UTF-8")};
    if (page > 0) args << QStringLiteral("-f") << QString::number(page) << QStringLiteral("-l") << QString::number(page);
    p.start(QStringLiteral("pdftotext"), args << path << QStringLiteral("-"));
    EXPECT_TRUE(p.waitForFinished(30000)) << "pdftotext (poppler-utils) must be installed";
    return asTheFontSeesIt(QString::fromUtf8(p.readAllStandardOutput()));
}
// Without white space, and normalised as pdfText is.
QString squeezed(const QString& s) { return asTheFontSeesIt(s).remove(QRegularExpression(QStringLiteral("\\s+"))); }
bool has(const QString& flat, const QString& s) { return flat.contains(squeezed(s)); }

class ReportKit : public EngineTest {
protected:
    void SetUp() override {
        db = std::make_unique<TestDatabase>(dialect());
        // One operator whose post grants the alarm-handling code, with the
        // kinds 02 and 04 switched on.
        units(*db);
        grant(*db, "0101002", {"40099"});
        for (const char* k : {"02", "04"}) db->exec("insert into e_bjxz (czydm, bjdm, sfyx) values ('0101002', ?, '是')", {QLatin1String(k)});
    }
    // `n` open alarms of kind 02 for customers 1 .. n, every third with a
    // reminder date, their texts numbered so that each row differs. Long
    // texts wrap and stretch their rows (and pdftotext then interleaves the
    // columns' lines).
    void addAlarms(int n, bool longTexts = false) {
        static const char* names[] = {"南江市宏达机械制造有限公司", "南江市青禾食品厂", "南江市城东污水处理厂", "南江市华亿建材有限公司",
                                      "南江市第二人民医院", "南江市金穗米业有限公司", "南江市恒通物流园", "南江市瑞丰纺织有限公司"};
        const QString text = longTexts ? QStringLiteral("专变客户本月电量较上月大幅波动，请核实计量装置运行情况、客户生产经营情况及是否存在窃电嫌疑，编号")
                                       : QStringLiteral("专变客户本月抄见电量为零（上月12345千瓦时），变压器无停用记录");
        for (int i = 1; i <= n; ++i) {
            const QString hh = QStringLiteral("%1").arg(i, 10, 10, QLatin1Char('0'));
            customer(*db, hh, QString::fromUtf8(names[i % 8]), QStringLiteral("南江市城区解放路%1号").arg(i));
            db->exec("insert into e_bjtx (ny, hh, bjdm, bjxm, dw, zt, txrq) values ('202501', ?, '02', ?, '0101', '未处理', ?)",
                     {hh, text + QString::number(i),
                      i % 3 == 0 ? QVariant(QStringLiteral("2025-01-%1 09:30:00").arg(i % 28 + 1, 2, 10, QLatin1Char('0'))) : QVariant()});
        }
    }
    // The alarm screen's list, as it runs it (the corpus's text).
    void openList(TMidasQuery& q) {
        q.SQL().SetText(corpus::entry("9.3/Mqry_Bj").lines.join(u'\n'));
        q.ParamByName("dw").SetAsString("0101");
        q.ParamByName("czydm").SetAsString("0101002");
        q.Open();
    }
    // The alarm list from z_report over that list, with the screen's variables.
    void alarmReport(TReport& r, TMidasQuery& q) {
        openList(q);
        r.LoadFromDatabase(kAlarmList);
        r.Variables().Clear();
        for (const char* v : {"Dwdm='0101'", "Dwmc='城区供电分公司'", "Czydm='0101002'"}) r.Variables().Add(v);
        r.SetDataSet(&q);
    }
    std::unique_ptr<TestDatabase> db;
    QTemporaryDir dir;
};

TEST_P(ReportKit, TheAlarmListFromZReportPrintsTheVariablesAndEveryRow) {
    addAlarms(6);
    TMidasQuery q;
    TReport r;
    alarmReport(r, q);
    ASSERT_EQ(q.RecordCount(), 6);
    q.SetRecNo(4);
    const QString pdf = dir.filePath("list.pdf");
    r.ExportPdf(pdf);
    EXPECT_EQ(q.RecNo(), 4) << "printing leaves the list's current row alone";

    const QString text = pdfText(pdf);
    const QString flat = squeezed(text);
    for (const char* s : {"报警提醒清单", "单位：城区供电分公司", "操作员：0101002", "年月", "户名", "提醒日期", "共6条报警", "第1页共1页"})
        EXPECT_TRUE(has(flat, QString::fromUtf8(s))) << s << "\n" << text.toStdString();
    for (q.First(); !q.Eof(); q.Next()) {
        for (const char* f : {"HH", "HM", "BJXM"}) EXPECT_TRUE(has(flat, q.FieldByName(f).AsString())) << f << " of row " << q.RecNo();
        EXPECT_TRUE(q.FieldByName("TXRQ").IsNull() || flat.contains(q.FieldByName("TXRQ").AsDateTime().toString("yyyy-MM-dd")))
            << "reminder date of row " << q.RecNo();
    }
    EXPECT_EQ(flat.count(QStringLiteral("202501")), 6) << "the month of each row";
    EXPECT_FALSE(text.contains(QStringLiteral("09:30"))) << "reminder dates print without their time";

    // The picture of the first page that the documentation shows.
    const QImage page = r.RenderPage(0, 110);
    EXPECT_EQ(page.width(), 909);  // A4 at 110 dpi
    int ink = 0;
    for (int y = 0; y < page.height(); y += 4)
        for (int x = 0; x < page.width(); x += 4) ink += page.pixelColor(x, y).lightness() < 128;
    EXPECT_GT(ink, 200) << "the page carries text and rules";
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(page, "alarm-list-report");
}

TEST_P(ReportKit, RowsFlowOverNumberedPagesWithTheHeaderOnEachAndPreviewAndPrintShowThem) {
    // The page count also tests the measured heights of the stretched rows.
    addAlarms(90, true);
    TMidasQuery q;
    TReport r;
    alarmReport(r, q);
    ASSERT_EQ(q.RecordCount(), 90);
    const int pages = r.PageCount();
    ASSERT_GE(pages, 3);
    const QString pdf = dir.filePath("long.pdf");
    r.ExportPdf(pdf);
    ASSERT_EQ(pdfText(pdf).count(QLatin1Char('\f')), pages);

    QStringList seen;
    for (int p = 1; p <= pages; ++p) {
        const QString text = pdfText(pdf, p);
        const QString flat = squeezed(text);
        EXPECT_TRUE(has(flat, "户号") && has(flat, "报警内容")) << "column titles on page " << p;
        EXPECT_TRUE(has(flat, QStringLiteral("第%1页共%2页").arg(p).arg(pages))) << "page " << p << "\n" << flat.toStdString();
        EXPECT_EQ(has(flat, "报警提醒清单"), p == 1) << "the title is on the first page only";
        EXPECT_EQ(has(flat, "共90条报警"), p == pages) << "the summary follows the last row";
        // Accounts are the ten-digit numbers standing alone.
        for (auto it = QRegularExpression(QStringLiteral("(?<!\\d)\\d{10}(?!\\d)")).globalMatch(text); it.hasNext();)
            seen << it.next().captured(0);
    }
    QStringList expected;
    for (q.First(); !q.Eof(); q.Next()) expected << q.FieldByName("HH").AsString();
    EXPECT_EQ(seen, expected) << "every row once, in the dataset's order";

    // Preview and print show the same pages.
    int shown = -1;
    QString title;
    onNextModal([&](QWidget* w) {
        title = w->windowTitle();
        if (auto* view = w->findChild<QPrintPreviewWidget*>()) {
            view->updatePreview();
            QApplication::processEvents();
            shown = view->pageCount();
        }
        w->close();
    });
    r.Preview();
    EXPECT_EQ(title, kAlarmList);
    EXPECT_EQ(shown, pages) << "pages in the preview (-1: no preview shown)";

    // Printing honours the page range chosen in the print dialog.
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(dir.filePath("printed.pdf"));
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 2);
    r.PrintTo(printer);
    const QString printed = pdfText(dir.filePath("printed.pdf"));
    EXPECT_EQ(printed.count(QLatin1Char('\f')), 1) << "pages printed";
    EXPECT_TRUE(has(squeezed(printed), QStringLiteral("第2页共%1页").arg(pages)));
}

TEST_P(ReportKit, ALayoutBuiltInCodePrintsItsTextsAndCaptionsSetByTheCaller) {
    addAlarms(2);
    TMidasQuery q;
    openList(q);

    TReportLayout l(QStringLiteral("处理通知单"));
    TReportBand& title = l.AddBand(TReportBand::Title, 26);
    title.AddText(0, 0, l.PrintableWidth(), 10, "用电检查结果处理通知书").Size(16).Bold().Center();
    title.AddText(0, 14, 90, 7, "编号：${Cdbh}");
    TReportBand& detail = l.AddBand(TReportBand::Detail, 9);
    detail.AddText(0, 0, 25, 9, "户   号").Frame().Center();
    detail.AddText(25, 0, 155, 9, "[HH]").Frame();
    detail.AddLine(0, 8.5, 180, 8.5, 0.5);
    TReportBand& footer = l.AddBand(TReportBand::PageFooter, 20);
    footer.AddText(0, 0, 40, 8, "追补电量：").Name("qrl_zbdl");
    footer.AddText(0, 10, 180, 8, "本通知一式三份。");

    TReport r;
    r.SetLayout(l);
    r.Layout().FindItem("QRL_ZBDL")->text = "退还电量：";  // names match without regard to case
    r.Variables().Add("Cdbh='0000012345'");
    r.SetDataSet(&q);
    r.ExportPdf(dir.filePath("notice.pdf"));
    const QString flat = squeezed(pdfText(dir.filePath("notice.pdf")));
    for (const char* s : {"用电检查结果处理通知书", "编号：0000012345", "户号", "0000000002", "退还电量：", "本通知一式三份。"})
        EXPECT_TRUE(has(flat, QString::fromUtf8(s))) << s << "\n" << flat.toStdString();
    EXPECT_FALSE(has(flat, QStringLiteral("追补电量")));

    // Without a dataset the detail band prints once, as a form does.
    TReportLayout form(QStringLiteral("空白表"));
    form.AddBand(TReportBand::Detail, 10).AddText(0, 0, 100, 10, "客户接受人（签字）：${Line}");
    TReport f;
    f.SetLayout(form);
    EXPECT_EQ(f.PageCount(), 1);
    f.ExportPdf(dir.filePath("form.pdf"));
    EXPECT_TRUE(has(squeezed(pdfText(dir.filePath("form.pdf"))), QStringLiteral("客户接受人（签字）：")));
}

TEST_P(ReportKit, UnusableTemplatesAreRefusedNamingTheReportAndTheProblem) {
    const struct { const char* name; const char* text; const char* says; } bad[] = {
        {"坏的JSON", "{\n  \"bands\": [\n    {\"band\": \"title\" \"height\": 10}\n  ]\n}", "line 3, column"},
        {"拼错的键", R"({"bands": [{"band": "title", "height": 10, "items": [{"text": "x", "allign": "center"}]}]})",
         "bands[0].items[0].allign: unknown key"},
        {"未知的带区", R"({"bands": [{"band": "detial", "height": 10}]})", "\"detial\" is not one of title, pageHeader"},
        {"缺高度", R"({"bands": [{"band": "detail"}]})", "bands[0].height: is missing"},
        {"错类型", R"({"bands": [{"band": "detail", "height": "7"}]})", "bands[0].height: must be a number"},
        {"列不在明细", R"({"bands": [{"band": "title", "height": 10, "columns": [{"title": "户号", "field": "HH", "width": 20}]}]})",
         "only the detail band has columns"},
        {"太宽", R"({"bands": [{"band": "detail", "height": 7, "columns": [{"title": "户号", "field": "HH", "width": 200}]}]})",
         "the columns are 200 mm wide, the printable width is 180 mm"},
        {"太高", R"({"bands": [{"band": "title", "height": 200}, {"band": "detail", "height": 100}]})", "the bands need 300 mm"},
        {"两个标题", R"({"bands": [{"band": "title", "height": 10}, {"band": "title", "height": 10}]})", "a second title band"},
        {"空", "  ", "the template is empty"},
        {"没有带区", R"({"page": {"size": "A4"}})", "bands: is missing"},
        {"纸张", R"({"page": {"size": "A0"}, "bands": [{"band": "detail", "height": 7}]})", "page.size: \"A0\" is not one of A4"},
    };
    for (const auto& c : bad) {
        try {
            tarvin::report::ParseTemplate(QString::fromUtf8(c.name), QString::fromUtf8(c.text));
            ADD_FAILURE() << c.name << " was accepted";
        } catch (const EReportError& e) {
            EXPECT_TRUE(e.message().startsWith(QStringLiteral("Report \"%1\"").arg(QString::fromUtf8(c.name)))) << e.message().toStdString();
            EXPECT_TRUE(e.message().contains(QString::fromUtf8(c.says))) << e.message().toStdString();
        }
    }

    // Problems only the data shows: a report z_report lacks, a field the
    // dataset lacks, a variable the screen did not give, a variable line
    // that is not Name='value'.
    addAlarms(1);
    db->exec("insert into z_report (bbmc, mb) values ('错字段', ?), ('缺变量', ?)",
             {QStringLiteral(R"({"bands": [{"band": "detail", "height": 7, "columns": [{"title": "户号", "field": "HHH", "width": 20}]}]})"),
              QStringLiteral(R"({"bands": [{"band": "title", "height": 7, "items": [{"text": "记录数：${Jls}"}]}]})")});
    TMidasQuery q;
    openList(q);
    const auto refused = [&](const QString& name, const QStringList& vars, const QString& says) {
        try {
            TReport r;
            r.LoadFromDatabase(name);
            for (const QString& v : vars) r.Variables().Add(v);
            r.SetDataSet(&q);
            r.ExportPdf(dir.filePath("never.pdf"));
            ADD_FAILURE() << name.toStdString() << " printed";
        } catch (const EReportError& e) {
            EXPECT_TRUE(e.message().startsWith(QStringLiteral("Report \"%1\"").arg(name)) && e.message().contains(says))
                << e.message().toStdString();
        }
        EXPECT_FALSE(QFileInfo::exists(dir.filePath("never.pdf"))) << "nothing half-written";
    };
    refused("没有这张表", {}, "is not in the report table z_report");
    refused("错字段", {}, "[HHH]: no field of that name in the dataset (fields: NY, HH, BJDM");
    refused("缺变量", {"Dwmc='城区'"}, "${Jls}: no variable of that name (variables given: DWMC)");
    refused(kAlarmList, {"Dwmc='城区'", "这一行没有等号"}, "the variable line \"这一行没有等号\" is not Name='value'");
}

TEST(ReportVariables, QuotedValuesKeepTheirQuotesAndNamesIgnoreCase) {
    const auto v = tarvin::report::ParseVariables("r", {"Dwmc='城区供电分公司'", " jls = '12' ", "Hm='O''Brien'", "Bare=abc", ""});
    EXPECT_EQ(v, (QHash<QString, QString>{{"DWMC", QStringLiteral("城区供电分公司")}, {"JLS", "12"}, {"HM", "O'Brien"}, {"BARE", "abc"}}));
}

TARVIN_INSTANTIATE_ENGINES(ReportKit);

}  // namespace
