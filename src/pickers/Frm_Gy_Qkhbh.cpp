#include "Frm_Gy_Qkhbh.h"

#include "ui_Frm_Gy_Qkhbh.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableView>
#include <QTimer>

#include "data/DataModules.h"
#include "frame/DataSetModel.h"
#include "common/Unt_Jc_Message.h"
#include "common/Unt_Zt_Message.h"
#include "common/unt_jc_fuc.h"

using namespace Qt::StringLiterals;

QPointer<TGy_Qkhbh_Frm> Gy_Qkhbh_Frm;

namespace {

// More rows than this are not listed: the user is asked to narrow the search.
constexpr qint64 kMaxListed = 1000;

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

bool isEnter(const QKeyEvent* key) {
    return key && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
}

}  // namespace

TGy_Qkhbh_Frm::TGy_Qkhbh_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Gy_Qkhbh_Frm"_s);
    setupUi(this);
    SetCancelButton(Bbtn_Quit);

    Dbg_Fkhbh = NewRowGrid(this, "Dbg_Fkhbh");
    Dbg_Fkhbh->verticalHeader()->hide();
    Dbg_Fkhbh->horizontalHeader()->setStretchLastSection(true);
    Dbg_Fkhbh->setAlternatingRowColors(true);
    Lay_Fkhbh->addWidget(Dbg_Fkhbh);
    setTabOrder(Bbtn_Quit, Dbg_Fkhbh);
    grid_ = TDBGridBinding::ReadOnlyList(Dbg_Fkhbh, Khcx().Mqry_Fkhbh,
                                         {{u"HH"_s, u"客户编号"_s, 96}, {u"HM"_s, u"户名"_s, 180}, {u"YDDZ"_s, u"用电地址"_s, -1}}, this);

    Handle(Ckb_Hh, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_HhClick);
    Handle(Ckb_hm, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_hmClick);
    Handle(CkB_sfz, &QCheckBox::clicked, &TGy_Qkhbh_Frm::CkB_sfzClick);
    Handle(Ckb_yddz, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_yddzClick);
    Handle(Ckb_ccbh, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_ccbhClick);
    Handle(Ckb_dah, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_dahClick);
    Handle(Ckb_cbc, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_cbcClick);
    Handle(Ckb_khlx, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_khlxClick);
    Handle(Ckb_dzm, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_dzmClick);
    Handle(Ckb_zfdffs, &QCheckBox::clicked, &TGy_Qkhbh_Frm::Ckb_zfdffsClick);
    Handle(Cob_khlx, &TDropDownComboBox::dropDown, &TGy_Qkhbh_Frm::Cob_khlxDropDown);
    Handle(Cob_zfdffs, &TDropDownComboBox::dropDown, &TGy_Qkhbh_Frm::Cob_zfdffsDropDown);
    Handle(Dbg_Fkhbh, &QTableView::doubleClicked, &TGy_Qkhbh_Frm::Dbg_FkhbhDblClick);
    Handle(Bbtn_Cx, &QPushButton::clicked, &TGy_Qkhbh_Frm::Bbtn_CxClick);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TGy_Qkhbh_Frm::Bbtn_QrClick);
    Handle(Bbtn_Quit, &QPushButton::clicked, &TGy_Qkhbh_Frm::Bbtn_QuitClick);
}

void TGy_Qkhbh_Frm::FormShow() { TZt_Template_Frm::FormShow(); }

// --------------------------------------------------------------- criteria

void TGy_Qkhbh_Frm::FollowCheckBox(QCheckBox* box, QWidget* input) {
    input->setEnabled(box->isChecked());
    // As a Tab pressed on the box: onto the input just enabled, or past it.
    if (!isVisible()) return;
    box->setFocus(Qt::TabFocusReason);
    focusNextChild();
}

void TGy_Qkhbh_Frm::Ckb_HhClick() { FollowCheckBox(Ckb_Hh, Edt_Hh); }
void TGy_Qkhbh_Frm::Ckb_hmClick() { FollowCheckBox(Ckb_hm, Edt_hm); }
void TGy_Qkhbh_Frm::CkB_sfzClick() { FollowCheckBox(CkB_sfz, Edt_sfz); }
void TGy_Qkhbh_Frm::Ckb_yddzClick() { FollowCheckBox(Ckb_yddz, Edt_yddz); }
void TGy_Qkhbh_Frm::Ckb_ccbhClick() { FollowCheckBox(Ckb_ccbh, Edt_dnbcch); }
void TGy_Qkhbh_Frm::Ckb_dahClick() { FollowCheckBox(Ckb_dah, Edt_dah); }
void TGy_Qkhbh_Frm::Ckb_cbcClick() { FollowCheckBox(Ckb_cbc, Edt_cbc); }
void TGy_Qkhbh_Frm::Ckb_khlxClick() { FollowCheckBox(Ckb_khlx, Cob_khlx); }
void TGy_Qkhbh_Frm::Ckb_dzmClick() { FollowCheckBox(Ckb_dzm, Edt_Dzm); }
void TGy_Qkhbh_Frm::Ckb_zfdffsClick() { FollowCheckBox(Ckb_zfdffs, Cob_zfdffs); }

void TGy_Qkhbh_Frm::FillCodeCombo(QComboBox* combo, const QString& sql) {
    if (combo->count() > 0) return;
    // Filling must not replace what the user has typed.
    const QString typed = combo->currentText();
    try {
        TMidasQuery* q = Khcx().Mqry_Select;
        OpenSql(q, sql);
        for (q->First(); !q->Eof(); q->Next()) combo->addItem(q->FieldByName(u"MC"_s).AsString());
        q->Close();
    } catch (const std::exception& e) {
        ShowErrorMsg(u"读取代码表出错：%1"_s.arg(QString::fromUtf8(e.what())));
    }
    combo->setCurrentIndex(-1);
    combo->setEditText(typed);
}

void TGy_Qkhbh_Frm::Cob_khlxDropDown() { FillCodeCombo(Cob_khlx, u"select MC from  W_KHLX"_s); }
void TGy_Qkhbh_Frm::Cob_zfdffsDropDown() { FillCodeCombo(Cob_zfdffs, u"select MC from V_FKFS"_s); }

bool TGy_Qkhbh_Frm::LookUpCode(const QString& sql, const QString& kind, const QString& name, QString& code) {
    TMidasQuery* q = Khcx().Mqry_Select;
    OpenSql(q, sql);
    const bool found = !q->IsEmpty();
    if (found) code = q->FieldByName(u"DM"_s).AsString();
    q->Close();
    if (!found)
        ShowErrorMsg(u"%1“%2”在代码表中没有对应的代码，无法按%1查询。\n请从下拉列表中选择%1，或请系统管理员在代码表中补上该%1。"_s
                         .arg(kind, name));
    return found;
}

void TGy_Qkhbh_Frm::RefuseAt(QWidget* input) {
    // Queued behind the focus move of the Enter that started the search, so
    // the focus ends on the input the user has to correct.
    QTimer::singleShot(0, input, [input] { input->setFocus(Qt::OtherFocusReason); });
}

QString TGy_Qkhbh_Frm::BuildKhbhWhere() {
    const auto ticked = [](const QCheckBox* box, const QString& text) { return box->isChecked() && !text.isEmpty(); };
    QString where;
    QString nameFirst;

    if (ticked(Ckb_ccbh, Edt_dnbcch->text()))
        where = u" HH in (select HH from Y_YXDNB where DNBCCH='"_s + QuotedSqlText(Edt_dnbcch->text()) + u"')"_s;

    if (ticked(Ckb_Hh, Edt_Hh->text())) {
        // Account numbers are ten characters; a longer text is kept whole.
        Edt_Hh->setText(Edt_Hh->text().rightJustified(10, u'0'));
        const QString hh = QuotedSqlText(Edt_Hh->text());
        where += where.isEmpty() ? u"Hh = '"_s + hh + u"'"_s : u" and Hh = '"_s + hh + u"'"_s;
    }

    // A name typed alone is matched from its start; combined with any other
    // criterion, anywhere in the name. When nothing stands before it, its
    // condition waits until the others are known.
    QString nameLater;
    if (ticked(Ckb_hm, Edt_hm->text())) {
        const QString hm = QuotedSqlText(Edt_hm->text());
        nameLater = u" and HM like '%"_s + hm + u"%'"_s;
        if (where.isEmpty())
            nameFirst = u"HM like '"_s + hm + u"%'"_s;
        else
            where += nameLater;
    }

    if (ticked(Ckb_cbc, Edt_cbc->text())) {
        const QString cbc = QuotedSqlText(Edt_cbc->text());
        where += where.isEmpty() ? u"CBCBH='"_s + cbc + u"'"_s : u" and  CBCBH='"_s + cbc + u"'"_s;
    }

    if (ticked(Ckb_yddz, Edt_yddz->text())) {
        const QString yddz = QuotedSqlText(Edt_yddz->text());
        where += where.isEmpty() ? u"YDDZ like '"_s + yddz + u"%'"_s : u" and  YDDZ like '"_s + yddz + u"%'"_s;
    }

    if (ticked(Ckb_dah, Edt_dah->text())) {
        const QString yhh = QuotedSqlText(Edt_dah->text());
        where += where.isEmpty() ? u"YHH='"_s + yhh + u"'"_s : u" and  YHH='"_s + yhh + u"'"_s;
    }

    if (ticked(Ckb_khlx, Cob_khlx->currentText())) {
        const QString name = Cob_khlx->currentText();
        QString code;
        if (!LookUpCode(u"select DM from W_KHLX where MC='"_s + QuotedSqlText(name) + u"'"_s, u"客户类型"_s, name, code)) {
            RefuseAt(Cob_khlx);
            return {};
        }
        where += where.isEmpty() ? u"KHLX='"_s + code + u"'"_s : u" and  KHLX='"_s + code + u"'"_s;
    }

    if (ticked(Ckb_dzm, Edt_Dzm->text())) {
        const QString pym = QuotedSqlText(Edt_Dzm->text().toUpper());
        where += where.isEmpty() ? u"PYM like '"_s + pym + u"%'"_s : u" and  PYM like '"_s + pym + u"%'"_s;
    }

    if (ticked(Ckb_zfdffs, Cob_zfdffs->currentText())) {
        const QString name = Cob_zfdffs->currentText();
        QString code;
        if (!LookUpCode(u"select DM from  V_FKFS where  MC='"_s + QuotedSqlText(name) + u"'"_s, u"付款方式"_s, name, code)) {
            RefuseAt(Cob_zfdffs);
            return {};
        }
        // The column is numeric: the code goes in unquoted, so it must be a
        // whole number.
        bool ok = false;
        const int fkfs = code.trimmed().toInt(&ok);
        if (!ok) {
            ShowErrorMsg(u"付款方式“%1”的代码“%2”不是整数，无法按付款方式查询。\n请系统管理员把付款方式代码表中的该代码改为整数。"_s
                             .arg(name, code));
            RefuseAt(Cob_zfdffs);
            return {};
        }
        code = QString::number(fkfs);
        where += where.isEmpty() ? u"FKFS="_s + code : u" and FKFS="_s + code;
    }

    if (!nameFirst.isEmpty()) where = where.isEmpty() ? nameFirst : where + nameLater;

    // The identity-card box adds nothing: the customer file is not searched
    // by identity card.
    return where;
}

// ----------------------------------------------------------------- search

QWidget* TGy_Qkhbh_Frm::InputOf(QWidget* control) const {
    const QList<QWidget*> inputs{Edt_Hh, Edt_hm, Edt_sfz, Edt_yddz, Edt_dnbcch,
                                 Edt_dah, Edt_cbc, Cob_khlx, Edt_Dzm, Cob_zfdffs};
    // An editable combo's line edit stands for its combo.
    for (QWidget* w = control; w && w != this; w = w->parentWidget())
        if (inputs.contains(w)) return w;
    return nullptr;
}

bool TGy_Qkhbh_Frm::FormKeyPress(QWidget* control, QKeyEvent* event) {
    // The screen's Enter-as-Tab first, then the input's own key handler.
    const bool swallowed = TZt_Template_Frm::FormKeyPress(control, event);
    if (QWidget* input = InputOf(control)) Edt_HhKeyPress(input, event);
    return swallowed;
}

void TGy_Qkhbh_Frm::Edt_HhKeyPress(QObject*, QKeyEvent* key) {
    if (isEnter(key)) Bbtn_CxClick();
}

void TGy_Qkhbh_Frm::Bbtn_CxClick() {
    try {
        const QString where = BuildKhbhWhere();
        if (where.isEmpty()) return;
        TGy_Khcx_Dm& dm = Khcx();
        qint64 jls = 0;
        {
            WaitCursor wait;
            OpenSql(dm.Mqry_Select, u"select count(HH) JLS from Y_KHDA  where "_s + where);
            jls = dm.Mqry_Select->FieldByName(u"JLS"_s).AsInteger();
            dm.Mqry_Select->Close();
        }
        if (jls > kMaxListed) {
            // The list already shown stays.
            ShowTip(u"查出的客户数量过大,请输入更详细的信息供查询!"_s);
            return;
        }
        WaitCursor wait;
        OpenSql(dm.Mqry_Fkhbh, u"select *  from Y_KHDA  where "_s + where);
        if (!dm.Mqry_Fkhbh->IsEmpty()) Dbg_Fkhbh->selectRow(dm.Mqry_Fkhbh->RecNo() - 1);
    } catch (const std::exception& e) {
        ShowErrorMsg(u"查询客户出错：%1"_s.arg(QString::fromUtf8(e.what())));
    }
}

// ------------------------------------------------------------ choose, quit

void TGy_Qkhbh_Frm::Dbg_FkhbhDblClick() {
    TMidasQuery* list = Gy_Khcx_Dm ? Gy_Khcx_Dm->Mqry_Fkhbh : nullptr;
    if (list && list->Active() && !list->IsEmpty()) Bbtn_QrClick();
}

void TGy_Qkhbh_Frm::Bbtn_QrClick() {
    TMidasQuery* list = Gy_Khcx_Dm ? Gy_Khcx_Dm->Mqry_Fkhbh : nullptr;
    if (list && list->Active()) {
        if (!list->IsEmpty()) sKhbh = list->FieldByName(u"HH"_s).AsString();
        list->Close();
    }
    close();
}

void TGy_Qkhbh_Frm::Bbtn_QuitClick() {
    sKhbh.clear();
    if (Gy_Khcx_Dm) Gy_Khcx_Dm->Mqry_Fkhbh->Close();
    close();
}

bool TGy_Qkhbh_Frm::FormCloseQuery() {
    if (Gy_Khcx_Dm) Gy_Khcx_Dm->Mqry_Fkhbh->Close();
    return true;
}

void TGy_Qkhbh_Frm::done(int result) {
    if (isVisible() && !FormCloseQuery()) return;
    TZt_Template_Frm::done(result);
}
