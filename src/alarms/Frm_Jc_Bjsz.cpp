#include "Frm_Jc_Bjsz.h"

#include "frame/Unit_zt_gobal.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

QPointer<TJc_Bjsz_Frm> Jc_Bjsz_Frm;

namespace {

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

}  // namespace

TJc_Bjsz_Frm::TJc_Bjsz_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(QStringLiteral("Jc_Bjsz_Frm"));
    setWindowTitle(QStringLiteral("异常客户报警选项"));

    auto* group = new QGroupBox(this);
    group->setObjectName(QStringLiteral("Gb_Bjxx"));
    ckb_01 = NewControl<QCheckBox>(group, "ckb_01", QStringLiteral("变压器停用客户，私自启封用电"));
    ckb_02 = NewControl<QCheckBox>(group, "ckb_02", QStringLiteral("专变客户，变压器无停用记录，抄见电量为零"));
    ckb_03 = NewControl<QCheckBox>(group, "ckb_03", QStringLiteral("力率考核客户，无功电量为零"));
    ckb_04 = NewControl<QCheckBox>(group, "ckb_04", QStringLiteral("专变客户，本月电量波动超过60％"));
    ckb_05 = NewControl<QCheckBox>(group, "ckb_05", QStringLiteral("专变客户，负载率超过100％"));
    ckb_06 = NewControl<QCheckBox>(group, "ckb_06", QStringLiteral("临时用电，到期提前提醒"));
    auto* inner = new QVBoxLayout(group);
    inner->setSpacing(10);
    for (QCheckBox* b : AlarmBoxes()) inner->addWidget(b);

    ckb_qb = NewControl<QCheckBox>(this, "ckb_qb", QStringLiteral("全选"));
    Bbtn_Qr = NewControl<QPushButton>(this, "Bbtn_Qr", QStringLiteral("确认(&O)"));
    Bbtn_Tc1 = NewControl<QPushButton>(this, "Bbtn_Tc1", QStringLiteral("退出(&X)"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(ckb_qb);
    buttons->addStretch();
    buttons->addWidget(Bbtn_Qr);
    buttons->addWidget(Bbtn_Tc1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 12);
    layout->addWidget(group);
    layout->addLayout(buttons);
    resize(360, 260);

    Mqry_Select = new TMidasQuery(this, QStringLiteral("Mqry_Select"));

    connect(ckb_qb, &QCheckBox::clicked, this, &TJc_Bjsz_Frm::ckb_qbClick);
    connect(Bbtn_Qr, &QPushButton::clicked, this, &TJc_Bjsz_Frm::Bbtn_QrClick);
    connect(Bbtn_Tc1, &QPushButton::clicked, this, &TJc_Bjsz_Frm::Bbtn_Tc1Click);
}

QList<QCheckBox*> TJc_Bjsz_Frm::AlarmBoxes() const {
    return {ckb_01, ckb_02, ckb_03, ckb_04, ckb_05, ckb_06};
}

void TJc_Bjsz_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    Mqry_Select->Close();
    Mqry_Select->SQL().Clear();
    Mqry_Select->SQL().Add(QStringLiteral(" select * from e_bjxz     where sfyx = '是' and czydm = :czydm "));
    Mqry_Select->ParamByName(QStringLiteral("czydm")).SetAsString(Gczydm);
    Mqry_Select->Open();
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
            Mqry_Select->Close();
            Mqry_Select->SQL().Clear();
            Mqry_Select->SQL().Add(QStringLiteral(" select * from e_bjxz where czydm=:czydm and bjdm=:bjdm "));
            Mqry_Select->ParamByName(QStringLiteral("czydm")).SetAsString(Gczydm);
            Mqry_Select->ParamByName(QStringLiteral("bjdm")).SetAsString(code);
            Mqry_Select->Open();
            const bool missing = Mqry_Select->IsEmpty();
            Mqry_Select->Close();
            Mqry_Select->SQL().Clear();
            if (missing)
                Mqry_Select->SQL().Add(QStringLiteral(" insert into e_bjxz(czydm,bjdm,sfyx)    values( :czydm,:bjdm,:sfyx) "));
            else
                Mqry_Select->SQL().Add(QStringLiteral(" update e_bjxz set sfyx=:sfyx      where czydm=:czydm and bjdm=:bjdm "));
            Mqry_Select->ParamByName(QStringLiteral("czydm")).SetAsString(Gczydm);
            Mqry_Select->ParamByName(QStringLiteral("bjdm")).SetAsString(code);
            Mqry_Select->ParamByName(QStringLiteral("sfyx")).SetAsString(sfyx);
            Mqry_Select->ExecSQL();
        }
    }
    close();
}

void TJc_Bjsz_Frm::Bbtn_Tc1Click() { close(); }
