// The screening categories as data: per code its caption, page, radio, row
// and count texts, parameters, extra grid columns and preconditions; and the
// common filters with the closing line that end every search. The screen,
// the command-line tool, the SQL corpus and the benchmarks all read these,
// so each text exists here once. Plain data and the parameter check, QtCore
// only.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

// How a parameter is bound: edit texts go as trimmed strings (the database
// converts them), dates as dates, the refund amount as a float.
enum class TKycsType { String, Integer, Float, Date };

// Where a control's default comes from when the screen opens.
enum class TKycsDefault { Text, ServerNy, ServerYear, ServerDate };

// The rule a parameter edit checks on leaving it (the screen's common
// whole- and real-number checks); Message is shown when it fails.
enum class TKycsCheck { None, Year, YearMonth, Count, Whole, NonNegativeReal, Real };

struct TKycsParam {
    QString Name{};     // as bound (the data layer matches names without case)
    QString Control{};  // the control that supplies the value
    TKycsType Type = TKycsType::String;
    QString Default{};  // a text, used when From is Text
    TKycsDefault From = TKycsDefault::Text;
    int DaysBefore = 0;  // a date default this many days before the server's date
    TKycsCheck Check = TKycsCheck::None;
    QString Message{};
    bool KindOnly = false;  // bound only with the one-kind texts
};

struct TKycsColumn {
    QString Field{}, Caption{};
};

struct TKycsTexts {
    QString Row{}, Count{};
};

// What the tool's reason column says of a customer found: the rule's
// figures for that customer. Format is text with figures in braces:
//   {NAME}       a column of Sql's first row, else of the customer's row;
//   {:NAME}      a parameter's value (the category's or a filter's);
//   {NAME|text}  the text when the figure is empty;
//   {#}          the number of Sql's rows;
//   [...]        repeated for each of Sql's rows, joined with "、".
// Sql (Oracle, for one customer) binds each name from the parameters, else
// from the customer's row (:HH, :CDBH). Without Sql the customer's own row
// carries the figures, so long lists (25, 99) cost no query per customer.
struct TKycsReason {
    QString Sql{}, Format{};
};

struct TKycsCategory {
    int Code = 0;
    QString Caption{};  // Kycsmc
    int Page = 0;     // index on Pgc_Cxdx
    QString Radio{};
    bool RadioEnabled = true;  // as designed
    TKycsTexts Sql{};            // as written
    // Code 30: the texts when one business kind is chosen (a key other than
    // KycsAllKinds); the kind is then bound as the KindOnly parameter.
    TKycsTexts KindSql{};
    QVector<TKycsParam> Params{};
    QVector<TKycsColumn> Columns{};  // added after the nine base columns
    bool KeepGrid = false;         // the grid is left as it is (no column work at all)
    // Unfinished texts (no table after "from"): the parameters bound are not
    // in them, and the engine refuses them.
    bool Placeholder = false;
    QString RequiredFilter{};  // a filter whose check box must be on, with that filter's message
    QString ForcedFilter{};    // a filter the category turns on before the search
    bool AreaList = false;   // choosing the radio loads the area loss list
    TKycsReason Reason{};
};

struct TKycsPage {
    QString Name{}, Caption{};
};

// The common filters, in the fixed order a search appends them.
struct TKycsFilter {
    QString Name{};      // the corpus's and the tool's name for it
    QString CheckBox{};
    QString Line{};      // the clause added, ending in "and "
    QVector<TKycsParam> Params{};
    QString Message{};   // shown when the filter is on but its input is empty
};

inline const QString KycsAllKinds = QStringLiteral("000");
// The line that closes the where clause left open by the texts and filters.
inline const QString KycsClosing = QStringLiteral(" 1=1");

const QVector<TKycsCategory>& KycsCategories();
const TKycsCategory* KycsCategory(int code);
const QVector<TKycsPage>& KycsPages();
const QVector<TKycsFilter>& KycsFilters();
const TKycsFilter* KycsFilter(const QString& name);

// Whether the typed text passes the check a parameter edit makes on leaving
// it (the text is trimmed first; only the year and year-month checks refuse
// an empty one).
bool KycsPasses(TKycsCheck check, const QString& typed);

// The text the row (count) query receives. Code 4's row query gets the
// count text and its count query nothing, as the screen has always done.
QString KycsSentSql(const TKycsCategory& c, bool count, bool oneKind = false);
// A text by name, for the tool and the corpus: "row", "count", "kind-row",
// "kind-count" as sent; "written-row" as written. None for an unknown
// code or name.
std::optional<QString> KycsSql(int code, const QString& which);
// The lines a search sends: the text (none when empty), the filters named,
// in their fixed order whatever the order given, then the closing line when
// at least one filter is on. Unknown names are left out.
QStringList KycsSqlLines(const QString& text, const QStringList& filters);
