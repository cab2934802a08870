// The module's own SQL over the demo utility: every reachable screening
// category, run exactly as the screen runs it (its text, the unit filter,
// the screen's default parameters), finds 1 to 300 customers of the first
// unit; and every query of the corpus gives the same rows on SQLite and on
// PostgreSQL over the same demo data.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>
#include <iostream>

#include "data/Connection.h"
#include "Corpus.h"
#include "DemoGenerator.h"
#include "data/MidasQuery.h"
#include "TestDb.h"

using namespace tarvin::test;
using namespace tarvin::test::corpus;

namespace {

// The day the demo data is written and screened.
const QDate kToday(2026, 11, 16);
const QDateTime kClock(kToday, QTime(10, 0));

// What the screen binds by default, and the values docs/demo.md gives where
// it has none (a unit, an area, an energy, an amount, a tariff).
QString demoValue(const QString& name) {
    static const std::map<QString, QString> values = {
        {"DW", "0101"}, {"TQBH", "T0100001"}, {"NY", kToday.toString("yyyyMM")},
        {"YS", "3"}, {"BDL", "30"}, {"FGB", "100"}, {"ZDL", "500000"}, {"YDLB", "03"},
        {"SJLL", "95"}, {"TBJE", "100"}, {"DJM", "4102"}, {"CS", "3"},
        {"NF", kToday.toString("yyyy")}, {"JCRQQ", kToday.addDays(-183).toString(Qt::ISODate)},
        {"JCRQZ", kToday.toString(Qt::ISODate)}, {"SLRQQ", kToday.toString(Qt::ISODate)},
        {"SLRQZ", kToday.toString(Qt::ISODate)}, {"JZRQ", kToday.toString(Qt::ISODate)},
    };
    const auto it = values.find(name.toUpper());
    return it == values.end() ? QString() : it->second;
}

// The entry's parameters with the demo's values where the demo has one.
QVector<Param> demoParams(const Corpus& c, const Entry& e) {
    QVector<Param> out;
    for (const QString& f : e.filters)
        for (const Param& p : c.filters.at(f).params) out << p;
    for (const Param& p : e.params) out << p;
    for (Param& p : out) {
        const QString v = demoValue(p.name);
        if (v.isEmpty() || p.type == QLatin1String("missing")) continue;
        p.value = p.type == QLatin1String("float") ? QJsonValue(v.toDouble()) : QJsonValue(v);
    }
    return out;
}

void prepare(TMidasQuery& q, const Corpus& c, const Entry& e, const QString& connection) {
    q.SetDatabaseName(connection);
    q.Close();
    q.SQL().Clear();
    for (const QString& line : e.text(c.filters, c.closing).split(QLatin1Char('\n'))) q.SQL().Add(line);
    for (const Param& p : demoParams(c, e)) bind(q, p);
}

const Entry* find(const Corpus& c, const QString& id) {
    for (const Entry& e : c.entries)
        if (e.id == id) return &e;
    return nullptr;
}

void writeDemo(TestDatabase& db, qint64 customers) {
    tarvin::db::setFixedClock(db.connectionName(), kClock);
    tarvin::demo::DemoOptions o;
    o.customers = customers;
    o.seed = 7;
    o.today = kToday;
    tarvin::demo::writeDemo(db.db(), o);
}

TEST(DemoScreening, EveryReachableCategoryFindsOneTo300CustomersOfTheFirstUnit) {
    TestDatabase db(tarvin::sql::Dialect::SQLite);
    writeDemo(db, tarvin::demo::DemoOptions{}.customers);  // the default size
    const Corpus& c = tarvin::test::corpus::corpus();
    for (const char* code : {"02", "10", "11", "12", "13", "14", "15", "16", "17", "18", "19", "20",
                             "21", "22", "23", "24", "25", "30", "31", "40", "99"}) {
        SCOPED_TRACE(std::string("category ") + code);
        const Entry* count = find(c, QStringLiteral("3.2/cat%1/count").arg(code));
        const Entry* rows = find(c, QStringLiteral("3.2/cat%1/row").arg(code));
        ASSERT_TRUE(count && rows);
        TMidasQuery q;
        prepare(q, c, *count, db.connectionName());
        q.Open();
        const int jls = q.FieldByName("jls").AsInteger();
        EXPECT_GE(jls, 1);
        EXPECT_LE(jls, 300);
        TMidasQuery r;
        prepare(r, c, *rows, db.connectionName());
        r.Open();
        EXPECT_EQ(r.RecordCount(), jls) << "the row text lists what the count text counts";
        for (r.First(); !r.Eof(); r.Next())
            ASSERT_EQ(r.FieldByName("DW").AsString(), "0101") << "only the first unit";
    }
}

// A value as both engines should show it: numbers by value (12 and 12.00
// alike), date-times as their text, everything else as text.
QString normalized(const QVariant& v) {
    if (v.isNull()) return QStringLiteral("<null>");
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return QString::number(v.toDouble(), 'f', 4);
    case QMetaType::QDateTime:  // as the fields read them as text
        return v.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case QMetaType::QDate:
        return v.toDate().startOfDay().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    default:
        break;
    }
    const QString s = v.toString();
    static const QRegularExpression decimal(QStringLiteral("^-?\\d+\\.\\d+$"));
    if (decimal.match(s).hasMatch()) return QString::number(s.toDouble(), 'f', 4);
    return s;
}

QStringList rowsOf(TMidasQuery& q) {
    QStringList rows;
    rows << q.FieldNames().join(QLatin1Char('|'));
    QStringList body;
    for (int r = 0; r < q.RecordCount(); ++r) {
        QStringList cells;
        for (int f = 0; f < q.FieldCount(); ++f) cells << normalized(q.valueAt(r, f));
        body << cells.join(QLatin1Char('|'));
    }
    std::sort(body.begin(), body.end());
    return rows + body;
}

TEST(DemoAcrossEngines, EveryQueryOfTheCorpusGivesTheSameRowsOnBothEngines) {
    if (engines().size() < 2) GTEST_SKIP() << "no PostgreSQL server (TARVIN_TEST_PG_URL)";
    TestDatabase lite(tarvin::sql::Dialect::SQLite, true, "diff_sqlite");
    TestDatabase pg(tarvin::sql::Dialect::PostgreSQL, true, "diff_pg");
    writeDemo(lite, 1500);
    writeDemo(pg, 1500);

    const Corpus& c = tarvin::test::corpus::corpus();
    int compared = 0, withRows = 0;
    for (const Entry& e : c.entries) {
        // Queries only: statements change the data, blocks draw numbers.
        if (e.exec || !e.setup.isEmpty() || !e.declared.isEmpty() ||
            e.expect.value(QLatin1String("error")).toBool())
            continue;
        SCOPED_TRACE(e.id.toStdString());
        TMidasQuery a, b;
        prepare(a, c, e, lite.connectionName());
        prepare(b, c, e, pg.connectionName());
        a.Open();
        b.Open();
        const QStringList ra = rowsOf(a), rb = rowsOf(b);
        EXPECT_EQ(ra, rb);
        ++compared;
        if (ra.size() > 1) ++withRows;
    }
    std::cout << "[ compared ] " << compared << " queries, " << withRows << " with rows\n";
    EXPECT_GE(withRows, compared / 2) << "the demo data must give most queries something to compare";
}

}  // namespace
