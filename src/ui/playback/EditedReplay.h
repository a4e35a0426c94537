#pragma once
// Replays a recording with the task as it is being edited, off the window's thread, and says
// which recorded cycles decide differently. A new request stops the one under way, whose
// answer is then dropped.

#include <QObject>
#include <QSet>
#include <atomic>
#include <memory>

namespace autoscene::model {
class TaskDocument;
}
namespace autoscene::playback {
struct Recording;
}
class QThread;

namespace autoscene::ui {

class EditedReplay : public QObject {
    Q_OBJECT
public:
    explicit EditedReplay(QObject* parent = nullptr);
    ~EditedReplay() override;

    // Replays `recording` with a copy of `task` taken now.
    void start(const std::shared_ptr<const playback::Recording>& recording,
               const model::TaskDocument& task);
    // Stops the replay under way, dropping its answer.
    void cancel();

signals:
    // The recorded line numbers of the cycles that differ; `error` when the replay could not
    // compare them all (a frame that does not decode, the task's OCR service missing).
    void finished(const QSet<int>& differingLines, const QString& error);

private:
    QThread* thread_ = nullptr;
    std::shared_ptr<std::atomic<bool>> stop_;
};

}  // namespace autoscene::ui
