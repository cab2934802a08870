// The base screen's keyboard behaviour through real key events on a
// derived screen: Enter as Tab, help keys and the screen-name key.
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

#include "data/MidasQuery.h"
#include "frame/Frm_Zt_Template.h"
#include "frame/HelpSystem.h"
#include "ScreenHarness.h"

using namespace tarvin::test;

namespace {

// Edits, a memo, a grid, a button and a check box in a group; shown active.
class TestScreen : public TZt_Template_Frm {
public:
    explicit TestScreen(const QString& name, bool withHelpButton = false) {
        setObjectName(name);
        auto* layout = new QVBoxLayout(this);
        const auto add = [&](auto* w, const char* id) { w->setObjectName(id); layout->addWidget(w); return w; };
        first = add(new QLineEdit, "Edt_First");
        second = add(new QLineEdit, "Edt_Second");
        memo = add(new QPlainTextEdit, "Mem_Bz");
        grid = add(new QTableView, "Dbg_Grid");
        grid->setModel(&model);
        ok = add(new QPushButton(QStringLiteral("确认(&O)")), "Bbtn_Qr");
        auto* group = add(new QGroupBox, "Gbx_Options");
        (new QVBoxLayout(group))->addWidget(check = new QCheckBox(QStringLiteral("选项")));
        check->setObjectName("ckb_01");
        if (withHelpButton) add(new QPushButton(QStringLiteral("帮助")), "BTN_HELP");
        connect(first, &QLineEdit::returnPressed, [this] { ++firstGotEnter; });
        connect(ok, &QPushButton::clicked, [this] { ++okClicks; });
        showActive(this);
    }
    QCheckBox* check;
    QLineEdit *first, *second;
    QPlainTextEdit* memo;
    QTableView* grid;
    QPushButton* ok;
    QStandardItemModel model{2, 3};
    int firstGotEnter = 0, okClicks = 0;
};

void focus(QWidget* w) {
    w->setFocus();
    settle();
}

struct HelpCalls {
    QStringList files, topics;
    tarvin::HelpSystem::Viewer previous = tarvin::HelpSystem::setViewer([this](const QString& f, const QString& t) {
        files << f;
        topics << t;
    });
    ~HelpCalls() { tarvin::HelpSystem::setViewer(previous); }
    void f1(std::initializer_list<const char*> screens) {
        for (const char* name : screens) press(TestScreen(name).first, Qt::Key_F1);
    }
};

// dlyx.INI beside the executable, removed afterwards.
struct IniFile {
    QString path = QCoreApplication::applicationDirPath() + "/dlyx.INI";
    explicit IniFile(const QByteArray& text) {
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly) && f.write(text) == text.size());
    }
    ~IniFile() { QFile::remove(path); }
};

TEST(TemplateScreen, EnterMovesOnButKeepsItsMeaningInMemoAndGrid) {
    TestScreen s("Jc_Test_Frm");
    EXPECT_FALSE(s.windowFlags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    // Edit: focus moves to the next control, and the edit still got Enter.
    focus(s.first);
    press(s.first, Qt::Key_Return);
    EXPECT_EQ(s.firstGotEnter, 1);
    EXPECT_TRUE(s.second->hasFocus());
    EXPECT_EQ(s.okClicks, 0) << "Enter in an edit must not press a button";

    // Memo: a line break, focus stays.
    focus(s.memo);
    type(s.memo, "a");
    press(s.memo, Qt::Key_Return);
    type(s.memo, "b");
    EXPECT_EQ(s.memo->toPlainText(), QStringLiteral("a\nb"));
    EXPECT_TRUE(s.memo->hasFocus());

    // Grid: one column on, focus stays in the grid.
    s.grid->setCurrentIndex(s.model.index(0, 0));
    focus(s.grid);
    press(s.grid, Qt::Key_Return);
    EXPECT_TRUE(s.grid->hasFocus());
    EXPECT_EQ(s.grid->currentIndex(), s.model.index(0, 1));
}

// F1 opens the screen's manual at its topic, Alt+H too on a screen with a
// help button; dlyx.INI beside the program may name other manuals.
TEST(TemplateScreen, HelpKeysOpenTheManualOfTheScreenAtItsTopic) {
    HelpCalls help;
    // The "Zk_" test never matches the upper-cased name.
    help.f1({"Gy_Qkhbh_Frm", "Jc_Jhbz_Frm", "Zk_Something_Frm"});
    EXPECT_EQ(help.files, (QStringList{QStringLiteral("用户手册.HLP"), QStringLiteral("操作手册.HLP"),
                                       QStringLiteral("操作手册.HLP")}));
    EXPECT_EQ(help.topics, (QStringList{"Gy_Qkhbh_Frm", "Jc_Jhbz_Frm", "Zk_Something_Frm"}));
    // Both shipped manuals hold the topics.
    for (const QString& manual : {QStringLiteral("用户手册.HLP"), QStringLiteral("操作手册.HLP")})
        EXPECT_FALSE(tarvin::HelpSystem::resolve(manual).isEmpty()) << manual.toStdString();

    help.topics.clear();
    press(TestScreen("Jc_Jhbz_Frm").first, Qt::Key_H, Qt::AltModifier);
    EXPECT_TRUE(help.topics.isEmpty()) << "Alt+H needs a help button";
    TestScreen s("Jc_Jhbz_Frm", true);
    press(s.first, Qt::Key_H, Qt::AltModifier);
    click(&s, "BTN_HELP");
    EXPECT_EQ(help.topics, QStringList(2, "Jc_Jhbz_Frm"));

    IniFile ini("[Common]\nUserbook=guide.html\nHelpFile=\n");
    help.files.clear();
    help.f1({"Gy_Qkhbh_Frm", "Jc_Jhbz_Frm"});
    EXPECT_EQ(help.files, (QStringList{"guide.html", QStringLiteral("操作手册.HLP")}));
}

TEST(TemplateScreen, CtrlAltNNamesTheScreenInAnInformationBox) {
    ScriptedMessages messages;
    press(TestScreen("Jc_Jhbz_Frm").first, Qt::Key_N, Qt::ControlModifier | Qt::AltModifier);
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_EQ(messages.shown()[0].caption, QStringLiteral("提示信息"));
    EXPECT_EQ(messages.shown()[0].icon, QMessageBox::Information);
}

// With real boxes, whatever a box does to the focus: the box's own modal
// loop runs inside the key press, and the press then travels on to the
// focused control's parents. The focus is moved to the screen while the box
// is up, as a window manager may do on a real display.
TEST(TemplateScreen, AKeyThatOpensABoxOpensItOnce) {
    IniFile ini("[Common]\nHelpFile=missing.html\n");
    TestScreen s("Jc_Bjsz_Frm");
    s.Handle(s.ok, &QPushButton::clicked, [] {
        tarvin::MessageService::show(QStringLiteral("已保存"), QStringLiteral("提示"), QMessageBox::Information);
    });
    const auto toScreen = [&s](QMessageBox*) { s.setFocus(); };
    const std::tuple<QWidget*, Qt::Key, Qt::KeyboardModifiers, QString> keys[] = {
        {s.check, Qt::Key_N, Qt::ControlModifier | Qt::AltModifier, QStringLiteral("当前窗口名:Jc_Bjsz_Frm")},
        {s.check, Qt::Key_F1, Qt::NoModifier,
         QStringLiteral("找不到帮助文件“missing.html”。请检查 dlyx.INI 中 [Common] 节的设置，或与系统管理员联系。")},
        {s.ok, Qt::Key_Return, Qt::NoModifier, QStringLiteral("已保存")},
    };
    for (const auto& [control, key, mods, box] : keys) {
        RealMessageBoxes boxes;
        boxes.expect(box, QMessageBox::Ok, toScreen);
        focus(control);
        pressFocused(key, mods);
        settle();
        EXPECT_EQ(boxes.seen(), QStringList{box});
        EXPECT_TRUE(s.isVisible());
    }
}

// An error raised in a handler becomes the data layer's message; the screen
// stays open and goes on working.
TEST(TemplateScreen, AnErrorInAHandlerIsShownAndTheScreenStays) {
    TestScreen s("Jc_Test_Frm");
    int calls = 0;
    s.Handle(s.ok, &QPushButton::clicked, [&calls] {
        if (++calls == 1) throw EDatabaseError(QStringLiteral("ORA-00942: table or view does not exist"));
    });
    {
        RealMessageBoxes boxes;
        boxes.expect(QStringLiteral("ORA-00942: table or view does not exist"));
        click(&s, "Bbtn_Qr");
    }
    EXPECT_TRUE(s.isVisible());
    ScriptedMessages none;
    click(&s, "Bbtn_Qr");
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(none.texts().isEmpty());
}

TEST(TemplateScreen, ShippedHelpOpensInAViewerAtTheTopic) {
    tarvin::HelpSystem::setHelpFile(QStringLiteral("操作手册.HLP"));
    tarvin::HelpSystem::showTopic(QStringLiteral("Jc_Bjsz_Frm"));
    settle();
    const QWidgetList top = QApplication::topLevelWidgets();
    const auto viewer = std::find_if(top.begin(), top.end(),
                                     [](QWidget* w) { return w->objectName() == "HelpViewer" && w->isVisible(); });
    ASSERT_NE(viewer, top.end());
    (*viewer)->close();
}

}  // namespace
