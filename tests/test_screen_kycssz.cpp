// The screening screen through its widgets, on each engine and opener:
// which radio counts, the parameter checks on leaving an edit, what radios
// and filter boxes open, the name look-ups, the area loss list; the search
// with its guard, the result page, confirm, print and the menu entry.
#include <QTest>
#include <QtWidgets>

#include "Corpus.h"
#include "DemoGenerator.h"
#include "Fixtures.h"
#include "ModuleLoader.h"
#include "ModuleTest.h"
#include "common/unit_zt_pubfun.h"
#include "data/DataModules.h"
#include "frame/DBControls.h"
#include "frame/Unit_zt_gobal.h"
#include "screening/Frm_Jc_Kycssz.h"
#include "screening/Unt_Jc_Kycslb.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

class ScreeningSettings : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        units(*db);
        s = std::make_unique<TJc_Kycssz_Frm>();
        showActive(s.get());
    }
    void TearDown() override {
        s.reset();
        ModuleTest::TearDown();
    }
    int category() {
        s->Kycslb = 0;
        s->GetKycsLb();
        return s->Kycslb;
    }
    static QWidget* focus() { return QApplication::focusWidget(); }
    // The bad text refused on leaving (Tab, or the key given) with its
    // message and the focus kept; then the good one let go.
    QStringList leave(QLineEdit* e, const QString& bad, const QString& good, Qt::Key key = Qt::Key_Tab) {
        QStringList shown;
        for (const QString& text : {bad, good}) {
            boxes.clear();
            e->setFocus();
            e->setText(text);
            press(e, key);
            EXPECT_EQ(focus() == e, !boxes.texts().isEmpty()) << text.toStdString();
            shown += boxes.texts();
        }
        return shown;
    }
    // The category's radio chosen on the settings page, and searched.
    void search(QWidget* page, const QString& radio) {
        s->Pgc_Yckhpc->setCurrentWidget(s->Ts_Cscz);
        s->Pgc_Cxdx->setCurrentWidget(page);
        press(find(s.get(), radio), Qt::Key_Space);
        click(s.get(), u"Bbtn_Cx"_s);
    }
    // As the plan scheduling screen opens it.
    void reopen() {
        s = std::make_unique<TJc_Kycssz_Frm>();
        s->SetPlanTargets(&list, &memo);
        s->Bbtn_Qr->setEnabled(true);
        showActive(s.get());
    }
    // The first column of the result grid (or the list); its extra titles.
    QStringList column(QAbstractItemView* view = nullptr) const { return columnTexts(view ? view : s->Dbg_Jlll); }
    QString heads() const {
        QStringList out;
        for (int c = 9; c < s->Dbg_Jlll->model()->columnCount(); ++c) out << s->Dbg_Jlll->model()->headerData(c, Qt::Horizontal).toString();
        return out.join(u'|');
    }
    std::unique_ptr<TJc_Kycssz_Frm> s;
    QListWidget list;
    QPlainTextEdit memo{u"原备注"_s};
};

// Opened on the charges page with the server's dates; only the active
// page's radio counts; 1, 3 and 4 cannot be chosen.
TEST_P(ScreeningSettings, OnlyTheActivePagesRadioCounts) {
    const QString ny = GetServerNy();
    EXPECT_TRUE(s->Pgc_Yckhpc->currentWidget() == s->Ts_Cscz && s->Pgc_Cxdx->currentWidget() == s->Ts_Dfdj);
    EXPECT_EQ(s->Edt_Dfny->text() + s->edt_Shny->text() + s->Edt_Qdnf->text() + s->Edt_Ycnf->text(), ny + ny + ny.left(4) + ny.left(4));
    EXPECT_EQ(s->dtp_jcrqq->date().addDays(183), GetServerDateTime().date());
    EXPECT_EQ(s->Dblc_Ywlb->KeyValue().toString() + s->Dblc_Dw->KeyValue().toString(), u"000"_s + Gdw);
    EXPECT_TRUE(s->Ckb_Dw->isChecked() && !s->Ckb_Dw->isEnabled() && s->Dblc_Dw->isEnabled());
    for (const TKycsCategory& c : KycsCategories()) {
        auto* radio = s->findChild<QRadioButton*>(c.Radio);
        EXPECT_TRUE(radio && radio->isEnabled() == (c.Code != 1 && c.Code != 3 && c.Code != 4)) << c.Code;
    }
    EXPECT_EQ(category(), 0);
    s->Pgc_Cxdx->setCurrentWidget(s->Ts_Ydjc);
    click(s.get(), u"Rb_Qdkh"_s);
    s->Pgc_Cxdx->setCurrentWidget(s->Ts_Dfdj);
    EXPECT_EQ(category(), 0) << "a radio of another page is ignored";
    s->Pgc_Cxdx->setCurrentWidget(s->Ts_Ydjc);
    EXPECT_EQ(QString::number(category()) + s->Kycsmc, u"20违约窃电年度次数异常客户"_s);
}

// Radios open their controls (which stay open) and focus the first; the
// checks on leaving, and on Enter for the energy bound.
TEST_P(ScreeningSettings, RadiosOpenTheirControlsWhichAreCheckedOnLeaving) {
    expectNoBoxes = false;
    EXPECT_FALSE(s->Edt_Pjys->isEnabled() || s->Edt_Dlbo->isEnabled() || s->Edt_Fgdlycbl->isEnabled());
    click(s.get(), u"Rb_Bydlsy"_s);
    EXPECT_TRUE(s->Edt_Pjys->isEnabled() && s->Edt_Dlbo->isEnabled() && focus() == s->Edt_Pjys);
    click(s.get(), u"Rb_Fgdlyc"_s);
    EXPECT_TRUE(s->Edt_Pjys->isEnabled() && s->Edt_Fgdlycbl->isEnabled() && s->Edt_Dfny->isEnabled());
    EXPECT_EQ(leave(s->Edt_Fgdlycbl, u"-1"_s, u"0"_s), QStringList{u"百分比输入不合法，请检查！"_s});
    EXPECT_EQ(leave(s->Edt_Dfny, u"2026-1"_s, u"202611"_s), QStringList{u"年月输入不合法，请检查！"_s});
    EXPECT_EQ(leave(s->Edt_Pjys, u"-1"_s, u"3"_s), QStringList{u"月数输入不合法，请检查！"_s});
    click(s.get(), u"Rb_Ydlbdlyc"_s);
    EXPECT_EQ(leave(s->edt_dldy, u"abc"_s, u"abc"_s), QStringList()) << "checked on Enter only";
    EXPECT_EQ(leave(s->edt_dldy, u"abc"_s, u"5000"_s, Qt::Key_Return), QStringList{u"电量输入不合法，请检查！"_s});
    s->Pgc_Cxdx->setCurrentWidget(s->Ts_Ykjl);
    click(s.get(), u"Rb_Bgyh"_s);
    EXPECT_TRUE(s->Dtp_Slrqq->isEnabled() && s->Dtp_Slrqz->isEnabled() && focus() == s->Dblc_Ywlb);
    click(s.get(), u"Rb_Yckh"_s);
    EXPECT_EQ(leave(s->Edt_Ycnf, u"20261"_s, u"2026"_s), QStringList{u"年份输入不合法，请检查！"_s});
}

// A filter box opens its inputs and picker; a typed number shows its
// line's name, of the unit only.
TEST_P(ScreeningSettings, FilterBoxesOpenTheirInputsAndNamesFollowTheNumbers) {
    db->exec(u"INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES ('0100001', '10kV东风线', '00001', 'B1', '03', '01'), "
             "('0100002', '10kV外局线', '00001', 'B1', '03', '0101')"_s);
    EXPECT_FALSE(s->Edt_Xlbh->isEnabled() || s->Sb_XzXl->isEnabled() || s->Edt_Htrlz->isEnabled());
    for (const char* box : {"Ckb_Xlbh", "Ckb_Htrl"}) click(s.get(), QString::fromLatin1(box));
    EXPECT_TRUE(s->Edt_Xlbh->isEnabled() && s->Sb_XzXl->isEnabled() && s->Edt_Htrlq->isEnabled() && s->Edt_Htrlz->isEnabled());
    type(s->Edt_Xlbh, u"0100001"_s);
    EXPECT_EQ(s->Edt_Xlmc->text(), u"10kV东风线"_s);
    s->Edt_Xlbh->setText(u"0100002"_s);
    EXPECT_EQ(s->Edt_Xlmc->text(), QString()) << "another unit's line";
    click(s.get(), u"Ckb_Xlbh"_s);
    EXPECT_FALSE(s->Edt_Xlbh->isEnabled() || s->Sb_XzXl->isEnabled());
}

// As a person works it: Space on the radio, Enter on to the year, a
// refused year answered in its box, then corrected.
TEST_P(ScreeningSettings, MainFlowByKeysWithRealBoxes) {
    s->Pgc_Cxdx->setCurrentWidget(s->Ts_Ydjc);
    s->Rb_Qdkh->setFocus();
    RealMessageBoxes real;
    for (Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) pressFocused(key);
    ASSERT_EQ(focus(), s->Edt_Qdnf);
    real.expect(u"年份输入不合法，请检查！"_s);
    for (Qt::Key key : {Qt::Key_End, Qt::Key_5, Qt::Key_Return}) pressFocused(key);
    EXPECT_EQ(focus(), s->Edt_Qdnf);
    for (Qt::Key key : {Qt::Key_Backspace, Qt::Key_Return}) pressFocused(key);
    EXPECT_NE(focus(), s->Edt_Qdnf);
    EXPECT_EQ(category(), 20);
    real.expect(u"无满足条件的客户！"_s);
    s->Bbtn_Cx->setFocus();
    pressFocused(Qt::Key_Return);
}

// On the corpus's rows: a category's customers with its extra columns,
// gone for the next category; confirm with none, one and an empty result
// selected; reopening shows the last rows; 16 wants its use category.
TEST_P(ScreeningSettings, SearchResultAndConfirm) {
    expectNoBoxes = false;
    db->exec(u"DELETE FROM z_dwbm"_s);
    corpus::loadFixture(*db);
    Gdw = u"0101"_s;
    reopen();
    click(s.get(), u"Bbtn_Cx"_s);
    search(s->Ts_Ydjc, u"Rb_Dldbkh"_s);
    EXPECT_EQ(column(), (QStringList{u"0000000006"_s, u"0000000007"_s}));
    EXPECT_EQ(s->Lab_Cxdx->text() + heads() + s->Pnl_Main->text(), u"定量定比客户计费类型|定量定比值符合查询条件的记录数为：2条"_s);
    EXPECT_TRUE(s->Pgc_Yckhpc->currentWidget() == s->Ts_Jlll && s->Bbtn_Dy->isEnabled() && !s->Pnl_Wait->isVisible());
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(s.get(), u"screening-result"_s);
    click(s.get(), u"Bbtn_Qr"_s);
    EXPECT_EQ(column(&list), (QStringList{u"0000000006┆孙六"_s, u"0000000007┆周七"_s})) << "none selected: all";
    reopen();
    EXPECT_EQ(QString::number(column().size()) + heads(), u"2计费类型|定量定比值"_s) << "the last rows, with their columns";
    clickRow(s->Dbg_Jlll, 1);
    click(s.get(), u"Bbtn_Qr"_s);
    EXPECT_EQ(column(&list), QStringList{u"0000000007┆周七"_s});
    reopen();
    search(s->Ts_Ydjc, u"Rb_Dldy"_s);
    EXPECT_EQ(column() + QStringList{heads()}, (QStringList{u"0000000001"_s, QString()}));
    // An open result without rows (the customers went between count and rows).
    OpenSql(Jc_Tarvin_Dm->MQry_Kykhcx, *KycsSql(22, u"row"_s) + u"\n 1=0"_s);
    reopen();
    click(s.get(), u"Bbtn_Qr"_s);
    EXPECT_EQ(column(&list).size(), 1) << "an empty result clears nothing";
    EXPECT_EQ(memo.toPlainText(), u"原备注\n定量定比客户\n定量定比客户\n多路电源客户"_s);
    reopen();
    search(s->Ts_Dfdj, u"Rb_Ydlbdlyc"_s);
    EXPECT_EQ(boxes.texts(), (QStringList{u"请选择具体检索方法！"_s, u"请选择用电类别！"_s}));
    EXPECT_TRUE(s->ckb_ydlb->isChecked() && focus() == s->dblc_Ydlb && s->Pgc_Yckhpc->currentWidget() == s->Ts_Cscz);
}

// Exactly 300 customers are shown, one more is refused on the settings
// page; an empty account number is asked for, an unknown one finds none.
TEST_P(ScreeningSettings, TheGuardOf300) {
    expectNoBoxes = false;
    db->exec(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
             "INSERT INTO y_khda (hh, hm, dw, jczq) SELECT CAST(9000000000 + i AS VARCHAR(10)), '批量' || i, '01', 12 FROM n"_s);
    search(s->Ts_Ykjl, u"Rb_Qtkh"_s);
    EXPECT_EQ(column().size(), 300);
    db->exec(u"INSERT INTO y_khda (hh, hm, dw, jczq) VALUES ('9100000000', '多一户', '01', 12)"_s);
    search(s->Ts_Ykjl, u"Rb_Qtkh"_s);
    click(s.get(), u"Ckb_Hh"_s);
    click(s.get(), u"Bbtn_Cx"_s);
    s->Edt_Hh->setText(u"0000000000"_s);
    click(s.get(), u"Bbtn_Cx"_s);
    EXPECT_EQ(boxes.texts(), (QStringList{u"满足条件的客户记录大于300条，请选择更明确的条件！"_s, u"请输入户号！"_s, u"无满足条件的客户！"_s}));
    EXPECT_TRUE(s->Pgc_Yckhpc->currentWidget() == s->Ts_Cscz && !s->Pnl_Wait->isVisible());
}

// From the menu the screen only searches and prints: print where confirm was.
TEST_P(ScreeningSettings, TheMenuEntryPutsPrintInConfirmsPlace) {
    tarvin::host::ModuleLoader module;
    ASSERT_TRUE(module.load()) << module.errorString().toStdString();
    QRect print;
    onNextModal([&](QWidget* w) {
        if (w->findChild<QWidget*>(u"Bbtn_Qr"_s)->isHidden()) print = w->findChild<QWidget*>(u"Bbtn_Dy"_s)->geometry();
        w->close();
    });
    ASSERT_TRUE(module.call("show_jc_kykhjs"));
    EXPECT_EQ(print, s->Bbtn_Qr->geometry()) << "with confirm hidden";
}

// On a demo utility: the area loss list of the unit and month follows the
// month, a row clicked gives its area (number and name); the picture.
TEST_P(ScreeningSettings, AreaLossListOnTheDemoUtility) {
    db->exec(u"DELETE FROM z_dwbm"_s);
    tarvin::demo::writeDemo(db->db(), {.customers = 2000});
    Gdw = u"0101"_s;
    s = std::make_unique<TJc_Kycssz_Frm>();
    showActive(s.get());
    const QStringList areas = rows(*db, u"SELECT tqbh, tqmc FROM g_gytqshfx WHERE dw = '0101' AND ny = ?"_s, {GetServerNy()});
    s->Pgc_Cxdx->setCurrentWidget(s->Ts_Xltq);
    click(s.get(), u"Rb_Tqxsyc"_s);
    ASSERT_EQ(s->dbg_xltq->model()->rowCount(), areas.size());
    s->edt_Shny->setText(u"190001"_s);
    EXPECT_EQ(s->dbg_xltq->model()->rowCount(), 0);
    s->edt_Shny->setText(GetServerNy());
    clickRow(s->dbg_xltq, 1);
    EXPECT_TRUE(areas.contains(s->Edt_Tqbh->text() + u"|"_s + s->Edt_Tqmc->text()));
    click(s.get(), u"Ckb_Tqbh"_s);
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(s.get(), u"screening-settings"_s);
}

// On a demo utility the printed result names its category, unit and count
// and lists every account with the category's own column; its first page's
// picture. Without its layout the print is refused in a box, the result kept.
TEST_P(ScreeningSettings, PrintsTheResultOnTheDemoUtility) {
    expectNoBoxes = false;
    db->exec(u"DELETE FROM z_dwbm"_s);
    tarvin::demo::writeDemo(db->db(), {.customers = 2000, .seed = 1, .units = 2, .today = {}});
    Gdw = u"0101"_s;
    Gdwmc = u"城区供电分公司"_s;
    reopen();
    search(s->Ts_Dfdj, u"Rb_Bydlqn"_s);
    const QStringList accounts = column();
    ASSERT_FALSE(accounts.isEmpty()) << boxes.texts().join(u'|').toStdString();
    EXPECT_EQ(modalOpenedBy([&] { click(s.get(), u"Bbtn_Dy"_s); }), u"QPrintPreviewDialog"_s);
    QTemporaryDir dir;
    s->Rpt_Kykhcx.ExportPdf(dir.filePath(u"r.pdf"_s));
    const QString text = pdfText(dir.filePath(u"r.pdf"_s));
    for (const QString& want : QStringList{u"异常客户查询结果"_s, u"查询对象:去年同期比较电量波动异常客户"_s, u"单位:城区供电分公司"_s, u"波动百分比"_s,
                                           u"记录数:%1条"_s.arg(accounts.size())} + accounts)
        EXPECT_TRUE(text.contains(want)) << want.toStdString() << "\n" << text.toStdString();
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(s->Rpt_Kykhcx.RenderPage(0, 110), u"screening-print"_s);
    db->exec(u"DELETE FROM z_report WHERE bbmc = '异常客户查询结果'"_s);
    click(s.get(), u"Bbtn_Dy"_s);
    EXPECT_TRUE(boxes.last().startsWith(u"打印异常客户查询结果出错"_s) && s->isVisible() && column() == accounts) << boxes.last().toStdString();
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(ScreeningSettings);

}  // namespace
