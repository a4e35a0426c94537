#include <gtest/gtest.h>

#include "system/CommandLine.h"

using autoscene::sys::splitCommandLine;
using Words = std::vector<std::string>;

TEST(CommandLine, SplitsOnBlanksAndKeepsQuotedTextWhole) {
    EXPECT_EQ(splitCommandLine("  ls\t-l   /tmp "), (Words{"ls", "-l", "/tmp"}));
    EXPECT_EQ(splitCommandLine(R"(sh -c 'echo "a  b" | wc -c')"),
              (Words{"sh", "-c", R"(echo "a  b" | wc -c)"}));
    EXPECT_EQ(splitCommandLine(R"("C:\dir\my app" "say \"hi\"" x"y z"w)"),
              (Words{R"(C:\dir\my app)", R"(say "hi")", "xy zw"}));
    EXPECT_EQ(splitCommandLine(R"(a\ b '' "")"), (Words{"a b", "", ""}));
    EXPECT_EQ(splitCommandLine("开始 游戏"), (Words{"开始", "游戏"}));
    EXPECT_EQ(splitCommandLine("   "), Words{});
}

TEST(CommandLine, RejectsOpenQuotesAndTrailingBackslash) {
    EXPECT_FALSE(splitCommandLine("echo 'open"));
    EXPECT_FALSE(splitCommandLine(R"(echo "open\")"));
    EXPECT_FALSE(splitCommandLine("echo \\"));
}
