// Work-order printing: inspectors, tasks by document number and a scratch
// query; their texts are written by the work-order screen.
#pragma once

#include <QObject>

#include "MidasQuery.h"

class TJc_Jcgzd_Dm : public QObject {
    Q_OBJECT
public:
    explicit TJc_Jcgzd_Dm(QObject* owner = nullptr);
    ~TJc_Jcgzd_Dm() override;

    TMidasQuery* Mqry_Ry;
    TMidasQuery* Mqry_Cdbhcx;
    TMidasQuery* Mqry_Select;
};

extern TJc_Jcgzd_Dm* Jc_Jcgzd_Dm;
