#pragma once
// Builders of the conditions that look at the screen, and the template matchers
// that they and the image actions share the construction of.

#include <QRect>
#include <memory>
#include <optional>

namespace autoscene::model {
class TaskDocument;
}

namespace autoscene::engine {

class RuntimeFactory;
class TemplateMatcher;

// A matcher for the task's image `imageId` searching `searchRect` (nothing: the
// whole frame). A missing image gives a matcher that reports the image missing.
std::shared_ptr<TemplateMatcher> makeTemplateMatcher(const model::TaskDocument& task, int imageId,
                                                     std::optional<QRect> searchRect);

void registerScreenConditions(RuntimeFactory& factory);

}  // namespace autoscene::engine
