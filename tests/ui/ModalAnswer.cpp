#include "ModalAnswer.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

namespace autoscene::testing {

namespace {

ModalSeen answer(QWidget& dialog, const ModalAnswer& with) {
    ModalSeen seen{true, dialog.windowTitle(), {}};
    if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
        seen.text = box->text();
    } else if (auto* prompt = qobject_cast<QInputDialog*>(&dialog)) {
        seen.text = prompt->labelText();
        if (!with.input.isNull()) {
            prompt->setTextValue(with.input);
        }
    }
    if (with.fill) {
        with.fill(dialog);
    }
    for (QAbstractButton* candidate : dialog.findChildren<QAbstractButton*>()) {
        if (!with.button.isEmpty() && candidate->text() == with.button) {
            candidate->click();
            return seen;
        }
    }
    // No button asked for, or no such button: closed, so that a test's expectation fails
    // rather than the test hangs.
    dialog.close();
    return seen;
}

}  // namespace

std::vector<ModalSeen> answerModals(const std::function<void()>& trigger,
                                    const std::vector<ModalAnswer>& answers) {
    std::vector<ModalSeen> seen(answers.size());
    size_t next = 0;
    QPointer<QWidget> answered;
    QTimer poll;
    poll.setInterval(10);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        // An answered dialog stays up until its event loop has ended.
        if (!dialog || dialog == answered.data() || next >= answers.size()) {
            return;
        }
        answered = dialog;
        seen[next] = answer(*dialog, answers[next]);
        ++next;
    });
    poll.start();
    trigger();
    return seen;
}

void withContextMenu(QAbstractItemView& view, int row, const std::function<void(QMenu&)>& use) {
    QTimer::singleShot(200, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            use(*menu);
            menu->close();
        }
    });
    const QRect cell = view.visualRect(view.model()->index(row, 0));
    QContextMenuEvent event(QContextMenuEvent::Mouse, cell.center(),
                            view.viewport()->mapToGlobal(cell.center()));
    QApplication::sendEvent(view.viewport(), &event);
}

}  // namespace autoscene::testing
