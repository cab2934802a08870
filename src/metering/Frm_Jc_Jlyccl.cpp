#include "Frm_Jc_Jlyccl.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopeGuard>

#include "common/Unt_Jc_Message.h"
#include "common/unt_jc_fuc.h"
#include "data/Dm_Jc_Tarvin.h"
#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"
#include "Frm_jl_Tbdl.h"
#include "Unt_Yk_Ckd.h"
#include "pickers/Frm_Gy_Qkhbh.h"
#include "pickers/Frm_Jc_Jcryxs.h"

using namespace Qt::StringLiterals;

QPointer<TJc_Jlyccl_Frm> Jc_Jlyccl_Frm;

namespace {

TJc_Tarvin_Dm& Tarvin() {
    if (!Jc_Tarvin_Dm) throw EDatabaseError(u"Jc_Tarvin_Dm: the data module is not created"_s);
    return *Jc_Tarvin_Dm;
}

// A designed query run again for another value of its one parameter.
void Reopen(TMidasQuery* query, const QString& param, const QString& value) {
    query->Close();
    query->ParamByName(param).SetAsString(value);
    query->Open();
}

// A text the operator may not change: read-only and silver.
void Lock(QLineEdit* edit) {
    edit->setReadOnly(true);
    QPalette p = edit->palette();
    p.setColor(QPalette::Base, QColor(0xC0, 0xC0, 0xC0));
    edit->setPalette(p);
}

// A stored text is shown whole: the edit's length limit is for typing, and
// a longer stored value raises it rather than losing its end.
void Show(QLineEdit* edit, const QString& text) {
    if (text.size() > edit->maxLength()) edit->setMaxLength(int(text.size()));
    edit->setText(text);
}

// What an unsent new case leaves behind when the screen is left: its change
// scheme and its refund decisions (unsent ones carry the case in glcdbh,
// with their details waiting under the case's number).
const QString kDraftDeletes[] = {
    u"Delete from a_HGQFA where CDBH=:CDBH"_s,
    u"Delete from a_DNBFA where CDBH=:CDBH"_s,
    u"Delete from b_tbjl where tbcdH=:CDBH"_s,
    u"Delete from b_tbjl where glcdbh=:CDBH and tbcdh is null"_s,
    u"Delete from b_tbdfxx where tbcdh=:CDBH"_s,
};

}  // namespace

TJc_Jlyccl_Frm::TJc_Jlyccl_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Jc_Jlyccl_Frm"_s);
    setupUi(this);
    Lock(Edt_Cdbh);

    TJc_Tarvin_Dm& dm = Tarvin();
    Dblc_gzxz->SetListSource(dm.Mqry_Gzxz, u"DM"_s, u"MC"_s);
    const QList<TColumn> meters{{u"JLDBH"_s, u"计量点"_s, 60},  {u"JFDBH"_s, u"计费点"_s, 60},
                                {u"TXM"_s, u"条形码"_s, 100},   {u"DNBCCH"_s, u"出厂号"_s, 100},
                                {u"DBLB"_s, u"电表类别"_s, 80}, {u"DL"_s, u"电流"_s, 60},
                                {u"DY"_s, u"电压"_s, 60},       {u"XX"_s, u"相线"_s, 70},
                                {u"JDDJ"_s, u"精度"_s, 50},     {u"BGSM"_s, u"变更说明"_s, 70}};
    const QList<TColumn> transformers{{u"JLDBH"_s, u"计量点"_s, 60},  {u"HGQBH"_s, u"互感器编号"_s, 100},
                                      {u"HGQCCH"_s, u"出厂号"_s, 100}, {u"HGQLB"_s, u"类别"_s, 50},
                                      {u"HGQBB"_s, u"变比"_s, 80},     {u"ZS"_s, u"只数"_s, 50},
                                      {u"BGSM"_s, u"变更说明"_s, 70}};
    QList<TColumn> removedTransformers = transformers;
    removedTransformers[3] = {u"HGQLBMC"_s, u"类别"_s, 90};
    const std::pair<QTableView*, std::pair<TMidasQuery*, QList<TColumn>>> grids[] = {
        {Dbg_Dnb, {dm.Mqry_DnbBg, meters}},
        {DBGrd_DnbFa, {dm.Mqry_Dnbfa, meters}},
        {Dbg_Hgq, {dm.Mqry_HgqBg, removedTransformers}},
        {DBGrd_HgqFa, {dm.Mqry_Hgqfa, transformers}}};
    for (const auto& [grid, source] : grids) {
        auto* binding = new TDBGridBinding(grid, source.first, this);
        binding->Model()->SetReadOnly(true);
        binding->Model()->SetColumns(source.second);
        binding->ApplyColumnWidths();
        grid->verticalHeader()->setDefaultSectionSize(20);
    }

    Handle(Sb_Xz, &QToolButton::clicked, &TJc_Jlyccl_Frm::Sb_XzClick);
    Handle(Sb_Sz, &QToolButton::clicked, &TJc_Jlyccl_Frm::Sb_SzClick);
    Handle(Rb_Gzb, &QRadioButton::clicked, &TJc_Jlyccl_Frm::Rb_GzbClick);
    Handle(Rb_Wgz, &QRadioButton::clicked, &TJc_Jlyccl_Frm::Rb_WgzClick);
    Handle(Rb_Cjx, &QRadioButton::clicked, &TJc_Jlyccl_Frm::Rb_CjxClick);
    Handle(Rb_Xyb, &QRadioButton::clicked, &TJc_Jlyccl_Frm::Rb_XybClick);
    Handle(Bbtn_tb, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_tbClick);
    Handle(Bbtn_Dy, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_DyClick);
    Handle(Bbtn_Tc, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_TcClick);
}

// ------------------------------------------------------------ opening

void TJc_Jlyccl_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    TJc_Tarvin_Dm& dm = Tarvin();
    dm.Mqry_Gzxz->Close();
    dm.Mqry_Gzxz->Open();
    sCdbh = Cdbh;
    dt_jcrq->setDateTime(GetServerDateTime());

    bNewCase = sCdbh.isEmpty();
    if (bNewCase) {
        Bbtn_Dy->setEnabled(false);
        Edt_Hh->setFocus();
    } else {
        Reopen(dm.MQry_Khsqxx, u"CDBH"_s, sCdbh);
        Lock(Edt_Hh);
        Sb_Xz->hide();
        const auto field = [&](const char* name) { return dm.MQry_Khsqxx->FieldByName(QLatin1String(name)).AsString(); };
        sHh = field("hh");
        Show(Edt_Hh, sHh);
        Edt_Cdbh->setText(field("CDBH"));
        Edt_Hm->setText(field("HM"));
        Edt_Yddz->setText(field("YDDZ"));
        Mem_Sqbz->setPlainText(field("SQBZ"));
        const std::pair<QLineEdit*, const char*> contact[] = {
            {Edt_Lxr, "LXR"}, {Edt_Lxdh, "LXDH"}, {Edt_Yzbm, "YZBM"}, {Edt_Lxdz, "LXDZ"}};
        for (const auto& [edit, name] : contact) {
            Lock(edit);
            Show(edit, field(name));
        }

        // Every visit to a case starts with an empty change scheme: what an
        // unfinished earlier visit left is thrown away, all of it or none.
        TCustomMidasDataBase& shdl = TCustomMidasDataBase::ByName();
        shdl.StartTransaction();
        for (const QString& table : {u"a_HGQFA"_s, u"a_DNBFA"_s, u"a_GDFA"_s})
            ExecSql(dm.Mqry_Update, u"delete from "_s + table + u" where CDBH=:CDBH"_s, {{"CDBH", sCdbh}});
        shdl.Commit();

        Reopen(dm.Mqry_DnbBg, u"hh"_s, sHh);
        Reopen(dm.Mqry_HgqBg, u"HH"_s, sHh);
        Reopen(dm.Mqry_Dnbfa, u"CDBH"_s, sCdbh);
        Reopen(dm.Mqry_Hgqfa, u"cdbh"_s, sCdbh);
        InspectorDefaults();
        // The inspection that raised the case knows who was there and what
        // they found.
        OpenSql(dm.Mqry_Select, u"select * from e_jcgzjl where cdbh=:cdbh"_s, {{"cdbh", sCdbh}});
        if (!dm.Mqry_Select->IsEmpty()) {
            Show(edt_jcry, dm.Mqry_Select->FieldByName(u"jcry"_s).AsString());
            Show(EDT_JCZH, dm.Mqry_Select->FieldByName(u"jcZH"_s).AsString());
            const QDateTime jcrq = dm.Mqry_Select->FieldByName(u"jcRQ"_s).AsDateTime();
            if (jcrq.isValid()) dt_jcrq->setDateTime(jcrq);
            mem_bz->setPlainText(dm.Mqry_Select->FieldByName(u"czwt"_s).AsString());
        }
        dm.Mqry_Select->Close();
    }
    Pgc_Jlzz->setCurrentWidget(Ts_Dnb);

    // A verification case keeps its kind; a case raised by an inspection
    // result cannot be closed as fault-free.
    const QString step = Ywxdm.left(3);
    if (step == u"191"_s) {
        Rb_Xyb->setChecked(true);
        Rb_XybClick();
        for (QRadioButton* rb : {Rb_Cjx, Rb_Wgz, Rb_Gzb}) rb->setEnabled(false);
    }
    if (step == u"401"_s) Rb_Wgz->setEnabled(false);
}

void TJc_Jlyccl_Frm::InspectorDefaults() {
    TMidasQuery* q = Tarvin().Mqry_Select;
    OpenSql(q, u"select xm,jczh from e_jcryxx where czydm=:czydm"_s, {{"czydm", Gczydm}});
    Show(edt_jcry, q->FieldByName(u"xm"_s).AsString());
    Show(EDT_JCZH, q->FieldByName(u"jcZH"_s).AsString());
    q->Close();
}

// ------------------------------------------------------------ account

bool TJc_Jlyccl_Frm::FormKeyPress(QWidget* control, QKeyEvent* event) {
    // A refused account keeps the focus, its text selected for typing over.
    if (control == Edt_Hh && !Edt_HhKeyPress(event)) {
        Edt_Hh->setFocus();
        Edt_Hh->selectAll();
        return true;
    }
    return TZt_Template_Frm::FormKeyPress(control, event);
}

bool TJc_Jlyccl_Frm::Edt_HhKeyPress(QKeyEvent* key) {
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter) return true;
    const QString hh = Edt_Hh->text().trimmed();
    if (!bNewCase || hh.isEmpty()) return true;
    if (!IsValidKh(hh, Gdw)) {
        ShowInfoMsg(u"该客户编号不存在！请重新输入。"_s);
        return false;
    }
    if (!CheckKhSqxx(hh).isEmpty()) {
        ShowInfoMsg(u"该客户目前尚有其他业务未处理完,请先处理其他业务！"_s);
        return false;
    }
    TJc_Tarvin_Dm& dm = Tarvin();
    OpenSql(dm.MQry_Khda, u" select a.*,b.mc xzqmc from Y_KHDA a ,w_qy b  where HH=:HH and a.xzq=b.dm(+)"_s,
            {{"HH", hh}});
    Reopen(dm.Mqry_DnbBg, u"hh"_s, hh);
    Reopen(dm.Mqry_HgqBg, u"HH"_s, hh);
    InspectorDefaults();
    const auto field = [&](const char* name) { return dm.MQry_Khda->FieldByName(QLatin1String(name)); };
    dHtrl = field("HTRL").AsFloat();
    sHh = hh;

    // Every Enter draws a fresh number; an earlier one is simply abandoned.
    sCdbh = GetNewCdbh();
    Edt_Cdbh->setText(sCdbh);
    if (sCdbh.isEmpty()) {
        ShowInfoMsg(u"未能取得新的传单编号，请与系统管理员联系。"_s);
        return false;
    }
    Edt_Hm->setText(field("HM").AsString());
    Edt_Yddz->setText(field("YDDZ").AsString());
    const std::pair<QLineEdit*, const char*> contact[] = {
        {Edt_Lxr, "LXR"}, {Edt_Lxdh, "LXDH"}, {Edt_Yzbm, "YZBM"}, {Edt_Lxdz, "LXDZ"}};
    for (const auto& [edit, name] : contact) Show(edit, field(name).AsString());
    Reopen(dm.Mqry_Dnbfa, u"CDBH"_s, sCdbh);
    Reopen(dm.Mqry_Hgqfa, u"cdbh"_s, sCdbh);
    return true;
}

void TJc_Jlyccl_Frm::Sb_XzClick() {
    TGy_Qkhbh_Frm picker(this);
    picker.exec();
    if (!picker.sKhbh.isEmpty()) Edt_Hh->setText(picker.sKhbh);
    Edt_Hh->setFocus();
}

void TJc_Jlyccl_Frm::Sb_SzClick() {
    TJc_Jcryxs_Frm picker(this);
    if (picker.exec() != QDialog::Accepted) return;
    Show(edt_jcry, picker.SelXm);
    Show(EDT_JCZH, picker.SelJczh);
}

// ------------------------------------------------------------ fault kind

int TJc_Jlyccl_Frm::SchemeRowCount() const {
    int n = 0;
    for (TMidasQuery* q : {Jc_Tarvin_Dm->Mqry_DnbBg, Jc_Tarvin_Dm->Mqry_HgqBg}) {
        if (!q->Active()) continue;
        const int bgsm = q->FindFieldIndex(u"BGSM"_s);
        for (int row = 0; row < q->RecordCount(); ++row)
            if (!q->valueAt(row, bgsm).toString().isEmpty()) ++n;
    }
    return n;
}

void TJc_Jlyccl_Frm::Rb_GzbClick() {
    for (QWidget* w : std::initializer_list<QWidget*>{Bbtn_tb, Ckb_Ywf, Dblc_gzxz}) w->setEnabled(true);
}

void TJc_Jlyccl_Frm::NoSchemeKind(bool refund, const QString& message) {
    Bbtn_tb->setEnabled(refund);
    Ckb_Ywf->setEnabled(false);
    TMidasQuery* meters = Tarvin().Mqry_DnbBg;
    if (!meters->Active() || meters->IsEmpty()) return;
    if (SchemeRowCount() == 0) {
        Dblc_gzxz->setEnabled(false);
        return;
    }
    // The kind stays chosen; the send refuses it while the scheme is there.
    ShowInfoMsg(message);
    Pgc_Jlzz->setCurrentWidget(Ts_Dnb);
    Dbg_Dnb->setFocus();
}

void TJc_Jlyccl_Frm::Rb_WgzClick() { NoSchemeKind(false, u"无故障，不需要更换计量装置，请取消方案"_s); }
void TJc_Jlyccl_Frm::Rb_CjxClick() { NoSchemeKind(true, u"错接线，不需要更换计量装置，请取消方案"_s); }
void TJc_Jlyccl_Frm::Rb_XybClick() { NoSchemeKind(false, u"需验表，请先取消更换计量装置方案"_s); }

// ------------------------------------------------------------ buttons

void TJc_Jlyccl_Frm::Bbtn_tbClick() {
    if (Edt_Hh->text().trimmed().isEmpty()) return;
    Tjl_Tbdl_Frm refund(this);
    jl_Tbdl_Frm = &refund;
    refund.sCdbh = sCdbh;
    refund.sHh = sHh;
    refund.exec();
}

void TJc_Jlyccl_Frm::Bbtn_DyClick() { PrintCkd(this, sCdbh, Gdw); }

void TJc_Jlyccl_Frm::Bbtn_TcClick() { close(); }

// ------------------------------------------------------------ closing

void TJc_Jlyccl_Frm::FormClose() {
    if (!Jc_Tarvin_Dm) return;
    TJc_Tarvin_Dm& dm = *Jc_Tarvin_Dm;
    const auto closeQueries = qScopeGuard([&dm] {
        for (TMidasQuery* q : {dm.Mqry_DnbBg, dm.Mqry_HgqBg, dm.MQry_Khda, dm.Mqry_Dnbfa, dm.Mqry_Hgqfa,
                               dm.MQry_Khsqxx, dm.Mqry_Update, dm.Mqry_Select})
            q->Close();
    });
    // A new case never sent leaves nothing behind. An incoming case keeps
    // its scheme as entered.
    if (!bNewCase || sCdbh.isEmpty()) return;
    TCustomMidasDataBase& shdl = TCustomMidasDataBase::ByName();
    shdl.StartTransaction();
    for (const QString& sql : kDraftDeletes) ExecSql(dm.Mqry_Update, sql, {{"CDBH", sCdbh}});
    shdl.Commit();
}

void TJc_Jlyccl_Frm::done(int result) {
    Guard([this] { FormClose(); });
    TZt_Template_Frm::done(result);
}
