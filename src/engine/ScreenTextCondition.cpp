#include "ScreenTextCondition.h"

#include <QJsonArray>

namespace autoscene::engine {

ScreenTextCondition::ScreenTextCondition(int relation, Settings settings, const RunClock& clock,
                                         TextSearch search)
    : ScreenItem(kType, relation, settings, clock), search_(std::move(search)) {}

int ScreenTextCondition::detect(TaskInfo& task) {
    std::vector<TextBox>& found = results_.get();
    found = search_.find(task);
    return found.empty() ? kNotFound : kFound;
}

std::vector<TextBox> ScreenTextCondition::result(std::thread::id thread) const {
    const std::vector<TextBox>* found = results_.find(thread);
    return found ? *found : std::vector<TextBox>{};
}

void ScreenTextCondition::clearThreadState() {
    ScreenItem::clearThreadState();
    results_.clear();
    search_.clearThreadState();
}

QJsonObject ScreenTextCondition::describe(std::thread::id thread) const {
    QJsonObject status = ScreenItem::describe(thread);
    QJsonArray rects;
    for (const TextBox& box : result(thread)) {
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

}  // namespace autoscene::engine
