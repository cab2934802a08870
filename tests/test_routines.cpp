// The stored routines, called as the data layer calls them (a SELECT of the
// function), with the same results on SQLite and PostgreSQL.
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "data/Connection.h"
#include "data/MidasQuery.h"
#include "Fixtures.h"
#include "Schema.h"


using namespace Qt::StringLiterals;
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
    std::unique_ptr<TestDatabase> db_;
};

// ---------------------------------------------------------------------------
// Numbering (ten digits, a count per sequence, and distinct numbers for
// callers drawing at once are the common functions' tests, through the
// blocks the module sends)

TEST_P(Routines, AnExhaustedSequenceGivesMinusOne) {
    db().exec(pick("UPDATE z_xlh SET dqz = 9999999998 WHERE xlm = 'JCPH'", "SELECT setval('seq_jcph', 9999999998)"));
    EXPECT_EQ(db().scalar(u"SELECT GET_JCPH()"_s).toString(), u"9999999999"_s);
    EXPECT_EQ(db().scalar(u"SELECT GET_JCPH()"_s).toString(), u"-1"_s);
    EXPECT_EQ(db().scalar(u"SELECT GET_JCPH()"_s).toString(), u"-1"_s);
    EXPECT_EQ(db().scalar(u"SELECT GET_CDBH()"_s).toString(), u"0000000001"_s);
}

TEST_P(Routines, NumbersDrawnInsideATransactionOfTheCaller) {
    QSqlDatabase d = db().db();
    ASSERT_TRUE(d.transaction());
    EXPECT_EQ(db().scalar(u"SELECT GET_CDBH()"_s).toString(), u"0000000001"_s);
    db().exec(u"INSERT INTO a_ykkzb (cdbh) VALUES ('0000000001')"_s);
    ASSERT_TRUE(d.commit());
    EXPECT_EQ(db().scalar(u"SELECT GET_CDBH()"_s).toString(), u"0000000002"_s);
}

// ---------------------------------------------------------------------------
// Yk_UndoYysq

TEST_P(Routines, UndoRemovesExactlyTheDocumentsBusinessRows) {
    for (const char* cdbh : {"0000000001", "0000000002"}) {
        const QVariantList b{QLatin1String(cdbh)}, twice{QLatin1String(cdbh), QLatin1String(cdbh)};
        db().exec(u"INSERT INTO a_khsqxx (cdbh, hh, ywdm) VALUES (?, 'H1', '401')"_s, b);
        db().exec(u"INSERT INTO a_ykkzb (cdbh, htrl) VALUES (?, 100)"_s, b);
        db().exec(u"INSERT INTO a_dnbfa (id, cdbh, bgsm) VALUES (?, ?, '换取')"_s, twice);
        db().exec(u"INSERT INTO a_hgqfa (id, cdbh, bgsm) VALUES (?, ?, '新装')"_s, twice);
        db().exec(u"INSERT INTO a_gdfa (gdfabh, cdbh) VALUES (?, ?)"_s, twice);
        db().exec(u"INSERT INTO z_dqgw (cdbh, dqywx) VALUES (?, '40101')"_s, b);
        db().exec(u"INSERT INTO z_lcls (cdbh, xh, ywxdm) VALUES (?, 1, '40101')"_s, b);
        db().exec(u"INSERT INTO z_gzdxx (cdbh, xh, jsczy) VALUES (?, 1, 'OP1')"_s, b);
        db().exec(u"INSERT INTO e_jcgzjl (cdbh, hh, zt) VALUES (?, 'H1', '未审批')"_s, b);
        db().exec(u"INSERT INTO a_h_khsqxx (cdbh, hh, ywdm) VALUES (?, 'H1', '401')"_s, b);
    }
    db().exec(u"SELECT Yk_UndoYysq(?)"_s, {u"0000000001"_s});
    // An unknown or empty document removes nothing and is no error.
    db().exec(u"SELECT Yk_UndoYysq(?)"_s, {u"9999999999"_s});
    db().exec(u"SELECT Yk_UndoYysq(NULL)"_s);
    const QString left = u"SELECT cdbh FROM %1 ORDER BY cdbh"_s;
    for (const char* t : {"a_khsqxx", "a_ykkzb", "a_dnbfa", "a_hgqfa", "a_gdfa", "z_dqgw", "z_lcls", "z_gzdxx"})
        EXPECT_EQ(rows(db(), left.arg(QLatin1String(t))), QStringList{u"0000000002"_s}) << t;
    // The inspection task and the archive are not the business's application.
    for (const char* t : {"e_jcgzjl", "a_h_khsqxx"}) EXPECT_EQ(rows(db(), left.arg(QLatin1String(t))).size(), 2) << t;
}

// ---------------------------------------------------------------------------
// jc_pjdlbd

class EnergySwing : public Routines {
protected:
    // H1: 200311 60, 200312 absent, 200401 100, 200402 200 (two billing
    // points), 200403 300, 200404 0. H2: the months before are all zero.
    void SetUp() override {
        Routines::SetUp();
        db().exec(u"INSERT INTO b_dltzxx (hh, ny, jfdbh, jfpdl, jfgdl) VALUES ('H1', '200311', '1', 60, NULL), "
                  "('H1', '200401', '1', 100, NULL), ('H1', '200402', '1', 150, NULL), ('H1', '200402', '2', 50, NULL), "
                  "('H1', '200403', '1', 300, NULL), ('H1', '200404', '1', 0, NULL), ('H2', '200401', '1', 0, NULL), "
                  "('H2', '200402', '1', 40, NULL), ('H3', '200401', '1', 30, NULL), ('H3', '200402', '1', 35, NULL)"_s);
    }
    // Bound as the screening binds them: every argument a text. The call in
    // a select list sent through the module (which PostgreSQL answers from
    // the month figures) gives what the routine gives.
    QVariant swing(const char* hh, const char* ny, const char* months, const char* flag = "1") {
        const QVariant routine = db().scalar(u"SELECT jc_pjdlbd(?, ?, ?, ?)"_s,
                                             {QLatin1String(hh), QLatin1String(ny), QLatin1String(months), QLatin1String(flag)});
        TMidasQuery q;
        q.SetDatabaseName(db().connectionName());
        OpenSql(&q, u"select jc_pjdlbd(:hh,:ny,:n,:f) bd from dual"_s,
                {{"hh", QLatin1String(hh)}, {"ny", QLatin1String(ny)}, {"n", QLatin1String(months)}, {"f", QLatin1String(flag)}});
        const auto shown = [](bool null, double v) { return null ? u"null"_s : QString::number(v); };
        EXPECT_EQ(shown(q.Fields(0).IsNull(), q.Fields(0).AsFloat()), shown(routine.isNull(), routine.toDouble()))
            << hh << " " << ny << " " << months << " " << flag;
        return routine;
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
    EXPECT_DOUBLE_EQ(swing("H1", "200403", "13").toDouble(), 150.0);  // 300 against (60 + 100 + 200) / 3
}

TEST_P(EnergySwing, NothingToCompareGivesNull) {
    EXPECT_TRUE(swing("H2", "200402", "1").isNull());   // the average is zero
    EXPECT_TRUE(swing("H1", "200405", "3").isNull());   // the month has no reading
    EXPECT_TRUE(swing("H1", "200311", "3").isNull());   // no month before it
    EXPECT_TRUE(swing("H1", "200403", "0").isNull());
    EXPECT_TRUE(swing("H1", "2004-03", "3").isNull());
    EXPECT_TRUE(db().scalar(u"SELECT jc_pjdlbd(NULL, '200403', 3, '1')"_s).isNull());
    // A NULL never passes a threshold of the screening.
    EXPECT_EQ(rows(db(), u"SELECT hh FROM b_dltzxx WHERE ny = '200402' AND jc_pjdlbd(hh, ny, 1, '1') > 30"_s).size(), 2);
}

// ---------------------------------------------------------------------------
// Customers with several supply sources, which PostgreSQL reads from counts
// kept beside y_gddy: they follow every insert, delete and update.

TEST_P(Routines, SupplySourceCountsFollowTheSupplySources) {
    for (const char* hh : {"H1", "H2", "H3"}) customer(db(), QLatin1String(hh), u"客户"_s);
    const auto several = [&] {
        TMidasQuery q;
        q.SetDatabaseName(db().connectionName());
        OpenSql(&q, u"SELECT a.hh FROM v_yckhda a WHERE (SELECT COUNT(1) FROM Y_GDDY WHERE HH=A.HH)>'1' ORDER BY a.hh"_s);
        QStringList hh;
        for (; !q.Eof(); q.Next()) hh << q.Fields(0).AsString();
        return hh;
    };
    db().exec(u"INSERT INTO y_gddy (hh, xh, dyxz) VALUES ('H1', 1, '主供'), ('H1', 2, '备用'), ('H2', 1, '主供'), ('H3', 1, '主供')"_s);
    EXPECT_EQ(several(), QStringList{u"H1"_s});
    db().exec(u"INSERT INTO y_gddy (hh, xh, dyxz) VALUES ('H2', 2, '备用'), ('H2', 3, '备用')"_s);
    db().exec(u"DELETE FROM y_gddy WHERE hh = 'H1' AND xh = 2"_s);
    db().exec(u"UPDATE y_gddy SET hh = 'H3' WHERE hh = 'H2' AND xh = 3"_s);
    EXPECT_EQ(several(), (QStringList{u"H2"_s, u"H3"_s}));
}

// ---------------------------------------------------------------------------
// jc_jlyctbjl

TEST_P(Routines, RefundTotalsAreRecordedOnTheAnomalyWorkSheet) {
    db().exec(u"INSERT INTO e_jlycgzd (cdbh, hh, wysydf) VALUES ('0000000007', 'H1', 10), "
              "('0000000008', 'H2', NULL)"_s);
    db().exec(u"INSERT INTO b_tbjl (tbcdh, glcdbh, hh) VALUES ('0000000007', '0000000007', 'H1')"_s);
    db().exec(u"INSERT INTO b_tbdfxx (tbcdh, ny, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf) "
              "VALUES ('0000000007', '200401', 10, 20, 30, 1, 2, 3, 0.5, 0.5, 4, 0, -1)"_s);
    db().exec(u"INSERT INTO b_tbdfxx (tbcdh, ny, pdl, pdf) VALUES ('0000000007', '200402', -5, -2), "
              "('0000000009', '200402', 99, 99)"_s);
    const QString totals = u"SELECT zbzdl, zbdldf, zbjbdf, zblldf, yzbdf FROM e_jlycgzd ORDER BY cdbh"_s;
    db().exec(u"SELECT jc_jlyctbjl(?, ?)"_s, {u"0000000007"_s, u"1"_s});
    // Energy 55; energy, basic and power-factor charges 5, 4, -1; owed 5 + 4 - 1 + the penalty 10.
    EXPECT_EQ(rows(db(), totals), QStringList({u"55|5|4|-1|18"_s, u"||||"_s}));
    db().exec(u"SELECT jc_jlyctbjl(?, ?)"_s, {u"0000000007"_s, u"0"_s});
    EXPECT_EQ(rows(db(), totals), QStringList({u"0|0|0|0|10"_s, u"||||"_s}));
}

// ---------------------------------------------------------------------------
// The clock and Oracle's date functions

// (The clock read as the module reads it, fixed and real, is the corpus's
// and the common functions' test.) Each connection keeps its own clock.
TEST_P(Routines, FixedClockDrivesSysdateArithmeticAndStoredDates) {
    const QString other = u"other_clock"_s, now = u"SELECT to_char(tarvin_sysdate(), 'YYYY-MM-DD HH24:MI:SS')"_s;
    tarvin::db::openConnection(db().url(), other);
    tarvin::db::setFixedClock(db().connectionName(), QDateTime(QDate(2004, 7, 1), QTime(10, 20, 30)));
    tarvin::db::setFixedClock(other, QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59)));
    QString seen;
    {
        QSqlQuery q(QSqlDatabase::database(other, false));
        if (q.exec(now) && q.next()) seen = q.value(0).toString();
    }
    tarvin::db::closeConnection(other);
    EXPECT_EQ(seen, u"1999-12-31 23:59:59"_s);
    const QString ago = pick("tarvin_date_add(tarvin_sysdate(), -365)", "tarvin_sysdate() - (365) * interval '1 day'");
    EXPECT_EQ(rows(db(), u"SELECT to_char(%1, 'YYYY-MM-DD HH24:MI:SS'), "
                         "to_char(tarvin_date_add(tarvin_sysdate(), 0.5), 'YYYY-MM-DD HH24:MI:SS')"_s.arg(ago)),
              QStringList{u"2003-07-02 10:20:30|2004-07-01 22:20:30"_s});
    // Stored and compared as a date.
    db().exec(u"INSERT INTO e_jcgzap (jcph, zdsj) VALUES ('1', tarvin_sysdate())"_s);
    EXPECT_EQ(rows(db(), u"SELECT to_char(zdsj, 'YYYY-MM-DD HH24:MI:SS') FROM e_jcgzap WHERE zdsj >= "
                         "to_date('2004-07-01', 'yyyy-mm-dd') AND zdsj < to_date('2004-07-02', 'yyyy-mm-dd')"_s),
              QStringList{u"2004-07-01 10:20:30"_s});
}

// The SQLite functions give what PostgreSQL's native ones give.
TEST_P(Routines, ToCharAndToDateFollowTheFormatModels) {
    const QString date = pick("SELECT to_char(?, ?)", "SELECT to_char(CAST(? AS timestamp), ?)"),
                  number = u"SELECT to_char(CAST(? AS NUMERIC), ?)"_s,
                  toDate = u"SELECT to_char(to_date(?, ?), 'YYYY-MM-DD HH24:MI:SS')"_s;
    const char *t = "2004-07-09 08:05:03", *midnight = "2004-07-01 00:00:00";
    const struct {
        const QString& sql;
        const char *value, *fmt, *want;
    } cases[] = {
        {date, t, "yyyymm", "200407"}, {date, t, "yyyy", "2004"}, {date, t, "YY/MM/DD HH24.MI.SS", "04/07/09 08.05.03"},
        {date, "2004-07-09 00:05:03", "HH:MI", "12:05"}, {date, "2004-07-09 15:05:03", "HH12:MI PM", "03:05 PM"},
        {date, t, "FMMM", "7"}, {date, t, "YYYY\"年\"MM\"月\"", "2004年07月"},
        {date, "2004-07-09", "YYYY-MM-DD HH24:MI:SS", "2004-07-09 00:00:00"},
        {number, "5", "0000", " 0005"}, {number, "42", "FM0000", "0042"}, {number, "-5", "0000", "-0005"},
        {number, "1234.5", "9,999.99", " 1,234.50"}, {number, "12", "9,999", "    12"},
        {number, "12345", "999", " ###"},
        {toDate, "2004-07-01", "yyyy-mm-dd", midnight}, {toDate, "2004/7/1", "yyyy-mm-dd", midnight},
        {toDate, "20040701", "yyyymmdd", midnight}, {toDate, "200407", "yyyymm", midnight}};
    for (const auto& c : cases)
        EXPECT_EQ(db().scalar(c.sql, {QString::fromUtf8(c.value), QString::fromUtf8(c.fmt)}).toString(),
                  QString::fromUtf8(c.want)) << c.value << " as " << c.fmt;
    EXPECT_TRUE(db().scalar(date, {QVariant(), u"YYYY"_s}).isNull());
    EXPECT_TRUE(db().scalar(u"SELECT to_date(NULL, 'yyyy-mm-dd')"_s).isNull());
    EXPECT_FALSE(QSqlQuery(db().db()).exec(u"SELECT to_date('2004-02-30', 'yyyy-mm-dd')"_s));
    EXPECT_FALSE(QSqlQuery(db().db()).exec(u"SELECT to_date('2004-13-01', 'yyyy-mm-dd')"_s));
}

TEST(SqliteRoutines, DateErrorsNameTheValue) {
    TestDatabase db(Dialect::SQLite);
    QSqlQuery q(db.db());
    EXPECT_FALSE(q.exec(u"SELECT to_date('2004-07-01 10:00', 'yyyy-mm-dd')"_s));
    EXPECT_TRUE(q.lastError().text().contains(u"2004-07-01 10:00"_s)) << q.lastError().text().toStdString();
    EXPECT_FALSE(q.exec(u"SELECT to_char('tomorrow', 'YYYY')"_s));
    EXPECT_TRUE(q.lastError().text().contains(u"tomorrow"_s));
    EXPECT_FALSE(q.exec(u"SELECT tarvin_date_add('2004-07-01', 'x')"_s));
    // Dates in canonical text, whatever the input form; leap days respected.
    // Oracle's to_date keeps the time of day (PostgreSQL's native to_date gives a date only).
    EXPECT_EQ(rows(db, u"SELECT tarvin_date_add('2004-03-01', -1), to_date('2004-07-01T08:09:10'), "
                       "to_date('2004-07-01 1:14:15 pm', 'YYYY-MM-DD HH:MI:SS AM')"_s),
              QStringList{u"2004-02-29 00:00:00|2004-07-01 08:09:10|2004-07-01 13:14:15"_s});
    // A missing sequence row is an error, not a number.
    db.exec(u"DELETE FROM z_xlh WHERE xlm = 'GDFABH'"_s);
    EXPECT_FALSE(q.exec(u"SELECT GET_GDFABH()"_s));
    EXPECT_TRUE(q.lastError().text().contains(u"GDFABH"_s));
}

// The swing keeps a prepared statement on the connection; closing the
// connection must still close the database file.
TEST(SqliteRoutines, AConnectionThatUsedTheRoutinesClosesCleanly) {
    QTemporaryDir dir;
    const QString path = dir.path() + u"/closing.sqlite"_s, name = u"closing"_s;
    {
        QSqlDatabase d = tarvin::db::openConnection(u"sqlite:"_s + path, name);
        tarvin::db::createSchema(d);
        QSqlQuery q(d);
        ASSERT_TRUE(q.exec(u"SELECT jc_pjdlbd('H1', '200401', 3, '1'), GET_CDBH()"_s));
        ASSERT_TRUE(q.exec(u"SELECT jc_pjdlbd(hh, ny, 3, '1') FROM b_dltzxx"_s));
    }
    QSqlDatabase d = QSqlDatabase::database(name, false);
    d.close();
    EXPECT_FALSE(d.lastError().isValid()) << d.lastError().text().toStdString();
    d = QSqlDatabase();
    tarvin::db::closeConnection(name);
    EXPECT_FALSE(QFile::exists(path + u"-wal"_s));  // the last connection really closed
}

TARVIN_INSTANTIATE_ENGINES(Routines);
TARVIN_INSTANTIATE_ENGINES(EnergySwing);

}  // namespace
