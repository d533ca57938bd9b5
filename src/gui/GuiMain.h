#pragma once
// Starts the main window and runs the event loop; `commandText` is the command line after the program's name.
#include <string>

namespace gelvane {

int RunGui(int argc, char **argv, const std::string &commandText);

} // namespace gelvane
