#include "reader/FigureSelection.h"

#include "app/Settings.h"
#include "model/Failure.h"
#include "reader/DeltaRemoval.h"
#include "reader/MorphLoader.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

namespace gelvane {
namespace {

size_t Count(std::string_view text, std::string_view word) {
    size_t n = 0;
    for (size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1))
        ++n;
    return n;
}

FigureList ListOf(std::string text) {
    FigureList list;
    list.FileText = std::move(text);
    RemoveDeltasPieces(list.FileText);
    ScanFigures(list);
    return list;
}

TEST(FigureSelection, CountIsHalfTheGeometryLinesRoundedToEven) {
    const struct { int lines, figures; } cases[] = {{0, 0}, {1, 0}, {2, 1}, {3, 2}, {4, 2}, {5, 2}, {7, 4}};
    for (const auto &c : cases) {
        std::string text;
        for (int i = 0; i < c.lines; ++i)
            text += "\nfigureResFile a.obj";
        EXPECT_EQ(CountFigures(text), c.figures) << c.lines << " lines";
    }
}

TEST(FigureSelection, ScansNamesGeometriesAndPositions) {
    const FigureList list = ListOf(test::ReadTestData("figures/two-figures.cr2"));
    EXPECT_EQ(list.FigureNames, (std::vector<std::string>{"Tester", "Other Figure"}));
    // Behind the last ":" and then behind the last "\".
    EXPECT_EQ(list.GeometryNames, (std::vector<std::string>{"Tester.obj", "Other.obj"}));
    ASSERT_EQ(list.FigurePositions.size(), 2u);
    for (int32_t at : list.FigurePositions)
        EXPECT_EQ(list.FileText.compare(static_cast<size_t>(at - 1), 14, "figureResFile "), 0);
    EXPECT_LT(list.FigurePositions[0], list.FigurePositions[1]);
}

TEST(FigureSelection, CutsOneFigureWithTheFileHead) {
    const FigureList list = ListOf(test::ReadTestData("figures/two-figures.cr2"));

    const std::string first = CutFigureText(list, 0);
    EXPECT_TRUE(first.starts_with("{\n\nversion\n\t{\n\tnumber 4.01\n\t}\nfigureResFile :Runtime:"));
    EXPECT_EQ(Count(first, "figureResFile "), 2u);
    EXPECT_NE(first.find("name    Tester"), std::string::npos);
    EXPECT_EQ(first.find("Other"), std::string::npos);
    EXPECT_EQ(first.find("d 0 0.1"), std::string::npos); // deltas are gone
    // Not the last figure: the tail that the tail scan looks for is added.
    EXPECT_TRUE(first.ends_with("\tdisplayMode USEPARENT\n\t}\n\tsetGeomHandlerOffset 0 0 0\n}"));

    const std::string second = CutFigureText(list, 1);
    EXPECT_EQ(Count(second, "figureResFile "), 2u);
    EXPECT_NE(second.find("figureResFile C:\\Program Files\\Poser\\Runtime\\Geometries\\Other\\Other.obj\nactor "
                          "BODY:2\n\t{\n\t}\nactor chest:2"),
              std::string::npos);
    EXPECT_NE(second.find("name    Other Figure"), std::string::npos);
    EXPECT_EQ(second.find("Tester"), std::string::npos);
    // The last figure keeps the file's own tail, up to its last character.
    EXPECT_TRUE(second.ends_with("\tsetGeomHandlerOffset 0 0.35 0\n}"));

    try {
        CutFigureText(list, 2);
        FAIL() << "a row without a figure must fail";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.Number, ErrSubscript);
    }
}

class FigureRun : public ::testing::Test {
protected:
    test::TestHome home;
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};
    int chooserCalls = 0;
    std::vector<std::string> offered;

    FigureChooser Chooser(std::optional<int> answer) {
        return [this, answer](Session &, const FigureList &list) {
            ++chooserCalls;
            offered = list.FigureNames;
            return answer;
        };
    }
    void UseFile(std::string_view name, std::string_view bytes) {
        session.DialogFileName = home.write(name, bytes);
        session.FileName = session.DialogFileName;
    }
    bool Asked() const {
        for (const auto &m : ui.messages())
            if (m.Text == kLoadChannelsQuestion)
                return true;
        return false;
    }
};

TEST_F(FigureRun, FileWithoutGeometryLinesIsNoCharacter) {
    UseFile("no-figure-res.cr2", test::ReadTestData("figures/no-figure-res.cr2"));
    session.SkipChannels = true;
    RunFigureSelection(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 0);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Text, "Not a valid Character file");
    EXPECT_EQ(ui.messages()[0].Icon, MsgIcon::Exclamation);
    EXPECT_FALSE(ui.ProgressVisible());
    EXPECT_FALSE(session.SkipChannels);
}

TEST_F(FigureRun, MissingFileIsNoCharacter) {
    session.DialogFileName = home.file("gone.cr2");
    RunFigureSelection(session, Chooser(0));
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Text, "Not a valid Character file");
}

TEST_F(FigureRun, OneFigureOpensWithoutAChoice) {
    UseFile("one.cr2", test::ReadTestData("figures/one-figure.cr2"));
    ui.nextAnswer(MsgResult::No);
    RunFigureSelection(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 0);
    EXPECT_TRUE(Asked());
    EXPECT_FALSE(session.FileModified); // "No": no channels were loaded
}

TEST_F(FigureRun, TwoFiguresOfferTheNamesAndAskForChannels) {
    UseFile("two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    ui.nextAnswer(MsgResult::Yes);
    RunFigureSelection(session, Chooser(1));
    EXPECT_EQ(chooserCalls, 1);
    EXPECT_EQ(offered, (std::vector<std::string>{"Tester", "Other Figure"}));
    EXPECT_TRUE(Asked());
    EXPECT_TRUE(session.FileModified); // the channel load ran
    EXPECT_FALSE(ui.ProgressVisible());
}

TEST_F(FigureRun, ClosingTheChoiceDoesNothing) {
    UseFile("two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    session.SkipMaterials = true;
    RunFigureSelection(session, Chooser(std::nullopt));
    EXPECT_TRUE(ui.messages().empty());
    EXPECT_FALSE(session.FileModified);
    EXPECT_FALSE(session.SkipMaterials);
}

TEST_F(FigureRun, SkipFlagsDecideTheChannelLoad) {
    UseFile("two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    session.SkipChannels = true;
    RunFigureSelection(session, Chooser(0));
    EXPECT_FALSE(Asked());
    EXPECT_FALSE(session.FileModified);

    // Channels only: no open, no question, the load runs; the open's path doesn't linger.
    session.SkipMaterials = true;
    RunFigureSelection(session, Chooser(0));
    EXPECT_FALSE(Asked());
    EXPECT_TRUE(session.FileModified);
    EXPECT_FALSE(session.CommandLineOpen);
    EXPECT_FALSE(session.SkipMaterials);
    EXPECT_TRUE(ui.messages().empty());
}

TEST_F(FigureRun, CancelWhileReadingEndsAsNoCharacter) {
    UseFile("two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    ui.cancelAtDoEvents(1);
    RunFigureSelection(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 0);
    ASSERT_EQ(ui.messages().size(), 1u);
    EXPECT_EQ(ui.messages()[0].Text, "Not a valid Character file");
    EXPECT_FALSE(ui.ProgressVisible());
}

} // namespace
} // namespace gelvane
