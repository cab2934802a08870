// TReport: a report as the screens use it. The layout comes from the
// definition kept under its name in z_report (LoadFromDatabase) or is built
// in code (Layout(), SetLayout); the screen clears and fills the variable
// list with "Name='value'" lines, gives the dataset, and previews, prints or
// exports it:
//
//   TReport rpt;
//   rpt.LoadFromDatabase(u"报警提醒清单"_s);
//   rpt.Variables().Clear();
//   rpt.Variables().Add("Dwmc='" + Gdwmc + "'");
//   rpt.SetDataSet(Mqry_Bj);
//   rpt.Preview(this);
//
// The report is laid out afresh for every output, from the variables and
// the dataset's rows at that moment; the dataset's current row is not moved.
#pragma once

#include <QImage>
#include <QString>

#include "data/MidasQuery.h"
#include "ReportLayout.h"
#include "ReportRenderer.h"

class QPrinter;
class QWidget;
class QPrintPreviewDialog;

namespace tarvin::report {

class TReport {
public:
    // Definitions are read through the named connection.
    explicit TReport(const QString& connectionName = QStringLiteral("Shdl"));

    // Reads the template kept under `name` in z_report (EReportError when
    // there is none or it does not parse; EDatabaseError when the table
    // cannot be read).
    void LoadFromDatabase(const QString& name);
    // Reads a template text (see docs/reports.md).
    void LoadFromText(const QString& name, const QString& templateText);
    // A layout built in code.
    void SetLayout(const TReportLayout& layout) { layout_ = layout; }
    TReportLayout& Layout() { return layout_; }
    const TReportLayout& Layout() const { return layout_; }
    QString Name() const { return layout_.Name(); }

    // The variable list: one "Name='value'" line each.
    TStrings& Variables() { return variables_; }
    void SetDataSet(TMidasQuery* data) { data_ = data; }
    TMidasQuery* DataSet() const { return data_; }

    // Lays the report out now; EReportError for an unknown variable or
    // field, or a layout that cannot be printed.
    TPreparedReport Prepare() const;
    int PageCount() const { return int(Prepare().pages.size()); }

    // One page as an image at `dpi` (white paper), e.g. for a picture of it.
    QImage RenderPage(int index, double dpi = 150) const;
    // Writes the report as a PDF file (EReportError when it cannot write).
    void ExportPdf(const QString& path) const;
    // Prints on the printer as set up (its page range is honoured).
    void PrintTo(QPrinter& printer) const;
    // Asks for a printer and prints; false when the user cancels.
    bool Print(QWidget* parent = nullptr) const;
    // Shows the report in a modal print preview (with its print button).
    void Preview(QWidget* parent = nullptr) const;
    // The preview dialog, not yet shown: the caller shows and deletes it;
    // the report must outlive the dialog (the dialog paints through it).
    QPrintPreviewDialog* CreatePreview(QPrinter* printer, QWidget* parent = nullptr) const;

private:
    QString connection_;
    TReportLayout layout_;
    TStrings variables_;
    TMidasQuery* data_ = nullptr;
};

}  // namespace tarvin::report
