#pragma once
// The file version that a Windows executable carries in its version resource.
#include <string>
#include <string_view>

namespace gelvane {

// "major.minor.build.revision" from the executable's fixed version record, or the
// empty text when the file can't be read or carries no version.
std::string FileVersionString(std::string_view path);

} // namespace gelvane
