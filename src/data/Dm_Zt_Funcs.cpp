#include "Dm_Zt_Funcs.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignQuery;

TZt_Funcs_Dm* Zt_Funcs_Dm = nullptr;

TZt_Funcs_Dm::TZt_Funcs_Dm(QObject* owner) : QObject(owner) {
    setObjectName(u"Zt_Funcs_Dm"_s);
    // The stored text is a placeholder; every function replaces it.
    Mqry_Select = DesignQuery(this, u"Mqry_Select"_s, {u"select * from C_DYDJ"_s});
}

TZt_Funcs_Dm::~TZt_Funcs_Dm() {
    if (Zt_Funcs_Dm == this) Zt_Funcs_Dm = nullptr;
}
