#pragma once
// A Windows-style profile file ("[section]" lines and "key=value" entries), read
// and written the way the system's profile-string calls do: sections and keys
// match without regard to case, an entry is replaced where it stands, a missing
// section is appended on first write. Written files use "\r\n" line ends.
#include <optional>
#include <string>
#include <string_view>

namespace gelvane {

// The value of `key` in `section`, blanks trimmed and one pair of enclosing quotes
// removed, cut to `bufferSize` - 1 characters; `defaultValue` when there is none.
std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view fileName,
                              std::string_view defaultValue, size_t bufferSize = 260);

// The text of a profile file; a missing or unreadable one is empty.
std::string ReadProfileText(std::string_view fileName);
// `text` with `key` set in `section` as WriteProfileString sets it in a file; nothing
// when the change leaves the text as it is.
std::optional<std::string> SetProfileString(std::string_view text, std::string_view section,
                                            const std::string_view *key, const std::string_view *value);

// Sets `key` in `section`. With `key` null the whole section is removed, with
// `value` null the entry is removed. False when the file can't be written.
bool WriteProfileString(std::string_view section, const std::string_view *key, const std::string_view *value,
                        std::string_view fileName);

} // namespace gelvane
