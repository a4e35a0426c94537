#include "model/JsonWriter.h"

#include "model/RectText.h"

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <charconv>
#include <cmath>

namespace autoscene::model {

struct JsonWriter::Impl {
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer{buffer};

    Impl() { writer.SetIndent(' ', 4); }
};

JsonWriter::JsonWriter() : impl_(new Impl) {}
JsonWriter::~JsonWriter() {
    delete impl_;
}

void JsonWriter::startObject() {
    impl_->writer.StartObject();
}
void JsonWriter::endObject() {
    impl_->writer.EndObject();
}
void JsonWriter::startArray() {
    impl_->writer.StartArray();
}
void JsonWriter::endArray() {
    impl_->writer.EndArray();
}
void JsonWriter::key(const char* name) {
    impl_->writer.Key(name);
}

void JsonWriter::value(int v) {
    impl_->writer.Int(v);
}
void JsonWriter::value(std::int64_t v) {
    impl_->writer.Int64(v);
}
void JsonWriter::value(std::uint32_t v) {
    impl_->writer.Uint(v);
}
void JsonWriter::value(bool v) {
    impl_->writer.Bool(v);
}

void JsonWriter::value(float v) {
    if (!std::isfinite(v)) {
        v = 0.0f;  // JSON has no infinity or NaN; readers never produce them
    }
    char text[32] = {};
    const auto result = std::to_chars(text, text + sizeof text, v);
    impl_->writer.RawValue(text, static_cast<size_t>(result.ptr - text), rapidjson::kNumberType);
}

void JsonWriter::value(const QString& v) {
    const QByteArray utf8 = v.toUtf8();
    impl_->writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
}

template <class List>
void JsonWriter::array(const List& items) {
    startArray();
    for (const auto& item : items) {
        value(item);
    }
    endArray();
}

void JsonWriter::value(const std::vector<int>& v) {
    array(v);
}
void JsonWriter::value(const std::vector<float>& v) {
    array(v);
}
void JsonWriter::value(const QStringList& v) {
    array(v);
}

void JsonWriter::value(const RawJson& v) {
    rapidjson::Document doc;
    // Raw values were validated and depth-checked when read; a broken one writes null.
    // Full precision, as when reading, so that every number is written back unchanged.
    if (doc.Parse<rapidjson::kParseFullPrecisionFlag>(v.text.c_str(), v.text.size())
            .HasParseError()) {
        impl_->writer.Null();
        return;
    }
    doc.Accept(impl_->writer);
}

void JsonWriter::value(const QRect& v) {
    value(formatRectText(v));
}

std::string JsonWriter::text() const {
    return std::string(impl_->buffer.GetString(), impl_->buffer.GetSize());
}

}  // namespace autoscene::model
