// The host's own pass-phrase register: per operator an Argon2id string
// (libsodium's crypto_pwhash_str, salt and cost inside) in the table
// tarvin_host_kl, created on first use. Rows written before hold a
// PBKDF2-HMAC-SHA256 hash with its salt and rounds; they still sign in, once,
// and are replaced by an Argon2id string then.
#pragma once

#include <QSqlDatabase>
#include <QString>

namespace tarvin::host {

// Moderate is the one for real use (about a second and 256 MiB a hash); the
// cheaper ones keep tests quick.
enum class HashCost { Moderate, Interactive, Minimum };

// TARVIN_PWHASH_COST=interactive or =min; anything else is Moderate, so a
// misspelt value never weakens the hashes.
HashCost hashCostFromEnvironment();

class HostAuth {
public:
    explicit HostAuth(QSqlDatabase db, HashCost cost = hashCostFromEnvironment());
    // Creates the register when it is missing.
    void ensureTable();
    void setPassword(const QString& czydm, const QString& password);
    bool hasPassword(const QString& czydm);
    // True when the operator exists, is in force, belongs to the unit (or
    // one of its sub-units) and the pass phrase matches. A refusal takes
    // the time of one hash whatever was wrong.
    bool verify(const QString& czydm, const QString& dw, const QString& password);
    // Gives every operator without a pass phrase this one (demo databases).
    int seedMissing(const QString& password);

private:
    QByteArray hash(const QString& password) const;
    void store(const QString& czydm, const QByteArray& hash);

    QSqlDatabase db_;
    HashCost cost_;
};

}  // namespace tarvin::host
