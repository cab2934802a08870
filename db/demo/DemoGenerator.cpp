// The demo utility generator.
//
// Shape of the data (sizes at the default 20,000 customers in two units):
// a parent unit with K supply units; per unit departments, posts granting
// the workflow items of the catalogue, eight operators, inspectors; three
// substations, feeders in a tree under '00001', public transformer areas of
// about 90 low-voltage customers each; customers with supply source, meters,
// instrument transformers, billing point, contract, 24 months of ledger and
// charges ending at the current month, and their archived applications
// (installation, later changes, inspections, breaches, suspensions,
// metering faults).
//
// About 2.2 % of a unit's customers (at least 30) are under periodic
// inspection (y_khda.jczq > 0): the high-voltage customers and the larger
// low-voltage businesses. Among them, fixed numbers per unit are planted
// for the screening categories (see kRoles); screening sees every open
// account, so the rest of the data, households included, is kept clear of
// every category's threshold, and the planted customers are what the
// screening finds. Further customers carry the cases of the alarm kinds (see
// kRoles and the building sites whose temporary supply runs out soon); this
// month's alarms are raised at the end by the alarm scan itself, so the
// reminders are exactly what its rules find.
//
// Every customer draws from its own random stream (seed, account), so the
// data does not depend on the engine or on the order of writing, and one
// seed gives the same utility on SQLite and PostgreSQL.
#include "DemoGenerator.h"

#include <QDateTime>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "AlarmScan.h"
#include "data/Connection.h"
#include "DemoCatalogue.h"
#include "DemoRandom.h"
#include "data/MidasQuery.h"
#include "RowWriter.h"
#include "Schema.h"

namespace tarvin::demo {

namespace {

namespace cat = catalogue;
using std::string;
using tarvin::sql::Dialect;

constexpr int kMonths = 24;                // ledger months, ending at the current one
constexpr int kAreaCustomers = 90;         // customers per public transformer area
constexpr double kInspectedShare = 0.022;  // customers under periodic inspection
constexpr int kMinInspected = 30;          // per unit, so that every planted case fits
constexpr int kReferenceInspected = 220;   // planted counts are given for this many

// ---------------------------------------------------------------------------
// Small helpers

string pad(std::int64_t n, int width) {
    char b[32];
    std::snprintf(b, sizeof b, "%0*lld", width, static_cast<long long>(n));
    return b;
}

string ts(const QDate& d, int h = 0, int mi = 0, int s = 0) {
    char b[32];
    std::snprintf(b, sizeof b, "%04d-%02d-%02d %02d:%02d:%02d", d.year(), d.month(), d.day(), h, mi, s);
    return b;
}

string nyOf(const QDate& d) {
    char b[16];
    std::snprintf(b, sizeof b, "%04d%02d", d.year(), d.month());
    return b;
}

double round2(double v) { return std::round(v * 100.0) / 100.0; }

template <typename T>
T oneOf(Random& r, std::initializer_list<T> items) {
    return items.begin()[r.below(std::int64_t(items.size()))];
}

string personName(Random& r) {
    string s = r.pick(cat::kSurnames);
    s += r.pick(cat::kGiven);
    if (r.chance(0.7)) s += r.pick(cat::kGiven);
    return s;
}

string mobile(Random& r) {
    static const char* heads[] = {"130", "131", "133", "135", "137", "138", "139", "150", "152", "158", "177", "186", "189"};
    return string(r.pick(heads)) + pad(r.below(100000000), 8);
}

string landline(Random& r) { return "0771-" + pad(r.between(2000000, 8999999), 7); }

string idNumber(Random& r, const QDate& today) {
    const QDate birth = today.addDays(-r.between(20 * 365, 80 * 365));
    string s = "4501" + pad(r.between(2, 29), 2);
    char b[16];
    std::snprintf(b, sizeof b, "%04d%02d%02d", birth.year(), birth.month(), birth.day());
    s += b;
    s += pad(r.below(1000), 3);
    static const char check[] = "0123456789X";
    s += check[r.below(11)];
    return s;
}

string creditCode(Random& r) {
    static const char alphabet[] = "0123456789ABCDEFGHJKLMNPQRTUWXY";
    string s = "9145";
    for (int i = 0; i < 14; ++i) s += alphabet[r.below(31)];
    return s;
}

string bankAccount(Random& r) { return "62" + pad(r.below(1000000000), 9) + pad(r.below(100000000), 8); }

// ---------------------------------------------------------------------------
// Customers

enum class Kind : std::uint8_t {
    Residential,     // 220 V, public area
    SmallBusiness,   // 380 V, public area, below 50 kVA
    Temporary,       // 380 V building sites
    Business,        // 380 V, public area, 50-250 kVA, under inspection
    HighVoltage,     // 10 kV dedicated transformer, under inspection
    HighVoltage35,   // 35 kV, under inspection
    Agriculture,     // 10 kV farms on the agricultural tariff, under inspection
};

bool onPublicArea(Kind k) {
    return k == Kind::Residential || k == Kind::SmallBusiness || k == Kind::Temporary || k == Kind::Business;
}
bool highVoltage(Kind k) { return k == Kind::HighVoltage || k == Kind::HighVoltage35 || k == Kind::Agriculture; }

// Planted anomalies, each for the screening category in the comment.
enum class Role : std::uint8_t {
    None,           // not under inspection
    Inspected,      // under inspection, nothing planted
    Area,           // 2: on the unit's high-loss area
    Zero1,          // 10 (and 13, 14): zero energy in the last 1-2 months
    Zero3,          // 10, 11: zero in exactly the last 3 months
    Zero5,          // 10, 12: zero in the last 4-6 months
    Swing,          // 13: this month 70 % above the months before
    YearOnYear,     // 14: up 50 % on last year for the last six months
    PeakValley,     // 15: peak energy a quarter of the valley energy this month
    Heavy,          // 16: large-industry energy above 500,000 kWh
    PowerFactor,    // 17: power factor above 95 in the last three months
    Refund,         // 18: a refunded charge this month
    Tariff,         // 19: the 10 kV agricultural tariff
    Breach,         // 20: four or five breach/theft cases this year
    Suspension,     // 21: four supply suspensions this year
    DualSource,     // 22: a backup supply source
    OwnGeneration,  // 23: own generation
    FixedBilling,   // 24: a fixed-quantity or fixed-ratio billing point
    Change,         // 30: a business-expansion change archived today
    Expired,        // 31: contract expired
    Fault,          // 40: four metering faults this year
};

// Planted alarm cases, carried by customers of a screening role that they
// leave as it is (so the screening counts do not move, and the customers
// left for the work under way stay as many):
enum class Plant : std::uint8_t {
    None,
    StoppedInUse,  // 01, on a farm: transformer out of use and sealed, seal found broken, energy used
    NoReactive,    // 03, on a customer with a backup source: no reactive energy this month
    Jump,          // 04, on a power-factor customer: last month a dip to 40 %, the two before
                   // 130 %, so this month is 150 % above last, level with the months' average
    Overload,      // 05, on a refunded customer: 250 kVA loaded at 108-118 % in every month
};
struct PlantPlan {
    Plant plant;
    Role carrier;
    int count;  // per unit, at most as many as the carriers
};
constexpr PlantPlan kPlants[] = {
    {Plant::StoppedInUse, Role::Tariff, 3},
    {Plant::NoReactive, Role::DualSource, 3},
    {Plant::Jump, Role::PowerFactor, 3},
    {Plant::Overload, Role::Refund, 3},
};

struct RolePlan {
    Role role;
    int count;  // per unit with kReferenceInspected or more inspected customers
};

// In priority order: a small unit gets at least one of each, as long as
// it has inspected customers left.
constexpr RolePlan kRoles[] = {
    {Role::Area, 4},        {Role::Zero1, 4},         {Role::Zero3, 3},       {Role::Zero5, 3},
    {Role::Swing, 5},       {Role::YearOnYear, 4},    {Role::PeakValley, 5},  {Role::Heavy, 3},
    {Role::PowerFactor, 6}, {Role::Refund, 5},        {Role::Tariff, 5},      {Role::Breach, 3},
    {Role::Suspension, 3},  {Role::Fault, 3},         {Role::DualSource, 6},  {Role::OwnGeneration, 5},
    {Role::FixedBilling, 5}, {Role::Change, 4},       {Role::Expired, 5},
};
// Building sites per unit (not under inspection) whose temporary supply
// ends within the alarm's default 30 days.
constexpr int kEndingSupplies = 3;

struct Meter {
    string txm, jfdbh, jldbh, byqbh, dnbcch, dblb, dl, xx, jddj, dy, jlzzdfl, zbwz;
    int cbsx = 0;
    int zhbl = 1;
};

struct Transformer {  // instrument transformer
    string hgqbh, jldbh, hgqcch, hgqlb, hgqbb, jddj;
};

struct Customer {
    std::int64_t index = 0;  // over all units
    int local = 0;           // within its unit
    Kind kind = Kind::Residential;
    Role role = Role::None;
    Plant plant = Plant::None;
    int area = -1;
    string hh, hm, yddz, pym, khlx, zjmc, zjhm;
    int htrl = 0;
    string lxr, lxdh, lxdz, yzbm, fkdw;
    int fkfs = 1;
    string hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zwlxdh, zwlxr, zwlxdz, zzsyh, zzszh, zzsh, zzsm, zcdz, scbc, zxr,
        cbcbh, yhh, xhbz = "否";
    QDate lhrq, scjcrq, closed;
    int jczq = 0;
    string cdbh;
    string refundDoc;  // the refund document of a planted refund
    QDate stoppedOn;   // StoppedInUse: the transformer's stop
    bool endingSupply = false;  // a building site whose temporary supply ends soon
    string bdzbh, xlbh, byqbh, dylx, djm;
    double price = 0;
    std::vector<Meter> meters;
    std::vector<Transformer> transformers;
    QDate previousInspection;  // the inspection before scjcrq, when within the ledger window
};

struct Operator {
    string dm, name, bm;
};

struct Feeder {
    string xlbh, name, bdzbh;
};

struct AreaInfo {
    string byqbh, name, xlbh, bdzbh, community, street, cbcbh;
    int region = 0;
};

enum OperatorSlot { kAdmin, kLeader, kInspector1, kInspector2, kInspector3, kInspector4, kMetering, kBilling, kOperators };

struct Unit {
    int ord = 0;
    string dm, mc;
    std::int64_t first = 0, count = 0;
    int inspected = 0;
    std::vector<string> regionCodes, regionNames;
    string deptCheck, deptBusiness, deptMetering, deptBilling;
    std::vector<Operator> ops;
    std::vector<string> substations;
    std::vector<Feeder> tops, branches;
    std::vector<AreaInfo> areas;
    std::vector<Role> roles;  // per local customer
    std::vector<Plant> plants;       // per local customer
    std::vector<bool> endingSupply;  // per local customer
    std::vector<Customer> inspectedCustomers;
    std::vector<std::array<double, kMonths>> areaEnergy;
    int hvBooks = 0;
};

// ---------------------------------------------------------------------------

class Generator {
public:
    Generator(const QSqlDatabase& db, const DemoOptions& options, const ProgressFn& progress)
        : db_(db), o_(options), progress_(progress) {}

    DemoSummary run();

private:
    // numbering
    string nextCdbh() { return pad(++cdbh_, 10); }
    string nextJcph() { return pad(++jcph_, 10); }
    string nextDnbId() { return pad(++dnbid_, 10); }
    string nextGdfabh() { return pad(++gdfabh_, 10); }
    string nextMeter() { return "33" + pad(++meterSeq_, 10); }

    void readCatalogue();
    void declareTables();
    void writeCodeTables();
    void planUnits();
    void writeOrganisation(Unit& u);
    void writeNetwork(Unit& u);
    void planInspected(Unit& u);
    void writeCustomers(Unit& u, std::int64_t& written);
    Customer makeCustomer(Unit& u, int local);
    void writeCustomer(Unit& u, Customer& c, Random& r);
    void writeLedger(Unit& u, Customer& c, Random& r);
    void writeApplications(Unit& u, Customer& c, Random& r);
    Row application(const Customer& c, const string& cdbh, const string& slbm, const char* ywdm, const string& sqrq,
                    const string& sqbz, bool archived, const string& gdsj) const;
    void archive(const Unit& u, const Customer& c, const string& cdbh, const char* ywdm, const QDate& sqrq, const QDate& gdsj,
                 const string& sqbz, const char* sfygz, const char* sfwyqd, const char* sfxysf = "否");
    void writeAreaSupply(Unit& u);
    void writeInspectionHistory(std::vector<Unit>& units);
    void writePlans(Unit& u);
    void writeOpenCases(Unit& u);
    void writeAlarms(Unit& u);
    void advanceCounters();
    const string& itemName(const string& ywxdm) const;

    QSqlDatabase db_;
    DemoOptions o_;
    ProgressFn progress_;
    Dialect dialect_ = Dialect::SQLite;
    std::unique_ptr<RowWriter> w_;
    QDate today_;
    QDate firstMonth_;
    std::array<string, kMonths> ny_, cbrq_, fxrq_;
    std::array<int, kMonths> monthOfYear_{};
    std::vector<Unit> units_;

    struct Item {
        string ywxdm, ywxmc, ywdm;
    };
    std::vector<Item> items_;
    std::map<string, string> itemNames_;
    std::vector<string> changeBusinesses_;  // class 0001 codes the demo uses for changes

    std::map<QString, QStringList> plantedAlarms_;
    int alarmsRaised_ = 0;
    void planted(const char* kind, const string& hh) { plantedAlarms_[QString::fromLatin1(kind)] << QString::fromStdString(hh); }

    std::int64_t cdbh_ = 0, jcph_ = 0, dnbid_ = 0, gdfabh_ = 0, meterSeq_ = 0, hgqSeq_ = 0, dedicatedSeq_ = 0;
    int jhbh_ = 0;

    // table handles
    int tDwbm_{}, tBmbm_{}, tXtczy_{}, tGw_{}, tCzyygw_{}, tYwzn_{}, tGwyzn_{}, tZnyywx_{}, tCode_[21]{}, tDjb_{}, tAllDjm_{},
        tBdz_{}, tXl_{}, tByq_{}, tTqgdl_{}, tKhda_{}, tGkhda_{}, tGddy_{}, tJfxx_{}, tHtxx_{}, tDnb_{}, tHgq_{}, tZbdy_{},
        tCbc_{}, tDltz_{}, tDfxx_{}, tTbjl_{}, tTbdf_{}, tKhsq_{}, tYkkz_{}, tHKhsq_{}, tHYkkz_{}, tGdfa_{}, tDnbfa_{},
        tHgqfa_{}, tJcjh_{}, tJcry_{}, tJcgzap_{}, tJcgzjl_{}, tJcjg_{}, tJlyc_{}, tWyyd_{}, tWymx_{}, tBjxz_{}, tBjtx_{},
        tDqgw_{}, tLcls_{}, tGzdxx_{}, tByqty_{};
};

// ---------------------------------------------------------------------------

void Generator::readCatalogue() {
    QSqlQuery q(db_);
    if (!q.exec(QStringLiteral("SELECT ywxdm, ywxmc, ywdm FROM z_ywx ORDER BY ywxdm")))
        throw EDatabaseError(QStringLiteral("Cannot read the business items: %1").arg(q.lastError().text()));
    while (q.next()) {
        Item it{q.value(0).toString().toStdString(), q.value(1).toString().toStdString(), q.value(2).toString().toStdString()};
        itemNames_[it.ywxdm] = it.ywxmc;
        items_.push_back(std::move(it));
    }
    if (!q.exec(QStringLiteral("SELECT ywdm FROM z_dlyxyw WHERE ywlbdm = '0001' ORDER BY ywdm")))
        throw EDatabaseError(QStringLiteral("Cannot read the business catalogue: %1").arg(q.lastError().text()));
    std::vector<string> expansion;
    while (q.next()) expansion.push_back(q.value(0).toString().toStdString());
    for (const char* code : {"110", "116", "118", "119", "121"})
        if (std::find(expansion.begin(), expansion.end(), code) != expansion.end()) changeBusinesses_.push_back(code);
    for (const char* needed : {"101", "102", "103", "104", "120"})
        if (std::find(expansion.begin(), expansion.end(), needed) == expansion.end())
            throw EDatabaseError(QStringLiteral("The business catalogue lacks business %1, which the demo archives").arg(QLatin1String(needed)));
    if (changeBusinesses_.empty()) throw EDatabaseError(QStringLiteral("The business catalogue holds no change business of class 0001"));
    for (const char* needed : {"40101", "40102", "40103", "40104", "16001", "16002"})
        if (!itemNames_.count(needed))
            throw EDatabaseError(QStringLiteral("The workflow catalogue lacks item %1").arg(QLatin1String(needed)));
}

const string& Generator::itemName(const string& ywxdm) const { return itemNames_.at(ywxdm); }

void Generator::declareTables() {
    RowWriter& w = *w_;
    tDwbm_ = w.declare("z_dwbm", {"dm", "mc", "sjdw", "jb", "sfyx"});
    tBmbm_ = w.declare("z_bmbm", {"dm", "mc", "sjbm"});
    tXtczy_ = w.declare("z_xtczy", {"dm", "xingming", "dw", "bm", "kl", "sfyx"});
    tGw_ = w.declare("z_gw", {"dm", "mc", "dw", "sfyx"});
    tCzyygw_ = w.declare("z_czyygw", {"czydm", "zdm"});
    tYwzn_ = w.declare("z_ywzn", {"dm", "mc", "sfyx"});
    tGwyzn_ = w.declare("z_gwyzn", {"gwdm", "zndm"});
    tZnyywx_ = w.declare("z_znyywx", {"zndm", "cldm"});
    static const char* codeTables[] = {"w_khlx", "w_dydj", "c_dydj", "w_ydlb", "w_zyhy", "w_qy", "w_yhdm", "w_fkfs", "w_jclx",
                                       "w_jcxm", "w_qxxz", "w_gzxz", "w_dl", "w_xx", "w_dbdy", "w_hgqjd", "w_dlbb", "w_dybb"};
    for (std::size_t i = 0; i < std::size(codeTables); ++i) tCode_[i] = w.declare(codeTables[i], {"dm", "mc"});
    tCode_[18] = w.declare("w_dnbjd", {"dm", "dmsm"});
    tDjb_ = w.declare("b_djb", {"djm", "djmc", "dj", "ydlb", "dydj"});
    tAllDjm_ = w.declare("all_djm", {"djm", "djmc", "dj", "sfyx"});
    tBdz_ = w.declare("y_bdz", {"bdzbh", "bdzmc", "dydj", "dw"});
    tXl_ = w.declare("y_xl", {"xlbh", "xlmc", "sjxlbh", "bdzbh", "dydj", "dw"});
    tByq_ = w.declare("y_yxbyq", {"byqbh", "byqmc", "byqlx", "hh", "xlbh", "rl", "zt", "tyrq", "dw"});
    tByqty_ = w.declare("y_byqty", {"byqbh", "tyrq", "hh", "hfrq", "fyzt", "jcrq", "cdbh", "dw"});
    tTqgdl_ = w.declare("g_tqgdl", {"tqbh", "ny", "dw", "gdl", "shsx", "shxx"});
    tKhda_ = w.declare("y_khda", {"hh", "hm", "yddz", "pym", "khlx", "zjmc", "zjhm", "htrl", "lxr", "lxdh", "lxdz", "yzbm", "fkdw",
                                  "fkfs", "hyfl", "ydlb", "dydj", "yhdm", "yhzh", "dw", "xzq", "sfxyh", "zwlxdh", "zwlxr", "zwlxdz",
                                  "zzsyh", "zzszh", "zzsh", "zzsm", "zcdz", "scbc", "zxr", "cbcbh", "yhh", "xhbz", "lhrq",
                                  "scjcrq", "jczq", "cdbh"});
    tGkhda_ = w.declare("g_khda", {"hh", "hm", "yddz", "khlx", "dw"});
    tGddy_ = w.declare("y_gddy", {"hh", "xh", "dyxz", "dylx", "bdzbh", "xlbh", "byqbh", "dydj", "dw"});
    tJfxx_ = w.declare("y_jfxx", {"hh", "jfdbh", "djm", "js", "jflx", "dldbz", "dw"});
    tHtxx_ = w.declare("y_htxx", {"hh", "htbh", "htlx", "qdrq", "yxrq", "dw"});
    tDnb_ = w.declare("y_yxdnb", {"txm", "hh", "jfdbh", "jldbh", "byqbh", "dnbcch", "dblb", "dl", "xx", "jddj", "dy", "cbsx",
                                  "zhbl", "cq", "ckbbz", "gkbbz", "jlzzdfl", "zbwz", "cblb", "sslx", "zcrq", "dw"});
    tHgq_ = w.declare("y_yxhgq", {"hgqbh", "hh", "jldbh", "hgqcch", "hgqlb", "hgqbb", "jddj", "zs", "dw"});
    tZbdy_ = w.declare("e_zbdygl", {"hh", "xh", "dymc", "dylx", "rl", "tyrq", "dw"});
    tCbc_ = w.declare("b_cbc", {"cbcbh", "cbcmc", "cby", "dw"});
    tDltz_ = w.declare("b_dltzxx", {"hh", "ny", "jfdbh", "jffdl", "jfpdl", "jfgdl", "wgdl", "sjll", "llkhbz", "djm", "cbrq", "dw"});
    tDfxx_ = w.declare("c_dfxx", {"hh", "ny", "xh", "ysdf", "ssdf", "fxrq", "dw"});
    tTbjl_ = w.declare("b_tbjl", {"tbcdh", "glcdbh", "hh", "tblx", "tbyy", "jbr", "jbrq", "dw"});
    tTbdf_ = w.declare("b_tbdfxx", {"tbcdh", "hh", "ny", "jfdbh", "fdl", "gdl", "pdl", "fdf", "gdf", "pdf", "dsk6", "dsk7", "rldf",
                                    "xldf", "lldf"});
    const std::vector<string> appColumns = {
        "cdbh", "slbm", "ywdm", "sqrq", "sqbz", "hh", "khlx", "hm", "yddz", "zjmc", "zjhm", "htrl", "lxr", "lxdh", "lxdz",
        "yzbm", "fkdw", "fkfs", "hyfl", "ydlb", "dydj", "yhdm", "yhzh", "dw", "xzq", "sfxyh", "zwlxdh", "zwlxr", "zwlxdz",
        "zzsyh", "zzszh", "zzsh", "zzsm", "zcdz", "scbc", "zxr", "cbcbh", "yhh"};
    tKhsq_ = w.declare("a_khsqxx", appColumns);
    std::vector<string> archived = appColumns;
    archived.push_back("gdsj");
    tHKhsq_ = w.declare("a_h_khsqxx", archived);
    tYkkz_ = w.declare("a_ykkzb", {"cdbh", "sfygz", "sfxyb", "sfcjx", "sfxysf", "sfwyqd", "htrl"});
    tHYkkz_ = w.declare("a_h_ykkzb", {"cdbh", "sfygz", "sfxyb", "sfcjx", "sfxysf", "sfwyqd", "htrl", "gdsj"});
    tGdfa_ = w.declare("a_gdfa", {"gdfabh", "cdbh", "hh", "kcr", "kcbz", "kcrq"});
    tDnbfa_ = w.declare("a_dnbfa", {"id", "cdbh", "hh", "jfdbh", "jldbh", "txm", "byqbh", "dnbcch", "dblb", "gzlx", "dl", "xx",
                                    "bgsm", "jddj", "dy", "cbsx", "dw", "zhbl", "cq", "ckbbz", "gkbbz", "jlzzdfl", "thdl", "thxx",
                                    "zbwz", "cblb", "sslx"});
    tHgqfa_ = w.declare("a_hgqfa", {"id", "cdbh", "hh", "jldbh", "hgqcch", "hgqbh", "hgqlb", "hgqbb", "bgsm", "zs", "gzlb",
                                    "jddj", "dw"});
    tJcjh_ = w.declare("e_jcjh", {"jhbh", "jhlx", "jhjcqrq", "jhjczrq", "jcbm", "jchs", "jcnr", "bz", "dw", "zdbm", "zdr", "zdrq"});
    tJcry_ = w.declare("e_jcryxx", {"czydm", "xm", "jczh", "jczjb", "xb", "dw"});
    tJcgzap_ = w.declare("e_jcgzap", {"jcph", "jcbm", "jcnr", "dw", "bz", "zdr", "zdsj", "spr", "spyj", "sprq"});
    tJcgzjl_ = w.declare("e_jcgzjl", {"cdbh", "hh", "hm", "yddz", "khlx", "dydj", "xlbh", "tqbh", "jczq", "scjcrq", "jhlx",
                                      "jhjcrq", "jclx", "jcry", "jczh", "hjrs", "zt", "jcph", "dybz", "jcrq", "jczg", "khqz",
                                      "jcjg", "czwt"});
    tJcjg_ = w.declare("e_jcjg", {"cdbh", "dm", "mc", "xcqk"});
    tJlyc_ = w.declare("e_jlycgzd", {"cdbh", "hh", "hm", "yddz", "jcry", "jczh", "ycxz", "gzlx", "rdyj", "jcrq", "jcbz", "dw",
                                     "ywdm", "sfcl", "zbzdl", "zbdldf", "zbjbdf", "zblldf", "wysydf", "yzbdf", "clbz", "clry",
                                     "clrq", "spry", "sprq"});
    tWyyd_ = w.declare("j_wyydqd", {"cdbh", "hh", "wylx", "wyrq", "wydl", "wysydf", "dw"});
    tWymx_ = w.declare("j_wymx", {"cdbh", "xh", "wyxm", "wysm", "je"});
    tBjxz_ = w.declare("e_bjxz", {"czydm", "bjdm", "sfyx"});
    tBjtx_ = w.declare("e_bjtx", {"ny", "hh", "bjdm", "bjxm", "dw", "zt", "txrq", "clqk", "clr", "clrq"});
    tDqgw_ = w.declare("z_dqgw", {"cdbh", "ywdm", "khbh", "hm", "yddz", "dqywx", "dqywxmc", "lastywx", "lastywxmc", "czy", "glbm",
                                  "yxj", "kssj", "jssj"});
    tLcls_ = w.declare("z_lcls", {"cdbh", "xh", "ywdm", "ywxdm", "ywxmc", "czy", "glbm", "jssj", "wcsj"});
    tGzdxx_ = w.declare("z_gzdxx", {"cdbh", "xh", "ywxdm", "jsczy", "nr", "fssj", "ydbz"});
}

void Generator::writeCodeTables() {
    RowWriter& w = *w_;
    const auto codes = [&](int table, const auto& list) {
        for (const cat::Code& c : list) w.add(table, {c.dm, c.mc});
    };
    codes(tCode_[0], cat::kKhlx);
    codes(tCode_[1], cat::kDydj);
    codes(tCode_[2], cat::kDydj);
    codes(tCode_[3], cat::kYdlb);
    codes(tCode_[4], cat::kZyhy);
    // w_qy: the regions of every unit
    for (const Unit& u : units_)
        for (std::size_t i = 0; i < u.regionCodes.size(); ++i) w.add(tCode_[5], {u.regionCodes[i], u.regionNames[i]});
    codes(tCode_[6], cat::kYhdm);
    codes(tCode_[7], cat::kFkfs);
    codes(tCode_[8], cat::kJclx);
    codes(tCode_[9], cat::kJcxm);
    codes(tCode_[10], cat::kQxxz);
    codes(tCode_[11], cat::kGzxz);
    codes(tCode_[12], cat::kDl);
    codes(tCode_[13], cat::kXx);
    codes(tCode_[14], cat::kDbdy);
    codes(tCode_[15], cat::kHgqjd);
    codes(tCode_[16], cat::kDlbb);
    codes(tCode_[17], cat::kDybb);
    codes(tCode_[18], cat::kDnbjd);
    for (const cat::Tariff& t : cat::kTariffs) {
        w.add(tDjb_, {t.djm, t.djmc, t.dj, t.ydlb, t.dydj});
        w.add(tAllDjm_, {t.djm, t.djmc, t.dj, "是"});
    }
    for (const cat::Tariff& t : cat::kRetiredTariffs) w.add(tAllDjm_, {t.djm, t.djmc, t.dj, "否"});
}

// ---------------------------------------------------------------------------
// Units, organisation, network

void Generator::planUnits() {
    const std::int64_t n = o_.customers;
    for (int k = 0; k < o_.units; ++k) {
        Unit u;
        u.ord = k + 1;
        u.dm = "01" + pad(u.ord, 2);
        u.mc = k < int(std::size(cat::kUnitNames)) ? cat::kUnitNames[k] : "第" + std::to_string(u.ord) + "供电分公司";
        u.first = n * k / o_.units;
        u.count = n * (k + 1) / o_.units - u.first;
        for (int r = 0; r < 3; ++r) {
            const int idx = k * 3 + r;
            u.regionCodes.push_back(u.dm + pad(r + 1, 2));
            u.regionNames.push_back(idx < int(std::size(cat::kRegions)) ? cat::kRegions[idx]
                                                                        : u.mc.substr(0, u.mc.find("供电")) + "第" + std::to_string(r + 1) + "片区");
        }
        u.deptCheck = u.dm + "01";
        u.deptBusiness = u.dm + "02";
        u.deptMetering = u.dm + "03";
        u.deptBilling = u.dm + "04";
        units_.push_back(std::move(u));
    }
}

void Generator::writeOrganisation(Unit& u) {
    RowWriter& w = *w_;
    Random r(o_.seed, 0x100 + std::uint64_t(u.ord));
    w.add(tDwbm_, {u.dm, u.mc, "01", 2, 1});
    w.add(tBmbm_, {u.deptCheck, "用电检查班", "0100"});
    w.add(tBmbm_, {u.deptBusiness, "营业班", "0100"});
    w.add(tBmbm_, {u.deptMetering, "计量班", "0100"});
    w.add(tBmbm_, {u.deptBilling, "电费班", "0100"});

    // Posts and the items each grants (functions are one per item).
    struct Post {
        const char* suffix;
        const char* name;
        bool (*grants)(const Item&);
    };
    static const Post posts[] = {
        {"01", "用电检查班长", [](const Item& i) { return i.ywdm == "401" || i.ywxdm == "40099"; }},
        {"02", "用电检查员", [](const Item& i) { return (i.ywdm == "401" && i.ywxdm != "40102") || i.ywxdm == "40099" || i.ywxdm == "16001"; }},
        {"03", "计量专责", [](const Item& i) { return i.ywdm == "160" || i.ywdm == "191"; }},
        {"04", "电费核算员", [](const Item& i) { return i.ywdm == "201"; }},
        {"05", "营销管理员", [](const Item&) { return true; }},  // the alarm scan (40098) too
    };
    for (const Post& p : posts) {
        const string gw = u.dm + p.suffix;
        w.add(tGw_, {gw, p.name, u.dm, 1});
        for (const Item& it : items_)
            if (p.grants(it)) w.add(tGwyzn_, {gw, "ZN" + it.ywxdm});
    }

    // Operators: the slot decides department and post.
    static const struct {
        int post;  // index into posts
        int dept;  // 0 check, 1 business, 2 metering, 3 billing
    } roster[kOperators] = {{4, 1}, {0, 0}, {1, 0}, {1, 0}, {1, 0}, {1, 0}, {2, 2}, {3, 3}};
    const string depts[] = {u.deptCheck, u.deptBusiness, u.deptMetering, u.deptBilling};
    for (int s = 0; s < kOperators; ++s) {
        Operator op{u.dm + pad(s + 1, 3), personName(r), depts[roster[s].dept]};
        w.add(tXtczy_, {op.dm, op.name, u.dm, op.bm, nullptr, 1});
        w.add(tCzyygw_, {op.dm, u.dm + posts[roster[s].post].suffix});
        u.ops.push_back(std::move(op));
    }
    // Inspectors: the leader and the four inspectors.
    static const char* levels[] = {"一级", "二级", "二级", "三级", "三级"};
    for (int s = kLeader; s <= kInspector4; ++s)
        w.add(tJcry_, {u.ops[s].dm, u.ops[s].name, "JC" + u.dm + pad(s, 2), levels[s - kLeader], r.chance(0.7) ? "男" : "女", u.dm});
    // Alarm options: the leader and the administrator want every kind, the
    // first inspector four of six.
    for (int k = 1; k <= 6; ++k) {
        w.add(tBjxz_, {u.ops[kAdmin].dm, pad(k, 2), "是"});
        w.add(tBjxz_, {u.ops[kLeader].dm, pad(k, 2), "是"});
        w.add(tBjxz_, {u.ops[kInspector1].dm, pad(k, 2), k <= 4 ? "是" : "否"});
    }
}

void Generator::writeNetwork(Unit& u) {
    RowWriter& w = *w_;
    Random r(o_.seed, 0x200 + std::uint64_t(u.ord));
    const int areas = int(std::max<std::int64_t>(1, (u.count + kAreaCustomers - 1) / kAreaCustomers));
    const int tops = std::max(2, (areas + 7) / 8);
    const int stations = std::max(1, (tops + 5) / 6);
    for (int s = 0; s < stations; ++s) {
        const string bh = "BDZ" + pad(u.ord, 2) + pad(s + 1, 2);
        const int idx = ((u.ord - 1) * 3 + s) % int(std::size(cat::kSubstations));
        const int cycle = ((u.ord - 1) * 3 + s) / int(std::size(cat::kSubstations));
        w.add(tBdz_, {bh, string(cat::kSubstations[idx]) + (cycle ? std::to_string(cycle + 1) : "") + "110kV变电站", "05", u.dm});
        u.substations.push_back(bh);
    }
    int seq = 0;
    for (int t = 0; t < tops; ++t) {
        const int idx = ((u.ord - 1) * 5 + t) % int(std::size(cat::kFeederWords));
        const int cycle = ((u.ord - 1) * 5 + t) / int(std::size(cat::kFeederWords));
        Feeder f{pad(u.ord, 2) + pad(++seq, 5), "10kV" + string(cat::kFeederWords[idx]) + (cycle ? std::to_string(cycle + 1) : "") + "线",
                 u.substations[std::size_t(t % stations)]};
        w.add(tXl_, {f.xlbh, f.name, "00001", f.bdzbh, "03", u.dm});
        u.tops.push_back(std::move(f));
    }
    for (int t = 0; t < tops; ++t)
        for (int b = 1; b <= 2; ++b) {
            const Feeder& top = u.tops[std::size_t(t)];
            Feeder f{pad(u.ord, 2) + pad(++seq, 5), top.name + std::to_string(b) + "号支线", top.bdzbh};
            w.add(tXl_, {f.xlbh, f.name, top.xlbh, f.bdzbh, "03", u.dm});
            u.branches.push_back(std::move(f));
        }
    static const int sizes[] = {200, 315, 400, 630};
    for (int a = 0; a < areas; ++a) {
        AreaInfo ar;
        ar.byqbh = "T" + pad(u.ord, 2) + pad(a + 1, 5);
        const int n = int(std::size(cat::kCommunities));
        const int ci = (a * 7 + u.ord * 11) % n;
        ar.community = cat::kCommunities[ci];
        if (a / n) ar.community += std::to_string(a / n + 1) + "期";
        ar.name = ar.community + "公变";
        ar.street = cat::kStreets[(a * 3 + u.ord) % int(std::size(cat::kStreets))];
        ar.region = a % 3;
        const Feeder& f = u.branches[std::size_t(a) % u.branches.size()];
        ar.xlbh = f.xlbh;
        ar.bdzbh = f.bdzbh;
        // One reading book per area (six-character numbers, the last
        // thousand kept for the high-voltage books).
        const int book = a % 8999 + 1;
        ar.cbcbh = pad(u.ord, 2) + pad(book, 4);
        if (a < 8999) w.add(tCbc_, {ar.cbcbh, ar.community + "抄表册", personName(r), u.dm});
        w.add(tByq_, {ar.byqbh, ar.name, "公变", nullptr, ar.xlbh, r.pick(sizes), "运行", nullptr, u.dm});
        u.areas.push_back(std::move(ar));
    }
    u.areaEnergy.assign(std::size_t(areas), {});
}

void Generator::planInspected(Unit& u) {
    const int n = int(u.count);
    u.inspected = int(std::max<std::int64_t>(std::llround(double(n) * kInspectedShare), std::min(n, kMinInspected)));
    u.inspected = std::min(u.inspected, n);
    u.roles.assign(std::size_t(n), Role::None);
    // A seeded choice of which customers are under inspection ...
    Random r(o_.seed, 0x300 + std::uint64_t(u.ord));
    std::vector<int> order(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) order[std::size_t(i)] = i;
    for (int i = 0; i < u.inspected; ++i) std::swap(order[std::size_t(i)], order[std::size_t(i + r.below(n - i))]);
    // ... and which of them carry a planted anomaly.
    int next = 0;
    for (const RolePlan& p : kRoles) {
        const int count = u.inspected >= kReferenceInspected ? p.count : std::max(1, p.count * u.inspected / kReferenceInspected);
        for (int k = 0; k < count && next < u.inspected; ++k) u.roles[std::size_t(order[std::size_t(next++)])] = p.role;
    }
    for (; next < u.inspected; ++next) u.roles[std::size_t(order[std::size_t(next)])] = Role::Inspected;
    u.plants.assign(std::size_t(n), Plant::None);
    for (const PlantPlan& p : kPlants) {
        int left = p.count;
        for (int i = 0; i < u.inspected && left > 0; ++i) {
            const std::size_t local = std::size_t(order[std::size_t(i)]);
            if (u.roles[local] == p.carrier && u.plants[local] == Plant::None) u.plants[local] = p.plant, --left;
        }
    }
    // The building sites are drawn from the customers not under inspection.
    u.endingSupply.assign(std::size_t(n), false);
    for (int k = 0; k < kEndingSupplies && u.inspected + k < n; ++k) {
        const int i = u.inspected + k;
        std::swap(order[std::size_t(i)], order[std::size_t(i + r.below(n - i))]);
        u.endingSupply[std::size_t(order[std::size_t(i)])] = true;
    }
}

// ---------------------------------------------------------------------------
// Customers

Customer Generator::makeCustomer(Unit& u, int local) {
    Customer c;
    c.local = local;
    c.index = u.first + local;
    c.role = u.roles[std::size_t(local)];
    c.plant = u.plants[std::size_t(local)];
    Random r(o_.seed, 0x1000000 + std::uint64_t(c.index));
    c.hh = pad(c.index + 1, 10);
    c.dw = u.dm;

    switch (c.role) {
    case Role::None: {
        const double p = r.unit();
        c.kind = p < 0.87 ? Kind::Residential : p < 0.99 ? Kind::SmallBusiness : Kind::Temporary;
        c.endingSupply = u.endingSupply[std::size_t(local)];
        if (c.endingSupply) c.kind = Kind::Temporary;
        if (c.kind == Kind::Residential && r.chance(0.012)) c.xhbz = "是";
        break;
    }
    case Role::Area: c.kind = Kind::Business; break;
    case Role::Heavy: c.kind = Kind::HighVoltage35; break;
    case Role::Tariff: c.kind = Kind::Agriculture; break;
    case Role::PowerFactor:
    case Role::Zero1:
    case Role::Zero3:
    case Role::Zero5:
    case Role::DualSource:
    case Role::Swing: c.kind = Kind::HighVoltage; break;
    default: {
        const double p = r.unit();
        c.kind = p < 0.60 ? Kind::HighVoltage : p < 0.90 ? Kind::Business : Kind::HighVoltage35;
        if (c.plant == Plant::Overload) c.kind = Kind::HighVoltage;
    }
    }

    const QDate& today = today_;
    const bool inspected = c.role != Role::None;
    c.lhrq = today.addDays(-(inspected ? r.between(3 * 365, 15 * 365) : r.between(60, 15 * 365)));
    if (c.xhbz == "是") c.closed = today.addDays(-r.between(20, 700));
    if (c.closed.isValid() && c.closed <= c.lhrq.addDays(30)) c.xhbz = "否", c.closed = QDate();

    // Place: an area for the low-voltage customers, a dedicated
    // transformer on a feeder for the others.
    const AreaInfo* area = nullptr;
    if (onPublicArea(c.kind)) {
        c.area = c.role == Role::Area ? 0 : int(std::int64_t(local) * std::int64_t(u.areas.size()) / u.count);
        // The high-loss area's customers are the planted ones.
        if (c.area == 0 && c.role != Role::Area && u.areas.size() > 1) c.area = 1;
        area = &u.areas[std::size_t(c.area)];
        c.byqbh = area->byqbh;
        c.xlbh = area->xlbh;
        c.bdzbh = area->bdzbh;
        c.dylx = "公变";
        c.cbcbh = area->cbcbh;
        c.xzq = u.regionCodes[std::size_t(area->region)];
    } else {
        const std::vector<Feeder>& feeders = r.chance(0.5) ? u.tops : u.branches;
        const Feeder& f = feeders[std::size_t(r.below(std::int64_t(feeders.size())))];
        c.xlbh = f.xlbh;
        c.bdzbh = f.bdzbh;
        c.byqbh = "Z" + pad(++dedicatedSeq_, 8);
        c.dylx = "专变";
        const int book = 9000 + int(local % 999) / 80 + 1;
        c.cbcbh = pad(u.ord, 2) + pad(book, 4);
        u.hvBooks = std::max(u.hvBooks, book - 9000);
        c.xzq = u.regionCodes[std::size_t(r.below(3))];
    }
    const string region = u.regionNames[std::size_t(std::find(u.regionCodes.begin(), u.regionCodes.end(), c.xzq) - u.regionCodes.begin())];
    const string street = area ? area->street : string(r.pick(cat::kStreets));

    // Who the customer is.
    const bool person = c.kind == Kind::Residential;
    const char* core = nullptr;
    switch (c.kind) {
    case Kind::Residential:
        c.khlx = "01", c.ydlb = "01", c.dydj = "01", c.hyfl = "01", c.djm = "1101";
        c.htrl = int(oneOf(r, {4, 6, 8, 10}));
        break;
    case Kind::SmallBusiness:
    case Kind::Business: {
        static const char* trades[] = {"09", "10", "12", "13", "14", "15", "16", "08", "11"};
        c.khlx = "02", c.ydlb = "02", c.dydj = "02", c.djm = "2101";
        c.hyfl = r.pick(trades);
        c.htrl = c.kind == Kind::Business ? int(oneOf(r, {50, 63, 80, 100, 125, 160, 200, 250}))
                                          : int(oneOf(r, {10, 15, 20, 25, 30, 40}));
        core = r.pick(cat::kCommerceCores);
        break;
    }
    case Kind::Temporary:
        c.khlx = "04", c.ydlb = "02", c.dydj = "02", c.hyfl = "06", c.djm = "2101";
        c.htrl = int(oneOf(r, {20, 30, 50, 80, 100}));
        core = r.pick(cat::kBuildCores);
        break;
    case Kind::HighVoltage: {
        static const char* trades[] = {"04", "04", "04", "04", "03", "05", "07", "09", "15"};
        c.khlx = "03", c.dydj = "03";
        c.htrl = int(oneOf(r, {250, 315, 400, 500, 630, 800, 1000, 1250, 1600}));
        if (c.plant == Plant::Overload) c.htrl = 250;
        c.ydlb = c.htrl >= 315 ? "03" : "02";
        c.djm = c.htrl >= 315 ? "3102" : "2102";
        c.hyfl = r.pick(trades);
        core = c.hyfl == "04" || c.hyfl == "03" ? r.pick(cat::kIndustryCores) : r.pick(cat::kCommerceCores);
        break;
    }
    case Kind::HighVoltage35:
        c.khlx = "03", c.dydj = "04", c.ydlb = "03", c.djm = "3103", c.hyfl = "04";
        c.htrl = c.role == Role::Heavy ? int(oneOf(r, {5000, 6300, 8000})) : int(oneOf(r, {2000, 2500, 3150}));
        core = r.pick(cat::kIndustryCores);
        break;
    case Kind::Agriculture:
        c.khlx = "03", c.dydj = "03", c.ydlb = "04", c.djm = "4102", c.hyfl = "02";
        c.htrl = int(oneOf(r, {100, 160, 200, 250, 315, 400}));
        core = r.pick(cat::kFarmCores);
        break;
    }
    for (const cat::Tariff& t : cat::kTariffs)
        if (c.djm == t.djm) c.price = t.dj;

    if (person) {
        c.hm = personName(r);
        c.yddz = region + street + area->community + std::to_string(r.between(1, 30)) + "栋" + std::to_string(r.between(1, 4)) +
                 "单元" + std::to_string(r.between(1, 28)) + pad(r.between(1, 4), 2) + "室";
        c.zjmc = "居民身份证";
        c.zjhm = idNumber(r, today);
        c.lxr = c.hm;
        c.lxdh = mobile(r);
        c.fkfs = r.chance(0.6) ? 3 : int(r.between(1, 4));
    } else {
        c.hm = region.substr(0, region.size() - 3) + r.pick(cat::kCompanyPrefixes) + core + r.pick(cat::kCompanySuffixes);
        if (c.kind == Kind::Temporary) c.hm += string(r.pick(cat::kStreets)) + "项目部";
        c.yddz = region + street + std::to_string(r.between(1, 999)) + "号";
        c.zjmc = "统一社会信用代码";
        c.zjhm = creditCode(r);
        c.lxr = personName(r);
        c.lxdh = r.chance(0.5) ? landline(r) : mobile(r);
        c.fkfs = int(oneOf(r, {2, 3, 3, 5}));
        if (c.kind != Kind::SmallBusiness && c.kind != Kind::Temporary) {
            c.sfxyh = highVoltage(c.kind) ? "是" : "否";
            c.zwlxr = personName(r);
            c.zwlxdh = landline(r);
            c.zwlxdz = c.yddz;
            c.zzsyh = r.pick(cat::kYhdm).mc;
            c.zzszh = bankAccount(r);
            c.zzsh = c.zjhm;
            c.zzsm = c.hm;
            c.zcdz = c.yddz;
            if (c.hyfl == "04" || c.hyfl == "03") c.scbc = oneOf<const char*>(r, {"单班", "两班", "三班", "连续生产"});
        }
    }
    c.lxdz = c.yddz;
    c.pym = c.xzq + pad(std::find(std::begin(cat::kStreets), std::end(cat::kStreets), street) - std::begin(cat::kStreets) + 1, 3);
    c.yzbm = "53" + pad((u.ord * 3 + (c.xzq.back() - '0')) % 10000, 4);
    c.fkdw = c.hm;
    if (c.fkfs == 3 || c.fkfs == 5) {
        c.yhdm = r.pick(cat::kYhdm).dm;
        c.yhzh = bankAccount(r);
    }
    if (c.sfxyh.empty()) c.sfxyh = "否";
    if (r.chance(0.04)) c.yhh = "Y" + pad(r.below(100000000), 8);

    if (inspected) {
        c.jczq = c.kind == Kind::HighVoltage35 ? 6 : c.kind == Kind::Business ? 24 : 12;
        c.zxr = u.ops[std::size_t(kInspector1 + r.below(4))].name;
        // Last inspection somewhere in the cycle (a few overdue, a few never).
        if (!r.chance(0.06)) {
            c.scjcrq = today.addDays(-r.between(5, c.jczq * 30 + 90));
            if (c.scjcrq < c.lhrq) c.scjcrq = QDate();
        }
        if (c.scjcrq.isValid()) {
            const QDate before = c.scjcrq.addMonths(-c.jczq).addDays(-r.below(20));
            if (before > c.lhrq && before >= today.addDays(-730)) c.previousInspection = before;
        }
    }

    // Meters and instrument transformers.
    Meter m;
    m.jfdbh = "01";
    m.jldbh = c.hh + "01";
    m.byqbh = c.byqbh;
    m.cbsx = local % 1000 + 1;
    string ct;
    int ctPrimary = 0;
    if (c.kind == Kind::Business) {
        ct = c.htrl <= 63 ? "100/5" : c.htrl <= 100 ? "150/5" : c.htrl <= 160 ? "300/5" : "400/5";
    } else if (c.kind == Kind::HighVoltage || c.kind == Kind::Agriculture) {
        ct = c.htrl <= 315 ? "20/5" : c.htrl <= 630 ? "40/5" : c.htrl <= 1000 ? "75/5" : "100/5";
    } else if (c.kind == Kind::HighVoltage35) {
        ct = c.htrl <= 3150 ? "75/5" : "150/5";
    }
    if (!ct.empty()) ctPrimary = std::atoi(ct.c_str());
    const int vt = c.kind == Kind::HighVoltage35 ? 350 : highVoltage(c.kind) ? 100 : 1;
    switch (c.kind) {
    case Kind::Residential:
        m.dblb = "有功表", m.dl = "5(60)A", m.xx = "单相二线", m.dy = "220V", m.jddj = "2.0", m.jlzzdfl = "Ⅴ类", m.zbwz = "表箱";
        break;
    case Kind::SmallBusiness:
    case Kind::Temporary:
        m.dblb = "多功能表", m.dl = c.htrl <= 25 ? "3×10(40)A" : "3×20(80)A", m.xx = "三相四线", m.dy = "3×220/380V", m.jddj = "1.0",
        m.jlzzdfl = "Ⅳ类", m.zbwz = "表箱";
        break;
    case Kind::Business:
        m.dblb = "多功能表", m.dl = "3×1.5(6)A", m.xx = "三相四线", m.dy = "3×220/380V", m.jddj = "0.5S", m.jlzzdfl = "Ⅳ类",
        m.zbwz = "计量柜";
        break;
    default:
        m.dblb = "多功能表", m.dl = "3×1.5(6)A", m.xx = "三相三线", m.dy = "3×100V", m.jddj = c.kind == Kind::HighVoltage35 ? "0.2S" : "0.5S",
        m.jlzzdfl = c.kind == Kind::HighVoltage35 ? "Ⅱ类" : "Ⅲ类", m.zbwz = "高压计量柜";
    }
    m.zhbl = ctPrimary ? ctPrimary / 5 * vt : 1;
    m.txm = nextMeter();
    m.dnbcch = string(r.pick(cat::kMakers)) + pad(r.below(100000000), 8);
    c.meters.push_back(m);
    if (highVoltage(c.kind)) {  // reactive energy on its own meter
        Meter q = m;
        q.dblb = "无功表";
        q.txm = nextMeter();
        q.dnbcch = string(r.pick(cat::kMakers)) + pad(r.below(100000000), 8);
        c.meters.push_back(q);
    }
    const auto transformer = [&](const char* lb, const string& bb) {
        Transformer t{"H" + pad(++hgqSeq_, 9), m.jldbh, string(r.pick(cat::kMakers)) + pad(r.below(10000000), 7), lb, bb, "0.2S"};
        c.transformers.push_back(std::move(t));
    };
    if (c.kind == Kind::Business)
        for (int k = 0; k < 3; ++k) transformer("TA", ct);
    if (highVoltage(c.kind)) {
        for (int k = 0; k < 2; ++k) transformer("TA", ct);
        for (int k = 0; k < 2; ++k) transformer("TV", c.kind == Kind::HighVoltage35 ? "35000/100" : "10000/100");
    }
    return c;
}

Row Generator::application(const Customer& c, const string& cdbh, const string& slbm, const char* ywdm, const string& sqrq,
                           const string& sqbz, bool archived, const string& gdsj) const {
    Row row{cdbh,  slbm,   ywdm,   sqrq,   sqbz,   c.hh,   c.khlx,  c.hm,    c.yddz,  c.zjmc,  c.zjhm,  c.htrl,  c.lxr,
            c.lxdh, c.lxdz, c.yzbm, c.fkdw, c.fkfs, c.hyfl, c.ydlb,  c.dydj,  c.yhdm,  c.yhzh,  c.dw,    c.xzq,   c.sfxyh,
            c.zwlxdh, c.zwlxr, c.zwlxdz, c.zzsyh, c.zzszh, c.zzsh, c.zzsm, c.zcdz, c.scbc, c.zxr, c.cbcbh, c.yhh};
    if (archived) row.emplace_back(gdsj);
    return row;
}

void Generator::archive(const Unit& u, const Customer& c, const string& cdbh, const char* ywdm, const QDate& sqrq, const QDate& gdsj,
                        const string& sqbz, const char* sfygz, const char* sfwyqd, const char* sfxysf) {
    const string archived = ts(std::min(gdsj, today_), 16, 30);
    w_->add(tHKhsq_, application(c, cdbh, u.deptBusiness, ywdm, ts(sqrq), sqbz, true, archived));
    w_->add(tHYkkz_, {cdbh, sfygz, "无", "无", sfxysf, sfwyqd, c.htrl, archived});
}

void Generator::writeApplications(Unit& u, Customer& c, Random& r) {
    const QDate& today = today_;
    const QDate yearStart(today.year(), 1, 1);
    const auto thisYear = [&] { return yearStart.addDays(r.below(today.dayOfYear())); };
    const auto lastTwoYears = [&](const QDate& after) {
        const QDate from = std::max(after, today.addDays(-730));
        const std::int64_t span = from.daysTo(today) - 1;
        return span < 1 ? QDate() : from.addDays(r.between(0, span - 1));
    };

    // The installation, and the file's later changes.
    const char* install = c.kind == Kind::Residential ? "101" : c.kind == Kind::Temporary ? "104" : highVoltage(c.kind) ? "103" : "102";
    c.cdbh = nextCdbh();
    archive(u, c, c.cdbh, install, c.lhrq.addDays(-r.between(5, 30)), c.lhrq, "新装用电，报装容量" + std::to_string(c.htrl) + "千伏安", "无",
            "否", "是");
    if (c.role == Role::None || c.role == Role::Inspected) {
        if (r.chance(0.04)) {
            const QDate at = lastTwoYears(c.lhrq.addDays(30));
            const string ywdm = changeBusinesses_[std::size_t(r.below(std::int64_t(changeBusinesses_.size())))];
            if (at.isValid() && !c.closed.isValid() && !(c.kind == Kind::Residential && ywdm == "110")) {
                c.cdbh = nextCdbh();
                archive(u, c, c.cdbh, ywdm.c_str(), at, at.addDays(r.between(1, 10)), "客户申请变更用电", "无", "否");
            }
        }
    }
    if (c.closed.isValid()) {
        c.cdbh = nextCdbh();
        archive(u, c, c.cdbh, "120", c.closed.addDays(-3), c.closed, "客户申请销户", "无", "否");
    }
    if (c.plant == Plant::StoppedInUse) {
        // Suspended and sealed some months before this one, and still so.
        c.stoppedOn = QDate(today.year(), today.month(), 1).addDays(-r.between(20, 200));
        c.cdbh = nextCdbh();
        archive(u, c, c.cdbh, "112", c.stoppedOn.addDays(-r.between(3, 10)), c.stoppedOn, "客户申请变压器暂停，已加封", "无", "否");
    }
    if (c.role == Role::Change) {
        const string ywdm = changeBusinesses_[std::size_t(r.below(std::int64_t(changeBusinesses_.size())))];
        c.cdbh = nextCdbh();
        archive(u, c, c.cdbh, ywdm.c_str(), today, today, "客户申请变更用电，当日办结", "无", "否");
    }

    // Breaches, suspensions, metering faults.
    const auto breach = [&](const QDate& at) {
        const string cdbh = nextCdbh();
        const bool theft = r.chance(0.3);
        archive(u, c, cdbh, "402", at, at.addDays(r.between(1, 5)), theft ? "查获窃电，依法处理" : "违约用电处理", "无", "是");
        const double energy = double(r.between(500, 20000));
        const double penalty = round2(energy * c.price * (theft ? 3 : 1));
        w_->add(tWyyd_, {cdbh, c.hh, theft ? "窃电" : "违约用电", ts(at, 10), energy, penalty, c.dw});
        w_->add(tWymx_, {cdbh, 1, theft ? "绕越计量装置用电" : "擅自改变用电类别", theft ? "追补电费并处三倍违约使用电费" : "补交差额电费并处二倍违约使用电费",
                         penalty});
    };
    const auto suspension = [&](const QDate& at) {
        archive(u, c, nextCdbh(), "405", at, at.addDays(r.between(1, 3)), r.chance(0.5) ? "欠费中止供电" : "安全隐患未整改，中止供电", "无", "否");
    };
    const auto fault = [&](const QDate& at, int gz) {
        const string cdbh = nextCdbh();
        const QDate done = at.addDays(r.between(1, 6));
        archive(u, c, cdbh, "160", at, done, string("计量异常：") + cat::kGzxz[gz].mc, "是", "否");
        w_->add(tJlyc_, {cdbh, c.hh, c.hm, c.yddz, u.ops[kMetering].name, nullptr, "计量故障", cat::kGzxz[gz].dm, "现场检查",
                         ts(at, 10), string("现场发现") + cat::kGzxz[gz].mc, c.dw, "160", "1", nullptr, nullptr, nullptr, nullptr,
                         nullptr, nullptr, "已更换计量装置", u.ops[kMetering].name, ts(std::min(done, today_), 15), u.ops[kLeader].name,
                         ts(std::min(done, today_), 17)});
        return cdbh;
    };
    switch (c.role) {
    case Role::Breach: {
        const int n = int(r.between(4, 5));
        for (int k = 0; k < n; ++k) breach(thisYear());
        break;
    }
    case Role::Suspension:
        for (int k = 0; k < 4; ++k) suspension(thisYear());
        break;
    case Role::Fault:
        for (int k = 0; k < 4; ++k) fault(thisYear(), int(r.below(std::int64_t(std::size(cat::kGzxz)))));
        break;
    case Role::Refund: {
        // A fast meter found last month, refunded this month.
        const QDate found = QDate(today.year(), today.month(), 1).addDays(-r.between(3, 20));
        const string caseNo = fault(found, 1);
        const QDate refunded = QDate(today.year(), today.month(), 1).addDays(r.below(today.day()));
        const string tb = nextCdbh();
        c.refundDoc = tb;
        archive(u, c, tb, "201", refunded, refunded, "电能表快走退电费", "无", "否");
        w_->add(tTbjl_, {tb, caseNo, c.hh, "退", "电能表快走，按校验误差退还电量电费", u.ops[kBilling].name, ts(refunded, 11), c.dw});
        break;
    }
    case Role::Inspected:
        if (r.chance(0.05)) {
            const QDate at = lastTwoYears(c.lhrq);
            if (at.isValid()) fault(at, int(r.below(std::int64_t(std::size(cat::kGzxz)))));
        }
        if (r.chance(0.03)) {
            const QDate at = lastTwoYears(c.lhrq);
            if (at.isValid()) breach(at);
        }
        if (r.chance(0.03)) {
            const QDate at = lastTwoYears(c.lhrq);
            if (at.isValid()) suspension(at);
        }
        break;
    default: break;
    }
}

void Generator::writeLedger(Unit& u, Customer& c, Random& r) {
    RowWriter& w = *w_;
    // Monthly energy: a base from capacity and load, a mild season, growth
    // and noise, kept well inside every screening threshold.
    double base;
    double season;
    switch (c.kind) {
    case Kind::Residential: base = r.real(60, 350), season = 0.12; break;
    case Kind::SmallBusiness: base = c.htrl * 720 * r.real(0.05, 0.15), season = 0.08; break;
    case Kind::Temporary: base = c.htrl * 720 * r.real(0.10, 0.25), season = 0.05; break;
    case Kind::Business: base = c.htrl * 720 * r.real(0.08, 0.20), season = r.real(0.02, 0.07); break;
    case Kind::Agriculture: base = c.htrl * 720 * r.real(0.10, 0.25), season = r.real(0.02, 0.07); break;
    default: base = c.htrl * 720 * r.real(0.12, 0.30), season = r.real(0.02, 0.07);
    }
    if (c.role == Role::Heavy) base = r.real(700000, 1100000);
    else if (c.role == Role::Swing || c.role == Role::YearOnYear) base = std::min(base, 240000.0);  // stays under 500,000 when raised
    else base = std::min(base, 360000.0);
    const double growth = r.real(0.0, 0.04);
    const bool tou = c.kind != Kind::Residential;
    const double peakShare = r.real(0.32, 0.40), valleyShare = r.real(0.20, 0.27);
    const bool assessed = c.kind != Kind::Residential && c.htrl >= 100;
    const double llkhbz = c.kind == Kind::Agriculture || c.htrl < 160 ? 85 : 90;
    static const double kSeason[12] = {0.5, 0.0, -0.5, -0.87, -1.0, -0.87, -0.5, 0.0, 0.5, 0.87, 1.0, 0.87};
    const double basicCharge = c.ydlb == std::string("03") ? c.htrl * 23.0 : 0.0;

    // Fixed-quantity / fixed-ratio second billing point.
    bool fixedRatio = false;
    double fixedValue = 0;
    if (c.role == Role::FixedBilling) {
        fixedRatio = r.chance(0.5);
        fixedValue = fixedRatio ? double(r.between(10, 20)) : double(r.between(3, 8) * 100);
        w.add(tJfxx_, {c.hh, "02", c.kind == Kind::Business ? "2101" : "2102", 2, fixedRatio ? "定比" : "定量", fixedValue, c.dw});
    }

    // Ledger from the first whole month after the account was opened, to
    // the last whole month before it was closed.
    const auto monthNo = [](const QDate& d) { return d.year() * 12 + d.month() - 1; };
    const int first = std::max(0, monthNo(c.lhrq) - monthNo(firstMonth_) + 1);
    const int last = c.closed.isValid() ? std::min(kMonths - 1, monthNo(c.closed) - monthNo(firstMonth_) - 1) : kMonths - 1;
    const int zeroFrom = c.role == Role::Zero1   ? kMonths - int(r.between(1, 2))
                         : c.role == Role::Zero3 ? kMonths - 3
                         : c.role == Role::Zero5 ? kMonths - int(r.between(4, 6))
                                                 : kMonths;
    const int refundMonth = c.kind == Kind::Residential && r.chance(0.003) ? int(r.between(first, kMonths - 1)) : -1;

    for (int m = first; m <= last; ++m) {
        double total = base * (1 + season * kSeason[monthOfYear_[std::size_t(m)] - 1]) * (1 + growth * m / 12.0) * r.real(0.96, 1.04);
        double pk = peakShare, vl = valleyShare;
        if (c.role == Role::Swing && m == kMonths - 1) total *= 1.7;
        if (c.role == Role::YearOnYear && m >= kMonths - 6) total *= 1.5;
        if (c.role == Role::PeakValley && m == kMonths - 1) pk = 0.12, vl = 0.48;
        // A dip last month between two high ones: this month is far above
        // last month, yet level with the three months' average and with
        // last year.
        if (c.plant == Plant::Jump && m == kMonths - 2) total *= 0.4;
        if (c.plant == Plant::Jump && (m == kMonths - 3 || m == kMonths - 4)) total *= 1.3;
        if (c.plant == Plant::Overload) total = c.htrl * 24.0 * firstMonth_.addMonths(m).daysInMonth() * r.real(1.08, 1.18);
        if (m >= zeroFrom) total = 0;
        total = std::round(total);
        double peak = 0, valley = 0, flat = total;
        if (tou) {
            peak = std::round(total * pk);
            valley = std::round(total * vl);
            flat = total - peak - valley;
        }
        Value sjll, wgdl = 0.0, standard;
        if (assessed) {
            standard = llkhbz;
            if (total > 0 && !(c.plant == Plant::NoReactive && m == kMonths - 1)) {
                const double pf = c.role == Role::PowerFactor && m >= kMonths - 3 ? round2(r.real(96, 99.5)) : round2(r.real(86, 95));
                sjll = pf;
                wgdl = std::round(total * std::sqrt(10000.0 / (pf * pf) - 1));
            }
        }
        const string& ny = ny_[std::size_t(m)];
        w.add(tDltz_, {c.hh, ny, "01", peak, flat, valley, wgdl, sjll, standard, c.djm, cbrq_[std::size_t(m)], c.dw});
        double second = 0;
        if (c.role == Role::FixedBilling) {
            second = fixedRatio ? std::round(total * fixedValue / 100) : (total > 0 ? fixedValue : 0);
            w.add(tDltz_, {c.hh, ny, "02", 0.0, second, 0.0, 0.0, nullptr, nullptr, c.kind == Kind::Business ? "2101" : "2102",
                           cbrq_[std::size_t(m)], c.dw});
        }
        const double charge = round2((total + second) * c.price + basicCharge);
        const bool unpaid = m == kMonths - 1 && r.chance(0.6);
        w.add(tDfxx_, {c.hh, ny, 1, charge, unpaid ? 0.0 : charge, fxrq_[std::size_t(m)], c.dw});
        if (c.area >= 0) u.areaEnergy[std::size_t(c.area)][std::size_t(m)] += total + second;
        if (refundMonth == m || (c.role == Role::Refund && m == kMonths - 1)) {
            const double amount = c.role == Role::Refund ? round2(r.real(300, 3000)) : round2(r.real(10, 80));
            w.add(tDfxx_, {c.hh, ny, 2, -amount, -amount, fxrq_[std::size_t(m)], c.dw});
            if (c.role == Role::Refund) {
                // The refund's amounts under the refund document just archived.
                const double kwh = std::round(amount / c.price);
                w.add(tTbdf_, {c.refundDoc, c.hh, ny, "01", -std::round(kwh * 0.35), -std::round(kwh * 0.25), -(kwh - std::round(kwh * 0.35) - std::round(kwh * 0.25)),
                               -round2(amount * 0.35), -round2(amount * 0.25), -(amount - round2(amount * 0.35) - round2(amount * 0.25)), 0.0, 0.0,
                               0.0, 0.0, 0.0});
            }
        }
    }
}

void Generator::writeCustomer(Unit& u, Customer& c, Random& r) {
    RowWriter& w = *w_;
    writeApplications(u, c, r);
    w.add(tKhda_, {c.hh,     c.hm,     c.yddz,   c.pym,    c.khlx,  c.zjmc,  c.zjhm,  c.htrl,   c.lxr,   c.lxdh,
                   c.lxdz,   c.yzbm,   c.fkdw,   c.fkfs,   c.hyfl,  c.ydlb,  c.dydj,  c.yhdm,   c.yhzh,  c.dw,
                   c.xzq,    c.sfxyh,  c.zwlxdh, c.zwlxr,  c.zwlxdz, c.zzsyh, c.zzszh, c.zzsh,  c.zzsm,  c.zcdz,
                   c.scbc,   c.zxr,    c.cbcbh,  c.yhh,    c.xhbz,  ts(c.lhrq), c.scjcrq.isValid() ? Value(ts(c.scjcrq)) : Value(),
                   c.jczq,   c.cdbh});
    w.add(tGkhda_, {c.hh, c.hm, c.yddz, c.khlx, c.dw});
    w.add(tGddy_, {c.hh, 1, "主供", c.dylx, c.bdzbh, c.xlbh, c.byqbh, c.dydj, c.dw});
    if (c.role == Role::DualSource) {
        const Feeder& f = u.tops[std::size_t(c.local) % u.tops.size()];
        const Feeder& other = f.xlbh == c.xlbh ? u.tops[std::size_t(c.local + 1) % u.tops.size()] : f;
        w.add(tGddy_, {c.hh, 2, "备用", "专变", other.bdzbh, other.xlbh, c.byqbh, c.dydj, c.dw});
    }
    if (c.dylx == "专变") {
        const bool stopped = c.stoppedOn.isValid();
        w.add(tByq_, {c.byqbh, c.hm + "专变", "专变", c.hh, c.xlbh, c.htrl, stopped ? "停用" : "运行", stopped ? Value(ts(c.stoppedOn)) : Value(), c.dw});
        if (stopped) {
            // Checked this month: the seal is broken, and the meter turns.
            const QDate checked = QDate(today_.year(), today_.month(), 1).addDays(r.below(today_.day()));
            w.add(tByqty_, {c.byqbh, ts(c.stoppedOn), c.hh, nullptr, "破损", ts(checked, 10), c.cdbh, c.dw});
        }
    }
    w.add(tJfxx_, {c.hh, "01", c.djm, 1, "抄表", nullptr, c.dw});

    // Contract: renewed every five years, so it runs past today, except the
    // planted expired ones and the building sites' short ones.
    QDate signedOn, validTo;
    if (c.kind == Kind::Temporary) {
        signedOn = c.lhrq;
        validTo = today_.addDays(c.endingSupply ? r.between(3, 25) : r.between(10, 80));
    } else if (c.role == Role::Expired) {
        validTo = today_.addDays(-r.between(15, 200));
        signedOn = validTo.addYears(-5);
    } else if (c.closed.isValid()) {
        signedOn = std::max(c.lhrq, c.closed.addYears(-4));
        validTo = c.closed;
    } else {
        signedOn = std::max(c.lhrq, today_.addDays(-r.between(30, 5 * 365 - 30)));
        validTo = signedOn.addYears(5);
    }
    const char* htlx = c.kind == Kind::Residential ? "居民供用电合同" : c.kind == Kind::Temporary ? "临时供用电合同" : highVoltage(c.kind) ? "高压供用电合同" : "低压供用电合同";
    w.add(tHtxx_, {c.hh, "HT" + c.hh, htlx, ts(signedOn), ts(validTo), c.dw});

    for (const Meter& m : c.meters)
        w.add(tDnb_, {m.txm, c.hh, m.jfdbh, m.jldbh, m.byqbh, m.dnbcch, m.dblb, m.dl, m.xx, m.jddj, m.dy, m.cbsx, m.zhbl, "供电企业", "否",
                      "否", m.jlzzdfl, m.zbwz, "月抄", c.kind == Kind::Residential ? "总" : "总峰平谷", ts(c.lhrq), c.dw});
    for (const Transformer& t : c.transformers) w.add(tHgq_, {t.hgqbh, c.hh, t.jldbh, t.hgqcch, t.hgqlb, t.hgqbb, t.jddj, 1, c.dw});
    if (c.role == Role::OwnGeneration) {
        const bool solar = r.chance(0.5);
        w.add(tZbdy_, {c.hh, 1, solar ? "屋顶分布式光伏发电系统" : "柴油发电机组", solar ? "分布式光伏" : "自备发电机", double(r.between(1, 16) * 50), nullptr,
                       c.dw});
    }
    writeLedger(u, c, r);
}

void Generator::writeCustomers(Unit& u, std::int64_t& written) {
    for (int local = 0; local < int(u.count); ++local) {
        Customer c = makeCustomer(u, local);
        Random r(o_.seed, 0x80000000ULL + std::uint64_t(c.index));
        writeCustomer(u, c, r);
        if (c.plant == Plant::StoppedInUse) planted("01", c.hh);
        if (c.role == Role::Zero1 || c.role == Role::Zero3 || c.role == Role::Zero5) planted("02", c.hh);
        if (c.plant == Plant::NoReactive) planted("03", c.hh);
        if (c.plant == Plant::Jump) planted("04", c.hh);
        if (c.plant == Plant::Overload) planted("05", c.hh);
        if (c.endingSupply) planted("06", c.hh);
        if (c.role != Role::None) u.inspectedCustomers.push_back(std::move(c));
        if (++written % 250 == 0 && progress_) progress_(written, o_.customers);
    }
}

void Generator::writeAreaSupply(Unit& u) {
    // Supplied energy = billed energy plus a loss of 3-7 %; the unit's
    // first area loses a quarter in the last three months.
    Random r(o_.seed, 0x400 + std::uint64_t(u.ord));
    for (std::size_t a = 0; a < u.areas.size(); ++a)
        for (int m = 0; m < kMonths; ++m) {
            const double billed = u.areaEnergy[a][std::size_t(m)];
            double loss = r.real(0.03, 0.07);
            if (a == 0 && m >= kMonths - 3) loss = r.real(0.24, 0.30);
            const double supplied = billed > 0 ? std::round(billed / (1 - loss)) : 0.0;
            w_->add(tTqgdl_, {u.areas[a].byqbh, ny_[std::size_t(m)], u.dm, supplied, 10.0, 0.0});
        }
}

// ---------------------------------------------------------------------------
// Inspections: the past batches, the plans, the cases under way

void Generator::writeInspectionHistory(std::vector<Unit>& units) {
    struct Task {
        int unit;
        const Customer* c;
        QDate at, before;
    };
    std::vector<Task> tasks;
    for (std::size_t k = 0; k < units.size(); ++k)
        for (const Customer& c : units[k].inspectedCustomers) {
            if (!c.scjcrq.isValid()) continue;
            if (c.previousInspection.isValid()) tasks.push_back({int(k), &c, c.previousInspection, QDate()});
            tasks.push_back({int(k), &c, c.scjcrq, c.previousInspection});
        }
    std::sort(tasks.begin(), tasks.end(), [](const Task& a, const Task& b) {
        const int ma = a.at.year() * 12 + a.at.month(), mb = b.at.year() * 12 + b.at.month();
        if (ma != mb) return ma < mb;
        if (a.unit != b.unit) return a.unit < b.unit;
        if (a.at != b.at) return a.at < b.at;
        return a.c->hh < b.c->hh;
    });
    static const char* problems[] = {"计量柜门锁损坏", "无功补偿装置未投运", "配电室消防器材过期", "接地装置锈蚀", "电缆沟积水"};
    for (std::size_t i = 0; i < tasks.size();) {
        std::size_t j = i;
        const int month = tasks[i].at.year() * 12 + tasks[i].at.month();
        while (j < tasks.size() && tasks[j].unit == tasks[i].unit && tasks[j].at.year() * 12 + tasks[j].at.month() == month) ++j;
        Unit& u = units[std::size_t(tasks[i].unit)];
        Random r(o_.seed, 0x500000 + std::uint64_t(month) * 100 + std::uint64_t(u.ord));
        const string jcph = nextJcph();
        const QDate drawn = QDate(tasks[i].at.year(), tasks[i].at.month(), 1).addDays(-r.between(2, 6));
        const QDate approved = drawn.addDays(1);
        const Operator& leader = u.ops[kLeader];
        const Operator& admin = u.ops[kAdmin];
        w_->add(tJcgzap_, {jcph, u.deptCheck, "高压及专变客户周期检查", u.dm, "按月度检查计划安排", leader.name, ts(drawn, 9, 10), admin.name, "同意",
                           ts(approved, 10, 20)});
        for (std::size_t t = i; t < j; ++t) {
            const Customer& c = *tasks[t].c;
            const QDate at = tasks[t].at;
            const int a = int(r.below(4)), b = (a + 1 + int(r.below(3))) % 4;
            const Operator& i1 = u.ops[std::size_t(kInspector1 + a)];
            const Operator& i2 = u.ops[std::size_t(kInspector1 + b)];
            const string cdbh = nextCdbh();
            const bool problem = r.chance(0.12);
            const string problemText = problem ? r.pick(problems) : "";
            w_->add(tJcgzjl_, {cdbh, c.hh, c.hm, c.yddz, c.khlx, c.dydj, c.xlbh, c.dylx == "公变" ? Value(c.byqbh) : Value(), c.jczq,
                               tasks[t].before.isValid() ? Value(ts(tasks[t].before)) : Value(), "月计划", ts(at), "周期检查",
                               i1.name + "、" + i2.name, "JC" + u.dm + pad(kInspector1 + a, 2) + "、JC" + u.dm + pad(kInspector1 + b, 2), "2",
                               "已检查", jcph, "1", ts(at, 10, 30), leader.name, c.lxr, problem ? "基本合格" : "合格",
                               problem ? Value(problemText + "，已下达整改通知") : Value()});
            const QDate closedOn = std::min(at.addDays(1), today_);
            archive(u, c, cdbh, "401", drawn, closedOn, "用电检查", "否", "否");
            const string steps[4][5] = {{"40101", leader.dm, ts(drawn, 9, 10), ts(drawn, 9, 10)},
                                        {"40102", admin.dm, ts(drawn, 9, 10), ts(approved, 10, 20)},
                                        {"40103", i1.dm, ts(approved, 10, 20), ts(at, 8, 0)},
                                        {"40104", i1.dm, ts(at, 8, 0), ts(closedOn, 16, 30)}};
            for (int s = 0; s < 4; ++s)
                w_->add(tLcls_, {cdbh, s + 1, "401", steps[s][0], itemName(steps[s][0]), steps[s][1], u.dm, steps[s][2], steps[s][3]});
            for (const cat::Code& item : cat::kJcxm)
                w_->add(tJcjg_, {cdbh, item.dm, item.mc, problem && string(item.dm) == "06" ? problemText : string("正常")});
        }
        i = j;
    }
}

void Generator::writePlans(Unit& u) {
    Random r(o_.seed, 0x600 + std::uint64_t(u.ord));
    const Operator& leader = u.ops[kLeader];
    const QDate& today = today_;
    for (int back = 1; back >= 0; --back) {
        const int year = today.year() - back;
        const QDate drawn = std::min(QDate(year, 1, 5), today);
        w_->add(tJcjh_, {pad(++jhbh_, 4), "年计划", ts(QDate(year, 1, 1)), ts(QDate(year, 12, 31)), "用电检查班", u.inspected,
                         "高压及专变客户周期检查、重要客户保电检查", "按检查周期安排", u.dm, u.deptCheck, leader.name, ts(drawn, 9)});
    }
    for (int back = 1; back >= 0; --back) {
        const QDate start = QDate(today.year(), today.month(), 1).addMonths(-back);
        w_->add(tJcjh_, {pad(++jhbh_, 4), "月计划", ts(start), ts(start.addMonths(1).addDays(-1)), "用电检查班", int(r.between(12, 30)),
                         "月度周期检查", nullptr, u.dm, u.deptCheck, leader.name, ts(start, 9)});
    }
}

void Generator::writeOpenCases(Unit& u) {
    // Inspection jobs at every step of the workflow, on the customers whose
    // inspection is most overdue, and one metering anomaly case.
    std::vector<const Customer*> due;
    for (const Customer& c : u.inspectedCustomers)
        if (c.role == Role::Inspected) due.push_back(&c);
    std::sort(due.begin(), due.end(), [](const Customer* a, const Customer* b) {
        if (a->scjcrq != b->scjcrq) return !a->scjcrq.isValid() || (b->scjcrq.isValid() && a->scjcrq < b->scjcrq);
        return a->hh < b->hh;
    });
    Random r(o_.seed, 0x700 + std::uint64_t(u.ord));
    const QDate& today = today_;
    const Operator& leader = u.ops[kLeader];
    const Operator& admin = u.ops[kAdmin];
    const Operator& inspector = u.ops[kInspector1];
    const Operator& partner = u.ops[kInspector2];
    std::size_t next = 0;

    struct Stage {
        int tasks;
        int item;          // 0: saved, not dispatched; else the workflow item it waits at (40102 ...)
        int dispatchedAgo; // days
    };
    static const Stage stages[] = {{2, 0, 0}, {3, 40102, 1}, {3, 40103, 3}, {2, 40104, 6}};
    for (const Stage& st : stages) {
        if (next >= due.size()) break;
        const QDate dispatched = today.addDays(-st.dispatchedAgo);
        const QDate approved = dispatched.addDays(1);
        const QDate printed = approved.addDays(1);
        string jcph;
        if (st.item) {
            jcph = nextJcph();
            const bool isApproved = st.item >= 40103;
            w_->add(tJcgzap_, {jcph, u.deptCheck, "高压及专变客户周期检查", u.dm, "检查周期已到", leader.name, ts(dispatched, 9, 30),
                               isApproved ? Value(admin.name) : Value(), isApproved ? Value("同意") : Value(),
                               isApproved ? Value(ts(approved, 10)) : Value()});
        }
        string firstCdbh;
        for (int k = 0; k < st.tasks && next < due.size(); ++k) {
            const Customer& c = *due[next++];
            const string cdbh = nextCdbh();
            if (firstCdbh.empty()) firstCdbh = cdbh;
            const char* zt = st.item >= 40103 ? "已审批" : "未审批";
            w_->add(tJcgzjl_, {cdbh, c.hh, c.hm, c.yddz, c.khlx, c.dydj, c.xlbh, c.dylx == "公变" ? Value(c.byqbh) : Value(), c.jczq,
                               c.scjcrq.isValid() ? Value(ts(c.scjcrq)) : Value(), "月计划", ts(today.addDays(r.between(1, 10))), "周期检查",
                               inspector.name + "、" + partner.name, "JC" + u.dm + pad(kInspector1, 2) + "、JC" + u.dm + pad(kInspector2, 2), "2", zt,
                               jcph, st.item == 40104 ? Value("1") : Value(), nullptr, nullptr, nullptr, nullptr, nullptr});
            if (!st.item) continue;
            w_->add(tKhsq_, application(c, cdbh, u.deptCheck, "401", ts(dispatched), "高压及专变客户周期检查", false, {}));
            w_->add(tYkkz_, {cdbh, nullptr, nullptr, nullptr, nullptr, nullptr, c.htrl});
            struct Step {
                const char* item;
                string czy, in, out;
            };
            std::vector<Step> steps = {{"40101", leader.dm, ts(dispatched, 9, 30), ts(dispatched, 9, 30)},
                                       {"40102", admin.dm, ts(dispatched, 9, 30), ts(approved, 10)},
                                       {"40103", inspector.dm, ts(approved, 10), ts(printed, 8, 40)},
                                       {"40104", inspector.dm, ts(printed, 8, 40), ""}};
            const int at = st.item - 40101;  // index of the current step
            for (int s = 0; s <= at; ++s)
                w_->add(tLcls_, {cdbh, s + 1, "401", steps[std::size_t(s)].item, itemName(steps[std::size_t(s)].item),
                                 s < at ? Value(steps[std::size_t(s)].czy) : Value(), u.dm, steps[std::size_t(s)].in,
                                 s < at ? Value(steps[std::size_t(s)].out) : Value()});
            const Step& prev = steps[std::size_t(at - 1)];
            w_->add(tDqgw_, {cdbh, "401", c.hh, c.hm, c.yddz, steps[std::size_t(at)].item, itemName(steps[std::size_t(at)].item), prev.item,
                             itemName(prev.item), prev.czy, u.dm, "一般", ts(dispatched, 9, 30), steps[std::size_t(at)].in});
        }
        if (st.item && !firstCdbh.empty()) {
            const Operator& to = st.item == 40102 ? leader : inspector;
            w_->add(tGzdxx_, {firstCdbh, 1, std::to_string(st.item), to.dm, "检查批号" + jcph + "的工作单已到达：" + itemName(std::to_string(st.item)),
                              ts(today.addDays(-st.dispatchedAgo + (st.item >= 40103 ? 1 : 0)), 10), "否"});
        }
    }

    // A metering anomaly case at the meter change step, with its schemes.
    const Customer* c = nullptr;
    for (std::size_t k = next; k < due.size() && !c; ++k)
        if (!due[k]->transformers.empty()) c = due[k];
    if (!c) return;
    const Operator& metering = u.ops[kMetering];
    const string cdbh = nextCdbh();
    const QDate opened = today.addDays(-3);
    w_->add(tKhsq_, application(*c, cdbh, u.deptMetering, "160", ts(opened), "现场检查发现电能表停走", false, {}));
    w_->add(tYkkz_, {cdbh, "是", "无", "无", "否", nullptr, c->htrl});
    w_->add(tJlyc_, {cdbh, c->hh, c->hm, c->yddz, inspector.name, "JC" + u.dm + pad(kInspector1, 2), "计量故障", "01", "现场检查", ts(opened, 10),
                     "电能表停走，需更换", u.dm, "160", "1", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr});
    w_->add(tGdfa_, {nextGdfabh(), cdbh, c->hh, metering.name, "现场核实电能表停走，更换电能表及A相电流互感器", ts(opened.addDays(1), 14)});
    const Meter& m = c->meters.front();
    const auto meterScheme = [&](const string& txm, const string& dnbcch, const char* gzlx, const char* bgsm) {
        w_->add(tDnbfa_, {nextDnbId(), cdbh, c->hh, m.jfdbh, m.jldbh, txm, m.byqbh, dnbcch, m.dblb, gzlx, m.dl, m.xx, bgsm, m.jddj, m.dy,
                          m.cbsx, c->dw, m.zhbl, "供电企业", "否", "否", m.jlzzdfl, m.dl, m.xx, m.zbwz, "月抄", "总峰平谷"});
    };
    meterScheme(m.txm, m.dnbcch, "01", "换取");
    meterScheme(nextMeter(), string(cat::kMakers[0]) + pad(r.below(100000000), 8), nullptr, "新装");
    const Transformer& t = c->transformers.front();
    w_->add(tHgqfa_, {nextDnbId(), cdbh, c->hh, t.jldbh, t.hgqcch, t.hgqbh, t.hgqlb, t.hgqbb, "换取", 1, "05", t.jddj, c->dw});
    w_->add(tHgqfa_, {nextDnbId(), cdbh, c->hh, t.jldbh, string(cat::kMakers[1]) + pad(r.below(10000000), 7), "H" + pad(++hgqSeq_, 9), t.hgqlb,
                      t.hgqbb, "新装", 1, nullptr, t.jddj, c->dw});
    w_->add(tLcls_, {cdbh, 1, "160", "16001", itemName("16001"), inspector.dm, u.dm, ts(opened, 10), ts(opened, 16)});
    w_->add(tLcls_, {cdbh, 2, "160", "16002", itemName("16002"), nullptr, u.dm, ts(opened, 16), nullptr});
    w_->add(tDqgw_, {cdbh, "160", c->hh, c->hm, c->yddz, "16002", itemName("16002"), "16001", itemName("16001"), inspector.dm, u.dm, "一般",
                     ts(opened, 10), ts(opened, 16)});
    w_->add(tGzdxx_, {cdbh, 1, "16002", metering.dm, "计量异常工单已到达：" + itemName("16002"), ts(opened, 16), "否"});
}

void Generator::writeAlarms(Unit& u) {
    // Last month's alarms of the long-zero customers, handled; this month's
    // are raised by the alarm scan once everything is written (run()).
    const string lastMonth = ny_[kMonths - 2];
    const QDate& today = today_;
    for (const Customer& c : u.inspectedCustomers)
        if (c.role == Role::Zero5)
            w_->add(tBjtx_, {lastMonth, c.hh, "02", "专变客户本月抄见电量为零（上月0千瓦时），变压器无停用记录", u.dm, "已处理", ts(today.addDays(-25), 9),
                             "已现场核实，客户停产检修，已告知恢复生产前报装", u.ops[kLeader].name, ts(today.addDays(-24), 15)});
}

void Generator::advanceCounters() {
    const std::pair<const char*, std::int64_t> counters[] = {{"CDBH", cdbh_}, {"GDFABH", gdfabh_}, {"DNBID", dnbid_}, {"JCPH", jcph_}};
    for (const auto& [name, value] : counters) {
        if (dialect_ == Dialect::SQLite) {
            w_->exec("UPDATE z_xlh SET dqz = " + std::to_string(value) + " WHERE xlm = '" + name + "' AND dqz < " + std::to_string(value));
        } else if (value > 0) {
            string seq = string("seq_") + name;
            for (char& ch : seq) ch = char(std::tolower(static_cast<unsigned char>(ch)));
            w_->exec("SELECT setval('" + seq + "', " + std::to_string(value) + ")");
        }
    }
}

// ---------------------------------------------------------------------------

QDate databaseToday(const QSqlDatabase& db) {
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT tarvin_sysdate()")) || !q.next())
        throw EDatabaseError(QStringLiteral("Cannot read the database clock: %1").arg(q.lastError().text()));
    const QVariant v = q.value(0);
    if (v.metaType().id() == QMetaType::QDateTime) return v.toDateTime().date();
    const QDate d = QDate::fromString(v.toString().left(10), QStringLiteral("yyyy-MM-dd"));
    if (!d.isValid()) throw EDatabaseError(QStringLiteral("The database clock reads '%1', not a date").arg(v.toString()));
    return d;
}

DemoSummary Generator::run() {
    dialect_ = tarvin::db::dialectOf(db_);
    today_ = o_.today.isValid() ? o_.today : databaseToday(db_);
    firstMonth_ = QDate(today_.year(), today_.month(), 1).addMonths(-(kMonths - 1));
    for (int m = 0; m < kMonths; ++m) {
        const QDate start = firstMonth_.addMonths(m);
        ny_[std::size_t(m)] = nyOf(start);
        const QDate read = std::min(QDate(start.year(), start.month(), 25), today_);
        cbrq_[std::size_t(m)] = ts(read, 9);
        fxrq_[std::size_t(m)] = ts(std::min(read.addDays(2), today_), 8);
        monthOfYear_[std::size_t(m)] = start.month();
    }
    readCatalogue();

    w_ = RowWriter::create(db_);
    declareTables();
    if (dialect_ == Dialect::SQLite) {
        // A new database's pages need no rollback journal and no WAL copy:
        // the bulk write goes straight into the file, with a large cache for
        // the indexes. The connection's own settings come back afterwards.
        w_->exec("PRAGMA journal_mode=DELETE");
        w_->exec("PRAGMA cache_size=-524288");
    }
    w_->begin();
    try {
        planUnits();
        w_->add(tDwbm_, {"01", cat::kParentUnitName, nullptr, 1, 1});
        w_->add(tBmbm_, {"0100", "市场营销部", nullptr});
        for (const Item& it : items_) {
            w_->add(tYwzn_, {"ZN" + it.ywxdm, it.ywxmc, 1});
            w_->add(tZnyywx_, {"ZN" + it.ywxdm, it.ywxdm});
        }
        writeCodeTables();
        std::int64_t written = 0;
        for (Unit& u : units_) {
            writeOrganisation(u);
            writeNetwork(u);
            planInspected(u);
            writeCustomers(u, written);
            for (int b = 1; b <= u.hvBooks; ++b)
                w_->add(tCbc_, {pad(u.ord, 2) + pad(9000 + b, 4), "专变客户第" + std::to_string(b) + "册", u.ops[kAdmin].name, u.dm});
            writeAreaSupply(u);
            u.roles = {};
            u.areaEnergy = {};
        }
        if (progress_) progress_(written, o_.customers);
        writeInspectionHistory(units_);
        for (Unit& u : units_) {
            writePlans(u);
            writeOpenCases(u);
            writeAlarms(u);
        }
        advanceCounters();
        // This month's alarms, by the scan's own rules, inside the same
        // transaction (the writer flushes its rows first).
        w_->exec("SELECT 1 FROM dual");
        tarvin::alarms::ScanOptions scan;
        scan.ny = QString::fromStdString(ny_[kMonths - 1]);
        scan.today = today_;
        scan.inCallerTransaction = true;
        alarmsRaised_ = tarvin::alarms::scanAlarms(scan, db_.connectionName()).inserted();
        w_->commit();
    } catch (...) {
        w_->rollback();
        throw;
    }

    DemoSummary s;
    s.customers = o_.customers;
    s.rows = w_->rowsWritten();
    s.today = today_;
    s.parentUnit = QStringLiteral("01");
    for (const Unit& u : units_) s.units << QString::fromStdString(u.dm);
    s.inspectedFirstUnit = units_.empty() ? 0 : units_.front().inspected;
    s.plantedAlarms = plantedAlarms_;
    s.alarmsThisMonth = alarmsRaised_;
    if (dialect_ == Dialect::SQLite) {
        w_->exec("PRAGMA cache_size=-2000");
        if (db_.databaseName() != QLatin1String(":memory:")) w_->exec("PRAGMA journal_mode=WAL");
    }
    w_.reset();

    // Planner statistics from the real data (on SQLite they replace the
    // seeded ones of a million-customer utility). PostgreSQL also vacuums,
    // so that the month figures (b_ydlhz) are read from their index alone
    // at once, not after autovacuum's next round.
    QSqlQuery q(db_);
    if (!q.exec(dialect_ == Dialect::PostgreSQL ? QStringLiteral("VACUUM ANALYZE") : QStringLiteral("ANALYZE")))
        throw EDatabaseError(QStringLiteral("ANALYZE after writing the demo failed: %1").arg(q.lastError().text()));
    return s;
}

}  // namespace

bool holdsReferenceSchema(const QSqlDatabase& db) {
    QSqlQuery q(db);
    const QString sql = tarvin::db::dialectOf(db) == Dialect::SQLite
                            ? QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN ('y_khda', 'z_dlyxyw', 'z_xlh')")
                            : QStringLiteral("SELECT count(*) FROM information_schema.tables WHERE table_schema = current_schema() "
                                             "AND table_name IN ('y_khda', 'z_dlyxyw')");
    if (!q.exec(sql) || !q.next())
        throw EDatabaseError(QStringLiteral("Cannot look at the database's tables: %1").arg(q.lastError().text()));
    return q.value(0).toInt() > 0;
}

DemoSummary writeDemo(const QSqlDatabase& db, const DemoOptions& options, const ProgressFn& progress) {
    if (options.customers < 1 || options.customers > kMaxCustomers)
        throw EDatabaseError(QStringLiteral("The number of customers must be between 1 and %1").arg(kMaxCustomers));
    if (options.units < 1 || options.units > kMaxUnits)
        throw EDatabaseError(QStringLiteral("The number of units must be between 1 and %1").arg(kMaxUnits));
    if (options.customers < options.units)
        throw EDatabaseError(QStringLiteral("%1 customers cannot fill %2 units: give at least one customer per unit")
                                 .arg(options.customers).arg(options.units));
    // The writer reads the database clock and draws numbers through the
    // routines, also on a connection its caller opened with plain Qt calls.
    tarvin::db::prepareConnection(db);
    Generator g(db, options, progress);
    return g.run();
}

DemoSummary createDemoDatabase(const QSqlDatabase& db, const DemoOptions& options, const ProgressFn& progress) {
    if (holdsReferenceSchema(db))
        throw EDatabaseError(QStringLiteral("The database already holds the reference schema; the demo utility is written only into "
                                            "a new, empty database. Nothing was changed."));
    // Check the options before anything is created.
    if (options.customers < 1 || options.customers > kMaxCustomers || options.units < 1 || options.units > kMaxUnits ||
        options.customers < options.units)
        return writeDemo(db, options, progress);  // throws the message
    tarvin::db::createSchema(db);
    return writeDemo(db, options, progress);
}

}  // namespace tarvin::demo
