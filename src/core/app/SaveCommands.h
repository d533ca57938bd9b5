#pragma once
// The save commands of the main window (Save, Save as, the .mtl export), end to end:
// the dialog, the writer, and what the window shows afterwards.
namespace gelvane {

class Session;

enum class SaveResult { Saved, Cancelled, Failed };

// Save: writes the pose in place, to FileName, with the current options. A failure
// shows nothing; the previous file stays as it was.
SaveResult mnuSave_Click(Session &session);

// Save as: asks for the target, writes the pose there, then makes it the file of the
// window (FileName, LastSaveFolder, caption, Save enabled). A cancel or a failure
// changes none of these and shows nothing.
SaveResult mnuSaveAs_Click(Session &session);

// Asks for the target file and writes the materials of every owner there as a
// Wavefront material library. A cancel or a failure shows nothing; the save dialog's
// file name points at the open file again afterwards in every case.
SaveResult mnuExportMTL_Click(Session &session);

} // namespace gelvane
