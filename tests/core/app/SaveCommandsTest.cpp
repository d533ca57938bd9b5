#include "core/app/SaveCommands.h"

#include "../writer/WriterModels.h"

#include <filesystem>

using namespace gelvane;
using namespace gelvane::test;

namespace {

void OneFigure(Session &s) {
    s.Figures = {MakeFigure("figure", {WhiteMaterial("Body")})};
    s.cmbFigures = {"figure"};
    s.Options.chkChannels = true;
}

} // namespace

TEST(SaveAs, WritesThePoseAndMakesItTheOpenFile) {
    TestHome home;
    WriterSession w;
    w.settings.SaveFolder = home.path();
    OneFigure(w.session);
    w.session.FileName = home.file("Victim.cr2");
    w.session.PoserFileKind = KindCR2;
    w.session.FileModified = true;
    const std::string target = home.file("poses/Body.pz2");
    home.write("poses/keep.txt", "");
    w.ui.nextFile(target);

    EXPECT_EQ(mnuSaveAs_Click(w.session), SaveResult::Saved);

    ASSERT_EQ(w.ui.fileRequests().size(), 1u);
    EXPECT_EQ(Fields(w.ui.fileRequests()[0]),
              std::tuple("Save Pose file as...",
                         "Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Face files|*.fc2|Light files|*.lt2|"
                         "All files|*.*",
                         "pz2", home.path(), "", 2054, true));

    EXPECT_NE(home.read("poses/Body.pz2").find("\tmaterial Body\r\n"), std::string::npos);
    EXPECT_EQ(w.session.FileName, target);
    EXPECT_EQ(w.session.LastSaveFolder, home.file("poses"));
    EXPECT_EQ(w.session.View.Caption, "Gelvane - [Body.pz2]");
    EXPECT_TRUE(w.session.View.mnuSaveEnabled);
    EXPECT_EQ(w.session.PoserFileKind, KindPZ2);
    EXPECT_FALSE(w.session.FileModified);
    EXPECT_TRUE(w.ui.messages().empty());

    // The next Save as starts in the folder of the last one, which wins over the setting.
    w.ui.nextFile(std::nullopt);
    EXPECT_EQ(mnuSaveAs_Click(w.session), SaveResult::Cancelled);
    EXPECT_EQ(w.ui.fileRequests().back().InitialDir, home.file("poses"));
}

TEST(SaveAs, CancelAndFailureChangeNothing) {
    TestHome home;
    WriterSession w;
    OneFigure(w.session);
    w.session.FileName = home.write("Open.pz2", "old");
    w.session.View.Caption = "Gelvane - [Open.pz2]";
    w.session.FileModified = true;

    w.ui.nextFile(std::nullopt);
    EXPECT_EQ(mnuSaveAs_Click(w.session), SaveResult::Cancelled);
    EXPECT_EQ(w.ui.fileRequests().back().InitialDir, ""); // SaveFolder "none" and no earlier Save as
    w.ui.nextFile(home.file("no-such-folder/x.pz2"));
    EXPECT_EQ(mnuSaveAs_Click(w.session), SaveResult::Failed);

    EXPECT_EQ(w.session.FileName, home.file("Open.pz2"));
    EXPECT_EQ(w.session.OutputPath, w.session.FileName);
    EXPECT_EQ(w.session.LastSaveFolder, "");
    EXPECT_EQ(w.session.View.Caption, "Gelvane - [Open.pz2]");
    EXPECT_FALSE(w.session.View.mnuSaveEnabled);
    EXPECT_TRUE(w.session.FileModified);
    EXPECT_EQ(home.read("Open.pz2"), "old");
    EXPECT_TRUE(w.ui.messages().empty());
}

TEST(Save, WritesInPlaceAndSwallowsFailures) {
    TestHome home;
    WriterSession w;
    OneFigure(w.session);
    w.session.FileName = home.write("Open.pz2", "old");
    w.session.FileModified = true;
    std::filesystem::permissions(w.session.FileName, std::filesystem::perms(0640));
    EXPECT_EQ(mnuSave_Click(w.session), SaveResult::Saved);
    EXPECT_NE(home.read("Open.pz2").find("\tmaterial Body\r\n"), std::string::npos);
    EXPECT_EQ(std::filesystem::status(w.session.FileName).permissions(), std::filesystem::perms(0640));
    EXPECT_FALSE(w.session.FileModified);
    EXPECT_TRUE(w.ui.fileRequests().empty());

    home.write("Open.pz2", "old");
    w.session.FileModified = true;
    w.session.Figures[0].Materials[0].TextureColorEnabled = true; // its text is empty: not a number
    EXPECT_EQ(mnuSave_Click(w.session), SaveResult::Failed);
    EXPECT_EQ(home.read("Open.pz2"), "old");
    EXPECT_TRUE(w.session.FileModified);
    EXPECT_TRUE(w.ui.messages().empty());
}

TEST(ExportMTL, WritesTheChosenFileAndPointsBackAtThePose) {
    TestHome home;
    WriterSession w;
    Session &s = w.session;
    s.FileName = home.file("Open.cr2");
    s.SaveDialogInitialDir = home.path();
    w.ui.nextFile(home.file("Open.mtl"));
    EXPECT_EQ(mnuExportMTL_Click(s), SaveResult::Saved);
    EXPECT_EQ(Fields(w.ui.fileRequests().at(0)),
              std::tuple("Save material file as...", "Material files|*.mtl|All files|*.*", "mtl", home.path(), "", 2054,
                         true));
    EXPECT_EQ(home.read("Open.mtl"), "newmtl \r\n"); // the empty model's one element
    EXPECT_EQ(s.OutputPath, s.FileName);

    w.ui.nextFile(std::nullopt);
    s.OutputPath = "elsewhere";
    EXPECT_EQ(mnuExportMTL_Click(s), SaveResult::Cancelled);
    EXPECT_EQ(s.OutputPath, s.FileName);
    EXPECT_TRUE(w.ui.messages().empty());
}
