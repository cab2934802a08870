// Alarm options through the screen's widgets, on both engines.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <QSqlQuery>

#include "alarms/Frm_Jc_Bjsz.h"
#include "ScreenHarness.h"
#include "TestDb.h"
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

    QStringList rows(const QString& czydm = "0101") {
        QSqlQuery q(db->db());
        q.prepare("select bjdm, sfyx from e_bjxz where czydm = ? order by bjdm");
        q.addBindValue(czydm);
        EXPECT_TRUE(q.exec());
        QStringList out;
        while (q.next()) out << q.value(0).toString() + "=" + q.value(1).toString();
        return out;
    }
    void setRows(int inForce) {
        for (int i = 1; i <= 6; ++i)
            db->exec("insert into e_bjxz (czydm, bjdm, sfyx) values ('0101', ?, ?)",
                     {QString("0%1").arg(i), i <= inForce ? QStringLiteral("是") : QStringLiteral("否")});
    }
    std::unique_ptr<TestDatabase> db;
};

TEST_P(AlarmSettings, FirstConfirmWritesSixRowsWithNoForTheUnchecked) {
    db->exec("insert into e_bjxz (czydm, bjdm, sfyx) values ('0202', '01', '是')");
    TJc_Bjsz_Frm s;
    showActive(&s);
    EXPECT_EQ(s.windowTitle(), QStringLiteral("异常客户报警选项"));
    for (QCheckBox* b : s.AlarmBoxes()) EXPECT_FALSE(b->isChecked()) << b->objectName().toStdString();
    EXPECT_FALSE(s.ckb_qb->isChecked());

    click(&s, "ckb_02");
    click(&s, "ckb_05");
    click(&s, "Bbtn_Qr");
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("01=否"), QStringLiteral("02=是"), QStringLiteral("03=否"),
                                   QStringLiteral("04=否"), QStringLiteral("05=是"), QStringLiteral("06=否")}));
    EXPECT_EQ(rows("0202"), QStringList{QStringLiteral("01=是")}) << "other operators untouched";
}

TEST_P(AlarmSettings, SelectAllIsCheckedOnlyWhenAllSixAreInForce) {
    setRows(5);
    {
        TJc_Bjsz_Frm s;
        showActive(&s);
        EXPECT_FALSE(s.ckb_qb->isChecked());
        EXPECT_TRUE(s.ckb_05->isChecked());
        EXPECT_FALSE(s.ckb_06->isChecked());
        // Ticking the last box and confirming updates the existing rows.
        click(&s, "ckb_06");
        click(&s, "Bbtn_Qr");
    }
    EXPECT_EQ(rows().filter(QStringLiteral("=是")).size(), 6);
    EXPECT_EQ(rows().size(), 6);
    TJc_Bjsz_Frm s;
    showActive(&s);
    EXPECT_TRUE(s.ckb_qb->isChecked());
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, "alarm-settings");
}

TEST_P(AlarmSettings, SelectAllTogglesTheSixAndExitSavesNothing) {
    TJc_Bjsz_Frm s;
    showActive(&s);
    click(&s, "ckb_qb");
    for (QCheckBox* b : s.AlarmBoxes()) EXPECT_TRUE(b->isChecked());
    click(&s, "ckb_qb");
    for (QCheckBox* b : s.AlarmBoxes()) EXPECT_FALSE(b->isChecked());
    click(&s, "ckb_03");
    click(&s, "Bbtn_Tc1");
    EXPECT_FALSE(s.isVisible());
    EXPECT_TRUE(rows().isEmpty());
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
    EXPECT_EQ(rows().filter(QStringLiteral("=是")), (QStringList{QStringLiteral("01=是"), QStringLiteral("02=是")}));
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
    EXPECT_EQ(rows().filter(QStringLiteral("=是")), (QStringList{QStringLiteral("01=是"), QStringLiteral("02=是")}));
    click(&s, "Bbtn_Qr");  // works again once the table is back
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(rows().filter(QStringLiteral("=是")).size(), 1);
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(AlarmSettings);

}  // namespace
