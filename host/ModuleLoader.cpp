#include "ModuleLoader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tarvin::host {

const QList<MenuEntry>& menuEntries() {
    static const QList<MenuEntry> entries = {
        {"show_jc_kykhjs", QStringLiteral("异常客户检索"), QStringLiteral("检查计划")},
        {"show_jc_njhbz", QStringLiteral("年检查计划编制"), QStringLiteral("检查计划")},
        {"show_jc_yjhbz", QStringLiteral("月检查计划编制"), QStringLiteral("检查计划")},
        {"show_jc_jhbp", QStringLiteral("检查计划排程"), QStringLiteral("检查计划")},
        {"show_jc_jcgzsp", QStringLiteral("检查工作审批"), QStringLiteral("检查工作")},
        {"show_jc_jcgzd", QStringLiteral("检查工作单"), QStringLiteral("检查工作")},
        {"show_jc_jcgzjgjl", QStringLiteral("检查结果录入"), QStringLiteral("检查工作")},
        {"show_jc_qxqk", QStringLiteral("缺陷情况"), QStringLiteral("检查工作")},
        {"show_jc_qxqkjl", QStringLiteral("缺陷情况记录"), QStringLiteral("检查工作")},
        {"show_jc_jlyccl", QStringLiteral("计量异常处理"), QStringLiteral("计量异常")},
        {"show_jc_tbcltz", QStringLiteral("通知处理"), QStringLiteral("报警通知")},
        {"show_jc_bjsz", QStringLiteral("报警设置"), QStringLiteral("报警通知")},
        {"show_jc_bjtx", QStringLiteral("报警提醒"), QStringLiteral("报警通知")},
    };
    return entries;
}

QString ModuleLoader::defaultFileName() {
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../lib/Prj_Tarvin"));
    return beside;
}

ModuleLoader::ModuleLoader(const QString& fileName)
    : lib_(fileName.isEmpty() ? defaultFileName() : fileName) {}

ModuleLoader::~ModuleLoader() {
    if (lib_.isLoaded()) lib_.unload();
}

bool ModuleLoader::load() {
    if (!lib_.load()) {
        // Fall back to the loader's own search path.
        lib_.setFileName(QStringLiteral("Prj_Tarvin"));
        if (!lib_.load()) {
            error_ = lib_.errorString();
            return false;
        }
    }
    setter_ = reinterpret_cast<Setter>(lib_.resolve("tarvin_set_session"));
    getter_ = reinterpret_cast<Getter>(lib_.resolve("tarvin_session"));
    if (!setter_ || !getter_) {
        error_ = QStringLiteral("%1 不是用电检查模块（缺少 tarvin_set_session）").arg(lib_.fileName());
        lib_.unload();
        return false;
    }
    for (const MenuEntry& e : menuEntries())
        if (auto fn = reinterpret_cast<Entry>(lib_.resolve(e.exportName)))
            entries_.insert(QString::fromLatin1(e.exportName), fn);
    return true;
}

bool ModuleLoader::hasEntry(const char* exportName) const {
    return entries_.contains(QString::fromLatin1(exportName));
}

bool ModuleLoader::call(const char* exportName) {
    const Entry fn = entries_.value(QString::fromLatin1(exportName));
    if (!fn) return false;
    fn(0);
    return true;
}

bool ModuleLoader::setSession(const QString& name, const QString& value) {
    return setter_ && setter_(name.toUtf8().constData(), value.toUtf8().constData()) == 0;
}

QString ModuleLoader::session(const QString& name) const {
    const char* v = getter_ ? getter_(name.toUtf8().constData()) : nullptr;
    return v ? QString::fromUtf8(v) : QString();
}

}  // namespace tarvin::host
