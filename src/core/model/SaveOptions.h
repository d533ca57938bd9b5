#pragma once
// The save options that the writer reads, and the rules of the version box and the
// format option, which together decide the "number " line.
#include <string>
#include <string_view>

namespace gelvane {

class Session;

// The save options and check boxes of the main window that the writer reads.
struct SaveOptions {
    bool FileSystemDOS = true;  // optFileSystem(0) selected: "\r\n"; else a lone carriage return
    bool PoserFormatP5 = false; // optPoserFormat(1) selected: shader trees are written
    bool chkChannels = false;   // checked: no actor section ("don't save morphs or poses")
    bool chkChannelsEnabled = true;
    bool chkNoMaterialData = false; // checked: no closing prop section ("don't save materials")
    bool chkNoMaterialDataEnabled = true;
    bool chkDisableThighLength = true; // unchecked: a "thighLength " line is written
    std::string txtThighLength;        // the value of that line
    std::string VersionText;           // TXT(0): the version box

    const char *LineEnd() const { return FileSystemDOS ? "\r\n" : "\r"; }
};

// Every change of the version box TXT(0), typed or set: OutputVersion becomes the number
// at the start of the text printed back ("5.0" gives "5"), and the file counts as changed.
// A number beyond a 64-bit float leaves OutputVersion as it was.
void VersionText_Change(Session &session, std::string_view text);

// Selecting optPoserFormat(Index): 0 is Poser 4 / Pro Pack, any other Poser 5. Puts the
// version number of the chosen format into the version box when the matching setting
// asks for it; otherwise the box keeps its text.
void optPoserFormat_Click(Session &session, int Index);

} // namespace gelvane
