#include "ui/HotKeyEdit.h"

#include <QKeyEvent>

#include "keys/QtKeyTable.h"

namespace autoscene::ui {

HotKeyEdit::HotKeyEdit(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setStyleSheet(QStringLiteral("QLineEdit:focus { border: 1px solid blue; }"));
}

void HotKeyEdit::keyPressEvent(QKeyEvent* event) {
    // A modifier alone is not a hot key yet: wait for the key that completes it.
    if (platform::keys::isQtModifierKey(event->key())) {
        return;
    }
    const std::string name =
        platform::keys::keyEventName(event->key(), std::uint32_t(event->modifiers()));
    if (!name.empty()) {
        setText(QString::fromStdString(name));
    }
}

}  // namespace autoscene::ui
