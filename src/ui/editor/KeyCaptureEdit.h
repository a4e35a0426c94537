#pragma once
// A field that takes the key the user presses and keeps its code: the virtual-key code of a
// key action, or a key group (the modifiers' Qt codes, then the main key's virtual key).

#include <QLineEdit>

#include "model/RawJson.h"

namespace autoscene::ui {

class KeyCaptureEdit : public QLineEdit {
    Q_OBJECT
public:
    enum class Mode { VirtualKey, KeyGroup };

    explicit KeyCaptureEdit(Mode mode, QWidget* parent = nullptr);

    int virtualKey() const { return virtualKey_; }
    void setVirtualKey(int virtualKey);
    // A JSON array of the codes.
    const model::RawJson& keyGroup() const { return group_; }
    void setKeyGroup(model::RawJson group);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    Mode mode_;
    int virtualKey_ = 0;
    model::RawJson group_{"[]"};
};

}  // namespace autoscene::ui
