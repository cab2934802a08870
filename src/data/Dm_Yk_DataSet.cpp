#include "Dm_Yk_DataSet.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignQuery;

TDataSet_Yk_Dm* DataSet_Yk_Dm = nullptr;

TDataSet_Yk_Dm::TDataSet_Yk_Dm(QObject* owner) : QObject(owner) {
    setObjectName(u"DataSet_Yk_Dm"_s);
    // Queries without a stored text are written by the screens of the
    // business-expansion module; the others read one document's or one
    // customer's rows.
    Mqry_Select = DesignQuery(this, u"Mqry_Select"_s);
    Mqry_Dyfa = DesignQuery(this, u"Mqry_Dyfa"_s);
    Mqry_Gxfa = DesignQuery(this, u"Mqry_Gxfa"_s);
    Mqry_Ykkzb = DesignQuery(this, u"Mqry_Ykkzb"_s, {u"select * from A_YKKZB"_s, u"where CDBH=:CDBH"_s}, {u"CDBH"_s});
    Mqry_Dyxx = DesignQuery(this, u"Mqry_Dyxx"_s);
    Mqry_Khsqxx = DesignQuery(this, u"Mqry_Khsqxx"_s, {u"select * from A_KHSQXX"_s, u"where CDBH=:CDBH"_s}, {u"CDBH"_s});
    Mqry_Khgc = DesignQuery(this, u"Mqry_Khgc"_s);
    Mqry_Bzb_Jdfs = DesignQuery(this, u"Mqry_Bzb_Jdfs"_s);
    Mqry_Bzb_Jhfs = DesignQuery(this, u"Mqry_Bzb_Jhfs"_s);
    Mqry_Bzb_Dybhfs = DesignQuery(this, u"Mqry_Bzb_Dybhfs"_s);
    Mqry_Fylb = DesignQuery(this, u"Mqry_Fylb"_s);
    Mqry_Ywysf = DesignQuery(this, u"Mqry_Ywysf"_s);
    Mqry_Update = DesignQuery(this, u"Mqry_Update"_s);
    Mqry_Bzb_Jxfs = DesignQuery(this, u"Mqry_Bzb_Jxfs"_s);
    Mqry_Ywssf = DesignQuery(this, u"Mqry_Ywssf"_s);
    Mqry_Bzb_Jmlx = DesignQuery(this, u"Mqry_Bzb_Jmlx"_s);
    Mqry_Bzb_Skfs = DesignQuery(this, u"Mqry_Bzb_Skfs"_s);
    Mqry_Xlsb = DesignQuery(this, u"Mqry_Xlsb"_s, {u"select * from Y_XL"_s, u"where DW=:DW"_s, u"order by XLBH"_s}, {u"DW"_s});
    Mqry_Bzb_Jjlx = DesignQuery(this, u"Mqry_Bzb_Jjlx"_s);
    Mqry_Bzb_Zgj = DesignQuery(this, u"Mqry_Bzb_Zgj"_s);
    Mqry_Khda = DesignQuery(this, u"Mqry_Khda"_s, {u"select * from Y_KHDA"_s, u"where HH=:HH"_s}, {u"HH"_s});
    Mqry_Bh = DesignQuery(this, u"Mqry_Bh"_s);
    Mqry_Sdd = DesignQuery(this, u"Mqry_Sdd"_s);
    Mqry_Jgys = DesignQuery(this, u"Mqry_Jgys"_s);
    Mqry_H_Khsqxx = DesignQuery(this, u"Mqry_H_Khsqxx"_s, {u"select * from A_H_KHSQXX"_s, u"where CDBH=:CDBH"_s}, {u"CDBH"_s});
    Mqry_Hlgcf = DesignQuery(this, u"Mqry_Hlgcf"_s);
    Mqry_Gcdef = DesignQuery(this, u"Mqry_Gcdef"_s);
    Mqry_Jbf = DesignQuery(this, u"Mqry_Jbf"_s);
    Mqry_Pbf = DesignQuery(this, u"Mqry_Pbf"_s);
    Mqry_Tf = DesignQuery(this, u"Mqry_Tf"_s);
    Mqry_Dfsb = DesignQuery(this, u"Mqry_Dfsb"_s);
    Mqry_Hbzz = DesignQuery(this, u"Mqry_Hbzz"_s);
    Mqry_Gctzkh = DesignQuery(this, u"Mqry_Gctzkh"_s);
    Mqry_Tzsf = DesignQuery(this, u"Mqry_Tzsf"_s);
    Mqry_Gxbh = DesignQuery(this, u"Mqry_Gxbh"_s);
    Mqry_Bjsf = DesignQuery(this, u"Mqry_Bjsf"_s);
    Mqry_LsXlxx = DesignQuery(this, u"Mqry_LsXlxx"_s);
    Mqry_Khdlsb = DesignQuery(this, u"Mqry_Khdlsb"_s);
    Mqry_Dyxz = DesignQuery(this, u"Mqry_Dyxz"_s);
    Mqry_Gddy = DesignQuery(this, u"Mqry_Gddy"_s, {u"select * from Y_GDDY"_s, u"where HH=:HH"_s, u"order by XH"_s}, {u"HH"_s});
    Mqry_Lddy = DesignQuery(this, u"Mqry_Lddy"_s);
    Mqry_Jd = DesignQuery(this, u"Mqry_Jd"_s);
    Mqry_Jwh = DesignQuery(this, u"Mqry_Jwh"_s);
    Mqry_Qy = DesignQuery(this, u"Mqry_Qy"_s, {u"select * from W_QY"_s});
    Mqry_Gnk = DesignQuery(this, u"Mqry_Gnk"_s);
    Mqry_select1 = DesignQuery(this, u"Mqry_select1"_s);
    Mqry_Zjjh = DesignQuery(this, u"Mqry_Zjjh"_s);
    Mqry_dnbzc = DesignQuery(this, u"Mqry_dnbzc"_s, {u"select * from Y_YXDNB"_s, u"where HH=:HH"_s, u"order by JLDBH"_s}, {u"HH"_s});
    Mqry_byqda = DesignQuery(this, u"Mqry_byqda"_s, {u"select * from Y_YXBYQ"_s, u"where HH=:HH"_s}, {u"HH"_s});
    Mqry_hgqzc = DesignQuery(this, u"Mqry_hgqzc"_s, {u"select * from Y_YXHGQ"_s, u"where HH=:HH"_s, u"order by JLDBH"_s}, {u"HH"_s});
    Mqry_Gdfa = DesignQuery(this, u"Mqry_Gdfa"_s, {u"select * from A_GDFA"_s, u"where CDBH=:CDBH"_s}, {u"CDBH"_s});
    Mqry_Spjl = DesignQuery(this, u"Mqry_Spjl"_s, {u"select * from Z_LCLS"_s, u"where CDBH=:CDBH"_s, u"order by XH"_s}, {u"CDBH"_s});
    Mqry_Gcqk = DesignQuery(this, u"Mqry_Gcqk"_s);
    Mqry_Zzsh = DesignQuery(this, u"Mqry_Zzsh"_s);
    Mqry_Tzsc = DesignQuery(this, u"Mqry_Tzsc"_s);
    Mqry_Htxx = DesignQuery(this, u"Mqry_Htxx"_s, {u"select * from Y_HTXX"_s, u"where HH=:HH"_s}, {u"HH"_s});
    Mqry_Htlx = DesignQuery(this, u"Mqry_Htlx"_s);
    Mqry_Wxgc = DesignQuery(this, u"Mqry_Wxgc"_s);
    MQry_Khsqxx1 = DesignQuery(this, u"MQry_Khsqxx1"_s, {u"select * from A_KHSQXX"_s, u"where HH=:HH"_s}, {u"HH"_s});
    // The case's application joined to what a surveyor needs on site; the
    // equipment is the operating meters and transformers the scheme leaves
    // in place ('在运'), then the scheme's rows with their mark (removed
    // ones beside what replaces them). The fault kind is the finding stored
    // by an earlier send (work sheet first, control flags next), ticked
    // among the four kinds; blank boxes when nothing is stored yet.
    Mqry_Ckd = DesignQuery(this, u"Mqry_Ckd"_s, {
        u"select a.CDBH, a.HH, a.HM, a.YDDZ, a.LXR, a.LXDH, a.SQBZ, a.SQRQ, nvl(a.HTRL, k.HTRL) HTRL,"_s,
        u"       v.MC DYDJMC, x.XLMC, b.BYQMC, d.MC DWMC,"_s,
        u"       case when j.YCXZ = '错接线' or y.SFCJX = '是' then '□无故障　■错接线　□需验表　□有故障不需验表'"_s,
        u"            when j.RDYJ = '计量校验' or y.SFXYB = '是' then '□无故障　□错接线　■需验表　□有故障不需验表'"_s,
        u"            when j.YCXZ = '无故障' or y.SFYGZ = '否' then '■无故障　□错接线　□需验表　□有故障不需验表'"_s,
        u"            when j.YCXZ is not null or y.SFYGZ is not null then '□无故障　□错接线　□需验表　■有故障不需验表'"_s,
        u"            else '□无故障　□错接线　□需验表　□有故障不需验表' end YCLB,"_s,
        u"       nvl(g.MC, nvl((select min(w.MC) from A_DNBFA f, W_GZXZ w where f.CDBH = a.CDBH and w.DM = f.GZLX),"_s,
        u"                     (select min(w.MC) from A_HGQFA f, W_GZXZ w where f.CDBH = a.CDBH and w.DM = f.GZLB))) GZXZMC,"_s,
        u"       nvl(j.JCRY, r.JCRY) JCRY, nvl(j.JCZH, r.JCZH) JCZH, nvl(j.JCRQ, r.JCRQ) JCRQ, nvl(j.JCBZ, r.CZWT) JCBZ,"_s,
        u"       e.JLDBH, e.LB, e.SBBH, e.CCH, e.DY, e.GG, e.JDDJ, e.BL, e.BGSM"_s,
        u"from A_KHSQXX a"_s,
        u"  left join Y_KHDA k on k.HH = a.HH"_s,
        u"  left join W_DYDJ v on v.DM = nvl(a.DYDJ, k.DYDJ)"_s,
        u"  left join Y_GDDY s on s.HH = a.HH and s.DYXZ = '主供'"_s,
        u"  left join Y_XL x on x.XLBH = s.XLBH"_s,
        u"  left join Y_YXBYQ b on b.BYQBH = s.BYQBH"_s,
        u"  left join Z_DWBM d on d.DM = a.DW"_s,
        u"  left join E_JLYCGZD j on j.CDBH = a.CDBH"_s,
        u"  left join W_GZXZ g on g.DM = j.GZLX"_s,
        u"  left join A_YKKZB y on y.CDBH = a.CDBH"_s,
        u"  left join E_JCGZJL r on r.CDBH = a.CDBH"_s,
        u"  left join ("_s,
        u"    select q.CDBH, 1 PX, t.JLDBH, t.DBLB LB, t.TXM SBBH, t.DNBCCH CCH, t.DY, t.DL GG, t.JDDJ, t.ZHBL BL, '在运' BGSM, 0 XH"_s,
        u"      from A_KHSQXX q join Y_YXDNB t on t.HH = q.HH"_s,
        u"     where q.CDBH = :CDBH"_s,
        u"       and not exists (select 1 from A_DNBFA f where f.CDBH = q.CDBH and f.TXM = t.TXM)"_s,
        u"    union all"_s,
        u"    select f.CDBH, 1, f.JLDBH, f.DBLB, f.TXM, f.DNBCCH, f.DY, f.DL, f.JDDJ, f.ZHBL, f.BGSM,"_s,
        u"           case when f.BGSM = '新装' then 2 else 1 end"_s,
        u"      from A_DNBFA f"_s,
        u"     where f.CDBH = :CDBH"_s,
        u"    union all"_s,
        u"    select q.CDBH, 2, h.JLDBH, c.MC, h.HGQBH, h.HGQCCH, null, h.HGQBB, h.JDDJ, null, '在运', 0"_s,
        u"      from A_KHSQXX q join Y_YXHGQ h on h.HH = q.HH left join W_HGQLB c on c.DM = h.HGQLB"_s,
        u"     where q.CDBH = :CDBH"_s,
        u"       and not exists (select 1 from A_HGQFA f where f.CDBH = q.CDBH and f.HGQBH = h.HGQBH)"_s,
        u"    union all"_s,
        u"    select f.CDBH, 2, f.JLDBH, c.MC, f.HGQBH, f.HGQCCH, null, f.HGQBB, f.JDDJ, null, f.BGSM,"_s,
        u"           case when f.BGSM = '新装' then 2 else 1 end"_s,
        u"      from A_HGQFA f left join W_HGQLB c on c.DM = f.HGQLB"_s,
        u"     where f.CDBH = :CDBH"_s,
        u"  ) e on e.CDBH = a.CDBH"_s,
        u"where a.CDBH = :CDBH"_s,
        u"order by e.PX, e.JLDBH, e.LB, e.XH, e.SBBH"_s}, {u"CDBH"_s});
}

TDataSet_Yk_Dm::~TDataSet_Yk_Dm() {
    if (DataSet_Yk_Dm == this) DataSet_Yk_Dm = nullptr;
}

void TDataSet_Yk_Dm::UndoYysq(const QString& cdbh) {
    Mqry_Select->Close();
    Mqry_Select->SQL().Clear();
    Mqry_Select->SQL().Add(u"Begin Yk_UndoYysq(:ac_Cdbh); End;"_s);
    Mqry_Select->Params().Clear();
    Mqry_Select->Params().CreateParam(ftString, u"ac_CDBH"_s, ptInput);
    Mqry_Select->ParamByName(u"ac_Cdbh"_s).SetAsString(cdbh);
    Mqry_Select->ExecSQL();
    Mqry_Select->Close();
}
