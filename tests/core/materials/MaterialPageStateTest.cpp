#include "core/materials/MaterialPageState.h"

#include "support/SessionFixture.h"

namespace gelvane::test {
namespace {

struct MaterialPageStateTest : SessionFixture {
    MaterialPageStateTest() {
        settings.PoserFolder = "/poser";
        FillTwoFigures(session);
        session.Figures[0].Materials[0].textureMap = ":Runtime:textures:Skin.JPG";
        session.Figures[0].Materials[0].bumpMap = " no_map ";
        session.Figures[0].Materials[2].reflectionMap = "/maps/Lips.png";
    }
};

TEST_F(MaterialPageStateTest, ObjectRowsWithAndWithoutMaterials) {
    cmbFigures_Click(session, 2); // the actor row
    EXPECT_FALSE(session.View.MaterialControlsEnabled);
    EXPECT_TRUE(session.View.lstMaterials.empty());
    EXPECT_EQ(session.View.cmbFiguresIndex, 2);
    EXPECT_EQ(ShownMaterial(session), nullptr);

    cmbFigures_Click(session, 1);
    EXPECT_TRUE(session.View.MaterialControlsEnabled);
    EXPECT_EQ(session.View.lstMaterials, Strings{"Band"});
    EXPECT_EQ(session.View.lstMaterialsIndex, 0);
    EXPECT_EQ(ShownMaterial(session), &session.Figures[1].Materials[0]);
}

TEST_F(MaterialPageStateTest, ShownMaterialIsAlwaysASelectedOne) {
    cmbFigures_Click(session, 0);
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
        EXPECT_EQ(MaterialPageOf(session).SelectedMaterials, selected);
        EXPECT_EQ(ShownMaterial(session), &session.Figures[0].Materials[static_cast<size_t>(shown)]);
    }
}

TEST_F(MaterialPageStateTest, ThumbnailsShowTheMapsOfTheShownMaterial) {
    cmbFigures_Click(session, 0);
    EXPECT_EQ(session.View.imgThumb[0], "/poser\\runtime\\textures\\skin.jpg");
    EXPECT_EQ(session.View.imgThumb[1], ""); // NO_MAP
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
    EXPECT_FALSE(c.cmbFigures || c.cmdDelete || c.lstMaterials);
    EXPECT_TRUE(c.Combo1); // templates can be chosen with nothing loaded

    session.View.cmdDeleteEnabled = true;
    cmbFigures_Click(session, 0);
    c = MaterialControlsOf(session);
    EXPECT_TRUE(c.cmbFigures && c.cmdDelete && c.lstMaterials && c.Combo1);
    cmbFigures_Click(session, 2);
    c = MaterialControlsOf(session);
    EXPECT_TRUE(c.cmbFigures);
    EXPECT_FALSE(c.lstMaterials || c.Combo1);

    session.Options.chkNoMaterialData = true;
    c = MaterialControlsOf(session);
    EXPECT_FALSE(c.cmbFigures || c.lstMaterials || c.Combo1);
    EXPECT_TRUE(c.cmdDelete);
}

} // namespace
} // namespace gelvane::test
