#pragma once
// Reading one material block into the model, and the materials of a body part's
// customMaterial block. Keywords carry their trailing blank ("KdColor ").
#include "model/Session.h"

#include <string_view>

namespace gelvane {

// Each lookup sets session.KeywordMissing. Failures (a value line without a line
// end, a colour line with too few blanks, a 16-bit overflow) go to the caller.
void ReadColor(Session &session, std::string_view block, std::string_view keyword, int figureIndex, int materialIndex);
int16_t ReadNumber(Session &session, std::string_view block, std::string_view keyword);
std::string ReadText(Session &session, std::string_view block, std::string_view keyword);

// Fills Figures[figureIndex].Materials[materialIndex] from `block`; the element
// exists, its Name is set by the caller and its flags are False.
void ParseMaterial(Session &session, std::string_view block, int figureIndex, int materialIndex);

// The count of a customMaterial line, read from the (at most 20) characters that
// begin with the word.
int16_t CustomMaterialCount(std::string_view from);

// Appends one Figure with the materials of the first customMaterial of `text`;
// the caller names it. A count of 0 is the failure "Subscript out of range".
void ReadCustomMaterials(Session &session, std::string_view text);

} // namespace gelvane
