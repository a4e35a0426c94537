#include "ui/HotKeyRegistrar.h"

#include <QSocketNotifier>
#include <QWidget>
#include <vector>

#include "editor/Prompts.h"
#include "keys/HotKeyText.h"

namespace autoscene::ui {

HotKeyRegistrar::HotKeyRegistrar(platform::IGlobalHotKeys& keys, AppConfig config, QWidget* window,
                                 Scope scope)
    : QObject(window), keys_(keys), config_(std::move(config)), window_(window), scope_(scope) {
    const auto dispatch = [this] { keys_.dispatch([this](int id) { pressed(id); }); };
    if (keys_.eventDescriptor() >= 0) {
        notifier_ = new QSocketNotifier(keys_.eventDescriptor(), QSocketNotifier::Read, this);
        connect(notifier_, &QSocketNotifier::activated, this, dispatch);
    } else {
        keys_.setWakeUp(
            [this, dispatch] { QMetaObject::invokeMethod(this, dispatch, Qt::QueuedConnection); });
    }
}

HotKeyRegistrar::~HotKeyRegistrar() {
    keys_.setWakeUp({});
    for (const int id : {kCapture, kStart, kStop, kPageStart, kPageStop}) {
        keys_.unregisterKey(id);
    }
}

void HotKeyRegistrar::registerAll() {
    struct Entry {
        Id id;
        QString text;
        QString label;
    };
    const bool page = scope_ == Scope::TaskPage;
    std::vector<Entry> entries{
        {page ? kPageStart : kStart, config_.startKey(), tr("启动热键")},
        {page ? kPageStop : kStop, config_.stopKey(), tr("停止热键")},
    };
    if (!page) {
        entries.insert(entries.begin(), {kCapture, config_.captureKey(), tr("截图热键")});
    }
    for (const auto& entry : entries) {
        keys_.unregisterKey(entry.id);
        const auto key = platform::keys::parseHotKey(entry.text.toStdString());
        if (!key || !keys_.registerKey(entry.id, *key)) {
            showNotice(window_, entry.label + tr("注册失败"));
        }
    }
    // Registering waits for the server, which may leave presses in Xlib's queue where the
    // descriptor no longer shows them.
    keys_.dispatch([this](int id) { pressed(id); });
}

void HotKeyRegistrar::pressed(int id) {
    switch (id) {
        case kCapture:
            emit captureRequested();
            break;
        case kStart:
        case kPageStart:
            emit startRequested();
            break;
        case kStop:
        case kPageStop:
            emit stopRequested();
            break;
        default:
            break;
    }
}

}  // namespace autoscene::ui
