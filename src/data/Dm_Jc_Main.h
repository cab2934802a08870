// Code tables, common look-ups and the main scratch queries of the
// inspection screens.
#pragma once

#include <QObject>

#include "DataSource.h"
#include "MidasQuery.h"

class TJc_Main_Dm : public QObject {
    Q_OBJECT
public:
    explicit TJc_Main_Dm(QObject* owner = nullptr);
    ~TJc_Main_Dm() override;

    TMidasQuery* Mqry_Select;
    TMidasQuery* MQry_Update;
    TMidasQuery* MQry_Bm;
    TMidasQuery* MQry_Jclx;
    TMidasQuery* MQry_Khda;
    TMidasQuery* MQry_Dydj;
    TMidasQuery* Mqry_Khlx;
    TMidasQuery* Mqry_Hylb;
    TMidasQuery* Mqry_Dw;
    TMidasQuery* MQry_Yhdm;
    TMidasQuery* Mqry_Dqgw;
    TMidasQuery* Mqry_Xzqh;
    TMidasQuery* Mqry_Ydlb;
    TMidasQuery* Mqry_Xltq;
    TMidasQuery* Mqry_Ywlb;
    TMidasQuery* Mqry_dl;
    TMidasQuery* Mqry_hgqlb;
    TMidasQuery* Mqry_dblb;
    TMidasQuery* Mqry_jddj;
    TMidasQuery* Mqry_Xx;
    TMidasQuery* Mqry_hgqjd;
    TMidasQuery* Mqry_dnbdy;
    TMidasQuery* Mqry_Djm;

    // Sources of the look-up boxes and grids that show the lists above.
    TDataSource* Ds_Select;  // the code picker's grid
    TDataSource* Ds_Bm;
    TDataSource* Ds_Jclx;
    TDataSource* Ds_Dydj;
    TDataSource* Ds_Khlx;
    TDataSource* Ds_Hylb;
    TDataSource* Ds_Dw;
    TDataSource* Ds_Ydlb;
    TDataSource* Ds_Xltq;
    TDataSource* Ds_Ywlb;
    TDataSource* Ds_dl;
    TDataSource* Ds_hgqlb;
    TDataSource* Ds_dblb;
    TDataSource* Ds_jddj;
    TDataSource* Ds_Xx;
    TDataSource* Ds_dnbdy;
    TDataSource* Ds_Djm;
};

extern TJc_Main_Dm* Jc_Main_Dm;
// The module for a screen that needs it; an error naming it when it is not
// created, which the screen's guard shows as a message.
TJc_Main_Dm& MainDm();
