#include "core/app/OpenCommands.h"

#include "../reader/FigureTestSession.h"
#include "core/reader/OpenFile.h"

namespace gelvane {
namespace {

using Strings = std::vector<std::string>;
// The map reference check marks every open as modified; these tests watch the channel load alone.
class OpenCommands : public test::FigureTestSession {
protected:
    OpenCommands() { settings.AutoCorrect = false; }
};

TEST_F(OpenCommands, FigureLikeKindsAskForChannels) {
    for (const char *fixture : {"one-figure.cr2", "one-figure-cr.cr2", "one-figure-crlf.cr2"}) {
        Dropped(fixture);
        ui.nextAnswer(MsgResult::No);
        OpenCommand(session, KindCR2);
        EXPECT_EQ(MaterialNames(), (Strings{"Skin", "Eyes"})) << fixture;
        EXPECT_FALSE(session.FileModified) << fixture;
    }
    EXPECT_EQ(Questions(), 3);
    EXPECT_EQ(ui.messages()[0].Buttons, MsgButtons::YesNo);
    EXPECT_EQ(ui.messages()[0].Icon, MsgIcon::None);

    Dropped("chair.pp2");
    ui.nextAnswer(MsgResult::Yes);
    OpenCommand(session, KindPP2);
    EXPECT_EQ(session.cmbFigures.front(), "prop chair");
    EXPECT_EQ(MaterialNames(), (Strings{"Wood"}));
    EXPECT_TRUE(session.FileModified);

    Dropped("long-hair.hr2");
    ui.nextAnswer(MsgResult::Yes);
    OpenCommand(session, KindHR2);
    EXPECT_EQ(MaterialNames(), (Strings{"Hair"}));
    EXPECT_TRUE(session.IsHairFile);
    ASSERT_EQ(session.Actors.size(), 1u);
    EXPECT_EQ(session.Actors[0].Name, "figureHair");
    EXPECT_EQ(Questions(), 5);

    // Pose-like kinds read their channels while opening and ask nothing.
    session.DialogFileName = home.write("pose.pz2", "{\nversion\n{\nnumber 4\n}\nactor hip\n{\nchannels\n{\n}\n}\n}\n");
    session.CommandLineOpen = true;
    OpenCommand(session, KindPZ2);
    EXPECT_EQ(Questions(), 5);
}

TEST_F(OpenCommands, CharacterCommands) {
    Dropped("props-at-head.cr2");
    session.LoadChannelsChoice = 2; // a scripted "no"
    OpenCommand(session, KindCR2);
    EXPECT_EQ(session.cmbFigures, (Strings{"figure"}));
    EXPECT_FALSE(session.FileModified);

    Dropped("props-at-head.cr2");
    session.LoadChannelsChoice = 1; // a scripted "yes"
    OpenCommand(session, KindCR2);
    EXPECT_TRUE(session.FileModified);
    EXPECT_EQ(Questions(), 0);

    // With props: the props at the head become owners, and the question comes anyway.
    Dropped("props-at-head.cr2");
    ui.nextAnswer(MsgResult::Yes);
    OpenCommand(session, KindCR2, true);
    // The channels are those behind the figure's own geometry line: not the head's prop.
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "prop ball_1", "actor BODY:1"}));
    EXPECT_EQ(Questions(), 1);

    // A cancelled dialog asks nothing.
    ui.nextFile(std::nullopt);
    OpenCommand(session, KindCR2);
    EXPECT_TRUE(session.OpenCancelled);
    EXPECT_EQ(Questions(), 1);
}

TEST_F(OpenCommands, SilentConversionWritesThePoseAndAsksNothing) {
    const std::string path = Dropped("one-figure.cr2");
    session.CommandText = "-s \"" + path + "\"";
    OpenCommand(session, KindCR2);
    EXPECT_EQ(Questions(), 0);
    EXPECT_FALSE(session.OpenFailed);
    EXPECT_NE(home.read("one-figure.pz2").find("material Skin"), std::string::npos);
}

TEST_F(OpenCommands, MultiFigureCommand) {
    ui.nextFile(std::nullopt);
    MultiFigureCommand(session, Chooser(0));
    ASSERT_EQ(ui.fileRequests().size(), 1u);
    EXPECT_EQ(ui.fileRequests()[0].Title, "Open Character file");
    EXPECT_EQ(ui.fileRequests()[0].Filter, "Characters|*.cr2|All files|*.*");
    EXPECT_FALSE(session.MultiFigure);

    const std::string path = home.write("Library/two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    ui.nextFile(path);
    ui.nextAnswer(MsgResult::No);
    MultiFigureCommand(session, Chooser(1));
    EXPECT_EQ(chooserCalls, 1);
    EXPECT_EQ(MaterialNames(), (Strings{"Cloth", "Buttons"}));
    EXPECT_EQ(session.FileName, path);
    // The next dialog of the kind starts where this one ended.
    EXPECT_EQ(OpenDialogRequest(session, KindCR2).InitialDir, home.file("Library"));
}

TEST_F(OpenCommands, CharacterFromOutside) {
    session.CommandText = "\"" + home.file("missing.cr2") + "\"";
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_TRUE(session.CommandLineOpen); // nothing happens; the text still waits

    const std::string path = home.write("One Figure.cr2", test::ReadTestData("figures/one-figure.cr2"));
    session.CommandText = "  \"" + path + "\" ";
    ui.nextAnswer(MsgResult::No);
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 0); // one figure: no choice
    EXPECT_EQ(session.FileName, path);
    EXPECT_EQ(MaterialNames(), (Strings{"Skin", "Eyes"}));

    session.CommandText = home.write("two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    ui.nextAnswer(MsgResult::No);
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 1);
    EXPECT_EQ(MaterialNames(), (Strings{"Skin"}));
}

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

TEST_F(OpenCommands, DroppedFileOfNoKindChangesNothing) {
    session.DialogFileName = "/old/earlier.pz2";
    DropFile(session, home.write("texture.jpg", "not a pose"), Chooser(0));
    EXPECT_EQ(session.DialogFileName, "/old/earlier.pz2");
    EXPECT_FALSE(session.CommandLineOpen);
    EXPECT_TRUE(ui.fileRequests().empty());
    EXPECT_TRUE(ui.messages().empty());
}

TEST_F(OpenCommands, DialogStartsInTheKindsFolder) {
    settings.PP2Folder = "/library/props";
    EXPECT_EQ(OpenDialogRequest(session, KindPP2).InitialDir, "/library/props");
    EXPECT_EQ(OpenDialogRequest(session, KindPZ2).InitialDir, ""); // "none"
    session.LastFolder[KindPP2] = "/elsewhere";
    EXPECT_EQ(OpenDialogRequest(session, KindPP2).InitialDir, "/elsewhere");
    EXPECT_EQ(OpenDialogRequest(session, KindLT2).Filter,
              "Light files|*.lt2|Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Face files|*.fc2|All files|*.*");
}

TEST_F(OpenCommands, CorpusFilesOpenWithTheirChannels) {
    const std::string male = test::CorpusPath("sl_avatar/SL_Male.cr2");
    const std::string light = test::CorpusPath("reality/Mesh Light.pp2");
    session.CommandText = male;
    ui.nextAnswer(MsgResult::Yes);
    OpenCharacterFromOutside(session, Chooser(0)); // one figure: straight through
    EXPECT_EQ(chooserCalls, 0);
    EXPECT_EQ(session.Figures[0].Name, "figure");
    EXPECT_FALSE(IsEmptyList(session.Figures[0].Materials));
    EXPECT_TRUE(session.FileModified);

    session.CommandText.clear();
    session.CommandLineOpen = true;
    session.DialogFileName = light;
    ui.nextAnswer(MsgResult::Yes);
    OpenCommand(session, KindPP2);
    EXPECT_EQ(session.cmbFigures.front(), "prop MeshLight");
    EXPECT_TRUE(session.FileModified);
    EXPECT_EQ(Texts(), Strings(2, kLoadChannelsQuestion));
}

TEST_F(OpenCommands, ASecondOpenAsksAgainWhatTheFirstWasAnswered) {
    settings.AutoCorrect = true;
    settings.PoserFolder = home.file("Poser");
    home.write("Poser/Runtime/Textures/One/dup.jpg", "x");
    home.write("Poser/Runtime/Textures/Two/dup.jpg", "x");
    const std::string ext = home.write("Content/Runtime/textures/ext.jpg", "x");
    const std::string pose = home.write("maps.pz2", "{\nfigure\n{\nmaterial A\n{\ntextureMap \"D:\\Content\\Runtime\\"
                                                    "textures\\ext.jpg\"\nbumpMap \":Old:dup.jpg\"\n}\n}\n}\n");
    const auto open = [&] {
        session.CommandLineOpen = true;
        session.DialogFileName = pose;
        OpenCommand(session, KindPZ2);
        return session.Figures.at(0).Materials.at(0);
    };
    ui.nextFolder(std::nullopt); // where to look for ext.jpg: cancelled
    ui.nextMapChoice(-1);        // which dup.jpg: none
    EXPECT_EQ(open().bumpMap, "NO_MAP");
    ui.nextFolder(home.file("Content"));
    ui.nextMapChoice(0);
    const Material second = open();
    EXPECT_EQ(second.textureMap, ext);
    EXPECT_EQ(second.bumpMap, ":Runtime:Textures:One:dup.jpg");
}

} // namespace
} // namespace gelvane
