#include "TestDb.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUuid>
#include <atomic>
#include <cstdlib>

#include "data/Connection.h"
#include "Schema.h"

namespace tarvin::test {

using tarvin::sql::Dialect;

static QString pgAdminUrl() { return qEnvironmentVariable("TARVIN_TEST_PG_URL"); }

std::vector<Engine> engines() {
    std::vector<Engine> out{{Dialect::SQLite, "SQLite"}};
    if (!pgAdminUrl().isEmpty())
        out.push_back({Dialect::PostgreSQL, "PostgreSQL"});
    else if (qEnvironmentVariable("TARVIN_REQUIRE_PG") == QLatin1String("1"))
        ADD_FAILURE() << "TARVIN_REQUIRE_PG=1 but TARVIN_TEST_PG_URL is not set";
    return out;
}

std::vector<Engine> enginesAndOpeners() {
    std::vector<Engine> out = engines();
    const size_t n = out.size();
    for (size_t i = 0; i < n; ++i) out.push_back({out[i].dialect, out[i].name + "_PlainQt", true});
    return out;
}

std::unique_ptr<TestDatabase> databaseFor(const Engine& engine) {
    auto db = std::make_unique<TestDatabase>(engine.dialect);
    if (engine.plainQt) db->reopenWithPlainQt();
    return db;
}

std::string engineName(const ::testing::TestParamInfo<Engine>& info) { return info.param.name; }

static QString scratchDir() {
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/tarvin-test-XXXXXX"));
    return dir.path();
}

static void runAdmin(const QString& sql) {
    const QString name = QStringLiteral("tarvin_admin_") + QUuid::createUuid().toString(QUuid::Id128);
    {
        QSqlDatabase admin = tarvin::db::openConnection(pgAdminUrl(), name);
        QSqlQuery q(admin);
        if (!q.exec(sql))
            ADD_FAILURE() << sql.toStdString() << ": " << q.lastError().text().toStdString();
    }
    tarvin::db::closeConnection(name);
}

TestDatabase::TestDatabase(Dialect dialect, bool withSchema, const QString& connection)
    : dialect_(dialect), connection_(connection) {
    static std::atomic<int> counter{0};
    const int n = counter++;
    if (dialect == Dialect::SQLite) {
        path_ = QStringLiteral("%1/db%2.sqlite").arg(scratchDir()).arg(n);
        QFile::remove(path_);
        url_ = QStringLiteral("sqlite:") + path_;
    } else if (dialect == Dialect::PostgreSQL) {
        dbName_ = QStringLiteral("tarvin_t%1_%2").arg(QCoreApplication::applicationPid()).arg(n);
        runAdmin(QStringLiteral("DROP DATABASE IF EXISTS ") + dbName_);
        runAdmin(QStringLiteral("CREATE DATABASE ") + dbName_);
        auto u = tarvin::db::DatabaseUrl::parse(pgAdminUrl());
        u.database = dbName_;
        url_ = u.toString();
    } else {
        throw std::invalid_argument("no test database for Oracle");
    }
    QSqlDatabase d = tarvin::db::openConnection(url_, connection_);
    if (withSchema) tarvin::db::createSchema(d);
}

TestDatabase::~TestDatabase() {
    tarvin::db::closeConnection(connection_);
    if (!path_.isEmpty()) QFile::remove(path_);
    if (!dbName_.isEmpty()) runAdmin(QStringLiteral("DROP DATABASE IF EXISTS ") + dbName_ + QStringLiteral(" WITH (FORCE)"));
}

void TestDatabase::reopenWithPlainQt() {
    tarvin::db::closeConnection(connection_);
    QSqlDatabase d;
    if (dialect_ == Dialect::SQLite) {
        d = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
        d.setDatabaseName(path_);
    } else {
        const auto u = tarvin::db::DatabaseUrl::parse(url_);
        d = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connection_);
        d.setHostName(u.host);
        d.setPort(u.port);
        d.setUserName(u.user);
        d.setPassword(u.password);
        d.setDatabaseName(u.database);
    }
    if (!d.open()) ADD_FAILURE() << "plain Qt open: " << d.lastError().text().toStdString();
}

QSqlDatabase TestDatabase::db() const { return QSqlDatabase::database(connection_, false); }

QSqlQuery TestDatabase::query(const QString& nativeSql, const QVariantList& binds) {
    QSqlQuery q(db());
    bool ok = binds.isEmpty() ? q.exec(nativeSql) : q.prepare(nativeSql);
    for (const QVariant& v : binds) q.addBindValue(v);
    if (!binds.isEmpty()) ok = ok && q.exec();
    if (!ok) ADD_FAILURE() << nativeSql.toStdString() << ": " << q.lastError().text().toStdString();
    return q;
}

void TestDatabase::exec(const QString& nativeSql, const QVariantList& binds) { query(nativeSql, binds); }

QVariant TestDatabase::scalar(const QString& nativeSql, const QVariantList& binds) {
    QSqlQuery q = query(nativeSql, binds);
    return q.next() ? q.value(0) : QVariant();
}

}  // namespace tarvin::test
