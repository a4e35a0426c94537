#pragma once
// Where a definition, image or colour is used, in words a user can follow: the scene, the
// event and the item's description.

#include <QStringList>

#include "model/Fields.h"

namespace autoscene::model {
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

// One line per user ("scene / event: description"; a crop using an original by its name).
QStringList describeUsers(const model::TaskDocument& task, model::Ref kind, int id);

}  // namespace autoscene::ui
