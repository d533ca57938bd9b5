#include "WriterModels.h"

#include "core/reader/OpenFile.h"
#include "core/writer/PoseWriter.h"
#include "support/PoserText.h"

using namespace gelvane;
using namespace gelvane::test;

namespace {

// Opens `text` as a pose, quietly and without repairs of maps.
void ReadPose(WriterSession &r, const std::string &text) {
    r.settings.AutoCorrect = false;
    r.settings.MainThumb = false;
    r.session.PoserFileKind = KindPZ2;
    r.session.BatchMode = true;
    OpenFile(r.session, text);
    EXPECT_FALSE(r.session.OpenFailed);
}

} // namespace

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
        ReadPose(r, out.text());
        ASSERT_EQ(r.session.Figures.size(), 1u) << p5;
        EXPECT_EQ(r.session.Figures[0].Materials, w.session.Figures[0].Materials) << p5;
    }
}

namespace {

// Opens `text` as a pose with every property left enabled, and writes it back.
std::string ReadAndWrite(const std::string &text, std::vector<Actor> *actors = nullptr) {
    WriterSession r;
    r.settings.DisableProperties = false;
    ReadPose(r, text);
    if (actors)
        *actors = r.session.Actors;
    LineWriter out(r.session.Options.LineEnd());
    WritePose(r.session, out);
    return out.text();
}

} // namespace

// Dial values, channel and actor properties and light fields survive a read and a write;
// a second round gives the same bytes.
TEST(PoseRoundTrip, ChannelsReadBackAsWritten) {
    std::vector<Actor> first, second;
    const std::string once = ReadAndWrite(PoserFile(ReadTestData("channels/two-actors.pz2"), "4.01"), &first);
    EXPECT_EQ(ReadAndWrite(once, &second), once);
    ASSERT_EQ(first.size(), 2u);
    EXPECT_EQ(second, first);
    EXPECT_NE(once.find("\tlightOn 1\r\n"), std::string::npos) << once;
    EXPECT_NE(once.find("\t\t\t\tk  0  0.5\r\n"), std::string::npos) << once;
}
