#include "ReportRenderer.h"

#include <QDateTime>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QLocale>
#include <QRegularExpression>
#include <cmath>

#include "data/MidasQuery.h"

namespace tarvin::report {

namespace {

constexpr double kPadX = 1.0;   // mm between a frame and its text
constexpr double kPadY = 0.4;
constexpr double kEps = 0.01;

const QString kPageToken = QStringLiteral("${Page}");
const QString kPagesToken = QStringLiteral("${Pages}");

const QRegularExpression& placeholder() {
    static const QRegularExpression re(QStringLiteral("\\$\\{([A-Za-z_][A-Za-z0-9_]*)\\}|\\[([A-Za-z_][A-Za-z0-9_]*)\\]"));
    return re;
}

// Text measured at a fixed high resolution, so that the layout does not
// depend on the screen.
const QImage& measureDevice() {
    static const QImage img = [] {
        QImage i(1, 1, QImage::Format_RGB32);
        const int dpm = int(std::lround(1200 / 0.0254));
        i.setDotsPerMeterX(dpm);
        i.setDotsPerMeterY(dpm);
        return i;
    }();
    return img;
}
constexpr double kMeasureDotsPerMm = 1200 / 25.4;

int textFlags(Qt::Alignment align, bool wrap) { return int(align) | (wrap ? Qt::TextWordWrap : Qt::TextSingleLine); }

// Height in mm that `text` needs at `width` mm.
double textHeight(const QFont& font, const QString& text, double width, bool wrap) {
    const QFontMetricsF fm(font, &measureDevice());
    if (text.isEmpty()) return fm.height() / kMeasureDotsPerMm;
    const QRectF r = fm.boundingRect(QRectF(0, 0, width * kMeasureDotsPerMm, 1e7), textFlags(Qt::AlignLeft | Qt::AlignTop, wrap), text);
    return r.height() / kMeasureDotsPerMm;
}

bool isDateFormat(const QString& f) {
    return f.contains(QLatin1Char('y')) || f.contains(QLatin1Char('d')) || f.contains(QLatin1Char('M')) || f.contains(QLatin1Char('H'));
}

QDateTime asDateTime(const QVariant& v) {
    if (v.typeId() == QMetaType::QDateTime) return v.toDateTime();
    if (v.typeId() == QMetaType::QDate) return v.toDate().startOfDay();
    const QString s = v.toString().trimmed();
    QDateTime dt = QDateTime::fromString(s.left(19), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (!dt.isValid()) dt = QDateTime::fromString(s.left(19), Qt::ISODate);
    if (!dt.isValid()) dt = QDate::fromString(s.left(10), QStringLiteral("yyyy-MM-dd")).startOfDay();
    return dt;
}

// "0", "0.00", "#,##0.00": decimals after the point, grouping with a comma.
QString formatNumber(double v, const QString& f) {
    const int point = f.indexOf(QLatin1Char('.'));
    const int decimals = point < 0 ? 0 : int(f.size() - point - 1);
    QString s = QString::number(v, 'f', decimals);
    if (f.contains(QLatin1Char(','))) {
        QLocale c(QLocale::C);
        c.setNumberOptions(QLocale::DefaultNumberOptions);
        s = c.toString(v, 'f', decimals);
    }
    return s;
}

QString valueText(const QVariant& v, const QString& format) {
    if (!v.isValid() || v.isNull()) return QString();
    if (!format.isEmpty()) {
        if (isDateFormat(format)) {
            const QDateTime dt = asDateTime(v);
            if (dt.isValid()) return dt.toString(format);
        } else {
            bool ok = false;
            const double d = v.typeId() == QMetaType::QString ? v.toString().trimmed().toDouble(&ok) : v.toDouble(&ok);
            if (ok) return formatNumber(d, format);
        }
    }
    switch (v.typeId()) {
    case QMetaType::QDateTime: return v.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case QMetaType::QDate: return v.toDate().toString(QStringLiteral("yyyy-MM-dd"));
    case QMetaType::Double:
    case QMetaType::Float: {
        const double d = v.toDouble();
        return d == std::floor(d) && std::fabs(d) < 1e15 ? QString::number(qint64(d)) : QString::number(d, 'g', 15);
    }
    default: return v.toString();
    }
}

class Engine {
public:
    Engine(const TReportLayout& layout, const QHash<QString, QString>& variables, const TMidasQuery* data)
        : l_(layout), vars_(variables), data_(data) {
        TReportFont base;
        base.family = QStringLiteral("宋体");
        base.size = 10;
        base.bold = false;
        base.italic = false;
        base.underline = false;
        pageFont_ = l_.Page().font.over(base);
        rows_ = data_ ? (data_->Active() ? data_->RecordCount() : 0) : -1;
    }

    TPreparedReport run() {
        l_.Validate();
        r_.name = l_.Name();
        r_.size = l_.Page().size;
        r_.orientation = l_.Page().orientation;
        r_.paper = l_.Page().PaperSize();
        left_ = l_.Page().margins.left();
        top_ = l_.Page().margins.top();
        const TReportBand* footer = l_.Band(TReportBand::PageFooter);
        footerTop_ = r_.paper.height() - l_.Page().margins.bottom() - (footer ? footer->height : 0);
        const TReportBand* detail = l_.Band(TReportBand::Detail);
        const TReportBand* summary = l_.Band(TReportBand::Summary);

        const int count = rows_ < 0 ? 1 : rows_;  // no dataset: the detail band once
        newPage(true, count > 0 ? 0 : -1);
        for (int row = 0; row < count; ++row) {
            const int dataRow = rows_ < 0 ? -1 : row;
            const double h = detail ? rowHeight(*detail, dataRow) : 0;
            if (!detail) break;
            if (y_ + h > footerTop_ + kEps && rowsOnPage_ > 0) newPage(false, dataRow);
            placeBand(*detail, y_, dataRow, h);
            y_ += h;
            ++rowsOnPage_;
            lastRow_ = dataRow;
        }
        if (summary) {
            if (y_ + summary->height > footerTop_ + kEps) newPage(false, lastRow_);
            placeBand(*summary, y_, lastRow_, summary->height);
            y_ += summary->height;
        }
        finishPage();
        return std::move(r_);
    }

private:
    [[noreturn]] void fail(const QString& what) const {
        throw EReportError(QStringLiteral("Report \"%1\": %2").arg(l_.Name(), what));
    }

    QFont font(const TReportFont& f) const { return MakeFont(f.over(pageFont_)); }

    QString resolve(const QString& text, int row, const QString& format) const {
        QString out;
        qsizetype at = 0;
        auto it = placeholder().globalMatch(text);
        while (it.hasNext()) {
            const QRegularExpressionMatch m = it.next();
            out += text.mid(at, m.capturedStart() - at);
            at = m.capturedEnd();
            if (m.capturedLength(1) > 0) {
                const QString name = m.captured(1);
                const QString key = name.toUpper();
                if (key == QLatin1String("PAGE")) out += kPageToken;
                else if (key == QLatin1String("PAGES")) out += kPagesToken;
                else if (vars_.contains(key)) out += vars_.value(key);
                else if (key == QLatin1String("LINE")) out += row >= 0 ? QString::number(row + 1) : QString();
                else if (key == QLatin1String("COUNT")) out += QString::number(std::max(rows_, 0));
                else {
                    QStringList known;
                    for (auto v = vars_.begin(); v != vars_.end(); ++v) known << v.key();
                    known.sort();
                    fail(QStringLiteral("${%1}: no variable of that name (variables given: %2)")
                             .arg(name, known.isEmpty() ? QStringLiteral("none") : known.join(QStringLiteral(", "))));
                }
            } else {
                const QString field = m.captured(2);
                if (!data_) fail(QStringLiteral("[%1]: the report has no dataset to take fields from").arg(field));
                const int col = data_->FindFieldIndex(field);
                if (col < 0)
                    fail(QStringLiteral("[%1]: no field of that name in the dataset (fields: %2)").arg(field, data_->FieldNames().join(QStringLiteral(", "))));
                if (row >= 0 && row < data_->RecordCount()) out += valueText(data_->valueAt(row, col), format);
            }
        }
        out += text.mid(at);
        return out;
    }

    double rowHeight(const TReportBand& band, int row) const {
        if (!band.stretch) return band.height;
        double h = band.height;
        for (const TReportItem& it : band.items) {
            if (it.kind != TReportItem::Text || !it.wrap) continue;
            const double pad = it.frame ? kPadX : 0, padY = it.frame ? kPadY : 0;
            const double need = textHeight(font(it.font), resolve(it.text, row, it.format), it.rect.width() - 2 * pad, true) + 2 * padY;
            h = std::max(h, it.rect.top() + std::max(it.rect.height(), need));
        }
        for (const TReportColumn& c : band.columns) {
            if (!c.wrap) continue;
            const double need = textHeight(font({}), resolve(c.text, row, c.format), c.width - 2 * kPadX, true) + 2 * kPadY;
            h = std::max(h, need);
        }
        return h;
    }

    void placeText(double x, double y, double w, double h, const QString& text, const QFont& f, Qt::Alignment align, bool wrap,
                   unsigned frame, double lineWidth) {
        TPlacedItem p;
        p.rect = QRectF(x, y, w, h);
        p.text = text;
        p.font = f;
        p.align = align;
        p.wrap = wrap;
        p.frame = frame;
        p.lineWidth = lineWidth;
        page().items.push_back(p);
    }

    void placeBand(const TReportBand& band, double y, int row, double height) {
        const double grow = height - band.height;
        for (const TReportItem& it : band.items) {
            if (it.kind == TReportItem::Line) {
                TPlacedItem p;
                p.kind = TReportItem::Line;
                p.rect = it.rect.translated(left_, y);
                p.lineWidth = it.lineWidth;
                page().items.push_back(p);
                continue;
            }
            // A stretched band takes its framed cells down with it, so that
            // the rules of a table row stay closed.
            const double h = band.stretch && it.rect.bottom() >= band.height - kEps ? it.rect.height() + grow : it.rect.height();
            placeText(left_ + it.rect.left(), y + it.rect.top(), it.rect.width(), h, resolve(it.text, row, it.format), font(it.font),
                      it.align, it.wrap, it.frame, it.lineWidth);
        }
        double x = left_;
        for (const TReportColumn& c : band.columns) {
            placeText(x, y, c.width, height, resolve(c.text, row, c.format), font({}), c.align, c.wrap, band.cellFrame, 0.2);
            x += c.width;
        }
    }

    void placeTitles(const TReportBand& detail) {
        TReportFont tf = detail.titleFont;
        if (!tf.bold) tf.bold = true;
        double x = left_;
        for (const TReportColumn& c : detail.columns) {
            placeText(x, y_, c.width, detail.titleHeight, c.title, font(tf), Qt::AlignCenter, true, detail.cellFrame, 0.2);
            x += c.width;
        }
        y_ += detail.titleHeight;
    }

    TPreparedPage& page() { return r_.pages.back(); }

    void finishPage() {
        if (const TReportBand* footer = l_.Band(TReportBand::PageFooter)) placeBand(*footer, footerTop_, lastRow_, footer->height);
    }

    void newPage(bool first, int row) {
        if (!first) finishPage();
        r_.pages.emplace_back();
        y_ = top_;
        rowsOnPage_ = 0;
        for (TReportBand::Kind k : {TReportBand::Title, TReportBand::PageHeader, TReportBand::ColumnHeader}) {
            if (k == TReportBand::Title && !first) continue;
            if (const TReportBand* b = l_.Band(k)) {
                placeBand(*b, y_, row, b->height);
                y_ += b->height;
            }
        }
        const TReportBand* detail = l_.Band(TReportBand::Detail);
        if (detail && !detail->columns.empty() && detail->columnTitles) placeTitles(*detail);
    }

    const TReportLayout& l_;
    const QHash<QString, QString>& vars_;
    const TMidasQuery* data_;
    TReportFont pageFont_;
    int rows_ = -1;
    TPreparedReport r_;
    double left_ = 0, top_ = 0, footerTop_ = 0, y_ = 0;
    int rowsOnPage_ = 0;
    int lastRow_ = -1;
};

}  // namespace

QPageLayout TPreparedReport::PageLayout() const { return QPageLayout(QPageSize(size), orientation, QMarginsF(0, 0, 0, 0)); }

QHash<QString, QString> ParseVariables(const QString& reportName, const QStringList& lines) {
    QHash<QString, QString> vars;
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.isEmpty()) continue;
        const int eq = int(line.indexOf(QLatin1Char('=')));
        const QString name = eq < 0 ? QString() : line.left(eq).trimmed();
        static const QRegularExpression ident(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
        if (!ident.match(name).hasMatch())
            throw EReportError(QStringLiteral("Report \"%1\": the variable line \"%2\" is not Name='value'").arg(reportName, raw));
        QString value = line.mid(eq + 1).trimmed();
        if (value.size() >= 2 && value.startsWith(QLatin1Char('\'')) && value.endsWith(QLatin1Char('\'')))
            value = value.mid(1, value.size() - 2).replace(QStringLiteral("''"), QStringLiteral("'"));
        vars.insert(name.toUpper(), value);
    }
    return vars;
}

QFont MakeFont(const TReportFont& f) {
    const QString fam = f.family;
    const bool serif = fam == QStringLiteral("宋体") || fam.compare(QLatin1String("SimSun"), Qt::CaseInsensitive) == 0 ||
                       fam == QStringLiteral("仿宋") || fam == QStringLiteral("楷体") || fam == QStringLiteral("新宋体");
    const bool sans = fam == QStringLiteral("黑体") || fam.compare(QLatin1String("SimHei"), Qt::CaseInsensitive) == 0 ||
                      fam == QStringLiteral("微软雅黑");
    QStringList candidates{fam};
    if (serif) candidates << QStringLiteral("SimSun") << QStringLiteral("Noto Serif CJK SC") << QStringLiteral("Source Han Serif SC");
    if (sans || serif) candidates << QStringLiteral("SimHei") << QStringLiteral("Noto Sans CJK SC") << QStringLiteral("Source Han Sans SC");
    // Only families that are installed: fontconfig would otherwise stand a
    // Latin sans font in for the first name and the serif never be reached.
    QStringList families;
    for (const QString& c : candidates)
        if (!c.isEmpty() && QFontDatabase::hasFamily(c) && !families.contains(c)) families << c;
    if (families.isEmpty()) families << fam;
    QFont font;
    font.setFamilies(families);
    font.setPointSizeF(f.size.value_or(10));
    font.setBold(f.bold.value_or(false));
    font.setItalic(f.italic.value_or(false));
    font.setUnderline(f.underline.value_or(false));
    return font;
}

TPreparedReport PrepareReport(const TReportLayout& layout, const QHash<QString, QString>& variables, const TMidasQuery* data) {
    return Engine(layout, variables, data).run();
}

void PaintPage(QPainter& painter, const TPreparedReport& report, int index, double k) {
    const TPreparedPage& page = report.pages.at(std::size_t(index));
    const QString pageNo = QString::number(index + 1), pages = QString::number(report.pages.size());
    const auto px = [k](const QRectF& r) { return QRectF(r.left() * k, r.top() * k, r.width() * k, r.height() * k); };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const TPlacedItem& it : page.items) {
        QPen pen(Qt::black, std::max(1.0, it.lineWidth * k));
        pen.setCapStyle(Qt::SquareCap);
        painter.setPen(pen);
        if (it.kind == TReportItem::Line) {
            painter.drawLine(QPointF(it.rect.left() * k, it.rect.top() * k), QPointF(it.rect.right() * k, it.rect.bottom() * k));
            continue;
        }
        const QRectF r = px(it.rect);
        if (it.frame & FrameLeft) painter.drawLine(r.topLeft(), r.bottomLeft());
        if (it.frame & FrameTop) painter.drawLine(r.topLeft(), r.topRight());
        if (it.frame & FrameRight) painter.drawLine(r.topRight(), r.bottomRight());
        if (it.frame & FrameBottom) painter.drawLine(r.bottomLeft(), r.bottomRight());
        QString text = it.text;
        text.replace(kPageToken, pageNo).replace(kPagesToken, pages);
        if (text.isEmpty()) continue;
        const QRectF inner = it.frame ? r.adjusted(kPadX * k, kPadY * k, -kPadX * k, -kPadY * k) : r;
        painter.setFont(it.font);
        painter.setPen(Qt::black);
        painter.save();
        painter.setClipRect(r);
        painter.drawText(inner, textFlags(it.align, it.wrap), text);
        painter.restore();
    }
    painter.restore();
}

}  // namespace tarvin::report
