#include "WriterModels.h"

#include "support/TestHome.h"
#include "core/writer/MtlExport.h"

#include <gtest/gtest.h>

using namespace gelvane;
using namespace gelvane::test;

TEST(MtlExport, WritesColoursAndMapFileNames) {
    WriterSession w;
    Session &s = w.session;
    Material skin = SkinMaterial();
    skin.textureMap = ":Runtime:textures:skin.jpg";
    Material plain = WhiteMaterial("Plain");
    plain.NsExponent = 1;
    plain.NsExponentEnabled = true;
    plain.textureMap = "NO_MAP";
    plain.textureMapEnabled = true;
    plain.bumpMap = "bump.bum";
    plain.bumpMapEnabled = true;
    Material omitted = WhiteMaterial("Omitted");
    omitted.Omit = true;
    s.Figures = {MakeFigure("figure", {skin, plain, omitted}), MakeFigure("prop ball", {WhiteMaterial("Plain")})};
    s.Options.FileSystemDOS = false; // the library keeps DOS line ends regardless
    LineWriter out("\r\n");
    for (int i = 0; i < 2; ++i)
        WriteMtlMaterials(s, i, out);
    EXPECT_EQ(out.text(), "newmtl Skin\r\nNs 50\r\nKa 0 0 0\r\nKd 1 0.501961 0\r\nKs 1 1 1\r\nmap_Kd skin.jpg\r\n"
                          "newmtl Plain\r\nNs 100\r\nKd 1 1 1\r\nmap_Bump bump.bum\r\n"
                          "newmtl Plain\r\nKd 1 1 1\r\n");
}

TEST(MtlExport, CommandWritesTheChosenFileAndPointsBackAtThePose) {
    TestHome home;
    WriterSession w;
    Session &s = w.session;
    s.FileName = home.file("Open.cr2");
    s.SaveDialogInitialDir = home.path();
    w.ui.nextFile(home.file("Open.mtl"));
    mnuExportMTL_Click(s);
    const FileDialogRequest &r = w.ui.fileRequests().at(0);
    EXPECT_EQ(r.Title, "Save material file as...");
    EXPECT_EQ(r.Filter, "Material files|*.mtl|All files|*.*");
    EXPECT_EQ(r.DefaultExt, "mtl");
    EXPECT_EQ(r.Flags, 2054);
    EXPECT_EQ(r.InitialDir, home.path());
    EXPECT_EQ(home.read("Open.mtl"), "newmtl \r\n"); // the empty model's one element
    EXPECT_EQ(s.OutputPath, s.FileName);

    w.ui.nextFile(std::nullopt);
    s.OutputPath = "elsewhere";
    mnuExportMTL_Click(s);
    EXPECT_EQ(s.OutputPath, s.FileName);
    EXPECT_TRUE(w.ui.messages().empty());
}
