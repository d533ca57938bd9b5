#pragma once
// The command line. Without a switch the arguments are one command text: a path to open
// in the window. "-s " and a path converts silently, as it always has. Arguments that
// begin with "--" are options from one table, which also makes the help text: a new way
// of running without a window is one row there and one function.
#include <string>
#include <vector>

namespace gelvane {

enum class RunMode { Window, Silent, Batch, Info, Report, Mtl, Help, Version };

struct CommandOptions {
    RunMode Mode = RunMode::Window;
    std::string Text;               // the command text: the window's path, or the silent command
    std::vector<std::string> Paths; // files and folders named behind the options
    bool ToP4 = false;              // --to p4
    bool Copy = false;              // --copy
    bool Channels = false;          // --channels: Yes to the question about morphs and poses
    bool Json = false;              // --json
    std::string Figure;             // --figure NAME: the figure of a multi-figure file
    std::string Error;              // a usage error: the help follows it and the status is 2
};

CommandOptions ParseCommandLine(int argc, char **argv);

// The usage text, made from the option table.
std::string HelpText();
// "Gelvane " and the program's version.
std::string VersionText();

// Runs every mode but the window, before any window system exists; the exit status.
int RunWithoutWindow(const CommandOptions &options);

} // namespace gelvane
