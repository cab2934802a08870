// Inspector selection: the inspectors of the current unit; the marked ones
// (or the current one) are handed back as names and certificate numbers,
// each joined by "、".
#pragma once

#include <QPointer>

#include "data/DataSource.h"
#include "frame/Frm_Zt_Template.h"
#include "data/MidasQuery.h"
#include "ui_Frm_Jc_Jcryxs.h"

class QLabel;
class QPushButton;
class QTableView;
class TDBGridBinding;

class TJc_Jcryxs_Frm : public TZt_Template_Frm, public Ui::Jc_Jcryxs_Frm {
    Q_OBJECT
public:
    explicit TJc_Jcryxs_Frm(QWidget* parent = nullptr);

    QTableView* Dbg_Jcryxs;

    TMidasQuery* MQry_Jcry;
    TDataSource* Ds_jcry;

    // Read by the caller after the screen closes (some callers whatever
    // the result).
    QString SelXm;
    QString SelJczh;

    TDBGridBinding* Grid() const { return grid_; }
    // The field holding the operator's name (the text's XM).
    QString NameField() const;

public slots:
    void FormShow() override;
    void FormClose();
    // Also a double click on the grid, which leaves the screen open.
    void Bbtn_QrClick();
    void Bbtn_QuitClick();

protected:
    void done(int result) override;

private:
    TDBGridBinding* grid_;
};

extern QPointer<TJc_Jcryxs_Frm> Jc_Jcryxs_Frm;
