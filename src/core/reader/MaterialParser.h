#pragma once
// Reading one material block of a Poser file into a Material of the model, and the
// customMaterial blocks of body parts. Keywords carry their trailing blank; searches
// are case-sensitive and take the first occurrence in the block. Failures (a value
// line without a line end behind it, a colour component that overflows 16 bits)
// pass to the caller.
#include "core/model/Session.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace gelvane {

// A number line of a block, in the unit the model keeps; 0 when the keyword is missing.
int16_t ReadNumber(Session &session, std::string_view block, std::string_view keyword);
// The rest of a keyword's line without double quotes and control characters; empty when missing.
std::string ReadText(Session &session, std::string_view block, std::string_view keyword);
// Stores the colour of "KdColor ", "KaColor ", "KsColor " or "ReflectionColor " in the material.
void ReadColor(Session &session, std::string_view block, std::string_view keyword, int figureIndex, int materialIndex);
// Fills Figures[figureIndex].Materials[materialIndex] (which must exist, flags False) from `block`.
void ParseMaterial(Session &session, std::string_view block, int figureIndex, int materialIndex);
// Appends one Figure holding the materials of the first customMaterial of `text`; the
// caller names it.
void ReadCustomMaterials(Session &session, std::string_view text);

} // namespace gelvane
