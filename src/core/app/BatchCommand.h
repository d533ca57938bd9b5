#pragma once
// The batch converter without a window, for scripts and servers: the same open and
// the same operations as the batch window, one line a file instead of boxes, and a
// failed file doesn't stop the others.
#include <iosfwd>
#include <string>
#include <vector>

namespace gelvane {

class Session;
struct CommandOptions;

// The files of a run: each file as given, each folder walked with its subfolders for
// .pz2 .cm2 .fc2 .hd2 and .lt2 files (any case), in name order; each path once. Paths
// that don't exist go to `missing`.
std::vector<std::string> CollectBatchFiles(const std::vector<std::string> &paths, std::vector<std::string> &missing);

struct BatchTotals {
    int Converted = 0;
    int Failed = 0;
    int NotDone = 0; // left behind an interruption
    bool Interrupted = false;
};

// Runs the row operation `operation` over `files` in BatchMode and prints one line a
// file to `out`. Stops between two files once the progress reads "Cancelling..."
// (on the console: after a Ctrl-C).
BatchTotals RunBatchFiles(Session &session, const std::vector<std::string> &files, const std::string &operation,
                          std::ostream &out);

// "gelvane --batch": the settings, the console, Ctrl-C, the files, the run and its
// summary. The exit status: 0 when every file converted, 1 when any failed, 2 when there
// was nothing to convert, 130 after Ctrl-C.
int RunBatchCommand(const CommandOptions &options);

} // namespace gelvane
