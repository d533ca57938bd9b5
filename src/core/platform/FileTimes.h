#pragma once
// Time stamps of files on disk.
#include <cstdint>
#include <string_view>

namespace gelvane {

// When the file was created, in seconds since 1970; its last change where the file
// system keeps no creation time. The path resolves without regard to case; a
// missing file is the failure "File not found" (53).
int64_t FileCreationTime(std::string_view path);

} // namespace gelvane
