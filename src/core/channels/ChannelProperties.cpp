#include "core/channels/ChannelProperties.h"

#include "core/channels/ChannelDeletion.h"
#include "core/channels/PosePageState.h"
#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"

#include <vector>

namespace gelvane {
namespace {

template <class A> auto &ActorFlag(A &actor, int index) {
    switch (index) {
    case 0:
        return actor.NameEnabled;
    case 1:
        return actor.OnOffEnabled;
    case 2:
        return actor.HiddenEnabled;
    case 3:
        return actor.LockedEnabled;
    case 4:
        return actor.DoShadowEnabled;
    case 5:
        return actor.DepthMapSizeEnabled;
    default:
        return actor.LightOnEnabled;
    }
}

bool &ChannelFlag(Channel &channel, int index) {
    return index == 0 ? channel.ValueEnabled : index == 1 ? channel.NameEnabled : channel.HiddenEnabled;
}

// "0 or its flag is False": a stored value + 1 of 0 means the file had none.
bool Carries(int16_t stored, bool enabled) {
    return stored != 0 && enabled;
}

std::vector<int> SelectedRows(const std::vector<ListRow> &rows) {
    std::vector<int> selected;
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].Selected)
            selected.push_back(static_cast<int>(i) + 1);
    return selected;
}

std::vector<Actor *> SelectedActors(Session &session) {
    std::vector<Actor *> actors;
    for (int row : SelectedRows(session.Pose.lstActors))
        if (row <= static_cast<int>(session.Actors.size()))
            actors.push_back(&session.Actors[static_cast<size_t>(row - 1)]);
    return actors;
}

std::vector<Channel *> SelectedChannels(Session &session) {
    std::vector<Channel *> channels;
    for (int row : SelectedRows(session.Pose.lstDials))
        if (Channel *channel = ChannelOfDialRow(session, row))
            channels.push_back(channel);
    return channels;
}

// The combo box row + 1 that cmdApplyProperty(index) stores for indexes 1 to 4; the
// lightOn row names a box beyond the last one, which is a failure.
int16_t StoredRow(const PoseView &pose, int index) {
    if (index == 6)
        throw Failure(ErrControlArrayElement, "Control array element '5' doesn't exist");
    return static_cast<int16_t>(pose.cmbActorProperties[static_cast<size_t>(index - 1)] + 1);
}

} // namespace

bool IsNullChannel(const Session &session, int actorIndex, int channelIndex) {
    if (actorIndex < 0 || actorIndex >= static_cast<int>(session.Actors.size()))
        return false;
    const auto &channels = session.Actors[static_cast<size_t>(actorIndex)].Channels;
    if (channelIndex < 0 || channelIndex >= static_cast<int>(channels.size()))
        return false;
    const Channel &c = channels[static_cast<size_t>(channelIndex)];
    return (!c.NameEnabled || c.DisplayName.empty()) && !Carries(c.Hidden, c.HiddenEnabled) && !c.ValueEnabled;
}

bool IsNullActor(const Session &session, int actorIndex) {
    if (actorIndex < 0 || actorIndex >= static_cast<int>(session.Actors.size()))
        return false;
    const Actor &a = session.Actors[static_cast<size_t>(actorIndex)];
    return a.StorageOffset.empty() && a.DepthCamera.empty() && a.Port.empty() && a.CameraModel.empty() &&
           a.ObjFileGeom.empty() && a.GeomResource == 0 && a.LightType == 0 &&
           (a.DisplayName.empty() || !a.NameEnabled) && !Carries(a.OnOff, a.OnOffEnabled) &&
           !Carries(a.Hidden, a.HiddenEnabled) && !Carries(a.Locked, a.LockedEnabled) &&
           !Carries(a.DepthMapSize, a.DepthMapSizeEnabled) && !Carries(a.DoShadow, a.DoShadowEnabled) &&
           !Carries(a.LightOn, a.LightOnEnabled);
}

bool ActorPropertyEnabled(const Actor &actor, int index) {
    return index >= 0 && index < kActorPropertyCount && ActorFlag(actor, index);
}

std::optional<double> DialValueOf(std::string_view text) {
    double value = 0;
    try {
        value = NumberValue(text);
    } catch (const Failure &) {
        return std::nullopt;
    }
    // The text must read exactly as the value's short form, which has no "0" in front
    // of the point: ".5" and "-.5".
    std::string shortForm = NumberText(value);
    if (StartsWith(shortForm, "0."))
        shortForm.erase(0, 1);
    else if (StartsWith(shortForm, "-0."))
        shortForm.erase(1, 1);
    std::string typed(Trim(text));
    if (StartsWith(typed, "0."))
        typed.erase(0, 1);
    else if (StartsWith(typed, "-0."))
        typed.erase(1, 1);
    if (typed != shortForm || value < -10000 || value > 10000)
        return std::nullopt;
    return value;
}

void chkEnable_Click(Session &session, int index, bool checked) {
    if (index < 0 || index >= kActorPropertyCount || !session.EventsEnabled)
        return;
    PoseView &pose = session.Pose;
    PropertyRow &row = pose.ActorProperty[static_cast<size_t>(index)];
    row.Checked = checked;
    row.ValueEnabled = checked;
    row.LabelEnabled = checked;
    std::vector<bool> marks(pose.lstActors.size());
    bool any = false;
    for (int r : SelectedRows(pose.lstActors)) {
        const int actorIndex = r - 1;
        if (actorIndex >= static_cast<int>(session.Actors.size()))
            continue;
        Actor &actor = session.Actors[static_cast<size_t>(actorIndex)];
        ActorFlag(actor, index) = checked;
        session.FileModified = true;
        if (!checked && IsEmptyList(actor.Channels) && IsNullActor(session, actorIndex)) {
            marks[static_cast<size_t>(actorIndex)] = true;
            any = true;
        }
    }
    row.ApplyEnabled = checked;
    if (any) {
        for (size_t i = 0; i < pose.lstActors.size(); ++i)
            pose.lstActors[i].Selected = marks[i];
        cmdDeleteActors_Click(session);
    }
}

void chkEnableDial_Click(Session &session, int index, bool checked) {
    if (index < 0 || index >= kDialPropertyCount || !session.EventsEnabled)
        return;
    PoseView &pose = session.Pose;
    PropertyRow &row = pose.DialProperty[static_cast<size_t>(index)];
    row.Checked = checked;
    row.ValueEnabled = checked;
    row.LabelEnabled = checked;
    std::vector<bool> marks(pose.lstDials.size());
    bool any = false;
    for (int r : SelectedRows(pose.lstDials)) {
        Channel *channel = ChannelOfDialRow(session, r);
        if (!channel)
            continue;
        ChannelFlag(*channel, index) = checked;
        session.FileModified = true;
        if (!checked && IsNullChannel(session, pose.CurrentActor - 1, r - 1)) {
            marks[static_cast<size_t>(r - 1)] = true;
            any = true;
        }
    }
    row.ApplyEnabled = checked;
    if (any) {
        for (size_t i = 0; i < pose.lstDials.size(); ++i)
            pose.lstDials[i].Selected = marks[i];
        cmdDeleteDials_Click(session);
    }
}

void txtActorProperties_Change(Session &session, int index, const std::string &text) {
    if (index == 0 || index == 1)
        session.Pose.txtActorProperties[static_cast<size_t>(index)] = text;
}

void cmbActorProperties_Click(Session &session, int index, int row) {
    if (index >= 0 && index < static_cast<int>(session.Pose.cmbActorProperties.size()))
        session.Pose.cmbActorProperties[static_cast<size_t>(index)] = row;
}

void txtDialProperties_Change(Session &session, int index, const std::string &text) {
    if (index == 0 || index == 1)
        session.Pose.txtDialProperties[static_cast<size_t>(index)] = text;
}

void cmbDialProperties_Click(Session &session, int row) {
    session.Pose.cmbDialProperties = row;
}

void cmdApplyProperty_Click(Session &session, int index) {
    if (index < 0 || index >= kActorPropertyCount)
        return;
    const std::vector<Actor *> actors = SelectedActors(session);
    if (actors.empty())
        return;
    const PoseView &pose = session.Pose;
    int16_t stored = 0;
    try {
        if (index == 5)
            stored = ToInt16(NumberValue(pose.txtActorProperties[1]) + 1);
        else if (index != 0)
            stored = StoredRow(pose, index);
    } catch (const Failure &failure) {
        session.ui().MessageBox(failure.Description + ", error number " + std::to_string(failure.Number), kProgramTitle,
                                MsgIcon::Exclamation, MsgButtons::OK);
        return;
    }
    for (Actor *actor : actors) {
        switch (index) {
        case 0:
            actor->DisplayName = pose.txtActorProperties[0];
            break;
        case 1:
            actor->OnOff = stored;
            break;
        case 2:
            actor->Hidden = stored;
            break;
        case 3:
            actor->Locked = stored;
            break;
        case 4:
            actor->DoShadow = stored;
            break;
        default:
            actor->DepthMapSize = stored;
            break;
        }
    }
    session.FileModified = true;
}

void cmdApplyDial_Click(Session &session, int index) {
    PoseView &pose = session.Pose;
    if (index == 0) {
        const std::optional<double> value = DialValueOf(pose.txtDialProperties[0]);
        if (!value) {
            session.ui().MessageBox(kDialValueMessage, kProgramTitle, MsgIcon::Exclamation, MsgButtons::OK);
            return;
        }
        if (pose.lstDials.empty())
            return;
        for (Channel *channel : SelectedChannels(session))
            channel->Value = *value;
        session.FileModified = true;
        return;
    }
    if (index != 1 && index != 2)
        return;
    for (Channel *channel : SelectedChannels(session)) {
        if (index == 1)
            channel->DisplayName = pose.txtDialProperties[1];
        else
            channel->Hidden = static_cast<int16_t>(pose.cmbDialProperties + 1);
        session.FileModified = true;
    }
}

void cmdZerAll_Click(Session &session) {
    for (Actor &actor : session.Actors)
        for (Channel &channel : actor.Channels)
            channel.Value = 0;
    session.Pose.txtDialProperties[0] = "0";
    session.FileModified = true;
}

void ShowChannelsBox(Session &session) {
    PoseView &pose = session.Pose;
    const bool on = !session.Options.chkChannels;
    EnableChannelPage(pose, on, session.Options.chkDisableThighLength);
    EnableChannelControls(pose, on);
    if (!on) {
        pose.cmdDeleteDialsEnabled = false;
        pose.cmdDeleteActorsEnabled = false;
        // Kept as the page always had it, though nothing else on the page is on.
        if (AnyChannelBoxChecked(pose))
            pose.cmdDelChannelsEnabled = true;
    }
}

void chkDisableThighLength_Click(Session &session, bool checked) {
    session.FileModified = true;
    session.Options.chkDisableThighLength = checked;
    session.Pose.txtThighLengthEnabled = !checked;
}

} // namespace gelvane
