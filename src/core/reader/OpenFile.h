#pragma once
// Opening a Poser file: comment, version, owners of materials, their materials,
// and for pose-like kinds the channel section.
#include "core/model/Session.h"
#include "core/platform/Interaction.h"

#include <exception>
#include <string>
#include <string_view>

namespace gelvane {

// Opens the file named by the session's command text or dialog (or, when
// `suppliedText` isn't empty, that text instead of a file) as session.PoserFileKind.
// Failures are reported through the session's interaction and set OpenFailed.
void OpenFile(Session &session, std::string_view suppliedText = {});

// Adds a row to the figure/object list: position 0 or below puts non-actor rows in
// front of the first "actor " row; a position of 1 or more inserts at position - 1.
void AddFigureLine(Session &session, const std::string &line, int position = 0);

// The open dialog of a kind (0 CR2 ... 7 LT2): title, filter, default extension, flags,
// and the starting folder (the kind's last folder of this run over its setting).
FileDialogRequest OpenDialogRequest(const Session &session, int kind);

// The report of a failure of the open at `step`: the message "Error in the OpenFile
// function", and the window put into a state where nothing can be saved.
void ReportOpenFailure(Session &session, std::exception_ptr error, int step);

} // namespace gelvane
