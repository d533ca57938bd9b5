#pragma once
// The property panels' commands: the enable boxes, the Apply buttons, "Zero
// everything", the "Don't save morphs or poses" box's effect on the page and the thigh
// length box. A pose keeps only what is switched on, and switching off the last thing a
// dial or an actor carries deletes it.
#include "core/model/Session.h"

#include <optional>
#include <string>
#include <string_view>

namespace gelvane {

inline constexpr const char *kDialValueMessage = "Use a value between -10000 and 10000";

// A channel that would write nothing: no enabled display name, no enabled hidden
// value, no enabled dial value.
bool IsNullChannel(const Session &session, int actorIndex, int channelIndex);
// An actor that carries nothing a pose could write, its channels aside.
bool IsNullActor(const Session &session, int actorIndex);

// The flag of actor panel row `index` (0 name ... 6 lightOn); false outside 0..6.
bool ActorPropertyEnabled(const Actor &actor, int index);

// The dial value box's text as a value: only the exact short form of a number from
// -10000 to 10000 ("0.5", ".5", "-0.5", "10.5"; not "00.5", "1.50", "+5").
std::optional<double> DialValueOf(std::string_view text);

// chkEnable(index) / chkEnableDial(index) now reads `checked`: the property's flag on
// every selected actor / dial of the current actor. Switching off deletes the actors
// (without channels) and dials that are left null. Nothing happens while
// EventsEnabled is false.
void chkEnable_Click(Session &session, int index, bool checked);
void chkEnableDial_Click(Session &session, int index, bool checked);

// The panels' boxes as the user edits them.
void txtActorProperties_Change(Session &session, int index, const std::string &text);
void cmbActorProperties_Click(Session &session, int index, int row);
void txtDialProperties_Change(Session &session, int index, const std::string &text);
void cmbDialProperties_Click(Session &session, int row);

// cmdApplyProperty(index): the panel's value on every selected actor. A failure of the
// value (an overflowing depth map size, the lightOn row's missing box) is shown in an
// exclamation box and nothing is stored.
void cmdApplyProperty_Click(Session &session, int index);
// cmdApplyDial(index): the panel's value on every selected dial of the current actor; a
// dial value that DialValueOf refuses is answered with kDialValueMessage.
void cmdApplyDial_Click(Session &session, int index);
// "Zero everything": every dial value of every actor becomes 0.
void cmdZerAll_Click(Session &session);

// The page after a change of the "Don't save morphs or poses" box (Options.chkChannels):
// checked switches the lists, the panels and the commands off.
void ShowChannelsBox(Session &session);
// "Disable ThighLength" now reads `checked`.
void chkDisableThighLength_Click(Session &session, bool checked);

} // namespace gelvane
