#pragma once
// The buttons cmd(0) to cmd(28) of the material page, one handler for all, and a file
// dropped on a map path box. The commands write the values of the controls into every
// selected material of the chosen object; the controls then show the result.
//
//   0 Select all, 1 Delete (the object), 2-5 No Map, 6-9 Open, 10-13 Browse ("..."),
//   14-17 Apply Highlight Size, Transparency Min, Max, Falloff, 18-21 Apply a map path,
//   22-24 Apply Texture, Bump, Reflection Strength, 25-28 Fix.
// The map rows are Texture, Bump, Reflection, Transparency, in this order, in every family.
#include "core/platform/Interaction.h"

#include <string>
#include <vector>

namespace gelvane {

class Session;

// Runs cmd(index). Browse asks for the map first; its Cancel ends the command with
// nothing changed. "Use full map paths" decides the form that Browse, Apply and Fix store.
void cmd_Click(Session &session, int index);

// The map dialog of Browse button `index` (10 to 13). It starts in the folder of the map
// chosen last; before the first choice that folder becomes the map folder of the settings.
FileDialogRequest MapDialogRequest(Session &session, int index);

// Files dropped on path box TXT(box), 8 to 11: the box takes the first one, and the row's
// Apply runs for every selected material. Other boxes take no drop.
void TXT_Drop(Session &session, int box, const std::vector<std::string> &paths);

} // namespace gelvane
