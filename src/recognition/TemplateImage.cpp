#include "recognition/TemplateImage.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <map>
#include <mutex>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <optional>

namespace autoscene::recognition {

Q_LOGGING_CATEGORY(lcTemplateImage, "autoscene.engine.matcher.image")

namespace {

bool wantsColour(MatchImageType type) {
    return type == MatchImageType::Color || type == MatchImageType::Hls;
}

// The last bytes read from each template file and what they decoded to (empty when they
// did not): every probe and every run builds its image items anew, and decoding is most
// of what that costs. Kept by content, so a file changed in any way decodes again, and a
// file that does not decode is reported once until it changes.
class DecodedFiles {
public:
    // The image `bytes` decoded to when they were last read from `path`.
    std::optional<cv::Mat> find(const QString& path, const QByteArray& bytes) {
        const std::lock_guard lock(mutex_);
        const auto it = files_.find(path);
        if (it == files_.end() || it->second.bytes != bytes) {
            return std::nullopt;
        }
        return it->second.decoded;
    }

    void keep(const QString& path, const QByteArray& bytes, const cv::Mat& decoded) {
        const size_t size = size_t(bytes.size()) + decoded.total() * decoded.elemSize();
        const std::lock_guard lock(mutex_);
        if (const auto it = files_.find(path); it != files_.end()) {
            bytes_ -= it->second.size;
            files_.erase(it);
        }
        if (size > kMaxBytes) {
            return;
        }
        // A task's templates take a few megabytes; past the bound, start again.
        if (bytes_ + size > kMaxBytes) {
            files_.clear();
            bytes_ = 0;
        }
        files_[path] = {bytes, decoded, size};
        bytes_ += size;
    }

private:
    static constexpr size_t kMaxBytes = size_t(32) << 20;
    struct Entry {
        QByteArray bytes;
        cv::Mat decoded;
        size_t size = 0;
    };
    std::mutex mutex_;
    std::map<QString, Entry> files_;
    size_t bytes_ = 0;
};

DecodedFiles& decodedFiles() {
    static DecodedFiles files;
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
    if (path.isEmpty() || !QFileInfo(path).isFile()) {
        return {};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcTemplateImage).noquote() << "template image cannot be read:" << path;
        return {};
    }
    const QByteArray bytes = file.readAll();
    DecodedFiles& decoded = decodedFiles();
    std::optional<cv::Mat> image = decoded.find(path, bytes);
    if (!image) {
        image = bytes.isEmpty() ? cv::Mat()
                                : cv::imdecode(cv::Mat(1, int(bytes.size()), CV_8UC1,
                                                       const_cast<char*>(bytes.constData())),
                                               cv::IMREAD_UNCHANGED);
        decoded.keep(path, bytes, *image);
        if (image->empty()) {
            qCWarning(lcTemplateImage).noquote() << "template image does not decode:" << path;
        }
    }
    return image->empty() ? cv::Mat() : templateForm(*image, type);
}

}  // namespace autoscene::recognition
