#include <stdexcept>
#include <utility>

#include "system/PipedProcess.h"
#include "system/Win32Pipes.h"

namespace autoscene::sys {

struct PipedProcess::Child {
    HANDLE input = nullptr;
    HANDLE output = nullptr;
    PROCESS_INFORMATION process{};
};

PipedProcess::PipedProcess(const std::string& commandLine) : child_(std::make_unique<Child>()) {
    const win32::PipeEnds input = win32::createPipe(true);
    win32::PipeEnds output;
    try {
        output = win32::createPipe(false);
        child_->process = win32::startOnPipes(commandLine, input.read, output.write);
    } catch (const std::runtime_error&) {
        win32::closeAll({input.read, input.write, output.read, output.write});
        throw;
    }
    // The child's ends are its own now; ours would keep the pipes from breaking.
    win32::closeAll({input.read, output.write});
    child_->input = input.write;
    child_->output = output.read;
}

PipedProcess::~PipedProcess() {
    CloseHandle(child_->input);
    TerminateProcess(child_->process.hProcess, 1);
    WaitForSingleObject(child_->process.hProcess, INFINITE);
    win32::closeAll({child_->output, child_->process.hProcess, child_->process.hThread});
}

bool PipedProcess::write(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(child_->input, bytes.data(), DWORD(bytes.size()), &written, nullptr)) {
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

PipedReply PipedProcess::readUntil(std::string_view marker, std::chrono::milliseconds timeLimit,
                                   std::stop_token stop) {
    const auto deadline = win32::deadlineAfter(timeLimit);
    PipedReply result;
    try {
        for (;;) {
            if (const std::size_t at = pending_.find(marker); at != std::string::npos) {
                result.output = pending_.substr(0, at);
                pending_.erase(0, at + marker.size());
                result.complete = true;
                return result;
            }
            if (const auto cut = win32::cutShort(deadline, stop)) {
                result.end = *cut;
                return result;
            }
            if (!win32::readAvailable(child_->output, child_->process.hProcess, pending_)) {
                break;
            }
        }
    } catch (const std::runtime_error&) {
        // A failed read ends the child's output as a broken pipe does.
    }
    result.output = std::exchange(pending_, {});
    return result;
}

}  // namespace autoscene::sys
