// The survey sheet ("查勘单") of a metering anomaly case, as the anomaly
// screen's print button shows it: the layout "ckd" kept in z_report, laid
// over the case's rows (DataSet_Yk_Dm->Mqry_Ckd), with the variables Cdbh
// and dw.
#pragma once

#include <QString>

#include "report/Report.h"

class QWidget;

// Readies FRDB_Ckd for the case `cdbh` of unit `dw`: the case's rows
// opened, the layout read afresh (a layout changed in z_report prints at
// once), the variable list cleared and given its two lines, and the sheet
// laid out once so that a broken layout is reported here. Throws
// std::runtime_error with a message for the operator when the case has no
// application row or the layout is missing or broken; database errors
// pass as they are.
void PrepareCkd(tarvin::report::TReport& FRDB_Ckd, const QString& cdbh, const QString& dw);

// Prepares the sheet and shows it in the modal print preview.
void PrintCkd(QWidget* parent, const QString& cdbh, const QString& dw);
