// The dataset over real engines: parameters, navigation, fields, local edits
// with cached updates, transactions. (Binding by name in any case, each
// parameter type, '' as null and rows affected are the corpus's and the
// Oracle rules' tests, which run the module's own texts.)
#include <QSqlQuery>

#include "data/MidasQuery.h"
#include "TestDb.h"

using namespace tarvin::test;

namespace {

class MidasQueryTest : public EngineTest {
protected:
    void SetUp() override {
        db = std::make_unique<TestDatabase>(dialect(), /*withSchema=*/false);
        const bool pg = dialect() == tarvin::sql::Dialect::PostgreSQL;
        db->exec(QStringLiteral("CREATE TABLE khda (hh VARCHAR(10) PRIMARY KEY, hm VARCHAR(40), htrl NUMERIC, sqrq %1)")
                     .arg(pg ? QStringLiteral("TIMESTAMP(0)") : QStringLiteral("TIMESTAMP")));
        db->exec(QStringLiteral("INSERT INTO khda VALUES ('0000000003','王三',315,'2024-03-01 08:30:00')"));
        db->exec(QStringLiteral("INSERT INTO khda VALUES ('0000000001','李一',50,NULL)"));
        db->exec(QStringLiteral("INSERT INTO khda VALUES ('0000000002','Abc',100.5,'2024-01-15 00:00:00')"));
    }
    void TearDown() override { db.reset(); }

    QStringList column(TMidasQuery& q, const QString& field) {
        QStringList out;
        for (q.First(); !q.Eof(); q.Next()) out << q.FieldByName(field).AsString();
        return out;
    }

    std::unique_ptr<TestDatabase> db;
};

TEST_P(MidasQueryTest, ParametersFollowTheTextAndKeepTheirValues) {
    TMidasQuery q;
    q.SQL().Add(QStringLiteral("select hh from khda"));
    q.SQL().Add(QStringLiteral("where (hh=:HH or hm=:hm or hh=:hh)"));
    ASSERT_EQ(q.Params().Count(), 2);  // one entry per distinct name, in order
    EXPECT_EQ(q.Params()[0].Name, QStringLiteral("HH"));
    q.Params()[0].SetAsString(QStringLiteral("0000000003"));
    q.Params()[1].SetAsString(QStringLiteral("Abc"));
    // A line added keeps the values of the parameters already there.
    q.SQL().Add(QStringLiteral("and htrl>:htrl"));
    q.ParamByName(QStringLiteral("htrl")).SetAsInteger(100);
    q.SetIndexFieldNames(QStringLiteral("HH"));
    q.Open();
    EXPECT_EQ(column(q, QStringLiteral("hh")), (QStringList{"0000000002", "0000000003"}));
    // Replacing the text closes the query.
    q.SQL().Clear();
    EXPECT_FALSE(q.Active());
}

TEST_P(MidasQueryTest, NavigationAndEmptyResult) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select * from khda"));
    q.SetIndexFieldNames(QStringLiteral("hh"));
    EXPECT_TRUE(q.IsEmpty());
    EXPECT_TRUE(q.Eof());
    q.Open();
    EXPECT_EQ(q.RecordCount(), 3);
    EXPECT_FALSE(q.Eof());
    EXPECT_EQ(q.FieldByName(QStringLiteral("HH")).AsString(), QStringLiteral("0000000001"));
    q.Next();
    q.Next();
    EXPECT_FALSE(q.Eof());
    q.Next();  // past the last row: end of data, still on the last row
    EXPECT_TRUE(q.Eof());
    EXPECT_EQ(q.Fields(0).AsString(), QStringLiteral("0000000003"));
    q.Close();
    q.SQL().SetText(QStringLiteral("select * from khda where hh='x'"));
    q.Open();
    EXPECT_TRUE(q.IsEmpty());
    EXPECT_TRUE(q.Eof());
    EXPECT_EQ(q.RecordCount(), 0);
}

TEST_P(MidasQueryTest, FieldConversionsAndNulls) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select hh, hm, htrl, sqrq from khda where hh=:hh"));
    q.ParamByName(QStringLiteral("hh")).SetAsString(QStringLiteral("0000000002"));
    q.Open();
    EXPECT_EQ(q.FieldByName(QStringLiteral("htrl")).AsString(), QStringLiteral("100.5"));
    EXPECT_DOUBLE_EQ(q.FieldByName(QStringLiteral("HTRL")).AsFloat(), 100.5);
    EXPECT_EQ(q.FieldByName(QStringLiteral("hh")).AsInteger(), 2);
    EXPECT_EQ(q.FieldByName(QStringLiteral("sqrq")).AsDateTime(), QDateTime(QDate(2024, 1, 15), QTime(0, 0)));
    EXPECT_EQ(q.FieldNames(), (QStringList{"HH", "HM", "HTRL", "SQRQ"}));
    q.Close();
    q.ParamByName(QStringLiteral("hh")).SetAsString(QStringLiteral("0000000001"));
    q.Open();
    EXPECT_TRUE(q.FieldByName(QStringLiteral("sqrq")).IsNull());
    EXPECT_EQ(q.FieldByName(QStringLiteral("sqrq")).AsString(), QString());
    EXPECT_FALSE(q.FieldByName(QStringLiteral("sqrq")).AsDateTime().isValid());
    EXPECT_EQ(q.FieldByName(QStringLiteral("htrl")).AsInteger(), 50);
    EXPECT_THROW(q.FieldByName(QStringLiteral("hm")).AsInteger(), EDatabaseError);
    EXPECT_THROW(q.FieldByName(QStringLiteral("missing")), EDatabaseError);
}

TEST_P(MidasQueryTest, LocateBookmarksAndIndex) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select hh, hm from khda"));
    q.SetIndexFieldNames(QStringLiteral("HM"));
    q.Open();
    EXPECT_EQ(column(q, QStringLiteral("HM")), (QStringList{"Abc", "李一", "王三"}));
    EXPECT_TRUE(q.Locate(QStringLiteral("HM"), QStringLiteral("李"), loPartialKey));
    EXPECT_EQ(q.FieldByName(QStringLiteral("hh")).AsString(), QStringLiteral("0000000001"));
    EXPECT_FALSE(q.Locate(QStringLiteral("HM"), QStringLiteral("abc"), 0));  // case-sensitive
    EXPECT_TRUE(q.Locate(QStringLiteral("HM"), QStringLiteral("abc"), loCaseInsensitive));
    const TBookmark bm = q.GetBookmark();
    q.Last();
    q.GotoBookmark(bm);
    EXPECT_EQ(q.FieldByName(QStringLiteral("HM")).AsString(), QStringLiteral("Abc"));
    q.SetIndexFieldNames(QStringLiteral("HH"));  // re-sorting keeps the current row
    EXPECT_EQ(q.FieldByName(QStringLiteral("HM")).AsString(), QStringLiteral("Abc"));
    EXPECT_EQ(q.RecNo(), 2);
}

TEST_P(MidasQueryTest, LocalEditsStayLocalUntilApplied) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select hh, hm, htrl, 'x' extra from khda"));
    q.SetIndexFieldNames(QStringLiteral("HH"));
    q.SetUpdateTable(QStringLiteral("khda"));
    q.SetKeyFields({QStringLiteral("HH")});
    q.Open();
    EXPECT_THROW(q.FieldByName(QStringLiteral("hm")).SetAsString(QStringLiteral("x")), EDatabaseError);
    // An edit of the first row, a new row, the third row deleted.
    const auto edits = [&] {
        q.First();
        q.Edit();
        q.FieldByName(QStringLiteral("hm")).SetAsString(QStringLiteral("李一改"));
        q.Post();
        q.Append();
        q.FieldByName(QStringLiteral("hh")).SetAsString(QStringLiteral("0000000004"));
        q.FieldByName(QStringLiteral("htrl")).SetAsFloat(80);
        q.Post();
        q.Locate(QStringLiteral("HH"), QStringLiteral("0000000003"));
        q.Delete();
    };
    edits();
    EXPECT_EQ(q.GetChangeCount(), 3);
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from khda")).toInt(), 3);  // nothing written yet

    q.CancelUpdates();
    EXPECT_EQ(q.GetChangeCount(), 0);
    EXPECT_EQ(column(q, QStringLiteral("HM")), (QStringList{"李一", "Abc", "王三"}));

    edits();
    EXPECT_EQ(q.ApplyUpdates(0), 0);
    EXPECT_EQ(q.GetChangeCount(), 0);
    EXPECT_EQ(db->scalar(QStringLiteral("select hm from khda where hh='0000000001'")).toString(), QStringLiteral("李一改"));
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from khda where hh='0000000003'")).toInt(), 0);
    EXPECT_EQ(db->scalar(QStringLiteral("select htrl from khda where hh='0000000004'")).toInt(), 80);
}

TEST_P(MidasQueryTest, FailedApplyRollsBackAndKeepsChanges) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select hh, hm from khda"));
    q.SetUpdateTable(QStringLiteral("khda"));
    q.SetKeyFields({QStringLiteral("HH")});
    q.Open();
    q.Append();
    q.FieldByName(QStringLiteral("hh")).SetAsString(QStringLiteral("0000000005"));
    q.Post();
    q.Append();
    q.FieldByName(QStringLiteral("hh")).SetAsString(QStringLiteral("0000000001"));  // duplicate key
    q.Post();
    EXPECT_EQ(q.ApplyUpdates(0), 1);
    EXPECT_EQ(q.GetChangeCount(), 2);
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from khda")).toInt(), 3);
}

TEST_P(MidasQueryTest, CancelInsertAndEdit) {
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("select hh, hm from khda"));
    q.SetIndexFieldNames(QStringLiteral("HH"));
    q.Open();
    q.Append();
    EXPECT_EQ(q.State(), dsInsert);
    EXPECT_EQ(q.RecordCount(), 4);
    q.Cancel();
    EXPECT_EQ(q.RecordCount(), 3);
    q.Edit();
    q.FieldByName(QStringLiteral("hm")).SetAsString(QStringLiteral("zz"));
    q.Cancel();
    EXPECT_EQ(q.FieldByName(QStringLiteral("hm")).AsString(), QStringLiteral("李一"));
    EXPECT_EQ(q.GetChangeCount(), 0);
}

TEST_P(MidasQueryTest, TransactionsCommitAndRollBack) {
    TCustomMidasDataBase& conn = TCustomMidasDataBase::ByName();
    TMidasQuery q;
    q.SQL().SetText(QStringLiteral("delete from khda where hh=:hh"));
    conn.StartTransaction();
    EXPECT_TRUE(conn.InTransaction());
    EXPECT_THROW(conn.StartTransaction(), EDatabaseError);
    q.ParamByName(QStringLiteral("hh")).SetAsString(QStringLiteral("0000000001"));
    q.ExecSQL();
    conn.Rollback();
    EXPECT_FALSE(conn.InTransaction());
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from khda")).toInt(), 3);
    conn.StartTransaction();
    q.ExecSQL();
    conn.Commit();
    EXPECT_EQ(db->scalar(QStringLiteral("select count(*) from khda")).toInt(), 2);
}

TEST_P(MidasQueryTest, ErrorsNameTheQueryAndKeepItClosed) {
    TMidasQuery q(nullptr, QStringLiteral("Mqry_Test"));
    EXPECT_THROW(q.Open(), EDatabaseError);  // no text
    q.SQL().SetText(QStringLiteral("select nosuch from khda"));
    try {
        q.Open();
        FAIL() << "expected an error";
    } catch (const EDatabaseError& e) {
        EXPECT_TRUE(e.message().startsWith(QStringLiteral("Mqry_Test:"))) << e.message().toStdString();
    }
    EXPECT_FALSE(q.Active());
}

TARVIN_INSTANTIATE_ENGINES(MidasQueryTest);

}  // namespace
