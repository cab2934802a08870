#include "Frm_Jc_Jhbz.h"

#include "ui_Frm_Jc_Jhbz.h"

#include <QDateTimeEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

#include "common/Unt_Jc_Message.h"
#include "common/unt_jc_fuc.h"
#include "data/Dm_Jc_Main.h"
#include "data/Dm_Jc_Tarvin.h"
#include "frame/DBControls.h"
#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"

using namespace Qt::StringLiterals;

QPointer<TJc_Jhbz_Frm> Jc_Jhbz_Frm;

namespace {

constexpr int kMemoLength = 1000;

// A memo holds what its column holds: typing or pasting past the limit is
// cut at the limit.
void LimitLength(QPlainTextEdit* memo, int length) {
    QObject::connect(memo, &QPlainTextEdit::textChanged, memo, [memo, length] {
        const QString text = memo->toPlainText();
        if (text.size() <= length) return;
        QTextCursor cursor = memo->textCursor();
        const int position = std::min(cursor.position(), length);
        memo->setPlainText(text.left(length));
        cursor = memo->textCursor();
        cursor.setPosition(position);
        memo->setTextCursor(cursor);
    });
}

// Shown, never typed in: grey.
void Grey(QLineEdit* edit) {
    QPalette p = edit->palette();
    p.setColor(QPalette::Base, p.color(QPalette::Window));
    edit->setPalette(p);
}

// The plan list's cached changes written, or taken back with a message: the
// list then shows what is stored, and the edits keep what was typed.
void Apply(TMidasQuery* plans, const QString& what) {
    if (plans->ApplyUpdates(-1) == 0) return;
    plans->CancelUpdates();
    throw EDatabaseError(u"%1未能写入数据库，请稍后重试；若仍不成功，请与系统管理员联系。"_s.arg(what));
}

// The grid follows the plan list's current row with its cursor only; the
// highlight is moved there too, so the row the buttons act on is the one
// that shows as chosen.
void SelectCurrent(QTableView* grid, TMidasQuery* plans) {
    if (plans->Active() && !plans->IsEmpty()) grid->selectRow(plans->RecNo() - 1);
}

}  // namespace

TJc_Jhbz_Frm::TJc_Jhbz_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Jc_Jhbz_Frm"_s);
    setupUi(this);
    SetCancelButton(Bbtn_Quit);
    Grey(Edt_Jhbh);
    Grey(Edt_Jhlx);
    LimitLength(Mem_Jcnr, kMemoLength);
    LimitLength(Mem_Bz, kMemoLength);

    Dbg_Jcjh->horizontalHeader()->setHighlightSections(false);
    Dbg_Jcjh->verticalHeader()->setDefaultSectionSize(20);
    Dbg_Jcjh->verticalHeader()->setFixedWidth(12);
    TDBGridBinding::ReadOnlyList(Dbg_Jcjh, Tarvin().MQry_Jcjh,
                                 {{u"JHBH"_s, u"计划编号"_s, 64},
                                  {u"JHLX"_s, u"计划类型"_s, 64},
                                  {u"JHJCQRQ"_s, u"计划起日期"_s, 80},
                                  {u"JHJCZRQ"_s, u"计划止日期"_s, 80},
                                  {u"JCBM"_s, u"检查部门"_s, 90},
                                  {u"JCHS"_s, u"计划检查户数"_s, 86},
                                  {u"JCNR"_s, u"检查内容"_s, 200},
                                  {u"BZ"_s, u"备注"_s, 120},
                                  {u"ZDBMMC"_s, u"制定部门"_s, 90},
                                  {u"ZDR"_s, u"制定人"_s, 60},
                                  {u"ZDRQ"_s, u"制定日期"_s, 80}},
                                 this);
    Dblc_Jcbm->SetListSource(MainDm().MQry_Bm, u"MC"_s, u"MC"_s);

    Handle(Dbg_Jcjh, &QTableView::clicked, &TJc_Jhbz_Frm::Dbg_JcjhCellClick);
    Handle(Bbtn_Xz, &QPushButton::clicked, &TJc_Jhbz_Frm::Bbtn_XzClick);
    Handle(Bbtn_Xg, &QPushButton::clicked, &TJc_Jhbz_Frm::Bbtn_XgClick);
    Handle(Bbtn_Sc, &QPushButton::clicked, &TJc_Jhbz_Frm::Bbtn_ScClick);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TJc_Jhbz_Frm::Bbtn_QrClick);
    Handle(Bbtn_Quit, &QPushButton::clicked, &TJc_Jhbz_Frm::Bbtn_QuitClick);
    Handle(Bbtn_Tc, &QPushButton::clicked, &TJc_Jhbz_Frm::Bbtn_TcClick);
}

void TJc_Jhbz_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    setWindowTitle(Jhlx + u"编制"_s);
    TMidasQuery* plans = Tarvin().MQry_Jcjh;
    plans->Close();
    plans->ParamByName(u"dw"_s).SetAsString(Gdw);
    plans->ParamByName(u"jhlx"_s).SetAsString(Jhlx);
    plans->Open();
    MainDm().MQry_Bm->Close();
    MainDm().MQry_Bm->Open();
    // Browsing: confirm and cancel wait for an add or a modify, since a
    // save with neither has no row to write to.
    editMode_ = 0;
    SetEditMode(false);
    ClearPlanEdits();
    Dbg_Jcjh->setFocus();
    SelectCurrent(Dbg_Jcjh, plans);
    if (!plans->IsEmpty()) ShowCurrentPlan();
}

void TJc_Jhbz_Frm::SetEditMode(bool editing) {
    Bbtn_Qr->setEnabled(editing);
    Bbtn_Quit->setEnabled(editing);
    Bbtn_Xz->setEnabled(!editing);
    Bbtn_Sc->setEnabled(!editing);
    Bbtn_Xg->setEnabled(!editing);
}

void TJc_Jhbz_Frm::ClearPlanEdits() {
    Edt_Jhbh->clear();
    const QDateTime now = GetServerDateTime();
    dtp_jhqrq->setDateTime(now);
    dtp_jhzrq->setDateTime(now);
    Dblc_Jcbm->SetKeyValue(QString());
    Edt_Jchs->setText(u"0"_s);
    Mem_Jcnr->clear();
    Mem_Bz->clear();
}

void TJc_Jhbz_Frm::ShowCurrentPlan() {
    TMidasQuery* plans = Tarvin().MQry_Jcjh;
    const auto text = [plans](const char* name) { return plans->FieldByName(QLatin1String(name)).AsString(); };
    Edt_Jhbh->setText(text("jhbh"));
    Edt_Jhlx->setText(text("jhlx"));
    dtp_jhqrq->setDateTime(plans->FieldByName(u"jhjcqrq"_s).AsDateTime());
    dtp_jhzrq->setDateTime(plans->FieldByName(u"jhjczrq"_s).AsDateTime());
    Dblc_Jcbm->SetKeyValue(text("jcbm"));
    Edt_Jchs->setText(text("jchs"));
    Mem_Jcnr->setPlainText(text("jcnr"));
    Mem_Bz->setPlainText(text("bz"));
}

void TJc_Jhbz_Frm::Dbg_JcjhCellClick() {
    if (!Tarvin().MQry_Jcjh->IsEmpty()) ShowCurrentPlan();
}

void TJc_Jhbz_Frm::Bbtn_XzClick() {
    dtp_jhqrq->setFocus();
    editMode_ = 1;
    SetEditMode(true);
    ClearPlanEdits();
}

void TJc_Jhbz_Frm::Bbtn_XgClick() {
    TMidasQuery* plans = Tarvin().MQry_Jcjh;
    if (!plans->Active() || plans->IsEmpty()) return;
    dtp_jhqrq->setFocus();
    editMode_ = 3;
    SetEditMode(true);
}

void TJc_Jhbz_Frm::Bbtn_ScClick() {
    TMidasQuery* plans = Tarvin().MQry_Jcjh;
    if (plans->Active() && !plans->IsEmpty() && AskYesNo(u"确定删除该检查计划信息吗？"_s) == mrYes) {
        plans->Delete();
        Apply(plans, u"删除"_s);
        // The edits leave the deleted plan: a modify pressed next acts on
        // the row now current, and must not carry the deleted one's values.
        if (plans->IsEmpty()) ClearPlanEdits();
        else ShowCurrentPlan();
    }
    SelectCurrent(Dbg_Jcjh, plans);
    Dbg_Jcjh->viewport()->update();
}

QString TJc_Jhbz_Frm::NewPlanNumber() {
    try {
        return GetNewJhbh();
    } catch (const EDatabaseError&) {
        // Numbers are counted on from the largest one stored: a plan number
        // someone typed by hand with letters in it stops the count.
        TMidasQuery largest;
        OpenSql(&largest, u"select max(JHBH) as BH from E_JCJH"_s);
        const QString bh = largest.FieldByName(u"BH"_s).AsString();
        bool numeric = false;
        bh.trimmed().toLongLong(&numeric);
        if (numeric || bh.isEmpty()) throw;
        ShowErrorMsg(u"已有的计划编号“%1”不是数字，无法生成新的计划编号，本计划尚未保存。\n"
                     "请系统管理员将该编号改为四位数字编号后再按“确认”，已输入的内容仍保留在界面上。"_s
                         .arg(bh));
        return {};
    }
}

void TJc_Jhbz_Frm::Bbtn_QrClick() {
    const QString jchs = Edt_Jchs->text().trimmed();
    if (jchs.isEmpty() || !IsIntStr(jchs)) {
        ShowInfoMsg(u"户数不合法！"_s);
        Edt_Jchs->setFocus();
        return;
    }
    if (Mem_Jcnr->toPlainText().isEmpty()) {
        ShowInfoMsg(u"检查内容不能为空！"_s);
        Mem_Jcnr->setFocus();
        return;
    }
    const QString question = editMode_ == 1   ? u"保存输入的检查计划信息吗？"_s
                             : editMode_ == 3 ? u"保存修改后的检查计划信息吗？"_s
                                              : QString();
    if (AskYesNo(question) != mrYes) return;

    TMidasQuery* plans = Tarvin().MQry_Jcjh;
    if (editMode_ == 1) {
        const QString jhbh = NewPlanNumber();
        if (jhbh.isEmpty()) return;
        plans->Append();
        plans->FieldByName(u"jhbh"_s).SetAsString(jhbh);
        plans->FieldByName(u"jhlx"_s).SetAsString(Jhlx);
    } else {
        plans->Edit();
    }
    try {
        plans->FieldByName(u"jhjcqrq"_s).SetAsDateTime(dtp_jhqrq->date().startOfDay());
        plans->FieldByName(u"jhjczrq"_s).SetAsDateTime(dtp_jhzrq->date().startOfDay());
        plans->FieldByName(u"jcbm"_s).SetAsString(Dblc_Jcbm->KeyValue().toString());
        // Checked to be a whole number above: held as one, like the rows read.
        plans->FieldByName(u"jchs"_s).SetAsInteger(jchs.toLongLong());
        plans->FieldByName(u"jcnr"_s).SetAsString(Mem_Jcnr->toPlainText());
        plans->FieldByName(u"bz"_s).SetAsString(Mem_Bz->toPlainText());
        plans->FieldByName(u"dw"_s).SetAsString(Gdw);
        plans->FieldByName(u"zdbm"_s).SetAsString(Gbm);
        plans->FieldByName(u"zdr"_s).SetAsString(Gczyxm);
        plans->FieldByName(u"zdrq"_s).SetAsDateTime(GetServerDate());
        plans->Post();
    } catch (...) {
        plans->Cancel();
        throw;
    }
    Apply(plans, u"检查计划"_s);
    editMode_ = 0;
    SetEditMode(false);
    // The saved plan as stored, a new one with the number it was given.
    SelectCurrent(Dbg_Jcjh, plans);
    ShowCurrentPlan();
}

void TJc_Jhbz_Frm::Bbtn_QuitClick() {
    editMode_ = 0;
    SetEditMode(false);
}

void TJc_Jhbz_Frm::Bbtn_TcClick() { close(); }

void TJc_Jhbz_Frm::FormClose() {
    if (Jc_Tarvin_Dm) Jc_Tarvin_Dm->MQry_Jcjh->Close();
    if (Jc_Main_Dm) Jc_Main_Dm->MQry_Bm->Close();
}

void TJc_Jhbz_Frm::done(int result) {
    if (isVisible()) FormClose();
    TZt_Template_Frm::done(result);
}
