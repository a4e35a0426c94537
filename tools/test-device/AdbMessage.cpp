#include "AdbMessage.h"

namespace autoscene::testdevice {

namespace {

void putU32(std::string& out, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(char((value >> shift) & 0xff));
    }
}

std::uint32_t getU32(const unsigned char* bytes) {
    return std::uint32_t(bytes[0]) | std::uint32_t(bytes[1]) << 8 | std::uint32_t(bytes[2]) << 16 |
           std::uint32_t(bytes[3]) << 24;
}

}  // namespace

std::string encodeMessage(std::uint32_t command, std::uint32_t arg0, std::uint32_t arg1,
                          std::string_view payload) {
    std::uint32_t checksum = 0;
    for (const char c : payload) {
        checksum += static_cast<unsigned char>(c);
    }
    std::string out;
    out.reserve(kHeaderBytes + payload.size());
    putU32(out, command);
    putU32(out, arg0);
    putU32(out, arg1);
    putU32(out, std::uint32_t(payload.size()));
    putU32(out, checksum);
    putU32(out, command ^ 0xffffffffU);
    out.append(payload);
    return out;
}

std::optional<AdbHeader> decodeHeader(const unsigned char (&bytes)[kHeaderBytes]) {
    AdbHeader header;
    header.command = getU32(bytes);
    header.arg0 = getU32(bytes + 4);
    header.arg1 = getU32(bytes + 8);
    header.length = getU32(bytes + 12);
    if (getU32(bytes + 20) != (header.command ^ 0xffffffffU) || header.length > kMaxPayloadBytes) {
        return std::nullopt;
    }
    return header;
}

}  // namespace autoscene::testdevice
