// Alarm reminders: the open alarms of the operator's unit, of the kinds he
// chose in the alarm options and only when a post of his grants the alarm
// handling; recording how each was handled, stamping the reminder date of
// everything he has been shown, and printing the list.
#pragma once

#include <QPointer>

#include "frame/DataSetModel.h"
#include "data/DataSource.h"
#include "frame/Frm_Zt_Template.h"
#include "data/MidasQuery.h"
#include "report/Report.h"
#include "ui_Frm_Jc_Bjtx.h"

class QLineEdit;
class QPushButton;
class QTableView;

class TJc_Bjtx_Frm : public TZt_Template_Frm, public Ui::Jc_Bjtx_Frm {
    Q_OBJECT
public:
    explicit TJc_Bjtx_Frm(QWidget* parent = nullptr);

    QTableView* Dbg_sx;

    TMidasQuery* Mqry_Bj;
    TDataSource* Ds_Bj;
    TMidasQuery* Mq_Update;
    // The list as printed: "报警提醒清单" from z_report.
    tarvin::report::TReport FRDB_Bjtx;

    // The list's text, also what the host's entry binds before showing.
    static const QStringList& ListSql();

public slots:
    void Bbtn_OverClick();
    void Bbtn_DyClick();
    void Bbtn_TcClick();
    // Runs on every closing of the screen; the screen always closes.
    bool FormCloseQuery();

protected:
    void done(int result) override;

private:
    TDBGridBinding* grid_;
    TDBFieldBinding* fields_;
};

extern QPointer<TJc_Bjtx_Frm> Jc_Bjtx_Frm;
