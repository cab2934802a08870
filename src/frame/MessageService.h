// One place every message box of the module goes through: the caption,
// icon and buttons of the original boxes, shown as a QMessageBox. Tests
// install a handler that reads the texts and scripts the answers.
#pragma once

#include <QMessageBox>
#include <QString>
#include <functional>

namespace tarvin {

struct MessageRequest {
    QString caption;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    QWidget* parent = nullptr;
};

class MessageService {
public:
    // Returns the button that closed the box.
    using Handler = std::function<QMessageBox::StandardButton(const MessageRequest&)>;

    static QMessageBox::StandardButton show(const MessageRequest& request);
    static QMessageBox::StandardButton show(const QString& text, const QString& caption,
                                            QMessageBox::Icon icon,
                                            QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                                            QWidget* parent = nullptr);

    // Replaces the handler (an empty one restores the real boxes); returns
    // the previous one so that callers can restore it.
    static Handler setHandler(Handler handler);
};

}  // namespace tarvin
