#include "script/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMetaObject>
#include <QThread>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace autoscene::script {

namespace {

std::mutex g_mutex;
std::condition_variable g_changed;
bool g_closed = false;

// Runs `fn` on the application's thread and waits for it, or until the clipboard is
// closed; false when `fn` did not run. Whatever `fn` writes must outlive an abandoned wait.
template <class Fn>
bool onApplicationThread(Fn fn) {
    QCoreApplication* app = QCoreApplication::instance();
    if (QThread::currentThread() == app->thread()) {
        fn();
        return true;
    }
    auto ran = std::make_shared<bool>(false);
    QMetaObject::invokeMethod(
        app,
        [fn = std::move(fn), ran]() mutable {
            // Closing happens on this thread too, so no call starts after it.
            if (std::lock_guard lock(g_mutex); g_closed) {
                return;
            }
            fn();
            std::lock_guard lock(g_mutex);
            *ran = true;
            g_changed.notify_all();
        },
        Qt::QueuedConnection);
    std::unique_lock lock(g_mutex);
    g_changed.wait(lock, [&] { return *ran || g_closed; });
    return *ran;
}

class GuiClipboard : public Clipboard {
public:
    QString text() override {
        auto result = std::make_shared<QString>();
        return onApplicationThread([result] { *result = QGuiApplication::clipboard()->text(); })
                   ? *result
                   : QString();
    }
    void setText(const QString& text) override {
        onApplicationThread([text] { QGuiApplication::clipboard()->setText(text); });
    }
};

}  // namespace

void closeApplicationClipboard() {
    std::lock_guard lock(g_mutex);
    g_closed = true;
    g_changed.notify_all();
}

Clipboard* applicationClipboard() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        return nullptr;
    }
    static GuiClipboard clipboard;
    return &clipboard;
}

}  // namespace autoscene::script
