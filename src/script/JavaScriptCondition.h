#pragma once
// Holds when the task's code returns exactly the text "true".

#include <QString>

#include "engine/ICondition.h"
#include "engine/RunContext.h"
#include "system/PerThread.h"

namespace autoscene::platform {
class IWindowControl;
}

namespace autoscene::script {

class JavaScriptCondition : public engine::ICondition {
public:
    static constexpr int kType = 9;

    JavaScriptCondition(int relation, QString code, engine::RunContext& context,
                        platform::IWindowControl* windows = nullptr);

    bool evaluate(engine::TaskInfo& task) override;
    void clearThreadState() override;
    // Adds "result": the thread's last result text, shortened.
    QJsonObject describe(std::thread::id thread) const override;

protected:
    QString typeWord() const override { return QStringLiteral("javascript"); }

private:
    const QString code_;
    engine::RunContext& context_;
    platform::IWindowControl* windows_;
    sys::PerThread<QString> results_;
};

}  // namespace autoscene::script
