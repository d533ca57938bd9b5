#include "reader/MorphLoader.h"

#include "app/Settings.h"
#include "model/Failure.h"
#include "reader/DeltaRemoval.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

namespace gelvane {
namespace {

// The text as the channel load prepares it before cutting the channel part.
std::string Prepared(std::string_view fixture) {
    std::string text = test::ReadTestData(fixture);
    RemoveDeltasOneRun(text);
    NormaliseFigureLines(text);
    return text;
}

TEST(ChannelPart, CharacterPartRunsFromTheSecondGeometryLineToTheFigureBlock) {
    for (const char *fixture : {"figures/one-figure.cr2", "figures/one-figure-crlf.cr2", "figures/one-figure-cr.cr2"}) {
        std::string text = Prepared(fixture);
        const std::string_view part = ChannelPart(text, "/x/One-Figure.CR2", false);
        EXPECT_TRUE(part.starts_with(":Runtime:Geometries:Tester:Tester.obj\n")) << fixture;
        EXPECT_NE(part.find("actor BODY:1\n"), std::string_view::npos) << fixture;
        EXPECT_NE(part.find("targetGeom Blink"), std::string_view::npos) << fixture;
        EXPECT_EQ(part.find("storageOffset"), std::string_view::npos) << fixture; // the head's declarations
        EXPECT_EQ(part.find("d 0"), std::string_view::npos) << fixture;
        EXPECT_EQ(part.find("figure\n"), std::string_view::npos) << fixture;
        // The part stops in front of the line feed that opens the figure line.
        const size_t end = static_cast<size_t>(part.data() - text.data()) + part.size();
        EXPECT_EQ(text.compare(end, 8, "\nfigure\n"), 0) << fixture;
    }
}

TEST(ChannelPart, PropAndHairPartsBeginAtTheSecondPropLine) {
    std::string prop = Prepared("figures/chair.pp2");
    const std::string_view propPart = ChannelPart(prop, "chair.pp2", false);
    EXPECT_TRUE(propPart.starts_with("prop chair\n\t{\n\tname\tChair\n"));
    // No figure block: up to the text's length, which leaves out its last character.
    EXPECT_TRUE(propPart.ends_with("addActor chair\n\t}\n}"));

    // The hair prop is renamed to the one name the pose writer expects.
    std::string hair = Prepared("figures/long-hair.hr2");
    const std::string_view hairPart = ChannelPart(hair, "long-hair.HR2", false);
    EXPECT_TRUE(hairPart.starts_with("prop figureHair\n\t{\n\tname\tLong Hair\n"));
    EXPECT_EQ(hairPart.find("prop Hair_7"), std::string_view::npos);
    EXPECT_NE(hairPart.find("addActor Hair_7"), std::string_view::npos);
}

TEST(ChannelPart, EndIsTheFigureBlockBehindIkChannels) {
    std::string text = "\n\n{\nversion\n}\n\nactor a\n{\nchannels\n{\n}\n}\nfigure\n{\n}\nactor b\n{\nikchannels\n}\n"
                       "figure\n{\n}\n";
    // Neither ending: the part runs from two behind the first "}", counted before the
    // leading line feeds went.
    const std::string_view part = ChannelPart(text, "pose.pz2", false);
    EXPECT_EQ(part, "ctor a\n{\nchannels\n{\n}\n}\nfigure\n{\n}\nactor b\n{\nikchannels\n}");
}

TEST(ChannelPart, BoundsThatDontFitFail) {
    std::string text = "{\n}\nchannels\n";
    try {
        ChannelPart(text, "tiny.cr2", false);
        FAIL() << "a part that ends before it begins must fail";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.Number, ErrInvalidCall);
    }
}

TEST(BodyActor, TakesTheFirstBodyUpToTheNextActor) {
    EXPECT_EQ(BodyActorText("x\nactor hip\n{\n}\nactor BODY:1\n{\nchannels\n}\nactor BODY:2\n{\n}\n"),
              "actor BODY:1\n{\nchannels\n}\n");
    for (const char *source : {"actor hip\n{\n}\n", "actor BODY:1\n{\n}\nprop ball\n"}) {
        try {
            BodyActorText(source);
            FAIL() << source;
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.Number, ErrInputPastEnd);
        }
    }
}

class MorphLoad : public ::testing::Test {
protected:
    test::TestHome home;
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};

    void UseFile(std::string_view name, std::string_view bytes) {
        session.DialogFileName = home.write(name, bytes);
        session.FileName = session.DialogFileName;
    }
    void UseFixture(std::string_view fixture) {
        const std::string name(fixture.substr(fixture.rfind('/') + 1));
        UseFile(name, test::ReadTestData(fixture));
    }
    // A model with one owner, as an open leaves it.
    void WithMaterials() {
        session.Figures[0].Name = "figure";
        session.Figures[0].Materials[0].Name = "Skin";
        session.cmbFigures = {"figure", "actor hip:1", "actor head:1"};
    }
};

TEST_F(MorphLoad, LoadsAndMarksTheModelChanged) {
    UseFixture("figures/one-figure-crlf.cr2");
    WithMaterials();
    LoadMorphPoseData(session);
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_TRUE(session.FileModified);
    EXPECT_FALSE(ui.ProgressVisible());
    // Rows of plain actors from an earlier load are dropped before the new one adds its own.
    EXPECT_EQ(session.cmbFigures, (std::vector<std::string>{"figure", "actor BODY:1", "actor hip:1", "actor head:1"}));
}

TEST_F(MorphLoad, FileWithoutChannelsSaysSo) {
    UseFixture("figures/no-channels.cr2");
    LoadMorphPoseData(session);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Text, "There is no morph or pose data in the file");
    EXPECT_EQ(ui.messages()[0].Icon, MsgIcon::Exclamation);
    EXPECT_FALSE(session.FileModified);
    EXPECT_TRUE(ui.ProgressVisible()); // left up until its next use
}

TEST_F(MorphLoad, FailureNamesItselfInTheTitle) {
    UseFile("tiny.cr2", "{\n}\nchannels\n");
    session.FileName = "/the/open/file.cr2";
    LoadMorphPoseData(session);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Text,
              "There is no morph or pose data in the opened\r\nfile or the data could not be found");
    EXPECT_EQ(ui.messages()[0].Title, "Invalid procedure call or argument");
    EXPECT_EQ(session.DialogFileName, "/the/open/file.cr2");
    EXPECT_FALSE(session.FileModified);
    EXPECT_FALSE(ui.ProgressVisible());
}

TEST_F(MorphLoad, ImportAsksForTheFileByKind) {
    session.FileName = "/the/open/file.pz2";
    session.PoserFileKind = KindPP2;
    LoadMorphPoseData(session, false, false, {}, true); // the dialog is cancelled
    ASSERT_EQ(ui.fileRequests().size(), 1u);
    EXPECT_EQ(ui.fileRequests()[0].Title, "Open Prop file");
    EXPECT_EQ(ui.fileRequests()[0].Filter, "Props|*.pp2|All files|*.*");
    EXPECT_EQ(ui.fileRequests()[0].Flags, 6148);
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_EQ(session.DialogFileName, "/the/open/file.pz2");

    const std::string chair = home.write("chair.pp2", test::ReadTestData("figures/chair.pp2"));
    ui.nextFile(chair);
    LoadMorphPoseData(session, false, false, {}, true);
    EXPECT_EQ(session.DialogFileName, chair);
    EXPECT_TRUE(session.FileModified);
}

TEST_F(MorphLoad, SingleBodyActorWithoutChannels) {
    // The first BODY of a character is the head's empty declaration.
    UseFixture("figures/one-figure.cr2");
    LoadMorphPoseData(session, true, true, {}, false);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Text, "There is no morph or pose data in the file");

    // A text without a further actor behind its BODY can't be read.
    ui = test::ScriptedInteraction{};
    LoadMorphPoseData(session, true, true, "{\n}\nactor BODY:1\n{\nchannels\n{\n}\n}\n", false);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Title, "Input past end of file");

    ui = test::ScriptedInteraction{};
    LoadMorphPoseData(session, true, true, "{\n}\nactor BODY:1\n{\nchannels\n{\n}\n}\nactor hip:1\n", false);
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_TRUE(session.FileModified);
}

TEST_F(MorphLoad, CancelBeforeTheActorsLeavesTheMaterials) {
    UseFixture("figures/one-figure.cr2");
    WithMaterials();
    const std::vector<Figure> before = session.Figures;
    ui.cancelAtDoEvents(1);
    LoadMorphPoseData(session);
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_FALSE(session.FileModified);
    EXPECT_FALSE(ui.ProgressVisible());
    EXPECT_EQ(session.Figures, before);
}

TEST_F(MorphLoad, LargeTextLosesItsDeltasPieceByPieceAndCanBeCancelled) {
    std::string big = "{\nversion\n{\nnumber 4\n}\n";
    std::string numbers;
    for (int i = 0; i < 2000; ++i)
        numbers += "d " + std::to_string(i) + " 0.1 0.2 0.3\n";
    int targets = 0;
    while (big.size() <= kPiecewiseDeltasLimit) {
        big += "actor hip:1\n{\nchannels\n{\ntargetGeom t" + std::to_string(targets++) +
               "\n{\nkeys\n{\nk  0  1\n}\ndeltas\n{\n" + numbers + "}\n}\n}\n}\n";
    }
    UseFile("big.pz2", big);
    WithMaterials();
    const std::vector<Figure> before = session.Figures;
    ui.cancelAtDoEvents(3);
    LoadMorphPoseData(session);
    EXPECT_EQ(ui.doEventsCount(), 3);
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_FALSE(session.FileModified);
    EXPECT_FALSE(ui.ProgressVisible());
    EXPECT_EQ(session.Figures, before);

    // Uncancelled, every piece yields once on the way, and the actor loader once for
    // each actor and each channel.
    ui = test::ScriptedInteraction{};
    LoadMorphPoseData(session);
    EXPECT_EQ(ui.doEventsCount(), targets + 1 + 2 * targets);
    EXPECT_TRUE(session.FileModified);
}

} // namespace
} // namespace gelvane
