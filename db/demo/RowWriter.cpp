#include "RowWriter.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <cstdio>
#include <sqlite3.h>

#include "data/Connection.h"
#include "data/MidasQuery.h"

namespace tarvin::demo {

namespace {

QString q(const std::string& s) { return QString::fromUtf8(s.data(), qsizetype(s.size())); }

std::string columnList(const std::vector<std::string>& columns) {
    std::string s;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i) s += ", ";
        s += columns[i];
    }
    return s;
}

struct Table {
    std::string name;
    std::size_t columns = 0;
};

void checkArity(const Table& t, std::size_t count) {
    if (count != t.columns)
        throw EDatabaseError(QStringLiteral("Demo row for %1 has %2 values, the table was declared with %3 columns")
                                 .arg(q(t.name)).arg(count).arg(t.columns));
}

// ---------------------------------------------------------------------------
// SQLite: prepared statements on the raw handle, bound by position.

class SqliteWriter final : public RowWriter {
public:
    explicit SqliteWriter(sqlite3* db) : db_(db) {}
    ~SqliteWriter() override {
        for (auto& t : tables_) sqlite3_finalize(t.stmt);
    }

    int declare(const std::string& table, const std::vector<std::string>& columns) override {
        std::string sql = "INSERT INTO " + table + " (" + columnList(columns) + ") VALUES (";
        for (std::size_t i = 0; i < columns.size(); ++i) sql += i ? ",?" : "?";
        sql += ")";
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db_, sql.c_str(), int(sql.size()), &stmt, nullptr) != SQLITE_OK)
            throw EDatabaseError(QStringLiteral("Cannot prepare the demo rows of %1: %2").arg(q(table), QString::fromUtf8(sqlite3_errmsg(db_))));
        tables_.push_back({{table, columns.size()}, stmt});
        return int(tables_.size() - 1);
    }

    void begin() override { run("BEGIN IMMEDIATE"); }
    void commit() override { run("COMMIT"); }
    void rollback() noexcept override {
        if (!sqlite3_get_autocommit(db_)) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    }

    void add(int table, const Value* values, std::size_t count) override {
        Entry& e = tables_[std::size_t(table)];
        checkArity(e.table, count);
        sqlite3_stmt* s = e.stmt;
        for (std::size_t i = 0; i < count; ++i) {
            const Value& v = values[i];
            const int place = int(i) + 1;
            switch (v.kind()) {
            case Value::Kind::Null: sqlite3_bind_null(s, place); break;
            case Value::Kind::Int: sqlite3_bind_int64(s, place, v.toInt()); break;
            case Value::Kind::Real: sqlite3_bind_double(s, place, v.toReal()); break;
            case Value::Kind::Text:
                // The value outlives the step that reads it.
                sqlite3_bind_text(s, place, v.text().data(), int(v.text().size()), SQLITE_STATIC);
                break;
            }
        }
        const int rc = sqlite3_step(s);
        sqlite3_reset(s);
        if (rc != SQLITE_DONE)
            throw EDatabaseError(QStringLiteral("Writing a demo row into %1 failed: %2").arg(q(e.table.name), QString::fromUtf8(sqlite3_errmsg(db_))));
        ++rows_;
    }

    void exec(const std::string& sql) override { run(sql.c_str()); }

private:
    struct Entry {
        Table table;
        sqlite3_stmt* stmt;
    };

    void run(const char* sql) {
        char* err = nullptr;
        if (sqlite3_exec(db_, sql, nullptr, nullptr, &err) != SQLITE_OK) {
            const QString message = QString::fromUtf8(err ? err : sqlite3_errmsg(db_));
            sqlite3_free(err);
            throw EDatabaseError(QStringLiteral("%1: %2").arg(QString::fromUtf8(sql), message));
        }
    }

    sqlite3* db_;
    std::vector<Entry> tables_;
};

// ---------------------------------------------------------------------------
// PostgreSQL: rows collected per table into one INSERT of up to kBatchRows
// rows. The values are written as literals; a quoted literal takes the type
// of its target column (timestamps, numerics) on the server.

class PostgresWriter final : public RowWriter {
public:
    static constexpr int kBatchRows = 500;
    static constexpr std::size_t kBatchBytes = 4u << 20;

    explicit PostgresWriter(QSqlDatabase db) : db_(std::move(db)) {}

    int declare(const std::string& table, const std::vector<std::string>& columns) override {
        Entry e;
        e.table = {table, columns.size()};
        e.head = "INSERT INTO " + table + " (" + columnList(columns) + ") VALUES ";
        tables_.push_back(std::move(e));
        return int(tables_.size() - 1);
    }

    void begin() override {
        if (!db_.transaction())
            throw EDatabaseError(QStringLiteral("Cannot begin the demo transaction: %1").arg(db_.lastError().text()));
    }
    void commit() override {
        flushAll();
        if (!db_.commit())
            throw EDatabaseError(QStringLiteral("Cannot commit the demo data: %1").arg(db_.lastError().text()));
    }
    void rollback() noexcept override {
        for (auto& e : tables_) {
            e.pending.clear();
            e.count = 0;
        }
        db_.rollback();
    }

    void add(int table, const Value* values, std::size_t count) override {
        Entry& e = tables_[std::size_t(table)];
        checkArity(e.table, count);
        std::string& b = e.pending;
        b += e.count ? ",(" : "(";
        char num[40];
        for (std::size_t i = 0; i < count; ++i) {
            if (i) b += ',';
            const Value& v = values[i];
            switch (v.kind()) {
            case Value::Kind::Null: b += "NULL"; break;
            case Value::Kind::Int: b += std::to_string(v.toInt()); break;
            case Value::Kind::Real:
                std::snprintf(num, sizeof num, "%.15g", v.toReal());
                b += num;
                break;
            case Value::Kind::Text:
                b += '\'';
                for (char c : v.text()) {
                    if (c == '\'') b += '\'';
                    b += c;
                }
                b += '\'';
                break;
            }
        }
        b += ')';
        ++rows_;
        if (++e.count >= kBatchRows || b.size() >= kBatchBytes) flush(e);
    }

    void exec(const std::string& sql) override {
        flushAll();
        run(sql, QStringLiteral("statement"));
    }

private:
    struct Entry {
        Table table;
        std::string head;
        std::string pending;
        int count = 0;
    };

    void flush(Entry& e) {
        if (!e.count) return;
        std::string sql;
        sql.reserve(e.head.size() + e.pending.size());
        sql += e.head;
        sql += e.pending;
        e.pending.clear();
        e.count = 0;
        run(sql, q(e.table.name));
    }
    void flushAll() {
        for (auto& e : tables_) flush(e);
    }
    void run(const std::string& sql, const QString& what) {
        QSqlQuery query(db_);
        if (!query.exec(q(sql))) {
            QString excerpt = q(sql.substr(0, 200));
            throw EDatabaseError(QStringLiteral("Writing the demo %1 failed (%2 ...): %3").arg(what, excerpt, query.lastError().text()));
        }
    }

    QSqlDatabase db_;
    std::vector<Entry> tables_;
};

sqlite3* sqliteHandle(const QSqlDatabase& db) {
    const QVariant v = db.driver()->handle();
    if (!v.isValid() || qstrcmp(v.typeName(), "sqlite3*") != 0) return nullptr;
    return *static_cast<sqlite3* const*>(v.data());
}

}  // namespace

std::unique_ptr<RowWriter> RowWriter::create(const QSqlDatabase& db) {
    switch (tarvin::db::dialectOf(db)) {
    case tarvin::sql::Dialect::SQLite: {
        sqlite3* h = sqliteHandle(db);
        if (!h) throw EDatabaseError(QStringLiteral("The SQLite driver gives no handle"));
        return std::make_unique<SqliteWriter>(h);
    }
    case tarvin::sql::Dialect::PostgreSQL: return std::make_unique<PostgresWriter>(db);
    case tarvin::sql::Dialect::Oracle: break;
    }
    throw EDatabaseError(QStringLiteral("The demo database can be written on SQLite and PostgreSQL only"));
}

}  // namespace tarvin::demo
