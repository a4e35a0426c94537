// The window query's matching rules; the Xvfb suite checks that the back end feeds them
// what real windows hold.

#include <gtest/gtest.h>

#include "x11/WindowMatch.h"

namespace autoscene::platform::x11 {
namespace {

WindowQuery query(std::string title, bool full, std::string className) {
    return WindowQuery{
        .title = std::move(title), .fullMatchTitle = full, .className = std::move(className)};
}

TEST(WindowMatch, TitleContainsOrEqualsAndClassEquals) {
    EXPECT_TRUE(topLevelMatches("Editor - a.txt", "Edit", query("", false, "")));
    EXPECT_TRUE(topLevelMatches("Editor - a.txt", "Edit", query("a.txt", false, "Edit")));
    EXPECT_FALSE(topLevelMatches("Editor - a.txt", "Edit", query("A.txt", false, "")));
    EXPECT_FALSE(topLevelMatches("Editor - a.txt", "Edit", query("a.txt", true, "")));
    EXPECT_TRUE(topLevelMatches("a.txt", "Edit", query("a.txt", true, "")));
    EXPECT_FALSE(topLevelMatches("a.txt", "Editor", query("", false, "Edit")));
    EXPECT_FALSE(topLevelMatches("", "", query("x", false, "")));
}

TEST(WindowMatch, ChildFieldsAreExactAndSomeFieldMustBeNamed) {
    WindowQuery q;
    EXPECT_FALSE(childMatches("panel", "Panel", q));
    q.childTitle = "panel";
    EXPECT_TRUE(childMatches("panel", "Panel", q));
    EXPECT_FALSE(childMatches("panel 2", "Panel", q));
    q.childClassName = "Panel";
    EXPECT_TRUE(childMatches("panel", "Panel", q));
    EXPECT_FALSE(childMatches("panel", "Panels", q));
    q.childTitle.clear();
    EXPECT_TRUE(childMatches("anything", "Panel", q));
}

}  // namespace
}  // namespace autoscene::platform::x11
