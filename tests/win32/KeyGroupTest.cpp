#include <gtest/gtest.h>

#include "TestSupport.h"
#include "targets/keys/KeyGroupPress.h"
#include "targets/keys/QtKeyTable.h"
#include "targets/win32/Win32Backend.h"
#include "targets/win32/Win32Handles.h"

using namespace autoscene::targets;
using namespace autoscene::targets::keys;
using namespace autoscene::targets::win32;
using namespace autoscene::win32test;

TEST(KeyGroup, DownsInOrderThenUpsInReverseWithModifiersAsVirtualKeys) {
    RecorderProcess recorder;
    ASSERT_TRUE(recorder.started());
    Win32Backend backend{[](const std::string&) {}};
    const InputTarget inner{toHandle(recorder.top()), toHandle(recorder.child("inner"))};
    pressKeyGroup(backend, inner, keyGroupFromEvent('C', kQtControlModifier | kQtShiftModifier),
                  true);
    EXPECT_EQ(onlyMessages(recorder.drainPosted(), {0x100, 0x101, 0x104, 0x105}),
              (Lines{keyLine("inner", 0x104, 0x11), keyLine("inner", 0x104, 0x10),
                     keyLine("inner", 0x100, 'C'), keyLine("inner", 0x101, 'C'),
                     keyLine("inner", 0x105, 0x10), keyLine("inner", 0x105, 0x11)}));
}

TEST(KeyGroup, ForegroundGroupArrivesAsRealKeys) {
    RecorderProcess recorder;
    ASSERT_TRUE(recorder.started());
    Win32Backend backend{[](const std::string&) {}};
    const InputTarget top{toHandle(recorder.top()), 0};
    pressKeyGroup(backend, top, keyGroupFromEvent('Q', kQtShiftModifier), false);
    EXPECT_EQ(withoutLParam(recorder.waitForMessages({0x100, 0x101, 0x102}, 5)),
              (Lines{"top 0100 10", "top 0100 51", "top 0102 51", "top 0101 51", "top 0101 10"}));
}
