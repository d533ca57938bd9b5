#pragma once
// The one command line text: a path to open, or "-s " and a path to convert silently.
#include <string>
#include <string_view>

namespace gelvane {

class Session;

// The command text: the arguments after the program's name joined by blanks.
std::string CommandTextOf(int argc, char **argv);
// True when the trimmed, lowered text begins with "-s ".
bool IsSilentCommand(const std::string &commandText);
// The text without any double quote and without outer blanks.
std::string UnquotedCommand(std::string_view commandText);
// The file kind (0 CR2 ... 7 LT2) named by the last three letters of the unquoted,
// trimmed text, whatever stands before them; -1 when they name no kind.
int FileKindOfCommand(std::string_view commandText);
// The path of a silent command: unquoted, the switch cut off, trimmed.
std::string SilentCommandPath(std::string_view commandText);
// The full, on-disk spelling of a path whose every part exists (either separator,
// any case); the empty text when a part doesn't exist or the path is empty.
std::string GetLongPath(std::string_view path);

// The start-up state of a fresh session: flags cleared, the model's lists empty,
// the format and line-end options taken from the settings.
void PrepareSession(Session &session);

// The silent conversion: no window; messages on standard error. Returns the exit
// status: 0 when the pose was written, non-zero otherwise.
int RunSilentConversion(const std::string &commandText);

} // namespace gelvane
