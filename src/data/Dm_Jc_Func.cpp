#include "Dm_Jc_Func.h"

#include "DataModules.h"

using namespace Qt::StringLiterals;
using tarvin::dm::DesignDataSource;
using tarvin::dm::DesignQuery;

TDataset_Jc_Func* Dataset_Jc_Func = nullptr;

TDataset_Jc_Func::TDataset_Jc_Func(QObject* owner) : QObject(owner) {
    setObjectName(u"Dataset_Jc_Func"_s);
    MQry_Select = DesignQuery(this, u"MQry_Select"_s);
    Ds_Select = DesignDataSource(this, u"Ds_Select"_s, MQry_Select);
}

TDataset_Jc_Func::~TDataset_Jc_Func() {
    if (Dataset_Jc_Func == this) Dataset_Jc_Func = nullptr;
}
