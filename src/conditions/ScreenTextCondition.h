#pragma once
// Holds when a text box in its region matches the wanted text. The matching boxes
// are the thread's result, shown in the status as "text_rects".

#include "conditions/TextSearch.h"
#include "engine/ScreenItem.h"

namespace autoscene::conditions {

class ScreenTextCondition : public engine::ScreenItem {
public:
    static constexpr int kType = 6;

    ScreenTextCondition(int relation, Settings settings, const engine::RunClock& clock,
                        TextSearch search);

    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;
    std::vector<text::TextBox> result(std::thread::id thread) const;

protected:
    QString typeWord() const override { return QStringLiteral("text"); }
    int detect(engine::TaskInfo& task) override;

private:
    TextSearch search_;
    sys::PerThread<std::vector<text::TextBox>> results_;
};

}  // namespace autoscene::conditions
