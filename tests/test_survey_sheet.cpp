// The survey sheet of a metering anomaly case, on both engines: the demo
// utility's case at its meter change step (a meter exchanged, a transformer
// exchanged, a meter and transformers staying) printed from its layout in
// z_report, the preview the anomaly screen shows, and the refusals.
#include <QTemporaryDir>

#include "DemoGenerator.h"
#include "Fixtures.h"
#include "ModuleTest.h"
#include "frame/Unit_zt_gobal.h"
#include "metering/Unt_Yk_Ckd.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

class SurveySheet : public ModuleTest {};

TEST_P(SurveySheet, PrintsTheCaseCustomerEquipmentAndSchemeAndRefusesWhatCannotPrint) {
    tarvin::demo::writeDemo(db->db(), {.customers = 200, .seed = 1, .units = 1, .today = QDate(2026, 11, 23)});
    const QString cdbh = rows(*db, u"SELECT cdbh FROM a_dnbfa WHERE bgsm = '换取'"_s).value(0);
    ASSERT_FALSE(cdbh.isEmpty()) << "the demo holds a case with a meter exchanged";
    // Its customer, both meters of the exchange, the meter that stays.
    const QStringList want = rows(*db, u"SELECT cdbh, hh, hm, yddz FROM a_khsqxx WHERE cdbh = ?"_s, {cdbh}).value(0).split(u'|') +
                             rows(*db, u"SELECT txm FROM a_dnbfa WHERE cdbh = ?"_s, {cdbh}) +
                             rows(*db, u"SELECT txm FROM y_yxdnb WHERE hh = (SELECT hh FROM a_khsqxx WHERE cdbh = ?) AND txm NOT IN "
                                       "(SELECT txm FROM a_dnbfa WHERE cdbh = ?)"_s, {cdbh, cdbh}) +
                             QStringList{u"计量装置查勘单"_s, u"换取"_s, u"新装"_s, u"在运"_s};
    ASSERT_EQ(want.size(), 11);

    tarvin::report::TReport sheet;
    PrepareCkd(sheet, cdbh, Gdw);
    QTemporaryDir dir;
    sheet.ExportPdf(dir.filePath(u"ckd.pdf"_s));
    const QString text = pdfText(dir.filePath(u"ckd.pdf"_s));
    for (const QString& s : want) EXPECT_TRUE(text.contains(s)) << s.toStdString() << "\n" << text.toStdString();
    EXPECT_EQ(sheet.PageCount(), 1);
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(sheet.RenderPage(0, 110), u"survey-sheet"_s);

    // The screen's print shows the preview; an unknown case and a missing
    // layout are refused with a message that says what is wrong.
    EXPECT_EQ(modalOpenedBy([&] { PrintCkd(nullptr, cdbh, Gdw); }), u"QPrintPreviewDialog"_s);
    const auto refusal = [&](const QString& c) {
        try {
            PrintCkd(nullptr, c, Gdw);
        } catch (const std::runtime_error& e) {
            return QString::fromUtf8(e.what());
        }
        return QString();
    };
    EXPECT_EQ(refusal(u"9999999999"_s), u"传单编号为9999999999的申请信息不存在，无法打印查勘单。"_s);
    db->exec(u"DELETE FROM z_report WHERE bbmc = 'ckd'"_s);
    EXPECT_TRUE(refusal(cdbh).startsWith(u"打印查勘单出错：Report \"ckd\" is not in the report table z_report"_s)) << refusal(cdbh).toStdString();
}

TARVIN_INSTANTIATE_ENGINES(SurveySheet);

}  // namespace
