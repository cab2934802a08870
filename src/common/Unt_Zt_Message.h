// The framework's tip box.
#pragma once

#include <QString>

// Information box captioned "提示" with an OK button.
void ShowTip(const QString& text);
