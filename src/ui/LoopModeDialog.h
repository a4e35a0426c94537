#pragma once
// Asks which run mode the user wants: every event of a scene per cycle (sequential) or
// the first that fires (single event).

#include <QDialog>

class QRadioButton;

namespace autoscene::ui {

class LoopModeDialog : public QDialog {
    Q_OBJECT
public:
    explicit LoopModeDialog(QWidget* parent = nullptr);

    // 1 sequential, 2 single event.
    int mode() const;
    void setMode(int mode);

    static QString modeName(int mode);

private:
    QRadioButton* order_ = nullptr;
    QRadioButton* single_ = nullptr;
};

}  // namespace autoscene::ui
