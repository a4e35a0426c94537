#include "OcrAnswer.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "system/Utf8.h"

namespace autoscene::ocr {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

// Repaired first: a stray byte must not make the whole answer unreadable.
void writeText(Writer& writer, std::string_view text) {
    const std::string valid = sys::repairUtf8(text);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

}  // namespace

std::string buildAnswerJson(const std::vector<TextLine>& lines, std::string_view engine) {
    std::string wholeText;
    for (const TextLine& line : lines) {
        if (!wholeText.empty()) {
            wholeText += '\n';
        }
        wholeText += line.text;
    }
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("strRes");
    writeText(writer, wholeText);
    writer.Key("boxes");
    writer.StartArray();
    for (const TextLine& line : lines) {
        writer.StartObject();
        writer.Key("text");
        writeText(writer, line.text);
        writer.Key("x");
        writer.Int(line.x);
        writer.Key("y");
        writer.Int(line.y);
        writer.Key("width");
        writer.Int(line.width);
        writer.Key("height");
        writer.Int(line.height);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("engine");
    writeText(writer, engine);
    writer.EndObject();
    return buffer.GetString();
}

std::string buildErrorJson(std::string_view message) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("error");
    writeText(writer, message);
    writer.EndObject();
    return buffer.GetString();
}

}  // namespace autoscene::ocr
