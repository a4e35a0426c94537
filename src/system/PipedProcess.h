#pragma once
// A child kept running to be given commands: its standard input stays open, and its
// output (standard output and error together) is read up to a marker the commands end
// with. PipedProcessPosix.cpp and PipedProcessWin32.cpp.

#include <chrono>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

#include "system/Process.h"

namespace autoscene::sys {

// The answer to one command: what came before the marker, or why it did not come.
struct PipedReply {
    std::string output;
    bool complete = false;                // the marker came
    CommandEnd end = CommandEnd::Exited;  // otherwise: the child ended, or the wait was cut short
};

class PipedProcess {
public:
    // Starts `commandLine` as runCommandCapture does, and throws as it does.
    explicit PipedProcess(const std::string& commandLine);
    // Ends the child (on POSIX with its process group) and reaps it.
    ~PipedProcess();
    PipedProcess(const PipedProcess&) = delete;
    PipedProcess& operator=(const PipedProcess&) = delete;

    // False once the child takes no more input (it has ended).
    bool write(std::string_view bytes);
    // What the child writes before `marker`, which is consumed; the output after it is
    // kept for the next call. After an incomplete reply the child's output is out of
    // step with its commands: end it.
    PipedReply readUntil(std::string_view marker, std::chrono::milliseconds timeLimit,
                         std::stop_token stop);

private:
    struct Child;
    std::unique_ptr<Child> child_;
    std::string pending_;  // read past the last marker
};

}  // namespace autoscene::sys
