// Laying a report out into pages and painting them: the detail band once
// per row of the dataset, rows flowing over pages, the page header, the
// column header and the column titles repeated on every page, the page
// footer at the foot of every page, page numbers filled in when painting.
#pragma once

#include <QFont>
#include <QHash>
#include <QPainter>
#include <QString>
#include <QStringList>
#include <vector>

#include "ReportLayout.h"

class TMidasQuery;

namespace tarvin::report {

// An item placed on a page: position in millimetres from the paper's
// top-left corner, text resolved except for ${Page} and ${Pages}.
struct TPlacedItem {
    TReportItem::Kind kind = TReportItem::Text;
    QRectF rect;
    QString text;
    QFont font;
    Qt::Alignment align;
    bool wrap = false;
    unsigned frame = FrameNone;
    double lineWidth = 0.2;
};

struct TPreparedPage {
    std::vector<TPlacedItem> items;
};

struct TPreparedReport {
    QString name;
    QPageSize::PageSizeId size = QPageSize::A4;
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QSizeF paper;  // mm
    std::vector<TPreparedPage> pages;

    QPageLayout PageLayout() const;  // the paper with no margins: items carry their own positions
};

// Variables from "Name='value'" lines (the value may also stand unquoted;
// '' inside quotes is one quote). Names are matched without regard to case.
// A line that is not Name=value raises EReportError naming the report.
QHash<QString, QString> ParseVariables(const QString& reportName, const QStringList& lines);

// The font of a report item: 宋体 and 黑体 (and their Windows names) fall
// back to the Noto CJK serif and sans families where they are missing.
QFont MakeFont(const TReportFont& resolved);

// Lays the layout out over the dataset's rows (nullptr: the detail band
// once, without fields). The dataset's current row is left where it was.
// Unknown variables and fields raise EReportError naming the report.
TPreparedReport PrepareReport(const TReportLayout& layout, const QHash<QString, QString>& variables, const TMidasQuery* data);

// Paints one page; `dotsPerMm` is the device's resolution, the painter's
// origin the paper's top-left corner.
void PaintPage(QPainter& painter, const TPreparedReport& report, int index, double dotsPerMm);

}  // namespace tarvin::report
