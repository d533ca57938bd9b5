#include "core/app/CommandOptions.h"

#ifdef GELVANE_WITH_GUI
#include "gui/GuiMain.h"
#endif

int main(int argc, char **argv) {
    const gelvane::CommandOptions options = gelvane::ParseCommandLine(argc, argv);
    // Everything but the window runs before any window system exists.
    if (options.Mode != gelvane::RunMode::Window)
        return gelvane::RunWithoutWindow(options);
#ifdef GELVANE_WITH_GUI
    return gelvane::RunGui(argc, argv, options.Text);
#else
    return gelvane::RunWithoutWindow(options);
#endif
}
