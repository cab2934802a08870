#include "Unt_Zt_UserFuncs.h"

#include <QByteArray>
#include <cmath>

#include "data/Connection.h"

namespace {

TWorkflowEntries& entries() {
    static TWorkflowEntries e{&getsysdate, &tryfristywx, &fristywx, &lcsend, &SendGzdMess};
    return e;
}

// The engine runs on `Shdl` too; a connection the host opened itself is
// prepared before the engine reads the database clock through it.
const TWorkflowEntries& calls() {
    tarvin::db::prepareConnection();
    return entries();
}

const QDate kEpoch(1899, 12, 30);
constexpr double kMsPerDay = 86400000.0;

}  // namespace

const TWorkflowEntries& WorkflowEntries() { return entries(); }

TWorkflowEntries SetWorkflowEntries(const TWorkflowEntries& replacement) {
    const TWorkflowEntries previous = entries();
    entries() = replacement;
    return previous;
}

TDateTime DateTimeToTDateTime(const QDateTime& at) {
    const double days = double(kEpoch.daysTo(at.date()));
    const double fraction = at.time().msecsSinceStartOfDay() / kMsPerDay;
    // The fraction counts forward from midnight on either side of the epoch.
    return days >= 0 ? days + fraction : days - fraction;
}

QDateTime TDateTimeToDateTime(TDateTime value) {
    if (!std::isfinite(value)) return {};
    const double whole = std::trunc(value);
    const double fraction = std::fabs(value - whole);
    const qint64 ms = std::llround(fraction * kMsPerDay);
    return QDateTime(kEpoch.addDays(qint64(whole)), QTime(0, 0)).addMSecs(ms);
}

QDateTime WfGetSysDate() { return TDateTimeToDateTime(calls().getsysdate()); }

namespace {

int start(fristywx_fn fn, const QString& cdbh, const QString& ywdm, const QString& ywxdm, const QString& dw,
          const QString& hh, const QString& yxj, const QString& czydm, const QDateTime& kssj, const QString& hm,
          const QString& yddz) {
    return fn(cdbh.toUtf8().constData(), ywdm.toUtf8().constData(), ywxdm.toUtf8().constData(),
              dw.toUtf8().constData(), hh.toUtf8().constData(), yxj.toUtf8().constData(),
              czydm.toUtf8().constData(), DateTimeToTDateTime(kssj), hm.toUtf8().constData(),
              yddz.toUtf8().constData(), 0, 0);
}

}  // namespace

int WfTryFristYwx(const QString& cdbh, const QString& ywdm, const QString& ywxdm, const QString& dw,
                  const QString& hh, const QString& yxj, const QString& czydm, const QDateTime& kssj,
                  const QString& hm, const QString& yddz) {
    return start(calls().tryfristywx, cdbh, ywdm, ywxdm, dw, hh, yxj, czydm, kssj, hm, yddz);
}

int WfFristYwx(const QString& cdbh, const QString& ywdm, const QString& ywxdm, const QString& dw,
               const QString& hh, const QString& yxj, const QString& czydm, const QDateTime& kssj,
               const QString& hm, const QString& yddz) {
    return start(calls().fristywx, cdbh, ywdm, ywxdm, dw, hh, yxj, czydm, kssj, hm, yddz);
}

int WfLcSend(const QString& cdbh, const QString& ywxdm, const QDateTime& fssj, const QString& czydm) {
    return calls().lcsend(cdbh.toUtf8().constData(), ywxdm.toUtf8().constData(), DateTimeToTDateTime(fssj),
                            czydm.toUtf8().constData(), 0);
}

int WfSendGzdMess(const QString& cdbh) { return calls().SendGzdMess(cdbh.toUtf8().constData()); }
