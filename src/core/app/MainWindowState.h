#pragma once
// What the main window does to the session, without any widget: the window
// calls these and then redraws itself from the session. The figure-selection
// and page code can call them too (ResetMainWindow before a fresh open).
#include "core/model/Session.h"

#include <string>
#include <string_view>

namespace gelvane {

// The menu commands that open a file.
enum class OpenMenu {
    None,
    mnuOpenPZ2,
    mnuOpenCM2,
    mnuOpenFC2,
    mnuOpenHD2,
    mnuOpenLT2,
    mnuOpenCR2,
    mnuOpenCR2Props,
    mnuMultiFigure,
    mnuOpenPP2,
    mnuOpenHR2,
};

// The kind an Open command sets, and whether it reads props too (mnuOpenCR2Props).
int KindOfMenu(OpenMenu menu);

// Start-up: the command for a command text, judged by its last three letters
// once quotes and outer blanks are gone ("xcr2" counts as cr2). A character
// goes through figure selection, so "cr2" gives mnuMultiFigure.
OpenMenu MenuOfCommandText(std::string_view commandText);
// A dropped file: the last four characters, a leading "." removed, lowered.
OpenMenu MenuOfDroppedFile(std::string_view path);

// Prepares the session for opening a dropped file: CommandLineOpen set and the
// path in the shared dialog object. Returns the command to run; for a path of no
// known kind nothing changes and OpenMenu::None comes back.
OpenMenu BeginDrop(Session &session, const std::string &path);

// Puts the window state into "nothing loaded" and empties the model.
void ResetMainWindow(Session &session);
// Refills the material list from the object selected in the object list.
void ShowMaterialList(Session &session);
// Selecting row `row` of the object list; actor rows (behind the last Figure) have no materials.
void cmbFigures_Click(Session &session, int row);
// The check box "Don't save materials" now reads `checked`. Returns false when
// the change was refused (both boxes would be checked) and the box went back.
bool chkNoMaterialData_Click(Session &session, bool checked);
// The check box "Don't save morphs or poses" now reads `checked`; refused like the one above.
bool chkChannels_Click(Session &session, bool checked);
// Every change of the version box: OutputVersion is the number at its start.
void VersionText_Change(Session &session, const std::string &text);
// Every change of the thigh length box, typed or set: the corrected text goes
// into Options.txtThighLength (a fraction from 0 to 1, else "0").
void txtThighLength_Change(Session &session, const std::string &text);

// True when something is loaded that a save would hold (not both boxes checked).
bool SomethingToSave(const Session &session);
// Closing asks "Do you want to save before exiting?" only with unsaved changes.
bool NeedsSaveQuestion(const Session &session);
// On Yes at closing: pose-like names are saved over, anything else goes through Save as.
bool CloseSavesUnderSameName(const Session &session);
// The caption after an open or a save as.
std::string CaptionOf(std::string_view fileName);

inline constexpr const char *kBothDisabledMessage = "Both morph and pose data and material data cannot be disabled";
inline constexpr const char *kSaveBeforeExiting = "Do you want to save before exiting?";
inline constexpr const char *kBatchQuestion =
    "Are you sure you want to switch to the batch conversion form\r\nand lose any unsaved work?";

} // namespace gelvane
