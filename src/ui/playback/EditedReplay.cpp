#include "ui/playback/EditedReplay.h"

#include <QThread>
#include <thread>

#include "app/RunSession.h"
#include "model/TaskDocument.h"
#include "playback/ReplayTarget.h"
#include "playback/Replayer.h"

namespace autoscene::ui {

EditedReplay::EditedReplay(QObject* parent) : QObject(parent) {}

EditedReplay::~EditedReplay() {
    cancel();
}

void EditedReplay::cancel() {
    if (!thread_) {
        return;
    }
    *stop_ = true;
    // A replay stops within one cycle once asked.
    thread_->wait();
    delete thread_;
    thread_ = nullptr;
}

void EditedReplay::start(const std::shared_ptr<const playback::Recording>& recording,
                         const model::TaskDocument& task) {
    cancel();
    // The editor goes on changing its document: the replay reads a copy that only it holds.
    auto copy = std::make_shared<model::TaskDocument>();
    copy->openText(task.serialise());
    copy->folderPath = task.folderPath;
    copy->scriptPath = task.scriptPath;
    stop_ = std::make_shared<std::atomic<bool>>(false);
    thread_ = QThread::create([this, recording, copy, stop = stop_] {
        playback::ReplayTarget target;
        auto clock = std::make_shared<playback::ReplayClock>();
        app::RunSession session(*copy, target, nullptr, clock);
        QString error;
        if (!session.startOcrService()) {
            error = tr("找不到文字识别服务 morvane-ocr: 屏幕文字按空白比较");
        }
        playback::Replayer replayer(session.runner(), target, *clock);
        const playback::ReplayResult result =
            replayer.replay(*recording, [&](std::chrono::milliseconds wait) {
                std::this_thread::sleep_for(std::min(wait, std::chrono::milliseconds(10)));
                return stop->load();
            });
        if (*stop) {
            return;
        }
        QSet<int> lines;
        for (const playback::CycleDifferences& cycle : result.cycles) {
            lines.insert(cycle.cycle->lineNumber);
        }
        if (!result.error.isEmpty()) {
            error = result.error;
        }
        QMetaObject::invokeMethod(
            this,
            [this, lines, error, stop] {
                if (!*stop) {
                    emit finished(lines, error);
                }
            },
            Qt::QueuedConnection);
    });
    thread_->start();
}

}  // namespace autoscene::ui
