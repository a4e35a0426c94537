#include "conditions/ScreenTextCondition.h"

#include <QJsonArray>

namespace autoscene::conditions {

ScreenTextCondition::ScreenTextCondition(int relation, Settings settings,
                                         const engine::RunClock& clock, TextSearch search)
    : engine::ScreenItem(kType, relation, settings, clock), search_(std::move(search)) {}

int ScreenTextCondition::detect(engine::TaskInfo& task) {
    std::vector<text::TextBox>& found = results_.get();
    found = search_.find(task);
    return found.empty() ? engine::kNotFound : engine::kFound;
}

std::vector<text::TextBox> ScreenTextCondition::result(std::thread::id thread) const {
    const std::vector<text::TextBox>* found = results_.find(thread);
    return found ? *found : std::vector<text::TextBox>{};
}

void ScreenTextCondition::clearThreadState() {
    engine::ScreenItem::clearThreadState();
    results_.clear();
    search_.clearThreadState();
}

QJsonObject ScreenTextCondition::describe(std::thread::id thread) const {
    QJsonObject status = engine::ScreenItem::describe(thread);
    QJsonArray rects;
    for (const text::TextBox& box : result(thread)) {
        rects.append(QJsonObject{{QStringLiteral("text"), box.text},
                                 {QStringLiteral("x"), box.rect.x()},
                                 {QStringLiteral("y"), box.rect.y()},
                                 {QStringLiteral("width"), box.rect.width()},
                                 {QStringLiteral("height"), box.rect.height()}});
    }
    status.insert(QStringLiteral("text"), search_.matcher().wanted());
    status.insert(QStringLiteral("text_rects"), rects);
    return status;
}

}  // namespace autoscene::conditions
