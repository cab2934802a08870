// The inspection screens' message boxes, captioned "系统提示".
#pragma once

#include <QString>

void ShowErrorMsg(const QString& text);  // error icon, OK
void ShowInfoMsg(const QString& text);   // information icon, OK
// Question with Yes and No: mrYes (6) or mrNo (7), the button ids the
// callers compare with.
inline constexpr int mrYes = 6;
inline constexpr int mrNo = 7;
int AskYesNo(const QString& text);
