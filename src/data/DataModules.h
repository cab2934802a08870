// The shared data modules: created once when the module loads, in a fixed
// order, and freed in the same order when it unloads. Their queries are used
// directly by every screen and keep their rows between screens.
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

#include "DataSource.h"
#include "MidasQuery.h"

#include "Dm_Gy_Khcx.h"
#include "Dm_Jc_Func.h"
#include "Dm_Jc_Jcgzd.h"
#include "Dm_Jc_Jcgzdcx.h"
#include "Dm_Jc_Main.h"
#include "Dm_Jc_Tarvin.h"
#include "Dm_Yk_DataSet.h"
#include "Dm_Zt_Funcs.h"
#include "dm_jl_func.h"

// Creates every module that does not exist yet, in load order, and sets its
// global reference. Calling it again while they exist changes nothing.
void CreateDataModules();
// Frees the modules in the order in which they were created and clears
// their global references. Safe to call when none exist.
void FreeDataModules();

// The live modules in load order (those not created are left out).
QList<QObject*> DataModules();

// Told of every module as it is created and as it is freed (event "create"
// or "free", the module's name), so that start-up and shutdown can be
// followed. An empty function stops it.
using DataModuleTrace = std::function<void(const QString& event, const QString& module)>;
void SetDataModuleTrace(DataModuleTrace trace);

namespace tarvin::dm {

// The connection every stored query binds to by name at its first use.
inline const QString& ConnectionName() {
    static const QString name = QStringLiteral("Shdl");
    return name;
}

// A query of a module's stored design: its lines of SQL as written, its
// parameters in the order declared (a name may be declared twice, as the
// stored design can hold), the client-side sort field. Programs write every
// change back themselves, so nothing else is set.
TMidasQuery* DesignQuery(QObject* module, const QString& name, const QStringList& lines = {},
                         const QStringList& params = {}, const QString& indexFieldNames = {});

// A query whose cached updates a screen applies: the table and key fields
// that ApplyUpdates writes.
void DesignUpdates(TMidasQuery* query, const QString& updateTable, const QStringList& keyFields);

TDataSource* DesignDataSource(QObject* module, const QString& name, TMidasQuery* dataSet);

}  // namespace tarvin::dm
