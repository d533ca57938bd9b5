#pragma once
// The morph and pose page without its widgets: the actor and dial lists, what a click
// in either does to the selection and the current rows, and the two property panels.
// The page reads its controls, calls one of these, and redraws from session.Pose.
//
// Rows count from 1, as CurrentActor and CurrentDial do: row n of lstActors is
// Actors[n - 1], row n of lstDials is Channels[n - 1] of the current actor. A call
// with a row outside the list does nothing.
#include "core/model/Session.h"

#include <string>
#include <vector>

namespace gelvane {

int SelectedCount(const std::vector<ListRow> &rows);
// The actor of row CurrentActor, or nullptr.
Actor *CurrentActorOf(Session &session);
// The channel behind dial row `row` of the current actor, or nullptr: a row that
// "Create new Morph channel..." added while another actor was current has none.
Channel *ChannelOfDialRow(Session &session, int row);

// The value box's text for a dial value: the general form with a digit before the
// point ("0.5", "-0.5", "1E-05").
std::string DialValueText(double value);

// The toolkit changed a list's selection (a click, a drag, the keyboard): the
// selected rows, ascending. Selection set by these functions never comes back here.
void lstActors_SelectionChange(Session &session, const std::vector<int> &selectedRows);
void lstDials_SelectionChange(Session &session, const std::vector<int> &selectedRows);

// A click on an actor row: it becomes current and stays selected, the dial list shows
// its channels and the actor panel its properties.
void lstActors_ItemClick(Session &session, int row);
// A click on a dial row: it becomes current, the dial panel shows it, and with several
// actors selected only the current one of the first rows stays selected.
void lstDials_ItemClick(Session &session, int row);
void cmdSelectAllActors_Click(Session &session);
// Every dial of the current actor, which becomes the only selected actor.
void cmdSelectAllDials_Click(Session &session);

// The panels for Actors[CurrentActor - 1] and its channel CurrentDial. A value that the
// file doesn't carry leaves its box as it was.
void ShowActorProperties(Session &session);
void ShowDialProperties(Session &session);

// The page's tab was chosen: unless morphs and poses are switched off, row 1 is clicked.
void PosePageOpened(Session &session);

} // namespace gelvane
