// Removal-nature picker: asks how a meter comes off in an anomaly case
// ("拆除" removed, "虚拆" nominal removal, "移表" moved). Create it, exec()
// it, read Chxz (empty when cancelled), free it.
#pragma once

#include <QPointer>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Yk_SltChxz.h"

class TYk_SltChxz_frm : public TZt_Template_Frm, public Ui::Yk_SltChxz_frm {
    Q_OBJECT
public:
    explicit TYk_SltChxz_frm(QWidget* parent = nullptr);

    // The nature chosen; set only by confirming.
    QString Chxz;

public slots:
    void Bbtn_QrClick();
    void Bbtn_QxClick();
};

extern QPointer<TYk_SltChxz_frm> Yk_SltChxz_frm;
