#pragma once
// Conversions between the map references a Poser file holds (":Runtime:textures:a.jpg",
// "C:\Maps\a.jpg", "NO_MAP") and paths on this machine.
#include <optional>
#include <string>
#include <string_view>

namespace gelvane {

// The lower-cased absolute path of a reference, under `poserFolder` for the Poser forms.
// Lookups go through the platform layer, which matches without regard to case.
std::string FullMapPath(std::string_view poserFolder, std::string_view mapPath);
// The last path component, from either separator (":" or "\", and "/").
std::string MapFileName(std::string_view mapPath);
// `folder` without one final "\" (or "/").
std::string StripTrailingBackslash(std::string_view folder);
// True when the reference switches the map off ("NO_MAP" in any case, after trimming).
bool IsNoMap(std::string_view mapPath);

// The form to store in a material: the on-disk spelling of an existing file, cut to the
// Poser form (":Runtime:textures:a.jpg") when it lies in `poserFolder` and `fullPaths`
// (the "Use full map paths" box) is clear; otherwise the text as it stands.
std::string ShortMapPath(std::string_view poserFolder, std::string_view path, bool fullPaths);
// The real file or folder for a FullMapPath result, with on-disk spelling. A Windows path
// ("c:\program files\poser\runtime\...") that isn't found as it stands is looked for
// under `poserFolder` from its "runtime" component on.
std::optional<std::string> LocateMapFile(std::string_view poserFolder, std::string_view fullPath);
// The existing file (not a folder) that a reference in any form names, with on-disk
// spelling; nothing for "NO_MAP", an empty text or a missing file. Thumbnails are kept
// under this path, so that every form of a reference to one file shares one picture.
std::optional<std::string> LocateMapReference(std::string_view poserFolder, std::string_view mapPath);
// For a Windows path with a drive and a "Runtime" folder ("C:\\Poser\\Runtime\\textures\\a.jpg"),
// the part from "Runtime" on; empty for any other text.
std::string_view WindowsPoserPart(std::string_view path);
// True when the reference names an existing file (not a folder).
bool MapFileExists(std::string_view poserFolder, std::string_view mapPath);
// `folder` + separator + `name`, with "\" only for a folder written the Windows way.
std::string JoinMapPath(std::string_view folder, std::string_view name);

} // namespace gelvane
