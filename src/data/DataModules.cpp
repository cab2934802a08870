#include "DataModules.h"

namespace {

DataModuleTrace& trace() {
    static DataModuleTrace t;
    return t;
}

void tell(const char* event, const QObject* module) {
    if (trace()) trace()(QString::fromLatin1(event), module->objectName());
}

template <class T>
void create(T*& global) {
    if (global) return;
    global = new T(nullptr);
    tell("create", global);
}

template <class T>
void release(T*& global) {
    if (!global) return;
    T* module = global;
    tell("free", module);
    delete module;  // its destructor clears the global as well
    global = nullptr;
}

}  // namespace

void CreateDataModules() {
    create(Dataset_Jc_Func);
    create(Zt_Funcs_Dm);
    create(Gy_Khcx_Dm);
    create(Jc_Main_Dm);
    create(Jc_Tarvin_Dm);
    create(Jc_Jcgzdcx_Dm);
    create(DataSet_Yk_Dm);
    create(Jc_Jcgzd_Dm);
    create(jl_func_dm);
}

void FreeDataModules() {
    release(Dataset_Jc_Func);
    release(Zt_Funcs_Dm);
    release(Gy_Khcx_Dm);
    release(Jc_Main_Dm);
    release(Jc_Tarvin_Dm);
    release(Jc_Jcgzdcx_Dm);
    release(DataSet_Yk_Dm);
    release(Jc_Jcgzd_Dm);
    release(jl_func_dm);
}

QList<QObject*> DataModules() {
    QList<QObject*> out;
    const QList<QObject*> all{Dataset_Jc_Func, Zt_Funcs_Dm, Gy_Khcx_Dm,    Jc_Main_Dm, Jc_Tarvin_Dm,
                              Jc_Jcgzdcx_Dm,   DataSet_Yk_Dm, Jc_Jcgzd_Dm, jl_func_dm};
    for (QObject* m : all)
        if (m) out << m;
    return out;
}

void SetDataModuleTrace(DataModuleTrace t) { trace() = std::move(t); }

namespace tarvin::dm {

TMidasQuery* DesignQuery(QObject* module, const QString& name, const QStringList& lines,
                         const QStringList& params, const QString& indexFieldNames) {
    auto* q = new TMidasQuery(module, name);
    q->SetDatabaseName(ConnectionName());
    for (const QString& line : lines) q->SQL().Add(line);
    // The declared list replaces the one read from the text: it is what the
    // stored design holds, duplicates included. Binding goes by name, so a
    // name declared twice is bound once for all its places.
    q->Params().Clear();
    for (const QString& p : params) q->Params().CreateParam(ftUnknown, p, ptInput);
    if (!indexFieldNames.isEmpty()) q->SetIndexFieldNames(indexFieldNames);
    return q;
}

void DesignUpdates(TMidasQuery* query, const QString& updateTable, const QStringList& keyFields) {
    query->SetUpdateTable(updateTable);
    query->SetKeyFields(keyFields);
}

TDataSource* DesignDataSource(QObject* module, const QString& name, TMidasQuery* dataSet) {
    return new TDataSource(module, name, dataSet);
}

}  // namespace tarvin::dm
