// Metering functions' data module; its texts are written where they are used.
#pragma once

#include <QObject>

#include "MidasQuery.h"

class Tjl_func_dm : public QObject {
    Q_OBJECT
public:
    explicit Tjl_func_dm(QObject* owner = nullptr);
    ~Tjl_func_dm() override;

    TMidasQuery* Mqry_select;
    TMidasQuery* Mqry_DFGZD;
    TMidasQuery* Mqry_fxzdnbfa;
};

extern Tjl_func_dm* jl_func_dm;
