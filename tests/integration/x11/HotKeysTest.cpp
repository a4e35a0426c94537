// Global hot keys grabbed on a private Xvfb and pressed through XTest by another client.
#include <gtest/gtest.h>

#include <vector>

#include "FakeKeys.h"
#include "X11TestFixture.h"
#include "keys/HotKeyText.h"
#include "x11/X11HotKeys.h"

#include <X11/keysym.h>

namespace autoscene::testing {
namespace {

using platform::IGlobalHotKeys;

class HotKeysTest : public X11TestFixture {
protected:
    std::unique_ptr<IGlobalHotKeys> open() {
        auto keys = platform::makeX11HotKeys(server_.display().c_str());
        EXPECT_TRUE(keys);
        return keys;
    }

    static platform::HotKey key(const char* text) { return *platform::keys::parseHotKey(text); }

    void press(const std::vector<KeySym>& keysyms) { pressKeys(reference_->display(), keysyms); }

    // The ids dispatched within a short while.
    static std::vector<int> pressedIds(IGlobalHotKeys& keys) {
        std::vector<int> ids;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
        while (std::chrono::steady_clock::now() < deadline) {
            keys.dispatch([&](int id) { ids.push_back(id); });
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return ids;
    }
};

TEST_F(HotKeysTest, KeysArriveByIdUnderAnyLocksOneHeldElsewhereFailsAndGrabsAreReleased) {
    const auto other = open();
    ASSERT_TRUE(other->registerKey(7, key("F8")));
    const auto keys = open();
    ASSERT_TRUE(keys->registerKey(1, key("Alt+Shift+S")));
    EXPECT_FALSE(keys->registerKey(2, key("F8")));
    ASSERT_TRUE(keys->registerKey(3, key("F10")));

    press({XK_Alt_L, XK_Shift_L, XK_s});
    EXPECT_EQ(pressedIds(*keys), std::vector<int>{1});
    press({XK_Shift_L, XK_F10});
    press({XK_s});
    EXPECT_TRUE(pressedIds(*keys).empty()) << "other modifiers are other keys";

    // A focused client takes the presses no grab catches; unfocused, the root would get them.
    const auto demo = startDemo({});
    XSetInputFocus(reference_->display(), demo->window(), RevertToParent, CurrentTime);
    press({XK_Caps_Lock});  // on
    press({XK_Num_Lock});
    press({XK_F8});
    press({XK_F10});
    press({XK_Alt_L, XK_Shift_L, XK_s});
    EXPECT_EQ(pressedIds(*keys), (std::vector<int>{3, 1}));
    EXPECT_EQ(pressedIds(*other), std::vector<int>{7});
    press({XK_Caps_Lock});
    press({XK_Num_Lock});

    other->unregisterKey(7);
    EXPECT_TRUE(keys->registerKey(2, key("F8"))) << "free again";
    press({XK_F8});
    EXPECT_EQ(pressedIds(*keys), std::vector<int>{2});

    ASSERT_TRUE(keys->registerKey(2, key("Ctrl+F9"))) << "in place of F8";
    EXPECT_TRUE(other->registerKey(7, key("F8"))) << "F8 released";
    press({XK_F8});
    press({XK_Control_L, XK_F9});
    EXPECT_EQ(pressedIds(*keys), std::vector<int>{2});
}

}  // namespace
}  // namespace autoscene::testing
