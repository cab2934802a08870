// Customer look-up for the customer picker: the result list, its scratch
// query and the read of one customer's file.
#pragma once

#include <QObject>

#include "DataSource.h"
#include "MidasQuery.h"

class TGy_Khcx_Dm : public QObject {
    Q_OBJECT
public:
    explicit TGy_Khcx_Dm(QObject* owner = nullptr);
    ~TGy_Khcx_Dm() override;

    TMidasQuery* Mqry_Lkhxx;
    TMidasQuery* Mqry_Select;
    TMidasQuery* Mqry_Fkhbh;
    TDataSource* Ds_Fkhbh;
};

extern TGy_Khcx_Dm* Gy_Khcx_Dm;
// The module for a screen that needs it; an error naming it when it is not
// created, which the screen's guard shows as a message.
TGy_Khcx_Dm& Khcx();
