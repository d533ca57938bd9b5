#pragma once
// The silent conversion: "-s " and a path converts a file to a MAT pose beside it
// without a window.
#include <string>
#include <string_view>

namespace gelvane {

class Interaction;
class Session;

// The command text: the arguments after the program's name joined by blanks.
std::string CommandTextOf(int argc, char **argv);
// Where a silent conversion writes: the input's path up to and with its last "." + "pz2".
std::string SilentOutputPath(std::string_view input);
// Behind an open of a silent command (SilentConvert set): writes the pose to the silent
// output path unless the open failed or was cancelled. A failure of the write is
// reported as one of the open.
void WriteSilentPose(Session &session);

// Before a file named on the command line opens: its kind must be one the program reads
// (by the last three letters of the path) and the file must be there. A refusal goes to
// `ui`; returns its exit status (2 for an unknown kind, 3 for a missing file), or 0.
int CheckCommandFile(Interaction &ui, const std::string &path);

// The silent conversion: no window; messages on standard error. Returns the exit
// status: 0 when the pose was written, non-zero otherwise.
int RunSilentConversion(const std::string &commandText);

} // namespace gelvane
