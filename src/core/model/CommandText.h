#pragma once
// The one command line text: a path to open, or "-s " and a path to convert silently.
#include <string>
#include <string_view>

namespace gelvane {

// The text without any double quote and without outer blanks.
std::string UnquotedCommand(std::string_view commandText);
// True when the trimmed, lowered text begins with "-s ".
bool IsSilentCommand(std::string_view commandText);
// The path the text names: the unquoted text, behind the switch for a silent command.
std::string CommandPath(std::string_view commandText);
// The file kind (0 CR2 ... 7 LT2) of an extension ("cr2" ... "lt2", any case), or -1.
int FileKindOfExtension(std::string_view extension);
// The file kind named by the last three letters of the unquoted text,
// whatever stands before them; -1 when they name no kind.
int FileKindOfCommand(std::string_view commandText);
// True when the lowered last four characters of `path` are ".pz2", ".cm2", ".fc2", ".hd2" or
// ".lt2": a file that a pose may be saved over.
bool HasPoseLikeExtension(std::string_view path);

} // namespace gelvane
