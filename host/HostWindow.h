// The host's main window: the module's entries as a menu and a list, the
// signed-in operator in the status bar.
#pragma once

#include <QMainWindow>

#include "ModuleLoader.h"
#include "SignInDialog.h"

class QListWidget;
class QListWidgetItem;

namespace tarvin::host {

class HostWindow : public QMainWindow {
    Q_OBJECT
public:
    HostWindow(ModuleLoader& module, const Operator& op, const QString& databaseLabel,
               QWidget* parent = nullptr);

    // Opens an entry by export name; false when the module lacks it.
    bool open(const char* exportName);
    QListWidget* entryList() const { return list_; }

private:
    void openItem(QListWidgetItem* item);
    ModuleLoader& module_;
    QListWidget* list_;
};

// Fills every session variable of the module for the signed-in operator.
void fillSession(ModuleLoader& module, const Operator& op, const QSqlDatabase& db);

}  // namespace tarvin::host
