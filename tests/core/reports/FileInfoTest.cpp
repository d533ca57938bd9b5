#include "core/reports/FileInfo.h"
#include "core/app/Settings.h"
#include "core/model/Failure.h"
#include "core/reports/FileStatistics.h"
#include "core/writer/PoseWriter.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

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

TEST(FileInfo, DateOfAFileInLocalTime) {
    const char *old = std::getenv("TZ");
    const std::string kept = old ? old : "";
    setenv("TZ", "UTC", 1);
    tzset();
    EXPECT_EQ(DateText(1700000000), "2023-11-14 22:13:20");
    if (old)
        setenv("TZ", kept.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();

    test::TestHome home;
    const std::time_t before = std::time(nullptr);
    const std::string path = home.write("new.pz2", "{}");
    const std::string text = CreationDateText(path);
    EXPECT_TRUE(text == DateText(before) || text == DateText(before + 1)) << text;
    EXPECT_THROW(CreationDateText(home.file("gone.pz2")), Failure);
}

TEST(FileInfo, TwoLineNoteBecomesTwoCommentLines) {
    Settings settings;
    test::ScriptedInteraction ui;
    Session session(settings, ui);
    session.FileComment = "old";
    StoreNotes(session, "  first line\nsecond line  ");
    EXPECT_EQ(session.FileComment, "first line\r\nsecond line");
    EXPECT_EQ(NotesOfComment(session.FileComment), "first line\nsecond line");
    EXPECT_FALSE(session.FileModified);

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
    EXPECT_TRUE(session.View.mnuFileInfoEnabled);
    const FileInfoTexts t = FileInfoOf(session);
    EXPECT_EQ(t.lblFileName, "Big.cr2");
    EXPECT_EQ(t.lblSize, "0 KB");
    EXPECT_EQ(t.lblFigures, "1");
    EXPECT_EQ(t.lblMaterials, "32768");
    EXPECT_EQ(t.lblActors, "2");
    EXPECT_EQ(t.lblSdMats, "2");
    EXPECT_EQ(t.lblChannels, "72768");
    EXPECT_EQ(t.lblNull, "32768");
    EXPECT_EQ(t.lblMorph, "40000");
    EXPECT_EQ(t.lblPose, "0");
    EXPECT_EQ(t.cmbActors, (std::vector<std::string>{"hip", "chest"}));
    EXPECT_EQ(FigureRowText(session.FileStatistics, 0), "32768");
    const ActorRowTexts hipRow = ActorRowOf(session.FileStatistics, 0);
    EXPECT_EQ(hipRow.lblChannelsA, "32768");
    EXPECT_EQ(hipRow.lblMaterialsA, "2");

    // The open file is gone: the size can't be read.
    session.FileStatistics.FilePath = home.file("gone.cr2");
    EXPECT_THROW(FileInfoOf(session), Failure);
}
