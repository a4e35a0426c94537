#pragma once
// Writes task-file JSON: indented by four spaces so saved tasks diff well, floats in
// the shortest form that reads back to the same single-precision value.

#include <QRect>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <string>
#include <vector>

#include "model/RawJson.h"

namespace autoscene::model {

class JsonWriter {
public:
    JsonWriter();
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void startObject();
    void endObject();
    void startArray();
    void endArray();
    void key(const char* name);

    void value(int v);
    void value(std::int64_t v);
    void value(std::uint32_t v);
    void value(bool v);
    void value(float v);
    void value(const QString& v);
    void value(const std::vector<int>& v);
    void value(const std::vector<float>& v);
    void value(const QStringList& v);
    void value(const RawJson& v);
    void value(const QRect& v);  // rectangle text "x,y,w,h"

    template <class T>
    void member(const char* name, const T& v) {
        key(name);
        value(v);
    }

    // The text written so far (complete once every object and array is closed).
    std::string text() const;

private:
    template <class List>
    void array(const List& items);

    struct Impl;
    Impl* impl_;
};

}  // namespace autoscene::model
