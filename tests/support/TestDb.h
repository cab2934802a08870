// Real databases for tests: a fresh SQLite file, and a fresh PostgreSQL
// database on the server named by TARVIN_TEST_PG_URL (make check starts one).
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "data/SqlDialect.h"

// Readable QString values in test failures.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
inline void PrintTo(const QStringList& l, std::ostream* os) { *os << '[' << l.join(QStringLiteral(", ")).toStdString() << ']'; }
QT_END_NAMESPACE

namespace tarvin::test {

struct Engine {
    tarvin::sql::Dialect dialect;
    std::string name;  // "SQLite", "PostgreSQL", "SQLite_PlainQt", ...
    // `Shdl` opened with plain Qt calls, as a host of its own opens it.
    bool plainQt = false;
};
inline void PrintTo(const Engine& e, std::ostream* os) { *os << e.name; }

// SQLite always; PostgreSQL when TARVIN_TEST_PG_URL is set. With
// TARVIN_REQUIRE_PG=1 a missing server fails the run instead of skipping.
std::vector<Engine> engines();
// Each engine twice: `Shdl` from our opener and from plain Qt calls.
std::vector<Engine> enginesAndOpeners();

// A fresh database opened under `connection`; removed when destroyed.
class TestDatabase {
public:
    explicit TestDatabase(tarvin::sql::Dialect dialect, bool withSchema = true,
                          const QString& connection = QStringLiteral("Shdl"));
    ~TestDatabase();
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;

    QString url() const { return url_; }
    QString connectionName() const { return connection_; }
    QSqlDatabase db() const;
    // Closes the connection and opens it again with plain Qt calls only, as
    // a host that knows nothing of the module's opener does.
    void reopenWithPlainQt();
    tarvin::sql::Dialect dialect() const { return dialect_; }
    // Runs engine-native SQL; fails the test with the driver's message.
    void exec(const QString& nativeSql, const QVariantList& binds = {});
    // The same, its rows to be read.
    QSqlQuery query(const QString& nativeSql, const QVariantList& binds = {});
    // First column of the first row of engine-native SQL (invalid if none).
    QVariant scalar(const QString& nativeSql, const QVariantList& binds = {});

private:
    tarvin::sql::Dialect dialect_;
    QString connection_;
    QString url_;
    QString path_;    // SQLite file
    QString dbName_;  // PostgreSQL database
};

// A test fixture parameterized by engine.
class EngineTest : public ::testing::TestWithParam<Engine> {
protected:
    tarvin::sql::Dialect dialect() const { return GetParam().dialect; }
};

std::string engineName(const ::testing::TestParamInfo<Engine>& info);

// A screen test's database for the engine under test: our opener, or plain
// Qt calls for the engines that say so.
std::unique_ptr<TestDatabase> databaseFor(const Engine& engine);

}  // namespace tarvin::test

#define TARVIN_INSTANTIATE_ENGINES(Suite)                                                   \
    INSTANTIATE_TEST_SUITE_P(Engines, Suite, ::testing::ValuesIn(::tarvin::test::engines()), \
                             ::tarvin::test::engineName);                                  \
    GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Suite)

#define TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(Suite)                                                 \
    INSTANTIATE_TEST_SUITE_P(Engines, Suite, ::testing::ValuesIn(::tarvin::test::enginesAndOpeners()), \
                             ::tarvin::test::engineName);                                            \
    GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Suite)
