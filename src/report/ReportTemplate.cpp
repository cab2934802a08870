#include "ReportTemplate.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

namespace tarvin::report {

namespace {

// Reads one JSON object, remembering which keys were used so that a key
// nobody reads (a misspelt one) is reported.
class Reader {
public:
    Reader(const QString& report, const QJsonObject& o, const QString& path) : report_(report), o_(o), path_(path) {}

    [[noreturn]] void fail(const QString& key, const QString& what) const {
        const QString where = key.isEmpty() ? path_ : (path_.isEmpty() ? key : path_ + QLatin1Char('.') + key);
        throw EReportError(QStringLiteral("Report \"%1\": %2: %3").arg(report_, where.isEmpty() ? QStringLiteral("template") : where, what));
    }
    QString path(const QString& key) const { return path_.isEmpty() ? key : path_ + QLatin1Char('.') + key; }
    const QString& report() const { return report_; }

    bool has(const QString& key) {
        used_ << key;
        return o_.contains(key);
    }
    QJsonValue value(const QString& key) {
        used_ << key;
        return o_.value(key);
    }
    double number(const QString& key, double fallback, bool required = false) {
        const QJsonValue v = value(key);
        if (v.isUndefined()) {
            if (required) fail(key, QStringLiteral("is missing"));
            return fallback;
        }
        if (!v.isDouble()) fail(key, QStringLiteral("must be a number (millimetres)"));
        return v.toDouble();
    }
    QString text(const QString& key, const QString& fallback = QString()) {
        const QJsonValue v = value(key);
        if (v.isUndefined()) return fallback;
        if (!v.isString()) fail(key, QStringLiteral("must be a text"));
        return v.toString();
    }
    bool flag(const QString& key, bool fallback) {
        const QJsonValue v = value(key);
        if (v.isUndefined()) return fallback;
        if (!v.isBool()) fail(key, QStringLiteral("must be true or false"));
        return v.toBool();
    }
    QJsonArray array(const QString& key) {
        const QJsonValue v = value(key);
        if (v.isUndefined()) return {};
        if (!v.isArray()) fail(key, QStringLiteral("must be a list [...]"));
        return v.toArray();
    }
    QJsonObject object(const QString& key) {
        const QJsonValue v = value(key);
        if (v.isUndefined()) return {};
        if (!v.isObject()) fail(key, QStringLiteral("must be an object {...}"));
        return v.toObject();
    }
    // One of `names` (case-insensitive), returned as its index.
    int choice(const QString& key, const QStringList& names, int fallback) {
        const QJsonValue v = value(key);
        if (v.isUndefined()) return fallback;
        for (int i = 0; i < names.size(); ++i)
            if (v.isString() && v.toString().compare(names[i], Qt::CaseInsensitive) == 0) return i;
        fail(key, QStringLiteral("\"%1\" is not one of %2").arg(v.toVariant().toString(), names.join(QStringLiteral(", "))));
    }
    void done() const {
        for (auto it = o_.begin(); it != o_.end(); ++it)
            if (!used_.contains(it.key())) fail(it.key(), QStringLiteral("unknown key"));
    }

private:
    QString report_;
    QJsonObject o_;
    QString path_;
    QStringList used_;
};

QJsonObject objectAt(const Reader& parent, const QJsonArray& list, int i, const QString& listKey) {
    if (!list.at(i).isObject())
        parent.fail(QStringLiteral("%1[%2]").arg(listKey).arg(i), QStringLiteral("must be an object {...}"));
    return list.at(i).toObject();
}

TReportFont readFont(Reader& parent, const QString& key) {
    TReportFont f;
    if (!parent.has(key)) return f;
    Reader r(parent.report(), parent.object(key), parent.path(key));
    f.family = r.text(QStringLiteral("family"));
    if (r.has(QStringLiteral("size"))) {
        f.size = r.number(QStringLiteral("size"), 10);
        if (!(*f.size > 0)) r.fail(QStringLiteral("size"), QStringLiteral("must be above 0 (points)"));
    }
    if (r.has(QStringLiteral("bold"))) f.bold = r.flag(QStringLiteral("bold"), false);
    if (r.has(QStringLiteral("italic"))) f.italic = r.flag(QStringLiteral("italic"), false);
    if (r.has(QStringLiteral("underline"))) f.underline = r.flag(QStringLiteral("underline"), false);
    r.done();
    return f;
}

Qt::Alignment readAlign(Reader& r, Qt::Alignment fallback) {
    static const QStringList h{QStringLiteral("left"), QStringLiteral("center"), QStringLiteral("right"), QStringLiteral("justify")};
    static const Qt::Alignment hv[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignJustify};
    static const QStringList v{QStringLiteral("top"), QStringLiteral("middle"), QStringLiteral("bottom")};
    static const Qt::Alignment vv[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    const int hi = r.choice(QStringLiteral("align"), h, -1);
    const int vi = r.choice(QStringLiteral("valign"), v, -1);
    Qt::Alignment a = fallback;
    if (hi >= 0) a = (a & Qt::AlignVertical_Mask) | hv[hi];
    if (vi >= 0) a = (a & Qt::AlignHorizontal_Mask) | vv[vi];
    return a;
}

unsigned readFrame(Reader& r, const QString& key, unsigned fallback) {
    const QJsonValue v = r.value(key);
    if (v.isUndefined()) return fallback;
    QStringList sides;
    if (v.isString()) sides = v.toString().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    else if (v.isArray())
        for (const QJsonValue& s : v.toArray()) sides << s.toString(QStringLiteral("?"));
    else r.fail(key, QStringLiteral("must be \"all\", \"none\" or sides such as \"left top\""));
    unsigned frame = FrameNone;
    for (const QString& s : sides) {
        const QString side = s.toLower();
        if (side == QLatin1String("all")) frame |= FrameAll;
        else if (side == QLatin1String("none")) continue;
        else if (side == QLatin1String("left")) frame |= FrameLeft;
        else if (side == QLatin1String("top")) frame |= FrameTop;
        else if (side == QLatin1String("right")) frame |= FrameRight;
        else if (side == QLatin1String("bottom")) frame |= FrameBottom;
        else r.fail(key, QStringLiteral("\"%1\" is not a side (all, none, left, top, right, bottom)").arg(s));
    }
    return frame;
}

void readItem(Reader& r, TReportBand& band, double printableWidth) {
    TReportItem it;
    it.name = r.text(QStringLiteral("name"));
    const bool isLine = r.has(QStringLiteral("line"));
    const bool isText = r.has(QStringLiteral("text"));
    if (isLine == isText) r.fail(QString(), QStringLiteral("an item has either \"text\" or \"line\""));
    if (isLine) {
        const QJsonArray p = r.array(QStringLiteral("line"));
        if (p.size() != 4 || !p[0].isDouble() || !p[1].isDouble() || !p[2].isDouble() || !p[3].isDouble())
            r.fail(QStringLiteral("line"), QStringLiteral("must be [x1, y1, x2, y2] in millimetres"));
        it.kind = TReportItem::Line;
        it.rect = QRectF(QPointF(p[0].toDouble(), p[1].toDouble()), QPointF(p[2].toDouble(), p[3].toDouble()));
        it.lineWidth = r.number(QStringLiteral("lineWidth"), it.lineWidth);
    } else {
        it.text = r.text(QStringLiteral("text"));
        const double x = r.number(QStringLiteral("x"), 0), y = r.number(QStringLiteral("y"), 0);
        const double w = r.number(QStringLiteral("w"), printableWidth - x), h = r.number(QStringLiteral("h"), band.height - y);
        it.rect = QRectF(x, y, w, h);
        it.font = readFont(r, QStringLiteral("font"));
        it.align = readAlign(r, it.align);
        it.wrap = r.flag(QStringLiteral("wrap"), false);
        it.frame = readFrame(r, QStringLiteral("frame"), FrameNone);
        it.lineWidth = r.number(QStringLiteral("lineWidth"), it.lineWidth);
        it.format = r.text(QStringLiteral("format"));
    }
    if (!(it.lineWidth > 0)) r.fail(QStringLiteral("lineWidth"), QStringLiteral("must be above 0"));
    r.done();
    band.items.push_back(it);
}

void readColumn(Reader& r, TReportBand& band) {
    TReportColumn c;
    c.title = r.text(QStringLiteral("title"));
    const bool hasField = r.has(QStringLiteral("field")), hasText = r.has(QStringLiteral("text"));
    if (hasField == hasText) r.fail(QString(), QStringLiteral("a column has either \"field\" or \"text\""));
    c.text = hasField ? QLatin1Char('[') + r.text(QStringLiteral("field")) + QLatin1Char(']') : r.text(QStringLiteral("text"));
    c.width = r.number(QStringLiteral("width"), 0, true);
    if (!(c.width > 0)) r.fail(QStringLiteral("width"), QStringLiteral("must be above 0"));
    c.align = readAlign(r, c.align);
    c.wrap = r.flag(QStringLiteral("wrap"), false);
    c.format = r.text(QStringLiteral("format"));
    r.done();
    band.columns.push_back(c);
}

QString lineAndColumn(const QString& text, int offset) {
    int line = 1, column = 1;
    for (int i = 0; i < offset && i < text.size(); ++i) {
        if (text[i] == QLatin1Char('\n')) ++line, column = 1;
        else ++column;
    }
    return QStringLiteral("line %1, column %2").arg(line).arg(column);
}

}  // namespace

TReportLayout ParseTemplate(const QString& reportName, const QString& text) {
    if (text.trimmed().isEmpty()) throw EReportError(QStringLiteral("Report \"%1\": the template is empty").arg(reportName));
    const QByteArray utf8 = text.toUtf8();
    QJsonParseError err;
    const QJsonDocument doc = QJsonDocument::fromJson(utf8, &err);
    if (err.error != QJsonParseError::NoError) {
        // The parser counts bytes; the position is told in characters.
        const int chars = QString::fromUtf8(utf8.left(err.offset)).size();
        throw EReportError(QStringLiteral("Report \"%1\": %2: the template is not valid JSON: %3")
                               .arg(reportName, lineAndColumn(text, chars), err.errorString()));
    }
    if (!doc.isObject()) throw EReportError(QStringLiteral("Report \"%1\": the template must be one JSON object {...}").arg(reportName));

    TReportLayout layout(reportName);
    Reader root(reportName, doc.object(), QString());
    {
        Reader p(reportName, root.object(QStringLiteral("page")), QStringLiteral("page"));
        static const QStringList sizes{QStringLiteral("A4"), QStringLiteral("A3"), QStringLiteral("A5"), QStringLiteral("B5"),
                                       QStringLiteral("Letter"), QStringLiteral("Legal")};
        static const QPageSize::PageSizeId ids[] = {QPageSize::A4, QPageSize::A3, QPageSize::A5, QPageSize::B5, QPageSize::Letter, QPageSize::Legal};
        layout.Page().size = ids[p.choice(QStringLiteral("size"), sizes, 0)];
        layout.Page().orientation = p.choice(QStringLiteral("orientation"), {QStringLiteral("portrait"), QStringLiteral("landscape")}, 0) == 1
                                        ? QPageLayout::Landscape
                                        : QPageLayout::Portrait;
        const QJsonValue m = p.value(QStringLiteral("margins"));
        if (m.isDouble()) {
            const double v = m.toDouble();
            layout.Page().margins = QMarginsF(v, v, v, v);
        } else if (m.isArray()) {
            const QJsonArray a = m.toArray();
            if (a.size() != 4 || !a[0].isDouble() || !a[1].isDouble() || !a[2].isDouble() || !a[3].isDouble())
                p.fail(QStringLiteral("margins"), QStringLiteral("must be one number or [left, top, right, bottom] in millimetres"));
            layout.Page().margins = QMarginsF(a[0].toDouble(), a[1].toDouble(), a[2].toDouble(), a[3].toDouble());
        } else if (!m.isUndefined()) {
            p.fail(QStringLiteral("margins"), QStringLiteral("must be one number or [left, top, right, bottom] in millimetres"));
        }
        layout.Page().font = readFont(p, QStringLiteral("font"));
        p.done();
    }

    if (!root.has(QStringLiteral("bands"))) root.fail(QStringLiteral("bands"), QStringLiteral("is missing: a report needs at least one band"));
    const QJsonArray bands = root.array(QStringLiteral("bands"));
    static const QStringList kinds{QStringLiteral("title"),  QStringLiteral("pageHeader"), QStringLiteral("columnHeader"),
                                   QStringLiteral("detail"), QStringLiteral("summary"),    QStringLiteral("pageFooter")};
    for (int i = 0; i < bands.size(); ++i) {
        const QString path = QStringLiteral("bands[%1]").arg(i);
        Reader b(reportName, objectAt(root, bands, i, QStringLiteral("bands")), path);
        if (!b.has(QStringLiteral("band"))) b.fail(QStringLiteral("band"), QStringLiteral("is missing: one of %1").arg(kinds.join(QStringLiteral(", "))));
        const auto kind = static_cast<TReportBand::Kind>(b.choice(QStringLiteral("band"), kinds, 0));
        if (layout.Band(kind)) b.fail(QStringLiteral("band"), QStringLiteral("a second %1 band; a report has one band of each kind").arg(kinds[kind]));
        TReportBand& band = layout.AddBand(kind, b.number(QStringLiteral("height"), 0, true));
        // The table keys belong to the detail band; on another band they are
        // left unread and so reported as unknown.
        const bool detail = kind == TReportBand::Detail;
        if (detail) band.stretch = b.flag(QStringLiteral("stretch"), false);
        const QJsonArray items = b.array(QStringLiteral("items"));
        for (int k = 0; k < items.size(); ++k) {
            Reader r(reportName, objectAt(b, items, k, QStringLiteral("items")), QStringLiteral("%1.items[%2]").arg(path).arg(k));
            readItem(r, band, layout.PrintableWidth());
        }
        const QJsonArray columns = b.array(QStringLiteral("columns"));
        if (!columns.isEmpty() && !detail) b.fail(QStringLiteral("columns"), QStringLiteral("only the detail band has columns"));
        for (int k = 0; k < columns.size(); ++k) {
            Reader r(reportName, objectAt(b, columns, k, QStringLiteral("columns")), QStringLiteral("%1.columns[%2]").arg(path).arg(k));
            readColumn(r, band);
        }
        if (detail) {
            band.columnTitles = b.flag(QStringLiteral("titles"), true);
            band.titleHeight = b.number(QStringLiteral("titleHeight"), band.titleHeight);
            band.titleFont = readFont(b, QStringLiteral("titleFont"));
            band.cellFrame = readFrame(b, QStringLiteral("frame"), FrameAll);
        }
        b.done();
    }
    root.done();
    layout.Validate();
    return layout;
}

}  // namespace tarvin::report
