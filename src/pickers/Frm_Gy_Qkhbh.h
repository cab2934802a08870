// The customer picker: finds customers in the customer file by any mix of
// criteria and hands the chosen account number back in `sKhbh`. Its
// queries are those of the shared look-up module Gy_Khcx_Dm.
#pragma once

#include <QPointer>
#include <QString>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Gy_Qkhbh.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QTableView;
class TDBGridBinding;

class TGy_Qkhbh_Frm : public TZt_Template_Frm, public Ui::Gy_Qkhbh_Frm {
    Q_OBJECT
public:
    explicit TGy_Qkhbh_Frm(QWidget* parent = nullptr);

    // The chosen account number; empty until the user confirms a row.
    QString sKhbh;

    QTableView* Dbg_Fkhbh;

public slots:
    void FormShow() override;
    void Ckb_HhClick();
    void Ckb_hmClick();
    void CkB_sfzClick();
    void Ckb_yddzClick();
    void Ckb_ccbhClick();
    void Ckb_dahClick();
    void Ckb_cbcClick();
    void Ckb_khlxClick();
    void Ckb_dzmClick();
    void Ckb_zfdffsClick();
    void Cob_khlxDropDown();
    void Cob_zfdffsDropDown();
    // Shared by every input: Enter searches.
    void Edt_HhKeyPress(QObject* sender, QKeyEvent* key);
    void Dbg_FkhbhDblClick();
    void Bbtn_CxClick();
    void Bbtn_QrClick();
    void Bbtn_QuitClick();
    bool FormCloseQuery();

protected:
    bool FormKeyPress(QWidget* control, QKeyEvent* event) override;
    void done(int result) override;

private:
    // The WHERE condition of the ticked criteria; empty when none applies,
    // or when a code look-up failed (the user has been told).
    QString BuildKhbhWhere();
    // The box's input follows the box, and the focus moves on to it.
    void FollowCheckBox(QCheckBox* box, QWidget* input);
    void FillCodeCombo(QComboBox* combo, const QString& sql);
    // The code of a name in a code table through Mqry_Select; false (and
    // the user told) when the name has no code row.
    bool LookUpCode(const QString& sql, const QString& kind, const QString& name, QString& code);
    QWidget* InputOf(QWidget* control) const;
    // The search is refused: the focus goes to the input to correct.
    void RefuseAt(QWidget* input);

    TDBGridBinding* grid_ = nullptr;
};

extern QPointer<TGy_Qkhbh_Frm> Gy_Qkhbh_Frm;
