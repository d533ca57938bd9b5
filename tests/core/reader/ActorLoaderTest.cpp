#include "core/reader/ActorLoader.h"

#include "core/app/OpenCommands.h"
#include "core/model/Text.h"
#include "core/platform/Paths.h"
#include "support/PoserText.h"
#include "support/SessionFixture.h"

#include <random>

namespace gelvane::test {
namespace {

struct Loader : TestSession {
    Loader() { settings.ReportTime = false; }
    // Reads `text` quietly with the direct search of channel lines or the indexed one;
    // returns the failure number.
    int Read(const std::string &text, bool indexed) {
        session.IndexedChannelBlockMinimum = indexed ? 0 : static_cast<size_t>(-1);
        if (!indexed)
            session.IndexedChannelRescans = static_cast<size_t>(-1); // a small block never indexed either
        session.BatchMode = true;
        return FailureNumber([&] { LoadActorSection(session, text); });
    }
};

// A pose section as the opening hands it over: line feeds only, no indentation; a
// body part and a light with every header and tail line.
const std::string &Pose() {
    static const std::string text = ReadTestData("channels/two-actors.pz2");
    return text;
}

auto Fields(const Channel &c) {
    return std::tie(c.Type, c.Name, c.DisplayName, c.Hidden, c.Value, c.NameEnabled, c.HiddenEnabled, c.ValueEnabled);
}

TEST(ActorLoader, ReadsHeaderChannelsAndTailOfActorsAndLights) {
    Loader l;
    ASSERT_TRUE(LoadActorSection(l.session, Pose()));
    ASSERT_EQ(l.session.Actors.size(), 2u);
    const Actor &hip = l.session.Actors[0];
    // A storage offset is read for lights and cameras only.
    EXPECT_EQ(std::tie(hip.Type, hip.Name, hip.DisplayName, hip.OnOff, hip.Hidden, hip.Locked, hip.DoShadow),
              std::tuple("actor", "hip", "Hip Part", 2, 2, 2, 1));
    EXPECT_EQ(hip.StorageOffset, "");
    EXPECT_EQ(std::tie(hip.NameEnabled, hip.HiddenEnabled, hip.LockedEnabled, hip.DoShadowEnabled, hip.LightOnEnabled,
                       hip.DepthMapSizeEnabled),
              std::tuple(true, true, true, true, false, false));
    ASSERT_EQ(hip.Channels.size(), 2u);
    EXPECT_EQ(Fields(hip.Channels[0]), std::tuple("targetGeom", "Belly", "BellyDisplay", 1, 0.5, true, true, true));
    // A value of exactly the text "0" counts as one.
    EXPECT_EQ(Fields(hip.Channels[1]), std::tuple("rotateY", "yrot", "twist", 0, 0.0, true, false, true));

    // "hidden 10": only the last digit is read.
    const Actor &light = l.session.Actors[1];
    EXPECT_EQ(std::tie(light.Type, light.DisplayName, light.OnOff, light.Hidden, light.StorageOffset,
                       light.GeomResource, light.LightType, light.ObjFileGeom),
              std::tuple("light", "Spot", 1, 1, "0 0.5 1", 4, 2, "0 0 :Runtime:Geometries:light.obj"));
    EXPECT_EQ(std::tie(light.DepthMapSize, light.DepthMapSizeEnabled, light.DepthCamera, light.DoShadow, light.LightOn,
                       light.Port, light.CameraModel, light.Locked),
              std::tuple(257, true, "SHADOW_CAM", 2, 2, "0", "2", 1));
    // "0.000000" is not the text "0".
    EXPECT_EQ(light.Channels, std::vector<Channel>({{"RED", "", "kdRed", 0, 0, false, false, false}}));

    // The pose page shows the actors, the first actor's dials, and the plain body part gets its row.
    const PoseView &pose = l.session.Pose;
    EXPECT_EQ(std::tuple(NamesOf(pose.lstActors), pose.lstActors[1].Type, NamesOf(pose.lstDials)),
              std::tuple(Strings{"hip", "LIGHT_1"}, "light", Strings{"Belly", "yrot"}));
    EXPECT_TRUE(pose.CurrentActor == 1 && pose.CurrentDial == 1);
    EXPECT_TRUE(pose.lstActorsEnabled && pose.cmdDeleteDialsEnabled);
    EXPECT_FALSE(l.session.Options.chkChannels || l.session.CustomMaterialsFound);
    EXPECT_EQ(l.session.cmbFigures, Strings{"actor hip"});
}

TEST(ActorLoader, LineLayoutDoesNotChangeTheResult) {
    Loader plain;
    LoadActorSection(plain.session, Pose());
    // Tabs in front of every line, as in a character file; DOS line ends made line-feed-only.
    for (const std::string &variant : {"\t" + Replace(Pose(), "\n", "\n\t\t"), Replace(Pose(), "\n", "\n\n")}) {
        Loader l;
        ASSERT_TRUE(LoadActorSection(l.session, variant));
        EXPECT_EQ(l.session.Actors, plain.session.Actors);
    }
}

TEST(ActorLoader, ChannelValuesAndMissingKeys) {
    Loader l;
    LoadActorSection(l.session, ActorBlock("actor a", DialBlock("valueParm Text", "abc") +
                                                          "valueParm NoKeyLine\n{\nkeys\n{\nstatic  0\n}\n}\n" +
                                                          "valueParm Neg\n{\nkeys\n{\nk  12  -1.25\n}\n}\n" +
                                                          "valueParm PBM\n{\nname Body\nhidden 1\n}\n"));
    const auto &c = l.session.Actors[0].Channels;
    ASSERT_EQ(c.size(), 4u);
    // A keys block without a key line is no failure.
    EXPECT_EQ(std::tuple(c[0].Value, c[0].ValueEnabled, c[1].Value, c[1].ValueEnabled), std::tuple(0, false, 0, false));
    EXPECT_EQ(std::tuple(c[2].Value, c[2].ValueEnabled), std::tuple(-1.25, true));
    // No keys anywhere ahead: the dial has its name and hidden flag but no value.
    EXPECT_EQ(Fields(c[3]), std::tuple("valueParm", "PBM", "Body", 2, 0.0, true, true, false));
}

TEST(ActorLoader, ChannelNamesMatchAsSubstrings) {
    // The search for a channel's line finds "m1" inside "m10": the dial "m2" in between is passed over.
    Loader l;
    std::string dials;
    for (const char *name : {"m1", "m2", "m10"})
        dials += DialBlock(std::string("targetGeom ") + name, "1", "name x\n");
    LoadActorSection(l.session, ActorBlock("actor a", dials));
    EXPECT_EQ(NamesOf(l.session.Actors[0].Channels), (Strings{"m1", "m10"}));
}

TEST(ActorLoader, ChannelsLinesAndActorsWithoutChannels) {
    // An actor without channels reads its tail behind the first brace; a channels line may end in a blank.
    Loader l;
    LoadActorSection(l.session, "actor BODY\n{\nname Body\nlocked 1\n}\nactor hip\n{\nname N\nchannels \n{\n" +
                                    DialBlock("rotateY yrot", "3") + "}\n}\n");
    ASSERT_EQ(l.session.Actors.size(), 2u);
    const Actor &body = l.session.Actors[0];
    EXPECT_TRUE(IsEmptyList(body.Channels));
    EXPECT_EQ(std::tie(body.Locked, body.DisplayName, l.session.Actors[1].DisplayName,
                       l.session.Actors[1].Channels.at(0).Value),
              std::tuple(2, "Body", "N", 3.0));
}

TEST(ActorLoader, ThighLengthDropsTheFirstCharacterOfItsValue) {
    for (const char *line : {"thighLength 0.5\n", "thighLength 1.5\n"}) {
        Loader l;
        LoadActorSection(l.session, std::string(line) + "actor hip\n{\n}\n");
        EXPECT_EQ(
            std::tie(l.session.Options.txtThighLength, l.session.ThighLength, l.session.Options.chkDisableThighLength),
            std::tuple("0.5", 0.5, false));
    }
    Loader none;
    none.session.Options.chkDisableThighLength = false;
    LoadActorSection(none.session, "actor hip\n{\n}\n");
    EXPECT_TRUE(none.session.Options.chkDisableThighLength);
}

TEST(ActorLoader, ShaderTreeBehindChannelsIsNotReadAsChannels) {
    Loader l;
    LoadActorSection(l.session, ActorBlock("actor head", DialBlock("targetGeom Smile", "1"),
                                           "customMaterial 1\nmaterial Lips\n{\nKdColor 1 0 0 1\nshaderTree\n{\n"
                                           "node \"PoserSurface\" \"PoserSurface\"\n{\nname \"PoserSurface\"\n"
                                           "hidden 0\nkeys\n{\nk  0  3\n}\n}\n}\n}\nlocked 0\n"));
    const Actor &head = l.session.Actors[0];
    EXPECT_EQ(std::tuple(NamesOf(head.Channels), head.Channels[0].Value), std::tuple(Strings{"Smile"}, 1.0));
    // The body part's customMaterial makes it an owner of materials.
    EXPECT_TRUE(l.session.CustomMaterialsFound);
    EXPECT_EQ(std::tuple(NamesOf(l.session.Figures), l.MaterialNames(), l.session.cmbFigures),
              std::tuple(Strings{"head"}, Strings{"Lips"}, Strings{"actor head"}));
    EXPECT_EQ(l.session.Figures[0].Materials[0].KdColor, (Rgb{255, 0, 0}));
}

TEST(ActorLoader, CustomMaterialOwnersAndActorRows) {
    Loader l;
    l.session.Figures = {Figure{"figure"}};
    l.session.cmbFigures = {"figure"};
    LoadActorSection(l.session, "actor hip\n{\nchannels\n{\n}\ncustomMaterial 0\n}\n"
                                "actor lHand\n{\nchannels\n{\n}\ncustomMaterial\t2\n"
                                "material Nails\n{\nKdColor 0 0 1 1\n}\nmaterial Skin\n{\ntMax 0.5\n}\n}\n"
                                "prop ball\n{\nchannels\n{\n}\ncustomMaterial 1\nmaterial Ball\n{\ntMin 1\n}\n}\n"
                                "light L1\n{\nchannels\n{\n}\n}\n");
    ASSERT_EQ(l.session.Actors.size(), 4u);
    EXPECT_EQ(NamesOf(l.session.Figures), (Strings{"figure", "lHand"}));
    const Figure &hand = l.session.Figures[1];
    EXPECT_EQ(NamesOf(hand.Materials), (Strings{"Nails", "Skin"}));
    EXPECT_EQ(std::tie(hand.Materials[0].KdColor, hand.Materials[1].tMax), std::tuple(Rgb{0, 0, 255}, 50));
    // Owners first, then every plain body part; props and lights get no row.
    EXPECT_EQ(l.session.cmbFigures, (Strings{"figure", "actor lHand", "actor hip"}));
}

TEST(ActorLoader, SingleActorGoesToTheHeadAndKeepActorsAppends) {
    Loader l;
    LoadActorSection(l.session, Pose());
    ASSERT_TRUE(LoadActorSection(l.session, ActorBlock("actor BODY", DialBlock("valueParm X", "2")), true, false));
    EXPECT_EQ(NamesOf(l.session.Actors), (Strings{"BODY", "hip", "LIGHT_1"}));
    EXPECT_EQ(std::tie(l.session.Actors[0].Channels[0].Name, l.session.Pose.lstActors.front().Name),
              std::tuple("X", "BODY"));
    LoadActorSection(l.session, "actor foot\n{\n}\n", false, true);
    EXPECT_EQ(NamesOf(l.session.Actors), (Strings{"BODY", "hip", "LIGHT_1", "foot"}));
}

TEST(ActorLoader, OddTextsEndWithoutHanging) {
    // A comment-like channel line in a block without keys would make the same round for ever.
    Loader a;
    EXPECT_TRUE(LoadActorSection(a.session, "actor hip\n{\nchannels\n{\n#\n{\nname a\n}\n}\n}\n"));
    // A channels block that never closes.
    Loader b;
    EXPECT_TRUE(LoadActorSection(b.session, "actor hip\n{\nchannels\n{\n" + DialBlock("rotateY yrot", "1")));
    EXPECT_EQ(b.session.Actors[0].Channels.at(0).Value, 1);
    // A text that ends inside a keys block fails like a text function would; the caller reports it.
    Loader c;
    EXPECT_THROW(LoadActorSection(c.session, "actor hip\n{\nchannels\n{\nrotateY yrot\n{\nkeys\n{\nk  0  1"), Failure);
    // Lines in unexpected order: the tail words in front of the channels aren't tail lines.
    Loader d;
    LoadActorSection(d.session,
                     "actor hip\n{\nlocked 1\nchannels\n{\n" + DialBlock("rotateY yrot", "1") + "}\nname Late\n}\n");
    EXPECT_FALSE(d.session.Actors[0].LockedEnabled || d.session.Actors[0].NameEnabled);
    EXPECT_EQ(d.session.Actors[0].Channels.size(), 1u);
}

TEST(ActorLoader, CancelLeavesActorsEmptyAndMaterialsInPlace) {
    Loader l;
    l.session.Figures = {Figure{"figure"}};
    bool clicked = false;
    l.session.chkChannelsClick = [&] { clicked = true; };
    l.ui.cancelAtDoEvents(2); // while reading the first channel
    EXPECT_FALSE(LoadActorSection(l.session, "thighLength 0.5\n" + Pose()));
    EXPECT_EQ(l.session.Actors, std::vector<Actor>(1));
    EXPECT_EQ(l.session.Figures, std::vector<Figure>{Figure{"figure"}});
    EXPECT_TRUE(l.session.Pose.lstActors.empty() && l.session.Options.txtThighLength.empty());
    EXPECT_FALSE(l.session.Options.chkDisableThighLength || l.session.Pose.chkDisableThighLengthEnabled ||
                 l.session.Pose.txtThighLengthEnabled);
    EXPECT_TRUE(clicked && !l.ui.ProgressVisible() && l.ui.messages().empty());
}

TEST(ActorLoader, ProgressTextsAndReportedTime) {
    Loader l;
    l.settings.ReportTime = true;
    l.session.SecondsClock = [] { return 100; };
    LoadActorSection(l.session, Pose());
    EXPECT_TRUE(l.ui.messages().empty()); // no time passed
    const Strings status = l.ui.statusLines();
    EXPECT_EQ(Strings(status.begin(), status.begin() + 3),
              (Strings{"Loading Morphs and Poses...", "actor hip...", "light LIGHT_1..."}));

    Loader slow;
    slow.settings.ReportTime = true;
    int calls = 0;
    slow.session.SecondsClock = [&] { return ++calls == 1 ? 100 : 165; };
    LoadActorSection(slow.session, Pose());
    EXPECT_EQ(slow.ui.messages(),
              std::vector<RecordedMessage>({{"Loading of Morphs and Poses took\r\n1 minutes and 5 seconds.",
                                             "Loading finished", MsgIcon::None, MsgButtons::OK}}));
    Loader batch;
    batch.session.BatchMode = true;
    LoadActorSection(batch.session, Pose());
    EXPECT_TRUE(!batch.ui.progressEverShown() && batch.session.Actors.size() == 2);
}

TEST(ActorLoader, ApplyDisablePropertiesFollowsTheSetting) {
    Loader l;
    LoadActorSection(l.session, Pose());
    l.settings.DisableProperties = false;
    ApplyDisableProperties(l.session);
    EXPECT_TRUE(l.session.Actors[0].NameEnabled);
    l.settings.DisableProperties = true;
    ApplyDisableProperties(l.session);
    for (const Actor &a : l.session.Actors) {
        EXPECT_FALSE(a.NameEnabled || a.OnOffEnabled || a.HiddenEnabled || a.LockedEnabled || a.DoShadowEnabled ||
                     a.DepthMapSizeEnabled || a.LightOnEnabled);
        for (const Channel &c : a.Channels)
            EXPECT_FALSE(c.NameEnabled || c.HiddenEnabled);
    }
    EXPECT_TRUE(l.session.Actors[0].Channels[0].ValueEnabled); // dial values stay
}

TEST(ActorLoader, NextActorKeywordSkipsEmptyDeclarations) {
    const std::string head = "actor BODY\n{\n\n}\nactor hip\n{\n  \t}\nprop ball\n{\nname b\n}\n";
    // The count is what the skipped opening lines took, not the distance to the word found.
    EXPECT_EQ(NextActorKeyword(head, true), "prop \n" + std::to_string(head.find("actor hip\n") + 10));
    EXPECT_EQ(NextActorKeyword(head, false), "actor \n0");
    EXPECT_EQ(NextActorKeyword("xlight 1\n{\n}", false), "light \n0");
    EXPECT_EQ(NextActorKeyword("figure\n{\n}\n", true), "none");
}

TEST(ActorLoader, CharacterCorpusChannels) {
    const std::string path = CorpusPath("sl_avatar/SL_Male.cr2");
    std::string file = ReadFileBytes(path);
    // The channel part as the character's morph loading cuts it: behind the second
    // figureResFile line up to the figure block, whose line has lost its trailing blank.
    file = Replace(file, "\nfigure \n", "\nfigure\n");
    const size_t second = file.find("\nfigureResFile", file.find("\nfigureResFile") + 1);
    const size_t end = file.find("\nfigure\n");
    ASSERT_NE(end, std::string::npos);
    const std::string part = file.substr(second + 15, end - second - 15);
    Loader l;
    ASSERT_EQ(l.Read(part, false), 0);
    ASSERT_EQ(l.session.Actors.size(), 20u);
    // Each actor's channels are those of its block, in file order; the "groups" list in
    // front has no keys of its own, so the first channel behind it is read too.
    for (const Actor &actor : l.session.Actors) {
        const size_t at = part.find("actor " + actor.Name + "\n");
        const size_t close = part.find("\n\t\t}\n", part.find("\tchannels\n", at));
        std::vector<std::string> expected;
        for (size_t p = part.find("\n\t\t", at); p < close; p = part.find("\n\t\t", p + 1)) {
            const size_t lf = part.find('\n', p + 1);
            const std::string line = part.substr(p + 3, lf - p - 3);
            if (!line.empty() && line[0] != '\t' && line[0] != '{' && line[0] != '}' && line != "groups")
                expected.push_back(line.substr(line.find(' ') + 1));
        }
        ASSERT_FALSE(expected.empty()) << actor.Name;
        EXPECT_EQ(NamesOf(actor.Channels), expected) << actor.Name;
        EXPECT_EQ(actor.Locked, 1) << actor.Name;
        EXPECT_TRUE(actor.NameEnabled);
    }
    const Actor &hip = l.session.Actors[1];
    EXPECT_EQ(std::tie(hip.DisplayName, hip.Hidden, hip.OnOff), std::tuple("GetStringRes(1024,6)", 1, 2));
    EXPECT_FALSE(l.session.CustomMaterialsFound); // every customMaterial line holds 0
    EXPECT_EQ(l.session.cmbFigures.size(), 20u);
    EXPECT_EQ(l.session.cmbFigures[0], "actor BODY:3");

    // The indexed search of large blocks reads the real file the same way.
    Loader indexed;
    EXPECT_EQ(indexed.Read(part, true), 0);
    EXPECT_EQ(indexed.session.Actors, l.session.Actors);
}

TEST(ActorLoader, PropCorpusThroughTheOpenCommand) {
    Loader l;
    l.session.CommandLineOpen = true;
    l.session.DialogFileName = CorpusPath("reality/Mesh Light.pp2");
    l.ui.nextAnswer(MsgResult::Yes); // load morphs and poses
    OpenCommand(l.session, KindPP2);
    ASSERT_FALSE(l.session.OpenFailed);
    ASSERT_EQ(l.session.Actors.size(), 1u);
    const Actor &prop = l.session.Actors[0];
    EXPECT_EQ(std::tie(prop.Type, prop.Name), std::tuple("prop", "MeshLight"));
    // The morph dials (the first stands behind the "groups" list), then the transforms and null dials.
    ASSERT_EQ(prop.Channels.size(), 26u);
    EXPECT_EQ(prop.Channels[0].Name, "Snoot Width");
    EXPECT_EQ(prop.Channels[12].Name, "yRotate");
    EXPECT_DOUBLE_EQ(prop.Channels[12].Value, -28);
    EXPECT_EQ(std::tie(prop.Channels[25].Type, prop.Channels[25].Name), std::tuple("valueParm", "Sharp"));
    // A prop's customMaterial makes no owner, and a prop gets no actor row.
    EXPECT_EQ(l.session.cmbFigures, Strings{"prop MeshLight"});
    EXPECT_TRUE(l.session.FileModified);
}

TEST(ActorLoader, IndexedSearchFindsWhatTheDirectSearchFinds) {
    // Dial names that are prefixes of others, names of several words, a dial line quoted
    // inside another line, indentation and a groups list: every trap of the substring search.
    std::string text = "actor big\n{\nchannels\n{\ngroups\n{\nparmNode m1\n}\n";
    for (int i = 0; i < 60; ++i) {
        const std::string n = std::to_string(i);
        text += "targetGeom m" + n + "\n{\nname m" + n + "\nhidden 0\nkeys\n{\nk  0  " + n + "\n}\n}\n";
        text += "\tvalueParm Snoot W" + n + " Long\n\t{\n\tname x\n\tkeys\n\t{\n\tk  0  1\n\t}\n\t}\n";
        text +=
            "rotateY  yrot" + n + "\n{\nname see targetGeom m" + std::to_string(i + 1) + "\nkeys\n{\nk  0  2\n}\n}\n";
    }
    text += "}\nlocked 1\n}\nactor small\n{\nchannels\n{\nvalueParm a\n{\nkeys\n{\nk  0  1\n}\n}\n}\n}\n";

    Loader direct, indexed;
    EXPECT_EQ(std::tuple(direct.Read(text, false), indexed.Read(text, true)), std::tuple(0, 0));
    EXPECT_EQ(indexed.session.Actors, direct.session.Actors);
    ASSERT_EQ(direct.session.Actors.size(), 2u);
    const auto &dials = direct.session.Actors[0].Channels;
    ASSERT_EQ(dials.size(), 154u);
    EXPECT_EQ(dials[0].Name, "m0"); // behind the groups list, which has no keys of its own
    EXPECT_EQ(dials[3].Name, "m1");
    EXPECT_EQ(dials[5].Name, " yrot1");
    EXPECT_EQ(dials[6].Name, " yrot10"); // found inside the longer dial line
    EXPECT_EQ(dials[7].Name, "m11");
}

TEST(ActorLoader, IndexedSearchMatchesTheDirectSearchOnGeneratedSections) {
    // Sections built from the lines that matter: names that are prefixes of others, dial
    // lines quoted in other lines, keyless channels, openings inside headers, shared blocks.
    const char *const names[] = {"m1", "m10", "m11", "yrot", "dial_100", "dial_1000", "a b", "Snoot W1", "x"};
    const char *const types[] = {"targetGeom", "valueParm", "rotateY", "scale"};
    const char *const odd[] = {"{", "}", "keys", "name x", "actor z", "channels", "# note", "targetGeom\tm1"};
    std::mt19937 rng(17);
    auto pick = [&](auto &from) { return std::string(from[rng() % std::size(from)]); };
    for (int round = 0; round < 300; ++round) {
        std::string text;
        for (int a = static_cast<int>(rng() % 4) + 1; a > 0; --a) {
            text += std::string(rng() % 4 ? "actor" : "prop") + " a" + std::to_string(a) + "\n{\nname A\n";
            if (rng() % 8 == 0)
                text += "actor h" + std::to_string(a) + "\nname H\n";
            text += rng() % 2 ? "channels\n{\n" : "channels \n{\n";
            for (int c = static_cast<int>(rng() % 120); c > 0; --c) {
                const std::string name = pick(names) + (rng() % 2 ? "" : std::to_string(rng() % 3));
                text += (rng() % 3 ? "" : "\t") + pick(types) + " " + name + "\n{\n";
                if (rng() % 3)
                    text += rng() % 4 ? "name " + name + "\n" : "name see " + pick(types) + " " + pick(names) + "\n";
                if (rng() % 3 == 0)
                    text += "hidden 1\n";
                if (rng() % 5)
                    text += std::string(rng() % 2 ? "keys\n" : "keys \n") + "{\nk  0  " + std::to_string(rng() % 3) +
                            "\n}\n";
                text += rng() % 20 ? "}\n" : pick(odd) + "\n";
            }
            text += "}\nlocked 0\n";
            if (rng() % 4 == 0)
                text += "customMaterial 2\nmaterial M\n{\nKdColor 1 0 0 1\n}\n";
            text += "}\n";
        }
        Loader direct, indexed;
        ASSERT_EQ(indexed.Read(text, true), direct.Read(text, false)) << text;
        ASSERT_EQ(indexed.session.Actors, direct.session.Actors) << text;
    }
}

} // namespace
} // namespace gelvane::test
