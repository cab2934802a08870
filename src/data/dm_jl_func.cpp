#include "dm_jl_func.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignQuery;

Tjl_func_dm* jl_func_dm = nullptr;

Tjl_func_dm::Tjl_func_dm(QObject* owner) : QObject(owner) {
    setObjectName(u"jl_func_dm"_s);
    Mqry_select = DesignQuery(this, u"Mqry_select"_s);
    Mqry_DFGZD = DesignQuery(this, u"Mqry_DFGZD"_s);
    Mqry_fxzdnbfa = DesignQuery(this, u"Mqry_fxzdnbfa"_s);
}

Tjl_func_dm::~Tjl_func_dm() {
    if (jl_func_dm == this) jl_func_dm = nullptr;
}
