// Inspection work arrangement: customers fetched from the screening screen
// or from past inspections become one task each (a new document number,
// "未审批"), and the send hands the tasks of the batch to the workflow
// under one batch number. The second page browses the tasks by period and
// state.
//
// The saved tasks stay in the dataset until the send writes them, with
// their batch number, inside the send's transaction: a batch is in the
// database whole or not at all.
#pragma once

#include <QDateTime>
#include <QPointer>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Jc_Jhbp.h"

class QTableView;
class TDBGridBinding;

class TJc_Jhbp_Frm : public TZt_Template_Frm, public Ui::Jc_Jhbp_Frm {
    Q_OBJECT
public:
    explicit TJc_Jhbp_Frm(QWidget* parent = nullptr);

    QTableView* Dbg_Jhbp;
    QTableView* Dbg_Jcqkll;

    // 0 browsing, 1 adding tasks, 3 modifying the current task.
    int iEditMode = 0;
    // The batch number of the last send ("0" until one is drawn).
    QString sJcph = QStringLiteral("0");
    // Set from the commit of a send to the end of the screen's reset.
    bool bFsbz = false;

public slots:
    void FormShow() override;
    void FormClose();
    void Bbtn_JckhjsClick();
    void Bbtn_LsjckhClick();
    void Lb_JckhjsClick();
    void Sb_SzClick();
    void Bbtn_XzClick();
    void Bbtn_XgClick();
    void Bbtn_ScClick();
    void Bbtn_QuitClick();
    void Bbtn_QrClick();
    void Bbtn_FsClick();
    void Dbg_JhbpCellClick();
    void Cob_JcrwChange();
    void Bbtn_SxClick();
    void Bbtn_TcClick();

protected:
    void done(int result) override;

private:
    void SetEditMode(bool editing);
    void SetTaskEditsEnabled(bool on);
    void SaveTasks(const QString& planType);
    void ModifyTask();
    void ShowCurrentTask();
    // The reset shared by both customer fetches, then the fetching screen.
    void FetchCustomers(TZt_Template_Frm* screen, QAbstractButton* confirm);
    // The planned date refused ("计划日期无效！") when it lies more than a
    // day before the server's time.
    bool PlanDateValid();
    QString PlanTypeText() const;

    QString sYwxdm;
    QString sYwdm;
    QDateTime dtNow;
    TDBGridBinding* jhbpGrid_ = nullptr;
};

extern QPointer<TJc_Jhbp_Frm> Jc_Jhbp_Frm;
