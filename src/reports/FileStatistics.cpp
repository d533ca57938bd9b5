#include "reports/FileStatistics.h"

namespace gelvane {

void ComputeFileStatistics(Session &) {}

} // namespace gelvane
