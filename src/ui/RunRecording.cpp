#include "ui/RunRecording.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLoggingCategory>

#include "engine/TaskRunner.h"
#include "playback/RecordingPruning.h"
#include "ui/RunFeed.h"

Q_LOGGING_CATEGORY(lcRecording, "autoscene.ui.recording")

namespace autoscene::ui {

RunRecording::RunRecording(const AppConfig& config, const QString& taskFolder,
                           engine::TaskRunner& runner, RunFeed& feed) {
    observers_.add(&feed, &feed);
    if (config.playback() && !taskFolder.isEmpty()) {
        const QString root = AppConfig::playbackFolder(config.path());
        // Milliseconds keep two runs started within a second apart.
        const QString folder =
            root + QLatin1Char('/') +
            QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
        QString error;
        recorder_ = playback::Recorder::create(folder, taskFolder, &error);
        if (recorder_) {
            folder_ = folder;
            cycles_.emplace(
                runner, [this](const playback::CycleReport& cycle) { recorder_->record(cycle); });
            observers_.add(&*cycles_, &*cycles_);
            const QStringList pruned =
                playback::pruneRecordings(root, config.playbackLimits(), folder);
            for (const QString& old : pruned) {
                qCInfo(lcRecording) << "deleted the old recording" << old;
            }
        } else {
            qCWarning(lcRecording) << "the run is not recorded:" << error;
        }
    }
    runner.setSceneObserver(&observers_);
    runner.setRunObserver(&observers_);
}

}  // namespace autoscene::ui
