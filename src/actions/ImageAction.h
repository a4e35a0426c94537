#pragma once
// Clicks a template image where the matcher finds it. Results: "type", "clicked",
// "alias", "err", "sim", "points".

#include <memory>

#include "FindClick.h"
#include "SearchArea.h"
#include "TemplateMatcher.h"

namespace autoscene::actions {

class ImageAction : public FindClickAction {
public:
    static constexpr int kType = 2;

    struct Target {
        QString name;
        std::shared_ptr<engine::TemplateMatcher> matcher;
        engine::SearchArea searchArea;
        QPoint origin;  // where the image was cut from its original
    };

    ImageAction(engine::RunContext& context, Target target, std::optional<QRect> clickArea,
                targets::MouseOp op, ClickTiming timing, float waitSeconds);
    float run(TaskInfo& task) override;

private:
    const Target target_;
};

}  // namespace autoscene::actions
