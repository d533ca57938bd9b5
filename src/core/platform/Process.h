#pragma once
// Running a helper program of the system and waiting for it.
#include <string>
#include <vector>

namespace gelvane {

// Runs `argv` (argv[0] looked up on PATH) with no input and waits for it to end.
// Its standard output goes to `output` when given; its error output is dropped.
// Returns the exit status, or -1 when the program couldn't be started.
int RunProcess(const std::vector<std::string> &argv, std::string *output = nullptr);

} // namespace gelvane
