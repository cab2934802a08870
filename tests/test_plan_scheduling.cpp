// The scheduling screen through its widgets, on both engines: customers
// fetched from a past batch, tasks saved, modified and deleted in memory,
// the send writing the batch whole (tasks with their batch number, control
// and application rows, header, workflow cases, one work-order message),
// the refusals, a workflow refusal on the second task leaving nothing and
// a retry then going through, and the browse page.
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

#include "DemoGenerator.h"
#include "Fixtures.h"
#include "ModuleTest.h"
#include "data/Dm_Jc_Tarvin.h"
#include "frame/Unit_zt_gobal.h"
#include "planning/Frm_Jc_Jhbp.h"
#include "planning/Frm_Jc_Jhbz.h"
#include "screening/Frm_Jc_Kycssz.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;

namespace {

const QStringList kHh{u"3000000001"_s, u"3000000002"_s, u"3000000003"_s};

class PlanScheduling : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        expectNoBoxes = false;
        Gczydm = u"jc01"_s;
        Gczyxm = u"王检"_s;
        Gbm = u"0101"_s;
        units(*db);
        const QStringList names{u"青禾机械厂"_s, u"南江纺织"_s, u"东岭小学"_s};
        for (int i = 0; i < 3; ++i) customer(*db, kHh[i], names[i], u"工业路"_s + QString::number(i + 1) + u"号"_s, Gdw);
        db->exec(u"UPDATE y_khda SET htrl = 315"_s);
        db->exec(u"INSERT INTO z_bmbm (dm, mc) VALUES ('0101', '用电检查班'), ('0102', '营业班')"_s);
        db->exec(u"INSERT INTO w_jclx (dm, mc) VALUES ('01', '周期检查'), ('02', '专项检查')"_s);
        db->exec(u"INSERT INTO z_xtczy (dm, xingming, dw, sfyx) VALUES ('jc01', '王检', '01', 1)"_s);
        db->exec(u"INSERT INTO e_jcryxx (czydm, jczh, dw) VALUES ('jc01', 'JC-001', '01')"_s);
        grant(*db, u"jc01"_s, {u"40102"_s});  // dispatched cases wait for approval
        // A past batch of the three, drawn up an hour ago.
        db->exec(u"INSERT INTO e_jcgzap (jcph, dw, jcnr, zdsj) VALUES ('P0001', '01', '上次检查', ?)"_s,
                 {QDateTime::currentDateTime().addSecs(-3600).toString(u"yyyy-MM-dd HH:mm:ss"_s)});
        for (const QString& hh : kHh)
            db->exec(u"INSERT INTO e_jcgzjl (cdbh, hh, jcph, zt) VALUES (?, ?, 'P0001', '已检查')"_s, {u"99"_s + hh.right(8), hh});
    }
    void TearDown() override {
        Gczydm.clear();
        Gczyxm.clear();
        Gbm.clear();
        ModuleTest::TearDown();
    }
    // The past batch's customers into the list, through the history screen.
    void fetch(TJc_Jhbp_Frm& s) {
        onNextModal([](QWidget* w) {
            click(w, u"Bbtn_Cx"_s);
            click(w, u"Sb_Aright"_s);
            click(w, u"Bbtn_Qr"_s);
        });
        click(&s, u"Bbtn_Lsjckh"_s);
        showActive(&s);  // as a window manager does once the modal closes
    }
    // Add: monthly plan, the first inspection type, the inspector picked.
    void fillTask(TJc_Jhbp_Frm& s, const QString& hjrs) {
        click(&s, u"Bbtn_Xz"_s);
        click(&s, u"Rb_Yjhbp"_s);
        s.dblc_jclx->setFocus();
        pressFocused(Qt::Key_Down);
        onNextModal([](QWidget* w) { click(w, u"Bbtn_Qr"_s); });
        click(&s, u"Sb_Sz"_s);
        showActive(&s);
        s.Edt_Hjrs->setFocus();
        type(s.Edt_Hjrs, hjrs);
    }
    QStringList batch() {
        return rows(*db, u"SELECT 'task', count(*), CAST(count(DISTINCT jcph) AS VARCHAR(20)) FROM e_jcgzjl WHERE jcph <> 'P0001' "
                         "UNION ALL SELECT 'ykkzb', count(*), CAST(sum(htrl) AS VARCHAR(20)) FROM a_ykkzb "
                         "UNION ALL SELECT 'sqxx', count(*), CAST(count(DISTINCT ywdm) AS VARCHAR(20)) FROM a_khsqxx "
                         "UNION ALL SELECT 'ap', count(*), CAST(count(spr) AS VARCHAR(20)) FROM e_jcgzap WHERE jcph <> 'P0001' "
                         "UNION ALL SELECT 'case', count(*), min(dqywx) FROM z_dqgw"_s);
    }
    const QStringList nothing{u"task|0|0"_s, u"ykkzb|0|"_s, u"sqxx|0|0"_s, u"ap|0|0"_s, u"case|0|"_s};
};

TEST_P(PlanScheduling, SaveModifyDeleteAndSendOneBatch) {
    TJc_Jhbp_Frm s;
    showActive(&s);
    EXPECT_EQ(s.Dblc_Jcbm->Text(), u"用电检查班"_s);
    EXPECT_FALSE(s.Bbtn_Fs->isEnabled());
    fetch(s);
    ASSERT_EQ(s.Lb_Jckhjs->count(), 3);
    EXPECT_EQ(s.Mem_Bz->toPlainText(), u"历史检查客户。"_s);

    fillTask(s, u" 3 "_s);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.texts(), QStringList({u"保存上述3个客户的月计划检查工作信息吗？"_s, u"计划保存成功，请确认后发送！"_s}));
    EXPECT_TRUE(s.Bbtn_Fs->isEnabled());
    TMidasQuery* tasks = Jc_Tarvin_Dm->MQry_Jhbp;
    ASSERT_EQ(tasks->RecordCount(), 3);
    QStringList numbers;
    for (tasks->First(); !tasks->Eof(); tasks->Next()) {
        EXPECT_EQ(tasks->FieldByName(u"HH"_s).AsString(), kHh[numbers.size()]);
        EXPECT_EQ(tasks->FieldByName(u"JHLX"_s).AsString() + tasks->FieldByName(u"JCLX"_s).AsString() +
                      tasks->FieldByName(u"JCRY"_s).AsString() + tasks->FieldByName(u"HJRS"_s).AsString() +
                      tasks->FieldByName(u"ZT"_s).AsString(),
                  u"月计划周期检查王检 3 未审批"_s);
        numbers << tasks->FieldByName(u"CDBH"_s).AsString();
    }
    EXPECT_LT(numbers[0], numbers[1]);
    EXPECT_LT(numbers[1], numbers[2]);
    EXPECT_EQ(batch(), nothing) << "saved tasks wait for the send";

    // The list finds a customer's task; modify it, delete the third.
    s.Lb_Jckhjs->setCurrentRow(1);
    Q_EMIT s.Lb_Jckhjs->itemClicked(s.Lb_Jckhjs->item(1));
    EXPECT_EQ(tasks->FieldByName(u"HH"_s).AsString(), kHh[1]);
    click(&s, u"Bbtn_Xg"_s);
    s.Edt_Qtry->setText(u"赵电工"_s);
    boxes.clear();
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.texts(), QStringList({u"确认修改吗?"_s, u"计划修改成功！"_s}));
    EXPECT_EQ(tasks->FieldByName(u"QTRY"_s).AsString(), u"赵电工"_s);
    for (int row : {3, 1}) {
        tasks->SetRecNo(row);
        boxes.answer(QMessageBox::Yes);
        click(&s, u"Bbtn_Sc"_s);
    }
    EXPECT_EQ(tasks->RecordCount(), 1);

    // No content: refused, nothing written. Then the send.
    boxes.clear();
    s.Mem_Jcnr->clear();
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_EQ(boxes.texts(), QStringList{u"对不起，检查内容不能为空！"_s});
    EXPECT_EQ(batch(), nothing);
    s.Mem_Jcnr->setPlainText(u"窃电专项检查"_s);
    s.Dblc_Jcbm->SetKeyValue(u"0102"_s);
    click(&s, u"Bbtn_Fs"_s);
    const QString jcph = db->scalar(u"SELECT jcph FROM e_jcgzap WHERE jcph <> 'P0001'"_s).toString();
    EXPECT_EQ(boxes.last(), u"当前客户流程发送成功(检查批号为"_s + jcph + u"),请继续处理。"_s);
    EXPECT_EQ(batch(), QStringList({u"task|1|1"_s, u"ykkzb|1|315"_s, u"sqxx|1|1"_s, u"ap|1|0"_s, u"case|1|40102"_s}));
    EXPECT_EQ(rows(*db, u"SELECT cdbh, hh, qtry, zt, jcph FROM e_jcgzjl WHERE jcph <> 'P0001'"_s),
              QStringList{numbers[1] + u'|' + kHh[1] + u"|赵电工|未审批|"_s + jcph});
    EXPECT_EQ(rows(*db, u"SELECT jcbm, jcnr, bz, zdr, dw FROM e_jcgzap WHERE jcph = ?"_s, {jcph}),
              QStringList{u"0102|窃电专项检查|历史检查客户。|王检|01"_s});
    EXPECT_EQ(rows(*db, u"SELECT DISTINCT cdbh FROM z_gzdxx"_s), QStringList{numbers[1]}) << "one message, the last task";

    // The screen is reset; a second press finds nothing to send.
    EXPECT_EQ(s.Lb_Jckhjs->count(), 0);
    EXPECT_FALSE(tasks->Active());
    boxes.clear();
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_EQ(boxes.texts(), QStringList{u"对不起，请您先检索要安排检查的客户信息"_s});

    // Browse: the batch's tasks are not inspected yet; the past ones are.
    s.Pgc_Jhbp->setCurrentWidget(s.Ts_Jcqkll);
    s.Cob_Jcrw->setCurrentIndex(1);
    EXPECT_EQ(s.Lbl_Jcny->text(), u"计划日期"_s);
    s.dtp_jcny2->setDateTime(QDateTime::currentDateTime().addDays(1));
    click(&s, u"Bbtn_Sx"_s);
    EXPECT_EQ(s.Dbg_Jcqkll->model()->rowCount(), 1);
    EXPECT_EQ(s.Dbg_Jcqkll->model()->headerData(11, Qt::Horizontal).toString(), u"备注"_s);
}

TEST_P(PlanScheduling, RefusalsKeepTheModeAndWhatWasTyped) {
    TJc_Jhbp_Frm s;
    showActive(&s);
    for (const char* button : {"Bbtn_Xz", "Bbtn_Xg", "Bbtn_Sc"}) click(&s, QString::fromLatin1(button));
    EXPECT_EQ(boxes.texts(), QStringList({u"对不起，请您先检索要安排检查的客户信息"_s, u"请选择要修改的检查任务信息！"_s,
                                          u"请选择要删除的检查任务信息！"_s}));
    // A short item is an account of its own; it is not in the unit.
    s.Lb_Jckhjs->addItem(u"12345"_s);
    s.Lb_Jckhjs->addItem(kHh[0] + u"\u2506青禾机械厂"_s);
    click(&s, u"Bbtn_Xz"_s);
    boxes.clear();
    click(&s, u"Bbtn_Qr"_s);
    s.dblc_jclx->setFocus();
    pressFocused(Qt::Key_Down);
    click(&s, u"Bbtn_Qr"_s);
    s.edt_jcry->setText(u"王检"_s);
    s.Edt_Hjrs->setText(u"3a"_s);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.texts(), QStringList({u"对不起，检查类型不能为空！"_s, u"对不起，检查人员不能为空！"_s,
                                          u"合计人数必须为整数！"_s}));
    EXPECT_EQ(QApplication::focusWidget(), s.Edt_Hjrs);
    EXPECT_EQ(s.iEditMode, 1);

    // A planned date more than a day back is refused; just under a day is not.
    s.Edt_Hjrs->clear();
    const QDateTime now = QDateTime::currentDateTime();
    s.dtp_jhrq->setDateTime(now.addDays(-1).addSecs(-120));
    boxes.clear();
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.last(), u"计划日期无效！"_s);
    EXPECT_FALSE(s.Bbtn_Fs->isEnabled());
    click(&s, u"Bbtn_Xz"_s);
    s.dtp_jhrq->setDateTime(now.addDays(-1).addSecs(120));
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.last(), u"计划保存成功，请确认后发送！"_s);
    TMidasQuery* tasks = Jc_Tarvin_Dm->MQry_Jhbp;
    tasks->First();
    EXPECT_EQ(tasks->FieldByName(u"HH"_s).AsString() + u'|' + tasks->FieldByName(u"HM"_s).AsString() + u'|' +
                  tasks->FieldByName(u"HJRS"_s).AsString(),
              u"12345||"_s);
}

// The engine refuses the second task (its document is in the workflow
// already), then the database the header: each time the warning once and
// nothing of the batch written. A retry sends the batch whole under a new
// number.
TEST_P(PlanScheduling, WorkflowRefusalOnTheSecondTaskLeavesNothingAndARetrySends) {
    TJc_Jhbp_Frm s;
    showActive(&s);
    fetch(s);
    fillTask(s, QString());
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    s.Mem_Jcnr->setPlainText(u"周期检查"_s);
    TMidasQuery* tasks = Jc_Tarvin_Dm->MQry_Jhbp;
    tasks->SetRecNo(2);
    const QString second = tasks->FieldByName(u"CDBH"_s).AsString();
    db->exec(u"INSERT INTO z_dqgw (cdbh, ywdm, dqywx) VALUES (?, '401', '40101')"_s, {second});
    boxes.clear();
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_EQ(boxes.texts(), QStringList{u"当前客户流程发送错误，请尝试重新发送。"_s});
    QStringList left = nothing;
    left.last() = u"case|1|40101"_s;
    EXPECT_EQ(batch(), left);
    EXPECT_FALSE(Jc_Tarvin_Dm->Mqry_Update->DataBase().InTransaction());

    // The header refused (its batch number taken) after the tasks went in:
    // rolled back, and the tasks are written again by the next send.
    db->exec(u"DELETE FROM z_dqgw"_s);
    db->exec(u"INSERT INTO e_jcgzap (jcph, dw) VALUES ('0000000002', '99')"_s);
    boxes.clear();
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_EQ(boxes.texts(), QStringList{u"当前客户流程发送错误，请尝试重新发送。"_s});
    db->exec(u"DELETE FROM e_jcgzap WHERE dw = '99'"_s);
    EXPECT_EQ(batch(), nothing);
    boxes.clear();
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_TRUE(boxes.last().startsWith(u"当前客户流程发送成功"_s)) << boxes.last().toStdString();
    EXPECT_EQ(batch(), QStringList({u"task|3|1"_s, u"ykkzb|3|945"_s, u"sqxx|3|1"_s, u"ap|1|0"_s, u"case|3|40102"_s}));
}

TARVIN_INSTANTIATE_ENGINES_AND_OPENERS(PlanScheduling);

// The main flow once with real boxes, each in its own modal loop.
class PlanSchedulingBoxes : public PlanScheduling {};

TEST_P(PlanSchedulingBoxes, SaveAndSendWithRealBoxes) {
    TJc_Jhbp_Frm s;
    showActive(&s);
    fetch(s);
    fillTask(s, u"2"_s);
    {
        RealMessageBoxes real;
        real.expect(u"保存上述3个客户的月计划检查工作信息吗？"_s, QMessageBox::Yes).expect(u"计划保存成功，请确认后发送！"_s);
        click(&s, u"Bbtn_Qr"_s);
    }
    s.Mem_Jcnr->setPlainText(u"周期检查"_s);
    {
        RealMessageBoxes real;
        real.expect(u"当前客户流程发送成功(检查批号为0000000001),请继续处理。"_s);
        click(&s, u"Bbtn_Fs"_s);
        EXPECT_EQ(real.seen().size(), 1);
    }
    EXPECT_EQ(batch().first(), u"task|3|1"_s);
    EXPECT_TRUE(s.isVisible());
}

TARVIN_INSTANTIATE_ENGINES(PlanSchedulingBoxes);

// On a demo utility, as a planner works: the screening screen's result
// (customers with more than one supply source) scheduled and sent. The
// pictures of both planning screens in docs/screens come from here.
class SchedulingOnDemo : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        if (dialect() != tarvin::sql::Dialect::SQLite) GTEST_SKIP() << "the demo pictures are taken on SQLite";
        expectNoBoxes = false;
        tarvin::demo::writeDemo(db->db(), {});
        Gdw = u"0101"_s;
        Gbm = db->scalar(u"SELECT min(dm) FROM z_bmbm"_s).toString();
    }
    void TearDown() override {
        Gbm.clear();
        ModuleTest::TearDown();
    }
};

TEST_P(SchedulingOnDemo, ScreenedCustomersScheduledAndSent) {
    {
        TJc_Jhbz_Frm plans;
        plans.Jhlx = u"月计划"_s;
        showActive(&plans);
        EXPECT_GT(plans.Dbg_Jcjh->model()->rowCount(), 0) << "the demo's monthly plans";
        screenshot(&plans, u"plan-compilation"_s);
    }
    TJc_Jhbp_Frm s;
    showActive(&s);
    onNextModal([](QWidget* w) {
        auto* k = static_cast<TJc_Kycssz_Frm*>(w);
        k->Pgc_Cxdx->setCurrentWidget(k->Ts_Ydjc);
        press(k->Rb_Dldy, Qt::Key_Space);
        click(k, u"Bbtn_Cx"_s);
        click(k, u"Bbtn_Qr"_s);
    });
    click(&s, u"Bbtn_Jckhjs"_s);
    showActive(&s);
    const int customers = s.Lb_Jckhjs->count();
    EXPECT_GT(customers, 0);
    EXPECT_EQ(s.Mem_Bz->toPlainText(), u"多路电源客户"_s);
    click(&s, u"Bbtn_Xz"_s);
    s.dblc_jclx->setFocus();
    pressFocused(Qt::Key_Down);
    onNextModal([](QWidget* w) { click(w, u"Bbtn_Qr"_s); });
    click(&s, u"Sb_Sz"_s);
    showActive(&s);
    s.Edt_Hjrs->setText(u"2"_s);
    s.Mem_Jcnr->setPlainText(u"多路电源客户专项检查：核对备用电源的计量与闭锁。"_s);
    boxes.answer(QMessageBox::Yes);
    click(&s, u"Bbtn_Qr"_s);
    EXPECT_EQ(boxes.last(), u"计划保存成功，请确认后发送！"_s);
    s.Lb_Jckhjs->setCurrentRow(0);
    Q_EMIT s.Lb_Jckhjs->itemClicked(s.Lb_Jckhjs->item(0));
    screenshot(&s, u"plan-scheduling"_s);
    click(&s, u"Bbtn_Fs"_s);
    EXPECT_TRUE(boxes.last().startsWith(u"当前客户流程发送成功"_s)) << boxes.last().toStdString();
    const QString jcph = boxes.last().section(u"检查批号为"_s, 1).left(10);
    EXPECT_EQ(db->scalar(u"SELECT count(*) FROM e_jcgzjl WHERE jcph = ?"_s, {jcph}).toInt(), customers);
}

TARVIN_INSTANTIATE_ENGINES(SchedulingOnDemo);

}  // namespace
