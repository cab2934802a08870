// The framework functions' data module: the one scratch query on which the
// server-time, numbering and customer-check functions run.
#pragma once

#include <QObject>

#include "MidasQuery.h"

class TZt_Funcs_Dm : public QObject {
    Q_OBJECT
public:
    explicit TZt_Funcs_Dm(QObject* owner = nullptr);
    ~TZt_Funcs_Dm() override;

    TMidasQuery* Mqry_Select;
};

extern TZt_Funcs_Dm* Zt_Funcs_Dm;
