#include "MessageService.h"

#include <QApplication>

namespace tarvin {

namespace {
MessageService::Handler& handler() {
    static MessageService::Handler h;
    return h;
}

QMessageBox::StandardButton showBox(const MessageRequest& r) {
    QWidget* parent = r.parent ? r.parent : QApplication::activeWindow();
    QMessageBox box(r.icon, r.caption, r.text, r.buttons, parent);
    if (r.defaultButton != QMessageBox::NoButton) box.setDefaultButton(r.defaultButton);
    const int answer = box.exec();
    return static_cast<QMessageBox::StandardButton>(answer);
}
}  // namespace

QMessageBox::StandardButton MessageService::show(const MessageRequest& request) {
    if (handler()) return handler()(request);
    return showBox(request);
}

QMessageBox::StandardButton MessageService::show(const QString& text, const QString& caption,
                                                 QMessageBox::Icon icon,
                                                 QMessageBox::StandardButtons buttons,
                                                 QWidget* parent) {
    MessageRequest r;
    r.caption = caption;
    r.text = text;
    r.icon = icon;
    r.buttons = buttons;
    r.parent = parent;
    return show(r);
}

MessageService::Handler MessageService::setHandler(Handler h) {
    Handler previous = std::move(handler());
    handler() = std::move(h);
    return previous;
}

}  // namespace tarvin
