#include "SyncService.h"

namespace autoscene::testdevice {

namespace {

constexpr std::uint32_t kDirectoryMode = 0040771;
constexpr std::uint32_t kFileMode = 0100644;
// Requests carry at most this much; a larger length means a broken stream.
constexpr std::uint32_t kMaxRequestBytes = 256 * 1024;

std::uint32_t getU32(std::string_view bytes) {
    const auto* b = reinterpret_cast<const unsigned char*>(bytes.data());
    return std::uint32_t(b[0]) | std::uint32_t(b[1]) << 8 | std::uint32_t(b[2]) << 16 |
           std::uint32_t(b[3]) << 24;
}

std::string u32(std::uint32_t value) {
    std::string out;
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(char((value >> shift) & 0xff));
    }
    return out;
}

std::string fail(const std::string& message) {
    return "FAIL" + u32(std::uint32_t(message.size())) + message;
}

}  // namespace

void DeviceFiles::store(const std::string& path, std::string content) {
    const std::lock_guard lock(mutex_);
    files_[path] = std::move(content);
}

std::uint32_t DeviceFiles::mode(const std::string& path) const {
    const std::lock_guard lock(mutex_);
    if (files_.count(path) != 0) {
        return kFileMode;
    }
    for (const char* folder : {"/", "/data", "/data/local", "/data/local/tmp", "/sdcard"}) {
        if (path == folder || path == std::string(folder) + "/") {
            return kDirectoryMode;
        }
    }
    return 0;
}

std::size_t DeviceFiles::size(const std::string& path) const {
    const std::lock_guard lock(mutex_);
    const auto found = files_.find(path);
    return found == files_.end() ? 0 : found->second.size();
}

void SyncService::received(std::string_view bytes, const StreamOutput& output) {
    buffer_.append(bytes);
    while (handleRequest(output)) {
    }
}

bool SyncService::handleRequest(const StreamOutput& output) {
    if (buffer_.size() < 8) {
        return false;
    }
    const std::string id = buffer_.substr(0, 4);
    const std::uint32_t length = getU32(std::string_view(buffer_).substr(4, 4));
    if (id == "DONE") {  // its length field is the file time, not a payload size
        buffer_.erase(0, 8);
        files_.store(sendPath_, std::move(sendContent_));
        log_.write("push " + sendPath_ + " " + std::to_string(files_.size(sendPath_)));
        sendPath_.clear();
        sendContent_.clear();
        output("OKAY" + u32(0), false);
        return true;
    }
    if (length > kMaxRequestBytes) {
        output(fail("request too large"), true);
        buffer_.clear();
        return false;
    }
    if (buffer_.size() < 8 + length) {
        return false;
    }
    const std::string data = buffer_.substr(8, length);
    buffer_.erase(0, 8 + length);
    if (id == "STAT") {
        const std::uint32_t mode = files_.mode(data);
        output("STAT" + u32(mode) + u32(std::uint32_t(files_.size(data))) + u32(0), false);
    } else if (id == "SEND") {
        sendPath_ = data.substr(0, data.rfind(','));
        sendContent_.clear();
    } else if (id == "DATA") {
        sendContent_ += data;
    } else if (id == "LIST") {
        output("DONE" + u32(0) + u32(0) + u32(0) + u32(0), false);
    } else if (id == "QUIT") {
        output({}, true);
        return false;
    } else {
        output(fail("unsupported request " + id), false);
    }
    return true;
}

}  // namespace autoscene::testdevice
