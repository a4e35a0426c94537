#pragma once
// The frame the task's list dialogs share: the list over a row of buttons, Close at the end.

#include <QString>
#include <functional>
#include <vector>

class QDialog;
class QListWidget;

namespace autoscene::ui {

struct ListButton {
    QString text;
    const char* objectName;
    std::function<void()> clicked;
};

void layOutListDialog(QDialog& dialog, QListWidget& list, const std::vector<ListButton>& buttons);

}  // namespace autoscene::ui
