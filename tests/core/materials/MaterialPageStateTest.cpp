#include "MaterialFixture.h"

#include "core/materials/MaterialPageState.h"

namespace gelvane {
namespace {

using Strings = std::vector<std::string>;
using MaterialPageStateTest = test::MaterialFixture;

TEST_F(MaterialPageStateTest, ObjectRowsWithAndWithoutMaterials) {
    cmbFigures_Click(session, 2); // the actor row
    EXPECT_TRUE(!session.View.MaterialControlsEnabled && session.View.lstMaterials.empty() &&
                ShownMaterial(session) == nullptr);
    EXPECT_EQ(box(1), "1"); // emptied boxes fall back to their minimum

    cmbFigures_Click(session, 1);
    EXPECT_TRUE(session.View.MaterialControlsEnabled && ShownMaterial(session) == &material(0, 1));
    EXPECT_EQ(std::tie(session.View.lstMaterials, page().SelectedMaterials),
              std::tuple(Strings{"Band"}, std::vector{0}));
    EXPECT_EQ(page().SHP[0], (Rgb{40, 0, 0}));
}

TEST_F(MaterialPageStateTest, ShownMaterialIsAlwaysASelectedOne) {
    // {selected rows, focused row} -> the list index
    const std::tuple<std::vector<int>, int, int> cases[] = {
        {{2}, 2, 2},
        {{0, 1}, 2, 0}, // the focused row was Ctrl-clicked away
        {{}, 1, 1},     // nothing selected: the focused material stays shown
        {{1, 2}, 2, 2},
    };
    for (const auto &[selected, focused, shown] : cases) {
        lstMaterials_Click(session, selected, focused);
        EXPECT_EQ(session.View.lstMaterialsIndex, shown);
        EXPECT_EQ(page().SelectedMaterials, selected);
        EXPECT_EQ(ShownMaterial(session), &material(shown));
        EXPECT_EQ(MaterialControlsOf(session).cmdDeleteMaterials, !selected.empty());
    }
}

TEST_F(MaterialPageStateTest, ThumbnailsAndMapColoursFollowTheShownMaterial) {
    material(0).textureMap = ":Runtime:textures:Skin.JPG";
    material(0).bumpMap = "no_map";
    material(2).reflectionMap = "/maps/Lips.png";
    lstMaterials_Click(session, {0}, 0);
    EXPECT_EQ(std::tie(session.View.imgThumb[0], session.View.imgThumb[1]), // the second is NO_MAP
              std::tuple("/poser\\runtime\\textures\\skin.jpg", ""));
    EXPECT_EQ(box(8), ":Runtime:textures:Skin.JPG");
    EXPECT_EQ(page().MapMissing, (std::array<bool, 4>{true, false, false, false}));
    lstMaterials_Click(session, {2}, 2);
    EXPECT_EQ(session.View.imgThumb, (std::array<std::string, 4>{"", "", "/maps/lips.png", ""}));
    // With the materials switched off nothing is shown.
    session.Options.chkNoMaterialData = true;
    ShowThumbnails(session);
    EXPECT_EQ(session.View.imgThumb, (std::array<std::string, 4>{}));
}

TEST_F(MaterialPageStateTest, EnabledControls) {
    Session empty(settings, ui);
    MaterialControls c = MaterialControlsOf(empty);
    EXPECT_FALSE(c.cmbFigures || c.cmdDelete || c.lstMaterials || c.cmdNewMat || c.cmd[0]);
    EXPECT_TRUE(c.Combo1); // templates can be chosen with nothing loaded

    c = MaterialControlsOf(session);
    EXPECT_TRUE(c.cmbFigures && c.cmdDelete && c.lstMaterials && c.Combo1 && c.cmdNewMat && c.cmdCreateMat);
    EXPECT_TRUE(std::all_of(c.cmd.begin(), c.cmd.end(), [](bool on) { return on; }));
    cmbFigures_Click(session, 2); // an actor row: objects can still be made and removed
    c = MaterialControlsOf(session);
    EXPECT_TRUE(c.cmbFigures && c.cmdNewMat && c.cmdDelete);
    EXPECT_FALSE(c.lstMaterials || c.Combo1 || c.cmd[0] || c.TXT[8] || c.SHP[0] || c.cmdInvertSel);

    session.Options.chkNoMaterialData = true;
    c = MaterialControlsOf(session);
    EXPECT_FALSE(c.cmbFigures || c.lstMaterials || c.Combo1 || c.cmdDelete || c.cmdNewMat || c.cmdCreateMat);
}

// Each box's corrections and its bar: {box, text before, typed text, text after, bar after}.
TEST_F(MaterialPageStateTest, NumberBoxesCorrectTheirTextAndMoveTheirBar) {
    struct Case {
        int Box;
        const char *Before, *Typed, *After;
        int Bar;
    };
    const Case cases[] = {
        {1, "40", "150", "1", 1},         // out of range falls to the minimum, also when too large
        {2, "10", "150", "0", 0},         //
        {1, "40", "-5", "1", 1},          //
        {1, "40", "5-", "1", 1},          // a minus behind the digits
        {1, "40", "5.5", "6", 6},         // the bar rounds and writes the box back
        {1, "5", "5.", "5.", 5},          // the bar doesn't move, so the text stays
        {1, "40", "", "1", 1},            //
        {2, "10", "3e1", "30", 30},       // an exponent is numeric
        {3, "90", "1e999", "0", 0},       // beyond a 64-bit float: out of range
        {4, "0.5", "12", "0", 0},         // above 10
        {4, "0.5", "10", "10", 1000},     //
        {4, "0.5", "0.125", "0.12", 12},  // hundredths, the tie to even
        {4, "0.5", "0,25", "0.25", 25},   // a comma counts as the point on the bar
        {4, "0.5", ".", "0", 0},          //
        {6, "0", "-", "-", 0},            // a lone minus stays while the bar stands at 0
        {6, "-20", "-", "0", 0},          // ... and not when the bar moves
        {6, "-20", "--", "0", 0},         //
        {6, "-20", "-150", "-100", -100}, // the only negative minimum
        {6, "-20", "abc", "0", 0},        //
        {5, "80", "-", "0", 0},           // the other boxes take no lone minus
        {7, "60", "1,5", "1", 1},         // a comma ends the number of a whole-number box
    };
    for (const Case &c : cases) {
        TXT_Change(session, c.Box, c.Before);
        TXT_Change(session, c.Box, c.Typed);
        EXPECT_EQ(box(c.Box), c.After) << c.Box << " '" << c.Typed << "'";
        EXPECT_EQ(page().SCR[static_cast<size_t>(c.Box - 1)], c.Bar) << c.Box << " '" << c.Typed << "'";
    }
    // Moving a bar writes its box.
    SCR_Change(session, 3, 37);
    SCR_Change(session, 5, -40);
    EXPECT_EQ(std::tie(box(4), box(6)), std::tuple("0.37", "-40"));
    // Typing changes no material.
    EXPECT_TRUE(material(0).tExpo == 0.5f && !session.FileModified);
    EXPECT_TRUE(IsNumeric(" 5. ") && IsNumeric("-1,5e-3") && !IsNumeric("1.2.3") && !IsNumeric("1e"));
}

TEST_F(MaterialPageStateTest, PresentationFollowsTheShownMaterial) {
    material(1).tMin = 33;
    material(1).tMinEnabled = false;
    material(1).textureMapEnabled = false;
    lstMaterials_Click(session, {1}, 1);
    MaterialControls c = MaterialControlsOf(session);
    EXPECT_TRUE(c.DisabledLook[kTMin] && c.DisabledLook[kTextureMap]);
    EXPECT_FALSE(c.TXT[2] || c.SCR[1] || c.cmd[15] || c.TXT[8] || c.cmd[2] || c.cmd[6] || c.cmd[10] || c.cmd[18] ||
                 c.cmd[25]);
    EXPECT_TRUE(c.TXT[3] && c.cmd[16]);
    EXPECT_EQ(box(2), "33");           // the value is loaded for when the property is enabled
    EXPECT_TRUE(session.FileModified); // as moving between materials whose flags differ does

    // Enabling the page doesn't switch a disabled property's controls on.
    EnableMaterialControls(session);
    EXPECT_FALSE(MaterialControlsOf(session).TXT[2]);

    lstMaterials_Click(session, {0}, 0);
    c = MaterialControlsOf(session);
    EXPECT_FALSE(c.DisabledLook[kTMin] || c.DisabledLook[kTextureMap]);
    EXPECT_TRUE(c.TXT[2] && c.cmd[25]);

    // A page switched off stands in the enabled presentation.
    lstMaterials_Click(session, {1}, 1);
    cmbFigures_Click(session, 2);
    EXPECT_EQ(page().DisabledLook, (std::array<bool, kPropertyCount>{}));
}

TEST_F(MaterialPageStateTest, LabelDoubleClicksSwitchEverySelectedMaterial) {
    lstMaterials_Click(session, {0, 2}, 2);
    lblX_DblClick(session, kTMax);
    EXPECT_FALSE(material(0).tMaxEnabled || material(2).tMaxEnabled);
    EXPECT_TRUE(material(1).tMaxEnabled);
    EXPECT_TRUE(page().DisabledLook[kTMax]);
    lblX_DblClick(session, kTMax); // the label is hidden now
    EXPECT_TRUE(page().DisabledLook[kTMax]);
    lblCloseX_DblClick(session, kTMax);
    EXPECT_TRUE(material(0).tMaxEnabled && material(2).tMaxEnabled);
    EXPECT_FALSE(page().DisabledLook[kTMax]);

    // In Poser 5 format the object and highlight colours stay.
    session.Options.PoserFormatP5 = true;
    lblX_DblClick(session, kKdColor);
    lblX_DblClick(session, kKsColor);
    lblX_DblClick(session, kKaColor);
    EXPECT_EQ(Texts(), (Strings{kObjectColorP5Message, kHighlightColorP5Message}));
    EXPECT_EQ(ui.messages()[1].Icon, MsgIcon::Exclamation);
    EXPECT_TRUE(material(0).KdColorEnabled && material(2).KsColorEnabled);
    EXPECT_FALSE(material(0).KaColorEnabled || material(2).KaColorEnabled);
    session.Options.PoserFormatP5 = false;
    lblX_DblClick(session, kKdColor);
    EXPECT_FALSE(material(0).KdColorEnabled || material(2).KdColorEnabled);

    // With no row selected the presentation changes and no material does.
    lstMaterials_Click(session, {}, 1);
    lblX_DblClick(session, kBumpStrength);
    EXPECT_TRUE(page().DisabledLook[kBumpStrength]);
    EXPECT_TRUE(material(0).bumpStrengthEnabled && material(1).bumpStrengthEnabled);
}

} // namespace
} // namespace gelvane
