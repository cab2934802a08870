// Report templates: the text kept in z_report.mb, a JSON document that
// describes a TReportLayout (see docs/reports.md for the format).
#pragma once

#include <QString>

#include "ReportLayout.h"

namespace tarvin::report {

// Reads a template text. A text that is not JSON, or that names an unknown
// key, band or value, or gives a wrong type, raises EReportError naming the
// report, where the problem is (line and column, or the path of the key
// such as bands[1].columns[2].width) and what it is. The layout is also
// validated (TReportLayout::Validate).
TReportLayout ParseTemplate(const QString& reportName, const QString& text);

}  // namespace tarvin::report
