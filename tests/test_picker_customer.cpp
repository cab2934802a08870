// The customer picker through its widgets on both engines: the criteria and
// their condition texts, the count guard, quotes in typed text, code
// look-ups that fail, and choosing or cancelling.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>
#include <memory>

#include "data/DataModules.h"
#include "DemoGenerator.h"
#include "pickers/Frm_Gy_Qkhbh.h"
#include "ModuleTest.h"
#include "ScreenHarness.h"
#include "TestDb.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;
using tarvin::sql::Dialect;

namespace {

class CustomerPicker : public ModuleTest {
protected:

    void customer(const QString& hh, const QString& hm, const QString& yddz, const QString& pym = {},
                  const QString& khlx = {}, const QVariant& fkfs = {}, const QString& cbcbh = {},
                  const QString& yhh = {}) {
        db->exec(u"INSERT INTO y_khda (hh, hm, yddz, pym, khlx, fkfs, cbcbh, yhh) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
                 {hh, hm, yddz, pym, khlx, fkfs, cbcbh, yhh});
    }

    // Four customers, two meters, customer types and payment methods.
    void fixture() {
        customer(u"0000000123"_s, u"王明"_s, u"城西区人民路1号"_s, u"CXQ001"_s, u"01"_s, 2, u"CB01"_s, u"Y0123"_s);
        customer(u"0000001234"_s, u"李王"_s, u"城西区解放路8号"_s, u"CXQ002"_s, u"02"_s, 1, u"CB01"_s, u"Y1234"_s);
        customer(u"0000000007"_s, u"赵六"_s, u"城东区人民路9号"_s, u"CDQ001"_s, u"01"_s, 2, u"CB02"_s, u"Y0007"_s);
        customer(u"0000000008"_s, u"O'Brien"_s, u"城东区'外'街2号"_s, u"CDQ002"_s, u"03"_s, 1, u"CB02"_s, u"Y0008"_s);
        db->exec(u"INSERT INTO y_yxdnb (txm, hh, dnbcch) VALUES ('T1', '0000001234', 'CC1'), ('T2', '0000000007', 'CC1'), "
                 "('T3', '0000000123', 'CC2')"_s);
        db->exec(u"INSERT INTO w_khlx (dm, mc) VALUES ('01', '低压居民'), ('02', '低压非居民'), ('03', '高压')"_s);
        // The code of 坐收 reads as a number only once converted ("02" -> 2).
        db->exec(u"INSERT INTO w_fkfs (dm, mc) VALUES ('1', '走收'), ('02', '坐收'), ('X1', '代扣异常')"_s);
    }

    // Customers 9000000001.. with the address 新区大道<n>号, in one statement.
    void bulk(int n) {
        if (dialect() == Dialect::SQLite)
            db->exec(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                     "INSERT INTO y_khda (hh, hm, yddz) SELECT '9' || substr('000000000' || i, -9), '批量' || i, "
                     "'新区大道' || i || '号' FROM n"_s.arg(n));
        else
            db->exec(u"INSERT INTO y_khda (hh, hm, yddz) SELECT '9' || lpad(i::text, 9, '0'), '批量' || i, "
                     "'新区大道' || i || '号' FROM generate_series(1, %1) AS i"_s.arg(n));
    }

    static QWidget* focused() { return QApplication::focusWidget(); }

    // Ticks (or unticks) the box with the mouse; a ticked box hands the
    // focus to its input, which must then be the focused control.
    static void tick(TGy_Qkhbh_Frm& s, const QString& box, QWidget* input) {
        click(&s, box);
        if (find<QCheckBox>(&s, box)->isChecked()) {
            EXPECT_EQ(focused(), input) << box.toStdString();
        }
    }

    // Typed into the focused control: ASCII as key presses, other text
    // committed by the input method, as Chinese is entered.
    static void enter(const QString& text) {
        QWidget* w = focused();
        ASSERT_NE(w, nullptr);
        for (QChar c : text) {
            if (c.unicode() < 128) {
                QTest::keyClick(w, c.toLatin1());
            } else {
                QInputMethodEvent e;
                e.setCommitString(QString(c));
                QApplication::sendEvent(w, &e);
            }
        }
        settle();
    }

    static void search() { press(focused(), Qt::Key_Return); }

    // The account numbers the grid shows, in order.
    static QStringList listed(const TGy_Qkhbh_Frm& s) {
        QStringList out;
        const QAbstractItemModel* m = s.Dbg_Fkhbh->model();
        for (int r = 0; r < m->rowCount(); ++r) out << m->index(r, 0).data().toString();
        return out;
    }
    static QString listSql() { return Gy_Khcx_Dm->Mqry_Fkhbh->SQL().Text(); }
    static QString where(const QString& condition) { return u"select *  from Y_KHDA  where "_s + condition; }

};

TEST_P(CustomerPicker, AccountNumberIsPaddedAndEnterSearches) {
    fixture();
    TGy_Qkhbh_Frm s;
    showActive(&s);
    EXPECT_EQ(s.objectName(), u"Gy_Qkhbh_Frm"_s);
    EXPECT_EQ(s.windowTitle(), u"查询客户编号"_s);
    EXPECT_EQ(s.Ckb_dzm->text(), u"地 址 码"_s);
    EXPECT_EQ(s.Bbtn_Cx->text(), u"查询(&R)"_s);
    const QAbstractItemModel* m = s.Dbg_Fkhbh->model();
    ASSERT_EQ(m->columnCount(), 3);
    EXPECT_EQ(m->headerData(0, Qt::Horizontal).toString() + m->headerData(1, Qt::Horizontal).toString() +
                  m->headerData(2, Qt::Horizontal).toString(),
              u"客户编号户名用电地址"_s);
    for (QWidget* input : {static_cast<QWidget*>(s.Edt_Hh), static_cast<QWidget*>(s.Edt_sfz),
                           static_cast<QWidget*>(s.Cob_khlx), static_cast<QWidget*>(s.Cob_zfdffs)})
        EXPECT_FALSE(input->isEnabled()) << input->objectName().toStdString();

    tick(s, u"Ckb_Hh"_s, s.Edt_Hh);
    EXPECT_TRUE(s.Edt_Hh->isEnabled());
    enter(u"123"_s);
    search();
    EXPECT_EQ(s.Edt_Hh->text(), u"0000000123"_s);
    EXPECT_EQ(listed(s), QStringList{u"0000000123"_s});
    EXPECT_EQ(listSql(), where(u"Hh = '0000000123'"_s));
    EXPECT_EQ(Gy_Khcx_Dm->Mqry_Select->SQL().Text(), u"select count(HH) JLS from Y_KHDA  where Hh = '0000000123'"_s);

    // Longer than ten characters: kept as typed, and nothing matches.
    s.Edt_Hh->setFocus();
    s.Edt_Hh->selectAll();
    enter(u"12345678901"_s);
    search();
    EXPECT_EQ(s.Edt_Hh->text(), u"12345678901"_s);
    EXPECT_TRUE(listed(s).isEmpty());

    // Unticked: the input is disabled and the focus goes on past it.
    tick(s, u"Ckb_Hh"_s, nullptr);
    EXPECT_FALSE(s.Edt_Hh->isEnabled());
    EXPECT_EQ(focused(), s.Ckb_hm);
}

TEST_P(CustomerPicker, ConditionTextsKeepEachCriterionsConnector) {
    fixture();
    ScriptedMessages messages;
    TGy_Qkhbh_Frm s;
    showActive(&s);

    // Every criterion at once: the meter serial stands first, every later
    // criterion has its own connector, the name is matched anywhere, the
    // address code is upper-cased and the payment code is numeric.
    tick(s, u"Ckb_ccbh"_s, s.Edt_dnbcch);
    enter(u"CC1"_s);
    tick(s, u"Ckb_Hh"_s, s.Edt_Hh);
    enter(u"1234"_s);
    tick(s, u"Ckb_hm"_s, s.Edt_hm);
    enter(u"王"_s);
    tick(s, u"Ckb_cbc"_s, s.Edt_cbc);
    enter(u"CB01"_s);
    tick(s, u"Ckb_yddz"_s, s.Edt_yddz);
    enter(u"城西"_s);
    tick(s, u"Ckb_dah"_s, s.Edt_dah);
    enter(u"Y1234"_s);
    tick(s, u"Ckb_khlx"_s, s.Cob_khlx);
    enter(u"低压非居民"_s);
    tick(s, u"Ckb_dzm"_s, s.Edt_Dzm);
    enter(u"cxq"_s);
    tick(s, u"Ckb_zfdffs"_s, s.Cob_zfdffs);
    enter(u"走收"_s);
    search();  // Enter in a combo searches too
    EXPECT_EQ(listSql(), where(u" HH in (select HH from Y_YXDNB where DNBCCH='CC1') and Hh = '0000001234' and HM like "
                               "'%王%' and  CBCBH='CB01' and  YDDZ like '城西%' and  YHH='Y1234' and  KHLX='02' and  PYM "
                               "like 'CXQ%' and FKFS=1"_s));
    EXPECT_EQ(listed(s), QStringList{u"0000001234"_s});
    EXPECT_TRUE(messages.shown().empty()) << messages.last().toStdString();

    // Each criterion alone, in its first form.
    const struct {
        const char* box;
        QString condition;
        QStringList rows;
    } alone[] = {
        {"Ckb_ccbh", u" HH in (select HH from Y_YXDNB where DNBCCH='CC1')"_s, {u"0000000007"_s, u"0000001234"_s}},
        {"Ckb_Hh", u"Hh = '0000001234'"_s, {u"0000001234"_s}},
        {"Ckb_hm", u"HM like '王%'"_s, {u"0000000123"_s}},
        {"Ckb_cbc", u"CBCBH='CB01'"_s, {u"0000000123"_s, u"0000001234"_s}},
        {"Ckb_yddz", u"YDDZ like '城西%'"_s, {u"0000000123"_s, u"0000001234"_s}},
        {"Ckb_dah", u"YHH='Y1234'"_s, {u"0000001234"_s}},
        {"Ckb_khlx", u"KHLX='02'"_s, {u"0000001234"_s}},
        {"Ckb_dzm", u"PYM like 'CXQ%'"_s, {u"0000000123"_s, u"0000001234"_s}},
        {"Ckb_zfdffs", u"FKFS=1"_s, {u"0000000008"_s, u"0000001234"_s}},
    };
    for (const auto& a : alone) {
        SCOPED_TRACE(a.box);
        for (QCheckBox* b : s.findChildren<QCheckBox*>())
            if (b->isChecked() != (b->objectName() == QLatin1String(a.box))) click(&s, b->objectName());
        click(&s, u"Bbtn_Cx"_s);
        EXPECT_EQ(listSql(), where(a.condition));
        QStringList rows = listed(s);
        rows.sort();
        EXPECT_EQ(rows, a.rows);
    }

    // The payment code "02" goes in as the number 2.
    s.Cob_zfdffs->setFocus();
    s.Cob_zfdffs->lineEdit()->selectAll();
    enter(u"坐收"_s);
    search();
    EXPECT_EQ(listSql(), where(u"FKFS=2"_s));
    EXPECT_EQ(listed(s).size(), 2);
    EXPECT_TRUE(messages.shown().empty()) << messages.last().toStdString();
}

// A name alone is a prefix; with any other criterion, before or after it in
// the order, a substring.
TEST_P(CustomerPicker, NameIsAPrefixAloneAndASubstringWithAnotherCriterion) {
    fixture();
    TGy_Qkhbh_Frm s;
    showActive(&s);
    tick(s, u"Ckb_hm"_s, s.Edt_hm);
    enter(u"王"_s);
    search();
    EXPECT_EQ(listed(s), QStringList{u"0000000123"_s});

    tick(s, u"Ckb_ccbh"_s, s.Edt_dnbcch);
    enter(u"CC1"_s);
    search();
    EXPECT_EQ(listSql(), where(u" HH in (select HH from Y_YXDNB where DNBCCH='CC1') and HM like '%王%'"_s));
    EXPECT_EQ(listed(s), QStringList{u"0000001234"_s}) << "李王 contains the name";
    tick(s, u"Ckb_ccbh"_s, nullptr);

    tick(s, u"Ckb_yddz"_s, s.Edt_yddz);
    enter(u"城西"_s);
    search();
    EXPECT_EQ(listSql(), where(u"YDDZ like '城西%' and HM like '%王%'"_s));
    QStringList both = listed(s);
    both.sort();
    EXPECT_EQ(both, (QStringList{u"0000000123"_s, u"0000001234"_s})) << "王明 and 李王 in 城西";

    // A ticked identity card with a number changes nothing; alone it is no
    // search at all.
    tick(s, u"CkB_sfz"_s, s.Edt_sfz);
    enter(u"110101199001011234"_s);
    search();
    EXPECT_EQ(listSql(), where(u"YDDZ like '城西%' and HM like '%王%'"_s));
    EXPECT_EQ(listed(s).size(), 2);
    tick(s, u"Ckb_hm"_s, nullptr);
    tick(s, u"Ckb_yddz"_s, nullptr);
    Gy_Khcx_Dm->Mqry_Fkhbh->Close();
    s.Bbtn_Cx->click();
    EXPECT_FALSE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
}

TEST_P(CustomerPicker, ThousandAreListedAndOneMoreKeepsThePreviousList) {
    bulk(1000);
    ScriptedMessages messages;
    TGy_Qkhbh_Frm s;
    showActive(&s);
    tick(s, u"Ckb_yddz"_s, s.Edt_yddz);
    enter(u"新区大道"_s);
    search();
    EXPECT_EQ(listed(s).size(), 1000);
    EXPECT_TRUE(messages.shown().empty());

    customer(u"9100000000"_s, u"多一户"_s, u"新区大道甲1号"_s);
    s.Edt_yddz->setFocus();
    search();
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_EQ(messages.shown()[0].caption, u"提示"_s);
    EXPECT_EQ(messages.shown()[0].text, u"查出的客户数量过大,请输入更详细的信息供查询!"_s);
    const QStringList shown = listed(s);
    EXPECT_EQ(shown.size(), 1000);
    EXPECT_FALSE(shown.contains(u"9100000000"_s));
    EXPECT_EQ(listSql(), where(u"YDDZ like '新区大道%'"_s));

    // Narrower again: listed.
    s.Edt_yddz->setFocus();
    s.Edt_yddz->end(false);
    enter(u"甲"_s);
    search();
    EXPECT_EQ(listed(s), QStringList{u"9100000000"_s});
}

TEST_P(CustomerPicker, TypedQuotesAreSearchedAsTyped) {
    fixture();
    ScriptedMessages messages;
    TGy_Qkhbh_Frm s;
    showActive(&s);
    tick(s, u"Ckb_hm"_s, s.Edt_hm);
    enter(u"O'B"_s);
    search();
    EXPECT_EQ(listSql(), where(u"HM like 'O''B%'"_s));
    EXPECT_EQ(listed(s), QStringList{u"0000000008"_s});
    tick(s, u"Ckb_hm"_s, nullptr);

    // Text that would rewrite an unquoted statement matches nothing.
    tick(s, u"Ckb_yddz"_s, s.Edt_yddz);
    enter(u"x' or '1'='1"_s);
    search();
    EXPECT_TRUE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
    EXPECT_TRUE(listed(s).isEmpty());
    s.Edt_yddz->setFocus();
    s.Edt_yddz->selectAll();
    enter(u"城东区'外"_s);
    search();
    EXPECT_EQ(listed(s), QStringList{u"0000000008"_s});

    // Inside the meter-serial subquery, and in a combo's name too.
    tick(s, u"Ckb_yddz"_s, nullptr);
    tick(s, u"Ckb_ccbh"_s, s.Edt_dnbcch);
    enter(u"C'1"_s);
    search();
    EXPECT_EQ(listSql(), where(u" HH in (select HH from Y_YXDNB where DNBCCH='C''1')"_s));
    EXPECT_TRUE(messages.shown().empty()) << messages.last().toStdString();
    tick(s, u"Ckb_ccbh"_s, nullptr);
    tick(s, u"Ckb_khlx"_s, s.Cob_khlx);
    enter(u"低压'居民"_s);
    search();
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_TRUE(messages.last().contains(u"低压'居民"_s)) << messages.last().toStdString();
}

TEST_P(CustomerPicker, NamesWithoutAUsableCodeAreRefusedWithoutSearching) {
    fixture();
    ScriptedMessages messages;
    TGy_Qkhbh_Frm s;
    showActive(&s);
    tick(s, u"Ckb_hm"_s, s.Edt_hm);
    enter(u"王"_s);
    search();
    ASSERT_EQ(listed(s), QStringList{u"0000000123"_s});

    tick(s, u"Ckb_khlx"_s, s.Cob_khlx);
    enter(u"无此类型"_s);
    search();
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_EQ(messages.shown()[0].caption, u"系统提示"_s);
    EXPECT_EQ(messages.shown()[0].icon, QMessageBox::Critical);
    EXPECT_TRUE(messages.last().contains(u"客户类型“无此类型”"_s)) << messages.last().toStdString();
    EXPECT_EQ(listSql(), where(u"HM like '王%'"_s)) << "no search ran";
    EXPECT_EQ(listed(s), QStringList{u"0000000123"_s});
    EXPECT_EQ(focused(), s.Cob_khlx);
    tick(s, u"Ckb_khlx"_s, nullptr);

    messages.clear();
    tick(s, u"Ckb_zfdffs"_s, s.Cob_zfdffs);
    enter(u"无此方式"_s);
    search();
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_TRUE(messages.last().contains(u"付款方式“无此方式”"_s)) << messages.last().toStdString();

    messages.clear();
    s.Cob_zfdffs->setFocus();
    s.Cob_zfdffs->lineEdit()->selectAll();
    enter(u"代扣异常"_s);
    search();
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_TRUE(messages.last().contains(u"X1"_s)) << messages.last().toStdString();
    EXPECT_EQ(listSql(), where(u"HM like '王%'"_s));
    EXPECT_EQ(focused(), s.Cob_zfdffs);
}

TEST_P(CustomerPicker, CombosAreFilledOnceWhenFirstDroppedDown) {
    fixture();
    TGy_Qkhbh_Frm s;
    showActive(&s);
    EXPECT_EQ(s.Cob_khlx->count(), 0);
    tick(s, u"Ckb_khlx"_s, s.Cob_khlx);
    enter(u"高"_s);
    press(s.Cob_khlx, Qt::Key_F4);
    QStringList items;
    for (int i = 0; i < s.Cob_khlx->count(); ++i) items << s.Cob_khlx->itemText(i);
    EXPECT_EQ(items, (QStringList{u"低压居民"_s, u"低压非居民"_s, u"高压"_s}));
    EXPECT_EQ(s.Cob_khlx->currentText(), u"高"_s) << "the typed text stays";

    // Choosing from the list with the mouse, then searching.
    QAbstractItemView* view = s.Cob_khlx->view();
    const QRect item = view->visualRect(view->model()->index(0, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, item.center());
    settle();
    EXPECT_EQ(s.Cob_khlx->currentText(), u"低压居民"_s);
    s.Cob_khlx->setFocus();
    search();
    QStringList rows = listed(s);
    rows.sort();
    EXPECT_EQ(rows, (QStringList{u"0000000007"_s, u"0000000123"_s}));

    // Not read again: a type added later is not offered.
    db->exec(u"INSERT INTO w_khlx (dm, mc) VALUES ('04', '临时用电')"_s);
    press(s.Cob_khlx, Qt::Key_F4);
    EXPECT_EQ(s.Cob_khlx->count(), 3);
    s.Cob_khlx->hidePopup();

    tick(s, u"Ckb_zfdffs"_s, s.Cob_zfdffs);
    press(s.Cob_zfdffs, Qt::Key_F4);
    EXPECT_EQ(s.Cob_zfdffs->count(), 3);
    EXPECT_GE(s.Cob_zfdffs->findText(u"代扣异常"_s), 0);
    s.Cob_zfdffs->hidePopup();
    settle();
}

TEST_P(CustomerPicker, ConfirmDoubleClickAndCancelSetTheResult) {
    fixture();
    {
        // Confirm with no list, and with an empty one.
        TGy_Qkhbh_Frm s;
        showActive(&s);
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_FALSE(s.isVisible());
        EXPECT_TRUE(s.sKhbh.isEmpty());
    }
    {
        TGy_Qkhbh_Frm s;
        showActive(&s);
        tick(s, u"Ckb_hm"_s, s.Edt_hm);
        enter(u"无此人"_s);
        search();
        EXPECT_TRUE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_TRUE(s.sKhbh.isEmpty());
        EXPECT_FALSE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
    }
    const auto cellCentre = [](TGy_Qkhbh_Frm& s, int row) {
        return s.Dbg_Fkhbh->visualRect(s.Dbg_Fkhbh->model()->index(row, 1)).center();
    };
    QString second;
    {
        // The row clicked in the grid is the one confirmed.
        TGy_Qkhbh_Frm s;
        showActive(&s);
        tick(s, u"Ckb_cbc"_s, s.Edt_cbc);
        enter(u"CB01"_s);
        search();
        const QStringList rows = listed(s);
        ASSERT_EQ(rows.size(), 2);
        second = rows[1];
        QTest::mouseClick(s.Dbg_Fkhbh->viewport(), Qt::LeftButton, {}, cellCentre(s, 1));
        settle();
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_EQ(s.sKhbh, second);
        EXPECT_FALSE(s.isVisible());
        EXPECT_FALSE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());
    }
    {
        // A double click confirms the row.
        TGy_Qkhbh_Frm s;
        showActive(&s);
        tick(s, u"Ckb_cbc"_s, s.Edt_cbc);
        enter(u"CB01"_s);
        search();
        // As the system delivers one: a click, then the double click.
        QTest::mouseClick(s.Dbg_Fkhbh->viewport(), Qt::LeftButton, {}, cellCentre(s, 1));
        QTest::mouseDClick(s.Dbg_Fkhbh->viewport(), Qt::LeftButton, {}, cellCentre(s, 1));
        settle();
        EXPECT_EQ(s.sKhbh, second);
        EXPECT_FALSE(s.isVisible());
    }
    {
        // Cancel, and Escape, clear the result and close the list.
        TGy_Qkhbh_Frm s;
        showActive(&s);
        tick(s, u"Ckb_cbc"_s, s.Edt_cbc);
        enter(u"CB01"_s);
        search();
        s.sKhbh = u"0000000001"_s;
        click(&s, u"Bbtn_Quit"_s);
        EXPECT_TRUE(s.sKhbh.isEmpty());
        EXPECT_FALSE(s.isVisible());
        EXPECT_FALSE(Gy_Khcx_Dm->Mqry_Fkhbh->Active());

        showActive(&s);
        s.sKhbh = u"0000000001"_s;
        press(focused(), Qt::Key_Escape);
        EXPECT_TRUE(s.sKhbh.isEmpty());
        EXPECT_FALSE(s.isVisible());
    }
}

// On demo data: what the picker lists is what the database holds, and the
// picture of the picker with a result.
TEST_P(CustomerPicker, DemoNamePrefixListsWhatTheDatabaseHolds) {
    if (dialect() != Dialect::SQLite) GTEST_SKIP() << "the demo picture is taken on SQLite";
    tarvin::demo::DemoOptions o;
    o.customers = 2000;
    tarvin::demo::writeDemo(db->db(), o);
    TGy_Qkhbh_Frm s;
    showActive(&s);
    tick(s, u"Ckb_hm"_s, s.Edt_hm);
    enter(u"王"_s);
    search();
    QSqlQuery q(db->db());
    ASSERT_TRUE(q.exec(u"SELECT hh FROM y_khda WHERE hm LIKE '王%' ORDER BY hh"_s));
    QStringList expected;
    while (q.next()) expected << q.value(0).toString();
    EXPECT_FALSE(expected.isEmpty());
    QStringList rows = listed(s);
    rows.sort();
    EXPECT_EQ(rows, expected);
    s.Dbg_Fkhbh->setFocus();
    screenshot(&s, u"picker-customer"_s);
}

TARVIN_INSTANTIATE_ENGINES(CustomerPicker);

}  // namespace
