#include "Frm_Jc_Kylskh.h"

#include "ui_Frm_Jc_Kylskh.h"

#include <QDateTimeEdit>
#include <QHeaderView>
#include <QKeyEvent>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTableView>
#include <stdexcept>

#include "common/unit_zt_pubfun.h"
#include "data/Dm_Jc_Main.h"
#include "frame/DBControls.h"
#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"

using namespace Qt::StringLiterals;

QPointer<TJc_Kylskh_Frm> Jc_Kylskh_Frm;

namespace {

const QString kJclsSql = QStringList{u"SELECT * FROM e_jcgzap"_s, u"WHERE dw=:dw "_s, u"AND zdsj>=:zdsjq"_s,
                                     u"AND zdsj<=:zdsjz"_s}
                             .join(u'\n');
const QString kJckhSql = QStringList{u"SELECT hh,hm,zt,jcjg"_s, u" FROM e_jcgzjl "_s, u"WHERE  jcph=:jcph"_s}.join(u'\n');
// The same customers' text with an empty last line; its batch number is
// never bound, so it opens empty and is filled only by the moves.
const QString kSelectKhSql =
    QStringList{u"SELECT hh,hm,zt,jcjg"_s, u" FROM e_jcgzjl "_s, u"WHERE  jcph=:jcph"_s, QString()}.join(u'\n');

// The separator of account number and name in the plan screen's list.
constexpr char16_t kSeparator = u'\u2506';

// A read-only list of the query's rows in these columns, the last one
// taking the rest of the width.
QTableView* ListGrid(QWidget* screen, const char* name, TMidasQuery* query, const QList<TColumn>& columns) {
    QTableView* grid = NewRowGrid(screen, name);
    grid->horizontalHeader()->setStretchLastSection(true);
    TDBGridBinding::ReadOnlyList(grid, query, columns, screen);
    return grid;
}

const QList<TColumn> kCustomerColumns{
    {u"HH"_s, u"户号"_s, 76}, {u"HM"_s, u"户名"_s, 80}, {u"ZT"_s, u"状态"_s, 50}, {u"JCJG"_s, u"检查结果"_s, -1}};

// The source's current row appended to the target (values by position),
// then deleted from the source; the lists are never written back.
void MoveCurrentRow(TMidasQuery* from, TMidasQuery* to) {
    to->Append();
    for (int i = 0; i < 4; ++i) to->Fields(i).SetValue(from->Fields(i).Value());
    to->Post();
    from->Delete();
}

void MoveOne(TMidasQuery* from, TMidasQuery* to) {
    if (from->IsEmpty()) return;
    MoveCurrentRow(from, to);
}

void MoveAll(TMidasQuery* from, TMidasQuery* to) {
    if (from->IsEmpty()) return;
    from->First();
    for (int n = from->RecordCount(); n > 0; --n) MoveCurrentRow(from, to);
}

}  // namespace

TJc_Kylskh_Frm::TJc_Kylskh_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Jc_Kylskh_Frm"_s);
    setupUi(this);
    SetCancelButton(Bbtn_Tc1);

    Mqry_Jcls = new TMidasQuery(this, u"Mqry_Jcls"_s);
    Mqry_Jckh = new TMidasQuery(this, u"Mqry_Jckh"_s);
    Mqry_SelectKh = new TMidasQuery(this, u"Mqry_SelectKh"_s);
    Ds_Jcls = new TDataSource(this, u"Ds_Jcls"_s, Mqry_Jcls);
    Ds_Jckh = new TDataSource(this, u"Ds_Jckh"_s, Mqry_Jckh);
    Ds_SelectKh = new TDataSource(this, u"Ds_SelectKh"_s, Mqry_SelectKh);

    Dbg_lskh = ListGrid(this, "Dbg_lskh", Mqry_Jcls,
                        {{u"JCPH"_s, u"检查批号"_s, 90},
                         {u"JCNR"_s, u"检查内容"_s, 220},
                         {u"BZ"_s, u"备注"_s, 160},
                         {u"ZDR"_s, u"制定人"_s, 70},
                         {u"ZDSJ"_s, u"制定时间"_s, -1}});
    Lay_lskh->addWidget(Dbg_lskh);
    Dbg_Jckh = ListGrid(this, "Dbg_Jckh", Mqry_Jckh, kCustomerColumns);
    Lay_Jckh->addWidget(Dbg_Jckh);
    Dbg_SelectKh = ListGrid(this, "Dbg_SelectKh", Mqry_SelectKh, kCustomerColumns);
    Lay_SelectKh->addWidget(Dbg_SelectKh);
    // The grids take their places in the order of the form.
    setTabOrder(Bbtn_Cx, Dbg_lskh);
    setTabOrder(Dbg_lskh, Dbg_Jckh);
    setTabOrder(Dbg_Jckh, Sb_Right);
    setTabOrder(Sb_Aleft, Dbg_SelectKh);
    setTabOrder(Dbg_SelectKh, Bbtn_Qr);

    if (Jc_Main_Dm) Dblc_Dw->SetListSource(Jc_Main_Dm->Mqry_Dw, u"DM"_s, u"MC"_s);

    Handle(Bbtn_Cx, &QPushButton::clicked, &TJc_Kylskh_Frm::Bbtn_CxClick);
    Handle(Dbg_lskh, &QTableView::clicked, &TJc_Kylskh_Frm::Dbg_lskhCellClick);
    Handle(Sb_Right, &QToolButton::clicked, &TJc_Kylskh_Frm::Sb_RightClick);
    Handle(Sb_Aright, &QToolButton::clicked, &TJc_Kylskh_Frm::Sb_ArightClick);
    Handle(Sb_Left, &QToolButton::clicked, &TJc_Kylskh_Frm::Sb_LeftClick);
    Handle(Sb_Aleft, &QToolButton::clicked, &TJc_Kylskh_Frm::Sb_AleftClick);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TJc_Kylskh_Frm::Bbtn_QrClick);
    Handle(Bbtn_Tc1, &QPushButton::clicked, &TJc_Kylskh_Frm::Bbtn_Tc1Click);
}

void TJc_Kylskh_Frm::SetPlanTargets(QListWidget* customers, QPlainTextEdit* remarks) {
    planCustomers_ = customers;
    planRemarks_ = remarks;
}

void TJc_Kylskh_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    const QDateTime now = GetServerDateTime();
    dtp_zdsjq->setDateTime(now.addDays(-1));
    dtp_zdsjz->setDateTime(now);
    TMidasQuery* units = MainDm().Mqry_Dw;
    if (Dblc_Dw->ListSource() != units) Dblc_Dw->SetListSource(units, u"DM"_s, u"MC"_s);
    units->Close();
    units->Params().Items(0).SetAsString(Gdw);
    units->Open();
    Dblc_Dw->SetKeyValue(Gdw);
}

void TJc_Kylskh_Frm::OpenBatchCustomers() {
    const QString jcph = Mqry_Jcls->Active() ? Mqry_Jcls->FieldByName(u"jcph"_s).AsString() : QString();
    OpenSql(Mqry_Jckh, kJckhSql, {{"jcph", jcph}});
}

void TJc_Kylskh_Frm::Bbtn_CxClick() {
    OpenSql(Mqry_Jcls, kJclsSql,
            {{"dw", Dblc_Dw->KeyValue().toString()},
             {"zdsjq", dtp_zdsjq->dateTime()},
             {"zdsjz", dtp_zdsjz->dateTime()}});
    OpenBatchCustomers();
    // A new search starts a new selection.
    OpenSql(Mqry_SelectKh, kSelectKhSql);
}

void TJc_Kylskh_Frm::Dbg_lskhCellClick() {
    if (Mqry_Jcls->Active()) OpenBatchCustomers();
}

void TJc_Kylskh_Frm::Dbg_lskhKeyDown() { Dbg_lskhCellClick(); }

void TJc_Kylskh_Frm::Dbg_lskhKeyUp() { Dbg_lskhCellClick(); }

bool TJc_Kylskh_Frm::FormKeyDown(QWidget* control, QKeyEvent* event) {
    const bool swallowed = TZt_Template_Frm::FormKeyDown(control, event);
    if (control == Dbg_lskh) Dbg_lskhKeyDown();
    return swallowed;
}

bool TJc_Kylskh_Frm::eventFilter(QObject* watched, QEvent* event) {
    const bool swallowed = TZt_Template_Frm::eventFilter(watched, event);
    // The grid has moved by the time the key comes up: its batch's
    // customers are read then.
    if (!swallowed && watched == Dbg_lskh && event->type() == QEvent::KeyRelease && isVisible() &&
        !static_cast<QKeyEvent*>(event)->isAutoRepeat())
        Guard([this] { Dbg_lskhKeyUp(); });
    return swallowed;
}

void TJc_Kylskh_Frm::Sb_RightClick() { MoveOne(Mqry_Jckh, Mqry_SelectKh); }
void TJc_Kylskh_Frm::Sb_ArightClick() { MoveAll(Mqry_Jckh, Mqry_SelectKh); }
void TJc_Kylskh_Frm::Sb_LeftClick() { MoveOne(Mqry_SelectKh, Mqry_Jckh); }
void TJc_Kylskh_Frm::Sb_AleftClick() { MoveAll(Mqry_SelectKh, Mqry_Jckh); }

void TJc_Kylskh_Frm::Bbtn_QrClick() {
    if (!planCustomers_ || !planRemarks_)
        throw std::runtime_error(u"没有接收所选客户的检查计划排程界面，请从检查计划排程中打开本界面。"_s.toStdString());
    planCustomers_->clear();
    if (Mqry_SelectKh->Active())
        for (Mqry_SelectKh->First(); !Mqry_SelectKh->Eof(); Mqry_SelectKh->Next())
            planCustomers_->addItem(Mqry_SelectKh->FieldByName(u"HH"_s).AsString() + QChar(kSeparator) +
                                    Mqry_SelectKh->FieldByName(u"HM"_s).AsString());
    planRemarks_->appendPlainText(u"历史检查客户。"_s);
    close();
}

void TJc_Kylskh_Frm::Bbtn_Tc1Click() { close(); }

void TJc_Kylskh_Frm::FormClose() {
    Mqry_Jcls->Close();
    Mqry_Jckh->Close();
    Mqry_SelectKh->Close();
}

void TJc_Kylskh_Frm::done(int result) {
    if (isVisible()) FormClose();
    TZt_Template_Frm::done(result);
}
