#pragma once
// Runs a task's screen conditions and find-then-click actions on single frames, as the
// editor's test on the screen does: the item is built and evaluated by the runner's own
// code, on a target that takes no input.

#include <memory>
#include <opencv2/core/mat.hpp>
#include <vector>

#include "probe/ProbeResult.h"

namespace autoscene::model {
class TaskDocument;
class IEditorCondition;
class IEditorAction;
}  // namespace autoscene::model
namespace autoscene::text {
class OcrClient;
}
namespace autoscene::recognition {
class TemplateMatcher;
}

namespace autoscene::probe {

class ConditionProbe {
public:
    // Candidates scoring below this are not listed (nor any below the item's threshold
    // when that is lower).
    static constexpr float kCandidateFloor = 0.6f;
    static constexpr size_t kCandidateLimit = 20;

    // Loads the task's label model when it uses labels. Without `ocr` text items read
    // nothing. The task must outlive the probe and stay unchanged while it is used.
    explicit ConditionProbe(const model::TaskDocument& task,
                            std::shared_ptr<const text::OcrClient> ocr = {});
    ~ConditionProbe();

    // `frame` is 3-channel BGR, as the runner captures it.
    ProbeResult run(const model::IEditorCondition& record, const cv::Mat& frame);
    ProbeResult run(const model::IEditorAction& record, const cv::Mat& frame);
    // The conditions' results in their order, as run() gives each, probed side by side on
    // the detection pool.
    std::vector<ProbeResult> run(const std::vector<const model::IEditorCondition*>& records,
                                 const cv::Mat& frame);

    // run() of a list in two steps, so that the verdicts can be shown before the slower
    // part: an image not found in its search area is looked for over the whole frame only
    // by lookBeyond(), and its result says so meanwhile (lookingBeyond).
    std::vector<ProbeResult> verdicts(const std::vector<const model::IEditorCondition*>& records,
                                      const cv::Mat& frame);
    // Completes the results of the last verdicts(), side by side on the detection pool.
    void lookBeyond(std::vector<ProbeResult>& results);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

// The places of `original` other than `own` where the task's image `imageId` scores at
// its threshold or above: where a click meant for it could land instead. Made from the
// task on the caller's thread, it may run on another while the task changes.
class OtherMatches {
public:
    // Nothing to search for when the image is not in the task or the original is empty.
    OtherMatches(const model::TaskDocument& task, int imageId, cv::Mat original, QRect own);
    std::vector<ProbeCandidate> operator()() const;

private:
    std::shared_ptr<recognition::TemplateMatcher> matcher_;
    float threshold_ = 0.0f;
    cv::Mat original_;
    QRect own_;
};

}  // namespace autoscene::probe
