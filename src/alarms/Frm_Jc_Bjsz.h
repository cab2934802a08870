// Alarm options: which of the six alarm kinds the operator is reminded of,
// kept per operator in e_bjxz.
#pragma once

#include <QPointer>

#include "frame/Frm_Zt_Template.h"
#include "data/MidasQuery.h"
#include "ui_Frm_Jc_Bjsz.h"

class QCheckBox;
class QPushButton;

class TJc_Bjsz_Frm : public TZt_Template_Frm, public Ui::Jc_Bjsz_Frm {
    Q_OBJECT
public:
    explicit TJc_Bjsz_Frm(QWidget* parent = nullptr);

    TMidasQuery* Mqry_Select;

    // The six alarm boxes in component order (positions 1 to 6).
    QList<QCheckBox*> AlarmBoxes() const;

public slots:
    void FormShow() override;
    void ckb_qbClick();
    void Bbtn_QrClick();
    void Bbtn_Tc1Click();
};

extern QPointer<TJc_Bjsz_Frm> Jc_Bjsz_Frm;
