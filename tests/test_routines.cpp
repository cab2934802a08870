// The stored routines, called as the data layer calls them (a SELECT of the
// function), with the same results on SQLite and PostgreSQL.
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "data/Connection.h"
#include "Fixtures.h"
#include "Schema.h"

using namespace tarvin::test;
using tarvin::sql::Dialect;

namespace {

class Routines : public EngineTest {
protected:
    void SetUp() override { db_ = std::make_unique<TestDatabase>(dialect()); }
    TestDatabase& db() { return *db_; }
    QString pick(const char* sqlite, const char* postgres) const {
        return QString::fromUtf8(dialect() == Dialect::SQLite ? sqlite : postgres);
    }
    // Runs a query that must fail; returns the driver's message.
    QString failure(const QString& sql, const QVariantList& binds = {}) {
        QSqlQuery q(db().db());
        q.prepare(sql);
        for (const QVariant& v : binds) q.addBindValue(v);
        if (q.exec()) {
            ADD_FAILURE() << sql.toStdString() << " did not fail";
            return {};
        }
        return q.lastError().text();
    }
    std::unique_ptr<TestDatabase> db_;
};

// ---------------------------------------------------------------------------
// Numbering (ten digits, a count per sequence, and distinct numbers for
// callers drawing at once are the common functions' tests, through the
// blocks the module sends)

TEST_P(Routines, AnExhaustedSequenceGivesMinusOne) {
    db().exec(pick("UPDATE z_xlh SET dqz = 9999999998 WHERE xlm = 'JCPH'", "SELECT setval('seq_jcph', 9999999998)"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT GET_JCPH()")).toString(), QStringLiteral("9999999999"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT GET_JCPH()")).toString(), QStringLiteral("-1"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT GET_JCPH()")).toString(), QStringLiteral("-1"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT GET_CDBH()")).toString(), QStringLiteral("0000000001"));
}

TEST_P(Routines, NumbersDrawnInsideATransactionOfTheCaller) {
    QSqlDatabase d = db().db();
    ASSERT_TRUE(d.transaction());
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT GET_CDBH()")).toString(), QStringLiteral("0000000001"));
    db().exec(QStringLiteral("INSERT INTO a_ykkzb (cdbh) VALUES ('0000000001')"));
    ASSERT_TRUE(d.commit());
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT GET_CDBH()")).toString(), QStringLiteral("0000000002"));
}

// ---------------------------------------------------------------------------
// Yk_UndoYysq

TEST_P(Routines, UndoRemovesExactlyTheDocumentsBusinessRows) {
    for (const char* cdbh : {"0000000001", "0000000002"}) {
        const QVariantList b{QLatin1String(cdbh)};
        const QVariantList twice{QLatin1String(cdbh), QLatin1String(cdbh)};
        db().exec(QStringLiteral("INSERT INTO a_khsqxx (cdbh, hh, ywdm) VALUES (?, 'H1', '401')"), b);
        db().exec(QStringLiteral("INSERT INTO a_ykkzb (cdbh, htrl) VALUES (?, 100)"), b);
        db().exec(QStringLiteral("INSERT INTO a_dnbfa (id, cdbh, bgsm) VALUES (?, ?, '换取')"), twice);
        db().exec(QStringLiteral("INSERT INTO a_hgqfa (id, cdbh, bgsm) VALUES (?, ?, '新装')"), twice);
        db().exec(QStringLiteral("INSERT INTO a_gdfa (gdfabh, cdbh) VALUES (?, ?)"), twice);
        db().exec(QStringLiteral("INSERT INTO z_dqgw (cdbh, dqywx) VALUES (?, '40101')"), b);
        db().exec(QStringLiteral("INSERT INTO z_lcls (cdbh, xh, ywxdm) VALUES (?, 1, '40101')"), b);
        db().exec(QStringLiteral("INSERT INTO z_gzdxx (cdbh, xh, jsczy) VALUES (?, 1, 'OP1')"), b);
        db().exec(QStringLiteral("INSERT INTO e_jcgzjl (cdbh, hh, zt) VALUES (?, 'H1', '未审批')"), b);
        db().exec(QStringLiteral("INSERT INTO a_h_khsqxx (cdbh, hh, ywdm) VALUES (?, 'H1', '401')"), b);
    }
    db().exec(QStringLiteral("SELECT Yk_UndoYysq(?)"), {QStringLiteral("0000000001")});
    const char* removed[] = {"a_khsqxx", "a_ykkzb", "a_dnbfa", "a_hgqfa", "a_gdfa", "z_dqgw", "z_lcls", "z_gzdxx"};
    for (const char* table : removed) {
        const QString t = QLatin1String(table);
        EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE cdbh = '0000000001'").arg(t)).toInt(), 0) << table;
        EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE cdbh = '0000000002'").arg(t)).toInt(), 1) << table;
    }
    // The inspection task and the archive are not the business's application.
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM e_jcgzjl WHERE cdbh = '0000000001'")).toInt(), 1);
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM a_h_khsqxx WHERE cdbh = '0000000001'")).toInt(), 1);
    // An unknown or empty document removes nothing and is no error.
    db().exec(QStringLiteral("SELECT Yk_UndoYysq(?)"), {QStringLiteral("9999999999")});
    db().exec(QStringLiteral("SELECT Yk_UndoYysq(NULL)"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM a_khsqxx")).toInt(), 1);
}

// ---------------------------------------------------------------------------
// jc_pjdlbd

class EnergySwing : public Routines {
protected:
    void SetUp() override {
        Routines::SetUp();
        // H1: 200311 60, 200312 absent, 200401 100, 200402 200 (two billing points), 200403 300, 200404 0.
        ledger("H1", "200311", "1", 60);
        ledger("H1", "200401", "1", 100);
        ledger("H1", "200402", "1", 150);
        ledger("H1", "200402", "2", 50);
        ledger("H1", "200403", "1", 300);
        ledger("H1", "200404", "1", 0);
        // H2: the months before are all zero.
        ledger("H2", "200401", "1", 0);
        ledger("H2", "200402", "1", 40);
        ledger("H3", "200401", "1", 30);
        ledger("H3", "200402", "1", 35);
    }
    void ledger(const char* hh, const char* ny, const char* jfdbh, double flat) {
        db().exec(QStringLiteral("INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl) VALUES (?, ?, ?, 0, ?, NULL)"),
                  {QLatin1String(hh), QLatin1String(ny), QLatin1String(jfdbh), flat});
    }
    // Bound as the screening binds them: every argument a text.
    QVariant swing(const char* hh, const char* ny, const char* months, const char* flag = "1") {
        return db().scalar(QStringLiteral("SELECT jc_pjdlbd(?, ?, ?, ?)"),
                           {QLatin1String(hh), QLatin1String(ny), QLatin1String(months), QLatin1String(flag)});
    }
};

TEST_P(EnergySwing, MonthAgainstTheAverageOfTheMonthsBefore) {
    EXPECT_DOUBLE_EQ(swing("H1", "200403", "2").toDouble(), 100.0);  // 300 against (100 + 200) / 2
    EXPECT_DOUBLE_EQ(swing("H1", "200404", "3").toDouble(), 100.0);  // 0 against 200: a full drop
    EXPECT_DOUBLE_EQ(swing("H1", "200404", "3", "0").toDouble(), -100.0);
    EXPECT_DOUBLE_EQ(swing("H1", "200402", "1").toDouble(), 100.0);  // both billing points count
    // Over a year boundary, months without a ledger row left out of the average.
    EXPECT_DOUBLE_EQ(swing("H1", "200402", "3").toDouble(), 150.0);  // 200 against (60 + 100) / 2
    EXPECT_DOUBLE_EQ(swing("H1", "200403", "6").toDouble(), 150.0);  // 300 against (60 + 100 + 200) / 3
    EXPECT_NEAR(swing("H3", "200402", "1").toDouble(), 16.67, 1e-9);  // rounded to two places
}

TEST_P(EnergySwing, NothingToCompareGivesNull) {
    EXPECT_TRUE(swing("H2", "200402", "1").isNull());   // the average is zero
    EXPECT_TRUE(swing("H1", "200405", "3").isNull());   // the month has no reading
    EXPECT_TRUE(swing("H1", "200311", "3").isNull());   // no month before it
    EXPECT_TRUE(swing("H1", "200403", "0").isNull());
    EXPECT_TRUE(swing("H1", "2004-03", "3").isNull());
    EXPECT_TRUE(db().scalar(QStringLiteral("SELECT jc_pjdlbd(NULL, '200403', 3, '1')")).isNull());
    // A NULL never passes a threshold of the screening.
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM b_dltzxx WHERE ny = '200402' AND jc_pjdlbd(hh, ny, 1, '1') > 30")).toInt(), 2);
}

// ---------------------------------------------------------------------------
// jc_jlyctbjl

TEST_P(Routines, RefundTotalsAreRecordedOnTheAnomalyWorkSheet) {
    db().exec(QStringLiteral("INSERT INTO e_jlycgzd (cdbh, hh, wysydf) VALUES ('0000000007', 'H1', 10)"));
    db().exec(QStringLiteral("INSERT INTO e_jlycgzd (cdbh, hh) VALUES ('0000000008', 'H2')"));
    db().exec(QStringLiteral("INSERT INTO b_tbjl (tbcdh, glcdbh, hh) VALUES ('0000000007', '0000000007', 'H1')"));
    db().exec(QStringLiteral("INSERT INTO b_tbdfxx (tbcdh, ny, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf) "
                             "VALUES ('0000000007', '200401', 10, 20, 30, 1, 2, 3, 0.5, 0.5, 4, 0, -1)"));
    db().exec(QStringLiteral("INSERT INTO b_tbdfxx (tbcdh, ny, pdl, pdf) VALUES ('0000000007', '200402', -5, -2)"));
    db().exec(QStringLiteral("INSERT INTO b_tbdfxx (tbcdh, ny, pdl, pdf) VALUES ('0000000009', '200402', 99, 99)"));
    const QString totals = QStringLiteral("SELECT zbzdl, zbdldf, zbjbdf, zblldf, yzbdf FROM e_jlycgzd ORDER BY cdbh");
    db().exec(QStringLiteral("SELECT jc_jlyctbjl(?, ?)"), {QStringLiteral("0000000007"), QStringLiteral("1")});
    // Energy 55; energy, basic and power-factor charges 5, 4, -1; owed 5 + 4 - 1 + the penalty 10.
    EXPECT_EQ(rows(db(), totals), QStringList({QStringLiteral("55|5|4|-1|18"), QStringLiteral("||||")}));
    db().exec(QStringLiteral("SELECT jc_jlyctbjl(?, ?)"), {QStringLiteral("0000000007"), QStringLiteral("0")});
    EXPECT_EQ(rows(db(), totals), QStringList({QStringLiteral("0|0|0|0|10"), QStringLiteral("||||")}));
}

// ---------------------------------------------------------------------------
// The clock and Oracle's date functions

// (The clock read as the module reads it, fixed and real, is the corpus's
// and the common functions' test.)
TEST_P(Routines, FixedClockDrivesSysdateArithmeticAndStoredDates) {
    tarvin::db::setFixedClock(db().connectionName(), QDateTime(QDate(2004, 7, 1), QTime(10, 20, 30)));
    EXPECT_EQ(db().scalar(pick("SELECT to_char(tarvin_date_add(tarvin_sysdate(), -365), 'YYYY-MM-DD HH24:MI:SS')",
                               "SELECT to_char((tarvin_sysdate() - (365) * interval '1 day'), 'YYYY-MM-DD HH24:MI:SS')")).toString(),
              QStringLiteral("2003-07-02 10:20:30"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT to_char(tarvin_date_add(tarvin_sysdate(), 0.5), 'YYYY-MM-DD HH24:MI:SS')")).toString(),
              QStringLiteral("2004-07-01 22:20:30"));
    // Stored and compared as a date.
    db().exec(QStringLiteral("INSERT INTO e_jcgzap (jcph, zdsj) VALUES ('1', tarvin_sysdate())"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT count(*) FROM e_jcgzap WHERE zdsj >= to_date('2004-07-01', 'yyyy-mm-dd') "
                                         "AND zdsj < to_date('2004-07-02', 'yyyy-mm-dd')")).toInt(), 1);
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT to_char(zdsj, 'YYYY-MM-DD HH24:MI:SS') FROM e_jcgzap")).toString(),
              QStringLiteral("2004-07-01 10:20:30"));
}

TEST_P(Routines, EachConnectionKeepsItsOwnClock) {
    const QString other = QStringLiteral("other_clock");
    tarvin::db::openConnection(db().url(), other);
    tarvin::db::setFixedClock(db().connectionName(), QDateTime(QDate(2004, 7, 1), QTime(8, 0, 0)));
    tarvin::db::setFixedClock(other, QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59)));
    QString seen;
    {
        QSqlQuery q(QSqlDatabase::database(other, false));
        if (q.exec(QStringLiteral("SELECT to_char(tarvin_sysdate(), 'YYYY-MM-DD HH24:MI:SS')")) && q.next()) seen = q.value(0).toString();
    }
    tarvin::db::closeConnection(other);
    EXPECT_EQ(seen, QStringLiteral("1999-12-31 23:59:59"));
    EXPECT_EQ(db().scalar(QStringLiteral("SELECT to_char(tarvin_sysdate(), 'YYYY-MM-DD HH24:MI:SS')")).toString(),
              QStringLiteral("2004-07-01 08:00:00"));
}

// The SQLite functions give what PostgreSQL's native ones give.
TEST_P(Routines, ToCharFollowsTheFormatModels) {
    const auto toChar = [&](const char* value, const char* fmt) {
        return db().scalar(pick("SELECT to_char(?, ?)", "SELECT to_char(CAST(? AS timestamp), ?)"),
                           {QLatin1String(value), QString::fromUtf8(fmt)}).toString();
    };
    EXPECT_EQ(toChar("2004-07-09 08:05:03", "yyyymm"), QStringLiteral("200407"));
    EXPECT_EQ(toChar("2004-07-09 08:05:03", "yyyy"), QStringLiteral("2004"));
    EXPECT_EQ(toChar("2004-07-09 08:05:03", "YY/MM/DD HH24.MI.SS"), QStringLiteral("04/07/09 08.05.03"));
    EXPECT_EQ(toChar("2004-07-09 00:05:03", "HH:MI"), QStringLiteral("12:05"));
    EXPECT_EQ(toChar("2004-07-09 15:05:03", "HH12:MI PM"), QStringLiteral("03:05 PM"));
    EXPECT_EQ(toChar("2004-07-09 08:05:03", "FMMM"), QStringLiteral("7"));
    EXPECT_EQ(toChar("2004-07-09 08:05:03", "YYYY\"年\"MM\"月\""), QStringLiteral("2004年07月"));
    EXPECT_EQ(toChar("2004-07-09", "YYYY-MM-DD HH24:MI:SS"), QStringLiteral("2004-07-09 00:00:00"));

    const auto number = [&](const char* value, const char* fmt) {
        return db().scalar(QStringLiteral("SELECT to_char(CAST(? AS NUMERIC), ?)"), {QLatin1String(value), QLatin1String(fmt)}).toString();
    };
    EXPECT_EQ(number("5", "0000"), QStringLiteral(" 0005"));
    EXPECT_EQ(number("42", "FM0000"), QStringLiteral("0042"));
    EXPECT_EQ(number("-5", "0000"), QStringLiteral("-0005"));
    EXPECT_EQ(number("1234.5", "9,999.99"), QStringLiteral(" 1,234.50"));
    EXPECT_EQ(number("12", "9,999"), QStringLiteral("    12"));
    EXPECT_EQ(number("12345", "999"), QStringLiteral(" ###"));
    EXPECT_TRUE(db().scalar(pick("SELECT to_char(NULL, 'YYYY')", "SELECT to_char(CAST(NULL AS timestamp), 'YYYY')")).isNull());
}

TEST_P(Routines, ToDateReadsLikeOracle) {
    const auto toDate = [&](const char* text, const char* fmt) {
        return db().scalar(QStringLiteral("SELECT to_char(to_date(?, ?), 'YYYY-MM-DD HH24:MI:SS')"),
                           {QLatin1String(text), QLatin1String(fmt)}).toString();
    };
    EXPECT_EQ(toDate("2004-07-01", "yyyy-mm-dd"), QStringLiteral("2004-07-01 00:00:00"));
    EXPECT_EQ(toDate("2004/7/1", "yyyy-mm-dd"), QStringLiteral("2004-07-01 00:00:00"));
    EXPECT_EQ(toDate("20040701", "yyyymmdd"), QStringLiteral("2004-07-01 00:00:00"));
    EXPECT_EQ(toDate("200407", "yyyymm"), QStringLiteral("2004-07-01 00:00:00"));
    EXPECT_TRUE(failure(QStringLiteral("SELECT to_date('2004-02-30', 'yyyy-mm-dd')")).size() > 0);
    EXPECT_TRUE(failure(QStringLiteral("SELECT to_date('2004-13-01', 'yyyy-mm-dd')")).size() > 0);
    EXPECT_TRUE(db().scalar(QStringLiteral("SELECT to_date(NULL, 'yyyy-mm-dd')")).isNull());
}

TEST(SqliteRoutines, DateErrorsNameTheValue) {
    TestDatabase db(Dialect::SQLite);
    QSqlQuery q(db.db());
    EXPECT_FALSE(q.exec(QStringLiteral("SELECT to_date('2004-07-01 10:00', 'yyyy-mm-dd')")));
    EXPECT_TRUE(q.lastError().text().contains(QStringLiteral("2004-07-01 10:00"))) << q.lastError().text().toStdString();
    EXPECT_FALSE(q.exec(QStringLiteral("SELECT to_char('tomorrow', 'YYYY')")));
    EXPECT_TRUE(q.lastError().text().contains(QStringLiteral("tomorrow")));
    EXPECT_FALSE(q.exec(QStringLiteral("SELECT tarvin_date_add('2004-07-01', 'x')")));
    // Dates in canonical text, whatever the input form; leap days respected.
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT tarvin_date_add('2004-03-01', -1)")).toString(), QStringLiteral("2004-02-29 00:00:00"));
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT to_date('2004-07-01T08:09:10')")).toString(), QStringLiteral("2004-07-01 08:09:10"));
    // Oracle's to_date keeps the time of day (PostgreSQL's native to_date gives a date only).
    EXPECT_EQ(db.scalar(QStringLiteral("SELECT to_date('2004-07-01 1:14:15 pm', 'YYYY-MM-DD HH:MI:SS AM')")).toString(),
              QStringLiteral("2004-07-01 13:14:15"));
    // A missing sequence row is an error, not a number.
    db.exec(QStringLiteral("DELETE FROM z_xlh WHERE xlm = 'GDFABH'"));
    EXPECT_FALSE(q.exec(QStringLiteral("SELECT GET_GDFABH()")));
    EXPECT_TRUE(q.lastError().text().contains(QStringLiteral("GDFABH")));
}

// The swing keeps a prepared statement on the connection; closing the
// connection must still close the database file.
TEST(SqliteRoutines, AConnectionThatUsedTheRoutinesClosesCleanly) {
    QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/closing.sqlite");
    const QString name = QStringLiteral("closing");
    {
        QSqlDatabase d = tarvin::db::openConnection(QStringLiteral("sqlite:") + path, name);
        tarvin::db::createSchema(d);
        QSqlQuery q(d);
        ASSERT_TRUE(q.exec(QStringLiteral("SELECT jc_pjdlbd('H1', '200401', 3, '1'), GET_CDBH()")));
        ASSERT_TRUE(q.exec(QStringLiteral("SELECT jc_pjdlbd(hh, ny, 3, '1') FROM b_dltzxx")));
    }
    QSqlDatabase d = QSqlDatabase::database(name, false);
    d.close();
    EXPECT_FALSE(d.lastError().isValid()) << d.lastError().text().toStdString();
    d = QSqlDatabase();
    tarvin::db::closeConnection(name);
    EXPECT_FALSE(QFile::exists(path + QStringLiteral("-wal")));  // the last connection really closed
}

TARVIN_INSTANTIATE_ENGINES(Routines);
TARVIN_INSTANTIATE_ENGINES(EnergySwing);

}  // namespace
