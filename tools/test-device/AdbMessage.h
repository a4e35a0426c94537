#pragma once
// The adb transport's 24-byte message header and the packets built from it.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace autoscene::testdevice {

enum AdbCommand : std::uint32_t {
    kSync = 0x434e5953,
    kCnxn = 0x4e584e43,
    kOpen = 0x4e45504f,
    kOkay = 0x59414b4f,
    kClse = 0x45534c43,
    kWrte = 0x45545257,
    kAuth = 0x48545541,
};

constexpr std::uint32_t kAdbVersion = 0x01000001;
constexpr std::size_t kHeaderBytes = 24;
// Larger payloads are refused: adb itself never sends more than 1 MiB.
constexpr std::uint32_t kMaxPayloadBytes = 1024 * 1024;

struct AdbHeader {
    std::uint32_t command = 0;
    std::uint32_t arg0 = 0;
    std::uint32_t arg1 = 0;
    std::uint32_t length = 0;
};

// The packet for `command` with its payload, checksum and magic filled in.
std::string encodeMessage(std::uint32_t command, std::uint32_t arg0, std::uint32_t arg1,
                          std::string_view payload);

// No value when the magic does not match the command or the payload is too large.
std::optional<AdbHeader> decodeHeader(const unsigned char (&bytes)[kHeaderBytes]);

}  // namespace autoscene::testdevice
