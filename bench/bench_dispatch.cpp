// The scheduling screen's dispatch, driven through its own buttons offscreen
// (the list filled with accounts, type, inspector, department and content
// chosen, confirm, send), every box answered Yes/OK (and printed, when
// operating).
//
// Measure (default): 300 tasks saved and sent through the screen; the send
// (the dispatch, which writes the batch) is set against plain INSERTs of the
// same rows (tasks, control and application rows, header, the workflow's
// z_dqgw and z_lcls rows as the engine leaves them) in one transaction, in
// turns in the same process; medians of the rounds.
// Both sides' rows are deleted after each round, so that every round finds
// the database as it was. Without --db, or on a database without the
// schema, a demo utility of --customers (2,000) is written first.
// --profile times the workflow calls inside the send as well.
//
//   bench_dispatch [--db URL] [--customers N] [--tasks 300] [--rounds 5] [--profile]
//
// Operator: one operator sends one batch of --tasks accounts, the first
// --first (in account order), and exits 0 printing "batch JCPH", or 1 with
// the screen's message. --pause-after K stops the send inside its open
// transaction once K tasks are written: "paused JCPH CDBH" is printed and a
// line on stdin lets it go on. On PostgreSQL the session's application_name
// is "bench_dispatch PID" in both modes, for pg_stat_activity.
//
//   bench_dispatch --operator --db URL --first HH [--tasks 20] [--pause-after K]
#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "DemoGenerator.h"
#include "common/Unt_Zt_UserFuncs.h"
#include "data/Connection.h"
#include "data/DataModules.h"
#include "data/MidasQuery.h"
#include "frame/MessageService.h"
#include "frame/Unit_zt_gobal.h"
#include "planning/Frm_Jc_Jhbp.h"

using namespace Qt::StringLiterals;

namespace {

const QString kSent = u"当前客户流程发送成功"_s;

double seconds(const QElapsedTimer& t) { return double(t.nsecsElapsed()) / 1e9; }

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

QSqlQuery run(const QSqlDatabase& db, const QString& sql, const QVariantList& binds = {}) {
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.prepare(sql)) throw EDatabaseError(sql + u": "_s + q.lastError().text());
    for (const QVariant& v : binds) q.addBindValue(v);
    if (!q.exec()) throw EDatabaseError(sql + u": "_s + q.lastError().text());
    return q;
}

QString first(const QSqlDatabase& db, const QString& sql) {
    QSqlQuery q = run(db, sql);
    if (!q.next()) throw EDatabaseError(u"nothing in the database for: "_s + sql);
    return q.value(0).toString();
}

// ------------------------------------------------------------ the session

struct Session {
    QString jclx, jcry;
};

// The operator, unit and department the screen runs for: the first ones
// the database has, the unit that of the first account dispatched.
Session signIn(const QSqlDatabase& db, const QString& firstHh) {
    Gdw = first(db, u"SELECT dw FROM y_khda WHERE hh = '"_s + firstHh + u"'"_s);
    Gbm = first(db, u"SELECT dm FROM z_bmbm ORDER BY dm"_s);
    QSqlQuery op = run(db, u"SELECT dm, xingming FROM z_xtczy ORDER BY dm"_s);
    if (!op.next()) throw EDatabaseError(u"no operator in z_xtczy"_s);
    Gczydm = op.value(0).toString();
    Gczyxm = op.value(1).toString();
    return {first(db, u"SELECT mc FROM w_jclx ORDER BY dm"_s), Gczyxm.isEmpty() ? Gczydm : Gczyxm};
}

// Open accounts in account order, from `from` on.
QStringList accounts(const QSqlDatabase& db, const QString& from, int n) {
    QSqlQuery q = run(db, u"SELECT hh, hm FROM v_yckhda WHERE hh >= ? ORDER BY hh"_s, {from.isNull() ? u""_s : from});
    QStringList out;
    while (out.size() < n && q.next()) out << q.value(0).toString() + u"\u2506"_s + q.value(1).toString();
    if (out.size() < n) throw EDatabaseError(u"only %1 open accounts from %2"_s.arg(out.size()).arg(from));
    return out;
}

// ------------------------------------------------------------ the boxes

QString lastMessage;
bool echo = true;

void answerBoxes() {
    tarvin::MessageService::setHandler([](const tarvin::MessageRequest& r) {
        lastMessage = r.text;
        if (echo) {
            std::printf("message: %s\n", qPrintable(r.text));
            std::fflush(stdout);
        }
        return r.buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok;
    });
}

// ------------------------------------------------------------ the screen

struct Dispatch {
    bool sent = false;
    double save = 0, send = 0;
};

// One batch through the screen's buttons, as an operator does it.
Dispatch dispatch(TJc_Jhbp_Frm& s, const Session& session, const QStringList& items) {
    Dispatch d;
    s.Lb_Jckhjs->clear();
    s.Lb_Jckhjs->addItems(items);
    s.Bbtn_Xz->click();
    s.Rb_Yjhbp->setChecked(true);
    s.dblc_jclx->SetKeyValue(session.jclx);
    s.edt_jcry->setText(session.jcry);
    s.EDT_JCZH->setText(u"JC-BENCH"_s);
    s.dtp_jhrq->setDateTime(QDateTime::currentDateTime());
    QElapsedTimer t;
    t.start();
    s.Bbtn_Qr->click();
    d.save = seconds(t);
    if (!s.Bbtn_Fs->isEnabled()) throw EDatabaseError(u"the tasks were not saved: "_s + lastMessage);
    s.Dblc_Jcbm->SetKeyValue(Gbm);
    s.Mem_Jcnr->setPlainText(u"周期检查"_s);
    t.restart();
    s.Bbtn_Fs->click();
    d.send = seconds(t);
    d.sent = lastMessage.startsWith(kSent);
    return d;
}

// ------------------------------------------------------------ the pause

int pauseAt = 0, tryCalls = 0;
TJc_Jhbp_Frm* screen = nullptr;
fristywx_fn realTry = nullptr;

int32_t pausingTry(const char* cdbh, const char* ywdm, const char* ywxdm, const char* dw, const char* hh, const char* yxj,
                   const char* czydm, TDateTime kssj, const char* hm, const char* yddz, int32_t r1, int32_t r2) {
    if (++tryCalls == pauseAt) {
        std::printf("paused %s %s\n", qPrintable(screen->sJcph), cdbh);
        std::fflush(stdout);
        char line[64];
        if (!std::fgets(line, sizeof line, stdin)) std::printf("stdin closed, going on\n");
    }
    return realTry(cdbh, ywdm, ywxdm, dw, hh, yxj, czydm, kssj, hm, yddz, r1, r2);
}

// ------------------------------------------------------------ plain inserts

// The rows the dispatch leaves, written with plain statements: per task the
// customer read once, the task, control and application rows, the case at
// its second item with its two steps; then the header.
class PlainDispatch {
public:
    explicit PlainDispatch(const QSqlDatabase& db) : db_(db) {}

    void write(const QString& jcph, const QStringList& hhs, int firstNumber) {
        const QString now = QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
        QSqlQuery customer(db_), task(db_), control(db_), application(db_), position(db_), step(db_), header(db_);
        customer.setForwardOnly(true);
        customer.prepare(u"SELECT hm, yddz, khlxdm, dydjdm, xlbh, tqbh, jczq, scjcrq, htrl FROM v_yckhda WHERE hh = ?"_s);
        task.prepare(u"INSERT INTO e_jcgzjl (cdbh, hh, hm, yddz, khlx, dydj, xlbh, tqbh, jczq, scjcrq, jhlx, jhjcrq, jclx, "
                     "jcry, jczh, qtry, hjrs, zt, jcph) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s);
        control.prepare(u"INSERT INTO a_ykkzb (cdbh, htrl) VALUES (?, ?)"_s);
        application.prepare(
            u"INSERT INTO a_khsqxx (cdbh, slbm, ywdm, sqrq, sqbz, hh, khlx, hm, yddz, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, "
            "fkdw, fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zwlxdh, zwlxr, zwlxdz, zzsyh, zzszh, zzsh, zzsm, zcdz, "
            "scbc, zxr, cbcbh, yhh) SELECT ?, ?, ?, ?, ?, hh, khlx, hm, yddz, zjmc, zjhm, htrl, lxr, lxdh, lxdz, yzbm, fkdw, "
            "fkfs, hyfl, ydlb, dydj, yhdm, yhzh, dw, xzq, sfxyh, zwlxdh, zwlxr, zwlxdz, zzsyh, zzszh, zzsh, zzsm, zcdz, scbc, "
            "zxr, cbcbh, yhh FROM y_khda WHERE hh = ?"_s);
        position.prepare(u"INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, "
                         "yxj, kssj, jssj) VALUES (?, '401', ?, ?, ?, '40102', ?, '40101', ?, ?, ?, '一般', ?, ?)"_s);
        step.prepare(u"INSERT INTO z_lcls (cdbh, xh, ywdm, ywxdm, ywxmc, czy, glbm, jssj, wcsj) VALUES (?, ?, '401', ?, ?, ?, ?, ?, ?)"_s);
        header.prepare(u"INSERT INTO e_jcgzap (jcph, jcbm, jcnr, dw, bz, zdr, zdsj) VALUES (?, ?, ?, ?, ?, ?, ?)"_s);
        if (!db_.transaction()) throw EDatabaseError(db_.lastError().text());
        const auto exec = [](QSqlQuery& q, const QVariantList& binds) {
            for (int i = 0; i < binds.size(); ++i) q.bindValue(i, binds[i]);
            if (!q.exec()) throw EDatabaseError(q.lastQuery() + u": "_s + q.lastError().text());
        };
        for (int i = 0; i < hhs.size(); ++i) {
            const QString cdbh = number(firstNumber + i), hh = hhs[i];
            exec(customer, {hh});
            if (!customer.next()) throw EDatabaseError(u"no customer "_s + hh);
            QVariantList row;
            for (int k = 0; k < 9; ++k) row << customer.value(k);
            customer.finish();
            const auto c = [&](int k) { return row[k]; };
            exec(task, {cdbh, hh, c(0), c(1), c(2), c(3), c(4), c(5), c(6), c(7), u"月计划"_s, now, u"周期检查"_s,
                        Gczyxm, u"JC-BENCH"_s, QString(), QString(), u"未审批"_s, jcph});
            exec(control, {cdbh, c(8)});
            exec(application, {cdbh, Gbm, u"401"_s, now, u""_s, hh});
            exec(position, {cdbh, hh, c(0), c(1), item2_, item1_, Gczydm, Gdw, now, now});
            exec(step, {cdbh, 1, u"40101"_s, item1_, Gczydm, Gdw, now, now});
            exec(step, {cdbh, 2, u"40102"_s, item2_, QVariant(QMetaType::fromType<QString>()), Gdw, now,
                        QVariant(QMetaType::fromType<QString>())});
        }
        exec(header, {jcph, Gbm, u"周期检查"_s, Gdw, QString(), Gczyxm, now});
        if (!db_.commit()) throw EDatabaseError(db_.lastError().text());
    }

    void names() {
        item1_ = first(db_, u"SELECT ywxmc FROM z_lcjd WHERE ywxdm = '40101'"_s);
        item2_ = first(db_, u"SELECT ywxmc FROM z_lcjd WHERE ywxdm = '40102'"_s);
    }

    static QString number(int n) { return u"B"_s + QString::number(n).rightJustified(9, u'0'); }

private:
    QSqlDatabase db_;
    QString item1_, item2_;
};

// Every row of the batches whose number meets `jcph` (a condition on it)
// and of the documents they hold.
void removeBatches(const QSqlDatabase& db, const QString& jcph) {
    const QString docs = u"(SELECT cdbh FROM e_jcgzjl WHERE jcph "_s + jcph + u")"_s;
    QSqlDatabase d = db;
    d.transaction();
    for (const char* t : {"a_ykkzb", "a_khsqxx", "z_dqgw", "z_lcls", "z_gzdxx"})
        run(db, u"DELETE FROM "_s + QLatin1String(t) + u" WHERE cdbh IN "_s + docs);
    run(db, u"DELETE FROM e_jcgzjl WHERE jcph "_s + jcph);
    run(db, u"DELETE FROM e_jcgzap WHERE jcph "_s + jcph);
    d.commit();
}

// ------------------------------------------------------------ profile

// The workflow entry points timed, so that a report can tell the engine's
// share of the send from the screen's and the data layer's.
struct Timed {
    static inline TWorkflowEntries real;
    static inline double tries = 0, starts = 0, messages = 0;
    static int32_t tryStart(const char* a, const char* b, const char* c, const char* d, const char* e, const char* f,
                            const char* g, TDateTime h, const char* i, const char* j, int32_t k, int32_t l) {
        QElapsedTimer t;
        t.start();
        const int32_t rc = real.tryfristywx(a, b, c, d, e, f, g, h, i, j, k, l);
        tries += seconds(t);
        return rc;
    }
    static int32_t start(const char* a, const char* b, const char* c, const char* d, const char* e, const char* f,
                         const char* g, TDateTime h, const char* i, const char* j, int32_t k, int32_t l) {
        QElapsedTimer t;
        t.start();
        const int32_t rc = real.fristywx(a, b, c, d, e, f, g, h, i, j, k, l);
        starts += seconds(t);
        return rc;
    }
    static int32_t message(const char* a) {
        QElapsedTimer t;
        t.start();
        const int32_t rc = real.SendGzdMess(a);
        messages += seconds(t);
        return rc;
    }
};

int measure(const QSqlDatabase& db, int tasks, int rounds, bool profile) {
    const QStringList items = accounts(db, QString(), tasks);
    QStringList hhs;
    for (const QString& item : items) hhs << item.left(10);
    const Session session = signIn(db, hhs.first());
    echo = false;
    TJc_Jhbp_Frm s;
    s.show();
    QApplication::processEvents();
    PlainDispatch plain(db);
    plain.names();
    if (profile) {
        Timed::real = WorkflowEntries();
        TWorkflowEntries e = Timed::real;
        e.tryfristywx = &Timed::tryStart;
        e.fristywx = &Timed::start;
        e.SendGzdMess = &Timed::message;
        SetWorkflowEntries(e);
    }
    removeBatches(db, u"LIKE 'B%'"_s);  // left by a run stopped half-way
    std::vector<double> saves, sends, plains;
    for (int round = 0; round <= rounds; ++round) {  // round 0 warms the caches
        Timed::tries = Timed::starts = Timed::messages = 0;
        const Dispatch d = dispatch(s, session, items);
        if (!d.sent) throw EDatabaseError(u"the send failed: "_s + lastMessage);
        const double wf[3] = {Timed::tries, Timed::starts, Timed::messages};
        const QString plainJcph = u"B"_s + QString::number(round).rightJustified(9, u'0');
        QElapsedTimer t;
        t.start();
        plain.write(plainJcph, hhs, round * tasks);
        const double p = seconds(t);
        for (const QString& jcph : {s.sJcph, plainJcph})
            if (first(db, u"SELECT count(*) FROM e_jcgzjl WHERE jcph = '"_s + jcph + u"'"_s).toInt() != tasks)
                throw EDatabaseError(u"batch %1 does not hold its %2 tasks"_s.arg(jcph).arg(tasks));
        removeBatches(db, u"IN ('%1', '%2')"_s.arg(s.sJcph, plainJcph));
        if (round == 0) continue;
        saves.push_back(d.save);
        sends.push_back(d.send);
        plains.push_back(p);
        std::printf("  round %d: save %.3f s, send %.3f s, plain %.3f s", round, d.save, d.send, p);
        if (profile)
            std::printf(" (send's workflow calls: try %.3f s, start %.3f s, message %.3f s)", wf[0], wf[1], wf[2]);
        std::printf("\n");
        std::fflush(stdout);
    }
    const double save = median(saves), send = median(sends), base = median(plains);
    std::printf("  screen: save %.3f s + send %.3f s = %.3f s (%.2f ms per task)\n", save, send, save + send,
                (save + send) * 1000 / tasks);
    std::printf("  plain inserts: %.3f s (%.2f ms per task)\n", base, base * 1000 / tasks);
    // The dispatch is the send: it writes the rows the plain side writes.
    // The save only fills the screen's list (customer reads and numbers).
    std::printf("  ratio dispatch (send) / plain: %.2f (goal <= 3); save and send together / plain: %.2f\n",
                send / base, (save + send) / base);
    return 0;
}

int operate(const QSqlDatabase& db, const QString& from, int tasks, int pauseAfter) {
    const QStringList items = accounts(db, from, tasks);
    const Session session = signIn(db, items.first().left(10));
    TJc_Jhbp_Frm s;
    s.show();
    QApplication::processEvents();
    if (pauseAfter >= 0) {
        screen = &s;
        pauseAt = pauseAfter + 1;
        TWorkflowEntries e = WorkflowEntries();
        realTry = e.tryfristywx;
        e.tryfristywx = &pausingTry;
        SetWorkflowEntries(e);
    }
    if (!dispatch(s, session, items).sent) {
        std::fprintf(stderr, "bench_dispatch: %s\n", qPrintable(lastMessage));
        return 1;
    }
    std::printf("batch %s\n", qPrintable(s.sJcph));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QString url, from;
    bool operatorMode = false, profile = false;
    qint64 customers = 2000;
    int tasks = -1, rounds = 5, pauseAfter = -1;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        const QString a = args[i];
        const bool valued = i + 1 < args.size();
        if (a == "--operator"_L1) operatorMode = true;
        else if (a == "--profile"_L1) profile = true;
        else if (a == "--db"_L1 && valued) url = args[++i];
        else if (a == "--first"_L1 && valued) from = args[++i];
        else if (a == "--customers"_L1 && valued) customers = args[++i].toLongLong();
        else if (a == "--tasks"_L1 && valued) tasks = args[++i].toInt();
        else if (a == "--rounds"_L1 && valued) rounds = args[++i].toInt();
        else if (a == "--pause-after"_L1 && valued) pauseAfter = args[++i].toInt();
        else {
            std::fprintf(stderr, "usage: bench_dispatch [--db URL] [--customers N] [--tasks N] [--rounds N] [--profile]\n"
                                 "       bench_dispatch --operator --db URL --first HH [--tasks N] [--pause-after K]\n");
            return 2;
        }
    }
    if (tasks < 0) tasks = operatorMode ? 20 : 300;
    if (tasks < 1 || rounds < 1 || (operatorMode && (url.isEmpty() || from.isEmpty() || pauseAfter >= tasks)) ||
        customers < tasks || customers > tarvin::demo::kMaxCustomers) {
        std::fprintf(stderr, "bench_dispatch: bad options (see the usage at the top of bench/bench_dispatch.cpp)\n");
        return 2;
    }
    answerBoxes();
    QTemporaryDir dir;
    int rc = 1;
    try {
        QSqlDatabase db = tarvin::db::openConnection(
            url.isEmpty() ? u"sqlite:"_s + dir.filePath(u"demo.sqlite"_s) : url, u"Shdl"_s);
        const bool postgres = tarvin::db::dialectOf(db) == tarvin::sql::Dialect::PostgreSQL;
        if (postgres)
            QSqlQuery(db).exec(u"SET application_name TO 'bench_dispatch %1'"_s.arg(QCoreApplication::applicationPid()));
        if (!operatorMode && !tarvin::demo::holdsReferenceSchema(db)) {
            std::fprintf(stderr, "writing the demo utility (%lld customers) ...\n", static_cast<long long>(customers));
            tarvin::demo::DemoOptions o;
            o.customers = customers;
            tarvin::demo::createDemoDatabase(db, o);
            if (postgres) QSqlQuery(db).exec(u"ANALYZE"_s);
        }
        CreateDataModules();
        if (operatorMode) {
            rc = operate(db, from, tasks, pauseAfter);
        } else {
            std::printf("bench_dispatch (%s): %d tasks per batch, %d rounds, medians\n", postgres ? "PostgreSQL" : "SQLite",
                        tasks, rounds);
            rc = measure(db, tasks, rounds, profile);
        }
        FreeDataModules();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "bench_dispatch: %s\n", e.what());
        rc = 1;
    }
    std::fflush(stdout);
    return rc;
}
