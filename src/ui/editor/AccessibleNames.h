#pragma once
// Screen readers and UI automation find controls by their accessible names; every control
// is named after the text it shows.

class QWidget;

namespace autoscene::ui {

// Names `root` and each child control that shows a text (buttons, labels, check boxes,
// group boxes, windows) after that text, keeping names set before.
void nameControlsAfterText(QWidget& root);

}  // namespace autoscene::ui
