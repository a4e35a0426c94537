#include "editor/AccessibleNames.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QWidget>

namespace autoscene::ui {

namespace {

QString shownText(const QWidget& widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return button->text().remove(QLatin1Char('&'));
    }
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return label->text();
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        return group->title();
    }
    return widget.isWindow() ? widget.windowTitle() : QString();
}

void name(QWidget& widget) {
    if (widget.accessibleName().isEmpty()) {
        widget.setAccessibleName(shownText(widget));
    }
}

}  // namespace

void nameControlsAfterText(QWidget& root) {
    name(root);
    for (QWidget* child : root.findChildren<QWidget*>()) {
        name(*child);
    }
}

}  // namespace autoscene::ui
