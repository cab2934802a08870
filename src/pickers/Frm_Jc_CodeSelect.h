// Code picker: lists the rows of a caller's SQL text (code in column 1,
// name in column 2) on the shared scratch query, lets the user jump to a
// row by the start of a column's value, and hands back the chosen code and
// name.
//
// Use: create it, set SelectSql, FormTitle, DefaultField and FieldList,
// call exec(); on Accepted read ResultCode and ResultName; free it.
//
// FieldList holds one entry per grid column, "FIELD:title|", every entry
// the last one included ending with "|". A list whose last entry lacks its
// "|" is refused: exec() shows an error naming that entry and returns
// Rejected without showing the screen (show() does not show it either),
// and Refused() tells the caller so. A list without any "|" is accepted
// and builds no columns of its own.
#pragma once

#include <QPointer>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Jc_CodeSelect.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class TDBGridBinding;
class TKeyComboBox;

class TJc_CodeSelect_Frm : public TZt_Template_Frm, public Ui::Jc_CodeSelect_Frm {
    Q_OBJECT
public:
    explicit TJc_CodeSelect_Frm(QWidget* parent = nullptr);

    // Set by the caller.
    QString FormTitle;
    QString SelectSql;
    QString FieldList;
    int DefaultField = 0;
    // Set by the picker on confirmation.
    QString ResultCode;
    QString ResultName;

    QTableView* Dbg_List;

    TDBGridBinding* Grid() const { return grid_; }

    // The last entry of FieldList when it lacks its closing "|"; empty
    // when the list is well formed (or has no "|" at all).
    QString FieldListFault() const;
    // True once exec() or show() has refused a malformed FieldList.
    bool Refused() const { return refused_; }

    // Refuses a malformed FieldList before anything is shown.
    int exec() override;
    void setVisible(bool visible) override;

public slots:
    void FormShow() override;
    void BuildColumns();
    void btn_QueryClick();
    void Bbtn_QrClick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Shows the refusal and returns true when FieldList is malformed.
    bool refuseFieldList();

    TDBGridBinding* grid_;
    bool refused_ = false;
};

extern QPointer<TJc_CodeSelect_Frm> Jc_CodeSelect_Frm;
