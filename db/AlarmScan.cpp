#include "AlarmScan.h"

#include <QRegularExpression>
#include <stdexcept>

#include "data/MidasQuery.h"

namespace tarvin::alarms {

namespace {

// The texts are Oracle SQL, as every text of the module, and reach SQLite
// and PostgreSQL through the dialect bridge. Numbers in the alarm texts are
// written with to_char and FM models, so that all engines print them alike.

// A month's active energy of a ledger row.
const QString kEnergy = QStringLiteral("nvl(d.jffdl,0)+nvl(d.jfpdl,0)+nvl(d.jfgdl,0)");
const QString kOpen = QStringLiteral(" and nvl(a.xhbz,'否')<>'是'");
const QString kKwh = QStringLiteral("'FM999999999990'");

// Energy per dedicated-transformer customer in the month of parameter `ny`.
QString dedicatedEnergy(const QString& ny) {
    return QStringLiteral(" (select d.hh, sum(%1) dl"
                          " from (select distinct hh from y_yxbyq where byqlx='专变' and hh is not null) z, b_dltzxx d"
                          " where d.hh=z.hh and d.ny=:%2 group by d.hh) ")
        .arg(kEnergy, ny);
}

QString notRaised(const QString& code) {
    return QStringLiteral(" and not exists (select 1 from e_bjtx e where e.ny=:ny and e.hh=a.hh and e.bjdm='%1')").arg(code);
}

QString insertHead(const QString& code, const QString& text) {
    return QStringLiteral("insert into e_bjtx (ny,hh,bjdm,bjxm,dw,zt) select :ny, q.hh, '%1', %2, q.dw, '未处理' from ").arg(code, text);
}

// A stop record in force somewhere in the month (ms .. me).
const QString kStopInMonth = QStringLiteral("t.tyrq<:me and (t.hfrq is null or t.hfrq>:ms)");
// A stop record in force through the whole month.
const QString kStopAllMonth = QStringLiteral("t.tyrq<:ms and (t.hfrq is null or t.hfrq>=:me)");

// 01: a dedicated transformer out of use through the month, its seal found
// broken, and the customer's energy of the month above zero.
QString sql01(const QString& unitFilter) {
    return insertHead(QStringLiteral("01"),
                      QStringLiteral("'变压器'||q.byqbh||case when q.ts>1 then '等'||q.ts||'台' end||'自'||to_char(q.tyrq,'yyyy-mm-dd')"
                                     "||'报停，封印破损，本月抄见电量'||to_char(round(q.dl),%1)||'千瓦时'")
                          .arg(kKwh)) +
           QStringLiteral("(select a.hh, a.dw, x.byqbh, x.ts, x.tyrq, s.dl from y_khda a,"
                          " (select b.hh, min(b.byqbh) byqbh, count(distinct b.byqbh) ts, min(t.tyrq) tyrq"
                          " from y_yxbyq b, y_byqty t where b.byqlx='专变' and t.byqbh=b.byqbh and t.fyzt='破损' and %1"
                          " group by b.hh) x,%2s"
                          " where x.hh=a.hh and s.hh=a.hh and s.dl>0")
               .arg(kStopAllMonth, dedicatedEnergy(QStringLiteral("ny"))) +
           kOpen + notRaised(QStringLiteral("01")) + unitFilter + QStringLiteral(") q");
}

// 02: a dedicated-transformer customer whose month reads zero, with no stop
// record of any of its transformers in force during the month.
QString sql02(const QString& unitFilter) {
    return insertHead(QStringLiteral("02"),
                      QStringLiteral("'专变客户本月抄见电量为零（'||case when q.pdl is null then '上月无抄表记录'"
                                     " else '上月'||to_char(round(q.pdl),%1)||'千瓦时' end||'），变压器无停用记录'")
                          .arg(kKwh)) +
           QStringLiteral("(select a.hh, a.dw, (select sum(%1) from b_dltzxx d where d.hh=a.hh and d.ny=:ny0) pdl"
                          " from y_khda a,%2s where s.hh=a.hh and s.dl=0"
                          " and not exists (select 1 from y_yxbyq b, y_byqty t"
                          " where b.hh=a.hh and b.byqlx='专变' and t.byqbh=b.byqbh and %3)")
               .arg(kEnergy, dedicatedEnergy(QStringLiteral("ny")), kStopInMonth) +
           kOpen + notRaised(QStringLiteral("02")) + unitFilter + QStringLiteral(") q");
}

// 03: a customer assessed on power factor (a standard on the month's
// ledger) with active energy and no reactive energy. Only the month's rows
// of customers with a standard are summed: grouping the whole month by
// customer costs more than reading it.
QString sql03(const QString& unitFilter) {
    return insertHead(QStringLiteral("03"),
                      QStringLiteral("'力率考核标准'||to_char(q.bz/100.0,'FM0.00')||'，本月有功电量'||to_char(round(q.dl),%1)"
                                     "||'千瓦时，无功电量为零'")
                          .arg(kKwh)) +
           QStringLiteral("(select a.hh, a.dw, s.bz, s.dl from y_khda a,"
                          " (select d.hh, max(d.llkhbz) bz, sum(%1) dl from b_dltzxx d where d.ny=:ny"
                          " and d.hh in (select x.hh from b_dltzxx x where x.ny=:ny and x.llkhbz>0) group by d.hh"
                          " having max(d.llkhbz)>0 and sum(%1)>0 and sum(nvl(d.wgdl,0))=0) s"
                          " where s.hh=a.hh")
               .arg(kEnergy) +
           kOpen + notRaised(QStringLiteral("03")) + unitFilter + QStringLiteral(") q");
}

// 04: a dedicated-transformer customer whose month's energy differs from
// last month's by more than 60 % of last month's; both months above zero
// (a zero month is kind 02's case).
QString sql04(const QString& unitFilter) {
    return insertHead(QStringLiteral("04"),
                      QStringLiteral("'本月电量'||to_char(round(q.dl),%1)||'千瓦时，上月'||to_char(round(q.pdl),%1)||'千瓦时，'"
                                     "||case when q.dl>q.pdl then '上升' else '下降' end"
                                     "||to_char(round(abs(q.dl-q.pdl)*100.0/q.pdl,1),'FM9999999990.0')||'％'")
                          .arg(kKwh)) +
           QStringLiteral("(select a.hh, a.dw, s.dl, p.dl pdl from y_khda a,%1s,%2p"
                          " where s.hh=a.hh and p.hh=a.hh and s.dl>0 and p.dl>0 and abs(s.dl-p.dl)*100>%3*p.dl")
               .arg(dedicatedEnergy(QStringLiteral("ny")), dedicatedEnergy(QStringLiteral("ny0")))
               .arg(kSwingPercent) +
           kOpen + notRaised(QStringLiteral("04")) + unitFilter + QStringLiteral(") q");
}

// 05: a dedicated-transformer customer whose energy exceeds the capacity of
// its transformers in use times the hours of the month.
QString sql05(const QString& unitFilter) {
    return insertHead(QStringLiteral("05"),
                      QStringLiteral("'本月电量'||to_char(round(q.dl),%1)||'千瓦时，专变容量'||to_char(round(q.rl),%1)"
                                     "||'千伏安，本月'||:hs||'小时，负载率'"
                                     "||to_char(round(q.dl*100.0/(q.rl*:hs),1),'FM9999999990.0')||'％'")
                          .arg(kKwh)) +
           QStringLiteral("(select a.hh, a.dw, s.dl, z.rl from y_khda a,"
                          " (select hh, sum(case when zt='停用' then 0 else rl end) rl from y_yxbyq"
                          " where byqlx='专变' and hh is not null group by hh) z,%1s"
                          " where z.hh=a.hh and s.hh=a.hh and z.rl>0 and s.dl*100>%2*z.rl*:hs")
               .arg(dedicatedEnergy(QStringLiteral("ny")))
               .arg(kLoadPercent) +
           kOpen + notRaised(QStringLiteral("05")) + unitFilter + QStringLiteral(") q");
}

// 06: a temporary-supply contract (the customer's latest) that ends between
// the reference day and `days` days after it.
QString sql06(const QString& unitFilter) {
    return insertHead(QStringLiteral("06"),
                      QStringLiteral("'临时用电合同将于'||to_char(q.jsrq,'yyyy-mm-dd')||'到期（到期前'||:days||'天提醒）'")) +
           QStringLiteral("(select a.hh, a.dw, c.jsrq from y_khda a,"
                          " (select hh, max(yxrq) jsrq from y_htxx where htlx=:htlx and yxrq>=:r0 and yxrq<:r1 group by hh) c"
                          " where c.hh=a.hh"
                          " and not exists (select 1 from y_htxx n where n.hh=a.hh and n.htlx=:htlx and n.yxrq>=:r1)") +
           kOpen + notRaised(QStringLiteral("06")) + unitFilter + QStringLiteral(") q");
}

QDate monthStart(const QString& ny) {
    static const QRegularExpression re(QStringLiteral("^(\\d{4})(\\d{2})$"));
    const QRegularExpressionMatch m = re.match(ny);
    const int month = m.hasMatch() ? m.captured(2).toInt() : 0;
    if (!m.hasMatch() || month < 1 || month > 12 || m.captured(1).toInt() < 1900)
        throw std::invalid_argument(QStringLiteral("the month must be YYYYMM (e.g. 202401), not '%1'").arg(ny).toStdString());
    return QDate(m.captured(1).toInt(), month, 1);
}

QString nyOf(const QDate& d) { return d.toString(QStringLiteral("yyyyMM")); }

QDate databaseToday(const QString& connectionName) {
    TMidasQuery q;
    q.SetDatabaseName(connectionName);
    q.SQL().Add(QStringLiteral("select sysdate from dual"));
    q.Open();
    const QDate d = q.Fields(0).AsDateTime().date();
    q.Close();
    if (!d.isValid()) throw EDatabaseError(QStringLiteral("The database clock did not give a date"));
    return d;
}

void bindIfPresent(TMidasQuery& q, const QString& name, const QVariant& value) {
    TParam* p = q.Params().FindParam(name);
    if (!p) return;
    if (value.typeId() == QMetaType::QDateTime) p->SetAsDateTime(value.toDateTime());
    else if (value.typeId() == QMetaType::Int) p->SetAsInteger(value.toInt());
    else p->SetAsString(value.toString());
}

}  // namespace

const std::vector<AlarmKind>& alarmKinds() {
    static const std::vector<AlarmKind> kinds = {
        {QStringLiteral("01"), QStringLiteral("变压器停用客户，私自启封用电")},
        {QStringLiteral("02"), QStringLiteral("专变客户，变压器无停用记录，抄见电量为零")},
        {QStringLiteral("03"), QStringLiteral("力率考核客户，无功电量为零")},
        {QStringLiteral("04"), QStringLiteral("专变客户，本月电量波动超过60％")},
        {QStringLiteral("05"), QStringLiteral("专变客户，负载率超过100％")},
        {QStringLiteral("06"), QStringLiteral("临时用电，到期提前提醒")},
    };
    return kinds;
}

int ScanResult::inserted() const {
    int n = 0;
    for (const KindResult& k : kinds) n += k.inserted;
    return n;
}

QDate referenceDay(const QString& ny, const QDate& today) {
    const QDate first = monthStart(ny);
    const QDate current(today.year(), today.month(), 1);
    if (first > current)
        throw std::invalid_argument(QStringLiteral("the month %1 has not begun (today is %2)")
                                        .arg(ny, today.toString(QStringLiteral("yyyy-MM-dd")))
                                        .toStdString());
    return first == current ? today : first.addMonths(1).addDays(-1);
}

ScanResult scanAlarms(const ScanOptions& options, const QString& connectionName, const ScanProgress& progress) {
    const QDate first = monthStart(options.ny);
    if (options.days < 0 || options.days > kMaxDays)
        throw std::invalid_argument(
            QStringLiteral("the days ahead must be a whole number from 0 to %1, not %2").arg(kMaxDays).arg(options.days).toStdString());
    const QString unit = options.unit.trimmed();

    TCustomMidasDataBase& dbase = TCustomMidasDataBase::ByName(connectionName);
    const QDate today = options.today.isValid() ? options.today : databaseToday(connectionName);
    ScanResult result;
    result.ny = options.ny;
    result.referenceDay = referenceDay(options.ny, today);

    TMidasQuery q;
    q.SetDatabaseName(connectionName);
    QString unitFilter;
    if (!unit.isEmpty()) {
        q.SQL().Add(QStringLiteral("select count(*) jls from z_dwbm where dm=:dw"));
        q.ParamByName(QStringLiteral("dw")).SetAsString(unit);
        q.Open();
        const bool known = q.FieldByName(QStringLiteral("jls")).AsInteger() > 0;
        q.Close();
        if (!known) throw std::invalid_argument(QStringLiteral("the unit '%1' is not in the unit register (z_dwbm)").arg(unit).toStdString());
        unitFilter = QStringLiteral(" and a.dw in (select dm from z_dwbm where dm=:dw or sjdw=:dw)");
    }

    const QDateTime ms = first.startOfDay(), me = first.addMonths(1).startOfDay();
    const QDateTime r0 = result.referenceDay.startOfDay(), r1 = result.referenceDay.addDays(options.days + 1).startOfDay();
    const int hours = first.daysInMonth() * 24;
    const QList<std::pair<QString, QVariant>> binds = {
        {QStringLiteral("ny"), options.ny},
        {QStringLiteral("ny0"), nyOf(first.addMonths(-1))},
        {QStringLiteral("ms"), ms},
        {QStringLiteral("me"), me},
        {QStringLiteral("r0"), r0},
        {QStringLiteral("r1"), r1},
        {QStringLiteral("hs"), hours},
        {QStringLiteral("days"), options.days},
        {QStringLiteral("htlx"), kTemporaryContract},
        {QStringLiteral("dw"), unit},
    };
    using Builder = QString (*)(const QString&);
    const Builder builders[] = {sql01, sql02, sql03, sql04, sql05, sql06};

    bool own = !options.inCallerTransaction && !dbase.InTransaction();
    if (own) dbase.StartTransaction();
    try {
        for (std::size_t k = 0; k < alarmKinds().size(); ++k) {
            q.Close();
            q.SQL().Clear();
            q.SQL().Add(builders[k](unitFilter));
            for (const auto& [name, value] : binds) bindIfPresent(q, name, value);
            try {
                q.ExecSQL();
            } catch (const EDatabaseError& e) {
                throw EDatabaseError(QStringLiteral("Alarm kind %1 (%2): %3").arg(alarmKinds()[k].code, alarmKinds()[k].caption, e.message()));
            }
            KindResult r{alarmKinds()[k], q.RowsAffected()};
            result.kinds.push_back(r);
            if (progress) progress(r);
        }
        if (own) dbase.Commit();
    } catch (...) {
        if (own) {
            try {
                dbase.Rollback();
            } catch (...) {
            }
        }
        throw;
    }
    return result;
}

}  // namespace tarvin::alarms
