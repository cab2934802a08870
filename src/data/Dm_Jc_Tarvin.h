// The inspection tables: plans, inspectors, tasks and batches, results,
// defects, and the meter and transformer changes of an anomaly case.
#pragma once

#include <QObject>

#include "DataSource.h"
#include "MidasQuery.h"

class TJc_Tarvin_Dm : public QObject {
    Q_OBJECT
public:
    explicit TJc_Tarvin_Dm(QObject* owner = nullptr);
    ~TJc_Tarvin_Dm() override;

    TMidasQuery* MQry_Jcjh;
    TMidasQuery* MQry_Jcry;
    TMidasQuery* MQry_Kykhcx;
    TMidasQuery* MQry_Jhbp;
    TMidasQuery* MQry_Jcqkll;
    TMidasQuery* MQry_Jcgzjl;
    TMidasQuery* MQry_Jcjgjl;
    TMidasQuery* MQry_Jcxm;
    TMidasQuery* MQry_Jcqk;
    TMidasQuery* MQry_Khda;
    TMidasQuery* Mqry_Jcgzap;
    TMidasQuery* Mqry_Update;
    TMidasQuery* Mqry_Qxqk;
    TMidasQuery* Mqry_Qxxz;
    TMidasQuery* Mqry_DnbBg;
    TMidasQuery* Mqry_HgqBg;
    TMidasQuery* Mqry_Gzxz;
    TMidasQuery* Mqry_Select;
    TMidasQuery* MQry_Khsqxx;
    TMidasQuery* Mqry_Tbxx;
    TMidasQuery* Mqry_Bjbg;
    TMidasQuery* Mqry_Kykhjls;
    TMidasQuery* Mqry_Jlyctbjl;
    TMidasQuery* Mqry_Dnbfa;
    TMidasQuery* Mqry_Hgqfa;

    TDataSource* Ds_Jcjh;
    TDataSource* Ds_Kykhcx;
    TDataSource* Ds_Jhbp;
    TDataSource* Ds_Jcqkll;
    TDataSource* Ds_Jcgzjl;
    TDataSource* Ds_Jcgzap;
    TDataSource* Ds_DnbBg;
    TDataSource* Ds_HgqBg;
    TDataSource* Ds_Gzxz;
    TDataSource* Ds_Dnbfa;
    TDataSource* Ds_Hgqfa;
};

extern TJc_Tarvin_Dm* Jc_Tarvin_Dm;
// The module for a screen that needs it; an error naming it when it is not
// created, which the screen's guard shows as a message.
TJc_Tarvin_Dm& Tarvin();
