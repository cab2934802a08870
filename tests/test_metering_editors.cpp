// The meter and transformer scheme editors and the removal-nature picker
// through their widgets, on both engines: a row as the anomaly screen
// prepares it, edited by keys, the checks in their order, the row the
// caller posts afterwards.
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include "Fixtures.h"
#include "ModuleTest.h"
#include "data/Dm_Jc_Tarvin.h"
#include "metering/Frm_Yk_DnbFaWh.h"
#include "metering/Frm_Yk_HgqFaWh.h"
#include "metering/Frm_Yk_SltChxz.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QString kCdbh = u"0000000301"_s;

class MeteringEditors : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        expectNoBoxes = false;
        db->exec(u"INSERT INTO w_dl (dm, mc) VALUES ('01', '5(60)A'), ('02', '3×1.5(6)A')"_s);
        db->exec(u"INSERT INTO w_xx (dm, mc) VALUES ('01', '单相二线'), ('02', '三相四线')"_s);
        db->exec(u"INSERT INTO w_dbdy (dm, mc) VALUES ('01', '220V')"_s);
        db->exec(u"INSERT INTO w_dnbjd (dm, dmsm) VALUES ('01', '0.5S')"_s);
        db->exec(u"INSERT INTO w_dlbb (dm, mc) VALUES ('01', '10/5'), ('02', '20/5')"_s);
        db->exec(u"INSERT INTO w_dybb (dm, mc) VALUES ('01', '10000/100')"_s);
    }
    // The case's installed rows, a new one appended as the anomaly screen
    // prefills it, or the stored one put in edit state.
    static TMidasQuery* scheme(TMidasQuery* q, bool append) {
        q->Close();
        q->Params()[0].SetAsString(kCdbh);
        q->Open();
        if (!append) return q->Edit(), q;
        q->Append();
        for (const auto& [field, value] : {std::pair{"ID", u"0000009001"_s}, {"CDBH", kCdbh}, {"JLDBH", u"JL01"_s},
                                           {"BGSM", u"新装"_s}})
            q->FieldByName(QLatin1String(field)).SetAsString(value);
        return q;
    }
    static void store(TMidasQuery* q) {
        q->Post();
        EXPECT_EQ(q->ApplyUpdates(0), 0);
    }
    // Presses confirm and expects the refusal, the focus on `control`.
    void refused(QDialog& s, const QString& message, QWidget* control) {
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_EQ(boxes.last(), message);
        EXPECT_EQ(QApplication::focusWidget(), control) << message.toStdString();
        EXPECT_TRUE(s.isVisible());
    }
    // Focuses the control and moves its choice down (or up) by keys.
    static void down(QWidget* control, int times = 1) {
        control->setFocus();
        for (int i = 0; i < std::abs(times); ++i) pressFocused(times > 0 ? Qt::Key_Down : Qt::Key_Up);
    }
    // The register letters checked, "/", those enabled.
    static QString registers(const TYk_DnbFaWh_Frm& s) {
        QString checked, enabled;
        for (int i = 0; i < 7; ++i) {
            if (s.SslxBoxes()[i]->isChecked()) checked += u"ABCDEFX"_s[i];
            if (s.SslxBoxes()[i]->isEnabled()) enabled += u"ABCDEFX"_s[i];
        }
        return checked + '/' + enabled;
    }
};

// A new meter: defaults, each check in order with the focus on its control,
// the category's register boxes, "不算" locking its value, both flag lists
// on GKBBZ; then a stored row shows its own register kinds and a cancel
// leaves it as it was.
TEST_P(MeteringEditors, MeterSchemeByKeys) {
    TMidasQuery* q = scheme(Jc_Tarvin_Dm->Mqry_Dnbfa, true);
    {
        TYk_DnbFaWh_Frm s;
        s.setWindowTitle(u"电能表方案 - 增加"_s);
        showActive(&s);
        EXPECT_EQ(s.Edt_JLdbh->text() + s.DBCmb_XsJsFs->currentText() + s.Dc_Gkbbz->currentText(), u"JL01不算否"_s);
        EXPECT_FALSE(s.Edt_XsJsZ->isEnabled());
        refused(s, u"请选择当前表计方案的电流。"_s, s.Dblc_Dl);
        down(s.Dblc_Dl);
        refused(s, u"请选择电表类别！"_s, s.Dblc_DBLB);
        for (const auto& [times, shown] : {std::pair{5, u"ABCD/ABCD"_s}, {1, u"D/ABCD"_s}, {-4, u"E/EF"_s}}) {
            down(s.Dblc_DBLB, times);
            EXPECT_EQ(registers(s), shown) << s.Dblc_DBLB->Text().toStdString();
        }
        for (const auto& [message, list] : {std::pair{u"请选择当前表计方案的相线。"_s, s.Dblc_Xx},
                                            {u"请选择表计电压。"_s, s.Dblc_Dydj}, {u"请选择精度。"_s, s.Dblc_JdDJ}}) {
            refused(s, message, list);
            down(list);
        }
        s.Cb_Zx->setFocus();
        pressFocused(Qt::Key_Space);
        refused(s, u"请选择当前表计方案的启用示数。"_s, s.Cb_Zx);
        s.Cb_Fx->setFocus();
        pressFocused(Qt::Key_Space);
        down(s.DBCmb_XsJsFs);
        type(s.Edt_XsJsZ, u"1.5x"_s);
        down(s.DBCmb_XsJsFs, -1);
        EXPECT_FALSE(s.Edt_XsJsZ->isEnabled());
        EXPECT_EQ(s.Edt_XsJsZ->text(), u"1.5"_s) << "kept, and only a number is taken";
        pressFocused(Qt::Key_Down);
        down(s.Dc_Ckbbz, -1);
        EXPECT_EQ(s.Dc_Gkbbz->currentText(), u"是"_s);
        if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, u"meter-scheme"_s);
        s.Bbtn_Qr->setFocus();
        pressFocused(Qt::Key_Return);
        EXPECT_EQ(s.result(), QDialog::Accepted);
        EXPECT_EQ(s.Sslx, u"F"_s);
    }
    store(q);
    const QString stored = u"select dblb, dl, xx, dy, jddj, sslx, ygxsjsfs, ygxsjsz, wgxsjsfs, gkbbz, ckbbz, jldbh from a_dnbfa"_s;
    EXPECT_EQ(rows(*db, stored), QStringList{u"无功表|5(60)A|单相二线|220V|0.5S|F|公式|1.5|不算|是|否|JL01"_s});
    db->exec(u"UPDATE a_dnbfa SET dblb = '复费率表', sslx = 'ACD'"_s);
    scheme(q, false);
    TYk_DnbFaWh_Frm s;
    showActive(&s);
    EXPECT_EQ(registers(s), u"ACD/ABCD"_s);
    down(s.Dblc_DBLB);
    EXPECT_EQ(registers(s), u"D/ABCD"_s) << "预付费表";
    pressFocused(Qt::Key_Escape);
    EXPECT_EQ(s.result(), QDialog::Rejected);
    store(q);
    EXPECT_EQ(rows(*db, u"select dblb, sslx from a_dnbfa"_s), QStringList{u"复费率表|ACD"_s});
    EXPECT_EQ(boxes.texts().size(), 6);
}

// A new transformer: one unit by default, the checks in order, counts that
// are not a whole number above zero refused, the ratios following the
// category (current ratios for TA only) when the category is left.
TEST_P(MeteringEditors, TransformerSchemeByKeys) {
    TMidasQuery* q = scheme(Jc_Tarvin_Dm->Mqry_Hgqfa, true);
    {
        TYk_HgqFaWh_Frm s;
        showActive(&s);
        EXPECT_EQ(s.Edt_Dybh->text() + s.Edt_Zs->text(), u"JL011"_s);
        refused(s, u"请选择互感器类型。"_s, s.Dblc_Lx);
        pressFocused(Qt::Key_Down);
        pressFocused(Qt::Key_Tab);
        EXPECT_EQ(s.Cob_Bb->count(), 2) << "current ratios for TA";
        refused(s, u"请选择互感器变比。"_s, s.Cob_Bb);
        pressFocused(Qt::Key_Down);
        s.Edt_Zs->clear();
        refused(s, u"请输入互感器数量。"_s, s.Edt_Zs);
        for (const QString& count : {u"0"_s, u"-2"_s, u"1.5"_s, u"x"_s}) {
            s.Edt_Zs->setText(count);
            refused(s, u"无效的当前互感器数量，请重新键入。"_s, s.Edt_Zs);
        }
        down(s.Dblc_Lx);
        pressFocused(Qt::Key_Tab);
        EXPECT_EQ(s.Cob_Bb->currentIndex(), -1) << "10/5 is no voltage ratio";
        down(s.Cob_Bb);
        s.Edt_Zs->clear();
        type(s.Edt_Zs, u"3"_s);
        if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, u"transformer-scheme"_s);
        click(&s, u"Bbtn_Qr"_s);
        EXPECT_EQ(s.result(), QDialog::Accepted);
    }
    store(q);
    EXPECT_EQ(rows(*db, u"select hgqlb, hgqbb, zs, jldbh from a_hgqfa"_s), QStringList{u"TV|10000/100|3|JL01"_s});
    EXPECT_EQ(boxes.texts().size(), 7);
}

// As the anomaly screen runs it: modal, real boxes, keys only, on a stored
// TA row whose ratio shows chosen.
TEST_P(MeteringEditors, StoredTransformerWithRealBoxes) {
    db->exec(u"INSERT INTO a_hgqfa (id, cdbh, jldbh, hgqlb, hgqbb, bgsm, zs) VALUES ('0000009002', ?, 'JL02', 'TA', '20/5', '新装', 2)"_s,
             {kCdbh});
    TMidasQuery* q = scheme(Jc_Tarvin_Dm->Mqry_Hgqfa, false);
    TYk_HgqFaWh_Frm s;
    s.setWindowTitle(u"互感器方案 - 修改"_s);
    RealMessageBoxes real;
    real.expect(u"无效的当前互感器数量，请重新键入。"_s);
    onNextModal([&s](QWidget* modal) {
        showActive(modal);
        EXPECT_EQ(s.Cob_Bb->currentText() + ' ' + s.Edt_Zs->text(), u"20/5 2"_s);
        s.Edt_Zs->setFocus();
        s.Edt_Zs->selectAll();
        type(s.Edt_Zs, u"0"_s);
        pressFocused(Qt::Key_Return);
        s.Bbtn_Qr->setFocus();
        pressFocused(Qt::Key_Return);
        EXPECT_EQ(QApplication::focusWidget(), s.Edt_Zs);
        pressFocused(Qt::Key_Backspace);
        type(s.Edt_Zs, u"4"_s);
        s.Bbtn_Qr->setFocus();
        pressFocused(Qt::Key_Return);
        if (s.isVisible()) s.reject();
    });
    EXPECT_EQ(s.exec(), QDialog::Accepted);
    store(q);
    EXPECT_EQ(rows(*db, u"select hgqlb, hgqbb, zs from a_hgqfa"_s), QStringList{u"TA|20/5|4"_s});
}

// The nature without its blanks on confirming; nothing when cancelled, by
// button or Escape, whatever was chosen.
TEST_P(MeteringEditors, RemovalNaturePicker) {
    for (int pick = 0; pick < 5; ++pick) {
        TYk_SltChxz_frm p;
        showActive(&p);
        EXPECT_EQ(p.windowTitle(), u"请选择拆回性质"_s);
        p.Rb_ch->setFocus();
        for (int i = 0; i < pick % 3; ++i) pressFocused(Qt::Key_Down);
        if (pick == 3) click(&p, u"Bbtn_Qx"_s);
        else if (pick == 4) pressFocused(Qt::Key_Escape);
        else click(&p, u"Bbtn_Qr"_s);
        EXPECT_EQ(p.Chxz, QStringList({u"拆除"_s, u"虚拆"_s, u"移表"_s, {}, {}})[pick]) << pick;
        EXPECT_EQ(p.result(), pick < 3 ? QDialog::Accepted : QDialog::Rejected);
    }
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(MeteringEditors);

}  // namespace
