#include "Unt_Jc_Message.h"

#include "frame/MessageService.h"

namespace {
const QString kCaption = QStringLiteral("系统提示");
}

void ShowErrorMsg(const QString& text) {
    tarvin::MessageService::show(text, kCaption, QMessageBox::Critical, QMessageBox::Ok);
}

void ShowInfoMsg(const QString& text) {
    tarvin::MessageService::show(text, kCaption, QMessageBox::Information, QMessageBox::Ok);
}

int AskYesNo(const QString& text) {
    tarvin::MessageRequest r;
    r.caption = kCaption;
    r.text = text;
    r.icon = QMessageBox::Question;
    r.buttons = QMessageBox::Yes | QMessageBox::No;
    r.defaultButton = QMessageBox::Yes;
    // A box closed without a button (Escape) counts as No.
    return tarvin::MessageService::show(r) == QMessageBox::Yes ? mrYes : mrNo;
}
