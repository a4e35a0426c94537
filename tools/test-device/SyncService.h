#pragma once
// The file-sync service behind "sync:" (adb push, pull and ls, protocol version 1): files
// live in memory, keyed by their device path.

#include <map>
#include <mutex>
#include <string>

#include "EventLog.h"
#include "StreamService.h"

namespace autoscene::testdevice {

class DeviceFiles {
public:
    void store(const std::string& path, std::string content);
    // 0 for a path that is neither a file nor a known folder.
    std::uint32_t mode(const std::string& path) const;
    std::size_t size(const std::string& path) const;

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::string> files_;
};

class SyncService : public StreamService {
public:
    SyncService(DeviceFiles& files, EventLog& log) : files_(files), log_(log) {}
    void opened(const StreamOutput&) override {}
    void received(std::string_view bytes, const StreamOutput& output) override;

private:
    // Handles one whole request at the front of `buffer_`; false when more bytes are needed.
    bool handleRequest(const StreamOutput& output);

    DeviceFiles& files_;
    EventLog& log_;
    std::string buffer_;
    std::string sendPath_;  // the file a SEND is writing; empty outside one
    std::string sendContent_;
};

}  // namespace autoscene::testdevice
