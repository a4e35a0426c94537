#pragma once
// A button showing a colour (0xRRGGBB) that opens the colour picker.

#include <QPushButton>

namespace autoscene::ui {

class ColorButton : public QPushButton {
    Q_OBJECT
public:
    explicit ColorButton(QWidget* parent = nullptr);

    qint64 rgb() const { return rgb_; }
    void setRgb(qint64 rgb);

private:
    void pick();

    qint64 rgb_ = 0;
};

}  // namespace autoscene::ui
