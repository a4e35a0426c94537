#include "EventLog.h"

namespace autoscene::demo {

bool EventLog::open(const std::string& path) {
    if (path.empty()) {
        return true;
    }
    if (path == "-") {
        file_ = stdout;
        return true;
    }
    file_ = std::fopen(path.c_str(), "w");
    ownsFile_ = file_ != nullptr;
    return file_ != nullptr;
}

EventLog::~EventLog() {
    if (ownsFile_) {
        std::fclose(file_);
    }
}

void EventLog::write(const std::string& line) {
    if (file_ == nullptr) {
        return;
    }
    std::fputs(line.c_str(), file_);
    std::fputc('\n', file_);
    std::fflush(file_);
}

}  // namespace autoscene::demo
