#pragma once
// Runs a program as a script would, with GELVANE_HOME the test home.
#include "support/TestHome.h"

#include <string>
#include <vector>

namespace gelvane::test {

struct RunResult {
    int status = -1; // the exit status, or 128 + the signal that ended it
    std::string output, errors;
};

// `args[0]` is the program's path; standard output and error are captured.
RunResult RunProgram(const TestHome &home, const std::vector<std::string> &args);

#ifdef GELVANE_EXECUTABLE
// The built program with `args`.
inline RunResult RunGelvane(const TestHome &home, std::vector<std::string> args) {
    args.insert(args.begin(), GELVANE_EXECUTABLE);
    return RunProgram(home, args);
}
#endif

} // namespace gelvane::test
