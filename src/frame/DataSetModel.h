// Qt's model/view over a dataset: the grid model whose current row follows
// the dataset's (and moves it), grid columns as the screens define them,
// multi-selection as bookmarks, and field-bound edits through
// QDataWidgetMapper.
#pragma once

#include <QAbstractTableModel>
#include <QDataWidgetMapper>
#include <QList>
#include <QPointer>

#include "data/MidasQuery.h"

#include <QAbstractItemView>

class QTableView;

// A list grid as the screens have them: whole rows selected, nothing edited
// in place, under its component name.
QTableView* NewRowGrid(QWidget* parent, const char* name,
                       QAbstractItemView::SelectionMode mode = QAbstractItemView::SingleSelection);

// One grid column: a field of the dataset and its title caption.
struct TColumn {
    QString FieldName;
    QString Title;
    int Width = -1;  // pixels; -1 sizes to the title
};

class TDataSetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit TDataSetModel(TMidasQuery* dataSet, QObject* parent = nullptr);

    TMidasQuery* DataSet() const { return ds_; }

    // Without columns of its own the grid shows every field under its name.
    void SetColumns(const QList<TColumn>& columns);
    const QList<TColumn>& Columns() const { return columns_; }
    void AddColumn(const QString& field, const QString& title, int width = -1);
    void DeleteLastColumn();
    bool HasOwnColumns() const { return !columns_.isEmpty(); }
    // The column index showing the field, -1 when not shown.
    int ColumnOf(const QString& field) const;
    QString FieldAt(int column) const;

    void SetReadOnly(bool readOnly) { readOnly_ = readOnly; }
    bool ReadOnly() const { return readOnly_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation o, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Edits the dataset's row: Edit, the field's value, Post.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    // How a value shows in a grid or an edit: dates as yyyy-MM-dd, with the
    // time only when it is not midnight.
    static QString DisplayText(const QVariant& value);

private:
    int fieldIndex(int column) const;

    QPointer<TMidasQuery> ds_;
    QList<TColumn> columns_;
    bool readOnly_ = false;
};

// Binds a grid to a dataset: the model, columns sized, the current row
// kept in step both ways.
class TDBGridBinding : public QObject {
    Q_OBJECT
public:
    TDBGridBinding(QTableView* grid, TMidasQuery* dataSet, QObject* parent = nullptr);
    // A list as the screens show one: read-only, in these columns (none:
    // every field under its name), sized.
    static TDBGridBinding* ReadOnlyList(QTableView* grid, TMidasQuery* dataSet, const QList<TColumn>& columns,
                                        QObject* parent);
    TDataSetModel* Model() const { return model_; }
    QTableView* Grid() const { return grid_; }
    // Bookmarks of the selected rows (multi-selection), in row order.
    QList<TBookmark> SelectedBookmarks() const;
    void ApplyColumnWidths();

private:
    void followDataSet(int row);
    QTableView* grid_;
    TDataSetModel* model_;
    bool syncing_ = false;
};

// Field-bound edits, memos, date pickers on the dataset's current row.
class TDBFieldBinding : public QObject {
    Q_OBJECT
public:
    explicit TDBFieldBinding(TMidasQuery* dataSet, QObject* parent = nullptr);
    // Binds the widget's user property (text, date, ...) to the field; the
    // field is found whenever the dataset opens.
    void Bind(QWidget* widget, const QString& field);
    QDataWidgetMapper* Mapper() const { return mapper_; }
    TDataSetModel* Model() const { return model_; }

private:
    void remap();
    void follow();
    TDataSetModel* model_;
    QDataWidgetMapper* mapper_;
    QList<QPair<QPointer<QWidget>, QString>> bindings_;
};
