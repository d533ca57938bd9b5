#include "core/app/PoserSearch.h"
#include "core/app/SettingsFile.h"
#include "core/materials/Templates.h"
#include "core/platform/FileVersion.h"
#include "core/platform/Paths.h"
#include "core/platform/ProfileFile.h"
#include "support/ScopedEnv.h"
#include "support/SessionFixture.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>

namespace gelvane {
namespace {

using test::RecordedMessage;
using test::ScriptedInteraction;
using test::TestHome;

std::string Ini(const TestHome &home) {
    return home.read("Settings.ini");
}

// A file that carries a fixed version record, as a Windows executable does.
std::string FakeExecutable(uint16_t a, uint16_t b, uint16_t c, uint16_t d) {
    std::string bytes = "MZ\x90";
    bytes += std::string(200, '\0');
    const auto dword = [&](uint32_t v) {
        for (int i = 0; i < 4; ++i)
            bytes += static_cast<char>((v >> (8 * i)) & 0xFF);
    };
    dword(0xFEEF04BD);
    dword(0x00010000);
    dword(static_cast<uint32_t>(a) << 16 | b);
    dword(static_cast<uint32_t>(c) << 16 | d);
    bytes += std::string(64, '\0');
    return bytes;
}

TEST(ProfileFile, FindsSectionsAndKeysWithoutRegardToCase) {
    TestHome home;
    const std::string file = home.write("p.ini", "; comment\r\n[One]\r\nKey = \"quoted value\" \r\n[two]\nX=1\rY=2\n");
    EXPECT_EQ(ReadProfileString("ONE", "key", file, ""), "quoted value");
    EXPECT_EQ(ReadProfileString("Two", "y", file, ""), "2");
    EXPECT_EQ(ReadProfileString("Two", "Missing", file, "dflt"), "dflt");
    EXPECT_EQ(ReadProfileString("Three", "X", file, ""), "");
    EXPECT_EQ(ReadProfileString("One", "X", home.file("missing.ini"), "d"), "d");

    const std::string longFolder = "/" + std::string(300, 'a');
    home.write("long.ini", "[Folders]\r\nCR2=" + longFolder + "\r\n");
    EXPECT_EQ(ReadIni("Folders", "CR2", home.file("long.ini"), ""), longFolder.substr(0, 259));
}

TEST(ProfileFile, WritesInPlaceAndAppendsMissingSections) {
    TestHome home;
    const std::string file = home.write("p.ini", "[Folders]\r\nCR2=old\r\n; keep me\r\n\r\n[Other]\r\nA=1\r\n");
    const std::string_view cr2 = "cr2", fresh = "new", map = "Map", none = "none", b = "B", two = "2";
    ASSERT_TRUE(WriteProfileString("folders", &cr2, &fresh, file));
    ASSERT_TRUE(WriteProfileString("FOLDERS", &map, &none, file));
    ASSERT_TRUE(WriteProfileString("General", &b, &two, file));
    EXPECT_EQ(home.read("p.ini"), "[Folders]\r\ncr2=new\r\n; keep me\r\nMap=none\r\n\r\n[Other]\r\nA=1\r\n"
                                  "[General]\r\nB=2\r\n");
    // A null value removes the entry, a null key the whole section.
    ASSERT_TRUE(WriteProfileString("Folders", &map, nullptr, file));
    ASSERT_TRUE(WriteProfileString("other", nullptr, nullptr, file));
    EXPECT_EQ(home.read("p.ini"), "[Folders]\r\ncr2=new\r\n; keep me\r\n\r\n[General]\r\nB=2\r\n");

    // WriteIni passes an empty text as it is unless asked to remove.
    ASSERT_TRUE(WriteIni("General", "B", "", file, false));
    EXPECT_TRUE(home.read("p.ini").ends_with("[General]\r\nB=\r\n"));
    ASSERT_TRUE(WriteIni("General", "B", "", file, true));
    EXPECT_TRUE(home.read("p.ini").ends_with("[General]\r\n"));
    EXPECT_FALSE(WriteIni("Folders", "CR2", "x", home.file("no/such/folder/p.ini"), false));
}

TEST(LoadSettings, FirstStartCreatesTheFileWithAllDefaults) {
    TestHome home;
    ScriptedInteraction ui;
    const Settings s = LoadSettings(ui);
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_EQ(Ini(home), "[Folders]\r\nCR2=none\r\nPZ2=none\r\nPP2=none\r\nHR2=none\r\nCM2=none\r\n"
                         "FC2=none\r\nHD2=none\r\nLT2=none\r\nMap=none\r\nSave=none\r\n"
                         "[General]\r\nCdlgThumb=True\r\nMapThumb=True\r\nMainThumb=True\r\nAutoCorrect=True\r\n"
                         "SetNoMap=False\r\nSetPoserVersion=True\r\nSetP5Version=True\r\nPVersionNumber=4.01\r\n"
                         "P5VersionNumber=4.01\r\nSaveAsType=P4\r\nFileSystem=DOS\r\nReportTime=True\r\n"
                         "DisableProperties=True\r\n");
    EXPECT_EQ(s.PoserFolder, "none");

    // A second start finds everything in place and changes nothing.
    const std::string before = Ini(home);
    LoadSettings(ui);
    EXPECT_EQ(Ini(home), before);
}

TEST(LoadSettings, StaleFoldersAreDerivedFromPoserFolderOrSetToNone) {
    TestHome home;
    namespace fs = std::filesystem;
    const std::string poser = home.file("Poser 4");
    for (const char *folder : {"Poser 4/Runtime/Libraries/character", "Poser 4/Runtime/Libraries/Pose",
                               "Poser 4/Runtime/Textures", "elsewhere"})
        fs::create_directories(home.file(folder));
    home.write("Poser 4/Poser.exe", FakeExecutable(5, 0, 3, 1));
    home.write("Settings.ini", "[Folders]\r\nPoser=" + poser + "\r\nCR2=/gone/Character\r\nHR2=/gone/Hair\r\nPP2=" +
                                   home.file("elsewhere") + "\r\n");
    ScriptedInteraction ui;
    const Settings s = LoadSettings(ui);
    EXPECT_TRUE(ui.messages().empty());
    // Folders take the spelling on disk; one that exists is kept; one without a place under Poser is "none".
    EXPECT_EQ(std::tie(s.PoserFolder, s.CR2Folder, s.PZ2Folder, s.SaveFolder, s.MapFolder),
              std::tuple(poser, poser + "/Runtime/Libraries/character", poser + "/Runtime/Libraries/Pose",
                         poser + "/Runtime/Libraries/Pose", poser + "/Runtime/Textures"));
    EXPECT_EQ(std::tie(s.PP2Folder, s.HR2Folder, s.LT2Folder, s.PVersionNumber, s.P5VersionNumber),
              std::tuple(home.file("elsewhere"), "none", "none", "5.0", "5.0"));
    EXPECT_NE(Ini(home).find("\r\nPVersionNumber=5.0\r\n"), std::string::npos);
}

TEST(LoadSettings, PoserExeWithoutVersionGivesEmptyVersion) {
    TestHome home;
    std::filesystem::create_directories(home.file("Poser"));
    home.write("Poser/poser.EXE", "MZ no resources here");
    home.write("Settings.ini", "[Folders]\r\nPoser=" + home.file("Poser") + "\r\n[General]\r\nP5VersionNumber=6\r\n");
    ScriptedInteraction ui;
    const Settings s = LoadSettings(ui);
    EXPECT_EQ(std::tie(s.PVersionNumber, s.P5VersionNumber), std::tuple("", "6"));
    EXPECT_NE(Ini(home).find("\r\nPVersionNumber=\r\n"), std::string::npos);
}

struct StoredValueCase {
    const char *Line;
    bool (*Get)(const Settings &);
    bool Expected;
};

TEST(LoadSettings, StoredWordsAreParsedAndLeftInTheFile) {
    const StoredValueCase cases[] = {
        {"MapThumb=TRUE", [](const Settings &s) { return s.MapThumb; }, true},
        {"MapThumb=yes", [](const Settings &s) { return s.MapThumb; }, false},
        {"SetNoMap=1", [](const Settings &s) { return s.SetNoMap; }, false},
        {"SetNoMap=true", [](const Settings &s) { return s.SetNoMap; }, true},
        {"ReportTime=False", [](const Settings &s) { return s.ReportTime; }, false},
        {"SaveAsType=p4", [](const Settings &s) { return s.SaveAsP4; }, true},
        {"SaveAsType=P6", [](const Settings &s) { return s.SaveAsP4; }, false},
        {"FileSystem=dos", [](const Settings &s) { return s.FileSystemDOS; }, true},
        {"FileSystem=Mac", [](const Settings &s) { return s.FileSystemDOS; }, false},
    };
    for (const StoredValueCase &c : cases) {
        SCOPED_TRACE(c.Line);
        TestHome home;
        home.write("Settings.ini", std::string("[Folders]\r\n[General]\r\n") + c.Line + "\r\n");
        ScriptedInteraction ui;
        EXPECT_EQ(c.Get(LoadSettings(ui)), c.Expected);
        EXPECT_NE(Ini(home).find(std::string("\r\n") + c.Line + "\r\n"), std::string::npos);
    }
}

TEST(LoadSettings, DefaultTemplateMustExist) {
    TestHome home;
    home.write("Settings.ini", "[General]\r\nDefaultTemplate=Skin\r\n");
    ScriptedInteraction ui;
    EXPECT_EQ(LoadSettings(ui).DefaultTemplate, "");
    EXPECT_NE(Ini(home).find("DefaultTemplate=Skin\r\n"), std::string::npos);
    CreateStateFolders();
    EXPECT_TRUE(std::filesystem::is_directory(home.file("Cache")));
    home.write("Templates/Skin.cfg", "x");
    EXPECT_EQ(LoadSettings(ui).DefaultTemplate, "Skin");
}

PoserFinder Finds(std::vector<std::string> folders) {
    return [folders] { return folders; };
}

constexpr const char *kChooseLater =
    "You can manually choose your Poser folder later\r\nin the Preferences form (in the Settings menu).";

TEST(LoadSettings, FoldersFoundAreOfferedUntilOneIsStored) {
    TestHome home;
    std::filesystem::create_directories(home.file("Poser/Runtime/Libraries/Hand"));
    const std::string poser = home.file("Poser");
    // Declined: "none" and a notice; the offer comes again at the next start.
    ScriptedInteraction no;
    no.nextAnswer(MsgResult::No);
    no.nextAnswer(MsgResult::No);
    EXPECT_EQ(LoadSettings(no, Finds({poser, home.path()})).PoserFolder, "none");
    ASSERT_EQ(no.messages().size(), 3u);
    EXPECT_EQ(no.messages()[0], (RecordedMessage{"Is " + poser + "\r\nyour Poser directory?", "Default Poser folder",
                                                 MsgIcon::None, MsgButtons::YesNo}));
    EXPECT_EQ(no.messages()[2].Text, kChooseLater);
    ScriptedInteraction yes;
    yes.nextAnswer(MsgResult::Yes);
    EXPECT_EQ(LoadSettings(yes, Finds({poser})).HD2Folder, poser + "/Runtime/Libraries/Hand");
    ScriptedInteraction later; // stored: nothing is searched or asked
    LoadSettings(later, [] { return std::vector<std::string>{"searched"}; });
    EXPECT_TRUE(later.messages().empty());
}

TEST(LoadSettings, OnlyTheWindowsFirstStartAsksWithTheFolderChooser) {
    TestHome home;
    std::filesystem::create_directories(home.file("Poser/Runtime/Textures"));
    ScriptedInteraction silent;
    EXPECT_EQ(LoadSettings(silent).PoserFolder, "none");
    EXPECT_EQ(Ini(home).find("Poser="), std::string::npos); // left for the window's start
    ScriptedInteraction ui;
    ui.nextFolder(home.file("poser/runtime")); // the Runtime folder stands for its parent
    EXPECT_EQ(LoadSettings(ui, Finds({})).MapFolder, home.file("Poser/Runtime/Textures"));
    EXPECT_NE(Ini(home).find("Poser=" + home.file("Poser") + "\r\n"), std::string::npos);

    TestHome second; // cancelled: "none" and the notice, and no chooser at later starts
    ScriptedInteraction cancel;
    cancel.nextFolder(std::nullopt);
    EXPECT_EQ(LoadSettings(cancel, Finds({})).PoserFolder, "none");
    EXPECT_EQ(cancel.messages().back().Text, kChooseLater);
    ScriptedInteraction next;
    LoadSettings(next, Finds({}));
    EXPECT_TRUE(next.messages().empty());
}

TEST(LoadSettings, PoserFolderIsNormalisedAndWhatTheUserWroteIsKept) {
    TestHome home;
    std::filesystem::create_directories(home.file("Poser/Runtime/Textures"));
    const std::string poser = home.file("Poser");
    const test::ScopedEnv homeFolder("HOME", home.path());
    for (const std::string &written : {poser + "/", poser + "\\", std::string("~/Poser//"), home.file("POSER")}) {
        home.write("Settings.ini", "[Folders]\r\nPoser=" + written + "\r\n");
        ScriptedInteraction ui;
        const Settings s = LoadSettings(ui, Finds({}));
        EXPECT_EQ(std::tie(s.PoserFolder, s.MapFolder), std::tuple(poser, poser + "/Runtime/Textures")) << written;
        EXPECT_NE(Ini(home).find("Poser=" + written + "\r\n"), std::string::npos) << written;
    }
    // A folder that isn't there is reported and stays as written.
    home.write("Settings.ini", "[Folders]\r\nPoser=/media/usb/Poser\r\n");
    ScriptedInteraction ui;
    EXPECT_EQ(LoadSettings(ui, Finds({poser})).PoserFolder, "none");
    EXPECT_EQ(test::Each(ui.messages(), &RecordedMessage::Text),
              std::vector<std::string>{"The Poser folder /media/usb/Poser\r\nnamed in Settings.ini doesn't exist."});
    EXPECT_NE(Ini(home).find("Poser=/media/usb/Poser\r\n"), std::string::npos);
}

TEST(PoserSearch, FindsInstallationsAndLibrariesWhereLinuxUsersKeepThem) {
    TestHome home;
    for (const char *folder :
         {"wine/drive_c/Program Files/Vendor/Poser 4/Runtime", "wine/drive_c/program files (x86)/Maker/Pro/runtime",
          "wine/drive_c/Program Files/a/b/c/d/Runtime", // too deep
          "wine/drive_c/users/me/Runtime",              // no installation
          "Documents/Poser Content/Runtime", "Documents/.cache/Runtime",
          "Documents/Poser Content/Other/Runtime"}) // inside a library found
        std::filesystem::create_directories(home.file(folder));
    home.write("wine/drive_c/program files (x86)/Maker/Pro/poser.exe", "MZ");
    std::filesystem::create_symlink(home.file("wine/drive_c/users"), home.file("Documents/users"));
    const PoserSearchPlaces places{{home.file("wine"), home.file("wine/")}, home.file("Documents")};
    EXPECT_EQ(FindPoserFolders(places),
              (std::vector<std::string>{home.file("wine/drive_c/program files (x86)/Maker/Pro"),
                                        home.file("wine/drive_c/Program Files/Vendor/Poser 4"),
                                        home.file("Documents/Poser Content")}));
}

TEST(SaveSettings, WritesAFreshFileInItsFixedOrder) {
    TestHome home;
    SaveSettings(Settings{});
    EXPECT_EQ(Ini(home), "[Folders]\r\nCR2=none\r\nPZ2=none\r\nPP2=none\r\nHR2=none\r\nCM2=none\r\nFC2=none\r\n"
                         "HD2=none\r\nLT2=none\r\nPoser=none\r\nMap=none\r\nSave=none\r\n"
                         "[General]\r\nCdlgThumb=True\r\nMapThumb=True\r\nMainThumb=True\r\nAutoCorrect=True\r\n"
                         "SetNoMap=False\r\nSetPoserVersion=True\r\nSetP5Version=True\r\nPVersionNumber=4.01\r\n"
                         "P5VersionNumber=4.01\r\nReportTime=True\r\nDefaultTemplate=\r\nDisableProperties=True\r\n"
                         "SaveAsType=P4\r\nFileSystem=DOS\r\n");
}

TEST(FileVersion, ReadsTheFixedVersionRecord) {
    TestHome home;
    EXPECT_EQ(FileVersionString(home.write("a.exe", FakeExecutable(4, 1, 0, 22))), "4.1.0.22");
    EXPECT_EQ(FileVersionString(home.write("b.exe", "MZ plain")), "");
    EXPECT_EQ(FileVersionString(home.file("missing.exe")), "");
}

} // namespace
} // namespace gelvane
