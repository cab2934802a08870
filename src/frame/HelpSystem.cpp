#include "HelpSystem.h"

#include "MessageService.h"

#include <QApplication>
#include <QDialog>
#include <QFileInfo>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

static void initHelpResources() { Q_INIT_RESOURCE(help); }

namespace tarvin {

namespace {

QString& currentFile() {
    static QString file;
    return file;
}

HelpSystem::Viewer& viewer() {
    static HelpSystem::Viewer v;
    return v;
}

// A child of the screen in front, so that a modal screen does not block it.
void openViewer(const QString& file, const QString& topic) {
    const QString html = HelpSystem::resolve(file);
    if (html.isEmpty()) {
        MessageService::show(QStringLiteral("找不到帮助文件“%1”。请检查 dlyx.INI 中 [Common] 节的设置，或与系统管理员联系。").arg(file),
                             QStringLiteral("帮助"), QMessageBox::Warning);
        return;
    }
    auto* dialog = new QDialog(QApplication::activeWindow());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("HelpViewer"));
    dialog->setWindowTitle(QStringLiteral("帮助 - %1").arg(QFileInfo(file).completeBaseName()));
    dialog->resize(720, 560);
    auto* browser = new QTextBrowser(dialog);
    browser->setObjectName(QStringLiteral("HelpBrowser"));
    browser->setOpenExternalLinks(false);
    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(browser);
    QUrl url = html.startsWith(QLatin1Char(':')) ? QUrl(QStringLiteral("qrc") + html)
                                                 : QUrl::fromLocalFile(QFileInfo(html).absoluteFilePath());
    url.setFragment(topic);
    browser->setSource(url);
    dialog->show();
}

}  // namespace

QString HelpSystem::helpFile() { return currentFile(); }

void HelpSystem::setHelpFile(const QString& file) { currentFile() = file; }

QString HelpSystem::resolve(const QString& file) {
    initHelpResources();
    if (file.trimmed().isEmpty()) return {};
    const QFileInfo info(file);
    const QString suffix = info.suffix().toLower();
    if ((suffix == QLatin1String("html") || suffix == QLatin1String("htm")) && info.exists())
        return info.filePath();
    const QString shipped = QStringLiteral(":/help/%1.html").arg(info.completeBaseName());
    if (QFileInfo::exists(shipped)) return shipped;
    return {};
}

void HelpSystem::showTopic(const QString& topic) {
    if (viewer())
        viewer()(currentFile(), topic);
    else
        openViewer(currentFile(), topic);
}

HelpSystem::Viewer HelpSystem::setViewer(Viewer v) {
    Viewer previous = std::move(viewer());
    viewer() = std::move(v);
    return previous;
}

}  // namespace tarvin
