#include "AlarmScanDialog.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QSqlQuery>
#include <QVBoxLayout>

#include "AlarmScan.h"

namespace tarvin::host {

AlarmScanDialog::AlarmScanDialog(const QSqlDatabase& db, const Operator& op, const QString& ny, QWidget* parent)
    : QDialog(parent), db_(db) {
    setObjectName(QStringLiteral("AlarmScanDialog"));
    setWindowTitle(QStringLiteral("异常客户报警扫描"));

    Edt_Ny = new QLineEdit(ny, this);
    Edt_Ny->setObjectName(QStringLiteral("Edt_Ny"));
    Edt_Ny->setMaxLength(6);
    Edt_Ny->setPlaceholderText(QStringLiteral("YYYYMM"));
    Cob_Dw = new QComboBox(this);
    Cob_Dw->setObjectName(QStringLiteral("Cob_Dw"));
    // The operator's unit (with the units under it) or one unit under it.
    Cob_Dw->addItem(op.dwmc.isEmpty() ? op.dw : QStringLiteral("%1 %2").arg(op.dw, op.dwmc), op.dw);
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT dm, mc FROM z_dwbm WHERE sjdw = ? ORDER BY dm"));
    q.addBindValue(op.dw);
    if (q.exec())
        while (q.next()) Cob_Dw->addItem(QStringLiteral("%1 %2").arg(q.value(0).toString(), q.value(1).toString()),
                                         q.value(0).toString());
    Spb_Ts = new QSpinBox(this);
    Spb_Ts->setObjectName(QStringLiteral("Spb_Ts"));
    Spb_Ts->setRange(0, tarvin::alarms::kMaxDays);
    Spb_Ts->setValue(tarvin::alarms::kDefaultDays);
    Spb_Ts->setSuffix(QStringLiteral(" 天"));

    Pgb_Jd = new QProgressBar(this);
    Pgb_Jd->setObjectName(QStringLiteral("Pgb_Jd"));
    Pgb_Jd->setRange(0, int(tarvin::alarms::alarmKinds().size()));
    Pgb_Jd->setValue(0);
    Pgb_Jd->setFormat(QStringLiteral("%v / %m 类"));
    Mem_Jg = new QPlainTextEdit(this);
    Mem_Jg->setObjectName(QStringLiteral("Mem_Jg"));
    Mem_Jg->setReadOnly(true);

    Bbtn_Sm = new QPushButton(QStringLiteral("扫描(&S)"), this);
    Bbtn_Sm->setObjectName(QStringLiteral("Bbtn_Sm"));
    Bbtn_Tc = new QPushButton(QStringLiteral("关闭(&X)"), this);
    Bbtn_Tc->setObjectName(QStringLiteral("Bbtn_Tc"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("扫描年月："), Edt_Ny);
    form->addRow(QStringLiteral("供电单位："), Cob_Dw);
    form->addRow(QStringLiteral("临时用电提前："), Spb_Ts);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Bbtn_Sm);
    buttons->addWidget(Bbtn_Tc);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(Pgb_Jd);
    layout->addWidget(Mem_Jg, 1);
    layout->addLayout(buttons);
    resize(520, 380);

    connect(Bbtn_Sm, &QPushButton::clicked, this, &AlarmScanDialog::Scan);
    connect(Bbtn_Tc, &QPushButton::clicked, this, &QDialog::accept);
}

bool AlarmScanDialog::Scan() {
    const QString ny = Edt_Ny->text().trimmed();
    static const QRegularExpression yyyymm(QStringLiteral("^\\d{4}(0[1-9]|1[0-2])$"));
    if (!yyyymm.match(ny).hasMatch()) {
        QMessageBox::information(this, QStringLiteral("提示"),
                                 QStringLiteral("请按 YYYYMM 输入扫描年月，例如 202403。"));
        Edt_Ny->setFocus();
        return false;
    }
    tarvin::alarms::ScanOptions o;
    o.ny = ny;
    o.unit = Cob_Dw->currentData().toString();
    o.days = Spb_Ts->value();
    Pgb_Jd->setValue(0);
    Mem_Jg->clear();
    Bbtn_Sm->setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    bool ok = true;
    try {
        const auto result = tarvin::alarms::scanAlarms(o, db_.connectionName(), [this](const tarvin::alarms::KindResult& k) {
            Mem_Jg->appendPlainText(QStringLiteral("%1 %2：新增 %3 条").arg(k.kind.code, k.kind.caption).arg(k.inserted));
            Pgb_Jd->setValue(Pgb_Jd->value() + 1);
            QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        });
        Mem_Jg->appendPlainText(result.inserted() == 0
                                    ? QStringLiteral("共新增 0 条报警：%1 的报警已经扫描过，或没有符合规则的客户。").arg(ny)
                                    : QStringLiteral("共新增 %1 条报警。").arg(result.inserted()));
    } catch (const std::invalid_argument& e) {
        ok = false;
        QApplication::restoreOverrideCursor();
        QMessageBox::information(this, QStringLiteral("提示"),
                                 QStringLiteral("不能扫描：%1。请修改扫描条件后再试。").arg(QString::fromUtf8(e.what())));
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } catch (const std::exception& e) {
        ok = false;
        QApplication::restoreOverrideCursor();
        QMessageBox::critical(this, QStringLiteral("系统提示"),
                              QStringLiteral("报警扫描出错，已撤销本次扫描写入的内容：\n%1").arg(QString::fromUtf8(e.what())));
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    QApplication::restoreOverrideCursor();
    Bbtn_Sm->setEnabled(true);
    return ok;
}

}  // namespace tarvin::host
