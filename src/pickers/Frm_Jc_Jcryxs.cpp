#include "Frm_Jc_Jcryxs.h"

#include "frame/DataSetModel.h"
#include "frame/Unit_zt_gobal.h"
#include "common/Unt_Jc_Message.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

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
    setWindowTitle(QStringLiteral("检查人员显示"));

    MQry_Jcry = new TMidasQuery(this, QStringLiteral("MQry_Jcry"));
    MQry_Jcry->SQL().Add(QStringLiteral("select A.*,B.XINGMING XM"));
    MQry_Jcry->SQL().Add(QStringLiteral(" from  E_JCRYXX A,Z_XTCZY B"));
    MQry_Jcry->SQL().Add(QStringLiteral("WHERE A.CZYDM=B.DM(+)"));
    MQry_Jcry->SQL().Add(QStringLiteral("and a.dw = :dw"));
    Ds_jcry = new TDataSource(this, QStringLiteral("Ds_jcry"), MQry_Jcry);

    Label1 = new QLabel(QStringLiteral("按住Ctrl键+鼠标左键多选"), this);
    Label1->setObjectName(QStringLiteral("Label1"));

    Dbg_Jcryxs = NewRowGrid(this, "Dbg_Jcryxs", QAbstractItemView::ExtendedSelection);
    grid_ = new TDBGridBinding(Dbg_Jcryxs, Ds_jcry->DataSet(), this);
    grid_->Model()->SetReadOnly(true);
    grid_->Model()->SetColumns(gridColumns(QStringLiteral("XM")));

    Bbtn_Qr = NewControl<QPushButton>(this, "Bbtn_Qr", QStringLiteral("确认(&O)"));
    Bbtn_Quit = NewControl<QPushButton>(this, "Bbtn_Quit", QStringLiteral("退出(&X)"));

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Bbtn_Qr);
    buttons->addWidget(Bbtn_Quit);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(Label1);
    layout->addWidget(Dbg_Jcryxs, 1);
    layout->addLayout(buttons);
    resize(440, 320);

    // The confirm button computes the fields, then closes with OK.
    connect(Bbtn_Qr, &QPushButton::clicked, this, [this] {
        Bbtn_QrClick();
        accept();
    });
    connect(Dbg_Jcryxs, &QTableView::doubleClicked, this, &TJc_Jcryxs_Frm::Bbtn_QrClick);
    connect(Bbtn_Quit, &QPushButton::clicked, this, &TJc_Jcryxs_Frm::Bbtn_QuitClick);
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
    try {
        MQry_Jcry->Close();
        MQry_Jcry->ParamByName(QStringLiteral("dw")).SetAsString(Gdw);
        MQry_Jcry->Open();
    } catch (const std::exception& e) {
        ShowErrorMsg(QString::fromUtf8(e.what()));
    }
    grid_->Model()->SetColumns(gridColumns(NameField()));
}

void TJc_Jcryxs_Frm::FormClose() { MQry_Jcry->Close(); }

void TJc_Jcryxs_Frm::Bbtn_QrClick() {
    if (MQry_Jcry->IsEmpty()) return;
    try {
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
    } catch (const std::exception& e) {
        ShowErrorMsg(QString::fromUtf8(e.what()));
    }
}

void TJc_Jcryxs_Frm::Bbtn_QuitClick() { reject(); }

void TJc_Jcryxs_Frm::done(int result) {
    FormClose();
    TZt_Template_Frm::done(result);
}
