#include "core/channels/PosePageState.h"

#include "core/channels/ChannelDeletion.h"
#include "core/channels/ChannelProperties.h"
#include "core/model/Numbers.h"

#include <algorithm>

namespace gelvane {
namespace {

// The controls a click sets must not run their own change handlers.
class EventsOff {
public:
    explicit EventsOff(Session &session) : m_session(session), m_saved(session.EventsEnabled) {
        session.EventsEnabled = false;
    }
    ~EventsOff() { m_session.EventsEnabled = m_saved; }
    EventsOff(const EventsOff &) = delete;
    EventsOff &operator=(const EventsOff &) = delete;

private:
    Session &m_session;
    bool m_saved;
};

bool InRows(const std::vector<ListRow> &rows, int row) {
    return row >= 1 && row <= static_cast<int>(rows.size());
}

void SetSelection(std::vector<ListRow> &rows, const std::vector<int> &selectedRows) {
    for (ListRow &row : rows)
        row.Selected = false;
    for (int row : selectedRows)
        if (InRows(rows, row))
            rows[static_cast<size_t>(row - 1)].Selected = true;
}

// A combo box of the panels has the rows "False"/"True" (or "Off"/"On"): a stored
// value + 1 that names neither shows no row.
int ComboRow(int16_t stored) {
    return stored == 1 || stored == 2 ? stored - 1 : -1;
}

void ShowRow(PropertyRow &row, bool enabled) {
    row.Checked = enabled;
    row.LabelEnabled = enabled;
    row.ValueEnabled = enabled;
    row.ApplyEnabled = enabled;
}

void DialClick(Session &session, int row, bool repeated) {
    PoseView &pose = session.Pose;
    const Channel *channel = ChannelOfDialRow(session, row);
    if (!channel)
        return;
    pose.CurrentDial = static_cast<int16_t>(row);
    pose.lstDialsCurrentRow = row;
    const EventsOff quiet(session);
    pose.txtDialProperties[0] = DialValueText(channel->Value);
    ShowDialProperties(session);
    pose.cmdDeleteDialsEnabled = SelectedCount(pose.lstDials) > 0 || pose.AutoSelectingDial;

    // A dial belongs to one actor: of the first rows, as many as are selected, only the
    // current one stays selected. A selected row behind that bound keeps its selection.
    if (!pose.AutoSelectingDial && SelectedCount(pose.lstActors) >= 2) {
        pose.AutoSelectingActor = true;
        const int bound = SelectedCount(pose.lstActors);
        for (int r = 1; r <= bound; ++r)
            pose.lstActors[static_cast<size_t>(r - 1)].Selected = r == pose.CurrentActor;
        pose.AutoSelectingActor = false;
    }

    // A click that took a row out of a selection of several shows the first selected one.
    if (!repeated && !pose.lstDials[static_cast<size_t>(row - 1)].Selected && SelectedCount(pose.lstDials) > 1) {
        const auto first =
            std::find_if(pose.lstDials.begin(), pose.lstDials.end(), [](const ListRow &r) { return r.Selected; });
        DialClick(session, static_cast<int>(first - pose.lstDials.begin()) + 1, true);
    }
}

} // namespace

int SelectedCount(const std::vector<ListRow> &rows) {
    return static_cast<int>(std::count_if(rows.begin(), rows.end(), [](const ListRow &r) { return r.Selected; }));
}

Actor *CurrentActorOf(Session &session) {
    const int index = session.Pose.CurrentActor - 1;
    if (index < 0 || index >= static_cast<int>(session.Actors.size()))
        return nullptr;
    return &session.Actors[static_cast<size_t>(index)];
}

Channel *ChannelOfDialRow(Session &session, int row) {
    Actor *actor = CurrentActorOf(session);
    if (!actor || !InRows(session.Pose.lstDials, row) || row > static_cast<int>(actor->Channels.size()))
        return nullptr;
    Channel &channel = actor->Channels[static_cast<size_t>(row - 1)];
    return channel.Name.empty() ? nullptr : &channel;
}

std::string DialValueText(double value) {
    return NumberText(value);
}

void lstActors_SelectionChange(Session &session, const std::vector<int> &selectedRows) {
    SetSelection(session.Pose.lstActors, selectedRows);
}

void lstDials_SelectionChange(Session &session, const std::vector<int> &selectedRows) {
    SetSelection(session.Pose.lstDials, selectedRows);
}

void lstActors_ItemClick(Session &session, int row) {
    PoseView &pose = session.Pose;
    if (!InRows(pose.lstActors, row))
        return;
    pose.CurrentActor = static_cast<int16_t>(row);
    pose.lstActorsCurrentRow = row;
    const EventsOff quiet(session);
    // A clicked row can't be deselected by clicking it, so Delete has a selection to work on.
    pose.lstActors[static_cast<size_t>(row - 1)].Selected = true;
    pose.cmdDeleteActorsEnabled = true;
    if (AnyChannelBoxChecked(pose))
        pose.cmdDelChannelsEnabled = true;

    if (!pose.AutoSelectingActor) {
        FillDialList(session, row - 1);
        ShowActorProperties(session);
        if (!pose.lstDials.empty()) {
            pose.cmdDeleteDialsEnabled = false;
            if (pose.AutoSelectingDial) {
                pose.lstDials[0].Selected = true;
                pose.AutoSelectingDial = false;
            }
        }
    }
    if (pose.lstDials.empty())
        pose.cmdDeleteDialsEnabled = false;
    else if (const Actor *actor = CurrentActorOf(session); actor && !actor->Channels.empty())
        pose.txtDialProperties[0] = DialValueText(actor->Channels[0].Value);
}

void lstDials_ItemClick(Session &session, int row) {
    DialClick(session, row, false);
}

void cmdSelectAllActors_Click(Session &session) {
    PoseView &pose = session.Pose;
    for (ListRow &row : pose.lstActors)
        row.Selected = true;
    lstActors_ItemClick(session, static_cast<int>(pose.lstActors.size()));
}

void cmdSelectAllDials_Click(Session &session) {
    PoseView &pose = session.Pose;
    for (size_t i = 0; i < pose.lstActors.size(); ++i)
        if (static_cast<int>(i) + 1 != pose.CurrentActor)
            pose.lstActors[i].Selected = false;
    if (pose.lstDials.empty())
        return;
    for (ListRow &row : pose.lstDials)
        row.Selected = true;
    lstDials_ItemClick(session, static_cast<int>(pose.lstDials.size()));
}

void ShowActorProperties(Session &session) {
    const Actor *actor = CurrentActorOf(session);
    if (!actor)
        return;
    PoseView &pose = session.Pose;
    if (!actor->DisplayName.empty())
        pose.txtActorProperties[0] = actor->DisplayName;
    const int16_t combos[5] = {actor->OnOff, actor->Hidden, actor->Locked, actor->DoShadow, actor->LightOn};
    for (size_t i = 0; i < 5; ++i)
        if (combos[i] > 0)
            pose.cmbActorProperties[i] = ComboRow(combos[i]);
    if (actor->DepthMapSize > 0)
        pose.txtActorProperties[1] = NumberText(actor->DepthMapSize - 1);
    for (int i = 0; i < kActorPropertyCount; ++i)
        ShowRow(pose.ActorProperty[static_cast<size_t>(i)], ActorPropertyEnabled(*actor, i));
}

void ShowDialProperties(Session &session) {
    const Channel *channel = ChannelOfDialRow(session, session.Pose.CurrentDial);
    if (!channel)
        return;
    PoseView &pose = session.Pose;
    if (!channel->DisplayName.empty())
        pose.txtDialProperties[1] = channel->DisplayName;
    if (channel->Hidden > 0)
        pose.cmbDialProperties = ComboRow(channel->Hidden);
    ShowRow(pose.DialProperty[0], channel->ValueEnabled);
    ShowRow(pose.DialProperty[1], channel->NameEnabled);
    ShowRow(pose.DialProperty[2], channel->HiddenEnabled);
}

void PosePageOpened(Session &session) {
    if (!session.Options.chkChannels)
        lstActors_ItemClick(session, 1);
}

} // namespace gelvane
