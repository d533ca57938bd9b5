#pragma once
// The two save commands of the main window, as core operations on the session.
#include "core/model/Session.h"

namespace gelvane {

// Save: writes the pose in place, to FileName, with the current options. Every
// failure is swallowed without a message; the previous file stays as it was.
void mnuSave_Click(Session &session);

// Save as: asks for the target, writes the pose there, then makes it the file
// of the window (FileName, LastSaveFolder, caption, Save enabled). A cancel or
// a failure changes none of these and shows nothing.
void mnuSaveAs_Click(Session &session);

} // namespace gelvane
