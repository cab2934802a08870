#include "Fixtures.h"

#include <QDateTime>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QSqlRecord>

namespace tarvin::test {

QString asText(const QVariant& v) {
    if (v.isNull()) return {};
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Double: return QString::number(v.toDouble(), 'g', 12);
    case QMetaType::QDateTime: return v.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case QMetaType::QDate: return v.toDate().startOfDay().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    default: break;
    }
    const QString s = v.toString();
    static const QRegularExpression decimal(QStringLiteral("^-?\\d+\\.\\d+$"));
    return decimal.match(s).hasMatch() ? QString::number(s.toDouble(), 'g', 12) : s;
}

QStringList rows(TestDatabase& db, const QString& nativeSql, const QVariantList& binds) {
    QSqlQuery q = db.query(nativeSql, binds);
    QStringList out;
    while (q.next()) {
        QStringList fields;
        for (int i = 0; i < q.record().count(); ++i) fields << asText(q.value(i));
        out << fields.join(QLatin1Char('|'));
    }
    return out;
}

void units(TestDatabase& db) {
    db.exec(QStringLiteral("INSERT INTO z_dwbm (dm, mc, sjdw) VALUES ('01', '南江市供电公司', NULL), "
                           "('0101', '城区供电分公司', '01'), ('0102', '郊区供电分公司', '01')"));
}

void customer(TestDatabase& db, const QString& hh, const QString& hm, const QString& yddz, const QString& dw, const QString& xhbz) {
    db.exec(QStringLiteral("INSERT INTO y_khda (hh, hm, yddz, dw, xhbz) VALUES (?, ?, ?, ?, ?)"), {hh, hm, yddz, dw, xhbz});
}

void grant(TestDatabase& db, const QString& czydm, const QStringList& items, const QString& post) {
    const QString gw = post.isEmpty() ? QStringLiteral("G") + czydm : post, zn = QStringLiteral("Z") + gw;
    db.exec(QStringLiteral("INSERT INTO z_gw (dm, mc, dw, sfyx) VALUES (?, ?, '0101', 1)"), {gw, gw});
    db.exec(QStringLiteral("INSERT INTO z_ywzn (dm, mc, sfyx) VALUES (?, ?, 1)"), {zn, zn});
    db.exec(QStringLiteral("INSERT INTO z_gwyzn (gwdm, zndm) VALUES (?, ?)"), {gw, zn});
    for (const QString& item : items) db.exec(QStringLiteral("INSERT INTO z_znyywx (zndm, cldm) VALUES (?, ?)"), {zn, item});
    db.exec(QStringLiteral("INSERT INTO z_czyygw (czydm, zdm) VALUES (?, ?)"), {czydm, gw});
}

QString pdfText(const QString& path) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
    EXPECT_TRUE(p.waitForFinished(30000)) << "pdftotext (poppler-utils) must be installed";
    return QString::fromUtf8(p.readAllStandardOutput())
        .normalized(QString::NormalizationForm_KC)
        .remove(QLatin1Char(' '))
        .replace(QChar(0x6236), QChar(0x6237));
}

ProgramRun runProgram(const QString& name, const QStringList& args, int timeoutMs) {
    QProcess p;
    p.start(QStringLiteral(TARVIN_BIN_DIR "/") + name, args);
    EXPECT_TRUE(p.waitForFinished(timeoutMs)) << name.toStdString() << " did not finish";
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

void expectRefusals(const QString& name, const QList<Refusal>& refusals, const QStringList& leading) {
    for (const Refusal& r : refusals) {
        const ProgramRun run = runProgram(name, leading + r.args);
        EXPECT_EQ(run.code, 2) << r.says.toStdString();
        EXPECT_TRUE(run.err.contains(r.says)) << run.err.toStdString();
    }
}

}  // namespace tarvin::test
