#pragma once
// Field tables: each record lists its keys once, in writing order, with the member
// that holds the value and what the value refers to. Reading, writing and the
// resource-use queries all walk the same table.

#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "model/JsonReader.h"
#include "model/JsonWriter.h"

namespace autoscene::model {

// What an integer field refers to, for the resource-use queries.
enum class Ref {
    None,
    Definition,  // id in var_list
    Image,       // id in image_list
    Color,       // id in color_list
    Original,    // id in ori_infos
    Label,       // class of the task's detection model
};

template <class Record, class T>
struct Field {
    const char* key;  // written under this key, and read under it unless readKey is set
    T Record::*member;
    Ref ref = Ref::None;
    const char* readKey = nullptr;

    // Empty for a field that is written but never read.
    const char* keyForReading() const { return readKey ? readKey : key; }
};

template <class Record, class T>
constexpr Field<Record, T> field(const char* key, T Record::*member, Ref ref = Ref::None) {
    return {key, member, ref, nullptr};
}

// A field read under one key and written under another.
template <class Record, class T>
constexpr Field<Record, T> renamedField(const char* writeKey, const char* readKey,
                                        T Record::*member) {
    return {writeKey, member, Ref::None, readKey};
}

// A field written for readers elsewhere but ignored when reading.
template <class Record, class T>
constexpr Field<Record, T> writeOnlyField(const char* key, T Record::*member) {
    return {key, member, Ref::None, ""};
}

// A field read under an older or other key but never written: a second key of a member
// that another field writes. Listed first, so that the written key wins when both exist.
template <class Record, class T>
constexpr Field<Record, T> readOnlyField(const char* readKey, T Record::*member) {
    return {"", member, Ref::None, readKey};
}

// Nested records (text_info, screen_info) read and write through their own table.
template <class T>
concept HasFields = requires {
    T::fields();
};

template <HasFields T>
void writeFields(JsonWriter& out, const T& record);
template <HasFields T>
void readFields(const JsonValue& in, T& record);

template <HasFields T>
bool readJson(const JsonValue& v, T& out) {
    if (!v.IsObject()) {
        return false;
    }
    readFields(v, out);
    return true;
}

template <HasFields T>
void writeJsonValue(JsonWriter& out, const T& v) {
    out.startObject();
    writeFields(out, v);
    out.endObject();
}

template <class T>
void writeJsonValue(JsonWriter& out, const T& v) {
    out.value(v);
}

template <HasFields T>
void writeFields(JsonWriter& out, const T& record) {
    std::apply(
        [&](const auto&... f) {
            (([&] {
                 if (*f.key) {
                     out.key(f.key);
                     writeJsonValue(out, record.*(f.member));
                 }
             }()),
             ...);
        },
        T::fields());
}

template <HasFields T>
void readFields(const JsonValue& in, T& record) {
    std::apply(
        [&](const auto&... f) {
            (([&] {
                 const char* key = f.keyForReading();
                 if (const JsonValue* v = *key ? findMember(in, key) : nullptr) {
                     readJson(*v, record.*(f.member));
                 }
             }()),
             ...);
        },
        T::fields());
}

// Every key a record's fields are read or written under: a file written here knows no others.
template <HasFields T>
std::vector<std::string_view> fieldKeys() {
    std::vector<std::string_view> keys;
    std::apply(
        [&](const auto&... f) {
            (([&] {
                 for (const char* key : {f.key, f.keyForReading()}) {
                     if (*key) {
                         keys.emplace_back(key);
                     }
                 }
             }()),
             ...);
        },
        T::fields());
    return keys;
}

template <HasFields T>
void reportUnknownFieldKeys(const JsonValue& in, ReadContext& context, bool typed = false);

// Reports the unknown keys inside the nested records (text_info, screen_info) of `in`.
template <HasFields T>
void reportUnknownNestedKeys(const JsonValue& in, ReadContext& context) {
    std::apply(
        [&](const auto&... f) {
            (([&] {
                 using Member = std::remove_cvref_t<decltype(std::declval<T&>().*(f.member))>;
                 if constexpr (HasFields<Member>) {
                     const char* key = f.keyForReading();
                     const JsonValue* v = *key ? findMember(in, key) : nullptr;
                     if (v && v->IsObject()) {
                         ReadContext::Scope scope(context, QLatin1String(key));
                         reportUnknownFieldKeys<Member>(*v, context);
                     }
                 }
             }()),
             ...);
        },
        T::fields());
}

// Reports the keys of `in` that T's table does not know, nested records included; a
// `typed` record also carries the `type` that chose T.
template <HasFields T>
void reportUnknownFieldKeys(const JsonValue& in, ReadContext& context, bool typed) {
    static const std::vector<std::string_view> known = fieldKeys<T>();
    static const std::vector<std::string_view> knownWithType = [] {
        std::vector<std::string_view> keys = fieldKeys<T>();
        keys.emplace_back("type");
        return keys;
    }();
    reportUnknownKeys(in, typed ? knownWithType : known, context);
    reportUnknownNestedKeys<T>(in, context);
}

// Calls fn(ref, id&) for every id-holding member of the record, nested ones included.
template <class T, class Fn>
void forEachRef(T& record, Fn&& fn);

template <class T, class Fn>
void visitRef(Ref ref, T& value, Fn& fn) {
    using U = std::remove_cv_t<T>;
    if constexpr (HasFields<U>) {
        forEachRef(value, fn);
    } else if constexpr (std::is_same_v<U, int>) {
        if (ref != Ref::None) {
            fn(ref, value);
        }
    } else if constexpr (std::is_same_v<U, std::vector<int>>) {
        if (ref != Ref::None) {
            for (auto& id : value) {
                fn(ref, id);
            }
        }
    }
}

template <class T, class Fn>
void forEachRef(T& record, Fn&& fn) {
    std::apply([&](const auto&... f) { (visitRef(f.ref, record.*(f.member), fn), ...); },
               std::remove_cv_t<T>::fields());
}

}  // namespace autoscene::model
