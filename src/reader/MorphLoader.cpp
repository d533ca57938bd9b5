#include "reader/MorphLoader.h"

#include "reader/OpenFile.h"

namespace gelvane {

void LoadMorphPoseData(Session &) {}

void OpenCommand(Session &session, int kind, bool withProps) {
    session.PoserFileKind = static_cast<int16_t>(kind);
    session.MultiFigure = withProps;
    OpenFile(session);
}

} // namespace gelvane
