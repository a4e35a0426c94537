#include "ui/HotKeyRegistrar.h"

#include <QSocketNotifier>
#include <QWidget>

#include "editor/Prompts.h"
#include "keys/HotKeyText.h"

namespace autoscene::ui {

HotKeyRegistrar::HotKeyRegistrar(platform::IGlobalHotKeys& keys, AppConfig config, QWidget* window)
    : QObject(window), keys_(keys), config_(std::move(config)), window_(window) {
    notifier_ = new QSocketNotifier(keys_.eventDescriptor(), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this,
            [this] { keys_.dispatch([this](int id) { pressed(id); }); });
}

HotKeyRegistrar::~HotKeyRegistrar() {
    for (const int id : {kCapture, kStart, kStop}) {
        keys_.unregisterKey(id);
    }
}

void HotKeyRegistrar::registerAll() {
    const struct {
        Id id;
        QString text;
        QString label;
    } entries[] = {
        {kCapture, config_.captureKey(), tr("截图热键")},
        {kStart, config_.startKey(), tr("启动热键")},
        {kStop, config_.stopKey(), tr("停止热键")},
    };
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
            emit startRequested();
            break;
        case kStop:
            emit stopRequested();
            break;
        default:
            break;
    }
}

}  // namespace autoscene::ui
