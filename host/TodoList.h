// The operator's to-do list: the workflow cases of his unit that stand at an
// item one of his posts grants, each opened with the module's screen for
// that item.
#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QWidget>
#include <functional>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace tarvin::host {

// Whether one of the operator's posts in force carries a function in force
// that grants the code (a workflow item, or a right such as the alarm scan).
bool operatorHoldsGrant(const QSqlDatabase& db, const QString& czydm, const QString& code);

struct TodoCase {
    QString cdbh, ywdm, ywxdm, ywxmc, khbh, hm, arrived, exportName;
};

class TodoList : public QWidget {
    Q_OBJECT
public:
    // `hasEntry` tells which exports the loaded module offers.
    TodoList(QSqlDatabase db, QString czydm, QString dw, std::function<bool(const QByteArray&)> hasEntry,
             QWidget* parent = nullptr);

    // Reads the list again; a failed read is shown in the list's heading.
    void refresh();
    const QList<TodoCase>& cases() const { return cases_; }
    QTreeWidget* view() const { return view_; }

    // The cases the operator's posts grant, oldest arrival first.
    static QList<TodoCase> read(const QSqlDatabase& db, const QString& czydm, const QString& dw);

signals:
    void openRequested(const tarvin::host::TodoCase& c);

private:
    void activate(QTreeWidgetItem* item);
    QSqlDatabase db_;
    QString czydm_, dw_;
    std::function<bool(const QByteArray&)> hasEntry_;
    QLabel* heading_;
    QTreeWidget* view_;
    QList<TodoCase> cases_;
};

}  // namespace tarvin::host
