#include <gtest/gtest.h>

#include "TestSupport.h"
#include "win32/Win32Backend.h"
#include "win32/Win32Handles.h"

using namespace autoscene::platform;
using namespace autoscene::platform::win32;
using namespace autoscene::win32test;

namespace {

// The notepad that ships with the system, found the way a task finds its window.
class NotepadTest : public ::testing::Test {
protected:
    void SetUp() override {
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        std::wstring command = L"notepad.exe";
        ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                   nullptr, &startup, &process));
        WaitForInputIdle(process.hProcess, 5000);
        const WindowQuery query{"", false, "Notepad", "", "Edit"};
        ASSERT_TRUE(waitUntil([&] {
            for (const WindowHandle window : backend.topLevelWindows()) {
                DWORD owner = 0;
                GetWindowThreadProcessId(toHwnd(window), &owner);
                if (owner == process.dwProcessId && backend.matches(window, query)) {
                    target = InputTarget{window, backend.findChild(window, query)};
                    return target.child != 0;
                }
            }
            return false;
        })) << "notepad's window did not appear";
    }

    void TearDown() override {
        if (process.hProcess != nullptr) {
            TerminateProcess(process.hProcess, 0);
            CloseHandle(process.hProcess);
            CloseHandle(process.hThread);
        }
    }

    std::wstring editText() const {
        wchar_t text[256] = {};
        SendMessageW(toHwnd(target.child), WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text));
        return text;
    }

    PROCESS_INFORMATION process{};
    Win32Backend backend{[](const std::string&) {}};
    InputTarget target;
};

}  // namespace

TEST_F(NotepadTest, BackgroundKeysAndForegroundUnicodeTextTypeIntoTheEditChild) {
    backend.key(target, 'H', KeyOp::Click, true);
    backend.key(target, 'I', KeyOp::Click, true);
    EXPECT_TRUE(waitUntil([&] { return editText() == L"hi"; }))
        << "edit holds " << editText().size() << " units";
    backend.inputText(InputTarget{target.window, 0}, " Wine 中文 ü ж");
    EXPECT_TRUE(waitUntil([&] { return editText() == L"hi Wine 中文 ü ж"; }))
        << "edit holds " << editText().size() << " units";
}
