#include "DataSetModel.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTableView>

TDataSetModel::TDataSetModel(TMidasQuery* dataSet, QObject* parent)
    : QAbstractTableModel(parent), ds_(dataSet) {
    connect(ds_, &TMidasQuery::rowsReset, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(ds_, &TMidasQuery::stateChanged, this, [this] {
        // Closing empties the grid; opening brings the field list.
        if (!ds_->Active() || !HasOwnColumns()) {
            beginResetModel();
            endResetModel();
        }
    });
    connect(ds_, &TMidasQuery::rowChanged, this, [this](int row) {
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    });
    connect(ds_, &TMidasQuery::rowInserted, this, [this](int row) {
        beginInsertRows({}, row, row);
        endInsertRows();
    });
    connect(ds_, &TMidasQuery::rowRemoved, this, [this](int row) {
        beginRemoveRows({}, row, row);
        endRemoveRows();
    });
}

void TDataSetModel::SetColumns(const QList<TColumn>& columns) {
    beginResetModel();
    columns_ = columns;
    endResetModel();
}

void TDataSetModel::AddColumn(const QString& field, const QString& title, int width) {
    const int at = columnCount();
    if (!HasOwnColumns()) {
        SetColumns({TColumn{field, title, width}});
        return;
    }
    beginInsertColumns({}, at, at);
    columns_.append(TColumn{field, title, width});
    endInsertColumns();
}

void TDataSetModel::DeleteLastColumn() {
    if (columns_.isEmpty()) return;
    const int at = int(columns_.size()) - 1;
    beginRemoveColumns({}, at, at);
    columns_.removeLast();
    endRemoveColumns();
}

int TDataSetModel::ColumnOf(const QString& field) const {
    for (int c = 0; c < columnCount(); ++c)
        if (FieldAt(c).compare(field, Qt::CaseInsensitive) == 0) return c;
    return -1;
}

QString TDataSetModel::FieldAt(int column) const {
    if (HasOwnColumns()) return columns_.value(column).FieldName;
    return ds_ ? ds_->FieldNames().value(column) : QString();
}

int TDataSetModel::fieldIndex(int column) const {
    return ds_ ? ds_->FindFieldIndex(FieldAt(column)) : -1;
}

int TDataSetModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid() || !ds_ || !ds_->Active()) return 0;
    return ds_->RecordCount();
}

int TDataSetModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    if (HasOwnColumns()) return int(columns_.size());
    return ds_ && ds_->Active() ? ds_->FieldCount() : 0;
}

QString TDataSetModel::DisplayText(const QVariant& v) {
    if (v.isNull()) return {};
    if (v.typeId() == QMetaType::QDateTime) {
        const QDateTime t = v.toDateTime();
        return t.time() == QTime(0, 0) ? t.toString(QStringLiteral("yyyy-MM-dd"))
                                       : t.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    if (v.typeId() == QMetaType::QDate) return v.toDate().toString(QStringLiteral("yyyy-MM-dd"));
    if (v.typeId() == QMetaType::Double) return QString::number(v.toDouble(), 'g', 15);
    // SQLite hands date-times over as their text: a day without a time of
    // day shows as the day, as PostgreSQL's date-times do.
    const QString text = v.toString();
    static const QRegularExpression midnight(QStringLiteral("^\\d{4}-\\d{2}-\\d{2} 00:00:00$"));
    if (text.size() == 19 && midnight.match(text).hasMatch()) return text.left(10);
    return text;
}

QVariant TDataSetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !ds_) return {};
    const int f = fieldIndex(index.column());
    if (f < 0) return {};
    const QVariant v = ds_->valueAt(index.row(), f);
    switch (role) {
    case Qt::DisplayRole:
        return DisplayText(v);
    case Qt::EditRole:
        if (v.typeId() == QMetaType::QDateTime || v.typeId() == QMetaType::QDate) return v;
        return DisplayText(v);
    case Qt::TextAlignmentRole:
        if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::LongLong ||
            v.typeId() == QMetaType::Int)
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    default:
        return {};
    }
}

QVariant TDataSetModel::headerData(int section, Qt::Orientation o, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (o == Qt::Vertical) return {};
    if (HasOwnColumns()) return columns_.value(section).Title;
    return FieldAt(section);
}

Qt::ItemFlags TDataSetModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (!readOnly_ && index.isValid() && fieldIndex(index.column()) >= 0) f |= Qt::ItemIsEditable;
    return f;
}

bool TDataSetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || readOnly_ || !ds_) return false;
    const int f = fieldIndex(index.column());
    if (f < 0) return false;
    if (ds_->State() == dsBrowse) ds_->SetRecNo(index.row() + 1);
    const bool wasEditing = ds_->State() == dsEdit || ds_->State() == dsInsert;
    ds_->Edit();
    ds_->Fields(f).SetValue(value);
    if (!wasEditing) ds_->Post();
    return true;
}

TDBGridBinding::TDBGridBinding(QTableView* grid, TMidasQuery* dataSet, QObject* parent)
    : QObject(parent), grid_(grid), model_(new TDataSetModel(dataSet, this)) {
    grid_->setModel(model_);
    grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 6);
    connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                TMidasQuery* ds = model_->DataSet();
                if (syncing_ || !current.isValid() || !ds || ds->State() != dsBrowse) return;
                syncing_ = true;
                ds->SetRecNo(current.row() + 1);
                syncing_ = false;
            });
    connect(dataSet, &TMidasQuery::currentChanged, this, &TDBGridBinding::followDataSet);
    connect(model_, &QAbstractItemModel::modelReset, this, [this] {
        ApplyColumnWidths();
        if (TMidasQuery* ds = model_->DataSet(); ds && ds->Active()) followDataSet(ds->RecNo() - 1);
    });
    connect(model_, &QAbstractItemModel::columnsInserted, this, &TDBGridBinding::ApplyColumnWidths);
}

TDBGridBinding* TDBGridBinding::ReadOnlyList(QTableView* grid, TMidasQuery* dataSet, const QList<TColumn>& columns,
                                             QObject* parent) {
    auto* binding = new TDBGridBinding(grid, dataSet, parent);
    binding->model_->SetReadOnly(true);
    if (!columns.isEmpty()) {
        binding->model_->SetColumns(columns);
        binding->ApplyColumnWidths();
    }
    return binding;
}

void TDBGridBinding::followDataSet(int row) {
    if (syncing_) return;
    syncing_ = true;
    const QModelIndex cur = grid_->currentIndex();
    const int column = cur.isValid() ? cur.column() : 0;
    if (row >= 0 && row < model_->rowCount())
        grid_->selectionModel()->setCurrentIndex(model_->index(row, column),
                                                 QItemSelectionModel::NoUpdate);
    syncing_ = false;
}

void TDBGridBinding::ApplyColumnWidths() {
    for (int c = 0; c < model_->Columns().size(); ++c)
        if (model_->Columns()[c].Width > 0) grid_->setColumnWidth(c, model_->Columns()[c].Width);
}

QList<TBookmark> TDBGridBinding::SelectedBookmarks() const {
    QList<TBookmark> out;
    TMidasQuery* ds = model_->DataSet();
    if (!ds || !ds->Active() || ds->State() != dsBrowse) return out;
    QList<int> rows;
    for (const QModelIndex& i : grid_->selectionModel()->selectedRows()) rows << i.row();
    std::sort(rows.begin(), rows.end());
    const int keep = ds->RecNo();
    for (int r : rows) {
        ds->SetRecNo(r + 1);
        out << ds->GetBookmark();
    }
    if (keep > 0) ds->SetRecNo(keep);
    return out;
}

TDBFieldBinding::TDBFieldBinding(TMidasQuery* dataSet, QObject* parent)
    : QObject(parent), model_(new TDataSetModel(dataSet, this)), mapper_(new QDataWidgetMapper(this)) {
    mapper_->setModel(model_);
    mapper_->setSubmitPolicy(QDataWidgetMapper::AutoSubmit);
    connect(dataSet, &TMidasQuery::currentChanged, this, &TDBFieldBinding::follow);
    connect(model_, &QAbstractItemModel::modelReset, this, &TDBFieldBinding::remap);
}

void TDBFieldBinding::Bind(QWidget* widget, const QString& field) {
    bindings_.append({widget, field});
    remap();
}

void TDBFieldBinding::remap() {
    mapper_->clearMapping();
    TMidasQuery* ds = model_->DataSet();
    for (const auto& [widget, field] : bindings_) {
        const int column = ds ? ds->FindFieldIndex(field) : -1;
        if (widget && column >= 0)
            mapper_->addMapping(widget, column);
        else if (widget)  // a closed dataset shows nothing, as data-aware edits do
            widget->metaObject()->userProperty().write(widget, QVariant());
    }
    follow();
}

void TDBFieldBinding::follow() {
    TMidasQuery* ds = model_->DataSet();
    const int row = ds && ds->Active() ? ds->RecNo() - 1 : -1;
    if (row >= 0) mapper_->setCurrentIndex(row);
}

QTableView* NewRowGrid(QWidget* parent, const char* name, QAbstractItemView::SelectionMode mode) {
    auto* grid = new QTableView(parent);
    grid->setObjectName(QLatin1String(name));
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(mode);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->horizontalHeader()->setHighlightSections(false);
    grid->verticalHeader()->setDefaultSectionSize(20);
    grid->verticalHeader()->setFixedWidth(12);
    return grid;
}
