#pragma once
// The start of the program once the settings are loaded, for the window and the
// command line alike.
#include "core/app/OpenCommands.h"

#include <string>

namespace gelvane {

class Session;

// A fresh session: flags cleared, the model's lists empty, the format and line-end
// options and the Run Poser entry taken from the settings.
void PrepareSession(Session &session);

// PrepareSession and the template list, then the command text: a path of a known kind opens through the Open
// command of its kind without a dialog (a character through figure selection, which
// `choose` shows). An unknown kind opens nothing and leaves CommandLineOpen set.
void StartUp(Session &session, const std::string &commandText, const FigureChooser &choose);

} // namespace gelvane
