#pragma once
// The materials as a Wavefront material library (.mtl).
#include "core/model/Session.h"
#include "core/writer/LineWriter.h"

namespace gelvane {

// The entries of all materials of Figures[figureIndex] that aren't omitted:
// name, highlight, the three colours and the texture and bump map file names.
void WriteMtlMaterials(const Session &session, int figureIndex, LineWriter &out);

} // namespace gelvane
