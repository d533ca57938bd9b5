#pragma once
// The morph and pose page without its widgets.
#include "core/model/Session.h"

namespace gelvane {

// A click on row `row` (0-based) of the actor list: that actor is the current one and
// the dial list shows its channels.
void lstActors_Click(Session &session, int row);

} // namespace gelvane
