#pragma once
// Conversions between the map references a Poser file holds (":Runtime:textures:a.jpg",
// "C:\Maps\a.jpg", "NO_MAP") and paths on this machine.
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

} // namespace gelvane
