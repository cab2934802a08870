// Energy refund and supplement of a metering anomaly case: the billing
// staff work out, from the account's energy ledger (b_dltzxx) and the
// tariff of each month (b_djb), what the faulty metering under- or
// over-recorded over a period, see every month's figures with the formula
// before saving, and record the decision in b_tbjl with its details per
// month and billing point in b_tbdfxx. The anomaly screen hands in the
// case's document number and account before showing it modally.
#pragma once

#include <QPointer>
#include <QVector>

#include "data/MidasQuery.h"
#include "frame/Frm_Zt_Template.h"
#include "ui_Frm_jl_Tbdl.h"

class QTableView;
class TDBGridBinding;

class Tjl_Tbdl_Frm : public TZt_Template_Frm, public Ui::jl_Tbdl_Frm {
    Q_OBJECT
public:
    explicit Tjl_Tbdl_Frm(QWidget* parent = nullptr);

    // Set by the caller before the screen is shown.
    QString sCdbh;  // the anomaly case (b_tbjl.glcdbh)
    QString sHh;    // its account

    // 0 browse, 1 add.
    int iEditMode = 0;

    QTableView* Dbg_Tbjl;
    TMidasQuery* Mqry_Tbjl;    // the case's decisions
    TMidasQuery* Mqry_Select;  // ledger, tariffs, checks
    TMidasQuery* Mqry_Update;  // statements

    // The send's share: a case's unsent details wait under the case's own
    // number in b_tbdfxx.tbcdh (the column is required, and b_tbjl.tbcdh
    // stays empty until the send); the send moves them to the refund
    // document it draws, in its transaction, beside its update of b_tbjl.
    static void MoveDetailsToDocument(const QString& cdbh, const QString& tbcdh);

    // One month and billing point of a decision, energies in kWh and
    // charges in fen; recorded energies and the price are the inputs.
    struct TTbRow {
        QString Ny, Jfdbh, Djm;
        qint64 Dj4 = 0;                  // price, 1/10000 yuan per kWh
        double Jffdl = 0, Jfpdl = 0, Jfgdl = 0;  // recorded peak, flat, valley
        qint64 Fdl = 0, Pdl = 0, Gdl = 0;        // refunded (-) or supplemented (+)
        qint64 Fdf = 0, Pdf = 0, Gdf = 0;
        QString Formula;
        qint64 Dl() const { return Fdl + Pdl + Gdl; }
        qint64 Df() const { return Fdf + Pdf + Gdf; }
    };
    // The figures of the last calculation, as the preview shows them.
    const QVector<TTbRow>& Preview() const { return rows_; }

public slots:
    void FormShow() override;
    void Bbtn_XzClick();
    void Bbtn_ScClick();
    void Bbtn_JsClick();
    void Bbtn_BcClick();
    void Bbtn_QxClick();
    void Bbtn_TcClick();
    void Rb_YjClick();
    void Dbg_TbjlRowChange();

protected:
    void done(int result) override;

private:
    void SetEditMode(int mode);
    void OpenTbjl();
    void InvalidatePreview();
    // Checks the inputs and computes the figures; false (after a message
    // and with the focus on the offending control) when refused.
    bool Calculate();
    bool ReadMonth(QLineEdit* edit, const QString& what, QString& ny);
    bool ReadNumber(QLineEdit* edit, const QString& what, double& value);
    void ShowRows(const QVector<TTbRow>& rows, bool withInputs);
    QString Extent() const;

    TDBGridBinding* grid_;
    QVector<TTbRow> rows_;
    bool bPreview = false;
    QDateTime dSysDate;
    // Of the last calculation: the period, the billing points it covers,
    // the type and the basis as the reason states them.
    QString sQsny, sZzny, sTblx, sYj;
    QStringList slJfdbh;
};

extern QPointer<Tjl_Tbdl_Frm> jl_Tbdl_Frm;
