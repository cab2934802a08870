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

using Binds = std::vector<std::pair<const char*, QVariant>>;

class OracleRules : public EngineTest {
protected:
    void SetUp() override {
        db = std::make_unique<TestDatabase>(dialect());
        tarvin::db::setFixedClock(db->connectionName(), QDateTime(QDate(2024, 7, 1), QTime(10, 0)));
        // Customers: two of unit 01 named alike but for case, one without
        // a name, one of unit 02 never inspected by us.
        db->exec(QStringLiteral("CREATE TABLE r_kh (hh VARCHAR(10) PRIMARY KEY, hm VARCHAR(40), dw VARCHAR(10), scjcrq TIMESTAMP(0))"));
        db->exec(QStringLiteral("INSERT INTO r_kh VALUES ('0000000001','Abc','01','2024-01-10 00:00:00'), ('0000000002','abc','01',NULL), "
                                "('0000000003',NULL,'01','2023-05-01 00:00:00'), ('0000000004','王四','02','2024-06-30 12:00:00')"));
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
        db->exec(QStringLiteral("INSERT INTO r_gddy VALUES ('0000000001',1), ('0000000001',2), ('0000000002',1)"));
    }
    void TearDown() override { db.reset(); }

    // The values of `field` in every row the text opens, sorted.
    QStringList rows(const QString& sql, const Binds& binds = {}, const char* field = "HH") {
        TMidasQuery q;
        PrepareSql(&q, sql);
        for (const auto& [name, value] : binds) q.ParamByName(QLatin1String(name)).SetValue(value);
        q.Open();
        QStringList out;
        for (q.First(); !q.Eof(); q.Next()) out << q.FieldByName(QLatin1String(field)).AsString();
        out.sort();
        return out;
    }
    void exec(const QString& sql, TSqlParams binds = {}) {
        TMidasQuery q;
        ExecSql(&q, sql, binds);
    }

    std::unique_ptr<TestDatabase> db;
};

const QString k1 = QStringLiteral("0000000001"), k2 = QStringLiteral("0000000002"), k3 = QStringLiteral("0000000003"),
              k4 = QStringLiteral("0000000004");

// A text, its parameters, and the values of a field in the rows it opens.
struct Rule { QString sql; Binds binds; QStringList expected; const char* field = "HH"; };

TEST_P(OracleRules, QueriesGiveOraclesRows) {
    // The count of a derived table (10, 3, 2) against the text "3": 10 > 3
    // as numbers, though '10' < '3' as texts.
    const QString perCustomer = QStringLiteral(
        "select a.hh,b.cs from r_kh a,  (select hh,count(*) cs from r_sq group by hh) b  where a.hh=b.hh(+) and b.cs>:cs AND  1=1");
    // A customer never inspected counts as inspected 365 days ago
    // (2023-07-02 10:00): before a start of 2023-12-31, not before 2023-06-01.
    const QString notInspected =
        QStringLiteral(" SELECT * FROM r_kh a   where (nvl(a.scjcrq,sysdate-365)<:jcrqq or a.scjcrq>:jcrqz)  and a.dw=:dw and  1=1");
    // A marked condition joins; an unmarked one on the same table filters.
    const QString perMonth = QStringLiteral(
        "select a.hh, b.cs from r_kh a, (select hh, ny, count(*) cs from r_sq group by hh, ny) b where a.hh=b.hh(+) and %1 and a.dw='01'");
    // A derived table with its own outer join, outer-joined inside a
    // derived table: every customer with more than :cs applications.
    const QString nested = QStringLiteral(
        "select count(*) jls from (select a.hh, b.cs from r_kh a, (select a.hh, count(b.id) cs from r_kh a, r_sq b where a.hh=b.hh(+) "
        "group by a.hh) b where a.hh=b.hh(+) and b.cs>:cs) x");
    const Rule rules[] = {
        // '' is null.
        {"select hh from r_kh where hm = ''", {}, {}},
        {"select nvl('', 'x') v from dual", {}, {"x"}, "V"},
        // Texts against numbers: a derived count, a scalar count against a
        // quoted number, a sum against a text parameter; counts read back.
        {perCustomer, {{"CS", "3"}}, {k1}},
        {" SELECT * FROM r_kh a where  (SELECT COUNT(1) FROM r_gddy WHERE HH=A.HH)>'1' AND  1=1", {}, {k1}},
        {"select a.* from r_kh a where (select sum(id) from r_sq where hh=a.hh group by hh) >:zdl", {{"zDL", "5"}}, {k1, k2, k3}},
        {"select count(*) jls from r_sq where hh=:hh", {{"hh", k1}}, {"10"}, "JLS"},
        // Without alias a column has Oracle's heading on every engine.
        {"select count(*), max(hh) from r_sq", {}, {"15"}, "COUNT(*)"},
        {"select count(*), max(hh) from r_sq", {}, {k3}, "MAX(HH)"},
        // LIKE is case-sensitive; parameter names in any case, used twice.
        {"select hh from r_kh where hm like :p", {{"p", "ab%"}}, {k2}},
        {"select hh from r_kh where hm like :p", {{"p", "%A%"}}, {k1}},
        {"select hh from r_kh where (hh=:HH or hm=:Hm) and dw=:dw and (hh=:hh or dw=:DW)", {{"hh", k2}, {"HM", "Abc"}, {"Dw", "01"}},
         {k1, k2}},
        // sysdate, days before it, dates bound into date comparisons.
        {"select to_char(sysdate,:format) from dual", {{"format", "YYYY-MM-DD HH24:mi:ss"}}, {"2024-07-01 10:00:00"}, "TO_CHAR(SYSDATE,:FORMAT)"},
        {notInspected, {{"JCRQQ", QDate(2023, 12, 31)}, {"JCRQZ", QDate(2024, 6, 1)}, {"dw", "01"}}, {k2, k3}},
        {notInspected, {{"JCRQQ", QDate(2023, 6, 1)}, {"JCRQZ", QDate(2024, 6, 1)}, {"dw", "01"}}, {k3}},
        {"select hh from r_kh where scjcrq >= :d", {{"d", QDateTime(QDate(2024, 1, 10), QTime(0, 0))}}, {k1, k4}},
        {"select hh from r_kh where scjcrq > :d and scjcrq < to_date('2024-07-01','yyyy-mm-dd')", {{"d", QDate(2024, 6, 30)}}, {k4}},
        {"select *\u3000from r_kh where hh='0000000004'", {}, {"王四"}, "HM"},
        // (+) in its places.
        {perMonth.arg("b.ny(+)=:ny"), {{"ny", "202402"}}, {k1, k2, k3}},
        {perMonth.arg("b.ny(+)=:ny"), {{"ny", "202402"}}, {"", "2", "5"}, "CS"},
        {perMonth.arg("b.NY=:ny"), {{"ny", "202402"}}, {k1, k3}},
        {"select * from   (select distinct A.hh,B.NY from r_kh A,r_sq  B  where A.HH=B.HH(+)) A WHERE NY is null", {}, {k4}},
        {nested, {{"cs", "0"}}, {"3"}, "JLS"},
        {QString(nested).replace("b.cs>:cs", "b.cs>=:cs"), {{"cs", "0"}}, {"4"}, "JLS"},
        // rownum: the first row of a scalar subquery, a limit.
        {"select a.hh, (select ywdm from r_sq where hh=a.hh and ny=:ny and rownum=1) ywdm from r_kh a where a.dw='01'", {{"NY", "202401"}},
         {"", "401", "401"}, "YWDM"},
        {"select count(*) n from (select hh from r_sq where rownum <= 4) x", {}, {"4"}, "N"},
        // || takes null as empty, and gives null when everything is.
        {"select hh||' | '||hm x from r_kh where hh in ('0000000003', '0000000004')", {}, {k3 + " | ", k4 + " | 王四"}, "X"},
        {"select hh from r_kh where hm||'' is null", {}, {k3}},
        {"select hh from r_kh where hh||hm = :v", {{"v", k3}}, {k3}},
        // MINUS, instr, decode, to_number.
        {"select hh from r_kh minus select hh from r_sq", {}, {k4}},
        {"select hh from r_kh where instr(:list, dw) = 0", {{"list", "02/03"}}, {k1, k2, k3}},
        {"select decode(hm, null, 'none', 'Abc', 'big', 'other') d from r_kh", {}, {"big", "none", "other", "other"}, "D"},
        {"select hh from r_kh where to_number(dw) > :n", {{"n", "1"}}, {k4}},
    };
    for (const Rule& r : rules) EXPECT_EQ(rows(r.sql, r.binds, r.field), r.expected) << qPrintable(r.sql);
}

TEST_P(OracleRules, StatementsWriteOraclesValues) {
    // '' written is null, bound or in the text.
    exec(QStringLiteral("update r_kh set hm='' where hh=:hh"), {{"hh", k1}});
    exec(QStringLiteral("insert into r_kh (hh, hm, dw) values (:hh, '', :dw)"), {{"hh", "0000000009"}, {"dw", ""}});
    EXPECT_EQ(rows(QStringLiteral("select hh from r_kh where hm is null")), (QStringList{k1, k3, "0000000009"}));
    EXPECT_EQ(rows(QStringLiteral("select hh from r_kh where dw is null")), QStringList{"0000000009"});
    EXPECT_TRUE(rows(QStringLiteral("select hh from r_kh where hm = ''")).isEmpty());
    // UPDATE and DELETE with a table alias, DELETE without FROM.
    exec(QStringLiteral("update r_kh c set c.hm = :hm where c.hh=:hh"), {{"hm", "新"}, {"hh", k4}});
    EXPECT_EQ(rows(QStringLiteral("select hm from r_kh where hh=:hh"), {{"hh", k4}}, "HM"), QStringList{"新"});
    exec(QStringLiteral("delete r_gddy g where g.hh=:hh and g.xh=2"), {{"hh", k1}});
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from r_gddy")).toInt(), 2);
}

TEST_P(OracleRules, AnonymousBlocks) {
    // The screens declare a block's parameters themselves.
    auto call = [](TMidasQuery& q, const char* sql, const char* name, TParamType type) -> TParam& {
        q.SQL().SetText(QLatin1String(sql));
        q.Params().Clear();
        q.Params().CreateParam(ftString, QLatin1String(name), type);
        return q.ParamByName(QLatin1String(name));
    };
    TMidasQuery q;
    auto draw = [&] {
        TParam& p = call(q, "Begin :CDBH := GET_CDBH; End;", "CDBH", ptOutput);
        q.ExecSQL();
        return p.AsString();
    };
    const QString first = draw();
    EXPECT_EQ(first.size(), 10);
    EXPECT_GT(draw(), first);

    exec(QStringLiteral("Insert into A_YKKZB(CDBH,htrl) Values(:CDBH,:HTRL)"), {{"CDBH", first}, {"HTRL", 315}});
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from a_ykkzb")).toInt(), 1);
    TMidasQuery undo;
    call(undo, "Begin Yk_UndoYysq(:ac_Cdbh); End;", "ac_CDBH", ptInput).SetAsString(first);
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

TARVIN_INSTANTIATE_ENGINES(OracleRules);

}  // namespace
