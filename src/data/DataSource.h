// A named link between a dataset and the controls that show it. Grids and
// look-up boxes are bound to a data source, not to the query itself, so a
// screen can point one source at another dataset without rebinding them.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include "MidasQuery.h"

class TDataSource : public QObject {
    Q_OBJECT
public:
    explicit TDataSource(QObject* owner = nullptr, const QString& name = QString(),
                         TMidasQuery* dataSet = nullptr)
        : QObject(owner), dataSet_(dataSet) {
        if (!name.isEmpty()) setObjectName(name);
    }

    // nullptr when none is set or the dataset was destroyed.
    TMidasQuery* DataSet() const { return dataSet_.data(); }
    void SetDataSet(TMidasQuery* dataSet) {
        if (dataSet_.data() == dataSet) return;
        dataSet_ = dataSet;
        emit dataSetChanged();
    }

    // A disabled source shows no rows in its controls (the dataset stays as
    // it is); used while a screen walks a dataset that a grid displays.
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool on) {
        if (enabled_ == on) return;
        enabled_ = on;
        emit enabledChanged(on);
    }

signals:
    void dataSetChanged();
    void enabledChanged(bool on);

private:
    QPointer<TMidasQuery> dataSet_;
    bool enabled_ = true;
};
