#include "app/CommandLine.h"

#include "model/Text.h"

namespace gelvane {

std::string CommandTextOf(int argc, char **argv) {
    std::string text;
    for (int i = 1; i < argc; ++i) {
        if (i > 1)
            text += ' ';
        text += argv[i];
    }
    return text;
}

bool IsSilentCommand(const std::string &commandText) {
    return StartsWith(LCase(Trim(commandText)), "-s ");
}

int RunSilentConversion(const std::string &) {
    return 1;
}

} // namespace gelvane
