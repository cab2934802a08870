// Every SQL text the module sends, run through the data layer on each engine
// against one fixed data set, with the rows Oracle would return.
//
// The texts, their parameters and the expected results are data
// (tests/corpus/*.json, one entry per text); the rows they read are
// tests/corpus/fixture.sql. Each entry runs as the screens run it: the text
// set line by line, parameters bound by name with the screen's types, Open
// or ExecSQL, inside a transaction that is rolled back afterwards, so every
// entry sees the same fixture. One test case per engine and area; a failing
// case lists the entries that failed ("[ failing ] id").
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <iostream>

#include "Corpus.h"
#include "TestDb.h"
#include "screening/Unt_Jc_Kycslb.h"

using tarvin::test::Engine;
using tarvin::test::TestDatabase;
using namespace tarvin::test::corpus;

namespace {

std::string show(const QString& s) { return s.toStdString(); }

// ---------------------------------------------------------------------------
// Running one entry

// Compares one field of the current row with an expected JSON value: null,
// a number (compared as a number, to the cent) or a text.
void expectField(TMidasQuery& q, const QString& field, const QJsonValue& want, const QString& where) {
    ASSERT_GE(q.FindFieldIndex(field), 0)
        << show(where) << ": no field " << show(field) << " among " << show(q.FieldNames().join(QLatin1Char(',')));
    TField f = q.FieldByName(field);
    if (want.isNull()) {
        EXPECT_TRUE(f.IsNull()) << show(where) << "." << show(field) << " = " << show(f.AsString());
    } else if (want.isDouble()) {
        try {
            EXPECT_FALSE(f.IsNull()) << show(where) << "." << show(field) << " is null";
            EXPECT_NEAR(f.AsFloat(), want.toDouble(), 0.005) << show(where) << "." << show(field);
        } catch (const EDatabaseError& e) {
            ADD_FAILURE() << show(where) << "." << show(field) << ": " << e.what();
        }
    } else {
        EXPECT_EQ(f.AsString(), want.toString()) << show(where) << "." << show(field);
    }
}

void expectRows(TMidasQuery& q, const QJsonObject& x) {
    if (x.contains("rows")) { EXPECT_EQ(q.RecordCount(), x.value("rows").toInt()) << "rows"; }
    for (const QJsonValue& f : x.value("fields").toArray())
        EXPECT_GE(q.FindFieldIndex(f.toString()), 0) << "no field " << show(f.toString()) << " among " << show(q.FieldNames().join(QLatin1Char(',')));
    const QString key = x.value("key").toString();
    ASSERT_TRUE(key.isEmpty() || q.FindFieldIndex(key) >= 0)
        << "no key field " << show(key) << " among " << show(q.FieldNames().join(QLatin1Char(',')));
    if (x.contains("keys")) {
        QStringList got, want = readStrings(x.value("keys").toArray());
        for (q.First(); !q.Eof(); q.Next()) got << q.FieldByName(key).AsString();
        if (!x.value("ordered").toBool()) {
            got.sort();
            want.sort();
        }
        EXPECT_EQ(got, want) << "values of " << show(key);
    }
    if (x.contains("first") || x.contains("firstColumn")) {
        ASSERT_FALSE(q.IsEmpty()) << "no row to compare";
        q.First();
        const QJsonObject first = x.value("first").toObject();
        for (auto it = first.begin(); it != first.end(); ++it) expectField(q, it.key(), it.value(), "first row");
        if (x.contains("firstColumn")) {
            EXPECT_EQ(q.Fields(0).AsString(), x.value("firstColumn").toString()) << "first column";
        }
    }
    const QJsonObject where = x.value("where").toObject();
    for (auto it = where.begin(); it != where.end(); ++it) {
        if (!q.Locate(key, it.key())) {
            ADD_FAILURE() << "no row with " << show(key) << " = " << show(it.key());
            continue;
        }
        const QJsonObject fields = it.value().toObject();
        for (auto f = fields.begin(); f != fields.end(); ++f) expectField(q, f.key(), f.value(), key + QLatin1Char('=') + it.key());
    }
}

// One entry, as a screen runs it, inside a transaction rolled back at the end.
void runEntry(TestDatabase& db, const Corpus& c, const Entry& e) {
    const QJsonObject& x = e.expect;
    const QString text = e.text();
    SCOPED_TRACE(show(e.id + QStringLiteral(" (") + e.file + QStringLiteral(")\n") + text));

    TCustomMidasDataBase& base = TCustomMidasDataBase::ByName(db.connectionName());
    base.StartTransaction();
    for (const QString& s : e.setup) db.exec(s);

    TMidasQuery q;
    QString error;
    try {
        for (const QString& line : text.split(QLatin1Char('\n'))) q.SQL().Add(line);
        if (!e.declared.isEmpty()) {
            q.Params().Clear();
            for (const Param& p : e.declared)
                q.Params().CreateParam(ftString, p.name, p.type == "output" ? ptOutput : ptInput);
        }
        for (const QString& f : e.filters)
            for (const Param& p : c.filters.at(f).params) bind(q, p);
        for (const Param& p : e.params) bind(q, p);
        e.exec ? q.ExecSQL() : q.Open();
    } catch (const EDatabaseError& err) {
        error = err.message().isEmpty() ? QStringLiteral("(EDatabaseError without a message)") : err.message();
    } catch (const std::exception& err) {
        ADD_FAILURE() << "raised " << typeid(err).name() << " instead of EDatabaseError: " << err.what();
    }

    // TARVIN_CORPUS_SHOW_SQL=1 prints what each engine received.
    if (qEnvironmentVariableIntValue("TARVIN_CORPUS_SHOW_SQL"))
        std::cout << "[ engine text ] " << show(e.id) << "\n" << show(q.LastEngineSql()) << "\n";
    if (x.value("error").toBool()) {
        EXPECT_FALSE(error.isEmpty()) << "the text ran; it must fail";
        if (!error.isEmpty()) std::cout << "[ expected failure ] " << show(e.id) << ": " << show(error.section(QLatin1Char('\n'), 0, 0)) << "\n";
    } else if (!error.isEmpty()) {
        ADD_FAILURE() << "failed: " << show(error);
    } else {
        if (x.contains("affected")) { EXPECT_EQ(q.RowsAffected(), x.value("affected").toInt()) << "rows affected"; }
        const QJsonObject outputs = x.value("outputs").toObject();
        for (auto it = outputs.begin(); it != outputs.end(); ++it) {
            const QString got = q.ParamByName(it.key()).AsString();
            EXPECT_TRUE(QRegularExpression(it.value().toString()).match(got).hasMatch()) << show(it.key()) << " = " << show(got);
        }
        if (q.Active()) expectRows(q, x);
        if (x.value("committed").toBool()) { EXPECT_FALSE(base.InTransaction()) << "still in the transaction"; }
        for (const QJsonValue& v : x.value("checks").toArray())
            EXPECT_EQ(db.scalar(v[0].toString()).toString(), v[1].toString()) << show(v[0].toString());
    }
    q.Close();
    base.Rollback();
    for (const QString& s : e.cleanup) db.exec(s);
}

// One case per engine and area: a fresh database with the fixture, then
// every entry of the area; the entries that failed are listed at the end.
class Texts : public ::testing::TestWithParam<std::tuple<Engine, QString>> {};

TEST_P(Texts, Run) {
    const Corpus& c = corpus();
    const QString section = std::get<1>(GetParam());
    TestDatabase db(std::get<0>(GetParam()).dialect);
    loadFixture(db);
    if (HasFatalFailure()) return;
    const ::testing::TestResult& result = *::testing::UnitTest::GetInstance()->current_test_info()->result();
    QStringList failing;
    int ran = 0;
    for (const Entry& e : c.entries) {
        if (e.section != section) continue;
        const int before = result.total_part_count();
        runEntry(db, c, e);
        ++ran;
        if (result.total_part_count() != before) failing << e.id;
    }
    std::cout << "[ " << std::get<0>(GetParam()).name << " " << show(section) << " ] " << ran - failing.size() << " of " << ran
              << " entries as expected\n";
    for (const QString& id : failing) std::cout << "[ failing ] " << show(id) << "\n";
}

std::vector<QString> sections() {
    std::vector<QString> out;
    for (const Entry& e : corpus().entries)
        if (std::find(out.begin(), out.end(), e.section) == out.end()) out.push_back(e.section);
    return out;
}

std::string caseName(const ::testing::TestParamInfo<Texts::ParamType>& info) {
    return std::get<0>(info.param).name + "_" + QString(std::get<1>(info.param)).replace('.', '_').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Corpus, Texts,
                         ::testing::Combine(::testing::ValuesIn(tarvin::test::engines()), ::testing::ValuesIn(sections())),
                         caseName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Texts);

// ---------------------------------------------------------------------------
// The corpus itself: readable, complete, and its size reported.

TEST(SqlCorpusData, ReadableAndComplete) {
    const Corpus& c = corpus();
    EXPECT_TRUE(c.problems.isEmpty()) << show(c.problems.join(QLatin1Char('\n')));
    ASSERT_FALSE(c.entries.empty());

    QSet<QString> ids, texts;
    bool ideographic = false;
    for (const Entry& e : c.entries) {
        EXPECT_FALSE(ids.contains(e.id)) << "duplicate id " << show(e.id);
        ids.insert(e.id);
        EXPECT_FALSE(e.expect.isEmpty()) << show(e.id) << ": no expectation";
        for (const QString& f : e.filters) EXPECT_TRUE(c.filters.count(f)) << show(e.id) << ": unknown filter " << show(f);
        const QString text = e.text();
        texts.insert(text);
        ideographic |= text.contains(QChar(0x3000));
    }

    // Every screening category runs its row and count text.
    for (const TKycsCategory& k : KycsCategories())
        for (const char* which : {"row", "count"})
            EXPECT_TRUE(ids.contains(QStringLiteral("3.2/cat%1/%2").arg(k.Code, 2, 10, QLatin1Char('0')).arg(QLatin1String(which))))
                << "category " << k.Code << " " << which;
    // Editors must not have turned the ideographic space into a plain one.
    EXPECT_TRUE(ideographic) << "the text with U+3000 lost its ideographic space";

    std::cout << "corpus: " << texts.size() << " texts (" << c.entries.size() << " entries)\n";
}

}  // namespace
