// Driving screens in tests: the message service scripted, controls found
// by object name, keys and clicks as real events, modal dialogs answered.
#pragma once

#include <QAbstractItemView>
#include <QMessageBox>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <gtest/gtest.h>

#include "frame/MessageService.h"

namespace tarvin::test {

// Records every message box and answers it from a script (Ok, or the
// first of its buttons, when the script is empty). Restores the real boxes
// when destroyed.
class ScriptedMessages {
public:
    ScriptedMessages();
    ~ScriptedMessages();
    void answer(QMessageBox::StandardButton button) { script_.push_back(button); }
    const std::vector<tarvin::MessageRequest>& shown() const { return shown_; }
    QStringList texts() const;
    QString last() const { return shown_.empty() ? QString() : shown_.back().text; }
    void clear() { shown_.clear(); }

private:
    std::deque<QMessageBox::StandardButton> script_;
    std::vector<tarvin::MessageRequest> shown_;
    tarvin::MessageService::Handler previous_;
};

// The real boxes instead of the script: each QMessageBox shows modally and
// a pump answers it as a person would, by clicking the button the next
// expected step names once the box is up. A box no step expected is a
// failure (it is closed with its escape button so the test goes on), and
// so is a step still waiting when this goes out of scope.
class RealMessageBoxes {
public:
    // `meanwhile` runs while the box is up, before the answer (a window
    // manager moving the focus, say).
    using Meanwhile = std::function<void(QMessageBox*)>;
    RealMessageBoxes();
    ~RealMessageBoxes();
    RealMessageBoxes& expect(const QString& text, QMessageBox::StandardButton answer = QMessageBox::Ok,
                             Meanwhile meanwhile = {});
    QStringList seen() const { return seen_; }

private:
    void pump();
    struct Step {
        QString text;
        QMessageBox::StandardButton answer;
        Meanwhile meanwhile;
    };
    std::deque<Step> steps_;
    QStringList seen_;
    QList<QPointer<QMessageBox>> answered_;
    std::unique_ptr<QTimer> timer_;
    tarvin::MessageService::Handler previous_;
};

// The child of `root` with this object name; fails the test when missing.
template <class T = QWidget>
T* find(QObject* root, const QString& name) {
    T* w = root->findChild<T*>(name);
    EXPECT_NE(w, nullptr) << "no " << name.toStdString() << " under "
                          << root->objectName().toStdString();
    return w;
}

// Shows the window, makes it active and lets pending events run.
void showActive(QWidget* window);
void settle();
void click(QObject* root, const QString& name);
void press(QWidget* target, Qt::Key key, Qt::KeyboardModifiers mods = Qt::NoModifier);
// A key as a person presses it: to the control that has the focus.
void pressFocused(Qt::Key key, Qt::KeyboardModifiers mods = Qt::NoModifier);
void type(QWidget* target, const QString& text);

// A click on a cell of a grid's row, where a person clicks; with `twice` a
// double click after it, as the system delivers one.
void clickRow(QAbstractItemView* view, int row, Qt::KeyboardModifiers mods = {}, bool twice = false, int column = 0);
// One column of a grid or list, top to bottom.
QStringList columnTexts(const QAbstractItemView* view, int column = 0);

// Saves a PNG of the widget (or a rendered page) as DIR/NAME.png when
// TARVIN_SCREENSHOT_DIR is set (how docs/ gets its pictures); does nothing
// otherwise.
void screenshot(QWidget* widget, const QString& name);
void screenshot(const QImage& picture, const QString& name);

// Runs `act` on the next modal dialog that opens (after it is shown), then
// returns; use before the action that opens it. The dialog is given as
// argument; `act` must close it.
void onNextModal(std::function<void(QWidget*)> act);
// The class of the modal dialog that `act` opens, closed at once ("" if none).
QString modalOpenedBy(const std::function<void()>& act);

}  // namespace tarvin::test
