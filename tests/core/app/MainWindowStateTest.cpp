#include "core/app/MainWindowState.h"

#include "core/model/Session.h"
#include "core/model/Settings.h"
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

TEST_F(MainWindowStateTest, BothSaveBoxesCannotBeChecked) {
    loadTwoFiguresAndActor();
    ASSERT_TRUE(chkChannels_Click(session, true));
    EXPECT_TRUE(session.Options.chkChannels);
    EXPECT_FALSE(session.Pose.lstActorsEnabled);
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
    EXPECT_TRUE(session.Pose.lstActorsEnabled);
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

} // namespace
} // namespace gelvane
