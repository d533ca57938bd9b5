#pragma once
// The batch converter: a list of pose files, each with one of four operations, driven
// through the ordinary open and the ordinary writer one after the other. It holds no
// conversion of its own: open, choose the format, save.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

class Session;
struct Settings;

// The operations of a row, as its second column shows them.
inline constexpr const char *kConvertIntoP5 = "Convert into P5 format";
inline constexpr const char *kConvertIntoP4 = "Convert into P4 format";
inline constexpr const char *kCopyInP5 = "Save a copy in P5 format";
inline constexpr const char *kCopyInP4 = "Save a copy in P4 format";

inline constexpr const char *kBatchSuccess = "Batch operations completed successfully.";
inline constexpr const char *kPartialTitle = "Partial MAT exclamation";

struct BatchRow {
    std::string Path; // the key and the text: the file's full path
    std::string Operation;
    bool Selected = false;
};

// frmBatchConverter's own state.
struct BatchConverter {
    std::vector<BatchRow> ListView1;
    int Option = 1;               // the selected option button, Option1 to Option4
    bool ControlsEnabled = false; // Command2, Command3, Command4 and Option1 to Option4
    std::string LastBatchFolder;  // the folder of the last files added
    std::string DialogFileName;   // CommonDialog1's file name: the last answer of its dialog
    std::string DialogInitialDir; // CommonDialog1's folder, kept between its uses
};

// The window as it loads: an empty list, the dialog in Poser's folder.
BatchConverter LoadBatchConverter(const Settings &settings);

// Command1, "Add file(s)...": the multi-select dialog, then a row for each chosen path.
// Adding stops at a path already in the list, with the duplicate box.
void AddFiles(Session &session, BatchConverter &batch);
// Files dropped on the list: a row for each path as it is. A duplicate shows its box
// and stops adding; the controls are enabled when the list holds any row.
void DropFiles(Session &session, BatchConverter &batch, const std::vector<std::string> &paths);
// Command2: removes the selected rows; an empty list disables the controls.
void RemoveSelected(BatchConverter &batch);
// Command3.
void SelectAll(BatchConverter &batch);
// Option1 to Option4 (`option` 1..4): the button's operation goes on every selected row.
void OptionClick(BatchConverter &batch, int option);

// How a run ended.
enum class BatchEnd {
    Completed,     // every row done, the success box shown, then the closing state
    Stopped,       // Yes to the partial question on the last row, or Esc: closing state, no box
    Aborted,       // a row failed: the error box; rows behind it untouched
    OpenCancelled, // a row's open was cancelled: ended as an abort, without its box
};

// Command4, "Run Batch": every row from the first to the last, with the progress window.
BatchEnd RunBatch(Session &session, BatchConverter &batch);

// True when any material of any owner leaves one of its eighteen properties unstated.
bool HasPartialMaterials(const Session &session);
// The question about partial materials for `fileName`; the last row asks to cancel.
std::string PartialQuestion(std::string_view fileName, bool lastRow);

// Where a copy goes: the path with `suffix` ("_P5." or "_P4.") in front of its
// three-letter extension. A path whose fourth-last character isn't a point keeps those
// four characters and loses the one in front of them. Fails (5) on a path shorter than five.
std::string BatchCopyPath(std::string_view path, std::string_view suffix);

// One row's open: the kind is PZ2 whatever the extension, and the path is taken
// without a dialog.
void OpenBatchRow(Session &session, const std::string &path);
// One row's operation on the open file. Converting writes in place: a failure of that
// save is passed over and gives nothing. A copy is written beside the file and makes it
// the window's file; its failure, and a row that is not a pose-like file to convert in
// place, throw Failure. `dialogFileName` is CommonDialog1's name, whose folder becomes
// LastSaveFolder. Returns the path written, nothing for an unknown operation.
std::optional<std::string> RunBatchOperation(Session &session, const BatchRow &row, std::string_view dialogFileName);
// The main window after a run: nothing loaded, nothing to save, until the next open.
void EnterBatchClosingState(Session &session);

} // namespace gelvane
