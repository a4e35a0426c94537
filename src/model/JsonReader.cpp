#include "JsonReader.h"

#include "RectText.h"

#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <limits>
#include <utility>

namespace autoscene::model {

ReadContext::Scope::Scope(ReadContext& context, const QString& part)
    : context_(context), length_(context.path_.size()) {
    context_.path_ += QLatin1Char('/') + part;
}

ReadContext::Scope::~Scope() {
    context_.path_.truncate(length_);
}

const JsonValue* findMember(const JsonValue& object, const char* key) {
    if (!object.IsObject()) {
        return nullptr;
    }
    const auto it = object.FindMember(key);
    return it == object.MemberEnd() ? nullptr : &it->value;
}

bool readJson(const JsonValue& v, std::int64_t& out) {
    if (v.IsInt64()) {
        out = v.GetInt64();
        return true;
    }
    if (v.IsDouble()) {
        const double d = v.GetDouble();
        if (std::isfinite(d) && d > double(std::numeric_limits<std::int64_t>::min()) &&
            d < double(std::numeric_limits<std::int64_t>::max())) {
            out = static_cast<std::int64_t>(d);
            return true;
        }
    }
    return false;
}

bool readJson(const JsonValue& v, int& out) {
    std::int64_t wide = 0;
    if (!readJson(v, wide) || wide < std::numeric_limits<int>::min() ||
        wide > std::numeric_limits<int>::max()) {
        return false;
    }
    out = static_cast<int>(wide);
    return true;
}

bool readJson(const JsonValue& v, std::uint32_t& out) {
    std::int64_t wide = 0;
    if (!readJson(v, wide) || wide < std::numeric_limits<std::int32_t>::min() ||
        wide > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    out = static_cast<std::uint32_t>(wide);  // a negative 32-bit value keeps its bits
    return true;
}

bool readJson(const JsonValue& v, bool& out) {
    out = v.IsTrue();
    return v.IsBool();
}

bool readJson(const JsonValue& v, float& out) {
    if (!v.IsNumber()) {
        return false;
    }
    const float f = static_cast<float>(v.GetDouble());
    if (!std::isfinite(f)) {
        return false;
    }
    out = f;
    return true;
}

bool readJson(const JsonValue& v, QString& out) {
    if (!v.IsString()) {
        return false;
    }
    out = QString::fromUtf8(v.GetString(), v.GetStringLength());
    return true;
}

bool readJson(const JsonValue& v, std::vector<int>& out) {
    if (!v.IsArray()) {
        return false;
    }
    out.clear();
    for (const JsonValue& item : v.GetArray()) {
        int n = 0;
        if (readJson(item, n)) {
            out.push_back(n);
        }
    }
    return true;
}

bool readJson(const JsonValue& v, QStringList& out) {
    if (!v.IsArray()) {
        return false;
    }
    out.clear();
    for (const JsonValue& item : v.GetArray()) {
        QString s;
        if (readJson(item, s)) {
            out.push_back(s);
        }
    }
    return true;
}

bool readJson(const JsonValue& v, QRect& out) {
    QString text;
    if (!readJson(v, text)) {
        return false;
    }
    out = parseRectText(text);
    return true;
}

namespace {

// Depth of nested arrays and objects, without recursion.
int depthOf(const JsonValue& root) {
    int deepest = 0;
    std::vector<std::pair<const JsonValue*, int>> pending{{&root, 1}};
    while (!pending.empty()) {
        auto [v, depth] = pending.back();
        pending.pop_back();
        if (depth > deepest) {
            deepest = depth;
        }
        if (depth > kMaxRawDepth) {
            break;
        }
        if (v->IsArray()) {
            for (const JsonValue& item : v->GetArray()) {
                pending.emplace_back(&item, depth + 1);
            }
        } else if (v->IsObject()) {
            for (const auto& m : v->GetObject()) {
                pending.emplace_back(&m.value, depth + 1);
            }
        }
    }
    return deepest;
}

}  // namespace

bool readJson(const JsonValue& v, RawJson& out) {
    if (depthOf(v) > kMaxRawDepth) {
        return false;
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    v.Accept(writer);
    out.text.assign(buffer.GetString(), buffer.GetSize());
    return true;
}

bool parseJson(const char* text, size_t length, rapidjson::Document& doc, QString& error) {
    // Iterative parsing keeps a deeply nested file from exhausting the stack; invalid
    // UTF-8 is refused rather than silently replaced, so nothing of the file is lost.
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag |
                                rapidjson::kParseValidateEncodingFlag |
                                rapidjson::kParseFullPrecisionFlag;
    doc.Parse<kFlags>(text, length);
    if (doc.HasParseError()) {
        error = QStringLiteral("invalid JSON at byte %1: %2")
                    .arg(doc.GetErrorOffset())
                    .arg(QString::fromUtf8(rapidjson::GetParseError_En(doc.GetParseError())));
        return false;
    }
    if (!doc.IsObject()) {
        error = QStringLiteral("invalid task file: the top level is not a JSON object");
        return false;
    }
    return true;
}

}  // namespace autoscene::model
