#pragma once
// The material page without its widgets: which object and material it shows, how each of
// the eighteen properties is presented, the texts of its boxes (View.TXT) and the values of
// its bars, swatches and check boxes, which controls are enabled, and the selection. The
// page reads its controls, calls one of these on the session, and redraws from it.
//
// The controls show one material, the one at the list index; the commands write to every
// selected one. Typing in a box or moving a bar changes no material until a command does.
#include "core/model/Session.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

// The eighteen properties, in the order of a material's flags.
enum MaterialProperty : int {
    kKdColor,
    kKsColor,
    kKaColor,
    kReflectionColor,
    kNsExponent,
    kTMin,
    kTMax,
    kTExpo,
    kTextureMap,
    kBumpMap,
    kReflectionMap,
    kTransparencyMap,
    kTextureColor,
    kBumpStrength,
    kReflectionStrength,
    kKsIgnoreTexture,
    kReflectThruLights,
    kReflectThruKd,
};
inline constexpr int kPropertyCount = 18;

// The flag of `property` in a material: False leaves the property out of what is saved.
bool &PropertyFlag(Material &material, int property);

// The property whose controls a control belongs to, or -1 (cmd(0), cmd(1), other indices).
int PropertyOfCommand(int index); // cmd(index)
int PropertyOfBox(int index);     // TXT(index), 1..11
int PropertyOfBar(int index);     // SCR(index), 0..6

// A bar's range and page step; SCR(3) counts hundredths of its box's value.
struct BarRange {
    int Minimum, Maximum, PageStep;
};
BarRange BarRangeOf(int bar);

// The state of the page that the session keeps beyond the window state.
class MaterialPageState : public SessionPart {
public:
    MaterialPageState();

    // The selected rows of lstMaterials, ascending.
    std::vector<int> SelectedMaterials;
    // Each property's presentation: true for the disabled one (only its bold label shows).
    std::array<bool, kPropertyCount> DisabledLook{};
    // SCR(0) to SCR(6).
    std::array<int, 7> SCR{};
    // SHP(0) to SHP(3): Object, Highlight, Ambient and Reflective colour.
    std::array<Rgb, 4> SHP{};
    // chkApplyTextures (shows ksIgnoreTexture inverted), chkMultiplyThroughLights,
    // chkMultiplyThroughKdColor.
    std::array<bool, 3> Checks{};
    // TXT(8) to TXT(11) in red: the map file is missing.
    std::array<bool, 4> MapMissing{};
    // The folder of the map chosen last by Browse in this run.
    std::string LastMapFolder;

    void MaterialListShown(Session &session) override;
    void WindowReset(Session &session) override;
};

// The session's material page state, made on first use. A page that appears over a list
// with a focused row shows that row's material.
MaterialPageState &MaterialPageOf(Session &session);

// Enabled states of the page's controls. A property's controls are enabled only while the
// page is and the property stands in its enabled presentation; they are visible exactly
// when the presentation is the enabled one.
struct MaterialControls {
    bool cmbFigures = false;
    bool cmdDelete = false;    // cmd(1), "Delete": removes the object
    bool lstMaterials = false; // the page as a whole, with lblObject, lblMaterials, lblTemplate, lblSelGroup
    bool Combo1 = false;
    bool cmdInvertSel = false;
    bool cmdDeleteMaterials = false;
    bool cmdNewMat = false;
    bool cmdCreateMat = false;
    std::array<bool, kPropertyCount> DisabledLook{}; // the presentation as drawn
    std::array<bool, 29> cmd{};
    std::array<bool, 12> TXT{};
    std::array<bool, 7> SCR{};
    std::array<bool, 4> SHP{};
    std::array<bool, 3> Checks{};
};
MaterialControls MaterialControlsOf(const Session &session);

// Selecting row `row` of the object list: a Figure's row lists its materials and shows
// the first; an actor row (behind the last Figure) has none and disables the page.
void cmbFigures_Click(Session &session, int row);
// The selection of lstMaterials changed: `selectedRows` ascending, `focusedRow` the list
// index (-1 for none). The shown material is always a selected one: when the focused row
// isn't selected, the first selected row from the top is shown.
void lstMaterials_Click(Session &session, const std::vector<int> &selectedRows, int focusedRow);
// The rows that the commands write to: those selected now that name a material.
std::vector<int> GetSelectedMaterials(Session &session);
// The material that the controls show, or nullptr while the page is disabled or the list
// index names none.
const Material *ShownMaterial(const Session &session);
// The Figure of the selected object row, or nullptr for an actor row or none.
Figure *ShownFigure(Session &session);
// View.imgThumb: the map file found for each map of the shown material, or none
// for an empty reference and "NO_MAP".
void ShowThumbnails(Session &session);
// "Use full map paths" now reads `checked`.
void chkTexture_Click(Session &session, bool checked);

// Shows the material at the list index in every control, bringing each property's
// presentation into line with its flag first. The value is loaded in either presentation.
void ShowSelectedMaterial(Session &session);
// The Materials tab came to the front: the shown material is drawn afresh.
void MaterialsTab_Click(Session &session);
// The page as a whole. Disabling returns every property to its enabled presentation;
// clearing empties the list, the boxes (the number boxes fall back to their minimum) and
// the thumbnails.
void EnableMaterialControls(Session &session);
void DisableMaterialControls(Session &session);
void ClearMaterialControls(Session &session);

// Switches a property's presentation over. Marks the file as modified, as moving between
// materials whose flags differ does.
void ToggleProperty(Session &session, int property);
// Double-clicks on a property's labels: lblX disables the property for every selected
// material, lblCloseX enables it. Object and Highlight Color can't be disabled while the
// Poser 5 format is chosen: a message says so and nothing changes.
void lblX_DblClick(Session &session, int property);
void lblCloseX_DblClick(Session &session, int property);
inline constexpr const char *kObjectColorP5Message =
    "Object color cannot be disabled in P5 MATs.\r\nIf no color is applied Poser 5 will use a random color.";
inline constexpr const char *kHighlightColorP5Message =
    "Highlight color cannot be disabled in P5 MATs.\r\nIf no color is applied Poser 5 will use a random color.";

// True for an optional sign, digits with at most one "." or ",", and an optional exponent,
// after trimming blanks: "5." passes, "." and "-" don't.
bool IsNumeric(std::string_view text);
// Every change of TXT(index), typed or set. The number boxes 1 to 7 correct their text
// silently (to the bar's minimum, or "0") and move their bar, which writes the box back.
void TXT_Change(Session &session, int index, const std::string &text);
// The user moved SCR(index): its box shows the value (SCR(3): the value / 100).
void SCR_Change(Session &session, int index, int value);

// A click on a check box (0 chkApplyTextures, 1 chkMultiplyThroughLights,
// 2 chkMultiplyThroughKdColor): the field of every selected material is inverted by itself.
void CheckBox_Click(Session &session, int check);
// A click on swatch SHP(index): the colour dialog starts from the swatch's colour; the
// chosen colour goes to the swatch and to every selected material. Cancel changes nothing.
void SHP_Click(Session &session, int index);

} // namespace gelvane
