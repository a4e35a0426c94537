#include <gtest/gtest.h>

#include "RecorderLayout.h"
#include "TestSupport.h"
#include "targets/keys/KeyGroupPress.h"
#include "targets/keys/QtKeyTable.h"
#include "targets/win32/Win32Backend.h"
#include "targets/win32/Win32Handles.h"

using namespace autoscene::targets;
using namespace autoscene::targets::keys;
using namespace autoscene::targets::win32;
using namespace autoscene::win32test;

namespace {

std::string key(const char* window, unsigned message, unsigned virtualKey) {
    return logLine(window, message, virtualKey, 0);
}

}  // namespace

TEST(KeyGroup, DownsInOrderThenUpsInReverseWithModifiersAsVirtualKeys) {
    RecorderProcess recorder;
    ASSERT_TRUE(recorder.started());
    Win32Backend backend{[](const std::string&) {}};
    const InputTarget inner{toHandle(recorder.top()), toHandle(recorder.child("inner"))};
    pressKeyGroup(backend, inner, keyGroupFromEvent('C', kQtControlModifier | kQtShiftModifier),
                  true);
    EXPECT_EQ(
        onlyMessages(recorder.drainPosted(), {0x100, 0x101, 0x104, 0x105}),
        (Lines{key("inner", 0x104, 0x11), key("inner", 0x104, 0x10), key("inner", 0x100, 'C'),
               key("inner", 0x101, 'C'), key("inner", 0x105, 0x10), key("inner", 0x105, 0x11)}));
}

TEST(KeyGroup, ForegroundGroupArrivesAsRealKeys) {
    RecorderProcess recorder;
    ASSERT_TRUE(recorder.started());
    Win32Backend backend{[](const std::string&) {}};
    const InputTarget top{toHandle(recorder.top()), 0};
    pressKeyGroup(backend, top, keyGroupFromEvent('Q', kQtShiftModifier), false);
    const Lines keys = onlyMessages(recorder.drainWhen([](const Lines& lines) {
        return onlyMessages(lines, {0x100, 0x101}).size() >= 4;
    }),
                                    {0x100, 0x101, 0x102});
    // Real key messages carry scan codes and repeat counts in lParam: compare the rest.
    Lines withoutLParam;
    for (const std::string& line : keys) {
        withoutLParam.push_back(line.substr(0, line.find_last_of(' ')));
    }
    EXPECT_EQ(withoutLParam,
              (Lines{"top 0100 10", "top 0100 51", "top 0102 51", "top 0101 51", "top 0101 10"}));
}
