#include "win32/Win32HotKeys.h"

#include <windows.h>

#include <algorithm>
#include <future>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace autoscene::platform::win32 {

namespace {

// A thread message whose lParam is a std::packaged_task<void()>* to run there.
constexpr UINT kRunTask = WM_APP + 1;

UINT modifiersOf(const HotKey& key) {
    // Holding the keys down reports one press, as a grab on X11 does.
    return (key.control ? MOD_CONTROL : 0) | (key.alt ? MOD_ALT : 0) | (key.shift ? MOD_SHIFT : 0) |
           (key.win ? MOD_WIN : 0) | MOD_NOREPEAT;
}

class Win32HotKeys final : public IGlobalHotKeys {
public:
    Win32HotKeys() {
        std::promise<DWORD> started;
        auto threadId = started.get_future();
        thread_ = std::thread([this, &started] { run(started); });
        threadId_ = threadId.get();
    }

    ~Win32HotKeys() override {
        PostThreadMessageW(threadId_, WM_QUIT, 0, 0);
        thread_.join();
    }

    Win32HotKeys(const Win32HotKeys&) = delete;
    Win32HotKeys& operator=(const Win32HotKeys&) = delete;

    bool registerKey(int id, const HotKey& key) override {
        bool registered = false;
        onThread([&] {
            release(id);
            registered = RegisterHotKey(nullptr, id, modifiersOf(key), key.virtualKey) != 0;
            if (registered) {
                registered_.insert(id);
            }
        });
        forgetPresses(id);
        return registered;
    }

    void unregisterKey(int id) override {
        onThread([&] { release(id); });
        forgetPresses(id);
    }

    int eventDescriptor() const override { return -1; }

    void setWakeUp(std::function<void()> wake) override {
        const std::lock_guard lock(wakeMutex_);
        wake_ = std::move(wake);
    }

    void dispatch(const std::function<void(int)>& pressed) override {
        std::vector<int> ids;
        {
            const std::lock_guard lock(pressMutex_);
            ids.swap(presses_);
        }
        for (const int id : ids) {
            pressed(id);
        }
    }

private:
    void run(std::promise<DWORD>& started) {
        MSG message;
        // The first call gives the thread its message queue, before anyone can post to it.
        PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
        started.set_value(GetCurrentThreadId());
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (message.message == WM_HOTKEY) {
                record(static_cast<int>(message.wParam));
            } else if (message.message == kRunTask) {
                (*reinterpret_cast<std::packaged_task<void()>*>(message.lParam))();
            }
        }
        for (const int id : registered_) {
            UnregisterHotKey(nullptr, id);
        }
    }

    void onThread(const std::function<void()>& work) {
        std::packaged_task<void()> task(work);
        auto done = task.get_future();
        if (PostThreadMessageW(threadId_, kRunTask, 0, reinterpret_cast<LPARAM>(&task))) {
            done.get();
        }
    }

    // On the hot-key thread.
    void release(int id) {
        if (registered_.erase(id) > 0) {
            UnregisterHotKey(nullptr, id);
        }
    }

    // On the hot-key thread.
    void record(int id) {
        {
            const std::lock_guard lock(pressMutex_);
            presses_.push_back(id);
        }
        const std::lock_guard lock(wakeMutex_);
        if (wake_) {
            wake_();
        }
    }

    // A press of the key an id had before must not arrive as one of the key it has now.
    void forgetPresses(int id) {
        const std::lock_guard lock(pressMutex_);
        presses_.erase(std::remove(presses_.begin(), presses_.end(), id), presses_.end());
    }

    std::thread thread_;
    DWORD threadId_ = 0;
    std::set<int> registered_;  // the hot-key thread's
    std::mutex pressMutex_;
    std::vector<int> presses_;
    std::mutex wakeMutex_;
    std::function<void()> wake_;
};

}  // namespace

std::unique_ptr<IGlobalHotKeys> makeWin32HotKeys() {
    return std::make_unique<Win32HotKeys>();
}

}  // namespace autoscene::platform::win32
