#include "core/reader/ActorLoader.h"
#include "core/app/OpenCommands.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/reader/MorphLoader.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

using namespace gelvane;

namespace {

struct Loader {
    Loader() { settings.ReportTime = false; }
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};
};

// A pose section as the opening hands it over: line feeds only, no indentation; a
// body part and a light with every header and tail line.
const std::string &Pose() {
    static const std::string text = test::ReadTestData("channels/two-actors.pz2");
    return text;
}

std::string Indented(std::string_view text) {
    // Every line gets tabs in front, as in a character file whose channels are
    // loaded without the opening's line-start clean-up.
    std::string out = "\t";
    for (char c : text) {
        out.push_back(c);
        if (c == '\n')
            out += "\t\t";
    }
    return out;
}

std::string Doubled(std::string_view text) {
    std::string out;
    for (char c : text) {
        out.push_back(c);
        if (c == '\n')
            out.push_back('\n'); // a DOS line end made line-feed-only
    }
    return out;
}

Figure NamedFigure(const std::string &name, const std::string &material) {
    Figure f;
    f.Name = name;
    f.Materials[0].Name = material;
    return f;
}

std::string ReadAll(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

} // namespace

TEST(ActorLoader, ReadsHeaderChannelsAndTailOfActorsAndLights) {
    Loader l;
    ASSERT_TRUE(LoadActorSection(l.session, Pose()));
    const auto &actors = l.session.Actors;
    ASSERT_EQ(actors.size(), 2u);

    const Actor &hip = actors[0];
    EXPECT_EQ(hip.Type, "actor");
    EXPECT_EQ(hip.Name, "hip");
    EXPECT_EQ(hip.DisplayName, "Hip Part");
    EXPECT_TRUE(hip.NameEnabled);
    EXPECT_EQ(hip.OnOff, 2);
    EXPECT_EQ(hip.Hidden, 2);
    EXPECT_TRUE(hip.HiddenEnabled);
    EXPECT_EQ(hip.StorageOffset, ""); // read for lights and cameras only
    EXPECT_EQ(hip.Locked, 2);
    EXPECT_TRUE(hip.LockedEnabled);
    EXPECT_EQ(hip.DoShadow, 1);
    EXPECT_TRUE(hip.DoShadowEnabled);
    EXPECT_FALSE(hip.LightOnEnabled);
    EXPECT_FALSE(hip.DepthMapSizeEnabled);
    ASSERT_EQ(hip.Channels.size(), 2u);
    const Channel &belly = hip.Channels[0];
    EXPECT_EQ(belly.Type, "targetGeom");
    EXPECT_EQ(belly.Name, "Belly");
    EXPECT_EQ(belly.DisplayName, "BellyDisplay");
    EXPECT_TRUE(belly.NameEnabled);
    EXPECT_EQ(belly.Hidden, 1);
    EXPECT_TRUE(belly.HiddenEnabled);
    EXPECT_DOUBLE_EQ(belly.Value, 0.5);
    EXPECT_TRUE(belly.ValueEnabled);
    const Channel &yrot = hip.Channels[1];
    EXPECT_EQ(yrot.Type, "rotateY");
    EXPECT_EQ(yrot.Name, "yrot");
    EXPECT_EQ(yrot.DisplayName, "twist");
    EXPECT_FALSE(yrot.HiddenEnabled);
    EXPECT_EQ(yrot.Value, 0);
    EXPECT_TRUE(yrot.ValueEnabled); // the text is exactly "0"

    const Actor &light = actors[1];
    EXPECT_EQ(light.Type, "light");
    EXPECT_EQ(light.DisplayName, "Spot");
    EXPECT_EQ(light.OnOff, 1);
    EXPECT_EQ(light.Hidden, 1); // "hidden 10": only the last digit is read
    EXPECT_EQ(light.StorageOffset, "0 0.5 1");
    EXPECT_EQ(light.GeomResource, 4);
    EXPECT_EQ(light.LightType, 2);
    EXPECT_EQ(light.ObjFileGeom, "0 0 :Runtime:Geometries:light.obj");
    EXPECT_EQ(light.DepthMapSize, 257);
    EXPECT_TRUE(light.DepthMapSizeEnabled);
    EXPECT_EQ(light.DepthCamera, "SHADOW_CAM");
    EXPECT_EQ(light.DoShadow, 2);
    EXPECT_EQ(light.LightOn, 2);
    EXPECT_EQ(light.Port, "0");
    EXPECT_EQ(light.CameraModel, "2");
    EXPECT_EQ(light.Locked, 1);
    ASSERT_EQ(light.Channels.size(), 1u);
    EXPECT_EQ(light.Channels[0].Name, "RED");
    EXPECT_EQ(light.Channels[0].Value, 0);
    EXPECT_FALSE(light.Channels[0].ValueEnabled); // "0.000000" is not the text "0"

    // The pose page shows the actors, the first actor's dials, and the plain body part gets its row.
    const PoseView &pose = l.session.Pose;
    ASSERT_EQ(pose.lstActors.size(), 2u);
    EXPECT_EQ(pose.lstActors[1].Name, "LIGHT_1");
    EXPECT_EQ(pose.lstActors[1].Type, "light");
    ASSERT_EQ(pose.lstDials.size(), 2u);
    EXPECT_EQ(pose.lstDials[1].Name, "yrot");
    EXPECT_EQ(pose.CurrentActor, 1);
    EXPECT_EQ(pose.CurrentDial, 1);
    EXPECT_TRUE(pose.lstActorsEnabled);
    EXPECT_TRUE(pose.cmdDeleteDialsEnabled);
    EXPECT_FALSE(l.session.Options.chkChannels);
    EXPECT_EQ(l.session.cmbFigures, (std::vector<std::string>{"actor hip"}));
    EXPECT_FALSE(l.session.CustomMaterialsFound);
}

TEST(ActorLoader, LineLayoutDoesNotChangeTheResult) {
    Loader plain;
    LoadActorSection(plain.session, Pose());
    for (const std::string &variant : {Indented(Pose()), Doubled(Pose())}) {
        Loader l;
        ASSERT_TRUE(LoadActorSection(l.session, variant));
        EXPECT_EQ(l.session.Actors, plain.session.Actors);
    }
}

TEST(ActorLoader, ChannelValuesAndMissingKeys) {
    Loader l;
    LoadActorSection(l.session, "actor a\n{\nchannels\n{\n"
                                "valueParm Text\n{\nkeys\n{\nk  0  abc\n}\n}\n"
                                "valueParm NoKeyLine\n{\nkeys\n{\nstatic  0\n}\n}\n"
                                "valueParm Neg\n{\nkeys\n{\nk  12  -1.25\n}\n}\n"
                                "}\n}\n");
    const auto &c = l.session.Actors[0].Channels;
    ASSERT_EQ(c.size(), 3u);
    EXPECT_EQ(c[0].Value, 0);
    EXPECT_FALSE(c[0].ValueEnabled);
    EXPECT_EQ(c[1].Value, 0); // a keys block without a key line is no failure
    EXPECT_FALSE(c[1].ValueEnabled);
    EXPECT_DOUBLE_EQ(c[2].Value, -1.25);
    EXPECT_TRUE(c[2].ValueEnabled);

    // No keys anywhere ahead: the dial has its name and hidden flag but no value.
    Loader n;
    LoadActorSection(n.session, "actor a\n{\nchannels\n{\nvalueParm PBM\n{\nname Body\nhidden 1\n}\n}\n}\n");
    const auto &pbm = n.session.Actors[0].Channels;
    ASSERT_EQ(pbm.size(), 1u);
    EXPECT_EQ(pbm[0].DisplayName, "Body");
    EXPECT_EQ(pbm[0].Hidden, 2);
    EXPECT_FALSE(pbm[0].ValueEnabled);
}

TEST(ActorLoader, ChannelNamesMatchAsSubstrings) {
    // The search for a channel's line finds "m1" inside "m10": the dial "m2" in between is passed over.
    Loader l;
    std::string text = "actor a\n{\nchannels\n{\n";
    for (const char *name : {"m1", "m2", "m10"})
        text += std::string("targetGeom ") + name + "\n{\nname x\nkeys\n{\nk  0  1\n}\n}\n";
    LoadActorSection(l.session, text + "}\n}\n");
    std::vector<std::string> names;
    for (const Channel &c : l.session.Actors[0].Channels)
        names.push_back(c.Name);
    EXPECT_EQ(names, (std::vector<std::string>{"m1", "m10"}));
}

TEST(ActorLoader, ActorWithoutChannelsReadsItsTailBehindTheFirstBrace) {
    Loader l;
    LoadActorSection(l.session, "actor BODY\n{\nname Body\nlocked 1\n}\nactor hip\n{\nchannels\n{\n"
                                "rotateY yrot\n{\nkeys\n{\nk  0  3\n}\n}\n}\n}\n");
    ASSERT_EQ(l.session.Actors.size(), 2u);
    const Actor &body = l.session.Actors[0];
    EXPECT_TRUE(IsEmptyList(body.Channels));
    EXPECT_EQ(body.Locked, 2);
    EXPECT_EQ(body.DisplayName, "Body");
    ASSERT_EQ(l.session.Actors[1].Channels.size(), 1u);
    EXPECT_DOUBLE_EQ(l.session.Actors[1].Channels[0].Value, 3);
}

TEST(ActorLoader, ChannelsLineWithTrailingBlank) {
    Loader l;
    LoadActorSection(l.session, "actor hip\n{\nname N\nchannels \n{\nrotateY yrot\n{\nkeys\n{\nk  0  2\n}\n}\n}\n}\n");
    const Actor &hip = l.session.Actors[0];
    EXPECT_EQ(hip.DisplayName, "N");
    ASSERT_EQ(hip.Channels.size(), 1u);
    EXPECT_DOUBLE_EQ(hip.Channels[0].Value, 2);
}

TEST(ActorLoader, ThighLengthDropsTheFirstCharacterOfItsValue) {
    for (const char *line : {"thighLength 0.5\n", "thighLength 1.5\n"}) {
        Loader l;
        LoadActorSection(l.session, std::string(line) + "actor hip\n{\n}\n");
        EXPECT_EQ(l.session.Options.txtThighLength, "0.5");
        EXPECT_DOUBLE_EQ(l.session.ThighLength, 0.5);
        EXPECT_FALSE(l.session.Options.chkDisableThighLength);
    }
    Loader none;
    none.session.Options.chkDisableThighLength = false;
    LoadActorSection(none.session, "actor hip\n{\n}\n");
    EXPECT_TRUE(none.session.Options.chkDisableThighLength);
}

TEST(ActorLoader, ShaderTreeBehindChannelsIsNotReadAsChannels) {
    Loader l;
    LoadActorSection(l.session, "actor head\n{\nchannels\n{\ntargetGeom Smile\n{\nkeys\n{\nk  0  1\n}\n}\n}\n"
                                "customMaterial 1\nmaterial Lips\n{\nKdColor 1 0 0 1\nshaderTree\n{\n"
                                "node \"PoserSurface\" \"PoserSurface\"\n{\nname \"PoserSurface\"\nhidden 0\n"
                                "keys\n{\nk  0  3\n}\n}\n}\n}\nlocked 0\n}\n");
    const Actor &head = l.session.Actors[0];
    ASSERT_EQ(head.Channels.size(), 1u);
    EXPECT_EQ(head.Channels[0].Name, "Smile");
    EXPECT_DOUBLE_EQ(head.Channels[0].Value, 1);

    // The body part's customMaterial makes it an owner of materials.
    EXPECT_TRUE(l.session.CustomMaterialsFound);
    ASSERT_EQ(l.session.Figures.size(), 1u);
    EXPECT_EQ(l.session.Figures[0].Name, "head");
    ASSERT_EQ(l.session.Figures[0].Materials.size(), 1u);
    const Material &lips = l.session.Figures[0].Materials[0];
    EXPECT_EQ(lips.Name, "Lips");
    EXPECT_EQ(lips.KdColor, (Rgb{255, 0, 0}));
    EXPECT_TRUE(lips.KdColorEnabled);
    EXPECT_EQ(lips.textureMap, "NO_MAP");
    EXPECT_EQ(l.session.cmbFigures, (std::vector<std::string>{"actor head"}));
}

TEST(ActorLoader, CustomMaterialOwnersAndActorRows) {
    Loader l;
    l.session.Figures = {NamedFigure("figure", "skin")};
    l.session.cmbFigures = {"figure"};
    LoadActorSection(l.session, "actor hip\n{\nchannels\n{\n}\ncustomMaterial 0\n}\n"
                                "actor lHand\n{\nchannels\n{\n}\ncustomMaterial\t2\n"
                                "material Nails\n{\nKdColor 0 0 1 1\n}\nmaterial Skin\n{\ntMax 0.5\n}\n}\n"
                                "prop ball\n{\nchannels\n{\n}\ncustomMaterial 1\nmaterial Ball\n{\ntMin 1\n}\n}\n"
                                "light L1\n{\nchannels\n{\n}\n}\n");
    ASSERT_EQ(l.session.Actors.size(), 4u);
    ASSERT_EQ(l.session.Figures.size(), 2u);
    const Figure &hand = l.session.Figures[1];
    EXPECT_EQ(hand.Name, "lHand");
    ASSERT_EQ(hand.Materials.size(), 2u);
    EXPECT_EQ(hand.Materials[0].Name, "Nails");
    EXPECT_EQ(hand.Materials[0].KdColor, (Rgb{0, 0, 255}));
    EXPECT_EQ(hand.Materials[1].Name, "Skin");
    EXPECT_EQ(hand.Materials[1].tMax, 50);
    // Owners first, then every plain body part; props and lights get no row.
    EXPECT_EQ(l.session.cmbFigures, (std::vector<std::string>{"figure", "actor lHand", "actor hip"}));
}

TEST(ActorLoader, SingleActorGoesToTheHeadAndKeepActorsAppends) {
    Loader l;
    LoadActorSection(l.session, Pose());
    ASSERT_TRUE(LoadActorSection(
        l.session, "actor BODY\n{\nchannels\n{\nvalueParm X\n{\nkeys\n{\nk  0  2\n}\n}\n}\n}\n", true, false));
    ASSERT_EQ(l.session.Actors.size(), 3u);
    EXPECT_EQ(l.session.Actors[0].Name, "BODY");
    EXPECT_EQ(l.session.Actors[0].Channels[0].Name, "X");
    EXPECT_EQ(l.session.Actors[1].Name, "hip");
    EXPECT_EQ(l.session.Pose.lstActors.front().Name, "BODY");

    LoadActorSection(l.session, "actor foot\n{\n}\n", false, true);
    ASSERT_EQ(l.session.Actors.size(), 4u);
    EXPECT_EQ(l.session.Actors.back().Name, "foot");
}

TEST(ActorLoader, OddTextsEndWithoutHanging) {
    // A comment-like channel line in a block without keys would make the same round for ever.
    Loader a;
    EXPECT_TRUE(LoadActorSection(a.session, "actor hip\n{\nchannels\n{\n#\n{\nname a\n}\n}\n}\n"));
    // A channels block that never closes.
    Loader b;
    EXPECT_TRUE(LoadActorSection(b.session, "actor hip\n{\nchannels\n{\nrotateY yrot\n{\nkeys\n{\nk  0  1\n}\n"));
    ASSERT_EQ(b.session.Actors[0].Channels.size(), 1u);
    EXPECT_DOUBLE_EQ(b.session.Actors[0].Channels[0].Value, 1);
    // A text that ends inside a keys block fails like a text function would; the caller reports it.
    Loader c;
    EXPECT_THROW(LoadActorSection(c.session, "actor hip\n{\nchannels\n{\nrotateY yrot\n{\nkeys\n{\nk  0  1"), Failure);
    // Lines in unexpected order: the tail words in front of the channels aren't tail lines.
    Loader d;
    LoadActorSection(d.session, "actor hip\n{\nlocked 1\nchannels\n{\nrotateY yrot\n{\nkeys\n{\nk  0  1\n}\n}\n}\n"
                                "name Late\n}\n");
    EXPECT_FALSE(d.session.Actors[0].LockedEnabled);
    EXPECT_FALSE(d.session.Actors[0].NameEnabled);
    EXPECT_EQ(d.session.Actors[0].Channels.size(), 1u);
}

TEST(ActorLoader, CancelLeavesActorsEmptyAndMaterialsInPlace) {
    Loader l;
    l.session.Figures = {NamedFigure("figure", "skin")};
    bool clicked = false;
    l.session.chkChannelsClick = [&] { clicked = true; };
    l.ui.cancelAtDoEvents(2); // while reading the first channel
    EXPECT_FALSE(LoadActorSection(l.session, "thighLength 0.5\n" + Pose()));
    EXPECT_TRUE(IsEmptyList(l.session.Actors));
    EXPECT_EQ(l.session.Actors[0].Channels.size(), 1u);
    EXPECT_EQ(l.session.Figures[0].Materials[0].Name, "skin");
    EXPECT_TRUE(l.session.Pose.lstActors.empty());
    EXPECT_EQ(l.session.Options.txtThighLength, "");
    EXPECT_FALSE(l.session.Pose.txtThighLengthEnabled);
    EXPECT_FALSE(l.session.Options.chkDisableThighLength);
    EXPECT_FALSE(l.session.Pose.chkDisableThighLengthEnabled);
    EXPECT_TRUE(clicked);
    EXPECT_FALSE(l.ui.ProgressVisible());
    EXPECT_TRUE(l.ui.messages().empty());
}

TEST(ActorLoader, ProgressTextsAndReportedTime) {
    Loader l;
    l.settings.ReportTime = true;
    int32_t now = 100;
    l.session.SecondsClock = [&] { return now; };
    l.ui.cancelAtDoEvents(0);
    LoadActorSection(l.session, Pose());
    EXPECT_TRUE(l.ui.messages().empty()); // no time passed
    const auto &status = l.ui.statusLines();
    ASSERT_GE(status.size(), 3u);
    EXPECT_EQ(status[0], "Loading Morphs and Poses...");
    EXPECT_EQ(status[1], "actor hip...");
    EXPECT_EQ(status[2], "light LIGHT_1...");

    Loader slow;
    slow.settings.ReportTime = true;
    int calls = 0;
    slow.session.SecondsClock = [&] { return ++calls == 1 ? 100 : 165; };
    LoadActorSection(slow.session, Pose());
    ASSERT_EQ(slow.ui.messages().size(), 1u);
    EXPECT_EQ(slow.ui.messages()[0].Text, "Loading of Morphs and Poses took\r\n1 minutes and 5 seconds.");
    EXPECT_EQ(slow.ui.messages()[0].Title, "Loading finished");

    Loader batch;
    batch.session.BatchMode = true;
    LoadActorSection(batch.session, Pose());
    EXPECT_FALSE(batch.ui.progressEverShown());
    EXPECT_EQ(batch.session.Actors.size(), 2u);
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

TEST(ActorLoader, LargeSectionLoads) {
    std::string text;
    const int actors = 1000, channels = 100;
    for (int a = 0; a < actors; ++a) {
        text += "actor part" + std::to_string(a) + "\n{\nname Part\non\nchannels\n{\n";
        for (int c = 0; c < channels; ++c)
            text += "targetGeom m" + std::to_string(1000 + c) + "\n{\nname M\nhidden 0\nkeys\n{\nstatic  0\nk  0  " +
                    std::to_string(c) + "\n}\ninterpStyleLocked 0\n}\n";
        text += "}\nlocked 0\n}\n";
    }
    Loader l;
    l.session.BatchMode = true;
    ASSERT_TRUE(LoadActorSection(l.session, text));
    ASSERT_EQ(l.session.Actors.size(), static_cast<size_t>(actors));
    size_t total = 0;
    for (const Actor &a : l.session.Actors)
        total += a.Channels.size();
    EXPECT_EQ(total, static_cast<size_t>(actors * channels));
    EXPECT_DOUBLE_EQ(l.session.Actors[999].Channels[99].Value, 99);
}

TEST(ActorLoader, CharacterCorpusChannels) {
    const std::string path = test::CorpusPath("sl_avatar/SL_Male.cr2");
    std::string file = ReadAll(path);
    // The channel part as the character's morph loading cuts it: behind the second
    // figureResFile line up to the figure block, whose line has lost its trailing blank.
    file = Replace(file, "\nfigure \n", "\nfigure\n");
    const size_t second = file.find("\nfigureResFile", file.find("\nfigureResFile") + 1);
    const size_t end = file.find("\nfigure\n");
    ASSERT_NE(end, std::string::npos);
    const std::string part = file.substr(second + 15, end - second - 15);
    Loader l;
    l.session.BatchMode = true;
    l.session.DialogFileName = path;
    ASSERT_TRUE(LoadActorSection(l.session, part));
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
        std::vector<std::string> names;
        for (const Channel &c : actor.Channels)
            names.push_back(c.Name);
        EXPECT_EQ(names, expected) << actor.Name;
        EXPECT_EQ(actor.Locked, 1) << actor.Name;
        EXPECT_TRUE(actor.NameEnabled);
    }
    const Actor &hip = l.session.Actors[1];
    EXPECT_EQ(hip.DisplayName, "GetStringRes(1024,6)");
    EXPECT_EQ(hip.Hidden, 1);
    EXPECT_EQ(hip.OnOff, 2);
    EXPECT_FALSE(l.session.CustomMaterialsFound); // every customMaterial line holds 0
    EXPECT_EQ(l.session.cmbFigures.size(), 20u);
    EXPECT_EQ(l.session.cmbFigures[0], "actor BODY:3");

    // The indexed search of large blocks reads the real file the same way.
    Loader indexed;
    indexed.session.IndexedChannelBlockMinimum = 0;
    indexed.session.BatchMode = true;
    indexed.session.DialogFileName = path;
    LoadActorSection(indexed.session, part);
    EXPECT_EQ(indexed.session.Actors, l.session.Actors);
}

TEST(ActorLoader, PropCorpusThroughTheOpenCommand) {
    const std::string file = ReadAll(test::CorpusPath("reality/Mesh Light.pp2"));
    test::TestHome home;
    Loader l;
    l.session.CommandLineOpen = true;
    l.session.DialogFileName = home.write("Mesh Light.pp2", file);
    l.ui.nextAnswer(MsgResult::Yes); // load morphs and poses
    OpenCommand(l.session, KindPP2);
    ASSERT_FALSE(l.session.OpenFailed);
    ASSERT_EQ(l.session.Actors.size(), 1u);
    const Actor &prop = l.session.Actors[0];
    EXPECT_EQ(prop.Type, "prop");
    EXPECT_EQ(prop.Name, "MeshLight");
    // The morph dials (the first stands behind the "groups" list), then the transforms and null dials.
    ASSERT_EQ(prop.Channels.size(), 26u);
    EXPECT_EQ(prop.Channels[0].Name, "Snoot Width");
    EXPECT_EQ(prop.Channels[12].Name, "yRotate");
    EXPECT_DOUBLE_EQ(prop.Channels[12].Value, -28);
    EXPECT_EQ(prop.Channels[25].Type, "valueParm");
    EXPECT_EQ(prop.Channels[25].Name, "Sharp");
    // A prop's customMaterial makes no owner, and a prop gets no actor row.
    EXPECT_EQ(l.session.cmbFigures, (std::vector<std::string>{"prop MeshLight"}));
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

    Loader direct;
    direct.session.IndexedChannelBlockMinimum = static_cast<size_t>(-1);
    direct.session.IndexedChannelRescans = static_cast<size_t>(-1);
    LoadActorSection(direct.session, text);
    Loader indexed;
    indexed.session.IndexedChannelBlockMinimum = 0;
    LoadActorSection(indexed.session, text);

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
        Loader direct;
        direct.session.IndexedChannelBlockMinimum = static_cast<size_t>(-1);
        direct.session.IndexedChannelRescans = static_cast<size_t>(-1);
        direct.session.BatchMode = true;
        int directFailure = 0, indexedFailure = 0;
        try {
            LoadActorSection(direct.session, text);
        } catch (const Failure &f) {
            directFailure = f.Number;
        }
        Loader indexed;
        indexed.session.IndexedChannelBlockMinimum = 0;
        indexed.session.BatchMode = true;
        try {
            LoadActorSection(indexed.session, text);
        } catch (const Failure &f) {
            indexedFailure = f.Number;
        }
        ASSERT_EQ(indexedFailure, directFailure) << text;
        ASSERT_EQ(indexed.session.Actors, direct.session.Actors) << text;
    }
}
