// The dataset every screen uses: SQL text as lines, named parameters, rows
// fetched into memory, a current row, local edits kept as cached updates.
// Statements reach the database through the Qt SQL connection named `Shdl`
// (or another name given to the query), rewritten by the dialect bridge.
#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <functional>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <utility>

#include "SqlDialect.h"

class QSqlDatabase;

// A database or dataset error, as the data layer raises it.
class EDatabaseError : public std::runtime_error {
public:
    explicit EDatabaseError(const QString& message)
        : std::runtime_error(message.toStdString()) {}
    QString message() const { return QString::fromUtf8(what()); }
};

enum TFieldType { ftUnknown, ftString, ftInteger, ftFloat, ftDate, ftDateTime, ftVariant };
enum TParamType { ptUnknown, ptInput, ptOutput, ptInputOutput };
enum TDataSetState { dsInactive, dsBrowse, dsEdit, dsInsert };
enum TLocateOption { loCaseInsensitive = 1, loPartialKey = 2 };
using TBookmark = qint64;  // 0 is no bookmark

// The SQL text of a query: a list of lines joined with line breaks.
class TStrings {
public:
    void Clear();
    void Add(const QString& line);
    int Count() const { return lines_.size(); }
    QString operator[](int i) const { return lines_.at(i); }
    QString Text() const { return lines_.join(QLatin1Char('\n')); }
    void SetText(const QString& text);
    const QStringList& Lines() const { return lines_; }

private:
    friend class TMidasQuery;
    QStringList lines_;
    class TMidasQuery* owner_ = nullptr;
};

class TParam {
public:
    QString Name;
    TFieldType DataType = ftUnknown;
    TParamType ParamType = ptInput;

    void SetAsString(const QString& v);
    void SetAsInteger(qint64 v);
    void SetAsFloat(double v);
    void SetAsDate(const QDate& v);
    void SetAsDate(const QDateTime& v);  // the time of day is dropped
    void SetAsDateTime(const QDateTime& v);
    void SetValue(const QVariant& v);    // variant: type taken from the value
    void Clear();

    QString AsString() const;
    qint64 AsInteger() const;
    double AsFloat() const;
    QDateTime AsDateTime() const;
    const QVariant& Value() const { return value_; }
    bool IsNull() const;
    bool Bound() const { return bound_; }

private:
    friend class TMidasQuery;
    QVariant value_;
    bool bound_ = false;
};

class TParams {
public:
    void Clear() { items_.clear(); }
    int Count() const { return int(items_.size()); }
    TParam& CreateParam(TFieldType type, const QString& name, TParamType dir);
    TParam& Items(int i);
    TParam& operator[](int i) { return Items(i); }
    // Matched without regard to case; nullptr when missing.
    TParam* FindParam(const QString& name);
    TParam& ParamByName(const QString& name);  // throws EDatabaseError

private:
    std::vector<std::unique_ptr<TParam>> items_;
};

class TMidasQuery;

// A handle on one column of the current row.
class TField {
public:
    TField(TMidasQuery* ds, int index) : ds_(ds), index_(index) {}
    QString FieldName() const;
    TFieldType DataType() const;
    int Index() const { return index_; }

    QVariant Value() const;
    bool IsNull() const;
    QString AsString() const;   // null gives ""
    qint64 AsInteger() const;   // null gives 0; raises on a non-number
    double AsFloat() const;     // null gives 0
    QDateTime AsDateTime() const;  // null gives an invalid date-time

    // Writing requires the dataset in edit or insert state. An empty text
    // is stored as null, as the original middleware did.
    void SetAsString(const QString& v);
    void SetAsInteger(qint64 v);
    void SetAsFloat(double v);
    void SetAsDateTime(const QDateTime& v);
    void SetValue(const QVariant& v);
    void Clear();

private:
    TMidasQuery* ds_;
    int index_;
};

// Connection operations on a named Qt SQL connection.
class TCustomMidasDataBase {
public:
    explicit TCustomMidasDataBase(const QString& connectionName);
    const QString& ConnectionName() const { return name_; }
    void StartTransaction();
    void Commit();
    void Rollback();
    bool InTransaction() const;
    // Runs `done` once the open transaction commits (at once when none is
    // open); a rollback drops it.
    void OnCommit(std::function<void()> done);
    tarvin::sql::Dialect Dialect() const;
    QSqlDatabase Database() const;  // throws EDatabaseError when not open

    // The shared instance for a connection name ("Shdl" by default).
    static TCustomMidasDataBase& ByName(const QString& connectionName = QStringLiteral("Shdl"));

private:
    QString name_;
};

class TMidasQuery : public QObject {
    Q_OBJECT
public:
    explicit TMidasQuery(QObject* parent = nullptr, const QString& name = QString());
    ~TMidasQuery() override;

    // --- stored design ---
    TStrings& SQL() { return sql_; }
    const TStrings& SQL() const { return sql_; }
    TParams& Params() { return params_; }
    TParam& ParamByName(const QString& name) { return params_.ParamByName(name); }
    // Client-side sort order, field names separated by ';'.
    QString IndexFieldNames() const { return indexFieldNames_; }
    void SetIndexFieldNames(const QString& names);
    // Cached updates: the table and key fields that ApplyUpdates writes to.
    QString UpdateTable() const { return updateTable_; }
    void SetUpdateTable(const QString& table) { updateTable_ = table; }
    QStringList KeyFields() const { return keyFields_; }
    void SetKeyFields(const QStringList& keys) { keyFields_ = keys; }
    // The Qt SQL connection the query binds to by name at first use.
    QString DatabaseName() const { return connectionName_; }
    void SetDatabaseName(const QString& name) { connectionName_ = name; }
    TCustomMidasDataBase& DataBase();

    // --- running ---
    void Open();
    void Close();
    void ExecSQL();
    void Refresh();  // reruns the query and keeps the current row where it can
    bool Active() const { return state_ != dsInactive; }
    TDataSetState State() const { return state_; }
    // Rows touched by the last ExecSQL.
    int RowsAffected() const { return rowsAffected_; }

    // --- navigation ---
    void First();
    void Last();
    void Next();
    void Prior();
    bool Eof() const;
    bool Bof() const;
    bool IsEmpty() const;
    int RecordCount() const;
    int RecNo() const;         // 1-based; 0 when empty
    void SetRecNo(int recNo);  // 1-based
    bool Locate(const QString& keyFields, const QVariantList& values, int options = 0);
    bool Locate(const QString& keyField, const QVariant& value, int options = 0) {
        return Locate(keyField, QVariantList{value}, options);
    }
    TBookmark GetBookmark() const;
    void GotoBookmark(TBookmark bm);  // raises when the row is gone
    bool BookmarkValid(TBookmark bm) const;

    // --- fields ---
    int FieldCount() const { return int(fieldNames_.size()); }
    QStringList FieldNames() const { return fieldNames_; }
    TField Fields(int i);
    TField FieldByName(const QString& name);  // case-insensitive; raises
    int FindFieldIndex(const QString& name) const;  // -1 when missing
    // Adds a column to an open or closed dataset's field list (for datasets
    // filled locally).
    QVariant valueAt(int row, int col) const;

    // While disabled (calls nest), the grids and edits bound to the dataset
    // are not told of each move and change; enabling tells them once. For
    // handlers that walk or fill many rows.
    void DisableControls();
    void EnableControls();

    // --- editing (kept in memory until ApplyUpdates) ---
    void Append();
    void Insert();
    void Edit();
    void Post();
    void Cancel();
    void Delete();
    int GetChangeCount() const;
    void CancelUpdates();
    // Writes inserts, edits and deletes to UpdateTable by KeyFields inside
    // one transaction of its own unless the connection has one open; in a
    // caller's transaction the changes leave the change log only when it
    // commits, so a rollback leaves them to be written again. An edit or
    // delete that finds no row is an error. Returns
    // the number of errors; stops and rolls back when more than maxErrors
    // (maxErrors < 0: no limit to stop at... any error still rolls back).
    int ApplyUpdates(int maxErrors = 0);

    // The last text sent to the engine (after translation), for tests and
    // error messages.
    QString LastEngineSql() const { return lastEngineSql_; }

signals:
    void stateChanged();          // opened, closed, edit/insert begun or ended
    void rowsReset();             // rows replaced (open, refresh, sort)
    void rowChanged(int row);     // values of one row changed
    void rowInserted(int row);
    void rowRemoved(int row);
    void currentChanged(int row); // current row moved (-1 when none)

private:
    friend class TField;
    friend class TStrings;
    struct Row {
        QVector<QVariant> values;
        QVector<QVariant> original;  // as fetched; empty for inserted rows
        qint64 id = 0;
        enum Status { Unchanged, Modified, Inserted } status = Unchanged;
    };

    void textChanged();
    void requireActive(const char* op) const;
    void requireBrowse(const char* op);
    void checkFieldWrite(int col) const;
    void setFieldValue(int col, const QVariant& v);
    void run(bool expectRows);
    void sortRows();
    void setCurrent(int row);
    QVariant currentValue(int col) const;
    QString describe() const;

    TStrings sql_;
    TParams params_;
    QString connectionName_ = QStringLiteral("Shdl");
    QString indexFieldNames_;
    QString updateTable_;
    QStringList keyFields_;

    TDataSetState state_ = dsInactive;
    QStringList fieldNames_;
    QVector<TFieldType> fieldTypes_;
    QVector<Row> rows_;
    QVector<Row> deleted_;
    int current_ = -1;
    bool eof_ = true;
    bool bof_ = true;
    Row editBuffer_;
    int editRow_ = -1;  // row being edited or the insert position
    qint64 returnTo_ = 0;  // row current before an insert, for Cancel
    qint64 nextId_ = 1;
    int rowsAffected_ = 0;
    int controlsDisabled_ = 0;
    QString lastEngineSql_;
};

// Drops the compiled statements kept for a connection (SQLite), before it
// closes; a connection reopened under the name would compile afresh anyway.
void ForgetCompiledStatements(const QString& connectionName);

// The fixed order in which screens run a text: close the query, replace its
// text, bind the parameters by name, then open it (OpenSql) or execute it
// (ExecSql). A value's type is the parameter's type: a QString binds as
// text, a QDate as a date, an int as an integer, a null QVariant as null.
using TSqlParams = std::initializer_list<std::pair<const char*, QVariant>>;
void OpenSql(TMidasQuery* query, const QString& text, TSqlParams params = {});
void ExecSql(TMidasQuery* query, const QString& text, TSqlParams params = {});
// Closes, replaces the text and binds, without running: for a caller that
// sets more parameters itself before it opens.
void PrepareSql(TMidasQuery* query, const QString& text, TSqlParams params = {});
