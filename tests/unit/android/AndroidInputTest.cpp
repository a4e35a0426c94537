// Desktop keys as Android key codes, text as the device shell's "input text" argument,
// and command-line words that survive the process runner's split.

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "android/AdbClient.h"
#include "android/AndroidInput.h"
#include "system/CommandLine.h"

using namespace autoscene::platform::android;

namespace {

TEST(AndroidInput, KeyCodes) {
    // Digits and letters are computed, a few keys are named, the rest pass unchanged.
    const std::pair<int, int> cases[] = {{0x30, 7}, {0x39, 16},   {'A', 29},    {'Z', 54},
                                         {27, 4},   {0x70, 0x70}, {0x2f, 0x2f}, {0x3a, 0x3a}};
    for (const auto& [virtualKey, android] : cases) {
        EXPECT_EQ(androidKeyCode(virtualKey), android) << "virtual key " << virtualKey;
    }
}

TEST(AndroidInput, TextArgumentQuotesForTheDeviceShellAndDropsWhatCannotBeTyped) {
    // {text, argument, dropped}
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"hello", "'hello'", ""},        {"a b", "'a%sb'", ""},
        {"it's", "'it'\\''s'", ""},      {"$HOME;rm -rf /&&`x`", "'$HOME;rm%s-rf%s/&&`x`'", ""},
        {"Zoë 你好", "'Zo%s'", "ë你好"}, {"tab\there", "'tabhere'", "\t"},
    };
    for (const auto& [text, argument, dropped] : cases) {
        const ShellText shell = inputTextArgument(text);
        EXPECT_EQ(std::pair(shell.argument, shell.dropped),
                  std::pair(std::string(argument), std::string(dropped)))
            << text;
    }
}

TEST(AdbClient, QuotedWordsSplitBackUnchanged) {
    for (const std::string word :
         {"adb", "/opt/my tools/adb", "input text 'a%sb'", R"(say "hi" \ there)", ""}) {
        EXPECT_EQ(autoscene::sys::splitCommandLine("adb " + quoteWord(word)),
                  (std::vector<std::string>{"adb", word}));
    }
}

TEST(AdbClient, ProgramIsTheChosenOneThenTheSearchPathThenBesideTheProgram) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("adb-path-test-" + std::to_string(::getpid()));
    const std::string posix = (folder / "posix").string();
    const std::string windows = (folder / "windows").string();
    std::filesystem::create_directories(posix);
    std::filesystem::create_directories(windows);
    std::ofstream(posix + "/adb") << "#!/bin/sh\n";
    std::ofstream(windows + "/adb.exe") << "MZ";
    struct Case {
        const ProgramNaming& naming;
        std::string searchPath;
        std::string chosen;
        std::string expected;
    };
    const Case cases[] = {
        {kPosixNaming, "/nonexistent:" + posix, "/custom/adb", "/custom/adb"},
        {kPosixNaming, "/nonexistent:" + posix, "", "adb"},
        {kPosixNaming, windows + ":/nonexistent", "", "/opt/app/adb/adb"},
        {kWindowsNaming, "C:\\nowhere;" + windows, "", "adb.exe"},
        {kWindowsNaming, posix + ";/nonexistent", "", "/opt/app/adb/adb.exe"},
        // ':' separates nothing on Windows: the whole text is one folder that is not there.
        {kWindowsNaming, "/nonexistent:" + windows, "", "/opt/app/adb/adb.exe"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(findAdbProgram("/opt/app", c.chosen, c.searchPath, c.naming), c.expected)
            << c.searchPath;
    }
    std::filesystem::remove_all(folder);
}

}  // namespace
