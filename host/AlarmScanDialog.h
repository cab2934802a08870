// The alarm scan from the host's menu, for an administrator (a post that
// grants 40098): the month, the unit and the notice days of temporary
// supply, then the six kinds run with their counts shown as they finish.
#pragma once

#include <QDialog>
#include <QSqlDatabase>

#include "SignInDialog.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace tarvin::host {

inline const QString kAlarmScanGrant = QStringLiteral("40098");

class AlarmScanDialog : public QDialog {
    Q_OBJECT
public:
    AlarmScanDialog(const QSqlDatabase& db, const Operator& op, const QString& ny, QWidget* parent = nullptr);

    QLineEdit* Edt_Ny;
    QComboBox* Cob_Dw;
    QSpinBox* Spb_Ts;
    QPushButton* Bbtn_Sm;
    QPushButton* Bbtn_Tc;
    QProgressBar* Pgb_Jd;
    QPlainTextEdit* Mem_Jg;

    // Runs the scan with what the dialog shows; false when refused or failed
    // (the reason is shown).
    bool Scan();

private:
    QSqlDatabase db_;
};

}  // namespace tarvin::host
