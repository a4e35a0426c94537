#include "RawJsonRoundTrip.h"

#include "JsonReader.h"
#include "JsonWriter.h"

namespace autoscene::fuzz {

using namespace autoscene::model;

QString rawJsonRoundTripFailure(const RawJson& raw) {
    JsonWriter out;
    out.startObject();
    out.member("value", raw);
    out.endObject();
    const std::string text = out.text();

    rapidjson::Document json;
    QString error;
    if (!parseJson(text.data(), text.size(), json, error)) {
        return QStringLiteral("the raw value %1 is written as text that does not parse: %2")
            .arg(QString::fromStdString(raw.text), error);
    }
    RawJson again;
    const JsonValue* value = findMember(json, "value");
    if (!value || !readJson(*value, again)) {
        return QStringLiteral("the raw value %1 is written as %2, which does not read back")
            .arg(QString::fromStdString(raw.text), QString::fromStdString(text));
    }
    if (again != raw) {
        return QStringLiteral("the raw value %1 reads back as %2")
            .arg(QString::fromStdString(raw.text), QString::fromStdString(again.text));
    }
    return {};
}

}  // namespace autoscene::fuzz
