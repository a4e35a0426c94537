// Starting and watching the real service: where it is found, its port, that it comes
// back after being killed but not after stop(), and that a second watcher shares it.

#include <gtest/gtest.h>
#include <signal.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <thread>

#include "LogCapture.h"
#include "LoopbackPort.h"
#include "RenderedText.h"
#include "TestFiles.h"
#include "app/OcrServiceWatcher.h"
#include "text/OcrClient.h"

using namespace autoscene::app;
using namespace autoscene::ocr::testkit;
using namespace autoscene::test;
using namespace autoscene::text;
using namespace std::chrono_literals;

namespace {

// The service program as the runner would ship it: a file of that name in a folder.
void installProgram(const QDir& dir) {
    ASSERT_TRUE(QFile::link(QStringLiteral(MORVANE_OCR_PROGRAM),
                            dir.filePath(QStringLiteral("morvane-ocr"))));
}

// Asks until the service reads the text or a minute has passed (it loads its models
// after each start).
bool readsAgain(const OcrClient& client, const cv::Mat& image) {
    for (const auto deadline = std::chrono::steady_clock::now() + 60s;
         std::chrono::steady_clock::now() < deadline; std::this_thread::sleep_for(100ms)) {
        if (client.recognise(image).whole == QStringLiteral("Start Game")) {
            return true;
        }
    }
    return false;
}

}  // namespace

TEST(OcrServiceSettings, PortAndTimeOutsComeFromTheIniFile) {
    QTemporaryDir dir;
    EXPECT_EQ(readOcrPort(dir.filePath(QStringLiteral("absent.ini"))), 8080);
    // The file's text, then the port, connect and request time-outs read from it.
    const std::pair<const char*, std::string> cases[] = {
        {"port=9123\nconnect_timeout_ms=250\nrequest_timeout_ms=4000\n", "9123 250 4000"},
        {"port = 1\nrequest_timeout_ms=1500\n", "1 3000 1500"},
        {"port=65535\nconnect_timeout_ms=0\nrequest_timeout_ms=-3\n", "65535 3000 20000"},
        {"port=65536\nconnect_timeout_ms=soon\n", "8080 3000 20000"},
        {"port=0\n", "8080 3000 20000"},
        {"port=abc\n", "8080 3000 20000"},
    };
    // QSettings caches a file by path, size and time; one file per case keeps the reads honest.
    int index = 0;
    for (const auto& [content, read] : cases) {
        const QString file = dir.filePath(QStringLiteral("ocr%1.ini").arg(index++));
        writeFile(file, content);
        const OcrTimeouts t = readOcrTimeouts(file);
        EXPECT_EQ(std::to_string(readOcrPort(file)) + " " + std::to_string(t.connect.count()) +
                      " " + std::to_string(t.request.count()),
                  read)
            << content;
    }

    // A service that keeps ending is started again ever more slowly.
    QStringList delays;
    for (const int quickEnds : {0, 1, 2, 3, 6, 7, 500}) {
        delays << QString::number(restartDelay(quickEnds).count());
    }
    EXPECT_EQ(delays.join(' '), "0 1000 2000 4000 32000 60000 60000");
}

TEST(OcrServiceSettings, ProgramIsLookedForBesideTheProgramThenInTheWorkingDirectory) {
    QTemporaryDir programDir;
    QTemporaryDir workingDir;
    EXPECT_FALSE(findOcrProgram(programDir.path(), workingDir.path()));
    installProgram(QDir(workingDir.path()));
    EXPECT_EQ(findOcrProgram(programDir.path(), workingDir.path()),
              workingDir.filePath(QStringLiteral("morvane-ocr")));
    installProgram(QDir(programDir.path()));
    EXPECT_EQ(findOcrProgram(programDir.path(), workingDir.path()),
              programDir.filePath(QStringLiteral("morvane-ocr")));
    // A folder of that name is not the program.
    QTemporaryDir other;
    ASSERT_TRUE(QDir(other.path()).mkdir(QStringLiteral("morvane-ocr")));
    EXPECT_FALSE(findOcrProgram(other.path(), QString()));
}

TEST(OcrServiceWatcher, StartsAFoundProgramAndBringsItBackAfterAKillButNotAfterStop) {
    QTemporaryDir dir;
    installProgram(QDir(dir.path()));
    const int port = unusedLoopbackPort();
    writeFile(dir.filePath(QStringLiteral("ocr.ini")), "port=" + QByteArray::number(port) + "\n");
    const cv::Mat image = renderTextFrame({400, 100}, {{"Start Game", {20, 30}, 36}});

    const auto client = std::make_shared<OcrClient>();
    OcrServiceWatcher watcher(client);
    const QTemporaryDir empty;
    EXPECT_FALSE(watcher.start(empty.path(), empty.path()));
    EXPECT_EQ(watcher.processId(), 0u);
    EXPECT_EQ(client->url(), "");

    const LogCapture log;
    ASSERT_TRUE(watcher.start(dir.path(), QString()));
    EXPECT_FALSE(watcher.start(dir.path(), QString()));
    EXPECT_EQ(client->url(), ocrServiceUrl(port));
    ASSERT_TRUE(readsAgain(*client, image));

    const std::uint32_t first = watcher.processId();
    ASSERT_NE(first, 0u);
    ASSERT_EQ(::kill(static_cast<pid_t>(first), SIGKILL), 0);
    ASSERT_TRUE(readsAgain(*client, image));
    const std::uint32_t second = watcher.processId();
    EXPECT_NE(second, first);
    EXPECT_EQ(log.count(QStringLiteral("waitforsingleObject return....")), 1);

    watcher.stop();
    EXPECT_EQ(watcher.processId(), 0u);
    EXPECT_NE(::kill(static_cast<pid_t>(second), 0), 0) << "the service ended";
    EXPECT_EQ(client->recognise(image), RecognisedText{});
    EXPECT_GE(log.count(QStringLiteral("curl_easy_perform() failed")), 1);

    // Another window's watcher on the port (given, it replaces its ini file's) uses the
    // service running there, and starts its own once that one is gone.
    ASSERT_TRUE(watcher.start(dir.path(), QString()));
    ASSERT_TRUE(readsAgain(*client, image));
    const QTemporaryDir otherDir;
    installProgram(QDir(otherDir.path()));
    writeFile(otherDir.filePath(QStringLiteral("ocr.ini")), "port=9\n");
    const auto otherClient = std::make_shared<OcrClient>();
    OcrServiceWatcher other(otherClient);
    ASSERT_TRUE(other.start(otherDir.path(), QString(), port));
    EXPECT_TRUE(readsAgain(*otherClient, image));
    EXPECT_EQ(other.processId(), 0u);
    watcher.stop();
    EXPECT_TRUE(readsAgain(*otherClient, image));
    EXPECT_NE(other.processId(), 0u);
}
