// Plan compilation through its widgets on each engine and opener: numbering
// over the whole table, the count and content checks, the monthly list of
// the session's unit, modify rewriting the drafter, delete on a question,
// a hand-typed plan number that stops the numbering, and the main flow with
// real boxes.
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "Fixtures.h"
#include "ModuleTest.h"
#include "common/unit_zt_pubfun.h"
#include "frame/DBControls.h"
#include "frame/Unit_zt_gobal.h"
#include "planning/Frm_Jc_Jhbz.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QString kStored = u"select jhbh, jhlx, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz, dw, zdbm, zdr from e_jcjh order by jhbh"_s;

class PlanScreen : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        expectNoBoxes = false;
        Gbm = u"0101"_s;
        Gczyxm = u"张检查"_s;
        db->exec(u"INSERT INTO z_bmbm (dm, mc) VALUES ('0101', '用电检查班'), ('0102', '营业班')"_s);
    }
    void TearDown() override {
        Gbm.clear();
        Gczyxm.clear();
        ModuleTest::TearDown();
    }
    // Keys for Latin text; Chinese comes through an input method, whole.
    static void fill(QWidget* edit, const QString& text) {
        edit->setFocus();
        auto* line = qobject_cast<QLineEdit*>(edit);
        auto* memo = qobject_cast<QPlainTextEdit*>(edit);
        if (line) line->selectAll();
        if (memo) memo->selectAll();
        pressFocused(Qt::Key_Backspace);
        if (text.toLatin1() == text.toUtf8()) type(edit, text);
        else if (line) line->setText(text);
        else memo->setPlainText(text);
    }
    // A plan from 1 to 30 April for the inspection team.
    static void enter(TJc_Jhbz_Frm& s, const QString& count, const QString& content) {
        s.dtp_jhqrq->setDate(QDate(2026, 4, 1));
        s.dtp_jhzrq->setDate(QDate(2026, 4, 30));
        s.Dblc_Jcbm->setCurrentIndex(s.Dblc_Jcbm->findText(u"用电检查班"_s));
        fill(s.Edt_Jchs, count);
        fill(s.Mem_Jcnr, content);
    }
    static QStringList listed(const QTableView* g) {
        QStringList out;
        for (int r = 0; r < g->model()->rowCount(); ++r) out << g->model()->index(r, 0).data().toString();
        return out;
    }
    static void clickPlan(QTableView* g, const QString& jhbh) {
        const int row = int(listed(g).indexOf(jhbh));
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(g->model()->index(row, 0)).center());
    }
    const QString april = u"2026-04-01 00:00:00|2026-04-30 00:00:00|用电检查班|"_s;
};

TEST_P(PlanScreen, FirstPlanCountAndContentChecks) {
    TJc_Jhbz_Frm s;
    s.Jhlx = u"年计划"_s;
    showActive(&s);
    EXPECT_EQ(s.windowTitle(), u"年计划编制"_s);
    EXPECT_FALSE(s.Bbtn_Qr->isEnabled() || s.Bbtn_Quit->isEnabled()) << "nothing to save yet";
    click(&s, u"Bbtn_Xg"_s);
    click(&s, u"Bbtn_Sc"_s);
    EXPECT_EQ(s.EditMode(), 0) << "modify and delete have nothing to act on";
    EXPECT_TRUE(boxes.texts().isEmpty());

    click(&s, u"Bbtn_Xz"_s);
    EXPECT_TRUE(s.Bbtn_Qr->isEnabled() && !s.Bbtn_Xz->isEnabled());
    for (const QString& bad : {QString(), u"12a"_s, u"1.5"_s}) {
        enter(s, bad, u"检查"_s);
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_EQ(boxes.last(), u"户数不合法！"_s) << bad.toStdString();
        EXPECT_EQ(QApplication::focusWidget(), s.Edt_Jchs);
    }
    fill(s.Edt_Jchs, u" 7 "_s);
    s.Mem_Jcnr->clear();
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.last(), u"检查内容不能为空！"_s);
    EXPECT_EQ(QApplication::focusWidget(), s.Mem_Jcnr);
    type(s.Mem_Jcnr, u"   "_s);
    boxes.answer(QMessageBox::No);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.last(), u"保存输入的检查计划信息吗？"_s);
    EXPECT_EQ(s.EditMode(), 1) << "a no keeps adding";
    EXPECT_TRUE(rows(*db, kStored).isEmpty());
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(s.EditMode(), 0);
    EXPECT_EQ(rows(*db, kStored), QStringList{u"0001|年计划|"_s + april + u"7|   ||01|0101|张检查"_s});
    EXPECT_EQ(boxes.texts().size(), 6);
}

TEST_P(PlanScreen, MonthlyListNumberingModifyDeleteAndAHandTypedNumber) {
    db->exec(u"INSERT INTO e_jcjh (jhbh, jhlx, jhjcqrq, jhjczrq, jcbm, jchs, jcnr, bz, dw, zdbm, zdr, zdrq) VALUES "
             "('0041', '年计划', '2026-01-01', '2026-12-31', '用电检查班', 600, '年度周期检查', NULL, '0102', '0102', '李', '2026-01-05'), "
             "('0039', '月计划', '2026-02-01', '2026-02-28', '用电检查班', 24, '二月周期检查', NULL, '01', '0102', '王班长', '2026-02-01'), "
             "('0040', '月计划', '2026-03-01', '2026-03-31', '营业班', 18, '三月周期检查', '重点查专变', '01', '0102', '王班长', '2026-03-01'), "
             "('0038', '年计划', '2026-01-01', '2026-12-31', '用电检查班', 500, '年度周期检查', NULL, '01', '0102', '王班长', '2026-01-05'), "
             "('0037', '月计划', '2026-03-01', '2026-03-31', '营业班', 9, '三月周期检查', NULL, '0101', '0101', '赵', '2026-03-01')"_s);
    TJc_Jhbz_Frm s;
    s.Jhlx = u"月计划"_s;
    showActive(&s);
    EXPECT_EQ(s.windowTitle(), u"月计划编制"_s);
    QStringList shown = listed(s.Dbg_Jcjh);
    shown.sort();
    EXPECT_EQ(shown, (QStringList{u"0039"_s, u"0040"_s})) << "the unit's monthly plans only";
    clickPlan(s.Dbg_Jcjh, u"0040"_s);
    EXPECT_EQ(s.Edt_Jhbh->text() + s.Edt_Jhlx->text() + s.Dblc_Jcbm->Text() + s.Edt_Jchs->text() + s.Mem_Bz->toPlainText(),
              u"0040月计划营业班18重点查专变"_s);

    click(&s, u"Bbtn_Xz"_s);
    enter(s, u"30"_s, u"四月周期检查"_s);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(rows(*db, kStored).value(5), u"0042|月计划|"_s + april + u"30|四月周期检查||01|0101|张检查"_s)
        << "numbered after 0041 of another unit and type";

    clickPlan(s.Dbg_Jcjh, u"0039"_s);
    click(&s, u"Bbtn_Xg"_s);
    fill(s.Edt_Jchs, u"26"_s);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.last(), u"保存修改后的检查计划信息吗？"_s);
    EXPECT_EQ(rows(*db, u"select jchs, jcnr, zdbm, zdr, zdrq from e_jcjh where jhbh = '0039'"_s),
              QStringList{u"26|二月周期检查|0101|张检查|"_s + GetServerDate().toString(u"yyyy-MM-dd HH:mm:ss"_s)});

    clickPlan(s.Dbg_Jcjh, u"0040"_s);
    boxes.answer(QMessageBox::No);
    click(&s, u"Bbtn_Sc"_s);
    EXPECT_EQ(boxes.last(), u"确定删除该检查计划信息吗？"_s);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Sc"_s);
    EXPECT_EQ(db->scalar(u"select count(*) from e_jcjh where jhbh in ('0039', '0040', '0042')"_s).toInt(), 2);
    EXPECT_EQ(listed(s.Dbg_Jcjh).size(), 2);
    EXPECT_TRUE(listed(s.Dbg_Jcjh).contains(s.Edt_Jhbh->text())) << "the edits leave the deleted plan";

    // Letters in a stored number stop the count: the planner is told which
    // number, and what was typed stays for a save once it is corrected.
    db->exec(u"INSERT INTO e_jcjh (jhbh, jhlx, dw) VALUES ('A001', '年计划', '0102')"_s);
    click(&s, u"Bbtn_Xz"_s);
    enter(s, u"5"_s, u"复查"_s);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_TRUE(boxes.last().contains(u"“A001”不是数字"_s)) << boxes.last().toStdString();
    EXPECT_EQ(s.EditMode(), 1);
    EXPECT_EQ(s.Mem_Jcnr->toPlainText() + s.Edt_Jchs->text(), u"复查5"_s);
    db->exec(u"UPDATE e_jcjh SET jhbh = '0050' WHERE jhbh = 'A001'"_s);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(db->scalar(u"select jcnr from e_jcjh where jhbh = '0051'"_s).toString(), u"复查"_s);
}

// As a planner works it: real boxes answered as they come up, Escape
// leaving an add.
TEST_P(PlanScreen, MainFlowWithRealBoxes) {
    TJc_Jhbz_Frm s;
    s.Jhlx = u"月计划"_s;
    showActive(&s);
    click(&s, u"Bbtn_Xz"_s);
    pressFocused(Qt::Key_Escape);
    EXPECT_EQ(s.EditMode(), 0);
    click(&s, u"Bbtn_Xz"_s);
    enter(s, u"十"_s, u"月度周期检查"_s);
    RealMessageBoxes real;
    real.expect(u"户数不合法！"_s).expect(u"保存输入的检查计划信息吗？"_s, QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    fill(s.Edt_Jchs, u"10"_s);
    s.Bbtn_Qr->setFocus();
    pressFocused(Qt::Key_Return);
    EXPECT_EQ(real.seen().size(), 2);
    EXPECT_EQ(rows(*db, kStored), QStringList{u"0001|月计划|"_s + april + u"10|月度周期检查||01|0101|张检查"_s});
    EXPECT_TRUE(boxes.texts().isEmpty());
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(PlanScreen);

}  // namespace
