#include "Dm_Jc_Tarvin.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignDataSource;
using tarvin::dm::DesignQuery;
using tarvin::dm::DesignUpdates;

TJc_Tarvin_Dm* Jc_Tarvin_Dm = nullptr;

TJc_Tarvin_Dm::TJc_Tarvin_Dm(QObject* owner) : QObject(owner) {
    setObjectName(u"Jc_Tarvin_Dm"_s);
    MQry_Jcjh = DesignQuery(this, u"MQry_Jcjh"_s, {u"select jhbh, jhlx, zdr, zdrq, zdbm, dw,"_s,
        u"jhjcqrq, jhjczrq, "_s,
        u"jcbm, jchs, jcnr, bz,b.mc zdbmmc "_s,
        u"from e_jcjh a,z_bmbm b"_s,
        u" where a.dw=:dw "_s,
        u"   and a.jhlx=:jhlx "_s,
        u"    and a.zdbm=b.dm(+)"_s}, {u"dw"_s, u"jhlx"_s});
    MQry_Jcry = DesignQuery(this, u"MQry_Jcry"_s, {u"select A.*,B.XINGMING XM"_s,
        u" from  E_JCRYXX A,Z_XTCZY B"_s,
        u"WHERE A.CZYDM=B.DM(+)"_s});
    MQry_Kykhcx = DesignQuery(this, u"MQry_Kykhcx"_s, {u"select a.hh hh,a.hm hm,a.yddz yddz,A.KHLX KHLXDM,"_s,
        u"(select mc from w_khlx where dm=a.khlx) khlx,a.htrl htrl,"_s,
        u"a.dydj dydj,a.scjcrq scjcrq,a.jczq jczq,a.zxr zxr,"_s,
        u"a.lxr lxr,a.lxdh lxdh,"_s,
        u"(select xlbh from y_gddy where hh=a.hh and dyxz='主供') xlbh,"_s,
        u"(select byqbh from y_gddy where hh=a.hh and dyxz='主供' "_s,
        u"and dylx='公变') tqbh"_s,
        u" from Y_Khda a"_s,
        u"where hh=:hh"_s}, {u"hh"_s}, u"HH"_s);
    MQry_Jhbp = DesignQuery(this, u"MQry_Jhbp"_s, {u"SELECT * FROM E_JCGZJL"_s,
        u" WHERE CDBH='00001'"_s}, {}, u"CDBH"_s);
    MQry_Jcqkll = DesignQuery(this, u"MQry_Jcqkll"_s, {u"select A.*,B.MC JCLXMC"_s,
        u" from E_Jcgzjl A,W_JCLX B"_s,
        u" where a.jclx=b.dm(+)"_s});
    MQry_Jcgzjl = DesignQuery(this, u"MQry_Jcgzjl"_s, {u"select A.*,c.mc khlxmc,D.MC DYDJMC,"_s,
        u"to_char(a.jhjcrq,'yyyy-mm-dd') jcrqjh "_s,
        u"from e_Jcgzjl A,w_khlx c,W_DYDJ D"_s,
        u"where "_s,
        u"a.khlx=c.dm(+)"_s,
        u"AND A.DYDJ=D.DM(+)"_s,
        u"and a.jcph=:sJcph"_s,
        u""_s},  // the stored text ends with an empty line
        {u"sJcph"_s});
    MQry_Jcjgjl = DesignQuery(this, u"MQry_Jcjgjl"_s, {u"select A.* "_s,
        u"from e_jcgzjl A"_s,
        u"where  A.zt<>'未审批'"_s,
        u"and A.CDBH=:CDBH"_s}, {u"CDBH"_s}, u"CDBH"_s);
    MQry_Jcxm = DesignQuery(this, u"MQry_Jcxm"_s, {u"select * from W_JCXM"_s});
    MQry_Jcqk = DesignQuery(this, u"MQry_Jcqk"_s, {u"select cdbh,  DM,  MC, XCQK"_s,
        u"from e_jcjg"_s,
        u"WHERE CDBH=:CDBH"_s}, {u"CDBH"_s}, u"DM"_s);
    MQry_Khda = DesignQuery(this, u"MQry_Khda"_s, {u"select a.*,b.mc xzqmc from Y_KHDA a,w_qy b "_s,
        u"where hh=:HH"_s,
        u"and a.xzq=b.dm(+)"_s}, {u"HH"_s});
    Mqry_Jcgzap = DesignQuery(this, u"Mqry_Jcgzap"_s, {u"select jcph,b.mc jcbmmc,jcnr,spr,spyj,sprq,dw,"_s,
        u"bz jhbz,zdr,to_char(zdsj,'yyyy-mm-dd') zdrq "_s,
        u"from e_jcgzap  a, z_bmbm b"_s,
        u"where "_s,
        u"a.jcbm=b.dm(+) and "_s,
        u"jcph=:sJcph "_s}, {u"sJcph"_s});
    Mqry_Update = DesignQuery(this, u"Mqry_Update"_s);
    Mqry_Qxqk = DesignQuery(this, u"Mqry_Qxqk"_s, {u"select * from E_QXQKJL"_s});
    Mqry_Qxxz = DesignQuery(this, u"Mqry_Qxxz"_s, {u"select * from w_qxxz"_s});
    Mqry_DnbBg = DesignQuery(this, u"Mqry_DnbBg"_s, {u"select a.jfdbh,a.byqbh,"_s,
        u"a.txm,a.jldbh,a.dnbcch,a.dl,a.dy,a.jddj,"_s,
        u"a.xx,a.dblb,B.BGSM,B.ID,"_s,
        u"A.YGXSJSFS,A.WGXSJSFS,A.YGXSJSZ,A.WGXSJSZ,"_s,
        u"A.CBLB,A.CBSX,A.CKBBZ,a.jfdbh,A.BJ,a.gkbbz,"_s,
        u"a.jlzzdfl,a.byqbh,A.ZBWZ,A.JBH,a.dw"_s,
        u"from Y_YXDNB A,A_DNBFA B"_s,
        u"where A.HH = :hh"_s,
        u"and A.TXM = B.TXM(+)"_s,
        u"order by A.JLDBH"_s}, {u"hh"_s});
    Mqry_HgqBg = DesignQuery(this, u"Mqry_HgqBg"_s, {u"select A.*,B.BGSM,B.ID,C.MC HGQLBMC"_s,
        u"from Y_YXHGQ A,A_HGQFA B,W_HGQLB C"_s,
        u"where A.HH = :HH"_s,
        u"and A.HGQBH = B.HGQBH(+)"_s,
        u"AND A.HGQLB= C.DM(+)"_s,
        u"order by A.JLDBH"_s}, {u"HH"_s});
    Mqry_Gzxz = DesignQuery(this, u"Mqry_Gzxz"_s, {u"select * from w_gzxz"_s});
    Mqry_Select = DesignQuery(this, u"Mqry_Select"_s);
    MQry_Khsqxx = DesignQuery(this, u"MQry_Khsqxx"_s, {u"select a.*,b.mc xzqmc from a_KHSQXX a,w_qy b"_s,
        u" where CDBH=:CDBH and"_s,
        u"a.xzq=b.dm(+)"_s}, {u"CDBH"_s});
    Mqry_Tbxx = DesignQuery(this, u"Mqry_Tbxx"_s, {u" select A.*,(A.FDL+A.GDL+A.PDL) ZDL,"_s,
        u"       (A.FDF+A.GDF+A.PDF+A.DSK6+A.DSK7+A.RLDF+A.XLDF+A.LLDF) ZDF "_s,
        u"   from b_tbdfxx A,B_TBJL B"_s,
        u"    where  A.TBCDH=B.TBCDH "_s,
        u"      AND B.GLCDBH=:cdbh"_s}, {u"cdbh"_s});
    Mqry_Bjbg = DesignQuery(this, u"Mqry_Bjbg"_s, {u"select jldbh,bgsm,dnbcch,dblb,b.mc gzlxmc,"_s,
        u"       xx,dy,dl,zhbl "_s,
        u"   from A_DNBFA a,w_gzxz b"_s,
        u"     where a.gzlx=b.dm(+)"_s,
        u"      and bgsm='换取'"_s,
        u"                and  cdbh=:cdbh"_s}, {u"cdbh"_s});
    Mqry_Kykhjls = DesignQuery(this, u"Mqry_Kykhjls"_s);
    Mqry_Jlyctbjl = DesignQuery(this, u"Mqry_Jlyctbjl"_s, {u"begin"_s,
        u"  jc_jlyctbjl"_s,
        u"("_s,
        u"   :ac_cdbh ,"_s,
        u"   :ai_dm"_s,
        u");"_s,
        u"end;"_s}, {u"ac_cdbh"_s, u"ai_dm"_s});
    Mqry_Dnbfa = DesignQuery(this, u"Mqry_Dnbfa"_s, {u"select * from A_DNBFA"_s,
        u"where  CDBH = :CDBH"_s,
        u"and BGSM = '新装'"_s}, {u"CDBH"_s});
    Mqry_Hgqfa = DesignQuery(this, u"Mqry_Hgqfa"_s, {u"select A.* from A_HGQFA A"_s,
        u"where A.cdbh = :cdbh"_s,
        u"and A.BGSM = '新装'"_s,
        u"order by JLDBH"_s}, {u"cdbh"_s});

    // Rows that screens insert, edit or delete on these datasets are
    // written back by applying their cached updates.
    DesignUpdates(MQry_Jcjh, u"E_JCJH"_s, {u"JHBH"_s});
    DesignUpdates(MQry_Jhbp, u"E_JCGZJL"_s, {u"CDBH"_s});
    DesignUpdates(MQry_Jcgzjl, u"E_JCGZJL"_s, {u"CDBH"_s});
    DesignUpdates(Mqry_Dnbfa, u"A_DNBFA"_s, {u"ID"_s});
    DesignUpdates(Mqry_Hgqfa, u"A_HGQFA"_s, {u"ID"_s});

    Ds_Jcjh = DesignDataSource(this, u"Ds_Jcjh"_s, MQry_Jcjh);
    Ds_Kykhcx = DesignDataSource(this, u"Ds_Kykhcx"_s, MQry_Kykhcx);
    Ds_Jhbp = DesignDataSource(this, u"Ds_Jhbp"_s, MQry_Jhbp);
    Ds_Jcqkll = DesignDataSource(this, u"Ds_Jcqkll"_s, MQry_Jcqkll);
    Ds_Jcgzjl = DesignDataSource(this, u"Ds_Jcgzjl"_s, MQry_Jcgzjl);
    Ds_Jcgzap = DesignDataSource(this, u"Ds_Jcgzap"_s, Mqry_Jcgzap);
    Ds_DnbBg = DesignDataSource(this, u"Ds_DnbBg"_s, Mqry_DnbBg);
    Ds_HgqBg = DesignDataSource(this, u"Ds_HgqBg"_s, Mqry_HgqBg);
    Ds_Gzxz = DesignDataSource(this, u"Ds_Gzxz"_s, Mqry_Gzxz);
    Ds_Dnbfa = DesignDataSource(this, u"Ds_Dnbfa"_s, Mqry_Dnbfa);
    Ds_Hgqfa = DesignDataSource(this, u"Ds_Hgqfa"_s, Mqry_Hgqfa);
}

TJc_Tarvin_Dm::~TJc_Tarvin_Dm() {
    if (Jc_Tarvin_Dm == this) Jc_Tarvin_Dm = nullptr;
}

TJc_Tarvin_Dm& Tarvin() {
    if (!Jc_Tarvin_Dm) throw EDatabaseError(QStringLiteral("Jc_Tarvin_Dm: the data module is not created"));
    return *Jc_Tarvin_Dm;
}
