// The look-up combo (a key field and a list field from a dataset) and the
// key combo (a key carried per item), as the screens use them.
#pragma once

#include <QComboBox>
#include <QPointer>
#include <QVariant>

#include "data/MidasQuery.h"

class TDataSetModel;

class TDBLookupComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit TDBLookupComboBox(QWidget* parent = nullptr);

    // Items come from the dataset's rows: KeyField is the value, ListField
    // the text shown. They follow the dataset when it is reopened.
    void SetListSource(TMidasQuery* dataSet, const QString& keyField, const QString& listField);
    TMidasQuery* ListSource() const { return ds_; }
    QString KeyField() const { return keyField_; }
    QString ListField() const { return listField_; }

    // The key of the chosen item; a null value when nothing is chosen.
    QVariant KeyValue() const;
    // Chooses the item with this key (compared as text); a null or unknown
    // key leaves nothing chosen.
    void SetKeyValue(const QVariant& key);
    QString Text() const { return currentIndex() >= 0 ? currentText() : QString(); }

signals:
    void keyValueChanged(const QVariant& key);

private:
    void reload();
    QPointer<TMidasQuery> ds_;
    QString keyField_;
    QString listField_;
    QVariant wanted_;
    QList<QVariant> keys_;
    bool loading_ = false;
};

class TKeyComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit TKeyComboBox(QWidget* parent = nullptr);
    void AddItem(const QString& key, const QString& text);
    void ClearItems();
    // The key of the chosen item, "" when none is chosen.
    QString GetKeyValue() const;
    void SetKeyValue(const QString& key);
    // Every item as "key=text", in order.
    QStringList GetItems() const;
    QStringList Keys() const;
};
