#include "WriterModels.h"

#include "core/writer/MtlExport.h"

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
