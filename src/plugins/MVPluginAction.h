#pragma once
// The plug-in action: calls a named function of an action plug-in with the current frame
// and its parameters, and stores the results in their variables.

#include <QByteArray>
#include <QString>
#include <atomic>
#include <cstdint>

#include "engine/IAction.h"
#include "engine/RunContext.h"
#include "plugins/PluginCall.h"
#include "plugins/include/autoscene_plugin.h"

namespace autoscene::plugins {

class MVPluginAction : public engine::IAction {
public:
    static constexpr int kType = 20;

    // `libraryPath` empty: the description could not be read, and the action says so when
    // it runs. The function is resolved now, and again for each run after the libraries
    // were unloaded.
    MVPluginAction(PluginCall call, QString libraryPath, QByteArray function,
                   engine::RunContext& context);

    float run(engine::TaskInfo& task) override;

private:
    mv_action_function currentFunction();

    const PluginCall call_;
    const QString libraryPath_;
    const QByteArray function_;
    engine::RunContext& context_;
    std::atomic<mv_action_function> resolved_{nullptr};
    std::atomic<std::uint64_t> generation_{0};
};

}  // namespace autoscene::plugins
