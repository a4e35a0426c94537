#pragma once

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <QByteArray>
#include <QString>

#include "TestFiles.h"
#include "model/TaskDocument.h"

namespace autoscene::test {

inline QString fixturePath(const QString& relative) {
    return QStringLiteral(AUTOSCENE_FIXTURES "/") + relative;
}

// The JSON text written compactly, member order kept: equal texts mean the same
// values in the same key order.
inline std::string compactJson(const QByteArray& json) {
    rapidjson::Document doc;
    doc.Parse<rapidjson::kParseFullPrecisionFlag>(json.constData(), size_t(json.size()));
    EXPECT_FALSE(doc.HasParseError());
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    doc.Accept(writer);
    return buffer.GetString();
}

// Opens JSON text and fails the test on an error.
inline void openOrFail(model::TaskDocument& task, const QByteArray& json) {
    const model::OpenResult result = task.openText(json);
    ASSERT_TRUE(result.ok) << result.error.toStdString();
}

}  // namespace autoscene::test
