#include "Unt_Zt_Message.h"

#include "frame/MessageService.h"

void ShowTip(const QString& text) {
    tarvin::MessageService::show(text, QStringLiteral("提示"), QMessageBox::Information, QMessageBox::Ok);
}
