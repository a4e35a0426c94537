#include "ui/RunFeed.h"

#include <QJsonDocument>

#include "engine/Scene.h"
#include "system/ThreadKey.h"

namespace autoscene::ui {

namespace {

// Beyond this the window has stopped draining; older notes give way.
constexpr size_t kMaxPending = 5000;

}  // namespace

void RunFeed::push(Note note) {
    bool first = false;
    {
        std::lock_guard lock(mutex_);
        if (notes_.size() >= kMaxPending) {
            notes_.erase(notes_.begin());
            ++dropped_;
        }
        first = notes_.empty();
        notes_.push_back(std::move(note));
    }
    if (first) {
        emit notesReady();
    }
}

std::vector<RunFeed::Note> RunFeed::take() {
    std::lock_guard lock(mutex_);
    return std::exchange(notes_, {});
}

int RunFeed::dropped() const {
    std::lock_guard lock(mutex_);
    return dropped_;
}

void RunFeed::sceneEntered(const engine::Scene& scene, const engine::ItemGroup*) {
    push({sys::threadKey(), scene.name, {}, {}, false});
}

void RunFeed::actionsDone(const engine::Scene& scene, const engine::RuntimeEvent& event) {
    Note note{sys::threadKey(), scene.name, event.name, {}, false};
    for (const auto& action : event.actions) {
        note.results << QString::fromUtf8(
            QJsonDocument(action->state(note.thread)).toJson(QJsonDocument::Compact));
    }
    push(std::move(note));
}

void RunFeed::captureFailed() {
    push({sys::threadKey(), {}, {}, {}, true});
}

void RunFeed::threadStartedOnWindow(platform::WindowHandle window) {
    Note note{sys::threadKey()};
    note.target = window == 0 ? tr("全屏") : tr("窗口 0x%1").arg(window, 0, 16);
    push(std::move(note));
}

void RunFeed::threadStartedOnDevice(const QString& serial) {
    Note note{sys::threadKey()};
    note.target = serial;
    push(std::move(note));
}

}  // namespace autoscene::ui
