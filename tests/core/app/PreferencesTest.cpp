#include "core/app/Preferences.h"

#include "core/platform/Paths.h"
#include "support/SessionFixture.h"

namespace gelvane {
namespace {

struct Calls {
    std::vector<std::pair<std::string, bool>> Associated;
    int Refreshes = 0;
    AssociationCalls Make() {
        return {[](const std::string &ext) { return ext == ".cr2"; },
                [this](const std::string &ext, bool unassociate) { Associated.emplace_back(ext, unassociate); },
                [this] { ++Refreshes; }};
    }
};

TEST(Preferences, OkStoresTheFormAndWritesSettingsWhole) {
    test::TestHome home;
    test::ScriptedInteraction ui;
    home.write("Poser/Runtime/Libraries/Character/x", "");
    home.write("Poser/Runtime/textures/x", ""); // found whatever its case
    home.write("Templates/Eyes.cfg", "");
    home.write("Templates/Skin.cfg", "");
    Settings s;
    s.DefaultTemplate = "skin";
    s.PVersionNumber = "4.01";
    s.PZ2Folder = home.file("Poser"); // a folder already: Browse leaves it
    Calls calls;
    PreferencesForm form = LoadPreferences(s, calls.Make());
    EXPECT_TRUE(FolderExists(home.file("Cache")));
    EXPECT_EQ(form.chkAs, (std::array<bool, 8>{false, true, false, false, false, false, false, false}));
    ASSERT_EQ(form.cmbTemplate.size(), 2u);
    ASSERT_GE(form.cmbTemplateIndex, 0);
    EXPECT_EQ(form.cmbTemplate[static_cast<size_t>(form.cmbTemplateIndex)], "Skin");

    ui.nextFolder(home.file("Poser"));
    Browse_Click(form, kPoserFolderRow, s, ui);
    EXPECT_EQ(form.TXT[6], home.file("Poser"));
    EXPECT_EQ(form.TXT[0], home.file("Poser/Runtime/Libraries/Character"));
    EXPECT_EQ(form.TXT[5], home.file("Poser/Runtime/textures"));
    EXPECT_EQ(form.TXT[1], home.file("Poser"));
    EXPECT_EQ(form.TXT[3], "none"); // no Hair folder under it

    form.TXT[2].clear();     // a cleared box keeps the stored folder
    form.TXT[6] += "/";      // a typed Poser folder is normalised
    form.chkVersion = false; // an unset version box keeps and stores its number
    form.txtVersion = "5.0";
    form.chkAs[0] = true;
    form.chkAs[1] = false;
    form.optPoser4 = false;
    form.chkThumbMain = !s.MainThumb;
    chkThumbMain_Click(form, s, ui);
    ViewState view;
    cmdOK_Click(form, s, view, calls.Make(), ui);

    EXPECT_EQ(calls.Associated, (std::vector<std::pair<std::string, bool>>{{".pz2", false}, {".cr2", true}}));
    EXPECT_EQ(calls.Refreshes, 1);
    EXPECT_TRUE(view.mnuPoserEnabled);
    EXPECT_EQ(s.PP2Folder, "none");
    EXPECT_EQ(s.PVersionNumber, "5.0");
    EXPECT_EQ(ui.messages().back().Text, "Changes will take effect the next\r\ntime you start Gelvane.");
    const std::string poser = home.file("Poser");
    EXPECT_EQ(home.read("Settings.ini"),
              "[Folders]\r\nCR2=" + poser + "/Runtime/Libraries/Character\r\nPZ2=" + poser +
                  "\r\nPP2=none\r\nHR2=none\r\nCM2=none\r\nFC2=none\r\nHD2=none\r\nLT2=none\r\nPoser=" + poser +
                  "\r\nMap=" + poser +
                  "/Runtime/textures\r\nSave=none\r\n[General]\r\nCdlgThumb=True\r\n"
                  "MapThumb=True\r\nMainThumb=False\r\nAutoCorrect=True\r\nSetNoMap=False\r\n"
                  "SetPoserVersion=False\r\nSetP5Version=True\r\nPVersionNumber=5.0\r\nP5VersionNumber=4.01\r\n"
                  "ReportTime=True\r\nDefaultTemplate=Skin\r\nDisableProperties=True\r\nSaveAsType=P5\r\n"
                  "FileSystem=DOS\r\n");
}

} // namespace
} // namespace gelvane
