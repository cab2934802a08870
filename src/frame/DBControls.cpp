#include "DBControls.h"

TDBLookupComboBox::TDBLookupComboBox(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (loading_) return;
        wanted_ = i >= 0 ? keys_.value(i) : QVariant();
        emit keyValueChanged(wanted_);
    });
}

void TDBLookupComboBox::SetListSource(TMidasQuery* dataSet, const QString& keyField,
                                      const QString& listField) {
    if (ds_) disconnect(ds_, nullptr, this, nullptr);
    ds_ = dataSet;
    keyField_ = keyField;
    listField_ = listField;
    if (ds_) {
        connect(ds_, &TMidasQuery::rowsReset, this, &TDBLookupComboBox::reload);
        connect(ds_, &TMidasQuery::stateChanged, this, [this] {
            if (ds_ && !ds_->Active()) reload();
        });
    }
    reload();
}

void TDBLookupComboBox::reload() {
    loading_ = true;
    clear();
    keys_.clear();
    if (ds_ && ds_->Active()) {
        const int k = ds_->FindFieldIndex(keyField_);
        const int l = ds_->FindFieldIndex(listField_);
        for (int r = 0; r < ds_->RecordCount(); ++r) {
            keys_ << (k >= 0 ? ds_->valueAt(r, k) : QVariant());
            addItem(l >= 0 ? ds_->valueAt(r, l).toString() : QString());
        }
    }
    setCurrentIndex(-1);
    loading_ = false;
    SetKeyValue(wanted_);
}

QVariant TDBLookupComboBox::KeyValue() const {
    const int i = currentIndex();
    return i >= 0 ? keys_.value(i) : QVariant();
}

void TDBLookupComboBox::SetKeyValue(const QVariant& key) {
    wanted_ = key;
    int found = -1;
    if (!key.isNull() && key.isValid())
        for (int i = 0; i < keys_.size(); ++i)
            if (keys_[i].toString() == key.toString()) {
                found = i;
                break;
            }
    const bool was = loading_;
    loading_ = true;
    setCurrentIndex(found);
    loading_ = was;
}

TKeyComboBox::TKeyComboBox(QWidget* parent) : QComboBox(parent) {}

void TKeyComboBox::AddItem(const QString& key, const QString& text) { addItem(text, key); }

void TKeyComboBox::ClearItems() { clear(); }

QString TKeyComboBox::GetKeyValue() const {
    return currentIndex() >= 0 ? currentData().toString() : QString();
}

void TKeyComboBox::SetKeyValue(const QString& key) { setCurrentIndex(findData(key)); }

QStringList TKeyComboBox::GetItems() const {
    QStringList out;
    for (int i = 0; i < count(); ++i) out << itemData(i).toString() + QLatin1Char('=') + itemText(i);
    return out;
}

QStringList TKeyComboBox::Keys() const {
    QStringList out;
    for (int i = 0; i < count(); ++i) out << itemData(i).toString();
    return out;
}
