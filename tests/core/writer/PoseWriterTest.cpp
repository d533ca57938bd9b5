#include "WriterModels.h"

#include "model/Failure.h"
#include "platform/Paths.h"
#include "support/TestHome.h"
#include "writer/PoseWriter.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace gelvane;
using namespace gelvane::test;

namespace {

void P4Materials(Session &s) {
    Material noMap = SkinMaterial("SkinNoMap");
    noMap.textureMap = "NO_MAP";
    Material bare;
    bare.Name = "Bare";
    Material omitted = SkinMaterial("Omitted");
    omitted.Omit = true;
    Material edge;
    edge.Name = "Edge";
    edge.KdColor = {1, 128, 254};
    edge.KdColorEnabled = true;
    edge.TextureColor = "75";
    edge.TextureColorEnabled = true;
    edge.NsExponent = 120;
    edge.NsExponentEnabled = true;
    edge.tMin = 33;
    edge.tMinEnabled = true;
    edge.tMax = 100;
    edge.tMaxEnabled = true;
    edge.tExpo = 0.25f;
    edge.tExpoEnabled = true;
    edge.bumpStrength = "1000";
    edge.bumpStrengthEnabled = true;
    edge.ksIgnoreTexture = true;
    edge.ksIgnoreTextureEnabled = true;
    edge.textureMap = "No_Map";
    edge.textureMapEnabled = true;
    edge.bumpMap = "";
    edge.bumpMapEnabled = true;
    edge.reflectionMap = "never written";
    edge.reflectionStrength = " 33 ";
    edge.reflectionStrengthEnabled = true;
    edge.ReflectionColor = {1, 2, 3};
    Material ns1, ns100;
    ns1.Name = "Ns1";
    ns1.NsExponent = 1;
    ns1.NsExponentEnabled = true;
    ns100.Name = "Ns100";
    ns100.NsExponent = 100;
    ns100.NsExponentEnabled = true;
    s.Figures = {MakeFigure("figure", {SkinMaterial(), noMap, bare, omitted}),
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
    Material all;
    all.Name = "AllMaps";
    all.tMax = 50;
    all.tMaxEnabled = true;
    all.bumpStrength = "50";
    all.bumpStrengthEnabled = true;
    all.ksIgnoreTexture = true;
    all.ksIgnoreTextureEnabled = true;
    all.textureMap = "tex.jpg";
    all.bumpMap = "bump.jpg";
    all.reflectionMap = "refl.jpg";
    all.transparencyMap = "trans.jpg";
    all.textureMapEnabled = all.bumpMapEnabled = all.reflectionMapEnabled = all.transparencyMapEnabled = true;
    all.TextureColor = "not read while its flag is clear";

    Material trans;
    trans.Name = "TransNoTMax";
    trans.textureMap = "a.jpg";
    trans.reflectionMap = "r.jpg";
    trans.transparencyMap = "t.jpg";
    trans.textureMapEnabled = trans.reflectionMapEnabled = trans.transparencyMapEnabled = true;
    trans.ReflectionColorEnabled = true;
    trans.tMax = 100; // its flag is clear: no input, and the transparency node isn't counted

    Material bum;
    bum.Name = "BumOnly";
    bum.bumpMap = ":Runtime:textures:skin.BUM";
    bum.bumpMapEnabled = true;
    bum.bumpStrength = "50";
    bum.bumpStrengthEnabled = true;

    Material noStrength;
    noStrength.Name = "BumpNoStrength";
    noStrength.bumpMap = "b.jpg";
    noStrength.bumpMapEnabled = true;

    Material none;
    none.Name = "NoMaps";
    none.KsColorEnabled = true;
    none.NsExponent = 33;
    none.NsExponentEnabled = true;
    none.reflectionMap = "NO_MAP";
    none.reflectionMapEnabled = true;
    none.bumpMap = "b.jpg"; // flag clear: neither a bump link nor a node

    s.Figures = {MakeFigure("figure", {all, trans, bum, noStrength, none})};
    s.cmbFigures = {"figure"};
    s.OutputVersion = "5";
    s.Options.chkChannels = true;
    s.Options.PoserFormatP5 = true;
}

void BatchTExpo(Session &s) {
    Material opaque, half;
    opaque.Name = "Opaque";
    opaque.tMin = opaque.tMax = 100;
    opaque.tExpo = 0.75f;
    opaque.tMinEnabled = opaque.tMaxEnabled = opaque.tExpoEnabled = true;
    half = opaque;
    half.Name = "Half";
    half.tMin = 50;
    s.Figures = {MakeFigure("figure", {opaque, half})};
    s.cmbFigures = {"figure"};
    s.Options.chkChannels = true;
    s.Options.PoserFormatP5 = true;
    s.BatchMode = true;
}

void LightsCameras(Session &s) {
    s.Figures = {MakeFigure("prop figurehair_1", {WhiteMaterial("Strands")}),
                 MakeFigure("head", {WhiteMaterial("Face")}),
                 MakeFigure("head", {WhiteMaterial("Lips"), WhiteMaterial("Teeth")}),
                 MakeFigure("prop FigureHair_2", {WhiteMaterial("HairMat")}),
                 MakeFigure("lHand", {WhiteMaterial("Nails")})};
    s.cmbFigures = {"prop figurehair_1", "actor head", "actor head", "prop FigureHair_2", "actor lHand"};
    s.Options.chkDisableThighLength = false;
    s.Options.txtThighLength = "0.5";

    Channel red = KeyedChannel("kdRed", "RED", 1);
    red.Hidden = 2;
    red.HiddenEnabled = true;
    Channel xrot = KeyedChannel("rotateX", "xrot", 3);
    xrot.ValueEnabled = false;
    xrot.DisplayName = "xRotate";
    xrot.NameEnabled = true;
    xrot.Hidden = 1;
    xrot.HiddenEnabled = true;
    Actor light = MakeActor("light", "1", {red, xrot, KeyedChannel("valueParm", "Dim", -12.5)});
    light.StorageOffset = "0 0.3487 0";
    light.ObjFileGeom = "0 0 :Runtime:Geometries:lightIndicator.obj";
    light.GeomResource = 1;
    light.LightType = 2;
    light.DisplayName = "Light 1";
    light.NameEnabled = true;
    light.OnOff = 2;
    light.OnOffEnabled = true;
    light.Hidden = 1;
    light.HiddenEnabled = true;
    light.Locked = 1;
    light.LockedEnabled = true;
    light.DepthMapSize = 257;
    light.DepthMapSizeEnabled = true;
    light.DepthCamera = "shadowCam1";
    light.DoShadow = 2;
    light.DoShadowEnabled = true;
    light.LightOn = 2;
    light.LightOnEnabled = true;
    light.Port = "7";

    Actor camera = MakeActor("camera", "MAIN_CAMERA");
    camera.StorageOffset = "0 0 0";
    camera.OnOff = 1;
    camera.OnOffEnabled = true;
    camera.Hidden = 0;
    camera.HiddenEnabled = true;
    camera.Locked = 2;
    camera.Port = "1";
    camera.CameraModel = "0";

    Actor head = MakeActor("actor", "head", {KeyedChannel("targetGeom", "PBMCC_01", 0)});
    head.DisplayName = "Head";
    head.StorageOffset = "1 1 1";
    head.Port = "9";
    head.GeomResource = 3;
    head.DepthMapSize = 5;
    head.DepthMapSizeEnabled = true;
    head.DoShadow = 1;
    head.DoShadowEnabled = true;
    head.LightOn = 2;
    head.LightOnEnabled = true;
    head.OnOff = 2;

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
    EXPECT_FALSE(w.session.FileModified);
    EXPECT_FALSE(FileExists(home.file("out.pz2.gelvane-tmp")));
}

INSTANTIATE_TEST_SUITE_P(Writer, PoseGolden,
                         testing::Values(GoldenCase{"p4-materials", P4Materials}, GoldenCase{"pose-example", PoseExample},
                                         GoldenCase{"pose-example-unix", PoseExampleUnix},
                                         GoldenCase{"p5-skin", P5Skin}, GoldenCase{"p5-links", P5Links},
                                         GoldenCase{"batch-texpo", BatchTExpo},
                                         GoldenCase{"lights-cameras", LightsCameras},
                                         GoldenCase{"no-material-data", NoMaterialData},
                                         GoldenCase{"no-channels", NoChannels}),
                         [](const testing::TestParamInfo<GoldenCase> &info) {
                             std::string n = info.param.name;
                             for (char &c : n)
                                 if (c == '-')
                                     c = '_';
                             return n;
                         });
