// The banded report model: a page set-up and bands (title, page header,
// column header, detail, summary, page footer) holding positioned items.
// Reports kept in z_report are template texts parsed into this model
// (ReportTemplate.h); code-defined reports build it directly:
//
//   TReportLayout l(u"处理通知单"_s);
//   TReportBand& title = l.AddBand(TReportBand::Title, 30);
//   title.AddText(0, 0, l.PrintableWidth(), 10, u"用电检查结果处理通知书"_s).Size(16).Bold().Center();
//   TReportBand& detail = l.AddBand(TReportBand::Detail, 8);
//   detail.AddColumn(u"户号"_s, u"HH"_s, 30);
//
// All lengths are millimetres; item positions are relative to the band's
// top-left corner, which sits on the left page margin.
#pragma once

#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QRectF>
#include <QString>
#include <optional>
#include <stdexcept>
#include <deque>

namespace tarvin::report {

// A report that cannot be read or printed: the message names the report and
// what is wrong.
class EReportError : public std::runtime_error {
public:
    explicit EReportError(const QString& message) : std::runtime_error(message.toStdString()) {}
    QString message() const { return QString::fromUtf8(what()); }
};

// Font attributes; an unset one is taken from the page's font.
struct TReportFont {
    QString family;
    std::optional<double> size;  // points
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<bool> underline;

    // This font over `base` (unset attributes come from base).
    TReportFont over(const TReportFont& base) const;
};

enum TReportFrame : unsigned {
    FrameNone = 0,
    FrameLeft = 1,
    FrameTop = 2,
    FrameRight = 4,
    FrameBottom = 8,
    FrameAll = 15,
};

struct TReportItem {
    enum Kind { Text, Line };
    Kind kind = Text;
    QString name;        // lets code find the item (e.g. to change a caption)
    QRectF rect;         // a line runs from rect's top-left to its bottom-right
    // Text with placeholders: ${Name} a variable (or Page, Pages, Line,
    // Count), [FIELD] a field of the dataset.
    QString text;
    TReportFont font;
    Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter;
    bool wrap = false;
    unsigned frame = FrameNone;
    double lineWidth = 0.2;  // frame and line width, mm
    QString format;          // date ("yyyy-MM-dd") or number ("0.00", "#,##0.00") format of field values

    // Fluent set-up for code-defined layouts.
    TReportItem& Name(const QString& n) { name = n; return *this; }
    TReportItem& Size(double points) { font.size = points; return *this; }
    TReportItem& Family(const QString& f) { font.family = f; return *this; }
    TReportItem& Bold(bool on = true) { font.bold = on; return *this; }
    TReportItem& Left() { align = (align & Qt::AlignVertical_Mask) | Qt::AlignLeft; return *this; }
    TReportItem& Center() { align = (align & Qt::AlignVertical_Mask) | Qt::AlignHCenter; return *this; }
    TReportItem& Right() { align = (align & Qt::AlignVertical_Mask) | Qt::AlignRight; return *this; }
    TReportItem& Top() { align = (align & Qt::AlignHorizontal_Mask) | Qt::AlignTop; return *this; }
    TReportItem& Bottom() { align = (align & Qt::AlignHorizontal_Mask) | Qt::AlignBottom; return *this; }
    TReportItem& Wrap(bool on = true) { wrap = on; return *this; }
    TReportItem& Frame(unsigned sides = FrameAll) { frame = sides; return *this; }
    TReportItem& Format(const QString& f) { format = f; return *this; }
};

// One column of a detail band's table: its title in the column header and
// its cell text in every detail row.
struct TReportColumn {
    QString title;
    QString text;   // e.g. "[HH]"
    double width = 20;
    Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter;
    bool wrap = false;
    QString format;
};

struct TReportBand {
    enum Kind { Title, PageHeader, ColumnHeader, Detail, Summary, PageFooter };
    Kind kind = Detail;
    double height = 10;
    // Detail only: the band grows to fit wrapped text of its items and cells.
    bool stretch = false;
    std::deque<TReportItem> items;  // a deque: references stay valid as items are added

    // Detail only: a ruled table, one row per record, with a row of column
    // titles at the top of the detail rows on every page.
    std::deque<TReportColumn> columns;
    bool columnTitles = true;
    double titleHeight = 8;
    TReportFont titleFont;   // over the page font; bold unless set
    unsigned cellFrame = FrameAll;

    TReportItem& AddText(double x, double y, double w, double h, const QString& text);
    TReportItem& AddLine(double x1, double y1, double x2, double y2, double width = 0.2);
    TReportColumn& AddColumn(const QString& title, const QString& field, double width,
                             Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter);
    double TableWidth() const;
};

struct TReportPage {
    QPageSize::PageSizeId size = QPageSize::A4;
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QMarginsF margins{15, 15, 15, 15};  // left, top, right, bottom
    TReportFont font;                   // the report's font; 宋体 10 pt unless set

    QSizeF PaperSize() const;  // mm, oriented
};

class TReportLayout {
public:
    explicit TReportLayout(const QString& name = QString()) : name_(name) {}

    const QString& Name() const { return name_; }
    void SetName(const QString& name) { name_ = name; }

    TReportPage& Page() { return page_; }
    const TReportPage& Page() const { return page_; }
    double PrintableWidth() const;
    double PrintableHeight() const;

    // Adds a band; one band of each kind (EReportError for a second one).
    TReportBand& AddBand(TReportBand::Kind kind, double height);
    TReportBand* Band(TReportBand::Kind kind);
    const TReportBand* Band(TReportBand::Kind kind) const;
    const std::deque<TReportBand>& Bands() const { return bands_; }
    std::deque<TReportBand>& Bands() { return bands_; }

    // The item of this name in any band; nullptr when none.
    TReportItem* FindItem(const QString& name);

    // Checks what the renderer relies on (sizes above zero, bands that fit
    // on the page, columns only on the detail band); EReportError naming the
    // report and the problem.
    void Validate() const;

    static QString KindName(TReportBand::Kind kind);

private:
    QString name_;
    TReportPage page_;
    std::deque<TReportBand> bands_;
};

}  // namespace tarvin::report
