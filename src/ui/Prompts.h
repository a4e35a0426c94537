#pragma once
// The modal boxes of the application, all titled "提示" and with buttons named in the
// interface's language, so that a box reads the same whichever Qt translations are present.

#include <QString>
#include <optional>

class QWidget;

namespace autoscene::ui {

void showNotice(QWidget* parent, const QString& text);
// True when the user confirms.
bool askToConfirm(QWidget* parent, const QString& text);
// The text entered; nothing when the user cancels.
std::optional<QString> askForText(QWidget* parent, const QString& prompt, const QString& initial);

}  // namespace autoscene::ui
