// The module's own SQL over the demo utility: every reachable screening
// category, run exactly as the screen runs it (its text, the unit filter,
// the screen's default parameters), finds 1 to 300 customers of the first
// unit (25 and 99, over the whole customer base, may pass the screen's limit),
// on a utility of the default size and on a small one written early in
// January; and every query of the corpus gives the same rows on SQLite and
// on PostgreSQL over the same demo data.
#include <algorithm>
#include <iostream>

#include "data/Connection.h"
#include "Corpus.h"
#include "DemoGenerator.h"
#include "Fixtures.h"

using namespace tarvin::test;
using namespace tarvin::test::corpus;

namespace {

// What the screen binds by default, and the values docs/demo.md gives where
// it has none (a unit, an area, an energy, an amount, a tariff).
QString demoValue(const QString& name, const QDate& today) {
    const std::map<QString, QString> values = {
        {"DW", "0101"}, {"TQBH", "T0100001"}, {"NY", today.toString("yyyyMM")},
        {"YS", "3"}, {"BDL", "30"}, {"FGB", "100"}, {"ZDL", "500000"}, {"YDLB", "03"},
        {"SJLL", "95"}, {"TBJE", "100"}, {"DJM", "4102"}, {"CS", "3"},
        {"NF", today.toString("yyyy")}, {"JCRQQ", today.addDays(-183).toString(Qt::ISODate)},
        {"JCRQZ", today.toString(Qt::ISODate)}, {"SLRQQ", today.toString(Qt::ISODate)},
        {"SLRQZ", today.toString(Qt::ISODate)}, {"JZRQ", today.toString(Qt::ISODate)},
    };
    const auto it = values.find(name.toUpper());
    return it == values.end() ? QString() : it->second;
}

// The entry's text, its parameters bound with the demo's values where the
// demo has one.
void prepare(TMidasQuery& q, const Entry& e, const QString& connection, const QDate& today) {
    const Corpus& c = corpus::corpus();
    q.SetDatabaseName(connection);
    q.Close();
    q.SQL().Clear();
    for (const QString& line : e.text().split(QLatin1Char('\n'))) q.SQL().Add(line);
    QVector<Param> params;
    for (const QString& f : e.filters) params << c.filters.at(f).params;
    params << e.params;
    for (Param& p : params) {
        const QString v = demoValue(p.name, today);
        if (!v.isEmpty() && p.type != QLatin1String("missing"))
            p.value = p.type == QLatin1String("float") ? QJsonValue(v.toDouble()) : QJsonValue(v);
        bind(q, p);
    }
}

void writeDemo(TestDatabase& db, qint64 customers, const QDate& today) {
    tarvin::db::setFixedClock(db.connectionName(), today.startOfDay().addSecs(10 * 3600));
    tarvin::demo::writeDemo(db.db(), {.customers = customers, .seed = 7, .today = today});
}

void expectEveryCategoryFindsItsCustomersOfTheFirstUnit(TestDatabase& db, const QDate& today) {
    for (const char* code : {"02", "10", "11", "12", "13", "14", "15", "16", "17", "18", "19", "20",
                             "21", "22", "23", "24", "25", "30", "31", "40", "99"}) {
        SCOPED_TRACE(std::string("category ") + code);
        TMidasQuery q, r;
        prepare(q, corpus::entry(QStringLiteral("3.2/cat%1/count").arg(code)), db.connectionName(), today);
        q.Open();
        const int jls = q.FieldByName("jls").AsInteger();
        EXPECT_GE(jls, 1);
        if (std::string(code) != "25" && std::string(code) != "99") EXPECT_LE(jls, 300);
        prepare(r, corpus::entry(QStringLiteral("3.2/cat%1/row").arg(code)), db.connectionName(), today);
        r.Open();
        EXPECT_EQ(r.RecordCount(), jls) << "the row text lists what the count text counts";
        for (r.First(); !r.Eof(); r.Next())
            ASSERT_EQ(r.FieldByName("DW").AsString(), "0101") << "only the first unit";
    }
}

TEST(DemoScreening, EveryReachableCategoryFindsItsCustomersOfTheFirstUnit) {
    TestDatabase db(tarvin::sql::Dialect::SQLite);
    const QDate today(2026, 11, 16);
    writeDemo(db, tarvin::demo::DemoOptions{}.customers, today);  // the default size
    expectEveryCategoryFindsItsCustomersOfTheFirstUnit(db, today);
}

// Early January: "this year" is two days long, the current month's reading
// is on the 2nd; the planted yearly counts must still be there.
class DemoScreeningEarly : public EngineTest {};

TEST_P(DemoScreeningEarly, EveryReachableCategoryFindsItsCustomersOfTheFirstUnit) {
    TestDatabase db(dialect());
    const QDate today(2025, 1, 2);
    writeDemo(db, 400, today);
    expectEveryCategoryFindsItsCustomersOfTheFirstUnit(db, today);
}

TARVIN_INSTANTIATE_ENGINES(DemoScreeningEarly);

// Rows as both engines should show them: the field names, then the rows
// sorted, their values asText (null apart from the empty text).
QStringList rowsOf(TMidasQuery& q) {
    QStringList body;
    for (int r = 0; r < q.RecordCount(); ++r) {
        QStringList cells;
        for (int f = 0; f < q.FieldCount(); ++f) cells << (q.valueAt(r, f).isNull() ? QStringLiteral("<null>") : asText(q.valueAt(r, f)));
        body << cells.join(QLatin1Char('|'));
    }
    std::sort(body.begin(), body.end());
    return QStringList{q.FieldNames().join(QLatin1Char('|'))} + body;
}

TEST(DemoAcrossEngines, EveryQueryOfTheCorpusGivesTheSameRowsOnBothEngines) {
    if (engines().size() < 2) GTEST_SKIP() << "no PostgreSQL server (TARVIN_TEST_PG_URL)";
    TestDatabase lite(tarvin::sql::Dialect::SQLite, true, "diff_sqlite");
    TestDatabase pg(tarvin::sql::Dialect::PostgreSQL, true, "diff_pg");
    const QDate today(2026, 11, 16);
    writeDemo(lite, 1500, today);
    writeDemo(pg, 1500, today);
    int compared = 0, withRows = 0;
    for (const Entry& e : corpus::corpus().entries) {
        // Queries only: statements change the data, blocks draw numbers.
        if (e.exec || !e.setup.isEmpty() || !e.declared.isEmpty() ||
            e.expect.value(QLatin1String("error")).toBool())
            continue;
        SCOPED_TRACE(e.id.toStdString());
        TMidasQuery a, b;
        prepare(a, e, lite.connectionName(), today);
        prepare(b, e, pg.connectionName(), today);
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
