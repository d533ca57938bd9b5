#pragma once
// The map finder: five lists of known picture files (in memory and as cache files in
// the state folder's Cache), the folder scan that fills them, and the lookup that
// proposes a new reference for a missing map.
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace gelvane {

class Session;

// One known picture file.
struct MapFile {
    std::string Name;   // file name with extension, on-disk spelling
    std::string Folder; // full path of its folder, no trailing separator
};

// What a run of checks already answered for a missing reference (both in FullMapPath form).
struct CheckedMap {
    std::string Missing;
    std::string Replacement;
};

// All state of the finder and of a run of reference checks; the Session holds one.
struct MapFinder {
    std::vector<MapFile> TifMaps{1};
    std::vector<MapFile> JpgMaps{1};
    std::vector<MapFile> BmpMaps{1};
    std::vector<MapFile> BumMaps{1};
    std::vector<MapFile> OtherMaps{1};

    int16_t ChosenMapIndex = 0;             // the row left selected in the choice window
    std::vector<std::string> ListedMaps{1}; // one full candidate path per row of the choice window

    std::vector<CheckedMap> CheckedMaps{1};     // empty: one element with an empty Missing
    std::vector<std::string> ScannedFolders{1}; // empty: one empty element
    bool CheckingMaps = false;

    // The list a file name enters by its last four characters, or nullptr.
    std::vector<MapFile> *ListForName(std::string_view name);

    // Positions of each lower-cased name in one list, brought up to date on use, so that a
    // lookup finds its matches, in list order, without comparing every element.
    struct NameIndex {
        size_t Count = 0;
        std::string First;
        std::unordered_map<std::string, std::vector<size_t>> Positions;
    };
    NameIndex Indexes[5];
    // The positions in `list` (one of the five) whose Name equals `name` without regard to case.
    const std::vector<size_t> &Matching(const std::vector<MapFile> &list, std::string_view name);

    // Cache files already read in this run, re-read when their size or time changes.
    struct CacheText {
        std::string Path;
        uint64_t Size = 0;
        int64_t Time = 0;
        std::string Content;
        std::string Lower;
    };
    std::vector<CacheText> CacheTexts;
};

// The state folder's Cache folder (created when missing).
std::string MapCacheFolder();

// Adds every picture file under `folder`, recursively, to the lists. Files come in name
// order, folders after the files; unreadable folders and link loops are skipped. The
// progress window's cancel request stops the scan of each remaining folder at its first file.
void ScanFolder(Session &session, std::string_view folder);
// Rewrites the five cache files from the lists; false when the Cache folder isn't writable.
bool SaveMapLists(Session &session);
// Adds one existing file to the list its name selects.
void AddMapToLists(Session &session, std::string_view path);
// The reference to use for `mapPath`: a found file in ShortMapPath form, "NO_MAP", or
// `mapPath` itself when nothing was found and SetNoMap is off. Asks through
// Interaction::ChooseMap when the cache file names several folders.
std::string FindFile(Session &session, std::string_view mapPath);

} // namespace gelvane
