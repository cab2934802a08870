// The demo utility: a coherent, seeded, sized set of units, operators,
// network, customers, billing history and past business over the reference
// schema, with planted suspicious customers for every screening category.
#pragma once

#include <QDate>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <map>

namespace tarvin::demo {

struct DemoOptions {
    std::int64_t customers = 20000;
    std::uint64_t seed = 1;
    int units = 2;
    // "Today" of the data (the last ledger month, the dates the screening
    // defaults use). Invalid: the database clock (tarvin_sysdate()).
    QDate today;
};

struct DemoSummary {
    std::int64_t customers = 0;
    std::int64_t rows = 0;
    QDate today;
    QStringList units;          // supply units written, the first is the one the planted counts refer to
    QString parentUnit;
    std::int64_t inspectedFirstUnit = 0;  // customers under periodic inspection in the first unit
    // Accounts planted for each alarm kind ("01".."06"), and the alarms the
    // scan raised for the current month.
    std::map<QString, QStringList> plantedAlarms;
    int alarmsThisMonth = 0;
};

// Called every few hundred customers with how many are written.
using ProgressFn = std::function<void(std::int64_t written, std::int64_t total)>;

// Limits of the options; out-of-range options are refused with a message.
constexpr std::int64_t kMaxCustomers = 5'000'000;
constexpr int kMaxUnits = 99;

// True when the database already holds the reference schema.
bool holdsReferenceSchema(const QSqlDatabase& db);

// Writes the demo utility into a database that holds the freshly created
// reference schema and nothing else. Everything is one transaction: a
// failure leaves no demo row behind. Throws EDatabaseError.
DemoSummary writeDemo(const QSqlDatabase& db, const DemoOptions& options, const ProgressFn& progress = {});

// Refuses a database that already holds the schema (EDatabaseError with a
// message saying so), creates the schema and writes the demo utility.
DemoSummary createDemoDatabase(const QSqlDatabase& db, const DemoOptions& options, const ProgressFn& progress = {});

}  // namespace tarvin::demo
