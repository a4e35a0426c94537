#include "model/JsonReader.h"

#include "model/RectText.h"

#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
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

// The decimal exponent of a number's leading significant digit, so that the number
// lies in [10^magnitude, 10^(magnitude + 1)); nullopt for a zero. The exponent is read
// saturated: anything beyond 100000 is far outside every double either way.
std::optional<long> magnitudeOf(const std::string& text, size_t integer, size_t integerEnd,
                                size_t fraction, size_t fractionEnd, size_t exponent,
                                size_t exponentEnd) {
    long exp = 0;
    const bool negative = exponent < exponentEnd && text[exponent - 1] == '-';
    for (size_t i = exponent; i < exponentEnd; ++i) {
        exp = std::min(exp * 10 + (text[i] - '0'), 100000L);
    }
    exp = negative ? -exp : exp;
    for (size_t i = integer; i < integerEnd; ++i) {
        if (text[i] != '0') {
            return long(integerEnd - i) - 1 + exp;
        }
    }
    for (size_t i = fraction; i < fractionEnd; ++i) {
        if (text[i] != '0') {
            return -long(i - fraction) - 1 + exp;
        }
    }
    return std::nullopt;
}

// RapidJSON 1.1 reads up to 20 significant digits into a 64-bit integer and rounds
// it by the next digit: digits that start with 2^64 - 1 ("18446744073709551615") and
// go on with 5 or more wrap it to zero, and the number reads as about 1e-18. Lowering
// that next digit to 4 moves the number by less than 1e-19 of itself, far below a
// double's precision.
void avoidSignificandWrap(std::string& text, size_t integer, size_t integerEnd, size_t fraction,
                          size_t fractionEnd) {
    constexpr std::string_view kWrapping = "18446744073709551615";
    size_t matched = 0;
    const auto visit = [&](size_t at) {
        if (matched == 0 && text[at] == '0') {
            return true;  // a leading zero
        }
        if (matched == kWrapping.size()) {
            text[at] = std::min(text[at], '4');
            return false;
        }
        return text[at] == kWrapping[matched++];
    };
    for (size_t i = integer; i < integerEnd; ++i) {
        if (!visit(i)) {
            return;
        }
    }
    for (size_t i = fraction; i < fractionEnd; ++i) {
        if (!visit(i)) {
            return;
        }
    }
}

// RapidJSON 1.1's full-precision path goes wrong at the edges of the double range
// (and on the digits above):
// a zero written with a fraction or an exponent far from 0 ("0e40") or a number below
// about 1e-307 reads as an arbitrary number, and one of 1e308 or more as an arbitrary
// number, infinity or NaN, or it fails an assertion. The first two are the double
// zero, so they become "0.0" padded with spaces (offsets stay the same); the last is
// refused with the byte offset in `error`. A number that is not valid JSON stays as
// it is for the parser to refuse.
std::string withNumbersInRange(const char* text, size_t length, QString& error) {
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
        const size_t integerEnd = skipDigits(copy, integer);
        size_t end = integerEnd;
        bool valid = end > integer;
        size_t fraction = end;
        size_t fractionEnd = end;
        size_t exponent = end;
        size_t exponentEnd = end;
        bool isDouble = false;
        if (valid && end < copy.size() && copy[end] == '.') {
            fraction = end + 1;
            end = fractionEnd = skipDigits(copy, fraction);
            valid = end > fraction;
            isDouble = true;
        }
        if (valid && end < copy.size() && (copy[end] == 'e' || copy[end] == 'E')) {
            exponent = end + 1;
            if (exponent < copy.size() && (copy[exponent] == '+' || copy[exponent] == '-')) {
                ++exponent;
            }
            end = exponentEnd = skipDigits(copy, exponent);
            valid = end > exponent;
            isDouble = true;
        }
        if (valid) {
            const std::optional<long> magnitude = magnitudeOf(copy, integer, integerEnd, fraction,
                                                              fractionEnd, exponent, exponentEnd);
            if (magnitude && *magnitude >= 308) {
                error = QStringLiteral("invalid JSON at byte %1: number too big").arg(i);
                return {};
            }
            avoidSignificandWrap(copy, integer, integerEnd, fraction, fractionEnd);
            // "0.0" itself has a one-digit exponent and is parsed exactly.
            const std::string_view simple = c == '-' ? "-0.0" : "0.0";
            if (isDouble && (!magnitude || *magnitude < -307) && end - i > simple.size()) {
                copy.replace(i, end - i, std::string(simple).append(end - i - simple.size(), ' '));
            }
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

void reportUnknownKeys(const JsonValue& object, const std::vector<std::string_view>& known,
                       ReadContext& context) {
    if (!object.IsObject()) {
        return;
    }
    for (auto member = object.MemberBegin(); member != object.MemberEnd(); ++member) {
        const std::string_view key(member->name.GetString(), member->name.GetStringLength());
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            context.skip(QStringLiteral("unknown key \"%1\"")
                             .arg(QString::fromUtf8(key.data(), qsizetype(key.size()))));
        }
    }
}

bool parseJson(const char* text, size_t length, rapidjson::Document& doc, QString& error) {
    // Iterative parsing keeps a deeply nested file from exhausting the stack; invalid
    // UTF-8 is refused rather than silently replaced, so nothing of the file is lost.
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag |
                                rapidjson::kParseValidateEncodingFlag |
                                rapidjson::kParseFullPrecisionFlag;
    QString rangeError;
    const std::string cleared = withNumbersInRange(text, length, rangeError);
    if (!rangeError.isEmpty()) {
        error = rangeError;
        return false;
    }
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
