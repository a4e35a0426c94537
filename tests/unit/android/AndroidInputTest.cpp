// Desktop keys as Android key codes, text as the device shell's "input text" argument,
// and command-line words that survive the process runner's split.

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "android/AdbClient.h"
#include "android/AndroidInput.h"
#include "system/CommandLine.h"

using namespace autoscene::platform::android;

namespace {

TEST(AndroidInput, KeyCodes) {
    const std::pair<int, int> cases[] = {
        {0x35, 12}, {0x30, 7}, {0x39, 16}, {'A', 29}, {'Z', 54},    {27, 4},
        {36, 3},    {38, 19},  {40, 20},   {37, 21},  {39, 22},     {13, 66},
        {46, 112},  {8, 67},   {91, 187},  {92, 187}, {0x70, 0x70}, {0x2f, 0x2f},
    };
    for (const auto& [virtualKey, android] : cases) {
        EXPECT_EQ(androidKeyCode(virtualKey), android) << "virtual key " << virtualKey;
    }
}

TEST(AndroidInput, TextArgumentQuotesForTheDeviceShellAndDropsWhatCannotBeTyped) {
    struct Case {
        const char* text;
        const char* argument;
        const char* dropped;
    };
    const Case cases[] = {
        {"hello", "'hello'", ""},        {"a b", "'a%sb'", ""},
        {"it's", "'it'\\''s'", ""},      {"$HOME;rm -rf /&&`x`", "'$HOME;rm%s-rf%s/&&`x`'", ""},
        {"Zoë 你好", "'Zo%s'", "ë你好"}, {"tab\there", "'tabhere'", "\t"},
    };
    for (const Case& c : cases) {
        const ShellText text = inputTextArgument(c.text);
        EXPECT_EQ(text.argument, c.argument) << c.text;
        EXPECT_EQ(text.dropped, c.dropped) << c.text;
    }
}

TEST(AdbClient, QuotedWordsSplitBackUnchanged) {
    for (const std::string word :
         {"adb", "/opt/my tools/adb", "input text 'a%sb'", "say \"hi\" \\ there", ""}) {
        const auto words = autoscene::sys::splitCommandLine("adb " + quoteWord(word));
        ASSERT_TRUE(words);
        ASSERT_EQ(words->size(), 2u) << word;
        EXPECT_EQ((*words)[1], word);
    }
}

TEST(AdbClient, ProgramIsTheChosenOneThenTheSearchPathThenBesideTheProgram) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("adb-path-test-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "adb") << "#!/bin/sh\n";
    const std::string savedPath = std::getenv("PATH") != nullptr ? std::getenv("PATH") : "";

    EXPECT_EQ(findAdbProgram("/opt/app", "/custom/adb"), "/custom/adb");
    ::setenv("PATH", ("/nonexistent:" + folder.string()).c_str(), 1);
    EXPECT_EQ(findAdbProgram("/opt/app"), "adb");
    ::setenv("PATH", "/nonexistent", 1);
    EXPECT_EQ(findAdbProgram("/opt/app"), "/opt/app/adb/adb");

    ::setenv("PATH", savedPath.c_str(), 1);
    std::filesystem::remove_all(folder);
}

TEST(AdbClient, MissingProgramIsReportedNotThrown) {
    const AdbResult result = AdbClient("/nonexistent/adb").run({}, "devices");
    EXPECT_FALSE(result.ran);
    EXPECT_NE(result.output.find("/nonexistent/adb"), std::string::npos);
}

}  // namespace
