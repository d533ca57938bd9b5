#pragma once
// The file information, the HTML report and the .mtl export without a window, for
// scripts and servers: the file opens as a dropped file opens, the command line answers
// what the window would ask, and the same core functions as the window's commands print
// or write.
#include "core/app/OpenCommands.h"

#include <string>

namespace gelvane {

class Session;
struct CommandOptions;

// The figure choice of the command line: the figure whose name is `name`, or the first
// when `name` is empty. A name that no figure bears is reported through the session's
// interaction, with the names there are, and chooses nothing.
FigureChooser FigureByName(const std::string &name);

// Opens `path` without a dialog through the Open command of its kind (by the last three
// letters, as the command line has it); a character goes through figure selection with
// `choose`. The morph question goes to the session's interaction. True when the file is
// open; otherwise its failure has been reported through the session's interaction.
bool OpenForCommand(Session &session, const std::string &path, const FigureChooser &choose);

// "gelvane --info FILE", "--report FILE OUT.html", "--mtl FILE OUT.mtl", with --channels
// and --figure. No map repair runs and nothing is written over FILE. The exit status is
// 0 on success, 1 when the file can't be opened or the output written, 2 for an unknown
// kind or an output that is FILE itself, 3 for a missing file; the failure text goes to
// standard error.
int RunInfoCommand(const CommandOptions &options);
int RunReportCommand(const CommandOptions &options);
int RunMtlCommand(const CommandOptions &options);

} // namespace gelvane
