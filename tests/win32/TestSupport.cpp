#include "TestSupport.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>

#include "RecorderLayout.h"
#include "win32/MessageParams.h"

namespace autoscene::win32test {

std::string besideTestProgram(const std::string& fileName) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string folder(path);
    folder.resize(folder.find_last_of("\\/") + 1);
    return folder + fileName;
}

std::string makeTempFolder(const std::string& prefix) {
    char temp[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, temp);
    // Process ids repeat between Wine sessions: the tick count keeps runs apart.
    static unsigned counter = 0;
    const std::string folder = std::string(temp) + prefix + "-" +
                               std::to_string(GetCurrentProcessId()) + "-" +
                               std::to_string(GetTickCount64()) + "-" + std::to_string(++counter);
    CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

Lines onlyMessages(const Lines& lines, std::initializer_list<unsigned> messages) {
    Lines kept;
    for (const std::string& line : lines) {
        std::istringstream fields(line);
        std::string window;
        unsigned message = 0;
        fields >> window >> std::hex >> message;
        if (fields && std::find(messages.begin(), messages.end(), message) != messages.end()) {
            kept.push_back(line);
        }
    }
    return kept;
}

std::string mouseLine(const char* window, unsigned message, unsigned wParam, int x, int y) {
    return logLine(window, message, wParam, platform::win32::packPointLParam({x, y}));
}

RecorderProcess::RecorderProcess() : logPath_(makeTempFolder("recorder") + "\\messages.log") {
    const std::string line =
        "\"" + besideTestProgram("autoscene-test-recorder.exe") + "\" \"" + logPath_ + "\"";
    std::wstring command(line.begin(), line.end());
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &processInfo_)) {
        return;
    }
    const std::wstring title(kRecorderTitle, kRecorderTitle + sizeof(kRecorderTitle) - 1);
    HWND found = nullptr;
    const bool ready = waitUntil([&] {
        const Lines lines = readLog();
        found = FindWindowW(kRecorderClass, title.c_str());
        DWORD owner = 0;
        GetWindowThreadProcessId(found, &owner);
        return !lines.empty() && lines.front() == "ready" && owner == processInfo_.dwProcessId;
    });
    if (ready) {
        top_ = found;
        consumedLines_ = 1;
    }
}

RecorderProcess::~RecorderProcess() {
    if (top_ != nullptr) {
        PostMessageW(top_, WM_CLOSE, 0, 0);
    }
    if (processInfo_.hProcess != nullptr &&
        WaitForSingleObject(processInfo_.hProcess, 3000) != WAIT_OBJECT_0) {
        TerminateProcess(processInfo_.hProcess, 1);
    }
    CloseHandle(processInfo_.hProcess);
    CloseHandle(processInfo_.hThread);
}

HWND RecorderProcess::child(const char* name) const {
    for (const ChildPlace& place : kWindows) {
        if (place.parent >= 0 && std::strcmp(place.name, name) == 0) {
            const HWND parent = place.parent == 0 ? top_ : child(kWindows[place.parent].name);
            const std::wstring wide(name, name + std::strlen(name));
            return FindWindowExW(parent, nullptr, kChildClass, wide.c_str());
        }
    }
    return nullptr;
}

Lines RecorderProcess::readLog() const {
    Lines lines;
    std::ifstream log(logPath_);
    for (std::string line; std::getline(log, line);) {
        lines.push_back(line);
    }
    return lines;
}

Lines RecorderProcess::drainPosted() {
    const unsigned marker = ++markerCount_;
    PostMessageW(top_, kMarkerMessage, marker, 0);
    const std::string markerLine = logLine("top", kMarkerMessage, marker, 0);
    Lines drained;
    waitUntil([&] {
        const Lines lines = readLog();
        const auto from = lines.begin() + std::ptrdiff_t(consumedLines_);
        const auto marked = std::find(from, lines.end(), markerLine);
        if (marked == lines.end()) {
            return false;
        }
        drained.assign(from, marked);
        consumedLines_ = std::size_t(marked - lines.begin()) + 1;
        return true;
    });
    return drained;
}

Lines RecorderProcess::waitForMessages(std::initializer_list<unsigned> messages,
                                       std::size_t count) {
    Lines drained;
    waitUntil([&] {
        const Lines lines = readLog();
        drained.assign(
            lines.begin() + static_cast<std::ptrdiff_t>(std::min(consumedLines_, lines.size())),
            lines.end());
        return onlyMessages(drained, messages).size() >= count;
    });
    consumedLines_ += drained.size();
    return onlyMessages(drained, messages);
}

}  // namespace autoscene::win32test
