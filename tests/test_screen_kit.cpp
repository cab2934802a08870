// The model/view binding of the dataset, on both engines: a grid whose
// current row follows the dataset and moves it, multi-selection as
// bookmarks, field-bound edits, the look-up and key combos.
#include <QLineEdit>
#include <QTableView>

#include "frame/DBControls.h"
#include "frame/DataSetModel.h"
#include "ScreenHarness.h"
#include "TestDb.h"

using namespace tarvin::test;

namespace {

class ScreenKit : public EngineTest {
protected:
    void SetUp() override {
        db = std::make_unique<TestDatabase>(dialect());
        db->exec("INSERT INTO w_khlx (dm, mc) VALUES ('01', '居民'), ('02', '非居民'), ('03', '大工业')");
        q.SQL().Add("select dm, mc from w_khlx order by dm");
        q.Open();
    }
    std::unique_ptr<TestDatabase> db;
    TMidasQuery q;
};

TEST_P(ScreenKit, GridAndDataSetMoveTogether) {
    QTableView grid;
    TDBGridBinding binding(&grid, &q);
    TDataSetModel* model = binding.Model();
    model->SetColumns({{"DM", QStringLiteral("代码")}, {"MC", QStringLiteral("名称")}});
    grid.resize(300, 200);
    showActive(&grid);
    EXPECT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->index(2, 1).data().toString(), QStringLiteral("大工业"));

    q.Next();
    EXPECT_EQ(grid.currentIndex().row(), 1) << "the grid follows the dataset";
    clickRow(&grid, 2);
    EXPECT_EQ(q.FieldByName("DM").AsString(), "03") << "a click moves the dataset";

    // Multi-selection gives bookmarks that lead back to the rows.
    grid.setSelectionMode(QAbstractItemView::MultiSelection);
    grid.setSelectionBehavior(QAbstractItemView::SelectRows);
    grid.clearSelection();
    clickRow(&grid, 0);
    clickRow(&grid, 2);
    QStringList marked;
    for (const TBookmark& mark : binding.SelectedBookmarks()) {
        q.GotoBookmark(mark);
        marked << q.FieldByName("DM").AsString();
    }
    EXPECT_EQ(marked, (QStringList{"01", "03"}));

    // The screens trim their grids to a number of columns and add their own.
    model->DeleteLastColumn();
    model->AddColumn("MC", QStringLiteral("客户类型"));
    EXPECT_EQ(model->columnCount(), 2);
    EXPECT_EQ(model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("客户类型"));
    q.Close();
    EXPECT_EQ(model->rowCount(), 0);
}

// A date-time at midnight shows as its day on both engines (SQLite hands it
// over as text), one with a time of day in full.
TEST_P(ScreenKit, GridShowsADayWithoutItsMidnight) {
    db->exec("INSERT INTO b_dltzxx (hh, ny, jfdbh, cbrq) VALUES ('1', '202611', '1', '2026-11-20 00:00:00'), "
             "('1', '202611', '2', '2026-11-20 08:30:00')");
    TMidasQuery d;
    OpenSql(&d, "select cbrq from b_dltzxx order by jfdbh");
    TDataSetModel model(&d);
    EXPECT_EQ(model.index(0, 0).data().toString(), "2026-11-20");
    EXPECT_EQ(model.index(1, 0).data().toString(), "2026-11-20 08:30:00");
}

TEST_P(ScreenKit, FieldBoundEditShowsAndWritesTheCurrentRow) {
    QLineEdit edit;
    TDBFieldBinding fields(&q);
    fields.Bind(&edit, "mc");
    q.Next();
    EXPECT_EQ(edit.text(), QStringLiteral("非居民"));
    edit.setText(QStringLiteral("一般工商业"));
    fields.Mapper()->submit();
    EXPECT_EQ(q.FieldByName("MC").AsString(), QStringLiteral("一般工商业"));
    EXPECT_EQ(q.GetChangeCount(), 1) << "kept as a cached update";
    q.CancelUpdates();
    q.Close();
    EXPECT_EQ(edit.text(), QString()) << "a closed dataset shows nothing";
    q.Open();
    EXPECT_EQ(edit.text(), QStringLiteral("居民")) << "found again when reopened";
}

TEST_P(ScreenKit, LookupComboCarriesTheKeyAcrossReopening) {
    TDBLookupComboBox combo;
    combo.SetListSource(&q, "DM", "MC");
    EXPECT_TRUE(combo.KeyValue().isNull()) << "nothing chosen at first";
    combo.SetKeyValue("02");
    EXPECT_EQ(combo.Text(), QStringLiteral("非居民"));
    q.Close();
    q.Open();
    EXPECT_EQ(combo.KeyValue().toString(), "02");
    combo.SetKeyValue(QVariant());
    EXPECT_EQ(combo.currentIndex(), -1);
    combo.SetKeyValue("99");
    EXPECT_TRUE(combo.KeyValue().isNull());

    TKeyComboBox keys;
    keys.AddItem("1", QStringLiteral("换取"));
    keys.AddItem("2", QStringLiteral("拆除"));
    keys.SetKeyValue("2");
    EXPECT_EQ(keys.GetKeyValue(), "2");
    EXPECT_EQ(keys.GetItems(), (QStringList{QStringLiteral("1=换取"), QStringLiteral("2=拆除")}));
}

TARVIN_INSTANTIATE_ENGINES(ScreenKit);

}  // namespace
