// The host's own pass-phrase register: a salted PBKDF2-HMAC-SHA256 hash per
// operator in the table tarvin_host_kl, created on first use.
#pragma once

#include <QSqlDatabase>
#include <QString>

namespace tarvin::host {

QByteArray pbkdf2Sha256(const QByteArray& password, const QByteArray& salt, int rounds, int length = 32);

class HostAuth {
public:
    explicit HostAuth(QSqlDatabase db);
    // Creates the register when it is missing.
    void ensureTable();
    void setPassword(const QString& czydm, const QString& password);
    bool hasPassword(const QString& czydm);
    // True when the operator exists, is in force, belongs to the unit (or
    // one of its sub-units) and the pass phrase matches.
    bool verify(const QString& czydm, const QString& dw, const QString& password);
    // Gives every operator without a pass phrase this one (demo databases).
    int seedMissing(const QString& password);

    static constexpr int kRounds = 60000;

private:
    QSqlDatabase db_;
};

}  // namespace tarvin::host
