#pragma once

#include <QByteArray>
#include <QString>

#include "TestFiles.h"
#include "model/TaskDocument.h"

namespace autoscene::test {

QString fixturePath(const QString& relative);
// The JSON text written compactly, member order kept: equal texts mean the same
// values in the same key order.
std::string compactJson(const QByteArray& json);
// Opens JSON text and fails the test on an error.
void openOrFail(model::TaskDocument& task, const QByteArray& json);

}  // namespace autoscene::test
