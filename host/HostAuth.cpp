#include "HostAuth.h"

#include <QMessageAuthenticationCode>
#include <QRandomGenerator>
#include <QSqlError>
#include <QSqlQuery>
#include <stdexcept>

namespace tarvin::host {

QByteArray pbkdf2Sha256(const QByteArray& password, const QByteArray& salt, int rounds, int length) {
    QByteArray out;
    QMessageAuthenticationCode mac(QCryptographicHash::Sha256, password);
    for (quint32 block = 1; out.size() < length; ++block) {
        QByteArray counter(4, 0);
        counter[0] = char(block >> 24);
        counter[1] = char(block >> 16);
        counter[2] = char(block >> 8);
        counter[3] = char(block);
        mac.reset();
        mac.addData(salt);
        mac.addData(counter);
        QByteArray u = mac.result();
        QByteArray t = u;
        for (int i = 1; i < rounds; ++i) {
            mac.reset();
            mac.addData(u);
            u = mac.result();
            for (int j = 0; j < t.size(); ++j) t[j] = char(t[j] ^ u[j]);
        }
        out += t;
    }
    return out.left(length);
}

namespace {
void run(QSqlQuery& q, const char* what) {
    if (!q.exec()) throw std::runtime_error(std::string(what) + ": " + q.lastError().text().toStdString());
}
}  // namespace

HostAuth::HostAuth(QSqlDatabase db) : db_(std::move(db)) {}

void HostAuth::ensureTable() {
    // Run directly: PostgreSQL cannot prepare DDL.
    QSqlQuery q(db_);
    if (!q.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS tarvin_host_kl ("
                               "czydm VARCHAR(20) PRIMARY KEY, salt VARCHAR(64) NOT NULL, "
                               "hash VARCHAR(128) NOT NULL, rounds INTEGER NOT NULL)")))
        throw std::runtime_error("creating the pass-phrase register: " + q.lastError().text().toStdString());
}

void HostAuth::setPassword(const QString& czydm, const QString& password) {
    QByteArray salt(16, 0);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32*>(salt.data()), 4);
    const QByteArray hash = pbkdf2Sha256(password.toUtf8(), salt, kRounds);
    QSqlQuery del(db_);
    del.prepare(QStringLiteral("DELETE FROM tarvin_host_kl WHERE czydm = ?"));
    del.addBindValue(czydm);
    run(del, "replacing a pass phrase");
    QSqlQuery ins(db_);
    ins.prepare(QStringLiteral("INSERT INTO tarvin_host_kl (czydm, salt, hash, rounds) VALUES (?, ?, ?, ?)"));
    ins.addBindValue(czydm);
    ins.addBindValue(QString::fromLatin1(salt.toHex()));
    ins.addBindValue(QString::fromLatin1(hash.toHex()));
    ins.addBindValue(kRounds);
    run(ins, "storing a pass phrase");
}

bool HostAuth::hasPassword(const QString& czydm) {
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("SELECT 1 FROM tarvin_host_kl WHERE czydm = ?"));
    q.addBindValue(czydm);
    run(q, "reading the pass-phrase register");
    return q.next();
}

bool HostAuth::verify(const QString& czydm, const QString& dw, const QString& password) {
    QSqlQuery q(db_);
    q.prepare(QStringLiteral(
        "SELECT k.salt, k.hash, k.rounds FROM tarvin_host_kl k JOIN z_xtczy c ON c.dm = k.czydm "
        "WHERE k.czydm = ? AND COALESCE(c.sfyx, 1) = 1 AND (c.dw = ? OR c.dw IN "
        "(SELECT sjdw FROM z_dwbm WHERE dm = ?))"));
    q.addBindValue(czydm);
    q.addBindValue(dw);
    q.addBindValue(dw);
    run(q, "checking a sign-in");
    if (!q.next()) {
        // Same work either way, so the time taken tells nothing.
        pbkdf2Sha256(password.toUtf8(), "-", kRounds);
        return false;
    }
    const QByteArray salt = QByteArray::fromHex(q.value(0).toString().toLatin1());
    const QByteArray want = QByteArray::fromHex(q.value(1).toString().toLatin1());
    const QByteArray got = pbkdf2Sha256(password.toUtf8(), salt, q.value(2).toInt(), int(want.size()));
    int diff = 0;
    for (int i = 0; i < want.size(); ++i) diff |= (want[i] ^ (i < got.size() ? got[i] : char(0)));
    return !want.isEmpty() && diff == 0;
}

int HostAuth::seedMissing(const QString& password) {
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("SELECT dm FROM z_xtczy WHERE dm NOT IN (SELECT czydm FROM tarvin_host_kl) ORDER BY dm"));
    run(q, "listing operators");
    QStringList codes;
    while (q.next()) codes << q.value(0).toString();
    for (const QString& c : codes) setPassword(c, password);
    return int(codes.size());
}

}  // namespace tarvin::host
