#include "Frm_Jc_Jcryxs.h"

#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"

#include "ui_Frm_Jc_Jcryxs.h"

#include <QTableView>

QPointer<TJc_Jcryxs_Frm> Jc_Jcryxs_Frm;

namespace {

const QString kSeparator = QStringLiteral("、");

QList<TColumn> gridColumns(const QString& nameField) {
    // The first column names CYZDM, which the query does not have (its
    // column is CZYDM): it stays empty, as it always has.
    return {{QStringLiteral("CYZDM"), QStringLiteral("操作员代码"), 80},
            {nameField, QStringLiteral("姓名"), 80},
            {QStringLiteral("XB"), QStringLiteral("性别"), 40},
            {QStringLiteral("JCZH"), QStringLiteral("检查证号"), 110},
            {QStringLiteral("JCZJB"), QStringLiteral("检查证级别"), 80}};
}

}  // namespace

TJc_Jcryxs_Frm::TJc_Jcryxs_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(QStringLiteral("Jc_Jcryxs_Frm"));

    MQry_Jcry = new TMidasQuery(this, QStringLiteral("MQry_Jcry"));
    MQry_Jcry->SQL().Add(QStringLiteral("select A.*,B.XINGMING XM"));
    MQry_Jcry->SQL().Add(QStringLiteral(" from  E_JCRYXX A,Z_XTCZY B"));
    MQry_Jcry->SQL().Add(QStringLiteral("WHERE A.CZYDM=B.DM(+)"));
    MQry_Jcry->SQL().Add(QStringLiteral("and a.dw = :dw"));
    Ds_jcry = new TDataSource(this, QStringLiteral("Ds_jcry"), MQry_Jcry);

    // Made before the form's widgets, so the list leads the tab order.
    Dbg_Jcryxs = NewRowGrid(this, "Dbg_Jcryxs", QAbstractItemView::ExtendedSelection);
    grid_ = TDBGridBinding::ReadOnlyList(Dbg_Jcryxs, Ds_jcry->DataSet(), gridColumns(QStringLiteral("XM")), this);

    setupUi(this);
    Lay_Jcryxs->addWidget(Dbg_Jcryxs);

    // The confirm button computes the fields, then closes with OK.
    Handle(Bbtn_Qr, &QPushButton::clicked, [this] {
        Bbtn_QrClick();
        accept();
    });
    Handle(Dbg_Jcryxs, &QTableView::doubleClicked, &TJc_Jcryxs_Frm::Bbtn_QrClick);
    Handle(Bbtn_Quit, &QPushButton::clicked, &TJc_Jcryxs_Frm::Bbtn_QuitClick);
}

QString TJc_Jcryxs_Frm::NameField() const {
    // E_JCRYXX has an XM column of its own, which A.* brings first; the
    // operator's name, aliased XM after it, is then the text's last column
    // (renamed with a suffix, as repeated names are).
    if (!MQry_Jcry->Active() || MQry_Jcry->FieldCount() == 0) return QStringLiteral("XM");
    return MQry_Jcry->FieldNames().last();
}

void TJc_Jcryxs_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    MQry_Jcry->Close();
    MQry_Jcry->ParamByName(QStringLiteral("dw")).SetAsString(Gdw);
    MQry_Jcry->Open();
    grid_->Model()->SetColumns(gridColumns(NameField()));
}

void TJc_Jcryxs_Frm::FormClose() { MQry_Jcry->Close(); }

void TJc_Jcryxs_Frm::Bbtn_QrClick() {
    if (MQry_Jcry->IsEmpty()) return;
    const QString xm = NameField();
    const QString jczh = QStringLiteral("JCZH");
    const QList<TBookmark> marks = grid_->SelectedBookmarks();
    if (marks.isEmpty()) {
        SelXm = MQry_Jcry->FieldByName(xm).AsString();
        SelJczh = MQry_Jcry->FieldByName(jczh).AsString();
        return;
    }
    // Not cleared first: confirming again while the screen stays open
    // appends the marked rows once more.
    for (TBookmark mark : marks) {
        MQry_Jcry->GotoBookmark(mark);
        if (!SelXm.isEmpty()) {
            SelXm += kSeparator + MQry_Jcry->FieldByName(xm).AsString();
            SelJczh += kSeparator + MQry_Jcry->FieldByName(jczh).AsString();
        } else {
            SelXm = MQry_Jcry->FieldByName(xm).AsString();
            SelJczh = MQry_Jcry->FieldByName(jczh).AsString();
        }
    }
}

void TJc_Jcryxs_Frm::Bbtn_QuitClick() { reject(); }

void TJc_Jcryxs_Frm::done(int result) {
    FormClose();
    TZt_Template_Frm::done(result);
}
