#include "Frm_Jc_Bjsz.h"

#include "frame/Unit_zt_gobal.h"

#include "ui_Frm_Jc_Bjsz.h"

#include <QApplication>

QPointer<TJc_Bjsz_Frm> Jc_Bjsz_Frm;

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

}  // namespace

TJc_Bjsz_Frm::TJc_Bjsz_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(QStringLiteral("Jc_Bjsz_Frm"));
    setupUi(this);

    Mqry_Select = new TMidasQuery(this, QStringLiteral("Mqry_Select"));

    Handle(ckb_qb, &QCheckBox::clicked, &TJc_Bjsz_Frm::ckb_qbClick);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TJc_Bjsz_Frm::Bbtn_QrClick);
    Handle(Bbtn_Tc1, &QPushButton::clicked, &TJc_Bjsz_Frm::Bbtn_Tc1Click);
}

QList<QCheckBox*> TJc_Bjsz_Frm::AlarmBoxes() const {
    return {ckb_01, ckb_02, ckb_03, ckb_04, ckb_05, ckb_06};
}

void TJc_Bjsz_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    OpenSql(Mqry_Select, QStringLiteral(" select * from e_bjxz     where sfyx = '是' and czydm = :czydm "),
            {{"czydm", Gczydm}});
    if (Mqry_Select->RecordCount() == 6) ckb_qb->setChecked(true);
    const QList<QCheckBox*> boxes = AlarmBoxes();
    for (Mqry_Select->First(); !Mqry_Select->Eof(); Mqry_Select->Next()) {
        bool ok = false;
        const int code = Mqry_Select->FieldByName(QStringLiteral("bjdm")).AsString().trimmed().toInt(&ok);
        if (ok && code >= 1 && code <= 6) boxes[code - 1]->setChecked(true);
    }
    Mqry_Select->Close();
}

void TJc_Bjsz_Frm::ckb_qbClick() {
    for (QCheckBox* b : AlarmBoxes()) b->setChecked(ckb_qb->isChecked());
}

void TJc_Bjsz_Frm::Bbtn_QrClick() {
    {
        WaitCursor wait;
        const QList<QCheckBox*> boxes = AlarmBoxes();
        for (int i = 1; i <= 6; ++i) {
            const QString sfyx = boxes[i - 1]->isChecked() ? QStringLiteral("是") : QStringLiteral("否");
            const QString code = QStringLiteral("0") + QString::number(i);
            OpenSql(Mqry_Select, QStringLiteral(" select * from e_bjxz where czydm=:czydm and bjdm=:bjdm "),
                    {{"czydm", Gczydm}, {"bjdm", code}});
            const QString text =
                Mqry_Select->IsEmpty()
                    ? QStringLiteral(" insert into e_bjxz(czydm,bjdm,sfyx)    values( :czydm,:bjdm,:sfyx) ")
                    : QStringLiteral(" update e_bjxz set sfyx=:sfyx      where czydm=:czydm and bjdm=:bjdm ");
            ExecSql(Mqry_Select, text, {{"czydm", Gczydm}, {"bjdm", code}, {"sfyx", sfyx}});
        }
    }
    close();
}

void TJc_Bjsz_Frm::Bbtn_Tc1Click() { close(); }
