#pragma once
// The detection step that precedes each traversal: every screen item of a scene's
// events detects once, side by side on the run's job runner. The results land in the
// calling worker's per-thread records, as if it had detected them one by one. Once the
// run's stop is set, the detections not yet begun are skipped.

#include <functional>
#include <memory>
#include <vector>

#include "engine/TaskInfo.h"

namespace autoscene::engine {

class RuntimeEvent;

// Runs job(0) .. job(count - 1) and returns when all are done; an empty one runs them on
// the caller, one by one.
using JobRunner = std::function<void(size_t count, const std::function<void(size_t)>& job)>;

void prepareScreenItems(const std::vector<std::shared_ptr<RuntimeEvent>>& events, TaskInfo& task,
                        const JobRunner& runJobs);

}  // namespace autoscene::engine
