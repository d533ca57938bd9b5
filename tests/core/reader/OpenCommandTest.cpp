#include "reader/MorphLoader.h"

#include "app/Settings.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

namespace gelvane {
namespace {

class OpenCommands : public ::testing::Test {
protected:
    test::TestHome home;
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};
    int chooserCalls = 0;

    // A path waiting from outside (a dropped file): the open shows no dialog.
    std::string Dropped(std::string_view fixture) {
        const std::string name(fixture.substr(fixture.rfind('/') + 1));
        const std::string path = home.write(name, test::ReadTestData(fixture));
        session.CommandLineOpen = true;
        session.DialogFileName = path;
        return path;
    }
    int Questions() const {
        int n = 0;
        for (const auto &m : ui.messages())
            if (m.Text == kLoadChannelsQuestion) {
                EXPECT_EQ(m.Buttons, MsgButtons::YesNo);
                EXPECT_EQ(m.Icon, MsgIcon::None);
                ++n;
            }
        return n;
    }
    FigureChooser Chooser(std::optional<int> answer) {
        return [this, answer](Session &, const FigureList &) {
            ++chooserCalls;
            return answer;
        };
    }
};

TEST_F(OpenCommands, OnlyFigureLikeKindsAskForChannels) {
    for (int kind : {KindPZ2, KindCM2, KindFC2, KindHD2, KindLT2}) {
        Dropped("figures/one-figure.cr2");
        OpenCommand(session, kind);
    }
    EXPECT_EQ(Questions(), 0);
    EXPECT_FALSE(session.FileModified);

    Dropped("figures/chair.pp2");
    ui.nextAnswer(MsgResult::No);
    OpenCommand(session, KindPP2);
    EXPECT_EQ(Questions(), 1);
    EXPECT_FALSE(session.FileModified);

    Dropped("figures/long-hair.hr2");
    session.MultiFigure = true;
    ui.nextAnswer(MsgResult::Yes);
    OpenCommand(session, KindHR2);
    EXPECT_EQ(Questions(), 2);
    EXPECT_TRUE(session.FileModified); // the channels were loaded
}

TEST_F(OpenCommands, ScriptedChoiceServesOnlyThePlainCharacterCommand) {
    Dropped("figures/props-at-head.cr2");
    session.LoadChannelsChoice = 2; // a scripted "no"
    session.MultiFigure = true;
    OpenCommand(session, KindCR2);
    EXPECT_EQ(Questions(), 0);
    EXPECT_FALSE(session.FileModified);

    Dropped("figures/props-at-head.cr2");
    session.LoadChannelsChoice = 1; // a scripted "yes"
    OpenCommand(session, KindCR2);
    EXPECT_EQ(Questions(), 0);
    EXPECT_TRUE(session.FileModified);

    // The command with props always asks.
    Dropped("figures/props-at-head.cr2");
    ui.nextAnswer(MsgResult::No);
    OpenCommand(session, KindCR2, true);
    EXPECT_EQ(Questions(), 1);
}

TEST_F(OpenCommands, SilentConversionAsksNothing) {
    const std::string path = Dropped("figures/one-figure.cr2");
    session.CommandText = "-s \"" + path + "\"";
    OpenCommand(session, KindCR2);
    EXPECT_EQ(Questions(), 0);
}

TEST_F(OpenCommands, MultiFigureCommandAsksForACharacter) {
    MultiFigureCommand(session, Chooser(0)); // the dialog is cancelled
    ASSERT_EQ(ui.fileRequests().size(), 1u);
    EXPECT_EQ(ui.fileRequests()[0].Title, "Open Character file");
    EXPECT_EQ(ui.fileRequests()[0].DefaultExt, "cr2");
    EXPECT_EQ(ui.fileRequests()[0].Filter, "Characters|*.cr2|All files|*.*");
    EXPECT_FALSE(session.MultiFigure);
    EXPECT_EQ(chooserCalls, 0);

    const std::string path = home.write("Library/two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    ui.nextFile(path);
    ui.nextAnswer(MsgResult::No);
    MultiFigureCommand(session, Chooser(1));
    EXPECT_EQ(chooserCalls, 1);
    EXPECT_EQ(session.LastFolder[KindCR2], home.file("Library"));
    EXPECT_EQ(Questions(), 1);
    // The next dialog of the kind starts where this one ended.
    EXPECT_EQ(OpenDialogRequest(session, KindCR2).InitialDir, home.file("Library"));
}

TEST_F(OpenCommands, CharacterFromOutsideGoesThroughFigureSelection) {
    session.CommandText = "\"" + home.file("missing.cr2") + "\"";
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_TRUE(session.CommandLineOpen); // nothing happens; the text still waits

    const std::string path = home.write("One Figure.cr2", test::ReadTestData("figures/one-figure.cr2"));
    session.CommandText = "  \"" + path + "\" ";
    ui.nextAnswer(MsgResult::No);
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 0); // one figure: no choice to make
    EXPECT_EQ(Questions(), 1);
    EXPECT_EQ(session.DialogFileName, path);
    EXPECT_EQ(session.PoserFileKind, KindCR2);

    const std::string two = home.write("two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    session.CommandText = two;
    ui.nextAnswer(MsgResult::No);
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 1);
}

TEST_F(OpenCommands, DialogStartsInTheKindsFolder) {
    settings.PP2Folder = "/library/props";
    EXPECT_EQ(OpenDialogRequest(session, KindPP2).InitialDir, "/library/props");
    EXPECT_EQ(OpenDialogRequest(session, KindPZ2).InitialDir, ""); // "none"
    session.LastFolder[KindPP2] = "/elsewhere";
    const FileDialogRequest request = OpenDialogRequest(session, KindPP2);
    EXPECT_EQ(request.InitialDir, "/elsewhere");
    EXPECT_EQ(request.Title, "Open Prop file");
    EXPECT_EQ(request.Flags, 6148);
    EXPECT_EQ(OpenDialogRequest(session, KindLT2).Filter,
              "Light files|*.lt2|Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Face files|*.fc2|All files|*.*");
}

} // namespace
} // namespace gelvane
