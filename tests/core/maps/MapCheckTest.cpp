#include "core/maps/MapCheck.h"
#include "core/maps/MapFinder.h"
#include "core/materials/MaterialPageState.h"

#include "MapFixture.h"

#include <algorithm>

namespace gelvane::test {
namespace {

class MapCheckTest : public MapFixture {
protected:
    // Adds an owner whose materials have these texture maps (other maps "NO_MAP").
    void figure(const Strings &textureMaps) {
        Figure figure{"Figure 1", {}};
        for (const std::string &map : textureMaps) {
            Material &m = figure.Materials.emplace_back();
            m.Name = "mat" + std::to_string(figure.Materials.size());
            m.textureMap = map;
            m.bumpMap = m.reflectionMap = m.transparencyMap = "NO_MAP";
        }
        if (IsEmptyList(session.Figures))
            session.Figures.clear();
        session.Figures.push_back(figure);
    }
    Strings textureMaps(size_t figure) const {
        return Each(session.Figures.at(figure).Materials, &Material::textureMap);
    }
    long scans() const { return std::ranges::count(ui.statusLines(), std::string("Scanning folders...")); }
    Strings folderQuestions() const {
        Strings titles;
        for (const auto &message : ui.messages())
            if (message.Title == "ChooseFolder")
                titles.push_back(message.Text);
        return titles;
    }
};

TEST_F(MapCheckTest, FixTogglesAWorkingReferenceBetweenTheTwoForms) {
    poserFile("Runtime/Textures/Skin/A.jpg");
    figure({":Runtime:textures:skin:a.jpg", "NO_MAP"});
    session.View.chkTexture = true;
    EXPECT_EQ(FixMaps(session, 0, {0, 1}, MapField::Texture), 2);
    EXPECT_EQ(textureMaps(0), (Strings{textures() + "/Skin/A.jpg", "NO_MAP"}));
    EXPECT_TRUE(session.FileModified);
    session.View.chkTexture = false;
    FixMaps(session, 0, {0, 1}, MapField::Texture);
    EXPECT_EQ(textureMaps(0), (Strings{":Runtime:Textures:Skin:A.jpg", "NO_MAP"}));
    EXPECT_EQ(scans(), 0);
}

TEST_F(MapCheckTest, CheckAfterOpenScansOnceForAllMaterialsThatShareAMissingMap) {
    poserFile("Runtime/Textures/New/Face.JPG");
    poserFile("Runtime/Textures/New/Body.jpg");
    figure({":Old:face.jpg", ":Old:face.jpg", ":Old:body.jpg"});
    figure({":Runtime:Textures:Old:FACE.jpg", ""}); // the second has no map to repair
    session.Figures[1].Materials[0].bumpMap = ":Old:body.jpg";
    CheckMapReferences(session);
    EXPECT_EQ(scans(), 1);
    const std::string face = ":Runtime:Textures:New:Face.JPG", body = ":Runtime:Textures:New:Body.jpg";
    EXPECT_EQ(textureMaps(0), (Strings{face, face, body}));
    EXPECT_EQ(textureMaps(1), (Strings{face, ""}));
    EXPECT_EQ(session.Figures[1].Materials[0].bumpMap, body);
    EXPECT_TRUE(folderQuestions().empty());
    EXPECT_FALSE(session.Maps.CheckingMaps || ui.ProgressVisible());
    EXPECT_EQ(session.View.cmbFiguresIndex, 0);
    EXPECT_EQ(home.read("Cache/jpgs.txt"),
              "Body.jpg\r\n*" + textures() + "/New\r\nFace.JPG\r\n*" + textures() + "/New\r\n");
}

TEST_F(MapCheckTest, AMapFoundNowhereIsAskedAboutOnceAndKeptOrSwitchedOff) {
    poserFile("Runtime/Textures/Other/x.jpg");
    figure({":Skin:gone.jpg", ":Skin:gone.jpg"});
    CheckMapReferences(session);
    EXPECT_EQ(scans(), 1);
    // The remembered answer is the lower-cased full path, cut to Poser form.
    EXPECT_EQ(textureMaps(0), (Strings{":Skin:gone.jpg", ":runtime:textures:skin:gone.jpg"}));
    settings.SetNoMap = true;
    figure({":Skin:gone2.jpg"});
    CheckMapReferences(session);
    EXPECT_EQ(textureMaps(1), Strings{"NO_MAP"});
}

TEST_F(MapCheckTest, DuplicatesCostOneChoicePerRun) {
    poserFile("Runtime/Textures/One/dup.jpg");
    poserFile("Runtime/Textures/Two/dup.jpg");
    figure({":Old:dup.jpg", ":Old:dup.jpg", ":Other:dup.jpg"});
    ui.nextMapChoice(0);
    ui.nextMapChoice(1);
    CheckMapReferences(session);
    // A different reference to the same name is a different question.
    EXPECT_EQ(ui.mapQuestions().size(), 2u);
    const std::string one = ":Runtime:Textures:One:dup.jpg";
    EXPECT_EQ(textureMaps(0), (Strings{one, one, ":Runtime:Textures:Two:dup.jpg"}));
    // A "NO_MAP" answer also holds for the rest of the run.
    ui.nextMapChoice(-1);
    figure({":Third:dup.jpg", ":Third:dup.jpg"});
    CheckMapReferences(session);
    EXPECT_EQ(scans(), 1);
    EXPECT_EQ(ui.mapQuestions().size(), 3u);
    EXPECT_EQ(textureMaps(1), (Strings{"NO_MAP", "NO_MAP"}));
}

TEST_F(MapCheckTest, AReferenceOutsidePoserAsksWhereToLook) {
    const std::string elsewhere = home.write("Elsewhere/Deep/A.jpg", "x");
    poserFile("Runtime/Textures/keep.txt");
    figure({"D:\\Maps\\a.jpg", "D:\\Maps\\b.jpg", ":Skin:c.jpg"});
    // Cancelled: the command ends, later materials keep their text.
    ui.nextFolder(std::nullopt);
    FixMaps(session, 0, {0, 1}, MapField::Texture);
    EXPECT_EQ(folderQuestions(), Strings{"Look for a.jpg in:"});
    EXPECT_EQ(textureMaps(0), (Strings{"D:\\Maps\\a.jpg", "D:\\Maps\\b.jpg", ":Skin:c.jpg"}));
    EXPECT_FALSE(ui.ProgressVisible());
    // Answered: that folder is scanned and the file found there keeps its absolute form.
    ui.nextFolder(home.path() + "/elsewhere");
    FixMaps(session, 0, {0}, MapField::Texture);
    EXPECT_EQ(textureMaps(0)[0], elsewhere);
    // A Poser form doesn't ask.
    FixMaps(session, 0, {2}, MapField::Texture);
    EXPECT_EQ(folderQuestions().size(), 2u);
}

TEST_F(MapCheckTest, TwinTextureFoldersAreScannedOnceForDifferentMissingMaps) {
    poserFile("Runtime/Textures/Skin/Skin.jpg");
    poserFile("Runtime/textures/Vendor/Face.jpg");
    figure({":Old:face.jpg", ":Old:gone.jpg", ":Old:skin.jpg", ":Old:gone2.jpg"});
    CheckMapReferences(session);
    EXPECT_EQ(textureMaps(0)[0], ":Runtime:textures:Vendor:Face.jpg");
    EXPECT_EQ(textureMaps(0)[2], ":Runtime:Textures:Skin:Skin.jpg");
    // Both twins were walked for the first miss, and neither again for the later ones.
    EXPECT_EQ(home.read("Cache/jpgs.txt"),
              "Skin.jpg\r\n*" + textures() + "/Skin\r\nFace.jpg\r\n*" + poser() + "/Runtime/textures/Vendor\r\n");
    EXPECT_TRUE(folderQuestions().empty());
}

TEST_F(MapCheckTest, AWindowsRuntimeOutsidePoserAsksWhereToLookWhenPoserLacksTheFile) {
    poserFile("Runtime/Textures/Skin/a.jpg");
    const std::string ext = home.write("Content/Runtime/textures/Ext/ext.jpg", "x");
    const std::string more = home.write("Content/Runtime/textures/Ext/more.jpg", "x");
    figure({"D:\\Content\\Runtime\\textures\\Ext\\ext.jpg", "D:\\Content\\Runtime\\textures\\Ext\\more.jpg"});
    ui.nextFolder(home.path() + "/content");
    CheckMapReferences(session);
    EXPECT_EQ(folderQuestions(), std::vector<std::string>{"Look for ext.jpg in:"});
    EXPECT_EQ(textureMaps(0)[0], ext);
    EXPECT_EQ(textureMaps(0)[1], more); // found in what the answer's scan listed
}

TEST_F(MapCheckTest, ThumbnailsAreKeptAndShownUnderTheFileFound) {
    const std::string moved = poserFile("Runtime/Textures/New/Face.JPG");
    const std::string body = poserFile("Runtime/Textures/Skin/Body.jpg");
    std::vector<std::string> loaded;
    session.LoadThumbNail = [&](const std::string &path) { loaded.push_back(path); };
    figure({":Old:face.jpg", "C:\\Program Files\\Poser\\Runtime\\textures\\skin\\body.jpg"});
    CheckMapReferences(session);
    // The repaired map's picture is made at once; the working one was made while reading.
    EXPECT_EQ(loaded, std::vector<std::string>{moved});
    cmbFigures_Click(session, 0);
    EXPECT_EQ(session.View.imgThumb[0], moved);
    lstMaterials_Click(session, {1}, 1);
    EXPECT_EQ(session.View.imgThumb[0], body);
}

TEST_F(MapCheckTest, AWrongPoserFolderIsReportedAndEndsTheCommand) {
    settings.PoserFolder = home.path() + "/NoPoser";
    figure({":Skin:a.jpg", ":Skin:b.jpg"});
    EXPECT_EQ(FixMaps(session, 0, {0, 1}, MapField::Texture), 0);
    EXPECT_EQ(ui.messages(), std::vector<RecordedMessage>({{"The Default Poser\r\nfolder preference hasn't been "
                                                            "set up correctly.",
                                                            "Gelvane", MsgIcon::Exclamation, MsgButtons::OK}}));
    EXPECT_EQ(textureMaps(0), (Strings{":Skin:a.jpg", ":Skin:b.jpg"}));
    EXPECT_FALSE(session.FileModified);
}

TEST_F(MapCheckTest, NothingHappensWithoutAutoCorrectOrWithoutMaterials) {
    figure({":Skin:a.jpg"});
    settings.AutoCorrect = false;
    CheckMapReferences(session);
    settings.AutoCorrect = true;
    session.Options.chkNoMaterialData = true;
    CheckMapReferences(session);
    EXPECT_FALSE(ui.progressEverShown());
    EXPECT_EQ(textureMaps(0), Strings{":Skin:a.jpg"});
}

TEST_F(MapCheckTest, WindowsReferencesResolveAgainstThePoserFolder) {
    poserFile("Runtime/Textures/Skin/A.JPG");
    figure({"C:\\Program Files\\Poser\\Runtime\\textures\\Skin\\a.jpg", ":Runtime:Textures:skin:a.jpg"});
    CheckMapReferences(session);
    EXPECT_EQ(scans(), 0);
    // A working Poser form is no file name as it stands, so it is kept as written.
    EXPECT_EQ(textureMaps(0), (Strings{":Runtime:Textures:Skin:A.JPG", ":Runtime:Textures:skin:a.jpg"}));
    // One that moved is searched for under Poser without asking where.
    figure({"C:\\Program Files\\Poser\\Runtime\\textures\\Old\\a.jpg"});
    CheckMapReferences(session);
    EXPECT_EQ(scans(), 1);
    EXPECT_TRUE(folderQuestions().empty());
    EXPECT_EQ(textureMaps(1), Strings{":Runtime:Textures:Skin:A.JPG"});
}

} // namespace
} // namespace gelvane::test
