// The customer picker through its widgets on each engine and opener: the
// criteria and their condition texts, the count guard, quotes in typed
// text, code look-ups that fail, and choosing or cancelling.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include "data/DataModules.h"
#include "pickers/Frm_Gy_Qkhbh.h"
#include "ModuleTest.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

class CustomerPicker : public ModuleTest {
protected:
    // Four customers, three meters, customer types and payment methods.
    void SetUp() override {
        ModuleTest::SetUp();
        db->exec(u"INSERT INTO y_khda (hh, hm, yddz, pym, khlx, fkfs, cbcbh, yhh) VALUES "
                 "('0000000123', '王明', '城西区人民路1号', 'CXQ001', '01', 2, 'CB01', 'Y0123'), "
                 "('0000001234', '李王', '城西区解放路8号', 'CXQ002', '02', 1, 'CB01', 'Y1234'), "
                 "('0000000007', '赵六', '城东区人民路9号', 'CDQ001', '01', 2, 'CB02', 'Y0007'), "
                 "('0000000008', 'O''Brien', '城东区''外''街2号', 'CDQ002', '03', 1, 'CB02', 'Y0008')"_s);
        db->exec(u"INSERT INTO y_yxdnb (txm, hh, dnbcch) VALUES ('T1', '0000001234', 'CC1'), ('T2', '0000000007', 'CC1'), "
                 "('T3', '0000000123', 'CC2')"_s);
        db->exec(u"INSERT INTO w_khlx (dm, mc) VALUES ('01', '低压居民'), ('02', '低压非居民'), ('03', '高压')"_s);
        // The code of 坐收 reads as a number only once converted ("02" -> 2).
        db->exec(u"INSERT INTO w_fkfs (dm, mc) VALUES ('1', '走收'), ('02', '坐收'), ('X1', '代扣异常')"_s);
    }

    static QWidget* focused() { return QApplication::focusWidget(); }

    // This box ticked and no other (with the mouse), the focus on its input.
    static void only(TGy_Qkhbh_Frm& s, QCheckBox* box, QWidget* input) {
        for (QCheckBox* b : s.findChildren<QCheckBox*>())
            if (b->isChecked() != (b == box)) click(&s, b->objectName());
        input->setFocus();
    }

    // Typed into the focused control, committed by the input method as
    // Chinese is entered.
    static void enter(const QString& text) {
        QInputMethodEvent e;
        e.setCommitString(text);
        QApplication::sendEvent(focused(), &e);
        settle();
    }
    static void search() { pressFocused(Qt::Key_Return); }
    static void searchBy(TGy_Qkhbh_Frm& s, QCheckBox* box, QWidget* input, const QString& text) {
        only(s, box, input);
        enter(text);
        search();
    }

    // The account numbers the grid shows, sorted.
    static QStringList listed(const TGy_Qkhbh_Frm& s) {
        QStringList out = columnTexts(s.Dbg_Fkhbh);
        out.sort();
        return out;
    }
    static QString listSql() { return Gy_Khcx_Dm->Mqry_Fkhbh->SQL().Text(); }
    static QString where(const QString& condition) { return u"select *  from Y_KHDA  where "_s + condition; }

    struct Criterion {
        QCheckBox* box;
        QWidget* input;
        QString typed, condition;
        QStringList rows;
    };
    // Each criterion alone, typed into its empty input: its condition and
    // the customers found.
    static void eachAlone(TGy_Qkhbh_Frm& s, const QList<Criterion>& criteria) {
        for (const Criterion& c : criteria) {
            SCOPED_TRACE(c.box->objectName().toStdString());
            searchBy(s, c.box, c.input, c.typed);
            EXPECT_EQ(listSql(), where(c.condition));
            EXPECT_EQ(listed(s), c.rows);
        }
    }
};

// A type typed wrong is refused and corrected where the focus is put back;
// the row moved to with the arrow key is the one confirmed.
TEST_P(CustomerPicker, MainFlowByKeysWithRealBoxes) {
    TGy_Qkhbh_Frm s;
    showActive(&s);
    RealMessageBoxes boxes;
    boxes.expect(u"客户类型“居民”在代码表中没有对应的代码，无法按客户类型查询。\n"
                 "请从下拉列表中选择客户类型，或请系统管理员在代码表中补上该客户类型。"_s);
    s.Ckb_khlx->setFocus();
    pressFocused(Qt::Key_Space);
    enter(u"居民"_s);
    search();
    ASSERT_EQ(focused(), s.Cob_khlx);
    pressFocused(Qt::Key_Home);
    enter(u"低压"_s);
    search();
    ASSERT_EQ(listed(s), (QStringList{u"0000000007"_s, u"0000000123"_s}));
    s.Dbg_Fkhbh->setFocus();
    pressFocused(Qt::Key_Down);
    const QString second = s.Dbg_Fkhbh->currentIndex().siblingAtColumn(0).data().toString();
    s.Bbtn_Qr->setFocus();
    pressFocused(Qt::Key_Return);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(s.sKhbh, second);
}

TEST_P(CustomerPicker, AccountNumberIsPaddedAndANameWithALaterCriterionIsASubstring) {
    TGy_Qkhbh_Frm s;
    showActive(&s);
    for (QWidget* input : s.findChildren<QLineEdit*>()) EXPECT_FALSE(input->isEnabled());
    searchBy(s, s.Ckb_Hh, s.Edt_Hh, u"123"_s);
    EXPECT_EQ(s.Edt_Hh->text(), u"0000000123"_s);
    EXPECT_EQ(listed(s), QStringList{u"0000000123"_s});

    s.Edt_Hh->setFocus();
    s.Edt_Hh->selectAll();
    enter(u"12345678901"_s);
    search();
    EXPECT_EQ(s.Edt_Hh->text(), u"12345678901"_s);
    EXPECT_TRUE(listed(s).isEmpty());

    // Unticked: the input is disabled and the focus goes on past it.
    click(&s, u"Ckb_Hh"_s);
    EXPECT_FALSE(s.Edt_Hh->isEnabled());
    EXPECT_EQ(focused(), s.Ckb_hm);

    // A name alone is a prefix; with a criterion later in the order too, a
    // substring. A ticked identity card adds nothing, and alone is no search.
    searchBy(s, s.Ckb_hm, s.Edt_hm, u"王"_s);
    click(&s, u"Ckb_yddz"_s);
    enter(u"城西"_s);
    click(&s, u"CkB_sfz"_s);
    enter(u"110101199001011234"_s);
    search();
    EXPECT_EQ(listSql(), where(u"YDDZ like '城西%' and HM like '%王%'"_s));
    EXPECT_EQ(listed(s), (QStringList{u"0000000123"_s, u"0000001234"_s})) << "王明 and 李王 in 城西";
    Gy_Khcx_Dm->Mqry_Fkhbh->Close();
    only(s, s.CkB_sfz, s.Edt_sfz);
    search();
    EXPECT_FALSE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
}

TEST_P(CustomerPicker, ConditionTextsKeepEachCriterionsConnector) {
    TGy_Qkhbh_Frm s;
    showActive(&s);
    const QList<Criterion> criteria{
        {s.Ckb_ccbh, s.Edt_dnbcch, u"CC1"_s, u" HH in (select HH from Y_YXDNB where DNBCCH='CC1')"_s,
         {u"0000000007"_s, u"0000001234"_s}},
        {s.Ckb_Hh, s.Edt_Hh, u"1234"_s, u"Hh = '0000001234'"_s, {u"0000001234"_s}},
        {s.Ckb_hm, s.Edt_hm, u"王"_s, u"HM like '王%'"_s, {u"0000000123"_s}},
        {s.Ckb_cbc, s.Edt_cbc, u"CB01"_s, u"CBCBH='CB01'"_s, {u"0000000123"_s, u"0000001234"_s}},
        {s.Ckb_yddz, s.Edt_yddz, u"城西"_s, u"YDDZ like '城西%'"_s, {u"0000000123"_s, u"0000001234"_s}},
        {s.Ckb_dah, s.Edt_dah, u"Y1234"_s, u"YHH='Y1234'"_s, {u"0000001234"_s}},
        {s.Ckb_khlx, s.Cob_khlx, u"低压非居民"_s, u"KHLX='02'"_s, {u"0000001234"_s}},
        {s.Ckb_dzm, s.Edt_Dzm, u"cxq"_s, u"PYM like 'CXQ%'"_s, {u"0000000123"_s, u"0000001234"_s}},
        {s.Ckb_zfdffs, s.Cob_zfdffs, u"走收"_s, u"FKFS=1"_s, {u"0000000008"_s, u"0000001234"_s}},
    };
    eachAlone(s, criteria);
    // All at once: the meter serial stands first, every later criterion has
    // its own connector, the name is matched anywhere, the address code is
    // upper-cased and the payment code is numeric.
    for (const Criterion& c : criteria)
        if (!c.box->isChecked()) click(&s, c.box->objectName());
    click(&s, u"Bbtn_Cx"_s);
    EXPECT_EQ(listSql(), where(u" HH in (select HH from Y_YXDNB where DNBCCH='CC1') and Hh = '0000001234' and HM like "
                               "'%王%' and  CBCBH='CB01' and  YDDZ like '城西%' and  YHH='Y1234' and  KHLX='02' and  PYM "
                               "like 'CXQ%' and FKFS=1"_s));
    EXPECT_EQ(listed(s), QStringList{u"0000001234"_s});
}

TEST_P(CustomerPicker, ThousandAreListedAndOneMoreKeepsThePreviousList) {
    db->exec(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000) "
             "INSERT INTO y_khda (hh, hm, yddz) SELECT CAST(9000000000 + i AS VARCHAR(10)), '批量' || i, "
             "'新区大道' || i || '号' FROM n"_s);
    TGy_Qkhbh_Frm s;
    showActive(&s);
    searchBy(s, s.Ckb_yddz, s.Edt_yddz, u"新区大道"_s);
    EXPECT_EQ(listed(s).size(), 1000);

    db->exec(u"INSERT INTO y_khda (hh, hm, yddz) VALUES ('9100000000', '多一户', '新区大道甲1号')"_s);
    s.Edt_yddz->setFocus();
    search();
    EXPECT_EQ(boxes.texts(), QStringList{u"查出的客户数量过大,请输入更详细的信息供查询!"_s});
    boxes.clear();
    EXPECT_EQ(listed(s).size(), 1000);

    s.Edt_yddz->setFocus();
    s.Edt_yddz->end(false);
    enter(u"甲"_s);
    search();
    EXPECT_EQ(listed(s), QStringList{u"9100000000"_s});
}

TEST_P(CustomerPicker, TypedTextIsSearchedAsTyped) {
    TGy_Qkhbh_Frm s;
    showActive(&s);
    eachAlone(s, {
        {s.Ckb_hm, s.Edt_hm, u"O'B"_s, u"HM like 'O''B%'"_s, {u"0000000008"_s}},
        {s.Ckb_yddz, s.Edt_yddz, u"城东区'外"_s, u"YDDZ like '城东区''外%'"_s, {u"0000000008"_s}},
        // Text that would rewrite an unquoted statement matches nothing.
        {s.Ckb_cbc, s.Edt_cbc, u"x' or '1'='1"_s, u"CBCBH='x'' or ''1''=''1'"_s, {}},
        {s.Ckb_ccbh, s.Edt_dnbcch, u"C'1"_s, u" HH in (select HH from Y_YXDNB where DNBCCH='C''1')"_s, {}},
        // The payment code "02" goes in as the number 2.
        {s.Ckb_zfdffs, s.Cob_zfdffs, u"坐收"_s, u"FKFS=2"_s, {u"0000000007"_s, u"0000000123"_s}},
    });
}

// The refusal is an error box; no search runs, the list stays and the focus
// goes back to the name to correct. A quote in the name is looked up as typed.
TEST_P(CustomerPicker, NamesWithoutAUsableCodeAreRefusedWithoutSearching) {
    TGy_Qkhbh_Frm s;
    showActive(&s);
    searchBy(s, s.Ckb_hm, s.Edt_hm, u"王"_s);
    const struct {
        QCheckBox* box;
        QComboBox* input;
        QString typed, told;
    } refused[] = {
        {s.Ckb_khlx, s.Cob_khlx, u"无此类型"_s, u"客户类型“无此类型”在代码表中没有对应的代码"_s},
        {s.Ckb_zfdffs, s.Cob_zfdffs, u"无此方式"_s, u"付款方式“无此方式”在代码表中没有对应的代码"_s},
        {s.Ckb_zfdffs, s.Cob_zfdffs, u"代扣异常"_s, u"付款方式“代扣异常”的代码“X1”不是整数"_s},
        {s.Ckb_khlx, s.Cob_khlx, u"低压'居民"_s, u"客户类型“低压'居民”在代码表中没有对应的代码"_s},
    };
    for (const auto& r : refused) {
        only(s, r.box, r.input);
        r.input->clearEditText();
        enter(r.typed);
        search();
        ASSERT_EQ(boxes.shown().size(), 1u);
        EXPECT_EQ(boxes.shown()[0].icon, QMessageBox::Critical);
        EXPECT_TRUE(boxes.last().startsWith(r.told)) << boxes.last().toStdString();
        boxes.clear();
        EXPECT_EQ(listSql(), where(u"HM like '王%'"_s));
        EXPECT_EQ(listed(s), QStringList{u"0000000123"_s});
        EXPECT_EQ(focused(), r.input);
    }
}

TEST_P(CustomerPicker, CombosAreFilledOnceWhenFirstDroppedDown) {
    TGy_Qkhbh_Frm s;
    showActive(&s);
    click(&s, u"Ckb_khlx"_s);
    enter(u"高"_s);
    press(s.Cob_khlx, Qt::Key_F4);
    QStringList items;
    for (int i = 0; i < s.Cob_khlx->count(); ++i) items << s.Cob_khlx->itemText(i);
    EXPECT_EQ(items, (QStringList{u"低压居民"_s, u"低压非居民"_s, u"高压"_s}));
    EXPECT_EQ(s.Cob_khlx->currentText(), u"高"_s) << "the typed text stays";

    // Chosen from the list with the mouse, then searched.
    clickRow(s.Cob_khlx->view(), 0);
    s.Cob_khlx->setFocus();
    search();
    EXPECT_EQ(listed(s), (QStringList{u"0000000007"_s, u"0000000123"_s}));

    // Not read again: a type added later is not offered.
    db->exec(u"INSERT INTO w_khlx (dm, mc) VALUES ('04', '临时用电')"_s);
    press(s.Cob_khlx, Qt::Key_F4);
    EXPECT_EQ(s.Cob_khlx->count(), 3);
    s.Cob_khlx->hidePopup();
    click(&s, u"Ckb_zfdffs"_s);
    press(s.Cob_zfdffs, Qt::Key_F4);
    EXPECT_GE(s.Cob_zfdffs->findText(u"代扣异常"_s), 0);
    s.Cob_zfdffs->hidePopup();
    settle();
}

TEST_P(CustomerPicker, EmptyConfirmDoubleClickCancelAndEscape) {
    for (const QString& name : {u"无此人"_s, QString()}) {
        // Confirmed with an empty list, or none: no result.
        TGy_Qkhbh_Frm s;
        showActive(&s);
        if (!name.isEmpty()) searchBy(s, s.Ckb_hm, s.Edt_hm, name);
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_FALSE(s.isVisible());
        EXPECT_TRUE(s.sKhbh.isEmpty());
        EXPECT_FALSE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
    }
    {
        // As the system delivers a double click: a click, then the double.
        TGy_Qkhbh_Frm s;
        showActive(&s);
        searchBy(s, s.Ckb_cbc, s.Edt_cbc, u"CB01"_s);
        const QString hh = s.Dbg_Fkhbh->model()->index(1, 0).data().toString();
        clickRow(s.Dbg_Fkhbh, 1, {}, true, 1);
        EXPECT_EQ(s.sKhbh, hh);
        EXPECT_FALSE(s.isVisible());
    }
    // Cancel, and Escape, clear the result and close the list.
    for (bool byEscape : {false, true}) {
        TGy_Qkhbh_Frm s;
        showActive(&s);
        searchBy(s, s.Ckb_cbc, s.Edt_cbc, u"CB01"_s);
        s.sKhbh = u"0000000001"_s;
        byEscape ? pressFocused(Qt::Key_Escape) : click(&s, u"Bbtn_Quit"_s);
        EXPECT_TRUE(s.sKhbh.isEmpty());
        EXPECT_FALSE(s.isVisible());
        EXPECT_FALSE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
    }
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(CustomerPicker);

}  // namespace
