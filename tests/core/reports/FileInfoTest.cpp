#include "core/reports/FileInfo.h"
#include "core/reports/FileStatistics.h"
#include "core/writer/PoseWriter.h"
#include "support/SessionFixture.h"

using namespace gelvane;

TEST(FileInfo, SizeAndTypeTexts) {
    // Decimal units; one byte below a megabyte still reads in kilobytes.
    EXPECT_EQ(SizeText(999999), "1000 KB");
    EXPECT_EQ(SizeText(1000000), "1 MB");
    EXPECT_EQ(SizeText(1250), "1.2 KB"); // ties go to the even place
    EXPECT_EQ(SizeText(2345678), "2.35 MB");
    EXPECT_EQ(FileTypeText("/p/Figure.CR2"), "Character (CR2)");
    EXPECT_EQ(FileTypeText("/p/notes.txt"), "N/A");
}

TEST(FileInfo, TwoLineNoteBecomesTwoCommentLines) {
    Settings settings;
    test::ScriptedInteraction ui;
    Session session(settings, ui);
    session.FileComment = "old";
    StoreNotes(session, "  first line\nsecond line  ");
    EXPECT_EQ(std::tuple(session.FileComment, NotesOfComment(session.FileComment), session.FileModified),
              std::tuple("first line\r\nsecond line", "first line\nsecond line", false));

    session.OutputVersion = "4.01";
    session.Options.chkChannels = session.Options.chkNoMaterialData = true;
    LineWriter out("\r\n");
    WritePose(session, out);
    EXPECT_EQ(out.text().substr(0, 35), "{\r\n# first line\r\n# second line\r\nver");
}

TEST(FileInfo, CountsAndSumsAbove32767) {
    test::TestHome home;
    Settings settings;
    test::ScriptedInteraction ui;
    Session session(settings, ui);
    session.FileName = home.write("Big.cr2", "{}");
    Figure figure, hip;
    figure.Name = "Figure 1";
    figure.Materials.resize(32768);
    hip.Name = "hip";
    hip.Materials.resize(2);
    session.Figures = {figure, hip};
    session.cmbFigures = {"Figure 1", "actor hip"};
    Actor a, b;
    a.Name = "hip";
    a.Channels.assign(32768, Channel{"n", "", "valueParm"});
    b.Name = "chest";
    b.Channels.assign(40000, Channel{"m", "", "targetGeom"});
    session.Actors = {a, b};

    ComputeFileStatistics(session);
    const FileInfoTexts t = FileInfoOf(session);
    EXPECT_EQ(std::tie(t.lblMaterials, t.lblChannels, t.lblNull, t.lblMorph),
              std::tuple("32768", "72768", "32768", "40000"));
    EXPECT_EQ(ActorRowOf(session.FileStatistics, 0).lblChannelsA, "32768");

    // The open file is gone: the size can't be read.
    session.FileStatistics.FilePath = home.file("gone.cr2");
    EXPECT_THROW(FileInfoOf(session), Failure);
}
