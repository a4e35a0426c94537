#include "ui/probe/ProbeOcr.h"

#include <QCoreApplication>
#include <QDir>

namespace autoscene::ui {

ProbeOcr::ProbeOcr(std::shared_ptr<text::OcrClient> client)
    : client_(std::move(client)), watcher_(client_) {}

std::shared_ptr<const text::OcrClient> ProbeOcr::client() {
    if (client_->url().empty() &&
        !watcher_.start(QCoreApplication::applicationDirPath(), QDir::currentPath())) {
        return nullptr;
    }
    return client_;
}

}  // namespace autoscene::ui
