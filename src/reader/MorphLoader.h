#pragma once
// Morph and pose channels of figure-like files, figure selection, and the Open menu commands.
#include "model/Session.h"

namespace gelvane {

// Loads the channels of the open character, prop or hair file (deltas removed first).
void LoadMorphPoseData(Session &session);
// The Open menu command of a kind (0 CR2 ... 7 LT2): open, then the channel
// question where the kind has one, statistics and the map reference check.
void OpenCommand(Session &session, int kind, bool withProps = false);

} // namespace gelvane
