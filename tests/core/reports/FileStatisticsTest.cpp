#include "core/reports/FileStatistics.h"

#include "support/SessionFixture.h"

namespace gelvane::test {
namespace {

using FileStatistics = SessionFixture;

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

auto Counts(const ActorStat &a) {
    return std::tie(a.Channels, a.MorphChannels, a.NullChannels, a.PoseChannels, a.Materials);
}

TEST_F(FileStatistics, CountsDistinctMapsInTestOrder) {
    session.FileName = "/p/a.pz2";
    // The same file as bump and texture map counts once, as a bump map; case makes two maps.
    session.Figures = {Figure{"figure",
                              {WithMaps("a.jpg", "a.jpg", "NO_MAP", "no_map"),
                               WithMaps("A.jpg", "b.jpg", "r.jpg", "t.jpg"), WithMaps("b.jpg", "", "r.jpg", "t.jpg")}}};
    session.cmbFigures = {"figure"};
    ComputeFileStatistics(session);
    const FileStatisticsRecord &r = session.FileStatistics;
    EXPECT_EQ(std::tie(r.FilePath, r.BumpMaps, r.TextureMaps, r.ReflectionMaps, r.TransparencyMaps),
              std::tuple("/p/a.pz2", 2, 1, 1, 1));
    ASSERT_EQ(r.FigureStats.size(), 1u);
    EXPECT_EQ(std::tie(r.FigureStats[0].Name, r.FigureStats[0].Materials), std::tuple("figure", 3));
}

TEST_F(FileStatistics, ActorsByChannelKindAndTheirMaterials) {
    session.Figures = {Figure{"figure"}, Figure{"ball"}, Figure{"lHand"}, Figure{"lHand", std::vector<Material>(2)}};
    session.cmbFigures = {"figure", "prop ball", "actor lHand", "actor lHand", "actor hip"};
    Actor hip, hand;
    hip.Name = "hip";
    hand.Name = "lHand";
    hip.Channels.clear();
    for (const char *type :
         {"targetGeom", "geomChan", "handSpread", "thumbGrasp", "handGrasp", "valueParm", "rotateY", ""})
        hip.Channels.push_back(Channel{"dial", "", type});
    session.Actors = {hip, hand};
    ComputeFileStatistics(session);
    const FileStatisticsRecord &r = session.FileStatistics;
    ASSERT_EQ(r.ActorStats.size(), 2u);
    EXPECT_EQ(Counts(r.ActorStats[0]), std::tuple(8, 5, 1, 2, 0));
    // The one empty dial isn't special-cased; the materials are the last owner's of that name.
    EXPECT_EQ(std::tie(r.ActorStats[1].Channels, r.ActorStats[1].Materials), std::tuple(1, 2));
    // Objects are the rows in front of the first actor row.
    EXPECT_EQ(NamesOf(r.FigureStats), (Strings{"figure", "ball"}));
}

TEST_F(FileStatistics, ActorsOnlyAndNothingLoaded) {
    session.Figures = {Figure{"lHand"}};
    session.cmbFigures = {"actor lHand"};
    ComputeFileStatistics(session);
    // A pose whose first row is an actor has no objects; Actors holds its one empty element.
    EXPECT_EQ(NamesOf(session.FileStatistics.FigureStats), Strings{""});
    ASSERT_EQ(NamesOf(session.FileStatistics.ActorStats), Strings{""});
    EXPECT_EQ(session.FileStatistics.ActorStats[0].Channels, 0);

    // A second count starts from nothing.
    session.Figures = {Figure{}};
    session.cmbFigures.clear();
    ComputeFileStatistics(session);
    EXPECT_EQ(session.FileStatistics.TextureMaps, 0);
    EXPECT_EQ(session.FileStatistics.FigureStats.size(), 1u);
}

} // namespace
} // namespace gelvane::test
