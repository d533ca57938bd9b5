#include "MaterialFixture.h"

#include "core/materials/MaterialCommands.h"

namespace gelvane {
namespace {

using MaterialCommandsTest = test::MaterialFixture;

// Which field each Apply and No Map button writes, from which box: pressed with rows 0
// and 2 selected, the two take the value and row 1 keeps its own.
TEST(MaterialCommandIndices, EachButtonWritesItsFieldToTheSelectedMaterials) {
    using Field = std::function<std::string(const Material &)>;
    struct Case {
        int Index;
        int Box;
        const char *Typed;
        const char *Expected;
        Field Read;
    };
    const auto number = [](auto member) { return [member](const Material &m) { return std::to_string(m.*member); }; };
    const auto text = [](auto member) { return [member](const Material &m) { return m.*member; }; };
    std::vector<Case> cases = {
        {14, 1, "77", "77", number(&Material::NsExponent)},
        {15, 2, "12.5", "12", number(&Material::tMin)}, // the box rounds through its bar
        {16, 3, "55", "55", number(&Material::tMax)},
        {17, 4, "2.5", "2.500000", number(&Material::tExpo)},
        {22, 5, "7", "7", text(&Material::TextureColor)},
        {23, 6, "-35", "-35", text(&Material::bumpStrength)},
        {24, 7, "99", "99", text(&Material::reflectionStrength)},
    };
    // No Map and Apply of the four maps, each from its own path box.
    std::string Material::*const maps[] = {&Material::textureMap, &Material::bumpMap, &Material::reflectionMap,
                                           &Material::transparencyMap};
    for (int map = 0; map < 4; ++map) {
        cases.push_back({2 + map, 8 + map, "", "NO_MAP", text(maps[map])});
        cases.push_back({18 + map, 8 + map, "C:\\maps\\t.jpg", "C:\\maps\\t.jpg", text(maps[map])});
    }
    for (const Case &c : cases) {
        test::MaterialSession s;
        for (int row = 0; row < 3; ++row)
            for (auto map : maps)
                s.material(row).*map = ":Runtime:textures:old.jpg";
        lstMaterials_Click(s.session, {0, 2}, 0);
        const std::string before = c.Read(s.material(1));
        if (*c.Typed)
            TXT_Change(s.session, c.Box, c.Typed);
        cmd_Click(s.session, c.Index);
        EXPECT_EQ(std::tuple(c.Read(s.material(0)), c.Read(s.material(1)), c.Read(s.material(2))),
                  std::tuple(c.Expected, before, c.Expected))
            << c.Index;
        EXPECT_TRUE(s.session.FileModified) << c.Index;
        // No command touches a flag.
        EXPECT_TRUE(PropertyFlag(s.material(0), PropertyOfCommand(c.Index))) << c.Index;
    }
}

TEST_F(MaterialCommandsTest, TwoSelectedMaterialsTakeTheShownValueTheirOwnCheckAndTheSwatch) {
    material(2).tMin = 70;
    material(2).reflectThruKd = true;
    material(2).tMinEnabled = false; // a disabled property takes the value and stays disabled
    lstMaterials_Click(session, {0, 2}, 0);
    cmd_Click(session, 15);
    EXPECT_EQ(material(2).tMin, 10); // the shown material's value wins
    EXPECT_FALSE(material(2).tMinEnabled);

    CheckBox_Click(session, 2); // each field flips by itself
    EXPECT_TRUE(material(0).reflectThruKd && !material(2).reflectThruKd && page().Checks[2]);
    CheckBox_Click(session, 0);
    EXPECT_TRUE(material(0).ksIgnoreTexture && material(2).ksIgnoreTexture);

    ui.nextColor(RgbColor{1, 2, 3});
    SHP_Click(session, 2);
    EXPECT_EQ(std::tie(material(0).KaColor, material(2).KaColor, page().SHP[2]),
              std::tuple(Rgb{1, 2, 3}, Rgb{1, 2, 3}, Rgb{1, 2, 3}));
    ui.nextColor(std::nullopt); // Cancel
    SHP_Click(session, 2);
    EXPECT_EQ(material(0).KaColor, (Rgb{1, 2, 3}));
    EXPECT_EQ(material(1).KaColor, (Rgb{0, 0, 20}));

    // With nothing selected the commands write nothing and Apply doesn't mark the file.
    lstMaterials_Click(session, {}, 1);
    session.FileModified = false;
    TXT_Change(session, 1, "99");
    cmd_Click(session, 14);
    cmd_Click(session, 2);
    EXPECT_FALSE(session.FileModified);
    EXPECT_EQ(std::tie(material(1).NsExponent, material(1).textureMap), std::tuple(40, "NO_MAP"));
}

TEST_F(MaterialCommandsTest, BrowseStoresTheChosenMapInTheFormThePathBoxAsks) {
    const test::TestHome home;
    settings.PoserFolder = home.path();
    settings.MapFolder = home.file("Maps");
    settings.MapThumb = true;
    const std::string skin = home.write("Runtime/Textures/Skin/Skin A.jpg", "x");
    const std::string bump = home.write("Maps/b.bum", "x");
    lstMaterials_Click(session, {0, 1}, 1);

    ui.nextFile(std::nullopt); // Cancel
    cmd_Click(session, 11);
    ASSERT_EQ(ui.fileRequests().size(), 1u);
    EXPECT_EQ(test::Fields(ui.fileRequests()[0]),
              std::tuple("Load Bump Map",
                         "All image files|*.jpg;*.tif;*.bmp;*.psd;*.bum|JPG Image|*.jpg|TIF Image|*.tif|"
                         "BMP Image|*.bmp|PSD Image|*.psd|BUM Image|*.bum|All files|*.*",
                         "bum", home.file("Maps"), "", kOpenDialogFlags, false));
    EXPECT_TRUE(ui.fileRequests()[0].Preview);
    EXPECT_FALSE(session.FileModified);
    EXPECT_EQ(material(0).bumpMap, "NO_MAP");

    ui.nextFile(skin);
    cmd_Click(session, 10);
    EXPECT_EQ(ui.fileRequests()[1].DefaultExt, "jpg");
    const std::string stored = ":Runtime:Textures:Skin:Skin A.jpg";
    EXPECT_EQ(std::tie(material(0).textureMap, material(1).textureMap, box(8)), std::tie(stored, stored, stored));
    EXPECT_EQ(page().LastMapFolder, home.file("Runtime/Textures/Skin"));
    EXPECT_TRUE(session.FileModified);

    // The next dialog starts where the last map was; full paths stay absolute, also for Fix.
    chkTexture_Click(session, true);
    ui.nextFile(bump);
    cmd_Click(session, 11);
    EXPECT_EQ(ui.fileRequests()[2].InitialDir, home.file("Runtime/Textures/Skin"));
    EXPECT_EQ(material(0).bumpMap, bump);
    cmd_Click(session, 25);
    EXPECT_EQ(material(0).textureMap, skin);
}

TEST_F(MaterialCommandsTest, PathBoxesApplyTypedAndDroppedPathsAndOpenWhatTheyShow) {
    lstMaterials_Click(session, {0, 1}, 0);
    TXT_Change(session, 9, "");
    cmd_Click(session, 19); // an empty box leaves the maps as they are
    EXPECT_EQ(material(0).bumpMap, "NO_MAP");
    EXPECT_FALSE(session.FileModified);

    TXT_Drop(session, 9, {"/elsewhere/first.bum", "/elsewhere/second.bum"});
    EXPECT_EQ(std::tie(material(0).bumpMap, material(1).bumpMap),
              std::tuple("/elsewhere/first.bum", "/elsewhere/first.bum"));
    EXPECT_TRUE(page().MapMissing[1]); // a missing file is stored and shows in red
    TXT_Drop(session, 5, {"/elsewhere/first.bum"});
    EXPECT_EQ(box(5), "80");

    // Open takes the box's text, not the material's, and changes nothing.
    session.FileModified = false;
    TXT_Change(session, 8, "/nowhere/typed.jpg");
    cmd_Click(session, 6);
    EXPECT_EQ(Texts(), std::vector<std::string>{"Path not found"});
    EXPECT_EQ(material(0).textureMap, "NO_MAP");
    EXPECT_FALSE(session.FileModified);
}

} // namespace
} // namespace gelvane
