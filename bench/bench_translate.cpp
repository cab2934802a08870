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
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <map>
#include <tuple>
#include <vector>

#include "data/Connection.h"
#include "DemoGenerator.h"
#include "data/MidasQuery.h"
#include "data/SqlDialect.h"

namespace {

using tarvin::sql::Dialect;

// The day the corpus's samples refer to (month 202403, year 2024, unit 0101).
const QDate kToday(2024, 4, 15);
constexpr int kRounds = 3;         // best of
constexpr int kTranslations = 50;  // translations of a text per timed round: enough to time

struct Query {
    QString id, text;
    std::vector<std::pair<QString, QVariant>> params;
};

QVariant valueOf(const QJsonArray& p) {
    const QString type = p.at(1).toString();
    const QJsonValue v = p.at(2);
    if (type == QLatin1String("integer")) return v.toInteger();
    if (type == QLatin1String("float")) return v.toDouble();
    if (type == QLatin1String("date")) return QDate::fromString(v.toString(), Qt::ISODate);
    if (type == QLatin1String("datetime")) return QDateTime::fromString(v.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return v.toString();
}

void addParams(Query& q, const QJsonArray& params) {
    for (const QJsonValue& v : params) {
        const QJsonArray p = v.toArray();
        // A name the text lacks is the screen's mistake, refused when bound.
        if (p.at(1).toString() != QLatin1String("missing")) q.params.emplace_back(p.at(0).toString(), valueOf(p));
    }
}

// The corpus's queries as the screens send them (tests/support/Corpus.h
// reads the same files for the tests, with GoogleTest): statements, blocks
// and texts meant to fail are left out, they change data or draw numbers.
std::vector<Query> corpusQueries() {
    const QDir dir(QFileInfo(QStringLiteral(__FILE__)).absolutePath() + QStringLiteral("/../tests/corpus"));
    std::vector<QJsonObject> roots;
    std::map<QString, QJsonObject> filters;
    QString closing;
    for (const QString& name : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        QFile f(dir.filePath(name));
        if (!f.open(QIODevice::ReadOnly)) throw EDatabaseError(QStringLiteral("cannot read ") + f.fileName());
        roots.push_back(QJsonDocument::fromJson(f.readAll()).object());
        for (const QJsonValue& v : roots.back().value(QLatin1String("filters")).toArray())
            filters[v.toObject().value(QLatin1String("name")).toString()] = v.toObject();
        if (roots.back().contains(QLatin1String("closing"))) closing = roots.back().value(QLatin1String("closing")).toString();
    }
    std::vector<Query> out;
    for (const QJsonObject& root : roots) {
        for (const QJsonValue& ev : root.value(QLatin1String("entries")).toArray()) {
            const QJsonObject e = ev.toObject();
            if (e.value(QLatin1String("run")).toString() == QLatin1String("exec") || e.contains(QLatin1String("setup")) ||
                e.contains(QLatin1String("declare")) || e.value(QLatin1String("expect")).toObject().value(QLatin1String("error")).toBool())
                continue;
            Query q;
            q.id = e.value(QLatin1String("id")).toString();
            QStringList lines;
            for (const QJsonValue& l : e.value(QLatin1String("lines")).toArray()) lines << l.toString();
            if (e.contains(QLatin1String("concat"))) {
                QString s;
                for (const QJsonValue& v : e.value(QLatin1String("concat")).toArray())
                    s += v.isObject() ? v.toObject().value(QLatin1String("v")).toString() : v.toString();
                lines << s;
            }
            const QJsonArray used = e.value(QLatin1String("filters")).toArray();
            for (const QJsonValue& f : used) {
                const QJsonObject& filter = filters.at(f.toString());
                lines << filter.value(QLatin1String("line")).toString();
                addParams(q, filter.value(QLatin1String("params")).toArray());
            }
            if (!used.isEmpty()) lines << closing;
            q.text = lines.join(QLatin1Char('\n'));
            addParams(q, e.value(QLatin1String("params")).toArray());
            out.push_back(std::move(q));
        }
    }
    return out;
}

// Opens the query as a screen does, every row fetched; its row count.
int open(TMidasQuery& q, const Query& query) {
    PrepareSql(&q, query.text);
    for (const auto& [name, value] : query.params) q.ParamByName(name).SetValue(value);
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
