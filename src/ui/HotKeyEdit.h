#pragma once
// A field that takes the key combination the user presses ("Alt+Shift+S") rather than text.

#include <QLineEdit>

namespace autoscene::ui {

class HotKeyEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit HotKeyEdit(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace autoscene::ui
