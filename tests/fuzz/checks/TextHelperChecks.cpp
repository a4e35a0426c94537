#include "Checks.h"

#include <QDir>
#include <QFileInfo>

#include "JsonReader.h"
#include "KeyNames.h"
#include "PluginDescription.h"
#include "RawJsonRoundTrip.h"
#include "RectText.h"
#include "TaskImages.h"

namespace autoscene::fuzz {

using namespace autoscene::model;

QString checkRectText(const QByteArray& input) {
    const QRect rect = parseRectText(QString::fromUtf8(input));
    // Users of the rectangle take its right and bottom edges; a sum that left int
    // while parsing shows up as edges that disagree with the size.
    if (qint64(rect.x()) + rect.width() - 1 != rect.right() ||
        qint64(rect.y()) + rect.height() - 1 != rect.bottom()) {
        return QStringLiteral("the rectangle at %1,%2 sized %3x%4 has its far corner at %5,%6")
            .arg(rect.x())
            .arg(rect.y())
            .arg(rect.width())
            .arg(rect.height())
            .arg(rect.right())
            .arg(rect.bottom());
    }
    const QString formatted = formatRectText(rect);
    const QRect again = parseRectText(formatted);
    if (again != rect) {
        return QStringLiteral("%1 reads back as %2").arg(formatted, formatRectText(again));
    }
    return {};
}

QString checkKeyNames(const QByteArray& input) {
    // Key groups reach the name helpers only as raw values read from a task file;
    // wrapping the bytes as a member sends them down that same road.
    const QByteArray text = QByteArrayLiteral("{\"group_key\":") + input + '}';
    rapidjson::Document json;
    QString error;
    if (!parseJson(text.constData(), size_t(text.size()), json, error)) {
        return {};
    }
    const JsonValue* value = findMember(json, "group_key");
    RawJson group;
    if (!value || !readJson(*value, group)) {
        return {};
    }
    const QString groupText = keyGroupText(group);
    if (!value->IsArray()) {
        return groupText.isEmpty() ? QString()
                                   : QStringLiteral("the group %1 is no list but reads as %2")
                                         .arg(QString::fromStdString(group.text), groupText);
    }
    for (const JsonValue& item : value->GetArray()) {
        if (item.IsInt() && item.GetInt() != 0 &&
            (virtualKeyName(item.GetInt()).isEmpty() || groupText.isEmpty())) {
            return QStringLiteral("key %1 of the group %2 has no name")
                .arg(item.GetInt())
                .arg(QString::fromStdString(group.text));
        }
    }
    return rawJsonRoundTripFailure(group);
}

QString checkPluginDescription(const QByteArray& input) {
    const std::optional<PluginDescription> description = parsePluginDescription(input);
    if (!description) {
        return {};
    }
    for (const PluginActionDescription& action : description->actions) {
        for (const RawJson* raw : {&action.options, &action.results}) {
            if (QString failure = rawJsonRoundTripFailure(*raw); !failure.isEmpty()) {
                return QStringLiteral("action %1: %2").arg(action.name, failure);
            }
        }
    }
    return {};
}

QString checkImageFileName(const QByteArray& input) {
    static const TaskDocument task;
    ImageRecord image;
    image.file = QString::fromUtf8(input);
    const std::optional<QString> path = imageFilePath(task, image);
    if (!path) {
        return {};
    }
    // Where the name leads once "." and ".." are resolved.
    const QString resolved = QFileInfo(QDir::cleanPath(*path)).path() + QLatin1Char('/');
    if (resolved != imageFolder(task)) {
        return QStringLiteral("the image file name %1 leads to %2").arg(image.file, *path);
    }
    return {};
}

}  // namespace autoscene::fuzz
