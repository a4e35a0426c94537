#include "app/RunSession.h"

#include <QCoreApplication>
#include <QDir>

#include "actions/RuntimeItems.h"
#include "model/TaskDocument.h"
#include "recognition/DetectionPool.h"
#include "text/OcrClient.h"

namespace autoscene::app {

platform::WindowQuery windowQueryOf(const model::WindowInfo& info) {
    platform::WindowQuery query;
    query.title = info.title.toStdString();
    query.fullMatchTitle = info.isFullmatchTitle;
    query.className = info.className.toStdString();
    query.childTitle = info.childTitle.toStdString();
    query.childClassName = info.childClassName.toStdString();
    return query;
}

RunSession::RunSession(const model::TaskDocument& task, engine::ITargetService& service,
                       platform::IWindowControl* windows, std::shared_ptr<engine::RunClock> clock)
    : task_(task), ocr_(std::make_shared<text::OcrClient>()), ocrService_(ocr_) {
    actions::registerAllRuntimeItems(factory_, ocr_, windows);
    runner_ = std::make_unique<engine::TaskRunner>(task, factory_, service, std::move(clock));
    runner_->setJobRunner([](size_t count, const std::function<void(size_t)>& job) {
        recognition::DetectionPool::shared().run(count, job);
    });
}

bool RunSession::startOcrService(std::optional<int> port) {
    return !task_.usesScreenText() ||
           ocrService_.start(QCoreApplication::applicationDirPath(), QDir::currentPath(), port);
}

}  // namespace autoscene::app
