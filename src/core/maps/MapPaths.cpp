#include "core/maps/MapPaths.h"

#include "core/model/Text.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

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

std::string ShortMapPath(std::string_view poserFolder, std::string_view path, bool fullPaths) {
    std::string s(path);
    if (auto real = LocateMapFile(poserFolder, path); real) {
        std::error_code ec;
        if (std::filesystem::is_regular_file(*real, ec))
            s = *real;
    }
    if (!fullPaths && LCase(s).find(LCase(poserFolder)) != std::string::npos) {
        // Cut by the folder's length even when it was found further in: stored references
        // of older files depend on exactly this form.
        s.erase(0, std::min(s.size(), poserFolder.size()));
        for (char &c : s)
            if (c == '\\' || c == '/')
                c = ':';
    }
    return s;
}

std::optional<std::string> LocateMapFile(std::string_view poserFolder, std::string_view fullPath) {
    // FullMapPath lower-cases the Poser folder too; resolving it as configured spares a
    // case-insensitive search through each of its parents.
    const size_t n = poserFolder.size();
    if (n > 0 && fullPath.size() > n && (fullPath[n] == '\\' || fullPath[n] == '/') &&
        EqualsNoCase(fullPath.substr(0, n), poserFolder)) {
        if (auto poser = ResolvePath(poserFolder))
            return ResolvePath(JoinPath(*poser, fullPath.substr(n)));
    }
    if (auto real = ResolvePath(fullPath))
        return real;
    const std::string_view tail = WindowsPoserPart(fullPath);
    if (tail.empty())
        return std::nullopt;
    return ResolvePath(JoinPath(poserFolder, tail));
}

std::string_view WindowsPoserPart(std::string_view path) {
    const bool drivePath = path.size() >= 3 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':' &&
                           (path[2] == '\\' || path[2] == '/');
    if (!drivePath)
        return {};
    for (size_t i = 2; i + 9 <= path.size(); ++i)
        if ((path[i] == '\\' || path[i] == '/') && EqualsNoCase(path.substr(i + 1, 7), "runtime") &&
            (path[i + 8] == '\\' || path[i + 8] == '/'))
            return path.substr(i + 1);
    return {};
}

bool MapFileExists(std::string_view poserFolder, std::string_view mapPath) {
    const auto real = LocateMapFile(poserFolder, FullMapPath(poserFolder, mapPath));
    std::error_code ec;
    return real && std::filesystem::is_regular_file(*real, ec);
}

std::string JoinMapPath(std::string_view folder, std::string_view name) {
    const bool windows = folder.find('\\') != std::string_view::npos && folder.find('/') == std::string_view::npos;
    std::string out(folder);
    out += windows ? '\\' : '/';
    out += name;
    return out;
}

} // namespace gelvane
