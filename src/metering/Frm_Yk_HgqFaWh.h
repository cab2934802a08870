// Transformer scheme editor: one installed instrument transformer of an
// anomaly case's scheme, the current row of Jc_Tarvin_Dm->Mqry_Hgqfa
// (A_HGQFA). As with the meter editor, the caller prepares the row and
// posts or cancels it; the screen writes category, ratio and count into it
// only when confirmed (Accepted).
#pragma once

#include <QPointer>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Yk_HgqFaWh.h"

class TMidasQuery;

class TYk_HgqFaWh_Frm : public TZt_Template_Frm, public Ui::Yk_HgqFaWh_Frm {
    Q_OBJECT
public:
    explicit TYk_HgqFaWh_Frm(QWidget* parent = nullptr);

    // Reads the ratio list; the screen's own, so the caller's queries keep
    // their rows.
    TMidasQuery* Mqry_Select;

public slots:
    void FormShow() override;
    void Dblc_LxExit();
    void Bbtn_QrClick();
    void Bbtn_QuitClick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

extern QPointer<TYk_HgqFaWh_Frm> Yk_HgqFaWh_Frm;
