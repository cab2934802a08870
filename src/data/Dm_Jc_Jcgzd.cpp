#include "Dm_Jc_Jcgzd.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignQuery;

TJc_Jcgzd_Dm* Jc_Jcgzd_Dm = nullptr;

TJc_Jcgzd_Dm::TJc_Jcgzd_Dm(QObject* owner) : QObject(owner) {
    setObjectName(u"Jc_Jcgzd_Dm"_s);
    Mqry_Ry = DesignQuery(this, u"Mqry_Ry"_s);
    Mqry_Cdbhcx = DesignQuery(this, u"Mqry_Cdbhcx"_s);
    Mqry_Select = DesignQuery(this, u"Mqry_Select"_s);
}

TJc_Jcgzd_Dm::~TJc_Jcgzd_Dm() {
    if (Jc_Jcgzd_Dm == this) Jc_Jcgzd_Dm = nullptr;
}
