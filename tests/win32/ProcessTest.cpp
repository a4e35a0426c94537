#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

#include "TestSupport.h"
#include "system/PipedProcess.h"
#include "system/Process.h"
#include "system/ProcessEnd.h"

using namespace autoscene::sys;
using namespace autoscene::win32test;

namespace {

std::string helper(const std::string& arguments) {
    return "\"" + besideTestProgram("autoscene-test-process-helper.exe") + "\" " + arguments;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

TEST(Process, CaptureKeepsLongOutputOfBothStreamsWholeAndInOrderAndNoOutputEmpty) {
    std::string expected;
    for (int i = 0; i < 400; ++i) {  // 4400 bytes: more than a pipe holds at once
        char line[32] = {};
        std::snprintf(line, sizeof(line), "line %05d\n", i);
        expected += line;
    }
    EXPECT_EQ(runCommandCapture(helper("lines 400")), expected);
    EXPECT_EQ(runCommandCapture(helper("sleep 0")), "");
}

TEST(Process, MissingProgramThrowsWithTheSystemErrorCode) {
    try {
        runCommandCapture("no-such-program-here.exe --flag");
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "CreateProcess failed:2");
    }
    // Started hidden, it says so and gives zeros.
    EXPECT_EQ(runCommandCapture(helper("start-missing")),
              "CreateProcess failed.\nstarted=0 handle=0\n");
}

TEST(Process, HiddenProcessInheritsNoHandlesAndItsEndIsAwaitedOrForcedAndItsCodeRead) {
    const std::string file = makeTempFolder("ended") + "\\touched.txt";
    const HiddenProcess quick = startHiddenProcess(helper("touch \"" + file + "\""));
    ASSERT_TRUE(quick.started());
    waitForProcessEnd(quick);
    EXPECT_EQ(readFile(file), "touched");
    EXPECT_EQ(releaseProcess(quick), 7);

    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    ASSERT_TRUE(CreatePipe(&readEnd, &writeEnd, &inheritable, 0));
    const HiddenProcess slow = startHiddenProcess(helper("sleep 60000"));
    ASSERT_TRUE(slow.started());
    CloseHandle(writeEnd);
    // Had the child inherited the write end, this read would wait for the child to end.
    char byte = 0;
    DWORD readBytes = 0;
    EXPECT_FALSE(ReadFile(readEnd, &byte, 1, &readBytes, nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BROKEN_PIPE));
    CloseHandle(readEnd);
    // The waiter only returns because another thread ends the process.
    std::thread waiter([&] { waitForProcessEnd(slow); });
    Sleep(200);
    terminateProcess(slow);
    waiter.join();
    EXPECT_EQ(releaseProcess(slow), 1);

    const HiddenProcess never;
    waitForProcessEnd(never);
    terminateProcess(never);
    EXPECT_EQ(releaseProcess(never), -1);
}

// Output under a time limit not reached comes whole: PipedChild's replies show it.
TEST(Process, TimeLimitOrStopEndsAHungChild) {
    using std::chrono::milliseconds;
    // Wine starts a process slowly; the hung child's 60 s are far off either bound.
    DWORD start = GetTickCount();
    EXPECT_EQ(runCommandCapture(helper("sleep 60000"), milliseconds(300), {}).end,
              CommandEnd::TimedOut);
    EXPECT_LT(GetTickCount() - start, 5000u);

    std::stop_source stop;
    // Joined also when the call throws, which gtest then reports.
    const std::jthread stopper([&] {
        Sleep(300);
        stop.request_stop();
    });
    start = GetTickCount();
    EXPECT_EQ(runCommandCapture(helper("sleep 60000"), milliseconds::max(), stop.get_token()).end,
              CommandEnd::Stopped);
    EXPECT_LT(GetTickCount() - start, 5000u);
}

TEST(Process, PipedChildAnswersEachLineAndEndsWithItsInput) {
    PipedProcess child(helper("echo"));
    ASSERT_TRUE(child.write("one\ntwo\n"));
    for (const char* expected : {"one", "two"}) {
        const PipedReply reply = child.readUntil("\n", std::chrono::seconds(30), {});
        EXPECT_TRUE(reply.complete);
        EXPECT_EQ(reply.output, expected);
    }
    const PipedReply late = child.readUntil("\n", std::chrono::milliseconds(300), {});
    EXPECT_EQ(late.end, CommandEnd::TimedOut);
    EXPECT_FALSE(late.complete);
    ASSERT_TRUE(child.write("quit\n"));
    const PipedReply ended = child.readUntil("\n", std::chrono::seconds(30), {});
    EXPECT_FALSE(ended.complete);
    EXPECT_EQ(ended.end, CommandEnd::Exited);
}

TEST(Process, CrashWritesAMinidumpThatTheNextCrashReplaces) {
    const std::string folder = makeTempFolder("crash");
    const std::string dump = folder + "\\crash.dmp";
    for (const char* round : {"first", "after a stale file"}) {
        SCOPED_TRACE(round);
        runCommandCapture(helper("crash \"" + folder + "\""));
        const std::string written = readFile(dump);
        ASSERT_GE(written.size(), 32u) << "no dump written";
        EXPECT_EQ(written.substr(0, 4), "MDMP");
        std::ofstream(dump, std::ios::binary | std::ios::trunc) << "stale";
    }
}
