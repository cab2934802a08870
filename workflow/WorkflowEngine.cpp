#include "WorkflowEngine.h"

#include <QHash>
#include <QPointer>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QVariant>
#include <QVariantList>
#include <cmath>
#include <memory>
#include <utility>

#include "Prj_zt_pubfun.h"

namespace tarvin::workflow {

namespace {

// A refusal decided while writing (the case moved meanwhile, the
// definition lacks the next item): the call's writes are undone.
struct Refused {
    int code;
};
// A statement failed: the call's writes are undone.
struct DbFailure {
    QString message;
};

const QDate kEpoch(1899, 12, 30);
const QString kStampFormat = QStringLiteral("yyyy-MM-dd HH:mm:ss");

bool isOracle(const QSqlDatabase& db) { return db.driverName().startsWith(QLatin1String("QOCI")); }
bool isPostgres(const QSqlDatabase& db) { return db.driverName() == QLatin1String("QPSQL"); }

QVariant nullText() { return QVariant(QMetaType::fromType<QString>()); }
// Oracle keeps an empty text as NULL; so do we, on every engine.
QVariant textOrNull(const QString& s) { return s.isEmpty() ? nullText() : QVariant(s); }

int toInt(const QVariant& v) {
    bool ok = false;
    const int i = v.toInt(&ok);
    return ok ? i : int(std::lround(v.toDouble()));
}

// A date-time as the database hands it back, without any time zone.
QDateTime naive(const QVariant& v) {
    if (v.isNull()) return {};
    if (v.metaType() == QMetaType::fromType<QDateTime>()) {
        const QDateTime d = v.toDateTime();
        return QDateTime(d.date(), d.time(), Qt::UTC);
    }
    const QString s = v.toString().trimmed();
    QDateTime d = QDateTime::fromString(s, kStampFormat);
    if (!d.isValid()) d = QDateTime::fromString(s, Qt::ISODate);
    if (!d.isValid()) {
        const QDate day = QDate::fromString(s, QStringLiteral("yyyy-MM-dd"));
        if (day.isValid()) d = QDateTime(day, QTime(0, 0));
    }
    return d.isValid() ? QDateTime(d.date(), d.time(), Qt::UTC) : QDateTime();
}

// How the engine talks to the database, in as few round trips as it can:
// - PostgreSQL: each statement goes out once with its values written into the
//   text (Qt's driver would make PREPARE, EXECUTE and DEALLOCATE of it);
// - SQLite: the compiled statements are kept per connection and reused;
// - Oracle and any other driver: prepared and bound each time, as the driver
//   likes it.
class Sql {
public:
    explicit Sql(const QSqlDatabase& db) : db_(db), oracle_(isOracle(db)), postgres_(isPostgres(db)) {}

    // Every row of a query, read to the end.
    QList<QVariantList> rows(const QString& sql, const QVariantList& binds = {}) const {
        QList<QVariantList> out;
        consume(sql, binds, [&](QSqlQuery& q) {
            const int columns = q.record().count();
            while (q.next()) {
                QVariantList row;
                row.reserve(columns);
                for (int i = 0; i < columns; ++i) row << q.value(i);
                out << row;
            }
        });
        return out;
    }
    QVariantList row(const QString& sql, const QVariantList& binds = {}) const {
        QList<QVariantList> all = rows(sql, binds);
        return all.isEmpty() ? QVariantList() : all.first();
    }
    int count(const QString& sql, const QVariantList& binds) const {
        const QVariantList r = row(sql, binds);
        return r.isEmpty() ? 0 : toInt(r.first());
    }
    int affected(const QString& sql, const QVariantList& binds) const {
        int n = 0;
        consume(sql, binds, [&](QSqlQuery& q) { n = q.numRowsAffected(); });
        return n;
    }
    void run(const QString& sql, const QVariantList& binds = {}) const {
        consume(sql, binds, [](QSqlQuery&) {});
    }
    // A statement without values whose failure the caller judges.
    bool tryRun(const QString& sql, QSqlError* error) const {
        try {
            run(sql);
            return true;
        } catch (const DbFailure&) {
            *error = lastError_;
            return false;
        }
    }

    // How a date-time is bound: the canonical text (SQLite stores it as is,
    // PostgreSQL reads it into its timestamp), a date-time value for Oracle.
    QVariant stamp(const QDateTime& at) const {
        if (oracle_) return QDateTime(at.date(), at.time());
        return at.toString(kStampFormat);
    }

private:
    // A value as a PostgreSQL literal. Texts use the escape form E'...', so
    // that quotes and backslashes mean the same whatever
    // standard_conforming_strings says.
    static QString literal(const QVariant& v) {
        if (!v.isValid() || v.isNull()) return QStringLiteral("NULL");
        switch (v.typeId()) {
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::Short:
        case QMetaType::UShort: return v.toString();
        case QMetaType::Double: {
            const double d = v.toDouble();
            if (std::isfinite(d)) return QString::number(d, 'g', 17);
            break;
        }
        case QMetaType::Bool: return v.toBool() ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
        // A date-time read back from the database: the stored wall clock.
        case QMetaType::QDateTime: {
            const QDateTime d = v.toDateTime();
            if (!d.isValid()) return QStringLiteral("NULL");
            return QLatin1Char('\'') + d.date().toString(Qt::ISODate) + QLatin1Char(' ') +
                   d.time().toString(QStringLiteral("HH:mm:ss.zzz")) + QLatin1Char('\'');
        }
        default: break;
        }
        QString s = v.toString();
        s.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('\''), QStringLiteral("''"));
        return QStringLiteral("E'") + s + QLatin1Char('\'');
    }
    // The text with each ? written as its value (the engine's texts hold no
    // ? inside quotes).
    static QString inlined(const QString& sql, const QVariantList& binds) {
        QString out;
        out.reserve(sql.size() + 16 * binds.size());
        qsizetype next = 0;
        for (const QChar ch : sql) {
            if (ch == QLatin1Char('?') && next < binds.size())
                out += literal(binds.at(next++));
            else
                out += ch;
        }
        if (next != binds.size()) throw DbFailure{sql + QStringLiteral(": wrong number of values")};
        return out;
    }

    template <class F>
    void consume(const QString& sql, const QVariantList& binds, F&& read) const {
        if (postgres_) {
            QSqlQuery q(db_);
            q.setForwardOnly(true);
            const QString text = inlined(sql, binds);
            if (!q.exec(text)) fail(sql, q.lastError());
            read(q);
            return;
        }
        if (!oracle_ && db_.driverName() == QLatin1String("QSQLITE")) {
            QSqlQuery& q = cached(sql, binds);
            read(q);
            q.finish();
            return;
        }
        QSqlQuery q(db_);
        q.setForwardOnly(true);
        if (!q.prepare(sql)) fail(sql, q.lastError());
        for (const QVariant& v : binds) q.addBindValue(v);
        if (!q.exec()) fail(sql, q.lastError());
        read(q);
    }

    [[noreturn]] void fail(const QString& sql, const QSqlError& e) const {
        lastError_ = e;
        throw DbFailure{sql + QStringLiteral(": ") + e.text()};
    }

    // SQLite's compiled statements, per thread and connection name. An entry
    // is for one driver object and one open database handle; a connection
    // removed, or closed and opened again, finds its statements dropped (and
    // should an old statement still fail, it is compiled once more).
    struct Statements {
        QPointer<QSqlDriver> driver;
        const void* handle = nullptr;
        QHash<QString, std::shared_ptr<QSqlQuery>> byText;
    };
    static const void* handleOf(const QSqlDatabase& db) {
        const QVariant h = db.driver()->handle();
        return h.isValid() && h.constData() ? *static_cast<const void* const*>(h.constData()) : nullptr;
    }
    Statements& statements() const {
        static thread_local QHash<QString, Statements> all;
        Statements& s = all[db_.connectionName()];
        const void* handle = handleOf(db_);
        if (s.driver != db_.driver() || s.handle != handle) {
            s.byText.clear();
            s.driver = db_.driver();
            s.handle = handle;
        }
        return s;
    }
    QSqlQuery& cached(const QString& sql, const QVariantList& binds) const {
        Statements& s = statements();
        auto bindAndExec = [&](QSqlQuery& q) {
            for (int i = 0; i < binds.size(); ++i) q.bindValue(i, binds.at(i));
            return q.exec();
        };
        auto it = s.byText.find(sql);
        if (it != s.byText.end()) {
            if (bindAndExec(**it)) return **it;
            s.byText.erase(it);  // compiled once more below
        }
        auto q = std::make_shared<QSqlQuery>(db_);
        q->setForwardOnly(true);
        if (!q->prepare(sql)) fail(sql, q->lastError());
        if (!bindAndExec(*q)) fail(sql, q->lastError());
        if (s.byText.size() >= 64) s.byText.clear();  // the engine has about twenty texts
        return **s.byText.insert(sql, std::move(q));
    }

    QSqlDatabase db_;
    bool oracle_, postgres_;
    mutable QSqlError lastError_;
};

// Makes one call's writes a whole. Inside the caller's transaction this is a
// savepoint, so a failure takes back only what this call wrote and leaves
// the caller's transaction usable. Outside one, SQLite's savepoint is itself
// the transaction; PostgreSQL refuses a savepoint there (25P01), and then the
// call's statements are grouped in a block of their own, so that a screen
// that sends without a transaction never sees half a step.
class Atomic {
public:
    explicit Atomic(const QSqlDatabase& db) : db_(db), sql_(db) {
        QSqlError e;
        if (sql_.tryRun(QStringLiteral("SAVEPOINT tarvin_wf"), &e)) {
            mode_ = Mode::Savepoint;
            return;
        }
        if (isPostgres(db_) && e.nativeErrorCode() == QLatin1String("25P01")) {
            sql_.run(QStringLiteral("BEGIN"));
            mode_ = Mode::Block;
            return;
        }
        throw DbFailure{QStringLiteral("SAVEPOINT: ") + e.text()};
    }
    Atomic(const Atomic&) = delete;
    Atomic& operator=(const Atomic&) = delete;

    void done() {
        if (mode_ == Mode::Savepoint && !isOracle(db_))  // Oracle has no RELEASE
            sql_.run(QStringLiteral("RELEASE SAVEPOINT tarvin_wf"));
        else if (mode_ == Mode::Block)
            sql_.run(QStringLiteral("COMMIT"));
        finished_ = true;
    }

    ~Atomic() {
        if (finished_) return;
        QSqlError ignored;
        if (mode_ == Mode::Savepoint) {
            sql_.tryRun(QStringLiteral("ROLLBACK TO SAVEPOINT tarvin_wf"), &ignored);
            if (!isOracle(db_)) sql_.tryRun(QStringLiteral("RELEASE SAVEPOINT tarvin_wf"), &ignored);
        } else if (mode_ == Mode::Block) {
            sql_.tryRun(QStringLiteral("ROLLBACK"), &ignored);
        }
    }

private:
    enum class Mode { Savepoint, Block };
    QSqlDatabase db_;
    Sql sql_;
    Mode mode_ = Mode::Savepoint;
    bool finished_ = false;
};

}  // namespace

QDateTime fromTDateTime(double value) {
    if (!std::isfinite(value) || std::fabs(value) > 2958466.0)  // 9999-12-31 and before year 1
        return {};
    const double days = std::trunc(value);
    const qint64 seconds = std::llround(std::fabs(value - days) * 86400.0);
    const QDateTime at = QDateTime(kEpoch.addDays(qint64(days)), QTime(0, 0), Qt::UTC).addSecs(seconds);
    if (at.date().year() < 1 || at.date().year() > 9999) return {};
    return at;
}

double toTDateTime(const QDateTime& at) {
    if (!at.isValid()) return 0;
    const qint64 days = kEpoch.daysTo(at.date());
    const double fraction = QTime(0, 0).msecsTo(at.time()) / 86400000.0;
    return days >= 0 ? double(days) + fraction : double(days) - fraction;
}

struct WorkflowEngine::Item {
    QString ywxdm, ywxmc, ywdm, xywxdm;
    bool completedByStart = false;
    // The next item, when the lookup could read it along (see readItem).
    bool nextRead = false;
    QString nextYwxdm, nextYwxmc;
};

struct WorkflowEngine::Case {
    QString cdbh, ywdm, dqywx, glbm, hm;
    QVariant jssj;  // arrival at the current item, as stored
};

namespace {

// The columns an item is read with, its next item joined on: the send needs
// both, and one statement is one round trip.
const QString kItemColumns = QStringLiteral("i.ywxdm, i.ywxmc, i.ywdm, i.xywxdm, i.fqwc, n.ywxdm, n.ywxmc");
const QString kNextJoin = QStringLiteral(" LEFT JOIN z_lcjd n ON n.ywxdm = TRIM(i.xywxdm)");

// The item in row from column `at` on (kItemColumns); false when the row has
// none. The joined next item counts only when it is exactly the one the
// definition names; otherwise the send looks it up itself.
template <class Item>
bool readItem(const QVariantList& row, int at, Item& out) {
    if (row.size() < at + 7 || row.at(at).isNull()) return false;
    out.ywxdm = row.at(at).toString();
    out.ywxmc = row.at(at + 1).toString();
    out.ywdm = row.at(at + 2).toString().trimmed();
    out.xywxdm = row.at(at + 3).toString().trimmed();
    out.completedByStart = toInt(row.at(at + 4)) == 1;
    out.nextYwxdm = row.at(at + 5).toString();
    out.nextYwxmc = row.at(at + 6).toString();
    out.nextRead = !out.xywxdm.isEmpty() && !row.at(at + 5).isNull() && out.nextYwxdm == out.xywxdm;
    return true;
}

}  // namespace

WorkflowEngine::WorkflowEngine(QSqlDatabase db) : db_(std::move(db)) {}

bool WorkflowEngine::findItem(const QString& ywxdm, Item& out) {
    const QVariantList row = Sql(db_).row(QStringLiteral("SELECT ") + kItemColumns + QStringLiteral(" FROM z_lcjd i") + kNextJoin +
                                              QStringLiteral(" WHERE i.ywxdm = ?"),
                                          {ywxdm});
    return readItem(row, 0, out);
}

bool WorkflowEngine::findCase(const QString& cdbh, Case& out) {
    const QVariantList row = Sql(db_).row(QStringLiteral("SELECT cdbh, ywdm, dqywx, glbm, hm, jssj FROM z_dqgw WHERE cdbh = ?"), {cdbh});
    if (row.isEmpty()) return false;
    out.cdbh = row.at(0).toString();
    out.ywdm = row.at(1).toString().trimmed();
    out.dqywx = row.at(2).toString().trimmed();
    out.glbm = row.at(3).toString();
    out.hm = row.at(4).toString();
    out.jssj = row.at(5);
    return true;
}

static bool validCdbh(const QString& cdbh) { return !cdbh.isEmpty() && cdbh.size() <= 10; }

int WorkflowEngine::checkStart(const StartRequest& r, Item& first) {
    if (!validCdbh(r.cdbh)) return WF_BAD_CDBH;
    if (r.dw.isEmpty()) return WF_NO_UNIT;
    if (!fromTDateTime(r.kssj).isValid()) return WF_BAD_TIME;
    if (r.ywdm.isEmpty()) return WF_UNKNOWN_BUSINESS;
    // Every check in one statement: the counts, and the item with its next.
    const QString one = isOracle(db_) ? QStringLiteral("(SELECT 1 AS one FROM dual) d") : QStringLiteral("(SELECT 1 AS one) d");
    const QVariantList row = Sql(db_).row(
        QStringLiteral("SELECT (SELECT count(*) FROM z_dlyxyw WHERE ywdm = ? AND COALESCE(sfyx, 1) = 1), "
                       "(SELECT count(*) FROM z_lcjd WHERE xywxdm = ?), "
                       "(SELECT count(*) FROM z_dqgw WHERE cdbh = ?), "
                       "(SELECT count(*) FROM z_lcls WHERE cdbh = ?), "
                       "(SELECT count(*) FROM a_h_khsqxx WHERE cdbh = ?), ") +
            kItemColumns + QStringLiteral(" FROM ") + one + QStringLiteral(" LEFT JOIN z_lcjd i ON i.ywxdm = ?") + kNextJoin,
        {r.ywdm, r.ywxdm, r.cdbh, r.cdbh, r.cdbh, r.ywxdm});
    if (row.size() < 12) throw DbFailure{QStringLiteral("the start's checks gave no row")};
    if (toInt(row.at(0)) == 0) return WF_UNKNOWN_BUSINESS;
    if (r.ywxdm.isEmpty() || !readItem(row, 5, first)) return WF_UNKNOWN_ITEM;
    if (first.ywdm != r.ywdm) return WF_ITEM_OF_OTHER_BUSINESS;
    if (toInt(row.at(1)) > 0) return WF_NOT_FIRST_ITEM;
    if (toInt(row.at(2)) > 0) return WF_CASE_OPEN;
    if (toInt(row.at(3)) > 0 || toInt(row.at(4)) > 0) return WF_CASE_CLOSED;
    return WF_OK;
}

template <class F>
static int guarded(QString& error, F&& body) {
    try {
        return body();
    } catch (const Refused& r) {
        return r.code;
    } catch (const DbFailure& f) {
        error = f.message;
        return WF_DATABASE_ERROR;
    } catch (const std::exception& e) {
        error = QString::fromLocal8Bit(e.what());
        return WF_INTERNAL_ERROR;
    }
}

int WorkflowEngine::tryStart(const StartRequest& r) {
    error_.clear();
    if (!db_.isOpen()) return WF_NO_CONNECTION;
    return guarded(error_, [&] {
        Item first;
        return checkStart(r, first);
    });
}

int WorkflowEngine::start(const StartRequest& r) {
    error_.clear();
    if (!db_.isOpen()) return WF_NO_CONNECTION;
    return guarded(error_, [&] {
        Item first;
        if (const int rc = checkStart(r, first)) return rc;
        const Sql sql(db_);
        const QVariant at = sql.stamp(fromTDateTime(r.kssj));
        // An item the starting screen itself performs (dispatching an
        // inspection task) is finished by the start: the case is written
        // standing at the next item, its first step done and the next one
        // open, as the start and the move would leave it. On PostgreSQL
        // that is one statement, atomic by itself.
        if (first.completedByStart && first.nextRead && !isOracle(db_)) {
            const QVariantList values{r.cdbh, r.ywdm, textOrNull(r.hh), textOrNull(r.hm), textOrNull(r.yddz),
                                      first.nextYwxdm, first.nextYwxmc, first.ywxdm, first.ywxmc, textOrNull(r.czydm),
                                      r.dw, textOrNull(r.yxj), at, at,
                                      r.cdbh, r.ywdm, first.ywxdm, first.ywxmc, textOrNull(r.czydm), r.dw, at, at,
                                      r.cdbh, r.ywdm, first.nextYwxdm, first.nextYwxmc, r.dw, at};
            const QString dqgw = QStringLiteral(
                "INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, lastywx, lastywxmc, czy, glbm, yxj, kssj, jssj) "
                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
            const QString steps = QStringLiteral(
                "INSERT INTO z_lcls (cdbh, xh, ywdm, ywxdm, ywxmc, czy, glbm, jssj, wcsj) "
                "VALUES (?, 1, ?, ?, ?, ?, ?, ?, ?), (?, 2, ?, ?, ?, NULL, ?, ?, NULL)");
            if (isPostgres(db_)) {
                sql.run(QStringLiteral("WITH d AS (") + dqgw + QStringLiteral(") ") + steps, values);
            } else {
                Atomic unit(db_);
                sql.run(dqgw, values.mid(0, 14));
                sql.run(steps, values.mid(14));
                unit.done();
            }
            return int(WF_OK);
        }
        Atomic unit(db_);
        sql.run(QStringLiteral("INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, yddz, dqywx, dqywxmc, czy, glbm, yxj, kssj, jssj) "
                               "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                {r.cdbh, r.ywdm, textOrNull(r.hh), textOrNull(r.hm), textOrNull(r.yddz), first.ywxdm, first.ywxmc,
                 textOrNull(r.czydm), r.dw, textOrNull(r.yxj), at, at});
        sql.run(QStringLiteral("INSERT INTO z_lcls (cdbh, xh, ywdm, ywxdm, ywxmc, glbm, jssj) VALUES (?, 1, ?, ?, ?, ?, ?)"),
                {r.cdbh, r.ywdm, first.ywxdm, first.ywxmc, r.dw, at});
        // An item that the starting screen itself performs (dispatching an
        // inspection task) is finished by the start: the case goes on to the
        // next item's post at once.
        // The case is the row just written, its step 1 the open one.
        if (first.completedByStart) {
            Case c;
            c.cdbh = r.cdbh;
            c.ywdm = r.ywdm;
            c.dqywx = first.ywxdm.trimmed();
            c.glbm = r.dw;
            c.hm = r.hm;
            c.jssj = at;
            advance(c, first, fromTDateTime(r.kssj), r.czydm, 1);
        }
        unit.done();
        return int(WF_OK);
    });
}

void WorkflowEngine::advance(const Case& c, const Item& at, const QDateTime& when, const QString& czydm, int openStep) {
    const Sql sql(db_);
    const QVariant stamp = sql.stamp(when);
    Item next;
    const bool hasNext = !at.xywxdm.isEmpty();
    if (hasNext && at.nextRead) {
        next.ywxdm = at.nextYwxdm;
        next.ywxmc = at.nextYwxmc;
    } else if (hasNext && !findItem(at.xywxdm, next)) {
        throw Refused{WF_UNKNOWN_ITEM};
    }

    // Move the case first, on the condition that it still stands at the
    // item: of two operators sending the same case, the second finds it gone.
    const int moved =
        hasNext ? sql.affected(QStringLiteral("UPDATE z_dqgw SET dqywx = ?, dqywxmc = ?, lastywx = ?, lastywxmc = ?, czy = ?, jssj = ? "
                                              "WHERE cdbh = ? AND dqywx = ?"),
                               {next.ywxdm, next.ywxmc, at.ywxdm, at.ywxmc, textOrNull(czydm), stamp, c.cdbh, at.ywxdm})
                : sql.affected(QStringLiteral("DELETE FROM z_dqgw WHERE cdbh = ? AND dqywx = ?"), {c.cdbh, at.ywxdm});
    if (moved != 1) throw Refused{WF_NOT_AT_ITEM};

    // Close the step in the history; a case whose step was never recorded
    // (loaded from elsewhere) gets it recorded now.
    const QString ywdm = c.ywdm.isEmpty() ? at.ywdm : c.ywdm;
    int xh = openStep;
    bool open = openStep > 0;
    if (!open) {
        const QVariantList last = sql.row(QStringLiteral("SELECT l.xh, l.ywxdm, l.wcsj FROM z_lcls l WHERE l.cdbh = ? "
                                                         "AND l.xh = (SELECT MAX(xh) FROM z_lcls WHERE cdbh = ?)"),
                                          {c.cdbh, c.cdbh});
        if (!last.isEmpty()) {
            xh = toInt(last.at(0));
            open = last.at(1).toString().trimmed() == at.ywxdm && last.at(2).isNull();
        }
    }
    if (open) {
        sql.run(QStringLiteral("UPDATE z_lcls SET czy = ?, wcsj = ? WHERE cdbh = ? AND xh = ?"), {textOrNull(czydm), stamp, c.cdbh, xh});
    } else {
        ++xh;
        sql.run(QStringLiteral("INSERT INTO z_lcls (cdbh, xh, ywdm, ywxdm, ywxmc, czy, glbm, jssj, wcsj) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                {c.cdbh, xh, ywdm, at.ywxdm, at.ywxmc, textOrNull(czydm), textOrNull(c.glbm), c.jssj.isNull() ? stamp : c.jssj, stamp});
    }

    if (hasNext) {
        sql.run(QStringLiteral("INSERT INTO z_lcls (cdbh, xh, ywdm, ywxdm, ywxmc, glbm, jssj) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                {c.cdbh, xh + 1, ywdm, next.ywxdm, next.ywxmc, textOrNull(c.glbm), stamp});
        return;
    }

    // The case has left its last item: its application goes to the archive,
    // the same columns in the same order followed by the archiving time.
    static const char* const kArchives[][2] = {{"a_khsqxx", "a_h_khsqxx"}, {"a_ykkzb", "a_h_ykkzb"}};
    for (const auto& pair : kArchives) {
        const QString from = QLatin1String(pair[0]), to = QLatin1String(pair[1]);
        sql.run(QStringLiteral("INSERT INTO %1 SELECT a.*, CAST(NULL AS TIMESTAMP) FROM %2 a WHERE a.cdbh = ?").arg(to, from), {c.cdbh});
        sql.run(QStringLiteral("UPDATE %1 SET gdsj = ? WHERE cdbh = ?").arg(to), {stamp, c.cdbh});
        sql.run(QStringLiteral("DELETE FROM %1 WHERE cdbh = ?").arg(from), {c.cdbh});
    }
}

int WorkflowEngine::send(const QString& cdbh, const QString& ywxdm, double fssj, const QString& czydm) {
    error_.clear();
    if (!db_.isOpen()) return WF_NO_CONNECTION;
    if (!validCdbh(cdbh)) return WF_BAD_CDBH;
    const QDateTime when = fromTDateTime(fssj);
    if (!when.isValid()) return WF_BAD_TIME;
    return guarded(error_, [&] {
        Case c;
        if (!findCase(cdbh, c)) return int(WF_NO_CASE);
        if (ywxdm.isEmpty() || c.dqywx != ywxdm) return int(WF_NOT_AT_ITEM);
        Item at;
        if (!findItem(c.dqywx, at)) return int(WF_UNKNOWN_ITEM);
        Atomic unit(db_);
        advance(c, at, when, czydm);
        unit.done();
        return int(WF_OK);
    });
}

int WorkflowEngine::notify(const QString& cdbh) {
    error_.clear();
    if (!db_.isOpen()) return WF_NO_CONNECTION;
    if (!validCdbh(cdbh)) return WF_BAD_CDBH;
    return guarded(error_, [&] {
        Case c;
        if (!findCase(cdbh, c)) return int(WF_NO_CASE);
        Item at;
        if (!findItem(c.dqywx, at)) return int(WF_UNKNOWN_ITEM);
        const Sql sql(db_);
        // Operators of the case's unit holding a post in force that carries
        // a function in force granting the item.
        const QList<QVariantList> rows = sql.rows(QStringLiteral("SELECT DISTINCT x.dm FROM z_xtczy x, z_czyygw cg, z_gw g, z_gwyzn gz, z_ywzn z, z_znyywx zy "
                                             "WHERE cg.czydm = x.dm AND g.dm = cg.zdm AND gz.gwdm = g.dm AND z.dm = gz.zndm "
                                             "AND zy.zndm = z.dm AND zy.cldm = ? AND g.sfyx = 1 AND z.sfyx = 1 AND x.sfyx = 1 "
                                             "AND x.dw = ? ORDER BY x.dm"),
                              {at.ywxdm, c.glbm});
        QStringList recipients;
        for (const QVariantList& row : rows) recipients << row.at(0).toString();
        if (recipients.isEmpty()) return int(WF_NO_RECIPIENT);
        const QDateTime sent = now();
        if (!sent.isValid()) throw DbFailure{QStringLiteral("the database clock cannot be read: ") + error_};
        const QString text = c.hm.isEmpty()
                                 ? QStringLiteral("新工作单到达：%1（传单编号：%2）").arg(at.ywxmc, cdbh)
                                 : QStringLiteral("新工作单到达：%1（传单编号：%2，户名：%3）").arg(at.ywxmc, cdbh, c.hm);
        Atomic unit(db_);
        int xh = sql.count(QStringLiteral("SELECT COALESCE(MAX(xh), 0) FROM z_gzdxx WHERE cdbh = ?"), {cdbh});
        for (const QString& czydm : recipients)
            sql.run(QStringLiteral("INSERT INTO z_gzdxx (cdbh, xh, ywxdm, jsczy, nr, fssj, ydbz) VALUES (?, ?, ?, ?, ?, ?, ?)"),
                    {cdbh, ++xh, at.ywxdm, czydm, text, sql.stamp(sent), QStringLiteral("否")});
        unit.done();
        return int(WF_OK);
    });
}

QDateTime WorkflowEngine::now() {
    if (!db_.isOpen()) return {};
    QSqlQuery q(db_);
    q.setForwardOnly(true);
    const QString text = isOracle(db_) ? QStringLiteral("SELECT sysdate FROM dual") : QStringLiteral("SELECT tarvin_sysdate()");
    if (!q.exec(text) || !q.next()) {
        error_ = q.lastError().text();
        return {};
    }
    return naive(q.value(0));
}

}  // namespace tarvin::workflow
