// What the dialect bridge costs a screen: the module's queries (every query
// of the SQL corpus, tests/corpus/*.json, with its sample parameters) run
// through TMidasQuery on SQLite over the demo utility, against the time the
// same texts take to translate, remembered as in real use and, for
// information, translated afresh. Ratios to the execution measured in the
// same run, in total and for the query where translating weighs most; best
// of 3.
//
//   bench_translate [CUSTOMERS]   (default 20000)
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <tuple>
#include <vector>

#include "data/Connection.h"
#include "DemoGenerator.h"
#include "SqlCorpus.h"
#include "data/MidasQuery.h"
#include "data/SqlDialect.h"
#include "screening/Unt_Jc_Kycslb.h"

namespace {

using tarvin::sql::Dialect;

// The day the corpus's samples refer to (month 202403, year 2024, unit 0101).
const QDate kToday(2024, 4, 15);
constexpr int kRounds = 3;         // best of
constexpr int kTranslations = 50;  // translations of a text per timed round: enough to time

struct Query {
    QString id, text;
    QVector<tarvin::corpus::Param> params;
};

// The corpus's queries as the screens send them: statements, blocks and
// texts meant to fail are left out, they change data or draw numbers.
std::vector<Query> corpusQueries() {
    tarvin::corpus::useScreeningTexts({&KycsSql, &KycsSqlLines});
    const tarvin::corpus::Corpus& c = tarvin::corpus::corpus();
    if (!c.problems.isEmpty()) throw EDatabaseError(c.problems.join(QLatin1Char('\n')));
    std::vector<Query> out;
    for (const tarvin::corpus::Entry& e : c.entries) {
        if (!e.readsOnly()) continue;
        Query q{e.id, c.text(e), {}};
        // A name the text lacks is the screen's mistake, refused when bound.
        for (const tarvin::corpus::Param& p : c.allParams(e))
            if (p.type != QLatin1String("missing")) q.params << p;
        out.push_back(std::move(q));
    }
    return out;
}

// Opens the query as a screen does, every row fetched; its row count.
int open(TMidasQuery& q, const Query& query) {
    PrepareSql(&q, query.text);
    for (const tarvin::corpus::Param& p : query.params) tarvin::corpus::bindParam(q, p);
    q.Open();
    return q.RecordCount();
}

template <class F>
double bestSeconds(F f) {
    double best = 1e9;
    for (int i = 0; i < kRounds; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        best = std::min(best, double(t.nsecsElapsed()) / 1e9);
    }
    return best;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const std::int64_t customers = argc > 1 ? std::atoll(argv[1]) : 20000;
    if (customers < 2 || customers > tarvin::demo::kMaxCustomers) {
        std::fprintf(stderr, "bench_translate: CUSTOMERS must be from 2 to %lld\n", static_cast<long long>(tarvin::demo::kMaxCustomers));
        return 2;
    }
    QTemporaryDir dir;
    try {
        QSqlDatabase db = tarvin::db::openConnection(QStringLiteral("sqlite:") + dir.filePath(QStringLiteral("demo.sqlite")),
                                                     QStringLiteral("Shdl"));
        tarvin::db::setFixedClock(QStringLiteral("Shdl"), QDateTime(kToday, QTime(10, 0)));
        std::fprintf(stderr, "writing the demo utility (%lld customers) ...\n", static_cast<long long>(customers));
        tarvin::demo::DemoOptions o;
        o.customers = customers;
        o.today = kToday;
        tarvin::demo::createDemoDatabase(db, o);

        // Each query once: it must run here, and the translations are then
        // remembered as after a screen's first use.
        std::vector<Query> queries;
        qint64 rows = 0;
        for (Query& query : corpusQueries()) {
            TMidasQuery q;
            try {
                rows += open(q, query);
                queries.push_back(std::move(query));
            } catch (const EDatabaseError& e) {
                std::fprintf(stderr, "left out %s: %s\n", qPrintable(query.id), e.what());
            }
        }
        if (queries.empty()) throw EDatabaseError(QStringLiteral("no corpus query ran"));

        // Per query: its execution, then its translation, remembered and
        // afresh. The text looked up is a copy of its own, as the dataset
        // joins its lines anew for every run.
        TMidasQuery q;
        double execute = 0, cached = 0, uncached = 0, worst = 0, worstAfresh = 0;
        QString worstId, worstAfreshId;
        for (const Query& query : queries) {
            const QString text(query.text.constData(), query.text.size());
            auto translating = [&](auto translate) {
                return bestSeconds([&] {
                    for (int i = 0; i < kTranslations; ++i) (void)translate(text, Dialect::SQLite);
                }) / kTranslations;
            };
            const double e = bestSeconds([&] { open(q, query); });
            const double c = translating(tarvin::sql::translate);
            const double u = translating(tarvin::sql::translateUncached);
            execute += e;
            cached += c;
            uncached += u;
            if (c / e > worst) std::tie(worst, worstId) = std::pair(c / e, query.id);
            if (u / e > worstAfresh) std::tie(worstAfresh, worstAfreshId) = std::pair(u / e, query.id);
        }

        const double n = double(queries.size());
        std::printf("bench_translate (SQLite): %lld customers, %d corpus queries, %lld rows\n",
                    static_cast<long long>(customers), int(queries.size()), static_cast<long long>(rows));
        std::printf("  execute through TMidasQuery (translation remembered): %9.1f us a query\n", execute / n * 1e6);
        std::printf("  translate, remembered:                                %9.2f us a query\n", cached / n * 1e6);
        std::printf("  translate, afresh:                                    %9.1f us a query\n", uncached / n * 1e6);
        std::printf("  ratio translate (remembered) / execute: %.6f  (goal <= 0.05); worst query %.4f (%s)\n", cached / execute, worst,
                    qPrintable(worstId));
        std::printf("  ratio translate (afresh) / execute:     %.4f;  worst query %.4f (%s)\n", uncached / execute, worstAfresh,
                    qPrintable(worstAfreshId));
        q.Close();
        db = QSqlDatabase();
        tarvin::db::closeConnection(QStringLiteral("Shdl"));
    } catch (const EDatabaseError& e) {
        std::fprintf(stderr, "bench_translate: %s\n", e.what());
        return 1;
    }
    return 0;
}
