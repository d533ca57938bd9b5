#include "core/reader/OpenFile.h"

#include "core/model/Text.h"
#include "support/PoserText.h"
#include "support/SessionFixture.h"

#include <filesystem>

namespace gelvane::test {
namespace {

class OpenFileTest : public SessionFixture {
protected:
    // Opens `path` through the open dialog as `kind`.
    void Open(int kind, const std::string &path) {
        session.PoserFileKind = static_cast<int16_t>(kind);
        ui.nextFile(path);
        OpenFile(session);
    }
    void OpenText(int kind, std::string_view name, std::string_view bytes) { Open(kind, home.write(name, bytes)); }
    // The last failure report of the open, or empty.
    std::string FailureText() const {
        for (auto m = ui.messages().rbegin(); m != ui.messages().rend(); ++m)
            if (m->Text.starts_with("Error in the OpenFile function"))
                return m->Text;
        return {};
    }
};

TEST_F(OpenFileTest, FigureBlockAndPropBecomeOwnersWhateverTheLineEnds) {
    settings.DefaultTemplate = "skin only";
    session.View.Combo1 = {"All", "Skin Only"};
    int loaded = -1;
    session.LoadTemplateGroups = [&](int row) { loaded = row; };
    const std::string lf = ReadTestData("reader/pose-figure-prop.pz2");
    OpenText(KindPZ2, "Pose.pz2", lf);
    ASSERT_EQ(FailureText(), "");
    EXPECT_FALSE(session.OpenFailed || session.FileModified);
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "prop hat", "actor hip"}));
    EXPECT_EQ(NamesOf(session.Figures), (Strings{"figure", "prop hat"}));
    EXPECT_EQ(std::tuple(MaterialNames(0), MaterialNames(1), session.View.lstMaterials),
              std::tuple(Strings{"skin", "Eyes"}, Strings{"hatband"}, Strings{"skin", "Eyes"}));
    EXPECT_EQ(std::tie(session.Figures[0].Materials[0].textureMap, session.FileComment, session.FileVersion,
                       session.View.Caption, session.View.cmbFiguresIndex, session.DialogFileName),
              std::tuple("C:\\My Maps\\skin map.jpg", "Skin pose\r\nby tester 2", "4.01", "Gelvane - [Pose.pz2]", 0,
                         session.FileName));
    EXPECT_TRUE(session.View.mnuSaveEnabled && session.View.mnuSaveAsEnabled && session.View.mnuExportMTLEnabled &&
                session.View.cmdDeleteEnabled);
    EXPECT_FALSE(session.Options.chkNoMaterialData || ui.ProgressVisible());
    // The row of the default template is chosen and loaded.
    EXPECT_EQ(std::tuple(session.View.Combo1Index, loaded), std::tuple(1, 1));

    const std::vector<Figure> figures = session.Figures;
    const std::vector<Actor> actors = session.Actors;
    for (const char *end : {"\r\n", "\r"}) {
        OpenText(KindPZ2, "Pose.pz2", Replace(lf, "\n", end));
        EXPECT_EQ(std::tie(session.Figures, session.Actors, session.FileComment),
                  std::tie(figures, actors, "Skin pose\r\nby tester 2"));
    }
}

TEST_F(OpenFileTest, CustomMaterialOwnersFollowTheFiguresOwn) {
    Open(KindPZ2, home.write("c.pz2", ReadTestData("reader/pose-custom-material.pz2")));
    ASSERT_FALSE(session.OpenFailed);
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "actor lHand", "actor hip"}));
    EXPECT_EQ(NamesOf(session.Figures), (Strings{"figure", "lHand"}));
    EXPECT_EQ(std::tuple(MaterialNames(0), MaterialNames(1), session.Actors.size()),
              std::tuple(Strings{"skin"}, Strings{"nails"}, 2u));
}

TEST_F(OpenFileTest, DialogIsPreparedByKindAndRemembersTheFolder) {
    settings.PZ2Folder = "/poses";
    session.PoserFileKind = KindCM2;
    ui.nextFile(std::nullopt);
    OpenFile(session);
    session.MultiFigure = true;
    session.PoserFileKind = KindPZ2;
    ui.nextFile(std::nullopt);
    OpenFile(session);
    ASSERT_EQ(ui.fileRequests().size(), 2u);
    // The setting "none" leaves the folder to the dialog.
    EXPECT_EQ(Fields(ui.fileRequests()[0]),
              std::tuple("Open Camera file",
                         "Camera files|*.cm2|Pose files|*.pz2|Hand files|*.hd2|Face files|*.fc2|Light files|*.lt2|"
                         "All files|*.*",
                         "cm2", "", "", 6148, false));
    EXPECT_EQ(ui.fileRequests()[1].InitialDir, "/poses");
    EXPECT_TRUE(session.OpenCancelled && !session.MultiFigure && ui.messages().empty());

    const std::string path = home.write("sub/p.pz2", ReadTestData("reader/pose-figure-prop.pz2"));
    Open(KindPZ2, path);
    EXPECT_FALSE(session.OpenCancelled);
    EXPECT_EQ(session.LastFolder[KindPZ2], home.path() + "/sub");
    ui.nextFile(std::nullopt);
    OpenFile(session);
    EXPECT_EQ(ui.fileRequests().back().InitialDir, home.path() + "/sub");
    // The cancelled dialog leaves the model as it was.
    EXPECT_EQ(session.Figures.size(), 2u);
}

TEST_F(OpenFileTest, CommentNeedsAMarkAndAnEnd) {
    const std::string body = "version\n\t{\n\tnumber 4.01\n\t}\nfigure\n\t{\n\tmaterial a\n\t\t{\n\t\t}\n\t}\n}\n";
    OpenText(KindPZ2, "a.pz2", "{\n// first line only\nversion\n\t{\n\tnumber 4.01\n\t}\n}\n");
    EXPECT_EQ(session.FileComment, "");
    OpenText(KindPZ2, "b.pz2", "{\nplain text\n// second # line\n\t  indented\n" + body);
    // Marks go wherever they stand, and so do blanks at line starts.
    EXPECT_EQ(session.FileComment, "plain text\r\nsecond  line\r\nindented");
    OpenText(KindPZ2, "c.pz2", "{\n# comment\nfigure\n{\nmaterial a\n{\n}\n}\n}\n");
    EXPECT_EQ(session.FileComment, "comment");
    OpenText(KindPZ2, "d.pz2", "{\n# comment without an end {x}\n}\n");
    EXPECT_EQ(session.FileComment, "");
}

TEST_F(OpenFileTest, VersionFollowsTheSettingsAndTheVersionBoxRule) {
    const std::string file = "{\nversion\n{\nnumber 5.0\n}\nfigure\n{\nmaterial a\n{\n}\n}\n}\n";
    settings.SetPoserVersion = false;
    OpenText(KindPZ2, "v.pz2", file);
    EXPECT_EQ(std::tie(session.FileVersion, session.OutputVersion, session.Options.VersionText),
              std::tuple("5.0", "5", "5.0"));

    settings.SetPoserVersion = true;
    settings.PVersionNumber = "4.01";
    OpenText(KindPZ2, "v.pz2", file);
    EXPECT_EQ(session.OutputVersion, "4.01");

    // Without "number ": the Poser 4 setting, or "4.01" when it is empty; Poser 5 takes its own.
    const std::string noNumber = "{\nversion\n{\n}\nfigure\n{\nmaterial a\n{\n}\n}\n}\n";
    settings.SetPoserVersion = false;
    settings.PVersionNumber = "";
    OpenText(KindPZ2, "n.pz2", noNumber);
    EXPECT_EQ(session.FileVersion, "");
    EXPECT_EQ(session.OutputVersion, "4.01");
    session.Options.PoserFormatP5 = true;
    settings.SetP5Version = false;
    settings.P5VersionNumber = "6";
    OpenText(KindPZ2, "n.pz2", noNumber);
    EXPECT_EQ(session.OutputVersion, "6");
}

TEST_F(OpenFileTest, PoseWithoutMaterialsIsNoFailure) {
    Open(KindPZ2, home.write("c.pz2", ReadTestData("reader/channels-only.pz2")));
    EXPECT_EQ(FailureText(), "");
    EXPECT_FALSE(session.OpenFailed);
    EXPECT_EQ(session.Figures, std::vector<Figure>(1));
    EXPECT_TRUE(session.cmbFigures.empty() && session.Options.chkNoMaterialData);
    EXPECT_FALSE(session.Options.chkNoMaterialDataEnabled || session.View.mnuExportMTLEnabled);
}

TEST_F(OpenFileTest, FailuresAreReportedWithTheirStep) {
    Open(KindPZ2, home.file("missing.pz2"));
    EXPECT_EQ(FailureText(),
              "Error in the OpenFile function\r\nFile not found, error number 53\r\nCode line number 10");
    EXPECT_EQ(session.DialogFileName, "");
    EXPECT_TRUE(session.OpenFailed && session.Options.chkChannels && session.Options.chkNoMaterialData);
    EXPECT_FALSE(session.OpenCancelled || session.View.cmbFiguresEnabled || session.View.MaterialControlsEnabled ||
                 ui.ProgressVisible());

    struct Case {
        int kind;
        std::string bytes;
        std::string expected;
    };
    const std::string binary("\x01\x02\xff\x00\x7f", 5);
    const std::vector<Case> cases = {
        {KindPZ2, "", "Input past end of file, error number 62\r\nCode line number 10"},
        {KindCR2, binary, "Input past end of file, error number 62"},
        {KindCR2, "{\nversion\n{\nnumber 4\n}\nfigure\n{\nfigureType 1\nmaterial a\n{\n}\n}\n}\n",
         "Bad record number, error number 63\r\nCode line number 29"},
        {KindPP2, "{\nversion\n{\nnumber 4\n}\nprop p\n{\n}\ndisplayMode 1\naddActor p\n}\n",
         "error number 5\r\nCode line number 49"},
        {KindPZ2, "{\nversion\n{\nnumber 4\n}\nfigure\n{\nmaterial a\n{\nKdColor 200 0 0 1 \n}\n}\n}\n",
         "Overflow, error number 6\r\nCode line number 58"},
        {KindPZ2, "{\nversion\n{\nnumber 4\n}\nfigure\n{\nmaterial a\n{\ntMin 1}\n}\n}\n", "error number 5"},
    };
    for (const Case &c : cases) {
        const size_t before = ui.messages().size();
        session.OpenFailed = false;
        OpenText(c.kind, "broken.file", c.bytes);
        EXPECT_TRUE(session.OpenFailed) << c.bytes;
        EXPECT_NE(FailureText().find(c.expected), std::string::npos) << FailureText();
        EXPECT_EQ(ui.messages().size(), before + 1);
        if (c.kind == KindCR2) { // the tail scan fails before any material is read
            EXPECT_TRUE(IsEmptyList(session.Figures) && session.Figures[0].Materials.size() == 1);
        }
    }
}

TEST_F(OpenFileTest, BatchModeShowsNoProgress) {
    session.BatchMode = true;
    OpenText(KindCR2, "x.cr2", ReadTestData("reader/figure-with-props.cr2"));
    EXPECT_FALSE(session.OpenFailed);
    OpenText(KindPZ2, "x.pz2", "");
    EXPECT_TRUE(session.OpenFailed);
    EXPECT_NE(FailureText(), "");
    EXPECT_FALSE(ui.progressEverShown());
}

TEST_F(OpenFileTest, ImportKeepsTheLoadedFilesStateAndSkipsChannels) {
    Open(KindPZ2, home.write("first.pz2", ReadTestData("reader/pose-figure-prop.pz2")));
    const std::string caption = session.View.Caption;
    session.ImportMode = true;
    session.Options.chkChannels = false;
    OpenText(KindPZ2, "second.pz2", "{\nversion\n{\nnumber 6\n}\nfigure\n{\nmaterial other\n{\n}\n}\n}\n");
    EXPECT_EQ(std::tie(session.View.Caption, session.FileVersion), std::tie(caption, "4.01"));
    EXPECT_TRUE(session.FileName.ends_with("first.pz2") && session.FileModified && !session.Options.chkChannels);
    EXPECT_EQ(MaterialNames(0), (Strings{"other"}));

    // Import of a file without materials says so.
    OpenText(KindPZ2, "none.pz2", ReadTestData("reader/channels-only.pz2"));
    ASSERT_FALSE(ui.messages().empty());
    EXPECT_EQ(ui.messages().back().Text, "There is no material data in the opened file");
}

TEST_F(OpenFileTest, CommandLineTextNamesTheFile) {
    const std::string path = home.write("Cmd File.pz2", ReadTestData("reader/pose-figure-prop.pz2"));
    session.CommandLineOpen = true;
    session.CommandText = "  \"" + path + "\" ";
    session.PoserFileKind = KindPZ2;
    OpenFile(session);
    EXPECT_TRUE(ui.fileRequests().empty() && !session.CommandLineOpen);
    EXPECT_EQ(std::tuple(session.FileName, session.Figures.size()), std::tuple(path, 2u));

    // "-s ": the path stands behind the switch; the reader leaves the writing to its caller.
    session.CommandLineOpen = true;
    session.CommandText = "-S " + path;
    OpenFile(session);
    EXPECT_TRUE(session.SilentConvert);
    EXPECT_EQ(std::tie(session.FileName, session.OutputPath), std::tuple(path, ""));
}

TEST(AddFigureLine, PutsOwnersInFrontOfActorRows) {
    TestSession t;
    Session &session = t.session;
    AddFigureLine(session, "actor hip");
    AddFigureLine(session, "figure");
    AddFigureLine(session, "actor chest");
    AddFigureLine(session, "prop hat");
    AddFigureLine(session, "actor lHand", 3);
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "prop hat", "actor lHand", "actor hip", "actor chest"}));
    EXPECT_ANY_THROW(AddFigureLine(session, "x", 9));
}

TEST_F(OpenFileTest, FreshOpenDropsTheActorsOfTheFileBefore) {
    OpenText(KindPZ2, "wave.pz2", PoserFile(ActorBlock("actor hip", DialBlock("targetGeom Smile", "0.5"))));
    ASSERT_EQ(FailureText(), "");
    ASSERT_FALSE(IsEmptyList(session.Actors));
    OpenText(KindPZ2, "mat.pz2", PoserFile("figure\n{\nmaterial Skin\n{\nKdColor 1 1 1 1\n}\n}\n"));
    ASSERT_EQ(FailureText(), "");
    EXPECT_TRUE(IsEmptyList(session.Actors));
    EXPECT_EQ(MaterialNames(0), Strings{"Skin"});
}

} // namespace
} // namespace gelvane::test
