#pragma once
// The material page without its widgets: which object and material it shows, which
// pictures its thumbnails show, which of its controls are enabled, and the selection.
// The page reads its controls, calls one of these on the session, and redraws from it.
#include "core/model/Session.h"

#include <vector>

namespace gelvane {

// The state of the material page that the session keeps beyond the window state.
class MaterialPageState : public SessionPart {
public:
    // The selected rows of lstMaterials, ascending.
    std::vector<int> SelectedMaterials;
};

// The session's material page state, made on first use.
MaterialPageState &MaterialPageOf(Session &session);

// Enabled states of the page's controls beyond those of the single properties.
struct MaterialControls {
    bool cmbFigures = false;
    bool cmdDelete = false;    // cmd(1), "Delete"
    bool lstMaterials = false; // with the property labels, lblMaterials and lblSelGroup
    bool Combo1 = false;
};
MaterialControls MaterialControlsOf(const Session &session);

// Selecting row `row` of the object list: a Figure's row lists its materials and shows
// the first; an actor row (behind the last Figure) has none and disables the list.
void cmbFigures_Click(Session &session, int row);
// The selection of lstMaterials changed: `selectedRows` ascending, `focusedRow` the list
// index (-1 for none). The shown material is always a selected one: when the focused row
// isn't selected, the first selected row from the top is shown.
void lstMaterials_Click(Session &session, const std::vector<int> &selectedRows, int focusedRow);
// The material that the controls show, or nullptr while the list is disabled or empty.
const Material *ShownMaterial(const Session &session);
// View.imgThumb: the map file found for each map of the shown material, or none
// for an empty reference and "NO_MAP".
void ShowThumbnails(Session &session);
// "Use full map paths" now reads `checked`.
void chkTexture_Click(Session &session, bool checked);

} // namespace gelvane
