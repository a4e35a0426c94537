// autoscene-run with the example plug-ins, as a user runs it: the window target captures a
// QR code from a file and clicks and types through the background plug-in, and a plug-in
// action reads the code.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "DemoLayout.h"
#include "DemoTargetProcess.h"
#include "ProgramRun.h"
#include "TestFiles.h"
#include "XvfbServer.h"

using namespace autoscene::test;
using namespace autoscene::testing;
namespace demo = autoscene::demo;

namespace {

using RunResult = ProgramResult;

class PluginRun : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(server.display().empty());
        ASSERT_TRUE(target.started());
        QDir(folder.path()).mkpath("mv-plugin");
        QDir(folder.path()).mkpath("plugins");
        ASSERT_TRUE(QFile::copy(QR_PLUGIN, folder.filePath("mv-plugin/qr-decode.so")));
        ASSERT_TRUE(QFile::copy(QR_DESCRIPTION, folder.filePath("mv-plugin/qr-decode.json")));
        ASSERT_TRUE(QFile::copy(FILE_BACKEND_PLUGIN, folder.filePath("plugins/file-backend.so")));

        cv::Mat code;
        cv::QRCodeEncoder::create()->encode("go", code);
        cv::resize(code, code, code.size() * 6, 0, 0, cv::INTER_NEAREST);
        cv::Mat picture(code.rows + 40, code.cols + 40, CV_8UC3, cv::Scalar::all(255));
        cv::cvtColor(code, picture(cv::Rect(20, 20, code.cols, code.rows)), cv::COLOR_GRAY2BGR);
        ASSERT_TRUE(cv::imwrite(folder.filePath("capture.ppm").toStdString(), picture));
    }

    RunResult run(const QString& plugin, const QString& services, int timeLimit,
                  const QString& childClass = "", const QString& point = "30,40") {
        // Reads the code from the frame and, once it says "go", clicks at the point, types,
        // presses Return, turns the wheel there and stops.
        writeFile(folder.filePath("script.json"),
                  QString::fromUtf8(readFile(AUTOSCENE_FIXTURES "/plugins/qr-task.json"))
                      .arg(plugin, services, childClass, point)
                      .toUtf8());
        QProcessEnvironment environment = onDisplay(server.display());
        environment.insert("FILE_BACKEND_DIR", folder.path());
        return runProgram(
            AUTOSCENE_RUN_PATH,
            {folder.path(), "--json", "--foreground", "--time-limit", QString::number(timeLimit)},
            environment);
    }

    // Where the plug-in was told to press: a tap picks a point of its 1x1 rectangle, edges
    // included, so one more to the right or below is as good.
    QString pressedNear(const QStringList& log, const QString& window, int x, int y) {
        for (int dx : {0, 1}) {
            for (int dy : {0, 1}) {
                QString at = QStringLiteral(" %1 %2").arg(x + dx).arg(y + dy);
                if (log.contains("down " + window + " 1" + at)) {
                    return at;
                }
            }
        }
        ADD_FAILURE() << "no press near " << x << "," << y << ": " << log.join('|').toStdString();
        return {};
    }

    QStringList inputLog() { return logLines(folder.filePath("input.log")); }

    XvfbServer server{640, 480};
    DemoTargetProcess target{server.display(), {}};
    QTemporaryDir folder;
};

TEST_F(PluginRun, CapturesAndActsThroughThePluginItsChildAndItsUntickedServices) {
    const RunResult result =
        run("plugins/file-backend.so", R"(["capture", "mouse", "input", "key", "wheel"])", 30);
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    bool reported = false;
    for (const QJsonObject& line : result.lines()) {
        const QJsonObject record = line["result"].toObject();
        reported = reported || (record["action_name"] == "decode_qr" && record["modify"] == "go" &&
                                record["variable_name"] == "code" && record["error"] == "");
    }
    EXPECT_TRUE(reported) << "the run prints what the plug-in action changed";
    const QString window = QString::number(target.window());
    const QStringList log = inputLog();
    const QString at = pressedNear(log, window, 30, 40);
    const QStringList wheel =
        log.filter(QRegularExpression("^wheel " + window + " 240 3[01] 4[01]$"));
    ASSERT_EQ(wheel.size(), 1) << log.join('|').toStdString();
    EXPECT_EQ(log, (QStringList{"global_init", "init " + window, "move " + window + at,
                                "down " + window + " 1" + at, "up " + window + " 1",
                                "text " + window + " héllo", "key_down " + window + " 13",
                                "key_up " + window + " 13", wheel.front(), "uninit " + window,
                                "global_uninit"}));
    EXPECT_TRUE(target.settledLines("main ButtonPress", 0).empty()) << "the window got nothing";

    SCOPED_TRACE("a point in the named child goes to the child in its own coordinates");
    ASSERT_TRUE(QFile::remove(folder.filePath("input.log")));
    const RunResult inChild = run("plugins/file-backend.so", R"(["capture", "mouse", "input"])", 30,
                                  "AutosceneDemoPanel", "450,30");
    ASSERT_EQ(inChild.exitCode, 0) << inChild.err.toStdString();
    const QString panel = QString::number(target.panel());
    const QStringList childLog = inputLog();
    const QString childAt = pressedNear(childLog, panel, 450 - demo::kPanel.x, 30 - demo::kPanel.y);
    EXPECT_TRUE(childLog.contains("move " + panel + childAt));
    EXPECT_TRUE(childLog.contains("text " + panel + " héllo")) << "text goes to the named child";

    // Unticked capture staying with the display is TaskPage.RunsOneTaskOnTwoWindowsAtOnce...'s.
    SCOPED_TRACE("an unloadable plug-in is refused");
    const RunResult refused = run("script.json", "[]", 2);
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_TRUE(refused.err.contains("does not load")) << refused.err.toStdString();
}

}  // namespace
