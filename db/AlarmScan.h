// The alarm scan: finds, for one month, the customers that fall under the
// six suspicious-customer alarm kinds and raises one e_bjtx reminder per
// month, account and kind ('未处理', the alarm screen lists and closes them).
//
// Each kind is one set-based INSERT ... SELECT over the customer file, the
// transformers and their stop records, the contracts and the energy ledger,
// with NOT EXISTS on the reminder's key, so that a second run for the same
// month adds nothing. All six run in one transaction. The rules and their
// thresholds are described in docs/alarms.md.
//
// It lives beside the schema (in tarvin_db) because everything that writes
// data calls it: the program tarvin-alarms, the demo generator (this month's
// alarms of the demo utility), the tests and the benchmark.
#pragma once

#include <QDate>
#include <QString>
#include <functional>
#include <vector>

namespace tarvin::alarms {

struct AlarmKind {
    QString code;     // "01" .. "06", the code of e_bjxz / e_bjtx
    QString caption;  // as the alarm settings screen shows it
};
// The six kinds in code order.
const std::vector<AlarmKind>& alarmKinds();

// Thresholds of the rules.
constexpr int kSwingPercent = 60;   // 04: change against last month, more than this
constexpr int kLoadPercent = 100;   // 05: load rate, more than this
constexpr int kDefaultDays = 30;    // 06: temporary supply ending within this many days
constexpr int kMaxDays = 366;

// The contract type that marks temporary supply; its end date is the
// contract's yxrq.
inline const QString kTemporaryContract = QStringLiteral("临时供用电合同");

struct ScanOptions {
    QString ny;              // the month, YYYYMM
    QString unit;            // empty: every unit; else this unit and the units directly under it
    int days = kDefaultDays; // kind 06: days ahead, 0 .. kMaxDays
    QDate today;             // invalid: the database clock
    // True when the caller holds a transaction on the connection that the
    // data layer does not know of (the demo generator's bulk write): the
    // scan then neither begins nor commits.
    bool inCallerTransaction = false;
};

struct KindResult {
    AlarmKind kind;
    int inserted = 0;  // new reminders of this run
};

struct ScanResult {
    QString ny;
    QDate referenceDay;  // the day kind 06 counts from
    std::vector<KindResult> kinds;
    int inserted() const;
};

// Called after each kind has run.
using ScanProgress = std::function<void(const KindResult&)>;

// The day kind 06 counts from: today in the current month, the month's last
// day for a past month. A month that has not begun is refused
// (std::invalid_argument), as is a text that is not YYYYMM.
QDate referenceDay(const QString& ny, const QDate& today);

// Runs the scan on the connection. Options are checked before anything is
// read (std::invalid_argument naming the option); an unknown unit is refused
// the same way. Database failures roll everything back and raise
// EDatabaseError.
ScanResult scanAlarms(const ScanOptions& options, const QString& connectionName = QStringLiteral("Shdl"),
                      const ScanProgress& progress = {});

}  // namespace tarvin::alarms
