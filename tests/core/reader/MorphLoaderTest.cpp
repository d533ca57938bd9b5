#include "core/reader/MorphLoader.h"

#include "FigureTestSession.h"
#include "core/reader/DeltaRemoval.h"

namespace gelvane::test {
namespace {

// The text as the channel load prepares it before cutting the channel part.
std::string Prepared(std::string_view fixture) {
    std::string text = ReadTestData("figures/" + std::string(fixture));
    RemoveDeltasOneRun(text);
    NormaliseFigureLines(text);
    return text;
}

TEST(ChannelPart, RunsFromTheSecondGeometryOrPropLine) {
    for (const char *fixture : {"one-figure.cr2", "one-figure-crlf.cr2", "one-figure-cr.cr2"}) {
        std::string text = Prepared(fixture);
        const std::string_view part = ChannelPart(text, "/x/One-Figure.CR2", false);
        EXPECT_TRUE(part.starts_with(":Runtime:Geometries:Tester:Tester.obj\n")) << fixture;
        EXPECT_NE(part.find("targetGeom Blink"), std::string_view::npos) << fixture;
        EXPECT_EQ(part.find("storageOffset"), std::string_view::npos) << fixture; // the head's declarations
        EXPECT_EQ(part.find("d 0"), std::string_view::npos) << fixture;
        // It stops in front of the line feed that opens the figure line.
        const size_t end = static_cast<size_t>(part.data() - text.data()) + part.size();
        EXPECT_EQ(text.compare(end, 8, "\nfigure\n"), 0) << fixture;
    }

    std::string prop = Prepared("chair.pp2");
    const std::string_view propPart = ChannelPart(prop, "chair.pp2", false);
    EXPECT_TRUE(propPart.starts_with("prop chair\n\t{\n\tname\tChair\n"));
    // No figure block: up to the text's length, which leaves out its last character.
    EXPECT_TRUE(propPart.ends_with("addActor chair\n\t}\n}"));

    // The hair prop gets the one name that the pose writer expects.
    std::string hair = Prepared("long-hair.hr2");
    const std::string_view hairPart = ChannelPart(hair, "long-hair.HR2", false);
    EXPECT_TRUE(hairPart.starts_with("prop figureHair\n\t{\n\tname\tLong Hair\n"));
    EXPECT_EQ(hairPart.find("prop Hair_7"), std::string_view::npos);
}

TEST(ChannelPart, OtherKindsStartTwoBehindTheFirstBrace) {
    // The start is counted before the leading line feeds go; the end is the figure behind "ikchannels".
    std::string text = "\n\n{\nversion\n}\n\nactor a\n{\nchannels\n{\n}\n}\nfigure\n{\n}\nactor b\n{\nikchannels\n}\n"
                       "figure\n{\n}\n";
    EXPECT_EQ(ChannelPart(text, "pose.pz2", false),
              "ctor a\n{\nchannels\n{\n}\n}\nfigure\n{\n}\nactor b\n{\nikchannels\n}");

    std::string tiny = "{\n}\nchannels\n";
    EXPECT_THROW(ChannelPart(tiny, "tiny.cr2", false), Failure); // it would end before it begins
}

TEST(ChannelPart, BodyActorRunsToTheNextActor) {
    EXPECT_EQ(BodyActorText("x\nactor hip\n{\n}\nactor BODY:1\n{\nchannels\n}\nactor BODY:2\n{\n}\n"),
              "actor BODY:1\n{\nchannels\n}\n");
    EXPECT_THROW(BodyActorText("actor hip\n{\n}\n"), Failure);
    EXPECT_THROW(BodyActorText("actor BODY:1\n{\n}\nprop ball\n"), Failure);
}

using MorphLoad = FigureTestSession;

TEST_F(MorphLoad, LoadsChannelsAndKeepsTheOwnerRows) {
    Dropped("one-figure-crlf.cr2");
    session.cmbFigures = {"figure", "actor hip:1", "actor head:1"}; // plain actors of an earlier load
    session.Figures[0].Name = "figure";
    LoadMorphPoseData(session);
    EXPECT_TRUE(ui.messages().empty() && session.FileModified && !ui.ProgressVisible());
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "actor BODY:1", "actor hip:1", "actor head:1"}));
    Strings channels;
    for (const Actor &actor : session.Actors)
        for (const Channel &channel : actor.Channels)
            channels.push_back(actor.Name + "/" + channel.Name + "=" + std::to_string(channel.Value));
    EXPECT_EQ(channels, (Strings{"BODY:1/Height=0.500000", "hip:1/Smile=0.250000", "hip:1/yrot=12.000000",
                                 "head:1/Blink=1.000000"}));

    // An import asks for its file by the kind; a cancel is silent.
    session.FileName = "/open/file.pz2";
    session.PoserFileKind = KindPP2;
    ui.nextFile(std::nullopt);
    LoadMorphPoseData(session, false, false, {}, true);
    ASSERT_EQ(ui.fileRequests().size(), 1u);
    EXPECT_EQ(ui.fileRequests()[0].Title, "Open Prop file");
    EXPECT_EQ(session.DialogFileName, "/open/file.pz2");
    EXPECT_TRUE(ui.messages().empty());
}

TEST_F(MorphLoad, FailureMessages) {
    Dropped("no-channels.cr2");
    LoadMorphPoseData(session);
    EXPECT_TRUE(ui.ProgressVisible()); // left up until its next use

    session.DialogFileName = home.write("tiny.cr2", "{\n}\nchannels\n");
    session.FileName = "/open/file.cr2";
    LoadMorphPoseData(session);
    EXPECT_EQ(session.DialogFileName, "/open/file.cr2");
    EXPECT_FALSE(ui.ProgressVisible());

    // Only the BODY actor: a character's first BODY is the head's empty declaration.
    Dropped("one-figure.cr2");
    LoadMorphPoseData(session, true, true, {}, false);
    LoadMorphPoseData(session, true, true, "{\n}\nactor BODY:1\n{\nchannels\n{\n}\n}\n", false);

    const std::string noData = "There is no morph or pose data in the file";
    const std::string notFound = "There is no morph or pose data in the opened\r\nfile or the data could not be found";
    EXPECT_EQ(Texts(), (Strings{noData, notFound, noData, notFound}));
    EXPECT_EQ(ui.messages()[0].Icon, MsgIcon::Exclamation);
    // The second kind of box is titled by the failure behind it.
    EXPECT_EQ(std::tie(ui.messages()[1].Title, ui.messages()[3].Title),
              std::tuple("Invalid procedure call or argument", "Input past end of file"));
    EXPECT_FALSE(session.FileModified);
}

TEST_F(MorphLoad, CancelLeavesTheMaterials) {
    std::string big = "{\nversion\n{\nnumber 4\n}\n", numbers;
    for (int i = 0; i < 2000; ++i)
        numbers += "d " + std::to_string(i) + " 0.1 0.2 0.3\n";
    int targets = 0;
    while (big.size() <= kPiecewiseDeltasLimit)
        big += "actor hip:1\n{\nchannels\n{\ntargetGeom t" + std::to_string(targets++) +
               "\n{\nkeys\n{\nk  0  1\n}\ndeltas\n{\n" + numbers + "}\n}\n}\n}\n";
    session.DialogFileName = home.write("big.pz2", big);
    session.Figures[0].Name = "figure";
    session.Figures[0].Materials[0].Name = "Skin";
    const std::vector<Figure> before = session.Figures;

    // While the deltas of a large text go piece by piece, and at the last yield before the actors.
    for (int at : {3, targets + 1}) {
        ui.cancelAtDoEvents(ui.doEventsCount() + at);
        LoadMorphPoseData(session);
        EXPECT_FALSE(session.FileModified || ui.ProgressVisible()) << at;
    }
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_EQ(session.Figures, before);

    LoadMorphPoseData(session);
    EXPECT_TRUE(session.FileModified);
}

} // namespace
} // namespace gelvane::test
