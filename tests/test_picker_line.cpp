// The line picker through its widgets, on each engine and opener: the
// unit's top lines, children read again on every opening and selection, the
// numbers cut to 7 characters, and the look-up on confirmation.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "data/DataModules.h"
#include "pickers/Frm_Jc_SelectXl.h"
#include "ModuleTest.h"
#include "frame/Unit_zt_gobal.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

class LinePicker : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        db->exec(u"INSERT INTO y_bdz (bdzbh, bdzmc, dydj, dw) VALUES ('BDZ0101', '东郊110kV变电站', '05', '01')"_s);
        // 01000051 is longer than a node holds; 0100004's substation is
        // missing.
        db->exec(u"INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES "
                 "('0100001', '10kV东风线', '00001', 'BDZ0101', '03', '01'), "
                 "('0100002', '10kV城北线', '00001', 'BDZ0101', '03', '01'), "
                 "('01000051', '10kV长编号线', '00001', 'BDZ0101', '03', '01'), "
                 "('0200001', '10kV外局线', '00001', 'BDZ0101', '03', '02'), "
                 "('0100004', '10kV东风线2号支线', '0100001', 'BDZ9999', '03', '01'), "
                 "('0100003', '10kV东风线1号支线', '0100001', 'BDZ0101', '03', '01'), "
                 "('0100031', '东风线1号支线分段', '0100003', 'BDZ0101', '03', '01'), "
                 "('0100061', '10kV长编号线支线', '01000051', 'BDZ0101', '03', '01')"_s);
    }
    void line(const QString& xlbh, const QString& xlmc, const QString& sjxlbh) {
        db->exec(u"INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES (?, ?, ?, 'BDZ0101', '03', '01')"_s,
                 {xlbh, xlmc, sjxlbh});
    }

    // Name/number of each child; of the top lines for the root.
    static QStringList children(QTreeWidgetItem* node) {
        QStringList out;
        for (int i = 0; i < node->childCount(); ++i)
            out << node->child(i)->text(0) + u"/"_s + TJc_SelectXl_Frm::NodeXlbh(node->child(i));
        return out;
    }
    static QTreeWidgetItem* node(QTreeWidget* tree, const QString& text) {
        const QList<QTreeWidgetItem*> found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        EXPECT_EQ(found.size(), 1) << text.toStdString();
        return found.value(0);
    }
    static QTreeWidgetItem* clickNode(QTreeWidget* tree, const QString& text) {
        QTreeWidgetItem* item = node(tree, text);
        if (!item) return nullptr;
        tree->scrollToItem(item);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
        settle();
        return item;
    }
    static QString edits(const TJc_SelectXl_Frm& s) { return s.Edt_HyDm->text() + u" "_s + s.Edt_HyLb->text(); }
};

// Down a branch by the arrow keys; the connection lost under the screen is
// told at confirmation and the choice is confirmed once it is back.
TEST_P(LinePicker, MainFlowByKeysWithRealBoxes) {
    TJc_SelectXl_Frm s;
    showActive(&s);
    RealMessageBoxes boxes;
    s.TvLst_HyLb->setFocus();
    for (Qt::Key key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down}) pressFocused(key);
    EXPECT_EQ(edits(s), u"0100004 10kV东风线2号支线"_s);
    db->db().close();
    boxes.expect(u"The database connection 'Shdl' is not open"_s);
    s.Bbtn_Qr->setFocus();
    pressFocused(Qt::Key_Return);
    ASSERT_TRUE(s.isVisible());
    ASSERT_TRUE(db->db().open());
    pressFocused(Qt::Key_Return);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXlbh + s.SelXlmc, u"010000410kV东风线2号支线"_s) << "found though its substation is missing";
    EXPECT_FALSE(Jc_Main_Dm->Mqry_Select->Active());
}

TEST_P(LinePicker, UnitWithoutTopLinesShowsNothingAndConfirmStaysOpen) {
    Gdw = u"09"_s;
    TJc_SelectXl_Frm s;
    showActive(&s);
    EXPECT_EQ(s.TvLst_HyLb->topLevelItemCount(), 0);
    click(&s, u"Bbtn_Qr"_s);
    press(s.TvLst_HyLb, Qt::Key_Return);
    EXPECT_TRUE(s.isVisible());
    EXPECT_TRUE(s.SelXlbh.isEmpty());
    click(&s, u"Bbtn_Quit"_s);
    EXPECT_EQ(s.result(), QDialog::Rejected);
}

TEST_P(LinePicker, LevelsLoadOnSelectionAndReloadOnEveryOpening) {
    TJc_SelectXl_Frm s;
    showActive(&s);
    QTreeWidget* tree = s.TvLst_HyLb;
    // Ordered by name; the other unit's line is left out.
    EXPECT_EQ(children(tree->invisibleRootItem()),
              (QStringList{u"10kV东风线/0100001"_s, u"10kV城北线/0100002"_s, u"10kV长编号线/0100005"_s}));

    QTreeWidgetItem* dongfeng = clickNode(tree, u"10kV东风线"_s);
    EXPECT_EQ(edits(s), u"0100001 10kV东风线"_s);
    EXPECT_EQ(children(dongfeng), (QStringList{u"10kV东风线1号支线/0100003"_s, u"10kV东风线2号支线/0100004"_s}))
        << "selecting loads one level";
    EXPECT_EQ(dongfeng->child(0)->childCount(), 0) << "and only one";

    // A line added meanwhile shows when the node is opened again, and one
    // removed goes.
    line(u"0100007"_s, u"10kV东风线3号支线"_s, u"0100001"_s);
    press(tree, Qt::Key_Right);
    EXPECT_EQ(dongfeng->childCount(), 3);
    press(tree, Qt::Key_Left);
    db->exec(u"DELETE FROM y_xl WHERE xlbh = '0100007'"_s);
    press(tree, Qt::Key_Right);
    EXPECT_EQ(dongfeng->childCount(), 2);

    // Selecting a branch loads its own branch; a leaf loads nothing.
    QTreeWidgetItem* first = clickNode(tree, u"10kV东风线1号支线"_s);
    EXPECT_EQ(children(first), QStringList{u"东风线1号支线分段/0100031"_s});
    EXPECT_EQ(clickNode(tree, u"10kV东风线2号支线"_s)->childCount(), 0);

    // Opened again, the picker reads the top lines afresh; they show an
    // expand button before anything is read below them.
    press(tree, Qt::Key_Escape);
    line(u"0100009"_s, u"10kV北环线"_s, u"00001"_s);
    showActive(&s);
    EXPECT_EQ(tree->topLevelItemCount(), 4);
    EXPECT_EQ(node(tree, u"10kV长编号线"_s)->childIndicatorPolicy(), QTreeWidgetItem::ShowIndicator);
}

TEST_P(LinePicker, NumberLongerThanANodeHoldsConfirmsEmptyTexts) {
    TJc_SelectXl_Frm s;
    showActive(&s);
    QTreeWidget* tree = s.TvLst_HyLb;
    QTreeWidgetItem* longLine = clickNode(tree, u"10kV长编号线"_s);
    EXPECT_EQ(edits(s), u"0100005 10kV长编号线"_s);
    EXPECT_EQ(longLine->childCount(), 0) << "its branches hang under the full number";

    // A line hung under the cut number, which is no line, comes in without
    // an expand button of its own.
    line(u"0100008"_s, u"孤立支线"_s, u"0100005"_s);
    clickNode(tree, u"10kV城北线"_s);
    clickNode(tree, u"10kV长编号线"_s);
    ASSERT_EQ(children(longLine), QStringList{u"孤立支线/0100008"_s});
    EXPECT_EQ(longLine->child(0)->childIndicatorPolicy(), QTreeWidgetItem::DontShowIndicatorWhenChildless);

    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXlbh + s.SelXlmc, QString());
}

TEST_P(LinePicker, ReloadingAwayTheCurrentNodeMovesTheEdits) {
    TJc_SelectXl_Frm s;
    showActive(&s);
    QTreeWidget* tree = s.TvLst_HyLb;
    QTreeWidgetItem* dongfeng = clickNode(tree, u"10kV东风线"_s);
    tree->expandItem(dongfeng);
    settle();
    clickNode(tree, u"10kV东风线2号支线"_s);
    // Closing and opening the branch rebuilds the children under the
    // current one; the edits must not keep a node that is gone.
    tree->collapseItem(dongfeng);
    tree->expandItem(dongfeng);
    settle();
    EXPECT_EQ(tree->currentItem(), dongfeng);
    EXPECT_EQ(edits(s), u"0100001 10kV东风线"_s);
    EXPECT_EQ(dongfeng->childCount(), 2);
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(LinePicker);

}  // namespace
