#include "Frm_Jc_Kycssz.h"

#include "ui_Frm_Jc_Kycssz.h"

#include <QApplication>
#include <QDateEdit>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QSet>
#include <QTimer>
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "common/Unt_Jc_Message.h"
#include "common/unt_jc_fuc.h"
#include "data/DataModules.h"
#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"
#include "pickers/Frm_Gy_Qkhbh.h"
#include "pickers/Frm_Jc_CodeSelect.h"
#include "pickers/Frm_Jc_SelectXl.h"
#include "screening/Unt_Jc_Kycslb.h"

using namespace Qt::StringLiterals;

QPointer<TJc_Kycssz_Frm> Jc_Kycssz_Frm;

namespace {

// More customers than this are not fetched: the user narrows the search.
constexpr int kMaxRows = 300;

// The result grid's own columns; a category's extra ones follow them.
const QList<TColumn> kBaseColumns{{u"HH"_s, u"户号"_s, 86},       {u"HM"_s, u"户名"_s, 64},
                                  {u"YDDZ"_s, u"用电地址"_s, 96},   {u"KHLX"_s, u"客户类型"_s, 70},
                                  {u"HTRL"_s, u"合同容量"_s, 60},   {u"DYDJ"_s, u"电压等级"_s, 60},
                                  {u"SCJCRQ"_s, u"上次检查日期"_s, 84}, {u"LXR"_s, u"联系人"_s, 56},
                                  {u"LXDH"_s, u"联系电话"_s, 92}};
// A category's extra columns, on the grid (pixels) and printed (mm).
constexpr int kExtraWidth = 72;
constexpr double kPrintedExtraWidth = 24;

const QString kReportName = u"异常客户查询结果"_s;

// The separator of account number and name in the plan screen's list.
constexpr char16_t kSeparator = u'\u2506';

// The code lists the screen's look-up boxes show; reopened on every opening.
QList<TMidasQuery*> LookUps() {
    TJc_Main_Dm& m = MainDm();
    return {m.MQry_Dydj, m.Mqry_Khlx, m.Mqry_Dw, m.Mqry_Ydlb, m.Mqry_Hylb, m.Mqry_Ywlb, m.Mqry_Djm};
}

// Every parameter of the categories and the filters: what a control holds
// and how it is checked is read here.
QVector<TKycsParam> AllParams() {
    QVector<TKycsParam> all;
    for (const TKycsCategory& c : KycsCategories()) all += c.Params;
    for (const TKycsFilter& f : KycsFilters()) all += f.Params;
    return all;
}

const TKycsParam* ParamOf(const QString& control) {
    static const QVector<TKycsParam> all = AllParams();
    for (const TKycsParam& p : all)
        if (p.Control == control && p.Check != TKycsCheck::None) return &p;
    return nullptr;
}

bool IsEnter(const QKeyEvent* key) { return key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter; }

}  // namespace

TJc_Kycssz_Frm::TJc_Kycssz_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Jc_Kycssz_Frm"_s);
    setupUi(this);
    Pnl_Wait->hide();
    SetCancelButton(Bbtn_Tc1);
    Mqry_Select = new TMidasQuery(this, u"Mqry_Select"_s);

    // Page and radio captions are the category table's.
    for (int i = 0; i < KycsPages().size() && i < Pgc_Cxdx->count(); ++i)
        Pgc_Cxdx->setTabText(i, KycsPages()[i].Caption);
    for (const TKycsCategory& c : KycsCategories())
        if (auto* radio = findChild<QRadioButton*>(c.Radio)) radio->setText(c.Caption);

    TJc_Main_Dm& m = MainDm();
    Dblc_Dw->SetListSource(m.Mqry_Dw, u"DM"_s, u"MC"_s);
    Dblc_Dydj->SetListSource(m.MQry_Dydj, u"DM"_s, u"MC"_s);
    dblc_Ydlb->SetListSource(m.Mqry_Ydlb, u"DM"_s, u"MC"_s);
    Dblc_Hylb->SetListSource(m.Mqry_Hylb, u"DM"_s, u"MC"_s);
    Dblc_Khlx->SetListSource(m.Mqry_Khlx, u"DM"_s, u"MC"_s);
    Dblc_djm->SetListSource(m.Mqry_Djm, u"djm"_s, u"djmc"_s);
    Dblc_Ywlb->SetListSource(m.Mqry_Ywlb, u"YWDM"_s, u"YWMC"_s);
    areaGrid_ = TDBGridBinding::ReadOnlyList(dbg_xltq, m.Mqry_Xltq, {}, this);
    resultGrid_ = TDBGridBinding::ReadOnlyList(Dbg_Jlll, Tarvin().MQry_Kykhcx, kBaseColumns, this);

    Handle(Pgc_Yckhpc, &QTabWidget::currentChanged, &TJc_Kycssz_Frm::Pgc_YckhpcChange);
    Handle(Bbtn_Cx, &QPushButton::clicked, &TJc_Kycssz_Frm::Bbtn_CxClick);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TJc_Kycssz_Frm::Bbtn_QrClick);
    Handle(Bbtn_Dy, &QPushButton::clicked, &TJc_Kycssz_Frm::Bbtn_DyClick);
    Handle(Bbtn_Tc1, &QPushButton::clicked, &TJc_Kycssz_Frm::Bbtn_Tc1Click);

    Handle(Rb_Xlxsyc, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_XlxsycClick);
    Handle(Rb_Tqxsyc, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_TqxsycClick);
    Handle(Rb_Xlpjdj, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_XlpjdjClick);
    Handle(Rb_Tqpjdj, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_TqpjdjClick);
    Handle(Rb_Lxld, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_LxldClick);
    Handle(Rb_Lxdyld, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_LxdyldClick);
    Handle(Rb_Bydlsy, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_BydlsyClick);
    Handle(Rb_Bydlqn, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_BydlqnClick);
    Handle(Rb_Fgdlyc, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_FgdlycClick);
    Handle(Rb_Ydlbdlyc, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_YdlbdlycClick);
    Handle(Rb_Llkhyc, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_LlkhycClick);
    Handle(Rb_Tbdldf, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_TbdldfClick);
    Handle(rb_djcx, &QRadioButton::clicked, &TJc_Kycssz_Frm::rb_djcxClick);
    Handle(Rb_Qdkh, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_QdkhClick);
    Handle(Rb_Tdyh, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_TdyhClick);
    Handle(Rb_Wjckh, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_WjckhClick);
    Handle(Rb_Bgyh, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_BgyhClick);
    Handle(Rb_Htyq, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_HtyqClick);
    Handle(Rb_Yckh, &QRadioButton::clicked, &TJc_Kycssz_Frm::Rb_YckhClick);

    Handle(Ckb_Dw, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_DwClick);
    Handle(Ckb_Dydj, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_DydjClick);
    Handle(ckb_ydlb, &QCheckBox::clicked, &TJc_Kycssz_Frm::ckb_ydlbClick);
    Handle(Ckb_Hylb, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_HylbClick);
    Handle(Ckb_Cbch, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_CbchClick);
    Handle(Ckb_Khlx, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_KhlxClick);
    Handle(Ckb_Htrl, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_HtrlClick);
    Handle(Ckb_Xlbh, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_XlbhClick);
    Handle(Ckb_Tqbh, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_TqbhClick);
    Handle(Ckb_Hh, &QCheckBox::clicked, &TJc_Kycssz_Frm::Ckb_HhClick);

    // Leaving an edit runs its check (focus events have no signal).
    exitHandlers_ = {{Edt_Qdnf, &TJc_Kycssz_Frm::Edt_QdnfExit},
                     {Edt_Zznf, &TJc_Kycssz_Frm::Edt_ZznfExit},
                     {Edt_Ycnf, &TJc_Kycssz_Frm::Edt_YcnfExit},
                     {Edt_Dfny, &TJc_Kycssz_Frm::Edt_DfnyExit},
                     {edt_Shny, &TJc_Kycssz_Frm::edt_ShnyExit},
                     {Edt_Ldlxcs, &TJc_Kycssz_Frm::Edt_LdlxcsExit},
                     {Edt_Lddycs, &TJc_Kycssz_Frm::Edt_LddycsExit},
                     {Edt_Pjys, &TJc_Kycssz_Frm::Edt_PjysExit},
                     {Edt_Dlbo, &TJc_Kycssz_Frm::Edt_DlboExit},
                     {Edt_Dlboqn, &TJc_Kycssz_Frm::Edt_DlboqnExit},
                     {Edt_Xldjbo, &TJc_Kycssz_Frm::Edt_XldjboExit},
                     {Edt_Tqdjbo, &TJc_Kycssz_Frm::Edt_TqdjboExit},
                     {Edt_Fgdlycbl, &TJc_Kycssz_Frm::Edt_FgdlycblExit},
                     {edt_sjll, &TJc_Kycssz_Frm::edt_sjllExit},
                     {Edt_Htrlq, &TJc_Kycssz_Frm::Edt_HtrlqExit},
                     {Edt_Htrlz, &TJc_Kycssz_Frm::Edt_HtrlzExit}};

    Handle(Edt_Xlbh, &QLineEdit::textChanged, &TJc_Kycssz_Frm::Edt_XlbhChange);
    Handle(Edt_Tqbh, &QLineEdit::textChanged, &TJc_Kycssz_Frm::Edt_TqbhChange);
    Handle(Edt_Cbch, &QLineEdit::textChanged, &TJc_Kycssz_Frm::Edt_CbchChange);
    Handle(Sb_XzXl, &QToolButton::clicked, &TJc_Kycssz_Frm::Sb_XzXlClick);
    Handle(Sb_XzHh, &QToolButton::clicked, &TJc_Kycssz_Frm::Sb_XzHhClick);
    Handle(Sb_XzTq, &QToolButton::clicked, &TJc_Kycssz_Frm::Sb_XzTqClick);
    Handle(Sb_XzCbc, &QToolButton::clicked, &TJc_Kycssz_Frm::Sb_XzCbcClick);
    Handle(edt_Shny, &QLineEdit::textChanged, &TJc_Kycssz_Frm::edt_ShnyChange);
    Handle(dbg_xltq, &QTableView::clicked, &TJc_Kycssz_Frm::dbg_xltqCellClick);
}

// ------------------------------------------------------------ opening

void TJc_Kycssz_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    const QString ny = GetServerNy();
    const QDate today = GetServerDateTime().date();
    for (TMidasQuery* q : LookUps()) {
        q->Close();
        if (q == MainDm().Mqry_Dw) q->Params()[0].SetAsString(Gdw);
        q->Open();
    }
    // The server's year-month, year and dates, and the business kind "all".
    for (const TKycsParam& p : AllParams()) {
        QWidget* control = findChild<QWidget*>(p.Control);
        if (auto* edit = qobject_cast<QLineEdit*>(control)) {
            if (p.From == TKycsDefault::ServerNy) edit->setText(ny);
            if (p.From == TKycsDefault::ServerYear) edit->setText(ny.left(4));
        } else if (auto* date = qobject_cast<QDateEdit*>(control)) {
            if (p.From == TKycsDefault::ServerDate) date->setDate(today.addDays(-p.DaysBefore));
        } else if (auto* box = qobject_cast<TDBLookupComboBox*>(control)) {
            if (!p.Default.isEmpty()) box->SetKeyValue(p.Default);
        }
    }
    Dblc_Dw->SetKeyValue(Gdw);
    TMidasQuery* result = Tarvin().MQry_Kykhcx;
    if (result->Active()) {
        // The last search's category, known by its text, for the caption
        // and columns of its rows.
        const QString text = result->SQL().Count() > 0 ? result->SQL()[0] : QString();
        for (const TKycsCategory& c : KycsCategories())
            if (text == KycsSentSql(c, false) || text == KycsSentSql(c, false, true)) {
                Kycslb = c.Code;
                Kycsmc = c.Caption;
                if (!c.KeepGrid) SetResultColumns(c);
            }
        ShowResult();
    } else {
        Pgc_Yckhpc->setCurrentWidget(Ts_Cscz);
        Pgc_Cxdx->setCurrentWidget(Ts_Dfdj);
    }
    Pgc_YckhpcChange();
}

void TJc_Kycssz_Frm::FormClose() {
    if (!Jc_Main_Dm) return;
    for (TMidasQuery* q : LookUps()) q->Close();
    Jc_Main_Dm->Mqry_Xltq->Close();
}

void TJc_Kycssz_Frm::done(int result) {
    Guard([this] { FormClose(); });
    TZt_Template_Frm::done(result);
}

void TJc_Kycssz_Frm::Pgc_YckhpcChange() {
    const bool settings = Pgc_Yckhpc->currentWidget() == Ts_Cscz;
    Bbtn_Cx->setEnabled(settings);
    Bbtn_Dy->setEnabled(!settings);
}

void TJc_Kycssz_Frm::Bbtn_Tc1Click() { close(); }

void TJc_Kycssz_Frm::SetPlanTargets(QListWidget* customers, QPlainTextEdit* remarks) {
    planCustomers_ = customers;
    planRemarks_ = remarks;
}

// ------------------------------------------------------------ search

void TJc_Kycssz_Frm::BindParam(const TKycsParam& p) {
    QWidget* control = findChild<QWidget*>(p.Control);
    for (TMidasQuery* q : {Tarvin().MQry_Kykhcx, Tarvin().Mqry_Kykhjls}) {
        TParam& param = q->ParamByName(p.Name);
        if (auto* date = qobject_cast<QDateEdit*>(control)) {
            param.SetAsDate(date->date());
        } else if (auto* box = qobject_cast<TDBLookupComboBox*>(control)) {
            param.SetAsString(box->KeyValue().toString());
        } else if (auto* edit = qobject_cast<QLineEdit*>(control)) {
            const QString text = edit->text().trimmed();
            if (p.Type == TKycsType::Float) param.SetAsFloat(text.toDouble());
            else param.SetAsString(text);
        }
    }
}

void TJc_Kycssz_Frm::SetResultColumns(const TKycsCategory& c) {
    TDataSetModel* grid = resultGrid_->Model();
    while (grid->Columns().size() > kBaseColumns.size()) grid->DeleteLastColumn();
    for (const TKycsColumn& column : c.Columns) grid->AddColumn(column.Field, column.Caption, kExtraWidth);
    resultGrid_->ApplyColumnWidths();
}

bool TJc_Kycssz_Frm::GetKycsSql() {
    const TKycsCategory* c = KycsCategory(Kycslb);
    if (!c) return true;
    if (const TKycsFilter* f = KycsFilter(c->RequiredFilter)) {
        auto* box = findChild<QCheckBox*>(f->CheckBox);
        if (box && !box->isChecked()) {
            // Told, and the texts stay as they were: the search goes on
            // with them and the database refuses.
            ShowInfoMsg(f->Message);
            box->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    if (const TKycsFilter* f = KycsFilter(c->ForcedFilter)) {
        auto* box = findChild<QCheckBox*>(f->CheckBox);
        box->setChecked(true);
        FilterClick(box);
    }
    // A number bound as one must be one.
    for (const TKycsParam& p : c->Params)
        if (auto* edit = findChild<QLineEdit*>(p.Control); edit && p.Type == TKycsType::Float && !CheckParam(edit))
            return false;
    const bool oneKind = !c->KindSql.Row.isEmpty() && Dblc_Ywlb->KeyValue().toString() != KycsAllKinds;
    KycsSql = KycsSentSql(*c, false, oneKind);
    PrepareSql(Tarvin().MQry_Kykhcx, KycsSql);
    PrepareSql(Tarvin().Mqry_Kykhjls, KycsSentSql(*c, true, oneKind));
    for (const TKycsParam& p : c->Params)
        if (oneKind || !p.KindOnly) BindParam(p);
    if (!c->KeepGrid) SetResultColumns(*c);
    return true;
}

bool TJc_Kycssz_Frm::AppendFilters() {
    bool any = false;
    for (const TKycsFilter& f : KycsFilters()) {
        auto* box = findChild<QCheckBox*>(f.CheckBox);
        if (!box || !box->isChecked()) continue;
        for (const TKycsParam& p : f.Params) {
            QWidget* input = findChild<QWidget*>(p.Control);
            auto* edit = qobject_cast<QLineEdit*>(input);
            auto* key = qobject_cast<TDBLookupComboBox*>(input);
            if (edit && edit->text().isEmpty() && !p.Default.isEmpty()) edit->setText(p.Default);
            if ((edit && edit->text().isEmpty()) || (key && key->KeyValue().isNull())) {
                ShowInfoMsg(f.Message);
                input->setFocus(Qt::OtherFocusReason);
                return false;
            }
        }
        for (TMidasQuery* q : {Tarvin().MQry_Kykhcx, Tarvin().Mqry_Kykhjls}) q->SQL().Add(f.Line);
        for (const TKycsParam& p : f.Params) BindParam(p);
        any = true;
    }
    if (!any) ShowInfoMsg(u"请选择复选条件！"_s);
    return any;
}

void TJc_Kycssz_Frm::Bbtn_CxClick() {
    Kycslb = 0;
    GetKycsLb();
    if (Kycslb == 0) {
        ShowInfoMsg(u"请选择具体检索方法！"_s);
        return;
    }
    if (!GetKycsSql() || !AppendFilters()) return;
    TMidasQuery* rows = Tarvin().MQry_Kykhcx;
    TMidasQuery* count = Tarvin().Mqry_Kykhjls;
    count->SQL().Add(KycsClosing);

    // Shown and painted before the queries start, hidden again whatever
    // they end in.
    Pnl_Wait->show();
    if (layout()) layout()->activate();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    bool waiting = true;
    const auto endWait = [&] {
        if (!std::exchange(waiting, false)) return;
        Pnl_Wait->hide();
        QApplication::restoreOverrideCursor();
    };
    const auto guard = qScopeGuard(endWait);
    repaint();
    count->Open();
    repaint();
    const qint64 jls = count->FieldByName(u"jls"_s).AsInteger();
    if (jls > kMaxRows) {
        endWait();
        ShowInfoMsg(u"满足条件的客户记录大于300条，请选择更明确的条件！"_s);
        count->Close();
        return;
    }
    if (jls == 0) {
        endWait();
        ShowInfoMsg(u"无满足条件的客户！"_s);
        Pgc_Yckhpc->setCurrentWidget(Ts_Cscz);
        count->Close();
        return;
    }
    rows->SQL().Add(KycsClosing);
    rows->Open();
    repaint();
    endWait();
    ShowResult();
}

void TJc_Kycssz_Frm::ShowResult() {
    Lab_Cxdx->setText(Kycsmc);
    Pnl_Main->setText(u"符合查询条件的记录数为："_s + QString::number(Tarvin().MQry_Kykhcx->RecordCount()) + u"条"_s);
    Pgc_Yckhpc->setCurrentWidget(Ts_Jlll);
    Bbtn_Dy->setEnabled(true);
}

void TJc_Kycssz_Frm::Bbtn_QrClick() {
    TMidasQuery* rows = Tarvin().MQry_Kykhcx;
    if (!rows->Active()) return;
    if (!planCustomers_ || !planRemarks_)
        throw std::runtime_error(u"没有接收所选客户的检查计划排程界面，请从检查计划排程中打开本界面。"_s.toStdString());
    if (!rows->IsEmpty()) {
        const TBookmark current = rows->GetBookmark();
        const QList<TBookmark> marks = resultGrid_->SelectedBookmarks();
        const auto add = [&] {
            planCustomers_->addItem(rows->FieldByName(u"HH"_s).AsString() + QChar(kSeparator) +
                                    rows->FieldByName(u"HM"_s).AsString());
        };
        planCustomers_->clear();
        for (TBookmark mark : marks) {
            rows->GotoBookmark(mark);
            add();
        }
        if (marks.isEmpty())
            for (rows->First(); !rows->Eof(); rows->Next()) add();
        rows->GotoBookmark(current);
    }
    planRemarks_->appendPlainText(Kycsmc);
    close();
}

// ------------------------------------------------------------ print

void TJc_Kycssz_Frm::Bbtn_DyClick() {
    using tarvin::report::EReportError;
    TMidasQuery* rows = Tarvin().MQry_Kykhcx;
    if (!rows->Active()) return;
    try {
        // Read afresh each time: a layout changed in z_report prints at once.
        Rpt_Kykhcx.LoadFromDatabase(kReportName);
        AddPrintedColumns();
        // A quote inside a value is doubled, as in SQL.
        Rpt_Kykhcx.Variables().Clear();
        Rpt_Kykhcx.Variables().Add("Cxdx='" + QuotedSqlText(Kycsmc) + "'");
        Rpt_Kykhcx.Variables().Add("Dwmc='" + QuotedSqlText(Gdwmc) + "'");
        Rpt_Kykhcx.Variables().Add("Jls='" + QString::number(rows->RecordCount()) + "'");
        Rpt_Kykhcx.Variables().Add("Dyrq='" + GetServerDateTime().date().toString(u"yyyy-MM-dd"_s) + "'");
        Rpt_Kykhcx.SetDataSet(rows);
        Rpt_Kykhcx.Preview(this);
    } catch (const EReportError& e) {
        // A missing or broken layout: say which, so the administrator knows
        // what to restore.
        throw std::runtime_error((u"打印异常客户查询结果出错："_s + e.message() +
                                  u"\n请系统管理员检查报表定义（z_report）。"_s).toStdString());
    }
}

void TJc_Kycssz_Frm::AddPrintedColumns() {
    using namespace tarvin::report;
    TReportBand* detail = Rpt_Kykhcx.Layout().Band(TReportBand::Detail);
    TMidasQuery* rows = Tarvin().MQry_Kykhcx;
    QList<TColumn> extra;
    for (const TColumn& c : resultGrid_->Model()->Columns().mid(kBaseColumns.size()))
        if (rows->FindFieldIndex(c.FieldName) >= 0) extra << c;
    if (!detail || detail->columns.empty() || extra.isEmpty()) return;
    // Their room comes first from what the table leaves free, then from the
    // columns that wrap (name, address), each giving in proportion to what
    // it has beyond an extra column's width.
    const auto spare = [](const TReportColumn& c) { return c.wrap ? std::max(0.0, c.width - kPrintedExtraWidth) : 0.0; };
    const double need = kPrintedExtraWidth * extra.size() - (Rpt_Kykhcx.Layout().PrintableWidth() - detail->TableWidth());
    double spares = 0;
    for (const TReportColumn& c : detail->columns) spares += spare(c);
    if (need > spares) return;  // no room: the layout prints as it is
    for (TReportColumn& c : detail->columns)
        if (need > 0) c.width -= need * spare(c) / spares;
    for (const TColumn& c : extra) {
        TReportColumn& column = detail->AddColumn(c.Title, c.FieldName, kPrintedExtraWidth, Qt::AlignCenter);
        column.wrap = true;
        const TFieldType type = rows->Fields(rows->FindFieldIndex(c.FieldName)).DataType();
        if (type == ftDate || type == ftDateTime) column.format = u"yyyy-MM-dd"_s;
    }
}

// ------------------------------------------------------------ category

void TJc_Kycssz_Frm::GetKycsLb() {
    const int page = Pgc_Cxdx->currentIndex();
    // In the table's order: the last checked one wins.
    for (const TKycsCategory& c : KycsCategories()) {
        auto* radio = c.Page == page ? findChild<QRadioButton*>(c.Radio) : nullptr;
        if (radio && radio->isChecked()) {
            Kycslb = c.Code;
            Kycsmc = c.Caption;
        }
    }
}

void TJc_Kycssz_Frm::RadioClick(QRadioButton* radio) {
    const auto& all = KycsCategories();
    const auto c = std::find_if(all.begin(), all.end(), [radio](const TKycsCategory& k) { return k.Radio == radio->objectName(); });
    if (c == all.end()) return;
    // The page's year-month edit is always open; the rest open with their
    // radio and stay open when another is chosen.
    QSet<QWidget*> opened;
    for (const TKycsParam& p : c->Params) {
        QWidget* control = findChild<QWidget*>(p.Control);
        if (!control || p.From == TKycsDefault::ServerNy) continue;
        control->setEnabled(true);
        opened.insert(control);
    }
    // The first in tab order gets the focus.
    for (QWidget* w = nextInFocusChain(); w && w != this; w = w->nextInFocusChain())
        if (opened.contains(w)) {
            w->setFocus(Qt::OtherFocusReason);
            break;
        }
    if (c->AreaList) LoadAreaList();
}

void TJc_Kycssz_Frm::Rb_XlxsycClick() { RadioClick(Rb_Xlxsyc); }
void TJc_Kycssz_Frm::Rb_TqxsycClick() { RadioClick(Rb_Tqxsyc); }
void TJc_Kycssz_Frm::Rb_XlpjdjClick() { RadioClick(Rb_Xlpjdj); }
void TJc_Kycssz_Frm::Rb_TqpjdjClick() { RadioClick(Rb_Tqpjdj); }
void TJc_Kycssz_Frm::Rb_LxldClick() { RadioClick(Rb_Lxld); }
void TJc_Kycssz_Frm::Rb_LxdyldClick() { RadioClick(Rb_Lxdyld); }
void TJc_Kycssz_Frm::Rb_BydlsyClick() { RadioClick(Rb_Bydlsy); }
void TJc_Kycssz_Frm::Rb_BydlqnClick() { RadioClick(Rb_Bydlqn); }
void TJc_Kycssz_Frm::Rb_FgdlycClick() { RadioClick(Rb_Fgdlyc); }
void TJc_Kycssz_Frm::Rb_YdlbdlycClick() { RadioClick(Rb_Ydlbdlyc); }
void TJc_Kycssz_Frm::Rb_LlkhycClick() { RadioClick(Rb_Llkhyc); }
void TJc_Kycssz_Frm::Rb_TbdldfClick() { RadioClick(Rb_Tbdldf); }
void TJc_Kycssz_Frm::rb_djcxClick() { RadioClick(rb_djcx); }
void TJc_Kycssz_Frm::Rb_QdkhClick() { RadioClick(Rb_Qdkh); }
void TJc_Kycssz_Frm::Rb_TdyhClick() { RadioClick(Rb_Tdyh); }
void TJc_Kycssz_Frm::Rb_WjckhClick() { RadioClick(Rb_Wjckh); }
void TJc_Kycssz_Frm::Rb_BgyhClick() { RadioClick(Rb_Bgyh); }
void TJc_Kycssz_Frm::Rb_HtyqClick() { RadioClick(Rb_Htyq); }
void TJc_Kycssz_Frm::Rb_YckhClick() { RadioClick(Rb_Yckh); }

// ------------------------------------------------------------ filters

void TJc_Kycssz_Frm::FilterClick(QCheckBox* box) {
    // A filter's inputs (number, picker, name, labels) fill the grid cell
    // right of its box.
    int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
    const int at = Lay_Fxtj->indexOf(box);
    if (at < 0) return;
    Lay_Fxtj->getItemPosition(at, &row, &column, &rowSpan, &columnSpan);
    QLayoutItem* cell = Lay_Fxtj->itemAtPosition(row, column + 1);
    if (!cell) return;
    if (QWidget* w = cell->widget()) w->setEnabled(box->isChecked());
    if (QLayout* l = cell->layout())
        for (int i = 0; i < l->count(); ++i)
            if (QWidget* w = l->itemAt(i)->widget()) w->setEnabled(box->isChecked());
}

void TJc_Kycssz_Frm::Ckb_DwClick() { FilterClick(Ckb_Dw); }
void TJc_Kycssz_Frm::Ckb_DydjClick() { FilterClick(Ckb_Dydj); }
void TJc_Kycssz_Frm::ckb_ydlbClick() { FilterClick(ckb_ydlb); }
void TJc_Kycssz_Frm::Ckb_HylbClick() { FilterClick(Ckb_Hylb); }
void TJc_Kycssz_Frm::Ckb_CbchClick() { FilterClick(Ckb_Cbch); }
void TJc_Kycssz_Frm::Ckb_KhlxClick() { FilterClick(Ckb_Khlx); }
void TJc_Kycssz_Frm::Ckb_HtrlClick() { FilterClick(Ckb_Htrl); }
void TJc_Kycssz_Frm::Ckb_XlbhClick() { FilterClick(Ckb_Xlbh); }
void TJc_Kycssz_Frm::Ckb_TqbhClick() { FilterClick(Ckb_Tqbh); }
void TJc_Kycssz_Frm::Ckb_HhClick() { FilterClick(Ckb_Hh); }

// ------------------------------------------------------------ checks

bool TJc_Kycssz_Frm::CheckParam(QLineEdit* edit) {
    const TKycsParam* p = ParamOf(edit->objectName());
    if (!p || KycsPasses(p->Check, edit->text())) return true;
    ShowInfoMsg(p->Message);
    refocusing_ = true;
    edit->setFocus(Qt::OtherFocusReason);
    refocusing_ = false;
    return false;
}

bool TJc_Kycssz_Frm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && !refocusing_ && exitHandlers_.contains(watched)) {
        const Qt::FocusReason why = static_cast<QFocusEvent*>(event)->reason();
        // A box or menu taking the focus for a moment is no leaving.
        if (why != Qt::ActiveWindowFocusReason && why != Qt::PopupFocusReason) {
            const auto handler = exitHandlers_.value(watched);
            // Once the focus has settled where it went.
            QTimer::singleShot(0, this, [this, handler] {
                if (isVisible()) Guard([&] { (this->*handler)(); });
            });
        }
    }
    return TZt_Template_Frm::eventFilter(watched, event);
}

void TJc_Kycssz_Frm::Edt_QdnfExit() { CheckParam(Edt_Qdnf); }
void TJc_Kycssz_Frm::Edt_ZznfExit() { CheckParam(Edt_Zznf); }
void TJc_Kycssz_Frm::Edt_YcnfExit() { CheckParam(Edt_Ycnf); }
void TJc_Kycssz_Frm::Edt_DfnyExit() { CheckParam(Edt_Dfny); }
void TJc_Kycssz_Frm::edt_ShnyExit() { CheckParam(edt_Shny); }
void TJc_Kycssz_Frm::Edt_LdlxcsExit() { CheckParam(Edt_Ldlxcs); }
void TJc_Kycssz_Frm::Edt_LddycsExit() { CheckParam(Edt_Lddycs); }
void TJc_Kycssz_Frm::Edt_PjysExit() { CheckParam(Edt_Pjys); }
void TJc_Kycssz_Frm::Edt_DlboExit() { CheckParam(Edt_Dlbo); }
void TJc_Kycssz_Frm::Edt_DlboqnExit() { CheckParam(Edt_Dlboqn); }
void TJc_Kycssz_Frm::Edt_XldjboExit() { CheckParam(Edt_Xldjbo); }
void TJc_Kycssz_Frm::Edt_TqdjboExit() { CheckParam(Edt_Tqdjbo); }
void TJc_Kycssz_Frm::Edt_FgdlycblExit() { CheckParam(Edt_Fgdlycbl); }
void TJc_Kycssz_Frm::edt_sjllExit() { CheckParam(edt_sjll); }
void TJc_Kycssz_Frm::Edt_HtrlqExit() { CheckParam(Edt_Htrlq); }
void TJc_Kycssz_Frm::Edt_HtrlzExit() { CheckParam(Edt_Htrlz); }

bool TJc_Kycssz_Frm::CheckOnEnter(QLineEdit* edit, QKeyEvent* key) {
    return IsEnter(key) && !CheckParam(edit);
}
bool TJc_Kycssz_Frm::edt_dldyKeyPress(QKeyEvent* key) { return CheckOnEnter(edt_dldy, key); }
bool TJc_Kycssz_Frm::edt_tbjeKeyPress(QKeyEvent* key) { return CheckOnEnter(edt_tbje, key); }

bool TJc_Kycssz_Frm::FormKeyPress(QWidget* control, QKeyEvent* event) {
    // A refused Enter stays on the edit instead of moving on.
    if (control == edt_dldy && edt_dldyKeyPress(event)) return true;
    if (control == edt_tbje && edt_tbjeKeyPress(event)) return true;
    return TZt_Template_Frm::FormKeyPress(control, event);
}

// ------------------------------------------------------------ names and pickers

QString TJc_Kycssz_Frm::UnitKey() const { return Dblc_Dw->KeyValue().toString(); }

void TJc_Kycssz_Frm::LookUpName(const QString& sql, const char* key, QLineEdit* number, QLineEdit* name) {
    OpenSql(Mqry_Select, sql, {{"dw", UnitKey()}, {key, number->text()}});
    name->setText(Mqry_Select->IsEmpty() ? QString() : Mqry_Select->Fields(0).AsString());
    Mqry_Select->Close();
}

void TJc_Kycssz_Frm::Edt_XlbhChange() {
    LookUpName(u"select xlmc from y_xl where dw=:dw and xlbh=:xlbh"_s, "xlbh", Edt_Xlbh, Edt_Xlmc);
}
void TJc_Kycssz_Frm::Edt_TqbhChange() {
    LookUpName(u"select byqmc from v_gybyq where dw=:dw and byqbh=:byqbh"_s, "byqbh", Edt_Tqbh, Edt_Tqmc);
}
void TJc_Kycssz_Frm::Edt_CbchChange() {
    LookUpName(u"select cbcmc from b_cbc where dw=:dw and cbcbh=:cbcbh"_s, "cbcbh", Edt_Cbch, Edt_Cbcmc);
}

void TJc_Kycssz_Frm::Sb_XzXlClick() {
    TJc_SelectXl_Frm picker(this);
    if (picker.exec() != QDialog::Accepted) return;
    Edt_Xlbh->setText(picker.SelXlbh);
    Edt_Xlmc->setText(picker.SelXlmc);
}

void TJc_Kycssz_Frm::Sb_XzHhClick() {
    TGy_Qkhbh_Frm picker(this);
    picker.exec();
    if (!picker.sKhbh.isEmpty()) Edt_Hh->setText(picker.sKhbh);
}

void TJc_Kycssz_Frm::PickCode(const QString& sql, const QString& title, const QString& fields, QLineEdit* number,
                              QLineEdit* name) {
    TJc_CodeSelect_Frm picker(this);
    picker.SelectSql = sql;
    picker.FormTitle = title;
    picker.FieldList = fields;
    if (picker.exec() != QDialog::Accepted) return;
    number->setText(picker.ResultCode);
    name->setText(picker.ResultName);
}

void TJc_Kycssz_Frm::Sb_XzTqClick() {
    PickCode(" select byqbh,byqmc from v_gybyq  WHERE  dw='" + QuotedSqlText(UnitKey()) + "'" + " order BY byqbh  ",
             u"公变台区"_s, u"BYQBH:变压器编号|BYQMC:变压器名称|"_s, Edt_Tqbh, Edt_Tqmc);
}

void TJc_Kycssz_Frm::Sb_XzCbcClick() {
    PickCode(" select cbcbh,cbcmc from b_cbc  WHERE  dw='" + QuotedSqlText(UnitKey()) + "'" + " order BY cbcbh  ",
             u"抄表册"_s, u"cbcbh:抄表册编号|cbcmc:抄表册名称|"_s, Edt_Cbch, Edt_Cbcmc);
}

// ------------------------------------------------------------ area loss list

void TJc_Kycssz_Frm::LoadAreaList() {
    OpenSql(MainDm().Mqry_Xltq, u" select * from g_gytqshfx  where dw=:dw and  ny=:ny "_s,
            {{"dw", UnitKey()}, {"ny", edt_Shny->text().trimmed()}});
    areaGrid_->Model()->SetColumns({{u"TQBH"_s, u"台区编号"_s, 80},
                                    {u"TQMC"_s, u"台区名称"_s, 140},
                                    {u"XSL"_s, u"线损率"_s, 60},
                                    {u"SHSX"_s, u"损耗上限"_s, 64},
                                    {u"SHXX"_s, u"损耗下限"_s, 64}});
    areaGrid_->ApplyColumnWidths();
}

void TJc_Kycssz_Frm::edt_ShnyChange() {
    // A list on show follows the year-month.
    if (MainDm().Mqry_Xltq->Active()) LoadAreaList();
}

void TJc_Kycssz_Frm::dbg_xltqCellClick(const QModelIndex& index) {
    TMidasQuery* list = MainDm().Mqry_Xltq;
    const int column = list->FindFieldIndex(u"TQBH"_s);
    if (index.isValid() && column >= 0) Edt_Tqbh->setText(list->valueAt(index.row(), column).toString());
}
