#include "text/RecognisedText.h"

#include <rapidjson/document.h>

namespace autoscene::text {

namespace {

constexpr int kMaxCoordinate = 1 << 20;

QString stringOf(const rapidjson::Value& value) {
    return QString::fromUtf8(value.GetString(), static_cast<qsizetype>(value.GetStringLength()));
}

bool intMember(const rapidjson::Value& object, const char* name, int& out) {
    const auto it = object.FindMember(name);
    if (it == object.MemberEnd() || !it->value.IsInt()) {
        return false;
    }
    out = it->value.GetInt();
    return out >= -kMaxCoordinate && out <= kMaxCoordinate;
}

}  // namespace

std::array<QPoint, 4> TextBox::corners() const {
    const int x = rect.x();
    const int y = rect.y();
    return {QPoint(x, y), QPoint(x + rect.width(), y), QPoint(x + rect.width(), y + rect.height()),
            QPoint(x, y + rect.height())};
}

std::optional<RecognisedText> parseRecognisedText(std::string_view body) {
    rapidjson::Document json;
    json.Parse(body.data(), body.size());
    if (json.HasParseError() || !json.IsObject()) {
        return std::nullopt;
    }
    const auto whole = json.FindMember("strRes");
    const auto boxes = json.FindMember("boxes");
    if (whole == json.MemberEnd() || !whole->value.IsString() || boxes == json.MemberEnd() ||
        !boxes->value.IsArray()) {
        return std::nullopt;
    }
    RecognisedText result;
    result.whole = stringOf(whole->value);
    for (const rapidjson::Value& box : boxes->value.GetArray()) {
        if (!box.IsObject()) {
            continue;
        }
        const auto text = box.FindMember("text");
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        if (text == box.MemberEnd() || !text->value.IsString() || !intMember(box, "x", x) ||
            !intMember(box, "y", y) || !intMember(box, "width", width) ||
            !intMember(box, "height", height) || width < 0 || height < 0) {
            continue;
        }
        result.boxes.push_back({stringOf(text->value), QRect(x, y, width, height)});
    }
    return result;
}

}  // namespace autoscene::text
