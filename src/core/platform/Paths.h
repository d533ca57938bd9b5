#pragma once
// Files and folders of the host. Paths may use "\" or "/" as separators; each
// component is matched without regard to case, and results carry the on-disk
// spelling. File contents are bytes, one byte a character.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

// The real path of `path` with on-disk spelling, or nothing when no such entry exists.
// Every on-disk spelling of a component is tried, the one written first, so that folders
// that differ only in case ("Textures" beside "textures") are all searched.
std::optional<std::string> ResolvePath(std::string_view path);
// The same for a regular file, or for a folder, only.
std::optional<std::string> ResolveFile(std::string_view path);
std::optional<std::string> ResolveFolder(std::string_view path);
// The same for `relative` inside `folder`, a real path as the functions above give it: only
// the components of `relative` are matched, so a miss costs no look at `folder`'s parents.
std::optional<std::string> ResolvePathIn(std::string_view folder, std::string_view relative);
std::optional<std::string> ResolveFileIn(std::string_view folder, std::string_view relative);
// Every real path that `path` names without regard to case, the spelling as written first.
std::vector<std::string> ResolveAllPaths(std::string_view path);
// The same as a text: the empty text when a part doesn't exist or the path is empty.
std::string GetLongPath(std::string_view path);
bool FileExists(std::string_view path);
bool FolderExists(std::string_view path);
// A folder as a user writes it in a settings file: a leading "~" stands for the home folder
// and separators at the end are dropped; an existing folder comes back with its on-disk
// spelling.
std::string UserFolderPath(std::string_view text);
// Joins a folder and a relative part that may use either separator; the result uses "/".
std::string JoinPath(std::string_view folder, std::string_view relative);
// The part behind the last separator ("\" or "/").
std::string_view FileNamePart(std::string_view path);
// Everything before the last separator, without it.
std::string_view FolderPart(std::string_view path);

// Whole file; a missing file is the failure "File not found" (53).
std::string ReadFileBytes(std::string_view path);
// At most `count` bytes from `offset` (0-based).
std::string ReadFileRange(std::string_view path, uint64_t offset, uint64_t count);
// Size in bytes; a missing file is the failure "File not found" (53).
uint64_t FileSize(std::string_view path);
bool CreateFolder(std::string_view path);

// The folder of the running executable.
std::string ExecutableFolder();
// Where Settings.ini, Templates/, Cache/ and Icons/ live: $GELVANE_HOME, else the
// executable's folder when writable, else $XDG_CONFIG_HOME/gelvane (~/.config/gelvane).
std::string StateFolder();

} // namespace gelvane
