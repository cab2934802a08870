// The alarm scan: each kind's rule at its thresholds (a customer just inside
// and one just outside), the texts it writes, idempotence, the unit filter,
// rollback, the refusal of bad options; over a small demo utility it finds
// every planted case and exactly what an independent reading of the rules
// finds; and the program tarvin-alarms. On both engines.
#include "AlarmScan.h"
#include "DemoGenerator.h"
#include "data/MidasQuery.h"
#include "Fixtures.h"

using namespace tarvin::test;
namespace al = tarvin::alarms;

namespace {

const QDate kToday(2025, 1, 20);

class AlarmScan : public EngineTest {
protected:
    void SetUp() override {
        db = std::make_unique<TestDatabase>(dialect());
        units(*db);
    }

    void customer(const QString& hh, const QString& dw = "0101", const QString& xhbz = "否") {
        tarvin::test::customer(*db, hh, "客户" + hh, {}, dw, xhbz);
    }
    // A customer on a dedicated transformer of `rl` kVA.
    void dedicated(const QString& hh, double rl = 400, const QString& dw = "0101") {
        customer(hh, dw);
        transformer("Z" + hh, hh, rl);
    }
    void transformer(const QString& byqbh, const QString& hh, double rl, const QString& zt = "运行") {
        db->exec("insert into y_yxbyq (byqbh, byqmc, byqlx, hh, rl, zt, dw) values (?, ?, '专变', ?, ?, ?, '0101')",
                 {byqbh, byqbh + "专变", hh, rl, zt});
    }
    void stop(const QString& byqbh, const QString& tyrq, const QVariant& hfrq, const QString& fyzt) {
        db->exec("insert into y_byqty (byqbh, tyrq, hh, hfrq, fyzt, dw) values (?, ?, ?, ?, ?, '0101')",
                 {byqbh, tyrq, byqbh.mid(1), hfrq, fyzt});
    }
    // A ledger row: the energy on the flat register.
    void energy(const QString& hh, const QString& ny, double kwh, double wgdl = 0, const QVariant& llkhbz = QVariant(),
                const QString& jfdbh = "01") {
        db->exec("insert into b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, wgdl, llkhbz, dw) values (?, ?, ?, 0, ?, 0, ?, ?, '0101')",
                 {hh, ny, jfdbh, kwh, wgdl, llkhbz});
    }
    void contract(const QString& hh, const QString& htbh, const QString& htlx, const QString& yxrq) {
        db->exec("insert into y_htxx (hh, htbh, htlx, yxrq, dw) values (?, ?, ?, ?, '0101')", {hh, htbh, htlx, yxrq});
    }

    al::ScanResult scan(const QString& ny = "202501", const QString& unit = QString(), int days = al::kDefaultDays) {
        return al::scanAlarms({.ny = ny, .unit = unit, .days = days, .today = kToday});
    }
    // "HH:BJDM" of the alarms of a month.
    QStringList alarms(const QString& ny = "202501") {
        return rows(*db, "select hh || ':' || bjdm from e_bjtx where ny = ? order by hh, bjdm", {ny});
    }
    QString text(const QString& hh, const QString& bjdm, const QString& ny = "202501") {
        return db->scalar("select bjxm from e_bjtx where ny = ? and hh = ? and bjdm = ?", {ny, hh, bjdm}).toString();
    }
    std::unique_ptr<TestDatabase> db;
};

TEST_P(AlarmScan, OutOfUseButUsedNeedsTheWholeMonthStoppedABrokenSealAndEnergy) {
    const struct {
        const char *hh, *from, *to, *seal;
        double kwh;
    } cases[] = {
        {"A1", "2024-12-15", nullptr, "破损", 812.6},     // stopped in December, seal broken, energy in January
        {"A2", "2024-12-15", nullptr, "完好", 800},       // the seal intact
        {"A3", "2025-01-10", nullptr, "破损", 800},       // stopped only on the 10th of the month
        {"A4", "2024-12-15", nullptr, "破损", 0},         // stopped with a broken seal, but nothing used
        {"A5", "2024-10-01", "2024-12-31", "破损", 800},  // back in use before the month began
        {"A6", "2024-11-02", nullptr, "破损", 100},       // two transformers out of use, one alarm
    };
    for (const auto& c : cases) {
        dedicated(c.hh);
        stop(QStringLiteral("Z") + c.hh, c.from + QStringLiteral(" 00:00:00"), c.to ? QVariant(c.to + QStringLiteral(" 00:00:00")) : QVariant(),
             QString::fromUtf8(c.seal));
        energy(c.hh, "202501", c.kwh);
    }
    transformer("ZA6b", "A6", 200);
    stop("ZA6b", "2024-12-01 00:00:00", "2025-02-01 00:00:00", "破损");

    scan();
    EXPECT_EQ(alarms().filter(":01"), QStringList({"A1:01", "A6:01"}));
    EXPECT_EQ(text("A1", "01"), QStringLiteral("变压器ZA1自2024-12-15报停，封印破损，本月抄见电量813千瓦时"));
    EXPECT_EQ(text("A6", "01"), QStringLiteral("变压器ZA6等2台自2024-11-02报停，封印破损，本月抄见电量100千瓦时"));
    EXPECT_TRUE(alarms().filter(":02").isEmpty()) << "A4 reads zero, but its transformer is out of use";
}

TEST_P(AlarmScan, ZeroReadingCountsOnlyForDedicatedTransformersWithoutAStopInTheMonth) {
    dedicated("B1");  // zero on two billing points, no stop record
    energy("B1", "202412", 5230.4);
    energy("B1", "202501", 0);
    energy("B1", "202501", 0, 0, QVariant(), "02");
    dedicated("B2");  // zero, and its transformer stopped on the 20th
    stop("ZB2", "2025-01-20 00:00:00", QVariant(), "完好");
    energy("B2", "202501", 0);
    customer("B3");  // zero, but on a public transformer area
    energy("B3", "202501", 0);
    dedicated("B4");  // one kilowatt-hour
    energy("B4", "202501", 1);
    dedicated("B5");  // no reading at all this month
    energy("B5", "202412", 900);
    dedicated("B6");  // zero, a stop that ended in November
    stop("ZB6", "2024-06-01 00:00:00", "2024-11-30 00:00:00", "完好");
    energy("B6", "202501", 0);
    customer("B7", "0101", "是");  // a closed account
    transformer("ZB7", "B7", 100);
    energy("B7", "202501", 0);

    scan();
    EXPECT_EQ(alarms(), QStringList({"B1:02", "B6:02"}));
    EXPECT_EQ(text("B1", "02"), QStringLiteral("专变客户本月抄见电量为零（上月5230千瓦时），变压器无停用记录"));
    EXPECT_EQ(text("B6", "02"), QStringLiteral("专变客户本月抄见电量为零（上月无抄表记录），变压器无停用记录"));
}

TEST_P(AlarmScan, NoReactiveEnergyCountsForAssessedCustomersThatUsedEnergy) {
    customer("C1");  // assessed at 0.90, energy, no reactive energy
    energy("C1", "202501", 1200, 0, 90);
    customer("C2");  // one kvarh of reactive energy
    energy("C2", "202501", 1200, 1, 90);
    customer("C3");  // not assessed
    energy("C3", "202501", 1200, 0);
    customer("C4");  // assessed, but nothing used
    energy("C4", "202501", 0, 0, 85);
    customer("C5");  // reactive energy on its second billing point only
    energy("C5", "202501", 1200, 0, 85);
    energy("C5", "202501", 300, 40, QVariant(), "02");

    scan();
    EXPECT_EQ(alarms(), QStringList({"C1:03"}));
    EXPECT_EQ(text("C1", "03"), QStringLiteral("力率考核标准0.90，本月有功电量1200千瓦时，无功电量为零"));
}

TEST_P(AlarmScan, SwingIsMoreThanSixtyPercentOfLastMonthBothWays) {
    const struct {
        const char* hh;
        double last, now;
    } cases[] = {{"D1", 1000, 1601}, {"D2", 1000, 1600}, {"D3", 1000, 399}, {"D4", 1000, 400}, {"D5", 0, 1000}, {"D6", 1000, 0}};
    for (const auto& c : cases) {
        dedicated(c.hh);
        energy(c.hh, "202412", c.last);
        energy(c.hh, "202501", c.now);
    }
    customer("D7");  // a public-area customer trebling
    energy("D7", "202412", 100);
    energy("D7", "202501", 300);

    scan();
    EXPECT_EQ(alarms().filter(":04"), QStringList({"D1:04", "D3:04"}));
    EXPECT_EQ(text("D1", "04"), QStringLiteral("本月电量1601千瓦时，上月1000千瓦时，上升60.1％"));
    EXPECT_EQ(text("D3", "04"), QStringLiteral("本月电量399千瓦时，上月1000千瓦时，下降60.1％"));
    EXPECT_EQ(alarms().filter(":02"), QStringList({"D6:02"})) << "a month gone to zero is a zero reading, not a swing";
}

TEST_P(AlarmScan, LoadRateIsEnergyOverCapacityInUseTimesTheHoursOfTheMonth) {
    dedicated("E1", 100);  // January: 100 kVA x 744 h = 74,400 kWh
    energy("E1", "202501", 74401);
    dedicated("E2", 100);
    energy("E2", "202501", 74400);
    dedicated("E3", 60);  // 60 kVA in use, 40 kVA out of use
    transformer("ZE3b", "E3", 40, "停用");
    energy("E3", "202501", 50000);
    dedicated("E4", 100);  // February has 672 hours
    energy("E4", "202502", 67300);
    energy("E4", "202501", 67300);

    scan();
    EXPECT_EQ(alarms().filter(":05"), QStringList({"E1:05", "E3:05"}));
    EXPECT_EQ(text("E3", "05"), QStringLiteral("本月电量50000千瓦时，专变容量60千伏安，本月744小时，负载率112.0％"));
    al::scanAlarms({.ny = "202502", .unit = {}, .today = QDate(2025, 2, 27)});
    EXPECT_EQ(alarms("202502").filter(":05"), QStringList({"E4:05"}));
}

TEST_P(AlarmScan, TemporarySupplyEndingWithinTheDaysFromTheReferenceDay) {
    const QString temp = al::kTemporaryContract;
    const struct {
        const char* hh;
        const char* htlx;
        const char* yxrq;
    } cases[] = {
        {"F1", "", "2025-02-19 00:00:00"},  // today + 30
        {"F2", "", "2025-02-20 00:00:00"},  // today + 31
        {"F3", "", "2025-01-20 00:00:00"},  // today
        {"F4", "", "2025-01-19 00:00:00"},  // already ended
        {"F5", "高压供用电合同", "2025-02-01 00:00:00"},
        {"F6", "", "2025-02-01 00:00:00"},  // renewed below
    };
    for (const auto& c : cases) {
        customer(c.hh);
        contract(c.hh, QStringLiteral("HT") + c.hh, *c.htlx ? QString::fromUtf8(c.htlx) : temp, c.yxrq);
    }
    contract("F6", "HTF6b", temp, "2025-06-30 00:00:00");
    customer("F7", "0101", "是");
    contract("F7", "HTF7", temp, "2025-02-01 00:00:00");

    const al::ScanResult r = scan();
    EXPECT_EQ(r.referenceDay, kToday);
    EXPECT_EQ(alarms(), QStringList({"F1:06", "F3:06"}));
    EXPECT_EQ(text("F1", "06"), QStringLiteral("临时用电合同将于2025-02-19到期（到期前30天提醒）"));

    // Fewer days ahead; a past month counts from its last day.
    db->exec("delete from e_bjtx");
    scan("202501", QString(), 10);
    EXPECT_EQ(alarms(), QStringList({"F3:06"}));
    const al::ScanResult december = scan("202412", QString(), 50);
    EXPECT_EQ(december.referenceDay, QDate(2024, 12, 31));
    EXPECT_EQ(alarms("202412"), QStringList({"F1:06", "F3:06", "F4:06"})) << "F6's renewal runs past the window";
}

TEST_P(AlarmScan, ASecondRunAddsNothingKeepsHandledAlarmsAndAUnitTakesItsOwnAndThoseUnderIt) {
    dedicated("B1");
    energy("B1", "202501", 0);
    dedicated("B2", 400, "0102");
    energy("B2", "202501", 0);
    dedicated("D1");
    energy("D1", "202412", 1000);
    energy("D1", "202501", 2000);
    db->exec("insert into e_bjtx (ny, hh, bjdm, bjxm, dw, zt, clqk, clr) values ('202501', 'D1', '04', '人工录入', '0101', '已处理', '已核实', '张三')");

    scan("202501", "0102");
    EXPECT_EQ(alarms(), QStringList({"B2:02", "D1:04"}));
    const al::ScanResult all = scan("202501", "01");
    EXPECT_EQ(all.inserted(), 1);
    EXPECT_EQ(all.kinds.at(1).inserted, 1) << "kind 02's count";
    EXPECT_EQ(scan().inserted(), 0);
    EXPECT_EQ(rows(*db, "select hh, bjdm, zt, dw from e_bjtx order by hh"),
              QStringList({"B1|02|未处理|0101", "B2|02|未处理|0102", "D1|04|已处理|0101"}));
}

TEST_P(AlarmScan, AFailingKindRollsBackTheWholeRunAndBadOptionsAreRefused) {
    dedicated("B1");
    energy("B1", "202501", 0);
    db->exec("drop table y_htxx");  // the last kind cannot run
    try {
        scan();
        ADD_FAILURE() << "the scan ran without y_htxx";
    } catch (const EDatabaseError& e) {
        EXPECT_TRUE(e.message().startsWith(QStringLiteral("Alarm kind 06 (临时用电，到期提前提醒): "))) << e.message().toStdString();
    }
    EXPECT_TRUE(alarms().isEmpty()) << "kind 02's alarm went with the rollback";
    EXPECT_FALSE(TCustomMidasDataBase::ByName().InTransaction());

    const struct {
        QString ny, unit;
        int days;
        const char* says;
    } bad[] = {
        {"2025-01", "", 30, "the month must be YYYYMM (e.g. 202401), not '2025-01'"},
        {"202513", "", 30, "not '202513'"},
        {"202502", "", 30, "the month 202502 has not begun (today is 2025-01-20)"},
        {"202501", "", -1, "the days ahead must be a whole number from 0 to 366, not -1"},
    };
    for (const auto& b : bad) {
        try {
            scan(b.ny, b.unit, b.days);
            ADD_FAILURE() << b.says;
        } catch (const std::invalid_argument& e) {
            EXPECT_TRUE(QString::fromUtf8(e.what()).contains(QString::fromUtf8(b.says))) << e.what();
        }
    }
}

// ---------------------------------------------------------------------------
// Over the demo utility: every planted case is found, and what is found is
// exactly what the rules give, read independently as plain SQL over the raw
// rows ("kind|hh", kind 06 counted from `ref`). Date-times are compared as
// 'yyyy-MM-dd HH:mm:ss' literals, which both engines order as times.
QStringList expectedByTheRules(TestDatabase& db, const QString& ny, const QDate& ref, int days) {
    const QDate first(ny.left(4).toInt(), ny.mid(4).toInt(), 1);
    const auto at = [](const QDate& d) { return d.toString("''yyyy-MM-dd 00:00:00''"); };
    return rows(db, QStringLiteral(
        "with m as (select ny, hh, sum(coalesce(jffdl,0)+coalesce(jfpdl,0)+coalesce(jfgdl,0)) a, sum(coalesce(wgdl,0)) r,"
        "             max(coalesce(llkhbz,0)) s from b_dltzxx group by ny, hh),"
        " c as (select * from m where ny = '%1'),"
        " z as (select hh, byqbh, rl, zt from y_yxbyq where byqlx = '专变' and hh is not null),"
        " st as (select z.hh, t.tyrq, t.hfrq, t.fyzt from z join y_byqty t on t.byqbh = z.byqbh)"
        " select k, hh from ("
        "  select '01' k, hh from c where a > 0 and hh in (select hh from st where fyzt = '破损' and tyrq < %3 and (hfrq is null or hfrq >= %4))"
        "  union select '02', hh from c where a = 0 and hh in (select hh from z)"
        "    and hh not in (select hh from st where tyrq < %4 and (hfrq is null or hfrq > %3))"
        "  union select '03', hh from c where s > 0 and a > 0 and r = 0"
        "  union select '04', c.hh from c join m p on p.hh = c.hh and p.ny = '%2'"
        "    where c.a > 0 and p.a > 0 and abs(c.a - p.a) * 100 > 60 * p.a and c.hh in (select hh from z)"
        "  union select '05', c.hh from c join (select hh, sum(rl) rl from z where coalesce(zt, '') <> '停用' group by hh) u"
        "    on u.hh = c.hh where u.rl > 0 and c.a > u.rl * %5"
        "  union select '06', hh from y_htxx where htlx = '%6' group by hh having max(yxrq) >= %7 and max(yxrq) < %8"
        " ) x where hh in (select hh from y_khda where coalesce(xhbz, '') <> '是') order by k, hh")
        .arg(ny, first.addMonths(-1).toString("yyyyMM"), at(first), at(first.addMonths(1)))
        .arg(24 * first.daysInMonth()).arg(al::kTemporaryContract, at(ref), at(ref.addDays(days + 1))));
}

TEST_P(AlarmScan, OnTheDemoUtilityEveryPlantedCaseIsFoundAndNothingOutsideTheRules) {
    TestDatabase demo(dialect(), false, "alarm_demo");
    const tarvin::demo::DemoOptions o{.customers = 1500, .seed = 3, .today = QDate(2025, 3, 12)};
    const tarvin::demo::DemoSummary s = tarvin::demo::createDemoDatabase(demo.db(), o);
    const QString ny = "202503";

    // The demo raised this month's alarms with the scan; they are the rules' own.
    const QStringList found = rows(demo, "select bjdm, hh from e_bjtx where ny = ? order by bjdm, hh", {ny});
    const QStringList expected = expectedByTheRules(demo, ny, o.today, al::kDefaultDays);
    EXPECT_EQ(found.size(), s.alarmsThisMonth);
    EXPECT_EQ(rows(demo, "select distinct zt from e_bjtx where ny = ?", {ny}), QStringList({"未处理"}));
    for (const al::AlarmKind& k : al::alarmKinds()) {
        const QString code = k.code + '|';
        const QStringList planted = s.plantedAlarms.count(k.code) ? s.plantedAlarms.at(k.code) : QStringList();
        EXPECT_GE(planted.size(), 2) << "kind " << k.code.toStdString() << " is planted in both units";
        for (const QString& hh : planted) EXPECT_TRUE(found.contains(code + hh)) << "kind " << k.code.toStdString() << ", " << hh.toStdString();
        EXPECT_EQ(found.filter(code), expected.filter(code)) << "kind " << k.code.toStdString();
    }
    const al::ScanOptions again{.ny = ny, .unit = {}, .today = o.today};
    EXPECT_EQ(al::scanAlarms(again, "alarm_demo").inserted(), 0) << "a second run over every kind adds nothing";
}

TARVIN_INSTANTIATE_ENGINES(AlarmScan);

// ---------------------------------------------------------------------------
// The program

ProgramRun tarvinAlarms(const QStringList& args) { return runProgram(QStringLiteral("tarvin-alarms"), args); }

TEST_P(AlarmScan, TheProgramPrintsALinePerKindAndASummaryAndRefusesBadArguments) {
    dedicated("B1");
    energy("B1", "202501", 0);
    customer("C1");
    energy("C1", "202501", 1200, 0, 90);
    const ProgramRun first = tarvinAlarms({"--db", db->url(), "--ny", "202501"});
    ASSERT_EQ(first.code, 0) << first.err.toStdString();
    EXPECT_TRUE(first.out.contains(QStringLiteral("02 专变客户，变压器无停用记录，抄见电量为零: 1 new\n"))) << first.out.toStdString();
    EXPECT_TRUE(first.out.contains(QStringLiteral("03 力率考核客户，无功电量为零: 1 new\n"))) << first.out.toStdString();
    EXPECT_TRUE(first.out.contains(QStringLiteral("202501: 2 new alarms (01 0, 02 1, 03 1, 04 0, 05 0, 06 0); temporary supply counted from 2025-01-31, 30 days ahead")))
        << first.out.toStdString();
    const ProgramRun second = tarvinAlarms({"--db", db->url(), "--ny", "202501", "--unit", "0101", "--days", "10"});
    ASSERT_EQ(second.code, 0) << second.err.toStdString();
    EXPECT_TRUE(second.out.contains(QStringLiteral("202501 unit 0101: 0 new alarms"))) << second.out.toStdString();
    EXPECT_EQ(alarms(), QStringList({"B1:02", "C1:03"}));

    expectRefusals("tarvin-alarms", {
        {{"--ny", "202501"}, "--db URL is required"},
        {{"--db", db->url()}, "--ny YYYYMM is required"},
        {{"--db", db->url(), "--ny", "202501", "--days", "many"}, "--days needs a whole number from 0 to 366, not 'many'"},
        {{"--db", db->url(), "--ny", "202501", "--colour"}, "Unknown option 'colour'"},
        {{"--db", db->url(), "--ny", "202501", "--unit", "0999"}, "the unit '0999' is not in the unit register"},
    });
    EXPECT_EQ(alarms().size(), 2) << "refused runs write nothing";
}

}  // namespace
