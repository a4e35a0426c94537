#pragma once
// Holds when a text box in its region matches the wanted text. The matching boxes
// are the thread's result, shown in the status as "text_rects".

#include "ScreenItem.h"
#include "TextSearch.h"

namespace autoscene::engine {

class ScreenTextCondition : public ScreenItem {
public:
    static constexpr int kType = 6;

    ScreenTextCondition(int relation, Settings settings, const RunClock& clock, TextSearch search);

    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;
    std::vector<TextBox> result(std::thread::id thread) const;

protected:
    QString typeWord() const override { return QStringLiteral("text"); }
    int detect(TaskInfo& task) override;

private:
    TextSearch search_;
    PerThread<std::vector<TextBox>> results_;
};

}  // namespace autoscene::engine
