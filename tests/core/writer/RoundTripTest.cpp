#include "WriterModels.h"

#include "reader/OpenFile.h"
#include "writer/PoseWriter.h"

#include <gtest/gtest.h>

using namespace gelvane;
using namespace gelvane::test;

// What the writer puts into a pose, the reader takes back unchanged, in both formats.
TEST(PoseRoundTrip, MaterialsReadBackAsWritten) {
    for (bool p5 : {false, true}) {
        WriterSession w;
        Material edge = SkinMaterial("Edge");
        edge.KdColor = {1, 128, 254};
        edge.NsExponent = 100;
        edge.tMin = 33;
        edge.tExpo = 0.25f;
        edge.TextureColor = "75";
        edge.ksIgnoreTexture = edge.reflectThruKd = true;
        edge.bumpMap = "C:\\Maps\\bump map.bum";
        w.session.Figures = {MakeFigure("figure", {SkinMaterial(), edge})};
        w.session.cmbFigures = {"figure"};
        w.session.Options.chkChannels = true;
        w.session.Options.PoserFormatP5 = p5;
        LineWriter out(w.session.Options.LineEnd());
        WritePose(w.session, out);

        WriterSession r;
        r.settings.AutoCorrect = false;
        r.settings.MainThumb = false;
        r.session.PoserFileKind = KindPZ2;
        r.session.BatchMode = true;
        OpenFile(r.session, out.text());
        ASSERT_FALSE(r.session.OpenFailed) << p5;
        ASSERT_EQ(r.session.Figures.size(), 1u) << p5;
        EXPECT_EQ(r.session.Figures[0].Materials, w.session.Figures[0].Materials) << p5;
    }
}
