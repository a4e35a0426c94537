#pragma once
// Holds when a template image is (or is not) on the screen.

#include <memory>

#include "ScreenItem.h"
#include "SearchArea.h"
#include "TemplateMatcher.h"

namespace autoscene::engine {

class ImageCondition : public ScreenItem {
public:
    static constexpr int kType = 1;

    ImageCondition(int relation, Settings settings, const RunClock& clock, QString imageName,
                   std::shared_ptr<TemplateMatcher> matcher, SearchArea searchArea);

    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;
    // The calling thread's last detection.
    MatchResult result(std::thread::id thread) const;

protected:
    QString typeWord() const override { return QStringLiteral("image"); }
    int detect(TaskInfo& task) override;

private:
    const QString imageName_;
    const std::shared_ptr<TemplateMatcher> matcher_;
    const SearchArea searchArea_;
    PerThread<MatchResult> results_;
};

}  // namespace autoscene::engine
