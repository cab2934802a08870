// Metering anomaly record: the on-site finding for one customer's metering
// anomaly and what follows from it (the meter and transformer changes, a
// refund or supplement, the survey sheet). Opened for a case that reached
// this step in the workflow (the session's Cdbh: its application is read
// from a_khsqxx and its change scheme starts empty), or without one for a
// new case, whose document number is drawn when the account is entered.
#pragma once

#include <QPointer>
#include <functional>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Jc_Jlyccl.h"

class TJc_Jlyccl_Frm : public TZt_Template_Frm, public Ui::Jc_Jlyccl_Frm {
    Q_OBJECT
public:
    explicit TJc_Jlyccl_Frm(QWidget* parent = nullptr);

public slots:
    void FormShow() override;
    void FormClose();
    // Enter in the account edit of a new case; false when the account was
    // refused (the focus stays on the edit).
    bool Edt_HhKeyPress(QKeyEvent* key);
    void Sb_XzClick();
    void Sb_SzClick();
    void Rb_GzbClick();
    void Rb_WgzClick();
    void Rb_CjxClick();
    void Rb_XybClick();
    void Bbtn_tbClick();
    void Bbtn_DyClick();
    void Bbtn_TcClick();
    // Send: the finding checked against the fault kind and stored, a new
    // case and a recorded refund started in the workflow, the case sent on.
    void Bbtn_FsClick();
    // Meter changes: exchange, removal, cancel; installed meters.
    void Bbtn_DbnhqClick();
    void Bbtn_ChClick();
    void Bbtn_DnbqxClick();
    void Bbtn_XzClick();
    void Bbtn_XgClick();
    void Bbtn_ScClick();
    // Transformer changes, the same.
    void Bbtn_HgqhqClick();
    void BitBtn1Click();
    void Bbtn_HgqqxClick();
    void Bbtn_XzHgqClick();
    void Bbtn_XgHgqClick();
    void Bbtn_ScHgqClick();

protected:
    bool FormKeyPress(QWidget* control, QKeyEvent* event) override;
    void done(int result) override;

private:
    // The inspector's own name and certificate number as defaults.
    void InspectorDefaults();
    // Rows of the account's meters and transformers that carry a change mark.
    int SchemeRowCount() const;
    // The shared part of the three kinds that need no change scheme: a
    // scheme already made is pointed out on the meter page.
    void NoSchemeKind(bool refund, const QString& message);
    // Whether the current row of an upper list may get a change: an
    // unchanged row, a fault case, a fault nature chosen (refusals told).
    bool MayChange(TMidasQuery* upper);
    // The current operating meter / transformer goes into the scheme with
    // this mark.
    void MeterOff(const QString& bgsm);
    void TransformerOff(const QString& bgsm);
    // Opens a scheme editor on the scheme query's current row (appended or
    // in edit) and stores it when confirmed; false when cancelled.
    bool EditMeter(const QString& caption);
    bool EditTransformer(const QString& caption);
    // The send's refund question when the case has no refund records;
    // false when the operator wants to record one first.
    bool NoRefundAgreed();
    // Starts a document in the workflow: the dry run, then `rows` written
    // and the start made in one transaction. 0 started; 1 refused by the
    // dry run, 2 by the start (rolled back); the document undone and the
    // refusal told either way.
    int StartWorkflow(const QString& cdbh, const QString& ywdm, const QString& ywxdm,
                      const std::function<void()>& rows = {});

    QString sCdbh;  // the case; drawn at account entry for a new case
    QString sHh;    // its account
    double dHtrl = 0;  // contract capacity of a new case's customer
    bool bNewCase = false;
    QString sFsbz;  // "1" once sent, "0" after a failed or abandoned send
};

extern QPointer<TJc_Jlyccl_Frm> Jc_Jlyccl_Frm;
