#pragma once
// The one command line text: a path to open, or "-s " and a path to convert silently.
#include <string>

namespace gelvane {

// The command text: the arguments after the program's name joined by blanks.
std::string CommandTextOf(int argc, char **argv);
// True when the trimmed, lowered text begins with "-s ".
bool IsSilentCommand(const std::string &commandText);
// The silent conversion: no window; messages on standard error. Returns the exit status.
int RunSilentConversion(const std::string &commandText);

} // namespace gelvane
