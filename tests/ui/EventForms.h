#pragma once
// Conditions, actions and events entered through the editor's forms as a user enters them.

#include <QString>
#include <utility>
#include <vector>

class QWidget;

namespace autoscene::ui {
class EventEditor;
}

namespace autoscene::testing {

// Controls by object name (a form's by field path), with the text chosen or typed; "1" ticks a
// check box.
using Fields = std::vector<std::pair<QString, QString>>;
struct Item {
    int type;
    Fields fields;
};
struct Event {
    QString name;
    std::vector<Item> conditions, actions;
};

// Sets a dialog's or form's controls as a user would: choices by their text, numbers typed, keys
// pressed.
void fill(QWidget& dialog, const Fields& fields);
// Names the event and adds its conditions and actions through their forms.
void fillEvent(ui::EventEditor& dialog, const Event& event);

}  // namespace autoscene::testing
