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

// The translated text with each parameter place written as :NAME, or
// "refused: construct at position".
QString text(const QString& sql, Dialect d) {
    try {
        const Translated t = translate(sql, d);
        QStringList names;
        for (const QString& p : t.params) names << QLatin1Char(':') + p;
        return t.withLiterals(names);
    } catch (const TranslateError& e) {
        return QStringLiteral("refused: %1 at %2").arg(e.construct()).arg(e.position());
    }
}

// An Oracle text and what it becomes on SQLite and on PostgreSQL. SQLite
// null: not checked there; PostgreSQL null: as on SQLite, "": not checked.
struct Case { const char* oracle; const char* sqlite; const char* pg = nullptr; };

const Case kCases[] = {
    // Statements, blanks, comments and texts. The ideographic space between
    // tokens is a blank, inside a text data; a line comment keeps its line
    // break; '' is null, a doubled quote inside a text is not.
    {"  SELECT 1 a from dual;  ", "  SELECT 1 a from dual  "},
    {"select *\u3000from v_yckhda where hh='1\u30002'", "select * from v_yckhda where hh='1\u30002'"},
    {"select a -- note", "select a -- note\n"}, {"select 1 x from dual where a ^= b", "select 1 x from dual where a <> b"},
    {"update a_ykkzb set sfxysf=''   where cdbh=:cdbh and x<>'it''s'", "update a_ykkzb set sfxysf=NULL   where cdbh=:CDBH and x<>'it''s'"},
    {"insert into e_bjxz(czydm,bjdm,sfyx) values (:c,'无','')", "insert into e_bjxz(czydm,bjdm,sfyx) values (:C,'无',NULL)"},

    // sysdate and days; a column called sysdate of a table stays a column.
    {"select to_char(sysdate,:format) from dual", "select to_char(tarvin_sysdate(),:FORMAT) AS \"TO_CHAR(SYSDATE,:FORMAT)\" from dual"},
    {"select 1 x from dual where nvl(a.scjcrq,sysdate-365)<:jcrqq",
     "select 1 x from dual where COALESCE(a.scjcrq,tarvin_date_add(tarvin_sysdate(), -365))<:JCRQQ"},
    {"select 1 x from dual where d > sysdate + 1/24 and e < SysDate - (:n * 2) - 1",
     "select 1 x from dual where d > tarvin_date_add(tarvin_sysdate(), 1/24) and e < "
     "tarvin_date_add(tarvin_date_add(tarvin_sysdate(), -((:N * 2))), -1)"},
    {"select t.sysdate from t", "select t.sysdate from t"},

    // Oracle's functions; those both engines know pass unchanged.
    {"select 1 x from a where instr(:ywdm,a.ywdm) = 0 ", "select 1 x from a where instr(:YWDM,a.ywdm) = 0 ",
     "select 1 x from a where strpos(:YWDM,a.ywdm) = 0 "},
    {"select nvl(a, nvl(b, 0)) v, to_number(:x) n from t", "select COALESCE(a, COALESCE(b, 0)) v, CAST(:X AS NUMERIC) n from t"},
    {"select decode(a, 1, 'one', null, 'none', b, 'b', 'other') d from t",
     "select CASE WHEN (a) = 1 THEN 'one' WHEN (a) IS NULL THEN 'none' WHEN ((a) = (b) OR ((a) IS NULL AND (b) IS NULL))"
     " THEN 'b' ELSE 'other' END d from t"},
    {"select nvl2(a, 'y', 'n') d from t", "select CASE WHEN (a) IS NOT NULL THEN 'y' ELSE 'n' END d from t"},
    {"select SUBSTR(a.jcbz,1,34) BZ1, abs(a.zbzdl) z, to_char(a.jcrq,'yyyy-mm-dd') d from e_jlycgzd a",
     "select SUBSTR(a.jcbz,1,34) BZ1, abs(a.zbzdl) z, to_char(a.jcrq,'yyyy-mm-dd') d from e_jlycgzd a"},

    // || takes null as empty; * binds closer, + and - have its rank, left to right.
    {"SELECT djm, djm||' | '||djmc djmc\n FROM b_djb",
     "SELECT djm, NULLIF(COALESCE(CAST(djm AS TEXT),'')||' | '||COALESCE(CAST(djmc AS TEXT),''),'') djmc\n FROM b_djb",
     "SELECT djm, NULLIF(COALESCE(CAST(djm AS VARCHAR),'')||' | '||COALESCE(CAST(djmc AS VARCHAR),''),'') djmc\n FROM b_djb"},
    {"select a.hh || :x || f(b) from t a", nullptr,
     "select NULLIF(COALESCE(CAST(a.hh AS VARCHAR),'')||COALESCE(CAST(:X AS VARCHAR),'')||"
     "COALESCE(CAST(f(b) AS VARCHAR),''),'') AS \"A.HH||:X||F(B)\" from t a"},
    {"select a*2 || b - 1 x from t", nullptr,
     "select NULLIF(COALESCE(CAST(a*2 AS VARCHAR),'')||COALESCE(CAST(b AS VARCHAR),''),'') - 1 x from t"},
    {"select 1 x from t where (a || b) = 'ab' and c like d || '%'",
     "select 1 x from t where (NULLIF(COALESCE(CAST(a AS TEXT),'')||COALESCE(CAST(b AS TEXT),''),'')) = 'ab' "
     "and c like NULLIF(COALESCE(CAST(d AS TEXT),'')||'%','')", ""},

    // (+): the marked table becomes a LEFT JOIN, its marked conditions the
    // ON; unmarked items after the first become inner joins; a WHERE left
    // empty goes; only the marked conditions of a table go to ON, every one
    // of them; a marked table listed first moves after the table it joins;
    // plain comma lists stay as written; a marked table that a WHERE
    // comparison constrains is joined inner.
    {"select A.*,c.mc khlxmc,D.MC DYDJMC,\nto_char(a.jhjcrq,'yyyy-mm-dd') jcrqjh \n"
     "from e_Jcgzjl A,w_khlx c,W_DYDJ D\nwhere \na.khlx=c.dm(+)\nAND A.DYDJ=D.DM(+)\nand a.jcph=:sJcph\n",
     "select A.*,c.mc khlxmc,D.MC DYDJMC,\nto_char(a.jhjcrq,'yyyy-mm-dd') jcrqjh \n"
     "from e_Jcgzjl A LEFT JOIN w_khlx c ON a.khlx=c.dm LEFT JOIN W_DYDJ D ON A.DYDJ=D.DM\nwhere \na.jcph=:SJCPH\n"},
    {"select CDBH,C.XINGMING \nfrom Z_DQGW A,Z_LCJD B,Z_XTCZY C\nwhere A.DQYWX = B.YWXDM\nand A.CZY = C.DM(+)",
     "select CDBH,C.XINGMING \nfrom Z_DQGW A INNER JOIN Z_LCJD B ON 1=1 LEFT JOIN Z_XTCZY C ON A.CZY = C.DM\nwhere A.DQYWX = B.YWXDM"},
    {"select A.*,B.XM from  E_JCRYXX A,Z_XTCZY B WHERE A.CZYDM=B.DM(+)", "select A.*,B.XM from  E_JCRYXX A LEFT JOIN Z_XTCZY B ON A.CZYDM=B.DM"},
    {"select * from v a, f b where a.hh=b.hh(+) and  b.NY=:ny and b.k(+) = 'x' and (b.z(+) > 1 and a.y = 2)",
     "select * from v a INNER JOIN f b ON a.hh=b.hh AND b.k = 'x' AND b.z > 1 where b.NY=:NY and a.y = 2"},
    {"select * from b_x b, y_a a where a.k = b.k(+)", "select * from y_a a LEFT JOIN b_x b ON a.k = b.k"},
    {"SELECT a.* FROM v a, j b WHERE b.hh=a.hh AND b.djm = :djm", "SELECT a.* FROM v a, j b WHERE b.hh=a.hh AND b.djm = :DJM"},
    // In derived tables, nested derived tables, scalar subqueries and EXISTS.
    {" select * from   (select distinct A.*,B.NY,jc_pjdlbd(A.HH,B.NY,:YS,'1') bdl  from V_YCKHDA A,B_DLTZXX  B  where A.HH=B.HH(+)) A "
     "WHERE NY=:NY   AND BDL>:BDL AND  a.Dw=:Dw  and  1=1",
     " select * from   (select distinct A.*,B.NY,CAST(jc_pjdlbd(A.HH,B.NY,:YS,'1') AS NUMERIC) bdl  from V_YCKHDA A LEFT JOIN B_DLTZXX  B ON "
     "A.HH=B.HH) A WHERE NY=:NY   AND BDL>:BDL AND  a.Dw=:DW  and  1=1",
     " select * from   (select distinct A.*,B.NY,tarvin_pjdlbd(tarvin_f1.zdl, tarvin_f1.pjdl, A.HH,B.NY,:YS,'1') bdl  from V_YCKHDA A "
     "LEFT JOIN B_DLTZXX  B ON A.HH=B.HH LEFT JOIN b_ydlhz tarvin_f1 ON tarvin_f1.hh = (A.HH) AND tarvin_f1.ny = (B.NY)) A "
     "WHERE NY=:NY   AND BDL>:BDL AND  a.Dw=:DW  and  1=1"},
    // PostgreSQL: jc_pjdlbd in a select list takes the month figures by a
    // join (a comma list becomes one join first); in an aggregate's select
    // or another clause it stays a call.
    {"select jc_pjdlbd(a.hh, b.ny, 3, '0') x, (select max(jc_pjdlbd(c.hh, c.ny, 1, '1')) from c) y from a, b "
     "where jc_pjdlbd(a.hh, b.ny, 2, '1') > 1", nullptr,
     "select tarvin_pjdlbd(tarvin_f1.zdl, tarvin_f1.pjdl, a.hh, b.ny, 3, '0') x, (select max(jc_pjdlbd(c.hh, c.ny, 1, '1')) from c) y "
     "from (a CROSS JOIN b) LEFT JOIN b_ydlhz tarvin_f1 ON tarvin_f1.hh = (a.hh) AND tarvin_f1.ny = (b.ny) "
     "where jc_pjdlbd(a.hh, b.ny, 2, '1') > 1"},
    {"select count(*) jls from (select a.*,b.cs from v a, (select a.hh,count(*) cs from v a,s b where a.hh=b.hh(+) group by a.hh) b "
     "where a.hh=b.hh(+) and b.cs>:cs) x",
     "select CAST(count(*) AS NUMERIC) jls from (select a.*,b.cs from v a INNER JOIN (select a.hh,CAST(count(*) AS NUMERIC) cs from v a "
     "LEFT JOIN s b ON a.hh=b.hh group by a.hh) b ON a.hh=b.hh where b.cs>:CS) x",
     "select count(*) jls from (select a.*,b.cs from v a INNER JOIN (select a.hh,count(*) cs from v a LEFT JOIN s b ON a.hh=b.hh group by a.hh) b "
     "ON a.hh=b.hh where b.cs>:CS) x"},
    {"select (select max(b.x) from b, c where b.k=c.k(+)) m from a where exists(select 1 from d, e where d.k=e.k(+))",
     "select (select max(b.x) from b LEFT JOIN c ON b.k=c.k) m from a where exists(select 1 from d LEFT JOIN e ON d.k=e.k)"},

    // rownum becomes LIMIT.
    {"select a.*, (select jflx from y_jfxx where hh=a.hh and js>1  and JFLX<>'抄表' and rownum=1) jflx from V a",
     "select a.*, (select jflx from y_jfxx where hh=a.hh and js>1  and JFLX<>'抄表' LIMIT 1) jflx from V a"},
    {"select hh from t where rownum <= 5 order by hh", "select hh from t order by hh LIMIT 5"},
    {"select hh from t where rownum<3 and x=1", "select hh from t where x=1 LIMIT 2"},
    {"select hh from t where rownum=2", "select hh from t LIMIT 0"},

    // Compound selects; PostgreSQL wants a name for a derived table, SQLite
    // no parentheses around members.
    {"select hh from a Minus select hh from b", "select hh from a EXCEPT select hh from b"},
    {"select * from (select 1 a from dual) where a=1", "select * from (select 1 a from dual) where a=1",
     "select * from (select 1 a from dual) tarvin_d1 where a=1"},
    {"(select 1 a from dual) union all (select 2 from dual)", "select 1 a from dual union all select 2 AS \"2\" from dual",
     "(select 1 a from dual) union all (select 2 AS \"2\" from dual)"},

    // Columns read by name keep Oracle's heading (engines differ: count,
    // count(*)); subqueries' values need none. SQLite's aggregates carry
    // numeric affinity, except inside arithmetic (2.5 would become 2).
    {"select count(*), max(x) m, hh, a.*, t.sysdate, nvl(a.b, 0), (select count(*) from u) from t a",
     "select CAST(count(*) AS NUMERIC) AS \"COUNT(*)\", max(x) m, hh, a.*, t.sysdate, COALESCE(a.b, 0) AS \"NVL(A.B,0)\", "
     "(select CAST(count(*) AS NUMERIC) from u) AS \"(SELECTCOUNT(*)FROMU)\" from t a",
     "select count(*) AS \"COUNT(*)\", max(x) m, hh, a.*, t.sysdate, COALESCE(a.b, 0) AS \"NVL(A.B,0)\", "
     "(select count(*) from u) AS \"(SELECTCOUNT(*)FROMU)\" from t a"},
    {"select * from (select hh, count(*) from t group by hh) where \"COUNT(*)\" > 1",
     "select * from (select hh, CAST(count(*) AS NUMERIC) AS \"COUNT(*)\" from t group by hh) where \"COUNT(*)\" > 1", ""},
    {" SELECT * FROM V a where  (SELECT COUNT(1) FROM Y WHERE HH=A.HH)>'1' AND ",
     " SELECT * FROM V a where  (SELECT CAST(COUNT(1) AS NUMERIC) FROM Y WHERE HH=A.HH)>'1' AND ",
     " SELECT * FROM V a where  (SELECT COUNT(1) FROM Y WHERE HH=A.HH)>'1' AND "},
    {"select sum(jffdl+jfpdl) zdl, avg(x) a, count(distinct a.hh) jls from b",
     "select CAST(sum(jffdl+jfpdl) AS NUMERIC) zdl, CAST(avg(x) AS NUMERIC) a, CAST(count(distinct a.hh) AS NUMERIC) jls from b",
     "select sum(jffdl+jfpdl) zdl, avg(x) a, count(distinct a.hh) jls from b"},
    {"select sum(a)/count(*) r, 1+avg(b) s from b", "select sum(a)/count(*) r, 1+avg(b) s from b"},

    // Anonymous blocks run as one select of their calls.
    {"Begin :CDBH := GET_CDBH; End;", "SELECT GET_CDBH()"}, {"Begin Yk_UndoYysq(:ac_Cdbh); End;", "SELECT Yk_UndoYysq(:AC_CDBH)"},
    {"begin\n  jc_jlyctbjl\n(\n   :ac_cdbh ,\n   :ai_dm\n);\nend;", "SELECT jc_jlyctbjl\n(\n   :AC_CDBH ,\n   :AI_DM\n)"},
    {"BEGIN:a:=get_cdbh();:B := nvl(:x, sysdate) ;  null; pkg.proc; END;\n/", "SELECT get_cdbh(), COALESCE(:X, tarvin_sysdate()), pkg.proc()"},

    // UPDATE and DELETE with an alias, DELETE without FROM, INSERT ... SELECT.
    {"update e_bjtx c set  txrq = :txrq, c.zt = '' where  Txrq is null  and c.dw=:dw",
     "update e_bjtx AS c set  txrq = :TXRQ, zt = NULL where  Txrq is null  and c.dw=:DW",
     "update e_bjtx c set  txrq = :TXRQ, zt = NULL where  Txrq is null  and c.dw=:DW"},
    {"delete a_gdfa g where g.cdbh=:c", "delete FROM a_gdfa AS g where g.cdbh=:C", "delete FROM a_gdfa g where g.cdbh=:C"},
    {"delete from a_gdfa where cdbh='1'", "delete from a_gdfa where cdbh='1'"},
    {"insert into x(a, b) select :a, nvl(b, 0) from y, z where y.k = z.k(+)",
     "insert into x(a, b) select :A, COALESCE(b, 0) from y LEFT JOIN z ON y.k = z.k"},
};

TEST(SqlDialect, EachConstructOnEachEngine) {
    for (const Case& c : kCases) {
        const QString sql = QString::fromUtf8(c.oracle);
        const char* pg = c.pg ? c.pg : c.sqlite;
        if (c.sqlite) { EXPECT_EQ(text(sql, kLite), QString::fromUtf8(c.sqlite)) << c.oracle; }
        if (*pg) { EXPECT_EQ(text(sql, kPg), QString::fromUtf8(pg)) << c.oracle; }
    }
}

// A text the bridge refuses on both engines, with the construct named; '@'
// marks the position reported (it is not part of the text).
struct Refusal { const char* oracle; const char* construct; };

const Refusal kRefusals[] = {
    {"commit @comment 'x'", "commit"}, {"delete from t@; delete from u", "statement"},
    {"select @'abc from dual", "text"}, {"select @\"abc from dual", "name"},
    {"select 1 @/* x from dual", "comment"}, {"select @(1 from dual", "("},
    {"select 1@) from dual", ")"}, {"select @case when a=1 then 2 from dual", "case"},
    {"select 1 x from dual where sysdate @- a.jcrq > 30", "sysdate"}, {"select 1 x from dual where a.jcrq - @sysdate > 30", "sysdate"},
    {"select @nvl(a, b, c) from t", "nvl"}, {"select @instr(a, b, 2) from t", "instr"},
    {"select @to_number(a, '999') from t", "to_number"}, {"select a @|| from t", "||"},
    // (+) that cannot be placed: under OR, on both sides, without a table,
    // against no other table, outside WHERE, beside an ANSI join, in a
    // cycle, on a table of the enclosing select.
    {"select * from a, b where a.k=b.k@(+) or a.x=1", "(+)"}, {"select * from a, b, c where a.k=b.k(+) and b.j(+)=c.j@(+)", "(+)"},
    {"select * from a, b where a.k=k@(+)", "(+)"}, {"select * from a, b where b.k@(+)=1", "(+)"},
    {"select a.x@(+) from a, b", "(+)"}, {"select * from a join b on a.k=b.k, c where a.j=c.j@(+)", "(+)"},
    {"select * from a, b where a.k=b.k(+) and b.j=a.j@(+)", "(+)"}, {"select * from a where exists (select 1 from b where b.k=a.k@(+))", "(+)"},
    // rownum other than a limit of a plain select.
    {"select @rownum, hh from t", "rownum"}, {"select hh, count(*) from t where @rownum<=5 group by hh", "rownum"},
    {"select count(*) from t where @rownum=1", "rownum"}, {"select a from t where @rownum=1 union select b from u", "rownum"},
    {"select a from t where @rownum=1 or a=2", "rownum"}, {"select * from t @connect by prior a = b", "connect by"},
    // Blocks: an output after a call, an output read again, set twice, DML,
    // declarations, no END.
    {"begin p(1); @:a := f; end;", "block"}, {"begin :a := f; :b := g(@:A); end;", "block"},
    {"begin :a := f; @:a := g; end;", "block"}, {"begin @update t set a=1; end;", "block"},
    {"@declare x number; begin :a := x; end;", "block"}, {"@begin :a := f;", "block"},
};

TEST(SqlDialect, RefusalsNameTheConstructAndItsPosition) {
    for (const Refusal& r : kRefusals) {
        QString sql = QString::fromUtf8(r.oracle);
        const QString expected =
            QStringLiteral("refused: %1 at %2").arg(QString::fromUtf8(r.construct)).arg(sql.indexOf(QLatin1Char('@')));
        sql.remove(QLatin1Char('@'));
        EXPECT_EQ(text(sql, kLite), expected) << r.oracle;
        EXPECT_EQ(text(sql, kPg), expected) << r.oracle;
    }
}

TEST(SqlDialect, KindsOutputsAndParameterPlaces) {
    using K = Translated::Kind;
    const std::pair<const char*, K> kinds[] = {
        {"  SELECT 1 a from dual;", K::Query}, {"with x as (select 1 a from dual) select a from x", K::Query},
        {"(select 1 from dual) union (select 2 from dual)", K::Query}, {"(select a from t) order by 1", K::Query},
        {"insert into t(a) values(:a)", K::Statement}, {"Delete from a_HGQFA where CDBH=:CDBH", K::Statement},
        {"create table x (a varchar(2))", K::Statement}, {"Begin Yk_UndoYysq(:ac_Cdbh); End;", K::Call},
        {"commit", K::Commit}, {"COMMIT;", K::Commit}, {" Commit ;\n", K::Commit}, {"commit work", K::Commit},
    };
    for (const auto& [sql, kind] : kinds)
        for (Dialect d : {kLite, kPg, Dialect::Oracle}) EXPECT_EQ(translate(QString::fromUtf8(sql), d).kind, kind) << sql;
    EXPECT_TRUE(translate(QStringLiteral("commit"), kPg).params.isEmpty());
    // A block's outputs are its result's columns, not parameters.
    const Translated block = translate(QStringLiteral("BEGIN:a:=get_cdbh();:B := nvl(:x, sysdate) ;  null; pkg.proc; END;\n/"), kPg);
    EXPECT_EQ(block.outputs, (QStringList{"A", "B"}));
    EXPECT_EQ(block.params, QStringList{"X"});
    EXPECT_TRUE(translate(QStringLiteral("Begin Yk_UndoYysq(:ac_Cdbh); End;"), kLite).outputs.isEmpty());

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

TEST(SqlDialect, OracleTextStaysAsWrittenSplitAtParameters) {
    const QString sql = QStringLiteral("select *\u3000from y_khda where hh=:Hh and hm<>':x' -- :y\n and dw = :dw;");
    const Translated t = translate(sql, Dialect::Oracle);
    EXPECT_EQ(t.kind, Translated::Kind::Query);
    EXPECT_EQ(t.params, (QStringList{"HH", "DW"}));
    EXPECT_EQ(t.withLiterals({":Hh", ":dw"}), sql);

    const Translated block = translate(QStringLiteral("Begin :CDBH := GET_CDBH; End;"), Dialect::Oracle);
    EXPECT_EQ(block.outputs, QStringList{"CDBH"});
    EXPECT_EQ(block.withLiterals({":CDBH"}), QStringLiteral("Begin :CDBH := GET_CDBH; End;"));
    // Oracle judges broken texts itself: no refusal here.
    EXPECT_NO_THROW(translate(QStringLiteral("select 'open from dual"), Dialect::Oracle));
}

TEST(SqlDialect, RememberedTranslationIsTheTranslationAndARefusalStays) {
    const QString sql = QStringLiteral("Begin :a := f(:x); End;");
    for (Dialect d : {kLite, kPg, Dialect::Oracle}) {
        Translated mine = translate(sql, d);
        mine.pieces[0] = QStringLiteral("changed");  // a caller's copy is its own
        mine.outputs.clear();
        const Translated again = translate(sql, d), fresh = tarvin::sql::translateUncached(sql, d);
        EXPECT_TRUE(again.kind == fresh.kind && again.pieces == fresh.pieces && again.params == fresh.params) << int(d);
        EXPECT_EQ(again.outputs, QStringList{"A"});
    }
    for (int call = 0; call < 2; ++call) EXPECT_EQ(text(QStringLiteral("select rownum from t"), kLite), QStringLiteral("refused: rownum at 7"));
}

TEST(SqlDialect, LiteralsAndDialectNames) {
    using tarvin::sql::literal;
    EXPECT_EQ(literal(QVariant(), kPg), QStringLiteral("NULL"));
    EXPECT_EQ(literal(QString(""), kPg), QStringLiteral("NULL"));
    EXPECT_EQ(literal(QStringLiteral("it's"), kPg), QStringLiteral("'it''s'"));
    EXPECT_EQ(literal(3, kPg), QStringLiteral("'3'"));
    EXPECT_EQ(literal(QDateTime(QDate(2024, 7, 1), QTime(8, 5, 9)), kPg), QStringLiteral("'2024-07-01 08:05:09'"));
    EXPECT_EQ(literal(QDate(2024, 7, 1), kPg), QStringLiteral("'2024-07-01 00:00:00'"));

    using tarvin::sql::dialectFromName;
    for (Dialect d : {Dialect::Oracle, Dialect::SQLite, Dialect::PostgreSQL}) EXPECT_EQ(dialectFromName(tarvin::sql::dialectName(d)), d);
    EXPECT_EQ(dialectFromName(QStringLiteral("PG")), kPg);
    EXPECT_THROW(dialectFromName(QStringLiteral("mysql")), std::invalid_argument);
}

}  // namespace
