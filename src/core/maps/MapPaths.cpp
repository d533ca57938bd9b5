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

// The real entry (a regular file only with `fileOnly`) for a FullMapPath result: under
// Poser's folder as configured, as it stands, or for a Windows path into a runtime, from
// its "runtime" component on under Poser's folder.
std::optional<std::string> ResolveMapPath(std::string_view poserFolder, std::string_view fullPath, bool fileOnly) {
    const auto inPoser = [&](std::string_view relative) -> std::optional<std::string> {
        const auto poser = ResolveFolder(poserFolder);
        if (!poser)
            return std::nullopt;
        return fileOnly ? ResolveFileIn(*poser, relative) : ResolvePathIn(*poser, relative);
    };
    // FullMapPath lower-cases the Poser folder too; resolving it as configured spares a
    // case-insensitive search through each of its parents.
    const size_t n = poserFolder.size();
    if (n > 0 && fullPath.size() > n && (fullPath[n] == '\\' || fullPath[n] == '/') &&
        EqualsNoCase(fullPath.substr(0, n), poserFolder))
        return inPoser(fullPath.substr(n));
    if (auto real = fileOnly ? ResolveFile(fullPath) : ResolvePath(fullPath))
        return real;
    const std::string_view tail = WindowsPoserPart(fullPath);
    if (tail.empty())
        return std::nullopt;
    return inPoser(tail);
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
    if (auto real = ResolveMapPath(poserFolder, path, true))
        s = std::move(*real);
    // A folder given with a separator at its end would cut the ":" that begins the Poser form.
    while (poserFolder.size() > 1 && (poserFolder.back() == '/' || poserFolder.back() == '\\'))
        poserFolder.remove_suffix(1);
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
    return ResolveMapPath(poserFolder, fullPath, false);
}

std::optional<std::string> LocateMapReference(std::string_view poserFolder, std::string_view mapPath) {
    if (Trim(mapPath).empty() || IsNoMap(mapPath))
        return std::nullopt;
    return ResolveMapPath(poserFolder, FullMapPath(poserFolder, mapPath), true);
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
    return LocateMapReference(poserFolder, mapPath).has_value();
}

std::string JoinMapPath(std::string_view folder, std::string_view name) {
    const bool windows = folder.find('\\') != std::string_view::npos && folder.find('/') == std::string_view::npos;
    std::string out(folder);
    out += windows ? '\\' : '/';
    out += name;
    return out;
}

} // namespace gelvane
