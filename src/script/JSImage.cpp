#include "script/JSImage.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QJSEngine>
#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "conditions/ScreenConditions.h"
#include "engine/TaskInfo.h"
#include "model/RectText.h"
#include "model/TaskDocument.h"
#include "recognition/TemplateMatcher.h"

namespace autoscene::script {

namespace {

const cv::Mat& emptyFrame() {
    static const cv::Mat none;
    return none;
}

}  // namespace

JSImage::JSImage(const ScriptContext& context, QObject* parent)
    : QObject(parent), context_(context) {}

QRect JSImage::regionRect(const QString& region) const {
    const cv::Mat& frame = context_.worker ? context_.worker->frame : emptyFrame();
    const QRect whole(0, 0, frame.cols, frame.rows);
    const QRect asked = model::parseRectText(region);
    if (region.trimmed().isEmpty() || !asked.isValid()) {
        return whole;
    }
    return asked.intersected(whole);
}

QByteArray JSImage::encode(const QString& format, int quality, const QString& region) const {
    if (!context_.worker || context_.worker->frame.empty()) {
        return {};
    }
    const QRect rect = regionRect(region);
    if (rect.isEmpty()) {
        return {};
    }
    cv::Mat rgb;
    cv::cvtColor(context_.worker->frame(cv::Rect(rect.x(), rect.y(), rect.width(), rect.height())),
                 rgb, cv::COLOR_BGR2RGB);
    const QImage image(rgb.data, rgb.cols, rgb.rows, int(rgb.step), QImage::Format_RGB888);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format.toLatin1());
    writer.setQuality(std::clamp(quality, -1, 100));
    return writer.write(image) ? bytes : QByteArray();
}

QString JSImage::toBase64(const QString& format, int quality, const QString& region) {
    return QString::fromLatin1(encode(format, quality, region).toBase64());
}

bool JSImage::save(const QString& path, const QString& format, int quality, const QString& region) {
    const QByteArray bytes = encode(format, quality, region);
    QFile file(path);
    return !bytes.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QJSValue JSImage::find(const QString& imageName, const QString& region) {
    const cv::Mat& frame = context_.worker ? context_.worker->frame : emptyFrame();
    const QRect rect = regionRect(region);
    int status = recognition::kMatchOk;
    QStringList rects;
    for (const QString& name : imageName.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        const auto& images = context_.task.images;
        const auto image =
            std::find_if(images.begin(), images.end(),
                         [&](const model::ImageRecord& r) { return r.name == name; });
        if (image == images.end()) {
            status = recognition::kMatchMissingImage;
            break;
        }
        const auto matcher = conditions::makeTemplateMatcher(context_.task, image->id, rect);
        // The worker's cycle names its frame, as for the conditions.
        const recognition::MatchResult result =
            matcher->find(frame, {}, context_.worker ? context_.worker->cycleCount.load() : -1);
        if (result.status != recognition::kMatchOk) {
            status = result.status;
            break;
        }
        if (matcher->record().found) {
            rects << model::formatRectText(result.match);
        }
    }
    QJSEngine* engine = qjsEngine(this);
    QJSValue record = engine->newObject();
    record.setProperty(QStringLiteral("code"), status);
    record.setProperty(QStringLiteral("msg"), recognition::matchStatusText(status));
    QJSValue list = engine->newArray(uint(status == recognition::kMatchOk ? rects.size() : 0));
    for (qsizetype i = 0; status == recognition::kMatchOk && i < rects.size(); ++i) {
        list.setProperty(quint32(i), rects[i]);
    }
    record.setProperty(QStringLiteral("rects"), list);
    return record;
}

bool JSImage::exist(const QString& imageName, const QString& region) {
    const QJSValue record = find(imageName, region);
    return record.property(QStringLiteral("code")).toInt() == recognition::kMatchOk &&
           record.property(QStringLiteral("rects")).property(QStringLiteral("length")).toInt() > 0;
}

}  // namespace autoscene::script
