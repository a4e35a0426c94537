#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "TestFiles.h"
#include "system/CrashHandler.h"

namespace fs = std::filesystem;

// A segmentation fault's report is autoscene-run's test
// (RunnerProgram.InterruptStopsTheRunCleanlyAndACrashLeavesAReport).
TEST(CrashHandlerDeathTest, ACrashReplacesTheReportAndEndsWithTheSignal) {
    // The death test's child may run this body again, so the folder name must not vary.
    const fs::path folder = fs::temp_directory_path() / "autoscene-crash-handler-test";
    fs::create_directories(folder);
    const fs::path report = folder / "crash.dmp";
    std::ofstream(report) << "crash: SIGSEGV, an older report";

    EXPECT_EXIT(
        {
            // In the child: no core file, the report into the folder.
            const rlimit noCore{};
            ::setrlimit(RLIMIT_CORE, &noCore);
            if (::chdir(folder.c_str()) != 0) {
                std::_Exit(3);
            }
            autoscene::sys::installCrashHandler();
            std::abort();
        },
        testing::KilledBySignal(SIGABRT), "");
    const std::string text =
        autoscene::test::readFile(QString::fromStdString(report.string())).toStdString();
    EXPECT_EQ(text.rfind("crash: SIGABRT (signal 6", 0), 0u) << text;
    EXPECT_EQ(text.find("SIGSEGV"), std::string::npos);
    EXPECT_NE(text.find("backtrace:\n"), std::string::npos);
    EXPECT_NE(text.find("abort"), std::string::npos) << text;
    EXPECT_NE(text.find("autoscene_system_tests"), std::string::npos) << text;
    fs::remove_all(folder);
}
