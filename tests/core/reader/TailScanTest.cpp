#include "core/reader/TailScan.h"

#include "core/model/CommandText.h"
#include "core/model/Text.h"
#include "core/reader/OpenFile.h"
#include "support/SessionFixture.h"

#include <filesystem>
#include <fstream>

namespace gelvane::test {
namespace {

class TailScanTest : public SessionFixture {
protected:
    void Open(int kind, const std::string &path, bool withProps = false) {
        session.PoserFileKind = static_cast<int16_t>(kind);
        session.MultiFigure = withProps;
        ui.nextFile(path);
        OpenFile(session);
    }
};

TEST(ReadTailUntil, TakesWholePiecesFromTheEndWithoutTheLastCharacter) {
    std::string text(9000, '.');
    text.replace(6500, 3, "KEY");
    // Pieces of 2000 end one character before the end: 8999, 6999, 4999 ... the key at 6500 needs two.
    const std::string tail = ReadTailUntil(Source::FromText(text), "KEY");
    EXPECT_EQ(tail.size(), 4000u);
    EXPECT_EQ(tail, text.substr(4999, 4000));
    // A key that only a piece running past the start would reach, or no key at all.
    text.replace(6500, 3, "...");
    text.replace(500, 3, "KEY");
    EXPECT_EQ(FailureNumber([&] { ReadTailUntil(Source::FromText(text), "KEY"); }), ErrBadRecordNumber);
    EXPECT_EQ(FailureNumber([&] { ReadTailUntil(Source::FromText(text), "none"); }), ErrBadRecordNumber);
    // The last character is never read.
    EXPECT_EQ(FailureNumber([&] { ReadTailUntil(Source::FromText(std::string(4000, '.') + "K"), "K"); }),
              ErrBadRecordNumber);
    // A short source is one piece of its length - 1.
    EXPECT_EQ(ReadTailUntil(Source::FromText("KEY and more}"), "KEY"), "KEY and more");
    EXPECT_EQ(FailureNumber([&] { ReadTailUntil(Source::FromText("K"), "K"); }), ErrBadRecordNumber);
}

TEST(ReadHeadToBrace, GrowsInStepsUntilTheFirstBrace) {
    EXPECT_EQ(ReadHeadToBrace(Source::FromText("{ab}cdefghij"), 5), "{ab}c");
    EXPECT_EQ(ReadHeadToBrace(Source::FromText("{abcd}ghij"), 5), "{abcd}ghij");
    EXPECT_EQ(ReadHeadToBrace(Source::FromText("{abcd}"), 50), "{abcd}");
    EXPECT_EQ(FailureNumber([] { ReadHeadToBrace(Source::FromText("{ no end"), 5); }), ErrInputPastEnd);
}

TEST_F(TailScanTest, CorpusFilesOpenWithTheirMaterials) {
    // {file, owner, its material names, the first material's colour and exponent}
    const std::tuple<const char *, const char *, const char *, Rgb, int> cases[] = {
        {"sl_avatar/SL_Male.cr2", "figure", "Material_lowerbody Material_Upperbody Material_Head", {103, 255, 130}, 41},
        {"sl_avatar/SL_skirt.pp2", "prop SL_skirt", "Preview Material_skirt", {164, 132, 70}, 41},
        {"reality/Mesh Light.pp2",
         "prop MeshLight",
         "Gobo ReL_Snoot ReL_Back RealityLight ReL_Handle Preview",
         {250, 248, 254},
         100},
        {"reality/Reality IBL Sphere.pp2", "prop RealityIBLSphere", "RealityIBLSphere Preview", {255, 255, 255}, 101},
        {"reality/Simple Plane.pp2", "prop SimplePlane", "RealityPlane Preview", {204, 204, 204}, 91}};
    for (const auto &[file, owner, materials, kd, ns] : cases) {
        Open(FileKindOfCommand(file), CorpusPath(file));
        ASSERT_FALSE(session.OpenFailed) << file;
        EXPECT_EQ(session.cmbFigures, Strings{owner}) << file;
        EXPECT_EQ(NamesOf(session.Figures), Strings{owner});
        EXPECT_EQ(Join(MaterialNames(0), " "), materials) << file;
        const Material &first = session.Figures[0].Materials[0];
        EXPECT_EQ(std::tuple(first.KdColor, first.NsExponent), std::tuple(kd, ns)) << file;
        // Figure-like files have no channels until asked for; they save only as a new pose.
        EXPECT_TRUE(session.Options.chkChannels && session.View.mnuSaveAsEnabled);
        EXPECT_FALSE(session.Options.chkChannelsEnabled || session.View.mnuSaveEnabled);
    }
    EXPECT_EQ(session.FileVersion, "9");
    EXPECT_TRUE(session.Figures[0].Materials[0].textureMapEnabled);
}

TEST_F(TailScanTest, CharacterWithPropsGetsOneOwnerEachWhateverTheLineEnds) {
    for (const char *end : {"\n", "\r\n", "\r"}) {
        const std::string file = home.write("c.cr2", Replace(ReadTestData("reader/figure-with-props.cr2"), "\n", end));
        Open(KindCR2, file, true);
        ASSERT_FALSE(session.OpenFailed) << Texts().at(0);
        // Props enter the list from the last to the first.
        EXPECT_EQ(session.cmbFigures, (Strings{"figure", "prop hat", "prop ball"}));
        EXPECT_EQ(NamesOf(session.Figures), (Strings{"figure", "prop hat", "prop ball"}));
        EXPECT_EQ(MaterialNames(0), (Strings{"skin", "eyes"}));
        EXPECT_EQ(MaterialNames(1), Strings{"band"});
        EXPECT_EQ(session.Figures[1].Materials[0].KdColor, (Rgb{255, 0, 0}));
        EXPECT_EQ(MaterialNames(2), Strings{"ballskin"});
        EXPECT_FALSE(session.MultiFigure);
        // Without props asked for, only the figure's tail is read.
        Open(KindCR2, file);
        EXPECT_EQ(session.cmbFigures, Strings{"figure"});
        EXPECT_EQ(MaterialNames(0), (Strings{"skin", "eyes"}));
    }
}

TEST_F(TailScanTest, HugeCharacterIsReadFromItsTailOnly) {
    // A sparse file of a terabyte: no reader could hold it whole.
    const std::string path = home.file("huge.cr2");
    {
        std::ofstream out(path, std::ios::binary);
        out << "{\nversion\n{\nnumber 4\n}\nfigureResFile x.obj\nactor BODY\n{\n}\n";
        out.seekp(1'000'000'000'000LL);
        out << "\nfigure\n{\nfigureType 1\nmaterial skin\n{\nKdColor 1 1 1 1 \n}\n}\nsetGeomHandlerOffset 0 0 0\n}\n";
    }
    Open(KindCR2, path);
    ASSERT_FALSE(session.OpenFailed);
    EXPECT_EQ(MaterialNames(0), Strings{"skin"});
}

TEST_F(TailScanTest, PropScanNeedsAnActorLine) {
    Open(KindCR2,
         home.write("n.cr2", "{\nversion\n{\nnumber 4\n}\nfigure\n{\nfigureType 1\nmaterial a\n{\n}\n}\n"
                             "setGeomHandlerOffset 0\n}\n"),
         true);
    EXPECT_TRUE(session.OpenFailed);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_NE(ui.messages()[0].Text.find("Code line number 20"), std::string::npos) << ui.messages()[0].Text;
}

} // namespace
} // namespace gelvane::test
