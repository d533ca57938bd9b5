#pragma once
// Handing things to the desktop: documents to their program, Poser to a new process.
#include <functional>
#include <string>
#include <vector>

namespace gelvane {

class Interaction;

// Starts `argv` (argv[0] looked up on PATH) as a process of its own, without waiting
// and without leaving a zombie. False when it couldn't be started; `error` then holds
// the system's error number.
bool StartDetached(const std::vector<std::string> &argv, int *error = nullptr);

// How a process is started; tests replace it.
using ProcessStarter = std::function<bool(const std::vector<std::string> &argv, int *error)>;

// The first executable called `name` on PATH, or the empty text.
std::string FindOnPath(const std::string &name);

// Asks the desktop to open `target` (a file or an address) with its program. The
// result isn't examined: a missing file gives no message.
void OpenDocument(const std::string &target, const ProcessStarter &start = StartDetached);

// The path of one of the program's documents: beside the executable, else in the
// installed package's documents folder (../share/doc/gelvane), else in the source
// tree's docs folder of a build that runs where it was built. Beside the executable
// when none has it.
std::string DocumentPath(const std::string &name);

// The Help menu's documents: the licence, the version history and the manual.
void OpenLicense(const ProcessStarter &start = StartDetached);
void OpenVersionHistory(const ProcessStarter &start = StartDetached);
void OpenManual(const ProcessStarter &start = StartDetached);

// Starts Poser.exe of `poserFolder` through wine and doesn't wait. Without the file,
// or without wine to run it, says "Poser executable could not be found in" + the folder.
void RunPoser(const std::string &poserFolder, Interaction &ui, const ProcessStarter &start = StartDetached);

} // namespace gelvane
