// The shared data modules: load and unload order, the stored design of
// their queries, and those queries running on the reference schema.
#include <QMap>
#include <QPointer>
#include <functional>

#include "data/DataModules.h"
#include "TestDb.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QStringList kLoadOrder{u"Dataset_Jc_Func"_s, u"Zt_Funcs_Dm"_s,   u"Gy_Khcx_Dm"_s,
                             u"Jc_Main_Dm"_s,      u"Jc_Tarvin_Dm"_s,  u"Jc_Jcgzdcx_Dm"_s,
                             u"DataSet_Yk_Dm"_s,   u"Jc_Jcgzd_Dm"_s,   u"jl_func_dm"_s};
const QStringList kClassNames{u"TDataset_Jc_Func"_s, u"TZt_Funcs_Dm"_s,   u"TGy_Khcx_Dm"_s,
                              u"TJc_Main_Dm"_s,      u"TJc_Tarvin_Dm"_s,  u"TJc_Jcgzdcx_Dm"_s,
                              u"TDataSet_Yk_Dm"_s,   u"TJc_Jcgzd_Dm"_s,   u"Tjl_func_dm"_s};

// The global references, in load order.
QList<QObject*> globals() {
    return {Dataset_Jc_Func, Zt_Funcs_Dm,   Gy_Khcx_Dm,  Jc_Main_Dm, Jc_Tarvin_Dm,
            Jc_Jcgzdcx_Dm,   DataSet_Yk_Dm, Jc_Jcgzd_Dm, jl_func_dm};
}

// Records what the modules report while it lives.
struct Trace {
    QStringList events;
    Trace() {
        SetDataModuleTrace([this](const QString& e, const QString& m) { events << e + u' ' + m; });
    }
    ~Trace() { SetDataModuleTrace({}); }
};

QStringList prefixed(const QString& event) {
    QStringList out;
    for (const QString& n : kLoadOrder) out << event + u' ' + n;
    return out;
}

QStringList paramNames(TMidasQuery* q) {
    QStringList out;
    for (int i = 0; i < q->Params().Count(); ++i) out << q->Params()[i].Name;
    return out;
}

QList<TMidasQuery*> queriesOf(QObject* module) {
    return module->findChildren<TMidasQuery*>(QString(), Qt::FindDirectChildrenOnly);
}

// A query reached through its module's public member.
#define Q(mod, name) #mod, #name, [] { return mod ? mod->name : nullptr; }

struct StoredQuery {
    const char* module;
    const char* name;
    std::function<TMidasQuery*()> member;
    QStringList lines;  // empty: no stored text
    QStringList params;
    QString index;
};

// Stored designs: SQL lines as written, parameters in declared order.
const std::vector<StoredQuery> kStoredQueries{
    {Q(Zt_Funcs_Dm, Mqry_Select), {u"select * from C_DYDJ"_s}, {}, {}},
    {Q(Dataset_Jc_Func, MQry_Select), {}, {}, {}},
    {Q(Gy_Khcx_Dm, Mqry_Lkhxx), {u"select * from Y_KHDA"_s, u"where HH =:KHBH"_s}, {u"KHBH"_s}, {}},
    {Q(Gy_Khcx_Dm, Mqry_Select), {}, {}, {}},
    {Q(Gy_Khcx_Dm, Mqry_Fkhbh), {}, {}, {}},
    {Q(Jc_Jcgzdcx_Dm, Mqry_Select), {}, {}, {}},
    {Q(Jc_Jcgzdcx_Dm, Mqry_Cdbh), {}, {}, {}},
    {Q(Jc_Jcgzd_Dm, Mqry_Ry), {}, {}, {}},
    {Q(Jc_Jcgzd_Dm, Mqry_Cdbhcx), {}, {}, {}},
    {Q(Jc_Jcgzd_Dm, Mqry_Select), {}, {}, {}},
    {Q(jl_func_dm, Mqry_select), {}, {}, {}},
    {Q(jl_func_dm, Mqry_DFGZD), {}, {}, {}},
    {Q(jl_func_dm, Mqry_fxzdnbfa), {}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Select), {u"select A.*, B.*, C.HM from J_WYYDQD A,J_WYMX B,G_KHDA C "_s, u"where A.CDBH=B.CDBH "_s, u"and A.HH=C.HH "_s, u"and A.HH=:HH"_s}, {u"HH"_s}, {}},
    {Q(Jc_Main_Dm, MQry_Update), {u"select * From all_djm"_s}, {}, {}},
    {Q(Jc_Main_Dm, MQry_Bm), {u"select DM,MC"_s, u"FROM z_BMBM"_s}, {}, {}},
    {Q(Jc_Main_Dm, MQry_Jclx), {u"select * from w_jclx"_s}, {}, {}},
    {Q(Jc_Main_Dm, MQry_Khda), {u"select * from Y_KHDA"_s, u"WHERE HH=:HH"_s}, {u"HH"_s}, {}},
    {Q(Jc_Main_Dm, MQry_Dydj), {u"select * from W_DYDJ"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Khlx), {u"select * from W_KHLX"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Hylb), {u"SELECT * FROM w_zyhy"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Dw), {u"select * from v_dw where dm=:dw"_s, u"union"_s, u"select * from v_dw where sjdw=:dw"_s}, {u"dw"_s, u"dw"_s}, {}},
    {Q(Jc_Main_Dm, MQry_Yhdm), {u"select * from w_YHDM"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Dqgw), {u"select CDBH,KHBH,HM,YDDZ,DQYWX,LASTYWXMC,DQYWXMC,CZY,C.XINGMING "_s, u"from Z_DQGW A,Z_LCJD B,Z_XTCZY C"_s, u"where A.DQYWX = B.YWXDM"_s, u"and A.CZY = C.DM(+)"_s}, {}, u"CDBH"_s},
    {Q(Jc_Main_Dm, Mqry_Xzqh), {u"select * from w_QY"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Ydlb), {u"select * from W_ydlb"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Xltq), {u"select * from g_gytqshfx "_s, u" where dw=:dw and  ny=:ny "_s}, {u"dw"_s, u"ny"_s}, {}},
    {Q(Jc_Main_Dm, Mqry_Ywlb), {u"select ywdm,ywmc from z_dlyxyw "_s, u"               where ywlbdm='0001'"_s, u"union"_s, u"select '000' ywdm,'全部' ywmc from dual"_s, u"order by ywdm"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_dl), {u"select * from w_dl"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_hgqlb), {u"select * from w_hgqlb"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_dblb), {u"select * from w_dblb"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_jddj), {u"select * from w_dnbjd"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Xx), {u"select * from w_xx"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_hgqjd), {u"select * from w_hgqjd"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_dnbdy), {u"Select * From W_dbdy"_s}, {}, {}},
    {Q(Jc_Main_Dm, Mqry_Djm), {u"SELECT djm, djm||' | '||djmc djmc"_s, u" FROM b_djb"_s}, {}, {}},
    {Q(Jc_Tarvin_Dm, MQry_Jcjh), {u"select jhbh, jhlx, zdr, zdrq, zdbm, dw,"_s, u"jhjcqrq, jhjczrq, "_s, u"jcbm, jchs, jcnr, bz,b.mc zdbmmc "_s, u"from e_jcjh a,z_bmbm b"_s, u" where a.dw=:dw "_s, u"   and a.jhlx=:jhlx "_s, u"    and a.zdbm=b.dm(+)"_s}, {u"dw"_s, u"jhlx"_s}, {}},
    {Q(Jc_Tarvin_Dm, MQry_Jcry), {u"select A.*,B.XINGMING XM"_s, u" from  E_JCRYXX A,Z_XTCZY B"_s, u"WHERE A.CZYDM=B.DM(+)"_s}, {}, {}},
    {Q(Jc_Tarvin_Dm, MQry_Kykhcx), {u"select a.hh hh,a.hm hm,a.yddz yddz,A.KHLX KHLXDM,"_s, u"(select mc from w_khlx where dm=a.khlx) khlx,a.htrl htrl,"_s, u"a.dydj dydj,a.scjcrq scjcrq,a.jczq jczq,a.zxr zxr,"_s, u"a.lxr lxr,a.lxdh lxdh,"_s, u"(select xlbh from y_gddy where hh=a.hh and dyxz='主供') xlbh,"_s, u"(select byqbh from y_gddy where hh=a.hh and dyxz='主供' "_s, u"and dylx='公变') tqbh"_s, u" from Y_Khda a"_s, u"where hh=:hh"_s}, {u"hh"_s}, u"HH"_s},
    {Q(Jc_Tarvin_Dm, MQry_Jhbp), {u"SELECT * FROM E_JCGZJL"_s, u" WHERE CDBH='00001'"_s}, {}, u"CDBH"_s},
    {Q(Jc_Tarvin_Dm, MQry_Jcqkll), {u"select A.*,B.MC JCLXMC"_s, u" from E_Jcgzjl A,W_JCLX B"_s, u" where a.jclx=b.dm(+)"_s}, {}, {}},
    {Q(Jc_Tarvin_Dm, MQry_Jcgzjl), {u"select A.*,c.mc khlxmc,D.MC DYDJMC,"_s, u"to_char(a.jhjcrq,'yyyy-mm-dd') jcrqjh "_s, u"from e_Jcgzjl A,w_khlx c,W_DYDJ D"_s, u"where "_s, u"a.khlx=c.dm(+)"_s, u"AND A.DYDJ=D.DM(+)"_s, u"and a.jcph=:sJcph"_s, u""_s}, {u"sJcph"_s}, {}},
    {Q(Jc_Tarvin_Dm, MQry_Jcjgjl), {u"select A.* "_s, u"from e_jcgzjl A"_s, u"where  A.zt<>'未审批'"_s, u"and A.CDBH=:CDBH"_s}, {u"CDBH"_s}, u"CDBH"_s},
    {Q(Jc_Tarvin_Dm, MQry_Jcxm), {u"select * from W_JCXM"_s}, {}, {}},
    {Q(Jc_Tarvin_Dm, MQry_Jcqk), {u"select cdbh,  DM,  MC, XCQK"_s, u"from e_jcjg"_s, u"WHERE CDBH=:CDBH"_s}, {u"CDBH"_s}, u"DM"_s},
    {Q(Jc_Tarvin_Dm, MQry_Khda), {u"select a.*,b.mc xzqmc from Y_KHDA a,w_qy b "_s, u"where hh=:HH"_s, u"and a.xzq=b.dm(+)"_s}, {u"HH"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Jcgzap), {u"select jcph,b.mc jcbmmc,jcnr,spr,spyj,sprq,dw,"_s, u"bz jhbz,zdr,to_char(zdsj,'yyyy-mm-dd') zdrq "_s, u"from e_jcgzap  a, z_bmbm b"_s, u"where "_s, u"a.jcbm=b.dm(+) and "_s, u"jcph=:sJcph "_s}, {u"sJcph"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Update), {}, {}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Qxqk), {u"select * from E_QXQKJL"_s}, {}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Qxxz), {u"select * from w_qxxz"_s}, {}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_DnbBg), {u"select a.jfdbh,a.byqbh,"_s, u"a.txm,a.jldbh,a.dnbcch,a.dl,a.dy,a.jddj,"_s, u"a.xx,a.dblb,B.BGSM,B.ID,"_s, u"A.YGXSJSFS,A.WGXSJSFS,A.YGXSJSZ,A.WGXSJSZ,"_s, u"A.CBLB,A.CBSX,A.CKBBZ,a.jfdbh,A.BJ,a.gkbbz,"_s, u"a.jlzzdfl,a.byqbh,A.ZBWZ,A.JBH,a.dw"_s, u"from Y_YXDNB A,A_DNBFA B"_s, u"where A.HH = :hh"_s, u"and A.TXM = B.TXM(+)"_s, u"order by A.JLDBH"_s}, {u"hh"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_HgqBg), {u"select A.*,B.BGSM,B.ID,C.MC HGQLBMC"_s, u"from Y_YXHGQ A,A_HGQFA B,W_HGQLB C"_s, u"where A.HH = :HH"_s, u"and A.HGQBH = B.HGQBH(+)"_s, u"AND A.HGQLB= C.DM(+)"_s, u"order by A.JLDBH"_s}, {u"HH"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Gzxz), {u"select * from w_gzxz"_s}, {}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Select), {}, {}, {}},
    {Q(Jc_Tarvin_Dm, MQry_Khsqxx), {u"select a.*,b.mc xzqmc from a_KHSQXX a,w_qy b"_s, u" where CDBH=:CDBH and"_s, u"a.xzq=b.dm(+)"_s}, {u"CDBH"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Tbxx), {u" select A.*,(A.FDL+A.GDL+A.PDL) ZDL,"_s, u"       (A.FDF+A.GDF+A.PDF+A.DSK6+A.DSK7+A.RLDF+A.XLDF+A.LLDF) ZDF "_s, u"   from b_tbdfxx A,B_TBJL B"_s, u"    where  A.TBCDH=B.TBCDH "_s, u"      AND B.GLCDBH=:cdbh"_s}, {u"cdbh"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Bjbg), {u"select jldbh,bgsm,dnbcch,dblb,b.mc gzlxmc,"_s, u"       xx,dy,dl,zhbl "_s, u"   from A_DNBFA a,w_gzxz b"_s, u"     where a.gzlx=b.dm(+)"_s, u"      and bgsm='换取'"_s, u"                and  cdbh=:cdbh"_s}, {u"cdbh"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Kykhjls), {}, {}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Jlyctbjl), {u"begin"_s, u"  jc_jlyctbjl"_s, u"("_s, u"   :ac_cdbh ,"_s, u"   :ai_dm"_s, u");"_s, u"end;"_s}, {u"ac_cdbh"_s, u"ai_dm"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Dnbfa), {u"select * from A_DNBFA"_s, u"where  CDBH = :CDBH"_s, u"and BGSM = '新装'"_s}, {u"CDBH"_s}, {}},
    {Q(Jc_Tarvin_Dm, Mqry_Hgqfa), {u"select A.* from A_HGQFA A"_s, u"where A.cdbh = :cdbh"_s, u"and A.BGSM = '新装'"_s, u"order by JLDBH"_s}, {u"cdbh"_s}, {}},
};

// The business-expansion queries: names fixed, texts our own.
#define Y(name) "DataSet_Yk_Dm", #name, [] { return DataSet_Yk_Dm ? DataSet_Yk_Dm->name : nullptr; }
struct NamedQuery {
    const char* module;
    const char* name;
    std::function<TMidasQuery*()> member;
};
const std::vector<NamedQuery> kYkQueries{
    {Y(Mqry_Select)},
    {Y(Mqry_Dyfa)},
    {Y(Mqry_Gxfa)},
    {Y(Mqry_Ykkzb)},
    {Y(Mqry_Dyxx)},
    {Y(Mqry_Khsqxx)},
    {Y(Mqry_Khgc)},
    {Y(Mqry_Bzb_Jdfs)},
    {Y(Mqry_Bzb_Jhfs)},
    {Y(Mqry_Bzb_Dybhfs)},
    {Y(Mqry_Fylb)},
    {Y(Mqry_Ywysf)},
    {Y(Mqry_Update)},
    {Y(Mqry_Bzb_Jxfs)},
    {Y(Mqry_Ywssf)},
    {Y(Mqry_Bzb_Jmlx)},
    {Y(Mqry_Bzb_Skfs)},
    {Y(Mqry_Xlsb)},
    {Y(Mqry_Bzb_Jjlx)},
    {Y(Mqry_Bzb_Zgj)},
    {Y(Mqry_Khda)},
    {Y(Mqry_Bh)},
    {Y(Mqry_Sdd)},
    {Y(Mqry_Jgys)},
    {Y(Mqry_H_Khsqxx)},
    {Y(Mqry_Hlgcf)},
    {Y(Mqry_Gcdef)},
    {Y(Mqry_Jbf)},
    {Y(Mqry_Pbf)},
    {Y(Mqry_Tf)},
    {Y(Mqry_Dfsb)},
    {Y(Mqry_Hbzz)},
    {Y(Mqry_Gctzkh)},
    {Y(Mqry_Tzsf)},
    {Y(Mqry_Gxbh)},
    {Y(Mqry_Bjsf)},
    {Y(Mqry_LsXlxx)},
    {Y(Mqry_Khdlsb)},
    {Y(Mqry_Dyxz)},
    {Y(Mqry_Gddy)},
    {Y(Mqry_Lddy)},
    {Y(Mqry_Jd)},
    {Y(Mqry_Jwh)},
    {Y(Mqry_Qy)},
    {Y(Mqry_Gnk)},
    {Y(Mqry_select1)},
    {Y(Mqry_Zjjh)},
    {Y(Mqry_dnbzc)},
    {Y(Mqry_byqda)},
    {Y(Mqry_hgqzc)},
    {Y(Mqry_Gdfa)},
    {Y(Mqry_Spjl)},
    {Y(Mqry_Gcqk)},
    {Y(Mqry_Zzsh)},
    {Y(Mqry_Tzsc)},
    {Y(Mqry_Htxx)},
    {Y(Mqry_Htlx)},
    {Y(Mqry_Wxgc)},
    {Y(MQry_Khsqxx1)},
};

struct SourceOf {
    const char* module;
    const char* name;
    std::function<TDataSource*()> member;
    const char* query;
};
#define D(mod, name, query) #mod, #name, [] { return mod ? mod->name : nullptr; }, query
const std::vector<SourceOf> kDataSources{
    {D(Dataset_Jc_Func, Ds_Select, "MQry_Select")},
    {D(Gy_Khcx_Dm, Ds_Fkhbh, "Mqry_Fkhbh")},
    {D(Jc_Main_Dm, Ds_Select, "Mqry_Select")},
    {D(Jc_Main_Dm, Ds_Bm, "MQry_Bm")},
    {D(Jc_Main_Dm, Ds_Jclx, "MQry_Jclx")},
    {D(Jc_Main_Dm, Ds_Dydj, "MQry_Dydj")},
    {D(Jc_Main_Dm, Ds_Khlx, "Mqry_Khlx")},
    {D(Jc_Main_Dm, Ds_Hylb, "Mqry_Hylb")},
    {D(Jc_Main_Dm, Ds_Dw, "Mqry_Dw")},
    {D(Jc_Main_Dm, Ds_Ydlb, "Mqry_Ydlb")},
    {D(Jc_Main_Dm, Ds_Xltq, "Mqry_Xltq")},
    {D(Jc_Main_Dm, Ds_Ywlb, "Mqry_Ywlb")},
    {D(Jc_Main_Dm, Ds_dl, "Mqry_dl")},
    {D(Jc_Main_Dm, Ds_hgqlb, "Mqry_hgqlb")},
    {D(Jc_Main_Dm, Ds_dblb, "Mqry_dblb")},
    {D(Jc_Main_Dm, Ds_jddj, "Mqry_jddj")},
    {D(Jc_Main_Dm, Ds_Xx, "Mqry_Xx")},
    {D(Jc_Main_Dm, Ds_dnbdy, "Mqry_dnbdy")},
    {D(Jc_Main_Dm, Ds_Djm, "Mqry_Djm")},
    {D(Jc_Tarvin_Dm, Ds_Jcjh, "MQry_Jcjh")},
    {D(Jc_Tarvin_Dm, Ds_Kykhcx, "MQry_Kykhcx")},
    {D(Jc_Tarvin_Dm, Ds_Jhbp, "MQry_Jhbp")},
    {D(Jc_Tarvin_Dm, Ds_Jcqkll, "MQry_Jcqkll")},
    {D(Jc_Tarvin_Dm, Ds_Jcgzjl, "MQry_Jcgzjl")},
    {D(Jc_Tarvin_Dm, Ds_Jcgzap, "Mqry_Jcgzap")},
    {D(Jc_Tarvin_Dm, Ds_DnbBg, "Mqry_DnbBg")},
    {D(Jc_Tarvin_Dm, Ds_HgqBg, "Mqry_HgqBg")},
    {D(Jc_Tarvin_Dm, Ds_Gzxz, "Mqry_Gzxz")},
    {D(Jc_Tarvin_Dm, Ds_Dnbfa, "Mqry_Dnbfa")},
    {D(Jc_Tarvin_Dm, Ds_Hgqfa, "Mqry_Hgqfa")},
};

// Queries whose cached updates screens apply, with where they go.
struct UpdatesOf {
    const char* module;
    const char* name;
    std::function<TMidasQuery*()> member;
    QString table;
    QStringList keys;
};
const std::vector<UpdatesOf> kUpdates{
    {Q(Jc_Tarvin_Dm, MQry_Jcjh), u"E_JCJH"_s, {u"JHBH"_s}},
    {Q(Jc_Tarvin_Dm, MQry_Jhbp), u"E_JCGZJL"_s, {u"CDBH"_s}},
    {Q(Jc_Tarvin_Dm, MQry_Jcgzjl), u"E_JCGZJL"_s, {u"CDBH"_s}},
    {Q(Jc_Tarvin_Dm, Mqry_Dnbfa), u"A_DNBFA"_s, {u"ID"_s}},
    {Q(Jc_Tarvin_Dm, Mqry_Hgqfa), u"A_HGQFA"_s, {u"ID"_s}},
};

// Every test starts and ends with no modules.
class DataModulesTest : public ::testing::Test {
protected:
    void SetUp() override { FreeDataModules(); }
    void TearDown() override { FreeDataModules(); }
};

TEST_F(DataModulesTest, CreatedAndFreedInLoadOrder) {
    Trace trace;
    CreateDataModules();
    EXPECT_EQ(trace.events, prefixed(u"create"_s));

    QStringList names, classes;
    for (QObject* m : globals()) {
        ASSERT_NE(m, nullptr);
        names << m->objectName();
        classes << QString::fromLatin1(m->metaObject()->className());
        EXPECT_EQ(m->parent(), nullptr) << "modules have no owner";
    }
    EXPECT_EQ(names, kLoadOrder);
    EXPECT_EQ(classes, kClassNames);
    EXPECT_EQ(DataModules(), globals());

    QPointer<TMidasQuery> query = Jc_Main_Dm->MQry_Bm;
    QPointer<TDataSource> source = Jc_Main_Dm->Ds_Bm;
    trace.events.clear();
    FreeDataModules();
    EXPECT_EQ(trace.events, prefixed(u"free"_s));
    for (QObject* m : globals()) EXPECT_EQ(m, nullptr);
    EXPECT_TRUE(DataModules().isEmpty());
    EXPECT_TRUE(query.isNull()) << "queries go with their module";
    EXPECT_TRUE(source.isNull());

    FreeDataModules();  // nothing left to free
    EXPECT_EQ(trace.events, prefixed(u"free"_s));
}

TEST_F(DataModulesTest, CreatingAgainKeepsTheModulesThatExist) {
    CreateDataModules();
    const QList<QObject*> first = globals();
    Trace trace;
    CreateDataModules();
    EXPECT_TRUE(trace.events.isEmpty());
    EXPECT_EQ(globals(), first);

    // A module freed by itself clears its reference; the next call makes
    // only that one again.
    delete Jc_Tarvin_Dm;
    EXPECT_EQ(Jc_Tarvin_Dm, nullptr);
    CreateDataModules();
    EXPECT_EQ(trace.events, QStringList{u"create Jc_Tarvin_Dm"_s});
    ASSERT_NE(Jc_Tarvin_Dm, nullptr);
    EXPECT_EQ(Jc_Main_Dm, first[3]);
    EXPECT_EQ(Jc_Tarvin_Dm->objectName(), u"Jc_Tarvin_Dm"_s);
}

TEST_F(DataModulesTest, QueriesWaitForTheirConnectionUntilUsed) {
    ASSERT_FALSE(QSqlDatabase::contains(u"Shdl"_s));
    CreateDataModules();
    for (QObject* m : DataModules())
        for (TMidasQuery* q : queriesOf(m)) {
            EXPECT_EQ(q->DatabaseName(), u"Shdl"_s) << m->objectName().toStdString() << '.' << q->objectName().toStdString();
            EXPECT_FALSE(q->Active());
        }
    // Without the connection the first use fails with a database error
    // that the screen can show; the query stays usable afterwards.
    EXPECT_THROW(Jc_Main_Dm->MQry_Bm->Open(), EDatabaseError);
    EXPECT_FALSE(Jc_Main_Dm->MQry_Bm->Active());
}

TEST_F(DataModulesTest, QueriesHoldTheirStoredDesign) {
    CreateDataModules();
    QMap<QString, int> listed;
    for (const StoredQuery& e : kStoredQueries) {
        SCOPED_TRACE(std::string(e.module) + '.' + e.name);
        ++listed[QString::fromLatin1(e.module)];
        TMidasQuery* q = e.member();
        ASSERT_NE(q, nullptr);
        EXPECT_EQ(q->objectName(), QString::fromLatin1(e.name));
        EXPECT_EQ(q->parent()->objectName(), QString::fromLatin1(e.module));
        EXPECT_EQ(q->SQL().Lines(), e.lines);
        EXPECT_EQ(paramNames(q), e.params);
        EXPECT_EQ(q->IndexFieldNames(), e.index);
    }
    for (const NamedQuery& e : kYkQueries) {
        SCOPED_TRACE(std::string(e.module) + '.' + e.name);
        ++listed[QString::fromLatin1(e.module)];
        TMidasQuery* q = e.member();
        ASSERT_NE(q, nullptr);
        EXPECT_EQ(q->objectName(), QString::fromLatin1(e.name));
        EXPECT_EQ(q->parent(), DataSet_Yk_Dm);
        // Our own texts declare exactly the parameters they use.
        EXPECT_EQ(paramNames(q).join(u','), tarvin::sql::parameterNames(q->SQL().Text()).join(u','));
    }
    // Nothing beyond the lists.
    EXPECT_EQ(listed.value(u"DataSet_Yk_Dm"_s), 59);
    EXPECT_EQ(listed.value(u"Jc_Main_Dm"_s), 23);
    EXPECT_EQ(listed.value(u"Jc_Tarvin_Dm"_s), 25);
    for (QObject* m : DataModules())
        EXPECT_EQ(queriesOf(m).size(), listed.value(m->objectName())) << m->objectName().toStdString();
}

TEST_F(DataModulesTest, DataSourcesPointAtTheirQueries) {
    CreateDataModules();
    for (const SourceOf& e : kDataSources) {
        SCOPED_TRACE(std::string(e.module) + '.' + e.name);
        TDataSource* ds = e.member();
        ASSERT_NE(ds, nullptr);
        EXPECT_EQ(ds->objectName(), QString::fromLatin1(e.name));
        ASSERT_NE(ds->parent(), nullptr);
        EXPECT_EQ(ds->parent()->objectName(), QString::fromLatin1(e.module));
        ASSERT_NE(ds->DataSet(), nullptr);
        EXPECT_EQ(ds->DataSet()->objectName(), QString::fromLatin1(e.query));
        EXPECT_EQ(ds->DataSet()->parent(), ds->parent());
    }
}

TEST_F(DataModulesTest, UpdateTablesDeclaredWhereScreensApplyUpdates) {
    CreateDataModules();
    QStringList declared;
    for (const UpdatesOf& e : kUpdates) {
        SCOPED_TRACE(std::string(e.module) + '.' + e.name);
        TMidasQuery* q = e.member();
        ASSERT_NE(q, nullptr);
        EXPECT_EQ(q->UpdateTable(), e.table);
        EXPECT_EQ(q->KeyFields(), e.keys);
        declared << QString::fromLatin1(e.name);
    }
    // Every other query is written only by explicit statements.
    for (QObject* m : DataModules())
        for (TMidasQuery* q : queriesOf(m)) {
            if (m == Jc_Tarvin_Dm && declared.contains(q->objectName())) continue;
            EXPECT_TRUE(q->UpdateTable().isEmpty()) << m->objectName().toStdString() << '.' << q->objectName().toStdString();
        }
}

// ------------------------------------------------------------ on the engines

const QString kHh = u"0000000001"_s;
const QString kCdbh = u"0000000001"_s;
const QString kJcph = u"P000000001"_s;

class DataModulesOnEngine : public EngineTest {
protected:
    void SetUp() override {
        // The modules exist before the connection, as when the host loads
        // the module; their queries find it by name when first used.
        CreateDataModules();
        db = std::make_unique<TestDatabase>(dialect());
        const QStringList fixture{
            u"INSERT INTO z_dwbm (dm, mc, sjdw, jb) VALUES ('01', '青禾供电局', NULL, 1)"_s,
            u"INSERT INTO z_dwbm (dm, mc, sjdw, jb) VALUES ('0101', '城区供电所', '01', 2)"_s,
            u"INSERT INTO z_dwbm (dm, mc, sjdw, jb) VALUES ('010101', '城东班', '0101', 3)"_s,
            u"INSERT INTO z_dwbm (dm, mc, sjdw, jb) VALUES ('0102', '郊区供电所', '01', 2)"_s,
            u"INSERT INTO z_bmbm (dm, mc) VALUES ('B01', '用电检查班')"_s,
            u"INSERT INTO z_xtczy (dm, xingming, dw, bm) VALUES ('czy01', '张检', '0101', 'B01')"_s,
            u"INSERT INTO w_khlx (dm, mc) VALUES ('01', '高压用户')"_s,
            u"INSERT INTO w_dydj (dm, mc) VALUES ('10', '10kV')"_s,
            u"INSERT INTO w_jclx (dm, mc) VALUES ('01', '定期检查')"_s,
            u"INSERT INTO w_qy (dm, mc) VALUES ('Q1', '城区')"_s,
            u"INSERT INTO w_gzxz (dm, mc) VALUES ('G1', '电能表故障')"_s,
            u"INSERT INTO y_khda (hh, hm, yddz, khlx, dydj, htrl, dw, xzq, xhbz) "
            u"VALUES ('0000000001', '青禾机械厂', '城东路1号', '01', '10', 315, '0101', 'Q1', '否')"_s,
            u"INSERT INTO g_khda (hh, hm, dw) VALUES ('0000000001', '青禾机械厂', '0101')"_s,
            u"INSERT INTO y_gddy (hh, xh, dyxz, dylx, xlbh, byqbh, dw) VALUES ('0000000001', 1, '主供', '公变', 'X001', 'T001', '0101')"_s,
            u"INSERT INTO e_jcjh (jhbh, jhlx, jcnr, dw, zdbm, zdr) VALUES ('0001', '年计划', '高压用户', '0101', 'B01', '张检')"_s,
            u"INSERT INTO e_jcjh (jhbh, jhlx, jcnr, dw, zdbm, zdr) VALUES ('0002', '年计划', '专变用户', '0101', 'B99', '张检')"_s,
            u"INSERT INTO e_jcjh (jhbh, jhlx, jcnr, dw, zdbm, zdr) VALUES ('0003', '月计划', '居民', '0101', 'B01', '张检')"_s,
            u"INSERT INTO e_jcryxx (czydm, xm, jczh, dw) VALUES ('czy01', '张检', 'JC001', '0101')"_s,
            u"INSERT INTO e_jcgzap (jcph, jcbm, jcnr, dw, zdr, zdsj) VALUES ('P000000001', 'B01', '检查', '0101', '张检', '2024-03-01 09:00:00')"_s,
            u"INSERT INTO e_jcgzjl (cdbh, hh, hm, khlx, dydj, jhlx, jhjcrq, zt, jcph) "
            u"VALUES ('0000000001', '0000000001', '青禾机械厂', '01', '10', '年计划', '2024-03-05 00:00:00', '未审批', 'P000000001')"_s,
            u"INSERT INTO e_jcjg (cdbh, dm, mc, xcqk) VALUES ('0000000001', '01', '计量装置', '正常')"_s,
            u"INSERT INTO a_khsqxx (cdbh, ywdm, hh, hm, xzq, dw) VALUES ('0000000001', '401', '0000000001', '青禾机械厂', 'Q1', '0101')"_s,
            u"INSERT INTO a_ykkzb (cdbh, htrl) VALUES ('0000000001', 315)"_s,
            u"INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, dqywx, dqywxmc, czy, glbm) "
            u"VALUES ('0000000001', '401', '0000000001', '青禾机械厂', '40101', '检查任务下达', 'czy01', '0101')"_s,
            u"INSERT INTO y_yxdnb (txm, hh, jldbh, dblb, dl, xx, dw) VALUES ('TXM001', '0000000001', '1', '有功表', '5A', '三相四线', '0101')"_s,
            u"INSERT INTO y_yxhgq (hgqbh, hh, jldbh, hgqlb, zs, dw) VALUES ('H001', '0000000001', '1', 'TA', 3, '0101')"_s,
            u"INSERT INTO a_dnbfa (id, cdbh, hh, jldbh, txm, dblb, gzlx, bgsm) VALUES ('D000000001', '0000000001', '0000000001', '1', 'TXM001', '有功表', 'G1', '换取')"_s,
            u"INSERT INTO a_dnbfa (id, cdbh, hh, jldbh, dblb, bgsm) VALUES ('D000000002', '0000000001', '0000000001', '1', '有功表', '新装')"_s,
            u"INSERT INTO a_hgqfa (id, cdbh, hh, jldbh, hgqbh, hgqlb, bgsm, zs) VALUES ('H000000001', '0000000001', '0000000001', '1', 'H001', 'TA', '新装', 1)"_s,
            u"INSERT INTO b_tbjl (tbcdh, glcdbh, hh) VALUES ('T000000001', '0000000001', '0000000001')"_s,
            u"INSERT INTO b_tbdfxx (tbcdh, hh, ny, fdl, gdl, pdl, fdf, gdf, pdf, dsk6, dsk7, rldf, xldf, lldf) "
            u"VALUES ('T000000001', '0000000001', '202402', 10, 20, 30, 1, 2, 3, 0, 0, 0, 0, 0)"_s,
            u"INSERT INTO j_wyydqd (cdbh, hh) VALUES ('W000000001', '0000000001')"_s,
            u"INSERT INTO j_wymx (cdbh, xh, wyxm) VALUES ('W000000001', 1, '窃电')"_s,
        };
        for (const QString& sql : fixture) db->exec(sql);
    }
    void TearDown() override {
        FreeDataModules();
        db.reset();
    }

    // A value for each parameter name that the fixture answers.
    static QString valueFor(const QString& param) {
        static const QMap<QString, QString> values{
            {u"HH"_s, kHh},       {u"KHBH"_s, kHh},       {u"CDBH"_s, kCdbh},   {u"AC_CDBH"_s, kCdbh},
            {u"SJCPH"_s, kJcph},  {u"DW"_s, u"0101"_s},    {u"JHLX"_s, u"年计划"_s}, {u"NY"_s, u"202402"_s},
            {u"AI_DM"_s, u"1"_s},
        };
        return values.value(param.toUpper(), u"?"_s);
    }

    static void bindAll(TMidasQuery* q) {
        for (int i = 0; i < q->Params().Count(); ++i) q->Params()[i].SetAsString(valueFor(q->Params()[i].Name));
    }

    static QStringList column(TMidasQuery* q, const QString& field) {
        QStringList out;
        for (q->First(); !q->Eof(); q->Next()) out << q->FieldByName(field).AsString();
        return out;
    }

    QString scalarText(const QString& nativeSql) { return db->scalar(nativeSql).toString(); }

    std::unique_ptr<TestDatabase> db;
};

TEST_P(DataModulesOnEngine, EveryStoredTextRuns) {
    QStringList failures;
    int ran = 0;
    for (QObject* m : DataModules())
        for (TMidasQuery* q : queriesOf(m)) {
            if (q->SQL().Count() == 0) continue;
            const QString name = m->objectName() + u'.' + q->objectName();
            bindAll(q);
            try {
                if (q->SQL()[0].trimmed().compare(u"begin"_s, Qt::CaseInsensitive) == 0)
                    q->ExecSQL();
                else
                    q->Open();
                ++ran;
            } catch (const std::exception& e) {
                failures << name + u": "_s + QString::fromUtf8(e.what());
            }
            q->Close();
        }
    EXPECT_GE(ran + failures.size(), 60);
    EXPECT_TRUE(failures.isEmpty()) << failures.size() << " failed:\n" << failures.join(u'\n').toStdString();
}

TEST_P(DataModulesOnEngine, CodeListsAnswerAsDesigned) {
    // The unit with its subordinate units, not its parent or siblings.
    TMidasQuery* dw = Jc_Main_Dm->Mqry_Dw;
    dw->Params()[0].SetAsString(u"0101"_s);  // screens bind by position too
    dw->Open();
    QStringList units = column(dw, u"DM"_s);
    units.sort();
    EXPECT_EQ(units, (QStringList{u"0101"_s, u"010101"_s}));

    // "All" heads the list of business-expansion kinds.
    TMidasQuery* ywlb = Jc_Main_Dm->Mqry_Ywlb;
    ywlb->Open();
    ASSERT_FALSE(ywlb->IsEmpty());
    ywlb->First();
    EXPECT_EQ(ywlb->FieldByName(u"YWDM"_s).AsString(), u"000"_s);
    EXPECT_EQ(ywlb->FieldByName(u"YWMC"_s).AsString(), u"全部"_s);
    const QStringList kinds = column(ywlb, u"YWDM"_s);
    EXPECT_TRUE(kinds.contains(u"101"_s));
    EXPECT_FALSE(kinds.contains(u"130"_s)) << "customer-service kinds are not listed";

    // The scheduling template opens empty, with the task table's columns.
    TMidasQuery* jhbp = Jc_Tarvin_Dm->MQry_Jhbp;
    jhbp->Open();
    EXPECT_TRUE(jhbp->IsEmpty());
    EXPECT_GE(jhbp->FindFieldIndex(u"JCPH"_s), 0);
    EXPECT_GE(jhbp->FindFieldIndex(u"ZT"_s), 0);
}

TEST_P(DataModulesOnEngine, OuterJoinedListsKeepRowsWithoutPartner) {
    // Plans of the unit and kind, also when the drafting department is gone.
    TMidasQuery* jcjh = Jc_Tarvin_Dm->MQry_Jcjh;
    jcjh->ParamByName(u"dw"_s).SetAsString(u"0101"_s);
    jcjh->ParamByName(u"jhlx"_s).SetAsString(u"年计划"_s);
    jcjh->Open();
    jcjh->SetIndexFieldNames(u"JHBH"_s);
    EXPECT_EQ(column(jcjh, u"JHBH"_s), (QStringList{u"0001"_s, u"0002"_s}));
    EXPECT_EQ(column(jcjh, u"ZDBMMC"_s), (QStringList{u"用电检查班"_s, QString()}));

    // The suspicious-customer row with its main feeder and public area.
    TMidasQuery* kykhcx = Jc_Tarvin_Dm->MQry_Kykhcx;
    kykhcx->ParamByName(u"hh"_s).SetAsString(kHh);
    kykhcx->Open();
    ASSERT_EQ(kykhcx->RecordCount(), 1);
    EXPECT_EQ(kykhcx->FieldByName(u"KHLX"_s).AsString(), u"高压用户"_s);
    EXPECT_EQ(kykhcx->FieldByName(u"KHLXDM"_s).AsString(), u"01"_s);
    EXPECT_EQ(kykhcx->FieldByName(u"XLBH"_s).AsString(), u"X001"_s);
    EXPECT_EQ(kykhcx->FieldByName(u"TQBH"_s).AsString(), u"T001"_s);

    // Operating meters with this case's change mark beside them.
    TMidasQuery* dnbBg = Jc_Tarvin_Dm->Mqry_DnbBg;
    dnbBg->ParamByName(u"hh"_s).SetAsString(kHh);
    dnbBg->Open();
    EXPECT_EQ(column(dnbBg, u"BGSM"_s), QStringList{u"换取"_s});
}

TEST_P(DataModulesOnEngine, PlansAreAddedChangedAndDeletedByApplyingUpdates) {
    TMidasQuery* jcjh = Jc_Tarvin_Dm->MQry_Jcjh;
    jcjh->ParamByName(u"dw"_s).SetAsString(u"0101"_s);
    jcjh->ParamByName(u"jhlx"_s).SetAsString(u"月计划"_s);
    jcjh->Open();
    jcjh->Append();
    jcjh->FieldByName(u"jhbh"_s).SetAsString(u"0004"_s);
    jcjh->FieldByName(u"jhlx"_s).SetAsString(u"月计划"_s);
    jcjh->FieldByName(u"jcnr"_s).SetAsString(u"复查"_s);
    jcjh->FieldByName(u"dw"_s).SetAsString(u"0101"_s);
    jcjh->Post();
    EXPECT_EQ(jcjh->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT jcnr FROM e_jcjh WHERE jhbh='0004'"_s), u"复查"_s);
    ASSERT_TRUE(jcjh->Locate(u"JHBH"_s, u"0003"_s));
    jcjh->Edit();
    jcjh->FieldByName(u"jcnr"_s).SetAsString(u"居民用户"_s);
    jcjh->Post();
    EXPECT_EQ(jcjh->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT jcnr FROM e_jcjh WHERE jhbh='0003'"_s), u"居民用户"_s);
    ASSERT_TRUE(jcjh->Locate(u"JHBH"_s, u"0004"_s));
    jcjh->Delete();
    EXPECT_EQ(jcjh->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT COUNT(*) FROM e_jcjh"_s), u"3"_s);
}

TEST_P(DataModulesOnEngine, ScheduledTasksAndApprovalsReachTheTaskTable) {
    // A task scheduled into the empty template.
    TMidasQuery* jhbp = Jc_Tarvin_Dm->MQry_Jhbp;
    jhbp->Open();
    jhbp->Insert();
    jhbp->FieldByName(u"cdbh"_s).SetAsString(u"0000000002"_s);
    jhbp->FieldByName(u"HH"_s).SetAsString(kHh);
    jhbp->FieldByName(u"ZT"_s).SetAsString(u"未审批"_s);
    jhbp->Post();
    EXPECT_EQ(jhbp->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT zt FROM e_jcgzjl WHERE cdbh='0000000002'"_s), u"未审批"_s);

    // Approval: the joined names are not written back, the status is.
    TMidasQuery* jcgzjl = Jc_Tarvin_Dm->MQry_Jcgzjl;
    jcgzjl->ParamByName(u"sJcph"_s).SetAsString(kJcph);
    jcgzjl->Open();
    ASSERT_EQ(jcgzjl->RecordCount(), 1);
    EXPECT_EQ(jcgzjl->FieldByName(u"KHLXMC"_s).AsString(), u"高压用户"_s);
    jcgzjl->Edit();
    jcgzjl->FieldByName(u"zt"_s).SetAsString(u"已审批"_s);
    jcgzjl->Post();
    EXPECT_EQ(jcgzjl->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT zt FROM e_jcgzjl WHERE cdbh='0000000001'"_s), u"已审批"_s);
}

TEST_P(DataModulesOnEngine, InstalledEquipmentOfACaseIsStoredByApplyingUpdates) {
    TMidasQuery* dnbfa = Jc_Tarvin_Dm->Mqry_Dnbfa;
    dnbfa->ParamByName(u"CDBH"_s).SetAsString(kCdbh);
    dnbfa->Open();
    EXPECT_EQ(dnbfa->RecordCount(), 1);
    dnbfa->Append();
    dnbfa->FieldByName(u"ID"_s).SetAsString(u"D000000003"_s);
    dnbfa->FieldByName(u"CDBH"_s).SetAsString(kCdbh);
    dnbfa->FieldByName(u"BGSM"_s).SetAsString(u"新装"_s);
    dnbfa->FieldByName(u"SSLX"_s).SetAsString(u"D"_s);
    dnbfa->Post();
    EXPECT_EQ(dnbfa->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT sslx FROM a_dnbfa WHERE id='D000000003'"_s), u"D"_s);

    TMidasQuery* hgqfa = Jc_Tarvin_Dm->Mqry_Hgqfa;
    hgqfa->ParamByName(u"cdbh"_s).SetAsString(kCdbh);
    hgqfa->Open();
    ASSERT_EQ(hgqfa->RecordCount(), 1);
    hgqfa->Edit();
    hgqfa->FieldByName(u"HGQBB"_s).SetAsString(u"100/5"_s);
    hgqfa->Post();
    EXPECT_EQ(hgqfa->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT hgqbb FROM a_hgqfa WHERE id='H000000001'"_s), u"100/5"_s);
}

TEST_P(DataModulesOnEngine, BusinessUndoWithdrawsTheApplication) {
    ASSERT_EQ(scalarText(u"SELECT COUNT(*) FROM a_khsqxx WHERE cdbh='0000000001'"_s), u"1"_s);
    DataSet_Yk_Dm->UndoYysq(kCdbh);
    EXPECT_EQ(scalarText(u"SELECT COUNT(*) FROM a_khsqxx WHERE cdbh='0000000001'"_s), u"0"_s);
    EXPECT_EQ(scalarText(u"SELECT COUNT(*) FROM a_ykkzb WHERE cdbh='0000000001'"_s), u"0"_s);
    EXPECT_FALSE(DataSet_Yk_Dm->Mqry_Select->Active());
}

TARVIN_INSTANTIATE_ENGINES(DataModulesOnEngine);

}  // namespace
