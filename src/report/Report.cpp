#include "Report.h"

#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <cmath>

#include "ReportTemplate.h"

namespace tarvin::report {

TReport::TReport(const QString& connectionName) : connection_(connectionName) {}

void TReport::LoadFromDatabase(const QString& name) {
    TMidasQuery q;
    q.SetDatabaseName(connection_);
    q.SQL().Add(QStringLiteral("select mb from z_report where bbmc=:bbmc"));
    q.ParamByName(QStringLiteral("bbmc")).SetAsString(name);
    q.Open();
    if (q.IsEmpty()) throw EReportError(QStringLiteral("Report \"%1\" is not in the report table z_report").arg(name));
    const QString text = q.FieldByName(QStringLiteral("mb")).AsString();
    q.Close();
    LoadFromText(name, text);
}

void TReport::LoadFromText(const QString& name, const QString& templateText) { layout_ = ParseTemplate(name, templateText); }

TPreparedReport TReport::Prepare() const {
    return PrepareReport(layout_, ParseVariables(layout_.Name(), variables_.Lines()), data_);
}

QImage TReport::RenderPage(int index, double dpi) const {
    const TPreparedReport r = Prepare();
    if (index < 0 || index >= int(r.pages.size()))
        throw EReportError(QStringLiteral("Report \"%1\": there is no page %2 (it has %3)").arg(r.name).arg(index + 1).arg(r.pages.size()));
    const double k = dpi / 25.4;
    QImage img(QSize(int(std::lround(r.paper.width() * k)), int(std::lround(r.paper.height() * k))), QImage::Format_RGB32);
    const int dpm = int(std::lround(dpi / 0.0254));
    img.setDotsPerMeterX(dpm);
    img.setDotsPerMeterY(dpm);
    img.fill(Qt::white);
    QPainter p(&img);
    PaintPage(p, r, index, k);
    return img;
}

void TReport::ExportPdf(const QString& path) const {
    const TPreparedReport r = Prepare();
    QPdfWriter pdf(path);
    pdf.setPageLayout(r.PageLayout());
    pdf.setResolution(600);
    pdf.setTitle(r.name);
    pdf.setCreator(QStringLiteral("Tarvin"));
    QPainter p;
    if (!p.begin(&pdf))
        throw EReportError(QStringLiteral("Report \"%1\": cannot write the PDF file %2").arg(r.name, QFileInfo(path).absoluteFilePath()));
    for (int i = 0; i < int(r.pages.size()); ++i) {
        if (i > 0) pdf.newPage();
        PaintPage(p, r, i, pdf.resolution() / 25.4);
    }
    p.end();
}

void TReport::PrintTo(QPrinter& printer) const {
    const TPreparedReport r = Prepare();
    printer.setFullPage(true);
    printer.setPageLayout(r.PageLayout());
    if (printer.docName().isEmpty()) printer.setDocName(r.name);
    int from = 1, to = int(r.pages.size());
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        from = std::max(from, printer.fromPage());
        to = std::min(to, printer.toPage() > 0 ? printer.toPage() : to);
    }
    QPainter p;
    if (!p.begin(&printer)) throw EReportError(QStringLiteral("Report \"%1\": the printer cannot be opened").arg(r.name));
    // Printer units from the paper the painter sees, so that the paper fills
    // the page whatever the printer's resolution.
    const double k = p.viewport().width() / r.paper.width();
    for (int page = from; page <= to; ++page) {
        if (page > from) printer.newPage();
        PaintPage(p, r, page - 1, k);
    }
    p.end();
}

bool TReport::Print(QWidget* parent) const {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(Name());
    if (dialog.exec() != QDialog::Accepted) return false;
    PrintTo(printer);
    return true;
}

QPrintPreviewDialog* TReport::CreatePreview(QPrinter* printer, QWidget* parent) const {
    // A report that cannot be laid out is refused before the dialog opens.
    printer->setPageLayout(Prepare().PageLayout());
    auto* dialog = new QPrintPreviewDialog(printer, parent);
    dialog->setWindowTitle(Name());
    QObject::connect(dialog, &QPrintPreviewDialog::paintRequested, dialog, [this](QPrinter* p) { PrintTo(*p); });
    return dialog;
}

void TReport::Preview(QWidget* parent) const {
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog* dialog = CreatePreview(&printer, parent);
    dialog->resize(900, 1000);
    dialog->exec();
    delete dialog;
}

}  // namespace tarvin::report
