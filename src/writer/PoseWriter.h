#pragma once
// Writing the whole model as a MAT pose file.
#include "model/Session.h"

namespace gelvane {

// Writes the pose to session.OutputPath (or the command line's output path when
// that is empty). Failures pass to the caller; the previous file stays intact.
void WritePoseFile(Session &session);

} // namespace gelvane
