// Framework functions shared by every screen: the database clock, new
// numbers from the stored numbering functions, customer checks, input
// checks and small form chores. The database functions all run on the one
// scratch query `Zt_Funcs_Dm->Mqry_Select`, so they never nest, and a caller
// must not rely on that query's rows across a call. Database errors pass to
// the caller unchanged.
#pragma once

#include <QDateTime>
#include <QString>

class QComboBox;
class QObject;

// --- the database clock (never the workstation's) ---
QDateTime GetServerDateTime();
QDateTime GetServerDate();  // midnight of the server's day
QString GetServerNy();      // year and month, "YYYYMM"

// --- new numbers: "" when the sequence is exhausted; callers test for it ---
QString GetNewCdbh();    // document number
QString GetNewGdfabh();  // supply-scheme number
QString GetNewDnbId();   // energy-meter id
QString GetNewJcph();    // inspection batch number

// --- customers ---
// The account's other cases in progress, one "传单编号:..." entry each;
// empty when there are none.
QString CheckKhSqxx(const QString& hh);
// The account exists in the unit and is not closed.
bool IsValidKh(const QString& khbh, const QString& dw);

// --- input checks (never raise) ---
bool IsIntStr(const QString& s);  // a 32-bit integer
bool IsCdbh(const QString& s);    // 10 characters that read as a 64-bit integer
// `n` zeros in front, then the rightmost `n` characters: a longer text loses
// its leading characters.
QString ZeroPad(const QString& s, int n);

// --- form chores ---
// Appends the first column of every row of `sql` to the combo's items,
// keeping the items already there.
void FillComboBox(QComboBox* comboBox, const QString& sql);
// On a screen (a window), empties every single-line edit and memo it holds;
// anything else is left alone.
void ClearFormEdits(QObject* component);
