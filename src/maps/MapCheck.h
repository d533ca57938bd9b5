#pragma once
// Checking and repairing the map references of the open file.
#include "model/Session.h"

namespace gelvane {

// Runs after every open when AutoCorrect is on: repairs each material's references.
void CheckMapReferences(Session &session);

} // namespace gelvane
