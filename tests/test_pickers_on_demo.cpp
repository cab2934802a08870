// The four pickers on a demo utility, as its operators meet them: each
// lists what the database holds for the unit (and the pictures in
// docs/screens come from here).
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QTableView>
#include <QTreeWidget>

#include "DemoGenerator.h"
#include "Fixtures.h"
#include "pickers/Frm_Gy_Qkhbh.h"
#include "pickers/Frm_Jc_CodeSelect.h"
#include "pickers/Frm_Jc_Jcryxs.h"
#include "pickers/Frm_Jc_SelectXl.h"
#include "ModuleTest.h"
#include "frame/Unit_zt_gobal.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

class PickersOnDemo : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        if (dialect() != tarvin::sql::Dialect::SQLite) GTEST_SKIP() << "the demo pictures are taken on SQLite";
        tarvin::demo::DemoOptions o;
        o.customers = 2000;
        tarvin::demo::writeDemo(db->db(), o);
        Gdw = u"0101"_s;
    }
    QStringList column(const QString& sql) { return rows(*db, sql); }
};

TEST_P(PickersOnDemo, EachPickerListsTheUnitsRows) {
    {
        TGy_Qkhbh_Frm s;
        showActive(&s);
        click(&s, u"Ckb_hm"_s);
        s.Edt_hm->insert(u"王"_s);
        press(s.Edt_hm, Qt::Key_Return);
        EXPECT_EQ(s.Dbg_Fkhbh->model()->rowCount(), column(u"SELECT hh FROM y_khda WHERE hm LIKE '王%'"_s).size());
        EXPECT_GT(s.Dbg_Fkhbh->model()->rowCount(), 0);
        s.Dbg_Fkhbh->setFocus();
        screenshot(&s, u"picker-customer"_s);
    }
    {
        TJc_SelectXl_Frm s;
        showActive(&s);
        const QStringList tops = column(u"SELECT xlmc FROM y_xl WHERE sjxlbh = '00001' AND dw = '0101' ORDER BY xlmc"_s);
        ASSERT_FALSE(tops.isEmpty());
        ASSERT_EQ(s.TvLst_HyLb->topLevelItemCount(), tops.size());
        QTreeWidgetItem* first = s.TvLst_HyLb->topLevelItem(0);
        s.TvLst_HyLb->setCurrentItem(first);
        first->setExpanded(true);
        settle();
        const QString xlbh = TJc_SelectXl_Frm::NodeXlbh(first);
        EXPECT_EQ(xlbh.size(), 7) << "demo line numbers fit a node";
        EXPECT_EQ(first->childCount(), column(u"SELECT xlbh FROM y_xl WHERE sjxlbh = '%1'"_s.arg(xlbh)).size());
        if (first->childCount() > 0) s.TvLst_HyLb->setCurrentItem(first->child(0));
        settle();
        screenshot(&s, u"picker-line"_s);
    }
    {
        TJc_CodeSelect_Frm s;
        s.SelectSql = " select byqbh,byqmc from v_gybyq  WHERE  dw='" + Gdw + "'" + " order BY byqbh  ";
        s.FormTitle = u"公变台区"_s;
        s.FieldList = u"BYQBH:变压器编号|BYQMC:变压器名称|"_s;
        showActive(&s);
        EXPECT_EQ(s.Dbg_List->model()->rowCount(), column(u"SELECT byqbh FROM v_gybyq WHERE dw = '0101'"_s).size());
        EXPECT_GT(s.Dbg_List->model()->rowCount(), 0);
        screenshot(&s, u"picker-code"_s);
    }
    {
        TJc_Jcryxs_Frm s;
        showActive(&s);
        const QStringList names = column(
            u"SELECT b.xingming FROM e_jcryxx a, z_xtczy b WHERE a.czydm = b.dm AND a.dw = '0101' ORDER BY a.czydm"_s);
        ASSERT_EQ(s.Dbg_Jcryxs->model()->rowCount(), names.size());
        EXPECT_EQ(names.size(), 5) << "the leader and four inspectors";
        s.Dbg_Jcryxs->selectRow(0);
        screenshot(&s, u"picker-jcry"_s);
    }
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(PickersOnDemo);

}  // namespace
