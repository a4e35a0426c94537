#include "recognition/TemplateImage.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <map>
#include <mutex>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <utility>

namespace autoscene::recognition {

Q_LOGGING_CATEGORY(lcTemplateImage, "autoscene.engine.matcher.image")

namespace {

bool wantsColour(MatchImageType type) {
    return type == MatchImageType::Color || type == MatchImageType::Hls;
}

// Files that did not decode, by path, with the size and time they had then.
class UndecodableFiles {
public:
    using Stamp = std::pair<qint64, qint64>;

    // True when the file is as it was when it last failed.
    bool unchanged(const QString& path, Stamp stamp) {
        const std::lock_guard lock(mutex_);
        const auto it = failed_.find(path);
        return it != failed_.end() && it->second == stamp;
    }
    void remember(const QString& path, Stamp stamp) {
        const std::lock_guard lock(mutex_);
        failed_[path] = stamp;
    }
    void forget(const QString& path) {
        const std::lock_guard lock(mutex_);
        failed_.erase(path);
    }

private:
    std::mutex mutex_;
    std::map<QString, Stamp> failed_;
};

UndecodableFiles& undecodableFiles() {
    static UndecodableFiles files;
    return files;
}

}  // namespace

cv::Mat templateForm(const cv::Mat& decoded, MatchImageType type) {
    cv::Mat image = decoded;
    if (image.depth() == CV_16U) {
        image.convertTo(image, CV_8U, 1.0 / 257.0);
    }
    if (image.depth() != CV_8U) {
        return image;
    }
    if (image.channels() == 4) {
        cv::cvtColor(image, image, wantsColour(type) ? cv::COLOR_BGRA2BGR : cv::COLOR_BGRA2GRAY);
    } else if (image.channels() == 1 && wantsColour(type)) {
        cv::cvtColor(image, image, cv::COLOR_GRAY2BGR);
    }
    return image;
}

cv::Mat readTemplateImage(const QString& path, MatchImageType type) {
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isFile()) {
        return {};
    }
    const UndecodableFiles::Stamp stamp{info.size(), info.lastModified().toMSecsSinceEpoch()};
    UndecodableFiles& undecodable = undecodableFiles();
    if (undecodable.unchanged(path, stamp)) {
        return {};
    }
    QFile file(path);
    cv::Mat image;
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.readAll();
        if (!bytes.isEmpty()) {
            const cv::Mat raw(1, int(bytes.size()), CV_8UC1, const_cast<char*>(bytes.constData()));
            image = cv::imdecode(raw, cv::IMREAD_UNCHANGED);
        }
    }
    if (image.empty()) {
        qCWarning(lcTemplateImage).noquote() << "template image does not decode:" << path;
        undecodable.remember(path, stamp);
        return {};
    }
    undecodable.forget(path);
    return templateForm(image, type);
}

}  // namespace autoscene::recognition
