#include "core/channels/PosePageState.h"

namespace gelvane {

void lstActors_Click(Session &session, int row) {
    session.Pose.lstActorsCurrentRow = row + 1;
    session.Pose.CurrentActor = static_cast<int16_t>(row + 1);
    FillDialList(session, row);
}

} // namespace gelvane
