#include "script/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMetaObject>
#include <QThread>

namespace autoscene::script {

namespace {

// Runs `fn` on the application's thread and waits for it.
template <class Fn>
void onApplicationThread(Fn&& fn) {
    QCoreApplication* app = QCoreApplication::instance();
    if (QThread::currentThread() == app->thread()) {
        fn();
    } else {
        QMetaObject::invokeMethod(app, std::forward<Fn>(fn), Qt::BlockingQueuedConnection);
    }
}

class GuiClipboard : public Clipboard {
public:
    QString text() override {
        QString result;
        onApplicationThread([&] { result = QGuiApplication::clipboard()->text(); });
        return result;
    }
    void setText(const QString& text) override {
        onApplicationThread([&] { QGuiApplication::clipboard()->setText(text); });
    }
};

}  // namespace

Clipboard* applicationClipboard() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        return nullptr;
    }
    static GuiClipboard clipboard;
    return &clipboard;
}

}  // namespace autoscene::script
