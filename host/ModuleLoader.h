// Loads the module library by name, resolves its exports by name, fills
// its session variables through its C setter and calls its entries.
#pragma once

#include <QLibrary>
#include <QMap>
#include <QString>
#include <QStringList>

namespace tarvin::host {

struct MenuEntry {
    const char* exportName;
    QString caption;
    QString group;
};

// The thirteen entries of the module, in menu order, with their captions.
const QList<MenuEntry>& menuEntries();

class ModuleLoader {
public:
    // The library beside the program (../lib) or on the loader's path.
    explicit ModuleLoader(const QString& fileName = QString());
    ~ModuleLoader();

    bool load();
    QString errorString() const { return error_; }
    bool isLoaded() const { return lib_.isLoaded(); }
    QString fileName() const { return lib_.fileName(); }

    bool hasEntry(const char* exportName) const;
    // Calls an entry (it shows its screen modally and returns when closed).
    bool call(const char* exportName);

    bool setSession(const QString& name, const QString& value);
    QString session(const QString& name) const;

    static QString defaultFileName();

private:
    using Entry = void (*)(qint32);
    using Setter = int (*)(const char*, const char*);
    using Getter = const char* (*)(const char*);
    QLibrary lib_;
    QString error_;
    Setter setter_ = nullptr;
    Getter getter_ = nullptr;
    QMap<QString, Entry> entries_;
};

}  // namespace tarvin::host
