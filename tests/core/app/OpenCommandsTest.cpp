#include "core/app/OpenCommands.h"

#include "../reader/FigureTestSession.h"
#include "core/model/CommandText.h"
#include "core/reader/OpenFile.h"

namespace gelvane::test {
namespace {

using OpenCommands = FigureTestSession;

TEST_F(OpenCommands, FigureLikeKindsAskForChannels) {
    Dropped("one-figure-cr.cr2");
    ui.nextAnswer(MsgResult::No);
    OpenCommand(session, KindCR2);
    EXPECT_EQ(MaterialNames(), (Strings{"Skin", "Eyes"}));
    EXPECT_FALSE(session.FileModified);
    EXPECT_EQ(Questions(), 1);
    EXPECT_EQ(ui.messages()[0], (RecordedMessage{kLoadChannelsQuestion, "Gelvane", MsgIcon::None, MsgButtons::YesNo}));

    Dropped("chair.pp2");
    ui.nextAnswer(MsgResult::Yes);
    OpenCommand(session, KindPP2);
    EXPECT_EQ(session.cmbFigures.front(), "prop chair");
    EXPECT_EQ(MaterialNames(), (Strings{"Wood"}));
    EXPECT_TRUE(session.FileModified);

    Dropped("long-hair.hr2");
    ui.nextAnswer(MsgResult::Yes);
    OpenCommand(session, KindHR2);
    EXPECT_EQ(session.cmbFigures, Strings{"prop Hair_7"}); // the owner is named by its prop line
    EXPECT_EQ(MaterialNames(), (Strings{"Hair"}));
    EXPECT_TRUE(session.IsHairFile);
    ASSERT_EQ(session.Actors.size(), 1u);
    EXPECT_EQ(session.Actors[0].Name, "figureHair");
    EXPECT_EQ(Questions(), 3);

    // Pose-like kinds read their channels while opening and ask nothing.
    session.DialogFileName = home.write("pose.pz2", "{\nversion\n{\nnumber 4\n}\nactor hip\n{\nchannels\n{\n}\n}\n}\n");
    session.CommandLineOpen = true;
    OpenCommand(session, KindPZ2);
    EXPECT_EQ(Questions(), 3);
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
    EXPECT_EQ(std::tie(ui.fileRequests().at(0).Title, ui.fileRequests()[0].Filter),
              std::tuple("Open Character file", "Characters|*.cr2|All files|*.*"));
    EXPECT_FALSE(session.MultiFigure);

    const std::string path = home.write("Library/two.cr2", ReadTestData("figures/two-figures.cr2"));
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

    const std::string path = home.write("One Figure.cr2", ReadTestData("figures/one-figure.cr2"));
    session.CommandText = "  \"" + path + "\" ";
    ui.nextAnswer(MsgResult::No);
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 0); // one figure: no choice
    EXPECT_EQ(session.FileName, path);
    EXPECT_EQ(MaterialNames(), (Strings{"Skin", "Eyes"}));

    session.CommandText = home.write("two.cr2", ReadTestData("figures/two-figures.cr2"));
    ui.nextAnswer(MsgResult::No);
    OpenCharacterFromOutside(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 1);
    EXPECT_EQ(MaterialNames(), (Strings{"Skin"}));
}

TEST(OpenMenuOf, DroppedFilesAndCommandTexts) {
    EXPECT_EQ(MenuOfDroppedFile("/home/u/x.CR2"), OpenMenu::mnuMultiFigure);
    EXPECT_EQ(MenuOfDroppedFile("C:\\Poser\\a.pp2"), OpenMenu::mnuOpenPP2);
    // Without a dot the last four characters are compared whole.
    for (const char *path : {"/tmp/posepz2", "texture.jpg", "a.pz", ""})
        EXPECT_EQ(MenuOfDroppedFile(path), OpenMenu::None) << path;
    // A command text is known by its last three letters; its menu opens that kind again.
    for (const char *ext : {"cr2", "pz2", "pp2", "Hr2", "cm2", "fc2", "hd2", "lt2"}) {
        const OpenMenu menu = MenuOfCommandText(std::string("\"/a/b c.") + ext + "\" ");
        EXPECT_EQ(menu, MenuOfDroppedFile(std::string("b.") + ext)) << ext;
        EXPECT_EQ(KindOfMenu(menu), FileKindOfCommand(ext)) << ext;
    }
    EXPECT_EQ(MenuOfCommandText("/a/b.txt"), OpenMenu::None);
    EXPECT_EQ(KindOfMenu(OpenMenu::mnuOpenCR2Props), KindCR2);
}

TEST_F(OpenCommands, DroppedFileOfNoKindChangesNothing) {
    session.DialogFileName = "/old/earlier.pz2";
    DropFile(session, home.write("texture.jpg", "not a pose"), Chooser(0));
    EXPECT_EQ(session.DialogFileName, "/old/earlier.pz2");
    EXPECT_FALSE(session.CommandLineOpen);
    EXPECT_TRUE(ui.fileRequests().empty() && ui.messages().empty());
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
} // namespace gelvane::test
