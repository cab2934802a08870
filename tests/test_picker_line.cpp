// The line picker through its widgets, on both engines: the unit's top
// lines, children read again on every opening and selection, the numbers
// cut to 7 characters, and the look-up on confirmation.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "data/DataModules.h"
#include "pickers/Frm_Jc_SelectXl.h"
#include "ModuleTest.h"
#include "ScreenHarness.h"
#include "TestDb.h"
#include "frame/Unit_zt_gobal.h"

using namespace tarvin::test;

namespace {

class LinePicker : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        db->exec(QStringLiteral("INSERT INTO y_bdz (bdzbh, bdzmc, dydj, dw) VALUES ('BDZ0101', '东郊110kV变电站', '05', '01')"));
        line("0100001", "10kV东风线", "00001");
        line("0100002", "10kV城北线", "00001");
        line("01000051", "10kV长编号线", "00001");  // longer than a node holds
        line("0200001", "10kV外局线", "00001", "02");
        line("0100004", "10kV东风线2号支线", "0100001", "01", "BDZ9999");  // no such substation
        line("0100003", "10kV东风线1号支线", "0100001");
        line("0100031", "东风线1号支线分段", "0100003");
        line("0100061", "10kV长编号线支线", "01000051");
    }

    void line(const char* xlbh, const char* xlmc, const char* sjxlbh, const char* dw = "01",
              const char* bdzbh = "BDZ0101") {
        db->exec(QStringLiteral("INSERT INTO y_xl (xlbh, xlmc, sjxlbh, bdzbh, dydj, dw) VALUES (?, ?, ?, ?, '03', ?)"),
                 {QString::fromUtf8(xlbh), QString::fromUtf8(xlmc), QString::fromUtf8(sjxlbh),
                  QString::fromUtf8(bdzbh), QString::fromUtf8(dw)});
    }

    static QStringList texts(const QList<QTreeWidgetItem*>& nodes) {
        QStringList out;
        for (const QTreeWidgetItem* n : nodes) out << n->text(0) + "/" + TJc_SelectXl_Frm::NodeXlbh(n);
        return out;
    }
    static QStringList tops(QTreeWidget* tree) {
        QList<QTreeWidgetItem*> nodes;
        for (int i = 0; i < tree->topLevelItemCount(); ++i) nodes << tree->topLevelItem(i);
        return texts(nodes);
    }
    static QStringList children(QTreeWidgetItem* node) {
        QList<QTreeWidgetItem*> nodes;
        for (int i = 0; i < node->childCount(); ++i) nodes << node->child(i);
        return texts(nodes);
    }
    static QTreeWidgetItem* node(QTreeWidget* tree, const QString& text) {
        const QList<QTreeWidgetItem*> found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        EXPECT_EQ(found.size(), 1) << text.toStdString();
        return found.value(0);
    }
    static void clickNode(QTreeWidget* tree, QTreeWidgetItem* item) {
        ASSERT_NE(item, nullptr);
        tree->scrollToItem(item);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
        settle();
    }

    // Any box the picker shows is recorded instead of waiting for a click.
};

TEST_P(LinePicker, UnitWithoutTopLinesShowsNothingAndConfirmStaysOpen) {
    Gdw = "09";
    TJc_SelectXl_Frm s;
    showActive(&s);
    EXPECT_EQ(s.windowTitle(), QStringLiteral("选择线路"));
    EXPECT_EQ(s.TvLst_HyLb->topLevelItemCount(), 0);
    click(&s, "Bbtn_Qr");
    press(s.TvLst_HyLb, Qt::Key_Return);
    EXPECT_TRUE(s.isVisible());
    EXPECT_EQ(s.result(), 0);
    EXPECT_TRUE(s.SelXlbh.isEmpty());
    click(&s, "Bbtn_Quit");
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Rejected);
}

TEST_P(LinePicker, LevelsLoadOnSelectionAndReloadOnEveryOpening) {
    TJc_SelectXl_Frm s;
    showActive(&s);
    QTreeWidget* tree = s.TvLst_HyLb;
    // Ordered by name; the other unit's line is left out.
    EXPECT_EQ(tops(tree), (QStringList{QStringLiteral("10kV东风线/0100001"), QStringLiteral("10kV城北线/0100002"),
                                       QStringLiteral("10kV长编号线/0100005")}));
    // Top lines show an expand button before anything is read below them.
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        if (tree->topLevelItem(i) != tree->currentItem()) {
            EXPECT_EQ(tree->topLevelItem(i)->childIndicatorPolicy(), QTreeWidgetItem::ShowIndicator);
        }

    QTreeWidgetItem* dongfeng = node(tree, QStringLiteral("10kV东风线"));
    clickNode(tree, dongfeng);
    EXPECT_EQ(s.Edt_HyDm->text(), "0100001");
    EXPECT_EQ(s.Edt_HyLb->text(), QStringLiteral("10kV东风线"));
    EXPECT_EQ(children(dongfeng), (QStringList{QStringLiteral("10kV东风线1号支线/0100003"),
                                              QStringLiteral("10kV东风线2号支线/0100004")}))
        << "selecting loads one level";
    EXPECT_EQ(dongfeng->child(0)->childCount(), 0) << "and only one";

    // A line added meanwhile shows when the node is opened again.
    line("0100007", "10kV东风线3号支线", "0100001");
    press(tree, Qt::Key_Right);
    EXPECT_TRUE(dongfeng->isExpanded());
    EXPECT_EQ(dongfeng->childCount(), 3);
    press(tree, Qt::Key_Left);
    db->exec(QStringLiteral("DELETE FROM y_xl WHERE xlbh = '0100007'"));
    press(tree, Qt::Key_Right);
    EXPECT_EQ(dongfeng->childCount(), 2) << "a removed line goes as well";

    // Selecting a branch loads its own branch; a leaf loads nothing.
    QTreeWidgetItem* first = node(tree, QStringLiteral("10kV东风线1号支线"));
    clickNode(tree, first);
    EXPECT_EQ(children(first), QStringList{QStringLiteral("东风线1号支线分段/0100031")});
    QTreeWidgetItem* leaf = node(tree, QStringLiteral("10kV东风线2号支线"));
    clickNode(tree, leaf);
    EXPECT_EQ(leaf->childCount(), 0);
    EXPECT_EQ(s.Edt_HyDm->text(), "0100004");
    EXPECT_EQ(s.Edt_HyLb->text(), QStringLiteral("10kV东风线2号支线"));

    // Enter confirms; the line's substation is missing and the outer join
    // still finds the line.
    press(tree, Qt::Key_Return);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXlbh, "0100004");
    EXPECT_EQ(s.SelXlmc, QStringLiteral("10kV东风线2号支线"));
    EXPECT_FALSE(Jc_Main_Dm->Mqry_Select->Active());

    // Opened again, the picker reads the top lines afresh.
    line("0100009", "10kV北环线", "00001");
    showActive(&s);
    EXPECT_EQ(tree->topLevelItemCount(), 4);
    EXPECT_EQ(node(tree, QStringLiteral("10kV长编号线"))->childIndicatorPolicy(), QTreeWidgetItem::ShowIndicator);
}

TEST_P(LinePicker, NumberLongerThanANodeHoldsConfirmsEmptyTexts) {
    TJc_SelectXl_Frm s;
    showActive(&s);
    QTreeWidget* tree = s.TvLst_HyLb;
    QTreeWidgetItem* longLine = node(tree, QStringLiteral("10kV长编号线"));
    clickNode(tree, longLine);
    EXPECT_EQ(s.Edt_HyDm->text(), "0100005");
    EXPECT_EQ(s.Edt_HyLb->text(), QStringLiteral("10kV长编号线"));
    EXPECT_EQ(longLine->childCount(), 0) << "its branches hang under the full number";

    // A line hung under the cut number, which is no line, comes in without
    // an expand button of its own.
    line("0100008", "孤立支线", "0100005");
    clickNode(tree, node(tree, QStringLiteral("10kV城北线")));
    clickNode(tree, longLine);
    ASSERT_EQ(children(longLine), QStringList{QStringLiteral("孤立支线/0100008")});
    EXPECT_EQ(longLine->child(0)->childIndicatorPolicy(), QTreeWidgetItem::DontShowIndicatorWhenChildless);

    click(&s, "Bbtn_Qr");
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXlbh, QString());
    EXPECT_EQ(s.SelXlmc, QString());
}

TEST_P(LinePicker, ReloadingAwayTheCurrentNodeMovesTheEdits) {
    TJc_SelectXl_Frm s;
    showActive(&s);
    QTreeWidget* tree = s.TvLst_HyLb;
    QTreeWidgetItem* dongfeng = node(tree, QStringLiteral("10kV东风线"));
    clickNode(tree, dongfeng);
    tree->expandItem(dongfeng);
    settle();
    clickNode(tree, node(tree, QStringLiteral("10kV东风线2号支线")));
    EXPECT_EQ(s.Edt_HyDm->text(), "0100004");
    // Closing and opening the branch rebuilds the children under the
    // current one; the edits must not keep a node that is gone.
    tree->collapseItem(dongfeng);
    tree->expandItem(dongfeng);
    settle();
    EXPECT_EQ(tree->currentItem(), dongfeng);
    EXPECT_EQ(s.Edt_HyDm->text(), "0100001");
    EXPECT_EQ(s.Edt_HyLb->text(), QStringLiteral("10kV东风线"));
    EXPECT_EQ(dongfeng->childCount(), 2);
    press(tree, Qt::Key_Escape);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Rejected);
}

TARVIN_INSTANTIATE_ENGINES(LinePicker);

}  // namespace
