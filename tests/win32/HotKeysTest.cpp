// Global hot keys registered under Wine and pressed as a keyboard would press them.
#include <gtest/gtest.h>

#include <atomic>
#include <vector>

#include "TestSupport.h"
#include "keys/HotKeyText.h"
#include "win32/Win32HotKeys.h"

namespace autoscene::win32test {
namespace {

void press(std::vector<BYTE> keys) {
    for (const BYTE key : keys) {
        keybd_event(key, 0, 0, 0);
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        keybd_event(*key, 0, KEYEVENTF_KEYUP, 0);
    }
}

std::vector<int> pressedIds(platform::IGlobalHotKeys& keys, std::size_t count) {
    std::vector<int> ids;
    waitUntil([&] {
        keys.dispatch([&](int id) { ids.push_back(id); });
        return ids.size() >= count;
    });
    return ids;
}

TEST(HotKeys, KeysArriveByIdAndOneHeldElsewhereFailsAlone) {
    const auto key = [](const char* text) { return *platform::keys::parseHotKey(text); };
    auto holder = platform::win32::makeWin32HotKeys();
    ASSERT_TRUE(holder->registerKey(7, key("F8")));
    const auto keys = platform::win32::makeWin32HotKeys();
    std::atomic<int> wakeUps{0};
    keys->setWakeUp([&] { ++wakeUps; });
    EXPECT_FALSE(keys->registerKey(2, key("F8")));
    ASSERT_TRUE(keys->registerKey(1, key("Alt+Shift+S")));
    ASSERT_TRUE(keys->registerKey(3, key("F10")));

    // Input stays in order: a wrong press would come before the expected ones.
    press({VK_F8});
    press({VK_SHIFT, VK_F10});
    press({VK_F10});
    press({VK_MENU, VK_SHIFT, 'S'});
    EXPECT_EQ(pressedIds(*keys, 2), (std::vector<int>{3, 1}));
    EXPECT_EQ(pressedIds(*holder, 1), std::vector<int>{7});
    EXPECT_TRUE(waitUntil([&] { return wakeUps == 2; }));

    holder.reset();  // its thread ends and gives F8 back
    ASSERT_TRUE(keys->registerKey(3, key("F8"))) << "in place of F10";
    press({VK_F10});
    press({VK_F8});
    EXPECT_EQ(pressedIds(*keys, 1), std::vector<int>{3});
    keys->unregisterKey(3);
    EXPECT_TRUE(platform::win32::makeWin32HotKeys()->registerKey(5, key("F8")));
    keys->setWakeUp({});
}

}  // namespace
}  // namespace autoscene::win32test
