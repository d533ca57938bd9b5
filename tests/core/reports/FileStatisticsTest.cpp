#include "core/reports/FileStatistics.h"
#include "core/model/Settings.h"
#include "support/ScriptedInteraction.h"

#include <gtest/gtest.h>

using namespace gelvane;

namespace {

struct Stats {
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};
};

Material WithMaps(const std::string &texture, const std::string &bump, const std::string &reflection,
                  const std::string &transparency) {
    Material m;
    m.Name = "m";
    m.textureMap = texture;
    m.bumpMap = bump;
    m.reflectionMap = reflection;
    m.transparencyMap = transparency;
    return m;
}

Channel Dial(const std::string &name, const std::string &type) {
    Channel c;
    c.Name = name;
    c.Type = type;
    return c;
}

} // namespace

TEST(FileStatistics, CountsDistinctMapsInTestOrder) {
    Stats s;
    s.session.FileName = "/p/a.pz2";
    Figure f;
    f.Name = "figure";
    // The same file as bump and texture map counts once, as a bump map; case makes two maps.
    f.Materials = {WithMaps("a.jpg", "a.jpg", "NO_MAP", "no_map"), WithMaps("A.jpg", "b.jpg", "r.jpg", "t.jpg"),
                   WithMaps("b.jpg", "", "r.jpg", "t.jpg")};
    s.session.Figures = {f};
    s.session.cmbFigures = {"figure"};
    ComputeFileStatistics(s.session);
    const FileStatisticsRecord &r = s.session.FileStatistics;
    EXPECT_EQ(r.FilePath, "/p/a.pz2");
    EXPECT_EQ(r.BumpMaps, 2);
    EXPECT_EQ(r.TextureMaps, 1);
    EXPECT_EQ(r.ReflectionMaps, 1);
    EXPECT_EQ(r.TransparencyMaps, 1);
    ASSERT_EQ(r.FigureStats.size(), 1u);
    EXPECT_EQ(r.FigureStats[0].Name, "figure");
    EXPECT_EQ(r.FigureStats[0].Materials, 3);
}

TEST(FileStatistics, ActorsByChannelKindAndTheirMaterials) {
    Stats s;
    Figure figure, prop, hand, handAgain;
    figure.Name = "figure";
    prop.Name = "ball";
    hand.Name = "lHand";
    handAgain.Name = "lHand";
    handAgain.Materials.resize(2);
    s.session.Figures = {figure, prop, hand, handAgain};
    s.session.cmbFigures = {"figure", "prop ball", "actor lHand", "actor lHand", "actor hip"};
    Actor hip, lHand;
    hip.Name = "hip";
    hip.Channels = {Dial("a", "targetGeom"), Dial("b", "geomChan"),  Dial("c", "handSpread"), Dial("d", "thumbGrasp"),
                    Dial("e", "handGrasp"),  Dial("f", "valueParm"), Dial("g", "rotateY"),    Dial("h", "")};
    lHand.Name = "lHand";
    s.session.Actors = {hip, lHand};
    ComputeFileStatistics(s.session);
    const FileStatisticsRecord &r = s.session.FileStatistics;
    ASSERT_EQ(r.ActorStats.size(), 2u);
    EXPECT_EQ(r.ActorStats[0].Channels, 8);
    EXPECT_EQ(r.ActorStats[0].MorphChannels, 5);
    EXPECT_EQ(r.ActorStats[0].NullChannels, 1);
    EXPECT_EQ(r.ActorStats[0].PoseChannels, 2);
    EXPECT_EQ(r.ActorStats[0].Materials, 0);
    EXPECT_EQ(r.ActorStats[1].Channels, 1);  // the one empty element isn't special-cased
    EXPECT_EQ(r.ActorStats[1].Materials, 2); // the last owner of that name
    // Objects are the rows in front of the first actor row.
    ASSERT_EQ(r.FigureStats.size(), 2u);
    EXPECT_EQ(r.FigureStats[1].Name, "ball");
}

TEST(FileStatistics, ActorsOnlyAndNothingLoaded) {
    Stats s;
    Figure hand;
    hand.Name = "lHand";
    s.session.Figures = {hand};
    s.session.cmbFigures = {"actor lHand"};
    ComputeFileStatistics(s.session);
    const FileStatisticsRecord &r = s.session.FileStatistics;
    ASSERT_EQ(r.FigureStats.size(), 1u); // a pose whose first row is an actor has no objects
    EXPECT_EQ(r.FigureStats[0].Name, "");
    ASSERT_EQ(r.ActorStats.size(), 1u); // Actors holds its one empty element
    EXPECT_EQ(r.ActorStats[0].Name, "");
    EXPECT_EQ(r.ActorStats[0].Channels, 0);

    // A second count starts from nothing.
    s.session.Figures = {Figure{}};
    s.session.cmbFigures.clear();
    ComputeFileStatistics(s.session);
    EXPECT_EQ(s.session.FileStatistics.TextureMaps, 0);
    EXPECT_EQ(s.session.FileStatistics.FigureStats.size(), 1u);
}
