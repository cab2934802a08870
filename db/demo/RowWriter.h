// Bulk writing of generated rows, as fast as each engine allows: on SQLite
// one prepared statement per table on the raw sqlite3 handle, on PostgreSQL
// multi-row INSERT statements of a few hundred rows. All rows go into one
// transaction that the caller commits.
#pragma once

#include <QSqlDatabase>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace tarvin::demo {

// One column value. Date-times are texts in the canonical form
// 'YYYY-MM-DD HH:MM:SS', which both engines take for TIMESTAMP(0).
class Value {
public:
    enum class Kind : std::uint8_t { Null, Int, Real, Text };

    Value() = default;
    Value(std::nullptr_t) {}
    Value(int v) : kind_(Kind::Int), i_(v) {}
    Value(long v) : kind_(Kind::Int), i_(v) {}
    Value(long long v) : kind_(Kind::Int), i_(v) {}
    Value(double v) : kind_(Kind::Real), d_(v) {}
    // An empty text is NULL, as Oracle has it.
    Value(const char* s) : kind_(s && *s ? Kind::Text : Kind::Null), s_(s ? s : "") {}
    Value(std::string s) : kind_(s.empty() ? Kind::Null : Kind::Text), s_(std::move(s)) {}

    Kind kind() const { return kind_; }
    std::int64_t toInt() const { return i_; }
    double toReal() const { return d_; }
    const std::string& text() const { return s_; }

private:
    Kind kind_ = Kind::Null;
    std::int64_t i_ = 0;
    double d_ = 0;
    std::string s_;
};

using Row = std::vector<Value>;

class RowWriter {
public:
    // The writer for the engine behind `db` (SQLite or PostgreSQL).
    static std::unique_ptr<RowWriter> create(const QSqlDatabase& db);
    virtual ~RowWriter() = default;

    // Declares a table and the columns its rows give, in order; returns the
    // handle that add() takes.
    virtual int declare(const std::string& table, const std::vector<std::string>& columns) = 0;

    virtual void begin() = 0;
    // Writes what is pending and commits.
    virtual void commit() = 0;
    // Forgets what is pending and rolls back; never throws.
    virtual void rollback() noexcept = 0;

    // Adds one row; throws EDatabaseError when the engine refuses it (the
    // message names the table).
    virtual void add(int table, const Value* values, std::size_t count) = 0;
    void add(int table, std::initializer_list<Value> values) { add(table, values.begin(), values.size()); }
    void add(int table, const Row& values) { add(table, values.data(), values.size()); }

    // Runs an engine-native statement inside the transaction, after writing
    // everything pending.
    virtual void exec(const std::string& sql) = 0;

    std::int64_t rowsWritten() const { return rows_; }

protected:
    std::int64_t rows_ = 0;
};

}  // namespace tarvin::demo
