#include "Dm_Gy_Khcx.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignDataSource;
using tarvin::dm::DesignQuery;

TGy_Khcx_Dm* Gy_Khcx_Dm = nullptr;

TGy_Khcx_Dm::TGy_Khcx_Dm(QObject* owner) : QObject(owner) {
    setObjectName(u"Gy_Khcx_Dm"_s);
    Mqry_Lkhxx = DesignQuery(this, u"Mqry_Lkhxx"_s, {u"select * from Y_KHDA"_s, u"where HH =:KHBH"_s},
                             {u"KHBH"_s});
    Mqry_Select = DesignQuery(this, u"Mqry_Select"_s);
    Mqry_Fkhbh = DesignQuery(this, u"Mqry_Fkhbh"_s);
    Ds_Fkhbh = DesignDataSource(this, u"Ds_Fkhbh"_s, Mqry_Fkhbh);
}

TGy_Khcx_Dm::~TGy_Khcx_Dm() {
    if (Gy_Khcx_Dm == this) Gy_Khcx_Dm = nullptr;
}

TGy_Khcx_Dm& Khcx() {
    if (!Gy_Khcx_Dm) throw EDatabaseError(QStringLiteral("Gy_Khcx_Dm: the data module is not created"));
    return *Gy_Khcx_Dm;
}
