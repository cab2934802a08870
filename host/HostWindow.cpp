#include "HostWindow.h"

#include "AlarmScanDialog.h"

#include <QApplication>
#include <QDir>
#include <QHostInfo>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QNetworkInterface>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QStatusBar>
#include <QSysInfo>
#include <QVBoxLayout>

namespace tarvin::host {

namespace {
QString localAddress() {
    for (const QHostAddress& a : QNetworkInterface::allAddresses())
        if (a.protocol() == QAbstractSocket::IPv4Protocol && !a.isLoopback()) return a.toString();
    return QStringLiteral("127.0.0.1");
}
}  // namespace

void fillSession(ModuleLoader& module, const Operator& op, const QSqlDatabase& db) {
    QSqlQuery q(db);
    QString ny;
    if (q.exec(QStringLiteral("SELECT to_char(tarvin_sysdate(), 'yyyymm')")) && q.next()) ny = q.value(0).toString();
    const QList<QPair<QString, QString>> values = {
        {"Gczydm", op.czydm},
        {"Gczyxm", op.xingming},
        {"Gxtid", QStringLiteral("tarvin")},
        {"Gxtname", QStringLiteral("用电检查")},
        {"GloginID", QString::number(QRandomGenerator::global()->bounded(1, 1 << 30))},
        {"GComputerName", QSysInfo::machineHostName()},
        {"GIpAddr", localAddress()},
        {"Qqx", QString()},
        {"GPath", QDir::toNativeSeparators(QCoreApplication::applicationDirPath())},
        {"Gbm", op.bm},
        {"Gny", ny},
        {"Gbmmc", op.bmmc},
        {"DatabaseName", db.databaseName()},
        {"ServerName", db.hostName()},
        {"GFtpservser", QString()},
        {"GHttpserver", QString()},
        {"Gdwdm", op.dwdm},
        {"Gdw", op.dw},
        {"Gdwmc", op.dwmc},
        {"Cdbh", QString()},
        {"ywdm", QString()},
        {"Ywxdm", QString()},
        {"Cldm", QString()},
        {"pgdm", QString()},
        {"bsh", QString()},
        {"xzlx", QString()},
        {"ywxmc", QString()},
        {"J_NewForWyyd", QStringLiteral("0")},
    };
    for (const auto& [name, value] : values) module.setSession(name, value);
}

HostWindow::HostWindow(ModuleLoader& module, const Operator& op, const QSqlDatabase& db,
                       const QString& databaseLabel, QWidget* parent)
    : QMainWindow(parent), module_(module) {
    setObjectName(QStringLiteral("HostWindow"));
    setWindowTitle(QStringLiteral("用电检查 - %1").arg(op.dwmc));
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("Lv_Entries"));
    list_->setViewMode(QListView::IconMode);
    list_->setGridSize(QSize(150, 64));
    list_->setMovement(QListView::Static);
    list_->setResizeMode(QListView::Adjust);
    list_->setWordWrap(true);

    QMap<QString, QMenu*> menus;
    for (const MenuEntry& e : menuEntries()) {
        QMenu*& menu = menus[e.group];
        if (!menu) menu = menuBar()->addMenu(e.group);
        QAction* action = menu->addAction(e.caption);
        action->setObjectName(QString::fromLatin1(e.exportName));
        auto* item = new QListWidgetItem(e.caption, list_);
        item->setData(Qt::UserRole, QByteArray(e.exportName));
        item->setTextAlignment(Qt::AlignCenter);
        if (module_.hasEntry(e.exportName)) {
            const QByteArray name(e.exportName);
            connect(action, &QAction::triggered, this, [this, name] { open(name.constData()); });
            item->setToolTip(e.caption);
        } else {
            const QString why = QStringLiteral("此功能在当前模块中尚未提供（模块没有导出 %1）").arg(QLatin1String(e.exportName));
            action->setEnabled(false);
            action->setToolTip(why);
            menu->setToolTipsVisible(true);
            item->setFlags(item->flags() & ~Qt::ItemIsEnabled);
            item->setToolTip(why);
        }
    }
    connect(list_, &QListWidget::itemActivated, this, &HostWindow::openItem);

    // The alarm scan, for an operator whose post grants it.
    QMenu*& alarmMenu = menus[QStringLiteral("报警通知")];
    if (!alarmMenu) alarmMenu = menuBar()->addMenu(QStringLiteral("报警通知"));
    alarmMenu->addSeparator();
    QAction* scan = alarmMenu->addAction(QStringLiteral("报警扫描…"));
    scan->setObjectName(QStringLiteral("act_AlarmScan"));
    if (operatorHoldsGrant(db, op.czydm, kAlarmScanGrant)) {
        connect(scan, &QAction::triggered, this, [this, db, op] {
            AlarmScanDialog d(db, op, module_.session(QStringLiteral("Gny")), this);
            d.exec();
        });
    } else {
        scan->setEnabled(false);
        scan->setToolTip(QStringLiteral("报警扫描需要岗位授予“异常客户报警扫描”（%1），请联系系统管理员").arg(kAlarmScanGrant));
        alarmMenu->setToolTipsVisible(true);
    }

    todo_ = new TodoList(db, op.czydm, op.dw,
                         [this](const QByteArray& name) { return module_.hasEntry(name.constData()); }, this);
    connect(todo_, &TodoList::openRequested, this, &HostWindow::openCase);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    auto* title = new QLabel(QStringLiteral("功能"), central);
    title->setStyleSheet(QStringLiteral("font-weight: bold"));
    layout->addWidget(title);
    layout->addWidget(list_, 2);
    layout->addWidget(todo_, 3);
    setCentralWidget(central);
    statusBar()->showMessage(QStringLiteral("操作员：%1 %2    单位：%3    数据库：%4")
                                 .arg(op.czydm, op.xingming, op.dwmc, databaseLabel));
    resize(820, 620);
}

void HostWindow::openItem(QListWidgetItem* item) {
    if (!(item->flags() & Qt::ItemIsEnabled)) return;
    open(item->data(Qt::UserRole).toByteArray().constData());
}

bool HostWindow::open(const char* exportName) {
    // A menu entry starts without a document.
    return call(QString(), QString(), QString(), QString(), exportName);
}

bool HostWindow::openCase(const TodoCase& c) {
    return call(c.cdbh, c.ywdm, c.ywxdm, c.ywxmc, c.exportName.toLatin1().constData());
}

bool HostWindow::call(const QString& cdbh, const QString& ywdm, const QString& ywxdm, const QString& ywxmc,
                      const char* exportName) {
    module_.setSession(QStringLiteral("Cdbh"), cdbh);
    module_.setSession(QStringLiteral("ywdm"), ywdm);
    module_.setSession(QStringLiteral("Ywxdm"), ywxdm);
    module_.setSession(QStringLiteral("ywxmc"), ywxmc);
    const bool called = module_.call(exportName);
    // The screen is modal: it has closed, and may have moved cases on.
    todo_->refresh();
    return called;
}

}  // namespace tarvin::host
