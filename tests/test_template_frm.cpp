// The base screen's keyboard behaviour through real key events on a
// derived screen: Enter as Tab, help keys and the screen-name key.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

#include "data/MidasQuery.h"
#include "frame/Frm_Zt_Template.h"
#include "frame/HelpSystem.h"
#include "ScreenHarness.h"

using namespace tarvin::test;

namespace {

class TestScreen : public TZt_Template_Frm {
public:
    explicit TestScreen(const QString& name, bool withHelpButton = false) {
        setObjectName(name);
        auto* layout = new QVBoxLayout(this);
        first = new QLineEdit(this);
        first->setObjectName("Edt_First");
        second = new QLineEdit(this);
        second->setObjectName("Edt_Second");
        memo = new QPlainTextEdit(this);
        memo->setObjectName("Mem_Bz");
        grid = new QTableView(this);
        grid->setObjectName("Dbg_Grid");
        model.setRowCount(2);
        model.setColumnCount(3);
        grid->setModel(&model);
        ok = new QPushButton(QStringLiteral("确认(&O)"), this);
        ok->setObjectName("Bbtn_Qr");
        for (QWidget* w : {static_cast<QWidget*>(first), static_cast<QWidget*>(second),
                           static_cast<QWidget*>(memo), static_cast<QWidget*>(grid),
                           static_cast<QWidget*>(ok)})
            layout->addWidget(w);
        auto* group = new QGroupBox(this);
        check = new QCheckBox(QStringLiteral("选项"), group);
        check->setObjectName("ckb_01");
        (new QVBoxLayout(group))->addWidget(check);
        layout->addWidget(group);
        if (withHelpButton) {
            auto* help = new QPushButton(QStringLiteral("帮助"), this);
            help->setObjectName("BTN_HELP");
            layout->addWidget(help);
        }
        connect(first, &QLineEdit::returnPressed, [this] { ++firstGotEnter; });
        connect(ok, &QPushButton::clicked, [this] { ++okClicks; });
    }
    QCheckBox* check;
    QLineEdit* first;
    QLineEdit* second;
    QPlainTextEdit* memo;
    QTableView* grid;
    QPushButton* ok;
    QStandardItemModel model;
    int firstGotEnter = 0;
    int okClicks = 0;
};

struct HelpCalls {
    QStringList files, topics;
    tarvin::HelpSystem::Viewer previous;
    HelpCalls() {
        previous = tarvin::HelpSystem::setViewer([this](const QString& f, const QString& t) {
            files << f;
            topics << t;
        });
    }
    ~HelpCalls() { tarvin::HelpSystem::setViewer(previous); }
};

// dlyx.INI beside the executable, removed afterwards.
struct IniFile {
    QString path = QCoreApplication::applicationDirPath() + "/dlyx.INI";
    explicit IniFile(const QByteArray& text) {
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(text);
    }
    ~IniFile() { QFile::remove(path); }
};

TEST(TemplateScreen, StoredDesign) {
    TestScreen s("Jc_Test_Frm");
    TZt_Template_Frm bare;
    EXPECT_EQ(bare.windowTitle(), QStringLiteral("应用界面模板"));
    EXPECT_EQ(bare.objectName(), QStringLiteral("Zt_Template_Frm"));
    EXPECT_EQ(bare.size(), QSize(536, 348));
    EXPECT_EQ(bare.font().pixelSize(), 12);
    EXPECT_FALSE(bare.windowFlags() & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(bare.windowFlags() & Qt::WindowMaximizeButtonHint);
}

TEST(TemplateScreen, EnterMovesOnButKeepsItsMeaningInMemoAndGrid) {
    TestScreen s("Jc_Test_Frm");
    showActive(&s);

    // Edit: focus moves to the next control, and the edit still got Enter.
    s.first->setFocus();
    settle();
    press(s.first, Qt::Key_Return);
    EXPECT_EQ(s.firstGotEnter, 1);
    EXPECT_TRUE(s.second->hasFocus());
    EXPECT_EQ(s.okClicks, 0) << "Enter in an edit must not press a button";

    // Memo: a line break, focus stays.
    s.memo->setFocus();
    settle();
    type(s.memo, "a");
    press(s.memo, Qt::Key_Return);
    type(s.memo, "b");
    EXPECT_EQ(s.memo->toPlainText(), QStringLiteral("a\nb"));
    EXPECT_TRUE(s.memo->hasFocus());

    // Grid: one column on, focus stays in the grid.
    s.grid->setFocus();
    s.grid->setCurrentIndex(s.model.index(0, 0));
    settle();
    press(s.grid, Qt::Key_Return);
    EXPECT_TRUE(s.grid->hasFocus());
    EXPECT_EQ(s.grid->currentIndex(), s.model.index(0, 1));

    // A focused button is pressed by Enter.
    s.ok->setFocus();
    settle();
    press(s.ok, Qt::Key_Return);
    EXPECT_EQ(s.okClicks, 1);
}

TEST(TemplateScreen, F1OpensTheManualOfTheScreenAtItsTopic) {
    HelpCalls help;
    {
        TestScreen s("Gy_Qkhbh_Frm");
        showActive(&s);
        press(s.first, Qt::Key_F1);
    }
    {
        TestScreen s("Jc_Jhbz_Frm");
        showActive(&s);
        press(s.first, Qt::Key_F1);
    }
    {
        // The "Zk_" test never matches the upper-cased name.
        TestScreen s("Zk_Something_Frm");
        showActive(&s);
        press(s.first, Qt::Key_F1);
    }
    EXPECT_EQ(help.files, (QStringList{QStringLiteral("用户手册.HLP"), QStringLiteral("操作手册.HLP"),
                                       QStringLiteral("操作手册.HLP")}));
    EXPECT_EQ(help.topics, (QStringList{"Gy_Qkhbh_Frm", "Jc_Jhbz_Frm", "Zk_Something_Frm"}));
    // Both shipped manuals hold the topics.
    EXPECT_FALSE(tarvin::HelpSystem::resolve(QStringLiteral("用户手册.HLP")).isEmpty());
    EXPECT_FALSE(tarvin::HelpSystem::resolve(QStringLiteral("操作手册.HLP")).isEmpty());
}

TEST(TemplateScreen, HelpFileNamesComeFromTheIniBesideTheProgram) {
    HelpCalls help;
    IniFile ini("[Common]\nUserbook=guide.html\nHelpFile=\n");
    for (const char* name : {"Gy_Qkhbh_Frm", "Jc_Jhbz_Frm"}) {
        TestScreen s(name);
        showActive(&s);
        press(s.first, Qt::Key_F1);
    }
    EXPECT_EQ(help.files, (QStringList{"guide.html", QStringLiteral("操作手册.HLP")}));
}

TEST(TemplateScreen, AltHNeedsAHelpButton) {
    HelpCalls help;
    {
        TestScreen s("Jc_Jhbz_Frm");
        showActive(&s);
        press(s.first, Qt::Key_H, Qt::AltModifier);
        EXPECT_TRUE(help.topics.isEmpty());
    }
    {
        TestScreen s("Jc_Jhbz_Frm", true);
        showActive(&s);
        press(s.first, Qt::Key_H, Qt::AltModifier);
        EXPECT_EQ(help.topics.size(), 1);
        click(&s, "BTN_HELP");
        EXPECT_EQ(help.topics.size(), 2) << "BTN_HELP is bound to help";
    }
}

TEST(TemplateScreen, CtrlAltNNamesTheScreenInFront) {
    ScriptedMessages messages;
    TestScreen s("Jc_Jhbz_Frm");
    showActive(&s);
    press(s.first, Qt::Key_N, Qt::ControlModifier | Qt::AltModifier);
    ASSERT_EQ(messages.shown().size(), 1u);
    EXPECT_EQ(messages.shown()[0].caption, QStringLiteral("提示信息"));
    EXPECT_EQ(messages.shown()[0].icon, QMessageBox::Information);
    EXPECT_EQ(messages.last(), QStringLiteral("当前窗口名:Jc_Jhbz_Frm"));
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
    showActive(&s);
    const auto toScreen = [&s](QMessageBox*) { s.setFocus(); };
    const struct {
        QWidget* focus;
        Qt::Key key;
        Qt::KeyboardModifiers mods;
        QString box;
    } keys[] = {
        {s.check, Qt::Key_N, Qt::ControlModifier | Qt::AltModifier, QStringLiteral("当前窗口名:Jc_Bjsz_Frm")},
        {s.check, Qt::Key_F1, Qt::NoModifier,
         QStringLiteral("找不到帮助文件“missing.html”。请检查 dlyx.INI 中 [Common] 节的设置，或与系统管理员联系。")},
        {s.ok, Qt::Key_Return, Qt::NoModifier, QStringLiteral("已保存")},
    };
    for (const auto& k : keys) {
        RealMessageBoxes boxes;
        boxes.expect(k.box, QMessageBox::Ok, toScreen);
        k.focus->setFocus();
        settle();
        pressFocused(k.key, k.mods);
        settle();
        EXPECT_EQ(boxes.seen(), QStringList{k.box});
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
    showActive(&s);
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
    QWidget* viewer = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == "HelpViewer" && w->isVisible()) viewer = w;
    ASSERT_NE(viewer, nullptr);
    viewer->close();
}

}  // namespace
