// The shared data modules: load and unload order, every member under its
// name, each stored text as the SQL corpus holds it (the corpus runs and
// checks the texts themselves), and the cached updates screens apply
// through the modules, over the corpus's rows.
#include <QPointer>
#include <QSet>

#include "data/DataModules.h"
#include "Corpus.h"
#include "Fixtures.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QStringList kLoadOrder{u"Dataset_Jc_Func"_s, u"Zt_Funcs_Dm"_s, u"Gy_Khcx_Dm"_s, u"Jc_Main_Dm"_s, u"Jc_Tarvin_Dm"_s,
                             u"Jc_Jcgzdcx_Dm"_s, u"DataSet_Yk_Dm"_s, u"Jc_Jcgzd_Dm"_s, u"jl_func_dm"_s};

// The global references, in load order.
QList<QObject*> globals() {
    return {Dataset_Jc_Func, Zt_Funcs_Dm, Gy_Khcx_Dm, Jc_Main_Dm, Jc_Tarvin_Dm, Jc_Jcgzdcx_Dm, DataSet_Yk_Dm, Jc_Jcgzd_Dm, jl_func_dm};
}

// Records what the modules report while it lives.
struct Trace {
    QStringList events;
    Trace() {
        SetDataModuleTrace([this](const QString& e, const QString& m) { events << e + u' ' + m; });
    }
    ~Trace() { SetDataModuleTrace({}); }
};

QStringList prefixed(const QString& event) {
    QStringList out;
    for (const QString& n : kLoadOrder) out << event + u' ' + n;
    return out;
}

QStringList paramNames(TMidasQuery* q) {
    QStringList out;
    for (int i = 0; i < q->Params().Count(); ++i) out << q->Params()[i].Name;
    return out;
}

QList<TMidasQuery*> queriesOf(QObject* module) {
    return module->findChildren<TMidasQuery*>(QString(), Qt::FindDirectChildrenOnly);
}

// Every test starts and ends with no modules.
class DataModulesTest : public ::testing::Test {
protected:
    void SetUp() override { FreeDataModules(); }
    void TearDown() override { FreeDataModules(); }
};

TEST_F(DataModulesTest, CreatedOnceAndFreedInLoadOrder) {
    Trace trace;
    CreateDataModules();
    EXPECT_EQ(trace.events, prefixed(u"create"_s));
    QStringList names;
    for (QObject* m : globals()) {
        ASSERT_NE(m, nullptr);
        names << m->objectName();
        EXPECT_EQ(QString::fromLatin1(m->metaObject()->className()), u'T' + m->objectName());
        EXPECT_EQ(m->parent(), nullptr) << "modules have no owner";
    }
    EXPECT_EQ(names, kLoadOrder);
    EXPECT_EQ(DataModules(), globals());

    // Creating again keeps the modules that exist: one freed by itself
    // clears its reference, and the next call makes only that one again.
    QObject* main = Jc_Main_Dm;
    delete Jc_Tarvin_Dm;
    EXPECT_EQ(Jc_Tarvin_Dm, nullptr);
    trace.events.clear();
    CreateDataModules();
    EXPECT_EQ(trace.events, QStringList{u"create Jc_Tarvin_Dm"_s});
    ASSERT_NE(Jc_Tarvin_Dm, nullptr);
    EXPECT_EQ(Jc_Main_Dm, main);

    QPointer<TMidasQuery> query = Jc_Main_Dm->MQry_Bm;
    QPointer<TDataSource> source = Jc_Main_Dm->Ds_Bm;
    trace.events.clear();
    FreeDataModules();
    EXPECT_EQ(trace.events, prefixed(u"free"_s));
    for (QObject* m : globals()) EXPECT_EQ(m, nullptr);
    EXPECT_TRUE(DataModules().isEmpty());
    EXPECT_TRUE(query.isNull()) << "queries go with their module";
    EXPECT_TRUE(source.isNull());

    FreeDataModules();  // nothing left to free
    EXPECT_EQ(trace.events, prefixed(u"free"_s));
}

// Each module holds its queries and data sources under distinct names (a
// member set twice, or never, shows as a name twice or a count short), and
// each data source shows the query of its own name (Ds_Bm: MQry_Bm).
// The stored texts are the corpus's, line by line (a text the corpus lacks
// fails here); the business-expansion texts are our own and not in it. The
// task query keeps the empty last line of the approval screen's copy.
// Each declares the parameters its text uses, Mqry_Dw its one name once per
// place, as screens bind it by position; a few keep the sort screens rely on.
// Only the queries whose cached updates screens apply name a table to write.
TEST_F(DataModulesTest, MembersTextsAndUpdateTablesAsDesigned) {
    ASSERT_FALSE(QSqlDatabase::contains(u"Shdl"_s));
    CreateDataModules();
    const QList<int> queries{1, 1, 3, 23, 25, 2, 60, 3, 3}, sources{1, 0, 1, 17, 11, 0, 0, 0, 0};  // in load order
    const QMap<TMidasQuery*, QString> sorted{{Jc_Main_Dm->Mqry_Dqgw, u"CDBH"_s}, {Jc_Tarvin_Dm->MQry_Kykhcx, u"HH"_s},
                                             {Jc_Tarvin_Dm->MQry_Jhbp, u"CDBH"_s}, {Jc_Tarvin_Dm->MQry_Jcjgjl, u"CDBH"_s},
                                             {Jc_Tarvin_Dm->MQry_Jcqk, u"DM"_s}};
    const QMap<TMidasQuery*, QStringList> updates{
        {Jc_Tarvin_Dm->MQry_Jcjh, {u"E_JCJH"_s, u"JHBH"_s}}, {Jc_Tarvin_Dm->MQry_Jhbp, {u"E_JCGZJL"_s, u"CDBH"_s}},
        {Jc_Tarvin_Dm->MQry_Jcgzjl, {u"E_JCGZJL"_s, u"CDBH"_s}}, {Jc_Tarvin_Dm->Mqry_Dnbfa, {u"A_DNBFA"_s, u"ID"_s}},
        {Jc_Tarvin_Dm->Mqry_Hgqfa, {u"A_HGQFA"_s, u"ID"_s}}};
    int stored = 0;
    for (int i = 0; i < kLoadOrder.size(); ++i) {
        QObject* m = globals().value(i);
        ASSERT_NE(m, nullptr);
        const QString module = m->objectName();
        SCOPED_TRACE(module.toStdString());
        QStringList names;
        for (TMidasQuery* q : queriesOf(m)) {
            names << q->objectName();
            SCOPED_TRACE(q->objectName().toStdString());
            EXPECT_EQ(q->DatabaseName(), u"Shdl"_s);
            EXPECT_FALSE(q->Active()) << "no query opens before it is used";
            const QStringList lines = q->SQL().Lines();
            if (module != u"DataSet_Yk_Dm"_s && !lines.isEmpty()) {
                const QString id = q == Jc_Tarvin_Dm->MQry_Jcgzjl ? u"5.3/MQry_Jcgzjl"_s : u"1.2/%1/%2"_s.arg(module.chopped(3), q->objectName());
                EXPECT_EQ(lines, corpus::entry(id).lines);
                ++stored;
            }
            if (q != Jc_Main_Dm->Mqry_Dw) { EXPECT_EQ(paramNames(q), tarvin::sql::parameterNames(q->SQL().Text())); }
            EXPECT_EQ(q->IndexFieldNames(), sorted.value(q));
            const QStringList update = updates.value(q, {QString()});
            EXPECT_EQ(q->UpdateTable(), update[0]);
            if (update.size() > 1) { EXPECT_EQ(q->KeyFields(), update.mid(1)); }
        }
        const QList<TDataSource*> ds = m->findChildren<TDataSource*>(QString(), Qt::FindDirectChildrenOnly);
        for (TDataSource* d : ds) {
            names << d->objectName();
            ASSERT_NE(d->DataSet(), nullptr) << d->objectName().toStdString();
            EXPECT_EQ(d->DataSet()->parent(), m);
            EXPECT_EQ(d->DataSet()->objectName().mid(5).toUpper(), d->objectName().mid(3).toUpper());
        }
        EXPECT_EQ(queriesOf(m).size(), queries[i]);
        EXPECT_EQ(ds.size(), sources[i]);
        EXPECT_EQ(QSet<QString>(names.begin(), names.end()).size(), names.size()) << names.join(u',').toStdString();
    }
    EXPECT_EQ(stored, 47);
    EXPECT_EQ(paramNames(Jc_Main_Dm->Mqry_Dw), (QStringList{u"dw"_s, u"dw"_s}));
    // Without the connection the first use fails with a database error
    // that the screen can show; the query stays usable afterwards.
    EXPECT_THROW(Jc_Main_Dm->MQry_Bm->Open(), EDatabaseError);
    EXPECT_FALSE(Jc_Main_Dm->MQry_Bm->Active());
}

// ------------------------------------------------------------ on the engines

class DataModulesOnEngine : public EngineTest {
protected:
    void SetUp() override {
        // The modules exist before the connection, as when the host loads
        // the module; their queries find it by name when first used.
        CreateDataModules();
        db = std::make_unique<TestDatabase>(dialect());
        corpus::loadFixture(*db);
    }
    void TearDown() override {
        FreeDataModules();
        db.reset();
    }
    std::unique_ptr<TestDatabase> db;
};

// Each text as its module holds it, its parameters bound through the
// module's list: also the texts the corpus does not hold.
TEST_P(DataModulesOnEngine, EveryStoredTextRuns) {
    int ran = 0;
    for (QObject* m : DataModules())
        for (TMidasQuery* q : queriesOf(m)) {
            if (q->SQL().Count() == 0) continue;
            SCOPED_TRACE((m->objectName() + u'.' + q->objectName()).toStdString());
            for (int i = 0; i < q->Params().Count(); ++i) q->Params()[i].SetAsString(u"1"_s);
            EXPECT_NO_THROW(q->SQL()[0].trimmed().compare(u"begin"_s, Qt::CaseInsensitive) == 0 ? q->ExecSQL() : q->Open());
            q->Close();
            ++ran;
        }
    EXPECT_EQ(ran, 62);
}

TEST_P(DataModulesOnEngine, UnitListBoundByPositionHasTheUnitAndThoseUnderIt) {
    TMidasQuery* dw = Jc_Main_Dm->Mqry_Dw;
    dw->Params()[0].SetAsString(u"0101"_s);
    dw->Open();
    QStringList units;
    for (dw->First(); !dw->Eof(); dw->Next()) units << dw->FieldByName(u"DM"_s).AsString();
    units.sort();
    EXPECT_EQ(units, (QStringList{u"0101"_s, u"010101"_s}));
}

// Each query whose cached updates screens apply writes them to its table
// by its key; the names it joins or computes stay out.
TEST_P(DataModulesOnEngine, CachedUpdatesOfTheDeclaredQueriesReachTheirTables) {
    using Values = QList<std::pair<QString, QString>>;
    const auto open = [](TMidasQuery* q, const Values& params) {
        for (const auto& [name, value] : params) q->ParamByName(name).SetAsString(value);
        q->Open();
    };
    const auto post = [](TMidasQuery* q, const Values& fields) {
        for (const auto& [name, value] : fields) q->FieldByName(name).SetAsString(value);
        q->Post();
        EXPECT_EQ(q->ApplyUpdates(0), 0) << q->objectName().toStdString();
    };
    // Plans: one added, one changed, the new one deleted again.
    TMidasQuery* jcjh = Jc_Tarvin_Dm->MQry_Jcjh;
    open(jcjh, {{u"dw"_s, u"0101"_s}, {u"jhlx"_s, u"月计划"_s}});
    jcjh->Append();
    post(jcjh, {{u"jhbh"_s, u"0005"_s}, {u"jhlx"_s, u"月计划"_s}, {u"jcnr"_s, u"复查"_s}, {u"dw"_s, u"0101"_s}});
    EXPECT_EQ(db->scalar(u"SELECT jcnr FROM e_jcjh WHERE jhbh='0005'"_s).toString(), u"复查"_s);
    ASSERT_TRUE(jcjh->Locate(u"JHBH"_s, u"0002"_s));
    jcjh->Edit();
    post(jcjh, {{u"jcnr"_s, u"居民用户"_s}});
    ASSERT_TRUE(jcjh->Locate(u"JHBH"_s, u"0005"_s));
    jcjh->Delete();
    EXPECT_EQ(jcjh->ApplyUpdates(0), 0);
    // A task scheduled into the empty template; a task of a batch approved.
    open(Jc_Tarvin_Dm->MQry_Jhbp, {});
    Jc_Tarvin_Dm->MQry_Jhbp->Insert();
    post(Jc_Tarvin_Dm->MQry_Jhbp, {{u"cdbh"_s, u"0000000299"_s}, {u"HH"_s, u"0000000002"_s}, {u"ZT"_s, u"未审批"_s}});
    TMidasQuery* jcgzjl = Jc_Tarvin_Dm->MQry_Jcgzjl;
    open(jcgzjl, {{u"sJcph"_s, u"0000000011"_s}});
    ASSERT_TRUE(jcgzjl->Locate(u"CDBH"_s, u"0000000201"_s));
    jcgzjl->Edit();
    post(jcgzjl, {{u"zt"_s, u"已审批"_s}});
    // A meter installed by a case; the ratio of its transformer changed.
    open(Jc_Tarvin_Dm->Mqry_Dnbfa, {{u"CDBH"_s, u"0000000301"_s}});
    Jc_Tarvin_Dm->Mqry_Dnbfa->Append();
    post(Jc_Tarvin_Dm->Mqry_Dnbfa, {{u"ID"_s, u"0000009109"_s}, {u"CDBH"_s, u"0000000301"_s}, {u"BGSM"_s, u"新装"_s}, {u"SSLX"_s, u"D"_s}});
    open(Jc_Tarvin_Dm->Mqry_Hgqfa, {{u"cdbh"_s, u"0000000301"_s}});
    ASSERT_EQ(Jc_Tarvin_Dm->Mqry_Hgqfa->RecordCount(), 1);
    Jc_Tarvin_Dm->Mqry_Hgqfa->Edit();
    post(Jc_Tarvin_Dm->Mqry_Hgqfa, {{u"HGQBB"_s, u"200/5"_s}});

    EXPECT_EQ(rows(*db, u"SELECT (SELECT count(*) FROM e_jcjh), (SELECT jcnr FROM e_jcjh WHERE jhbh = '0002'), "
                       "(SELECT zt FROM e_jcgzjl WHERE cdbh = '0000000299'), (SELECT zt FROM e_jcgzjl WHERE cdbh = '0000000201'), "
                       "(SELECT sslx FROM a_dnbfa WHERE id = '0000009109'), (SELECT hgqbb FROM a_hgqfa WHERE id = '0000009202')"_s),
              QStringList{u"4|居民用户|未审批|已审批|D|200/5"_s});
}

TEST_P(DataModulesOnEngine, BusinessUndoWithdrawsTheApplication) {
    DataSet_Yk_Dm->UndoYysq(u"0000000301"_s);
    EXPECT_EQ(rows(*db, u"SELECT (SELECT count(*) FROM a_khsqxx WHERE cdbh = '0000000301'), (SELECT count(*) FROM a_ykkzb "
                       "WHERE cdbh = '0000000301'), (SELECT count(*) FROM a_khsqxx)"_s), QStringList{u"0|0|4"_s})
        << "other documents stay";
    EXPECT_FALSE(DataSet_Yk_Dm->Mqry_Select->Active());
}

TARVIN_INSTANTIATE_ENGINES(DataModulesOnEngine);

}  // namespace
