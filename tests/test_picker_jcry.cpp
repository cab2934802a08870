// The inspector selection through its widgets, on both engines: names from
// the operator register through the outer join, marked rows joined with
// "、" in row order, the double click that computes without closing, and the
// exits.
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QTableView>
#include <QTest>

#include "data/DataModules.h"
#include "frame/DataSetModel.h"
#include "pickers/Frm_Jc_Jcryxs.h"
#include "ModuleTest.h"
#include "ScreenHarness.h"
#include "TestDb.h"
#include "frame/Unit_zt_gobal.h"

using namespace tarvin::test;

namespace {

class InspectorPicker : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        op("jc01", "张伟");
        op("jc02", "李娜");
        op("jc03", "王强");
        op("jc09", "赵敏", "02");
        // The register's own XM is not what the list shows: the name is the
        // operator's.
        inspector("jc02", "李娜（旧）", "JC0102", "二级", "女");
        inspector("jc01", "张伟", "JC0101", "一级", "男");
        inspector("jc04", "周临时", "JC0104", "三级", "男");  // no operator row
        inspector("jc03", "王强", "JC0103", "二级", "男");
        inspector("jc09", "赵敏", "JC0209", "一级", "女", "02");
    }

    void op(const char* dm, const char* name, const char* dw = "01") {
        db->exec(QStringLiteral("INSERT INTO z_xtczy (dm, xingming, dw, bm, sfyx) VALUES (?, ?, ?, '0101', 1)"),
                 {QString::fromUtf8(dm), QString::fromUtf8(name), QString::fromUtf8(dw)});
    }
    void inspector(const char* czydm, const char* xm, const char* jczh, const char* jb, const char* xb,
                   const char* dw = "01") {
        db->exec(QStringLiteral("INSERT INTO e_jcryxx (czydm, xm, jczh, jczjb, xb, dw) VALUES (?, ?, ?, ?, ?, ?)"),
                 {QString::fromUtf8(czydm), QString::fromUtf8(xm), QString::fromUtf8(jczh),
                  QString::fromUtf8(jb), QString::fromUtf8(xb), QString::fromUtf8(dw)});
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
    static QPoint at(TJc_Jcryxs_Frm& s, int row) {
        return s.Dbg_Jcryxs->visualRect(s.Grid()->Model()->index(row, 1)).center();
    }
    static void clickRow(TJc_Jcryxs_Frm& s, int row, Qt::KeyboardModifiers mods = {}) {
        QTest::mouseClick(s.Dbg_Jcryxs->viewport(), Qt::LeftButton, mods, at(s, row));
        settle();
    }
    // As the system delivers a double click: a click, then the double.
    static void doubleClickRow(TJc_Jcryxs_Frm& s, int row, Qt::KeyboardModifiers mods = {}) {
        QTest::mouseClick(s.Dbg_Jcryxs->viewport(), Qt::LeftButton, mods, at(s, row));
        QTest::mouseDClick(s.Dbg_Jcryxs->viewport(), Qt::LeftButton, mods, at(s, row));
        settle();
    }
    // Names and certificates of rows, joined as the picker joins them.
    static QString joined(TJc_Jcryxs_Frm& s, QList<int> rows, int column) {
        std::sort(rows.begin(), rows.end());
        QStringList out;
        for (int r : rows) out << cell(s, r, column);
        return out.join(QStringLiteral("、"));
    }

    // Any box the picker shows is recorded instead of waiting for a click.
};

TEST_P(InspectorPicker, MarkedRowsJoinInRowOrder) {
    TJc_Jcryxs_Frm s;
    showActive(&s);
    EXPECT_EQ(s.windowTitle(), QStringLiteral("检查人员显示"));
    TDataSetModel* model = s.Grid()->Model();
    ASSERT_EQ(model->rowCount(), 4) << "the unit's inspectors, also one without an operator row";
    QStringList heads, shown;
    for (int c = 0; c < model->columnCount(); ++c) heads << model->headerData(c, Qt::Horizontal).toString();
    EXPECT_EQ(heads, (QStringList{QStringLiteral("操作员代码"), QStringLiteral("姓名"), QStringLiteral("性别"),
                                  QStringLiteral("检查证号"), QStringLiteral("检查证级别")}));
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(cell(s, r, 0), QString()) << "the first column shows no field";
        shown << cell(s, r, 1);
    }
    shown.sort();
    EXPECT_EQ(shown, (QStringList{"", QStringLiteral("张伟"), QStringLiteral("李娜"), QStringLiteral("王强")}));
    EXPECT_EQ(cell(s, rowOf(s, "JC0104"), 2), QStringLiteral("男"));

    // Marked against row order; the names come in row order.
    const QList<int> rows{rowOf(s, "JC0103"), rowOf(s, "JC0101"), rowOf(s, "JC0102")};
    clickRow(s, rows[0]);
    clickRow(s, rows[1], Qt::ControlModifier);
    clickRow(s, rows[2], Qt::ControlModifier);
    const QString names = joined(s, rows, 1), certificates = joined(s, rows, 3);
    click(&s, "Bbtn_Qr");
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXm, names);
    QStringList three = s.SelXm.split(QStringLiteral("、"));
    three.sort();
    EXPECT_EQ(three, (QStringList{QStringLiteral("张伟"), QStringLiteral("李娜"), QStringLiteral("王强")}));
    EXPECT_EQ(s.SelJczh, certificates);
    EXPECT_FALSE(s.MQry_Jcry->Active()) << "closed with the screen";
}

TEST_P(InspectorPicker, DoubleClickComputesAndConfirmAppendsOnceMore) {
    TJc_Jcryxs_Frm s;
    showActive(&s);
    const QList<int> rows{rowOf(s, "JC0101"), rowOf(s, "JC0102"), rowOf(s, "JC0103")};
    clickRow(s, rows[0]);
    clickRow(s, rows[1], Qt::ControlModifier);
    // Ctrl held: the double click marks the third row, then computes.
    doubleClickRow(s, rows[2], Qt::ControlModifier);
    EXPECT_TRUE(s.isVisible()) << "a double click does not close";
    const QString names = joined(s, rows, 1), certificates = joined(s, rows, 3);
    EXPECT_EQ(s.SelXm, names);
    EXPECT_EQ(s.SelJczh, certificates);

    click(&s, "Bbtn_Qr");
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXm, names + QStringLiteral("、") + names);
    EXPECT_EQ(s.SelJczh, certificates + QStringLiteral("、") + certificates);
}

TEST_P(InspectorPicker, WithoutMarksTheCurrentRowOverwritesAndExitKeepsTheFields) {
    {
        TJc_Jcryxs_Frm s;
        showActive(&s);
        const int row = rowOf(s, "JC0103");
        doubleClickRow(s, row);
        EXPECT_EQ(s.SelXm, QStringLiteral("王强"));
        // Unmarked again, the row stays current: confirming overwrites.
        clickRow(s, row, Qt::ControlModifier);
        ASSERT_TRUE(s.Grid()->SelectedBookmarks().isEmpty());
        click(&s, "Bbtn_Qr");
        EXPECT_EQ(s.result(), QDialog::Accepted);
        EXPECT_EQ(s.SelXm, QStringLiteral("王强"));
        EXPECT_EQ(s.SelJczh, "JC0103");
    }
    {
        // Exit is Cancel; what a double click put there stays for the
        // caller that reads the fields whatever the result.
        TJc_Jcryxs_Frm s;
        showActive(&s);
        doubleClickRow(s, rowOf(s, "JC0101"));
        click(&s, "Bbtn_Quit");
        EXPECT_FALSE(s.isVisible());
        EXPECT_EQ(s.result(), QDialog::Rejected);
        EXPECT_EQ(s.SelXm, QStringLiteral("张伟"));
        EXPECT_EQ(s.SelJczh, "JC0101");
        EXPECT_FALSE(s.MQry_Jcry->Active());
    }
}

TEST_P(InspectorPicker, UnitWithoutInspectorsConfirmsEmptyTexts) {
    Gdw = "09";
    TJc_Jcryxs_Frm s;
    showActive(&s);
    EXPECT_EQ(s.Grid()->Model()->rowCount(), 0);
    click(&s, "Bbtn_Qr");
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.SelXm, QString());
    EXPECT_EQ(s.SelJczh, QString());
}

TARVIN_INSTANTIATE_ENGINES(InspectorPicker);

}  // namespace
