#pragma once
// The modal boxes of the application, all titled "提示" and with buttons named in the
// interface's language, so that a box reads the same whichever Qt translations are present.

#include <QString>
#include <QStringList>
#include <optional>

class QDialog;
class QDialogButtonBox;
class QWidget;

namespace autoscene::ui {

// The text of the buttons that close a dialog.
QString closeText();

// The title is "提示" unless given.
void showNotice(QWidget* parent, const QString& text, const QString& title = {});
// True when the user confirms.
bool askToConfirm(QWidget* parent, const QString& text);
// A question answered with "是" (true) or "否".
bool askYesNo(QWidget* parent, const QString& text);
// The index of the button the user clicked among `buttons`; -1 when the box was closed.
int askChoice(QWidget* parent, const QString& title, const QString& text,
              const QStringList& buttons);
// "确定" and "取消" for `dialog`, accepting and rejecting it; the caller lays it out.
QDialogButtonBox* okCancelButtons(QDialog& dialog);
// The text entered; nothing when the user cancels.
std::optional<QString> askForText(QWidget* parent, const QString& prompt, const QString& initial);

}  // namespace autoscene::ui
