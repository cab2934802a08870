// The common functions: the database clock, numbering (also under several
// processes drawing at once), plan numbers, the business undo, customer
// checks, input checks, list and form chores, and the message boxes.
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSet>
#include <QTextEdit>
#include <QTreeWidget>
#include <cstdio>

#include "data/Connection.h"
#include "data/DataModules.h"
#include "Corpus.h"
#include "Fixtures.h"
#include "ModuleTest.h"
#include "frame/Unit_zt_gobal.h"
#include "common/Unt_Jc_Message.h"
#include "common/Unt_Zt_Message.h"
#include "common/unit_zt_pubfun.h"
#include "common/unt_jc_fuc.h"
#include "common/Unt_Zt_UserFuncs.h"

using namespace Qt::StringLiterals;
using namespace tarvin::test;
using tarvin::sql::Dialect;

namespace {

class CommonDb : public ModuleTest {
protected:
    // Moves a numbering sequence to its last number.
    void exhaust(const QString& name) {
        if (dialect() == Dialect::SQLite)
            db->exec(u"UPDATE z_xlh SET dqz = zdz WHERE xlm = ?"_s, {name});
        else
            db->exec(u"SELECT setval('seq_%1', 9999999999)"_s.arg(name.toLower()));
    }

    void application(const QString& cdbh, const QString& hh, const QString& hm,
                     const QString& yw, const QString& item) {
        db->exec(u"INSERT INTO a_khsqxx (cdbh, hh, hm, ywdm, dw) VALUES (?, ?, ?, ?, '01')"_s,
                  {cdbh, hh, hm, yw});
        if (!item.isEmpty())
            db->exec(u"INSERT INTO z_dqgw (cdbh, ywdm, khbh, hm, dqywxmc) VALUES (?, ?, ?, ?, ?)"_s,
                      {cdbh, yw, hh, hm, item});
    }
};

// ------------------------------------------------------------ server clock

TEST_P(CommonDb, ServerAndWorkflowTimeComeFromTheDatabaseClock) {
    const QDateTime at(QDate(2004, 7, 15), QTime(13, 45, 6));
    tarvin::db::setFixedClock(u"Shdl"_s, at);
    EXPECT_EQ(GetServerDateTime(), at);
    EXPECT_EQ(GetServerDate(), QDateTime(QDate(2004, 7, 15), QTime(0, 0)));
    EXPECT_EQ(GetServerNy(), u"200407"_s);

    // The last call sent the corpus's text with the date-only format.
    const corpus::Entry& text = corpus::entry(u"1.4/GetServerDate"_s);
    TMidasQuery* q = Zt_Funcs_Dm->Mqry_Select;
    EXPECT_EQ(q->SQL().Lines(), text.lines);
    EXPECT_EQ(q->ParamByName(u"format"_s).AsString(), text.params[0].value.toString());
    EXPECT_FALSE(q->Active());

    // A year's turn: the month is read from its own characters.
    const QDateTime yearEnd(QDate(2005, 12, 31), QTime(23, 59, 59));
    tarvin::db::setFixedClock(u"Shdl"_s, yearEnd);
    EXPECT_EQ(GetServerNy(), u"200512"_s);

    // The workflow library's clock is the same database clock, carried as a
    // TDateTime; a swapped entry point is what the screens then call.
    EXPECT_EQ(DateTimeToTDateTime(QDateTime(QDate(1900, 1, 1), QTime(6, 0))), 2.25);
    EXPECT_EQ(TDateTimeToDateTime(-1.25), QDateTime(QDate(1899, 12, 29), QTime(6, 0))) << "before the epoch the time still counts on";
    EXPECT_EQ(TDateTimeToDateTime(DateTimeToTDateTime(yearEnd)), yearEnd);
    EXPECT_EQ(WfGetSysDate(), yearEnd);

    TWorkflowEntries refusing = WorkflowEntries();
    refusing.lcsend = [](const char*, const char*, TDateTime, const char*, int32_t) -> int32_t { return 99; };
    const TWorkflowEntries real = SetWorkflowEntries(refusing);
    EXPECT_EQ(WfLcSend(u"0000000001"_s, u"40102"_s, at, u"0101"_s), 99);
    SetWorkflowEntries(real);
    EXPECT_EQ(WfLcSend(u"0000000001"_s, u"40102"_s, at, u"0101"_s), WF_NO_CASE) << "the real engine again";
    tarvin::db::setFixedClock(u"Shdl"_s, QDateTime());
    EXPECT_GE(GetServerDateTime().date().year(), 2024) << "the live clock again";
}

// ----------------------------------------------------------------- numbers

// Each sequence counts on its own; the block sent is the corpus's, with its
// one output parameter (the sequence's name) declared by hand.
TEST_P(CommonDb, NumberingGivesTenCharacterNumbersEmptyWhenExhaustedAndPlanNumbersFollowTheLargest) {
    const std::pair<QString (*)(), QString> all[] = {
        {GetNewCdbh, u"1.4/GetNewCdbh"_s}, {GetNewGdfabh, u"1.4/GetNewGdfabh"_s},
        {GetNewDnbId, u"1.4/GetNewDnbId"_s}, {GetNewJcph, u"1.4/GetNewJcph"_s}};
    TMidasQuery* q = Zt_Funcs_Dm->Mqry_Select;
    for (const auto& [draw, id] : all) {
        const corpus::Entry& block = corpus::entry(id);
        const QString sequence = block.declared.value(0).name;
        SCOPED_TRACE(sequence.toStdString());
        // A parameter left from an earlier statement must not survive.
        q->Params().CreateParam(ftString, u"stale"_s, ptInput);
        EXPECT_EQ(draw(), u"0000000001"_s);
        EXPECT_EQ(draw(), u"0000000002"_s);
        EXPECT_EQ(q->SQL().Lines(), block.lines);
        EXPECT_EQ(q->Params().Count(), 1) << "the stale parameter survived";
        EXPECT_FALSE(q->Active());

        exhaust(sequence);
        EXPECT_EQ(draw(), QString());
        EXPECT_EQ(draw(), QString());
    }

    // Plan numbers follow the largest plan.
    q = Dataset_Jc_Func->MQry_Select;
    EXPECT_EQ(GetNewJhbh(), u"0001"_s);
    EXPECT_EQ(q->SQL().Lines(), corpus::entry(u"1.4/GetNewJhbh/any"_s).lines);

    db->exec(u"INSERT INTO e_jcjh (jhbh, jhlx, dw) VALUES ('0007', '年计划', '01'), ('0041', '月计划', '01')"_s);
    EXPECT_EQ(GetNewJhbh(), u"0042"_s);
    EXPECT_EQ(q->SQL().Lines(), corpus::entry(u"1.4/GetNewJhbh/max"_s).lines);
    EXPECT_FALSE(q->Active());

    // Past four digits the number is written in full.
    db->exec(u"INSERT INTO e_jcjh (jhbh, jhlx, dw) VALUES ('9999', '月计划', '01')"_s);
    EXPECT_EQ(GetNewJhbh(), u"10000"_s);
}

// --------------------------------------------------------------- customers

TEST_P(CommonDb, CheckKhSqxxListsCasesInProgressStopsAtBusiness135ForAChangeOfNameAndUndoYysqTakesOneDocument) {
    const QString hh = u"0100000001"_s;
    application(u"0000000011"_s, hh, u"张三"_s, u"101"_s, u"受理"_s);
    application(u"0000000012"_s, hh, u"张三"_s, u"130"_s, u"受理"_s);   // never counts
    application(u"0000000013"_s, hh, u"张三"_s, u"135"_s, u"审核"_s);
    application(u"0000000014"_s, hh, u"张三"_s, u"102"_s, u"装表"_s);
    application(u"0000000015"_s, hh, u"张三"_s, u"141"_s, u"装表"_s);   // never counts
    application(u"0000000016"_s, hh, u"张三"_s, u"110"_s, QString());  // not in the workflow
    application(u"0000000017"_s, u"0100000002"_s, u"李四"_s, u"101"_s, u"受理"_s);

    ywdm = u"401"_s;
    const QString full = CheckKhSqxx(hh), case135 = u"传单编号:0000000013/户名:张三/当前业务项:审核;  "_s;
    QStringList sorted = full.split(u";  "_s);
    sorted.sort();
    // Every entry ends with ";  ", hence the empty piece.
    EXPECT_EQ(sorted, (QStringList{QString(), u"传单编号:0000000011/户名:张三/当前业务项:受理"_s,
                                   u"传单编号:0000000013/户名:张三/当前业务项:审核"_s,
                                   u"传单编号:0000000014/户名:张三/当前业务项:装表"_s}));

    // With business 120 the listing ends where the 135 case comes.
    ASSERT_FALSE(full.endsWith(case135)) << "the 135 case should not come last: " << full.toStdString();
    ywdm = u"120"_s;
    EXPECT_EQ(CheckKhSqxx(hh), full.left(full.indexOf(case135)));

    EXPECT_EQ(CheckKhSqxx(u"0100000009"_s), QString());
    EXPECT_EQ(Zt_Funcs_Dm->Mqry_Select->SQL().Lines(), corpus::entry(u"1.4/CheckKhSqxx"_s).lines);
    EXPECT_FALSE(Zt_Funcs_Dm->Mqry_Select->Active());

    // The business undo takes the one document it is given (what the routine
    // removes is its own test's); the block sent is the corpus's.
    UndoYysq(u"0000000013"_s);
    EXPECT_EQ(Dataset_Jc_Func->MQry_Select->SQL().Lines(), corpus::entry(u"1.4/UndoYysq"_s).lines);
    ywdm = u"401"_s;
    EXPECT_EQ(CheckKhSqxx(hh), QString(full).remove(case135));
}

TEST_P(CommonDb, IsValidKhWantsAnOpenAccountOfTheUnit) {
    corpus::loadFixture(*db);
    EXPECT_TRUE(IsValidKh(u"0000000001"_s, u"0101"_s));
    EXPECT_FALSE(IsValidKh(u"0000000004"_s, u"0101"_s));  // closed
    EXPECT_FALSE(IsValidKh(u"0000000005"_s, u"0101"_s));  // another unit
    EXPECT_TRUE(IsValidKh(u"0000000005"_s, u"0102"_s));
    EXPECT_FALSE(IsValidKh(u"0000000009"_s, u"0101"_s));
    EXPECT_FALSE(IsValidKh(QString(), u"0101"_s));
}

// ------------------------------------------------------------- form chores

TEST_P(CommonDb, FillComboBoxAppendsTheFirstColumnKeepsTheItemsAndPassesSqlErrorsOn) {
    QComboBox box;
    box.addItem(u"全部"_s);
    FillComboBox(&box, u"select mc, dm from w_dblb order by dm"_s);
    QStringList items;
    for (int i = 0; i < box.count(); ++i) items << box.itemText(i);
    EXPECT_EQ(items, (QStringList{u"全部"_s, u"有功表"_s, u"无功表"_s, u"需量表"_s, u"多功能表"_s,
                                  u"复费率表"_s, u"预付费表"_s}));
    EXPECT_FALSE(Zt_Funcs_Dm->Mqry_Select->Active());

    // Every meter category the database knows has its register letters.
    QStringList codes;
    for (int i = 1; i < box.count(); ++i) codes << GetDnbLxCode(box.itemText(i));
    EXPECT_EQ(codes, (QStringList{u"D"_s, u"EF"_s, u"X"_s, u"ABCDEFX"_s, u"CD"_s, u"D"_s}));
    EXPECT_EQ(GetDnbLxCode(u"电子表"_s), QString());

    // An SQL error reaches the caller, and the next call still works.
    EXPECT_THROW(FillComboBox(&box, u"select nosuchcolumn from w_dblb"_s), EDatabaseError);
    EXPECT_EQ(box.count(), 7);
    EXPECT_EQ(GetNewCdbh(), u"0000000001"_s);
}

TARVIN_INSTANTIATE_ENGINES(CommonDb);

// ------------------------------------------- numbering under contention

// Run as a child process by the test below: draws TARVIN_DRAW_COUNT document
// numbers from the database at TARVIN_DRAW_URL and prints each on its own
// line. Skipped in an ordinary run.
TEST(CommonNumberDraw, ChildDrawsDocumentNumbers) {
    const QString url = qEnvironmentVariable("TARVIN_DRAW_URL");
    if (url.isEmpty()) GTEST_SKIP() << "only run as the child of the contention test";
    const int n = qEnvironmentVariableIntValue("TARVIN_DRAW_COUNT");
    tarvin::db::openConnection(url, u"Shdl"_s);
    CreateDataModules();
    for (int i = 0; i < n; ++i) std::printf("CDBH=%s\n", qPrintable(GetNewCdbh()));
    std::fflush(stdout);
    FreeDataModules();
    tarvin::db::closeConnection(u"Shdl"_s);
}

TEST_P(CommonDb, FourProcessesDrawDistinctDocumentNumbers) {
    constexpr int kProcesses = 4, kEach = 1000;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"TARVIN_DRAW_URL"_s, db->url());
    env.insert(u"TARVIN_DRAW_COUNT"_s, QString::number(kEach));
    std::vector<std::unique_ptr<QProcess>> children;
    for (int i = 0; i < kProcesses; ++i) {
        auto& p = children.emplace_back(std::make_unique<QProcess>());
        p->setProcessEnvironment(env);
        p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p->start(QCoreApplication::applicationFilePath(), {u"--gtest_filter=CommonNumberDraw.ChildDrawsDocumentNumbers"_s});
    }
    // Only well-formed document numbers count.
    static const QRegularExpression drawnLine(u"^CDBH=(\\d{10})$"_s, QRegularExpression::MultilineOption);
    QStringList drawn;
    for (auto& p : children) {
        ASSERT_TRUE(p->waitForFinished(300000)) << "a drawing process did not finish";
        const QString out = QString::fromUtf8(p->readAllStandardOutput());
        EXPECT_TRUE(p->exitStatus() == QProcess::NormalExit && p->exitCode() == 0) << out.toStdString();
        for (auto m = drawnLine.globalMatch(out); m.hasNext();) drawn << m.next().captured(1);
    }
    EXPECT_EQ(drawn.size(), kProcesses * kEach);
    EXPECT_EQ(QSet<QString>(drawn.begin(), drawn.end()).size(), drawn.size()) << "a number was drawn twice";
    // Nothing was skipped: the next number follows the last one drawn.
    EXPECT_EQ(GetNewCdbh(), u"%1"_s.arg(kProcesses * kEach + 1, 10, 10, QChar(u'0')));
}

// ------------------------------------------------------------ input checks

// Each check against the texts it takes and the texts it refuses.
TEST(CommonChecks, IntegerRealAndDocumentNumberTexts) {
    const struct {
        const char* name;
        bool (*check)(const QString&);
        QStringList takes, refuses;
    } checks[] = {
        {"IsIntStr", IsIntStr, {u"12"_s, u"-2147483648"_s, u"2147483647"_s},
         {u"2147483648"_s, u"-2147483649"_s, QString(), u"1.5"_s, u"12a"_s, u"-"_s}},
        // Blanks are not empty for CheckIntStr: nothing is left to convert.
        {"CheckIntStr", CheckIntStr, {QString(), u" 12 "_s, u"-7"_s}, {u"1.5"_s, u"   "_s, u"9999999999"_s}},
        {"CheckFloatStr", CheckFloatStr, {QString(), u"1.5"_s, u" -0.25 "_s, u"12"_s}, {u"1.5.1"_s, u"abc"_s}},
        {"IsCdbh", IsCdbh, {u"0000000001"_s, u"9999999999"_s}, {u"12345"_s, u"00000000001"_s, u"000000000A"_s, QString()}},
    };
    for (const auto& c : checks) {
        for (const QString& s : c.takes) EXPECT_TRUE(c.check(s)) << c.name << " \"" << s.toStdString() << '"';
        for (const QString& s : c.refuses) EXPECT_FALSE(c.check(s)) << c.name << " \"" << s.toStdString() << '"';
    }
}

TEST(CommonChecks, ZeroPadKeepsTheRightmostCharacters) {
    EXPECT_EQ(ZeroPad(u"12"_s, 4), u"0012"_s);
    EXPECT_EQ(ZeroPad(u"123456"_s, 4), u"3456"_s);
    EXPECT_EQ(ZeroPad(QString(), 3), u"000"_s);
    EXPECT_EQ(ZeroPad(u"12"_s, 0), QString());
}

// ---------------------------------------------------------- screen chores

QStringList rows(const QTreeWidget& list) {
    QStringList out;
    for (int i = 0; i < list.topLevelItemCount(); ++i) {
        QStringList cols;
        for (int c = 0; c < list.columnCount(); ++c) cols << list.topLevelItem(i)->text(c);
        out << cols.join(u'|');
    }
    return out;
}

TEST(CommonLists, MovedRowsArriveInReverseOrder) {
    QTreeWidget source, target, all;
    for (QTreeWidget* list : {&source, &target, &all}) list->setColumnCount(3);
    for (int i = 0; i <= 4; ++i)
        new QTreeWidgetItem(i ? &source : &target, {u"h%1"_s.arg(i), u"name%1"_s.arg(i), u"addr%1"_s.arg(i)});

    MoveListItems(&source, &target, 2, false);  // nothing selected: nothing moves
    EXPECT_EQ(source.topLevelItemCount(), 4);
    EXPECT_EQ(target.topLevelItemCount(), 1);

    source.setSelectionMode(QAbstractItemView::ExtendedSelection);
    source.topLevelItem(1)->setSelected(true);
    source.topLevelItem(3)->setSelected(true);
    MoveListItems(&source, &target, 2, false);
    EXPECT_EQ(rows(source), (QStringList{u"h1|name1|addr1"_s, u"h3|name3|addr3"_s}));
    EXPECT_EQ(rows(target), (QStringList{u"h0|name0|addr0"_s, u"h4|name4|addr4"_s, u"h2|name2|addr2"_s}));

    // Only the first n sub-items travel.
    source.topLevelItem(0)->setSelected(true);
    MoveListItems(&source, &target, 1, false);
    EXPECT_EQ(rows(target).last(), u"h1|name1|"_s);

    // All: selection does not matter, the source empties; from an empty
    // source nothing moves.
    MoveListItems(&target, &all, 2, true);
    MoveListItems(&target, &all, 2, true);
    EXPECT_EQ(target.topLevelItemCount(), 0);
    EXPECT_EQ(rows(all), (QStringList{u"h1|name1|"_s, u"h2|name2|addr2"_s, u"h4|name4|addr4"_s, u"h0|name0|addr0"_s}));
}

// Edits and memos empty; other inputs keep their values.
TEST(CommonForms, ClearFormEditsEmptiesEditsAndMemosOfAScreen) {
    QDialog screen;
    auto* group = new QGroupBox(&screen);
    auto* edit = new QLineEdit(u"0100000001"_s, &screen);
    auto* nested = new QLineEdit(u"张三"_s, group);
    auto* memo = new QTextEdit(u"备注"_s, &screen);
    auto* plain = new QPlainTextEdit(u"说明"_s, group);
    auto* combo = new QComboBox(&screen);
    combo->setEditable(true);
    combo->addItem(u"年计划"_s);
    auto* check = new QCheckBox(u"是"_s, &screen);
    check->setChecked(true);
    const auto texts = [&] {
        return QStringList{edit->text(), nested->text(), memo->toPlainText(), plain->toPlainText(),
                           combo->currentText(), check->isChecked() ? u"checked"_s : u"unchecked"_s};
    };

    ClearFormEdits(group);  // not a screen: nothing happens
    EXPECT_EQ(texts(), (QStringList{u"0100000001"_s, u"张三"_s, u"备注"_s, u"说明"_s, u"年计划"_s, u"checked"_s}));
    ClearFormEdits(&screen);
    EXPECT_EQ(texts(), (QStringList{{}, {}, {}, {}, u"年计划"_s, u"checked"_s}));
    ClearFormEdits(nullptr);  // harmless
}

// --------------------------------------------------------------- messages

TEST(CommonMessages, CaptionsIconsAndButtons) {
    ScriptedMessages boxes;
    ShowTip(u"保存成功！"_s);
    ShowErrorMsg(u"保存失败！"_s);
    ShowInfoMsg(u"已发送。"_s);
    boxes.answer(QMessageBox::Yes);
    EXPECT_EQ(AskYesNo(u"确定删除吗？"_s), 6);
    boxes.answer(QMessageBox::No);
    EXPECT_EQ(AskYesNo(u"确定删除吗？"_s), 7);
    boxes.answer(QMessageBox::Cancel);  // Escape on a Yes/No box
    EXPECT_EQ(AskYesNo(u"继续吗？"_s), mrNo);

    QStringList shown;  // text, caption, icon, buttons
    for (const auto& m : boxes.shown()) shown << u"%1 %2 %3 %4"_s.arg(m.text, m.caption).arg(m.icon).arg(int(m.buttons));
    const int yesNo = QMessageBox::Yes | QMessageBox::No;
    EXPECT_EQ(shown, (QStringList{u"保存成功！ 提示 %1 %2"_s.arg(QMessageBox::Information).arg(QMessageBox::Ok),
                                  u"保存失败！ 系统提示 %1 %2"_s.arg(QMessageBox::Critical).arg(QMessageBox::Ok),
                                  u"已发送。 系统提示 %1 %2"_s.arg(QMessageBox::Information).arg(QMessageBox::Ok),
                                  u"确定删除吗？ 系统提示 %1 %2"_s.arg(QMessageBox::Question).arg(yesNo),
                                  u"确定删除吗？ 系统提示 %1 %2"_s.arg(QMessageBox::Question).arg(yesNo),
                                  u"继续吗？ 系统提示 %1 %2"_s.arg(QMessageBox::Question).arg(yesNo)}));
}

}  // namespace
