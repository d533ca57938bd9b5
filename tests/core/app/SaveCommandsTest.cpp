#include "core/app/SaveCommands.h"

#include "../writer/WriterModels.h"

namespace gelvane::test {
namespace {

// One figure with one material, as an open leaves it.
class SaveCommands : public SessionFixture {
protected:
    SaveCommands() {
        session.OutputVersion = "4.01";
        session.Figures = {MakeFigure("figure", {WhiteMaterial("Body")})};
        session.cmbFigures = {"figure"};
        session.Options.chkChannels = true;
    }
};

TEST_F(SaveCommands, SaveAsWritesThePoseAndMakesItTheOpenFile) {
    settings.SaveFolder = home.path();
    session.FileName = home.file("Victim.cr2");
    session.PoserFileKind = KindCR2;
    session.FileModified = true;
    const std::string target = home.file("poses/Body.pz2");
    home.write("poses/keep.txt", "");
    ui.nextFile(target);
    EXPECT_EQ(mnuSaveAs_Click(session), SaveResult::Saved);
    ASSERT_EQ(ui.fileRequests().size(), 1u);
    EXPECT_EQ(Fields(ui.fileRequests()[0]),
              std::tuple("Save Pose file as...",
                         "Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Face files|*.fc2|Light files|*.lt2|"
                         "All files|*.*",
                         "pz2", home.path(), "", 2054, true));
    EXPECT_NE(home.read("poses/Body.pz2").find("\tmaterial Body\r\n"), std::string::npos);
    EXPECT_EQ(std::tie(session.FileName, session.LastSaveFolder, session.View.Caption, session.PoserFileKind),
              std::tuple(target, home.file("poses"), "Gelvane - [Body.pz2]", KindPZ2));
    EXPECT_TRUE(session.View.mnuSaveEnabled && !session.FileModified && ui.messages().empty());

    // The next Save as starts in the folder of the last one, which wins over the setting.
    ui.nextFile(std::nullopt);
    EXPECT_EQ(mnuSaveAs_Click(session), SaveResult::Cancelled);
    EXPECT_EQ(ui.fileRequests().back().InitialDir, home.file("poses"));
}

TEST_F(SaveCommands, SaveAsCancelledOrFailedChangesNothing) {
    session.FileName = home.write("Open.pz2", "old");
    session.View.Caption = "Gelvane - [Open.pz2]";
    session.FileModified = true;
    ui.nextFile(std::nullopt);
    EXPECT_EQ(mnuSaveAs_Click(session), SaveResult::Cancelled);
    EXPECT_EQ(ui.fileRequests().back().InitialDir, ""); // SaveFolder "none" and no earlier Save as
    ui.nextFile(home.file("no-such-folder/x.pz2"));
    EXPECT_EQ(mnuSaveAs_Click(session), SaveResult::Failed);
    EXPECT_EQ(std::tie(session.FileName, session.OutputPath, session.LastSaveFolder, session.View.Caption),
              std::tuple(home.file("Open.pz2"), home.file("Open.pz2"), "", "Gelvane - [Open.pz2]"));
    EXPECT_TRUE(!session.View.mnuSaveEnabled && session.FileModified);
    EXPECT_EQ(home.read("Open.pz2"), "old");
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(std::tie(ui.messages()[0].Text, ui.messages()[0].Icon),
              std::tuple("Could not save " + home.file("no-such-folder/x.pz2") + ": the folder doesn't exist",
                         MsgIcon::Exclamation));
}

TEST_F(SaveCommands, SaveWritesInPlaceAndSwallowsWriterFailures) {
    session.FileName = home.write("Open.pz2", "old");
    session.FileModified = true;
    EXPECT_EQ(mnuSave_Click(session), SaveResult::Saved);
    EXPECT_NE(home.read("Open.pz2").find("\tmaterial Body\r\n"), std::string::npos);
    EXPECT_TRUE(!session.FileModified && ui.fileRequests().empty());

    home.write("Open.pz2", "old");
    session.FileModified = true;
    session.Figures[0].Materials[0].TextureColorEnabled = true; // its text is empty: not a number
    EXPECT_EQ(mnuSave_Click(session), SaveResult::Failed);
    EXPECT_EQ(home.read("Open.pz2"), "old");
    EXPECT_TRUE(session.FileModified && ui.messages().empty());
}

TEST_F(SaveCommands, ExportMTLWritesTheChosenFileAndPointsBackAtThePose) {
    session.Figures.assign(1, Figure{});
    session.FileName = home.file("Open.cr2");
    session.SaveDialogInitialDir = home.path();
    ui.nextFile(home.file("Open.mtl"));
    EXPECT_EQ(mnuExportMTL_Click(session), SaveResult::Saved);
    EXPECT_EQ(Fields(ui.fileRequests().at(0)),
              std::tuple("Save material file as...", "Material files|*.mtl|All files|*.*", "mtl", home.path(), "", 2054,
                         true));
    EXPECT_EQ(home.read("Open.mtl"), "newmtl \r\n"); // the empty model's one element
    EXPECT_EQ(session.OutputPath, session.FileName);
    ui.nextFile(std::nullopt);
    session.OutputPath = "elsewhere";
    EXPECT_EQ(mnuExportMTL_Click(session), SaveResult::Cancelled);
    EXPECT_EQ(session.OutputPath, session.FileName);
    EXPECT_TRUE(ui.messages().empty());
}

} // namespace
} // namespace gelvane::test
