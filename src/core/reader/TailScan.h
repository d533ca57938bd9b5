#pragma once
// The reading stages that serve character, prop and hair files: the head reads, the
// prop scan of a multi-figure open, the tail scan that finds the materials without
// loading geometry and channels, and the cutting of each owner's material text.
#include "core/model/Session.h"

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

// What an open reads from: the file named by the dialog, or a text handed in instead
// of a file. The file is opened on first use; a missing file is the failure 53.
class Source {
public:
    static Source FromFile(std::string path);
    static Source FromText(std::string_view text);

    bool IsText() const { return m_isText; }
    uint64_t Length() const;
    // Up to `count` characters from the 0-based `offset` (fewer at the end).
    std::string Range(uint64_t offset, uint64_t count) const;
    std::string Left(uint64_t count) const { return Range(0, count); }
    std::string All() const { return Range(0, Length()); }
    // 0-based offset of the first `needle` at or behind `from`, or npos; reads the file in blocks.
    uint64_t Find(std::string_view needle, uint64_t from = 0) const;

private:
    void Open() const;

    bool m_isText = false;
    std::string_view m_text;
    std::string m_path;
    mutable std::shared_ptr<std::ifstream> m_file;
    mutable uint64_t m_length = 0;
};

// The head of the source: `step` characters, then `step` more each round, until it
// holds a "}". It never reaches past the end; a source without "}" is the failure 62.
std::string ReadHeadToBrace(const Source &source, uint64_t step);

// The tail that the piecewise backward read (pieces of 2000 characters, the file's last
// character left out) has gathered when it first holds `key`. Failure 63 when the read
// would have to start at position 0.
std::string ReadTailUntil(const Source &source, std::string_view key);

// The stages below keep `step` at the number of the step they run, for the failure report.

// The prop scan of a multi-figure open: adds "figure" and the props to the object list.
void ScanProps(Session &session, const Source &source, int &step);

// The head up to its first block + line feed + the tail from `endKey` on; a file
// without `startKey` or `endKey` fails. Prop and hair files name Figures[0] by their
// "prop " line.
std::string ReadFigureText(Session &session, const Source &source, std::string_view startKey, std::string_view endKey,
                           int &step);

// Builds the material text of the main owner in `text` (head + line feed + tail on entry)
// and, for a multi-figure open, the sections of the other owners.
void CutMaterialText(Session &session, const Source &source, std::string &text, std::vector<std::string> &sections,
                     int &step);

} // namespace gelvane
