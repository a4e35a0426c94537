#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "TestFiles.h"
#include "system/PipedProcess.h"
#include "system/Process.h"
#include "system/ProcessEnd.h"

namespace sys = autoscene::sys;
namespace fs = std::filesystem;

TEST(RunCommandCapture, ReturnsLongOutputAndStandardErrorWholeAndInOrder) {
    // 5000 numbered lines: far more than one 1023-byte read and than a pipe buffer.
    std::string expected;
    for (int i = 1; i <= 5000; ++i) {
        expected += std::to_string(i) + "\n";
    }
    EXPECT_EQ(sys::runCommandCapture("seq 1 5000"), expected);
    EXPECT_EQ(sys::runCommandCapture("sh -c 'echo one; echo two >&2; echo three'"),
              "one\ntwo\nthree\n");
    EXPECT_EQ(sys::runCommandCapture("printf 'a b'"), "a b");
    EXPECT_EQ(sys::runCommandCapture("false"), "");  // a silent failure is empty text
}

TEST(RunCommandCapture, UnstartableCommandsThrowTheStartError) {
    for (const auto& [commandLine, error] : {std::pair{"no-such-program-autoscene --flag", 2},
                                             {"/dev/null", 13},
                                             {"", 2},
                                             {"echo 'unclosed", 22}}) {
        try {
            sys::runCommandCapture(commandLine);
            ADD_FAILURE() << commandLine << " started";
        } catch (const std::runtime_error& thrown) {
            EXPECT_EQ(thrown.what(), "CreateProcess failed:" + std::to_string(error));
        }
    }
}

TEST(RunCommandCapture, ChildDoesNotInheritInputOrOtherThreadsPipes) {
    EXPECT_EQ(sys::runCommandCapture("sh -c 'cat; echo end'"), "end\n");

    // A child started by another thread must not keep this call's pipe open.
    std::atomic<bool> slowDone{false};
    std::thread slow([&] {
        sys::runCommandCapture("sleep 2");
        slowDone = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(sys::runCommandCapture("echo quick"), "quick\n");
    EXPECT_FALSE(slowDone);
    slow.join();
}

// A time limit or stop ending the child and what it started, within half a second, is
// checked through adb calls in a whole run (DeviceRun.AHungAdbCallIsEndedByTheTimeLimitAndByCtrlC).

TEST(PipedProcess, AnswersCommandsInTurnUntilCutShortOrEnded) {
    using std::chrono::milliseconds;
    sys::PipedProcess shell("sh");
    ASSERT_TRUE(shell.write("echo one; echo :m:\necho a; echo :m:; printf b; echo :m:\n"));
    for (const char* expected : {"one\n", "a\n", "b"}) {
        const sys::PipedReply reply = shell.readUntil(":m:\n", milliseconds(5000), {});
        EXPECT_EQ(std::pair(reply.complete, reply.output), std::pair(true, std::string(expected)));
    }
    ASSERT_TRUE(shell.write("sleep 30; echo :m:\n"));
    const sys::PipedReply late = shell.readUntil(":m:\n", milliseconds(200), {});
    EXPECT_EQ(std::pair(late.complete, late.end), std::pair(false, sys::CommandEnd::TimedOut));

    sys::PipedProcess stopped("sh");
    std::stop_source stop;
    std::jthread stopper([&] {
        std::this_thread::sleep_for(milliseconds(200));
        stop.request_stop();
    });
    EXPECT_EQ(stopped.readUntil(":m:\n", milliseconds::max(), stop.get_token()).end,
              sys::CommandEnd::Stopped);

    sys::PipedProcess ended("sh");
    ASSERT_TRUE(ended.write("echo last; exit\n"));
    const sys::PipedReply last = ended.readUntil(":m:\n", milliseconds(5000), {});
    EXPECT_EQ(std::tuple(last.complete, last.end, last.output),
              std::tuple(false, sys::CommandEnd::Exited, std::string("last\n")));
    // Once the shell has gone, writes fail; no SIGPIPE ends the test either.
    for (int wait = 0; wait < 100 && ended.write("echo gone\n"); ++wait) {
        std::this_thread::sleep_for(milliseconds(10));
    }
    EXPECT_FALSE(ended.write("echo gone\n"));
}

TEST(StartHiddenProcess, StartsDetachedInItsOwnSessionOrReportsAMissingProgram) {
    const fs::path marker =
        fs::temp_directory_path() / ("autoscene-hidden-" + std::to_string(::getpid()));
    fs::remove(marker);
    const sys::HiddenProcess process =
        sys::startHiddenProcess("sh -c 'echo started > \"$0\"; echo lost' " + marker.string());
    ASSERT_TRUE(process.started());
    EXPECT_EQ(std::pair(process.processId, process.processHandle),
              std::pair(process.threadId, decltype(process.processHandle)(0)));
    const pid_t pid = static_cast<pid_t>(process.processId);
    EXPECT_EQ(::getsid(pid), pid);

    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(autoscene::test::readFile(QString::fromStdString(marker.string())), "started\n");
    fs::remove(marker);

    testing::internal::CaptureStdout();
    const sys::HiddenProcess missing = sys::startHiddenProcess("no-such-program-autoscene");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "CreateProcess failed.\n");
    EXPECT_TRUE(!missing.started() && missing.threadId == 0u);
}

TEST(ProcessEnd, WaitsForExitCodeAndEndsAProcessOnRequest) {
    const sys::HiddenProcess exiting = sys::startHiddenProcess("sh -c 'exit 3'");
    sys::waitForProcessEnd(exiting);
    // Ended but not yet released: terminating it must not reach another process.
    sys::terminateProcess(exiting);
    EXPECT_EQ(sys::releaseProcess(exiting), 3);

    const sys::HiddenProcess sleeping = sys::startHiddenProcess("sleep 30");
    ASSERT_TRUE(sleeping.started());
    std::thread waiter([&] { sys::waitForProcessEnd(sleeping); });
    sys::terminateProcess(sleeping);
    waiter.join();
    EXPECT_EQ(sys::releaseProcess(sleeping), -1);

    const sys::HiddenProcess never;
    sys::waitForProcessEnd(never);
    EXPECT_EQ(sys::releaseProcess(never), -1);
}
