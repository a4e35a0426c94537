#include "TestSupport.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace autoscene::test {

QString fixturePath(const QString& relative) {
    return QStringLiteral(AUTOSCENE_FIXTURES "/") + relative;
}

std::string compactJson(const QByteArray& json) {
    rapidjson::Document doc;
    doc.Parse<rapidjson::kParseFullPrecisionFlag>(json.constData(), size_t(json.size()));
    EXPECT_FALSE(doc.HasParseError());
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    doc.Accept(writer);
    return buffer.GetString();
}

void openOrFail(model::TaskDocument& task, const QByteArray& json) {
    const model::OpenResult result = task.openText(json);
    ASSERT_TRUE(result.ok) << result.error.toStdString();
}

}  // namespace autoscene::test
