#pragma once
// The morph and pose page as data: the actor and dial lists with their selection, the
// texts and rows of the two property panels, which controls are enabled, and the boxes
// of the deletion by type. The channel reader fills the lists and the window's reset
// empties them, so the record lives here; the page's rules are core/channels.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace gelvane {

// One row of the actor or dial list: the text and the "Type" column.
struct ListRow {
    std::string Name;
    std::string Type;
    bool Selected = false;
};

// One row of a property panel: its enable box and which of its controls are enabled.
struct PropertyRow {
    bool Checked = false;      // chkEnable(i) / chkEnableDial(i)
    bool BoxEnabled = false;   // the enable box itself
    bool LabelEnabled = false; // lblActorProperty(i) / lblDialProperty(i)
    bool ValueEnabled = false; // the row's text or combo box
    bool ApplyEnabled = false; // cmdApplyProperty(i) / cmdApplyDial(i)
};

inline constexpr int kActorPropertyCount = 7;
inline constexpr int kDialPropertyCount = 3;
inline constexpr int kChannelBoxCount = 23;
inline constexpr const char *kCheckAll = "Check all";
inline constexpr const char *kCheckNone = "Check none";

struct PoseView {
    std::vector<ListRow> lstActors;
    std::vector<ListRow> lstDials;
    int lstActorsCurrentRow = 0; // 1-based row with the focus, 0 for none
    int lstDialsCurrentRow = 0;
    int16_t CurrentActor = 0; // 1-based row of the clicked actor
    int16_t CurrentDial = 0;  // 1-based row of the clicked dial
    bool AutoSelectingActor = false;
    bool AutoSelectingDial = false;

    // The actor panel: txtActorProperties(0) the display name, (1) the depth map size;
    // cmbActorProperties(0..4) on/off, hidden, locked, doShadow, lightOn as a row (-1 none).
    std::array<std::string, 2> txtActorProperties{};
    std::array<int, 5> cmbActorProperties{-1, -1, -1, -1, -1};
    std::array<PropertyRow, kActorPropertyCount> ActorProperty{};
    // The dial panel: txtDialProperties(0) the value, (1) the display name; the hidden row.
    std::array<std::string, 2> txtDialProperties{};
    int cmbDialProperties = -1;
    std::array<PropertyRow, kDialPropertyCount> DialProperty{};

    bool lstActorsEnabled = false;
    bool lstDialsEnabled = false;
    bool cmdSelectAllActorsEnabled = false;
    bool cmdSelectAllDialsEnabled = false;
    bool cmdDeleteActorsEnabled = false;
    bool cmdDeleteDialsEnabled = false;
    bool cmdZerAllEnabled = false;
    bool cmdCreateDialEnabled = false;
    bool chkDisableThighLengthEnabled = false;
    bool txtThighLengthEnabled = false;

    // Deletion by type: the boxes, their enabled state (all alike), the three "Check all"
    // buttons' captions and their enabled state, and the Delete button.
    std::array<bool, kChannelBoxCount> chkDelChannels{};
    bool chkDelChannelsEnabled = false;
    std::array<std::string, 3> cmdCheckAll{kCheckAll, kCheckAll, kCheckAll};
    bool cmdCheckAllEnabled = false;
    bool cmdDelChannelsEnabled = false;
};

// Empties both lists.
void ClearChannelLists(PoseView &pose);
// The property, dial and deletion controls (not the lists) get `enabled`.
void EnableChannelControls(PoseView &pose, bool enabled);
// The lists and the page-wide commands follow the "Don't save morphs or poses" box: `on`
// when it is unchecked. The thigh length box stays off while its disable box is checked.
void EnableChannelPage(PoseView &pose, bool on, bool thighLengthDisabled);
// The nothing-loaded state of the page: lists cleared, every control off, the dial value
// text emptied. Selections, captions and the boxes of the deletion by type stay.
void ResetChannelPage(PoseView &pose);
// The page once channels are loaded: every control on, no row selected, the first actor
// and the first dial current.
void ShowLoadedChannelPage(PoseView &pose, bool thighLengthDisabled);

} // namespace gelvane
