#include "Frm_Yk_DnbFaWh.h"

#include "common/Unt_Jc_Message.h"
#include "data/Dm_Jc_Main.h"
#include "data/Dm_Jc_Tarvin.h"

#include <QCheckBox>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

QPointer<TYk_DnbFaWh_Frm> Yk_DnbFaWh_Frm;

namespace {

const QString kLetters = u"ABCDEFX"_s;
const QString kNotComputed = u"不算"_s;

// The register boxes a category checks, and those it only offers.
struct TCategoryBoxes {
    QString Category;
    QString Checked;
    QString Enabled;
};
// "预付费表" bills the active total, as an exchanged prepaid meter gets it
// ("D"); the time-of-use registers stay open for a multi-rate prepaid meter.
const TCategoryBoxes kCategoryBoxes[] = {
    {u"有功表"_s, u"D"_s, {}},          {u"需量表"_s, u"X"_s, {}},
    {u"无功表"_s, u"E"_s, u"F"_s},      {u"多功能表"_s, u"ABCDEFX"_s, {}},
    {u"复费率表"_s, u"ABCD"_s, {}},     {u"预付费表"_s, u"D"_s, u"ABC"_s},
};

TMidasQuery* SchemeRow() { return Jc_Tarvin_Dm->Ds_Dnbfa->DataSet(); }

QString FieldText(TMidasQuery* row, const QString& field) { return row->FieldByName(field).AsString(); }

// A line-loss value as the row stores it: a number, or null when empty.
QVariant LossValue(const QLineEdit* edit) {
    bool ok = false;
    const double v = edit->text().trimmed().toDouble(&ok);
    return ok ? QVariant(v) : QVariant();
}

}  // namespace

TYk_DnbFaWh_Frm::TYk_DnbFaWh_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Yk_DnbFaWh_Frm"_s);
    setupUi(this);
    SetCancelButton(Bbtn_Quit);
    // The metering point belongs to the unit that was taken off.
    Edt_JLdbh->setReadOnly(true);
    Edt_JLdbh->setFocusPolicy(Qt::NoFocus);
    // A line-loss value is a number, as NUMERIC(12,4) holds it.
    for (QLineEdit* e : {Edt_XsJsZ, Edt_WgXsJsZ})
        e->setValidator(new QRegularExpressionValidator(QRegularExpression(u"\\d{0,8}(\\.\\d{0,4})?"_s), e));

    TJc_Main_Dm& m = *Jc_Main_Dm;
    Dblc_DBLB->SetListSource(m.Ds_dblb->DataSet(), u"MC"_s, u"MC"_s);
    Dblc_Dl->SetListSource(m.Ds_dl->DataSet(), u"MC"_s, u"MC"_s);
    Dblc_Xx->SetListSource(m.Ds_Xx->DataSet(), u"MC"_s, u"MC"_s);
    Dblc_Dydj->SetListSource(m.Ds_dnbdy->DataSet(), u"MC"_s, u"MC"_s);
    Dblc_JdDJ->SetListSource(m.Ds_jddj->DataSet(), u"DMSM"_s, u"DMSM"_s);

    Handle(Dblc_DBLB, &QComboBox::activated, &TYk_DnbFaWh_Frm::Dblc_DBLBClick);
    Handle(DBCmb_XsJsFs, &QComboBox::currentIndexChanged, &TYk_DnbFaWh_Frm::DBCmb_XsJsFsChange);
    Handle(DBCmb_WgXsJsFs, &QComboBox::currentIndexChanged, &TYk_DnbFaWh_Frm::DBCmb_WgXsJsFsChange);
    for (QComboBox* flag : {Dc_Gkbbz, Dc_Ckbbz})
        Handle(flag, &QComboBox::currentIndexChanged, [this, flag] { showGkbbz(flag->currentText()); });
    Handle(Bbtn_Qr, &QPushButton::clicked, &TYk_DnbFaWh_Frm::Bbtn_QrClick);
    Handle(Bbtn_Quit, &QPushButton::clicked, &TYk_DnbFaWh_Frm::Bbtn_QuitClick);
}

QList<QCheckBox*> TYk_DnbFaWh_Frm::SslxBoxes() const { return {Cb_Zb, Cb_Gf, Cb_Dg, Cb_Pd, Cb_Zx, Cb_Fx, Cb_Xl}; }

QString TYk_DnbFaWh_Frm::ComposeSslx() const {
    QString sslx;
    const QList<QCheckBox*> boxes = SslxBoxes();
    for (int i = 0; i < boxes.size(); ++i)
        if (boxes[i]->isChecked()) sslx += kLetters[i];
    return sslx;
}

void TYk_DnbFaWh_Frm::ShowSslx(const QString& sslx) {
    const QList<QCheckBox*> boxes = SslxBoxes();
    for (int i = 0; i < boxes.size(); ++i)
        if (sslx.contains(kLetters[i])) {
            boxes[i]->setChecked(true);
            boxes[i]->setEnabled(true);  // a stored kind can always be taken off
        }
}

void TYk_DnbFaWh_Frm::SetNewRowDefaults(TMidasQuery* row) {
    for (const auto& [field, value] : {std::pair{u"YGXSJSFS"_s, kNotComputed}, {u"WGXSJSFS"_s, kNotComputed},
                                       {u"GKBBZ"_s, u"否"_s}, {u"CKBBZ"_s, u"否"_s}})
        if (row->FieldByName(field).IsNull()) row->FieldByName(field).SetAsString(value);
}

void TYk_DnbFaWh_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    // The code lists are read afresh on every opening.
    for (TDBLookupComboBox* list : {Dblc_DBLB, Dblc_Dl, Dblc_Xx, Dblc_Dydj, Dblc_JdDJ}) {
        list->ListSource()->Close();
        list->ListSource()->Open();
    }
    TMidasQuery* row = SchemeRow();
    if (row->State() == dsInsert) SetNewRowDefaults(row);
    Edt_JLdbh->setText(FieldText(row, u"JLDBH"_s));
    const QString category = FieldText(row, u"DBLB"_s);
    Dblc_DBLB->SetKeyValue(category);
    Dblc_Dl->SetKeyValue(FieldText(row, u"DL"_s));
    Dblc_Xx->SetKeyValue(FieldText(row, u"XX"_s));
    Dblc_Dydj->SetKeyValue(FieldText(row, u"DY"_s));
    Dblc_JdDJ->SetKeyValue(FieldText(row, u"JDDJ"_s));
    Edt_Zbwz->setText(FieldText(row, u"ZBWZ"_s));
    DBCmb_XsJsFs->setCurrentIndex(DBCmb_XsJsFs->findText(FieldText(row, u"YGXSJSFS"_s)));
    DBCmb_WgXsJsFs->setCurrentIndex(DBCmb_WgXsJsFs->findText(FieldText(row, u"WGXSJSFS"_s)));
    Edt_XsJsZ->setText(FieldText(row, u"YGXSJSZ"_s));
    Edt_WgXsJsZ->setText(FieldText(row, u"WGXSJSZ"_s));
    showGkbbz(FieldText(row, u"GKBBZ"_s));
    // A stored row shows its own register kinds; a new one its category's.
    const QString sslx = FieldText(row, u"SSLX"_s);
    enableFor(category, sslx.isEmpty());
    ShowSslx(sslx);
    DBCmb_XsJsFsChange();
    DBCmb_WgXsJsFsChange();
    Dblc_DBLB->setFocus();
}

void TYk_DnbFaWh_Frm::enableFor(const QString& category, bool check) {
    for (QCheckBox* b : SslxBoxes()) {
        b->setChecked(false);
        b->setEnabled(false);
    }
    for (const TCategoryBoxes& c : kCategoryBoxes) {
        if (c.Category != category) continue;
        const QList<QCheckBox*> boxes = SslxBoxes();
        for (int i = 0; i < boxes.size(); ++i) {
            if (c.Checked.contains(kLetters[i])) {
                boxes[i]->setEnabled(true);
                boxes[i]->setChecked(check);
            }
            if (c.Enabled.contains(kLetters[i])) boxes[i]->setEnabled(true);
        }
    }
}

void TYk_DnbFaWh_Frm::Dblc_DBLBClick() { enableFor(Dblc_DBLB->Text(), true); }

// "不算" (not computed) locks the value; what was typed stays for a later
// change of method.
void TYk_DnbFaWh_Frm::DBCmb_XsJsFsChange() { Edt_XsJsZ->setEnabled(DBCmb_XsJsFs->currentText() != kNotComputed); }

void TYk_DnbFaWh_Frm::DBCmb_WgXsJsFsChange() {
    Edt_WgXsJsZ->setEnabled(DBCmb_WgXsJsFs->currentText() != kNotComputed);
}

void TYk_DnbFaWh_Frm::showGkbbz(const QString& flag) {
    gkbbz_ = flag;
    for (QComboBox* list : {Dc_Gkbbz, Dc_Ckbbz}) {
        const QSignalBlocker quiet(list);
        list->setCurrentIndex(list->findText(flag));
    }
}

void TYk_DnbFaWh_Frm::Bbtn_QrClick() {
    const std::pair<TDBLookupComboBox*, QString> required[] = {
        {Dblc_Dl, u"请选择当前表计方案的电流。"_s}, {Dblc_DBLB, u"请选择电表类别！"_s},
        {Dblc_Xx, u"请选择当前表计方案的相线。"_s}, {Dblc_Dydj, u"请选择表计电压。"_s},
        {Dblc_JdDJ, u"请选择精度。"_s}};
    for (const auto& [list, message] : required)
        if (list->KeyValue().isNull()) {
            ShowInfoMsg(message);
            list->setFocus();
            return;
        }
    const QString sslx = ComposeSslx();
    if (sslx.isEmpty()) {
        ShowInfoMsg(u"请选择当前表计方案的启用示数。"_s);
        for (QCheckBox* b : SslxBoxes())
            if (b->isEnabled()) {
                b->setFocus();
                break;
            }
        return;
    }
    Sslx = sslx;
    storeRow();
    accept();
}

void TYk_DnbFaWh_Frm::storeRow() {
    TMidasQuery* row = SchemeRow();
    row->Edit();  // a row in insert or edit state stays so
    const auto set = [row](const QString& field, const QVariant& value) { row->FieldByName(field).SetValue(value); };
    set(u"DBLB"_s, Dblc_DBLB->KeyValue());
    set(u"DL"_s, Dblc_Dl->KeyValue());
    set(u"XX"_s, Dblc_Xx->KeyValue());
    set(u"DY"_s, Dblc_Dydj->KeyValue());
    set(u"JDDJ"_s, Dblc_JdDJ->KeyValue());
    set(u"ZBWZ"_s, Edt_Zbwz->text());
    set(u"SSLX"_s, Sslx);
    set(u"YGXSJSFS"_s, DBCmb_XsJsFs->currentText());
    set(u"WGXSJSFS"_s, DBCmb_WgXsJsFs->currentText());
    set(u"YGXSJSZ"_s, LossValue(Edt_XsJsZ));
    set(u"WGXSJSZ"_s, LossValue(Edt_WgXsJsZ));
    set(u"GKBBZ"_s, gkbbz_);
}

void TYk_DnbFaWh_Frm::Bbtn_QuitClick() { reject(); }
