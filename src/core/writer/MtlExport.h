#pragma once
// Export of the materials as a Wavefront material library (.mtl).
#include "core/model/Session.h"
#include "core/writer/LineWriter.h"

namespace gelvane {

// Asks for the target file and writes the materials of every owner there.
// A cancel or a failure shows nothing; the save dialog's file name points at
// the open file again afterwards in every case.
void mnuExportMTL_Click(Session &session);

// The entries of all materials of Figures[figureIndex] that aren't omitted:
// name, highlight, the three colours and the texture and bump map file names.
void WriteMtlMaterials(const Session &session, int figureIndex, LineWriter &out);

} // namespace gelvane
