// The shared data modules: load and unload order, every member under its
// name, each stored text as the SQL corpus holds it (the corpus runs and
// checks the texts themselves), and the cached updates screens apply
// through the modules, over the corpus's rows.
#include <QPointer>

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

TEST_F(DataModulesTest, CreatedAndFreedInLoadOrder) {
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

TEST_F(DataModulesTest, CreatingAgainKeepsTheModulesThatExist) {
    CreateDataModules();
    const QList<QObject*> first = globals();
    Trace trace;
    CreateDataModules();
    EXPECT_TRUE(trace.events.isEmpty());
    EXPECT_EQ(globals(), first);

    // A module freed by itself clears its reference; the next call makes
    // only that one again.
    delete Jc_Tarvin_Dm;
    EXPECT_EQ(Jc_Tarvin_Dm, nullptr);
    CreateDataModules();
    EXPECT_EQ(trace.events, QStringList{u"create Jc_Tarvin_Dm"_s});
    ASSERT_NE(Jc_Tarvin_Dm, nullptr);
    EXPECT_EQ(Jc_Main_Dm, first[3]);
}

TEST_F(DataModulesTest, QueriesWaitForTheirConnectionUntilUsed) {
    ASSERT_FALSE(QSqlDatabase::contains(u"Shdl"_s));
    CreateDataModules();
    for (QObject* m : DataModules())
        for (TMidasQuery* q : queriesOf(m)) {
            EXPECT_EQ(q->DatabaseName(), u"Shdl"_s) << m->objectName().toStdString() << '.' << q->objectName().toStdString();
            EXPECT_FALSE(q->Active());
        }
    // Without the connection the first use fails with a database error
    // that the screen can show; the query stays usable afterwards.
    EXPECT_THROW(Jc_Main_Dm->MQry_Bm->Open(), EDatabaseError);
    EXPECT_FALSE(Jc_Main_Dm->MQry_Bm->Active());
}

// Each member is the object of its name in its module; a data source shows
// its query; and a module holds no query that is not a member.
struct Member {
    QObject* object;
    const char *module, *name;
    TMidasQuery* shows = nullptr;
};
#define M(mod, name) {mod->name, #mod, #name}
#define D(mod, name, query) {mod->name, #mod, #name, mod->query}

TEST_F(DataModulesTest, EveryMemberIsTheObjectOfItsName) {
    CreateDataModules();
    const std::vector<Member> members{
        M(Zt_Funcs_Dm, Mqry_Select), M(Dataset_Jc_Func, MQry_Select), M(Gy_Khcx_Dm, Mqry_Lkhxx), M(Gy_Khcx_Dm, Mqry_Select),
        M(Gy_Khcx_Dm, Mqry_Fkhbh), M(Jc_Jcgzdcx_Dm, Mqry_Select), M(Jc_Jcgzdcx_Dm, Mqry_Cdbh), M(Jc_Jcgzd_Dm, Mqry_Ry),
        M(Jc_Jcgzd_Dm, Mqry_Cdbhcx), M(Jc_Jcgzd_Dm, Mqry_Select), M(jl_func_dm, Mqry_select), M(jl_func_dm, Mqry_DFGZD),
        M(jl_func_dm, Mqry_fxzdnbfa),
        M(Jc_Main_Dm, Mqry_Select), M(Jc_Main_Dm, MQry_Update), M(Jc_Main_Dm, MQry_Bm), M(Jc_Main_Dm, MQry_Jclx),
        M(Jc_Main_Dm, MQry_Khda), M(Jc_Main_Dm, MQry_Dydj), M(Jc_Main_Dm, Mqry_Khlx), M(Jc_Main_Dm, Mqry_Hylb),
        M(Jc_Main_Dm, Mqry_Dw), M(Jc_Main_Dm, MQry_Yhdm), M(Jc_Main_Dm, Mqry_Dqgw), M(Jc_Main_Dm, Mqry_Xzqh),
        M(Jc_Main_Dm, Mqry_Ydlb), M(Jc_Main_Dm, Mqry_Xltq), M(Jc_Main_Dm, Mqry_Ywlb), M(Jc_Main_Dm, Mqry_dl),
        M(Jc_Main_Dm, Mqry_hgqlb), M(Jc_Main_Dm, Mqry_dblb), M(Jc_Main_Dm, Mqry_jddj), M(Jc_Main_Dm, Mqry_Xx),
        M(Jc_Main_Dm, Mqry_hgqjd), M(Jc_Main_Dm, Mqry_dnbdy), M(Jc_Main_Dm, Mqry_Djm),
        M(Jc_Tarvin_Dm, MQry_Jcjh), M(Jc_Tarvin_Dm, MQry_Jcry), M(Jc_Tarvin_Dm, MQry_Kykhcx), M(Jc_Tarvin_Dm, MQry_Jhbp),
        M(Jc_Tarvin_Dm, MQry_Jcqkll), M(Jc_Tarvin_Dm, MQry_Jcgzjl), M(Jc_Tarvin_Dm, MQry_Jcjgjl), M(Jc_Tarvin_Dm, MQry_Jcxm),
        M(Jc_Tarvin_Dm, MQry_Jcqk), M(Jc_Tarvin_Dm, MQry_Khda), M(Jc_Tarvin_Dm, Mqry_Jcgzap), M(Jc_Tarvin_Dm, Mqry_Update),
        M(Jc_Tarvin_Dm, Mqry_Qxqk), M(Jc_Tarvin_Dm, Mqry_Qxxz), M(Jc_Tarvin_Dm, Mqry_DnbBg), M(Jc_Tarvin_Dm, Mqry_HgqBg),
        M(Jc_Tarvin_Dm, Mqry_Gzxz), M(Jc_Tarvin_Dm, Mqry_Select), M(Jc_Tarvin_Dm, MQry_Khsqxx), M(Jc_Tarvin_Dm, Mqry_Tbxx),
        M(Jc_Tarvin_Dm, Mqry_Bjbg), M(Jc_Tarvin_Dm, Mqry_Kykhjls), M(Jc_Tarvin_Dm, Mqry_Jlyctbjl), M(Jc_Tarvin_Dm, Mqry_Dnbfa),
        M(Jc_Tarvin_Dm, Mqry_Hgqfa),
        M(DataSet_Yk_Dm, Mqry_Select), M(DataSet_Yk_Dm, Mqry_Dyfa), M(DataSet_Yk_Dm, Mqry_Gxfa), M(DataSet_Yk_Dm, Mqry_Ykkzb),
        M(DataSet_Yk_Dm, Mqry_Dyxx), M(DataSet_Yk_Dm, Mqry_Khsqxx), M(DataSet_Yk_Dm, Mqry_Khgc), M(DataSet_Yk_Dm, Mqry_Bzb_Jdfs),
        M(DataSet_Yk_Dm, Mqry_Bzb_Jhfs), M(DataSet_Yk_Dm, Mqry_Bzb_Dybhfs), M(DataSet_Yk_Dm, Mqry_Fylb), M(DataSet_Yk_Dm, Mqry_Ywysf),
        M(DataSet_Yk_Dm, Mqry_Update), M(DataSet_Yk_Dm, Mqry_Bzb_Jxfs), M(DataSet_Yk_Dm, Mqry_Ywssf), M(DataSet_Yk_Dm, Mqry_Bzb_Jmlx),
        M(DataSet_Yk_Dm, Mqry_Bzb_Skfs), M(DataSet_Yk_Dm, Mqry_Xlsb), M(DataSet_Yk_Dm, Mqry_Bzb_Jjlx), M(DataSet_Yk_Dm, Mqry_Bzb_Zgj),
        M(DataSet_Yk_Dm, Mqry_Khda), M(DataSet_Yk_Dm, Mqry_Bh), M(DataSet_Yk_Dm, Mqry_Sdd), M(DataSet_Yk_Dm, Mqry_Jgys),
        M(DataSet_Yk_Dm, Mqry_H_Khsqxx), M(DataSet_Yk_Dm, Mqry_Hlgcf), M(DataSet_Yk_Dm, Mqry_Gcdef), M(DataSet_Yk_Dm, Mqry_Jbf),
        M(DataSet_Yk_Dm, Mqry_Pbf), M(DataSet_Yk_Dm, Mqry_Tf), M(DataSet_Yk_Dm, Mqry_Dfsb), M(DataSet_Yk_Dm, Mqry_Hbzz),
        M(DataSet_Yk_Dm, Mqry_Gctzkh), M(DataSet_Yk_Dm, Mqry_Tzsf), M(DataSet_Yk_Dm, Mqry_Gxbh), M(DataSet_Yk_Dm, Mqry_Bjsf),
        M(DataSet_Yk_Dm, Mqry_LsXlxx), M(DataSet_Yk_Dm, Mqry_Khdlsb), M(DataSet_Yk_Dm, Mqry_Dyxz), M(DataSet_Yk_Dm, Mqry_Gddy),
        M(DataSet_Yk_Dm, Mqry_Lddy), M(DataSet_Yk_Dm, Mqry_Jd), M(DataSet_Yk_Dm, Mqry_Jwh), M(DataSet_Yk_Dm, Mqry_Qy),
        M(DataSet_Yk_Dm, Mqry_Gnk), M(DataSet_Yk_Dm, Mqry_select1), M(DataSet_Yk_Dm, Mqry_Zjjh), M(DataSet_Yk_Dm, Mqry_dnbzc),
        M(DataSet_Yk_Dm, Mqry_byqda), M(DataSet_Yk_Dm, Mqry_hgqzc), M(DataSet_Yk_Dm, Mqry_Gdfa), M(DataSet_Yk_Dm, Mqry_Spjl),
        M(DataSet_Yk_Dm, Mqry_Gcqk), M(DataSet_Yk_Dm, Mqry_Zzsh), M(DataSet_Yk_Dm, Mqry_Tzsc), M(DataSet_Yk_Dm, Mqry_Htxx),
        M(DataSet_Yk_Dm, Mqry_Htlx), M(DataSet_Yk_Dm, Mqry_Wxgc), M(DataSet_Yk_Dm, MQry_Khsqxx1),
        D(Dataset_Jc_Func, Ds_Select, MQry_Select), D(Gy_Khcx_Dm, Ds_Fkhbh, Mqry_Fkhbh), D(Jc_Main_Dm, Ds_Select, Mqry_Select),
        D(Jc_Main_Dm, Ds_Bm, MQry_Bm), D(Jc_Main_Dm, Ds_Jclx, MQry_Jclx), D(Jc_Main_Dm, Ds_Dydj, MQry_Dydj),
        D(Jc_Main_Dm, Ds_Khlx, Mqry_Khlx), D(Jc_Main_Dm, Ds_Hylb, Mqry_Hylb), D(Jc_Main_Dm, Ds_Dw, Mqry_Dw),
        D(Jc_Main_Dm, Ds_Ydlb, Mqry_Ydlb), D(Jc_Main_Dm, Ds_Xltq, Mqry_Xltq), D(Jc_Main_Dm, Ds_Ywlb, Mqry_Ywlb),
        D(Jc_Main_Dm, Ds_dl, Mqry_dl), D(Jc_Main_Dm, Ds_hgqlb, Mqry_hgqlb), D(Jc_Main_Dm, Ds_dblb, Mqry_dblb),
        D(Jc_Main_Dm, Ds_jddj, Mqry_jddj), D(Jc_Main_Dm, Ds_Xx, Mqry_Xx), D(Jc_Main_Dm, Ds_dnbdy, Mqry_dnbdy),
        D(Jc_Main_Dm, Ds_Djm, Mqry_Djm), D(Jc_Tarvin_Dm, Ds_Jcjh, MQry_Jcjh), D(Jc_Tarvin_Dm, Ds_Kykhcx, MQry_Kykhcx),
        D(Jc_Tarvin_Dm, Ds_Jhbp, MQry_Jhbp), D(Jc_Tarvin_Dm, Ds_Jcqkll, MQry_Jcqkll), D(Jc_Tarvin_Dm, Ds_Jcgzjl, MQry_Jcgzjl),
        D(Jc_Tarvin_Dm, Ds_Jcgzap, Mqry_Jcgzap), D(Jc_Tarvin_Dm, Ds_DnbBg, Mqry_DnbBg), D(Jc_Tarvin_Dm, Ds_HgqBg, Mqry_HgqBg),
        D(Jc_Tarvin_Dm, Ds_Gzxz, Mqry_Gzxz), D(Jc_Tarvin_Dm, Ds_Dnbfa, Mqry_Dnbfa), D(Jc_Tarvin_Dm, Ds_Hgqfa, Mqry_Hgqfa),
    };
    QMap<QString, int> queries;
    for (const Member& e : members) {
        SCOPED_TRACE(std::string(e.module) + '.' + e.name);
        ASSERT_NE(e.object, nullptr);
        EXPECT_EQ(e.object->objectName(), QString::fromLatin1(e.name));
        EXPECT_EQ(e.object->parent()->objectName(), QString::fromLatin1(e.module));
        if (auto* ds = qobject_cast<TDataSource*>(e.object)) {
            EXPECT_EQ(ds->DataSet(), e.shows);
        } else {
            ++queries[QString::fromLatin1(e.module)];
        }
    }
    EXPECT_EQ(queries.value(u"DataSet_Yk_Dm"_s), 59);
    for (QObject* m : DataModules()) EXPECT_EQ(queriesOf(m).size(), queries.value(m->objectName())) << m->objectName().toStdString();
}

// The stored texts are the corpus's, line by line (a text the corpus lacks
// fails here); the business-expansion texts are our own and not in it. The
// task query keeps the empty last line of the approval screen's copy.
// Each declares the parameters its text uses, Mqry_Dw its one name once per
// place, as screens bind it by position; a few keep the sort screens rely on.
TEST_F(DataModulesTest, StoredTextsAreTheCorpusTexts) {
    CreateDataModules();
    const QMap<TMidasQuery*, QString> sorted{{Jc_Main_Dm->Mqry_Dqgw, u"CDBH"_s}, {Jc_Tarvin_Dm->MQry_Kykhcx, u"HH"_s},
                                             {Jc_Tarvin_Dm->MQry_Jhbp, u"CDBH"_s}, {Jc_Tarvin_Dm->MQry_Jcjgjl, u"CDBH"_s},
                                             {Jc_Tarvin_Dm->MQry_Jcqk, u"DM"_s}};
    int stored = 0;
    for (QObject* m : DataModules())
        for (TMidasQuery* q : queriesOf(m)) {
            const QString module = m->objectName();
            SCOPED_TRACE((module + u'.' + q->objectName()).toStdString());
            const QStringList lines = q->SQL().Lines();
            if (module != u"DataSet_Yk_Dm"_s && !lines.isEmpty()) {
                const QString id = q == Jc_Tarvin_Dm->MQry_Jcgzjl ? u"5.3/MQry_Jcgzjl"_s : u"1.2/%1/%2"_s.arg(module.chopped(3), q->objectName());
                EXPECT_EQ(lines, corpus::entry(id).lines);
                ++stored;
            }
            if (q != Jc_Main_Dm->Mqry_Dw) {
                EXPECT_EQ(paramNames(q), tarvin::sql::parameterNames(q->SQL().Text()));
            }
            EXPECT_EQ(q->IndexFieldNames(), sorted.value(q));
        }
    EXPECT_EQ(stored, 47);
    EXPECT_EQ(paramNames(Jc_Main_Dm->Mqry_Dw), (QStringList{u"dw"_s, u"dw"_s}));
}

TEST_F(DataModulesTest, UpdateTablesDeclaredWhereScreensApplyUpdates) {
    CreateDataModules();
    const struct {
        TMidasQuery* q;
        QString table, key;
    } updates[] = {{Jc_Tarvin_Dm->MQry_Jcjh, u"E_JCJH"_s, u"JHBH"_s}, {Jc_Tarvin_Dm->MQry_Jhbp, u"E_JCGZJL"_s, u"CDBH"_s},
                   {Jc_Tarvin_Dm->MQry_Jcgzjl, u"E_JCGZJL"_s, u"CDBH"_s}, {Jc_Tarvin_Dm->Mqry_Dnbfa, u"A_DNBFA"_s, u"ID"_s},
                   {Jc_Tarvin_Dm->Mqry_Hgqfa, u"A_HGQFA"_s, u"ID"_s}};
    QList<TMidasQuery*> declared;
    for (const auto& u : updates) {
        EXPECT_EQ(u.q->UpdateTable(), u.table) << u.q->objectName().toStdString();
        EXPECT_EQ(u.q->KeyFields(), QStringList{u.key});
        declared << u.q;
    }
    // Every other query is written only by explicit statements.
    for (QObject* m : DataModules())
        for (TMidasQuery* q : queriesOf(m))
            EXPECT_TRUE(declared.contains(q) || q->UpdateTable().isEmpty()) << q->objectName().toStdString();
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
    QString scalarText(const QString& nativeSql) { return db->scalar(nativeSql).toString(); }
    static QStringList column(TMidasQuery* q, const QString& field) {
        QStringList out;
        for (q->First(); !q->Eof(); q->Next()) out << q->FieldByName(field).AsString();
        return out;
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
    EXPECT_EQ(ran, 61);
}

TEST_P(DataModulesOnEngine, UnitListBoundByPositionHasTheUnitAndThoseUnderIt) {
    TMidasQuery* dw = Jc_Main_Dm->Mqry_Dw;
    dw->Params()[0].SetAsString(u"0101"_s);
    dw->Open();
    QStringList units = column(dw, u"DM"_s);
    units.sort();
    EXPECT_EQ(units, (QStringList{u"0101"_s, u"010101"_s}));
}

TEST_P(DataModulesOnEngine, PlansAreAddedChangedAndDeletedByApplyingUpdates) {
    TMidasQuery* jcjh = Jc_Tarvin_Dm->MQry_Jcjh;
    jcjh->ParamByName(u"dw"_s).SetAsString(u"0101"_s);
    jcjh->ParamByName(u"jhlx"_s).SetAsString(u"月计划"_s);
    jcjh->Open();
    jcjh->Append();
    jcjh->FieldByName(u"jhbh"_s).SetAsString(u"0005"_s);
    jcjh->FieldByName(u"jhlx"_s).SetAsString(u"月计划"_s);
    jcjh->FieldByName(u"jcnr"_s).SetAsString(u"复查"_s);
    jcjh->FieldByName(u"dw"_s).SetAsString(u"0101"_s);
    jcjh->Post();
    EXPECT_EQ(jcjh->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT jcnr FROM e_jcjh WHERE jhbh='0005'"_s), u"复查"_s);
    ASSERT_TRUE(jcjh->Locate(u"JHBH"_s, u"0002"_s));
    jcjh->Edit();
    jcjh->FieldByName(u"jcnr"_s).SetAsString(u"居民用户"_s);
    jcjh->Post();
    EXPECT_EQ(jcjh->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT jcnr FROM e_jcjh WHERE jhbh='0002'"_s), u"居民用户"_s);
    ASSERT_TRUE(jcjh->Locate(u"JHBH"_s, u"0005"_s));
    jcjh->Delete();
    EXPECT_EQ(jcjh->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT COUNT(*) FROM e_jcjh"_s), u"4"_s);
}

TEST_P(DataModulesOnEngine, ScheduledTasksAndApprovalsReachTheTaskTable) {
    // A task scheduled into the empty template.
    TMidasQuery* jhbp = Jc_Tarvin_Dm->MQry_Jhbp;
    jhbp->Open();
    jhbp->Insert();
    jhbp->FieldByName(u"cdbh"_s).SetAsString(u"0000000299"_s);
    jhbp->FieldByName(u"HH"_s).SetAsString(u"0000000002"_s);
    jhbp->FieldByName(u"ZT"_s).SetAsString(u"未审批"_s);
    jhbp->Post();
    EXPECT_EQ(jhbp->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT zt FROM e_jcgzjl WHERE cdbh='0000000299'"_s), u"未审批"_s);

    // Approval: the joined names are not written back, the status is.
    TMidasQuery* jcgzjl = Jc_Tarvin_Dm->MQry_Jcgzjl;
    jcgzjl->ParamByName(u"sJcph"_s).SetAsString(u"0000000011"_s);
    jcgzjl->Open();
    ASSERT_TRUE(jcgzjl->Locate(u"CDBH"_s, u"0000000201"_s));
    jcgzjl->Edit();
    jcgzjl->FieldByName(u"zt"_s).SetAsString(u"已审批"_s);
    jcgzjl->Post();
    EXPECT_EQ(jcgzjl->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT zt FROM e_jcgzjl WHERE cdbh='0000000201'"_s), u"已审批"_s);
}

TEST_P(DataModulesOnEngine, InstalledEquipmentOfACaseIsStoredByApplyingUpdates) {
    TMidasQuery* dnbfa = Jc_Tarvin_Dm->Mqry_Dnbfa;
    dnbfa->ParamByName(u"CDBH"_s).SetAsString(u"0000000301"_s);
    dnbfa->Open();
    dnbfa->Append();
    dnbfa->FieldByName(u"ID"_s).SetAsString(u"0000009109"_s);
    dnbfa->FieldByName(u"CDBH"_s).SetAsString(u"0000000301"_s);
    dnbfa->FieldByName(u"BGSM"_s).SetAsString(u"新装"_s);
    dnbfa->FieldByName(u"SSLX"_s).SetAsString(u"D"_s);
    dnbfa->Post();
    EXPECT_EQ(dnbfa->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT sslx FROM a_dnbfa WHERE id='0000009109'"_s), u"D"_s);

    TMidasQuery* hgqfa = Jc_Tarvin_Dm->Mqry_Hgqfa;
    hgqfa->ParamByName(u"cdbh"_s).SetAsString(u"0000000301"_s);
    hgqfa->Open();
    ASSERT_EQ(hgqfa->RecordCount(), 1);
    hgqfa->Edit();
    hgqfa->FieldByName(u"HGQBB"_s).SetAsString(u"200/5"_s);
    hgqfa->Post();
    EXPECT_EQ(hgqfa->ApplyUpdates(0), 0);
    EXPECT_EQ(scalarText(u"SELECT hgqbb FROM a_hgqfa WHERE id='0000009202'"_s), u"200/5"_s);
}

TEST_P(DataModulesOnEngine, BusinessUndoWithdrawsTheApplication) {
    DataSet_Yk_Dm->UndoYysq(u"0000000301"_s);
    EXPECT_EQ(scalarText(u"SELECT COUNT(*) FROM a_khsqxx WHERE cdbh='0000000301'"_s), u"0"_s);
    EXPECT_EQ(scalarText(u"SELECT COUNT(*) FROM a_ykkzb WHERE cdbh='0000000301'"_s), u"0"_s);
    EXPECT_EQ(scalarText(u"SELECT COUNT(*) FROM a_khsqxx"_s), u"4"_s) << "other documents stay";
    EXPECT_FALSE(DataSet_Yk_Dm->Mqry_Select->Active());
}

TARVIN_INSTANTIATE_ENGINES(DataModulesOnEngine);

}  // namespace
