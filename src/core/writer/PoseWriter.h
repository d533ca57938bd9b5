#pragma once
// Writing the whole model as a MAT pose file.
#include "core/model/Session.h"
#include "core/writer/LineWriter.h"

namespace gelvane {

// Writes the pose to session.OutputPath (or, when that is blank, to the shared
// dialog's file name, where the command line leaves its output path). Failures
// pass to the caller; the previous file stays intact and no temporary file is
// left. On success the file kind becomes PZ2 and FileModified false.
void WritePoseFile(Session &session);

// The pose from its first "{" to its last "}" into `out`, whose line end the
// caller chose. Renames "prop figurehair..." entries and "figurehair" actors
// in the model to "prop figureHair" and "figureHair", as the file holds them.
void WritePose(Session &session, LineWriter &out);

// Index of the first object list row up to the last Figure that begins with
// "actor ", or -1.
int FirstActorEntry(const Session &session);

} // namespace gelvane
