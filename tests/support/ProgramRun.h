#pragma once
// A program run to its end as a user runs it: how it exited, what it printed, and the
// lines of a --json run.

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <vector>

namespace autoscene::test {

struct ProgramResult {
    int exitCode = -1;  // -1 when it crashed
    QString out;
    QString err;

    // The JSON lines whose "type" is `type`, every one when no type is given.
    std::vector<QJsonObject> lines(const QString& type = {}) const {
        std::vector<QJsonObject> found;
        for (const QString& line : out.split('\n', Qt::SkipEmptyParts)) {
            const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
            if (type.isEmpty() || object["type"].toString() == type) {
                found.push_back(object);
            }
        }
        return found;
    }
    QJsonObject summary() const {
        return QJsonDocument::fromJson(out.trimmed().split('\n').last().toUtf8()).object();
    }
};

inline ProgramResult finishProgram(QProcess& process, int timeoutMs = 60000) {
    EXPECT_TRUE(process.waitForFinished(timeoutMs));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline ProgramResult runProgram(
    const QString& program, const QStringList& arguments,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment(),
    int timeoutMs = 60000) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    return finishProgram(process, timeoutMs);
}

// The environment with DISPLAY set to `display`.
inline QProcessEnvironment onDisplay(const std::string& display) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", QString::fromStdString(display));
    return environment;
}

}  // namespace autoscene::test
