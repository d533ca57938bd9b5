#include "core/reader/MaterialParser.h"

#include "support/SessionFixture.h"

namespace gelvane::test {
namespace {

class MaterialParserTest : public SessionFixture {
protected:
    Material Parse(const std::string &block) {
        session.Figures.assign(1, Figure{"figure"});
        ParseMaterial(session, block, 0, 0);
        return session.Figures[0].Materials[0];
    }
    int FailureOf(const std::string &block) {
        return FailureNumber([&] { Parse(block); });
    }
};

TEST_F(MaterialParserTest, ConvertsEveryLineToTheModelsUnits) {
    const Material m = Parse("material skin\n{\nKdColor 0.5 0.5 0.5 1 \nKaColor 0 0.2 1 1 \nKsColor 1 1 1 1 \n"
                             "ReflectionColor 0.1 0.1 0.1 1 \nTextureColor 1 1 1 0.75 \nNsExponent 40 \n"
                             "tMin 0.125 \ntMax 1 \ntExpo 0.6 \nbumpStrength 1.5 \nreflectionStrength 0.3 \n"
                             "ksIgnoreTexture 1 \nreflectThruLights 0 \nreflectThruKd 1 \n"
                             "textureMap \"C:\\My Maps\\skin map.jpg\"\n0 0 \nbumpMap NO_MAP\n"
                             "reflectionMap no_map\n}");
    // 127.5 goes to the even 128, and 12.5 to 12.
    EXPECT_EQ(std::tie(m.KdColor, m.KaColor, m.KsColor, m.ReflectionColor),
              std::tuple(Rgb{128, 128, 128}, Rgb{0, 51, 255}, Rgb{255, 255, 255}, Rgb{26, 26, 26}));
    EXPECT_EQ(std::tie(m.TextureColor, m.NsExponent, m.tMin, m.tMax, m.bumpStrength, m.reflectionStrength),
              std::tuple("75", 61, 12, 100, "150", "30"));
    EXPECT_FLOAT_EQ(m.tExpo, 0.6f);
    EXPECT_EQ(std::tie(m.ksIgnoreTexture, m.reflectThruLights, m.reflectThruKd), std::tuple(true, false, true));
    // Map names are kept as the file has them.
    EXPECT_EQ(std::tie(m.textureMap, m.bumpMap, m.reflectionMap, m.transparencyMap),
              std::tuple("C:\\My Maps\\skin map.jpg", "NO_MAP", "no_map", "NO_MAP"));
    EXPECT_TRUE(m.KdColorEnabled && m.KaColorEnabled && m.KsColorEnabled && m.ReflectionColorEnabled);
    EXPECT_TRUE(m.TextureColorEnabled && m.bumpStrengthEnabled && m.reflectionStrengthEnabled);
    EXPECT_TRUE(m.NsExponentEnabled && m.tMinEnabled && m.tMaxEnabled && m.tExpoEnabled);
    EXPECT_TRUE(m.ksIgnoreTextureEnabled && m.reflectThruLightsEnabled && m.reflectThruKdEnabled);
    EXPECT_TRUE(m.textureMapEnabled && m.bumpMapEnabled && m.reflectionMapEnabled);
    EXPECT_FALSE(m.transparencyMapEnabled);
}

TEST_F(MaterialParserTest, MissingLinesKeepDefaultsAndFlagsOff) {
    const Material m = Parse("material bare\n{\n}");
    EXPECT_EQ(std::tie(m.KdColor, m.NsExponent, m.TextureColor, m.bumpStrength, m.textureMap),
              std::tuple(Rgb{}, 1, "0", "0", "NO_MAP"));
    EXPECT_FALSE(m.KdColorEnabled || m.NsExponentEnabled || m.TextureColorEnabled || m.textureMapEnabled ||
                 m.tExpoEnabled || m.ksIgnoreTextureEnabled);
    EXPECT_TRUE(session.KeywordMissing);
}

TEST_F(MaterialParserTest, SingleValueConversions) {
    struct Case {
        const char *line;
        std::string (*field)(const Material &);
        const char *expected;
    };
    auto ns = [](const Material &m) { return std::to_string(m.NsExponent) + (m.NsExponentEnabled ? "+" : "-"); };
    auto bump = [](const Material &m) { return m.bumpStrength; };
    auto texture = [](const Material &m) { return m.TextureColor; };
    auto tmin = [](const Material &m) { return std::to_string(m.tMin); };
    const Case cases[] = {
        {"NsExponent 0 \n", ns, "101+"},      {"NsExponent 101 \n", ns, "1-"}, // a result of 0 counts as a missing line
        {"bumpStrength 10 \n", bump, "1000"}, {"bumpStrength 10.01 \n", bump, "0"}, // beyond the sanity limit
        {"bumpStrength 12 \n", bump, "0"},    {"bumpStrength -10 \n", bump, "-1000"},
        {"tMin -11 \n", tmin, "0"},           {"TextureColor 0 0 0 0.333 \n", texture, "33"},
        {"TextureColor 0.5\n", texture, "50"}};
    for (const Case &c : cases)
        EXPECT_EQ(c.field(Parse(c.line)), c.expected) << c.line;
}

TEST_F(MaterialParserTest, KeywordsAreCaseSensitiveAndFoundInsideWords) {
    EXPECT_FALSE(Parse("kdcolor 1 1 1 1 \n").KdColorEnabled);
    EXPECT_EQ(Parse("sKdColor 1 0 0 1 \n").KdColor, (Rgb{255, 0, 0}));
    // The first occurrence counts.
    EXPECT_EQ(Parse("KdColor 0 0 1 1 \nKdColor 1 0 0 1 \n").KdColor, (Rgb{0, 0, 255}));
}

TEST_F(MaterialParserTest, ColourWithThreeNumbersReadsIntoTheNextLine) {
    EXPECT_EQ(Parse("KdColor 1 0 1\n\t\tKsColor 0 0 0 1 \n").KdColor, (Rgb{255, 0, 255}));
}

TEST_F(MaterialParserTest, BrokenBlocksFailToTheCaller) {
    // A value line without a line end behind it.
    EXPECT_EQ(FailureOf("material x\n{\ntMin 1"), ErrInvalidCall);
    EXPECT_EQ(FailureOf("textureMap \"a.jpg\""), ErrInvalidCall);
    // A colour line with fewer than three blanks to the block's end.
    EXPECT_EQ(FailureOf("KdColor 1 1"), ErrInvalidCall);
    // 128.5 * 255 doesn't fit 16 bits.
    EXPECT_EQ(FailureOf("KdColor 200 0 0 1 \n"), ErrOverflow);
    EXPECT_EQ(FailureOf("KdColor 128 0 0 1 \n"), 0);
}

TEST_F(MaterialParserTest, ThumbnailsAreCachedForExistingMapsOnly) {
    std::vector<std::string> cached;
    session.LoadThumbNail = [&](const std::string &path) { cached.push_back(path); };
    Parse("textureMap \"" GELVANE_SOURCE_DIR "/CMakeLists.txt\"\nbumpMap \"/no/such/file.jpg\"\n");
    EXPECT_EQ(cached, std::vector<std::string>{GELVANE_SOURCE_DIR "/CMakeLists.txt"});
    // A reference written on Windows finds its file under Poser's folder.
    const std::string map = home.write("Poser/Runtime/Textures/Skin/A.jpg", "x");
    settings.PoserFolder = home.path() + "/Poser";
    Parse("textureMap \"C:\\Program Files\\Poser\\Runtime\\textures\\skin\\a.jpg\"\n");
    EXPECT_EQ(cached.back(), map);
}

TEST_F(MaterialParserTest, CustomMaterialsAppendAnOwner) {
    session.Figures.assign(1, Figure{"figure"});
    ReadCustomMaterials(session,
                        "actor lHand\r\n{\r\n\tcustomMaterial\t2\r\n\tmaterial nails \r\n\t{\r\n\tKdColor 1 0 0 1 "
                        "\r\n\t}\r\n\tmaterial skin\r\n\t{\r\n\tNsExponent 40 \r\n\t}\r\n}");
    EXPECT_EQ(NamesOf(session.Figures), (Strings{"figure", ""}));
    EXPECT_EQ(MaterialNames(1), (Strings{"nails ", "skin"})); // not stripped of trailing blanks
    EXPECT_EQ(std::tie(session.Figures[1].Materials[0].KdColor, session.Figures[1].Materials[1].NsExponent),
              std::tuple(Rgb{255, 0, 0}, 61));

    // An empty model takes the owner in element 0; a count of 0 can't be dimensioned.
    session.Figures.assign(1, Figure{});
    ReadCustomMaterials(session, "customMaterial 1\nmaterial a\n{\nKdColor 0 1 0 1 \n}");
    ASSERT_EQ(session.Figures.size(), 1u);
    EXPECT_EQ(session.Figures[0].Materials.at(0).KdColor, (Rgb{0, 255, 0}));
    EXPECT_THROW(ReadCustomMaterials(session, "customMaterial 0\nmaterial a\n{\n}"), Failure);
}

} // namespace
} // namespace gelvane::test
