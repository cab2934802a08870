// Sign-in of an operator of Z_XTCZY for a supply unit, with a pass phrase.
#pragma once

#include <QDialog>
#include <QSqlDatabase>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tarvin::host {

struct Operator {
    QString czydm, xingming, bm, bmmc, dw, dwmc, dwdm;
};

class SignInDialog : public QDialog {
    Q_OBJECT
public:
    explicit SignInDialog(QSqlDatabase db, QWidget* parent = nullptr);
    const Operator& signedIn() const { return operator_; }

    QComboBox* Cob_Dw;
    QLineEdit* Edt_Czydm;
    QLineEdit* Edt_Kl;
    QLabel* Lbl_Message;
    QPushButton* Bbtn_Qr;
    QPushButton* Bbtn_Tc;

private slots:
    void Bbtn_QrClick();

private:
    QSqlDatabase db_;
    Operator operator_;
};

}  // namespace tarvin::host
