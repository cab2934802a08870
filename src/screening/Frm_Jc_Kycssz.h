// Suspicious-customer search: one screening category with its parameters
// on the four category pages, narrowed by the common filters, counted
// first and shown only up to 300 customers. What a category is (its
// caption, radio, parameters with their checks, messages, server defaults,
// texts and extra columns) is read from the category table, so the screen
// holds only its layout and the wiring. The result stays in the data module
// between openings; confirm hands it to the plan scheduling screen, print
// lists it with the layout kept in z_report.
#pragma once

#include <QHash>
#include <QPointer>

#include "frame/Frm_Zt_Template.h"
#include "data/MidasQuery.h"
#include "report/Report.h"
#include "ui_Frm_Jc_Kycssz.h"

class QCheckBox;
class QDateEdit;
class QGridLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QModelIndex;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QTableView;
class QToolButton;
class TDBGridBinding;
class TDBLookupComboBox;
struct TKycsCategory;
struct TKycsParam;

class TJc_Kycssz_Frm : public TZt_Template_Frm, public Ui::Jc_Kycssz_Frm {
    Q_OBJECT
public:
    explicit TJc_Kycssz_Frm(QWidget* parent = nullptr);

    // Where a confirmed result goes: the plan scheduling screen's customer
    // list and remarks memo, handed over before it shows this screen (that
    // screen lies in a folder above this one).
    void SetPlanTargets(QListWidget* customers, QPlainTextEdit* remarks);

    TMidasQuery* Mqry_Select;  // the name look-ups
    // The result as printed: "异常客户查询结果" from z_report.
    tarvin::report::TReport Rpt_Kykhcx;

    // The category chosen: its code (0 = none) and caption, and its row text.
    int Kycslb = 0;
    QString Kycsmc;
    QString KycsSql;
    // Code and caption from the active category page's checked radio;
    // Kycslb is left as it is when none of that page is checked.
    void GetKycsLb();

public slots:
    void FormShow() override;
    void FormClose();
    void Pgc_YckhpcChange();
    void Bbtn_CxClick();
    void Bbtn_QrClick();
    void Bbtn_DyClick();
    void Bbtn_Tc1Click();

    // Radios: their category's parameter controls enabled, the first focused.
    void Rb_XlxsycClick();
    void Rb_TqxsycClick();
    void Rb_XlpjdjClick();
    void Rb_TqpjdjClick();
    void Rb_LxldClick();
    void Rb_LxdyldClick();
    void Rb_BydlsyClick();
    void Rb_BydlqnClick();
    void Rb_FgdlycClick();
    void Rb_YdlbdlycClick();
    void Rb_LlkhycClick();
    void Rb_TbdldfClick();
    void rb_djcxClick();
    void Rb_QdkhClick();
    void Rb_TdyhClick();
    void Rb_WjckhClick();
    void Rb_BgyhClick();
    void Rb_HtyqClick();
    void Rb_YckhClick();

    // Filter boxes: their inputs (and picker) follow the box.
    void Ckb_DwClick();
    void Ckb_DydjClick();
    void ckb_ydlbClick();
    void Ckb_HylbClick();
    void Ckb_CbchClick();
    void Ckb_KhlxClick();
    void Ckb_HtrlClick();
    void Ckb_XlbhClick();
    void Ckb_TqbhClick();
    void Ckb_HhClick();

    // Parameter checks on leaving the edit.
    void Edt_QdnfExit();
    void Edt_ZznfExit();
    void Edt_YcnfExit();
    void Edt_DfnyExit();
    void edt_ShnyExit();
    void Edt_LdlxcsExit();
    void Edt_LddycsExit();
    void Edt_PjysExit();
    void Edt_DlboExit();
    void Edt_DlboqnExit();
    void Edt_XldjboExit();
    void Edt_TqdjboExit();
    void Edt_FgdlycblExit();
    void edt_sjllExit();
    void Edt_HtrlqExit();
    void Edt_HtrlzExit();
    // Checked on Enter only; true when the Enter is refused.
    bool edt_dldyKeyPress(QKeyEvent* key);
    bool edt_tbjeKeyPress(QKeyEvent* key);

    // Names looked up as the numbers are typed.
    void Edt_XlbhChange();
    void Edt_TqbhChange();
    void Edt_CbchChange();

    void Sb_XzXlClick();
    void Sb_XzHhClick();
    void Sb_XzTqClick();
    void Sb_XzCbcClick();

    // The area loss list of the unit and year-month.
    void edt_ShnyChange();
    void dbg_xltqCellClick(const QModelIndex& index);

protected:
    bool FormKeyPress(QWidget* control, QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

private:
    // The category's texts and parameters on the row and count queries and
    // its columns on the grid. A failed precondition is told and the search
    // goes on; false when a value cannot be bound (the search stops).
    bool GetKycsSql();
    // The common filters checked, in their fixed order, on both queries;
    // false (the user told) when one lacks its input or none is checked.
    bool AppendFilters();
    void BindParam(const TKycsParam& p);
    void SetResultColumns(const TKycsCategory& c);
    // The category's own columns of the grid, added to the printed table.
    void AddPrintedColumns();
    // The result page for the rows now in the data module.
    void ShowResult();
    void RadioClick(QRadioButton* radio);
    void FilterClick(QCheckBox* box);
    // The table's check of the control's text; false (and the user told,
    // the focus back on the edit) when it fails.
    bool CheckParam(QLineEdit* edit);
    bool CheckOnEnter(QLineEdit* edit, QKeyEvent* key);
    void LoadAreaList();
    void LookUpName(const QString& sql, const char* key, QLineEdit* number, QLineEdit* name);
    void PickCode(const QString& table, const QString& title, const QString& fields, QLineEdit* number,
                  QLineEdit* name);
    QString UnitKey() const;

    TDBGridBinding* areaGrid_ = nullptr;
    TDBGridBinding* resultGrid_ = nullptr;
    QPointer<QListWidget> planCustomers_;
    QPointer<QPlainTextEdit> planRemarks_;
    QHash<QObject*, void (TJc_Kycssz_Frm::*)()> exitHandlers_;
    bool refocusing_ = false;
};

extern QPointer<TJc_Kycssz_Frm> Jc_Kycssz_Frm;
