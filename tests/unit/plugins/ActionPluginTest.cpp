// Action plug-ins through the factory and the runner, against the probe plug-in and the QR
// example: the parameter chain, results that are missing, malformed or endless, failures
// to find the plug-in, and the init and uninit calls around each run.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QTemporaryDir>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>
#include <thread>

#include "TaskContext.h"
#include "TestFiles.h"
#include "engine/RunClock.h"
#include "engine/RuntimeFactory.h"
#include "engine/TaskRunner.h"
#include "plugins/ActionPluginRegistry.h"
#include "plugins/PluginItems.h"

using namespace autoscene;
using namespace std::chrono_literals;

namespace {

// A plug-in action record: inputs and outputs as JSON array texts.
QString pluginAction(const QString& name, const QString& configFile, const QString& inputs = "[]",
                     const QString& outputs = "[]", const QString& choices = "[]") {
    return QStringLiteral(R"({"type": 20, "action_name": "%1", "config_file": "%2",
        "action_inputs": %3, "action_outputs": %4, "action_optioninputs": %5})")
        .arg(name, configFile, inputs, outputs, choices);
}

// A task holding plug-in actions, opened from text, and the probe's description file.
class ActionPlugin : public ::testing::Test, protected test::TaskContext<engine::RunClock> {
protected:
    ActionPlugin() { plugins::registerPluginItems(factory); }

    void SetUp() override {
        qputenv("PROBE_PLUGIN_LOG", folder.filePath("lifecycle.log").toLocal8Bit());
        description = writeFile("probe.json", QStringLiteral(R"({"plugin_name": "probe",
            "plugin_file": "%1", "actions": [{"name": "renamed", "func_name": "echo"}]})")
                                                  .arg(PROBE_PLUGIN)
                                                  .toUtf8());
    }
    void TearDown() override { plugins::ActionPluginRegistry::shared().uninitAndUnloadAll(); }

    QString writeFile(const QString& name, const QByteArray& content) {
        QString path = folder.filePath(name);
        test::writeFile(path, content);
        return path;
    }

    // Variables 1 to 3 hold "héllo 世", "keep" and "keep" (2 shared by all threads, so that the
    // test sees a runner's change); the one scene runs `action` then stops the run.
    void open(const QString& action) {
        TaskContext::open(
            QString::fromUtf8(test::readFile(AUTOSCENE_FIXTURES "/plugins/one-event.json"))
                .arg(action)
                .toUtf8());
    }

    // Builds and runs the first action on this thread; its result record.
    QJsonObject runFirst(cv::Mat frame = {}) {
        auto action = factory.action(*task.scenes.front().events.front().actions.at(0), *context);
        engine::TaskInfo info;
        info.frame = std::move(frame);
        action->run(info);
        return action->state(std::this_thread::get_id());
    }

    QString variable(int id) { return definitions->find(id)->value(); }

    QStringList lifecycle() { return test::logLines(folder.filePath("lifecycle.log")); }

    QTemporaryDir folder;
    QString description;
    engine::RuntimeFactory factory;
};

TEST_F(ActionPlugin, ParametersGoInNameOrderThenChoicesWithVariablesByValue) {
    open(pluginAction(
        "renamed", description,
        R"([{"action_arg": "zeta", "action_varvalue": "z"},
            {"action_arg": "alpha", "action_varvalue": 1}])",
        R"([{"action_result": "order", "action_varvalue": 2},
            {"action_result": "alpha", "action_varvalue": 3}])",
        R"([{"action_arg": "mode", "action_option": ["fast", "slow"], "action_varvalue": "slow"},
            {"action_arg": "bias", "action_option": ["low", "high"]}])"));
    const QJsonObject result = runFirst();
    EXPECT_EQ(variable(2), "alpha,zeta,bias,mode") << "the description's func_name is called";
    EXPECT_EQ(variable(3), "héllo 世") << "by value, UTF-8 both ways";
    // The first result that changed a variable is the one named.
    EXPECT_EQ(QStringList({result["error"].toString(), result["action_name"].toString(),
                           result["variable_name"].toString(), result["original"].toString(),
                           result["modify"].toString()}),
              QStringList({"", "renamed", "v2", "keep", "alpha,zeta,bias,mode"}));
    EXPECT_EQ(result["modify_list"].toArray().size(), 2);
}

TEST_F(ActionPlugin, ResultsAreCheckedBeforeUse) {
    // {function, variable 2 afterwards, part of the error text}
    for (const auto& [function, expected, error] :
         {std::tuple{"nothing", "keep", ""},
          {"holes", "good", "2 result nodes"},
          {"long_chain", "9999", ""},
          {"circular", "third", "circular"},
          {"missing_export", "keep", "插件方法未找到:missing_export"}}) {
        open(pluginAction(function, description, "[]",
                          R"([{"action_result": "out", "action_varvalue": 2}])"));
        const QJsonObject result = runFirst();
        EXPECT_EQ(variable(2), expected) << function;
        EXPECT_TRUE(result["error"].toString().contains(QString::fromUtf8(error)))
            << function << " " << result["error"].toString().toStdString();
    }
}

TEST_F(ActionPlugin, MissingDescriptionOrLibraryIsReportedNotFatal) {
    const QString notJson = writeFile("broken.json", "{\"plugin_file\": ");
    const QString notLibrary =
        writeFile("fake.json", QStringLiteral(R"({"plugin_file": "%1"})").arg(notJson).toUtf8());
    for (const QString& config : {folder.filePath("absent.json"), notJson, notLibrary}) {
        open(pluginAction("echo", config, "[]",
                          R"([{"action_result": "order", "action_varvalue": 2}])"));
        EXPECT_EQ(runFirst()["error"].toString(), "未找到插件配置或插件加载失败")
            << config.toStdString();
        EXPECT_EQ(variable(2), "keep");
    }
}

TEST_F(ActionPlugin, TheFrameIsPassedAsPackedBgr) {
    open(pluginAction("frame_info", description, "[]",
                      R"([{"action_result": "size", "action_varvalue": 2},
                                 {"action_result": "pixel", "action_varvalue": 3}])"));
    const cv::Mat wide(4, 8, CV_8UC3, cv::Scalar(1, 2, 3));
    runFirst(wide(cv::Rect(1, 0, 6, 4)));  // not continuous: the host packs it
    EXPECT_EQ(variable(2) + ' ' + variable(3), "6x4x3 1,2,3");

    runFirst();
    EXPECT_EQ(variable(2), "0x0x0") << "no frame";
}

TEST_F(ActionPlugin, InitBeforeAndUninitAfterEveryRunWhichUnloadsTheLibrary) {
    open(pluginAction("echo", description, R"([{"action_arg": "a", "action_varvalue": 1}])",
                      R"([{"action_result": "a", "action_varvalue": 2}])"));
    engine::TaskRunner runner(task, factory, target);
    runner.setLoopIntervalMs(0);
    EXPECT_TRUE(lifecycle().isEmpty()) << "building the action only loads the library";
    for (int run = 0; run < 2; ++run) {
        ASSERT_TRUE(runner.start({{engine::TargetKind::Desktop}}));
        ASSERT_TRUE(runner.waitUntilIdle(10s));
        EXPECT_EQ(runner.definitions().find(2)->value(), "héllo 世") << "run " << run;
        EXPECT_TRUE(plugins::ActionPluginRegistry::shared().libraries().empty());
    }
    EXPECT_EQ(lifecycle(),
              (QStringList{"plugin_init", "plugin_uninit", "plugin_init", "plugin_uninit"}));
}

TEST_F(ActionPlugin, TheQrExampleReadsACodeInARegion) {
    cv::Mat code;
    cv::QRCodeEncoder::create()->encode("autoscene QR 42", code);
    cv::resize(code, code, code.size() * 4, 0, 0, cv::INTER_NEAREST);
    cv::Mat screen(code.rows + 80, code.cols + 120, CV_8UC3, cv::Scalar(255, 255, 255));
    cv::cvtColor(code, screen(cv::Rect(100, 60, code.cols, code.rows)), cv::COLOR_GRAY2BGR);

    // {region, text and found afterwards}: a region past the frame is clipped to it.
    for (const auto& [region, read] :
         {std::pair{"80,40,2000,2000", "autoscene QR 42 1"}, {"0,0,90,50", " 0"}}) {
        open(pluginAction(
            "decode_qr", EXAMPLE_PLUGINS "/qr-decode.json",
            QStringLiteral(R"([{"action_arg": "region", "action_varvalue": "%1"}])").arg(region),
            R"([{"action_result": "text", "action_varvalue": 2},
                {"action_result": "found", "action_varvalue": 3}])"));
        runFirst(screen);
        EXPECT_EQ(variable(2) + ' ' + variable(3), read);
    }
}

TEST_F(ActionPlugin, TheColourProbeExampleFindsItsLibraryWithoutASuffix) {
    const cv::Mat screen(20, 30, CV_8UC3, cv::Scalar(10, 20, 30));
    open(pluginAction(
        "average_color", QStringLiteral(EXAMPLE_PLUGINS "/colour-probe.json"),
        R"([{"action_arg": "region", "action_varvalue": "25,15,10,10"},
            {"action_arg": "match", "action_varvalue": "#1E140A"}])",
        R"([{"action_result": "color", "action_varvalue": 2},
            {"action_result": "count", "action_varvalue": 3}])",
        R"([{"action_arg": "tolerance", "action_option": ["0", "8"], "action_varvalue": "0"}])"));
    EXPECT_EQ(runFirst(screen)["error"].toString(), "");
    EXPECT_EQ(variable(2) + ' ' + variable(3), "#1E140A 25") << "the region clipped to 5x5";
}

}  // namespace
