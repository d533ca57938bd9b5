#include "core/app/MainWindowState.h"

#include "support/SessionFixture.h"

namespace gelvane::test {
namespace {

using MainWindowStateTest = SessionFixture;

TEST_F(MainWindowStateTest, BothSaveBoxesCannotBeChecked) {
    FillTwoFigures(session);
    ASSERT_TRUE(chkChannels_Click(session, true));
    EXPECT_TRUE(session.Options.chkChannels && !session.Pose.lstActorsEnabled && session.FileModified);
    EXPECT_FALSE(chkNoMaterialData_Click(session, true));
    EXPECT_TRUE(!session.Options.chkNoMaterialData && session.EventsEnabled);
    const RecordedMessage refusal{"Both morph and pose data and material data cannot be disabled", "Gelvane",
                                  MsgIcon::Exclamation, MsgButtons::OK};
    EXPECT_EQ(ui.messages(), std::vector{refusal});

    // The other way round the actors decide.
    ASSERT_TRUE(chkChannels_Click(session, false));
    EXPECT_TRUE(session.Pose.lstActorsEnabled);
    ASSERT_TRUE(chkNoMaterialData_Click(session, true));
    EXPECT_FALSE(session.View.MaterialControlsEnabled || session.View.cmbFiguresEnabled);
    EXPECT_FALSE(chkChannels_Click(session, true));
    EXPECT_FALSE(session.Options.chkChannels);
    EXPECT_EQ(ui.messages(), (std::vector{refusal, refusal}));

    ASSERT_TRUE(chkNoMaterialData_Click(session, false));
    EXPECT_TRUE(session.View.MaterialControlsEnabled && session.View.cmbFiguresEnabled);
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
    EXPECT_FALSE(quiet.FileModified || quiet.Options.chkNoMaterialData || quiet.Options.chkChannels);
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
    // Only changes that something would be saved of.
    EXPECT_FALSE(NeedsSaveQuestion(session));
    session.FileModified = session.Options.chkChannels = true;
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

TEST_F(MainWindowStateTest, ClosingSavesAsTheFileKindSays) {
    FillTwoFigures(session);
    session.FileModified = true;
    session.FileName = home.file("figure.cr2");
    ui.nextAnswer(MsgResult::Cancel);
    EXPECT_FALSE(QueryClose(session));
    EXPECT_EQ(ui.messages().back(), (RecordedMessage{"Do you want to save before exiting?", "Gelvane", MsgIcon::None,
                                                     MsgButtons::YesNoCancel}));
    // Yes on a character goes through Save as; its cancel doesn't keep the window open.
    ui.nextAnswer(MsgResult::Yes);
    ui.nextFile(std::nullopt);
    EXPECT_TRUE(QueryClose(session));
    EXPECT_TRUE(ui.fileRequests().at(0).ForSave);
    // Yes on a pose writes it under its own name, without a dialog.
    session.FileName = home.write("saved.pz2", "old");
    ui.nextAnswer(MsgResult::Yes);
    EXPECT_TRUE(QueryClose(session));
    EXPECT_NE(home.read("saved.pz2").find("\tmaterial Skin\r\n"), std::string::npos);
    EXPECT_EQ(ui.fileRequests().size(), 1u);
    // No closes without writing.
    home.write("saved.pz2", "old");
    session.FileModified = true;
    ui.nextAnswer(MsgResult::No);
    EXPECT_TRUE(QueryClose(session));
    EXPECT_EQ(home.read("saved.pz2"), "old");
}

} // namespace
} // namespace gelvane::test
