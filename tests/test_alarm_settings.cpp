// Alarm options through the screen's widgets, on both engines.
#include <QCheckBox>
#include <QPushButton>

#include "alarms/Frm_Jc_Bjsz.h"
#include "Fixtures.h"
#include "ScreenHarness.h"
#include "frame/Unit_zt_gobal.h"

using namespace tarvin::test;

namespace {

class AlarmSettings : public EngineTest {
protected:
    void SetUp() override {
        db = databaseFor(GetParam());
        Gczydm = "0101";
    }
    void TearDown() override { Gczydm.clear(); }

    QStringList choices(const QString& czydm = "0101") {
        return rows(*db, "select bjdm, sfyx from e_bjxz where czydm = ? order by bjdm", {czydm});
    }
    QStringList inForce() {
        return rows(*db, "select bjdm from e_bjxz where czydm = '0101' and sfyx = ? order by bjdm", {QStringLiteral("是")});
    }
    void setRows(int inForce) {
        for (int i = 1; i <= 6; ++i)
            db->exec("insert into e_bjxz (czydm, bjdm, sfyx) values ('0101', ?, ?)",
                     {QString("0%1").arg(i), i <= inForce ? QStringLiteral("是") : QStringLiteral("否")});
    }
    std::unique_ptr<TestDatabase> db;
};

// Select-all ticks and clears the six and exit saves nothing; confirming
// writes the six rows ("否" for the unchecked, the operator's only), then
// updates them; select-all shows ticked only when all six are in force.
TEST_P(AlarmSettings, ConfirmWritesTheSixChoicesAndExitNothing) {
    db->exec("insert into e_bjxz (czydm, bjdm, sfyx) values ('0202', '01', '是')");
    {
        TJc_Bjsz_Frm s;
        showActive(&s);
        EXPECT_EQ(s.windowTitle(), QStringLiteral("异常客户报警选项"));
        for (bool all : {true, false}) {
            click(&s, "ckb_qb");
            for (QCheckBox* b : s.AlarmBoxes()) EXPECT_EQ(b->isChecked(), all) << b->objectName().toStdString();
        }
        click(&s, "ckb_03");
        click(&s, "Bbtn_Tc1");
        EXPECT_FALSE(s.isVisible());
        EXPECT_TRUE(choices().isEmpty());
    }
    {
        TJc_Bjsz_Frm s;
        showActive(&s);
        click(&s, "ckb_02");
        click(&s, "ckb_05");
        click(&s, "Bbtn_Qr");
        EXPECT_EQ(choices(), (QStringList{QStringLiteral("01|否"), QStringLiteral("02|是"), QStringLiteral("03|否"),
                                          QStringLiteral("04|否"), QStringLiteral("05|是"), QStringLiteral("06|否")}));
    }
    {
        TJc_Bjsz_Frm s;
        showActive(&s);
        EXPECT_FALSE(s.ckb_qb->isChecked());
        for (const char* box : {"ckb_01", "ckb_03", "ckb_04", "ckb_06"}) click(&s, box);
        click(&s, "Bbtn_Qr");
    }
    EXPECT_EQ(inForce().size(), 6);
    EXPECT_EQ(choices().size(), 6) << "updated, not added";
    EXPECT_EQ(choices("0202"), QStringList{QStringLiteral("01|是")}) << "other operators untouched";
    TJc_Bjsz_Frm s;
    showActive(&s);
    EXPECT_TRUE(s.ckb_qb->isChecked());
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, "alarm-settings");
}

// As a person works it: keys to the focused control, real boxes.
TEST_P(AlarmSettings, MainFlowByKeysWithRealBoxes) {
    setRows(1);
    TJc_Bjsz_Frm s;
    showActive(&s);
    s.ckb_02->setFocus();
    settle();
    {
        RealMessageBoxes boxes;
        boxes.expect(QStringLiteral("当前窗口名:Jc_Bjsz_Frm"));
        pressFocused(Qt::Key_N, Qt::ControlModifier | Qt::AltModifier);
        pressFocused(Qt::Key_Space);
        s.Bbtn_Qr->setFocus();
        settle();
        pressFocused(Qt::Key_Return);
    }
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(inForce(), (QStringList{"01", "02"}));
}

// The table gone from under the screen: a message each time, the screen
// stays open with its boxes as they were, and the rows are untouched.
TEST_P(AlarmSettings, ADatabaseErrorIsShownAndLosesNothing) {
    setRows(2);
    db->exec("alter table e_bjxz rename to e_bjxz_away");
    ScriptedMessages boxes;
    TJc_Bjsz_Frm s;
    showActive(&s);
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_TRUE(boxes.last().contains("e_bjxz", Qt::CaseInsensitive)) << boxes.last().toStdString();
    EXPECT_EQ(boxes.shown()[0].icon, QMessageBox::Critical);
    click(&s, "ckb_04");
    click(&s, "Bbtn_Qr");
    EXPECT_EQ(boxes.shown().size(), 2u);
    EXPECT_TRUE(s.isVisible());
    EXPECT_TRUE(s.ckb_04->isChecked());
    db->exec("alter table e_bjxz_away rename to e_bjxz");
    EXPECT_EQ(inForce(), (QStringList{"01", "02"}));
    click(&s, "Bbtn_Qr");  // works again once the table is back
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(inForce().size(), 1);
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(AlarmSettings);

}  // namespace
