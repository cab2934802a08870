// The inspection functions' data module: the scratch query of the plan
// numbering and the business undo.
#pragma once

#include <QObject>

#include "DataSource.h"
#include "MidasQuery.h"

class TDataset_Jc_Func : public QObject {
    Q_OBJECT
public:
    explicit TDataset_Jc_Func(QObject* owner = nullptr);
    ~TDataset_Jc_Func() override;

    TMidasQuery* MQry_Select;
    TDataSource* Ds_Select;
};

extern TDataset_Jc_Func* Dataset_Jc_Func;
