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

} // namespace gelvane::test
