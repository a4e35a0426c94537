#pragma once
// Builders of the conditions that look at the screen, and the template matchers that
// they and the image actions share the construction of.

#include <QRect>
#include <memory>
#include <optional>

namespace autoscene::model {
class TaskDocument;
}
namespace autoscene::engine {
class RuntimeFactory;
}
namespace autoscene::recognition {
class LabelDetector;
class TemplateMatcher;
}  // namespace autoscene::recognition
namespace autoscene::text {
class OcrClient;
}

namespace autoscene::conditions {

// What the screen items of one factory share: the text-recognition client (none: text
// items read nothing) and the label detector, which loads the task's model as each run
// starts.
struct ScreenServices {
    std::shared_ptr<const text::OcrClient> ocr;
    std::shared_ptr<recognition::LabelDetector> labels;
};

// A matcher for the task's image `imageId` searching `searchRect` (nothing: the
// whole frame). A missing image gives a matcher that reports the image missing.
std::shared_ptr<recognition::TemplateMatcher> makeTemplateMatcher(const model::TaskDocument& task,
                                                                  int imageId,
                                                                  std::optional<QRect> searchRect);

// The image, colour, label and screen-text conditions, and the loading of the label model
// as each run starts.
void registerScreenConditions(engine::RuntimeFactory& factory, const ScreenServices& services);

}  // namespace autoscene::conditions
