#include "WorkflowEngine.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QVariant>
#include <QVariantList>
#include <cmath>
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

// Makes one call's writes a whole. Inside the caller's transaction this is a
// savepoint, so a failure takes back only what this call wrote and leaves
// the caller's transaction usable. Outside one, SQLite's savepoint is itself
// the transaction; PostgreSQL refuses a savepoint there (25P01), and then the
// call's statements are grouped in a block of their own, so that a screen
// that sends without a transaction never sees half a step.
class Atomic {
public:
    explicit Atomic(const QSqlDatabase& db) : db_(db) {
        QSqlQuery q(db_);
        if (q.exec(QStringLiteral("SAVEPOINT tarvin_wf"))) {
            mode_ = Mode::Savepoint;
            return;
        }
        const QSqlError e = q.lastError();
        if (isPostgres(db_) && e.nativeErrorCode() == QLatin1String("25P01")) {
            if (!q.exec(QStringLiteral("BEGIN"))) throw DbFailure{q.lastError().text()};
            mode_ = Mode::Block;
            return;
        }
        throw DbFailure{QStringLiteral("SAVEPOINT: ") + e.text()};
    }
    Atomic(const Atomic&) = delete;
    Atomic& operator=(const Atomic&) = delete;

    void done() {
        QSqlQuery q(db_);
        bool ok = true;
        if (mode_ == Mode::Savepoint && !isOracle(db_))  // Oracle has no RELEASE
            ok = q.exec(QStringLiteral("RELEASE SAVEPOINT tarvin_wf"));
        else if (mode_ == Mode::Block)
            ok = q.exec(QStringLiteral("COMMIT"));
        if (!ok) throw DbFailure{q.lastError().text()};
        finished_ = true;
    }

    ~Atomic() {
        if (finished_) return;
        QSqlQuery q(db_);
        if (mode_ == Mode::Savepoint) {
            q.exec(QStringLiteral("ROLLBACK TO SAVEPOINT tarvin_wf"));
            if (!isOracle(db_)) q.exec(QStringLiteral("RELEASE SAVEPOINT tarvin_wf"));
        } else if (mode_ == Mode::Block) {
            q.exec(QStringLiteral("ROLLBACK"));
        }
    }

private:
    enum class Mode { Savepoint, Block };
    QSqlDatabase db_;
    Mode mode_ = Mode::Savepoint;
    bool finished_ = false;
};

class Sql {
public:
    explicit Sql(const QSqlDatabase& db) : db_(db) {}

    QSqlQuery run(const QString& sql, const QVariantList& binds = {}) const {
        QSqlQuery q(db_);
        q.setForwardOnly(true);
        if (!q.prepare(sql)) throw DbFailure{sql + QStringLiteral(": ") + q.lastError().text()};
        for (const QVariant& v : binds) q.addBindValue(v);
        if (!q.exec()) throw DbFailure{sql + QStringLiteral(": ") + q.lastError().text()};
        return q;
    }
    int count(const QString& sql, const QVariantList& binds) const {
        QSqlQuery q = run(sql, binds);
        return q.next() ? toInt(q.value(0)) : 0;
    }
    int affected(const QString& sql, const QVariantList& binds) const { return run(sql, binds).numRowsAffected(); }

    // How a date-time is bound: the canonical text (SQLite stores it as is,
    // PostgreSQL reads it into its timestamp), a date-time value for Oracle.
    QVariant stamp(const QDateTime& at) const {
        if (isOracle(db_)) return QDateTime(at.date(), at.time());
        return at.toString(kStampFormat);
    }

private:
    QSqlDatabase db_;
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
};

struct WorkflowEngine::Case {
    QString cdbh, ywdm, dqywx, glbm, hm;
    QVariant jssj;  // arrival at the current item, as stored
};

WorkflowEngine::WorkflowEngine(QSqlDatabase db) : db_(std::move(db)) {}

bool WorkflowEngine::findItem(const QString& ywxdm, Item& out) {
    QSqlQuery q = Sql(db_).run(QStringLiteral("SELECT ywxdm, ywxmc, ywdm, xywxdm, fqwc FROM z_lcjd WHERE ywxdm = ?"), {ywxdm});
    if (!q.next()) return false;
    out.ywxdm = q.value(0).toString();
    out.ywxmc = q.value(1).toString();
    out.ywdm = q.value(2).toString().trimmed();
    out.xywxdm = q.value(3).toString().trimmed();
    out.completedByStart = toInt(q.value(4)) == 1;
    return true;
}

bool WorkflowEngine::findCase(const QString& cdbh, Case& out) {
    QSqlQuery q = Sql(db_).run(QStringLiteral("SELECT cdbh, ywdm, dqywx, glbm, hm, jssj FROM z_dqgw WHERE cdbh = ?"), {cdbh});
    if (!q.next()) return false;
    out.cdbh = q.value(0).toString();
    out.ywdm = q.value(1).toString().trimmed();
    out.dqywx = q.value(2).toString().trimmed();
    out.glbm = q.value(3).toString();
    out.hm = q.value(4).toString();
    out.jssj = q.value(5);
    return true;
}

static bool validCdbh(const QString& cdbh) { return !cdbh.isEmpty() && cdbh.size() <= 10; }

int WorkflowEngine::checkStart(const StartRequest& r, Item& first) {
    if (!validCdbh(r.cdbh)) return WF_BAD_CDBH;
    if (r.dw.isEmpty()) return WF_NO_UNIT;
    if (!fromTDateTime(r.kssj).isValid()) return WF_BAD_TIME;
    const Sql sql(db_);
    if (r.ywdm.isEmpty() ||
        sql.count(QStringLiteral("SELECT count(*) FROM z_dlyxyw WHERE ywdm = ? AND COALESCE(sfyx, 1) = 1"), {r.ywdm}) == 0)
        return WF_UNKNOWN_BUSINESS;
    if (r.ywxdm.isEmpty() || !findItem(r.ywxdm, first)) return WF_UNKNOWN_ITEM;
    if (first.ywdm != r.ywdm) return WF_ITEM_OF_OTHER_BUSINESS;
    if (sql.count(QStringLiteral("SELECT count(*) FROM z_lcjd WHERE xywxdm = ?"), {r.ywxdm}) > 0) return WF_NOT_FIRST_ITEM;
    if (sql.count(QStringLiteral("SELECT count(*) FROM z_dqgw WHERE cdbh = ?"), {r.cdbh}) > 0) return WF_CASE_OPEN;
    if (sql.count(QStringLiteral("SELECT count(*) FROM z_lcls WHERE cdbh = ?"), {r.cdbh}) > 0 ||
        sql.count(QStringLiteral("SELECT count(*) FROM a_h_khsqxx WHERE cdbh = ?"), {r.cdbh}) > 0)
        return WF_CASE_CLOSED;
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
        if (first.completedByStart) {
            Case c;
            if (!findCase(r.cdbh, c)) throw Refused{WF_NO_CASE};
            advance(c, first, fromTDateTime(r.kssj), r.czydm);
        }
        unit.done();
        return int(WF_OK);
    });
}

void WorkflowEngine::advance(const Case& c, const Item& at, const QDateTime& when, const QString& czydm) {
    const Sql sql(db_);
    const QVariant stamp = sql.stamp(when);
    Item next;
    const bool hasNext = !at.xywxdm.isEmpty();
    if (hasNext && !findItem(at.xywxdm, next)) throw Refused{WF_UNKNOWN_ITEM};

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
    int xh = sql.count(QStringLiteral("SELECT COALESCE(MAX(xh), 0) FROM z_lcls WHERE cdbh = ?"), {c.cdbh});
    bool open = false;
    if (xh > 0) {
        QSqlQuery q = sql.run(QStringLiteral("SELECT ywxdm, wcsj FROM z_lcls WHERE cdbh = ? AND xh = ?"), {c.cdbh, xh});
        open = q.next() && q.value(0).toString().trimmed() == at.ywxdm && q.value(1).isNull();
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
        QSqlQuery q = sql.run(QStringLiteral("SELECT DISTINCT x.dm FROM z_xtczy x, z_czyygw cg, z_gw g, z_gwyzn gz, z_ywzn z, z_znyywx zy "
                                             "WHERE cg.czydm = x.dm AND g.dm = cg.zdm AND gz.gwdm = g.dm AND z.dm = gz.zndm "
                                             "AND zy.zndm = z.dm AND zy.cldm = ? AND g.sfyx = 1 AND z.sfyx = 1 AND x.sfyx = 1 "
                                             "AND x.dw = ? ORDER BY x.dm"),
                              {at.ywxdm, c.glbm});
        QStringList recipients;
        while (q.next()) recipients << q.value(0).toString();
        q.finish();
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
