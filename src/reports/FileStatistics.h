#pragma once
// Counts of the open file, computed after every open.
#include "model/Session.h"

namespace gelvane {

void ComputeFileStatistics(Session &session);

} // namespace gelvane
