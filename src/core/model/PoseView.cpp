#include "core/model/PoseView.h"

namespace gelvane {

void ClearChannelLists(PoseView &pose) {
    pose.lstActors.clear();
    pose.lstDials.clear();
    pose.lstActorsCurrentRow = 0;
    pose.lstDialsCurrentRow = 0;
}

void EnableChannelControls(PoseView &pose, bool enabled) {
    for (PropertyRow &row : pose.ActorProperty) {
        row.BoxEnabled = enabled;
        row.ValueEnabled = enabled;
        row.ApplyEnabled = enabled;
    }
    for (PropertyRow &row : pose.DialProperty) {
        row.BoxEnabled = enabled;
        row.ValueEnabled = enabled;
        row.ApplyEnabled = enabled;
    }
    pose.chkDelChannelsEnabled = enabled;
    pose.cmdDelChannelsEnabled = enabled;
    pose.cmdCheckAllEnabled = enabled;
}

void EnableChannelPage(PoseView &pose, bool on, bool thighLengthDisabled) {
    pose.lstActorsEnabled = on;
    pose.lstDialsEnabled = on;
    pose.cmdSelectAllActorsEnabled = on;
    pose.cmdSelectAllDialsEnabled = on;
    pose.DialProperty[0].ValueEnabled = on;
    pose.DialProperty[0].ApplyEnabled = on;
    pose.chkDisableThighLengthEnabled = on;
    pose.cmdZerAllEnabled = on;
    pose.cmdCreateDialEnabled = on;
    pose.txtThighLengthEnabled = !thighLengthDisabled && on;
}

void ResetChannelPage(PoseView &pose) {
    ClearChannelLists(pose);
    EnableChannelPage(pose, false, true);
    EnableChannelControls(pose, false);
    pose.cmdDeleteActorsEnabled = false;
    pose.cmdDeleteDialsEnabled = false;
    pose.txtDialProperties[0].clear();
}

void ShowLoadedChannelPage(PoseView &pose, bool thighLengthDisabled) {
    for (ListRow &row : pose.lstActors)
        row.Selected = false;
    for (ListRow &row : pose.lstDials)
        row.Selected = false;
    pose.lstActorsCurrentRow = pose.lstActors.empty() ? 0 : 1;
    pose.lstDialsCurrentRow = pose.lstDials.empty() ? 0 : 1;
    pose.CurrentActor = 1;
    pose.CurrentDial = 1;
    EnableChannelPage(pose, true, thighLengthDisabled);
    EnableChannelControls(pose, true);
    pose.cmdDeleteActorsEnabled = true;
    pose.cmdDeleteDialsEnabled = true;
}

} // namespace gelvane
