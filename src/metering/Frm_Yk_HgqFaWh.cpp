#include "Frm_Yk_HgqFaWh.h"

#include "common/Unt_Jc_Message.h"
#include "common/unit_zt_pubfun.h"
#include "data/Dm_Jc_Main.h"
#include "data/Dm_Jc_Tarvin.h"

#include <QEvent>

using namespace Qt::StringLiterals;

QPointer<TYk_HgqFaWh_Frm> Yk_HgqFaWh_Frm;

namespace {

TMidasQuery* SchemeRow() { return Jc_Tarvin_Dm->Ds_Hgqfa->DataSet(); }

}  // namespace

TYk_HgqFaWh_Frm::TYk_HgqFaWh_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Yk_HgqFaWh_Frm"_s);
    setupUi(this);
    SetCancelButton(Bbtn_Quit);
    Edt_Dybh->setReadOnly(true);
    Edt_Dybh->setFocusPolicy(Qt::NoFocus);
    Mqry_Select = new TMidasQuery(this, u"Mqry_Select"_s);
    Dblc_Lx->SetListSource(Jc_Main_Dm->Ds_hgqlb->DataSet(), u"DM"_s, u"MC"_s);

    Handle(Bbtn_Qr, &QPushButton::clicked, &TYk_HgqFaWh_Frm::Bbtn_QrClick);
    Handle(Bbtn_Quit, &QPushButton::clicked, &TYk_HgqFaWh_Frm::Bbtn_QuitClick);
}

void TYk_HgqFaWh_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    Dblc_Lx->ListSource()->Close();
    Dblc_Lx->ListSource()->Open();
    TMidasQuery* row = SchemeRow();
    // One transformer unless the caller says otherwise.
    if (row->State() == dsInsert && row->FieldByName(u"ZS"_s).IsNull()) row->FieldByName(u"ZS"_s).SetAsInteger(1);
    Edt_Dybh->setText(row->FieldByName(u"JLDBH"_s).AsString());
    Dblc_Lx->SetKeyValue(row->FieldByName(u"HGQLB"_s).AsString());
    Cob_Bb->clear();
    Cob_Bb->addItem(row->FieldByName(u"HGQBB"_s).AsString());
    Dblc_LxExit();
    Edt_Zs->setText(row->FieldByName(u"ZS"_s).AsString());
    Dblc_Lx->setFocus();
}

// The ratios that suit the category: current transformers ("TA") have
// their own list, every other category takes the voltage ratios. The
// ratio chosen stays chosen when the new list has it.
void TYk_HgqFaWh_Frm::Dblc_LxExit() {
    const QString chosen = Cob_Bb->currentText();
    OpenSql(Mqry_Select, Dblc_Lx->KeyValue().toString() == u"TA"_s ? u"Select MC from W_DLBB"_s
                                                                   : u"Select MC from W_DYBB"_s);
    Cob_Bb->clear();
    for (Mqry_Select->First(); !Mqry_Select->Eof(); Mqry_Select->Next())
        Cob_Bb->addItem(Mqry_Select->FieldByName(u"MC"_s).AsString());
    Mqry_Select->Close();
    Cob_Bb->setCurrentIndex(chosen.isEmpty() ? -1 : Cob_Bb->findText(chosen));
}

bool TYk_HgqFaWh_Frm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Dblc_Lx && event->type() == QEvent::FocusOut && isVisible())
        Guard([this] { Dblc_LxExit(); });
    return TZt_Template_Frm::eventFilter(watched, event);
}

void TYk_HgqFaWh_Frm::Bbtn_QrClick() {
    const auto refuse = [](QWidget* control, const QString& message) {
        ShowInfoMsg(message);
        control->setFocus();
    };
    if (Dblc_Lx->KeyValue().isNull()) return refuse(Dblc_Lx, u"请选择互感器类型。"_s);
    if (Cob_Bb->currentIndex() < 0) return refuse(Cob_Bb, u"请选择互感器变比。"_s);
    const QString count = Edt_Zs->text().trimmed();
    if (count.isEmpty()) return refuse(Edt_Zs, u"请输入互感器数量。"_s);
    // A count is a whole number of units, at least one.
    if (!IsIntStr(count) || count.toInt() <= 0)
        return refuse(Edt_Zs, u"无效的当前互感器数量，请重新键入。"_s);
    TMidasQuery* row = SchemeRow();
    row->Edit();  // a row in insert or edit state stays so
    row->FieldByName(u"HGQLB"_s).SetValue(Dblc_Lx->KeyValue());
    row->FieldByName(u"HGQBB"_s).SetAsString(Cob_Bb->currentText());
    row->FieldByName(u"ZS"_s).SetAsInteger(count.toInt());
    accept();
}

void TYk_HgqFaWh_Frm::Bbtn_QuitClick() { reject(); }
