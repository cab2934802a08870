// The program tarvin-screen on a demo utility, on each engine: for every
// category the screen offers, with the screen's defaults, it lists the
// customers the screen itself finds when its radio, parameters and filters
// are set and it searches, each with its reason; a category or parameter
// the screen would not take is refused with the screen's message.
#include <QtWidgets>

#include "DemoGenerator.h"
#include "Fixtures.h"
#include "ModuleTest.h"
#include "frame/DBControls.h"
#include "frame/Unit_zt_gobal.h"
#include "screening/Frm_Jc_Kycssz.h"
#include "screening/Unt_Jc_Kycslb.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

class TarvinScreen : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        tarvin::demo::DemoOptions demo;
        demo.customers = 1500;
        tarvin::demo::writeDemo(db->db(), demo);
        Gdw = u"0101"_s;
    }
    // The accounts the screen lists once the category's radio is chosen,
    // the values given typed into their controls (a filter's box checked
    // first) and the search run.
    QStringList screenFinds(const TKycsCategory& c, const QStringList& given) {
        TJc_Kycssz_Frm s;
        showActive(&s);
        s.Pgc_Yckhpc->setCurrentWidget(s.Ts_Cscz);
        s.Pgc_Cxdx->setCurrentIndex(c.Page);
        press(find(&s, c.Radio), Qt::Key_Space);
        for (const QString& g : given) {
            const QString name = g.section(u'=', 0, 0);
            for (const TKycsFilter& f : KycsFilters())
                if (f.Name == name) click(&s, f.CheckBox);
            QVector<TKycsParam> params = c.Params;
            for (const TKycsFilter& f : KycsFilters()) params += f.Params;
            for (const TKycsParam& p : params) {
                if (p.Name != name) continue;
                QWidget* control = find(&s, p.Control);
                if (auto* edit = qobject_cast<QLineEdit*>(control)) edit->setText(g.section(u'=', 1));
                if (auto* box = qobject_cast<TDBLookupComboBox*>(control)) box->SetKeyValue(g.section(u'=', 1));
            }
        }
        click(&s, u"Bbtn_Cx"_s);
        return columnTexts(s.Dbg_Jlll);
    }
};

TEST_P(TarvinScreen, ListsWhatTheScreenFindsWithAReasonEachAndRefusesWhatTheScreenRefuses) {
    // What the screen has no default for, and a reading book that keeps 25
    // and 99 under the screen's limit.
    const QString book = rows(*db, u"SELECT MIN(tch) FROM v_yckhda WHERE dw = '0101'"_s).value(0);
    const std::map<int, QStringList> given = {{2, {u"TQBH=T0100001"_s}}, {16, {u"ydlb=03"_s, u"zDL=500000"_s}},
                                              {18, {u"tbje=100"_s}},     {19, {u"djm=4102"_s}},
                                              {25, {u"TCH="_s + book}},  {99, {u"TCH="_s + book}}};
    for (const TKycsCategory& c : KycsCategories()) {
        if (!c.RadioEnabled || c.Placeholder) continue;
        SCOPED_TRACE(c.Code);
        const QStringList values = given.count(c.Code) ? given.at(c.Code) : QStringList();
        QStringList args{u"--category"_s, QString::number(c.Code)};
        for (const QString& v : values) args << u"--param"_s << v;
        const ProgramRun run = runProgram(u"tarvin-screen"_s, QStringList{u"--db"_s, db->url(), u"--unit"_s, u"0101"_s} + args);
        ASSERT_EQ(run.code, 0) << run.err.toStdString();
        QStringList lines = run.out.split(u'\n', Qt::SkipEmptyParts), accounts;
        ASSERT_FALSE(lines.isEmpty());
        EXPECT_TRUE(lines.takeFirst().endsWith(u"\treason"_s));
        for (const QString& l : lines) {
            accounts << l.section(u'\t', 0, 0);
            EXPECT_FALSE(l.section(u'\t', -1).trimmed().isEmpty()) << l.toStdString();
        }
        QStringList screen = screenFinds(c, values);
        EXPECT_FALSE(screen.isEmpty());
        std::sort(accounts.begin(), accounts.end());
        std::sort(screen.begin(), screen.end());
        EXPECT_EQ(accounts, screen);
    }
    expectRefusals(u"tarvin-screen"_s, {
        {{u"--category"_s, u"5"_s}, u"there is no screening category 5"_s},
        {{u"--category"_s, u"3"_s}, u"cannot be chosen on the screening screen"_s},
        {{u"--category"_s, u"2"_s}, u"请输入台区编号！"_s},
        {{u"--category"_s, u"10"_s, u"--param"_s, u"NY=2024"_s}, u"年月输入不合法，请检查！"_s},
        {{u"--category"_s, u"10"_s, u"--param"_s, u"YS=3"_s}, u"--param YS=3: category 10 takes NAME=VALUE"_s},
    }, {u"--db"_s, db->url(), u"--unit"_s, u"0101"_s});
}

TARVIN_INSTANTIATE_ENGINES(TarvinScreen);

}  // namespace
