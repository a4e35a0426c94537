#pragma once
// Holds when a template image is (or is not) on the screen.

#include <memory>

#include "engine/ScreenItem.h"
#include "engine/SearchArea.h"
#include "recognition/TemplateMatcher.h"

namespace autoscene::conditions {

class ImageCondition : public engine::ScreenItem {
public:
    static constexpr int kType = 1;

    ImageCondition(int relation, Settings settings, const engine::RunClock& clock,
                   QString imageName, std::shared_ptr<recognition::TemplateMatcher> matcher,
                   engine::SearchArea searchArea);

    void clearThreadState() override;
    QJsonObject describe(std::thread::id thread) const override;
    // The calling thread's last detection.
    recognition::MatchResult result(std::thread::id thread) const;
    const std::shared_ptr<recognition::TemplateMatcher>& matcher() const { return matcher_; }

protected:
    QString typeWord() const override { return QStringLiteral("image"); }
    int detect(engine::TaskInfo& task) override;

private:
    const QString imageName_;
    const std::shared_ptr<recognition::TemplateMatcher> matcher_;
    const engine::SearchArea searchArea_;
    sys::PerThread<recognition::MatchResult> results_;
};

}  // namespace autoscene::conditions
