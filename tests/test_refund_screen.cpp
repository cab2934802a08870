// The refund and supplement screen through its widgets, on both engines: a
// meter 25 % slow over three months at two tariffs against the figures
// worked out by hand, a stated energy refunded on another billing point,
// the refusals that keep what was typed, deleting an unsent decision, and
// the totals the work sheet gets once the send has handed the records on.
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTreeWidget>

#include "Fixtures.h"
#include "ModuleTest.h"
#include "data/Dm_Jc_Tarvin.h"
#include "frame/Unit_zt_gobal.h"
#include "metering/Frm_jl_Tbdl.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QString kCdbh = u"0000000401"_s;
const QString kHh = u"3000000001"_s;

class RefundScreen : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        expectNoBoxes = false;
        Gczyxm = u"李抄核"_s;
        customer(*db, kHh, u"青禾机械厂"_s);
        db->exec(u"INSERT INTO b_djb (djm, djmc, dj) VALUES ('2101', '一般工商业', 0.6642), ('2102', '一般工商业 10kV', 0.6442)"_s);
        // Billing point 01 (the removed meter) at 2101, at 2102 from March;
        // point 02 records peak energy only.
        for (const QString& row : {u"'202312', '01', 1000, 1000, 1000, '2101'"_s, u"'202401', '01', 1200, 1500, 300, '2101'"_s,
                                   u"'202402', '01', 900, 1200, 600, '2101'"_s, u"'202403', '01', 1500, 1800, 300, '2102'"_s,
                                   u"'202401', '02', 500, 0, 0, '2101'"_s, u"'202402', '02', 500, 0, 0, '2101'"_s,
                                   u"'202403', '02', 500, 0, 0, '2101'"_s})
            db->exec(u"INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, djm) VALUES (?, "_s + row + u')', {kHh});
        db->exec(u"INSERT INTO a_dnbfa (id, cdbh, hh, jfdbh, jldbh, dnbcch, bgsm) VALUES ('0000009101', ?, ?, '01', '01', 'DB001', '换取')"_s,
                 {kCdbh, kHh});
        db->exec(u"INSERT INTO e_jlycgzd (cdbh, hh) VALUES (?, ?)"_s, {kCdbh, kHh});
    }
    static void fill(QLineEdit* edit, const QString& text) {
        edit->setFocus();
        edit->selectAll();
        type(edit, text);
    }
    // Calculates and expects the refusal, the screen still adding and the
    // period as typed.
    void refused(Tjl_Tbdl_Frm& s, const QString& message) {
        click(&s, u"Bbtn_Js"_s);
        EXPECT_EQ(boxes.last(), message);
        EXPECT_FALSE(s.Bbtn_Bc->isEnabled());
        EXPECT_EQ(s.iEditMode, 1);
    }
    QStringList details() {
        return rows(*db, u"select tbcdh, ny, jfdbh, fdl, gdl, pdl, fdf, gdf, pdf, dsk6 + dsk7 + rldf + xldf + lldf "
                         "from b_tbdfxx order by jfdbh, ny"_s);
    }
};

TEST_P(RefundScreen, SlowMeterAtTwoTariffsRefusalsAndDelete) {
    {
        Tjl_Tbdl_Frm s;
        s.sCdbh = kCdbh;
        s.sHh = kHh;
        showActive(&s);
        EXPECT_EQ(s.Edt_Hm->text() + ' ' + s.Cob_Jfdbh->currentText(), u"青禾机械厂 01"_s);
        EXPECT_TRUE(s.Lab_Dnb->text().contains(u"DB001"_s));

        // 300 kWh stated for point 02, refunded: shared by what each month
        // recorded.
        click(&s, u"Bbtn_Xz"_s);
        type(s.Edt_Qsny, u"202401"_s);
        pressFocused(Qt::Key_Return);
        fill(s.Edt_Zzny, u"202403"_s);
        s.Cob_Jfdbh->setFocus();
        pressFocused(Qt::Key_Down);
        click(&s, u"Rb_Dl"_s);
        s.Cob_Tblx->setFocus();
        pressFocused(Qt::Key_Down);
        fill(s.Edt_Hddl, u"300"_s);
        click(&s, u"Bbtn_Js"_s);
        EXPECT_EQ(s.Lv_Mx->topLevelItem(3)->text(8) + ' ' + s.Lv_Mx->topLevelItem(3)->text(9), u"-300 -199.26"_s);
        click(&s, u"Bbtn_Bc"_s);

        // The slow meter: refusals first, each keeping what was typed.
        click(&s, u"Bbtn_Xz"_s);
        fill(s.Edt_Qsny, u"202405"_s);
        fill(s.Edt_Zzny, u"202403"_s);
        refused(s, u"起始年月不能大于终止年月！"_s);
        fill(s.Edt_Qsny, u"202401"_s);
        fill(s.Edt_Wc, u"-25%x"_s);
        refused(s, u"电能表误差必须是数字！"_s);
        fill(s.Edt_Wc, u"-100"_s);
        refused(s, u"电能表误差不能小于或等于-100%！表计不走字时请按核定电量退补。"_s);
        fill(s.Edt_Wc, u"-25%"_s);
        s.Cob_Jfdbh->setCurrentIndex(0);
        refused(s, u"该期间的电量已有退补记录（202401-202403，计费点02），不能重复退补！"_s);
        s.Cob_Jfdbh->setCurrentIndex(1);
        fill(s.Edt_Zzny, u"202406"_s);
        fill(s.Edt_Qsny, u"202405"_s);
        refused(s, u"该户202405至202406计费点01没有电量记录，无法计算退补电量！"_s);
        EXPECT_EQ(s.Edt_Qsny->text() + s.Edt_Zzny->text() + s.Edt_Wc->text(), u"202405202406-25%"_s);
        fill(s.Edt_Qsny, u"202401"_s);
        fill(s.Edt_Zzny, u"202403"_s);
        s.Edt_Bz->setText(u"现场校验表慢"_s);  // typed through an input method
        click(&s, u"Bbtn_Js"_s);
        // By hand: each band's recorded energy ÷ 0.75 − itself, i.e. a third,
        // at 0.6642 in January and February and 0.6442 in March.
        QStringList figures;
        for (const auto& r : s.Preview())
            figures << u"%1 %2/%3/%4 %5"_s.arg(r.Ny).arg(r.Fdl).arg(r.Pdl).arg(r.Gdl).arg(r.Df());
        EXPECT_EQ(figures, QStringList({u"202401 400/500/100 66420"_s, u"202402 300/400/200 59778"_s,
                                        u"202403 500/600/100 77304"_s}));
        EXPECT_EQ(s.Lv_Mx->topLevelItem(3)->text(9), u"2035.02"_s);
        EXPECT_EQ(s.Lv_Mx->topLevelItem(0)->text(10), u"3000÷(1−25%)−3000"_s);
        if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, u"refund-screen"_s);
        s.Bbtn_Bc->setFocus();
        pressFocused(Qt::Key_Space);
        EXPECT_EQ(s.iEditMode, 0);

        // The stated refund goes again, with its rows only.
        s.Dbg_Tbjl->setFocus();
        pressFocused(Qt::Key_Down);
        RealMessageBoxes real;  // the question in its own modal loop
        real.expect(u"确定删除选中的退补记录吗？"_s, QMessageBox::Yes);
        click(&s, u"Bbtn_Sc"_s);
        EXPECT_EQ(real.seen(), QStringList{u"确定删除选中的退补记录吗？"_s});
    }
    EXPECT_EQ(rows(*db, u"select tbcdh, glcdbh, hh, tblx, tbyy, jbr, dw, count(jbrq) from b_tbjl group by tbcdh, glcdbh, "
                         "hh, tblx, tbyy, jbr, dw"_s),
              QStringList{u"|0000000401|3000000001|补|202401-202403，计费点01：电能表误差-25%，补收电量电费。现场校验表慢|李抄核|01|1"_s});
    EXPECT_EQ(details(), QStringList({u"0000000401|202401|01|400|100|500|265.68|66.42|332.1|0"_s,
                                      u"0000000401|202402|01|300|200|400|199.26|132.84|265.68|0"_s,
                                      u"0000000401|202403|01|500|100|600|322.1|64.42|386.52|0"_s}));

    // The send hands the case's records to its refund document; the work
    // sheet then carries their totals.
    db->exec(u"UPDATE b_tbjl SET tbcdh = '0000000999' WHERE glcdbh = ?"_s, {kCdbh});
    Tjl_Tbdl_Frm::MoveDetailsToDocument(kCdbh, u"0000000999"_s);
    TMidasQuery* q = Jc_Tarvin_Dm->Mqry_Jlyctbjl;
    q->ParamByName(u"ac_cdbh"_s).SetAsString(kCdbh);
    q->ParamByName(u"ai_dm"_s).SetAsInteger(1);
    q->ExecSQL();
    EXPECT_EQ(rows(*db, u"select zbzdl, zbdldf, zbjbdf, zblldf, yzbdf from e_jlycgzd"_s),
              QStringList{u"3100|2035.02|0|0|2035.02"_s});

    // Sent: shown with its rows, and kept.
    Tjl_Tbdl_Frm s;
    s.sCdbh = kCdbh;
    s.sHh = kHh;
    showActive(&s);
    EXPECT_EQ(s.Lv_Mx->topLevelItemCount(), 4);
    click(&s, u"Bbtn_Sc"_s);
    EXPECT_EQ(boxes.texts().size(), 6);
    EXPECT_EQ(boxes.last(), u"该退补记录已发送（退补单号0000000999），不能删除！"_s);
    EXPECT_EQ(rows(*db, u"select count(*) from b_tbdfxx where tbcdh = '0000000999'"_s), QStringList{u"3"_s});
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(RefundScreen);

}  // namespace
