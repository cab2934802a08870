#include "ScreenHarness.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPixmap>
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
    if (!b) return;
    EXPECT_TRUE(b->isEnabled()) << name.toStdString() << " is disabled";
    QTest::mouseClick(b, Qt::LeftButton);
    settle();
}

void press(QWidget* target, Qt::Key key, Qt::KeyboardModifiers mods) {
    QTest::keyClick(target, key, mods);
    settle();
}

void type(QWidget* target, const QString& text) {
    QTest::keyClicks(target, text);
    settle();
}

void screenshot(QWidget* widget, const QString& name) {
    const QString dir = qEnvironmentVariable("TARVIN_SCREENSHOT_DIR");
    if (dir.isEmpty()) return;
    settle();
    EXPECT_TRUE(widget->grab().save(dir + QLatin1Char('/') + name + QStringLiteral(".png")));
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

}  // namespace tarvin::test
