// Broken and hostile task files: clear errors, defaults kept, nothing lost.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <csignal>

#include "TestSupport.h"
#include "model/EditorActions.h"
#include "model/JsonReader.h"
#include "model/TaskDocument.h"

using namespace autoscene::model;
using namespace autoscene::test;

namespace {

TEST(ReadRobustness, MalformedJsonReportsWhatAndWhereAndKeepsDefaults) {
    TaskDocument task;
    const OpenResult result = task.openText(R"({"name": "x", "scene_list": [ }")");
    EXPECT_TRUE(result.error.contains(QStringLiteral("at byte 30"))) << result.error.toStdString();
    EXPECT_EQ(std::tuple(task.name, task.scenes.size(), task.defaultScene.name),
              std::tuple(QString(), size_t(0), QStringLiteral("默认界面")));
    // The top level must be an object and the text UTF-8.
    EXPECT_FALSE(task.openText("[1, 2]").ok);
    EXPECT_TRUE(task.openText("{\"name\": \"caf\xe9\"}").error.contains(QStringLiteral("byte")));
}

TEST(ReadRobustness, NumbersReadExactlyOrAreRefusedWhereTheParserWouldGoWrong) {
    rapidjson::Document json;
    QString error;
    for (const char* tooBig : {R"({"a": -1e400})", R"({"a": 9e307, "b": 2e308})",
                               R"({"a": [123456789e300]})", R"({"a": 92760760679354105e296})"}) {
        EXPECT_FALSE(parseJson(tooBig, strlen(tooBig), json, error)) << tooBig;
        EXPECT_TRUE(error.contains(QStringLiteral("number too big"))) << error.toStdString();
    }
    EXPECT_TRUE(error.contains(QStringLiteral("at byte 6"))) << error.toStdString();

    const std::string tiny = R"({"a": 0.000000001e-320, "b": -1e-330, "c": 0e40, "d": 0.0})";
    ASSERT_TRUE(parseJson(tiny.data(), tiny.size(), json, error)) << error.toStdString();
    for (const char* key : {"a", "b", "c", "d"}) {
        EXPECT_EQ(json[key].GetDouble(), 0.0) << key;
    }
    const std::string inRange = R"({"a": 9.9e307, "b": 2.5e-300, "c": 123456789012345678901234,
        "d": 184467440737095516157, "e": 0.0018446744073709551615999e23, "f": 18446744073709551615})";
    ASSERT_TRUE(parseJson(inRange.data(), inRange.size(), json, error)) << error.toStdString();
    for (const auto& [key, value] : {std::pair{"a", 9.9e307},
                                     {"b", 2.5e-300},
                                     {"c", 123456789012345678901234.0},
                                     {"d", 184467440737095516157.0},
                                     {"e", 184467440737095516159.99}}) {
        EXPECT_EQ(json[key].GetDouble(), value) << key;
    }
    EXPECT_EQ(json["f"].GetUint64(), 18446744073709551615u);
}

TEST(ReadRobustness, KeysOfTheWrongTypeReadAsDefaults) {
    TaskDocument task;
    ASSERT_TRUE(task.openFolder(fixturePath("tasks/wrong-types")).ok);
    const TaskSettings& s = task.settings;
    EXPECT_EQ(std::tuple(task.name, s.loopInterval, s.concurrency, s.backAct, task.width,
                         task.height, s.taskMode),
              std::tuple(QString(), TaskSettings{}.loopInterval, false, false, 0, 3,
                         int(TaskMode::FullScreen)));
    ASSERT_EQ(task.images.size(), 1u);
    EXPECT_EQ(std::pair(task.images[0].id, task.images[0].sim), std::pair(0, ImageRecord{}.sim));
    ASSERT_EQ(task.scenes.size(), 1u);
    ASSERT_EQ(task.scenes[0].events.size(), 1u);
    ASSERT_EQ(task.scenes[0].events[0].actions.size(), 1u);
    const auto& tap = static_cast<const EditorTapAction&>(*task.scenes[0].events[0].actions[0]);
    EXPECT_EQ(std::pair(tap.button, tap.clickTimes), std::pair(1, 2));
}

QByteArray nestedGroups(int depth) {
    QByteArray open = R"({"type": 5, "relation": 1, "id": 1, "item_list": [)";
    QByteArray text = R"({"scene_list": [{"name": "s", "event_list": [{"item_group": )";
    for (int i = 0; i < depth; ++i) {
        text += open;
    }
    for (int i = 0; i < depth; ++i) {
        text += "]}";
    }
    return text + "}]}]}";
}

TEST(ReadRobustness, DeepNestingIsBoundedWithoutExhaustingTheStack) {
    TaskDocument task;
    const OpenResult result = task.openText(nestedGroups(100000));
    ASSERT_TRUE(result.ok) << result.error.toStdString();
    ASSERT_EQ(result.skipped.size(), 1u);
    EXPECT_TRUE(result.skipped[0].what.contains(QStringLiteral("deeper than 64")));
    // What was kept saves and reloads to the same text.
    const QByteArray saved = task.serialise();
    openOrFail(task, saved);
    EXPECT_EQ(task.serialise(), saved);
    EXPECT_TRUE(task.openText(nestedGroups(10)).skipped.empty());
}

TEST(ReadRobustness, OpenValuesNestedTooDeepFallBackToTheirDefault) {
    QByteArray deep(200, '[');
    deep += QByteArray(200, ']');
    TaskDocument task;
    openOrFail(task, R"({"enabled_plugin_func": )" + deep + "}");
    EXPECT_EQ(task.enabledPluginFunc.text, "[]");
    openOrFail(task, R"({"enabled_plugin_func": [[1, {"a": 2.5}]]})");
    EXPECT_EQ(task.enabledPluginFunc.text, R"([[1,{"a":2.5}]])");
}

TEST(ReadRobustness, FailedSavesReportAndLeaveThePreviousFileIntact) {
    QTemporaryDir dir;
    TaskDocument task;
    openOrFail(task, "{}");
    QString error;
    EXPECT_FALSE(task.save(&error)) << "a task opened from text has no folder to save into";
    EXPECT_FALSE(error.isEmpty());
    task.name = QStringLiteral("first");
    ASSERT_TRUE(task.saveTo(dir.path()));
    const QByteArray before = readFile(dir.filePath("script.json"));

    // A file-size limit makes the write fail as a full disk would, even for root.
    rlimit previous{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &previous), 0);
    const auto oldHandler = signal(SIGXFSZ, SIG_IGN);
    rlimit small = previous;
    small.rlim_cur = 64;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    task.name = QStringLiteral("second, long enough to pass the limit");
    const bool saved = task.saveTo(dir.path(), &error);
    setrlimit(RLIMIT_FSIZE, &previous);
    signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(saved);
    EXPECT_TRUE(error.contains("File too large")) << "the system's reason: " << error.toStdString();
    EXPECT_EQ(readFile(dir.filePath("script.json")), before);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"script.json"});
}

TEST(ReadRobustness, SavingKeepsTheModeOfTheFileItReplaces) {
    QTemporaryDir dir;
    TaskDocument task;
    openOrFail(task, "{}");
    ASSERT_TRUE(task.saveTo(dir.path()));
    const QString script = dir.filePath("script.json");
    EXPECT_TRUE(QFileInfo(script).permissions().testFlag(QFileDevice::ReadOther))
        << "a new file is readable by others, as files usually are";
    const auto mode = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser |
                      QFileDevice::WriteUser | QFileDevice::ReadGroup | QFileDevice::WriteGroup;
    ASSERT_TRUE(QFile::setPermissions(script, mode));
    task.name = QStringLiteral("again");
    ASSERT_TRUE(task.saveTo(dir.path()));
    EXPECT_EQ(QFileInfo(script).permissions(), mode);
}

}  // namespace
