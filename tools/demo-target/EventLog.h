#pragma once
// One line per event, flushed at once so that a test reading the file sees every event
// that has been handled.

#include <cstdio>
#include <string>

namespace autoscene::demo {

class EventLog {
public:
    // Empty path: no log; "-": standard output. False when the file cannot be opened.
    bool open(const std::string& path);
    ~EventLog();

    void write(const std::string& line);

private:
    std::FILE* file_ = nullptr;
    bool ownsFile_ = false;
};

}  // namespace autoscene::demo
