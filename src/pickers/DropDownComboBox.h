// A combo that tells its screen just before the list drops down, so the
// list can be read from the database the first time it is needed.
#pragma once

#include <QComboBox>

class TDropDownComboBox : public QComboBox {
    Q_OBJECT
public:
    using QComboBox::QComboBox;
    void showPopup() override {
        emit dropDown();
        QComboBox::showPopup();
    }

signals:
    void dropDown();
};
