#include "ReportLayout.h"

namespace tarvin::report {

namespace {
constexpr double kSlack = 0.5;  // mm a position may pass an edge by (rounding in hand-written templates)
}

TReportFont TReportFont::over(const TReportFont& base) const {
    TReportFont f = base;
    if (!family.isEmpty()) f.family = family;
    if (size) f.size = size;
    if (bold) f.bold = bold;
    if (italic) f.italic = italic;
    if (underline) f.underline = underline;
    return f;
}

TReportItem& TReportBand::AddText(double x, double y, double w, double h, const QString& text) {
    TReportItem it;
    it.rect = QRectF(x, y, w, h);
    it.text = text;
    items.push_back(it);
    return items.back();
}

TReportItem& TReportBand::AddLine(double x1, double y1, double x2, double y2, double width) {
    TReportItem it;
    it.kind = TReportItem::Line;
    it.rect = QRectF(QPointF(x1, y1), QPointF(x2, y2));
    it.lineWidth = width;
    items.push_back(it);
    return items.back();
}

TReportColumn& TReportBand::AddColumn(const QString& title, const QString& field, double width, Qt::Alignment align) {
    TReportColumn c;
    c.title = title;
    c.text = QLatin1Char('[') + field + QLatin1Char(']');
    c.width = width;
    c.align = align;
    columns.push_back(c);
    return columns.back();
}

double TReportBand::TableWidth() const {
    double w = 0;
    for (const TReportColumn& c : columns) w += c.width;
    return w;
}

QSizeF TReportPage::PaperSize() const {
    const QSizeF s = QPageSize(size).size(QPageSize::Millimeter);
    return orientation == QPageLayout::Landscape ? s.transposed() : s;
}

double TReportLayout::PrintableWidth() const {
    return page_.PaperSize().width() - page_.margins.left() - page_.margins.right();
}

double TReportLayout::PrintableHeight() const {
    return page_.PaperSize().height() - page_.margins.top() - page_.margins.bottom();
}

QString TReportLayout::KindName(TReportBand::Kind kind) {
    switch (kind) {
    case TReportBand::Title: return QStringLiteral("title");
    case TReportBand::PageHeader: return QStringLiteral("pageHeader");
    case TReportBand::ColumnHeader: return QStringLiteral("columnHeader");
    case TReportBand::Detail: return QStringLiteral("detail");
    case TReportBand::Summary: return QStringLiteral("summary");
    case TReportBand::PageFooter: return QStringLiteral("pageFooter");
    }
    return QString();
}

TReportBand& TReportLayout::AddBand(TReportBand::Kind kind, double height) {
    if (Band(kind))
        throw EReportError(QStringLiteral("Report \"%1\": a second %2 band; a report has one band of each kind").arg(name_, KindName(kind)));
    TReportBand b;
    b.kind = kind;
    b.height = height;
    bands_.push_back(b);
    return bands_.back();
}

TReportBand* TReportLayout::Band(TReportBand::Kind kind) {
    for (TReportBand& b : bands_)
        if (b.kind == kind) return &b;
    return nullptr;
}

const TReportBand* TReportLayout::Band(TReportBand::Kind kind) const {
    for (const TReportBand& b : bands_)
        if (b.kind == kind) return &b;
    return nullptr;
}

TReportItem* TReportLayout::FindItem(const QString& name) {
    for (TReportBand& b : bands_)
        for (TReportItem& it : b.items)
            if (!name.isEmpty() && it.name.compare(name, Qt::CaseInsensitive) == 0) return &it;
    return nullptr;
}

void TReportLayout::Validate() const {
    const auto fail = [this](const QString& what) {
        throw EReportError(QStringLiteral("Report \"%1\": %2").arg(name_, what));
    };
    const double width = PrintableWidth(), height = PrintableHeight();
    if (page_.margins.left() < 0 || page_.margins.top() < 0 || page_.margins.right() < 0 || page_.margins.bottom() < 0)
        fail(QStringLiteral("page margins must not be negative"));
    if (width <= 0 || height <= 0) fail(QStringLiteral("the page margins leave no room to print"));
    if (page_.font.size && *page_.font.size <= 0) fail(QStringLiteral("the page font size must be above 0"));

    double fixed = 0;  // what every first page needs besides one detail row
    for (const TReportBand& b : bands_) {
        const QString band = KindName(b.kind) + QStringLiteral(" band");
        if (!(b.height > 0)) fail(band + QStringLiteral(": height must be above 0"));
        if (b.height > height) fail(band + QStringLiteral(": height %1 mm is more than the printable %2 mm").arg(b.height).arg(height));
        if (!b.columns.empty() && b.kind != TReportBand::Detail) fail(band + QStringLiteral(": only the detail band has columns"));
        for (const TReportColumn& c : b.columns)
            if (!(c.width > 0)) fail(band + QStringLiteral(": column \"%1\": width must be above 0").arg(c.title));
        if (b.TableWidth() > width + kSlack)
            fail(band + QStringLiteral(": the columns are %1 mm wide, the printable width is %2 mm").arg(b.TableWidth()).arg(width));
        if (!b.columns.empty() && b.columnTitles && !(b.titleHeight > 0)) fail(band + QStringLiteral(": the column titles' height must be above 0"));
        for (const TReportItem& it : b.items) {
            const QString item = band + QStringLiteral(": item \"%1\"").arg(it.name.isEmpty() ? it.text.left(20) : it.name);
            if (it.font.size && *it.font.size <= 0) fail(item + QStringLiteral(": font size must be above 0"));
            if (it.kind != TReportItem::Text) continue;
            if (!(it.rect.width() > 0) || !(it.rect.height() > 0)) fail(item + QStringLiteral(": width and height must be above 0"));
            if (it.rect.left() < -kSlack || it.rect.right() > width + kSlack)
                fail(item + QStringLiteral(": runs from %1 to %2 mm, outside the printable width %3 mm").arg(it.rect.left()).arg(it.rect.right()).arg(width));
            if (it.rect.top() < -kSlack || (!b.stretch && it.rect.bottom() > b.height + kSlack))
                fail(item + QStringLiteral(": runs from %1 to %2 mm, outside the band's height %3 mm").arg(it.rect.top()).arg(it.rect.bottom()).arg(b.height));
        }
        if (b.kind != TReportBand::Summary) fixed += b.height;
        if (b.kind == TReportBand::Detail && !b.columns.empty() && b.columnTitles) fixed += b.titleHeight;
    }
    if (fixed > height + 0.01)
        fail(QStringLiteral("the bands need %1 mm on the first page, the printable height is %2 mm").arg(fixed).arg(height));
}

}  // namespace tarvin::report
