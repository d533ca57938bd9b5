#pragma once
// Literal text operations with 1-based positions, as the readers' scans count them.
// Positions are 0 when nothing is found. Every search works on views of the same
// buffer; nothing here copies more than it returns.
#include "core/platform/AsciiCase.h" // the case helpers live with the file names that need them

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace gelvane {

constexpr char kLf = '\n';
constexpr char kCr = '\r';

// Position (1-based) of the first `find` at or behind `start`, or 0.
size_t InStr(std::string_view text, std::string_view find, size_t start = 1);
// Position (1-based) of the last `find` that begins at or before `start` (0: the end), or 0.
size_t InStrRev(std::string_view text, std::string_view find, size_t start = 0);
// Case-insensitive (ASCII) forms of the two searches.
size_t InStrNoCase(std::string_view text, std::string_view find, size_t start = 1);

// Substrings with 1-based start. A start below 1 or a negative length is the
// run-time failure "Invalid procedure call or argument" (5), which the readers rely on.
constexpr long long kToEnd = std::numeric_limits<long long>::max();
std::string_view Mid(std::string_view text, long long start, long long length = kToEnd);
std::string_view Left(std::string_view text, long long length);
std::string_view Right(std::string_view text, long long length);

// Replaces every occurrence in one left-to-right pass.
std::string Replace(std::string_view text, std::string_view find, std::string_view with);
// Repeats Replace until `find` no longer occurs (the result of "until none is left").
std::string ReplaceUntilNone(std::string_view text, std::string_view find, std::string_view with);

bool StartsWith(std::string_view text, std::string_view prefix);
bool EndsWith(std::string_view text, std::string_view suffix);

// Trims blanks (only the character 32) at both ends / one end.
std::string_view Trim(std::string_view text);
std::string_view LTrim(std::string_view text);
std::string_view RTrim(std::string_view text);

// Removes all tabs, carriage returns and line feeds, then trims blanks.
std::string StripControls(std::string_view text);

// Every carriage return becomes a line feed (a CRLF pair gives two line feeds).
std::string CrToLf(std::string_view text);

} // namespace gelvane
