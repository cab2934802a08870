#include "Frm_Jc_SelectXl.h"

#include "data/DataModules.h"
#include "frame/Frm_Zt_Template.h"
#include "frame/Unit_zt_gobal.h"
#include "common/Unt_Jc_Message.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QTreeWidget>
#include <QVBoxLayout>

QPointer<TJc_SelectXl_Frm> Jc_SelectXl_Frm;

namespace {

constexpr int kXlbhRole = Qt::UserRole;
constexpr int kNodeXlbhLength = 7;
const QString kTopParent = QStringLiteral("00001");

QLineEdit* shownEdit(QWidget* parent, const char* name) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(QLatin1String(name));
    e->setReadOnly(true);
    e->setFocusPolicy(Qt::NoFocus);  // not a tab stop
    return e;
}

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
    setObjectName(QStringLiteral("Jc_SelectXl_Frm"));
    setWindowTitle(QStringLiteral("选择线路"));
    TZt_Template_Frm::ApplyScreenLook(this);

    TvLst_HyLb = new QTreeWidget(this);
    TvLst_HyLb->setObjectName(QStringLiteral("TvLst_HyLb"));
    TvLst_HyLb->setHeaderHidden(true);
    TvLst_HyLb->setColumnCount(1);
    TvLst_HyLb->setEditTriggers(QAbstractItemView::NoEditTriggers);
    TvLst_HyLb->setSelectionMode(QAbstractItemView::SingleSelection);

    Label1 = new QLabel(QStringLiteral("线路编号："), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Edt_HyDm = shownEdit(this, "Edt_HyDm");
    Edt_HyDm->setFixedWidth(80);
    Edt_HyLb = shownEdit(this, "Edt_HyLb");

    Bbtn_Qr = NewControl<QPushButton>(this, "Bbtn_Qr", QStringLiteral("确认(&O)"));
    Bbtn_Qr->setDefault(true);
    Bbtn_Quit = NewControl<QPushButton>(this, "Bbtn_Quit", QStringLiteral("取消(&Q)"));
    Bbtn_Quit->setAutoDefault(false);

    auto* edits = new QHBoxLayout;
    edits->addWidget(Label1);
    edits->addWidget(Edt_HyDm);
    edits->addWidget(Edt_HyLb, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Bbtn_Qr);
    buttons->addWidget(Bbtn_Quit);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(TvLst_HyLb, 1);
    layout->addLayout(edits);
    layout->addLayout(buttons);
    setFixedSize(360, 440);  // a fixed dialogue border

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
        q->Close();
        q->SQL().Clear();
        q->SQL().Add(QStringLiteral("Select * from Y_XL Where SJXLBH = '00001' and DW=:dw order by xlmc"));
        q->ParamByName(QStringLiteral("dw")).SetAsString(Gdw);
        q->Open();
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
        q->Close();
        q->SQL().Clear();
        q->SQL().Add(QStringLiteral("Select * from y_XL where xlbh = :xlbh"));
        q->ParamByName(QStringLiteral("xlbh")).SetAsString(xlbh);
        q->Open();
        const QString sjxlbh = q->FieldByName(QStringLiteral("SJXLBH")).AsString();

        q->Close();
        q->SQL().Clear();
        q->SQL().Add(QStringLiteral("Select * from y_XL where xlbh=:xlbh"));
        q->ParamByName(QStringLiteral("xlbh")).SetAsString(sjxlbh);
        q->Open();
        const bool underMissingLine = q->IsEmpty() && sjxlbh != kTopParent;

        q->Close();
        q->SQL().Clear();
        q->SQL().Add(QStringLiteral("Select * from Y_XL Where SJXLBH = :SJXLBH order by xlmc"));
        q->ParamByName(QStringLiteral("SJXLBH")).SetAsString(xlbh);
        q->Open();
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
        q->Close();
        q->SQL().Clear();
        q->SQL().Add(QStringLiteral(
            "Select A.*,B.BDZMC from Y_XL A,Y_BDZ B where A.BDZBH = B.BDZBH(+) AND A.XLBH = :XLBH"));
        q->ParamByName(QStringLiteral("XLBH")).SetAsString(Edt_HyDm->text());
        q->Open();
        SelXlbh = q->FieldByName(QStringLiteral("XLBH")).AsString();
        SelXlmc = q->FieldByName(QStringLiteral("XLMC")).AsString();
        q->Close();
    } catch (const std::exception& e) {
        ShowErrorMsg(QString::fromUtf8(e.what()));
        return;
    }
    accept();
}
