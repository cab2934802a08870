// Inspection functions: plan numbers and the business undo on the scratch
// query `Dataset_Jc_Func->MQry_Select`, and the checks, meter codes and
// list moves of the inspection screens. Includes the framework functions,
// which the inspection screens use beside these.
#pragma once

#include <QString>

#include "unit_zt_pubfun.h"

class QTreeWidget;

// The next plan number: "0001" for the first plan, else the largest plan
// number plus one in at least four digits. Takes no lock.
QString GetNewJhbh();
// Withdraws what a business wrote under the document (stored procedure
// Yk_UndoYysq); used when a workflow start fails.
void UndoYysq(const QString& cdbh);

// Empty, or (trimmed) a 32-bit integer / a real number.
bool CheckIntStr(const QString& s);
bool CheckFloatStr(const QString& s);

// Typed text as it stands between the single quotes of an SQL literal:
// each quote doubled, so the text is searched as typed and cannot end the
// literal. The caller writes the surrounding quotes.
QString QuotedSqlText(const QString& text);

// The register letters of an energy-meter type ("有功表" -> "D", ...);
// empty for an unknown type.
QString GetDnbLxCode(const QString& dnblx);

// Moves the selected rows (or all rows) of one list view to another: the
// caption and the first `n` sub-item texts, walking the source from its last
// row, so the rows arrive in reverse order. List views are QTreeWidgets
// whose columns 1.. are the sub-items.
void MoveListItems(QTreeWidget* source, QTreeWidget* target, int n, bool all);
