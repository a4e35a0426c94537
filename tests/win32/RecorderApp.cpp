// A Win32 application that records the input messages each of its windows receives,
// one line per message in the log file named on its command line, and paints a known
// pattern for capture tests.
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "RecorderLayout.h"

using namespace autoscene::win32test;

namespace {

HANDLE logFile = INVALID_HANDLE_VALUE;
HWND windows[std::size(kWindows)] = {};

void writeLog(const std::string& line) {
    const std::string withEnd = line + "\n";
    DWORD written = 0;
    WriteFile(logFile, withEnd.data(), static_cast<DWORD>(withEnd.size()), &written, nullptr);
}

bool isRecorded(UINT message) {
    constexpr UINT kRecorded[] = {WM_MOUSEMOVE,  WM_LBUTTONDOWN, WM_LBUTTONUP, WM_RBUTTONDOWN,
                                  WM_RBUTTONUP,  WM_MOUSEWHEEL,  WM_KEYDOWN,   WM_KEYUP,
                                  WM_SYSKEYDOWN, WM_SYSKEYUP,    WM_CHAR,      kMarkerMessage};
    return std::find(std::begin(kRecorded), std::end(kRecorded), message) != std::end(kRecorded);
}

void paintPattern(HWND window, int index) {
    PAINTSTRUCT paint{};
    HDC dc = BeginPaint(window, &paint);
    RECT client{};
    GetClientRect(window, &client);
    POINT offset{0, 0};
    MapWindowPoints(window, windows[0], &offset, 1);
    const int width = client.right;
    const int height = client.bottom;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            pixels[static_cast<std::size_t>(y) * width + x] =
                patternBgra(x + offset.x, y + offset.y, index);
        }
    }
    BITMAPINFO info{{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB}};
    SetDIBitsToDevice(dc, 0, 0, width, height, 0, 0, 0, height, pixels.data(), &info,
                      DIB_RGB_COLORS);
    EndPaint(window, &paint);
}

LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto index = static_cast<int>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (isRecorded(message)) {
        writeLog(
            logLine(kWindows[index].name, message, wParam, static_cast<std::uint64_t>(lParam)));
        // Unhandled wheel messages travel up to the parent; record only what arrived.
        if (message == kMarkerMessage || message == WM_MOUSEWHEEL) {
            return 0;
        }
    }
    switch (message) {
        case WM_PAINT:
            paintPattern(window, index);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_DESTROY:
            if (index == 0) {
                PostQuitMessage(0);
            }
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

HWND createWindow(const wchar_t* className, const wchar_t* title, DWORD style, int x, int y,
                  int width, int height, HWND parent, int index) {
    HWND window = CreateWindowExW(0, className, title, style, x, y, width, height, parent, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, index);
    return window;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    int argumentCount = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &argumentCount);
    if (argumentCount < 2) {
        return 2;
    }
    logFile = CreateFileW(arguments[1], GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (logFile == INVALID_HANDLE_VALUE) {
        return 3;
    }
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProc;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.lpszClassName = kRecorderClass;
    RegisterClassW(&windowClass);
    windowClass.lpszClassName = kChildClass;
    RegisterClassW(&windowClass);

    RECT frame{0, 0, kClientWidth, kClientHeight};
    AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
    const std::wstring title(kRecorderTitle, kRecorderTitle + sizeof(kRecorderTitle) - 1);
    windows[0] = createWindow(kRecorderClass, title.c_str(), WS_OVERLAPPEDWINDOW, 100, 100,
                              frame.right - frame.left, frame.bottom - frame.top, nullptr, 0);
    for (std::size_t i = 1; i < std::size(kWindows); ++i) {
        const ChildPlace& place = kWindows[i];
        const std::wstring name(place.name, place.name + std::strlen(place.name));
        windows[i] =
            createWindow(kChildClass, name.c_str(), WS_CHILD | WS_VISIBLE, place.x, place.y,
                         place.width, place.height, windows[place.parent], static_cast<int>(i));
    }
    // A top-level window that is never shown: window discovery must leave it out.
    createWindow(kRecorderClass, kHiddenTitle, WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, 0);
    ShowWindow(windows[0], SW_SHOW);
    UpdateWindow(windows[0]);
    SetForegroundWindow(windows[0]);
    writeLog("ready");

    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    CloseHandle(logFile);
    return 0;
}
