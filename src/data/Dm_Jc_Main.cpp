#include "Dm_Jc_Main.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignDataSource;
using tarvin::dm::DesignQuery;

TJc_Main_Dm* Jc_Main_Dm = nullptr;

TJc_Main_Dm::TJc_Main_Dm(QObject* owner) : QObject(owner) {
    setObjectName(u"Jc_Main_Dm"_s);
    Mqry_Select = DesignQuery(this, u"Mqry_Select"_s, {u"select A.*, B.*, C.HM from J_WYYDQD A,J_WYMX B,G_KHDA C "_s,
        u"where A.CDBH=B.CDBH "_s,
        u"and A.HH=C.HH "_s,
        u"and A.HH=:HH"_s}, {u"HH"_s});
    MQry_Update = DesignQuery(this, u"MQry_Update"_s, {u"select * From all_djm"_s});
    MQry_Bm = DesignQuery(this, u"MQry_Bm"_s, {u"select DM,MC"_s,
        u"FROM z_BMBM"_s});
    MQry_Jclx = DesignQuery(this, u"MQry_Jclx"_s, {u"select * from w_jclx"_s});
    MQry_Khda = DesignQuery(this, u"MQry_Khda"_s, {u"select * from Y_KHDA"_s,
        u"WHERE HH=:HH"_s}, {u"HH"_s});
    MQry_Dydj = DesignQuery(this, u"MQry_Dydj"_s, {u"select * from W_DYDJ"_s});
    Mqry_Khlx = DesignQuery(this, u"Mqry_Khlx"_s, {u"select * from W_KHLX"_s});
    Mqry_Hylb = DesignQuery(this, u"Mqry_Hylb"_s, {u"SELECT * FROM w_zyhy"_s});
    Mqry_Dw = DesignQuery(this, u"Mqry_Dw"_s, {u"select * from v_dw where dm=:dw"_s,
        u"union"_s,
        u"select * from v_dw where sjdw=:dw"_s}, {u"dw"_s, u"dw"_s});
    MQry_Yhdm = DesignQuery(this, u"MQry_Yhdm"_s, {u"select * from w_YHDM"_s});
    Mqry_Dqgw = DesignQuery(this, u"Mqry_Dqgw"_s, {u"select CDBH,KHBH,HM,YDDZ,DQYWX,LASTYWXMC,DQYWXMC,CZY,C.XINGMING "_s,
        u"from Z_DQGW A,Z_LCJD B,Z_XTCZY C"_s,
        u"where A.DQYWX = B.YWXDM"_s,
        u"and A.CZY = C.DM(+)"_s}, {}, u"CDBH"_s);
    Mqry_Xzqh = DesignQuery(this, u"Mqry_Xzqh"_s, {u"select * from w_QY"_s});
    Mqry_Ydlb = DesignQuery(this, u"Mqry_Ydlb"_s, {u"select * from W_ydlb"_s});
    Mqry_Xltq = DesignQuery(this, u"Mqry_Xltq"_s, {u"select * from g_gytqshfx "_s,
        u" where dw=:dw and  ny=:ny "_s}, {u"dw"_s, u"ny"_s});
    Mqry_Ywlb = DesignQuery(this, u"Mqry_Ywlb"_s, {u"select ywdm,ywmc from z_dlyxyw "_s,
        u"               where ywlbdm='0001'"_s,
        u"union"_s,
        u"select '000' ywdm,'全部' ywmc from dual"_s,
        u"order by ywdm"_s});
    Mqry_dl = DesignQuery(this, u"Mqry_dl"_s, {u"select * from w_dl"_s});
    Mqry_hgqlb = DesignQuery(this, u"Mqry_hgqlb"_s, {u"select * from w_hgqlb"_s});
    Mqry_dblb = DesignQuery(this, u"Mqry_dblb"_s, {u"select * from w_dblb"_s});
    Mqry_jddj = DesignQuery(this, u"Mqry_jddj"_s, {u"select * from w_dnbjd"_s});
    Mqry_Xx = DesignQuery(this, u"Mqry_Xx"_s, {u"select * from w_xx"_s});
    Mqry_hgqjd = DesignQuery(this, u"Mqry_hgqjd"_s, {u"select * from w_hgqjd"_s});
    Mqry_dnbdy = DesignQuery(this, u"Mqry_dnbdy"_s, {u"Select * From W_dbdy"_s});
    Mqry_Djm = DesignQuery(this, u"Mqry_Djm"_s, {u"SELECT djm, djm||' | '||djmc djmc"_s,
        u" FROM b_djb"_s});

    Ds_Select = DesignDataSource(this, u"Ds_Select"_s, Mqry_Select);
    Ds_Bm = DesignDataSource(this, u"Ds_Bm"_s, MQry_Bm);
    Ds_Jclx = DesignDataSource(this, u"Ds_Jclx"_s, MQry_Jclx);
    Ds_Dydj = DesignDataSource(this, u"Ds_Dydj"_s, MQry_Dydj);
    Ds_Khlx = DesignDataSource(this, u"Ds_Khlx"_s, Mqry_Khlx);
    Ds_Hylb = DesignDataSource(this, u"Ds_Hylb"_s, Mqry_Hylb);
    Ds_Dw = DesignDataSource(this, u"Ds_Dw"_s, Mqry_Dw);
    Ds_Ydlb = DesignDataSource(this, u"Ds_Ydlb"_s, Mqry_Ydlb);
    Ds_Xltq = DesignDataSource(this, u"Ds_Xltq"_s, Mqry_Xltq);
    Ds_Ywlb = DesignDataSource(this, u"Ds_Ywlb"_s, Mqry_Ywlb);
    Ds_dl = DesignDataSource(this, u"Ds_dl"_s, Mqry_dl);
    Ds_hgqlb = DesignDataSource(this, u"Ds_hgqlb"_s, Mqry_hgqlb);
    Ds_dblb = DesignDataSource(this, u"Ds_dblb"_s, Mqry_dblb);
    Ds_jddj = DesignDataSource(this, u"Ds_jddj"_s, Mqry_jddj);
    Ds_Xx = DesignDataSource(this, u"Ds_Xx"_s, Mqry_Xx);
    Ds_dnbdy = DesignDataSource(this, u"Ds_dnbdy"_s, Mqry_dnbdy);
    Ds_Djm = DesignDataSource(this, u"Ds_Djm"_s, Mqry_Djm);
}

TJc_Main_Dm::~TJc_Main_Dm() {
    if (Jc_Main_Dm == this) Jc_Main_Dm = nullptr;
}

TJc_Main_Dm& MainDm() {
    if (!Jc_Main_Dm) throw EDatabaseError(QStringLiteral("Jc_Main_Dm: the data module is not created"));
    return *Jc_Main_Dm;
}
