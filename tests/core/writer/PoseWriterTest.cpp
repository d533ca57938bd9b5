#include "WriterModels.h"

#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"
#include "core/writer/PoseWriter.h"

#include <filesystem>

using namespace gelvane;
using namespace gelvane::test;

namespace {

void P4Materials(Session &s) {
    Material noMap = SkinMaterial("SkinNoMap");
    noMap.textureMap = "NO_MAP";
    Material omitted = SkinMaterial("Omitted");
    omitted.Omit = true;
    Material edge;
    edge.Name = "Edge";
    edge.KdColor = {1, 128, 254};
    edge.TextureColor = "75";
    edge.NsExponent = 120;
    edge.tMin = 33;
    edge.tMax = 100;
    edge.tExpo = 0.25f;
    edge.bumpStrength = "1000";
    edge.ksIgnoreTexture = true;
    edge.textureMap = "No_Map";
    edge.reflectionMap = "never written";
    edge.reflectionStrength = " 33 ";
    edge.ReflectionColor = {1, 2, 3};
    edge.KdColorEnabled = edge.TextureColorEnabled = edge.NsExponentEnabled = edge.tMinEnabled = true;
    edge.tMaxEnabled = edge.tExpoEnabled = edge.bumpStrengthEnabled = edge.ksIgnoreTextureEnabled = true;
    edge.textureMapEnabled = edge.bumpMapEnabled = edge.reflectionStrengthEnabled = true; // bumpMap is empty
    Material ns1 = Named("Ns1"), ns100 = Named("Ns100");
    ns1.NsExponent = 1;
    ns100.NsExponent = 100;
    ns1.NsExponentEnabled = ns100.NsExponentEnabled = true;
    s.Figures = {MakeFigure("figure", {SkinMaterial(), noMap, Named("Bare"), omitted}),
                 MakeFigure("prop box", {edge, ns1, ns100})};
    s.cmbFigures = {"figure", "prop box"};
    s.Options.chkChannels = true;
}

void PoseExample(Session &s) {
    s.FileComment = "my notes";
    s.Figures = {MakeFigure("prop ball", {SkinMaterial()}), MakeFigure("hip:1", {SkinMaterial()})};
    s.cmbFigures = {"prop ball", "actor hip:1"};
    s.Actors = {MakeActor("actor", "hip:1", {KeyedChannel("targetGeom", "Morph1", 0.5)})};
}

void PoseExampleUnix(Session &s) {
    PoseExample(s);
    s.FileComment = "my notes\r\nsecond line\r";
    s.Options.FileSystemDOS = false;
}

void P5Skin(Session &s) {
    s.Figures = {MakeFigure("figure", {SkinMaterial()})};
    s.cmbFigures = {"figure"};
    s.Options.chkChannels = true;
    s.Options.PoserFormatP5 = true;
}

void P5Links(Session &s) {
    Material all = Named("AllMaps");
    all.tMax = 50;
    all.bumpStrength = "50";
    all.ksIgnoreTexture = true;
    all.textureMap = "tex.jpg";
    all.bumpMap = "bump.jpg";
    all.reflectionMap = "refl.jpg";
    all.transparencyMap = "trans.jpg";
    all.TextureColor = "not read while its flag is clear";
    all.tMaxEnabled = all.bumpStrengthEnabled = all.ksIgnoreTextureEnabled = true;
    all.textureMapEnabled = all.bumpMapEnabled = all.reflectionMapEnabled = all.transparencyMapEnabled = true;

    Material trans = Named("TransNoTMax");
    trans.textureMap = "a.jpg";
    trans.reflectionMap = "r.jpg";
    trans.transparencyMap = "t.jpg";
    trans.textureMapEnabled = trans.reflectionMapEnabled = trans.transparencyMapEnabled = true;
    trans.ReflectionColorEnabled = true;
    trans.tMax = 100; // its flag is clear: no input, and the transparency node isn't counted

    Material bum = Named("BumOnly");
    bum.bumpMap = ":Runtime:textures:skin.BUM";
    bum.bumpStrength = "50";
    bum.bumpMapEnabled = bum.bumpStrengthEnabled = true;

    Material noStrength = Named("BumpNoStrength");
    noStrength.bumpMap = "b.jpg";
    noStrength.bumpMapEnabled = true;

    Material none = Named("NoMaps");
    none.NsExponent = 33;
    none.reflectionMap = "NO_MAP";
    none.KsColorEnabled = none.NsExponentEnabled = none.reflectionMapEnabled = true;
    none.bumpMap = "b.jpg"; // flag clear: neither a bump link nor a node

    s.Figures = {MakeFigure("figure", {all, trans, bum, noStrength, none})};
    s.cmbFigures = {"figure"};
    s.OutputVersion = "5";
    s.Options.chkChannels = true;
    s.Options.PoserFormatP5 = true;
}

void BatchTExpo(Session &s) {
    Material opaque = Named("Opaque");
    opaque.tMin = opaque.tMax = 100;
    opaque.tExpo = 0.75f;
    opaque.tMinEnabled = opaque.tMaxEnabled = opaque.tExpoEnabled = true;
    Material half = opaque;
    half.Name = "Half";
    half.tMin = 50;
    s.Figures = {MakeFigure("figure", {opaque, half})};
    s.cmbFigures = {"figure"};
    s.Options.chkChannels = true;
    s.Options.PoserFormatP5 = true;
    s.BatchMode = true;
}

void LightsCameras(Session &s) {
    s.Figures = {
        MakeFigure("prop figurehair_1", {WhiteMaterial("Strands")}), MakeFigure("head", {WhiteMaterial("Face")}),
        MakeFigure("head", {WhiteMaterial("Lips"), WhiteMaterial("Teeth")}),
        MakeFigure("prop FigureHair_2", {WhiteMaterial("HairMat")}), MakeFigure("lHand", {WhiteMaterial("Nails")})};
    s.cmbFigures = {"prop figurehair_1", "actor head", "actor head", "prop FigureHair_2", "actor lHand"};
    s.Options.chkDisableThighLength = false;
    s.Options.txtThighLength = "0.5";

    Channel red = KeyedChannel("kdRed", "RED", 1);
    red.Hidden = 2;
    red.HiddenEnabled = true;
    Channel xrot = KeyedChannel("rotateX", "xrot", 3);
    xrot.ValueEnabled = false;
    xrot.DisplayName = "xRotate";
    xrot.Hidden = 1;
    xrot.NameEnabled = xrot.HiddenEnabled = true;
    Actor light = MakeActor("light", "1", {red, xrot, KeyedChannel("valueParm", "Dim", -12.5)});
    light.StorageOffset = "0 0.3487 0";
    light.ObjFileGeom = "0 0 :Runtime:Geometries:lightIndicator.obj";
    light.GeomResource = light.Hidden = light.Locked = 1;
    light.LightType = light.OnOff = light.DoShadow = light.LightOn = 2;
    light.DisplayName = "Light 1";
    light.DepthMapSize = 257;
    light.DepthCamera = "shadowCam1";
    light.NameEnabled = light.OnOffEnabled = light.HiddenEnabled = light.LockedEnabled = true;
    light.DepthMapSizeEnabled = light.DoShadowEnabled = light.LightOnEnabled = true;
    light.Port = "7";

    Actor camera = MakeActor("camera", "MAIN_CAMERA");
    camera.StorageOffset = "0 0 0";
    camera.OnOff = 1;
    camera.OnOffEnabled = camera.HiddenEnabled = true;
    camera.Locked = 2;
    camera.Port = "1";
    camera.CameraModel = "0";

    Actor head = MakeActor("actor", "head", {KeyedChannel("targetGeom", "PBMCC_01", 0)});
    head.DisplayName = "Head";
    head.StorageOffset = "1 1 1";
    head.Port = "9";
    head.GeomResource = 3;
    head.DepthMapSize = 5;
    head.DoShadow = 1;
    head.LightOn = head.OnOff = 2;
    head.DepthMapSizeEnabled = head.DoShadowEnabled = head.LightOnEnabled = true;

    Actor hair = MakeActor("prop", "FigureHair", {KeyedChannel("valueParm", "scale", 1e-5)});
    s.Actors = {light, camera, head, hair};
}

void ThreeOwners(Session &s) {
    s.Figures = {MakeFigure("figure", {WhiteMaterial("Body")}), MakeFigure("hip", {WhiteMaterial("HipMat")}),
                 MakeFigure("chest", {WhiteMaterial("ChestMat")})};
    s.cmbFigures = {"figure", "actor hip", "actor chest"};
    s.Actors = {MakeActor("actor", "hip", {KeyedChannel("targetGeom", "Belly", 0.25)})};
}

void NoMaterialData(Session &s) {
    ThreeOwners(s);
    s.Options.chkNoMaterialData = true;
}

void NoChannels(Session &s) {
    ThreeOwners(s);
    s.Options.chkChannels = true;
    s.Options.chkDisableThighLength = false;
    s.Options.txtThighLength = "0.5";
}

// The first row is an actor entry: its materials go into the actor, and no closing section is written.
void ActorEntryFirst(Session &s) {
    s.Figures = {MakeFigure("hip", {WhiteMaterial("HipMat")})};
    s.Actors = {MakeActor("actor", "hip", {KeyedChannel("targetGeom", "Belly", 1)})};
    s.cmbFigures = {"actor hip", "actor chest"};
}

// Rows behind the last figure don't count, however they read: a closing section, no custom materials.
void ActorRowsBehind(Session &s) {
    ActorEntryFirst(s);
    s.cmbFigures = {"hip", "actor chest"};
}

// An entry that two actors match goes into both; the count includes the omitted material.
void TwoMatchingActors(Session &s) {
    s.Figures = {MakeFigure("hip", {WhiteMaterial("HipMat"), WhiteMaterial("Omitted")})};
    s.Figures[0].Materials[1].Omit = true;
    s.cmbFigures = {"actor hip"};
    s.Actors = {MakeActor("actor", "hip"), MakeActor("prop", "hip")};
}

// Nothing but the comment and a version typed with a comma.
void CommentOnly(Session &s) {
    s.Options.chkChannels = s.Options.chkNoMaterialData = true;
    s.FileComment = "first\r\nsecond\r\n";
    s.OutputVersion = "4,01";
}

struct GoldenCase {
    const char *name;
    void (*build)(Session &);
};

class PoseGolden : public testing::TestWithParam<GoldenCase> {};

} // namespace

TEST_P(PoseGolden, WritesExpectedBytes) {
    TestHome home;
    WriterSession w;
    GetParam().build(w.session);
    w.session.PoserFileKind = KindCR2;
    w.session.FileModified = true;
    w.session.OutputPath = home.file("out.pz2");
    WritePoseFile(w.session);
    const std::string expected = ReadTestData(std::string("writer/") + GetParam().name + "/expected.pz2");
    EXPECT_EQ(home.read("out.pz2"), expected);
    EXPECT_EQ(w.session.PoserFileKind, KindPZ2);
    EXPECT_FALSE(w.session.FileModified || FileExists(home.file(SaveTemporaryName("out.pz2"))));
}

INSTANTIATE_TEST_SUITE_P(
    Writer, PoseGolden,
    testing::Values(GoldenCase{"p4-materials", P4Materials}, GoldenCase{"pose-example", PoseExample},
                    GoldenCase{"pose-example-unix", PoseExampleUnix}, GoldenCase{"p5-skin", P5Skin},
                    GoldenCase{"p5-links", P5Links}, GoldenCase{"batch-texpo", BatchTExpo},
                    GoldenCase{"lights-cameras", LightsCameras}, GoldenCase{"no-material-data", NoMaterialData},
                    GoldenCase{"no-channels", NoChannels}, GoldenCase{"actor-entry-first", ActorEntryFirst},
                    GoldenCase{"actor-rows-behind", ActorRowsBehind},
                    GoldenCase{"two-matching-actors", TwoMatchingActors}, GoldenCase{"comment-only", CommentOnly}),
    [](const auto &info) { return TestName(info.param.name); });

namespace {

std::string PoseText(Session &s) {
    LineWriter out(s.Options.LineEnd());
    WritePose(s, out);
    return out.text();
}

} // namespace

TEST(PoseWriter, HairNamesChangeInTheModelAsWritten) {
    WriterSession w;
    LightsCameras(w.session);
    PoseText(w.session);
    // The material blocks rename for good; the closing section only writes the head.
    EXPECT_EQ(std::tie(w.session.Figures[3].Name, w.session.Figures[0].Name),
              std::tuple("prop figureHair", "prop figurehair_1"));
    EXPECT_EQ(NamesOf(w.session.Actors), (Strings{"1", "MAIN_CAMERA", "head", "figureHair"}));

    WriterSession hair;
    hair.session.Figures = {MakeFigure("Long Hair", {WhiteMaterial("Strands")})};
    hair.session.cmbFigures = {"Long Hair"};
    hair.session.Options.chkChannels = true;
    hair.session.IsHairFile = true;
    EXPECT_NE(PoseText(hair.session).find("\r\nprop figureHair\r\n\t{\r\n\tmaterial Strands"), std::string::npos);
}

TEST(PoseWriter, FirstActorEntryIsTheFirstRowBeginningWithActor) {
    WriterSession w;
    ActorEntryFirst(w.session);
    const std::pair<Strings, int> cases[] = {
        {{"hip", "actor chest"}, -1}, {{"actor hip", "actor chest"}, 0}, {{"Actor hip"}, -1}};
    for (const auto &[rows, entry] : cases) {
        w.session.cmbFigures = rows;
        EXPECT_EQ(FirstActorEntry(w.session), entry) << rows[0];
    }
}

TEST(PoseWriterFile, OutputPathFallsBackToTheDialogFileName) {
    TestHome home;
    WriterSession w;
    P5Skin(w.session);
    w.session.OutputPath = "  ";
    w.session.DialogFileName = home.file("from-command-line.pz2");
    WritePoseFile(w.session);
    EXPECT_EQ(w.session.OutputPath, w.session.DialogFileName);
    EXPECT_EQ(home.read("from-command-line.pz2"), ReadTestData("writer/p5-skin/expected.pz2"));
}

TEST(PoseWriterFile, FailedWriteKeepsThePreviousFile) {
    TestHome home;
    const std::string previous = "previous pose\r\n";
    const std::string target = home.write("pose.pz2", previous);
    WriterSession w;
    P5Skin(w.session);
    w.session.FileModified = true;
    w.session.PoserFileKind = KindCR2;
    // A strength that isn't a number ends the run halfway through the file.
    w.session.Figures[0].Materials[0].bumpStrength = "";
    w.session.OutputPath = target;
    EXPECT_EQ(FailureNumber([&] { WritePoseFile(w.session); }), ErrTypeMismatch);
    EXPECT_EQ(home.read("pose.pz2"), previous);
    EXPECT_TRUE(!FileExists(JoinPath(FolderPart(target), SaveTemporaryName(FileNamePart(target)))) &&
                w.session.FileModified && w.session.PoserFileKind == KindCR2);

    // The same text with its flag clear is never read.
    w.session.Figures[0].Materials[0].bumpStrengthEnabled = false;
    EXPECT_NO_THROW(WritePoseFile(w.session));
}

TEST(PoseWriterFile, UnwritableTargetsFailWithoutLeftovers) {
    TestHome home;
    home.write("folder/inside.txt", "x");
    home.write("plain-file", "x");
    WriterSession w;
    P5Skin(w.session);
    for (const std::string &target :
         {home.file("folder"), home.file("plain-file/pose.pz2"), home.file("missing/pose.pz2")}) {
        w.session.OutputPath = target;
        EXPECT_THROW(WritePoseFile(w.session), Failure) << target;
        EXPECT_FALSE(FileExists(JoinPath(FolderPart(target), SaveTemporaryName(FileNamePart(target))))) << target;
    }
    EXPECT_EQ(home.read("folder/inside.txt") + home.read("plain-file"), "xx");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home.file("folder")), {}), 1);
}

TEST(PoseWriterFile, LargeFileMatchesTheTextBlockForBlock) {
    TestHome home;
    WriterSession w;
    P5Skin(w.session);
    w.session.Figures[0].Materials.assign(300, SkinMaterial());
    w.session.OutputPath = home.file("large.pz2");
    WritePoseFile(w.session);
    const std::string written = home.read("large.pz2");
    EXPECT_GT(written.size(), 1000000u);
    EXPECT_EQ(written, PoseText(w.session));
}
