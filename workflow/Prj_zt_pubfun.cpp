// The C interface of the workflow library: texts decoded, the engine run on
// the host's connection "Shdl", and nothing thrown across the boundary.
#define PRJ_ZT_PUBFUN_BUILD
#include "Prj_zt_pubfun.h"

#include <QSqlDatabase>
#include <QString>
#include <QtGlobal>
#include <exception>

#include "WorkflowEngine.h"

using tarvin::workflow::StartRequest;
using tarvin::workflow::WorkflowEngine;

namespace {

const QString kConnection = QStringLiteral("Shdl");

QString text(const char* utf8) { return utf8 ? QString::fromUtf8(utf8) : QString(); }
// Codes never carry meaningful blanks.
QString code(const char* utf8) { return text(utf8).trimmed(); }

WorkflowEngine engine() { return WorkflowEngine(QSqlDatabase::database(kConnection, false)); }

// A failed statement is worth a line on the console: the caller only sees
// the code.
int report(const char* function, const WorkflowEngine& e, int rc) {
    if ((rc == WF_DATABASE_ERROR || rc == WF_INTERNAL_ERROR) && !e.lastError().isEmpty())
        qWarning("Prj_zt_pubfun %s: %s", function, qUtf8Printable(e.lastError()));
    return rc;
}

StartRequest request(const char* cdbh, const char* ywdm, const char* ywxdm, const char* dw, const char* hh,
                     const char* yxj, const char* czydm, TDateTime kssj, const char* hm, const char* yddz) {
    StartRequest r;
    r.cdbh = code(cdbh);
    r.ywdm = code(ywdm);
    r.ywxdm = code(ywxdm);
    r.dw = code(dw);
    r.hh = code(hh);
    r.yxj = text(yxj);
    r.czydm = code(czydm);
    r.kssj = kssj;
    r.hm = text(hm);
    r.yddz = text(yddz);
    return r;
}

}  // namespace

extern "C" {

PRJ_ZT_API TDateTime PRJ_ZT_CALL getsysdate(void) {
    try {
        WorkflowEngine e = engine();
        return tarvin::workflow::toTDateTime(e.now());
    } catch (...) {
        return 0;
    }
}

PRJ_ZT_API int32_t PRJ_ZT_CALL tryfristywx(const char* cdbh, const char* ywdm, const char* ywxdm, const char* dw,
                                           const char* hh, const char* yxj, const char* czydm, TDateTime kssj,
                                           const char* hm, const char* yddz, int32_t, int32_t) {
    try {
        WorkflowEngine e = engine();
        return report("tryfristywx", e, e.tryStart(request(cdbh, ywdm, ywxdm, dw, hh, yxj, czydm, kssj, hm, yddz)));
    } catch (...) {
        return WF_INTERNAL_ERROR;
    }
}

PRJ_ZT_API int32_t PRJ_ZT_CALL fristywx(const char* cdbh, const char* ywdm, const char* ywxdm, const char* dw,
                                        const char* hh, const char* yxj, const char* czydm, TDateTime kssj,
                                        const char* hm, const char* yddz, int32_t, int32_t) {
    try {
        WorkflowEngine e = engine();
        return report("fristywx", e, e.start(request(cdbh, ywdm, ywxdm, dw, hh, yxj, czydm, kssj, hm, yddz)));
    } catch (...) {
        return WF_INTERNAL_ERROR;
    }
}

PRJ_ZT_API int32_t PRJ_ZT_CALL lcsend(const char* cdbh, const char* ywxdm, TDateTime fssj, const char* czydm, int32_t) {
    try {
        WorkflowEngine e = engine();
        return report("lcsend", e, e.send(code(cdbh), code(ywxdm), fssj, code(czydm)));
    } catch (...) {
        return WF_INTERNAL_ERROR;
    }
}

PRJ_ZT_API int32_t PRJ_ZT_CALL SendGzdMess(const char* cdbh) {
    try {
        WorkflowEngine e = engine();
        return report("SendGzdMess", e, e.notify(code(cdbh)));
    } catch (...) {
        return WF_INTERNAL_ERROR;
    }
}

}  // extern "C"
