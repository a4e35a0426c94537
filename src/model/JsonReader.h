#pragma once
// Typed reads of task-file JSON. A value of the wrong JSON type never fails a read:
// the member keeps its default. Every skipped element is reported with its place.

#include <rapidjson/document.h>
#include <QRect>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/RawJson.h"

namespace autoscene::model {

using JsonValue = rapidjson::Value;

// Groups nest no deeper than this; a raw value no deeper than kMaxRawDepth.
inline constexpr int kMaxGroupDepth = 64;
inline constexpr int kMaxRawDepth = 64;

struct ReadIssue {
    QString where;  // JSON pointer of the element, e.g. /scene_list/0/event_list/2
    QString what;
};

// Where the reader is in the file, and what it skipped on the way.
class ReadContext {
public:
    class Scope {
    public:
        Scope(ReadContext& context, const QString& part);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        ReadContext& context_;
        qsizetype length_;
    };

    QString where() const { return path_.isEmpty() ? QStringLiteral("/") : path_; }
    void skip(const QString& what) { issues_.push_back({where(), what}); }
    const std::vector<ReadIssue>& issues() const { return issues_; }

    int groupDepth = 0;

private:
    QString path_;
    std::vector<ReadIssue> issues_;
};

const JsonValue* findMember(const JsonValue& object, const char* key);

// Each returns false and leaves `out` alone when the value has another type.
bool readJson(const JsonValue& v, int& out);
bool readJson(const JsonValue& v, std::int64_t& out);
bool readJson(const JsonValue& v, std::uint32_t& out);
bool readJson(const JsonValue& v, bool& out);  // only the literal true is true
bool readJson(const JsonValue& v, float& out);
bool readJson(const JsonValue& v, QString& out);
bool readJson(const JsonValue& v, std::vector<int>& out);
bool readJson(const JsonValue& v, std::vector<float>& out);
bool readJson(const JsonValue& v, QStringList& out);
bool readJson(const JsonValue& v, RawJson& out);
bool readJson(const JsonValue& v, QRect& out);  // rectangle text "x,y,w,h"

// Reads `key` of `object` into `out` when present.
template <class T>
void readMember(const JsonValue& object, const char* key, T& out) {
    if (const JsonValue* v = findMember(object, key)) {
        readJson(*v, out);
    }
}

// Parses task-file text. On failure returns false with a message naming what and
// where (byte offset).
bool parseJson(const char* text, size_t length, rapidjson::Document& doc, QString& error);

// Reports each member of `object` whose key is not `known` (as "unknown key "actions_list""),
// so that a misspelt key, whose member then keeps its default, does not pass unnoticed.
void reportUnknownKeys(const JsonValue& object, const std::vector<std::string_view>& known,
                       ReadContext& context);

}  // namespace autoscene::model
