#pragma once
// The "material" blocks of one material owner, in Poser 4 form, with the shader
// tree behind the classic lines when the Poser 5 format is chosen.
#include "core/model/Session.h"
#include "core/writer/LineWriter.h"

namespace gelvane {

// Writes every material of Figures[figureIndex] except those marked Omit; the
// caller writes the braces around them. A strength text that isn't a number
// (read only when its flag is set) fails with "Type mismatch" (13).
void WriteMaterialBlocks(const Session &session, int figureIndex, LineWriter &out);

} // namespace gelvane
