#include "Unt_Jc_Kycslb.h"

#include <algorithm>

#include "common/unt_jc_fuc.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kYear = u"年份输入不合法，请检查！"_s;
const QString kNy = u"年月输入不合法，请检查！"_s;
const QString kMonths = u"月数输入不合法，请检查！"_s;
const QString kSwing = u"波动百分比输入不合法，请检查！"_s;

TKycsParam Edit(const QString& name, const QString& control, const QString& def, TKycsCheck check = TKycsCheck::None,
                const QString& message = {}) {
    return {.Name = name, .Control = control, .Default = def, .Check = check, .Message = message};
}
TKycsParam Ny(const QString& name, const QString& control) {
    return {.Name = name, .Control = control, .From = TKycsDefault::ServerNy, .Check = TKycsCheck::YearMonth, .Message = kNy};
}
TKycsParam Year(const QString& name, const QString& control) {
    return {.Name = name, .Control = control, .From = TKycsDefault::ServerYear, .Check = TKycsCheck::Year, .Message = kYear};
}
TKycsParam Date(const QString& name, const QString& control, int daysBefore = 0) {
    return {.Name = name, .Control = control, .Type = TKycsType::Date, .From = TKycsDefault::ServerDate, .DaysBefore = daysBefore};
}
// The billing year-month every page-1 category reads.
TKycsParam Dfny() { return Ny(u"NY"_s, u"Edt_Dfny"_s); }

// A ledger row's energy: peak, flat and valley.
const QString kEnergy = u"nvl(jffdl,0)+nvl(jfpdl,0)+nvl(jfgdl,0)"_s;
// 10-12: from the month after the last one with energy up to the month.
const TKycsReason kZeroRun{
    u"select min(ny) qsny from b_dltzxx where hh=:HH and ny<=:NY and ny>nvl((select max(ny) from b_dltzxx "
    "where hh=:HH and ny<=:NY and "_s + kEnergy + u"<>0),'0')"_s,
    u"{QSNY}–{:NY} 连续 {LXLDYS} 个月零电量"_s};
// 20, 21, 40: the cases counted in the year.
const TKycsReason kYearCount{{}, u"{:NF} 年 {CS} 次，多于 {:CS} 次"_s};

QVector<TKycsCategory> build() {
    return {
        {.Code = 1, .Caption = u"线路线损考核异常客户"_s, .Page = 0, .Radio = u"Rb_Xlxsyc"_s, .RadioEnabled = false,
         .Sql = {u" SELECT a.*,b.xlmc FROM V_YCKHDA a,y_xl b  where a.xlbh=b.xlbh(+) and "_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a,y_xl b  where a.xlbh=b.xlbh(+) and "_s},
         .Columns = {{u"XLBH"_s, u"线路编号"_s}, {u"XLMC"_s, u"线路名称"_s}},
         .RequiredFilter = u"XLBH"_s, .AreaList = true,
         .Reason = {{}, u"线路 {XLBH} {XLMC}"_s}},
        {.Code = 2, .Caption = u"台区线损考核异常客户"_s, .Page = 0, .Radio = u"Rb_Tqxsyc"_s,
         .Sql = {u" SELECT a.*,(select byqmc from y_yxbyq where byqbh=a.tqbh) byqmc  FROM V_YCKHDA a where  "_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a where  "_s},
         .Columns = {{u"TQBH"_s, u"台区编号"_s}, {u"BYQMC"_s, u"台区名称"_s}},
         .RequiredFilter = u"TQBH"_s, .AreaList = true,
         .Reason = {u"select ny, xsl, shsx from g_gytqshfx where tqbh=:TQBH and ny=(select max(ny) from g_gytqshfx where tqbh=:TQBH)"_s,
                    u"{NY} 台区线损率 {XSL|无}%，上限 {SHSX}%"_s}},
        {.Code = 3, .Caption = u"线路平均电价波动异常客户"_s, .Page = 0, .Radio = u"Rb_Xlpjdj"_s, .RadioEnabled = false,
         .Sql = {u" SELECT * FROM V_YCKHDA a where  XLBH in  (select xlbh from )"_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a where  XLBH in  (select xlbh from )"_s},
         .Params = {Edit(u"BDB"_s, u"Edt_Xldjbo"_s, u"30"_s, TKycsCheck::Whole, kSwing), Ny(u"NY"_s, u"edt_Shny"_s)},
         .KeepGrid = true, .Placeholder = true},
        {.Code = 4, .Caption = u"台区平均电价波动异常客户"_s, .Page = 0, .Radio = u"Rb_Tqpjdj"_s, .RadioEnabled = false,
         .Sql = {u" SELECT * FROM V_YCKHDA a where  TQBH in  (select TQBH from ) "_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a where  TQBH in  (select TQBH from ) "_s},
         .Params = {Edit(u"BDB"_s, u"Edt_Tqdjbo"_s, u"30"_s, TKycsCheck::Whole, kSwing), Ny(u"NY"_s, u"edt_Shny"_s)},
         .KeepGrid = true, .Placeholder = true},
        {.Code = 10, .Caption = u"单月零度客户"_s, .Page = 1, .Radio = u"Rb_Dyld"_s,
         .Sql = {u" SELECT * FROM V_LXLD A WHERE  NY=:NY AND LXLDYS>'0' AND "_s,
                 u" SELECT count(*) jls FROM V_LXLD A WHERE  NY=:NY AND LXLDYS>'0' AND "_s},
         .Params = {Dfny()},
         .Reason = kZeroRun},
        {.Code = 11, .Caption = u"连续几次抄表零度客户"_s, .Page = 1, .Radio = u"Rb_Lxld"_s,
         .Sql = {u" SELECT * FROM V_LXLD A WHERE  NY=:NY AND LXLDYS=:YS AND "_s,
                 u" SELECT count(*) jls FROM V_LXLD A WHERE  NY=:NY AND LXLDYS=:YS AND "_s},
         .Params = {Dfny(), Edit(u"YS"_s, u"Edt_Ldlxcs"_s, u"3"_s, TKycsCheck::Count, kMonths)},
         .Columns = {{u"LXLDYS"_s, u"连续月数"_s}},
         .Reason = kZeroRun},
        {.Code = 12, .Caption = u"连续大于几次抄表零度客户"_s, .Page = 1, .Radio = u"Rb_Lxdyld"_s,
         .Sql = {u" SELECT * FROM V_LXLD A WHERE  NY=:NY AND LXLDYS>:YS AND "_s,
                 u" SELECT count(*) jls FROM V_LXLD A WHERE  NY=:NY AND LXLDYS>:YS AND "_s},
         .Params = {Dfny(), Edit(u"YS"_s, u"Edt_Lddycs"_s, u"3"_s, TKycsCheck::Count, kMonths)},
         .Columns = {{u"LXLDYS"_s, u"连续月数"_s}},
         .Reason = kZeroRun},
        {.Code = 13, .Caption = u"前几个月平均比较电量波动异常客户"_s, .Page = 1, .Radio = u"Rb_Bydlsy"_s,
         .Sql = {u" select * from   (select distinct A.*,B.NY,jc_pjdlbd(A.HH,B.NY,:YS,'1') bdl  from V_YCKHDA A,B_DLTZXX  B  where A.HH=B.HH(+)) A WHERE NY=:NY   AND BDL>:BDL AND "_s,
                 u" select count(*) jls from   (select distinct A.*,B.NY,jc_pjdlbd(A.HH,B.NY,:YS,'1') bdl  from V_YCKHDA A,B_DLTZXX  B  where A.HH=B.HH(+)) A WHERE NY=:NY   AND BDL>:BDL AND "_s},
         .Params = {Edit(u"BDL"_s, u"Edt_Dlbo"_s, u"30"_s, TKycsCheck::Whole, kSwing), Dfny(),
                    Edit(u"YS"_s, u"Edt_Pjys"_s, u"3"_s, TKycsCheck::Count, kMonths)},
         .Columns = {{u"BDL"_s, u"波动百分比"_s}},
         .Reason = {u"select sum("_s + kEnergy + u") dl, jc_pjdlbd(:HH,:NY,:YS,'0') bd, (select avg(zdl) from (select sum("_s + kEnergy +
                    u") zdl from b_dltzxx where hh=:HH and ny<:NY and to_number(substr(ny,1,4))*12+to_number(substr(ny,5,2))"
                    ">=to_number(substr(:NY,1,4))*12+to_number(substr(:NY,5,2))-:YS group by ny) t) pjdl "
                    "from b_dltzxx where hh=:HH and ny=:NY"_s,
                    u"{:NY} 电量 {DL}，前 {:YS} 个月平均 {PJDL}，波动 {BD}%"_s}},
        {.Code = 14, .Caption = u"去年同期比较电量波动异常客户"_s, .Page = 1, .Radio = u"Rb_Bydlqn"_s,
         .Sql = {u" SELECT * FROM v_qntqdlbd A WHERE  NY=:NY AND BDL>:BDL AND "_s,
                 u" SELECT count(*) jls FROM v_qntqdlbd A WHERE  NY=:NY AND BDL>:BDL AND "_s},
         .Params = {Dfny(), Edit(u"BDL"_s, u"Edt_Dlboqn"_s, u"30"_s, TKycsCheck::Whole, kSwing)},
         .Columns = {{u"BDL"_s, u"波动百分比"_s}},
         .Reason = {u"select sum(case when ny=:NY then "_s + kEnergy + u" end) bydl, sum(case when ny<>:NY then "_s + kEnergy +
                    u" end) qndl from b_dltzxx where hh=:HH and (ny=:NY or to_number(ny)=to_number(:NY)-100)"_s,
                    u"{:NY} 电量 {BYDL}，去年同期 {QNDL|无}，波动 {BDL}%"_s}},
        {.Code = 15, .Caption = u"峰谷电量异常客户"_s, .Page = 1, .Radio = u"Rb_Fgdlyc"_s,
         .Sql = {u" select distinct a.*,(select min(fgb) from v_fgdlyc where  hh=a.hh and ny=:ny) fgb  from v_yckhda a,v_fgdlyc b  where a.hh=b.hh(+) and  b.NY=:ny  AND b.fgb<:fgb  and  "_s,
                 u" select count(distinct a.hh) jls from v_yckhda a,v_fgdlyc b  where a.hh=b.hh(+) and  b.NY=:ny  AND b.fgb<:fgb  and  "_s},
         .Params = {Dfny(), Edit(u"fgb"_s, u"Edt_Fgdlycbl"_s, u"100"_s, TKycsCheck::NonNegativeReal, u"百分比输入不合法，请检查！"_s)},
         .Columns = {{u"fgb"_s, u"峰谷电量比"_s}},
         .Reason = {u"select jffdl, jfgdl from v_fgdlyc where hh=:HH and ny=:NY and fgb<:fgb order by fgb"_s,
                    u"{:NY} 峰电量 {JFFDL}，谷电量 {JFGDL}，峰谷比 {FGB}%，低于 {:fgb}%"_s}},
        {.Code = 16, .Caption = u"用电类别电量异常客户"_s, .Page = 1, .Radio = u"Rb_Ydlbdlyc"_s,
         .Sql = {u" select a.*, (select sum(jffdl+jfpdl+jfgdl) from b_dltzxx  where hh=a.hh and  NY=:ny group by hh ) zdl  from v_yckhda a where  (select sum(jffdl+jfpdl+jfgdl) from b_dltzxx  where hh=a.hh  and  NY=:ny group by hh ) >:zdl and "_s,
                 u" select count(*) jls  from v_yckhda a where  (select sum(jffdl+jfpdl+jfgdl) from b_dltzxx  where hh=a.hh  and  NY=:ny group by hh ) >:zdl and "_s},
         // Checked on the Enter key only.
         .Params = {Dfny(), Edit(u"zDL"_s, u"edt_dldy"_s, {}, TKycsCheck::Real, u"电量输入不合法，请检查！"_s)},
         .Columns = {{u"zDL"_s, u"总电量"_s}},
         .ForcedFilter = u"ydlb"_s,
         .Reason = {{}, u"{:NY} 总电量 {ZDL}，大于 {:zDL}"_s}},
        {.Code = 17, .Caption = u"力率考核异常客户"_s, .Page = 1, .Radio = u"Rb_Llkhyc"_s,
         .Sql = {u" select distinct a.*, (select llkhbz from b_dltzxx  where hh=a.hh and ny=:ny and sjll>:sjll and rownum=1) llkhbz, (select sjll from b_dltzxx    where hh=a.hh and ny=:ny and sjll>:sjll and rownum=1) sjll from v_yckhda a,b_dltzxx b where  a.hh=b.hh(+) and b.ny=:ny  and b.sjll>:sjll  and "_s,
                 u" select count(distinct a.hh) jls    from v_yckhda a,b_dltzxx b where  a.hh=b.hh(+) and b.ny=:ny  and b.sjll>:sjll  and "_s},
         .Params = {Dfny(), Edit(u"sjll"_s, u"edt_sjll"_s, u"95"_s, TKycsCheck::NonNegativeReal, u"力率输入不合法，请检查！"_s)},
         .Columns = {{u"llkhbz"_s, u"力率考核标准"_s}, {u"sjll"_s, u"实际力率"_s}},
         .Reason = {{}, u"{:NY} 实际力率 {SJLL}，大于 {:sjll}；考核标准 {LLKHBZ}"_s}},
        {.Code = 18, .Caption = u"退电量电费异常客户"_s, .Page = 1, .Radio = u"Rb_Tbdldf"_s,
         .Sql = {u" select distinct a.*,(select max(abs(ysdf))from c_dfxx  where ysdf<0 and hh=a.hh and ny=:ny) tbje from v_yckhda a,c_dfxx b where  a.hh=b.hh(+) and b.ny=:ny and b.ysdf<0 and abs(b.ysdf)>:tbje and "_s,
                 u" select count(distinct a.hh) jls  from v_yckhda a,c_dfxx b where  a.hh=b.hh(+) and b.ny=:ny and b.ysdf<0 and abs(b.ysdf)>:tbje and "_s},
         // Checked on the Enter key only.
         .Params = {Dfny(), {.Name = u"tbje"_s, .Control = u"edt_tbje"_s, .Type = TKycsType::Float, .Check = TKycsCheck::Real,
                             .Message = u"金额输入不合法，请检查！"_s}},
         .Columns = {{u"tbje"_s, u"退电费金额"_s}},
         .Reason = {{}, u"{:NY} 退电费 {TBJE} 元，大于 {:tbje} 元"_s}},
        {.Code = 19, .Caption = u"按电价查询客户"_s, .Page = 1, .Radio = u"rb_djcx"_s,
         .Sql = {u"  SELECT DISTINCT a.*                     FROM v_yckhda a, y_jfxx b               WHERE b.hh=a.hh AND  b.djm = :djm and "_s,
                 u"  SELECT count(DISTINCT a.hh) jls         FROM v_yckhda a, y_jfxx b               WHERE b.hh=a.hh AND  b.djm = :djm and "_s},
         .Params = {Edit(u"djm"_s, u"Dblc_djm"_s, {})},
         .Reason = {u"select djmc from b_djb where djm=:djm"_s, u"电价 {:djm} {DJMC}"_s}},
        {.Code = 20, .Caption = u"违约窃电年度次数异常客户"_s, .Page = 2, .Radio = u"Rb_Qdkh"_s,
         .Sql = {u" select a.*,b.cs from v_yckhda a,  (select a.hh,count(*) cs from V_YCKHDA A,A_h_KHSQXX B,A_h_YKKZB C  where A.HH=B.HH(+) and B.CDBH=C.CDBH  and B.YWDM in ('402','401') and C.SFWYQD='是'  and to_char(b.sqrq,'yyyy')=:NF group by a.hh) b  where a.hh=b.hh(+) and b.cs>:cs AND "_s,
                 u" select count(*) jls  from v_yckhda a,  (select a.hh,count(*) cs from V_YCKHDA A,A_h_KHSQXX B,A_h_YKKZB C  where A.HH=B.HH(+) and B.CDBH=C.CDBH  and B.YWDM in ('402','401') and C.SFWYQD='是'  and to_char(b.sqrq,'yyyy')=:NF group by a.hh) b  where a.hh=b.hh(+) and b.cs>:cs AND "_s},
         .Params = {Edit(u"CS"_s, u"Edt_Qdcs"_s, u"3"_s), Year(u"NF"_s, u"Edt_Qdnf"_s)},
         .Reason = kYearCount},
        {.Code = 21, .Caption = u"中止供电年度次数异常客户"_s, .Page = 2, .Radio = u"Rb_Tdyh"_s,
         .Sql = {u" select a.*,b.cs from v_yckhda a,     (select a.hh,count(*) cs from V_YCKHDA A,A_H_KHSQXX B  where A.HH=B.HH(+) and B.YWDM='405'   and to_char(b.sqrq,'yyyy')=:NF group by a.hh) b  where a.hh=b.hh(+) and b.cs>:CS AND "_s,
                 u" select COUNT(*) JLS from v_yckhda a,     (select a.hh,count(*) cs from V_YCKHDA A,A_H_KHSQXX B  where A.HH=B.HH(+) and B.YWDM='405'   and to_char(b.sqrq,'yyyy')=:NF group by a.hh) b  where a.hh=b.hh(+) and b.cs>:CS AND "_s},
         .Params = {Edit(u"CS"_s, u"Edt_Zzcs"_s, u"3"_s), Year(u"NF"_s, u"Edt_Zznf"_s)},
         .Reason = kYearCount},
        {.Code = 22, .Caption = u"多路电源客户"_s, .Page = 2, .Radio = u"Rb_Dldy"_s,
         .Sql = {u" SELECT * FROM V_YCKHDA a where  (SELECT COUNT(1) FROM Y_GDDY WHERE HH=A.HH)>'1' AND "_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a where  (SELECT COUNT(1) FROM Y_GDDY WHERE HH=A.HH)>'1' AND "_s},
         .Reason = {u"select xh, dyxz, xlbh from y_gddy where hh=:HH order by xh"_s, u"{#} 路电源：[{XH} 号{DYXZ}（线路 {XLBH}）]"_s}},
        {.Code = 23, .Caption = u"自备电源客户"_s, .Page = 2, .Radio = u"Rb_Zbdy"_s,
         .Sql = {u" SELECT * FROM V_YCKHDA a where  exists(select 1 from e_zbdygl where hh=a.hh) and "_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a where  exists(select 1 from e_zbdygl where hh=a.hh) and "_s},
         .Reason = {u"select dymc, dylx, rl from e_zbdygl where hh=:HH order by xh"_s, u"自备电源 {#} 处：[{DYMC}（{DYLX}，{RL} kW）]"_s}},
        {.Code = 24, .Caption = u"定量定比客户"_s, .Page = 2, .Radio = u"Rb_Dldbkh"_s,
         .Sql = {u" select distinct A.*,    (select jflx from y_jfxx where hh=a.hh and js>1  and JFLX<>'抄表' and rownum=1) jflx,  (select dldbz from y_jfxx where hh=a.hh and js>1   and JFLX<>'抄表' and rownum=1) dldbz  from V_YCKHDA A,Y_JFXX B   where A.HH=B.HH(+) and B.JS>1 and B.JFLX<>'抄表' AND "_s,
                 u" select COUNT(distinct A.HH) JLS   from V_YCKHDA A,Y_JFXX B   where A.HH=B.HH(+) and B.JS>1 and B.JFLX<>'抄表'  AND "_s},
         .Columns = {{u"JFLX"_s, u"计费类型"_s}, {u"DLDBZ"_s, u"定量定比值"_s}},
         .Reason = {{}, u"计费类型 {JFLX}，定量定比值 {DLDBZ}"_s}},
        {.Code = 25, .Caption = u"未检查客户"_s, .Page = 2, .Radio = u"Rb_Wjckh"_s,
         .Sql = {u" SELECT * FROM V_YCKHDA a   where (nvl(a.scjcrq,sysdate-365)<:jcrqq or a.scjcrq>:jcrqz)  and "_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a   where (nvl(a.scjcrq,sysdate-365)<:jcrqq or a.scjcrq>:jcrqz) and "_s},
         .Params = {Date(u"JCRQQ"_s, u"dtp_jcrqq"_s, 183), Date(u"JCRQZ"_s, u"dtp_jcrqz"_s)},
         .Reason = {{}, u"上次检查日期 {SCJCRQ|无}，不在 {:JCRQQ} 至 {:JCRQZ} 之间"_s}},
        {.Code = 30, .Caption = u"业扩变更归档客户"_s, .Page = 3, .Radio = u"Rb_Bgyh"_s,
         .Sql = {u" SELECT distinct A.*    from V_YCKHDA a ,z_dlyxyw b,a_h_khsqxx c   where a.cdbh=c.cdbh and b.ywdm=c.ywdm and   c.sqrq>=:SLRQQ  and c.sqrq<=:SLRQZ and   b.ywlbdm='0001' and "_s,
                 u" SELECT count(distinct A.hh) jls    from V_YCKHDA a ,z_dlyxyw b,a_h_khsqxx c   where a.cdbh=c.cdbh and b.ywdm=c.ywdm and   c.sqrq>=:SLRQQ  and c.sqrq<=:SLRQZ and   b.ywlbdm='0001' and "_s},
         .KindSql = {u" SELECT distinct A.*    from V_YCKHDA a ,z_dlyxyw b,a_h_khsqxx c   where a.cdbh=c.cdbh and b.ywdm=c.ywdm and   c.sqrq>=:SLRQQ  and c.sqrq<=:SLRQZ and   c.ywdm=:ywdm and "_s,
                     u" SELECT count(distinct A.hh) jls    from V_YCKHDA a ,z_dlyxyw b,a_h_khsqxx c   where a.cdbh=c.cdbh and b.ywdm=c.ywdm and   c.sqrq>=:SLRQQ  and c.sqrq<=:SLRQZ and  c.ywdm=:ywdm and "_s},
         .Params = {Date(u"SLRQQ"_s, u"Dtp_Slrqq"_s), Date(u"SLRQZ"_s, u"Dtp_Slrqz"_s),
                    {.Name = u"YWDM"_s, .Control = u"Dblc_Ywlb"_s, .Default = KycsAllKinds, .KindOnly = true}},
         .Reason = {u"select c.ywdm, b.ywmc, c.sqrq from a_h_khsqxx c, z_dlyxyw b where c.cdbh=:CDBH and b.ywdm=c.ywdm"_s,
                    u"{YWDM} {YWMC}，受理于 {SQRQ}"_s}},
        {.Code = 31, .Caption = u"合同逾期客户"_s, .Page = 3, .Radio = u"Rb_Htyq"_s,
         .Sql = {u" SELECT a.*,b.yxrq  FROM V_YCKHDA a,y_htxx b  where a.hh=b.hh(+) and b.yxrq<:jzrq AND "_s,
                 u" SELECT count(*) jls FROM V_YCKHDA a,y_htxx b  where a.hh=b.hh(+) and b.yxrq<:jzrq AND "_s},
         .Params = {Date(u"jzrq"_s, u"dtp_Htjzrq"_s)},
         .Columns = {{u"YXRQ"_s, u"有效日期"_s}},
         .Reason = {{}, u"合同有效期至 {YXRQ}，早于 {:jzrq}"_s}},
        {.Code = 40, .Caption = u"计量异常年度次数异常客户"_s, .Page = 3, .Radio = u"Rb_Yckh"_s,
         .Sql = {u" select a.*,b.cs from v_yckhda a,  (select a.hh,count(*) cs from V_YCKHDA A,A_h_KHSQXX B,A_h_YKKZB C  where A.HH=B.HH(+) and B.CDBH=C.CDBH  and B.YWDM in ('160','401') and C.SFYGZ='是'  and to_char(b.sqrq,'yyyy')=:NF group by a.hh) b  where a.hh=b.hh(+) and b.cs>:cs AND "_s,
                 u" select count(*) jls  from v_yckhda a,  (select a.hh,count(*) cs from V_YCKHDA A,A_h_KHSQXX B,A_h_YKKZB C  where A.HH=B.HH(+) and B.CDBH=C.CDBH  and B.YWDM in ('160','401') and C.SFYGZ='是'  and to_char(b.sqrq,'yyyy')=:NF group by a.hh) b  where a.hh=b.hh(+) and b.cs>:cs AND "_s},
         .Params = {Edit(u"CS"_s, u"Edt_Yccs"_s, u"3"_s), Year(u"NF"_s, u"Edt_Ycnf"_s)},
         .Columns = {{u"CS"_s, u"次数"_s}},
         .Reason = kYearCount},
        {.Code = 99, .Caption = u"其它客户"_s, .Page = 3, .Radio = u"Rb_Qtkh"_s,
         .Sql = {u"  SELECT * FROM V_YCKHDA a where "_s, u"  SELECT count(*) jls FROM V_YCKHDA a where "_s},
         .Reason = {{}, u"只按复选条件"_s}},
    };
}

TKycsFilter Filter(const QString& name, const QString& checkBox, const QString& line, const QString& control,
                   const QString& message) {
    return {name, checkBox, line, {Edit(name, control, {})}, message};
}

}  // namespace

const QVector<TKycsCategory>& KycsCategories() {
    static const QVector<TKycsCategory> all = build();
    return all;
}

const TKycsCategory* KycsCategory(int code) {
    const auto& all = KycsCategories();
    const auto it = std::find_if(all.begin(), all.end(), [code](const TKycsCategory& c) { return c.Code == code; });
    return it == all.end() ? nullptr : &*it;
}

const QVector<TKycsPage>& KycsPages() {
    static const QVector<TKycsPage> pages = {{u"Ts_Xltq"_s, u" 线路台区 "_s},
                                             {u"Ts_Dfdj"_s, u" 电费电价 "_s},
                                             {u"Ts_Ydjc"_s, u" 用电检查 "_s},
                                             {u"Ts_Ykjl"_s, u" 业扩计量 "_s}};
    return pages;
}

const QVector<TKycsFilter>& KycsFilters() {
    // An empty capacity bound is taken as "0", so that filter has no message.
    const QString real = u"请输入实数！"_s;
    static const QVector<TKycsFilter> filters = {
        Filter(u"Dw"_s, u"Ckb_Dw"_s, u" a.Dw=:Dw  and "_s, u"Dblc_Dw"_s, u"请选择单位！"_s),
        Filter(u"DYDJ"_s, u"Ckb_Dydj"_s, u"(a.dydjdm=:DYDJ) and "_s, u"Dblc_Dydj"_s, u"请选择电压等级！"_s),
        Filter(u"KHLX"_s, u"Ckb_Khlx"_s, u"a.KHLXdm=:KHLX and "_s, u"Dblc_Khlx"_s, u"请选择客户类型！"_s),
        Filter(u"ydlb"_s, u"ckb_ydlb"_s, u"a.ydlb=:ydlb and "_s, u"dblc_Ydlb"_s, u"请选择用电类别！"_s),
        {u"HTRL"_s, u"Ckb_Htrl"_s, u"a.HTRL>=:HTRLQ and a.HTRL<=:HTRLZ and "_s,
         {Edit(u"HTRLQ"_s, u"Edt_Htrlq"_s, u"0"_s, TKycsCheck::Real, real), Edit(u"HTRLZ"_s, u"Edt_Htrlz"_s, u"0"_s, TKycsCheck::Real, real)},
         {}},
        Filter(u"TCH"_s, u"Ckb_Cbch"_s, u"a.TCH=:TCH and "_s, u"Edt_Cbch"_s, u"请输入抄表册号！"_s),
        Filter(u"XLBH"_s, u"Ckb_Xlbh"_s, u"a.xlbh=:XLBH and "_s, u"Edt_Xlbh"_s, u"请输入线路编号！"_s),
        Filter(u"TQBH"_s, u"Ckb_Tqbh"_s, u"a.tqbh=:TQBH and "_s, u"Edt_Tqbh"_s, u"请输入台区编号！"_s),
        Filter(u"hylb"_s, u"Ckb_Hylb"_s, u"a.hyfl=:hylb and "_s, u"Dblc_Hylb"_s, u"请选择行业类别！"_s),
        Filter(u"HH"_s, u"Ckb_Hh"_s, u"a.HH=:HH and "_s, u"Edt_Hh"_s, u"请输入户号！"_s),
    };
    return filters;
}

const TKycsFilter* KycsFilter(const QString& name) {
    for (const TKycsFilter& f : KycsFilters())
        if (f.Name == name) return &f;
    return nullptr;
}

QString KycsSentSql(const TKycsCategory& c, bool count, bool oneKind) {
    const TKycsTexts& t = oneKind && !c.KindSql.Row.isEmpty() ? c.KindSql : c.Sql;
    if (c.Code == 4) return count ? QString() : t.Count;
    return count ? t.Count : t.Row;
}

std::optional<QString> KycsSql(int code, const QString& which) {
    const TKycsCategory* c = KycsCategory(code);
    if (!c) return {};
    if (which == u"written-row") return c->Sql.Row;
    const bool kind = which.startsWith(u"kind-");
    const QString rest = kind ? which.mid(5) : which;
    if (rest != u"row" && rest != u"count") return {};
    return KycsSentSql(*c, rest == u"count", kind);
}

QStringList KycsSqlLines(const QString& text, const QStringList& filters) {
    QStringList lines;
    if (!text.isEmpty()) lines << text;
    for (const TKycsFilter& f : KycsFilters())
        if (filters.contains(f.Name)) lines << f.Line;
    if (lines.size() > (text.isEmpty() ? 0 : 1)) lines << KycsClosing;
    return lines;
}

bool KycsPasses(TKycsCheck check, const QString& typed) {
    const QString t = typed.trimmed();
    switch (check) {
    case TKycsCheck::Year: return t.size() == 4 && CheckIntStr(t);
    case TKycsCheck::YearMonth: return t.size() == 6 && CheckIntStr(t);
    case TKycsCheck::Count: return CheckIntStr(t) && t.toInt() >= 0;
    case TKycsCheck::Whole: return CheckIntStr(t);
    case TKycsCheck::NonNegativeReal: return CheckFloatStr(t) && t.toDouble() >= 0;
    case TKycsCheck::Real: return CheckFloatStr(t);
    case TKycsCheck::None: break;
    }
    return true;
}
