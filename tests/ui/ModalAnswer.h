#pragma once
// Answers the modal dialogs that an action opens, as a user would, and tells what they said.

#include <QString>
#include <functional>
#include <vector>

class QAbstractItemView;
class QMenu;
class QWidget;

namespace autoscene::testing {

struct ModalSeen {
    bool shown = false;
    QString title;
    QString text;  // a message box's text or an input dialog's prompt
    QString said() const { return title + ": " + text; }
};

struct ModalAnswer {
    QString button;                           // the text of the button to click, or none
    QString input;                            // typed into an input dialog first, if any
    std::function<void(QWidget&)> fill = {};  // sets the dialog's controls before the click
};

// Runs `trigger` and answers the dialogs it opens one after another, in order; one entry
// per answer, `shown` false for the dialogs that never came.
std::vector<ModalSeen> answerModals(const std::function<void()>& trigger,
                                    const std::vector<ModalAnswer>& answers);

inline ModalSeen answerModal(const std::function<void()>& trigger, const QString& button,
                             const QString& input = {}) {
    return answerModals(trigger, {{button, input}}).front();
}

// Opens `view`'s context menu on `row` as a right click does, and hands the menu to `use`
// before it is closed.
void withContextMenu(QAbstractItemView& view, int row, const std::function<void(QMenu&)>& use);

}  // namespace autoscene::testing
