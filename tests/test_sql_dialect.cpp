// The dialect bridge as text: what each Oracle construct becomes on SQLite
// and PostgreSQL, and which texts it refuses (construct and position).
// Whether the rewritten texts mean what Oracle means is tested by running
// them, in test_oracle_rules.cpp.
#include <QDateTime>
#include <gtest/gtest.h>

#include "data/SqlDialect.h"
#include "TestDb.h"

using tarvin::sql::Dialect;
using tarvin::sql::parameterNames;
using tarvin::sql::translate;
using tarvin::sql::TranslateError;
using tarvin::sql::Translated;

namespace {

constexpr Dialect kLite = Dialect::SQLite;
constexpr Dialect kPg = Dialect::PostgreSQL;

// The translated text with each parameter place written as :NAME.
QString text(const QString& sql, Dialect d) {
    const Translated t = translate(sql, d);
    QStringList names;
    for (const QString& p : t.params) names << QLatin1Char(':') + p;
    return t.withLiterals(names);
}

struct Refusal {
    QString construct;
    int position = -2;
    QString message;
};
Refusal refusal(const QString& sql, Dialect d) {
    try {
        translate(sql, d);
    } catch (const TranslateError& e) {
        return {e.construct(), e.position(), e.message()};
    }
    return {QStringLiteral("(translated)"), -2, QString()};
}

#define EXPECT_REFUSED(SQL, DIALECT, CONSTRUCT, POS)                            \
    do {                                                                           \
        const Refusal r_ = refusal(SQL, DIALECT);                                  \
        EXPECT_EQ(r_.construct, QStringLiteral(CONSTRUCT)) << (SQL).toStdString(); \
        EXPECT_EQ(r_.position, POS) << (SQL).toStdString() << "\n" << r_.message.toStdString(); \
    } while (0)

TEST(SqlDialect, OracleTextStaysAsWrittenSplitAtParameters) {
    const QString sql = QStringLiteral("select *\u3000from y_khda where hh=:Hh and hm<>':x' -- :y\n and dw = :dw;");
    const Translated t = translate(sql, Dialect::Oracle);
    EXPECT_EQ(t.kind, Translated::Kind::Query);
    EXPECT_EQ(t.params, (QStringList{"HH", "DW"}));
    EXPECT_EQ(t.withLiterals({":Hh", ":dw"}), sql);

    const Translated block = translate(QStringLiteral("Begin :CDBH := GET_CDBH; End;"), Dialect::Oracle);
    EXPECT_EQ(block.kind, Translated::Kind::Call);
    EXPECT_EQ(block.outputs, QStringList{"CDBH"});
    EXPECT_EQ(block.withLiterals({":CDBH"}), QStringLiteral("Begin :CDBH := GET_CDBH; End;"));
    EXPECT_EQ(translate(QStringLiteral("commit"), Dialect::Oracle).kind, Translated::Kind::Commit);
    // Oracle judges broken texts itself: no refusal here.
    EXPECT_NO_THROW(translate(QStringLiteral("select 'open from dual"), Dialect::Oracle));
}

TEST(SqlDialect, ParameterPlacesAndNames) {
    const QString sql = QStringLiteral("select * from t where a=:ny and b=:NY and c=:zDL and d=':no' and e=\":no\" /* :no */ and f=:_1");
    const Translated t = translate(sql, kLite);
    EXPECT_EQ(t.params, (QStringList{"NY", "NY", "ZDL", "_1"}));
    EXPECT_EQ(t.pieces.size(), t.params.size() + 1);
    EXPECT_EQ(t.withPlaceholders(), QStringLiteral("select * from t where a=? and b=? and c=? and d=':no' and e=\":no\" /* :no */ and f=?"));
    // Distinct names as first written, whatever case comes later.
    EXPECT_EQ(parameterNames(sql), (QStringList{"ny", "zDL", "_1"}));
    // := is an assignment, not a parameter.
    EXPECT_EQ(parameterNames(QStringLiteral("Begin :Gdfabh := GET_GDFABH; End;")), QStringList{"Gdfabh"});
    // Parameter names survive broken texts (the list is built as the text is typed).
    EXPECT_EQ(parameterNames(QStringLiteral("select (:a from t where x = 'open :b")), QStringList{"a"});
}

TEST(SqlDialect, StatementKindsAndTrailingSemicolon) {
    EXPECT_EQ(translate(QStringLiteral("  SELECT 1 a from dual;"), kLite).kind, Translated::Kind::Query);
    EXPECT_EQ(text(QStringLiteral("  SELECT 1 a from dual;  "), kLite), QStringLiteral("  SELECT 1 a from dual  "));
    EXPECT_EQ(translate(QStringLiteral("with x as (select 1 a from dual) select a from x"), kPg).kind, Translated::Kind::Query);
    EXPECT_EQ(translate(QStringLiteral("(select 1 from dual) union (select 2 from dual)"), kPg).kind, Translated::Kind::Query);
    EXPECT_EQ(translate(QStringLiteral("(select a from t) order by 1"), kPg).kind, Translated::Kind::Query);
    EXPECT_EQ(translate(QStringLiteral("insert into t(a) values(:a)"), kPg).kind, Translated::Kind::Statement);
    EXPECT_EQ(translate(QStringLiteral("Delete from a_HGQFA where CDBH=:CDBH"), kLite).kind, Translated::Kind::Statement);
    EXPECT_EQ(translate(QStringLiteral("create table x (a varchar(2))"), kLite).kind, Translated::Kind::Statement);
    for (const char* c : {"commit", "COMMIT;", " Commit ;\n", "commit work"}) {
        const Translated t = translate(QString::fromUtf8(c), kPg);
        EXPECT_EQ(t.kind, Translated::Kind::Commit) << c;
        EXPECT_TRUE(t.params.isEmpty());
    }
    EXPECT_REFUSED(QStringLiteral("commit comment 'x'"), kLite, "commit", 7);
    const QString two = QStringLiteral("delete from t; delete from u");
    EXPECT_REFUSED(two, kLite, "statement", two.indexOf(';'));
}

TEST(SqlDialect, BlanksCommentsAndTexts) {
    // The ideographic space between tokens is a blank; inside a text it is data.
    EXPECT_EQ(text(QStringLiteral("select *\u3000from v_yckhda where hh='1\u30002'"), kLite),
              QStringLiteral("select * from v_yckhda where hh='1\u30002'"));
    // A line comment keeps its line break, so nothing after it is swallowed.
    EXPECT_EQ(text(QStringLiteral("select a -- note"), kPg), QStringLiteral("select a -- note\n"));
    // '' is null; a doubled quote inside a text is not.
    EXPECT_EQ(text(QStringLiteral("update a_ykkzb set sfxysf=''   where cdbh=:cdbh and x<>'it''s'"), kPg),
              QStringLiteral("update a_ykkzb set sfxysf=NULL   where cdbh=:CDBH and x<>'it''s'"));
    EXPECT_EQ(text(QStringLiteral("insert into e_bjxz(czydm,bjdm,sfyx) values (:c,'无','')"), kLite),
              QStringLiteral("insert into e_bjxz(czydm,bjdm,sfyx) values (:C,'无',NULL)"));
    EXPECT_EQ(text(QStringLiteral("select 1 x from dual where a ^= b"), kLite), QStringLiteral("select 1 x from dual where a <> b"));

    const QString open = QStringLiteral("select 'abc from dual");
    EXPECT_REFUSED(open, kLite, "text", 7);
    EXPECT_REFUSED(QStringLiteral("select \"abc from dual"), kPg, "name", 7);
    EXPECT_REFUSED(QStringLiteral("select 1 /* x from dual"), kPg, "comment", 9);
    EXPECT_REFUSED(QStringLiteral("select (1 from dual"), kPg, "(", 7);
    EXPECT_REFUSED(QStringLiteral("select 1) from dual"), kPg, ")", 8);
    EXPECT_REFUSED(QStringLiteral("select case when a=1 then 2 from dual"), kPg, "case", 7);
}

TEST(SqlDialect, SysdateAndDays) {
    EXPECT_EQ(text(QStringLiteral("select to_char(sysdate,:format) from dual"), kLite),
              QStringLiteral("select to_char(tarvin_sysdate(),:FORMAT) AS \"TO_CHAR(SYSDATE,:FORMAT)\" from dual"));
    EXPECT_EQ(text(QStringLiteral("select 1 x from dual where nvl(a.scjcrq,sysdate-365)<:jcrqq"), kPg),
              QStringLiteral("select 1 x from dual where COALESCE(a.scjcrq,tarvin_date_add(tarvin_sysdate(), -365))<:JCRQQ"));
    EXPECT_EQ(text(QStringLiteral("select 1 x from dual where d > sysdate + 1/24 and e < SysDate - (:n * 2) - 1"), kLite),
              QStringLiteral("select 1 x from dual where d > tarvin_date_add(tarvin_sysdate(), 1/24) and e < "
                             "tarvin_date_add(tarvin_date_add(tarvin_sysdate(), -((:N * 2))), -1)"));
    // A column called sysdate of a table stays a column.
    EXPECT_EQ(text(QStringLiteral("select t.sysdate from t"), kPg), QStringLiteral("select t.sysdate from t"));
    const QString diff = QStringLiteral("select 1 x from dual where sysdate - a.jcrq > 30");
    EXPECT_REFUSED(diff, kPg, "sysdate", diff.indexOf('-'));
    const QString right = QStringLiteral("select 1 x from dual where a.jcrq - sysdate > 30");
    EXPECT_REFUSED(right, kPg, "sysdate", right.indexOf(QLatin1String("sysdate")));
}

TEST(SqlDialect, OracleFunctions) {
    const QString instr = QStringLiteral("Select A.cdbh From A_KHSQXX A Where A.HH= :HH and instr(:ywdm,A.ywdm) = 0 ");
    EXPECT_EQ(text(instr, kPg), QStringLiteral("Select A.cdbh From A_KHSQXX A Where A.HH= :HH and strpos(:YWDM,A.ywdm) = 0 "));
    EXPECT_EQ(text(instr, kLite), QStringLiteral("Select A.cdbh From A_KHSQXX A Where A.HH= :HH and instr(:YWDM,A.ywdm) = 0 "));
    EXPECT_EQ(text(QStringLiteral("select nvl(a, nvl(b, 0)) v, to_number(:x) n from t"), kPg),
              QStringLiteral("select COALESCE(a, COALESCE(b, 0)) v, CAST(:X AS NUMERIC) n from t"));
    EXPECT_EQ(text(QStringLiteral("select decode(a, 1, 'one', null, 'none', b, 'b', 'other') d from t"), kPg),
              QStringLiteral("select CASE WHEN (a) = 1 THEN 'one' WHEN (a) IS NULL THEN 'none' WHEN ((a) = (b) OR ((a) IS NULL AND (b) IS NULL))"
                             " THEN 'b' ELSE 'other' END d from t"));
    EXPECT_EQ(text(QStringLiteral("select nvl2(a, 'y', 'n') d from t"), kLite),
              QStringLiteral("select CASE WHEN (a) IS NOT NULL THEN 'y' ELSE 'n' END d from t"));
    // Functions both engines know pass unchanged.
    const QString same = QStringLiteral("select SUBSTR(a.jcbz,1,34) BZ1, abs(a.zbzdl) z, to_char(a.jcrq,'yyyy-mm-dd') d from e_jlycgzd a");
    EXPECT_EQ(text(same, kPg), same);

    const QString nvl3 = QStringLiteral("select nvl(a, b, c) from t");
    EXPECT_REFUSED(nvl3, kPg, "nvl", 7);
    EXPECT_REFUSED(QStringLiteral("select instr(a, b, 2) from t"), kLite, "instr", 7);
    EXPECT_REFUSED(QStringLiteral("select to_number(a, '999') from t"), kLite, "to_number", 7);
}

TEST(SqlDialect, ConcatenationTakesNullAsEmpty) {
    EXPECT_EQ(text(QStringLiteral("SELECT djm, djm||' | '||djmc djmc\n FROM b_djb"), kLite),
              QStringLiteral("SELECT djm, NULLIF(COALESCE(CAST(djm AS TEXT),'')||' | '||COALESCE(CAST(djmc AS TEXT),''),'') djmc\n FROM b_djb"));
    EXPECT_EQ(text(QStringLiteral("select a.hh || :x || f(b) from t a"), kPg),
              QStringLiteral("select NULLIF(COALESCE(CAST(a.hh AS VARCHAR),'')||COALESCE(CAST(:X AS VARCHAR),'')||"
                             "COALESCE(CAST(f(b) AS VARCHAR),''),'') AS \"A.HH||:X||F(B)\" from t a"));
    // * binds closer; + and - have the rank of ||, left to right.
    EXPECT_EQ(text(QStringLiteral("select a*2 || b - 1 x from t"), kPg),
              QStringLiteral("select NULLIF(COALESCE(CAST(a*2 AS VARCHAR),'')||COALESCE(CAST(b AS VARCHAR),''),'') - 1 x from t"));
    EXPECT_EQ(text(QStringLiteral("select 1 x from t where (a || b) = 'ab' and c like d || '%'"), kLite),
              QStringLiteral("select 1 x from t where (NULLIF(COALESCE(CAST(a AS TEXT),'')||COALESCE(CAST(b AS TEXT),''),'')) = 'ab' "
                             "and c like NULLIF(COALESCE(CAST(d AS TEXT),'')||'%','')"));
    const QString dangling = QStringLiteral("select a || from t");
    EXPECT_REFUSED(dangling, kPg, "||", dangling.indexOf(QLatin1String("||")));
}

TEST(SqlDialect, OuterJoinsOfCommaLists) {
    // The marked table becomes a LEFT JOIN; its marked conditions are the ON.
    EXPECT_EQ(text(QStringLiteral("select A.*,c.mc khlxmc,D.MC DYDJMC,\nto_char(a.jhjcrq,'yyyy-mm-dd') jcrqjh \n"
                                  "from e_Jcgzjl A,w_khlx c,W_DYDJ D\nwhere \na.khlx=c.dm(+)\nAND A.DYDJ=D.DM(+)\nand a.jcph=:sJcph\n"),
                   kLite),
              QStringLiteral("select A.*,c.mc khlxmc,D.MC DYDJMC,\nto_char(a.jhjcrq,'yyyy-mm-dd') jcrqjh \n"
                             "from e_Jcgzjl A LEFT JOIN w_khlx c ON a.khlx=c.dm LEFT JOIN W_DYDJ D ON A.DYDJ=D.DM\nwhere \na.jcph=:SJCPH\n"));
    // Unmarked items after the first become inner joins; a WHERE left empty goes.
    EXPECT_EQ(text(QStringLiteral("select CDBH,C.XINGMING \nfrom Z_DQGW A,Z_LCJD B,Z_XTCZY C\nwhere A.DQYWX = B.YWXDM\nand A.CZY = C.DM(+)"), kPg),
              QStringLiteral("select CDBH,C.XINGMING \nfrom Z_DQGW A INNER JOIN Z_LCJD B ON 1=1 LEFT JOIN Z_XTCZY C ON A.CZY = C.DM\n"
                             "where A.DQYWX = B.YWXDM"));
    EXPECT_EQ(text(QStringLiteral("select A.*,B.XINGMING XM from  E_JCRYXX A,Z_XTCZY B WHERE A.CZYDM=B.DM(+)"), kPg),
              QStringLiteral("select A.*,B.XINGMING XM from  E_JCRYXX A LEFT JOIN Z_XTCZY B ON A.CZYDM=B.DM"));
    // Marked and unmarked conditions on the same table: only the marked go
    // to ON; every marked condition of the table goes there.
    EXPECT_EQ(text(QStringLiteral("select * from v a, f b where a.hh=b.hh(+) and  b.NY=:ny and b.k(+) = 'x' and (b.z(+) > 1 and a.y = 2)"), kLite),
              QStringLiteral("select * from v a LEFT JOIN f b ON a.hh=b.hh AND b.k = 'x' AND b.z > 1 where b.NY=:NY and a.y = 2"));
    // A marked table listed first moves after the table it joins.
    EXPECT_EQ(text(QStringLiteral("select * from b_x b, y_a a where a.k = b.k(+)"), kPg),
              QStringLiteral("select * from y_a a LEFT JOIN b_x b ON a.k = b.k"));
    // Plain comma lists stay as written.
    const QString plain = QStringLiteral("SELECT DISTINCT a.* FROM v_yckhda a, y_jfxx b WHERE b.hh=a.hh AND  b.djm = :djm and  1=1");
    EXPECT_EQ(text(plain, kPg), QStringLiteral("SELECT DISTINCT a.* FROM v_yckhda a, y_jfxx b WHERE b.hh=a.hh AND  b.djm = :DJM and  1=1"));
}

TEST(SqlDialect, OuterJoinsInNestedAndDerivedSelects) {
    const QString cat13 = QStringLiteral(
        " select * from   (select distinct A.*,B.NY,jc_pjdlbd(A.HH,B.NY,:YS,'1') bdl  from V_YCKHDA A,B_DLTZXX  B  where A.HH=B.HH(+)) A "
        "WHERE NY=:NY   AND BDL>:BDL AND  a.Dw=:Dw  and  1=1");
    EXPECT_EQ(text(cat13, kPg),
              QStringLiteral(" select * from   (select distinct A.*,B.NY,jc_pjdlbd(A.HH,B.NY,:YS,'1') bdl  from V_YCKHDA A LEFT JOIN B_DLTZXX  B ON A.HH=B.HH) A "
                             "WHERE NY=:NY   AND BDL>:BDL AND  a.Dw=:DW  and  1=1"));
    EXPECT_EQ(text(cat13, kLite),
              QStringLiteral(" select * from   (select distinct A.*,B.NY,CAST(jc_pjdlbd(A.HH,B.NY,:YS,'1') AS NUMERIC) bdl  from V_YCKHDA A LEFT JOIN B_DLTZXX  B ON A.HH=B.HH) A "
                             "WHERE NY=:NY   AND BDL>:BDL AND  a.Dw=:DW  and  1=1"));
    // A derived table with its own outer join, outer-joined in a select
    // that is itself derived.
    EXPECT_EQ(text(QStringLiteral("select count(*) jls from (select a.*,b.cs from v a, (select a.hh,count(*) cs from v a,s b where a.hh=b.hh(+) group by a.hh) b "
                                  "where a.hh=b.hh(+) and b.cs>:cs) x"),
                   kPg),
              QStringLiteral("select count(*) jls from (select a.*,b.cs from v a LEFT JOIN (select a.hh,count(*) cs from v a LEFT JOIN s b ON a.hh=b.hh group by a.hh) b "
                             "ON a.hh=b.hh where b.cs>:CS) x"));
    // Scalar subqueries and EXISTS have their own FROM lists.
    EXPECT_EQ(text(QStringLiteral("select (select max(b.x) from b, c where b.k=c.k(+)) m from a where exists(select 1 from d, e where d.k=e.k(+))"), kPg),
              QStringLiteral("select (select max(b.x) from b LEFT JOIN c ON b.k=c.k) m from a where exists(select 1 from d LEFT JOIN e ON d.k=e.k)"));
}

TEST(SqlDialect, OuterJoinsThatCannotBePlaced) {
    const QString inOr = QStringLiteral("select * from a, b where a.k=b.k(+) or a.x=1");
    EXPECT_REFUSED(inOr, kLite, "(+)", inOr.indexOf(QLatin1String("(+)")));
    const QString both = QStringLiteral("select * from a, b, c where a.k=b.k(+) and b.j(+)=c.j(+)");
    EXPECT_REFUSED(both, kPg, "(+)", both.lastIndexOf(QLatin1String("(+)")));
    const QString bare = QStringLiteral("select * from a, b where a.k=k(+)");
    EXPECT_REFUSED(bare, kPg, "(+)", bare.indexOf(QLatin1String("(+)")));
    const QString alone = QStringLiteral("select * from a, b where b.k(+)=1");
    EXPECT_REFUSED(alone, kPg, "(+)", alone.indexOf(QLatin1String("(+)")));
    const QString outside = QStringLiteral("select a.x(+) from a, b");
    EXPECT_REFUSED(outside, kPg, "(+)", outside.indexOf(QLatin1String("(+)")));
    const QString ansi = QStringLiteral("select * from a join b on a.k=b.k, c where a.j=c.j(+)");
    EXPECT_REFUSED(ansi, kPg, "(+)", ansi.indexOf(QLatin1String("(+)")));
    const QString cycle = QStringLiteral("select * from a, b where a.k=b.k(+) and b.j=a.j(+)");
    EXPECT_REFUSED(cycle, kPg, "(+)", cycle.lastIndexOf(QLatin1String("(+)")));
    const QString foreign = QStringLiteral("select * from a where exists (select 1 from b where b.k=a.k(+))");
    EXPECT_REFUSED(foreign, kLite, "(+)", foreign.indexOf(QLatin1String("(+)")));
}

TEST(SqlDialect, RownumBecomesLimit) {
    EXPECT_EQ(text(QStringLiteral("select a.*, (select jflx from y_jfxx where hh=a.hh and js>1  and JFLX<>'抄表' and rownum=1) jflx from V a"), kLite),
              QStringLiteral("select a.*, (select jflx from y_jfxx where hh=a.hh and js>1  and JFLX<>'抄表' LIMIT 1) jflx from V a"));
    EXPECT_EQ(text(QStringLiteral("select hh from t where rownum <= 5 order by hh"), kPg),
              QStringLiteral("select hh from t order by hh LIMIT 5"));
    EXPECT_EQ(text(QStringLiteral("select hh from t where rownum<3 and x=1"), kPg), QStringLiteral("select hh from t where x=1 LIMIT 2"));
    EXPECT_EQ(text(QStringLiteral("select hh from t where rownum=2"), kPg), QStringLiteral("select hh from t LIMIT 0"));

    const QString list = QStringLiteral("select rownum, hh from t");
    EXPECT_REFUSED(list, kPg, "rownum", 7);
    const QString grouped = QStringLiteral("select hh, count(*) from t where rownum<=5 group by hh");
    EXPECT_REFUSED(grouped, kPg, "rownum", grouped.indexOf(QLatin1String("rownum")));
    const QString counted = QStringLiteral("select count(*) from t where rownum=1");
    EXPECT_REFUSED(counted, kLite, "rownum", counted.indexOf(QLatin1String("rownum")));
    const QString compound = QStringLiteral("select a from t where rownum=1 union select b from u");
    EXPECT_REFUSED(compound, kLite, "rownum", compound.indexOf(QLatin1String("rownum")));
    const QString orCond = QStringLiteral("select a from t where rownum=1 or a=2");
    EXPECT_REFUSED(orCond, kLite, "rownum", orCond.indexOf(QLatin1String("rownum")));
}

TEST(SqlDialect, CompoundSelectsAndDerivedNames) {
    EXPECT_EQ(text(QStringLiteral("select hh from a minus select hh from b"), kPg), QStringLiteral("select hh from a EXCEPT select hh from b"));
    EXPECT_EQ(text(QStringLiteral("select hh from a MINUS select hh from b"), kLite), QStringLiteral("select hh from a EXCEPT select hh from b"));
    // PostgreSQL wants a name for a derived table.
    EXPECT_EQ(text(QStringLiteral("select * from (select 1 a from dual) where a=1"), kPg),
              QStringLiteral("select * from (select 1 a from dual) tarvin_d1 where a=1"));
    EXPECT_EQ(text(QStringLiteral("select * from (select 1 a from dual) where a=1"), kLite),
              QStringLiteral("select * from (select 1 a from dual) where a=1"));
    // SQLite takes no parentheses around members of a compound select.
    EXPECT_EQ(text(QStringLiteral("(select 1 a from dual) union all (select 2 from dual)"), kLite),
              QStringLiteral("select 1 a from dual union all select 2 AS \"2\" from dual"));
    EXPECT_EQ(text(QStringLiteral("(select 1 a from dual) union all (select 2 b from dual)"), kPg),
              QStringLiteral("(select 1 a from dual) union all (select 2 b from dual)"));
    EXPECT_REFUSED(QStringLiteral("select * from t connect by prior a = b"), kPg, "connect by", 16);
}

TEST(SqlDialect, ColumnsReadByNameKeepOraclesHeadings) {
    // Oracle names an expression column by its text; engines differ
    // (count, count(*)): the statement's and derived tables' columns get
    // Oracle's heading, subqueries' values need none.
    const QString sql = QStringLiteral("select count(*), max(x) m, hh, a.*, t.sysdate, nvl(a.b, 0), (select count(*) from u) from t a");
    EXPECT_EQ(text(sql, kPg), QStringLiteral("select count(*) AS \"COUNT(*)\", max(x) m, hh, a.*, t.sysdate, COALESCE(a.b, 0) AS \"NVL(A.B,0)\", "
                                             "(select count(*) from u) AS \"(SELECTCOUNT(*)FROMU)\" from t a"));
    EXPECT_EQ(text(QStringLiteral("select * from (select hh, count(*) from t group by hh) where \"COUNT(*)\" > 1"), kLite),
              QStringLiteral("select * from (select hh, CAST(count(*) AS NUMERIC) AS \"COUNT(*)\" from t group by hh) where \"COUNT(*)\" > 1"));
}

TEST(SqlDialect, SqliteAggregatesCarryNumericAffinity) {
    EXPECT_EQ(text(QStringLiteral(" SELECT * FROM V_YCKHDA a where  (SELECT COUNT(1) FROM Y_GDDY WHERE HH=A.HH)>'1' AND "), kLite),
              QStringLiteral(" SELECT * FROM V_YCKHDA a where  (SELECT CAST(COUNT(1) AS NUMERIC) FROM Y_GDDY WHERE HH=A.HH)>'1' AND "));
    EXPECT_EQ(text(QStringLiteral("select sum(jffdl+jfpdl) zdl, avg(x) a, count(distinct a.hh) jls from b"), kLite),
              QStringLiteral("select CAST(sum(jffdl+jfpdl) AS NUMERIC) zdl, CAST(avg(x) AS NUMERIC) a, CAST(count(distinct a.hh) AS NUMERIC) jls from b"));
    // Inside arithmetic the cast would turn 2.5 into 2: left alone.
    EXPECT_EQ(text(QStringLiteral("select sum(a)/count(*) r, 1+avg(b) s from b"), kLite),
              QStringLiteral("select sum(a)/count(*) r, 1+avg(b) s from b"));
    EXPECT_EQ(text(QStringLiteral("select count(*) jls from b"), kPg), QStringLiteral("select count(*) jls from b"));
}

TEST(SqlDialect, AnonymousBlocks) {
    Translated t = translate(QStringLiteral("Begin :CDBH := GET_CDBH; End;"), kLite);
    EXPECT_EQ(t.kind, Translated::Kind::Call);
    EXPECT_EQ(t.withPlaceholders(), QStringLiteral("SELECT GET_CDBH()"));
    EXPECT_EQ(t.outputs, QStringList{"CDBH"});
    EXPECT_TRUE(t.params.isEmpty());

    t = translate(QStringLiteral("Begin Yk_UndoYysq(:ac_Cdbh); End;"), kPg);
    EXPECT_EQ(t.kind, Translated::Kind::Call);
    EXPECT_EQ(t.withPlaceholders(), QStringLiteral("SELECT Yk_UndoYysq(?)"));
    EXPECT_EQ(t.params, QStringList{"AC_CDBH"});
    EXPECT_TRUE(t.outputs.isEmpty());

    t = translate(QStringLiteral("begin\n  jc_jlyctbjl\n(\n   :ac_cdbh ,\n   :ai_dm\n);\nend;"), kLite);
    EXPECT_EQ(t.withPlaceholders(), QStringLiteral("SELECT jc_jlyctbjl\n(\n   ? ,\n   ?\n)"));
    EXPECT_EQ(t.params, (QStringList{"AC_CDBH", "AI_DM"}));

    t = translate(QStringLiteral("BEGIN:a:=get_cdbh();:B := nvl(:x, sysdate) ;  null; pkg.proc; END;\n/"), kPg);
    EXPECT_EQ(t.withPlaceholders(), QStringLiteral("SELECT get_cdbh(), COALESCE(?, tarvin_sysdate()), pkg.proc()"));
    EXPECT_EQ(t.outputs, (QStringList{"A", "B"}));
    EXPECT_EQ(t.params, QStringList{"X"});

    const QString late = QStringLiteral("begin p(1); :a := f; end;");
    EXPECT_REFUSED(late, kLite, "block", late.indexOf(':'));
    const QString reread = QStringLiteral("begin :a := f; :b := g(:A); end;");
    EXPECT_REFUSED(reread, kLite, "block", reread.indexOf(QLatin1String(":A")));
    const QString twice = QStringLiteral("begin :a := f; :a := g; end;");
    EXPECT_REFUSED(twice, kLite, "block", twice.lastIndexOf(QLatin1String(":a")));
    const QString dml = QStringLiteral("begin update t set a=1; end;");
    EXPECT_REFUSED(dml, kPg, "block", 6);
    EXPECT_REFUSED(QStringLiteral("declare x number; begin :a := x; end;"), kPg, "block", 0);
    EXPECT_REFUSED(QStringLiteral("begin :a := f;"), kPg, "block", 0);
}

TEST(SqlDialect, UpdateAndDeleteWithAlias) {
    const QString upd = QStringLiteral("update e_bjtx c set  txrq = :txrq, c.zt = '' where  Txrq is null  and c.dw=:dw");
    EXPECT_EQ(text(upd, kLite), QStringLiteral("update e_bjtx AS c set  txrq = :TXRQ, zt = NULL where  Txrq is null  and c.dw=:DW"));
    EXPECT_EQ(text(upd, kPg), QStringLiteral("update e_bjtx c set  txrq = :TXRQ, zt = NULL where  Txrq is null  and c.dw=:DW"));
    EXPECT_EQ(text(QStringLiteral("delete a_gdfa g where g.cdbh=:c"), kLite), QStringLiteral("delete FROM a_gdfa AS g where g.cdbh=:C"));
    EXPECT_EQ(text(QStringLiteral("delete from a_gdfa where cdbh='1'"), kLite), QStringLiteral("delete from a_gdfa where cdbh='1'"));
    // INSERT ... SELECT: the select is a query like any other.
    EXPECT_EQ(text(QStringLiteral("insert into x(a, b) select :a, nvl(b, 0) from y, z where y.k = z.k(+)"), kPg),
              QStringLiteral("insert into x(a, b) select :A, COALESCE(b, 0) from y LEFT JOIN z ON y.k = z.k"));
}

TEST(SqlDialect, Literals) {
    using tarvin::sql::literal;
    EXPECT_EQ(literal(QVariant(), kPg), QStringLiteral("NULL"));
    EXPECT_EQ(literal(QString(""), kPg), QStringLiteral("NULL"));
    EXPECT_EQ(literal(QStringLiteral("it's"), kPg), QStringLiteral("'it''s'"));
    EXPECT_EQ(literal(3, kPg), QStringLiteral("'3'"));
    EXPECT_EQ(literal(QDateTime(QDate(2024, 7, 1), QTime(8, 5, 9)), kPg), QStringLiteral("'2024-07-01 08:05:09'"));
    EXPECT_EQ(literal(QDate(2024, 7, 1), kPg), QStringLiteral("'2024-07-01 00:00:00'"));
}

TEST(SqlDialect, DialectNames) {
    using tarvin::sql::dialectFromName;
    using tarvin::sql::dialectName;
    for (Dialect d : {Dialect::Oracle, Dialect::SQLite, Dialect::PostgreSQL}) EXPECT_EQ(dialectFromName(dialectName(d)), d);
    EXPECT_EQ(dialectFromName(QStringLiteral("PG")), kPg);
    EXPECT_THROW(dialectFromName(QStringLiteral("mysql")), std::invalid_argument);
}

}  // namespace
