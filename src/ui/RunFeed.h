#pragma once
// Takes a run's reports on the worker threads and hands them to the window's thread in
// batches: one queued signal per batch however fast events fire, so a busy run never
// floods the event loop.

#include <QObject>
#include <QStringList>
#include <QTime>
#include <mutex>
#include <thread>
#include <vector>

#include "engine/RunObservers.h"

namespace autoscene::ui {

class RunFeed : public QObject, public engine::IMVSceneEvent, public engine::IRunObserver {
    Q_OBJECT
public:
    struct Note {
        std::thread::id thread;
        QString scene;
        QString event;        // empty: the worker entered `scene`
        QStringList results;  // each action's result record, compact JSON
        bool captureFailed = false;
        QString target;  // set on the worker's first note only: the window or device it drives
        QTime time = QTime::currentTime();
    };

    explicit RunFeed(QObject* parent = nullptr) : QObject(parent) {}

    // What came since the last call, oldest first.
    std::vector<Note> take();
    // Notes dropped because the window fell behind.
    int dropped() const;

    void sceneEntered(const engine::Scene& scene, const engine::ItemGroup*) override;
    void actionsDone(const engine::Scene& scene, const engine::RuntimeEvent& event) override;
    void captureFailed() override;
    void threadStartedOnWindow(platform::WindowHandle window) override;
    void threadStartedOnDevice(const QString& serial) override;

signals:
    // Emitted on a worker thread when the first note of a batch arrives.
    void notesReady();

private:
    void push(Note note);

    mutable std::mutex mutex_;
    std::vector<Note> notes_;
    int dropped_ = 0;
};

}  // namespace autoscene::ui
