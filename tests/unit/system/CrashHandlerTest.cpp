#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "system/CrashHandler.h"

namespace fs = std::filesystem;

namespace {

// Runs in the death test's child: no core file, report into `folder`.
void prepareToCrash(const fs::path& folder) {
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    if (::chdir(folder.c_str()) != 0) {
        std::_Exit(3);
    }
    autoscene::sys::installCrashHandler();
}

// A write to a page without access: a real fault, unlike a null store the compiler may drop.
[[gnu::noinline]] void writeToProtectedPage() {
    void* page = ::mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    *static_cast<volatile int*>(page) = 1;
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace

TEST(CrashHandlerDeathTest, EachCrashReplacesTheReportAndEndsWithTheSignal) {
    // The death test's child may run this body again, so the folder name must not vary.
    const fs::path folder = fs::temp_directory_path() / "autoscene-crash-handler-test";
    fs::create_directories(folder);
    const fs::path report = folder / "crash.dmp";

    EXPECT_EXIT(
        {
            prepareToCrash(folder);
            writeToProtectedPage();
        },
        testing::KilledBySignal(SIGSEGV), "");
    const std::string first = readFile(report);
    EXPECT_NE(first.find("crash: SIGSEGV (signal 11"), std::string::npos) << first;
    EXPECT_NE(first.find("backtrace:\n"), std::string::npos);
    EXPECT_NE(first.find("autoscene_system_tests"), std::string::npos) << first;

    EXPECT_EXIT(
        {
            prepareToCrash(folder);
            std::abort();
        },
        testing::KilledBySignal(SIGABRT), "");
    const std::string second = readFile(report);
    EXPECT_EQ(second.rfind("crash: SIGABRT (signal 6", 0), 0u) << second;
    EXPECT_EQ(second.find("SIGSEGV"), std::string::npos);
    EXPECT_NE(second.find("abort"), std::string::npos) << second;
    fs::remove_all(folder);
}
