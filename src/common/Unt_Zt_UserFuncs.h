// The framework's workflow functions as the screens call them. They are
// imported from Prj_zt_pubfun when the module is linked, so the module does
// not load without that library; the calls go through one table of entry
// points, which a test may swap to make the workflow refuse on purpose.
#pragma once

#include <QDateTime>
#include <QString>

#include "Prj_zt_pubfun.h"

struct TWorkflowEntries {
    getsysdate_fn getsysdate;
    fristywx_fn tryfristywx;
    fristywx_fn fristywx;
    lcsend_fn lcsend;
    SendGzdMess_fn SendGzdMess;
};

// The library's own functions, unless swapped.
const TWorkflowEntries& WorkflowEntries();
// Installs other entry points; returns the ones they replace.
TWorkflowEntries SetWorkflowEntries(const TWorkflowEntries& entries);

// TDateTime: days since 1899-12-30, the time of day as the fraction
// (to the millisecond; before the epoch the fraction still counts forward).
TDateTime DateTimeToTDateTime(const QDateTime& at);
QDateTime TDateTimeToDateTime(TDateTime value);

// The calls with the module's own types; 0 is success. Texts go as UTF-8.
QDateTime WfGetSysDate();
int WfTryFristYwx(const QString& cdbh, const QString& ywdm, const QString& ywxdm, const QString& dw,
                  const QString& hh, const QString& yxj, const QString& czydm, const QDateTime& kssj,
                  const QString& hm, const QString& yddz);
int WfFristYwx(const QString& cdbh, const QString& ywdm, const QString& ywxdm, const QString& dw,
               const QString& hh, const QString& yxj, const QString& czydm, const QDateTime& kssj,
               const QString& hm, const QString& yddz);
int WfLcSend(const QString& cdbh, const QString& ywxdm, const QDateTime& fssj, const QString& czydm);
int WfSendGzdMess(const QString& cdbh);
