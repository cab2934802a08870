// The host: sign-in against the pass-phrase register, the module loaded by
// name with its session filled, and alarm options opened from the menu, on
// both engines.
#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSqlQuery>

#include "Connection.h"
#include "HostAuth.h"
#include "HostWindow.h"
#include "ModuleLoader.h"
#include "ScreenHarness.h"
#include "SignInDialog.h"
#include "TestDb.h"

using namespace tarvin::test;
using namespace tarvin::host;

namespace {

TEST(HostAuthHash, Pbkdf2MatchesTheStandardVector) {
    // RFC 7914 section 11, PBKDF2-HMAC-SHA256 with c = 1.
    EXPECT_EQ(pbkdf2Sha256("passwd", "salt", 1, 64).toHex(),
              QByteArray("55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc"
                         "49ca9cccf179b645991664b39d77ef317c71b845b1e30bd509112041d3a19783"));
}

class Host : public EngineTest {
protected:
    void SetUp() override {
        fixture = std::make_unique<TestDatabase>(dialect(), true, "fixture");
        fixture->exec("insert into z_dwbm (dm, mc, sjdw, jb, sfyx) values ('01', '示范供电公司', null, 1, 1)");
        fixture->exec("insert into z_dwbm (dm, mc, sjdw, jb, sfyx) values ('0101', '城东供电所', '01', 2, 1)");
        fixture->exec("insert into z_bmbm (dm, mc) values ('0101', '用电检查班')");
        fixture->exec("insert into z_xtczy (dm, xingming, dw, bm, sfyx) values ('0101', '张三', '0101', '0101', 1)");
        fixture->exec("insert into z_xtczy (dm, xingming, dw, bm, sfyx) values ('0102', '李四', '0101', '0101', 0)");
        db = tarvin::db::openConnection(fixture->url(), "Shdl");
        HostAuth auth(db);
        auth.ensureTable();
        auth.setPassword("0101", "secret");
        auth.setPassword("0102", "secret");
    }
    void TearDown() override { tarvin::db::closeConnection("Shdl"); }

    void signIn(SignInDialog& d, const QString& code, const QString& pass) {
        d.Cob_Dw->setCurrentIndex(d.Cob_Dw->findData("0101"));
        d.Edt_Czydm->setText(code);
        d.Edt_Kl->setText(pass);
        click(&d, "Bbtn_Qr");
    }

    std::unique_ptr<TestDatabase> fixture;
    QSqlDatabase db;
};

TEST_P(Host, SignInRefusesWithoutSayingWhichPartWasWrong) {
    SignInDialog d(db);
    showActive(&d);
    signIn(d, "0101", "wrong");
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&d, "sign-in-refused");
    const QString wrongPassword = d.Lbl_Message->text();
    EXPECT_FALSE(wrongPassword.isEmpty());
    EXPECT_TRUE(d.isVisible());
    EXPECT_TRUE(d.Edt_Kl->text().isEmpty());
    signIn(d, "0999", "secret");
    EXPECT_EQ(d.Lbl_Message->text(), wrongPassword) << "an unknown operator reads the same";
    signIn(d, "0102", "secret");
    EXPECT_EQ(d.Lbl_Message->text(), wrongPassword) << "an operator out of force reads the same";
    signIn(d, "0101", "secret");
    EXPECT_EQ(d.result(), QDialog::Accepted);
    EXPECT_EQ(d.signedIn().xingming, QStringLiteral("张三"));
    EXPECT_EQ(d.signedIn().dwmc, QStringLiteral("城东供电所"));
    EXPECT_EQ(d.signedIn().bmmc, QStringLiteral("用电检查班"));
}

TEST_P(Host, OpensAlarmOptionsThroughTheLoadedModule) {
    ModuleLoader module;
    ASSERT_TRUE(module.load()) << module.errorString().toStdString();
    SignInDialog d(db);
    showActive(&d);
    signIn(d, "0101", "secret");
    ASSERT_EQ(d.result(), QDialog::Accepted);
    fillSession(module, d.signedIn(), db);
    EXPECT_EQ(module.session("Gczydm"), "0101");
    EXPECT_EQ(module.session("Gdw"), "0101");
    EXPECT_EQ(module.session("Gczyxm"), QStringLiteral("张三"));
    EXPECT_EQ(module.session("Gny").size(), 6);

    HostWindow w(module, d.signedIn(), "test");
    showActive(&w);
    if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&w, "host-window");
    // Entries the module does not export yet are disabled and say why.
    auto* plan = w.findChild<QAction*>("show_jc_jhbp");
    ASSERT_NE(plan, nullptr);
    if (!module.hasEntry("show_jc_jhbp")) {
        EXPECT_FALSE(plan->isEnabled());
        EXPECT_TRUE(plan->toolTip().contains("show_jc_jhbp"));
    }
    auto* alarms = w.findChild<QAction*>("show_jc_bjsz");
    ASSERT_NE(alarms, nullptr);
    ASSERT_TRUE(alarms->isEnabled());

    QString title;
    onNextModal([&](QWidget* screen) {
        title = screen->windowTitle();
        EXPECT_EQ(screen->objectName(), "Jc_Bjsz_Frm");
        click(screen, "ckb_03");
        click(screen, "Bbtn_Qr");
    });
    alarms->trigger();
    EXPECT_EQ(title, QStringLiteral("异常客户报警选项"));
    EXPECT_EQ(fixture->scalar("select count(*) from e_bjxz where czydm = '0101'").toInt(), 6);
    EXPECT_EQ(fixture->scalar("select sfyx from e_bjxz where czydm = '0101' and bjdm = '03'").toString(),
              QStringLiteral("是"));
}

TARVIN_INSTANTIATE_ENGINES(Host);

}  // namespace
