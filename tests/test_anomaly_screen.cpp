// The metering anomaly screen through its widgets, on both engines: a case
// arriving from an inspection result (its scheme emptied before it shows,
// its application and inspection shown, Enter on the account doing
// nothing, what the visit records kept on exit), and a new verification
// case (kind fixed, print off, refused accounts told in real boxes, a fresh
// number on every Enter, its drafts and unsent refunds gone on exit), the
// change scheme built and taken back through the equipment buttons, and the
// send: its refusals by fault kind, a new case with meters and a transformer
// changed and a supplement saved on the refund screen, started and sent on in
// the real workflow with its supplement as a document of its own, and an
// inspection case whose supplement becomes a document.
#include <QApplication>
#include <QTableView>

#include "Fixtures.h"
#include "ModuleTest.h"
#include "common/Unt_Zt_UserFuncs.h"
#include "common/unit_zt_pubfun.h"
#include "data/Dm_Jc_Tarvin.h"
#include "frame/Unit_zt_gobal.h"
#include "metering/Frm_Jc_Jlyccl.h"
#include "metering/Frm_Yk_SltChxz.h"
#include "metering/Frm_jl_Tbdl.h"

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
    // The refund screen, opened next, saves 100 kWh of 202410 refunded.
    static void supplementNext() {
        onNextModal([](QWidget* w) {
            auto* r = static_cast<Tjl_Tbdl_Frm*>(w);
            click(r, u"Bbtn_Xz"_s);
            for (auto [edit, text] : {std::pair{r->Edt_Qsny, u"202410"_s}, {r->Edt_Zzny, u"202410"_s}, {r->Edt_Hddl, u"100"_s}}) {
                if (edit == r->Edt_Hddl) click(r, u"Rb_Dl"_s);
                edit->setFocus();
                edit->selectAll();
                type(edit, text);
            }
            for (const QString& b : {u"Bbtn_Js"_s, u"Bbtn_Bc"_s, u"Bbtn_Tc"_s}) click(r, b);
        });
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

TEST_P(AnomalyScreen, SendRefusesEachKindItsWayAndNotesThatNoRefundIsNeeded) {
    db->exec(u"INSERT INTO a_khsqxx (cdbh, hh) VALUES (?, ?)"_s, {kCase, kHh});
    Cdbh = kCase;
    TJc_Jlyccl_Frm s;
    showActive(&s);
    click(&s, u"Bbtn_Fs"_s);
    s.mem_bz->setPlainText(u"表计停走"_s);
    for (const QString& kind : {u"Rb_Cjx"_s, u"Rb_Wgz"_s, u"Rb_Xyb"_s}) {  // another case's exchange marks the meter
        click(&s, kind);
        click(&s, u"Bbtn_Fs"_s);
    }
    db->exec(u"DELETE FROM a_dnbfa"_s);
    Jc_Tarvin_Dm->Mqry_DnbBg->Refresh();
    click(&s, u"Rb_Gzb"_s);
    s.Pgc_Jlzz->setCurrentWidget(s.Ts_Hgq);
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_EQ(s.Pgc_Jlzz->currentWidget(), s.Ts_Dnb);
    click(&s, u"Rb_Cjx"_s);
    boxes.answer(QMessageBox::No);
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_EQ(QApplication::focusWidget(), s.Bbtn_tb);
    boxes.answer(QMessageBox::Yes);
    boxes.answer(QMessageBox::No);
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_EQ(s.mem_bz->toPlainText(), u"表计停走\n不需要退补电量电费。"_s);
    EXPECT_EQ(rows(*db, u"SELECT count(*) FROM a_ykkzb"_s), QStringList{u"0"_s});
    EXPECT_EQ(boxes.texts(), QStringList({u"请输入现场核查情况！"_s, u"错接线，不需要更换计量装置，请取消方案"_s, u"错接线，请先取消方案！"_s,
                                          u"无故障，不需要更换计量装置，请取消方案"_s, u"无故障，请先取消方案！"_s,
                                          u"需验表，请先取消更换计量装置方案"_s, u"需要校验，请先取消变更方案！"_s,
                                          u"故障换表，请先确定方案！"_s, u"确定不需要退补电量电费吗？"_s, u"确定不需要退补电量电费吗？"_s,
                                          u"确定不需要更换计量装置吗？"_s}));
    boxes.clear();
}

TEST_P(AnomalyScreen, NewFaultCaseWithSchemeAndSupplementIsStartedSentOnAndClosedKeepingItsRows) {
    db->exec(u"DELETE FROM a_dnbfa"_s);
    db->exec(u"UPDATE y_khda SET htrl = 315, lxr = '赵工'"_s);
    db->exec(u"INSERT INTO w_gzxz (dm, mc) VALUES ('G1', '烧坏')"_s);
    db->exec(u"INSERT INTO y_yxdnb (txm, hh, jldbh, dblb, dl) VALUES ('TXM002', ?, '02', '单相表', '5(20)A')"_s, {kHh});
    db->exec(u"INSERT INTO y_yxhgq (hgqbh, hh, jldbh, hgqlb, hgqbb) VALUES ('H1', ?, '01', 'TA', '100/5')"_s, {kHh});
    db->exec(u"INSERT INTO b_djb (djm, djmc, dj) VALUES ('2101', '一般工商业', 0.5)"_s);
    db->exec(u"INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, djm) VALUES (?, '202410', '01', 0, 100, 0, '2101')"_s, {kHh});
    TJc_Jlyccl_Frm s;
    showActive(&s);
    type(s.Edt_Hh, kHh);
    pressFocused(Qt::Key_Return);
    const QString c = s.Edt_Cdbh->text();
    db->exec(u"INSERT INTO e_jlycgzd (cdbh, hh, jcbz) VALUES (?, ?, '上次发送失败')"_s, {c, kHh});
    s.Dblc_gzxz->SetKeyValue(u"G1"_s);
    click(&s, u"Bbtn_Dbnhq"_s);  // the first meter exchanged, the second taken off nominally
    s.Dbg_Dnb->setFocus();
    pressFocused(Qt::Key_Down);
    onNextModal([](QWidget* w) {
        static_cast<TYk_SltChxz_frm*>(w)->Rb_Xc->setFocus();
        pressFocused(Qt::Key_Space);
        click(w, u"Bbtn_Qr"_s);
    });
    click(&s, u"Bbtn_Ch"_s);
    s.Pgc_Jlzz->setCurrentWidget(s.Ts_Hgq);
    click(&s, u"BitBtn1"_s);
    supplementNext();
    click(&s, u"Bbtn_tb"_s);
    s.mem_bz->setPlainText(u"电能表烧坏"_s);  // typed through an input method
    click(&s, u"Ckb_Ywf"_s);
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(boxes.texts(), QStringList{u"当前客户流程发送成功(传单编号为"_s + c + u"),请继续处理。"_s});
    boxes.clear();
    const QString t = rows(*db, u"SELECT DISTINCT tbcdh FROM b_tbjl WHERE glcdbh = ?"_s, {c}).join(u',');
    EXPECT_EQ(rows(*db, u"SELECT tbcdh, ny, pdl, pdf FROM b_tbdfxx WHERE tbcdh IN (?, ?)"_s, {c, t}),
              QStringList{t + u"|202410|100|50"_s});
    EXPECT_EQ(rows(*db, u"SELECT sfygz || sfxyb || sfcjx || sfxysf FROM a_ykkzb WHERE cdbh = ? AND htrl = 315"_s, {c}),
              QStringList{u"无无无是"_s});
    EXPECT_EQ(rows(*db, u"SELECT ywdm, hm, lxr, count(sqrq) FROM a_khsqxx WHERE cdbh = ? GROUP BY ywdm, hm, lxr"_s, {c}),
              QStringList{u"160|青禾机械厂|赵工|1"_s});
    EXPECT_EQ(rows(*db, u"SELECT cdbh, ywdm, coalesce(lastywx, '-'), dqywx FROM z_dqgw ORDER BY ywdm"_s),
              QStringList({c + u"|160|16001|16002"_s, t + u"|201|-|20101"_s}));
    EXPECT_EQ(rows(*db, u"SELECT cdbh, ywxdm, coalesce(czy, '-'), CASE WHEN wcsj IS NULL THEN 'open' ELSE 'done' END "
                         "FROM z_lcls ORDER BY ywdm, xh"_s),
              QStringList({c + u"|16001|jc01|done"_s, c + u"|16002|-|open"_s, t + u"|20101|-|open"_s}));
    EXPECT_EQ(rows(*db, u"SELECT kcbz FROM a_gdfa WHERE cdbh = ? AND kcrq IS NOT NULL"_s, {c}), QStringList{u"电能表烧坏"_s});
    EXPECT_EQ(rows(*db, u"SELECT hh, hm, jcry, jczh, ycxz, gzlx, rdyj, jcbz, dw, ywdm, sfcl FROM e_jlycgzd WHERE cdbh = ?"_s, {c}),
              QStringList{QStringList({kHh, u"青禾机械厂"_s, u"王检"_s, u"JC-001"_s, u"故障表"_s, u"G1"_s, u"现场检查校验"_s,
                                       u"电能表烧坏"_s, Gdw, u"160"_s, u"1"_s}).join(u'|')});
    QStringList scheme = rows(*db, u"SELECT 'a_dnbfa' || bgsm || coalesce(txm, '-') FROM a_dnbfa WHERE cdbh = ? UNION ALL "
                                   "SELECT 'a_hgqfa' || bgsm || coalesce(hgqbh, '-') FROM a_hgqfa WHERE cdbh = ?"_s, {c, c});
    scheme.sort();
    EXPECT_EQ(scheme, QStringList({u"a_dnbfa换取TXM001"_s, u"a_dnbfa新装-"_s, u"a_dnbfa虚拆TXM002"_s, u"a_hgqfa拆除H1"_s}));
}

TEST_P(AnomalyScreen, InspectionCaseUpdatesItsSheetAndSendsItsSupplementAsADocument) {
    db->exec(u"INSERT INTO a_khsqxx (cdbh, hh, hm) VALUES (?, ?, '青禾机械厂')"_s, {kCase, kHh});
    db->exec(u"INSERT INTO a_ykkzb (cdbh) VALUES (?)"_s, {kCase});
    db->exec(u"INSERT INTO e_jlycgzd (cdbh, hh, hm) VALUES (?, ?, '检查时户名')"_s, {kCase, kHh});
    db->exec(u"INSERT INTO b_djb (djm, djmc, dj) VALUES ('2101', '一般工商业', 0.5)"_s);
    db->exec(u"INSERT INTO b_dltzxx (hh, ny, jfdbh, jffdl, jfpdl, jfgdl, djm) VALUES (?, '202410', '01', 0, 100, 0, '2101')"_s, {kHh});
    ASSERT_EQ(WfFristYwx(kCase, u"401"_s, u"40101"_s, Gdw, kHh, u"一般"_s, Gczydm, GetServerDateTime(), {}, {}), 0);
    db->exec(u"DELETE FROM a_dnbfa"_s);
    Cdbh = kCase;
    TJc_Jlyccl_Frm s;
    showActive(&s);
    supplementNext();
    click(&s, u"Bbtn_tb"_s);
    s.mem_bz->setPlainText(u"电压线接反"_s);
    click(&s, u"Rb_Cjx"_s);
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_FALSE(s.isVisible());
    EXPECT_EQ(boxes.texts(), QStringList({u"确定不需要更换计量装置吗？"_s, u"当前客户流程发送成功(传单编号为"_s + kCase + u"),请继续处理。"_s}));
    boxes.clear();
    EXPECT_EQ(rows(*db, u"SELECT sfygz || sfxyb || sfcjx FROM a_ykkzb"_s), QStringList{u"无无是"_s});
    EXPECT_EQ(rows(*db, u"SELECT hm, ycxz, gzlx, rdyj, jcbz, sfcl FROM e_jlycgzd"_s),
              QStringList{u"检查时户名|错接线||现场检查校验|电压线接反|1"_s});
    EXPECT_EQ(rows(*db, u"SELECT z.ywdm, z.dqywx FROM z_dqgw z LEFT JOIN b_tbjl b ON b.tbcdh = z.cdbh AND b.glcdbh = ? "
                         "WHERE z.cdbh = ? OR b.glcdbh IS NOT NULL ORDER BY 1"_s, {kCase, kCase}),
              QStringList({u"201|20101"_s, u"401|40103"_s}));
    TMidasQuery* q = Jc_Tarvin_Dm->Mqry_Jlyctbjl;
    q->ParamByName(u"ac_cdbh"_s).SetAsString(kCase);
    q->ParamByName(u"ai_dm"_s).SetAsInteger(1);
    q->ExecSQL();
    EXPECT_EQ(rows(*db, u"SELECT zbzdl, zbdldf, yzbdf FROM e_jlycgzd"_s), QStringList{u"100|50|50"_s});
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(AnomalyScreen);

}  // namespace
