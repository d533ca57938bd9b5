#pragma once
// The five lists of known picture files and the state of a run of map reference
// checks; the map finder (core/maps) fills and searches them.
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace gelvane {

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

// All state of the map finder and of a run of reference checks; the Session holds one.
struct MapLists {
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

    // Positions of each lower-cased name in one list, brought up to date on use, so that a
    // lookup finds its matches, in list order, without comparing every element.
    struct NameIndex {
        size_t Count = 0;
        std::string First;
        std::unordered_map<std::string, std::vector<size_t>> Positions;
    };
    NameIndex Indexes[5];

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

} // namespace gelvane
