// The host's main window: the module's entries as a menu and a list, the
// operator's to-do list, the signed-in operator in the status bar.
#pragma once

#include <QMainWindow>

#include "ModuleLoader.h"
#include "SignInDialog.h"
#include "TodoList.h"

class QListWidget;
class QListWidgetItem;

namespace tarvin::host {

class HostWindow : public QMainWindow {
    Q_OBJECT
public:
    HostWindow(ModuleLoader& module, const Operator& op, const QSqlDatabase& db,
               const QString& databaseLabel, QWidget* parent = nullptr);

    // Opens an entry by export name; false when the module lacks it.
    bool open(const char* exportName);
    // Opens the screen of the case's item for that case.
    bool openCase(const TodoCase& c);
    QListWidget* entryList() const { return list_; }
    TodoList* todoList() const { return todo_; }

private:
    void openItem(QListWidgetItem* item);
    bool call(const QString& cdbh, const QString& ywdm, const QString& ywxdm, const QString& ywxmc,
              const char* exportName);
    ModuleLoader& module_;
    QListWidget* list_;
    TodoList* todo_;
};

// Fills every session variable of the module for the signed-in operator.
void fillSession(ModuleLoader& module, const Operator& op, const QSqlDatabase& db);

}  // namespace tarvin::host
