// Alarm reminders through the screen's widgets, on both engines: who sees
// which alarms, closing one with its note, the reminder stamp on closing
// the screen, the printed list, and the host's entry.
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include "data/Connection.h"
#include "alarms/Frm_Jc_Bjtx.h"
#include "Fixtures.h"
#include "ModuleLoader.h"
#include "ModuleTest.h"
#include "frame/Unit_zt_gobal.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QDateTime kNow(QDate(2024, 4, 15), QTime(10, 30, 0));

class AlarmReminders : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        tarvin::db::setFixedClock(u"Shdl"_s, kNow);
        Gdw = u"0101"_s;
        Gdwmc = u"城区供电分公司"_s;
        Gczydm = u"0101001"_s;
        Gczyxm = u"张检查"_s;
        // 0101001's post grants the alarm handling, 0101002's only an inspection item.
        grant(*db, u"0101001"_s, {u"40099"_s}, u"g1"_s);
        grant(*db, u"0101002"_s, {u"40102"_s}, u"g2"_s);
        // Both chose kinds 01, 02 and 04; 0101001 switched 03 off.
        db->exec(u"INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('0101001', '01', '是'), ('0101001', '02', '是'), "
                 "('0101001', '03', '否'), ('0101001', '04', '是'), ('0101002', '01', '是'), ('0101002', '02', '是'), "
                 "('0101002', '04', '是')"_s);
        const char* alarms[][6] = {  // hh, hm, yddz, dw, bjdm, bjxm
            {"0000000001", "王一", "城东路1号", "0101", "01", "变压器报停期间有电量120千瓦时"},
            {"0000000002", "李二", "城东路2号", "0101", "02", "专变客户抄见电量为零"},
            {"0000000003", "赵三", "城西路3号", "0101", "03", "力率考核客户无功电量为零"},
            {"0000000004", "钱四", "城西路4号", "0101", "04", "本月电量波动75%"},
            {"0000000009", "外九", "郊区9号", "0102", "01", "其他单位"}};
        for (const auto& a : alarms) {
            customer(*db, a[0], a[1], a[2], a[3]);
            db->exec(u"INSERT INTO e_bjtx (ny, hh, bjdm, dw, bjxm, zt) VALUES ('202403', ?, ?, ?, ?, '未处理')"_s,
                     {a[0], a[4], a[3], a[5]});
        }
    }
    // What the host's entry does before showing the screen.
    void open(TJc_Bjtx_Frm& s) {
        s.Mqry_Bj->Close();
        s.Mqry_Bj->ParamByName(u"dw"_s).SetAsString(Gdw);
        s.Mqry_Bj->ParamByName(u"czydm"_s).SetAsString(Gczydm);
        s.Mqry_Bj->Open();
        showActive(&s);
    }
    static QStringList listed(TJc_Bjtx_Frm& s) { return columnTexts(s.Dbg_sx, 1); }
    QStringList stamped() { return rows(*db, u"SELECT hh FROM e_bjtx WHERE txrq IS NOT NULL ORDER BY hh"_s); }
    QString state(const QString& hh) {
        return rows(*db, u"SELECT zt, clr, clqk, clrq FROM e_bjtx WHERE hh = ?"_s, {hh}).value(0);
    }
    const QStringList shown{u"0000000001"_s, u"0000000002"_s, u"0000000004"_s};
};

// The unit's open alarms of the kinds chosen; closing one needs a note and
// a Yes and closes that one only; leaving the screen stamps every alarm it
// showed, once.
TEST_P(AlarmReminders, ListsClosesAndStampsTheUnitsOpenAlarms) {
    TJc_Bjtx_Frm s;
    open(s);
    // Kind 03 is switched off, 0000000009 belongs to another unit.
    EXPECT_EQ(listed(s), shown);
    EXPECT_EQ((QStringList{s.Dbe_bsh->text(), s.DBEdit1->text(), s.Dbe_dz->text()}),
              (QStringList{u"0000000001"_s, u"王一"_s, u"城东路1号"_s}));
    EXPECT_TRUE(s.Dbe_bsh->isReadOnly() && s.Dbe_sm->isReadOnly() && !s.Dbe_clqk->isReadOnly());
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, u"alarm-reminders"_s);

    ScriptedMessages msgs;
    const QString before = state(u"0000000001"_s);
    click(&s, u"Bbtn_Over"_s);  // no note
    EXPECT_EQ(msgs.last(), u"请输入处理情况！"_s);
    EXPECT_EQ(state(u"0000000001"_s), before);
    // Chinese text arrives through the input method, not as key presses.
    s.Dbe_clqk->setFocus();
    s.Dbe_clqk->insert(u"已上门核实，恢复封印"_s);
    msgs.answer(QMessageBox::No);
    click(&s, u"Bbtn_Over"_s);
    EXPECT_EQ(msgs.last(), u"确认该户异常已经处理结束吗？"_s);
    EXPECT_EQ(state(u"0000000001"_s), before) << "a No changes nothing";
    EXPECT_EQ(listed(s), shown);
    msgs.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Over"_s);
    EXPECT_EQ(state(u"0000000001"_s), u"已处理|张检查|已上门核实，恢复封印|2024-04-15 10:30:00"_s);
    EXPECT_EQ(listed(s), (QStringList{u"0000000002"_s, u"0000000004"_s})) << "the handled alarm leaves the list";
    EXPECT_EQ(state(u"0000000002"_s), before) << "only the current alarm is closed";

    EXPECT_TRUE(stamped().isEmpty()) << "nothing is stamped before the screen closes";
    press(&s, Qt::Key_Escape);  // the exit button
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(stamped(), shown) << "the handled alarm too: it was shown";
    const auto stamps = [&] { return rows(*db, u"SELECT DISTINCT txrq FROM e_bjtx WHERE txrq IS NOT NULL"_s); };
    EXPECT_EQ(stamps(), QStringList{u"2024-04-15 10:30:00"_s}) << "stamped with the database clock";

    // Shown again later: the stamps stay.
    tarvin::db::setFixedClock(u"Shdl"_s, kNow.addDays(1));
    TJc_Bjtx_Frm again;
    open(again);
    EXPECT_EQ(listed(again).size(), 2);
    click(&again, u"Bbtn_Tc"_s);
    EXPECT_EQ(stamps(), QStringList{u"2024-04-15 10:30:00"_s}) << "closing twice stamps nothing the second time";
}

// No unit (the host's entry with none), an operator without the grant, a
// post out of use: an empty list, no error, nothing to close or stamp.
TEST_P(AlarmReminders, WithoutAUnitOrTheGrantNothingIsListedOrStamped) {
    const std::tuple<QString, QString, int> cases[] = {
        {u""_s, u"0101001"_s, 1}, {u"0101"_s, u"0101002"_s, 1}, {u"0101"_s, u"0101001"_s, 0}};
    ScriptedMessages msgs;
    for (const auto& [dw, czydm, postInUse] : cases) {
        Gdw = dw;
        Gczydm = czydm;
        db->exec(u"UPDATE z_gw SET sfyx = ? WHERE dm = 'g1'"_s, {postInUse});
        TJc_Bjtx_Frm s;
        open(s);
        EXPECT_TRUE(listed(s).isEmpty()) << czydm.toStdString();
        click(&s, u"Bbtn_Over"_s);
        click(&s, u"Bbtn_Tc"_s);
        EXPECT_TRUE(stamped().isEmpty());
    }
    EXPECT_EQ(msgs.texts(), QStringList(3, u"请选择异常报警客户！"_s));
}

// As a person works it: keys to the focused control, real boxes.
TEST_P(AlarmReminders, MainFlowByKeysWithRealBoxes) {
    TJc_Bjtx_Frm s;
    open(s);
    s.Dbg_sx->setFocus();
    settle();
    pressFocused(Qt::Key_Down);
    EXPECT_EQ(s.Dbe_bsh->text(), u"0000000002"_s);
    s.Dbe_clqk->setFocus();
    s.Dbe_clqk->insert(u"已核实"_s);
    s.Bbtn_Over->setFocus();
    settle();
    {
        RealMessageBoxes boxes;
        boxes.expect(u"确认该户异常已经处理结束吗？"_s, QMessageBox::Yes);
        pressFocused(Qt::Key_Return);
    }
    EXPECT_EQ(state(u"0000000002"_s), u"已处理|张检查|已核实|2024-04-15 10:30:00"_s);
    pressFocused(Qt::Key_Escape);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(stamped().size(), 3);
}

TEST_P(AlarmReminders, PrintsTheListWithUnitOperatorAndEveryAccount) {
    TJc_Bjtx_Frm s;
    open(s);
    EXPECT_EQ(modalOpenedBy([&] { click(&s, u"Bbtn_Dy"_s); }), u"QPrintPreviewDialog"_s);
    QTemporaryDir dir;
    s.FRDB_Bjtx.ExportPdf(dir.filePath(u"list.pdf"_s));
    const QString text = pdfText(dir.filePath(u"list.pdf"_s));
    for (const QString& want : QStringList{u"城区供电分公司"_s, u"0101001"_s} + shown)
        EXPECT_TRUE(text.contains(want)) << want.toStdString() << "\n" << text.toStdString();
    EXPECT_FALSE(text.contains(u"0000000003"_s));

    // Without its layout the print says what is missing, and nothing breaks.
    db->exec(u"DELETE FROM z_report WHERE bbmc = '报警提醒清单'"_s);
    ScriptedMessages msgs;
    click(&s, u"Bbtn_Dy"_s);
    EXPECT_TRUE(msgs.last().startsWith(u"打印报警提醒清单出错"_s) && msgs.last().contains(u"z_report"_s))
        << msgs.last().toStdString();
}

// The host's entry binds the list and opens it before the screen shows.
TEST_P(AlarmReminders, TheEntryShowsTheScreenWithTheListOpen) {
    tarvin::host::ModuleLoader module;
    ASSERT_TRUE(module.load()) << module.errorString().toStdString();
    module.setSession(u"Gdw"_s, u"0101"_s);
    module.setSession(u"Gczydm"_s, u"0101001"_s);
    int rows = -1;
    QString title;
    onNextModal([&](QWidget* w) {
        title = w->windowTitle();
        rows = w->findChild<QTableView*>(u"Dbg_sx"_s)->model()->rowCount();
        w->close();
    });
    ASSERT_TRUE(module.call("show_jc_bjtx"));
    EXPECT_EQ(title, u"异常客户报警"_s);
    EXPECT_EQ(rows, 3);
    EXPECT_EQ(stamped(), shown) << "closing through the entry stamps as well";
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(AlarmReminders);

}  // namespace
