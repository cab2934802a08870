// Alarm reminders through the screen's widgets, on both engines: who sees
// which alarms, closing one with its note, the reminder stamp on closing
// the screen, the printed list, and the host's entry.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QPrintPreviewDialog>
#include <QProcess>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>
#include <dlfcn.h>

#include "data/Connection.h"
#include "data/DataModules.h"
#include "alarms/Frm_Jc_Bjtx.h"
#include "ModuleTest.h"
#include "ScreenHarness.h"
#include "TestDb.h"
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
        // 0101001 holds a post whose function grants the alarm handling; 0101002
        // holds a post whose function grants only an inspection item.
        db->exec(u"INSERT INTO z_gw (dm, mc, dw, sfyx) VALUES ('g1', '检查班', '0101', 1), ('g2', '营业班', '0101', 1)"_s);
        db->exec(u"INSERT INTO z_ywzn (dm, mc, sfyx) VALUES ('z1', '报警处理', 1), ('z2', '检查审批', 1)"_s);
        db->exec(u"INSERT INTO z_gwyzn (gwdm, zndm) VALUES ('g1', 'z1'), ('g2', 'z2')"_s);
        db->exec(u"INSERT INTO z_znyywx (zndm, cldm) VALUES ('z1', '40099'), ('z2', '40102')"_s);
        db->exec(u"INSERT INTO z_czyygw (czydm, zdm) VALUES ('0101001', 'g1'), ('0101002', 'g2')"_s);
        for (const char* code : {"01", "02", "04"})
            for (const char* czy : {"0101001", "0101002"})
                db->exec(u"INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES (?, ?, '是')"_s,
                         {QString::fromLatin1(czy), QString::fromLatin1(code)});
        db->exec(u"INSERT INTO e_bjxz (czydm, bjdm, sfyx) VALUES ('0101001', '03', '否')"_s);
        customer("0000000001", "王一", "城东路1号", "0101");
        customer("0000000002", "李二", "城东路2号", "0101");
        customer("0000000003", "赵三", "城西路3号", "0101");
        customer("0000000004", "钱四", "城西路4号", "0101");
        customer("0000000009", "外九", "郊区9号", "0102");
        alarm("202403", "0000000001", "01", "0101", "变压器报停期间有电量120千瓦时");
        alarm("202403", "0000000002", "02", "0101", "专变客户抄见电量为零");
        alarm("202403", "0000000003", "03", "0101", "力率考核客户无功电量为零");  // kind switched off
        alarm("202403", "0000000004", "04", "0101", "本月电量波动75%");
        alarm("202403", "0000000009", "01", "0102", "其他单位");
    }
    void TearDown() override {
        ModuleTest::TearDown();
        Gdwmc.clear();
        Gczydm.clear();
        Gczyxm.clear();
    }

    void customer(const char* hh, const char* hm, const char* yddz, const char* dw) {
        db->exec(u"INSERT INTO y_khda (hh, hm, yddz, dw, xhbz) VALUES (?, ?, ?, ?, '否')"_s,
                 {QString::fromUtf8(hh), QString::fromUtf8(hm), QString::fromUtf8(yddz), QString::fromUtf8(dw)});
    }
    void alarm(const char* ny, const char* hh, const char* bjdm, const char* dw, const char* bjxm) {
        db->exec(u"INSERT INTO e_bjtx (ny, hh, bjdm, dw, bjxm, zt) VALUES (?, ?, ?, ?, ?, '未处理')"_s,
                 {QString::fromUtf8(ny), QString::fromUtf8(hh), QString::fromUtf8(bjdm), QString::fromUtf8(dw),
                  QString::fromUtf8(bjxm)});
    }

    // What the host's entry does before showing the screen.
    void open(TJc_Bjtx_Frm& s) {
        s.Mqry_Bj->Close();
        s.Mqry_Bj->ParamByName(u"dw"_s).SetAsString(Gdw);
        s.Mqry_Bj->ParamByName(u"czydm"_s).SetAsString(Gczydm);
        s.Mqry_Bj->Open();
        showActive(&s);
    }
    QStringList listed(TJc_Bjtx_Frm& s) {
        QStringList out;
        auto* m = s.Dbg_sx->model();
        for (int r = 0; r < m->rowCount(); ++r) out << m->index(r, 1).data().toString();
        return out;
    }
    QStringList stamped() {
        QSqlQuery q(db->db());
        EXPECT_TRUE(q.exec(u"SELECT hh FROM e_bjtx WHERE txrq IS NOT NULL ORDER BY hh"_s));
        QStringList out;
        while (q.next()) out << q.value(0).toString();
        return out;
    }
    QString state(const QString& hh) {
        QSqlQuery q(db->db());
        q.prepare(u"SELECT zt, clr, clqk, clrq FROM e_bjtx WHERE hh = ?"_s);
        q.addBindValue(hh);
        EXPECT_TRUE(q.exec() && q.next());
        QString clrq = q.value(3).toString().replace(u'T', u' ');
        return QStringList{q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), clrq.left(19)}
            .join(u'|');
    }
};

TEST_P(AlarmReminders, ListsTheUnitsOpenAlarmsOfTheChosenKindsAndStampsThemOnClose) {
    TJc_Bjtx_Frm s;
    open(s);
    EXPECT_EQ(s.windowTitle(), u"异常客户报警"_s);
    // Kind 03 is switched off, 0000000009 belongs to another unit.
    EXPECT_EQ(listed(s), (QStringList{u"0000000001"_s, u"0000000002"_s, u"0000000004"_s}));
    EXPECT_EQ(s.Dbg_sx->model()->headerData(3, Qt::Horizontal).toString(), u"报警内容"_s);
    EXPECT_EQ(s.Dbe_bsh->text(), u"0000000001"_s);
    EXPECT_EQ(s.DBEdit1->text(), u"王一"_s);
    EXPECT_EQ(s.Dbe_dz->text(), u"城东路1号"_s);
    EXPECT_TRUE(s.Dbe_bsh->isReadOnly() && s.Dbe_sm->isReadOnly() && !s.Dbe_clqk->isReadOnly());
    // The grid and the edits follow each other.
    s.Dbg_sx->selectRow(2);
    settle();
    EXPECT_EQ(s.Dbe_bsh->text(), u"0000000004"_s);
    EXPECT_EQ(s.Dbe_sm->text(), u"本月电量波动75%"_s);
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, u"alarm-reminders"_s);

    EXPECT_TRUE(stamped().isEmpty()) << "nothing is stamped before the screen closes";
    press(&s, Qt::Key_Escape);  // the exit button
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(stamped(), (QStringList{u"0000000001"_s, u"0000000002"_s, u"0000000004"_s}));
    EXPECT_EQ(db->scalar(u"SELECT COUNT(*) FROM e_bjtx WHERE txrq = ?"_s, {u"2024-04-15 10:30:00"_s}).toInt(), 3)
        << "stamped with the database clock";

    // Shown again later: the stamps stay, the list is ordered by kind then date.
    tarvin::db::setFixedClock(u"Shdl"_s, kNow.addDays(1));
    TJc_Bjtx_Frm again;
    open(again);
    EXPECT_EQ(listed(again).size(), 3);
    click(&again, u"Bbtn_Tc"_s);
    EXPECT_EQ(db->scalar(u"SELECT COUNT(*) FROM e_bjtx WHERE txrq = ?"_s, {u"2024-04-15 10:30:00"_s}).toInt(), 3)
        << "closing twice stamps nothing the second time";
}

TEST_P(AlarmReminders, AnOperatorWithoutTheGrantSeesNothingAndStampsNothing) {
    Gczydm = u"0101002"_s;
    TJc_Bjtx_Frm s;
    open(s);
    EXPECT_TRUE(listed(s).isEmpty());
    ScriptedMessages msgs;
    click(&s, u"Bbtn_Over"_s);
    EXPECT_EQ(msgs.last(), u"请选择异常报警客户！"_s);
    click(&s, u"Bbtn_Tc"_s);
    EXPECT_TRUE(stamped().isEmpty());

    // A post out of use grants nothing either.
    db->exec(u"UPDATE z_gw SET sfyx = 0 WHERE dm = 'g1'"_s);
    Gczydm = u"0101001"_s;
    TJc_Bjtx_Frm off;
    open(off);
    EXPECT_TRUE(listed(off).isEmpty());
    click(&off, u"Bbtn_Tc"_s);
    EXPECT_TRUE(stamped().isEmpty());

    // An empty unit (the host's entry with no unit) lists nothing, no error.
    db->exec(u"UPDATE z_gw SET sfyx = 1 WHERE dm = 'g1'"_s);
    Gdw.clear();
    TJc_Bjtx_Frm none;
    open(none);
    EXPECT_TRUE(listed(none).isEmpty());
    EXPECT_TRUE(msgs.texts().size() == 1) << msgs.texts().join(u"; "_s).toStdString();
}

TEST_P(AlarmReminders, ClosingAnAlarmNeedsANoteAndAYesAndRecordsWhoAndWhen) {
    TJc_Bjtx_Frm s;
    open(s);
    ScriptedMessages msgs;
    const QString before = state(u"0000000001"_s);

    click(&s, u"Bbtn_Over"_s);  // no note
    EXPECT_EQ(msgs.last(), u"请输入处理情况！"_s);
    EXPECT_EQ(msgs.shown().back().caption, u"系统提示"_s);
    EXPECT_EQ(state(u"0000000001"_s), before);

    // Chinese text arrives through the input method, not as key presses.
    s.Dbe_clqk->setFocus();
    s.Dbe_clqk->insert(u"已上门核实，恢复封印"_s);
    msgs.answer(QMessageBox::No);
    click(&s, u"Bbtn_Over"_s);
    EXPECT_EQ(msgs.last(), u"确认该户异常已经处理结束吗？"_s);
    EXPECT_EQ(state(u"0000000001"_s), before) << "a No changes nothing";
    EXPECT_EQ(listed(s).size(), 3);

    msgs.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Over"_s);
    EXPECT_EQ(state(u"0000000001"_s), u"已处理|张检查|已上门核实，恢复封印|2024-04-15 10:30:00"_s);
    EXPECT_EQ(listed(s), (QStringList{u"0000000002"_s, u"0000000004"_s})) << "the handled alarm leaves the list";
    EXPECT_EQ(state(u"0000000002"_s).section(u'|', 0, 0), u"未处理"_s) << "only the current alarm is closed";

    // Closing stamps the handled alarm too: it was shown.
    click(&s, u"Bbtn_Tc"_s);
    EXPECT_EQ(stamped(), (QStringList{u"0000000001"_s, u"0000000002"_s, u"0000000004"_s}));
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
    QString previewTitle;
    onNextModal([&](QWidget* w) {
        previewTitle = w->metaObject()->className();
        w->close();
    });
    click(&s, u"Bbtn_Dy"_s);
    EXPECT_EQ(previewTitle, u"QPrintPreviewDialog"_s);
    EXPECT_EQ(s.FRDB_Bjtx.Variables().Text().split(u'\n', Qt::SkipEmptyParts),
              (QStringList{u"Dwdm='0101'"_s, u"Dwmc='城区供电分公司'"_s, u"Czydm='0101001'"_s}));

    QTemporaryDir dir;
    const QString pdf = dir.filePath(u"list.pdf"_s);
    s.FRDB_Bjtx.ExportPdf(pdf);
    QProcess p;
    p.start(u"pdftotext"_s, {pdf, u"-"_s});
    ASSERT_TRUE(p.waitForFinished(30000));
    // CJK fonts map some glyphs to Kangxi radicals; NFKC maps them back.
    QString text = QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
    text.remove(u' ');
    for (const QString& want : {u"城区供电分公司"_s, u"0101001"_s, u"0000000001"_s, u"0000000002"_s, u"0000000004"_s})
        EXPECT_TRUE(text.contains(want)) << want.toStdString() << "\n" << text.toStdString();
    EXPECT_FALSE(text.contains(u"0000000003"_s));

    // Without its layout the print says what is missing, and nothing breaks.
    db->exec(u"DELETE FROM z_report WHERE bbmc = '报警提醒清单'"_s);
    ScriptedMessages msgs;
    click(&s, u"Bbtn_Dy"_s);
    EXPECT_TRUE(msgs.last().startsWith(u"打印报警提醒清单出错"_s)) << msgs.last().toStdString();
    EXPECT_TRUE(msgs.last().contains(u"z_report"_s));
}

// The host's entry binds the list and opens it before the screen shows.
TEST_P(AlarmReminders, TheEntryShowsTheScreenWithTheListOpen) {
    void* lib = dlopen(TARVIN_LIB_DIR "/libPrj_Tarvin.so", RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(lib, nullptr) << dlerror();
    auto set = reinterpret_cast<int (*)(const char*, const char*)>(dlsym(lib, "tarvin_set_session"));
    auto entry = reinterpret_cast<void (*)(std::int32_t)>(dlsym(lib, "show_jc_bjtx"));
    ASSERT_TRUE(set && entry);
    set("Gdw", "0101");
    set("Gczydm", "0101001");
    int rows = -1;
    QString title;
    onNextModal([&](QWidget* w) {
        title = w->windowTitle();
        rows = w->findChild<QTableView*>(u"Dbg_sx"_s)->model()->rowCount();
        w->close();
    });
    entry(0);
    EXPECT_EQ(title, u"异常客户报警"_s);
    EXPECT_EQ(rows, 3);
    EXPECT_EQ(stamped().size(), 3) << "closing through the entry stamps as well";
    set("Gdw", "");
    set("Gczydm", "");
    dlclose(lib);
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(AlarmReminders);

}  // namespace
