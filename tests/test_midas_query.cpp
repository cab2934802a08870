// The dataset over real engines: parameters, navigation, fields, local edits
// with cached updates, transactions. (Binding by name in any case, each
// parameter type, '' as null and rows affected are the corpus's and the
// Oracle rules' tests, which run the module's own texts.)
#include <QSqlQuery>

#include "data/MidasQuery.h"
#include "Fixtures.h"

using namespace tarvin::test;

namespace {

class MidasQueryTest : public EngineTest {
protected:
    void SetUp() override {
        const QString stamp = dialect() == tarvin::sql::Dialect::PostgreSQL ? "TIMESTAMP(0)" : "TIMESTAMP";
        db.exec("CREATE TABLE khda (hh VARCHAR(10) PRIMARY KEY, hm VARCHAR(40), htrl NUMERIC, sqrq " + stamp + ")");
        db.exec("INSERT INTO khda VALUES ('0000000003','王三',315,'2024-03-01 08:30:00'), ('0000000001','李一',50,NULL), "
                 "('0000000002','Abc',100.5,'2024-01-15 00:00:00')");
    }

    QStringList column(TMidasQuery& q, const QString& field) {
        QStringList out;
        for (q.First(); !q.Eof(); q.Next()) out << q.FieldByName(field).AsString();
        return out;
    }

    TestDatabase db{dialect(), /*withSchema=*/false};
};

TEST_P(MidasQueryTest, ParametersFollowTheTextAndKeepTheirValues) {
    TMidasQuery q;
    q.SQL().Add("select hh from khda");
    q.SQL().Add("where (hh=:HH or hm=:hm or hh=:hh)");
    ASSERT_EQ(q.Params().Count(), 2);  // one entry per distinct name, in order
    EXPECT_EQ(q.Params()[0].Name, "HH");
    q.Params()[0].SetAsString("0000000003");
    q.Params()[1].SetAsString("Abc");
    // A line added keeps the values of the parameters already there.
    q.SQL().Add("and htrl>:htrl");
    q.ParamByName("htrl").SetAsInteger(100);
    q.SetIndexFieldNames("HH");
    q.Open();
    EXPECT_EQ(column(q, "hh"), (QStringList{"0000000002", "0000000003"}));
    // Replacing the text closes the query.
    q.SQL().Clear();
    EXPECT_FALSE(q.Active());
}

// Errors name the query and leave it closed.
TEST_P(MidasQueryTest, NavigationEmptyResultAndErrors) {
    TMidasQuery q(nullptr, "Mqry_Test");
    EXPECT_THROW(q.Open(), EDatabaseError);  // no text
    q.SQL().SetText("select * from khda");
    q.SetIndexFieldNames("hh");
    EXPECT_TRUE(q.IsEmpty() && q.Eof());
    q.Open();
    EXPECT_EQ(q.RecordCount(), 3);
    EXPECT_EQ(q.FieldByName("HH").AsString(), "0000000001");
    q.Next();
    q.Next();
    EXPECT_FALSE(q.Eof());
    q.Next();  // past the last row: end of data, still on the last row
    EXPECT_TRUE(q.Eof());
    EXPECT_EQ(q.Fields(0).AsString(), "0000000003");
    q.SQL().SetText("select * from khda where hh='x'");
    q.Open();
    EXPECT_TRUE(q.IsEmpty() && q.Eof() && q.RecordCount() == 0);
    q.SQL().SetText("select nosuch from khda");
    try {
        q.Open();
        ADD_FAILURE() << "opened";
    } catch (const EDatabaseError& e) {
        EXPECT_TRUE(e.message().startsWith("Mqry_Test:")) << e.message().toStdString();
    }
    EXPECT_FALSE(q.Active());
}

TEST_P(MidasQueryTest, FieldConversionsAndNulls) {
    TMidasQuery q;
    q.SQL().SetText("select hh, hm, htrl, sqrq from khda where hh=:hh");
    q.ParamByName("hh").SetAsString("0000000002");
    q.Open();
    EXPECT_EQ(q.FieldByName("htrl").AsString(), "100.5");
    EXPECT_DOUBLE_EQ(q.FieldByName("HTRL").AsFloat(), 100.5);
    EXPECT_EQ(q.FieldByName("hh").AsInteger(), 2);
    EXPECT_EQ(q.FieldByName("sqrq").AsDateTime(), QDateTime(QDate(2024, 1, 15), QTime(0, 0)));
    EXPECT_EQ(q.FieldNames(), (QStringList{"HH", "HM", "HTRL", "SQRQ"}));
    q.Close();
    q.ParamByName("hh").SetAsString("0000000001");
    q.Open();
    TField sqrq = q.FieldByName("sqrq");
    EXPECT_TRUE(sqrq.IsNull() && sqrq.AsString().isEmpty() && !sqrq.AsDateTime().isValid()) << "a null date";
    EXPECT_EQ(q.FieldByName("htrl").AsInteger(), 50);
    EXPECT_THROW(q.FieldByName("hm").AsInteger(), EDatabaseError);
    EXPECT_THROW(q.FieldByName("missing"), EDatabaseError);
}

TEST_P(MidasQueryTest, LocateBookmarksAndIndex) {
    TMidasQuery q;
    q.SQL().SetText("select hh, hm from khda");
    q.SetIndexFieldNames("HM");
    q.Open();
    EXPECT_EQ(column(q, "HM"), (QStringList{"Abc", "李一", "王三"}));
    EXPECT_TRUE(q.Locate("HM", "李", loPartialKey));
    EXPECT_EQ(q.FieldByName("hh").AsString(), "0000000001");
    EXPECT_FALSE(q.Locate("HM", "abc", 0));  // case-sensitive
    EXPECT_TRUE(q.Locate("HM", "abc", loCaseInsensitive));
    const TBookmark bm = q.GetBookmark();
    q.Last();
    q.GotoBookmark(bm);
    EXPECT_EQ(q.FieldByName("HM").AsString(), "Abc");
    q.SetIndexFieldNames("HH");  // re-sorting keeps the current row
    EXPECT_EQ(q.FieldByName("HM").AsString(), "Abc");
    EXPECT_EQ(q.RecNo(), 2);
}

TEST_P(MidasQueryTest, LocalEditsStayLocalUntilApplied) {
    TMidasQuery q;
    q.SQL().SetText("select hh, hm, htrl, 'x' extra from khda");
    q.SetIndexFieldNames("HH");
    q.SetUpdateTable("khda");
    q.SetKeyFields({"HH"});
    q.Open();
    EXPECT_THROW(q.FieldByName("hm").SetAsString("x"), EDatabaseError);
    // Cancel drops an insert and an edit.
    q.Append();
    EXPECT_TRUE(q.State() == dsInsert && q.RecordCount() == 4);
    q.Cancel();
    q.Edit();
    q.FieldByName("hm").SetAsString("zz");
    q.Cancel();
    EXPECT_TRUE(q.RecordCount() == 3 && q.GetChangeCount() == 0);
    EXPECT_EQ(q.FieldByName("hm").AsString(), "李一");
    // An edit of the first row, a new row, the third row deleted.
    const auto edits = [&] {
        q.First();
        q.Edit();
        q.FieldByName("hm").SetAsString("李一改");
        q.Post();
        q.Append();
        q.FieldByName("hh").SetAsString("0000000004");
        q.FieldByName("htrl").SetAsFloat(80);
        q.Post();
        q.Locate("HH", "0000000003");
        q.Delete();
    };
    edits();
    EXPECT_EQ(q.GetChangeCount(), 3);
    EXPECT_EQ(db.scalar("select count(*) from khda").toInt(), 3);  // nothing written yet

    q.CancelUpdates();
    EXPECT_EQ(q.GetChangeCount(), 0);
    EXPECT_EQ(column(q, "HM"), (QStringList{"李一", "Abc", "王三"}));

    edits();
    EXPECT_EQ(q.ApplyUpdates(0), 0);
    EXPECT_EQ(q.GetChangeCount(), 0);
    EXPECT_EQ(rows(db, "select hh, hm, htrl from khda order by hh"),
              (QStringList{"0000000001|李一改|50", "0000000002|Abc|100.5", "0000000004||80"}));

    // One failing row rolls the whole apply back and keeps every change.
    for (const char* hh : {"0000000005", "0000000001"}) {  // the second a duplicate key
        q.Append();
        q.FieldByName("hh").SetAsString(hh);
        q.Post();
    }
    EXPECT_EQ(q.ApplyUpdates(0), 1);
    EXPECT_EQ(q.GetChangeCount(), 2);
    EXPECT_EQ(db.scalar("select count(*) from khda").toInt(), 3);
}

TEST_P(MidasQueryTest, TransactionsCommitAndRollBack) {
    TCustomMidasDataBase& conn = TCustomMidasDataBase::ByName();
    TMidasQuery q;
    q.SQL().SetText("delete from khda where hh=:hh");
    conn.StartTransaction();
    EXPECT_TRUE(conn.InTransaction());
    EXPECT_THROW(conn.StartTransaction(), EDatabaseError);
    q.ParamByName("hh").SetAsString("0000000001");
    q.ExecSQL();
    conn.Rollback();
    EXPECT_FALSE(conn.InTransaction());
    EXPECT_EQ(db.scalar("select count(*) from khda").toInt(), 3);
    conn.StartTransaction();
    q.ExecSQL();
    conn.Commit();
    EXPECT_EQ(db.scalar("select count(*) from khda").toInt(), 2);
}

TARVIN_INSTANTIATE_ENGINES(MidasQueryTest);

}  // namespace
