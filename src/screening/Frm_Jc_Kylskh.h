// Customers of past inspections: the planner picks an earlier inspection
// batch of the unit by the date it was drawn up, moves its customers into a
// selection and hands the selection to the plan scheduling screen. Nothing
// is written to the database; the two customer lists are edited in memory.
#pragma once

#include <QPointer>

#include "data/DataSource.h"
#include "data/MidasQuery.h"
#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Jc_Kylskh.h"

class QDateTimeEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTableView;
class QToolButton;
class TDBGridBinding;
class TDBLookupComboBox;

class TJc_Kylskh_Frm : public TZt_Template_Frm, public Ui::Jc_Kylskh_Frm {
    Q_OBJECT
public:
    explicit TJc_Kylskh_Frm(QWidget* parent = nullptr);

    // Where a confirmed selection goes: the plan scheduling screen's
    // customer list and remarks memo, handed over before it shows this
    // screen (that screen lies in a folder above this one).
    void SetPlanTargets(QListWidget* customers, QPlainTextEdit* remarks);

    QTableView* Dbg_lskh;
    QTableView* Dbg_Jckh;
    QTableView* Dbg_SelectKh;
    // Disabled until the plan scheduling screen enables it.

    TMidasQuery* Mqry_Jcls;      // the unit's batches in the date range
    TMidasQuery* Mqry_Jckh;      // customers of the current batch
    TMidasQuery* Mqry_SelectKh;  // the chosen customers
    TDataSource* Ds_Jcls;
    TDataSource* Ds_Jckh;
    TDataSource* Ds_SelectKh;

public slots:
    void FormShow() override;
    void Bbtn_CxClick();
    void Dbg_lskhCellClick();
    void Dbg_lskhKeyDown();
    void Dbg_lskhKeyUp();
    void Sb_RightClick();
    void Sb_ArightClick();
    void Sb_LeftClick();
    void Sb_AleftClick();
    void Bbtn_QrClick();
    void Bbtn_Tc1Click();
    void FormClose();

protected:
    bool FormKeyDown(QWidget* control, QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

private:
    // Mqry_Jckh reopened for the batch row now current.
    void OpenBatchCustomers();

    QPointer<QListWidget> planCustomers_;
    QPointer<QPlainTextEdit> planRemarks_;
};

extern QPointer<TJc_Kylskh_Frm> Jc_Kylskh_Frm;
