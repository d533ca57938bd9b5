#include "writer/PoseWriter.h"

namespace gelvane {

void WritePoseFile(Session &) {}

} // namespace gelvane
