#include "EventLog.h"

namespace autoscene::testdevice {

EventLog::~EventLog() {
    if (file_ != nullptr && file_ != stdout) {
        std::fclose(file_);
    }
}

bool EventLog::open(const std::string& path) {
    if (path.empty()) {
        return true;
    }
    file_ = path == "-" ? stdout : std::fopen(path.c_str(), "a");
    return file_ != nullptr;
}

void EventLog::write(const std::string& line) {
    const std::lock_guard lock(mutex_);
    if (file_ != nullptr) {
        std::fprintf(file_, "%s\n", line.c_str());
        std::fflush(file_);
    }
}

}  // namespace autoscene::testdevice
