#include "Frm_Yk_SltChxz.h"

using namespace Qt::StringLiterals;

QPointer<TYk_SltChxz_frm> Yk_SltChxz_frm;

TYk_SltChxz_frm::TYk_SltChxz_frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Yk_SltChxz_frm"_s);
    setupUi(this);
    SetCancelButton(Bbtn_Qx);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TYk_SltChxz_frm::Bbtn_QrClick);
    Handle(Bbtn_Qx, &QPushButton::clicked, &TYk_SltChxz_frm::Bbtn_QxClick);
}

void TYk_SltChxz_frm::Bbtn_QrClick() {
    for (QRadioButton* choice : {Rb_ch, Rb_Xc, Rb_Yb})
        if (choice->isChecked()) Chxz = choice->text().remove(u' ');
    accept();
}

void TYk_SltChxz_frm::Bbtn_QxClick() {
    Chxz.clear();
    reject();
}
