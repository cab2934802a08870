#include "SignInDialog.h"

#include "HostAuth.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QVBoxLayout>

namespace tarvin::host {

SignInDialog::SignInDialog(QSqlDatabase db, QWidget* parent) : QDialog(parent), db_(std::move(db)) {
    setObjectName(QStringLiteral("SignIn_Frm"));
    setWindowTitle(QStringLiteral("用电检查 - 登录"));
    Cob_Dw = new QComboBox(this);
    Cob_Dw->setObjectName(QStringLiteral("Cob_Dw"));
    Edt_Czydm = new QLineEdit(this);
    Edt_Czydm->setObjectName(QStringLiteral("Edt_Czydm"));
    Edt_Czydm->setMaxLength(20);
    Edt_Kl = new QLineEdit(this);
    Edt_Kl->setObjectName(QStringLiteral("Edt_Kl"));
    Edt_Kl->setEchoMode(QLineEdit::Password);
    Lbl_Message = new QLabel(this);
    Lbl_Message->setObjectName(QStringLiteral("Lbl_Message"));
    Lbl_Message->setStyleSheet(QStringLiteral("color: #b00020"));
    Lbl_Message->setWordWrap(true);
    Bbtn_Qr = new QPushButton(QStringLiteral("登录(&O)"), this);
    Bbtn_Qr->setObjectName(QStringLiteral("Bbtn_Qr"));
    Bbtn_Qr->setDefault(true);
    Bbtn_Tc = new QPushButton(QStringLiteral("退出(&X)"), this);
    Bbtn_Tc->setObjectName(QStringLiteral("Bbtn_Tc"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("单  位"), Cob_Dw);
    form->addRow(QStringLiteral("操作员"), Edt_Czydm);
    form->addRow(QStringLiteral("密  码"), Edt_Kl);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Bbtn_Qr);
    buttons->addWidget(Bbtn_Tc);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(Lbl_Message);
    layout->addLayout(buttons);
    resize(340, 180);

    QSqlQuery q(db_);
    q.exec(QStringLiteral("SELECT dm, mc FROM z_dwbm WHERE COALESCE(sfyx, 1) = 1 ORDER BY dm"));
    while (q.next()) Cob_Dw->addItem(q.value(0).toString() + QStringLiteral("  ") + q.value(1).toString(), q.value(0));
    // The first unit below the top one is where operators usually work.
    if (Cob_Dw->count() > 1) Cob_Dw->setCurrentIndex(1);

    connect(Bbtn_Qr, &QPushButton::clicked, this, &SignInDialog::Bbtn_QrClick);
    connect(Bbtn_Tc, &QPushButton::clicked, this, &QDialog::reject);
}

void SignInDialog::Bbtn_QrClick() {
    const QString czydm = Edt_Czydm->text().trimmed();
    const QString dw = Cob_Dw->currentData().toString();
    if (czydm.isEmpty()) {
        Lbl_Message->setText(QStringLiteral("请输入操作员代码。"));
        Edt_Czydm->setFocus();
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    bool ok = false;
    try {
        HostAuth auth(db_);
        auth.ensureTable();
        ok = auth.verify(czydm, dw, Edt_Kl->text());
    } catch (const std::exception& e) {
        QApplication::restoreOverrideCursor();
        Lbl_Message->setText(QStringLiteral("无法检查登录：%1").arg(QString::fromUtf8(e.what())));
        return;
    }
    QApplication::restoreOverrideCursor();
    if (!ok) {
        // Nothing about which part was wrong.
        Lbl_Message->setText(QStringLiteral("操作员、单位或密码不正确，请重新输入。"));
        Edt_Kl->clear();
        Edt_Kl->setFocus();
        return;
    }
    QSqlQuery q(db_);
    q.prepare(QStringLiteral(
        "SELECT c.dm, c.xingming, c.bm, (SELECT b.mc FROM z_bmbm b WHERE b.dm = c.bm), c.dw "
        "FROM z_xtczy c WHERE c.dm = ?"));
    q.addBindValue(czydm);
    q.exec();
    q.next();
    operator_.czydm = q.value(0).toString();
    operator_.xingming = q.value(1).toString();
    operator_.bm = q.value(2).toString();
    operator_.bmmc = q.value(3).toString();
    operator_.dwdm = q.value(4).toString();
    operator_.dw = dw;
    QSqlQuery u(db_);
    u.prepare(QStringLiteral("SELECT mc FROM z_dwbm WHERE dm = ?"));
    u.addBindValue(dw);
    u.exec();
    operator_.dwmc = u.next() ? u.value(0).toString() : QString();
    accept();
}

}  // namespace tarvin::host
