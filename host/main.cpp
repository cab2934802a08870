// tarvin: the host application. Opens the database, signs an operator in,
// loads the module by name and offers its entries.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTextStream>
#include <cstdio>

#include "data/Connection.h"
#include "HostAuth.h"
#include "HostWindow.h"
#include "data/MidasQuery.h"
#include "ModuleLoader.h"
#include "SignInDialog.h"

using namespace tarvin::host;

namespace {

const QString kDemoPassword = QStringLiteral("123456");

QString defaultDemoPath() {
    return QDir::homePath() + QStringLiteral("/.local/share/tarvin/demo.sqlite");
}

// Writes the demo database with the generator beside this program, showing
// its progress line.
bool createDemo(const QString& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QProcess gen;
    gen.setProgram(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("tarvin-demo-db")));
    gen.setArguments({QStringLiteral("--db"), QStringLiteral("sqlite:") + path});
    QProgressDialog progress(QStringLiteral("正在生成演示数据库……"), QString(), 0, 0);
    progress.setWindowTitle(QStringLiteral("用电检查"));
    progress.setMinimumDuration(0);
    QObject::connect(&gen, &QProcess::readyReadStandardError, [&] {
        const QString text = QString::fromUtf8(gen.readAllStandardError());
        const QStringList parts = text.split(QRegularExpression(QStringLiteral("[\r\n]")), Qt::SkipEmptyParts);
        if (!parts.isEmpty()) progress.setLabelText(parts.last().trimmed());
    });
    gen.start();
    while (!gen.waitForFinished(50)) {
        QCoreApplication::processEvents();
        if (gen.state() == QProcess::NotRunning) break;
    }
    return gen.exitStatus() == QProcess::NormalExit && gen.exitCode() == 0;
}

int fail(const QString& message, bool gui = true) {
    if (gui)
        QMessageBox::critical(nullptr, QStringLiteral("用电检查"), message);
    else
        QTextStream(stderr) << message << '\n';
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tarvin"));
    QCommandLineParser args;
    args.setApplicationDescription(QStringLiteral("用电检查 — the inspection-work host"));
    args.addHelpOption();
    args.addOption({QStringLiteral("db"), QStringLiteral("sqlite:PATH or a PostgreSQL URI (default: the demo database)"), QStringLiteral("url")});
    args.addOption({QStringLiteral("demo"), QStringLiteral("Create the database as a demo when it is missing, and give demo operators the demo pass phrase")});
    args.addOption({QStringLiteral("set-password"), QStringLiteral("Set an operator's pass phrase (read from standard input) and exit"), QStringLiteral("czydm")});
    args.process(app);

    const bool demo = args.isSet(QStringLiteral("demo")) || !args.isSet(QStringLiteral("db"));
    QString url = args.value(QStringLiteral("db"));
    if (url.isEmpty()) url = QStringLiteral("sqlite:") + defaultDemoPath();

    tarvin::db::DatabaseUrl parsed;
    try {
        parsed = tarvin::db::DatabaseUrl::parse(url);
    } catch (const std::exception& e) {
        return fail(QStringLiteral("数据库地址不正确：%1").arg(QString::fromUtf8(e.what())), false);
    }
    if (demo && parsed.dialect == tarvin::sql::Dialect::SQLite && !QFileInfo::exists(parsed.path)) {
        if (!createDemo(parsed.path))
            return fail(QStringLiteral("无法生成演示数据库 %1。请运行 tarvin-demo-db 查看原因。").arg(parsed.path));
    }

    QSqlDatabase db;
    try {
        db = tarvin::db::openConnection(url);
    } catch (const std::exception& e) {
        return fail(QStringLiteral("无法打开数据库：%1").arg(QString::fromUtf8(e.what())));
    }
    HostAuth auth(db);
    try {
        auth.ensureTable();
        if (args.isSet(QStringLiteral("set-password"))) {
            const QString code = args.value(QStringLiteral("set-password"));
            const QString pass = QTextStream(stdin).readLine();
            if (pass.isEmpty()) return fail(QStringLiteral("密码不能为空。"), false);
            auth.setPassword(code, pass);
            QTextStream(stdout) << QStringLiteral("已设置操作员 %1 的密码。").arg(code) << '\n';
            return 0;
        }
        if (demo) auth.seedMissing(kDemoPassword);
    } catch (const std::exception& e) {
        return fail(QString::fromUtf8(e.what()));
    }

    ModuleLoader module;
    if (!module.load())
        return fail(QStringLiteral("无法加载用电检查模块 Prj_Tarvin：%1").arg(module.errorString()));

    SignInDialog signIn(db);
    if (signIn.exec() != QDialog::Accepted) return 0;
    fillSession(module, signIn.signedIn(), db);
    HostWindow window(module, signIn.signedIn(), db, parsed.dialect == tarvin::sql::Dialect::SQLite ? parsed.path : parsed.toString());
    window.show();
    return app.exec();
}
