#pragma once
// Counts of what a task holds, for checks and listings.

#include <QString>

#include "model/TaskDocument.h"

namespace autoscene::model {

struct TaskSummary {
    int scenes = 0;      // scene_list only; the three fixed scenes always exist
    int events = 0;      // events of every scene, fixed scenes included
    int conditions = 0;  // every condition, nested groups included
    int actions = 0;
    int definitions = 0;
    int images = 0;
    int colors = 0;
};

TaskSummary summarise(const TaskDocument& task);

}  // namespace autoscene::model
