#pragma once
// References to definitions, images, colours and originals that the task does not hold.

#include <QStringList>

#include "model/TaskDocument.h"

namespace autoscene::model {

// One line per reference to something missing, naming where it is ("scene "s", event "e":
// image 7 does not exist"). Ids of 0 and below name nothing and are not references.
QStringList danglingReferences(const TaskDocument& task);

}  // namespace autoscene::model
