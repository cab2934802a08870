#include "ScreenHarness.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QPixmap>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace tarvin::test {

ScriptedMessages::ScriptedMessages() {
    previous_ = tarvin::MessageService::setHandler([this](const tarvin::MessageRequest& r) {
        shown_.push_back(r);
        if (!script_.empty()) {
            const auto b = script_.front();
            script_.pop_front();
            return b;
        }
        for (auto b : {QMessageBox::Ok, QMessageBox::Yes, QMessageBox::Retry, QMessageBox::Cancel})
            if (r.buttons & b) return b;
        return QMessageBox::Ok;
    });
}

ScriptedMessages::~ScriptedMessages() { tarvin::MessageService::setHandler(std::move(previous_)); }

QStringList ScriptedMessages::texts() const {
    QStringList out;
    for (const auto& r : shown_) out << r.text;
    return out;
}

RealMessageBoxes::RealMessageBoxes() : timer_(std::make_unique<QTimer>()) {
    previous_ = tarvin::MessageService::setHandler({});
    timer_->setInterval(5);
    QObject::connect(timer_.get(), &QTimer::timeout, [this] { pump(); });
    timer_->start();
}

RealMessageBoxes::~RealMessageBoxes() {
    timer_->stop();
    tarvin::MessageService::setHandler(std::move(previous_));
    for (const Step& step : steps_) ADD_FAILURE() << "no box came for: " << step.text.toStdString();
}

RealMessageBoxes& RealMessageBoxes::expect(const QString& text, QMessageBox::StandardButton answer,
                                           Meanwhile meanwhile) {
    steps_.push_back({text, answer, std::move(meanwhile)});
    return *this;
}

void RealMessageBoxes::pump() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isVisible() || answered_.contains(box)) return;
    answered_ << box;
    seen_ << box->text();
    QAbstractButton* button = nullptr;
    if (steps_.empty() || steps_.front().text != box->text()) {
        ADD_FAILURE() << "a box no step expected: " << box->text().toStdString()
                      << (steps_.empty() ? std::string() : " (expected: " + steps_.front().text.toStdString() + ")");
        button = box->escapeButton() ? box->escapeButton() : box->buttons().value(0);
    } else {
        Step step = steps_.front();
        steps_.pop_front();
        if (step.meanwhile) step.meanwhile(box);
        button = box->button(step.answer);
        EXPECT_NE(button, nullptr) << box->text().toStdString() << " has no such button";
    }
    // The window under the box becomes active again once it closes, as a
    // window manager makes it (the offscreen platform has none).
    QPointer<QWidget> under = box->parentWidget() ? box->parentWidget()->window() : nullptr;
    if (button) QTest::mouseClick(button, Qt::LeftButton);
    if (under && under->isVisible()) {
        under->activateWindow();
        QApplication::setActiveWindow(under);
    }
}

void settle() {
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

void showActive(QWidget* window) {
    window->show();
    window->activateWindow();
    QApplication::setActiveWindow(window);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    settle();
}

void click(QObject* root, const QString& name) {
    auto* b = find<QAbstractButton>(root, name);
    if (!b) {
        ADD_FAILURE() << "no button " << name.toStdString();
        return;
    }
    EXPECT_TRUE(b->isEnabled()) << name.toStdString() << " is disabled";
    // A check box or radio stretched by its layout takes clicks only on its
    // box and text, so a person aims at the box, not the middle.
    const bool boxed = qobject_cast<QCheckBox*>(b) || qobject_cast<QRadioButton*>(b);
    QTest::mouseClick(b, Qt::LeftButton, {}, boxed ? QPoint(6, b->height() / 2) : QPoint());
    settle();
}

void press(QWidget* target, Qt::Key key, Qt::KeyboardModifiers mods) {
    QTest::keyClick(target, key, mods);
    settle();
}

void pressFocused(Qt::Key key, Qt::KeyboardModifiers mods) {
    QWidget* focus = QApplication::focusWidget();
    EXPECT_NE(focus, nullptr) << "no control has the focus";
    if (focus) press(focus, key, mods);
}

void type(QWidget* target, const QString& text) {
    QTest::keyClicks(target, text);
    settle();
}

void clickRow(QAbstractItemView* view, int row, Qt::KeyboardModifiers mods, bool twice, int column) {
    const QPoint at = view->visualRect(view->model()->index(row, column)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, mods, at);
    if (twice) QTest::mouseDClick(view->viewport(), Qt::LeftButton, mods, at);
    settle();
}

QStringList columnTexts(const QAbstractItemView* view, int column) {
    QStringList out;
    for (int r = 0; r < view->model()->rowCount(); ++r) out << view->model()->index(r, column).data().toString();
    return out;
}

void screenshot(QWidget* widget, const QString& name) {
    if (qEnvironmentVariableIsEmpty("TARVIN_SCREENSHOT_DIR")) return;
    settle();
    screenshot(widget->grab().toImage(), name);
}

void screenshot(const QImage& picture, const QString& name) {
    const QString dir = qEnvironmentVariable("TARVIN_SCREENSHOT_DIR");
    if (!dir.isEmpty()) { EXPECT_TRUE(picture.save(dir + QLatin1Char('/') + name + QStringLiteral(".png"))); }
}

void onNextModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, act] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible()) return;
        timer->stop();
        timer->deleteLater();
        act(modal);
    });
    timer->start();
}

QString modalOpenedBy(const std::function<void()>& act) {
    QString opened;
    onNextModal([&opened](QWidget* w) {
        opened = QString::fromLatin1(w->metaObject()->className());
        w->close();
    });
    act();
    return opened;
}

}  // namespace tarvin::test
