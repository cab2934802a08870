// Meter scheme editor: one installed meter of an anomaly case's scheme, the
// current row of Jc_Tarvin_Dm->Mqry_Dnbfa (A_DNBFA). The caller puts the row
// in insert or edit state and prefills it; the screen shows it and writes
// its values back into the row only when confirmed (Accepted). Posting and
// applying the row, or cancelling it, is the caller's.
#pragma once

#include <QPointer>

#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_Yk_DnbFaWh.h"

class QCheckBox;
class TMidasQuery;

class TYk_DnbFaWh_Frm : public TZt_Template_Frm, public Ui::Yk_DnbFaWh_Frm {
    Q_OBJECT
public:
    explicit TYk_DnbFaWh_Frm(QWidget* parent = nullptr);

    // The register kinds (SSLX) as confirmed; also written into the row.
    QString Sslx;

    // The register boxes for the letters A, B, C, D, E, F, X, in that order.
    QList<QCheckBox*> SslxBoxes() const;
    // The letters of the checked boxes in that fixed order.
    QString ComposeSslx() const;
    // Checks (and enables) the box of each letter in `sslx`.
    void ShowSslx(const QString& sslx);

    // The screen's defaults for a new row: line-loss methods "不算", gateway
    // and reference flags "否"; only empty fields are filled.
    static void SetNewRowDefaults(TMidasQuery* row);

public slots:
    void FormShow() override;
    void Dblc_DBLBClick();
    void DBCmb_XsJsFsChange();
    void DBCmb_WgXsJsFsChange();
    void Bbtn_QrClick();
    void Bbtn_QuitClick();

private:
    void enableFor(const QString& category, bool check);
    void showGkbbz(const QString& flag);
    void storeRow();

    // Both flag lists edit GKBBZ: what the last one chosen says.
    QString gkbbz_;
};

extern QPointer<TYk_DnbFaWh_Frm> Yk_DnbFaWh_Frm;
