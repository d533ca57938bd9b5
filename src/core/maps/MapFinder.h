#pragma once
// The map finder: five lists of known picture files (in memory and as cache files in
// the state folder's Cache), the folder scan that fills them, and the lookup that
// proposes a new reference for a missing map.
#include "core/model/MapLists.h"

#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

class Session;

// The list a file name enters by its last four characters, or nullptr.
std::vector<MapFile> *MapListForName(MapLists &lists, std::string_view name);
// The positions in `list` (one of the five) whose Name equals `name` without regard to case.
const std::vector<size_t> &MatchingMaps(MapLists &lists, const std::vector<MapFile> &list, std::string_view name);

// The state folder's Cache folder (created when missing).
std::string MapCacheFolder();

// Adds every picture file under `folder`, recursively, to the lists; a folder whose name has
// twins that differ only in case is walked in each of them. Files come in name order,
// folders after the files; unreadable folders and link loops are skipped. The
// progress window's cancel request stops the scan of each remaining folder at its first file.
void ScanFolder(Session &session, std::string_view folder);
// Rewrites the five cache files from the lists; false when the Cache folder isn't writable.
bool SaveMapLists(Session &session);
// Adds one existing file to the list its name selects.
void AddMapToLists(Session &session, std::string_view path);
// The form that a repaired or browsed reference to the file `path` takes: ShortMapPath,
// in full when "Use full map paths" (View.chkTexture) is checked.
std::string StoredMapReference(const Session &session, std::string_view path);
// The reference to use for `mapPath`: a found file in ShortMapPath form, "NO_MAP", or
// `mapPath` itself when nothing was found and SetNoMap is off. Asks through
// Interaction::ChooseMap when the cache file names several folders.
std::string FindFile(Session &session, std::string_view mapPath);

} // namespace gelvane
