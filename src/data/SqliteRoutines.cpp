// The database routines on SQLite. Each is a scalar function registered on
// the connection; the routines that read or write tables run their
// statements on the caller's own handle, inside the caller's statement and
// transaction, as a stored routine would. Date-times are the canonical text
// 'YYYY-MM-DD HH:MM:SS'.
#include "SqliteRoutines.h"

#include <QDate>
#include <QDateTime>
#include <QRegularExpression>
#include <QString>
#include <cmath>
#include <map>
#include <mutex>
#include <optional>
#include <sqlite3.h>

namespace tarvin::sqlite {

namespace {

constexpr qint64 kSecondsPerDay = 86400;
constexpr qint64 kLastNumber = 9999999999LL;

// ---------------------------------------------------------------------------
// Per-connection state: the fixed clock, and the prepared statement of
// jc_pjdlbd, which the screening calls once per customer and month (kept
// prepared it costs a fifth of preparing it each time). The state is the
// user data of tarvin_sysdate, so SQLite frees it when the connection
// closes or the routines are registered again; the map finds it from the
// handle. A prepared statement would stop sqlite3_close, so the connection's
// close trace (which SQLite sends before it checks for open statements)
// finalizes it first.

struct State {
    sqlite3* db;
    QDateTime fixed;  // invalid: the real local time
    sqlite3_stmt* swing = nullptr;

    void release() {
        sqlite3_finalize(swing);
        swing = nullptr;
    }
};

std::mutex& stateMutex() {
    static auto* m = new std::mutex;  // never destroyed: connections may close during exit
    return *m;
}

std::map<sqlite3*, State*>& states() {
    static auto* m = new std::map<sqlite3*, State*>;
    return *m;
}

void destroyState(void* p) {
    auto* state = static_cast<State*>(p);
    {
        std::lock_guard lock(stateMutex());
        auto it = states().find(state->db);
        if (it != states().end() && it->second == state) states().erase(it);
    }
    state->release();
    delete state;
}

int onTrace(unsigned type, void* ctx, void*, void*) {
    if (type == SQLITE_TRACE_CLOSE) static_cast<State*>(ctx)->release();
    return 0;
}

QDateTime now(sqlite3* db) {
    {
        std::lock_guard lock(stateMutex());
        auto it = states().find(db);
        if (it != states().end() && it->second->fixed.isValid()) return it->second->fixed;
    }
    return QDateTime::currentDateTime();
}

// ---------------------------------------------------------------------------
// Date-times as seconds since the start of the Julian day count; no time
// zone enters the arithmetic.

qint64 toSeconds(int y, int mo, int d, int h, int mi, int s) {
    return QDate(y, mo, d).toJulianDay() * kSecondsPerDay + h * 3600 + mi * 60 + s;
}

qint64 toSeconds(const QDateTime& dt) {
    const QTime t = dt.time();
    return dt.date().toJulianDay() * kSecondsPerDay + t.hour() * 3600 + t.minute() * 60 + t.second();
}

struct Parts {
    int year, month, day, hour, minute, second;
};

Parts partsOf(qint64 secs) {
    qint64 days = secs / kSecondsPerDay;
    qint64 rest = secs % kSecondsPerDay;
    if (rest < 0) {
        rest += kSecondsPerDay;
        --days;
    }
    const QDate d = QDate::fromJulianDay(days);
    return {d.year(), d.month(), d.day(), int(rest / 3600), int(rest % 3600 / 60), int(rest % 60)};
}

QString canonical(qint64 secs) {
    const Parts p = partsOf(secs);
    return QString::asprintf("%04d-%02d-%02d %02d:%02d:%02d", p.year, p.month, p.day, p.hour, p.minute, p.second);
}

// 'YYYY-MM-DD', 'YYYY-MM-DD HH:MM[:SS[.fff]]' (also with a 'T').
std::optional<qint64> parseCanonical(const QString& text) {
    static const QRegularExpression re(QStringLiteral(
        R"(^\s*(\d{4})-(\d{1,2})-(\d{1,2})(?:[ T](\d{1,2}):(\d{1,2})(?::(\d{1,2})(?:\.\d*)?)?)?\s*$)"));
    const auto m = re.match(text);
    if (!m.hasMatch()) return std::nullopt;
    const int y = m.captured(1).toInt(), mo = m.captured(2).toInt(), d = m.captured(3).toInt();
    const int h = m.captured(4).toInt(), mi = m.captured(5).toInt(), s = m.captured(6).toInt();
    if (!QDate::isValid(y, mo, d) || h > 23 || mi > 59 || s > 59) return std::nullopt;
    return toSeconds(y, mo, d, h, mi, s);
}

// ---------------------------------------------------------------------------
// Values.

QString textOf(sqlite3_value* v) {
    const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
    return p ? QString::fromUtf8(p, sqlite3_value_bytes(v)) : QString();
}

// A number given as a number or as its text ('3', ' 30 '); nullopt otherwise.
std::optional<double> numberOf(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
    case SQLITE_INTEGER: return double(sqlite3_value_int64(v));
    case SQLITE_FLOAT: return sqlite3_value_double(v);
    case SQLITE_TEXT: {
        bool ok = false;
        const double d = textOf(v).trimmed().toDouble(&ok);
        if (ok) return d;
        return std::nullopt;
    }
    default: return std::nullopt;
    }
}

bool anyNull(int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return true;
    return false;
}

void resultText(sqlite3_context* ctx, const QString& s) {
    const QByteArray utf8 = s.toUtf8();
    sqlite3_result_text(ctx, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

void resultError(sqlite3_context* ctx, const QString& message) {
    const QByteArray utf8 = message.toUtf8();
    sqlite3_result_error(ctx, utf8.constData(), int(utf8.size()));
}

// Reports the handle's error (a busy database, a missing table) to the caller.
void resultDbError(sqlite3_context* ctx, sqlite3* db, int rc, const char* routine) {
    resultError(ctx, QStringLiteral("%1: %2").arg(QLatin1String(routine), QString::fromUtf8(sqlite3_errmsg(db))));
    sqlite3_result_error_code(ctx, rc);
}

// One statement on the caller's handle: prepared here and finalized
// whatever happens, or a kept statement, reset and unbound after use.
class Statement {
public:
    Statement(sqlite3* db, const char* sql) { rc_ = sqlite3_prepare_v2(db, sql, -1, &stmt_, nullptr); }
    explicit Statement(sqlite3_stmt* kept) : stmt_(kept), kept_(true) {}
    Statement(Statement&& other) noexcept : stmt_(other.stmt_), kept_(other.kept_), rc_(other.rc_) { other.stmt_ = nullptr; }
    ~Statement() {
        if (!kept_) {
            sqlite3_finalize(stmt_);
        } else if (stmt_) {
            sqlite3_reset(stmt_);
            sqlite3_clear_bindings(stmt_);
        }
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    bool ok() const { return rc_ == SQLITE_OK || rc_ == SQLITE_ROW || rc_ == SQLITE_DONE; }
    int rc() const { return rc_; }
    void bind(int i, const QString& s) {
        const QByteArray utf8 = s.toUtf8();
        if (ok()) rc_ = sqlite3_bind_text(stmt_, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }
    void bind(int i, sqlite3_value* v) {
        if (ok()) rc_ = sqlite3_bind_value(stmt_, i, v);
    }
    // Steps once: true on a row.
    bool step() {
        if (!ok()) return false;
        rc_ = sqlite3_step(stmt_);
        return rc_ == SQLITE_ROW;
    }
    // Runs to the end (statements with RETURNING finish their writes then).
    void finish() {
        while (step()) {
        }
    }
    bool isNull(int col) const { return sqlite3_column_type(stmt_, col) == SQLITE_NULL; }
    double doubleAt(int col) const { return sqlite3_column_double(stmt_, col); }
    qint64 int64At(int col) const { return sqlite3_column_int64(stmt_, col); }

private:
    sqlite3_stmt* stmt_ = nullptr;
    bool kept_ = false;
    int rc_ = SQLITE_OK;
};

// ---------------------------------------------------------------------------
// Oracle format models: YYYY, YY, MM, DD, HH24, HH12, HH, MI, SS, AM/PM,
// FM (fill mode: no leading zeros), "quoted text"; any other character
// stands for itself. Matched without regard to case.

enum class Field { Year4, Year2, Month, Day, Hour24, Hour12, Minute, Second, Meridian, FillMode, Literal };

struct Element {
    Field field;
    QString text;  // Literal
};

QList<Element> parseModel(const QString& fmt) {
    static const struct {
        const char* name;
        Field field;
    } kTokens[] = {{"YYYY", Field::Year4}, {"HH24", Field::Hour24}, {"HH12", Field::Hour12}, {"YY", Field::Year2},
                   {"MM", Field::Month},   {"DD", Field::Day},       {"HH", Field::Hour12},   {"MI", Field::Minute},
                   {"SS", Field::Second},  {"AM", Field::Meridian},  {"PM", Field::Meridian}, {"FM", Field::FillMode}};
    QList<Element> out;
    qsizetype i = 0;
    while (i < fmt.size()) {
        if (fmt[i] == QLatin1Char('"')) {
            const qsizetype end = fmt.indexOf(QLatin1Char('"'), i + 1);
            const qsizetype stop = end < 0 ? fmt.size() : end;
            out.append({Field::Literal, fmt.mid(i + 1, stop - i - 1)});
            i = stop + 1;
            continue;
        }
        bool matched = false;
        for (const auto& t : kTokens) {
            const QLatin1String name(t.name);
            if (fmt.mid(i, name.size()).compare(name, Qt::CaseInsensitive) == 0) {
                out.append({t.field, {}});
                i += name.size();
                matched = true;
                break;
            }
        }
        if (!matched) out.append({Field::Literal, QString(fmt[i++])});
    }
    return out;
}

QString formatDate(qint64 secs, const QString& fmt) {
    const Parts p = partsOf(secs);
    QString out;
    bool fill = false;
    const auto num = [&](int v, int width) {
        out += fill ? QString::number(v) : QString::number(v).rightJustified(width, QLatin1Char('0'));
    };
    for (const Element& e : parseModel(fmt)) {
        switch (e.field) {
        case Field::Year4: num(p.year, 4); break;
        case Field::Year2: num(p.year % 100, 2); break;
        case Field::Month: num(p.month, 2); break;
        case Field::Day: num(p.day, 2); break;
        case Field::Hour24: num(p.hour, 2); break;
        case Field::Hour12: num(p.hour % 12 == 0 ? 12 : p.hour % 12, 2); break;
        case Field::Minute: num(p.minute, 2); break;
        case Field::Second: num(p.second, 2); break;
        case Field::Meridian: out += p.hour < 12 ? QStringLiteral("AM") : QStringLiteral("PM"); break;
        case Field::FillMode: fill = !fill; break;
        case Field::Literal: out += e.text; break;
        }
    }
    return out;
}

// Number models: 9 (digit), 0 (digit, leading zeros from here on), '.',
// ',' and a leading FM. Like Oracle, the text is led by the sign place (a
// blank for a positive number) unless FM is given; a number too wide for
// the model fills it with '#' (after the sign place, as PostgreSQL does).
bool isNumberModel(const QString& fmt) {
    static const QRegularExpression re(QStringLiteral("^(?:[Ff][Mm])?[09,]*(?:\\.[09]*)?$"));
    return !fmt.isEmpty() && re.match(fmt).hasMatch() && fmt.contains(QRegularExpression(QStringLiteral("[09]")));
}

QString formatNumber(double value, QString fmt) {
    bool fill = false;
    if (fmt.startsWith(QLatin1String("FM"), Qt::CaseInsensitive)) {
        fill = true;
        fmt = fmt.mid(2);
    }
    const qsizetype dot = fmt.indexOf(QLatin1Char('.'));
    const QString intModel = dot < 0 ? fmt : fmt.left(dot);
    const QString fracModel = dot < 0 ? QString() : fmt.mid(dot + 1);
    const int fracDigits = int(fracModel.size());
    const QString digits = QString::number(std::fabs(value), 'f', fracDigits);
    QString intDigits = digits.section(QLatin1Char('.'), 0, 0);
    const QString fracText = fracDigits > 0 ? digits.section(QLatin1Char('.'), 1, 1) : QString();
    const int places = int(intModel.count(QLatin1Char('9')) + intModel.count(QLatin1Char('0')));
    const qsizetype firstZero = intModel.indexOf(QLatin1Char('0'));
    if (intDigits == QLatin1String("0") && firstZero < 0 && (fracDigits > 0 || places == 0)) intDigits.clear();
    if (intDigits.size() > places) return (fill ? QString() : QStringLiteral(" ")) + QString(int(fmt.size()), QLatin1Char('#'));
    // Fill the integer model from the right.
    QString intText;
    qsizetype d = intDigits.size() - 1;
    for (qsizetype i = intModel.size() - 1; i >= 0; --i) {
        const QChar m = intModel[i];
        const bool forced = firstZero >= 0 && i >= firstZero;
        if (m == QLatin1Char(',')) {
            if (d >= 0 || forced) intText.prepend(QLatin1Char(','));
            else if (!fill) intText.prepend(QLatin1Char(' '));
            continue;
        }
        if (d >= 0) intText.prepend(intDigits[d--]);
        else if (forced) intText.prepend(QLatin1Char('0'));
        else if (!fill) intText.prepend(QLatin1Char(' '));
    }
    QString out = intText;
    if (dot >= 0) out += QLatin1Char('.') + fracText;
    const bool negative = value < 0 && digits.contains(QRegularExpression(QStringLiteral("[1-9]")));
    const QString sign = negative ? QStringLiteral("-") : (fill ? QString() : QStringLiteral(" "));
    // The sign goes right before the first digit, after the padding.
    qsizetype lead = 0;
    while (lead < out.size() && out[lead] == QLatin1Char(' ')) ++lead;
    return out.left(lead) + sign + out.mid(lead);
}

// A number as Oracle writes it without a model: no trailing zeros.
QString plainNumber(sqlite3_value* v) {
    if (sqlite3_value_type(v) == SQLITE_INTEGER) return QString::number(sqlite3_value_int64(v));
    QString s = QString::number(sqlite3_value_double(v), 'f', 10);
    while (s.contains(QLatin1Char('.')) && (s.endsWith(QLatin1Char('0')) || s.endsWith(QLatin1Char('.')))) s.chop(1);
    return s;
}

void toCharFn(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const int type = sqlite3_value_type(argv[0]);
    const bool isNumber = type == SQLITE_INTEGER || type == SQLITE_FLOAT;
    if (argc == 1) return resultText(ctx, isNumber ? plainNumber(argv[0]) : textOf(argv[0]));
    const QString fmt = textOf(argv[1]);
    if (isNumberModel(fmt)) {
        const auto n = numberOf(argv[0]);
        if (!n) return resultError(ctx, QStringLiteral("to_char: '%1' is not a number").arg(textOf(argv[0])));
        return resultText(ctx, formatNumber(*n, fmt));
    }
    if (isNumber) return resultError(ctx, QStringLiteral("to_char: %1 is a number, not a date").arg(plainNumber(argv[0])));
    const auto secs = parseCanonical(textOf(argv[0]));
    if (!secs) return resultError(ctx, QStringLiteral("to_char: '%1' is not a date").arg(textOf(argv[0])));
    resultText(ctx, formatDate(*secs, fmt));
}

// Reads a text by a format model. Like Oracle, a separator of the model
// matches any run of punctuation, fields may have fewer digits than their
// width, and the text may end before the model does: missing fields are
// January, the 1st and midnight (the year missing: this year's).
std::optional<qint64> parseByModel(const QString& text, const QString& fmt, int currentYear, QString* why) {
    int year = currentYear, month = 1, day = 1, hour = 0, minute = 0, second = 0;
    bool pm = false, hasMeridian = false, hour12 = false;
    const auto fail = [why](const QString& reason) {
        *why = reason;
        return std::optional<qint64>();
    };
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && text[i].isSpace()) ++i;
    const auto readNumber = [&](int width, int* out) -> bool {
        qsizetype j = i;
        while (j < n && j - i < width && text[j].isDigit()) ++j;
        if (j == i) return false;
        *out = text.mid(i, j - i).toInt();
        i = j;
        return true;
    };
    for (const Element& e : parseModel(fmt)) {
        if (i >= n) break;
        int v = 0;
        switch (e.field) {
        case Field::Year4:
            if (!readNumber(4, &year)) return fail(QStringLiteral("year expected"));
            break;
        case Field::Year2:
            if (!readNumber(2, &v)) return fail(QStringLiteral("year expected"));
            year = currentYear / 100 * 100 + v;
            break;
        case Field::Month:
            if (!readNumber(2, &month)) return fail(QStringLiteral("month expected"));
            break;
        case Field::Day:
            if (!readNumber(2, &day)) return fail(QStringLiteral("day expected"));
            break;
        case Field::Hour24:
            if (!readNumber(2, &hour)) return fail(QStringLiteral("hour expected"));
            break;
        case Field::Hour12:
            if (!readNumber(2, &hour)) return fail(QStringLiteral("hour expected"));
            hour12 = true;
            break;
        case Field::Minute:
            if (!readNumber(2, &minute)) return fail(QStringLiteral("minutes expected"));
            break;
        case Field::Second:
            if (!readNumber(2, &second)) return fail(QStringLiteral("seconds expected"));
            break;
        case Field::Meridian: {
            const QString m = text.mid(i, 2).toUpper();
            if (m != QLatin1String("AM") && m != QLatin1String("PM")) return fail(QStringLiteral("AM or PM expected"));
            pm = m == QLatin1String("PM");
            hasMeridian = true;
            i += 2;
            break;
        }
        case Field::FillMode: break;
        case Field::Literal:
            for (const QChar c : e.text) {
                if (i >= n) break;
                if (c.isLetterOrNumber()) {
                    if (text[i].toUpper() != c.toUpper()) return fail(QStringLiteral("'%1' expected").arg(c));
                    ++i;
                } else {
                    while (i < n && !text[i].isLetterOrNumber()) ++i;
                }
            }
            break;
        }
    }
    while (i < n && text[i].isSpace()) ++i;
    if (i < n) return fail(QStringLiteral("the format ends before the text"));
    if (hour12) {
        if (hour < 1 || hour > 12) return fail(QStringLiteral("hour must be between 1 and 12"));
        if (hasMeridian) hour = hour % 12 + (pm ? 12 : 0);
    }
    if (!QDate::isValid(year, month, day)) return fail(QStringLiteral("no such day"));
    if (hour > 23 || minute > 59 || second > 59) return fail(QStringLiteral("no such time of day"));
    return toSeconds(year, month, day, hour, minute, second);
}

void toDateFn(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const QString text = textOf(argv[0]);
    if (text.trimmed().isEmpty()) return sqlite3_result_null(ctx);
    if (argc == 1) {
        const auto secs = parseCanonical(text);
        if (!secs) return resultError(ctx, QStringLiteral("to_date: '%1' is not a date").arg(text));
        return resultText(ctx, canonical(*secs));
    }
    const QString fmt = textOf(argv[1]);
    QString why;
    const auto secs = parseByModel(text, fmt, now(sqlite3_context_db_handle(ctx)).date().year(), &why);
    if (!secs) return resultError(ctx, QStringLiteral("to_date: '%1' does not match the format '%2' (%3)").arg(text, fmt, why));
    resultText(ctx, canonical(*secs));
}

// ---------------------------------------------------------------------------
// The clock.

void sysdateFn(sqlite3_context* ctx, int, sqlite3_value**) {
    resultText(ctx, canonical(toSeconds(now(sqlite3_context_db_handle(ctx)))));
}

void dateAddFn(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    if (anyNull(argc, argv)) return sqlite3_result_null(ctx);
    const auto secs = parseCanonical(textOf(argv[0]));
    if (!secs) return resultError(ctx, QStringLiteral("tarvin_date_add: '%1' is not a date").arg(textOf(argv[0])));
    const auto days = numberOf(argv[1]);
    if (!days) return resultError(ctx, QStringLiteral("tarvin_date_add: '%1' is not a number of days").arg(textOf(argv[1])));
    resultText(ctx, canonical(*secs + std::llround(*days * kSecondsPerDay)));
}

// ---------------------------------------------------------------------------
// Numbering: the next value of a z_xlh sequence, as 10 zero-padded digits.

void nextNumberFn(sqlite3_context* ctx, int, sqlite3_value**) {
    const auto* name = static_cast<const char*>(sqlite3_user_data(ctx));
    sqlite3* db = sqlite3_context_db_handle(ctx);
    qint64 value = -1;
    {
        Statement st(db, "UPDATE z_xlh SET dqz = dqz + 1 WHERE xlm = ?1 AND dqz < zdz AND dqz < 9999999999 RETURNING dqz");
        st.bind(1, QString::fromLatin1(name));
        if (st.step()) value = st.int64At(0);
        st.finish();
        if (!st.ok()) {
            // A statement that read tables before drawing holds a snapshot that
            // another connection's write has made stale: it cannot write.
            if ((sqlite3_extended_errcode(db) & 0xff) == SQLITE_BUSY) {
                resultError(ctx, QStringLiteral("numbering: %1 (draw numbers with a SELECT of the function alone, "
                                                "or inside an immediate transaction)")
                                     .arg(QString::fromUtf8(sqlite3_errmsg(db))));
                return sqlite3_result_error_code(ctx, SQLITE_BUSY);
            }
            return resultDbError(ctx, db, st.rc(), "numbering");
        }
    }
    if (value < 0) {
        Statement st(db, "SELECT 1 FROM z_xlh WHERE xlm = ?1");
        st.bind(1, QString::fromLatin1(name));
        const bool known = st.step();
        if (!st.ok()) return resultDbError(ctx, db, st.rc(), "numbering");
        if (!known) return resultError(ctx, QStringLiteral("The number sequence %1 is missing from z_xlh").arg(QLatin1String(name)));
        return resultText(ctx, QStringLiteral("-1"));
    }
    if (value > kLastNumber) return resultText(ctx, QStringLiteral("-1"));
    resultText(ctx, QString::number(value).rightJustified(10, QLatin1Char('0')));
}

// ---------------------------------------------------------------------------
// Yk_UndoYysq(cdbh): withdraws what a business wrote under a document whose
// workflow start failed (same statements as the PostgreSQL function).

void undoYysqFn(sqlite3_context* ctx, int, sqlite3_value** argv) {
    static const char* const kDeletes[] = {
        "DELETE FROM a_khsqxx WHERE cdbh = ?1", "DELETE FROM a_ykkzb WHERE cdbh = ?1",
        "DELETE FROM a_dnbfa WHERE cdbh = ?1",  "DELETE FROM a_hgqfa WHERE cdbh = ?1",
        "DELETE FROM a_gdfa WHERE cdbh = ?1",   "DELETE FROM z_dqgw WHERE cdbh = ?1",
        "DELETE FROM z_lcls WHERE cdbh = ?1",   "DELETE FROM z_gzdxx WHERE cdbh = ?1"};
    sqlite3* db = sqlite3_context_db_handle(ctx);
    for (const char* sql : kDeletes) {
        Statement st(db, sql);
        st.bind(1, argv[0]);
        st.finish();
        if (!st.ok()) return resultDbError(ctx, db, st.rc(), "Yk_UndoYysq");
    }
    sqlite3_result_null(ctx);
}

// ---------------------------------------------------------------------------
// jc_pjdlbd(hh, ny, n, flag): the month's energy against the average of the
// n calendar months before it, in percent (see the PostgreSQL function for
// the rules; the two give the same results).

std::optional<int> monthIndex(const QString& ny) {
    static const QRegularExpression re(QStringLiteral("^(\\d{4})(0[1-9]|1[0-2])$"));
    const auto m = re.match(ny);
    if (!m.hasMatch()) return std::nullopt;
    return m.captured(1).toInt() * 12 + m.captured(2).toInt() - 1;
}

QString monthText(int index) { return QString::asprintf("%04d%02d", index / 12, index % 12 + 1); }

void pjdlbdFn(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) return sqlite3_result_null(ctx);
    const QString hh = textOf(argv[0]);
    const QString ny = textOf(argv[1]);
    const auto month = monthIndex(ny);
    const auto n = numberOf(argv[2]);
    if (!month || !n || std::trunc(*n) < 1) return sqlite3_result_null(ctx);
    const int months = int(std::min(std::trunc(*n), 100000.0));
    const bool keepSign = sqlite3_value_type(argv[3]) != SQLITE_NULL && textOf(argv[3]) == QLatin1String("0");
    sqlite3* db = sqlite3_context_db_handle(ctx);

    static const char* const kSwingSql =
        "SELECT (SELECT SUM(COALESCE(jffdl, 0) + COALESCE(jfpdl, 0) + COALESCE(jfgdl, 0)) "
        "          FROM b_dltzxx WHERE hh = ?1 AND ny = ?2), "
        "       (SELECT AVG(zdl) FROM (SELECT SUM(COALESCE(jffdl, 0) + COALESCE(jfpdl, 0) + COALESCE(jfgdl, 0)) AS zdl "
        "          FROM b_dltzxx WHERE hh = ?1 AND ny >= ?3 AND ny <= ?4 GROUP BY ny))";
    auto* state = static_cast<State*>(sqlite3_user_data(ctx));
    if (state && !state->swing && sqlite3_prepare_v3(db, kSwingSql, -1, SQLITE_PREPARE_PERSISTENT, &state->swing, nullptr) != SQLITE_OK)
        state->release();
    Statement st = state && state->swing ? Statement(state->swing) : Statement(db, kSwingSql);
    st.bind(1, hh);
    st.bind(2, ny);
    st.bind(3, monthText(*month - months));
    st.bind(4, monthText(*month - 1));
    const bool row = st.step();
    if (!st.ok()) return resultDbError(ctx, db, st.rc(), "jc_pjdlbd");
    if (!row || st.isNull(0) || st.isNull(1)) return sqlite3_result_null(ctx);
    const double cur = st.doubleAt(0);
    const double avg = st.doubleAt(1);
    if (avg == 0) return sqlite3_result_null(ctx);
    long double swing = ((long double)cur - avg) / avg * 100.0L;
    if (!keepSign) swing = std::fabs(swing);
    sqlite3_result_double(ctx, double(std::round(swing * 100.0L) / 100.0L));
}

// ---------------------------------------------------------------------------
// jc_jlyctbjl(cdbh, dm): records the refund/supplement totals of a metering
// anomaly case on its work sheet; dm 0 clears them (as the PostgreSQL
// function).

void jlyctbjlFn(sqlite3_context* ctx, int, sqlite3_value** argv) {
    sqlite3* db = sqlite3_context_db_handle(ctx);
    const auto dm = numberOf(argv[1]);
    const bool clear = dm && *dm == 0;
    const char* amounts = clear
        ? "UPDATE e_jlycgzd SET zbzdl = 0, zbdldf = 0, zbjbdf = 0, zblldf = 0 WHERE cdbh = ?1"
        : "UPDATE e_jlycgzd SET (zbzdl, zbdldf, zbjbdf, zblldf) = "
          "(SELECT COALESCE(SUM(COALESCE(d.fdl, 0) + COALESCE(d.gdl, 0) + COALESCE(d.pdl, 0)), 0), "
          "COALESCE(SUM(COALESCE(d.fdf, 0) + COALESCE(d.gdf, 0) + COALESCE(d.pdf, 0) + COALESCE(d.dsk6, 0) + COALESCE(d.dsk7, 0)), 0), "
          "COALESCE(SUM(COALESCE(d.rldf, 0) + COALESCE(d.xldf, 0)), 0), "
          "COALESCE(SUM(COALESCE(d.lldf, 0)), 0) "
          "FROM b_tbdfxx d WHERE d.tbcdh IN (SELECT j.tbcdh FROM b_tbjl j WHERE j.glcdbh = ?1)) "
          "WHERE cdbh = ?1";
    for (const char* sql : {amounts, "UPDATE e_jlycgzd SET yzbdf = zbdldf + zbjbdf + zblldf + COALESCE(wysydf, 0) WHERE cdbh = ?1"}) {
        Statement st(db, sql);
        st.bind(1, argv[0]);
        st.finish();
        if (!st.ok()) return resultDbError(ctx, db, st.rc(), "jc_jlyctbjl");
    }
    sqlite3_result_null(ctx);
}

// ---------------------------------------------------------------------------

void check(sqlite3* db, int rc, const char* name) {
    if (rc != SQLITE_OK)
        qWarning("Cannot register the SQLite routine %s: %s", name, sqlite3_errmsg(db));
}

}  // namespace

void registerRoutines(sqlite3* db) {
    if (!db) return;
    // The connection's state first: the other routines may carry it. A fixed
    // time set earlier on this handle survives registering again.
    auto* state = new State{db, {}};
    {
        std::lock_guard lock(stateMutex());
        auto it = states().find(db);
        if (it != states().end()) state->fixed = it->second->fixed;
    }
    // Deterministic: one value for the whole statement, as Oracle's sysdate;
    // SQLite then reads the clock once per run instead of once per row.
    const int rc = sqlite3_create_function_v2(db, "tarvin_sysdate", 0, SQLITE_UTF8 | SQLITE_DETERMINISTIC, state, sysdateFn, nullptr, nullptr, destroyState);
    check(db, rc, "tarvin_sysdate");
    if (rc == SQLITE_OK) {
        std::lock_guard lock(stateMutex());
        states()[db] = state;
        sqlite3_trace_v2(db, SQLITE_TRACE_CLOSE, onTrace, state);
    } else {
        state = nullptr;  // SQLite has freed it
    }

    constexpr int kPure = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    struct Fn {
        const char* name;
        int args;
        int flags;
        void (*fn)(sqlite3_context*, int, sqlite3_value**);
        void* data;
    };
    static char kCdbh[] = "CDBH", kGdfabh[] = "GDFABH", kDnbId[] = "DNBID", kJcph[] = "JCPH";
    const Fn fns[] = {
        {"to_char", 1, kPure, toCharFn, nullptr},
        {"to_char", 2, kPure, toCharFn, nullptr},
        {"to_date", 1, SQLITE_UTF8, toDateFn, nullptr},
        {"to_date", 2, SQLITE_UTF8, toDateFn, nullptr},
        {"tarvin_date_add", 2, kPure, dateAddFn, nullptr},
        {"GET_CDBH", 0, SQLITE_UTF8, nextNumberFn, kCdbh},
        {"GET_GDFABH", 0, SQLITE_UTF8, nextNumberFn, kGdfabh},
        {"GET_DNBID", 0, SQLITE_UTF8, nextNumberFn, kDnbId},
        {"GET_JCPH", 0, SQLITE_UTF8, nextNumberFn, kJcph},
        {"Yk_UndoYysq", 1, SQLITE_UTF8, undoYysqFn, nullptr},
        {"jc_pjdlbd", 4, SQLITE_UTF8, pjdlbdFn, state},
        {"jc_jlyctbjl", 2, SQLITE_UTF8, jlyctbjlFn, nullptr},
    };
    for (const Fn& f : fns)
        check(db, sqlite3_create_function_v2(db, f.name, f.args, f.flags, f.data, f.fn, nullptr, nullptr, nullptr), f.name);
}

bool hasRoutines(sqlite3* db) {
    std::lock_guard lock(stateMutex());
    return states().count(db) != 0;
}

void setFixedClock(sqlite3* db, const QDateTime& at) {
    if (!db) return;
    {
        std::lock_guard lock(stateMutex());
        auto it = states().find(db);
        if (it != states().end()) {
            it->second->fixed = at;
            return;
        }
    }
    registerRoutines(db);
    std::lock_guard lock(stateMutex());
    auto it = states().find(db);
    if (it != states().end()) it->second->fixed = at;
}

}  // namespace tarvin::sqlite
