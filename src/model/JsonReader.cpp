#include "JsonReader.h"

#include "RectText.h"

#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
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

namespace {

// Arrays keep the elements of the right type and drop the others.
template <class T>
bool readJsonArray(const JsonValue& v, std::vector<T>& out) {
    if (!v.IsArray()) {
        return false;
    }
    out.clear();
    for (const JsonValue& item : v.GetArray()) {
        T element{};
        if (readJson(item, element)) {
            out.push_back(element);
        }
    }
    return true;
}

}  // namespace

bool readJson(const JsonValue& v, std::vector<int>& out) {
    return readJsonArray(v, out);
}

bool readJson(const JsonValue& v, std::vector<float>& out) {
    return readJsonArray(v, out);
}

bool readJson(const JsonValue& v, QStringList& out) {
    std::vector<QString> items;
    if (!readJsonArray(v, items)) {
        return false;
    }
    out = QStringList(items.begin(), items.end());
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

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

size_t skipDigits(const std::string& text, size_t at) {
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    return at;
}

// RapidJSON 1.1 hands a zero written with a fraction or an exponent far from 0
// ("0e40", "0.000...0" with 40 zeros) to a full-precision path that normalises a zero
// significand: undefined behaviour that yields an arbitrary number. Each such number
// is the double zero, so it becomes "0.0" padded with spaces; a number that is not
// valid JSON stays as it is for the parser to refuse, and offsets stay the same.
std::string withZeroNumbersSimplified(const char* text, size_t length) {
    std::string copy(text, length);
    bool inString = false;
    for (size_t i = 0; i < copy.size(); ++i) {
        const char c = copy[i];
        if (inString) {
            if (c == '\\') {
                ++i;  // the escaped character cannot end the string
            } else if (c == '"') {
                inString = false;
            }
            continue;
        }
        if (c == '"') {
            inString = true;
            continue;
        }
        if (c != '-' && !isDigit(c)) {
            continue;
        }
        // The longest prefix that the parser reads as one number.
        const size_t integer = c == '-' ? i + 1 : i;
        size_t end = skipDigits(copy, integer);
        bool zero = end == integer + 1 && copy[integer] == '0';
        bool valid = end > integer;
        bool isDouble = false;
        if (valid && end < copy.size() && copy[end] == '.') {
            const size_t fraction = end + 1;
            end = skipDigits(copy, fraction);
            valid = end > fraction;
            zero = zero && copy.find_first_not_of('0', fraction) >= end;
            isDouble = true;
        }
        if (valid && end < copy.size() && (copy[end] == 'e' || copy[end] == 'E')) {
            size_t exponent = end + 1;
            if (exponent < copy.size() && (copy[exponent] == '+' || copy[exponent] == '-')) {
                ++exponent;
            }
            end = skipDigits(copy, exponent);
            valid = end > exponent;
            isDouble = true;
        }
        // A zero no longer than "0.0" has a one-digit exponent and is parsed exactly;
        // a longer one keeps a space after "0.0", so that what follows it cannot
        // become part of the number.
        const std::string_view simple = c == '-' ? "-0.0" : "0.0";
        if (valid && zero && isDouble && end - i > simple.size()) {
            copy.replace(i, end - i, std::string(simple).append(end - i - simple.size(), ' '));
        }
        i = std::max(end, i + 1) - 1;
    }
    return copy;
}

}  // namespace

bool readJson(const JsonValue& v, RawJson& out) {
    if (depthOf(v) > kMaxRawDepth) {
        return false;
    }
    // An escaped lone surrogate (U+DC00 with no partner) parses into bytes that are not
    // UTF-8; kept, they would make the saved file unreadable.
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>,
                      rapidjson::CrtAllocator, rapidjson::kWriteValidateEncodingFlag>
        writer(buffer);
    if (!v.Accept(writer)) {
        return false;
    }
    out.text.assign(buffer.GetString(), buffer.GetSize());
    return true;
}

bool parseJson(const char* text, size_t length, rapidjson::Document& doc, QString& error) {
    // Iterative parsing keeps a deeply nested file from exhausting the stack; invalid
    // UTF-8 is refused rather than silently replaced, so nothing of the file is lost.
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag |
                                rapidjson::kParseValidateEncodingFlag |
                                rapidjson::kParseFullPrecisionFlag;
    const std::string cleared = withZeroNumbersSimplified(text, length);
    doc.Parse<kFlags>(cleared.data(), cleared.size());
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
