#include "core/platform/FileVersion.h"

#include "core/platform/Failure.h"
#include "core/platform/Paths.h"

#include <cstdint>

namespace gelvane {
namespace {

uint32_t Dword(std::string_view bytes, size_t at) {
    return static_cast<uint32_t>(static_cast<unsigned char>(bytes[at])) |
           static_cast<uint32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8 |
           static_cast<uint32_t>(static_cast<unsigned char>(bytes[at + 2])) << 16 |
           static_cast<uint32_t>(static_cast<unsigned char>(bytes[at + 3])) << 24;
}

} // namespace

std::string FileVersionString(std::string_view path) {
    std::string bytes;
    try {
        bytes = ReadFileBytes(path);
    } catch (const Failure &) {
        return {};
    }
    // The fixed record begins with the signature 0xFEEF04BD (little-endian) and the
    // structure version; the file version follows as two double words.
    static constexpr std::string_view kSignature("\xBD\x04\xEF\xFE", 4);
    constexpr size_t kRecordSize = 13 * 4;
    for (size_t at = bytes.find(kSignature); at != std::string::npos; at = bytes.find(kSignature, at + 1)) {
        if (at + kRecordSize > bytes.size())
            break;
        if (Dword(bytes, at + 4) >> 16 > 1) // structure version 0.x or 1.x; anything else is a chance match
            continue;
        const uint32_t ms = Dword(bytes, at + 8);
        const uint32_t ls = Dword(bytes, at + 12);
        return std::to_string(ms >> 16) + "." + std::to_string(ms & 0xFFFF) + "." + std::to_string(ls >> 16) + "." +
               std::to_string(ls & 0xFFFF);
    }
    return {};
}

} // namespace gelvane
