// The metering anomaly screen through its widgets, on both engines: a case
// arriving from an inspection result (its scheme emptied before it shows,
// its application and inspection shown, Enter on the account doing
// nothing, what the visit records kept on exit), and a new verification
// case (kind fixed, print off, refused accounts told in real boxes, a fresh
// number on every Enter, its drafts and unsent refunds gone on exit), and
// the change scheme built and taken back through the equipment buttons.
#include <QApplication>
#include <QTableView>

#include "Fixtures.h"
#include "ModuleTest.h"
#include "common/unit_zt_pubfun.h"
#include "frame/Unit_zt_gobal.h"
#include "metering/Frm_Jc_Jlyccl.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QString kCase = u"0000000501"_s;
const QString kOther = u"0000000502"_s;
const QString kHh = u"3000000001"_s;

class AnomalyScreen : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        Gczydm = u"jc01"_s;
        customer(*db, kHh, u"青禾机械厂"_s, u"南江市工业路8号"_s, Gdw);
        db->exec(u"INSERT INTO y_yxdnb (txm, hh, jldbh, dblb, dl) VALUES ('TXM001', ?, '01', '复费率表', '5(20)A')"_s, {kHh});
        db->exec(u"INSERT INTO e_jcryxx (czydm, xm, jczh) VALUES ('jc01', '王检', 'JC-001')"_s);
        drafts(kOther, u"B"_s);
    }
    void TearDown() override {
        Cdbh.clear();
        Ywxdm.clear();
        Gczydm.clear();
        ModuleTest::TearDown();
    }
    // A case's scheme rows and refund rows, sent (tbcdh = the case) and not.
    void drafts(const QString& cdbh, const QString& tag) {
        db->exec(u"INSERT INTO a_dnbfa (id, cdbh, hh, txm, bgsm) VALUES (?, ?, ?, 'TXM001', '换取')"_s, {tag + u'1', cdbh, kHh});
        db->exec(u"INSERT INTO a_hgqfa (id, cdbh, hh, bgsm) VALUES (?, ?, ?, '拆除')"_s, {tag + u'2', cdbh, kHh});
        db->exec(u"INSERT INTO a_gdfa (gdfabh, cdbh, hh) VALUES (?, ?, ?)"_s, {tag + u'3', cdbh, kHh});
        db->exec(u"INSERT INTO b_tbjl (tbcdh, glcdbh, tbyy) VALUES (NULL, ?, '未发送'), (?, NULL, '已发送')"_s, {cdbh, cdbh});
        db->exec(u"INSERT INTO b_tbdfxx (tbcdh, ny) VALUES (?, '202410')"_s, {cdbh});
    }
    QStringList left(const QString& c) {
        return rows(*db, u"SELECT 'a_dnbfa' FROM a_dnbfa WHERE cdbh = ? UNION ALL SELECT 'a_hgqfa' FROM a_hgqfa WHERE cdbh = ? "
                         "UNION ALL SELECT 'a_gdfa' FROM a_gdfa WHERE cdbh = ? UNION ALL SELECT 'b_tbjl' FROM b_tbjl "
                         "WHERE glcdbh = ? OR tbcdh = ? UNION ALL SELECT 'b_tbdfxx' FROM b_tbdfxx WHERE tbcdh = ? ORDER BY 1"_s,
                    {c, c, c, c, c, c});
    }
    const QStringList all{u"a_dnbfa"_s, u"a_gdfa"_s, u"a_hgqfa"_s, u"b_tbdfxx"_s, u"b_tbjl"_s, u"b_tbjl"_s};
};

TEST_P(AnomalyScreen, IncomingCaseStartsWithAnEmptySchemeShowsItsDataAndKeepsItsRowsOnExit) {
    db->exec(u"INSERT INTO a_khsqxx (cdbh, hh, hm, yddz, sqbz, lxr, lxdh) VALUES (?, ?, '青禾机械厂', '南江市工业路8号', "
             "'检查发现计量异常', '赵工', '13800000000')"_s, {kCase, kHh});
    db->exec(u"INSERT INTO e_jcgzjl (cdbh, hh, jcry, jczh, jcrq, czwt) VALUES (?, ?, '李检、张检', 'JC-002、JC-003', "
             "'2026-11-20 09:30:00', '电能表外壳烧黑，表计停走')"_s, {kCase, kHh});
    drafts(kCase, u"A"_s);
    Cdbh = kCase;
    Ywxdm = u"40102"_s;
    {
        TJc_Jlyccl_Frm s;
        showActive(&s);
        EXPECT_EQ(left(kCase), QStringList({u"b_tbdfxx"_s, u"b_tbjl"_s, u"b_tbjl"_s}));
        EXPECT_EQ(left(kOther), all);
        // The inspection's people, date and finding win over the operator's own.
        EXPECT_EQ(QStringList({s.Edt_Hh->text(), s.Edt_Cdbh->text(), s.Edt_Hm->text(), s.Edt_Yddz->text(),
                               s.Mem_Sqbz->toPlainText(), s.Edt_Lxr->text(), s.Edt_Lxdh->text(), s.edt_jcry->text(),
                               s.EDT_JCZH->text(), s.dt_jcrq->date().toString(Qt::ISODate), s.mem_bz->toPlainText()}),
                  QStringList({kHh, kCase, u"青禾机械厂"_s, u"南江市工业路8号"_s, u"检查发现计量异常"_s, u"赵工"_s,
                               u"13800000000"_s, u"李检、张检"_s, u"JC-002、JC-003"_s, u"2026-11-20"_s,
                               u"电能表外壳烧黑，表计停走"_s}));
        EXPECT_TRUE(s.Edt_Hh->isReadOnly() && s.Edt_Lxdz->isReadOnly() && s.Sb_Xz->isHidden());
        EXPECT_EQ(s.Dbg_Dnb->model()->rowCount(), 1);
        // Raised by an inspection result: only "no fault" is out.
        EXPECT_FALSE(s.Rb_Wgz->isEnabled());
        EXPECT_TRUE(s.Rb_Cjx->isEnabled() && s.Rb_Xyb->isEnabled() && s.Rb_Gzb->isChecked() && s.Bbtn_Dy->isEnabled());
        if (dialect() == tarvin::sql::Dialect::SQLite) screenshot(&s, u"anomaly-screen"_s);

        s.Edt_Hh->setFocus();
        pressFocused(Qt::Key_Return);
        EXPECT_EQ(s.Edt_Cdbh->text(), kCase);
        drafts(kCase, u"C"_s);  // what this visit records
        click(&s, u"Bbtn_Tc"_s);
        EXPECT_FALSE(s.isVisible());
    }
    EXPECT_EQ(left(kCase).size(), 9);
    EXPECT_EQ(left(kOther), all);
}

TEST_P(AnomalyScreen, NewVerificationCaseDrawsANumberOnEveryEnterAndLeavesNothingOnExit) {
    customer(*db, u"3000000002"_s, u"南江纺织厂"_s, {}, Gdw);
    db->exec(u"INSERT INTO a_khsqxx (cdbh, hh, ywdm) VALUES ('0000000601', '3000000002', '401')"_s);
    db->exec(u"INSERT INTO z_dqgw (cdbh, dqywx, dqywxmc) VALUES ('0000000601', '40104', '检查结果录入')"_s);
    Ywxdm = u"19101"_s;
    TJc_Jlyccl_Frm s;
    showActive(&s);
    EXPECT_TRUE(s.Rb_Xyb->isChecked());
    for (QWidget* w : std::initializer_list<QWidget*>{s.Rb_Wgz, s.Rb_Cjx, s.Rb_Gzb, s.Bbtn_tb, s.Ckb_Ywf, s.Bbtn_Dy})
        EXPECT_FALSE(w->isEnabled()) << w->objectName().toStdString();
    ASSERT_EQ(QApplication::focusWidget(), s.Edt_Hh);
    {
        RealMessageBoxes real;
        real.expect(u"该客户编号不存在！请重新输入。"_s).expect(u"该客户目前尚有其他业务未处理完,请先处理其他业务！"_s);
        for (const QString& hh : {u"3000000009"_s, u"3000000002"_s}) {
            type(s.Edt_Hh, hh);
            pressFocused(Qt::Key_Return);
            EXPECT_EQ(QApplication::focusWidget(), s.Edt_Hh);
            EXPECT_EQ(s.Edt_Cdbh->text() + s.Edt_Hm->text(), QString());
        }
    }
    QStringList drawn;
    for (int i = 0; i < 2; ++i) {
        if (i == 0) type(s.Edt_Hh, kHh);
        s.Edt_Hh->setFocus();
        pressFocused(Qt::Key_Return);
        drawn << s.Edt_Cdbh->text();
        EXPECT_TRUE(IsCdbh(drawn.last())) << drawn.last().toStdString();
    }
    EXPECT_NE(drawn[0], drawn[1]);
    EXPECT_EQ(s.Edt_Hm->text() + s.Edt_Yddz->text(), u"青禾机械厂南江市工业路8号"_s);
    EXPECT_EQ(s.Dbg_Dnb->model()->rowCount(), 1);
    EXPECT_FALSE(s.Edt_Lxr->isReadOnly());
    drafts(drawn[1], u"N"_s);
    click(&s, u"Bbtn_Tc"_s);
    EXPECT_EQ(left(drawn[1]), QStringList{u"a_gdfa"_s});  // the send replaces it
    EXPECT_EQ(left(kOther), all);
}

TEST_P(AnomalyScreen, ExchangesAndRemovalsWriteTheSchemeAndCancellingTakesThemBack) {
    db->exec(u"DELETE FROM a_dnbfa"_s);  // another case's mark would show on the meter too
    db->exec(u"INSERT INTO a_khsqxx (cdbh, hh) VALUES (?, ?)"_s, {kCase, kHh});
    db->exec(u"INSERT INTO w_gzxz (dm, mc) VALUES ('G1', '烧坏')"_s);
    db->exec(u"INSERT INTO y_yxhgq (hgqbh, hh, jldbh, hgqlb, hgqbb) VALUES ('H1', ?, '01', 'TA', '100/5')"_s, {kHh});
    db->exec(u"INSERT INTO a_hgqfa (id, cdbh, jldbh, hgqlb, bgsm) VALUES ('X1', ?, '01', 'TA', '新装')"_s, {kOther});
    Cdbh = kCase;
    TJc_Jlyccl_Frm s;
    showActive(&s);
    const auto scheme = [&](const char* table, const char* cols) {
        QStringList found = rows(*db, u"SELECT %1 FROM %2"_s.arg(QLatin1String(cols), QLatin1String(table)));
        found.sort();  // the engines collate Chinese differently
        return found;
    };
    const char* meter = "bgsm || coalesce(txm, '-') || coalesce(gzlx, '-') || coalesce(sslx, '-') || thdl";
    click(&s, u"Rb_Cjx"_s);
    click(&s, u"Bbtn_Dbnhq"_s);
    click(&s, u"Rb_Gzb"_s);
    click(&s, u"Bbtn_Dbnhq"_s);
    s.Dblc_gzxz->SetKeyValue(u"G1"_s);
    onNextModal([](QWidget* picker) { click(picker, u"Bbtn_Qx"_s); });
    click(&s, u"Bbtn_Ch"_s);
    EXPECT_EQ(scheme("a_dnbfa", meter), QStringList());
    click(&s, u"Bbtn_Dbnhq"_s);
    EXPECT_EQ(scheme("a_dnbfa", meter), QStringList({u"换取TXM001G1-5(20)A"_s, u"新装--CD5(20)A"_s}));
    EXPECT_EQ(s.DBGrd_DnbFa->model()->rowCount(), 1);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Dnbqx"_s);
    EXPECT_EQ(scheme("a_dnbfa", meter), QStringList());
    EXPECT_EQ(s.DBGrd_DnbFa->model()->rowCount(), 0);

    s.Pgc_Jlzz->setCurrentWidget(s.Ts_Hgq);
    click(&s, u"Bbtn_Hgqhq"_s);
    EXPECT_EQ(scheme("a_hgqfa", "cdbh || bgsm || coalesce(hgqbh, '-') || coalesce(hgqbb, '-') || coalesce(zs, 0)"),
              QStringList({kCase + u"换取H1100/51"_s, kCase + u"新装-100/51"_s, kOther + u"拆除--0"_s, kOther + u"新装--0"_s}));
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Hgqqx"_s);  // the other case's row of that point and category goes too
    EXPECT_EQ(scheme("a_hgqfa", "id"), QStringList({u"B2"_s}));
    EXPECT_EQ(s.DBGrd_HgqFa->model()->rowCount(), 0);
    EXPECT_EQ(boxes.texts(), QStringList({u"非故障表不需要方案！"_s, u"请先选择故障性质！"_s, u"是否真的删除该电能表方案？"_s,
                                          u"是否真的删除该互感器方案？"_s}));
    boxes.clear();
}

TARVIN_INSTANTIATE_ENGINES(AnomalyScreen);

}  // namespace
