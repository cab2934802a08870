// Business-expansion data: applications and their control rows, supply and
// metering schemes, the customer file, network and contract data. Most of
// these queries get their text from the screen that uses them; those with a
// stored text read one document's or one customer's rows.
#pragma once

#include <QObject>
#include <QString>

#include "MidasQuery.h"

class TDataSet_Yk_Dm : public QObject {
    Q_OBJECT
public:
    explicit TDataSet_Yk_Dm(QObject* owner = nullptr);
    ~TDataSet_Yk_Dm() override;

    // Withdraws what a business wrote under a document (stored procedure
    // Yk_UndoYysq), on this module's scratch query. Database errors pass
    // to the caller.
    void UndoYysq(const QString& cdbh);

    TMidasQuery* Mqry_Select;
    TMidasQuery* Mqry_Dyfa;
    TMidasQuery* Mqry_Gxfa;
    TMidasQuery* Mqry_Ykkzb;
    TMidasQuery* Mqry_Dyxx;
    TMidasQuery* Mqry_Khsqxx;
    TMidasQuery* Mqry_Khgc;
    TMidasQuery* Mqry_Bzb_Jdfs;
    TMidasQuery* Mqry_Bzb_Jhfs;
    TMidasQuery* Mqry_Bzb_Dybhfs;
    TMidasQuery* Mqry_Fylb;
    TMidasQuery* Mqry_Ywysf;
    TMidasQuery* Mqry_Update;
    TMidasQuery* Mqry_Bzb_Jxfs;
    TMidasQuery* Mqry_Ywssf;
    TMidasQuery* Mqry_Bzb_Jmlx;
    TMidasQuery* Mqry_Bzb_Skfs;
    TMidasQuery* Mqry_Xlsb;
    TMidasQuery* Mqry_Bzb_Jjlx;
    TMidasQuery* Mqry_Bzb_Zgj;
    TMidasQuery* Mqry_Khda;
    TMidasQuery* Mqry_Bh;
    TMidasQuery* Mqry_Sdd;
    TMidasQuery* Mqry_Jgys;
    TMidasQuery* Mqry_H_Khsqxx;
    TMidasQuery* Mqry_Hlgcf;
    TMidasQuery* Mqry_Gcdef;
    TMidasQuery* Mqry_Jbf;
    TMidasQuery* Mqry_Pbf;
    TMidasQuery* Mqry_Tf;
    TMidasQuery* Mqry_Dfsb;
    TMidasQuery* Mqry_Hbzz;
    TMidasQuery* Mqry_Gctzkh;
    TMidasQuery* Mqry_Tzsf;
    TMidasQuery* Mqry_Gxbh;
    TMidasQuery* Mqry_Bjsf;
    TMidasQuery* Mqry_LsXlxx;
    TMidasQuery* Mqry_Khdlsb;
    TMidasQuery* Mqry_Dyxz;
    TMidasQuery* Mqry_Gddy;
    TMidasQuery* Mqry_Lddy;
    TMidasQuery* Mqry_Jd;
    TMidasQuery* Mqry_Jwh;
    TMidasQuery* Mqry_Qy;
    TMidasQuery* Mqry_Gnk;
    TMidasQuery* Mqry_select1;
    TMidasQuery* Mqry_Zjjh;
    TMidasQuery* Mqry_dnbzc;
    TMidasQuery* Mqry_byqda;
    TMidasQuery* Mqry_hgqzc;
    TMidasQuery* Mqry_Gdfa;
    TMidasQuery* Mqry_Spjl;
    TMidasQuery* Mqry_Gcqk;
    TMidasQuery* Mqry_Zzsh;
    TMidasQuery* Mqry_Tzsc;
    TMidasQuery* Mqry_Htxx;
    TMidasQuery* Mqry_Htlx;
    TMidasQuery* Mqry_Wxgc;
    TMidasQuery* MQry_Khsqxx1;
    // The survey sheet of a metering anomaly case (report "ckd"): one row
    // per piece of the customer's metering equipment (on site, coming off,
    // going on), each carrying the case's header, customer and finding, so
    // that a one-dataset layout prints them all. At least one row for a case
    // with an application row, none otherwise.
    TMidasQuery* Mqry_Ckd;
};

extern TDataSet_Yk_Dm* DataSet_Yk_Dm;
