// Work-order look-ups; their texts are written by the screens that use them.
#pragma once

#include <QObject>

#include "MidasQuery.h"

class TJc_Jcgzdcx_Dm : public QObject {
    Q_OBJECT
public:
    explicit TJc_Jcgzdcx_Dm(QObject* owner = nullptr);
    ~TJc_Jcgzdcx_Dm() override;

    TMidasQuery* Mqry_Select;
    TMidasQuery* Mqry_Cdbh;
};

extern TJc_Jcgzdcx_Dm* Jc_Jcgzdcx_Dm;
