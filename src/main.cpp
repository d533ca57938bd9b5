#include "core/app/CommandLine.h"
#include "core/model/CommandText.h"

#ifdef GELVANE_WITH_GUI
#include "gui/GuiMain.h"
#endif

#include <iostream>

int main(int argc, char **argv) {
    const std::string commandText = gelvane::CommandTextOf(argc, argv);
    // The silent conversion runs before any window system exists.
    if (gelvane::IsSilentCommand(commandText))
        return gelvane::RunSilentConversion(commandText);
#ifdef GELVANE_WITH_GUI
    return gelvane::RunGui(argc, argv, commandText);
#else
    std::cerr << "This build has no window; use -s PATH\n";
    return 2;
#endif
}
