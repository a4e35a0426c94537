#pragma once
// Holds on the number of pixels of one colour in a rectangle: whether it changed
// since the previous cycle, or whether it is above a count.

#include <QRect>
#include <optional>

#include "engine/ScreenItem.h"
#include "recognition/ColorSearch.h"

namespace autoscene::conditions {

class ColorCondition : public engine::ScreenItem {
public:
    static constexpr int kType = 7;

    using Colour = recognition::SearchColour;
    struct Tests {
        int count = 0;
        int countTolerance = 0;
    };

    // Without a rectangle the whole frame is counted.
    ColorCondition(int relation, Settings settings, const engine::RunClock& clock,
                   std::optional<Colour> colour, std::optional<QRect> rect, Tests tests);

    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;

protected:
    QString typeWord() const override { return QStringLiteral("color"); }
    int detect(engine::TaskInfo& task) override;

private:
    struct Counts {
        std::int64_t cycleId = -1;
        int observed = 0;  // of cycleId: detection runs before and during the traversal
        int previous = -1;
        int current = -1;
        QRect searched;
        cv::Mat mask;  // kept between cycles
    };

    const std::optional<Colour> colour_;
    const std::optional<QRect> rect_;
    const Tests tests_;
    sys::PerThread<Counts> counts_;
};

}  // namespace autoscene::conditions
