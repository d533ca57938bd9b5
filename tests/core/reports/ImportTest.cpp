// Importing materials and channels into an open pose, with scripted answers.
#include "core/reports/Import.h"

#include "core/app/OpenCommands.h"
#include "core/model/Text.h"
#include "core/reader/OpenFile.h"
#include "core/writer/PoseWriter.h"
#include "support/SessionFixture.h"

using namespace gelvane;
using namespace gelvane::test;

namespace {

class Import : public SessionFixture {
protected:
    Import() { settings.ReportTime = false; }
    // frmFigure over a file of one figure: it takes that figure without asking.
    FigureWindowOpener figureWindow = [](Session &s) { RunFigureSelection(s, nullptr); };

    std::string Data(const std::string &name) { return home.write(name, ReadTestData("import/" + name)); }
    // Opens import/open.pz2: BODY:1 and hip:1 with channels, hip:1 owning a custom material.
    void OpenPose() {
        session.PoserFileKind = KindPZ2;
        session.CommandLineOpen = true;
        session.DialogFileName = Data("open.pz2");
        OpenFile(session);
        ASSERT_FALSE(session.OpenFailed);
    }
    Strings ActorNames() const { return NamesOf(session.Actors); }
    Strings OwnerNames() const { return NamesOf(session.Figures); }
    // Row i up to the last owner is Figures[i]; the rows behind it are plain actors.
    void ExpectRowsInStep() const {
        const size_t owners = IsEmptyList(session.Figures) ? 0 : session.Figures.size();
        ASSERT_GE(session.cmbFigures.size(), owners);
        for (size_t i = 0; i < session.cmbFigures.size(); ++i) {
            const std::string &row = session.cmbFigures[i];
            if (i < owners)
                EXPECT_TRUE(row == session.Figures[i].Name || row == "actor " + session.Figures[i].Name) << row;
            else
                EXPECT_TRUE(StartsWith(row, "actor ")) << row;
        }
    }
};

} // namespace

TEST_F(Import, MaterialsGoInFrontOfTheOpenOwnersWithTheRowsInStep) {
    OpenPose();
    EXPECT_EQ(OwnerNames(), (Strings{"figure", "hip:1"}));
    ui.nextFile(Data("props.pz2"));
    RunImport(session, {0, 0, false}, figureWindow);
    // The owner of hip:1's custom material leaves; hip:1 keeps a row as a plain actor.
    EXPECT_EQ(OwnerNames(), (Strings{"prop box_1", "prop ball_1", "figure"}));
    EXPECT_EQ(session.cmbFigures, (Strings{"prop box_1", "prop ball_1", "figure", "actor BODY:1", "actor hip:1"}));
    EXPECT_EQ(ActorNames(), (Strings{"BODY:1", "hip:1"}));
    EXPECT_EQ(session.FileName, home.file("open.pz2"));
    EXPECT_TRUE(session.FileModified);
    EXPECT_EQ(ui.fileRequests().back().Title, "Open Pose file");

    // The figure of a multi-figure file through the figure window.
    ui.nextFile(Data("body.cr2"));
    RunImport(session, {0, 7, false}, figureWindow);
    EXPECT_EQ(OwnerNames(), (Strings{"figure", "prop box_1", "prop ball_1", "figure"}));
    EXPECT_EQ(session.Figures[0].Materials[0].Name, "Cloth");
    ExpectRowsInStep();
}

TEST_F(Import, ACancelOrAFailedReadChangesNothing) {
    OpenPose();
    const std::vector<Figure> figures = session.Figures;
    const std::vector<Actor> actors = session.Actors;
    const Strings rows = session.cmbFigures;
    const SaveOptions options = session.Options;
    const struct {
        ImportChoice choice;
        const char *file; // nothing: the dialog is cancelled
    } cases[] = {
        {{0, 0, false}, nullptr},     {{0, 7, false}, nullptr},    {{1, 0, false}, nullptr},
        {{1, 9, false}, nullptr},     {{1, 6, false}, nullptr},    {{0, 0, false}, "broken.pz2"},
        {{1, 1, false}, "props.pz2"}, {{0, 4, false}, "wave.pz2"},
    };
    home.write("broken.pz2", ReadTestData("cmdline/no-closing-brace.pz2"));
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(FileTypeCaption(c.choice.optFileType)) + " " + (c.file ? c.file : "cancelled"));
        ui.nextFile(
            c.file ? std::optional<std::string>(c.file == std::string("broken.pz2") ? home.file(c.file) : Data(c.file))
                   : std::nullopt);
        RunImport(session, c.choice, figureWindow);
        EXPECT_EQ(session.Figures, figures);
        EXPECT_EQ(session.Actors, actors);
        EXPECT_EQ(session.cmbFigures, rows);
        EXPECT_TRUE(session.Options.chkNoMaterialDataEnabled && !session.Options.chkNoMaterialData);
        EXPECT_EQ(session.Options.chkChannels, options.chkChannels);
        EXPECT_FALSE(session.FileModified);
        EXPECT_FALSE(session.ImportMode);
    }
    // The hair dialog of the channel import offers the prop extension.
    EXPECT_EQ(std::tie(ui.fileRequests()[3].Title, ui.fileRequests()[3].DefaultExt),
              std::tuple("Open Hair file", "pp2"));
    // The failed read, the props without channels, the pose without materials: each said so.
    Strings texts = Texts();
    for (std::string &text : texts)
        text.erase(std::min(text.find('\r'), text.size()));
    EXPECT_EQ(texts, (Strings{"Error in the OpenFile function", "There is no morph or pose data in the file",
                              "There is no material data in the opened file"}));
}

TEST_F(Import, APoseReplacesTheActorsAndACameraFileAppends) {
    OpenPose();
    ui.nextFile(Data("wave.pz2"));
    RunImport(session, {1, 0, false}, figureWindow);
    EXPECT_EQ(ActorNames(), (Strings{"rShldr:1"}));
    // The camera's text is longer than the pose's: its load reads to its own end.
    ui.nextFile(Data("camera.cm2"));
    RunImport(session, {1, 1, false}, figureWindow);
    EXPECT_EQ(ActorNames(), (Strings{"rShldr:1", "MAIN_CAMERA"}));
    ASSERT_EQ(session.Actors[1].Channels.size(), 2u);
    EXPECT_EQ(session.Actors[1].Channels[1].Value, 2.5);
    EXPECT_EQ(session.Pose.lstActors.size(), 2u);
    ExpectRowsInStep();
    EXPECT_EQ(session.cmbFigures.back(), "actor rShldr:1");
}

TEST_F(Import, TheBodyActorGoesOnlyAfterOkAndAfterTheNewOneWasRead) {
    OpenPose();
    const std::vector<Actor> before = session.Actors;
    ui.nextAnswer(MsgResult::Cancel);
    RunImport(session, {1, 5, true}, figureWindow);
    ui.nextAnswer(MsgResult::OK);
    ui.nextFile(std::nullopt);
    RunImport(session, {1, 5, true}, figureWindow);
    EXPECT_EQ(session.Actors, before);
    EXPECT_EQ(ui.fileRequests().size(), 1u);
    EXPECT_EQ(std::tie(ui.messages()[0].Text, ui.messages()[0].Buttons),
              std::tuple(kReplaceBodyQuestion, MsgButtons::OKCancel));

    for (const int fileType : {5, 6}) {
        SCOPED_TRACE(fileType);
        ui.nextAnswer(MsgResult::OK);
        ui.nextFile(Data("body.cr2"));
        RunImport(session, {1, fileType, true}, figureWindow);
        EXPECT_EQ(ActorNames(), (Strings{"BODY:1", "hip:1"}));
        EXPECT_EQ(session.Actors[0].Channels[0].Name, "Fat");
        EXPECT_EQ(session.Pose.lstActors.size(), 2u);
        ExpectRowsInStep();
    }
}

TEST_F(Import, PoseWrittenAfterTheImportsMatchesItsBytes) {
    OpenPose();
    ui.nextFile(Data("props.pz2"));
    RunImport(session, {0, 0, false}, figureWindow);
    ui.nextFile(Data("camera.cm2"));
    RunImport(session, {1, 1, false}, figureWindow);
    session.OutputPath = home.file("out.pz2");
    WritePoseFile(session);
    EXPECT_EQ(home.read("out.pz2"), ReadTestData("import/expected.pz2"));
}

TEST(ImportWindow, BodyOnlyAppliesToTheChannelsOfCharacterFiles) {
    // {data type, file type, body kept}: the three kinds of character file keep it, a prop file doesn't.
    const std::tuple<int, int, bool> cases[] = {
        {1, 5, true}, {1, 7, true}, {1, 8, false}, {1, 4, false}, {0, 6, false}};
    for (const auto &[data, file, kept] : cases) {
        ImportChoice choice{data, file, true};
        ApplyImportRules(choice);
        EXPECT_EQ(choice.chkBody, kept) << data << file;
    }
}
