#pragma once
// What the main window's own controls do to the session, without any widget: the
// save boxes, the thigh length box, the batch converter's and the closing question.
// The window calls these and then redraws itself from the session.
#include <string>

namespace gelvane {

class Session;

// The check box "Don't save materials" now reads `checked`. Returns false when
// the change was refused (both boxes would be checked) and the box went back.
bool chkNoMaterialData_Click(Session &session, bool checked);
// The check box "Don't save morphs or poses" now reads `checked`; refused like the one above.
bool chkChannels_Click(Session &session, bool checked);
// Every change of the thigh length box, typed or set: the corrected text goes
// into Options.txtThighLength (a fraction from 0 to 1, else "0").
void txtThighLength_Change(Session &session, const std::string &text);

// True when something is loaded that a save would hold (not both boxes checked).
bool SomethingToSave(const Session &session);
// Closing asks "Do you want to save before exiting?" only with unsaved changes.
bool NeedsSaveQuestion(const Session &session);
// On Yes at closing: pose-like names are saved over, anything else goes through Save as.
bool CloseSavesUnderSameName(const Session &session);

// The batch converter's entry: with something to save, asks whether to leave it; true
// when the converter may open.
bool BatchConvertMayStart(Session &session);
// Closing the main window: asks to save when NeedsSaveQuestion, saves on Yes (under the
// same name or through Save as); false when the user cancelled and the window stays.
bool QueryClose(Session &session);

inline constexpr const char *kBothDisabledMessage = "Both morph and pose data and material data cannot be disabled";
inline constexpr const char *kSaveBeforeExiting = "Do you want to save before exiting?";
inline constexpr const char *kBatchQuestion =
    "Are you sure you want to switch to the batch conversion form\r\nand lose any unsaved work?";

} // namespace gelvane
