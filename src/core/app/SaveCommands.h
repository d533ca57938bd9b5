#pragma once
// The save commands of the main window (Save, Save as, the .mtl export), end to end:
// the dialog, the writer, and what the window shows afterwards.
namespace gelvane {

class Session;

enum class SaveResult { Saved, Cancelled, Failed };

// Save: writes the pose in place, to FileName, with the current options. After a
// failure the previous file stays as it was; a file that can't be saved (a full disk,
// no permission) is said in an exclamation box, other failures show nothing.
SaveResult mnuSave_Click(Session &session);

// Save as: asks for the target, writes the pose there, then makes it the file of the
// window (FileName, LastSaveFolder, caption, Save enabled). A cancel or a failure
// changes none of these; failures are shown as Save shows them.
SaveResult mnuSaveAs_Click(Session &session);

// Asks for the target file and writes the materials of every owner there as a
// Wavefront material library, showing failures as Save does; the save dialog's
// file name points at the open file again afterwards in every case.
SaveResult mnuExportMTL_Click(Session &session);

} // namespace gelvane
