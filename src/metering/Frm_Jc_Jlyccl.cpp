#include "Frm_Jc_Jlyccl.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopeGuard>

#include "common/Unt_Jc_Message.h"
#include "common/Unt_Zt_UserFuncs.h"
#include "common/unt_jc_fuc.h"
#include "data/Dm_Jc_Tarvin.h"
#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"
#include "Frm_Yk_DnbFaWh.h"
#include "Frm_Yk_HgqFaWh.h"
#include "Frm_Yk_SltChxz.h"
#include "Frm_jl_Tbdl.h"
#include "Unt_Yk_Ckd.h"
#include "pickers/Frm_Gy_Qkhbh.h"
#include "pickers/Frm_Jc_Jcryxs.h"

using namespace Qt::StringLiterals;

QPointer<TJc_Jlyccl_Frm> Jc_Jlyccl_Frm;

namespace {

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

QString Current(TMidasQuery* q, const QString& field) { return q->FieldByName(field).AsString(); }

// A list with a current row to act on.
bool HasRow(TMidasQuery* q) { return q->Active() && !q->IsEmpty(); }

// Every scheme row needs its own number; without one nothing is written.
QString NewId() {
    const QString id = GetNewDnbId();
    if (id.isEmpty()) throw EDatabaseError(u"未能取得新的方案编号，请与系统管理员联系。"_s);
    return id;
}

void CopyFields(TMidasQuery* from, TMidasQuery* to, const QStringList& names) {
    for (const QString& name : names) to->FieldByName(name).SetValue(from->FieldByName(name).Value());
}

// Writes the scheme query's changes; what the database refuses is taken
// back out of the list, so the list shows what is stored.
void Apply(TMidasQuery* q) {
    if (q->ApplyUpdates() == 0) return;
    q->CancelUpdates();
    throw EDatabaseError(u"方案未能保存，请重试。"_s);
}

// The upper list and the scheme list below it read again.
void RefreshLists(TMidasQuery* upper, TMidasQuery* scheme) {
    for (TMidasQuery* q : {upper, scheme})
        if (q->Active()) q->Refresh();
}

// A row left in insert or edit state by a cancelled or failed edit.
auto CancelPending(TMidasQuery* q) {
    return qScopeGuard([q] {
        if (q->State() == dsInsert || q->State() == dsEdit) q->Cancel();
    });
}

const QString kExchanged = u"换取"_s;
const QString kInstalled = u"新装"_s;

// A new installed row of the case under the scheme list, with the named
// fields of the upper list's current row; the caller cancels it on failure.
void AppendInstalled(TMidasQuery* row, TMidasQuery* upper, const QStringList& copied, const QString& cdbh,
                     const QString& hh) {
    const QString id = NewId();
    row->Append();
    for (const auto& [field, value] : {std::pair{u"ID"_s, id}, {u"CDBH"_s, cdbh}, {u"HH"_s, hh}, {u"BGSM"_s, kInstalled}})
        row->FieldByName(field).SetAsString(value);
    CopyFields(upper, row, copied);
}

// A scheme editor on the list's current row (put in insert or edit state by
// the caller): on OK the row is posted and applied, otherwise cancelled.
// `shown` is the unit's pointer to the open editor.
template <class Editor>
bool EditScheme(QWidget* parent, QPointer<Editor>& shown, TMidasQuery* row, const QString& caption,
                const std::function<void()>& beforePost = {}) {
    const auto cancel = CancelPending(row);
    {
        Editor editor(parent);
        shown = &editor;
        editor.setWindowTitle(caption);
        if (editor.exec() != QDialog::Accepted) return false;
    }
    if (beforePost) beforePost();
    row->Post();
    Apply(row);
    return true;
}

// Installing goes with a changed unit of the upper list.
bool ChangedUnitChosen(TMidasQuery* upper, const QString& refusal) {
    if (HasRow(upper) && !Current(upper, u"BGSM"_s).isEmpty()) return true;
    ShowInfoMsg(refusal);
    return false;
}

// Deletes the scheme list's current installed row when the operator agrees.
void DeleteInstalled(TMidasQuery* upper, TMidasQuery* row, const QString& question) {
    if (!HasRow(row) || AskYesNo(question) != mrYes) return;
    row->Delete();
    Apply(row);
    RefreshLists(upper, row);
}

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
        TDBGridBinding::ReadOnlyList(grid, source.first, source.second, this);
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
    Handle(Bbtn_Fs, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_FsClick);
    Handle(Bbtn_Dbnhq, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_DbnhqClick);
    Handle(Bbtn_Ch, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_ChClick);
    Handle(Bbtn_Dnbqx, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_DnbqxClick);
    Handle(Bbtn_Xz, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_XzClick);
    Handle(Bbtn_Xg, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_XgClick);
    Handle(Bbtn_Sc, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_ScClick);
    Handle(Bbtn_Hgqhq, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_HgqhqClick);
    Handle(BitBtn1, &QPushButton::clicked, &TJc_Jlyccl_Frm::BitBtn1Click);
    Handle(Bbtn_Hgqqx, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_HgqqxClick);
    Handle(Bbtn_XzHgq, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_XzHgqClick);
    Handle(Bbtn_XgHgq, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_XgHgqClick);
    Handle(Bbtn_ScHgq, &QPushButton::clicked, &TJc_Jlyccl_Frm::Bbtn_ScHgqClick);
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

// ------------------------------------------------------------ change scheme

bool TJc_Jlyccl_Frm::MayChange(TMidasQuery* upper) {
    // A row already in the scheme is left alone.
    if (!HasRow(upper) || !Current(upper, u"BGSM"_s).isEmpty()) return false;
    if (!Rb_Gzb->isChecked()) {
        ShowInfoMsg(u"非故障表不需要方案！"_s);
        return false;
    }
    if (Dblc_gzxz->KeyValue().isNull()) {
        ShowInfoMsg(u"请先选择故障性质！"_s);
        return false;
    }
    return true;
}

void TJc_Jlyccl_Frm::MeterOff(const QString& bgsm) {
    TJc_Tarvin_Dm& dm = Tarvin();
    ExecSql(dm.Mqry_Select,
            u"insert into A_DNBFA(ID,CDBH,HH,JFDBH,JLDBH,TXM,BYQBH,DNBCCH,DBLB,GZLX,DL,XX,BGSM,JDDJ,DY,BJ,CBSX,dw,ZHBL,CQ,"
            "CKBBZ,gkbbz,jlzzdfl,THDL,THXX,ZBWZ,JBH) select :ID,:CDBH, HH,JFDBH,JLDBH,TXM,BYQBH,DNBCCH,DBLB,:GZLX,DL,XX,"
            ":BGSM,JDDJ,DY,BJ,CBSX,dw,ZHBL,CQ,CKBBZ,gkbbz,jlzzdfl,DL,XX,ZBWZ,JBH from Y_YXDNB where TXM =:TXM and HH = :HH "_s,
            {{"ID", NewId()}, {"CDBH", sCdbh}, {"GZLX", Dblc_gzxz->KeyValue().toString()}, {"BGSM", bgsm},
             {"TXM", Current(dm.Mqry_DnbBg, u"TXM"_s)}, {"HH", sHh}});
    ExecSql(dm.Mqry_Select, u"commit"_s);
}

void TJc_Jlyccl_Frm::TransformerOff(const QString& bgsm) {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* upper = dm.Mqry_HgqBg;
    ExecSql(dm.Mqry_Select,
            u"insert into A_HGQFA(ID,CDBH,HH,JLDBH,HGQCCH,HGQBH,HGQLB,HGQBB,BGSM,ZS,GZLB,dw) values(:ID,:CDBH, :HH,:JldBH,"
            ":HGQCCH,:HGQBH,:HGQLB,:HGQBB,:BGSM,:ZS,:GZLB,:dw) "_s,
            {{"ID", NewId()}, {"CDBH", sCdbh}, {"HH", sHh}, {"JldBH", Current(upper, u"JLDBH"_s)},
             {"HGQCCH", Current(upper, u"HGQCCH"_s)}, {"HGQBH", Current(upper, u"HGQBH"_s)},
             {"HGQLB", Current(upper, u"HGQLB"_s)}, {"HGQBB", Current(upper, u"HGQBB"_s)}, {"BGSM", bgsm}, {"ZS", 1},
             {"GZLB", Dblc_gzxz->KeyValue().toString()}, {"dw", Current(upper, u"dw"_s)}});
}

void TJc_Jlyccl_Frm::Bbtn_DbnhqClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* upper = dm.Mqry_DnbBg;
    if (!MayChange(upper)) return;
    // The removed meter is committed before its replacement is written; if
    // the replacement fails, the list still shows the removal to cancel.
    MeterOff(kExchanged);
    try {
        TMidasQuery* row = dm.Mqry_Dnbfa;
        const auto cancel = CancelPending(row);
        AppendInstalled(row, upper,
                        {u"JFDBH"_s, u"JLDBH"_s, u"DL"_s, u"DY"_s, u"JDDJ"_s, u"XX"_s, u"DBLB"_s, u"byqbh"_s, u"YGXSJSFS"_s,
                         u"YGXSJSZ"_s, u"WGXSJSFS"_s, u"WGXSJSZ"_s, u"BJ"_s, u"CKBBZ"_s, u"CBSX"_s, u"CBLB"_s, u"gkbbz"_s,
                         u"jlzzdfl"_s, u"ZBWZ"_s, u"JBH"_s, u"dw"_s},
                        sCdbh, sHh);
        row->FieldByName(u"THDL"_s).SetAsString(Current(upper, u"DL"_s));
        row->FieldByName(u"THXX"_s).SetAsString(Current(upper, u"XX"_s));
        row->FieldByName(u"SSLX"_s).SetAsString(GetDnbLxCode(Current(upper, u"DBLB"_s)));
        row->Post();
        Apply(row);
    } catch (const EDatabaseError&) {
        upper->Refresh();
        throw;
    }
    upper->Refresh();
}

void TJc_Jlyccl_Frm::Bbtn_ChClick() {
    TMidasQuery* upper = Tarvin().Mqry_DnbBg;
    if (!MayChange(upper)) return;
    QString nature;
    {
        TYk_SltChxz_frm picker(this);
        Yk_SltChxz_frm = &picker;
        picker.exec();
        nature = picker.Chxz;
    }
    if (nature.isEmpty()) return;
    MeterOff(nature);
    upper->Refresh();
}

void TJc_Jlyccl_Frm::Bbtn_DnbqxClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* upper = dm.Mqry_DnbBg;
    if (!HasRow(upper) || AskYesNo(u"是否真的删除该电能表方案？"_s) != mrYes) return;
    // An exchange goes with its replacement: same metering point and category.
    if (Current(upper, u"BGSM"_s) == kExchanged)
        ExecSql(dm.Mqry_Update, u"Delete from A_DNBFA where JLDBH = :JLDBH and CDBH = :CDBH and DBLB = :DBLB"_s,
                {{"JLDBH", Current(upper, u"JLDBH"_s)}, {"CDBH", sCdbh}, {"DBLB", Current(upper, u"DBLB"_s)}});
    else
        ExecSql(dm.Mqry_Update, u"Delete from A_DNBFA where JLDBH = :JLDBH and CDBH = :CDBH and TXM = :TXM"_s,
                {{"JLDBH", Current(upper, u"JLDBH"_s)}, {"CDBH", sCdbh}, {"TXM", Current(upper, u"TXM"_s)}});
    RefreshLists(upper, dm.Mqry_Dnbfa);
}

bool TJc_Jlyccl_Frm::EditMeter(const QString& caption) {
    TMidasQuery* row = Tarvin().Mqry_Dnbfa;
    return EditScheme(this, Yk_DnbFaWh_Frm, row, caption, [row] {
        // THDL and THXX carry a new meter's own current and phase-wire, as on an exchange.
        if (row->State() != dsInsert) return;
        row->FieldByName(u"THDL"_s).SetValue(row->FieldByName(u"DL"_s).Value());
        row->FieldByName(u"THXX"_s).SetValue(row->FieldByName(u"XX"_s).Value());
    });
}

void TJc_Jlyccl_Frm::Bbtn_XzClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* upper = dm.Mqry_DnbBg;
    if (!ChangedUnitChosen(upper, u"请先换取/拆除电能表，或者选择已变更的电能表。"_s)) return;
    TMidasQuery* row = dm.Mqry_Dnbfa;
    const auto cancel = CancelPending(row);
    AppendInstalled(row, upper, {u"JLDBH"_s, u"BYQBH"_s, u"JFDBH"_s, u"dw"_s}, sCdbh, sHh);
    TYk_DnbFaWh_Frm::SetNewRowDefaults(row);
    EditMeter(u"电能表方案 - 增加"_s);
    RefreshLists(upper, row);
}

void TJc_Jlyccl_Frm::Bbtn_XgClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    if (!HasRow(dm.Mqry_Dnbfa)) return;
    dm.Mqry_Dnbfa->Edit();
    if (EditMeter(u"电能表方案 - 修改"_s)) RefreshLists(dm.Mqry_DnbBg, dm.Mqry_Dnbfa);
}

void TJc_Jlyccl_Frm::Bbtn_ScClick() {
    DeleteInstalled(Tarvin().Mqry_DnbBg, Tarvin().Mqry_Dnbfa, u"是否真的删除该电能表方案？"_s);
}

void TJc_Jlyccl_Frm::Bbtn_HgqhqClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* upper = dm.Mqry_HgqBg;
    if (!MayChange(upper)) return;
    TransformerOff(kExchanged);
    try {
        // The replacement is a like unit: its own numbers are not known yet.
        TMidasQuery* row = dm.Mqry_Hgqfa;
        const auto cancel = CancelPending(row);
        AppendInstalled(row, upper, {u"JLDBH"_s, u"SDDBH"_s, u"HGQLB"_s, u"HGQBB"_s, u"JDDJ"_s, u"dw"_s}, sCdbh, sHh);
        row->FieldByName(u"ZS"_s).SetAsInteger(1);
        row->Post();
        Apply(row);
    } catch (const EDatabaseError&) {
        upper->Refresh();
        throw;
    }
    upper->Refresh();
}

void TJc_Jlyccl_Frm::BitBtn1Click() {
    TMidasQuery* upper = Tarvin().Mqry_HgqBg;
    if (!MayChange(upper)) return;
    TransformerOff(u"拆除"_s);
    upper->Refresh();
}

void TJc_Jlyccl_Frm::Bbtn_HgqqxClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* upper = dm.Mqry_HgqBg;
    if (!HasRow(upper) || AskYesNo(u"是否真的删除该互感器方案？"_s) != mrYes) return;
    // An exchange is withdrawn for the metering point and category as a
    // whole, whichever case wrote the rows.
    if (Current(upper, u"BGSM"_s) == kExchanged)
        ExecSql(dm.Mqry_Update, u"Delete from a_HGQFA where jldbh = :jldBH   and hgqlb = :hgqlb"_s,
                {{"jldBH", Current(upper, u"JLDBH"_s)}, {"hgqlb", Current(upper, u"HGQLB"_s)}});
    else
        ExecSql(dm.Mqry_Update, u"Delete from A_HGQFA where ID = :ID"_s, {{"ID", Current(upper, u"ID"_s)}});
    RefreshLists(upper, dm.Mqry_Hgqfa);
}

bool TJc_Jlyccl_Frm::EditTransformer(const QString& caption) {
    return EditScheme(this, Yk_HgqFaWh_Frm, Tarvin().Mqry_Hgqfa, caption);
}

void TJc_Jlyccl_Frm::Bbtn_XzHgqClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* upper = dm.Mqry_HgqBg;
    if (!ChangedUnitChosen(upper, u"请先换取/拆除互感器，或者选择已变更的互感器。"_s)) return;
    TMidasQuery* row = dm.Mqry_Hgqfa;
    const auto cancel = CancelPending(row);
    AppendInstalled(row, upper, {u"JLDBH"_s, u"SDDBH"_s, u"HGQBB"_s, u"HGQLB"_s, u"dw"_s}, sCdbh, sHh);
    row->FieldByName(u"ZS"_s).SetAsInteger(1);
    EditTransformer(u"互感器方案 - 增加"_s);
    RefreshLists(upper, row);
}

void TJc_Jlyccl_Frm::Bbtn_XgHgqClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    if (!HasRow(dm.Mqry_Hgqfa)) return;
    dm.Mqry_Hgqfa->Edit();
    if (EditTransformer(u"互感器方案 - 修改"_s)) RefreshLists(dm.Mqry_HgqBg, dm.Mqry_Hgqfa);
}

void TJc_Jlyccl_Frm::Bbtn_ScHgqClick() {
    DeleteInstalled(Tarvin().Mqry_HgqBg, Tarvin().Mqry_Hgqfa, u"是否真的删除该互感器方案？"_s);
}

// ------------------------------------------------------------ send

namespace {

const QString kSendFailed = u"当前客户流程发送错误，请尝试重新发送。"_s;

// A number the send cannot do without; an exhausted sequence stops it.
QString Drawn(const QString& number, const QString& what) {
    if (number.isEmpty()) throw EDatabaseError(u"未能取得新的"_s + what + u"，请与系统管理员联系。"_s);
    return number;
}

bool HasRefundRecords(TMidasQuery* q, const QString& cdbh) {
    OpenSql(q, u"select * from b_tbjl where glcdbh=:glcdbh "_s, {{"glcdbh", cdbh}});
    const bool any = !q->IsEmpty();
    q->Close();
    return any;
}

}  // namespace

bool TJc_Jlyccl_Frm::NoRefundAgreed() {
    if (HasRefundRecords(Tarvin().Mqry_Select, sCdbh)) return true;
    if (AskYesNo(u"确定不需要退补电量电费吗？"_s) != mrYes) {
        Bbtn_tb->setFocus();
        return false;
    }
    mem_bz->appendPlainText(u"不需要退补电量电费。"_s);
    return true;
}

int TJc_Jlyccl_Frm::StartWorkflow(const QString& cdbh, const QString& ywdm, const QString& ywxdm,
                                  const std::function<void()>& rows) {
    const auto start = [&](auto call) {
        return call(cdbh, ywdm, ywxdm, Gdw, sHh, u"一般"_s, Gczydm, WfGetSysDate(), Edt_Hm->text(), Edt_Yddz->text());
    };
    if (start(&WfTryFristYwx) != 0) {
        UndoYysq(cdbh);
        ShowErrorMsg(kSendFailed);
        return 1;
    }
    TCustomMidasDataBase& shdl = TCustomMidasDataBase::ByName();
    shdl.StartTransaction();
    if (rows) rows();
    if (start(&WfFristYwx) != 0) {
        UndoYysq(cdbh);
        ShowErrorMsg(kSendFailed);
        shdl.Rollback();
        return 2;
    }
    shdl.Commit();
    return 0;
}

void TJc_Jlyccl_Frm::Bbtn_FsClick() {
    if (sFsbz == u"1"_s) return;
    const auto stopWith0 = [this] { sFsbz = u"0"_s; };
    if (!IsValidKh(Edt_Hh->text(), Gdw)) {
        ShowInfoMsg(u"该客户编号不存在！请重新输入。"_s);
        Edt_Hh->setFocus();
        return stopWith0();
    }
    if (mem_bz->toPlainText().trimmed().isEmpty()) {
        ShowInfoMsg(u"请输入现场核查情况！"_s);
        mem_bz->setFocus();
        return;
    }
    if (edt_jcry->text().isEmpty()) {
        ShowInfoMsg(u"请输入实际检查人员！"_s);
        edt_jcry->setFocus();
        return;
    }
    const int changed = SchemeRowCount();
    TJc_Tarvin_Dm& dm = Tarvin();

    // The finding by fault kind, and the case's control flags: a flag that
    // does not apply is "无", only the fault flag of "no fault" is "否".
    QString ycxz, gzlx, rdyj = u"现场检查校验"_s, ykkzb;
    const QString sfxysf = Ckb_Ywf->isChecked() ? u"是"_s : u"否"_s;
    if (Rb_Gzb->isChecked()) {
        if (changed == 0) {
            ShowInfoMsg(u"故障换表，请先确定方案！"_s);
            Pgc_Jlzz->setCurrentWidget(Ts_Dnb);
            return;
        }
        if (!NoRefundAgreed()) return;
        ycxz = u"故障表"_s;
        gzlx = Dblc_gzxz->KeyValue().toString();
        if (bNewCase)
            ExecSql(dm.Mqry_Update,
                    u" insert into a_ykkzb (cdbh, sfygz,  sfxyb,sfcjx,sfxysf,htrl) values (:cdbh,'无','无','无',:sfxysf,:htrl)"_s,
                    {{"cdbh", sCdbh}, {"sfxysf", sfxysf}, {"htrl", dHtrl}});
        else
            ExecSql(dm.Mqry_Update,
                    u" update a_ykkzb set sfygz='无',             sfxyb='无', sfcjx='无',sfxysf = :sfxysf   where cdbh=:cdbh "_s,
                    {{"sfxysf", sfxysf}, {"cdbh", sCdbh}});
    } else if (Rb_Cjx->isChecked()) {
        if (changed > 0) return ShowInfoMsg(u"错接线，请先取消方案！"_s);
        if (!NoRefundAgreed()) return;
        if (AskYesNo(u"确定不需要更换计量装置吗？"_s) != mrYes) return stopWith0();
        ycxz = u"错接线"_s;
        ExecSql(dm.Mqry_Update,
                bNewCase ? u" insert into a_ykkzb (cdbh, sfygz,  sfxyb,sfcjx,sfxysf) values (:cdbh,'无','无','是','')"_s
                         : u" update a_ykkzb set sfygz='无',  sfxyb='无', sfcjx='是',sfxysf=''   where cdbh=:cdbh "_s,
                {{"cdbh", sCdbh}});
    } else if (Rb_Wgz->isChecked()) {
        if (changed > 0) return ShowInfoMsg(u"无故障，请先取消方案！"_s);
        if (AskYesNo(u"确定无故障吗？"_s) != mrYes) return stopWith0();
        ycxz = u"无故障"_s;
        ExecSql(dm.Mqry_Update,
                bNewCase ? u" insert into a_ykkzb (cdbh, sfygz,  sfxyb,sfcjx,sfxysf) values (:cdbh,'否','无','无','')"_s
                         : u" update a_ykkzb set sfygz='否',  sfxyb='无', sfcjx='无',sfxysf=''   where cdbh=:cdbh "_s,
                {{"cdbh", sCdbh}});
    } else if (Rb_Xyb->isChecked()) {
        if (changed > 0) return ShowInfoMsg(u"需要校验，请先取消变更方案！"_s);
        ycxz = u"无故障"_s;  // verification is recorded as no fault found yet
        rdyj = u"计量校验"_s;
        if (bNewCase)
            ExecSql(dm.Mqry_Update,
                    u" insert into a_ykkzb (cdbh, sfygz,  sfxyb,sfcjx,sfxysf,htrl) values (:cdbh,'无','是','无','',:htrl)"_s,
                    {{"cdbh", sCdbh}, {"htrl", dHtrl}});
        else
            ExecSql(dm.Mqry_Update, u" update a_ykkzb set sfygz='无',  sfxyb='是', sfcjx='无',sfxysf=''   where cdbh=:cdbh "_s,
                    {{"cdbh", sCdbh}});
    }

    QApplication::setOverrideCursor(Qt::WaitCursor);
    auto cursor = qScopeGuard([] { QApplication::restoreOverrideCursor(); });

    if (bNewCase) {
        const int started = StartWorkflow(sCdbh, u"160"_s, u"16001"_s, [&] {
            ExecSql(dm.Mqry_Update,
                    u" Insert Into A_KHSQXX(CDBH,SLBM,YWDM,SQRQ,SQBZ, HH,KHLX,HM,YDDZ,ZJMC,ZJHM, LXDZ,LXDH,LXR,YZBM,FKDW,"
                    "FKFS,HYFL,YHDM, YHZH,DW,XZQ,SFXYH, ZWLXDH,ZWLXR,ZWLXDZ,ZZSYH,ZZSZH,ZZSH,ZZSM,ZCDZ, SCBC,ZXR,CBCBH,YHH) "
                    "select :CDBH,:SLBM,:YWDM,:SQRQ, :SQBZ,HH,KHLX,HM,YDDZ,ZJMC,ZJHM, :LXDZ,:LXDH,:LXR,:YZBM,FKDW,FKFS,HYFL,"
                    "YHDM, YHZH,DW,XZQ,SFXYH, ZWLXDH,ZWLXR,ZWLXDZ,ZZSYH,ZZSZH,ZZSH,ZZSM,ZCDZ, SCBC,ZXR,CBCBH,YHH  from Y_KHDA "
                    "where HH =:HH"_s,
                    {{"CDBH", sCdbh}, {"SLBM", Gbm}, {"YWDM", u"160"_s}, {"SQRQ", GetServerDateTime()},
                     {"SQBZ", Mem_Sqbz->toPlainText()}, {"LXDZ", Edt_Lxdz->text()}, {"LXDH", Edt_Lxdh->text()},
                     {"LXR", Edt_Lxr->text()}, {"YZBM", Edt_Yzbm->text()}, {"HH", sHh}});
        });
        if (started == 2) stopWith0();
        if (started != 0) return;
    }

    ExecSql(dm.Mqry_Update, u"delete from a_gdfa where cdbh=:cdbh"_s, {{"cdbh", sCdbh}});
    ExecSql(dm.Mqry_Update,
            u" insert into a_gdfa (gdfabh, cdbh, hh,  kcr,kcbz, kcrq) values (:gdfabh,:cdbh,:hh,:kcr,:kcbz,:kcrq)"_s,
            {{"gdfabh", Drawn(GetNewGdfabh(), u"供电方案编号"_s)}, {"cdbh", sCdbh}, {"hh", sHh}, {"kcr", Gczyxm},
             {"kcbz", mem_bz->toPlainText()}, {"kcrq", dt_jcrq->date()}});

    OpenSql(dm.Mqry_Select, u"select * from z_dqgw where cdbh=:cdbh"_s, {{"cdbh", sCdbh}});
    const QString dqywx = dm.Mqry_Select->FieldByName(u"DQYWX"_s).AsString();
    dm.Mqry_Select->Close();

    // A case raised by an inspection result already has its work sheet.
    if (dqywx.left(3) != u"401"_s) {
        ExecSql(dm.Mqry_Update, u"delete from e_jlycgzd where cdbh=:cdbh"_s, {{"cdbh", sCdbh}});
        ExecSql(dm.Mqry_Update,
                u" Insert into E_JLYCGZD(CDBH,HH,HM,YDDZ,JCRY,JCZH,  ycxz, gzlx, rdyj, jcrq, JCBZ, dw, YWDM,sfcl)  "
                "Values(:CDBH,:HH,:HM,:YDDZ,:JCRY,:JCZH,  :ycxz, :gzlx,:rdyj, :jcrq, :JCBZ, :dw, :YWDM,'1')"_s,
                {{"CDBH", sCdbh}, {"HH", Edt_Hh->text()}, {"HM", Edt_Hm->text()}, {"YDDZ", Edt_Yddz->text()},
                 {"JCRY", edt_jcry->text()}, {"JCZH", EDT_JCZH->text()}, {"ycxz", ycxz}, {"gzlx", gzlx}, {"rdyj", rdyj},
                 {"jcrq", dt_jcrq->dateTime()}, {"JCBZ", mem_bz->toPlainText()}, {"dw", Gdw}, {"YWDM", dqywx.left(3)}});
    } else {
        ExecSql(dm.Mqry_Update,
                u" update e_jlycgzd set ycxz = :ycxz,gzlx = :gzlx,rdyj=:rdyj,  jcbz = :jcbz,sfcl='1' where cdbh = :cdbh "_s,
                {{"ycxz", ycxz}, {"gzlx", gzlx}, {"rdyj", rdyj}, {"jcbz", mem_bz->toPlainText()}, {"cdbh", sCdbh}});
    }

    // The refund decisions recorded with the case become a document of
    // their own; their details move with them, in the same transaction.
    if (HasRefundRecords(dm.Mqry_Select, sCdbh)) {
        const QString tbcdh = Drawn(GetNewCdbh(), u"传单编号"_s);
        const int started = StartWorkflow(tbcdh, u"201"_s, u"20101"_s, [&] {
            ExecSql(dm.Mqry_Update, u" update b_tbjl set tbcdh = :tbcdh  where glcdbh = :glcdbh "_s,
                    {{"tbcdh", tbcdh}, {"glcdbh", sCdbh}});
            Tjl_Tbdl_Frm::MoveDetailsToDocument(sCdbh, tbcdh);
        });
        if (started == 2) stopWith0();
        if (started != 0) return;
    }

    if (WfLcSend(sCdbh, dqywx, WfGetSysDate(), Gczydm) != 0) {
        ShowInfoMsg(kSendFailed);
        return stopWith0();  // what is written stays; a second send rewrites it
    }
    cursor.dismiss();
    QApplication::restoreOverrideCursor();
    ShowInfoMsg(u"当前客户流程发送成功(传单编号为"_s + sCdbh + u"),请继续处理。"_s);
    sFsbz = u"1"_s;
    sCdbh.clear();
    close();
}

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
