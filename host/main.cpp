// tarvin: the host application. Opens the database, signs an operator in,
// loads the module by name and offers its entries. --help and --set-password
// run without a display.
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
#include <memory>

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
// its progress line (in a window, or as it comes on a terminal).
bool createDemo(const QString& path, bool gui) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QProcess gen;
    gen.setProgram(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("tarvin-demo-db")));
    gen.setArguments({QStringLiteral("--db"), QStringLiteral("sqlite:") + path});
    if (!gui) {
        gen.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        gen.start();
        gen.waitForFinished(-1);
        return gen.exitStatus() == QProcess::NormalExit && gen.exitCode() == 0;
    }
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

int fail(const QString& message, bool gui) {
    if (gui)
        QMessageBox::critical(nullptr, QStringLiteral("用电检查"), message);
    else
        QTextStream(stderr) << message << '\n';
    return 1;
}

int usageError(const QString& message, const QCommandLineParser& args) {
    QTextStream(stderr) << "tarvin: " << message << "\n\n" << args.helpText();
    return 2;
}

// The application object a run needs, decided before any exists: only the
// window wants a display. Offscreen is for modes that draw without one.
enum class AppKind { Console, Window, Offscreen };

AppKind appKindFor(bool parsed, const QCommandLineParser& args) {
    if (!parsed || !args.positionalArguments().isEmpty() || args.isSet(QStringLiteral("help")) ||
        args.isSet(QStringLiteral("set-password")))
        return AppKind::Console;
    return AppKind::Window;
}

std::unique_ptr<QCoreApplication> makeApplication(AppKind kind, int& argc, char** argv) {
    switch (kind) {
    case AppKind::Console: return std::make_unique<QCoreApplication>(argc, argv);
    case AppKind::Offscreen: qputenv("QT_QPA_PLATFORM", "offscreen"); break;
    case AppKind::Window: break;
    }
    return std::make_unique<QApplication>(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    QStringList argList;
    for (int i = 0; i < argc; ++i) argList << QString::fromLocal8Bit(argv[i]);
    QCommandLineParser args;
    args.setApplicationDescription(QStringLiteral("用电检查 — the inspection-work host"));
    // Not addHelpOption(): its --help-all offers Qt's own options (-platform
    // ...), which the arguments read before any application object refuse.
    args.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Displays this help.")});
    args.addOption({QStringLiteral("db"), QStringLiteral("sqlite:PATH or a PostgreSQL URI (default: the demo database)"), QStringLiteral("url")});
    args.addOption({QStringLiteral("demo"), QStringLiteral("Create the database as a demo when it is missing, and give demo operators the demo pass phrase")});
    args.addOption({QStringLiteral("set-password"), QStringLiteral("Set an operator's pass phrase (read from standard input) and exit; needs no display"), QStringLiteral("czydm")});
    const bool parsed = args.parse(argList);
    const AppKind kind = appKindFor(parsed, args);
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    if (kind == AppKind::Window && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        QTextStream(stderr) << "tarvin: the window needs a display, and neither DISPLAY nor WAYLAND_DISPLAY is set; "
                               "--help and --set-password run without one.\n";
        return 1;
    }
#endif
    const std::unique_ptr<QCoreApplication> app = makeApplication(kind, argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarvin"));
    if (!parsed) return usageError(args.errorText(), args);
    if (args.isSet(QStringLiteral("help"))) {
        QTextStream(stdout) << args.helpText();
        return 0;
    }
    if (!args.positionalArguments().isEmpty())
        return usageError(QStringLiteral("unexpected argument '%1'").arg(args.positionalArguments().first()), args);
    const bool gui = kind == AppKind::Window;

    const bool demo = args.isSet(QStringLiteral("demo")) || !args.isSet(QStringLiteral("db"));
    QString url = args.value(QStringLiteral("db"));
    if (url.isEmpty()) url = QStringLiteral("sqlite:") + defaultDemoPath();

    tarvin::db::DatabaseUrl parsedUrl;
    try {
        parsedUrl = tarvin::db::DatabaseUrl::parse(url);
    } catch (const std::exception& e) {
        return fail(QStringLiteral("数据库地址不正确：%1").arg(QString::fromUtf8(e.what())), false);
    }
    if (demo && parsedUrl.dialect == tarvin::sql::Dialect::SQLite && !QFileInfo::exists(parsedUrl.path)) {
        if (!createDemo(parsedUrl.path, gui))
            return fail(QStringLiteral("无法生成演示数据库 %1。请运行 tarvin-demo-db 查看原因。").arg(parsedUrl.path), gui);
    }

    QSqlDatabase db;
    try {
        db = tarvin::db::openConnection(url);
    } catch (const std::exception& e) {
        return fail(QStringLiteral("无法打开数据库：%1").arg(QString::fromUtf8(e.what())), gui);
    }
    try {
        HostAuth auth(db);
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
        return fail(QString::fromUtf8(e.what()), gui);
    }

    ModuleLoader module;
    if (!module.load())
        return fail(QStringLiteral("无法加载用电检查模块 Prj_Tarvin：%1").arg(module.errorString()), gui);

    SignInDialog signIn(db);
    if (signIn.exec() != QDialog::Accepted) return 0;
    fillSession(module, signIn.signedIn(), db);
    HostWindow window(module, signIn.signedIn(), db,
                      parsedUrl.dialect == tarvin::sql::Dialect::SQLite ? parsedUrl.path : parsedUrl.toString());
    window.show();
    return app->exec();
}
