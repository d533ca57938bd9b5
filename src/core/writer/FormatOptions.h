#pragma once
// The output format options and the version box, which decide the "number "
// line and whether shader trees are written.
#include "core/model/Session.h"

#include <string_view>

namespace gelvane {

// A change of the version box TXT(0): OutputVersion becomes the number at the
// start of the text printed back ("5.0" gives "5"), and the file counts as changed.
// A number beyond a 64-bit float fails with "Overflow" (6).
void SetVersionText(Session &session, std::string_view text);

// Selecting optPoserFormat(Index): 0 is Poser 4 / Pro Pack, any other Poser 5.
// Puts the version number of the chosen format into the version box when the
// matching setting asks for it; otherwise the box keeps its text.
void optPoserFormat_Click(Session &session, int Index);

} // namespace gelvane
