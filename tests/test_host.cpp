// The host: sign-in against the pass-phrase register, the program's modes
// that need no display, the module loaded by name with its session filled,
// the to-do list and the alarm entries of the menu, on both engines.

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTest>
#include <QTreeWidget>

#include "AlarmScanDialog.h"
#include "DemoGenerator.h"
#include "Fixtures.h"
#include "HostAuth.h"
#include "HostWindow.h"
#include "ScreenHarness.h"
#include "common/Unt_Zt_UserFuncs.h"
#include "data/Connection.h"

using namespace tarvin::test;
using namespace tarvin::host;

namespace {

const QDateTime kAt(QDate(2024, 5, 6), QTime(9, 0));

class Host : public EngineTest {
protected:
    void SetUp() override {
        units(fixture);
        fixture.exec("insert into z_bmbm (dm, mc) values ('0101', '用电检查班')");
        fixture.exec("insert into z_xtczy (dm, xingming, dw, bm, sfyx) values ('0101', '张三', '0101', '0101', 1), "
                      "('0102', '李四', '0101', '0101', 0), ('0103', '王五', '0101', '0101', 1)");
        db = tarvin::db::openConnection(fixture.url(), "Shdl");
        // The cheapest hashing, here and in the programs started from here.
        qputenv("TARVIN_PWHASH_COST", "min");
        HostAuth auth(db);
        auth.ensureTable();
        for (const char* czydm : {"0101", "0102"}) auth.setPassword(czydm, "secret");
        ASSERT_TRUE(module.load()) << module.errorString().toStdString();
    }
    void TearDown() override { tarvin::db::closeConnection("Shdl"); }

    void signIn(SignInDialog& d, const QString& code, const QString& pass) {
        d.Cob_Dw->setCurrentIndex(d.Cob_Dw->findData("0101"));
        d.Edt_Czydm->setText(code);
        d.Edt_Kl->setText(pass);
        click(&d, "Bbtn_Qr");
    }
    static Operator staff(const QString& czydm, const QString& name) {
        return {czydm, name, "0101", QStringLiteral("用电检查班"), "0101", QStringLiteral("城区供电分公司"), "0101"};
    }
    // A case of customer 0000000042 started by 0101.
    static int start(const char* cdbh, const char* ywdm, const char* ywxdm, const char* dw, const QDateTime& at = kAt) {
        return WfFristYwx(cdbh, ywdm, ywxdm, dw, "0000000042", "一般", "0101", at, "陈六", {});
    }

    TestDatabase fixture{dialect(), true, "fixture"};
    QSqlDatabase db;
    ModuleLoader module;
};

// Refusals read alike and take alike; a hash written by an earlier version
// (PBKDF2-HMAC-SHA256, here the RFC 7914 vector for "passwd") signs in once
// and is replaced by an Argon2id one.
TEST_P(Host, SignInRefusesAlikeAndReplacesAnOldHash) {
    fixture.exec("update tarvin_host_kl set salt = '73616c74', rounds = 1, "
                  "hash = '55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc' where czydm = '0101'");
    SignInDialog d(db);
    showActive(&d);
    // A wrong pass phrase, an unknown operator, one out of force.
    const char* refused[][2] = {{"0101", "wrong"}, {"0999", "secret"}, {"0102", "secret"}};
    QStringList said;
    for (const auto& [code, pass] : refused) {
        signIn(d, code, pass);
        said << d.Lbl_Message->text();
        EXPECT_TRUE(d.isVisible() && d.Edt_Kl->text().isEmpty()) << code;
    }
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&d, "sign-in-refused");
    EXPECT_TRUE(!said[0].isEmpty() && said == QStringList(3, said[0])) << said.join(" / ").toStdString();
    signIn(d, "0101", "passwd");
    EXPECT_EQ(d.result(), QDialog::Accepted);
    const Operator& o = d.signedIn();
    EXPECT_EQ((QStringList{o.xingming, o.dwmc, o.bmmc}), (QStringList{"张三", "城区供电分公司", "用电检查班"}));
    EXPECT_TRUE(fixture.scalar("select hash from tarvin_host_kl where czydm = '0101'").toString().startsWith("$argon2id$"));
    EXPECT_TRUE(HostAuth(db).verify("0101", "0101", "passwd"));

    // At a cost that takes measurable time, an unknown operator's refusal
    // takes as long as a known one's.
    HostAuth costly(db, HashCost::Interactive);
    costly.setPassword("0101", "passwd");
    const auto refusal = [&](const char* code) {
        std::vector<double> ns;  // the median of three
        for (QElapsedTimer t; ns.size() < 3; ns.push_back(t.nsecsElapsed())) {
            t.start();
            EXPECT_FALSE(costly.verify(code, "0101", "wrong"));
        }
        std::sort(ns.begin(), ns.end());
        return ns[1];
    };
    const double known = refusal("0101"), unknown = refusal("0999");
    EXPECT_LT(std::max(known, unknown) / std::min(known, unknown), 3.0) << known << " ns against " << unknown << " ns";
}

// --help, --set-password and a bad argument need no display at all.
TEST_P(Host, ConsoleModesRunWithoutADisplay) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) env.remove(name);
    const auto tarvin = [&](const QStringList& args, const QByteArray& input = {}) {
        QProcess p;
        p.setProcessEnvironment(env);
        p.start(QStringLiteral(TARVIN_BIN_DIR "/tarvin"), args);
        p.write(input);
        p.closeWriteChannel();
        EXPECT_TRUE(p.waitForFinished(60000));
        return std::tuple{p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()) + QString::fromUtf8(p.readAllStandardError())};
    };
    auto [code, said] = tarvin({"--help"});
    EXPECT_TRUE(code == 0 && said.contains("--set-password")) << code << said.toStdString();
    std::tie(code, said) = tarvin({"--db", fixture.url(), "--set-password", "0101"}, "new phrase\n");
    EXPECT_TRUE(code == 0 && HostAuth(db).verify("0101", "0101", "new phrase")) << code << said.toStdString();
    std::tie(code, said) = tarvin({"--db", fixture.url(), "--colour"});
    EXPECT_TRUE(code == 2 && said.contains("Unknown option 'colour'")) << code << said.toStdString();
}

// An administrator's menu: the session filled, entries the module lacks
// disabled, alarm options opened through the module, and the alarm scan,
// offered only to a post that grants it, run for the month chosen.
TEST_P(Host, MenuEntriesOfAnAdministrator) {
    grant(fixture, "0101", {"40098"});
    customer(fixture, "0000000001", QStringLiteral("甲"));
    HostWindow clerk(module, staff("0103", QStringLiteral("王五")), db, "test");
    auto* denied = clerk.findChild<QAction*>("act_AlarmScan");
    ASSERT_NE(denied, nullptr);
    EXPECT_TRUE(!denied->isEnabled() && denied->toolTip().contains("40098")) << denied->toolTip().toStdString();

    const Operator op = staff("0101", QStringLiteral("张三"));
    fillSession(module, op, db);
    EXPECT_EQ((QStringList{module.session("Gczydm"), module.session("Gdw"), module.session("Gczyxm")}),
              (QStringList{"0101", "0101", "张三"}));
    EXPECT_EQ(module.session("Gny").size(), 6);
    HostWindow w(module, op, db, "test");
    showActive(&w);
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&w, "host-window");
    auto* plan = find<QAction>(&w, "show_jc_jhbp");
    EXPECT_TRUE(module.hasEntry("show_jc_jhbp") ||
                (plan && !plan->isEnabled() && plan->toolTip().contains("show_jc_jhbp")));
    auto* alarms = w.findChild<QAction*>("show_jc_bjsz");
    ASSERT_TRUE(alarms && alarms->isEnabled());
    onNextModal([&](QWidget* screen) {
        EXPECT_EQ(screen->objectName(), "Jc_Bjsz_Frm");
        click(screen, "ckb_03");
        click(screen, "Bbtn_Qr");
    });
    alarms->trigger();
    EXPECT_EQ(rows(fixture, "select bjdm, sfyx from e_bjxz where czydm = '0101' and bjdm in ('02', '03') order by bjdm"),
              (QStringList{QStringLiteral("02|否"), QStringLiteral("03|是")}));

    auto* scan = w.findChild<QAction*>("act_AlarmScan");
    ASSERT_TRUE(scan->isEnabled());
    QString report, refusal;
    onNextModal([&](QWidget* dlg) {
        auto* d = qobject_cast<AlarmScanDialog*>(dlg);
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(d->Edt_Ny->text(), module.session("Gny")) << "the database's month to start with";
        d->Edt_Ny->setText("202413");
        onNextModal([&](QWidget* box) {
            refusal = box->findChild<QLabel*>("qt_msgbox_label")->text();
            box->close();
        });
        EXPECT_FALSE(d->Scan());
        d->Edt_Ny->setText("202403");
        EXPECT_TRUE(d->Scan());
        report = d->Mem_Jg->toPlainText();
        click(d, "Bbtn_Tc");
    });
    scan->trigger();
    EXPECT_TRUE(refusal.contains("YYYYMM")) << refusal.toStdString();
    EXPECT_EQ(report.count(QStringLiteral("新增")), 7) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("01 变压器停用客户，私自启封用电：新增 0 条")));
}

// A case started through the workflow shows in the to-do list of an
// operator whose post grants the item it waits at, and of no one else; an
// item whose screen the module lacks is listed disabled and says why.
// Opening a case gives the screen the case, and the list follows what the
// screen did once it closes.
TEST_P(Host, ToDoListShowsTheCasesTheOperatorsPostsGrant) {
    grant(fixture, "0101", {"40102"});
    grant(fixture, "0103", {"20101", "16001"});
    ASSERT_EQ(start("0000000123", "401", "40101", "0101"), 0);
    // Another unit's case at the same item is not this operator's work.
    ASSERT_EQ(start("0000000124", "401", "40101", "0102"), 0);
    // Cases at an item of another module, and at one whose screen is missing.
    ASSERT_EQ(start("0000000201", "201", "20101", "0101"), 0);
    fixture.exec("update tarvin_ywx_export set export_name = 'show_jc_nosuch' where ywxdm = '16001'");
    ASSERT_EQ(start("0000000202", "160", "16001", "0101", kAt.addSecs(60)), 0);

    const QList<TodoCase> mine = TodoList::read(db, "0101", "0101");
    ASSERT_EQ(mine.size(), 1);
    const TodoCase& c = mine[0];
    EXPECT_EQ((QStringList{c.cdbh, c.ywxdm, c.ywxmc, c.hm, c.arrived, c.exportName}),
              (QStringList{"0000000123", "40102", "检查工作审批", "陈六", "2024-05-06 09:00:00", "show_jc_jcgzsp"}));

    TodoList others(db, "0103", "0101", [&](const QByteArray& n) { return module.hasEntry(n.constData()); });
    ASSERT_EQ(others.view()->topLevelItemCount(), 2) << "a post that grants other items";
    const QString why[] = {QStringLiteral("其他模块"), "show_jc_nosuch"};
    for (int i : {0, 1}) {
        QTreeWidgetItem* item = others.view()->topLevelItem(i);
        EXPECT_TRUE(!(item->flags() & Qt::ItemIsEnabled) && item->toolTip(0).contains(why[i]))
            << item->toolTip(0).toStdString();
    }
    bool opened = false;
    QObject::connect(&others, &TodoList::openRequested, [&] { opened = true; });
    emit others.view()->itemActivated(others.view()->topLevelItem(0), 0);
    EXPECT_FALSE(opened) << "a disabled item does not open";

    const Operator op = staff("0101", QStringLiteral("张三"));
    fillSession(module, op, db);
    // The mapping lives in the database: point the approval item at a
    // screen the module offers, so opening the case reaches a real screen.
    if (!module.hasEntry("show_jc_jcgzsp"))
        fixture.exec("update tarvin_ywx_export set export_name = 'show_jc_bjsz' where ywxdm = '40102'");
    HostWindow w(module, op, db, "test");
    showActive(&w);
    QTreeWidget* list = w.todoList()->view();
    ASSERT_EQ(list->topLevelItemCount(), 1);
    EXPECT_TRUE(list->topLevelItem(0)->flags() & Qt::ItemIsEnabled);
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&w, "host-todo-list");

    QStringList seen;
    onNextModal([&](QWidget* screen) {
        seen << module.session("Cdbh") << module.session("ywdm") << module.session("Ywxdm");
        // What the approval screen does: pass the case on.
        EXPECT_EQ(WfLcSend("0000000123", "40102", kAt.addSecs(3600), "0101"), 0);
        screen->close();
    });
    list->setFocus();
    list->setCurrentItem(list->topLevelItem(0));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(seen, (QStringList{"0000000123", "401", "40102"}));
    EXPECT_EQ(list->topLevelItemCount(), 0) << "refreshed when the screen closed";

    // A menu entry opens without a document.
    onNextModal([&](QWidget* screen) {
        seen = {module.session("Cdbh"), module.session("Ywxdm")};
        screen->close();
    });
    w.open("show_jc_bjsz");
    EXPECT_EQ(seen, (QStringList{"", ""}));
}

// On the demo utility the leader's list holds the batches waiting for his
// approval, and an inspector, whose post does not grant approval, has none
// of them.
TEST_P(Host, ToDoListOnTheDemoUtility) {
    if (dialect() != tarvin::sql::Dialect::SQLite) GTEST_SKIP() << "the demo picture is taken on SQLite";
    TestDatabase demo(dialect(), false, "demo");
    tarvin::demo::createDemoDatabase(demo.db(), {.customers = 400, .seed = 3, .today = QDate(2025, 3, 10)});
    const int waiting = demo.scalar("select count(*) from z_dqgw where glbm = '0101' and dqywx = '40102'").toInt();
    ASSERT_GT(waiting, 0);
    const auto approvals = [&](const char* czydm) {
        return std::ranges::count(TodoList::read(demo.db(), czydm, "0101"), QStringLiteral("40102"), &TodoCase::ywxdm);
    };
    EXPECT_EQ(approvals("0101002"), waiting);
    EXPECT_EQ(approvals("0101003"), 0);

    const QString name = demo.scalar("select xingming from z_xtczy where dm = '0101002'").toString();
    HostWindow w(module, staff("0101002", name), demo.db(), "demo.sqlite");
    showActive(&w);
    EXPECT_EQ(w.todoList()->view()->topLevelItemCount(), TodoList::read(demo.db(), "0101002", "0101").size());
    screenshot(&w, "host-todo-demo");
}

TARVIN_INSTANTIATE_ENGINES(Host);

}  // namespace
