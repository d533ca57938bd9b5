#include "maps/MapCheck.h"

namespace gelvane {

void CheckMapReferences(Session &) {}

} // namespace gelvane
