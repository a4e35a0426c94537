#pragma once
// One line per input the device received and per screen it showed, flushed at once so
// that a test reading the file sees every line written before its last request ended.

#include <cstdio>
#include <mutex>
#include <string>

namespace autoscene::testdevice {

class EventLog {
public:
    EventLog() = default;
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;
    ~EventLog();

    // An empty path logs nothing; "-" is standard output.
    bool open(const std::string& path);
    void write(const std::string& line);

private:
    std::mutex mutex_;
    std::FILE* file_ = nullptr;
};

}  // namespace autoscene::testdevice
