#pragma once
// Creating a morph dial, and deleting dials, actors and whole families of channels by
// type from the selected actors.
#include "core/model/Session.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

// One box of the deletion by type: its caption, its group (0 common, 1 camera, 2
// light) and the exact channel types it stands for.
struct ChannelBox {
    const char *Caption;
    int Group;
    std::vector<std::string_view> Types;
};
// chkDelChannels(0..22), in index order.
const std::array<ChannelBox, kChannelBoxCount> &ChannelBoxes();
inline constexpr std::array<const char *, 3> kChannelGroupHeadings = {
    "Common channels:", "Camera channels:", "Light channels:"};

inline constexpr const char *kNewMorphPrompt = "Enter name for the new morph";
inline constexpr const char *kNoChannelsDeleted = "0 channels were deleted.";

bool AnyChannelBoxChecked(const PoseView &pose);
// The types of the checked boxes in index order, duplicates included.
std::vector<std::string> ChannelTypesToDelete(const PoseView &pose);

// cmdCheckAll(index): checks the group's boxes ("Check all") or clears them ("Check
// none"); the caption turns to the other one.
void cmdCheckAll_Click(Session &session, int index);
void chkDelChannels_Click(Session &session, int index, bool checked);

// Asks for a name and adds a dial of that name to every selected actor: "valueParm" on
// an actor whose name begins with "BODY", else "targetGeom". The dial list gets one row.
void cmdCreateDial_Click(Session &session);
// Deletes the selected dials of the current actor; with every dial selected, a null
// actor goes as a whole.
void cmdDeleteDials_Click(Session &session);
// Deletes the selected actors; deleting all of them switches morphs and poses off.
void cmdDeleteActors_Click(Session &session);
// Deletes the channels of the checked types from every selected actor, and the actors
// left with nothing, and tells how many of each went.
void cmdDelChannels_Click(Session &session);

} // namespace gelvane
