// The batch converter over files in a temporary folder, with scripted answers.
#include "core/reports/BatchConverter.h"

#include "core/platform/Paths.h"
#include "support/SessionFixture.h"

using namespace gelvane;
using namespace gelvane::test;

namespace {

const std::string kSkin = "batch/skin-p4.pz2";
const std::string kOpaque = "batch/opaque-p4.pz2"; // materials that state three properties only

class Batch : public SessionFixture {
protected:
    BatchConverter batch = LoadBatchConverter(settings);

    // Copies a fixture into the home as `name` and drops it on the list with `operation`.
    std::string Row(const std::string &fixture, const std::string &name, const char *operation = kConvertIntoP5) {
        const std::string path = home.write(name, ReadTestData(fixture));
        DropFiles(session, batch, {path});
        batch.ListView1.back().Operation = operation;
        return path;
    }
    void ExpectClosingState() {
        EXPECT_FALSE(session.BatchMode || ui.ProgressVisible());
        EXPECT_TRUE(IsEmptyList(session.Figures) && session.cmbFigures.empty());
        EXPECT_FALSE(session.View.cmbFiguresEnabled || session.View.mnuSaveEnabled || session.View.mnuSaveAsEnabled);
        EXPECT_TRUE(session.Options.chkChannels && session.Options.chkNoMaterialData);
        EXPECT_FALSE(session.Options.chkChannelsEnabled || session.Options.chkNoMaterialDataEnabled);
        EXPECT_TRUE(session.DialogFileName.empty());
    }
};

} // namespace

TEST(BatchCopyPath, SuffixGoesInFrontOfTheExtension) {
    EXPECT_EQ(BatchCopyPath("/p/a.pz2", "_P5."), "/p/a_P5.pz2");
    EXPECT_EQ(BatchCopyPath("C:\\Poses\\b.CM2", "_P4."), "C:\\Poses\\b_P4.CM2");
    // Without a point the last four characters are the extension, and the one in front of them is lost.
    EXPECT_EQ(BatchCopyPath("/p/readme", "_P5."), "/p/r_P5.adme");
    EXPECT_THROW(BatchCopyPath("a.pz", "_P5."), Failure);
}

TEST_F(Batch, ConvertedAndCopiedPosesMatchThePoserFiveBytes) {
    Row(kSkin, "skin.pz2");
    const std::string copied = Row(kSkin, "Skin Copy.pz2", kCopyInP5);
    Row(kOpaque, "opaque.pz2");
    Row(kOpaque, "opaque copy.pz2", kCopyInP5);
    batch.DialogFileName = copied; // as the add dialog leaves it
    ui.nextAnswer(MsgResult::No);  // partial materials: carry on, on a middle row and on the last
    ui.nextAnswer(MsgResult::No);
    EXPECT_EQ(RunBatch(session, batch), BatchEnd::Completed);

    const std::string skin = ReadTestData("writer/p5-skin/expected.pz2");
    // In a batch run opaque materials get "tExpo 0".
    const std::string opaque = ReadTestData("writer/batch-texpo/expected.pz2");
    EXPECT_EQ(home.read("skin.pz2"), skin);
    EXPECT_EQ(home.read("Skin Copy_P5.pz2"), skin);
    EXPECT_EQ(home.read("Skin Copy.pz2"), ReadTestData(kSkin));
    EXPECT_EQ(home.read("opaque.pz2"), opaque);
    EXPECT_EQ(home.read("opaque copy_P5.pz2"), opaque);
    EXPECT_EQ(home.read("opaque copy.pz2"), ReadTestData(kOpaque));

    EXPECT_EQ(Texts(), (Strings{PartialQuestion(home.file("opaque.pz2"), false),
                                PartialQuestion(home.file("opaque copy.pz2"), true), kBatchSuccess}));
    EXPECT_NE(Texts()[0].find("Would you like to skip to the next file?"), std::string::npos);
    EXPECT_NE(Texts()[1].find("Would you like to cancel the operation?"), std::string::npos);
    EXPECT_EQ(ui.messages()[1].Title, kPartialTitle);
    EXPECT_EQ(ui.messages()[2].Icon, MsgIcon::Information);
    EXPECT_EQ(session.LastSaveFolder, home.path());
    EXPECT_EQ(session.View.Caption, "Gelvane - [opaque copy_P5.pz2]");
    ExpectClosingState();
}

TEST_F(Batch, YesSkipsAMiddleRowAndOnTheLastRowStopsWithoutTheSuccessBox) {
    Row(kOpaque, "first.pz2");
    Row(kSkin, "second.pz2");
    Row(kOpaque, "last.pz2");
    ui.nextAnswer(MsgResult::Yes);
    ui.nextAnswer(MsgResult::Yes);
    EXPECT_EQ(RunBatch(session, batch), BatchEnd::Stopped);
    EXPECT_EQ(home.read("first.pz2"), ReadTestData(kOpaque));
    EXPECT_EQ(home.read("second.pz2"), ReadTestData("writer/p5-skin/expected.pz2"));
    EXPECT_EQ(home.read("last.pz2"), ReadTestData(kOpaque));
    EXPECT_EQ(Each(ui.messages(), &RecordedMessage::Title), (Strings{kPartialTitle, kPartialTitle}));
    ExpectClosingState();

    // The question follows the option buttons, not the rows: with a Poser 4 option none comes.
    batch.Option = 2;
    EXPECT_EQ(RunBatch(session, batch), BatchEnd::Completed);
    EXPECT_EQ(home.read("last.pz2"), ReadTestData("writer/batch-texpo/expected.pz2"));
}

TEST_F(Batch, AFailedRowAbortsAndLeavesTheRowsBehindItUntouched) {
    struct Case {
        const char *name, *fixture, *operation;
    } cases[] = {
        {"broken.pz2", "cmdline/no-closing-brace.pz2", kConvertIntoP4},
        // A character file is never replaced by a pose.
        {"figure.cr2", "batch/skin-p4.pz2", kConvertIntoP4},
        // Rows that all came by dropping leave the add dialog without a folder: the copy is
        // written, then the run stops.
        {"dropped.pz2", "batch/skin-p4.pz2", kCopyInP4},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        batch = LoadBatchConverter(settings);
        batch.Option = 2;
        Row(kSkin, "before.pz2");
        const std::string failing = Row(c.fixture, c.name, c.operation);
        Row(kSkin, "behind.pz2");
        const size_t seen = ui.messages().size();
        EXPECT_EQ(RunBatch(session, batch), BatchEnd::Aborted);
        EXPECT_EQ(home.read("before.pz2"), ReadTestData("writer/p5-skin/expected.pz2"));
        EXPECT_EQ(home.read(c.name), ReadTestData(c.fixture));
        EXPECT_EQ(home.read("behind.pz2"), ReadTestData(kSkin));
        ASSERT_GT(ui.messages().size(), seen);
        EXPECT_EQ(ui.messages().back(), (RecordedMessage{"Could not complete requested operation for " + failing +
                                                             "\r\nBatch operations aborted.",
                                                         "Error", MsgIcon::Exclamation, MsgButtons::OK}));
        EXPECT_FALSE(session.BatchMode || ui.ProgressVisible());
    }
    EXPECT_TRUE(FileExists(home.file("dropped_P4.pz2")));
}

TEST_F(Batch, EscStopsBeforeTheNextRow) {
    Row(kSkin, "first.pz2");
    Row(kSkin, "second.pz2");
    ui.cancelAtDoEvents(2); // the turn of the events in front of the second row
    EXPECT_EQ(RunBatch(session, batch), BatchEnd::Stopped);
    EXPECT_EQ(home.read("first.pz2"), ReadTestData("writer/p5-skin/expected.pz2"));
    EXPECT_EQ(home.read("second.pz2"), ReadTestData(kSkin));
    EXPECT_TRUE(ui.messages().empty());
    ExpectClosingState();
}

TEST_F(Batch, AddingTakesEachPathOnceAndStopsAtADuplicate) {
    settings.PZ2Folder = home.path();
    const std::string folder = home.path();
    ui.nextFile(folder + std::string("\0a.pz2\0b.pz2", 12));
    AddFiles(session, batch);
    EXPECT_EQ(Each(batch.ListView1, &BatchRow::Operation), (Strings{kConvertIntoP5, kConvertIntoP5}));
    EXPECT_TRUE(batch.ControlsEnabled);
    EXPECT_EQ(batch.LastBatchFolder, folder);
    const FileDialogRequest &request = ui.fileRequests().front();
    EXPECT_EQ(request.InitialDir, folder);
    EXPECT_NE(request.Flags & kOfnAllowMultiSelect, 0);

    // One chosen file is its full path; a duplicate ends the adding, from the dialog as by a drop.
    ui.nextFile(folder + "/c.pz2");
    ui.nextFile(folder + std::string("\0d.pz2\0a.pz2\0e.pz2", 19));
    ui.nextFile(std::nullopt);
    for (int i = 0; i < 3; ++i)
        AddFiles(session, batch);
    DropFiles(session, batch, {"/x/f.pz2", folder + "/b.pz2", "/x/g.pz2"});
    EXPECT_EQ(Each(batch.ListView1, &BatchRow::Path),
              (Strings{folder + "/a.pz2", folder + "/b.pz2", folder + "/c.pz2", folder + "/d.pz2", "/x/f.pz2"}));
    ASSERT_EQ(ui.messages().size(), 2u);
    EXPECT_EQ(ui.messages()[0].Text, "File " + folder + "/a.pz2\r\nis already in the list");
    EXPECT_EQ(ui.messages()[1].Title, "Duplicate file");
    EXPECT_EQ(ui.messages()[1].Icon, MsgIcon::Exclamation);
}

TEST(BatchList, OptionsSetTheSelectedRowsAndRemovingEmptiesTheList) {
    BatchConverter batch;
    batch.ListView1 = {
        {"/a.pz2", kConvertIntoP5, true}, {"/b.pz2", kConvertIntoP5, false}, {"/c.pz2", kConvertIntoP5, true}};
    batch.ControlsEnabled = true;
    OptionClick(batch, 4);
    EXPECT_EQ(batch.Option, 4);
    EXPECT_EQ(Each(batch.ListView1, &BatchRow::Operation), (Strings{kCopyInP4, kConvertIntoP5, kCopyInP4}));
    RemoveSelected(batch);
    ASSERT_EQ(batch.ListView1.size(), 1u);
    EXPECT_TRUE(batch.ControlsEnabled);
    SelectAll(batch);
    RemoveSelected(batch);
    EXPECT_TRUE(batch.ListView1.empty());
    EXPECT_FALSE(batch.ControlsEnabled);
}
