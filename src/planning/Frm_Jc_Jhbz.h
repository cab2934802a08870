// Plan compilation: the supply unit's annual or monthly inspection plans
// (e_jcjh), listed by type and unit, added, modified and deleted through
// the data module's plan query and its cached updates. One screen serves
// both plan types; the entry sets Jhlx before showing it.
#pragma once

#include <QPointer>
#include <QString>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Jc_Jhbz.h"

class TJc_Jhbz_Frm : public TZt_Template_Frm, public Ui::Jc_Jhbz_Frm {
    Q_OBJECT
public:
    explicit TJc_Jhbz_Frm(QWidget* parent = nullptr);

    // "年计划" or "月计划": the caption, the list's filter and a new
    // plan's type.
    QString Jhlx;
    // 0 browsing, 1 adding, 3 modifying.
    int EditMode() const { return editMode_; }

public slots:
    void FormShow() override;
    void Dbg_JcjhCellClick();
    void Bbtn_XzClick();
    void Bbtn_XgClick();
    void Bbtn_ScClick();
    void Bbtn_QrClick();
    void Bbtn_QuitClick();
    void Bbtn_TcClick();
    void FormClose();

protected:
    void done(int result) override;

private:
    void SetEditMode(bool editing);
    void ClearPlanEdits();
    void ShowCurrentPlan();
    // The number a new plan gets; empty, after telling the planner why,
    // when the numbers stored cannot be counted on.
    QString NewPlanNumber();

    int editMode_ = 0;
};

extern QPointer<TJc_Jhbz_Frm> Jc_Jhbz_Frm;
