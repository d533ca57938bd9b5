#include "core/app/MainWindowState.h"

#include "core/app/Settings.h"
#include "support/ScriptedInteraction.h"

#include <gtest/gtest.h>

namespace gelvane {
namespace {

struct MainWindowStateTest : ::testing::Test {
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};

    void loadTwoFiguresAndActor() {
        session.Figures.resize(2);
        session.Figures[0].Name = "figure";
        session.Figures[0].Materials.resize(2);
        session.Figures[0].Materials[0].Name = "Skin";
        session.Figures[0].Materials[1].Name = "Eyes";
        session.Figures[1].Name = "hat";
        session.Figures[1].Materials[0].Name = "Band";
        session.cmbFigures = {"figure", "hat", "actor hip"};
        session.Actors[0].Name = "hip";
    }
};

TEST(OpenMenuOf, DroppedFilesByTheirLastFourCharacters) {
    EXPECT_EQ(MenuOfDroppedFile("/home/u/x.CR2"), OpenMenu::mnuMultiFigure);
    EXPECT_EQ(MenuOfDroppedFile("C:\\Poser\\a.pp2"), OpenMenu::mnuOpenPP2);
    EXPECT_EQ(MenuOfDroppedFile("hair.Hr2"), OpenMenu::mnuOpenHR2);
    EXPECT_EQ(MenuOfDroppedFile("p.pz2"), OpenMenu::mnuOpenPZ2);
    EXPECT_EQ(MenuOfDroppedFile("p.cm2"), OpenMenu::mnuOpenCM2);
    EXPECT_EQ(MenuOfDroppedFile("p.fc2"), OpenMenu::mnuOpenFC2);
    EXPECT_EQ(MenuOfDroppedFile("p.hd2"), OpenMenu::mnuOpenHD2);
    EXPECT_EQ(MenuOfDroppedFile("p.lt2"), OpenMenu::mnuOpenLT2);
    // Without a dot the four characters are compared whole.
    EXPECT_EQ(MenuOfDroppedFile("/tmp/posepz2"), OpenMenu::None);
    EXPECT_EQ(MenuOfDroppedFile("texture.jpg"), OpenMenu::None);
    EXPECT_EQ(MenuOfDroppedFile("a.pz"), OpenMenu::None);
    EXPECT_EQ(MenuOfDroppedFile(""), OpenMenu::None);
}

TEST(OpenMenuOf, CommandTextByItsLastThreeLetters) {
    EXPECT_EQ(MenuOfCommandText("\"/home/u/My Figure.CR2\""), OpenMenu::mnuMultiFigure);
    EXPECT_EQ(MenuOfCommandText("  /a/b.pz2  "), OpenMenu::mnuOpenPZ2);
    EXPECT_EQ(MenuOfCommandText("/a/b.p\"z\"2"), OpenMenu::mnuOpenPZ2);
    // Only the letters count, not a dot before them.
    EXPECT_EQ(MenuOfCommandText("/a/blt2"), OpenMenu::mnuOpenLT2);
    EXPECT_EQ(MenuOfCommandText("/a/b.txt"), OpenMenu::None);
    EXPECT_EQ(MenuOfCommandText(""), OpenMenu::None);
}

TEST(OpenMenuOf, KindsOfTheCommands) {
    EXPECT_EQ(KindOfMenu(OpenMenu::mnuMultiFigure), KindCR2);
    EXPECT_EQ(KindOfMenu(OpenMenu::mnuOpenCR2Props), KindCR2);
    EXPECT_EQ(KindOfMenu(OpenMenu::mnuOpenHR2), KindHR2);
    EXPECT_EQ(KindOfMenu(OpenMenu::mnuOpenPP2), KindPP2);
    EXPECT_EQ(KindOfMenu(OpenMenu::mnuOpenLT2), KindLT2);
    EXPECT_EQ(KindOfMenu(OpenMenu::mnuOpenPZ2), KindPZ2);
}

TEST_F(MainWindowStateTest, DropOfAnUnknownKindLeavesTheDialogNameAlone) {
    session.DialogFileName = "/old/earlier.pz2";
    EXPECT_EQ(BeginDrop(session, "/x/texture.jpg"), OpenMenu::None);
    EXPECT_EQ(session.DialogFileName, "/old/earlier.pz2");
    EXPECT_FALSE(session.CommandLineOpen);

    EXPECT_EQ(BeginDrop(session, "/x/new.LT2"), OpenMenu::mnuOpenLT2);
    EXPECT_EQ(session.DialogFileName, "/x/new.LT2");
    EXPECT_TRUE(session.CommandLineOpen);
}

TEST_F(MainWindowStateTest, ObjectRowsWithAndWithoutMaterials) {
    loadTwoFiguresAndActor();
    cmbFigures_Click(session, 2); // the actor row
    EXPECT_FALSE(session.View.MaterialControlsEnabled);
    EXPECT_TRUE(session.View.lstMaterials.empty());
    EXPECT_EQ(session.View.cmbFiguresIndex, 2);

    cmbFigures_Click(session, 0);
    EXPECT_TRUE(session.View.MaterialControlsEnabled);
    EXPECT_EQ(session.View.lstMaterials, (std::vector<std::string>{"Skin", "Eyes"}));
    EXPECT_EQ(session.View.lstMaterialsIndex, 0);

    cmbFigures_Click(session, 1);
    EXPECT_EQ(session.View.lstMaterials, (std::vector<std::string>{"Band"}));
}

TEST_F(MainWindowStateTest, BothSaveBoxesCannotBeChecked) {
    loadTwoFiguresAndActor();
    ASSERT_TRUE(chkChannels_Click(session, true));
    EXPECT_TRUE(session.Options.chkChannels);
    EXPECT_FALSE(session.View.ChannelControlsEnabled);
    EXPECT_TRUE(session.FileModified);

    EXPECT_FALSE(chkNoMaterialData_Click(session, true));
    EXPECT_FALSE(session.Options.chkNoMaterialData);
    EXPECT_TRUE(session.EventsEnabled);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Text, "Both morph and pose data and material data cannot be disabled");
    EXPECT_EQ(ui.messages()[0].Title, "Gelvane");
    EXPECT_EQ(ui.messages()[0].Icon, MsgIcon::Exclamation);
    EXPECT_EQ(ui.messages()[0].Buttons, MsgButtons::OK);

    // The other way round the actors decide.
    ASSERT_TRUE(chkChannels_Click(session, false));
    ASSERT_TRUE(chkNoMaterialData_Click(session, true));
    EXPECT_FALSE(session.View.MaterialControlsEnabled);
    EXPECT_FALSE(session.View.cmbFiguresEnabled);
    EXPECT_FALSE(chkChannels_Click(session, true));
    EXPECT_FALSE(session.Options.chkChannels);
    EXPECT_EQ(ui.messages().size(), 2u);

    ASSERT_TRUE(chkNoMaterialData_Click(session, false));
    EXPECT_TRUE(session.View.MaterialControlsEnabled);
    EXPECT_TRUE(session.View.cmbFiguresEnabled);
}

TEST_F(MainWindowStateTest, SaveBoxesWithNothingLoadedAndWhileTheProgramSetsThem) {
    // Nothing loaded: no figure name, no actor name, so both may be checked.
    EXPECT_TRUE(chkChannels_Click(session, true));
    EXPECT_TRUE(chkNoMaterialData_Click(session, true));
    EXPECT_TRUE(ui.messages().empty());

    Session quiet(settings, ui);
    quiet.EventsEnabled = false;
    chkNoMaterialData_Click(quiet, true);
    chkChannels_Click(quiet, true);
    EXPECT_FALSE(quiet.FileModified);
    EXPECT_FALSE(quiet.Options.chkNoMaterialData);
    EXPECT_FALSE(quiet.Options.chkChannels);
}

TEST_F(MainWindowStateTest, VersionBoxGivesTheLeadingNumber) {
    const std::pair<const char *, const char *> cases[] = {
        {"5.0", "5"}, {"4.01", "4.01"}, {"6 .5", "6.5"}, {"4.0b", "4"}, {"abc", "0"}, {"", "0"}, {"&H10", "16"},
    };
    for (const auto &[text, version] : cases) {
        session.FileModified = false;
        VersionText_Change(session, text);
        EXPECT_EQ(session.OutputVersion, version) << text;
        EXPECT_EQ(session.Options.VersionText, text);
        EXPECT_TRUE(session.FileModified);
    }
    VersionText_Change(session, "4.01");
    VersionText_Change(session, "1e999");
    EXPECT_EQ(session.OutputVersion, "4.01");
}

TEST_F(MainWindowStateTest, ThighLengthIsAFractionOrZero) {
    const std::pair<const char *, const char *> cases[] = {
        {"0,5", "0.5"}, {".25", "0.25"}, {",75", "0.75"}, {"1", "1"},  {"0.5abc", "0.5abc"}, {"1.5", "0"},
        {"-0.1", "0"},  {"", "0"},       {"abc", "0"},    {" 1", "0"}, {"9e999", "0"},
    };
    for (const auto &[typed, shown] : cases) {
        session.FileModified = false;
        txtThighLength_Change(session, typed);
        EXPECT_EQ(session.Options.txtThighLength, shown) << typed;
        EXPECT_TRUE(session.FileModified);
    }
    // The program's own assignments are corrected too.
    session.EventsEnabled = false;
    txtThighLength_Change(session, "2");
    EXPECT_EQ(session.Options.txtThighLength, "0");
}

TEST_F(MainWindowStateTest, ClosingQuestionAndHowItSaves) {
    EXPECT_FALSE(NeedsSaveQuestion(session));
    session.FileModified = true;
    EXPECT_TRUE(NeedsSaveQuestion(session));
    session.Options.chkChannels = true;
    EXPECT_TRUE(NeedsSaveQuestion(session));
    session.Options.chkNoMaterialData = true;
    EXPECT_FALSE(NeedsSaveQuestion(session));

    for (const char *name : {"/a/b.pz2", "/a/b.CM2", "/a/b.fc2", "/a/b.lt2", "/a/b.Hd2"}) {
        session.FileName = name;
        EXPECT_TRUE(CloseSavesUnderSameName(session)) << name;
    }
    for (const char *name : {"/a/b.cr2", "/a/b.pp2", "/a/b.hr2", "", "/a/pz2"}) {
        session.FileName = name;
        EXPECT_FALSE(CloseSavesUnderSameName(session)) << name;
    }
}

TEST_F(MainWindowStateTest, ResetEmptiesModelAndWindowButKeepsCaption) {
    loadTwoFiguresAndActor();
    session.View.Caption = CaptionOf("C:\\Runtime\\Poses\\Walk.pz2");
    session.FileName = "/p/Walk.pz2";
    session.FileVersion = "4.01";
    session.OutputVersion = "4.01";
    session.IsHairFile = true;
    session.FileModified = true;
    session.View.mnuSaveEnabled = session.View.mnuSaveAsEnabled = session.View.mnuExportMTLEnabled = true;
    cmbFigures_Click(session, 0);

    ResetMainWindow(session);
    EXPECT_TRUE(IsEmptyList(session.Figures));
    EXPECT_EQ(session.Figures.size(), 1u);
    EXPECT_TRUE(IsEmptyList(session.Actors));
    EXPECT_TRUE(session.FileName.empty());
    EXPECT_TRUE(session.FileVersion.empty());
    EXPECT_TRUE(session.OutputVersion.empty());
    EXPECT_FALSE(session.IsHairFile);
    EXPECT_FALSE(session.FileModified);
    EXPECT_FALSE(session.View.mnuSaveEnabled || session.View.mnuSaveAsEnabled || session.View.mnuExportMTLEnabled);
    EXPECT_FALSE(session.View.MaterialControlsEnabled || session.View.cmbFiguresEnabled);
    EXPECT_TRUE(session.View.lstMaterials.empty());
    EXPECT_EQ(session.View.Caption, "Gelvane - [Walk.pz2]");
}

} // namespace
} // namespace gelvane
