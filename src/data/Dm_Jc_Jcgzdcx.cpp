#include "Dm_Jc_Jcgzdcx.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignQuery;

TJc_Jcgzdcx_Dm* Jc_Jcgzdcx_Dm = nullptr;

TJc_Jcgzdcx_Dm::TJc_Jcgzdcx_Dm(QObject* owner) : QObject(owner) {
    setObjectName(u"Jc_Jcgzdcx_Dm"_s);
    Mqry_Select = DesignQuery(this, u"Mqry_Select"_s);
    Mqry_Cdbh = DesignQuery(this, u"Mqry_Cdbh"_s);
}

TJc_Jcgzdcx_Dm::~TJc_Jcgzdcx_Dm() {
    if (Jc_Jcgzdcx_Dm == this) Jc_Jcgzdcx_Dm = nullptr;
}
