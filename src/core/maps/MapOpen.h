#pragma once
// Opening a map with the program the desktop associates with it.
#include <cstdint>
#include <string>
#include <string_view>

namespace gelvane {

class Session;

// Opens the referenced map with its program, or says in a message box why not.
// Poser forms are placed under Poser's folder; an empty reference does nothing.
void OpenMapFile(Session &session, std::string_view mapPath);

// Asks the desktop (xdg-open) to open `path`. Above 32 on success; otherwise one of the
// codes 2 (file not found), 3 (path not found), 5 (access denied), 8 (out of memory),
// 31 (no program for the file), or 0 (unknown).
int32_t ShellOpen(std::string_view path);
// The same with another opener command, found on PATH.
int32_t ShellOpenWith(std::string_view path, const std::string &opener);

// The text for a failed open's code.
std::string ShellOpenErrorText(int32_t code);

} // namespace gelvane
