#include "Frm_Jc_Jhbp.h"

#include <QApplication>
#include <QHeaderView>
#include <QScopeGuard>
#include <QTableView>

#include "common/Unt_Jc_Message.h"
#include "common/Unt_Zt_Message.h"
#include "common/Unt_Zt_UserFuncs.h"
#include "common/unt_jc_fuc.h"
#include "data/Dm_Jc_Main.h"
#include "data/Dm_Jc_Tarvin.h"
#include "frame/DBControls.h"
#include "frame/DataSetModel.h"
#include "frame/MessageService.h"
#include "frame/Unit_zt_gobal.h"
#include "pickers/Frm_Jc_Jcryxs.h"
#include "screening/Frm_Jc_Kycssz.h"
#include "screening/Frm_Jc_Kylskh.h"

using namespace Qt::StringLiterals;

QPointer<TJc_Jhbp_Frm> Jc_Jhbp_Frm;

namespace {

const QString kNoCustomers = u"对不起，请您先检索要安排检查的客户信息"_s;
const QString kSendFailed = u"当前客户流程发送错误，请尝试重新发送。"_s;
const QString kYwdm = u"401"_s;
const QString kYwxdm = u"40101"_s;

QTableView* BoundGrid(QWidget* screen, const char* name, TMidasQuery* query, const QList<TColumn>& columns,
                      TDBGridBinding** binding = nullptr) {
    QTableView* grid = NewRowGrid(screen, name);
    grid->horizontalHeader()->setStretchLastSection(true);
    TDBGridBinding* b = TDBGridBinding::ReadOnlyList(grid, query, columns, screen);
    if (binding) *binding = b;
    return grid;
}

QString Quoted(const QDateTime& d) { return u"'"_s + d.date().toString(u"yyyy-MM-dd"_s) + u"'"_s; }

}  // namespace

TJc_Jhbp_Frm::TJc_Jhbp_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(u"Jc_Jhbp_Frm"_s);
    setupUi(this);
    SetCancelButton(Bbtn_Quit);

    TJc_Tarvin_Dm& dm = Tarvin();
    Dbg_Jhbp = BoundGrid(this, "Dbg_Jhbp", dm.MQry_Jhbp,
                         {{u"CDBH"_s, u"传单编号"_s, 86},
                          {u"HH"_s, u"户号"_s, 84},
                          {u"HM"_s, u"户名"_s, 170},
                          {u"JHLX"_s, u"计划类型"_s},
                          {u"JCLX"_s, u"检查类型"_s},
                          {u"JHJCRQ"_s, u"计划检查日期"_s, 150},
                          {u"JCRY"_s, u"检查人员"_s},
                          {u"JCZH"_s, u"检查证号"_s},
                          {u"HJRS"_s, u"合计人数"_s},
                          {u"QTRY"_s, u"其他人员"_s},
                          {u"ZT"_s, u"状态"_s}},
                         &jhbpGrid_);
    Dbg_Jhbp->setToolTip(u"客户检查任务"_s);
    Lay_Jhbp->addWidget(Dbg_Jhbp);
    Dbg_Jcqkll = BoundGrid(this, "Dbg_Jcqkll", dm.MQry_Jcqkll,
                           {{u"CDBH"_s, u"传单编号"_s, 86},
                            {u"HH"_s, u"户号"_s, 84},
                            {u"JHLX"_s, u"计划类型"_s},
                            {u"JCLXMC"_s, u"检查类型"_s},
                            {u"JHJCRQ"_s, u"计划检查日期"_s, 150},
                            {u"JCRQ"_s, u"检查日期"_s},
                            {u"JCZG"_s, u"检查主管"_s},
                            {u"JCRY"_s, u"检查人员"_s},
                            {u"JCZH"_s, u"检查证号"_s},
                            {u"FJLXDH"_s, u"复检联系电话"_s},
                            {u"KHQZ"_s, u"客户签字"_s},
                            {u"ZT"_s, u"备注"_s}});
    Dbg_Jcqkll->setToolTip(u"检查情况"_s);
    Lay_Jcqkll->addWidget(Dbg_Jcqkll, 1);
    setTabOrder(Edt_Qtry, Dbg_Jhbp);
    setTabOrder(Dbg_Jhbp, Bbtn_Xz);
    setTabOrder(Bbtn_Sx, Dbg_Jcqkll);

    TJc_Main_Dm& main = MainDm();
    Dblc_Jcbm->SetListSource(main.MQry_Bm, u"DM"_s, u"MC"_s);
    dblc_jclx->SetListSource(main.MQry_Jclx, u"MC"_s, u"MC"_s);

    Handle(Bbtn_Jckhjs, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_JckhjsClick);
    Handle(Bbtn_Lsjckh, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_LsjckhClick);
    Handle(Lb_Jckhjs, &QListWidget::itemClicked, &TJc_Jhbp_Frm::Lb_JckhjsClick);
    Handle(Sb_Sz, &QToolButton::clicked, &TJc_Jhbp_Frm::Sb_SzClick);
    Handle(Bbtn_Xz, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_XzClick);
    Handle(Bbtn_Xg, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_XgClick);
    Handle(Bbtn_Sc, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_ScClick);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_QrClick);
    Handle(Bbtn_Quit, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_QuitClick);
    Handle(Bbtn_Fs, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_FsClick);
    Handle(Dbg_Jhbp, &QTableView::clicked, &TJc_Jhbp_Frm::Dbg_JhbpCellClick);
    Handle(Cob_Jcrw, &QComboBox::currentIndexChanged, &TJc_Jhbp_Frm::Cob_JcrwChange);
    Handle(Bbtn_Sx, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_SxClick);
    Handle(Bbtn_Tc, &QPushButton::clicked, &TJc_Jhbp_Frm::Bbtn_TcClick);
}

// ------------------------------------------------------------ opening

void TJc_Jhbp_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    TJc_Main_Dm& main = MainDm();
    for (TMidasQuery* q : {main.MQry_Jclx, main.MQry_Bm}) {
        q->Close();
        q->Open();
    }
    iEditMode = 0;
    sJcph = u"0"_s;
    bFsbz = false;
    Dblc_Jcbm->SetKeyValue(Gbm);
    sYwxdm = Ywxdm;
    sYwdm = Ywxdm.left(3);

    SetEditMode(false);
    Pgc_Jhbp->setCurrentWidget(Ts_Jcjhbp);
    const QDateTime today = QDateTime::currentDateTime();
    for (QDateTimeEdit* d : {dtp_jhrq, DTP_JCNY1, dtp_jcny2}) d->setDateTime(today);
    SetTaskEditsEnabled(false);

    // The fetching screens live as long as this one: a second fetch finds
    // the last search as it was left.
    delete Jc_Kycssz_Frm;
    delete Jc_Kylskh_Frm;
    Jc_Kycssz_Frm = new TJc_Kycssz_Frm(this);
    Jc_Kycssz_Frm->SetPlanTargets(Lb_Jckhjs, Mem_Bz);
    Jc_Kylskh_Frm = new TJc_Kylskh_Frm(this);
    Jc_Kylskh_Frm->SetPlanTargets(Lb_Jckhjs, Mem_Bz);
}

// ------------------------------------------------------------ modes

void TJc_Jhbp_Frm::SetEditMode(bool editing) {
    for (QPushButton* b : {Bbtn_Xz, Bbtn_Xg, Bbtn_Sc}) b->setEnabled(!editing);
    for (QPushButton* b : {Bbtn_Qr, Bbtn_Quit}) b->setEnabled(editing);
}

void TJc_Jhbp_Frm::SetTaskEditsEnabled(bool on) {
    for (QWidget* w : std::initializer_list<QWidget*>{dblc_jclx, Sb_Sz, Edt_Hjrs, Edt_Qtry, dtp_jhrq}) w->setEnabled(on);
}

// ------------------------------------------------------------ customers

void TJc_Jhbp_Frm::FetchCustomers(TZt_Template_Frm* screen, QAbstractButton* confirm) {
    SetEditMode(false);
    SetTaskEditsEnabled(false);
    Tarvin().MQry_Jhbp->Close();
    dblc_jclx->SetKeyValue(QVariant());
    Dblc_Jcbm->SetKeyValue(Gbm);
    Lb_Jckhjs->clear();
    for (QLineEdit* e : {edt_jcry, EDT_JCZH, Edt_Hjrs, Edt_Qtry}) e->clear();
    Mem_Jcnr->clear();
    Mem_Bz->clear();
    dtp_jhrq->setDateTime(GetServerDateTime());
    if (!screen) return;
    confirm->setEnabled(true);
    screen->exec();
}

void TJc_Jhbp_Frm::Bbtn_JckhjsClick() {
    FetchCustomers(Jc_Kycssz_Frm, Jc_Kycssz_Frm ? Jc_Kycssz_Frm->Bbtn_Qr : nullptr);
}

void TJc_Jhbp_Frm::Bbtn_LsjckhClick() {
    FetchCustomers(Jc_Kylskh_Frm, Jc_Kylskh_Frm ? Jc_Kylskh_Frm->Bbtn_Qr : nullptr);
}

void TJc_Jhbp_Frm::Lb_JckhjsClick() {
    TMidasQuery* tasks = Tarvin().MQry_Jhbp;
    QListWidgetItem* item = Lb_Jckhjs->currentItem();
    if (!tasks->Active() || tasks->IsEmpty() || !item) return;
    item->setSelected(true);
    tasks->Locate(u"hh"_s, item->text().left(10));
}

void TJc_Jhbp_Frm::Sb_SzClick() {
    TJc_Jcryxs_Frm picker(this);
    picker.exec();
    // Taken whatever the picker's result: a double click chose already.
    edt_jcry->setText(picker.SelXm);
    EDT_JCZH->setText(picker.SelJczh);
}

// ------------------------------------------------------------ tasks

void TJc_Jhbp_Frm::Bbtn_XzClick() {
    if (Lb_Jckhjs->count() == 0) return ShowInfoMsg(kNoCustomers);
    iEditMode = 1;
    SetEditMode(true);
    Pgc_Jhbp->setCurrentWidget(Ts_Jcjhbp);
    SetTaskEditsEnabled(true);
    Rb_Jhwbp->setFocus();
}

void TJc_Jhbp_Frm::Bbtn_XgClick() {
    TMidasQuery* tasks = Tarvin().MQry_Jhbp;
    if (!tasks->Active() || tasks->IsEmpty()) return ShowInfoMsg(u"请选择要修改的检查任务信息！"_s);
    SetTaskEditsEnabled(true);
    iEditMode = 3;
    SetEditMode(true);
    Pgc_Jhbp->setCurrentWidget(Ts_Jcjhbp);
    dblc_jclx->setFocus();
}

void TJc_Jhbp_Frm::Bbtn_ScClick() {
    TMidasQuery* tasks = Tarvin().MQry_Jhbp;
    if (!tasks->Active() || tasks->IsEmpty()) return ShowInfoMsg(u"请选择要删除的检查任务信息！"_s);
    if (AskYesNo(u"确定要删除选中的检查任务信息吗？"_s) == mrYes) tasks->Delete();
}

void TJc_Jhbp_Frm::Bbtn_QuitClick() {
    TMidasQuery* tasks = Tarvin().MQry_Jhbp;
    if (tasks->Active()) tasks->Cancel();
    iEditMode = 0;
    SetEditMode(false);
    SetTaskEditsEnabled(false);
}

QString TJc_Jhbp_Frm::PlanTypeText() const {
    if (Rb_Yjhbp->isChecked()) return u"月计划"_s;
    if (Rb_Njhbp->isChecked()) return u"年计划"_s;
    return u"计划外"_s;
}

void TJc_Jhbp_Frm::Bbtn_QrClick() {
    if (dblc_jclx->KeyValue().isNull()) {
        ShowInfoMsg(u"对不起，检查类型不能为空！"_s);
        dblc_jclx->setFocus();
        return;
    }
    if (edt_jcry->text().isEmpty()) {
        ShowInfoMsg(u"对不起，检查人员不能为空！"_s);
        edt_jcry->setFocus();
        return;
    }
    if (!CheckIntStr(Edt_Hjrs->text())) {
        ShowInfoMsg(u"合计人数必须为整数！"_s);
        Edt_Hjrs->setFocus();
        return;
    }
    if (iEditMode == 1) {
        if (Lb_Jckhjs->count() == 0) {
            ShowInfoMsg(kNoCustomers);
            Bbtn_Jckhjs->setFocus();
            return;
        }
        const QString planType = PlanTypeText();
        if (AskYesNo(u"保存上述"_s + QString::number(Lb_Jckhjs->count()) + u"个客户的"_s + planType +
                     u"检查工作信息吗？"_s) != mrYes) {
            iEditMode = 0;
            SetEditMode(false);
            return;
        }
        SaveTasks(planType);
    } else if (iEditMode == 3) {
        if (AskYesNo(u"确认修改吗?"_s) == mrYes) {
            ModifyTask();
        } else {
            iEditMode = 0;
            SetEditMode(false);
        }
    }
    iEditMode = 0;
    SetEditMode(false);
    SetTaskEditsEnabled(false);
}

bool TJc_Jhbp_Frm::PlanDateValid() {
    if (dtp_jhrq->dateTime().addDays(1) >= GetServerDateTime()) return true;
    ShowInfoMsg(u"计划日期无效！"_s);
    dtp_jhrq->setFocus();
    return false;
}

void TJc_Jhbp_Frm::SaveTasks(const QString& planType) {
    if (!PlanDateValid()) return;
    dtNow = GetServerDate();
    if (Lb_Jckhjs->count() == 0) return;
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* tasks = dm.MQry_Jhbp;
    try {
        tasks->Close();
        tasks->Open();
        tasks->DisableControls();
        const auto shown = qScopeGuard([tasks] { tasks->EnableControls(); });
        for (int i = 0; i < Lb_Jckhjs->count(); ++i) {
            const QString hh = Lb_Jckhjs->item(i)->text().left(10);
            const QString cdbh = GetNewCdbh();
            if (cdbh.isEmpty()) throw EDatabaseError(u"传单编号已用完"_s);
            TMidasQuery* customer = dm.Mqry_Select;
            OpenSql(customer, u"select *　from v_yckhda where hh='"_s + QuotedSqlText(hh) + u"'"_s);
            const auto from = [customer](const char* name) { return customer->FieldByName(QLatin1String(name)).Value(); };
            tasks->Append();
            const auto set = [tasks](const char* name, const QVariant& v) {
                tasks->FieldByName(QLatin1String(name)).SetValue(v);
            };
            set("cdbh", cdbh);
            set("HH", hh);
            set("HM", from("HM"));
            set("YDDZ", from("YDDZ"));
            set("KHLX", from("KHLXDM"));
            set("DYDJ", from("DYDJDM"));
            set("XLBH", from("XLBH"));
            set("TQBH", from("TQBH"));
            set("JCZQ", from("JCZQ"));
            tasks->FieldByName(u"SCJCRQ"_s).SetAsDateTime(customer->FieldByName(u"SCJCRQ"_s).AsDateTime());
            set("JHLX", planType);
            set("JHJCRQ", dtp_jhrq->dateTime());
            set("JCLX", dblc_jclx->KeyValue().toString());
            set("JCRY", edt_jcry->text());
            set("JCZH", EDT_JCZH->text());
            set("QTRY", Edt_Qtry->text());
            set("HJRS", Edt_Hjrs->text());
            set("ZT", u"未审批"_s);
            tasks->Post();
            customer->Close();
        }
    } catch (const std::exception&) {
        if (tasks->Active()) tasks->Cancel();
        ShowErrorMsg(u"计划保存未成功，请检查！"_s);
        return;
    }
    ShowInfoMsg(u"计划保存成功，请确认后发送！"_s);
    Bbtn_Fs->setEnabled(true);
}

void TJc_Jhbp_Frm::ModifyTask() {
    if (!PlanDateValid()) return;
    TMidasQuery* tasks = Tarvin().MQry_Jhbp;
    try {
        tasks->Edit();
        tasks->FieldByName(u"jhjcrq"_s).SetValue(dtp_jhrq->dateTime());
        tasks->FieldByName(u"JCLX"_s).SetAsString(dblc_jclx->KeyValue().toString());
        tasks->FieldByName(u"JCRY"_s).SetAsString(edt_jcry->text());
        tasks->FieldByName(u"JCZH"_s).SetAsString(EDT_JCZH->text());
        tasks->FieldByName(u"QTRY"_s).SetAsString(Edt_Qtry->text());
        tasks->FieldByName(u"HJRS"_s).SetAsString(Edt_Hjrs->text());
        tasks->Post();
    } catch (const std::exception&) {
        if (tasks->Active()) tasks->Cancel();
        ShowErrorMsg(u"计划修改未成功，请检查！"_s);
        return;
    }
    ShowInfoMsg(u"计划修改成功！"_s);
}

void TJc_Jhbp_Frm::Dbg_JhbpCellClick() { ShowCurrentTask(); }

void TJc_Jhbp_Frm::ShowCurrentTask() {
    SetEditMode(false);
    TMidasQuery* tasks = Tarvin().MQry_Jhbp;
    if (!tasks->Active() || tasks->IsEmpty()) return;
    const auto field = [tasks](const char* name) { return tasks->FieldByName(QLatin1String(name)); };
    const QString jhlx = field("JHLX").AsString();
    (jhlx == u"月计划"_s ? Rb_Yjhbp : jhlx == u"年计划"_s ? Rb_Njhbp : Rb_Jhwbp)->setChecked(true);
    dblc_jclx->SetKeyValue(field("jclx").Value());
    if (!field("JHJCRQ").IsNull()) dtp_jhrq->setDateTime(field("jhjcrq").AsDateTime());
    edt_jcry->setText(field("jcry").AsString());
    EDT_JCZH->setText(field("jczh").AsString());
    Edt_Qtry->setText(field("qtry").AsString());
    Edt_Hjrs->setText(field("hjrs").AsString());
}

// ------------------------------------------------------------ send

void TJc_Jhbp_Frm::Bbtn_FsClick() {
    TJc_Tarvin_Dm& dm = Tarvin();
    TMidasQuery* tasks = dm.MQry_Jhbp;
    if (!tasks->Active() || tasks->IsEmpty()) return ShowInfoMsg(kNoCustomers);
    if (Dblc_Jcbm->KeyValue().isNull()) {
        ShowInfoMsg(u"对不起，检查部门不能为空！"_s);
        Dblc_Jcbm->setFocus();
        return;
    }
    if (Mem_Jcnr->toPlainText().isEmpty()) {
        ShowInfoMsg(u"对不起，检查内容不能为空！"_s);
        Mem_Jcnr->setFocus();
        return;
    }
    dtNow = GetServerDateTime();
    if (bFsbz) {
        tarvin::MessageService::show(u"本次流程已经发送"_s, u"提示"_s, QMessageBox::Question, QMessageBox::Ok, this);
        return;
    }

    QApplication::setOverrideCursor(Qt::WaitCursor);
    auto cursor = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
    TCustomMidasDataBase& shdl = TCustomMidasDataBase::ByName();
    QString cdbh;
    // A failure after the transaction began: the document's application
    // withdrawn and every row of the batch rolled back, so no later commit
    // on the connection can take half a batch with it. A connection that
    // died on the way fails these too; the operator still gets the message.
    const auto abandon = [&] {
        if (!cdbh.isEmpty()) {
            try {
                UndoYysq(cdbh);
            } catch (const std::exception&) {
            }
        }
        try {
            if (shdl.InTransaction()) shdl.Rollback();
        } catch (const std::exception&) {
        }
        cursor.dismiss();
        QApplication::restoreOverrideCursor();
        ShowTip(kSendFailed);
    };
    try {
        sJcph = GetNewJcph();
        if (sJcph.isEmpty()) throw EDatabaseError(u"检查批号已用完"_s);
        shdl.StartTransaction();
        tasks->DisableControls();
        const auto shown = qScopeGuard([tasks] { tasks->EnableControls(); });
        for (tasks->First(); !tasks->Eof(); tasks->Next()) {
            tasks->Edit();
            tasks->FieldByName(u"jcph"_s).SetAsString(sJcph);
            tasks->Post();
            cdbh = tasks->FieldByName(u"CDBH"_s).AsString();
            const QString hh = tasks->FieldByName(u"HH"_s).AsString();
            const QString hm = tasks->FieldByName(u"HM"_s).AsString();
            const QString yddz = tasks->FieldByName(u"YDDZ"_s).AsString();

            TMidasQuery* update = MainDm().MQry_Update;
            OpenSql(update, u"select htrl from y_khda where hh='"_s + QuotedSqlText(hh) + u"' "_s);
            const double htrl = update->FieldByName(u"htrl"_s).AsFloat();
            ExecSql(update, u"Insert into A_YKKZB(CDBH,htrl) Values(:CDBH,:HTRL)"_s, {{"CDBH", cdbh}, {"HTRL", htrl}});
            update->Close();

            const auto start = [&](auto call) {
                return call(cdbh, kYwdm, kYwxdm, Gdw, hh, u"一般"_s, Gczydm, GetServerDateTime(), hm, yddz);
            };
            if (start(&WfTryFristYwx) != 0) return abandon();
            ExecSql(dm.Mqry_Update,
                    u"Insert Into A_KHSQXX(CDBH,SLBM,YWDM,SQRQ,SQBZ,HH,KHLX,HM,YDDZ,ZJMC,ZJHM,htrl,lxr,lxdh,lxdz,yzbm,FKDW,"
                    "FKFS,HYFL,YDLB,DYDJ,YHDM,YHZH,DW,XZQ,SFXYH,ZWLXDH,ZWLXR,ZWLXDZ,ZZSYH,ZZSZH,ZZSH,ZZSM,ZCDZ,SCBC,ZXR,"
                    "CBCBH,YHH) select :CDBH,:SLBM,:YWDM,:SQRQ,:SQBZ,HH,KHLX,HM,YDDZ,ZJMC,ZJHM,htrl,lxr,lxdh,lxdz,yzbm,FKDW,"
                    "FKFS,HYFL,YDLB,DYDJ,YHDM,YHZH,DW,XZQ,SFXYH,ZWLXDH,ZWLXR,ZWLXDZ,ZZSYH,ZZSZH,ZZSH,ZZSM,ZCDZ,SCBC,ZXR,"
                    "CBCBH,YHH  from Y_KHDA where HH =:HH"_s,
                    {{"HH", hh}, {"CDBH", cdbh}, {"SLBM", Gbm}, {"YWDM", kYwdm}, {"SQRQ", GetServerDate()},
                     {"SQBZ", Mem_Bz->toPlainText().trimmed()}});
            if (start(&WfFristYwx) != 0) {
                abandon();
                bFsbz = false;
                return;
            }
        }
        // The tasks themselves, with their batch number, go in with the rest.
        tasks->ApplyUpdates(0);
        ExecSql(dm.Mqry_Update,
                u"insert into e_jcgzap(jcph, jcbm, jcnr,dw, bz,zdr, zdsj) values (:JCPH,:JCBM,:JCNR,:DW,:BZ,:ZDR,:ZDSJ)"_s,
                {{"JCPH", sJcph}, {"JCBM", Dblc_Jcbm->KeyValue().toString()}, {"JCNR", Mem_Jcnr->toPlainText()},
                 {"DW", Gdw}, {"BZ", Mem_Bz->toPlainText()}, {"ZDR", Gczyxm}, {"ZDSJ", dtNow}});
        shdl.Commit();
        WfSendGzdMess(cdbh);
    } catch (const std::exception&) {
        abandon();
        bFsbz = false;
        return;
    }

    bFsbz = true;
    cursor.dismiss();
    QApplication::restoreOverrideCursor();
    ShowTip(u"当前客户流程发送成功(检查批号为"_s + sJcph + u"),请继续处理。"_s);
    ClearFormEdits(this);
    for (TMidasQuery* q : {tasks, dm.MQry_Jcqkll, dm.MQry_Kykhcx}) q->Close();
    bFsbz = false;
    iEditMode = 0;
    dblc_jclx->SetKeyValue(QVariant());
    Dblc_Jcbm->SetKeyValue(QVariant());
    Lb_Jckhjs->clear();
    const QDateTime today = QDateTime::currentDateTime();
    for (QDateTimeEdit* d : {dtp_jhrq, DTP_JCNY1, dtp_jcny2}) d->setDateTime(today);
    SetTaskEditsEnabled(false);
    SetEditMode(false);
    Pgc_Jhbp->setCurrentWidget(Ts_Jcjhbp);
}

// ------------------------------------------------------------ browse

void TJc_Jhbp_Frm::Cob_JcrwChange() {
    const QString task = Cob_Jcrw->currentText();
    Lbl_Jcny->setText(task == u"已检查任务"_s   ? u"检查日期"_s
                      : task == u"未检查任务"_s ? u"计划日期"_s
                                                : u"检查年月"_s);
}

void TJc_Jhbp_Frm::Bbtn_SxClick() {
    const QString d1 = Quoted(DTP_JCNY1->dateTime());
    const QString d2 = Quoted(dtp_jcny2->dateTime());
    const auto on = [](const QString& field, const QString& d1, const QString& d2) {
        return u" and A."_s + field + u">=to_date("_s + d1 + u",'yyyy-mm-dd')"_s + u" and A."_s + field +
               u"<=to_date("_s + d2 + u",'yyyy-mm-dd')"_s;
    };
    QString sql = u"select A.*,B.MC JCLXMC from E_Jcgzjl A,W_JCLX B"_s;
    const QString task = Cob_Jcrw->currentText();
    if (task == u"未检查任务"_s) {
        sql += u" where A.ZT<>'已检查' "_s + on(u"jhjcrq"_s, d1, d2);
    } else if (task == u"已检查任务"_s) {
        sql += u" where A.ZT='已检查'"_s + on(u"jcrq"_s, d1, d2);
    } else {
        sql += u" where ((A.jhjcrq>=to_date("_s + d1 + u",'yyyy-mm-dd')"_s + u" and A.jhjcrq<=to_date("_s + d2 +
               u",'yyyy-mm-dd'))"_s + u" or (A.jcrq>=to_date("_s + d1 + u",'yyyy-mm-dd')"_s +
               u" and A.jcrq<=to_date("_s + d2 + u",'yyyy-mm-dd')))"_s;
    }
    sql += u" and A.JCLX=B.DM(+)"_s;
    TMidasQuery* browse = Tarvin().MQry_Jcqkll;
    OpenSql(browse, sql);
    if (browse->IsEmpty()) ShowInfoMsg(u"无满足条件的记录！"_s);
}

// ------------------------------------------------------------ closing

void TJc_Jhbp_Frm::Bbtn_TcClick() { close(); }

void TJc_Jhbp_Frm::FormClose() {
    if (Jc_Tarvin_Dm)
        for (TMidasQuery* q : {Jc_Tarvin_Dm->MQry_Jhbp, Jc_Tarvin_Dm->MQry_Jcqkll, Jc_Tarvin_Dm->Mqry_Select}) q->Close();
    if (Jc_Main_Dm)
        for (TMidasQuery* q : {Jc_Main_Dm->MQry_Jclx, Jc_Main_Dm->MQry_Bm}) q->Close();
    delete Jc_Kycssz_Frm;
    delete Jc_Kylskh_Frm;
}

void TJc_Jhbp_Frm::done(int result) {
    Guard([this] { FormClose(); });
    TZt_Template_Frm::done(result);
}
