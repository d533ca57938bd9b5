#include "core/channels/ChannelDeletion.h"

#include "core/channels/ChannelProperties.h"
#include "core/channels/PosePageState.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"

#include <algorithm>

namespace gelvane {
namespace {

const std::vector<std::string_view> kTranslate = {"translateX", "translateY", "translateZ"};

// The boxes' first index of each group, and one behind the last.
constexpr int kGroupStart[4] = {0, 10, 15, kChannelBoxCount};

void FollowChannelBoxes(PoseView &pose) {
    pose.cmdDelChannelsEnabled = pose.cmdDeleteActorsEnabled && AnyChannelBoxChecked(pose);
}

} // namespace

const std::array<ChannelBox, kChannelBoxCount> &ChannelBoxes() {
    static const std::array<ChannelBox, kChannelBoxCount> boxes = {{
        {"Rotate", 0, {"rotateX", "rotateY", "rotateZ"}},
        {"Translate", 0, kTranslate},
        {"Scale",
         0,
         {"propagatingScale", "propagatingScaleX", "propagatingScaleY", "propagatingScaleZ", "smoothScale",
          "smoothScaleX", "smoothScaleY", "smoothScaleZ", "scale", "scaleX", "scaleY", "scaleZ"}},
        {"Morph", 0, {"geomChan", "targetGeom", "handSpread", "thumbGrasp", "handGrasp"}},
        {"Null", 0, {"valueParm"}},
        {"Translate", 0, kTranslate},
        {"Offset", 0, {"zOffsetA", "yOffsetA", "xOffsetA", "xOffsetB", "yOffsetB", "zOffsetB"}},
        {"Twist", 0, {"twistX", "twistY", "twistZ"}},
        {"Joint", 0, {"jointX", "jointY", "jointZ"}},
        {"Taper", 0, {"taperX", "taperY", "taperZ"}},
        {"Focal", 1, {"focal"}},
        {"Hither", 1, {"hither"}},
        {"CamAutoScale", 1, {"camAutoScale"}},
        {"CamAutoCenter", 1, {"camAutoCenterX", "camAutoCenterY", "camAutoCenterZ"}},
        {"CamAutoFocal", 1, {"camAutoFocal"}},
        {"LiteFalloff", 2, {"liteFalloffStart", "liteFalloffEnd"}},
        {"LiteAtten", 2, {"liteAttenStart", "liteAttenEnd"}},
        {"DepthMapStrength", 2, {"depthMapStrength"}},
        {"DepthMapSize", 2, {"depthMapSize"}},
        {"KdIntensity", 2, {"kdIntensity"}},
        {"KdRed", 2, {"kdRed"}},
        {"KdGreen", 2, {"kdGreen"}},
        {"KdBlue", 2, {"kdBlue"}},
    }};
    return boxes;
}

bool AnyChannelBoxChecked(const PoseView &pose) {
    return std::find(pose.chkDelChannels.begin(), pose.chkDelChannels.end(), true) != pose.chkDelChannels.end();
}

std::vector<std::string> ChannelTypesToDelete(const PoseView &pose) {
    std::vector<std::string> types;
    for (size_t i = 0; i < pose.chkDelChannels.size(); ++i)
        if (pose.chkDelChannels[i])
            for (std::string_view type : ChannelBoxes()[i].Types)
                types.emplace_back(type);
    return types;
}

void cmdCheckAll_Click(Session &session, int index) {
    if (index < 0 || index > 2)
        return;
    PoseView &pose = session.Pose;
    std::string &caption = pose.cmdCheckAll[static_cast<size_t>(index)];
    const bool check = caption == kCheckAll;
    for (int i = kGroupStart[index]; i < kGroupStart[index + 1]; ++i)
        pose.chkDelChannels[static_cast<size_t>(i)] = check;
    caption = check ? kCheckNone : kCheckAll;
    FollowChannelBoxes(pose);
}

void chkDelChannels_Click(Session &session, int index, bool checked) {
    if (index < 0 || index >= kChannelBoxCount)
        return;
    session.Pose.chkDelChannels[static_cast<size_t>(index)] = checked;
    FollowChannelBoxes(session.Pose);
}

void cmdCreateDial_Click(Session &session) {
    const std::optional<std::string> name = session.ui().InputBox(kNewMorphPrompt, kProgramTitle, "");
    if (!name || Trim(*name).empty())
        return;
    PoseView &pose = session.Pose;
    if (pose.lstActors.empty())
        return;
    std::string type;
    for (size_t row = 0; row < pose.lstActors.size() && row < session.Actors.size(); ++row) {
        if (!pose.lstActors[row].Selected)
            continue;
        Actor &actor = session.Actors[row];
        if (!IsEmptyList(actor.Channels))
            actor.Channels.emplace_back();
        type = StartsWith(actor.Name, "BODY") ? "valueParm" : "targetGeom";
        Channel &channel = actor.Channels.back();
        channel = Channel{};
        channel.Name = *name;
        channel.Type = type;
    }
    // One row, whichever actors got the dial: it stands for the current actor's.
    pose.lstDials.push_back({*name, type, false});
    session.FileModified = true;
}

void cmdDeleteDials_Click(Session &session) {
    PoseView &pose = session.Pose;
    Actor *actor = CurrentActorOf(session);
    if (pose.lstDials.empty() || !actor)
        return;
    const int actorIndex = pose.CurrentActor - 1;
    if (SelectedCount(pose.lstDials) == static_cast<int>(pose.lstDials.size())) {
        if (IsNullActor(session, actorIndex)) {
            for (size_t i = 0; i < pose.lstActors.size(); ++i)
                pose.lstActors[i].Selected = static_cast<int>(i) == actorIndex;
            cmdDeleteActors_Click(session);
        } else {
            pose.lstDials.clear();
            ResetList(actor->Channels);
            session.FileModified = true;
        }
        return;
    }

    std::vector<Channel> kept;
    for (size_t i = 0; i < actor->Channels.size(); ++i)
        if (i >= pose.lstDials.size() || !pose.lstDials[i].Selected)
            kept.push_back(std::move(actor->Channels[i]));
    actor->Channels = std::move(kept);
    if (actor->Channels.empty())
        ResetList(actor->Channels);

    pose.lstDials[0].Selected = true;
    lstDials_ItemClick(session, 1);
    FillDialList(session, actorIndex);
    if (!pose.lstDials.empty())
        pose.lstDials[0].Selected = true;
    session.FileModified = true;
}

void cmdDeleteActors_Click(Session &session) {
    PoseView &pose = session.Pose;
    const int selected = SelectedCount(pose.lstActors);
    if (pose.lstActors.empty() || selected == static_cast<int>(pose.lstActors.size())) {
        session.ClearActors();
        session.Options.chkChannels = true;
        session.Options.chkChannelsEnabled = false;
        ClearChannelLists(pose);
        if (session.Options.chkNoMaterialData) {
            session.View.mnuSaveEnabled = false;
            session.View.mnuSaveAsEnabled = false;
        }
        // The box that now reads checked switches the page off, as a click on it would.
        ShowChannelsBox(session);
        session.FileModified = true;
        return;
    }

    std::vector<Actor> actors;
    std::vector<ListRow> rows;
    for (size_t i = 0; i < session.Actors.size(); ++i)
        if (i >= pose.lstActors.size() || !pose.lstActors[i].Selected)
            actors.push_back(std::move(session.Actors[i]));
    for (ListRow &row : pose.lstActors)
        if (!row.Selected)
            rows.push_back(std::move(row));
    session.Actors = std::move(actors);
    if (session.Actors.empty())
        session.ClearActors();
    pose.lstActors = std::move(rows);

    pose.lstActors[0].Selected = true;
    lstActors_ItemClick(session, 1);
    session.FileModified = true;
}

void cmdDelChannels_Click(Session &session) {
    PoseView &pose = session.Pose;
    const std::vector<std::string> types = ChannelTypesToDelete(pose);
    std::vector<bool> gone(session.Actors.size());
    int deleted = 0;
    bool any = false;

    for (size_t row = 0; row < pose.lstActors.size(); ++row) {
        if (!pose.lstActors[row].Selected)
            continue;
        // Held for the whole command: the dial clicks within it must leave the other
        // selected actors selected, or the loop would stop after the first one.
        pose.AutoSelectingDial = true;
        lstActors_ItemClick(session, static_cast<int>(row) + 1);
        pose.AutoSelectingDial = true;

        for (size_t dial = 0; dial < pose.lstDials.size(); ++dial) {
            const Channel *channel = ChannelOfDialRow(session, static_cast<int>(dial) + 1);
            const bool match = channel && std::find(types.begin(), types.end(), channel->Type) != types.end();
            pose.lstDials[dial].Selected = match;
            if (match) {
                any = true;
                ++deleted;
            }
        }
        pose.AutoSelectingActor = true;
        const int selectedDials = SelectedCount(pose.lstDials);
        if (selectedDials > 0 && row < gone.size()) {
            gone[row] = selectedDials == static_cast<int>(pose.lstDials.size());
            if (!gone[row])
                cmdDeleteDials_Click(session);
        }
        pose.AutoSelectingActor = false;
    }

    if (!any) {
        session.ui().MessageBox(kNoChannelsDeleted, kProgramTitle, MsgIcon::Information, MsgButtons::OK);
    } else {
        for (size_t i = 0; i < session.Actors.size() && i < pose.lstActors.size(); ++i) {
            if (gone[i] && IsNullActor(session, static_cast<int>(i))) {
                pose.lstActors[i].Selected = true;
            } else {
                if (gone[i])
                    ResetList(session.Actors[i].Channels);
                pose.lstActors[i].Selected = false;
            }
        }
        const int actorsDeleted = SelectedCount(pose.lstActors);
        if (actorsDeleted > 0)
            cmdDeleteActors_Click(session);
        if (!pose.lstActors.empty()) {
            pose.lstActors[0].Selected = true;
            lstActors_ItemClick(session, 1);
        }
        session.FileModified = true;
        session.ui().MessageBox(std::to_string(deleted) + " channels and\r\n" + std::to_string(actorsDeleted) +
                                    " actors were deleted.",
                                kProgramTitle, MsgIcon::Information, MsgButtons::OK);
    }
    FollowChannelBoxes(pose);
    pose.AutoSelectingDial = false;
}

} // namespace gelvane
