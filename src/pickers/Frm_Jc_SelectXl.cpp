#include "Frm_Jc_SelectXl.h"

#include "data/DataModules.h"
#include "frame/Frm_Zt_Template.h"
#include "frame/Unit_zt_gobal.h"
#include "common/Unt_Jc_Message.h"

#include "ui_Frm_Jc_SelectXl.h"

#include <QShowEvent>

QPointer<TJc_SelectXl_Frm> Jc_SelectXl_Frm;

namespace {

constexpr int kXlbhRole = Qt::UserRole;
constexpr int kNodeXlbhLength = 7;
const QString kTopParent = QStringLiteral("00001");

// A node for the current row of the query: the line's name, its number cut
// to what the node holds.
QTreeWidgetItem* lineNode(TMidasQuery* q) {
    auto* node = new QTreeWidgetItem;
    node->setText(0, q->FieldByName(QStringLiteral("XLMC")).AsString());
    node->setData(0, kXlbhRole, q->FieldByName(QStringLiteral("XLBH")).AsString().left(kNodeXlbhLength));
    return node;
}

}  // namespace

TJc_SelectXl_Frm::TJc_SelectXl_Frm(QWidget* parent) : QDialog(parent) {
    TZt_Template_Frm::ApplyScreenLook(this);
    setupUi(this);

    // Not a base screen, so no net under the handlers: each catches its
    // own errors.
    connect(TvLst_HyLb, &QTreeWidget::itemExpanded, this, &TJc_SelectXl_Frm::TvLst_HyLbExpanding);
    connect(TvLst_HyLb, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* current) { currentNodeChanged(current); });
    connect(Bbtn_Qr, &QPushButton::clicked, this, &TJc_SelectXl_Frm::Bbtn_QrClick);
    connect(Bbtn_Quit, &QPushButton::clicked, this, &QDialog::reject);
}

QString TJc_SelectXl_Frm::NodeXlbh(const QTreeWidgetItem* node) {
    return node ? node->data(0, kXlbhRole).toString() : QString();
}

void TJc_SelectXl_Frm::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) FormShow();
}

void TJc_SelectXl_Frm::FormShow() {
    loading_ = true;
    TvLst_HyLb->clear();
    try {
        TMidasQuery* q = Jc_Main_Dm->Mqry_Select;
        OpenSql(q, QStringLiteral("Select * from Y_XL Where SJXLBH = '00001' and DW=:dw order by xlmc"), {{"dw", Gdw}});
        for (q->First(); !q->Eof(); q->Next()) {
            QTreeWidgetItem* node = lineNode(q);
            node->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
            TvLst_HyLb->addTopLevelItem(node);
        }
    } catch (const std::exception& e) {
        ShowErrorMsg(QString::fromUtf8(e.what()));
    }
    loading_ = false;
}

void TJc_SelectXl_Frm::TvLst_HyLbExpanding(QTreeWidgetItem* node) {
    if (!node || loading_) return;
    loading_ = true;
    currentMoved_ = false;
    const QString xlbh = NodeXlbh(node);
    qDeleteAll(node->takeChildren());
    try {
        TMidasQuery* q = Jc_Main_Dm->Mqry_Select;
        OpenSql(q, QStringLiteral("Select * from y_XL where xlbh = :xlbh"), {{"xlbh", xlbh}});
        const QString sjxlbh = q->FieldByName(QStringLiteral("SJXLBH")).AsString();

        OpenSql(q, QStringLiteral("Select * from y_XL where xlbh=:xlbh"), {{"xlbh", sjxlbh}});
        const bool underMissingLine = q->IsEmpty() && sjxlbh != kTopParent;

        OpenSql(q, QStringLiteral("Select * from Y_XL Where SJXLBH = :SJXLBH order by xlmc"), {{"SJXLBH", xlbh}});
        for (q->First(); !q->Eof(); q->Next()) {
            QTreeWidgetItem* child = lineNode(q);
            // Either way a child shows no expand button until selecting it
            // has loaded children of its own.
            if (underMissingLine)
                child->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
            node->addChild(child);
        }
    } catch (const std::exception& e) {
        ShowErrorMsg(QString::fromUtf8(e.what()));
    }
    // Loaded now: the button shows only where there are children.
    node->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
    loading_ = false;
    // The reload took the current node away: the edits follow the node the
    // tree moved to.
    if (currentMoved_) TvLst_HyLbChange(TvLst_HyLb->currentItem());
}

void TJc_SelectXl_Frm::TvLst_HyLbChanging(QTreeWidgetItem* node) { TvLst_HyLbExpanding(node); }

void TJc_SelectXl_Frm::TvLst_HyLbChange(QTreeWidgetItem* node) {
    Edt_HyDm->setText(NodeXlbh(node));
    Edt_HyLb->setText(node ? node->text(0) : QString());
}

void TJc_SelectXl_Frm::currentNodeChanged(QTreeWidgetItem* node) {
    if (loading_) {
        currentMoved_ = true;
        return;
    }
    if (!node) return;
    TvLst_HyLbChanging(node);
    TvLst_HyLbChange(node);
}

void TJc_SelectXl_Frm::Bbtn_QrClick() {
    if (Edt_HyDm->text().isEmpty()) return;
    try {
        TMidasQuery* q = Jc_Main_Dm->Mqry_Select;
        OpenSql(q,
                QStringLiteral("Select A.*,B.BDZMC from Y_XL A,Y_BDZ B where A.BDZBH = B.BDZBH(+) AND A.XLBH = :XLBH"),
                {{"XLBH", Edt_HyDm->text()}});
        SelXlbh = q->FieldByName(QStringLiteral("XLBH")).AsString();
        SelXlmc = q->FieldByName(QStringLiteral("XLMC")).AsString();
        q->Close();
    } catch (const std::exception& e) {
        ShowErrorMsg(QString::fromUtf8(e.what()));
        return;
    }
    accept();
}
