#include "maps/MapPaths.h"

#include "model/Text.h"

namespace gelvane {
namespace {

std::string ColonsToBackslashes(std::string_view s) {
    return Replace(s, ":", "\\");
}

} // namespace

std::string FullMapPath(std::string_view poserFolder, std::string_view mapPath) {
    std::string s(mapPath);
    const std::string folder(poserFolder);
    if (StartsWith(LCase(s), ":runtime:"))
        s = folder + ColonsToBackslashes(s);
    if (StartsWith(LCase(s), ":textures:"))
        s = folder + "\\Runtime" + ColonsToBackslashes(s);
    const std::string lower = LCase(s);
    if (StartsWith(lower, ":") && lower.find(":runtime:") == std::string::npos &&
        lower.find(":textures:") == std::string::npos)
        s = folder + "\\Runtime\\Textures" + ColonsToBackslashes(s);
    return LCase(s);
}

std::string MapFileName(std::string_view mapPath) {
    const std::string s = Replace(mapPath, ":", "\\");
    const size_t p = s.find_last_of("\\/");
    return p == std::string::npos ? s : s.substr(p + 1);
}

std::string StripTrailingBackslash(std::string_view folder) {
    if (!folder.empty() && (folder.back() == '\\' || folder.back() == '/'))
        folder.remove_suffix(1);
    return std::string(folder);
}

bool IsNoMap(std::string_view mapPath) {
    return LCase(Trim(mapPath)) == "no_map";
}

} // namespace gelvane
