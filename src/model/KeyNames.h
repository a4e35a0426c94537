#pragma once
// Display names of the keys that key actions hold: Windows virtual-key codes, and in
// key groups the Qt codes of the modifiers followed by the main key's virtual key.

#include <QString>

#include "model/RawJson.h"

namespace autoscene::model {

QString virtualKeyName(int virtualKey);

// "Ctrl+Shift+A" for a group; "" when the group is not a list of key codes.
QString keyGroupText(const RawJson& group);

}  // namespace autoscene::model
