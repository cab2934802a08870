// Rows and chores several suites need, written once: the units, customers
// and operator grants tests set up by hand, reading rows back as text the
// same way on both engines, and running the build's programs.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include "TestDb.h"

namespace tarvin::test {

// A value as text, alike on both engines: null as "", numbers by value to
// twelve digits (12, 12.0 and "12.00" all "12"), date-times as
// 'yyyy-MM-dd HH:mm:ss'.
QString asText(const QVariant& v);
// Every row of engine-native SQL, its fields asText joined by '|'.
QStringList rows(TestDatabase& db, const QString& nativeSql, const QVariantList& binds = {});

// Units 01 (the company) and 0101, 0102 under it.
void units(TestDatabase& db);
// A customer of unit `dw`; xhbz '是' closes the account.
void customer(TestDatabase& db, const QString& hh, const QString& hm, const QString& yddz = {},
              const QString& dw = QStringLiteral("0101"), const QString& xhbz = QStringLiteral("否"));
// Operator `czydm` holds post `post` (G<czydm> if empty) of unit 0101, in
// force, whose one function, in force, grants each of `items` (workflow
// items; 40099 lets the operator see alarms).
void grant(TestDatabase& db, const QString& czydm, const QStringList& items, const QString& post = {});

// A PDF's text as pdftotext reads it: NFKC-normalised (a CJK font gives
// some ideographs a radical's glyph, 户 the door radical's, NFKC 戶), blanks
// removed and 戶 read as 户.
QString pdfText(const QString& path);

// A program of the build, run to its end.
struct ProgramRun {
    int code;
    QString out, err;
};
ProgramRun runProgram(const QString& name, const QStringList& args, int timeoutMs = 120000);
// Bad arguments and what the program must say of them (with exit code 2).
struct Refusal {
    QStringList args;
    QString says;
};
void expectRefusals(const QString& name, const QList<Refusal>& refusals, const QStringList& leading = {});

}  // namespace tarvin::test
