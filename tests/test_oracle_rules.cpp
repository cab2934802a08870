// Oracle's value rules, as the module's texts rely on them, on SQLite and on
// PostgreSQL through the data layer (the bridge rewrites, the engine runs):
// '' is null, a text bound against a number compares as a number, LIKE is
// case-sensitive, names of parameters in any case, sysdate and days, the
// ideographic space, (+) outer joins, rownum, blocks, commit, dates, ||.
#include <QDateTime>
#include <gtest/gtest.h>

#include "data/Connection.h"
#include "data/MidasQuery.h"
#include "TestDb.h"

using tarvin::sql::Dialect;
using tarvin::test::EngineTest;
using tarvin::test::TestDatabase;

namespace {

class OracleRules : public EngineTest {
protected:
    void SetUp() override {
        db = std::make_unique<TestDatabase>(dialect());
        // Customers: two of unit 01 named alike but for case, one without
        // a name, one of unit 02 never inspected by us.
        db->exec(QStringLiteral("CREATE TABLE r_kh (hh VARCHAR(10) PRIMARY KEY, hm VARCHAR(40), dw VARCHAR(10), scjcrq TIMESTAMP(0))"));
        db->exec(QStringLiteral("INSERT INTO r_kh VALUES ('0000000001','Abc','01','2024-01-10 00:00:00')"));
        db->exec(QStringLiteral("INSERT INTO r_kh VALUES ('0000000002','abc','01',NULL)"));
        db->exec(QStringLiteral("INSERT INTO r_kh VALUES ('0000000003',NULL,'01','2023-05-01 00:00:00')"));
        db->exec(QStringLiteral("INSERT INTO r_kh VALUES ('0000000004','王四','02','2024-06-30 12:00:00')"));
        // Applications: ten for 0001 (five a month), three for 0002, two for 0003.
        db->exec(QStringLiteral("CREATE TABLE r_sq (id INTEGER PRIMARY KEY, hh VARCHAR(10), ywdm VARCHAR(3), ny VARCHAR(6))"));
        int id = 0;
        auto sq = [&](const char* hh, const char* ywdm, const char* ny, int n) {
            for (int i = 0; i < n; ++i)
                db->exec(QStringLiteral("INSERT INTO r_sq VALUES (%1,'%2','%3','%4')").arg(++id).arg(QLatin1String(hh), QLatin1String(ywdm), QLatin1String(ny)));
        };
        sq("0000000001", "401", "202401", 5);
        sq("0000000001", "402", "202402", 5);
        sq("0000000002", "401", "202401", 3);
        sq("0000000003", "160", "202402", 2);
        // Supply sources: two for 0001, one for 0002.
        db->exec(QStringLiteral("CREATE TABLE r_gddy (hh VARCHAR(10), xh INTEGER)"));
        db->exec(QStringLiteral("INSERT INTO r_gddy VALUES ('0000000001',1)"));
        db->exec(QStringLiteral("INSERT INTO r_gddy VALUES ('0000000001',2)"));
        db->exec(QStringLiteral("INSERT INTO r_gddy VALUES ('0000000002',1)"));
    }
    void TearDown() override { db.reset(); }

    // Opens `sql` with the text parameters given in order of `binds`.
    void open(TMidasQuery& q, const QString& sql, const QList<std::pair<QString, QVariant>>& binds = {}) {
        q.Close();
        q.SQL().SetText(sql);
        for (const auto& [name, value] : binds) q.ParamByName(name).SetValue(value);
        q.Open();
    }
    QStringList column(TMidasQuery& q, const QString& field) {
        QStringList out;
        for (q.First(); !q.Eof(); q.Next()) out << q.FieldByName(field).AsString();
        out.sort();
        return out;
    }
    QStringList rows(const QString& sql, const QList<std::pair<QString, QVariant>>& binds = {}, const QString& field = QStringLiteral("HH")) {
        TMidasQuery q;
        open(q, sql, binds);
        return column(q, field);
    }
    void exec(const QString& sql, const QList<std::pair<QString, QVariant>>& binds = {}) {
        TMidasQuery q;
        q.SQL().SetText(sql);
        for (const auto& [name, value] : binds) q.ParamByName(name).SetValue(value);
        q.ExecSQL();
    }

    std::unique_ptr<TestDatabase> db;
};

const QString k1 = QStringLiteral("0000000001"), k2 = QStringLiteral("0000000002"), k3 = QStringLiteral("0000000003"),
              k4 = QStringLiteral("0000000004");

TEST_P(OracleRules, EmptyTextIsNull) {
    exec(QStringLiteral("update r_kh set hm='' where hh=:hh"), {{"hh", k1}});
    EXPECT_EQ(rows(QStringLiteral("select hh from r_kh where hm is null")), (QStringList{k1, k3}));
    EXPECT_TRUE(rows(QStringLiteral("select hh from r_kh where hm = ''")).isEmpty());
    exec(QStringLiteral("insert into r_kh (hh, hm, dw) values (:hh, '', :dw)"), {{"hh", "0000000009"}, {"dw", ""}});
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from r_kh where hh='0000000009' and hm is null and dw is null")).toInt(), 1);
    EXPECT_EQ(rows(QStringLiteral("select nvl('', 'x') v from dual"), {}, QStringLiteral("V")), QStringList{"x"});
}

TEST_P(OracleRules, TextBoundAgainstANumberComparesAsANumber) {
    // The count of a derived table (10, 3, 2) against the text "3": 10 > 3
    // as numbers, though '10' < '3' as texts.
    const QString perCustomer = QStringLiteral(
        "select a.hh,b.cs from r_kh a,  (select hh,count(*) cs from r_sq group by hh) b  where a.hh=b.hh(+) and b.cs>:cs AND  1=1");
    EXPECT_EQ(rows(perCustomer, {{"CS", QStringLiteral("3")}}), QStringList{k1});
    EXPECT_EQ(rows(perCustomer, {{"cs", QStringLiteral("2")}}), (QStringList{k1, k2}));
    // A scalar count against a quoted number.
    EXPECT_EQ(rows(QStringLiteral(" SELECT * FROM r_kh a where  (SELECT COUNT(1) FROM r_gddy WHERE HH=A.HH)>'1' AND  1=1")), QStringList{k1});
    // A sum against a text parameter, as the energy category compares it.
    EXPECT_EQ(rows(QStringLiteral("select a.* from r_kh a where (select sum(id) from r_sq where hh=a.hh group by hh) >:zdl"),
                   {{"zDL", QStringLiteral("5")}}),
              (QStringList{k1, k2, k3}));
    // And the count read back is a number.
    TMidasQuery q;
    open(q, QStringLiteral("select count(*) jls from r_sq where hh=:hh"), {{"hh", k1}});
    EXPECT_EQ(q.FieldByName(QStringLiteral("JLS")).AsInteger(), 10);
    // Without alias the column has Oracle's heading on every engine.
    open(q, QStringLiteral("select count(*), max(hh) from r_sq"));
    EXPECT_EQ(q.FieldByName(QStringLiteral("COUNT(*)")).AsInteger(), 15);
    EXPECT_EQ(q.FieldByName(QStringLiteral("MAX(HH)")).AsString(), k3);
}

TEST_P(OracleRules, LikeIsCaseSensitive) {
    const QString sql = QStringLiteral("select hh from r_kh where hm like :p");
    EXPECT_EQ(rows(sql, {{"p", QStringLiteral("ab%")}}), QStringList{k2});
    EXPECT_EQ(rows(sql, {{"p", QStringLiteral("%A%")}}), QStringList{k1});
}

TEST_P(OracleRules, ParameterNamesInAnyCaseAndUsedTwice) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select hh from r_kh where (hh=:HH or hm=:Hm) and dw=:dw and (hh=:hh or dw=:DW)"));
    ASSERT_EQ(q.Params().Count(), 3);
    q.ParamByName(QStringLiteral("hh")).SetAsString(k2);
    q.ParamByName(QStringLiteral("HM")).SetAsString(QStringLiteral("Abc"));
    q.ParamByName(QStringLiteral("Dw")).SetAsString(QStringLiteral("01"));
    q.Open();
    EXPECT_EQ(column(q, QStringLiteral("hh")), (QStringList{k1, k2}));
}

TEST_P(OracleRules, SysdateAndDaysBefore) {
    tarvin::db::setFixedClock(db->connectionName(), QDateTime(QDate(2024, 7, 1), QTime(10, 0)));
    EXPECT_EQ(rows(QStringLiteral("select to_char(sysdate,:format) from dual"), {{"format", QStringLiteral("YYYY-MM-DD HH24:mi:ss")}},
                   QStringLiteral("TO_CHAR(SYSDATE,:FORMAT)")),
              QStringList{"2024-07-01 10:00:00"});
    // A customer never inspected counts as inspected 365 days ago
    // (2023-07-02 10:00): before a start of 2023-12-31, not before 2023-06-01.
    const QString notInspected = QStringLiteral(
        " SELECT * FROM r_kh a   where (nvl(a.scjcrq,sysdate-365)<:jcrqq or a.scjcrq>:jcrqz)  and a.dw=:dw and  1=1");
    TMidasQuery q;
    q.SQL().SetText(notInspected);
    q.ParamByName(QStringLiteral("JCRQQ")).SetAsDate(QDate(2023, 12, 31));
    q.ParamByName(QStringLiteral("JCRQZ")).SetAsDate(QDate(2024, 6, 1));
    q.ParamByName(QStringLiteral("dw")).SetAsString(QStringLiteral("01"));
    q.Open();
    EXPECT_EQ(column(q, QStringLiteral("HH")), (QStringList{k2, k3}));
    q.Close();
    q.ParamByName(QStringLiteral("JCRQQ")).SetAsDate(QDate(2023, 6, 1));
    q.Open();
    EXPECT_EQ(column(q, QStringLiteral("HH")), QStringList{k3});
}

TEST_P(OracleRules, DateBoundIntoADateComparison) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select hh from r_kh where scjcrq >= :d"));
    q.ParamByName(QStringLiteral("d")).SetAsDateTime(QDateTime(QDate(2024, 1, 10), QTime(0, 0)));
    q.Open();
    EXPECT_EQ(column(q, QStringLiteral("HH")), (QStringList{k1, k4}));
    q.Close();
    q.SQL().SetText(QStringLiteral("select hh from r_kh where scjcrq > :d and scjcrq < to_date('2024-07-01','yyyy-mm-dd')"));
    q.ParamByName(QStringLiteral("d")).SetAsDate(QDate(2024, 6, 30));
    q.Open();
    EXPECT_EQ(column(q, QStringLiteral("HH")), QStringList{k4});
}

TEST_P(OracleRules, IdeographicSpaceBetweenTokens) {
    EXPECT_EQ(rows(QStringLiteral("select *\u3000from r_kh where hh='") + k4 + QStringLiteral("'"), {}, QStringLiteral("HM")),
              QStringList{QStringLiteral("王四")});
}

TEST_P(OracleRules, OuterJoinsKeepOraclesMeaning) {
    // A marked condition joins; an unmarked one on the same table filters.
    const QString perMonth = QStringLiteral(
        "select a.hh, b.cs from r_kh a, (select hh, ny, count(*) cs from r_sq group by hh, ny) b where a.hh=b.hh(+) and %1 and a.dw='01'");
    EXPECT_EQ(rows(perMonth.arg(QLatin1String("b.ny(+)=:ny")), {{"ny", "202402"}}), (QStringList{k1, k2, k3}));
    EXPECT_EQ(rows(perMonth.arg(QLatin1String("b.ny(+)=:ny")), {{"ny", "202402"}}, QStringLiteral("CS")), (QStringList{"", "2", "5"}));
    EXPECT_EQ(rows(perMonth.arg(QLatin1String("b.NY=:ny")), {{"ny", "202402"}}), (QStringList{k1, k3}));

    // Outer-joined in a derived table, read by the select around it.
    EXPECT_EQ(rows(QStringLiteral("select * from   (select distinct A.hh,B.NY from r_kh A,r_sq  B  where A.HH=B.HH(+)) A WHERE NY is null")),
              QStringList{k4});
    // A derived table with its own outer join, outer-joined inside a
    // derived table: every customer with more than :cs applications.
    const QString nested = QStringLiteral(
        "select count(*) jls from (select a.hh, b.cs from r_kh a, (select a.hh, count(b.id) cs from r_kh a, r_sq b where a.hh=b.hh(+) group by a.hh) b "
        "where a.hh=b.hh(+) and b.cs>:cs) x");
    EXPECT_EQ(rows(nested, {{"cs", "1"}}, QStringLiteral("JLS")), QStringList{"3"});
    EXPECT_EQ(rows(nested, {{"cs", "0"}}, QStringLiteral("JLS")), QStringList{"3"});
    EXPECT_EQ(rows(QString(nested).replace(QLatin1String("b.cs>:cs"), QLatin1String("b.cs>=:cs")), {{"cs", "0"}}, QStringLiteral("JLS")),
              QStringList{"4"});
}

TEST_P(OracleRules, RownumInAScalarSubquery) {
    const QString sql = QStringLiteral(
        "select a.hh, (select ywdm from r_sq where hh=a.hh and ny=:ny and rownum=1) ywdm from r_kh a where a.dw='01'");
    TMidasQuery q;
    open(q, sql, {{"NY", "202401"}});
    ASSERT_EQ(q.RecordCount(), 3);
    ASSERT_TRUE(q.Locate(QStringLiteral("HH"), k1));
    EXPECT_EQ(q.FieldByName(QStringLiteral("YWDM")).AsString(), QStringLiteral("401"));
    ASSERT_TRUE(q.Locate(QStringLiteral("HH"), k3));
    EXPECT_TRUE(q.FieldByName(QStringLiteral("YWDM")).IsNull());
    EXPECT_EQ(rows(QStringLiteral("select hh from r_sq where rownum <= 4"), {}, QStringLiteral("HH")).size(), 4);
}

TEST_P(OracleRules, AnonymousBlocks) {
    TMidasQuery q;
    auto draw = [&]() {
        q.SQL().SetText(QStringLiteral("Begin :CDBH := GET_CDBH; End;"));
        q.Params().Clear();
        q.Params().CreateParam(ftString, QStringLiteral("CDBH"), ptOutput);
        q.ExecSQL();
        return q.ParamByName(QStringLiteral("CDBH")).AsString();
    };
    const QString first = draw();
    const QString second = draw();
    EXPECT_EQ(first.size(), 10);
    EXPECT_GT(second, first);

    exec(QStringLiteral("Insert into A_YKKZB(CDBH,htrl) Values(:CDBH,:HTRL)"), {{"CDBH", first}, {"HTRL", 315}});
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from a_ykkzb")).toInt(), 1);
    TMidasQuery undo;
    undo.SQL().SetText(QStringLiteral("Begin Yk_UndoYysq(:ac_Cdbh); End;"));
    undo.Params().Clear();
    undo.Params().CreateParam(ftString, QStringLiteral("ac_CDBH"), ptInput);
    undo.ParamByName(QStringLiteral("ac_Cdbh")).SetAsString(first);
    undo.ExecSQL();
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from a_ykkzb")).toInt(), 0);
}

TEST_P(OracleRules, CommitStatementCommits) {
    TCustomMidasDataBase& base = TCustomMidasDataBase::ByName(db->connectionName());
    base.StartTransaction();
    exec(QStringLiteral("insert into r_gddy (hh, xh) values (:hh, 3)"), {{"hh", k4}});
    exec(QStringLiteral("commit"));
    EXPECT_FALSE(base.InTransaction());
    base.Rollback();  // nothing left to roll back
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from r_gddy where hh='0000000004'")).toInt(), 1);
}

TEST_P(OracleRules, ConcatenationWithNullOperands) {
    const QString sql = QStringLiteral("select hh, hh||' | '||hm x, hm||'' y from r_kh");
    TMidasQuery q;
    open(q, sql);
    ASSERT_TRUE(q.Locate(QStringLiteral("HH"), k3));
    EXPECT_EQ(q.FieldByName(QStringLiteral("X")).AsString(), k3 + QStringLiteral(" | "));
    EXPECT_TRUE(q.FieldByName(QStringLiteral("Y")).IsNull());
    ASSERT_TRUE(q.Locate(QStringLiteral("HH"), k4));
    EXPECT_EQ(q.FieldByName(QStringLiteral("X")).AsString(), k4 + QStringLiteral(" | 王四"));
    EXPECT_EQ(rows(QStringLiteral("select hh from r_kh where hh||hm = :v"), {{"v", k3}}), QStringList{k3});
}

TEST_P(OracleRules, OtherOracleForms) {
    // UPDATE and DELETE with a table alias, DELETE without FROM.
    exec(QStringLiteral("update r_kh c set c.hm = :hm where c.hh=:hh"), {{"hm", "新"}, {"hh", k4}});
    EXPECT_EQ(rows(QStringLiteral("select hm from r_kh where hh=:hh"), {{"hh", k4}}, QStringLiteral("HM")), QStringList{"新"});
    exec(QStringLiteral("delete r_gddy g where g.hh=:hh and g.xh=2"), {{"hh", k1}});
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from r_gddy")).toInt(), 2);
    // MINUS, instr, decode, to_number.
    EXPECT_EQ(rows(QStringLiteral("select hh from r_kh minus select hh from r_sq")), QStringList{k4});
    EXPECT_EQ(rows(QStringLiteral("select hh from r_kh where instr(:list, dw) = 0"), {{"list", "02/03"}}), (QStringList{k1, k2, k3}));
    EXPECT_EQ(rows(QStringLiteral("select decode(hm, null, 'none', 'Abc', 'big', 'other') d from r_kh"), {}, QStringLiteral("D")),
              (QStringList{"big", "none", "other", "other"}));
    EXPECT_EQ(rows(QStringLiteral("select hh from r_kh where to_number(dw) > :n"), {{"n", "1"}}), QStringList{k4});
}

TARVIN_INSTANTIATE_ENGINES(OracleRules);

}  // namespace
