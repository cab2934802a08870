// Customers of past inspections through the screen's widgets on each engine
// and opener: the unit's batches by date, the batch's customers following
// the batch grid, the four moves, and what confirm and exit hand over.
#include <QDateTimeEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

#include "Fixtures.h"
#include "ModuleTest.h"
#include "frame/DBControls.h"
#include "screening/Frm_Jc_Kylskh.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

class KylskhScreen : public ModuleTest {
protected:
    // Batches of unit 01 on 2 and 5 March, one of 0101 and one of January.
    void SetUp() override {
        ModuleTest::SetUp();
        units(*db);
        db->exec(u"INSERT INTO e_jcgzap (jcph, dw, jcnr, zdr, zdsj) VALUES ('P0', '01', '一月', '张三', '2026-01-10 09:00:00'), "
                 "('P1', '01', '三月', '张三', '2026-03-02 10:00:00'), ('P2', '01', '复查', '李四', '2026-03-05 16:30:00'), "
                 "('P3', '0101', '他单位', '王五', '2026-03-03 08:00:00')"_s);
        db->exec(u"INSERT INTO e_jcgzjl (cdbh, jcph, hh, hm, zt, jcjg) VALUES ('C1', 'P1', 'H1', '甲', '已检查', '正常'), "
                 "('C2', 'P1', 'H2', '乙', '已审批', NULL), ('C3', 'P1', 'H3', '丙', '已检查', '窃电'), "
                 "('C4', 'P2', 'H4', '丁', '未审批', NULL), ('C5', 'P3', 'H5', '戊', '已检查', '正常')"_s);
    }
    // March.
    static void search(TJc_Kylskh_Frm& s) {
        s.dtp_zdsjq->setDateTime(QDateTime(QDate(2026, 3, 1), QTime(0, 0)));
        s.dtp_zdsjz->setDateTime(QDateTime(QDate(2026, 3, 31), QTime(0, 0)));
        click(&s, u"Bbtn_Cx"_s);
    }
    QListWidget list;
    QPlainTextEdit memo{u"原备注"_s};
};

TEST_P(KylskhScreen, SearchMovesConfirmAndExit) {
    TJc_Kylskh_Frm s;
    s.SetPlanTargets(&list, &memo);
    showActive(&s);
    EXPECT_TRUE(!s.Bbtn_Qr->isEnabled() && !s.Dblc_Dw->isEnabled());
    EXPECT_EQ(s.Dblc_Dw->KeyValue().toString(), u"01"_s);
    EXPECT_EQ(s.dtp_zdsjq->dateTime(), s.dtp_zdsjz->dateTime().addDays(-1));

    search(s);
    EXPECT_EQ(columnTexts(s.Dbg_lskh), (QStringList{u"P1"_s, u"P2"_s})) << "the unit's, in the dates";
    EXPECT_EQ(columnTexts(s.Dbg_Jckh), (QStringList{u"H1"_s, u"H2"_s, u"H3"_s}));
    s.Dbg_lskh->setFocus();
    pressFocused(Qt::Key_Down);
    EXPECT_EQ(columnTexts(s.Dbg_Jckh), QStringList{u"H4"_s});
    clickRow(s.Dbg_lskh, 0);
    EXPECT_EQ(columnTexts(s.Dbg_Jckh), (QStringList{u"H1"_s, u"H2"_s, u"H3"_s}));

    clickRow(s.Dbg_Jckh, 1);
    click(&s, u"Sb_Right"_s);
    EXPECT_EQ(columnTexts(s.Dbg_SelectKh), QStringList{u"H2"_s});
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, u"kylskh"_s);
    click(&s, u"Sb_Aright"_s);
    EXPECT_TRUE(columnTexts(s.Dbg_Jckh).isEmpty());
    EXPECT_EQ(columnTexts(s.Dbg_SelectKh), (QStringList{u"H2"_s, u"H1"_s, u"H3"_s}));
    EXPECT_EQ(columnTexts(s.Dbg_SelectKh, 3), (QStringList{""_L1, u"正常"_s, u"窃电"_s})) << "the results go along";
    click(&s, u"Sb_Aright"_s);  // nothing left to move
    clickRow(s.Dbg_SelectKh, 1);
    click(&s, u"Sb_Left"_s);
    EXPECT_EQ(columnTexts(s.Dbg_Jckh), QStringList{u"H1"_s});
    click(&s, u"Sb_Aleft"_s);
    EXPECT_EQ(columnTexts(s.Dbg_Jckh), (QStringList{u"H1"_s, u"H2"_s, u"H3"_s})) << "back at the end";
    click(&s, u"Sb_Right"_s);
    click(&s, u"Bbtn_Cx"_s);
    EXPECT_TRUE(columnTexts(s.Dbg_SelectKh).isEmpty()) << "a new search starts a new selection";

    list.addItem(u"旧"_s);
    s.Bbtn_Qr->setEnabled(true);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(list.count(), 0) << "an empty selection still clears the list";
    showActive(&s);
    search(s);
    click(&s, u"Sb_Aright"_s);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(columnTexts(&list), (QStringList{u"H1┆甲"_s, u"H2┆乙"_s, u"H3┆丙"_s}));
    showActive(&s);
    search(s);
    click(&s, u"Sb_Right"_s);
    click(&s, u"Bbtn_Tc1"_s);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(columnTexts(&list).size(), 3) << "exit hands nothing";
    EXPECT_EQ(memo.toPlainText(), u"原备注\n历史检查客户。\n历史检查客户。"_s);
}

// As a planner works it: keys to the focused control, the real box of the
// screen-name key.
TEST_P(KylskhScreen, MainFlowByKeysWithRealBoxes) {
    TJc_Kylskh_Frm s;
    s.SetPlanTargets(&list, &memo);
    s.Bbtn_Qr->setEnabled(true);
    showActive(&s);
    s.dtp_zdsjq->setDateTime(QDateTime(QDate(2026, 3, 1), QTime(0, 0)));
    s.Bbtn_Cx->setFocus();
    pressFocused(Qt::Key_Return);
    s.Dbg_lskh->setFocus();
    pressFocused(Qt::Key_Down);
    RealMessageBoxes boxes;
    boxes.expect(u"当前窗口名:Jc_Kylskh_Frm"_s);
    pressFocused(Qt::Key_N, Qt::ControlModifier | Qt::AltModifier);
    find(&s, u"Sb_Aright"_s)->setFocus();
    pressFocused(Qt::Key_Return);
    s.Bbtn_Qr->setFocus();
    pressFocused(Qt::Key_Return);
    EXPECT_EQ(columnTexts(&list), QStringList{u"H4┆丁"_s});
    EXPECT_EQ(memo.toPlainText(), u"原备注\n历史检查客户。"_s);
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(KylskhScreen);

