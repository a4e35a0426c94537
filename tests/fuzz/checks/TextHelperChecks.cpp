#include "Checks.h"

#include <QDir>
#include <QFileInfo>

#include "model/JsonReader.h"
#include "model/JsonWriter.h"
#include "model/KeyNames.h"
#include "model/PluginDescription.h"
#include "model/RectText.h"
#include "model/TaskImages.h"

namespace autoscene::fuzz {

using namespace autoscene::model;

namespace {

// Raw values (key groups, plug-in fields) must be written back as they were read:
// written as a task-file member and read back with the task file's own parser.
QString rawJsonRoundTripFailure(const RawJson& raw) {
    JsonWriter out;
    out.startObject();
    out.member("value", raw);
    out.endObject();
    const std::string text = out.text();
    rapidjson::Document json;
    QString error;
    RawJson again;
    const JsonValue* value =
        parseJson(text.data(), text.size(), json, error) ? findMember(json, "value") : nullptr;
    if (!value || !readJson(*value, again) || again != raw) {
        return QStringLiteral("the raw value %1 is written as %2, which reads back as %3 %4")
            .arg(QString::fromStdString(raw.text), QString::fromStdString(text),
                 QString::fromStdString(again.text), error);
    }
    return {};
}

}  // namespace

QString checkRectText(const QByteArray& input) {
    const QRect rect = parseRectText(QString::fromUtf8(input));
    // Users of the rectangle take its right and bottom edges; a sum that left int
    // while parsing shows up as edges that disagree with the size.
    if (qint64(rect.x()) + rect.width() - 1 != rect.right() ||
        qint64(rect.y()) + rect.height() - 1 != rect.bottom()) {
        return QStringLiteral("the rectangle %1 has its far corner at %2,%3")
            .arg(formatRectText(rect), QString::number(rect.right()),
                 QString::number(rect.bottom()));
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
                .arg(QString::number(item.GetInt()), QString::fromStdString(group.text));
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
