#pragma once
// Counts of the open file, computed after every open.
#include "core/model/Session.h"

namespace gelvane {

// Rebuilds session.FileStatistics from the model and the object list: objects and
// their materials, actors with their channels by kind, and the distinct maps.
void ComputeFileStatistics(Session &session);

} // namespace gelvane
