#include "core/reader/FigureSelection.h"

#include "FigureTestSession.h"
#include "core/reader/DeltaRemoval.h"

namespace gelvane::test {
namespace {

TEST(FigureSelection, CountIsHalfTheGeometryLinesRoundedToEven) {
    const int expected[] = {0, 0, 1, 2, 2, 2, 3, 4};
    std::string text;
    for (int lines = 0; lines < 8; text += "\nfigureResFile a.obj", ++lines)
        EXPECT_EQ(CountFigures(text), expected[lines]) << lines << " lines";
}

TEST(FigureSelection, ScansAndCutsEachFigure) {
    FigureList list;
    list.FileText = ReadTestData("figures/two-figures.cr2");
    RemoveDeltasPieces(list.FileText);
    ScanFigures(list);
    EXPECT_EQ(list.FigureNames, (Strings{"Tester", "Other Figure"}));
    // Behind the last ":" and then behind the last "\".
    EXPECT_EQ(list.GeometryNames, (Strings{"Tester.obj", "Other.obj"}));
    for (int32_t at : list.FigurePositions)
        EXPECT_EQ(list.FileText.compare(static_cast<size_t>(at - 1), 14, "figureResFile "), 0);

    const std::string first = CutFigureText(list, 0);
    EXPECT_TRUE(first.starts_with("{\n\nversion\n\t{\n\tnumber 4.01\n\t}\nfigureResFile :Runtime:"));
    EXPECT_NE(first.find("\t}\nfigureResFile :Runtime:Geometries:Tester:Tester.obj\nactor BODY:1\n\t{\n\tname"),
              std::string::npos);
    EXPECT_EQ(first.find("Other"), std::string::npos);
    // Not the last figure: the tail that the tail scan looks for is added.
    EXPECT_TRUE(first.ends_with("\tdisplayMode USEPARENT\n\t}\n\tsetGeomHandlerOffset 0 0 0\n}"));

    const std::string second = CutFigureText(list, 1);
    EXPECT_TRUE(second.starts_with("{\n\nversion\n\t{\n\tnumber 4.01\n\t}\nfigureResFile C:\\Program Files\\"));
    EXPECT_EQ(second.find("Tester"), std::string::npos);
    // The last figure keeps the file's own tail, without its last character.
    EXPECT_TRUE(second.ends_with("\tsetGeomHandlerOffset 0 0.35 0\n}"));

    EXPECT_THROW(CutFigureText(list, 2), Failure);
}

using FigureRun = FigureTestSession;

TEST_F(FigureRun, EachFigureOpensAlone) {
    Dropped("one-figure.cr2");
    ui.nextAnswer(MsgResult::No);
    RunFigureSelection(session, Chooser(0));
    EXPECT_EQ(chooserCalls, 0); // one figure: nothing to choose
    EXPECT_EQ(MaterialNames(), (Strings{"Skin", "Eyes"}));
    EXPECT_TRUE(Questions() == 1 && !session.FileModified);

    Dropped("two-figures.cr2");
    ui.nextAnswer(MsgResult::Yes);
    RunFigureSelection(session, Chooser(1));
    EXPECT_EQ(offered, (Strings{"Tester", "Other Figure"}));
    // The chosen figure's materials and actors, none of the other's.
    EXPECT_EQ(std::tuple(session.cmbFigures, MaterialNames(), Questions()),
              std::tuple(Strings{"figure", "actor BODY:2", "actor chest:2"}, Strings{"Cloth", "Buttons"}, 2));
    EXPECT_TRUE(session.FileModified && !ui.ProgressVisible()); // "Yes": the channels were loaded
}

TEST_F(FigureRun, FiguresThatShareAGeometryEachOpenTheirOwnPart) {
    session.DialogFileName = GELVANE_SOURCE_DIR "/examples/Runtime/Libraries/Character/Demo/Two Mannequins.cr2";
    session.CommandLineOpen = true;
    ui.nextAnswer(MsgResult::No);
    RunFigureSelection(session, Chooser(1));
    EXPECT_EQ(offered, (Strings{"Mannequin Red", "Mannequin Blue"}));
    ASSERT_EQ(MaterialNames(), (Strings{"Skin", "Suit"}));
    EXPECT_EQ(session.Figures[0].Materials[1].KdColor, (Rgb{51, 51, 204})); // blue

    FigureList list;
    list.FileText = "{\nfigureResFile a.obj\nactor BODY:1\nfigureResFile a.obj\nactor BODY:2\nfigureResFile b.obj\n"
                    "actor BODY:3\nfigureResFile a.obj\none\nfigureResFile a.obj\ntwo\nfigureResFile b.obj\nthree\n}";
    list.FigurePositions = {3, 36, 69};
    EXPECT_TRUE(CutFigureText(list, 0).ends_with("figureResFile a.obj\none\n\tsetGeomHandlerOffset 0 0 0\n}"));
    EXPECT_TRUE(CutFigureText(list, 1).ends_with("figureResFile a.obj\ntwo\n\tsetGeomHandlerOffset 0 0 0\n}"));
    EXPECT_TRUE(CutFigureText(list, 2).ends_with("figureResFile b.obj\nthree\n")); // the last keeps the tail
}

TEST_F(FigureRun, SkipFlagsDecideWhatIsRead) {
    Dropped("two-figures.cr2");
    session.SkipMaterials = true;
    RunFigureSelection(session, Chooser(std::nullopt)); // the window is closed
    EXPECT_TRUE(ui.messages().empty() && !session.SkipMaterials);

    Dropped("two-figures.cr2");
    session.SkipChannels = true;
    RunFigureSelection(session, Chooser(0));
    EXPECT_EQ(MaterialNames(), (Strings{"Skin"}));
    EXPECT_TRUE(Questions() == 0 && !session.FileModified);

    // Channels only: no open, no question; the waiting path is consumed all the same.
    session.DialogFileName = home.file("two-figures.cr2");
    session.SkipMaterials = true;
    RunFigureSelection(session, Chooser(1));
    EXPECT_EQ(MaterialNames(), (Strings{"Skin"}));
    EXPECT_TRUE(Questions() == 0 && session.FileModified && !session.CommandLineOpen);
}

TEST_F(FigureRun, WhatIsNoCharacterSaysSo) {
    Dropped("no-figure-res.cr2");
    RunFigureSelection(session, Chooser(0));
    session.DialogFileName = home.file("gone.cr2");
    RunFigureSelection(session, Chooser(0));
    Dropped("two-figures.cr2");
    ui.cancelAtDoEvents(ui.doEventsCount() + 1); // a cancel while the deltas go ends the same way
    RunFigureSelection(session, Chooser(0));

    EXPECT_EQ(Texts(), Strings(3, "Not a valid Character file"));
    EXPECT_TRUE(ui.messages()[0].Icon == MsgIcon::Exclamation && chooserCalls == 0);
    EXPECT_TRUE(IsEmptyList(session.Figures) && !ui.ProgressVisible());
}

} // namespace
} // namespace gelvane::test
