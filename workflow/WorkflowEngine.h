// The table-driven workflow behind Prj_zt_pubfun.
//
// The definition is z_lcjd (item, business, next item, and whether the
// starter's own work completes the first item); open cases stand in z_dqgw,
// their steps go to z_lcls, work-order messages to z_gzdxx. A case that
// leaves the last item of its business is archived: its application rows
// move to a_h_khsqxx / a_h_ykkzb.
//
// Every operation runs on the connection it is given, inside the caller's
// transaction (a savepoint keeps each call whole, see Atomic in the .cpp).
#pragma once

#include <QDateTime>
#include <QSqlDatabase>
#include <QString>

namespace tarvin::workflow {

// Arguments of fristywx / tryfristywx, as texts already decoded.
struct StartRequest {
    QString cdbh;   // document number
    QString ywdm;   // business
    QString ywxdm;  // first item
    QString dw;     // supply unit the case belongs to
    QString hh;     // account number
    QString yxj;    // urgency
    QString czydm;  // operator who starts the case
    double kssj = 0;  // start time, TDateTime
    QString hm;     // account name
    QString yddz;   // usage address
};

// TDateTime (days since 1899-12-30, time of day as the fraction) and back.
// Negative values count days backwards with the time still added forwards,
// as the toolkit does. An out-of-range or non-finite value gives an invalid
// QDateTime.
QDateTime fromTDateTime(double value);
double toTDateTime(const QDateTime& at);

class WorkflowEngine {
public:
    explicit WorkflowEngine(QSqlDatabase db);

    // Result codes are the WF_ values of Prj_zt_pubfun.h.
    int tryStart(const StartRequest& r);
    int start(const StartRequest& r);
    int send(const QString& cdbh, const QString& ywxdm, double fssj, const QString& czydm);
    int notify(const QString& cdbh);
    // The database clock; invalid when it cannot be read.
    QDateTime now();

    // What went wrong with the last call that returned a database or
    // internal error.
    QString lastError() const { return error_; }

private:
    struct Item;
    struct Case;
    int checkStart(const StartRequest& r, Item& first);
    // openStep: the step of z_lcls known to be open at `at` (0: look it up).
    void advance(const Case& c, const Item& at, const QDateTime& when, const QString& czydm, int openStep = 0);
    bool findItem(const QString& ywxdm, Item& out);
    bool findCase(const QString& cdbh, Case& out);

    QSqlDatabase db_;
    QString error_;
};

}  // namespace tarvin::workflow
