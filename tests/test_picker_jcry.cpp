// The inspector selection through its widgets, on each engine and opener:
// names from the operator register through the outer join, marked rows
// joined with "、" in row order, the double click that computes without
// closing, and the exits.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QTableView>

#include "frame/DataSetModel.h"
#include "pickers/Frm_Jc_Jcryxs.h"
#include "ModuleTest.h"
#include "frame/Unit_zt_gobal.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

class InspectorPicker : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        db->exec(u"INSERT INTO z_xtczy (dm, xingming, dw, bm, sfyx) VALUES ('jc01', '张伟', '01', '0101', 1), "
                 "('jc02', '李娜', '01', '0101', 1), ('jc03', '王强', '01', '0101', 1), ('jc09', '赵敏', '02', '0101', 1)"_s);
        // The register's own XM is not what the list shows: the name is the
        // operator's; jc04 has no operator row.
        db->exec(u"INSERT INTO e_jcryxx (czydm, xm, jczh, jczjb, xb, dw) VALUES "
                 "('jc02', '李娜（旧）', 'JC0102', '二级', '女', '01'), ('jc01', '张伟', 'JC0101', '一级', '男', '01'), "
                 "('jc04', '周临时', 'JC0104', '三级', '男', '01'), ('jc03', '王强', 'JC0103', '二级', '男', '01'), "
                 "('jc09', '赵敏', 'JC0209', '一级', '女', '02')"_s);
    }

    // The grid's text; the query has no order of its own, so rows are
    // found by what they show.
    static QString cell(TJc_Jcryxs_Frm& s, int row, int column) {
        return s.Grid()->Model()->index(row, column).data().toString();
    }
    static int rowOf(TJc_Jcryxs_Frm& s, const QString& jczh) {
        for (int r = 0; r < s.Grid()->Model()->rowCount(); ++r)
            if (cell(s, r, 3) == jczh) return r;
        ADD_FAILURE() << "no row " << jczh.toStdString();
        return 0;
    }
    static void clickRow(TJc_Jcryxs_Frm& s, int row, Qt::KeyboardModifiers mods = {}, bool twice = false) {
        tarvin::test::clickRow(s.Dbg_Jcryxs, row, mods, twice, 1);
    }
    // Names (column 1) or certificates (3) of rows, in row order.
    static QString joined(TJc_Jcryxs_Frm& s, QList<int> rows, int column) {
        std::sort(rows.begin(), rows.end());
        QStringList out;
        for (int r : rows) out << cell(s, r, column);
        return out.join(u"、"_s);
    }
};

// The screen's name asked for by its key, two rows marked by keys and
// confirmed by Enter on the button.
TEST_P(InspectorPicker, MainFlowByKeysWithRealBoxes) {
    TJc_Jcryxs_Frm s;
    showActive(&s);
    RealMessageBoxes boxes;
    boxes.expect(u"当前窗口名:Jc_Jcryxs_Frm"_s);
    s.Dbg_Jcryxs->setFocus();
    pressFocused(Qt::Key_N, Qt::ControlModifier | Qt::AltModifier);
    pressFocused(Qt::Key_Down);
    pressFocused(Qt::Key_Down, Qt::ShiftModifier);
    const QList<int> marked{1, 2};
    const QString names = joined(s, marked, 1), certificates = joined(s, marked, 3);
    s.Bbtn_Qr->setFocus();
    pressFocused(Qt::Key_Return);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXm, names);
    EXPECT_EQ(s.SelJczh, certificates);
}

TEST_P(InspectorPicker, MarkedRowsJoinInRowOrderAndEachConfirmAppends) {
    TJc_Jcryxs_Frm s;
    showActive(&s);
    ASSERT_EQ(s.Grid()->Model()->rowCount(), 4) << "the unit's inspectors, also one without an operator row";
    QStringList shown;
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(cell(s, r, 0), QString()) << "the first column shows no field";
        shown << cell(s, r, 1);
    }
    shown.sort();
    EXPECT_EQ(shown, (QStringList{QString(), u"张伟"_s, u"李娜"_s, u"王强"_s}));

    // Marked against row order, the last by a double click with Ctrl held,
    // which marks it, computes and does not close.
    const QList<int> rows{rowOf(s, u"JC0103"_s), rowOf(s, u"JC0101"_s), rowOf(s, u"JC0102"_s)};
    clickRow(s, rows[0]);
    clickRow(s, rows[1], Qt::ControlModifier);
    clickRow(s, rows[2], Qt::ControlModifier, true);
    EXPECT_TRUE(s.isVisible());
    const QString names = joined(s, rows, 1), certificates = joined(s, rows, 3);
    EXPECT_EQ(s.SelXm, names);
    EXPECT_EQ(s.SelJczh, certificates);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXm, names + u"、"_s + names);
    EXPECT_EQ(s.SelJczh, certificates + u"、"_s + certificates);
    EXPECT_FALSE(s.MQry_Jcry->Active()) << "closed with the screen";
}

TEST_P(InspectorPicker, WithoutMarksTheCurrentRowOverwritesAndExitKeepsTheFields) {
    {
        TJc_Jcryxs_Frm s;
        showActive(&s);
        const int row = rowOf(s, u"JC0103"_s);
        clickRow(s, row, {}, true);
        // Unmarked again, the row stays current: confirming overwrites.
        clickRow(s, row, Qt::ControlModifier);
        ASSERT_TRUE(s.Grid()->SelectedBookmarks().isEmpty());
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_EQ(s.SelXm + s.SelJczh, u"王强JC0103"_s);
    }
    {
        // Exit is Cancel; what a double click put there stays for the
        // caller that reads the fields whatever the result.
        TJc_Jcryxs_Frm s;
        showActive(&s);
        clickRow(s, rowOf(s, u"JC0101"_s), {}, true);
        click(&s, u"Bbtn_Quit"_s);
        EXPECT_EQ(s.result(), QDialog::Rejected);
        EXPECT_EQ(s.SelXm + s.SelJczh, u"张伟JC0101"_s);
        EXPECT_FALSE(s.MQry_Jcry->Active());
    }
    // A unit without inspectors confirms empty texts.
    Gdw = u"09"_s;
    TJc_Jcryxs_Frm s;
    showActive(&s);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXm + s.SelJczh, QString());
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(InspectorPicker);

}  // namespace
