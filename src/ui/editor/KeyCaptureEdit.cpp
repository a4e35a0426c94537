#include "editor/KeyCaptureEdit.h"

#include <QKeyEvent>
#include <string>

#include "keys/QtKeyTable.h"
#include "model/KeyNames.h"

namespace autoscene::ui {

namespace {

model::RawJson groupJson(const std::vector<int>& group) {
    std::string text = "[";
    for (size_t i = 0; i < group.size(); ++i) {
        text += (i ? "," : "") + std::to_string(group[i]);
    }
    return {text + "]"};
}

}  // namespace

KeyCaptureEdit::KeyCaptureEdit(Mode mode, QWidget* parent) : QLineEdit(parent), mode_(mode) {
    setReadOnly(true);
    setStyleSheet(QStringLiteral("QLineEdit:focus { border: 1px solid blue; }"));
}

void KeyCaptureEdit::setVirtualKey(int virtualKey) {
    virtualKey_ = virtualKey;
    setText(model::virtualKeyName(virtualKey));
}

void KeyCaptureEdit::setKeyGroup(model::RawJson group) {
    group_ = std::move(group);
    setText(model::keyGroupText(group_));
}

void KeyCaptureEdit::keyPressEvent(QKeyEvent* event) {
    const auto modifiers = std::uint32_t(event->modifiers());
    if (mode_ == Mode::VirtualKey) {
        if (const int key = platform::keys::virtualKeyFromQtKey(event->key())) {
            setVirtualKey(key);
        }
        return;
    }
    // A modifier alone is not a group yet: wait for the key that completes it.
    if (platform::keys::isQtModifierKey(event->key())) {
        return;
    }
    const std::vector<int> group = platform::keys::keyGroupFromEvent(event->key(), modifiers);
    if (!group.empty()) {
        setKeyGroup(groupJson(group));
    }
}

}  // namespace autoscene::ui
