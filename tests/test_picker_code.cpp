// The code picker through its widgets, on both engines, with the texts and
// field lists of its two callers: columns and search keys, searching from
// the start of a column's value, confirming and cancelling, and the
// refusal of a field list whose last entry is not closed.
#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "frame/DBControls.h"
#include "data/DataModules.h"
#include "frame/DataSetModel.h"
#include "pickers/Frm_Jc_CodeSelect.h"
#include "ModuleTest.h"
#include "ScreenHarness.h"
#include "TestDb.h"
#include "frame/Unit_zt_gobal.h"

using namespace tarvin::test;

namespace {

const QString kAreaFields = QStringLiteral("BYQBH:变压器编号|BYQMC:变压器名称|");
const QString kBookFields = QStringLiteral("cbcbh:抄表册编号|cbcmc:抄表册名称|");

class CodePicker : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        // Written out of order, so that the list's order is the text's.
        area("T300", "城东3号公变");
        area("0200", "城南2号公变");
        area("0100", "城南1号公变");
        area("T100", "城东1号公变");
        area("Z001", "兴达机械厂专变", "专变");
        area("0050", "外局1号公变", "公变", "02");
        book("CB02", "城东二册");
        book("CB03", "城西三册");
        book("CB01", "城东一册");
    }

    void area(const char* bh, const char* mc, const char* lx = "公变", const char* dw = "01") {
        db->exec(QStringLiteral("INSERT INTO y_yxbyq (byqbh, byqmc, byqlx, rl, zt, dw) VALUES (?, ?, ?, 315, '运行', ?)"),
                 {QString::fromUtf8(bh), QString::fromUtf8(mc), QString::fromUtf8(lx), QString::fromUtf8(dw)});
    }
    void book(const char* bh, const char* mc) {
        db->exec(QStringLiteral("INSERT INTO b_cbc (cbcbh, cbcmc, cby, dw) VALUES (?, ?, '王丽', '01')"),
                 {QString::fromUtf8(bh), QString::fromUtf8(mc)});
    }

    // Set up as the screening screen's two buttons do.
    static void asAreaPick(TJc_CodeSelect_Frm& s, const QString& dw = Gdw) {
        s.SelectSql = " select byqbh,byqmc from v_gybyq  WHERE  dw='" + dw + "'" + " order BY byqbh  ";
        s.FormTitle = QStringLiteral("公变台区");
        s.DefaultField = 0;
        s.FieldList = kAreaFields;
    }
    static void asBookPick(TJc_CodeSelect_Frm& s) {
        s.SelectSql = " select cbcbh,cbcmc from b_cbc  WHERE  dw='" + Gdw + "'" + " order BY cbcbh  ";
        s.FormTitle = QStringLiteral("抄表册");
        s.DefaultField = 0;
        s.FieldList = kBookFields;
    }

    static TMidasQuery* list() { return Jc_Main_Dm->Mqry_Select; }
    static QString current(const char* field) { return list()->FieldByName(QString::fromLatin1(field)).AsString(); }
    static void clickRow(QTableView* grid, int row, bool twice = false) {
        const QPoint at = grid->visualRect(grid->model()->index(row, 0)).center();
        // As the system delivers a double click: a click, then the double.
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
        if (twice) QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
        settle();
    }
    // Chinese comes in as an input method commits it: one key event with
    // the whole text.
    static void typeText(QWidget* w, const QString& text) {
        bool ascii = true;
        for (QChar c : text) ascii = ascii && c.unicode() < 128;
        if (ascii) return type(w, text);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
        QApplication::sendEvent(w, &key);
        settle();
    }
    static void search(TJc_CodeSelect_Frm& s, const QString& text, bool byEnter = true) {
        s.Edt_Value->clear();
        typeText(s.Edt_Value, text);
        if (byEnter)
            press(s.Edt_Value, Qt::Key_Return);
        else
            click(&s, "btn_Query");
    }

    // Any box the picker shows is recorded instead of waiting for a click.
};

TEST_P(CodePicker, AreaPickSearchesTheCodeColumnFromTheStart) {
    TJc_CodeSelect_Frm s;
    asAreaPick(s);
    showActive(&s);
    EXPECT_EQ(s.windowTitle(), QStringLiteral("公变台区"));
    EXPECT_EQ(QApplication::focusWidget(), s.Edt_Value);
    TDataSetModel* model = s.Grid()->Model();
    ASSERT_EQ(model->columnCount(), 2);
    EXPECT_EQ(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("变压器编号"));
    EXPECT_EQ(model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("变压器名称"));
    EXPECT_EQ(s.Dbg_List->columnWidth(0), 80);
    EXPECT_EQ(s.Dbg_List->columnWidth(1), 210);
    EXPECT_EQ(s.Cob_Field->GetItems(),
              (QStringList{QStringLiteral("BYQBH=变压器编号"), QStringLiteral("BYQMC=变压器名称")}));
    EXPECT_EQ(s.Cob_Field->GetKeyValue(), "BYQBH");
    ASSERT_EQ(model->rowCount(), 4) << "public areas of the unit only";
    EXPECT_EQ(model->index(0, 0).data().toString(), "0100");
    EXPECT_EQ(model->index(3, 0).data().toString(), "T300");

    clickRow(s.Dbg_List, 3);
    ASSERT_EQ(current("BYQBH"), "T300");
    search(s, "0");
    EXPECT_EQ(current("BYQBH"), "0100") << "the first code beginning with 0, in the text's order";
    EXPECT_TRUE(s.isVisible()) << "Enter in the search edit searches, it does not confirm";
    EXPECT_EQ(s.Dbg_List->selectionModel()->selectedRows().value(0).row(), 0) << "the grid shows the row found";
    search(s, "02", false);
    EXPECT_EQ(current("BYQBH"), "0200");

    // Nothing moves for: no match (case matters), leading blanks kept,
    // blanks only.
    for (const QString& text : {QStringLiteral("t1"), QStringLiteral(" T1"), QStringLiteral("   ")}) {
        search(s, text);
        EXPECT_EQ(current("BYQBH"), "0200") << '"' << text.toStdString() << '"';
    }
    search(s, "T1");
    EXPECT_EQ(current("BYQBH"), "T100");

    click(&s, "Bbtn_Qr");
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.ResultCode, "T100");
    EXPECT_EQ(s.ResultName, QStringLiteral("城东1号公变"));
    EXPECT_FALSE(list()->Active()) << "the scratch query is left closed";
}

TEST_P(CodePicker, BookPickSearchesByNameAndConfirmsByDoubleClick) {
    TJc_CodeSelect_Frm s;
    asBookPick(s);
    showActive(&s);
    EXPECT_EQ(s.windowTitle(), QStringLiteral("抄表册"));
    EXPECT_EQ(s.Cob_Field->Keys(), (QStringList{"cbcbh", "cbcmc"}));
    EXPECT_EQ(s.Grid()->Model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("抄表册名称"));
    EXPECT_EQ(s.Grid()->Model()->index(0, 1).data().toString(), QStringLiteral("城东一册"));

    s.Cob_Field->setFocus();
    press(s.Cob_Field, Qt::Key_Down);
    ASSERT_EQ(s.Cob_Field->GetKeyValue(), "cbcmc");
    search(s, QStringLiteral("城西"));
    EXPECT_EQ(current("CBCBH"), "CB03");
    search(s, QStringLiteral("城东"));
    EXPECT_EQ(current("CBCBH"), "CB01");

    clickRow(s.Dbg_List, 1, true);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Accepted);
    EXPECT_EQ(s.ResultCode, "CB02");
    EXPECT_EQ(s.ResultName, QStringLiteral("城东二册"));
}

TEST_P(CodePicker, EmptyListStaysOpenUntilCancelled) {
    TJc_CodeSelect_Frm s;
    asAreaPick(s, "09");
    showActive(&s);
    EXPECT_EQ(s.Grid()->Model()->rowCount(), 0);
    click(&s, "Bbtn_Qr");
    press(s.Dbg_List, Qt::Key_Return);
    QTest::mouseClick(s.Dbg_List->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    QTest::mouseDClick(s.Dbg_List->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    settle();
    search(s, "0");
    EXPECT_TRUE(s.isVisible());
    EXPECT_EQ(s.result(), 0);
    EXPECT_TRUE(s.ResultCode.isEmpty());

    press(s.Edt_Value, Qt::Key_Escape);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.result(), QDialog::Rejected);
    EXPECT_TRUE(list()->Active()) << "a cancel leaves the query to its next user";
}

TEST_P(CodePicker, FieldListWithoutBarsBuildsNoColumnsAndAnUnclosedOneIsRefused) {
    ScriptedMessages messages;
    {
        TJc_CodeSelect_Frm s;
        asAreaPick(s);
        s.FieldList = QStringLiteral("BYQBH:变压器编号");
        showActive(&s);
        EXPECT_FALSE(s.Refused());
        EXPECT_EQ(s.Cob_Field->count(), 0);
        EXPECT_FALSE(s.Grid()->Model()->HasOwnColumns()) << "the grid falls back to the query's fields";
        clickRow(s.Dbg_List, 2);
        search(s, "0");
        EXPECT_EQ(current("BYQBH"), "T100") << "no search column, no search";
        click(&s, "Bbtn_Qr");
        EXPECT_EQ(s.ResultCode, "T100");
    }
    EXPECT_TRUE(messages.texts().isEmpty());

    // Built before any parsing; should the check regress, the guard closes
    // whatever got shown and the checks below fail instead of hanging.
    TJc_CodeSelect_Frm s;
    asAreaPick(s);
    s.FieldList = QStringLiteral("BYQBH:变压器编号|BYQMC:变压器名称");
    bool wasShown = false;
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [&] {
        wasShown = s.isVisible();
        if (wasShown) s.reject();
    });
    guard.start(5000);
    EXPECT_EQ(s.exec(), QDialog::Rejected);
    guard.stop();
    EXPECT_FALSE(wasShown);
    EXPECT_TRUE(s.Refused());
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_TRUE(messages.last().contains(QStringLiteral("“BYQMC:变压器名称”"))) << messages.last().toStdString();
    EXPECT_EQ(messages.shown().front().caption, QStringLiteral("系统提示"));

    s.show();
    settle();
    EXPECT_FALSE(s.isVisible()) << "show() refuses as well";
    EXPECT_EQ(messages.shown().size(), 2u);

    // Trailing blanks after the last "|" leave an unclosed entry too.
    s.FieldList = kAreaFields + "  ";
    EXPECT_EQ(s.FieldListFault(), "  ");
}

TEST_P(CodePicker, ModalCallReturnsTheChoice) {
    // As a caller runs it: modal, answered once the picker is up.
    TJc_CodeSelect_Frm s;
    asBookPick(s);
    onNextModal([](QWidget* modal) {
        auto* picker = qobject_cast<TJc_CodeSelect_Frm*>(modal);
        if (!picker) {
            ADD_FAILURE() << "another dialog came up";
            if (auto* d = qobject_cast<QDialog*>(modal)) d->reject();
            return;
        }
        type(picker->Edt_Value, "CB03");
        press(picker->Edt_Value, Qt::Key_Return);
        click(picker, "Bbtn_Qr");
    });
    EXPECT_EQ(s.exec(), QDialog::Accepted);
    EXPECT_FALSE(s.Refused());
    EXPECT_EQ(s.ResultCode, "CB03");
    EXPECT_EQ(s.ResultName, QStringLiteral("城西三册"));
}

TARVIN_INSTANTIATE_ENGINES(CodePicker);

}  // namespace
