#pragma once
// The materials as a Wavefront material library (.mtl).
#include "core/model/Session.h"
#include "core/writer/LineWriter.h"

#include <string>

namespace gelvane {

// The entries of all materials of Figures[figureIndex] that aren't omitted:
// name, highlight, the three colours and the texture and bump map file names.
void WriteMtlMaterials(const Session &session, int figureIndex, LineWriter &out);

// The whole library: the entries of every owner, in order, lines ended by "\r\n" whatever
// the pose option says, written atomically to `path`. Failures throw; an earlier file of
// the name then stays as it was.
void WriteMtlFile(const Session &session, const std::string &path);

} // namespace gelvane
