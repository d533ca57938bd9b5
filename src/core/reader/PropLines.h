#pragma once
// The prop lines of a file, in the order the object list receives them. Both scans
// take the last "prop " line, note it, and delete every occurrence of it from the text
// before they look again; these functions give the same lines without rewriting the
// whole text once for each prop.
#include "core/reader/TextIndex.h"

#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

struct PropLineScan {
    std::vector<std::string> Lines; // in the order found
    // The scan then reached a line it can't cut (no "{", or no line end, behind it):
    // the failure "Invalid procedure call or argument" (5) follows the lines above.
    bool Failed = false;
};

// The whole-file reading of pose-like files: while the text holds line feed + "prop ",
// the last such line up to one character before the next "{", stripped, is a prop line;
// line feed + that line is deleted everywhere (or, when it stands nowhere, the line
// feed + "prop " found). `text` is line-feed-only.
PropLineScan PosePropLines(std::string_view text, WorkLimit &work);

// The prop scan at the head of a figure-like file: while the text holds line feed +
// "prop ", the last such line up to its line end, stripped, is a prop line; the line is
// deleted everywhere (or, when it stands nowhere, the raw line is). `text` is
// line-feed-only.
PropLineScan HeadPropLines(std::string_view text, WorkLimit &work);

} // namespace gelvane
