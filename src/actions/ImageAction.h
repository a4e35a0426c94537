#pragma once
// Clicks a template image where the matcher finds it. Results: "type", "clicked",
// "alias", "err", "sim", "points".

#include <memory>

#include "actions/FindClick.h"
#include "engine/SearchArea.h"
#include "recognition/TemplateMatcher.h"

namespace autoscene::actions {

class ImageAction : public FindClickAction {
public:
    static constexpr int kType = 2;

    struct Target {
        QString name;
        std::shared_ptr<recognition::TemplateMatcher> matcher;
        engine::SearchArea searchArea;
        QPoint origin;  // where the image was cut from its original
    };

    ImageAction(engine::RunContext& context, Target target, std::optional<QRect> clickArea,
                platform::MouseOp op, ClickTiming timing, float waitSeconds);
    float run(TaskInfo& task) override;

private:
    const Target target_;
};

}  // namespace autoscene::actions
