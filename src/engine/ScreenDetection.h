#pragma once
// The detection step that precedes each traversal: every screen item of a scene's
// events detects once, side by side on the detection pool. The results land in the
// calling worker's per-thread records, as if it had detected them one by one.

#include <memory>
#include <vector>

#include "TaskInfo.h"

namespace autoscene::engine {

class DetectionPool;
class RuntimeEvent;

void prepareScreenItems(const std::vector<std::shared_ptr<RuntimeEvent>>& events, TaskInfo& task,
                        DetectionPool& pool);

}  // namespace autoscene::engine
