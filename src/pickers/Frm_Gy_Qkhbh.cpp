#include "Frm_Gy_Qkhbh.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

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

// A combo that tells its screen just before the list drops down, so the
// list can be read from the database the first time it is needed.
class TDropDownComboBox : public QComboBox {
public:
    using QComboBox::QComboBox;
    std::function<void()> OnDropDown;
    void showPopup() override {
        if (OnDropDown) OnDropDown();
        QComboBox::showPopup();
    }
};

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

TGy_Khcx_Dm& Khcx() {
    if (!Gy_Khcx_Dm) throw EDatabaseError(u"Gy_Khcx_Dm: the data module is not created"_s);
    return *Gy_Khcx_Dm;
}

bool isEnter(const QKeyEvent* key) {
    return key && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
}

}  // namespace

TGy_Qkhbh_Frm::TGy_Qkhbh_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Gy_Qkhbh_Frm"_s);
    setWindowTitle(u"查询客户编号"_s);

    auto* criteria = new QGroupBox(this);
    criteria->setObjectName(u"Gb_Cxtj"_s);
    auto* grid = new QGridLayout(criteria);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    int row = 0;
    int column = 0;
    // Criteria in two columns of five, each a box and the input it enables;
    // the tab order runs box, input, next box.
    QWidget* previous = nullptr;
    const auto place = [&](QCheckBox* box, QWidget* input) {
        input->setEnabled(false);
        // Left-aligned, so the box is only as wide as its caption.
        grid->addWidget(box, row, column * 2, Qt::AlignLeft | Qt::AlignVCenter);
        grid->addWidget(input, row, column * 2 + 1);
        if (previous) setTabOrder(previous, box);
        setTabOrder(box, input);
        previous = input;
        if (++row == 5) {
            row = 0;
            ++column;
        }
    };
    const auto check = [this](const char* name, const QString& caption) {
        return NewControl<QCheckBox>(this, name, caption);
    };
    const auto edit = [this](const char* name) { return NewControl<QLineEdit>(this, name); };
    const auto combo = [this](const char* name) {
        auto* c = NewControl<TDropDownComboBox>(this, name);
        // Names can be typed as well as chosen; a typed name is never added
        // to the list.
        c->setEditable(true);
        c->setInsertPolicy(QComboBox::NoInsert);
        c->setCurrentIndex(-1);
        return c;
    };

    Ckb_Hh = check("Ckb_Hh", u"户号"_s);
    Edt_Hh = edit("Edt_Hh");
    place(Ckb_Hh, Edt_Hh);
    Ckb_hm = check("Ckb_hm", u"户名"_s);
    Edt_hm = edit("Edt_hm");
    place(Ckb_hm, Edt_hm);
    CkB_sfz = check("CkB_sfz", u"身份证"_s);
    Edt_sfz = edit("Edt_sfz");
    place(CkB_sfz, Edt_sfz);
    Ckb_yddz = check("Ckb_yddz", u"用电地址"_s);
    Edt_yddz = edit("Edt_yddz");
    place(Ckb_yddz, Edt_yddz);
    Ckb_ccbh = check("Ckb_ccbh", u"电能表出厂号"_s);
    Edt_dnbcch = edit("Edt_dnbcch");
    place(Ckb_ccbh, Edt_dnbcch);
    Ckb_dah = check("Ckb_dah", u"原户号"_s);
    Edt_dah = edit("Edt_dah");
    place(Ckb_dah, Edt_dah);
    Ckb_cbc = check("Ckb_cbc", u"抄表册"_s);
    Edt_cbc = edit("Edt_cbc");
    place(Ckb_cbc, Edt_cbc);
    Ckb_khlx = check("Ckb_khlx", u"客户类型"_s);
    auto* khlx = combo("Cob_khlx");
    Cob_khlx = khlx;
    place(Ckb_khlx, Cob_khlx);
    Ckb_dzm = check("Ckb_dzm", u"地 址 码"_s);
    Edt_Dzm = edit("Edt_Dzm");
    place(Ckb_dzm, Edt_Dzm);
    Ckb_zfdffs = check("Ckb_zfdffs", u"付款方式"_s);
    auto* zfdffs = combo("Cob_zfdffs");
    Cob_zfdffs = zfdffs;
    place(Ckb_zfdffs, Cob_zfdffs);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);

    Bbtn_Cx = NewControl<QPushButton>(this, "Bbtn_Cx", u"查询(&R)"_s);
    Bbtn_Qr = NewControl<QPushButton>(this, "Bbtn_Qr", u"确认(&O)"_s);
    Bbtn_Quit = NewControl<QPushButton>(this, "Bbtn_Quit", u"取消"_s);
    SetCancelButton(Bbtn_Quit);
    setTabOrder(previous, Bbtn_Cx);
    setTabOrder(Bbtn_Cx, Bbtn_Qr);
    setTabOrder(Bbtn_Qr, Bbtn_Quit);

    Dbg_Fkhbh = NewRowGrid(this, "Dbg_Fkhbh");
    Dbg_Fkhbh->verticalHeader()->hide();
    Dbg_Fkhbh->horizontalHeader()->setStretchLastSection(true);
    Dbg_Fkhbh->setAlternatingRowColors(true);
    setTabOrder(Bbtn_Quit, Dbg_Fkhbh);
    grid_ = new TDBGridBinding(Dbg_Fkhbh, Khcx().Mqry_Fkhbh, this);
    grid_->Model()->SetReadOnly(true);
    grid_->Model()->SetColumns({{u"HH"_s, u"客户编号"_s, 96}, {u"HM"_s, u"户名"_s, 180}, {u"YDDZ"_s, u"用电地址"_s, -1}});

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(Bbtn_Cx);
    buttons->addWidget(Bbtn_Qr);
    buttons->addWidget(Bbtn_Quit);
    buttons->addStretch();
    auto* top = new QHBoxLayout;
    top->addWidget(criteria, 1);
    top->addLayout(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 8, 10, 10);
    layout->addLayout(top);
    layout->addWidget(Dbg_Fkhbh, 1);
    resize(640, 460);

    connect(Ckb_Hh, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_HhClick);
    connect(Ckb_hm, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_hmClick);
    connect(CkB_sfz, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::CkB_sfzClick);
    connect(Ckb_yddz, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_yddzClick);
    connect(Ckb_ccbh, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_ccbhClick);
    connect(Ckb_dah, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_dahClick);
    connect(Ckb_cbc, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_cbcClick);
    connect(Ckb_khlx, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_khlxClick);
    connect(Ckb_dzm, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_dzmClick);
    connect(Ckb_zfdffs, &QCheckBox::clicked, this, &TGy_Qkhbh_Frm::Ckb_zfdffsClick);
    khlx->OnDropDown = [this] { Cob_khlxDropDown(); };
    zfdffs->OnDropDown = [this] { Cob_zfdffsDropDown(); };
    connect(Dbg_Fkhbh, &QTableView::doubleClicked, this, &TGy_Qkhbh_Frm::Dbg_FkhbhDblClick);
    connect(Bbtn_Cx, &QPushButton::clicked, this, &TGy_Qkhbh_Frm::Bbtn_CxClick);
    connect(Bbtn_Qr, &QPushButton::clicked, this, &TGy_Qkhbh_Frm::Bbtn_QrClick);
    connect(Bbtn_Quit, &QPushButton::clicked, this, &TGy_Qkhbh_Frm::Bbtn_QuitClick);
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
        q->Close();
        q->SQL().Clear();
        q->SQL().Add(sql);
        q->Open();
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
    q->Close();
    q->SQL().Clear();
    q->SQL().Add(sql);
    q->Open();
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
            dm.Mqry_Select->Close();
            dm.Mqry_Select->SQL().Clear();
            dm.Mqry_Select->SQL().Add(u"select count(HH) JLS from Y_KHDA  where "_s + where);
            dm.Mqry_Select->Open();
            jls = dm.Mqry_Select->FieldByName(u"JLS"_s).AsInteger();
            dm.Mqry_Select->Close();
        }
        if (jls > kMaxListed) {
            // The list already shown stays.
            ShowTip(u"查出的客户数量过大,请输入更详细的信息供查询!"_s);
            return;
        }
        WaitCursor wait;
        dm.Mqry_Fkhbh->Close();
        dm.Mqry_Fkhbh->SQL().Clear();
        dm.Mqry_Fkhbh->SQL().Add(u"select *  from Y_KHDA  where "_s + where);
        dm.Mqry_Fkhbh->Open();
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
