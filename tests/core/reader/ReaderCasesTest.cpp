// Small files of shapes that real files and Gelvane's own poses have, each named after
// what once went wrong with it: they open, give the channels listed, and give them again
// when the written pose is read back.
#include "core/model/Numbers.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/reader/MorphLoader.h"
#include "core/reader/OpenFile.h"
#include "core/writer/LineWriter.h"
#include "core/writer/PoseWriter.h"
#include "support/SessionFixture.h"

namespace gelvane {
namespace {

using Dials = std::vector<std::string>;

// Every actor as "name", each of its channels as "actor channel value on|off".
Dials DialsOf(const Session &session) {
    Dials dials;
    for (const Actor &actor : session.Actors) {
        if (actor.Name.empty())
            continue;
        dials.push_back(actor.Name);
        for (const Channel &c : actor.Channels)
            if (!c.Name.empty())
                dials.push_back(actor.Name + " " + c.Name + " " + NumberText(c.Value) +
                                (c.ValueEnabled ? " on" : " off"));
    }
    return dials;
}

struct Reader : test::TestSession {
    Reader() { settings.ReportTime = false; }
    // Opens `bytes` as a file of `kind` through the open dialog.
    void Open(int kind, const std::string &name, std::string_view bytes) {
        session.PoserFileKind = static_cast<int16_t>(kind);
        ui.nextFile(home.write(name, bytes));
        OpenFile(session);
    }
    std::string WrittenPose() {
        LineWriter out("\n");
        WritePose(session, out);
        return out.text();
    }
    test::TestHome home;
};

struct ChannelCase {
    const char *fixture;
    Dials dials;
    bool sameAfterWriting = true;
    Dials written = {}; // what the written pose gives, when not the same
};

TEST(ReaderCases, ChannelsAreReadAndReadAgainFromTheWrittenPose) {
    const ChannelCase cases[] = {
        // Later rounds look for their marks behind Search, not at it: the "name " line of
        // the channel just read no longer makes the reader pass over the next channel.
        // (zrot goes out as an empty block, which a later round of the search never lands on.)
        {"keys-line-with-trailing-blank.pz2",
         {"hip:1", "hip:1 yrot 5 on", "hip:1 zrot 0 off", "hip:1 yScale 1 on"},
         false},
        // The channel section ends behind the later of the two kinds of "channels" line.
        {"prop-behind-actors-channels-blank.pz2", {"hip:1", "hip:1 yrot 20 on", "ball:1", "ball:1 Bounce 3 on"}},
        // A channel without keys leaves Search at its own "}", as Gelvane writes a dial
        // whose value isn't enabled.
        {"channel-without-keys-before-keyed.pz2", {"lShldr:1", "lShldr:1 twisty 0 off", "lShldr:1 zrot 70 on"}},
        // A channel without keys, read with its name line, behind which no mark is left.
        {"channel-without-keys-then-empty-actor.pz2", {"hip", "hip Bend 0 off", "chest"}},
        // An empty channels block holds no channel, not one made of the actor's own header.
        // (The props go out as empty blocks, which a pose passes over.)
        {"empty-channels-block-read-as-a-channel.pz2",
         {"hair1", "hair1", "hip:1", "hip:1 yrot 20 on"},
         true,
         {"hip:1", "hip:1 yrot 20 on"}},
    };
    for (const ChannelCase &c : cases) {
        SCOPED_TRACE(c.fixture);
        Reader first;
        first.Open(KindPZ2, "first.pz2", test::ReadTestData(std::string("reader/") + c.fixture));
        ASSERT_FALSE(first.session.OpenFailed);
        EXPECT_EQ(DialsOf(first.session), c.dials);

        if (!c.sameAfterWriting)
            continue;
        Reader again;
        again.Open(KindPZ2, "again.pz2", first.WrittenPose());
        ASSERT_FALSE(again.session.OpenFailed);
        EXPECT_EQ(DialsOf(again.session), c.written.empty() ? c.dials : c.written);
    }
}

// A file with single line ends (Gelvane's own with the UNIX setting) reads as the same
// file with "\r\n" does: the customMaterial of an actor survives writing and reading.
TEST(ReaderCases, CustomMaterialSurvivesSingleLineEnds) {
    std::string text = test::ReadTestData("reader/custom-material-lost-with-single-line-ends.pz2");
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        Reader r;
        r.Open(KindPZ2, "pose.pz2", round == 1 ? Replace(text, "\n", "\r") : text);
        ASSERT_FALSE(r.session.OpenFailed);
        ASSERT_EQ(r.session.Figures.size(), 1u);
        EXPECT_EQ(r.session.Figures[0].Name, "lHand:1");
        EXPECT_EQ(r.session.Figures[0].Materials[0].Name, "Nails");
        text = r.WrittenPose();
    }
}

TEST(ReaderCases, HandFileWithoutVersionBlockWritesNoNamelessActor) {
    Reader r;
    r.Open(KindHD2, "hand.hd2", test::ReadTestData("reader/hand-without-version-block.hd2"));
    ASSERT_FALSE(r.session.OpenFailed);
    // Its first "}" lies inside a channel, and "figure 1" ends the channel section early:
    // no actor is read, and none is written.
    EXPECT_EQ(r.WrittenPose(), "{\n# Made by hand\nversion\n\t{\n\tnumber 4.01\n\t}\n}\n");
}

TEST(ReaderCases, ManySmallBlocksOfNamedDialsOpen) {
    // Each named dial is looked for again behind itself, and that search mostly runs to the
    // end of its block: 300 such blocks once made the reading refuse the file.
    const std::string one = test::ReadTestData("reader/named-dials-in-small-blocks.pz2");
    const size_t actorAt = one.find("actor a0:1\n"), end = one.rfind("}\n");
    std::string text = one.substr(0, actorAt);
    for (int i = 0; i < 300; ++i)
        text += "actor a" + std::to_string(i) + ":1" + one.substr(actorAt + 10, end - actorAt - 10);
    text += "}\n";
    Reader r;
    r.Open(KindPZ2, "named.pz2", text);
    ASSERT_FALSE(r.session.OpenFailed);
    ASSERT_EQ(r.session.Actors.size(), 300u);
    // Morph1's second search finds "targetGeom Morph10", which passes over Morph2 to Morph9.
    for (const Actor &actor : r.session.Actors)
        EXPECT_EQ(actor.Channels.size(), 52u) << actor.Name;
}

TEST(ReaderCases, MaterialNamesThatRepeatALongLineAreRefused) {
    // Every "material " of the line opens a material named by the rest of that line: the
    // names would hold the line some thousands of times over.
    std::string line;
    for (int i = 0; i < 3000; ++i)
        line += "material ";
    Reader r;
    r.Open(KindPZ2, "words.pz2", "{\nversion\n{\nnumber 4.01\n}\nfigure\n{\nmaterial Skin\n{\n" + line + "\n}\n}\n}\n");
    EXPECT_TRUE(r.session.OpenFailed);
    ASSERT_FALSE(r.ui.messages().empty());
    EXPECT_NE(r.ui.messages().back().Text.find("Out of memory, error number 7"), std::string::npos);
}

TEST(ReaderCases, CustomMaterialCountsBeyondTheTextFailWithoutSizingArrays) {
    struct CountCase {
        const char *fixture;
        bool singleActor;
        const char *failure; // the title of the box
    };
    const CountCase cases[] = {
        {"custom-material-count-9e99.cr2", true, "Overflow"},
        {"custom-material-count-5000000.cr2", true, "Invalid procedure call or argument"},
        {"custom-material-count-9e99.cr2", false, "Overflow"},
        // The count is read from the 20 characters that begin with the word: its line end is cut off.
        {"custom-material-count-5000000.cr2", false, "Invalid procedure call or argument"},
    };
    for (const CountCase &c : cases) {
        SCOPED_TRACE(std::string(c.fixture) + (c.singleActor ? " single" : " whole"));
        Reader r;
        const std::string text = test::ReadTestData(std::string("reader/") + c.fixture);
        r.session.DialogFileName = r.home.write("figure.cr2", text);
        LoadMorphPoseData(r.session, c.singleActor, true, text);
        EXPECT_EQ(test::Each(r.ui.messages(), &test::RecordedMessage::Title), std::vector<std::string>{c.failure});
        // Only the one material block that the text holds was read.
        EXPECT_LE(r.session.Figures.back().Materials.size(), 1u);
    }
}

} // namespace
} // namespace gelvane
