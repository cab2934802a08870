#include "Frm_Jc_CodeSelect.h"

#include "frame/DBControls.h"
#include "data/DataModules.h"
#include "frame/DataSetModel.h"
#include "common/Unt_Jc_Message.h"

#include "ui_Frm_Jc_CodeSelect.h"

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QTableView>

QPointer<TJc_CodeSelect_Frm> Jc_CodeSelect_Frm;

namespace {

constexpr int kFirstColumnWidth = 80;
constexpr int kColumnWidth = 210;

TMidasQuery* selectQuery() { return Jc_Main_Dm->Ds_Select->DataSet(); }

}  // namespace

TJc_CodeSelect_Frm::TJc_CodeSelect_Frm(QWidget* parent) : TZt_Template_Frm(parent) {
    setObjectName(QStringLiteral("Jc_CodeSelect_Frm"));
    // Keys typed into the search edit are the picker's own: no Enter-as-Tab
    // and no help keys.
    SetKeyPreview(false);
    setupUi(this);
    SetCancelButton(Bbtn_Quit);
    Edt_Value->installEventFilter(this);

    Dbg_List = NewRowGrid(this, "Dbg_List");
    Lay_List->addWidget(Dbg_List);
    setTabOrder(btn_Query, Dbg_List);
    // The stored columns; BuildColumns always replaces them.
    grid_ = TDBGridBinding::ReadOnlyList(Dbg_List, selectQuery(),
                                         {{QStringLiteral("BYQBH"), QStringLiteral("台区编号"), kFirstColumnWidth},
                                          {QStringLiteral("BYQMC"), QStringLiteral("台区名称"), kColumnWidth}},
                                         this);
    // The highlighted row is the current one, also after a search moved it.
    connect(Dbg_List->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid())
                    Dbg_List->selectionModel()->select(
                        current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
            });

    Handle(btn_Query, &QPushButton::clicked, &TJc_CodeSelect_Frm::btn_QueryClick);
    Handle(Bbtn_Qr, &QPushButton::clicked, &TJc_CodeSelect_Frm::Bbtn_QrClick);
    Handle(Dbg_List, &QTableView::doubleClicked, &TJc_CodeSelect_Frm::Bbtn_QrClick);
    Handle(Bbtn_Quit, &QPushButton::clicked, &QDialog::reject);
}

QString TJc_CodeSelect_Frm::FieldListFault() const {
    const qsizetype bar = FieldList.lastIndexOf(QLatin1Char('|'));
    return bar < 0 ? QString() : FieldList.mid(bar + 1);
}

bool TJc_CodeSelect_Frm::refuseFieldList() {
    const QString fault = FieldListFault();
    if (fault.isEmpty()) return false;
    // The list as the caller wrote it would never finish building: say
    // which entry is unterminated rather than hang the screen.
    refused_ = true;
    ShowErrorMsg(QStringLiteral("字段列表的最后一项“%1”缺少结尾的“|”，无法打开选择窗口。").arg(fault));
    return true;
}

int TJc_CodeSelect_Frm::exec() {
    if (refuseFieldList()) {
        setResult(Rejected);
        return Rejected;
    }
    return TZt_Template_Frm::exec();
}

void TJc_CodeSelect_Frm::setVisible(bool visible) {
    if (visible && !isVisible() && refuseFieldList()) {
        setResult(Rejected);
        return;
    }
    TZt_Template_Frm::setVisible(visible);
}

void TJc_CodeSelect_Frm::FormShow() {
    TZt_Template_Frm::FormShow();
    setWindowTitle(FormTitle);
    // A text that fails is shown, and the columns and the search are still
    // set up.
    try {
        OpenSql(selectQuery(), SelectSql);
    } catch (const std::exception& e) {
        ShowErrorMsg(QString::fromUtf8(e.what()));
    }
    BuildColumns();
    Cob_Field->setCurrentIndex(DefaultField);
    Edt_Value->setFocus();
}

void TJc_CodeSelect_Frm::BuildColumns() {
    QList<TColumn> columns;
    Cob_Field->ClearItems();
    if (FieldListFault().isEmpty() && FieldList.contains(QLatin1Char('|'))) {
        // Well formed: every entry, the last included, ends with "|".
        QString rest = FieldList;
        while (!rest.isEmpty()) {
            const qsizetype bar = rest.indexOf(QLatin1Char('|'));
            if (bar < 0) break;
            const QString entry = rest.left(bar);
            const qsizetype colon = entry.indexOf(QLatin1Char(':'));
            const QString field = colon < 0 ? QString() : entry.left(colon);
            const QString title = entry.mid(colon + 1);
            columns << TColumn{field, title, columns.isEmpty() ? kFirstColumnWidth : kColumnWidth};
            rest.remove(0, bar + 1);
        }
    }
    grid_->Model()->SetColumns(columns);
    for (const TColumn& c : columns) Cob_Field->AddItem(c.FieldName, c.Title);
}

void TJc_CodeSelect_Frm::btn_QueryClick() {
    if (Edt_Value->text().trimmed().isEmpty()) return;
    TMidasQuery* q = selectQuery();
    const QString field = Cob_Field->GetKeyValue();
    if (field.isEmpty() || !q->Active()) return;
    // Case-sensitive, from the start of the value, leading blanks kept.
    q->Locate(field, Edt_Value->text(), loPartialKey);
}

void TJc_CodeSelect_Frm::Bbtn_QrClick() {
    TMidasQuery* q = selectQuery();
    if (!q->Active() || q->Eof()) return;
    ResultCode = q->Fields(0).AsString();
    ResultName = q->Fields(1).AsString();
    q->Close();
    accept();
}

bool TJc_CodeSelect_Frm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Edt_Value && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        // Enter searches; it must not go on to press the default button.
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Guard([this] { btn_QueryClick(); });
            return true;
        }
    }
    return TZt_Template_Frm::eventFilter(watched, event);
}
