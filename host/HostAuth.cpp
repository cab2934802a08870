#include "HostAuth.h"

#include <QPasswordDigestor>
#include <QSqlError>
#include <QSqlQuery>
#include <sodium.h>
#include <stdexcept>

namespace tarvin::host {

namespace {

void run(QSqlQuery& q, const char* what) {
    if (!q.exec()) throw std::runtime_error(std::string(what) + ": " + q.lastError().text().toStdString());
}

struct Limits {
    unsigned long long ops;
    size_t mem;
};

Limits limits(HashCost cost) {
    switch (cost) {
    case HashCost::Interactive: return {crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE};
    case HashCost::Minimum: return {crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_MEMLIMIT_MIN};
    case HashCost::Moderate: break;
    }
    return {crypto_pwhash_OPSLIMIT_MODERATE, crypto_pwhash_MEMLIMIT_MODERATE};
}

// What an unknown operator's phrase is checked against: the cost of the
// current setting with a fixed salt and digest that no phrase is known to
// match, so the refusal takes as long as a real one.
QByteArray dummyHash(HashCost cost) {
    const Limits l = limits(cost);
    return QStringLiteral("$argon2id$v=19$m=%1,t=%2,p=1$dGFydmluLWR1bW15LXNhbHQ$"
                          "q0Jm3kQf2o8uQk3Yb8s1c9mX6tqJ4w7e2rV5nP0aLdE")
        .arg(l.mem / 1024)
        .arg(l.ops)
        .toLatin1();
}

}  // namespace

HashCost hashCostFromEnvironment() {
    const QByteArray v = qgetenv("TARVIN_PWHASH_COST").trimmed().toLower();
    if (v == "interactive") return HashCost::Interactive;
    if (v == "min") return HashCost::Minimum;
    return HashCost::Moderate;
}

HostAuth::HostAuth(QSqlDatabase db, HashCost cost) : db_(std::move(db)), cost_(cost) {
    if (sodium_init() < 0) throw std::runtime_error("the hashing library libsodium could not start");
}

void HostAuth::ensureTable() {
    // Run directly: PostgreSQL cannot prepare DDL.
    QSqlQuery q(db_);
    if (!q.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS tarvin_host_kl ("
                               "czydm VARCHAR(20) PRIMARY KEY, salt VARCHAR(64) NOT NULL, "
                               "hash VARCHAR(128) NOT NULL, rounds INTEGER NOT NULL)")))
        throw std::runtime_error("creating the pass-phrase register: " + q.lastError().text().toStdString());
}

QByteArray HostAuth::hash(const QString& password) const {
    const QByteArray phrase = password.toUtf8();
    const Limits l = limits(cost_);
    char out[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(out, phrase.constData(), size_t(phrase.size()), l.ops, l.mem) != 0)
        throw std::runtime_error("not enough memory to hash the pass phrase");
    return QByteArray(out);
}

// The salt and rounds columns belong to the PBKDF2 rows of before; an Argon2id
// string carries its own. Updated in place, so a failure loses no old phrase.
void HostAuth::store(const QString& czydm, const QByteArray& hash) {
    QSqlQuery up(db_);
    up.prepare(QStringLiteral("UPDATE tarvin_host_kl SET salt = '', hash = ?, rounds = 0 WHERE czydm = ?"));
    up.addBindValue(QString::fromLatin1(hash));
    up.addBindValue(czydm);
    run(up, "storing a pass phrase");
    if (up.numRowsAffected() > 0) return;
    QSqlQuery ins(db_);
    ins.prepare(QStringLiteral("INSERT INTO tarvin_host_kl (czydm, salt, hash, rounds) VALUES (?, '', ?, 0)"));
    ins.addBindValue(czydm);
    ins.addBindValue(QString::fromLatin1(hash));
    run(ins, "storing a pass phrase");
}

void HostAuth::setPassword(const QString& czydm, const QString& password) { store(czydm, hash(password)); }

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
    const QByteArray phrase = password.toUtf8();
    if (!q.next()) {
        [[maybe_unused]] const int spent =
            crypto_pwhash_str_verify(dummyHash(cost_).constData(), phrase.constData(), size_t(phrase.size()));
        return false;
    }
    const QByteArray stored = q.value(1).toString().toLatin1();
    if (stored.startsWith("$argon2"))
        return crypto_pwhash_str_verify(stored.constData(), phrase.constData(), size_t(phrase.size())) == 0;

    // A PBKDF2 row of before: read once more, then replaced.
    const QByteArray salt = QByteArray::fromHex(q.value(0).toString().toLatin1());
    const QByteArray want = QByteArray::fromHex(stored);
    const QByteArray got = QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, phrase, salt,
                                                              q.value(2).toInt(), quint64(want.size()));
    if (want.isEmpty() || got.size() != want.size() || sodium_memcmp(got.constData(), want.constData(), size_t(want.size())) != 0)
        return false;
    try {
        setPassword(czydm, password);
    } catch (const std::exception& e) {
        // The phrase was right; the old hash stays and is replaced next time.
        qWarning("tarvin: could not replace %s's old pass-phrase hash: %s", qPrintable(czydm), e.what());
    }
    return true;
}

int HostAuth::seedMissing(const QString& password) {
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("SELECT dm FROM z_xtczy WHERE dm NOT IN (SELECT czydm FROM tarvin_host_kl) ORDER BY dm"));
    run(q, "listing operators");
    QStringList codes;
    while (q.next()) codes << q.value(0).toString();
    if (codes.isEmpty()) return 0;
    // One hash for all: the demo phrase is published anyway, and a hash
    // each would keep a new demo waiting a second per operator.
    const QByteArray shared = hash(password);
    for (const QString& c : codes) store(c, shared);
    return int(codes.size());
}

}  // namespace tarvin::host
