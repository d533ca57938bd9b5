#include "core/reader/DeltaRemoval.h"

#include "core/model/Text.h"
#include "support/SessionFixture.h"

#include <random>

namespace gelvane {
namespace {

// A block goes from the first "deltas" + line feed to the next "}", one search at a time.
std::string LiteralCut(std::string text) {
    text = ReplaceUntilNone(Replace(text, "\r", "\n"), "deltas \n", "deltas\n");
    for (size_t p = InStr(text, "deltas\n"); p != 0; p = InStr(text, "deltas\n")) {
        const size_t q = InStr(text, "}", p);
        text = std::string(Left(text, p - 1)) + (q == 0 ? std::string() : std::string(Mid(text, q + 1)));
    }
    return text;
}

std::string LiteralPieces(const std::string &text) {
    std::string joined;
    size_t from = 0;
    for (size_t at = text.find("deltas"); at != std::string::npos; at = text.find("deltas", at + 6)) {
        joined += LiteralCut(text.substr(from, at - from));
        from = at;
    }
    return joined + LiteralCut(text.substr(from));
}

std::string LiteralFigureLines(std::string text) {
    while (InStr(text, "figure \n") || InStr(text, " figure\n"))
        text = Replace(Replace(text, "figure \n", "figure\n"), " figure\n", "figure\n");
    return text;
}

TEST(DeltaRemoval, LinearFormsMatchTheLiteralSteps) {
    // Texts built from the fragments that matter, so that every odd join occurs.
    static const char *const parts[] = {"deltas", "deltas ", "deltas\n", "del",     "tas\n", "de",   "ltas",
                                        " ",      "\n",      "\r",       "\r\n",    "}",     "{",    "d 1\n",
                                        "x",      "figure",  "figure ",  " figure", "fig",   "ure\n"};
    std::mt19937 rng(20261123);
    std::uniform_int_distribution<size_t> pick(0, std::size(parts) - 1);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int n = static_cast<int>(rng() % 40); n > 0; --n)
            text += parts[pick(rng)];
        std::string oneRun = text, pieces = text, figures = text;
        RemoveDeltasOneRun(oneRun);
        RemoveDeltasPieces(pieces);
        NormaliseFigureLines(figures);
        ASSERT_EQ(oneRun, LiteralCut(text)) << text;
        ASSERT_EQ(pieces, LiteralPieces(text)) << text;
        ASSERT_EQ(figures, LiteralFigureLines(text)) << text;
    }
}

TEST(DeltaRemoval, MorphTargetLosesItsNumbersOnly) {
    const std::string dos = "numbDeltas 2\r\ndeltas \r\n{\r\nd 0 1 2 3\r\n}\r\n}\r\nvalueParm deltasX\r\ndeltas  \r\n}";
    std::string oneRun = dos, pieces = dos;
    RemoveDeltasOneRun(oneRun);
    RemoveDeltasPieces(pieces);
    // Two blanks behind the word make no deltas line.
    EXPECT_EQ(oneRun, "numbDeltas 2\n\n\n\n}\n\nvalueParm deltasX\n\ndeltas  \n\n}");
    EXPECT_EQ(pieces, oneRun);

    // A block that runs past the next "deltas": the piecewise cut ends at its piece.
    std::string joined = "a\ndeltas\n1 deltas 2\n}\nb", piecewise = joined;
    RemoveDeltasOneRun(joined);
    RemoveDeltasPieces(piecewise);
    EXPECT_EQ(joined, "a\n\nb");
    EXPECT_EQ(piecewise, "a\ndeltas 2\n}\nb");
}

TEST(DeltaRemoval, YieldsBetweenPiecesAndCancels) {
    test::TestSession t;
    Session &session = t.session;
    test::ScriptedInteraction &ui = t.ui;
    std::string text = "{\r\nversion\r\n}\r\n";
    for (int i = 0; i < 50; ++i)
        text += "targetGeom t" + std::to_string(i) + "\r\n{\r\ndeltas\r\n{\r\nd 0 1 1 1\r\n}\r\n}\r\n";
    std::string plain = text, cancelled = text;
    RemoveDeltasPieces(plain);

    ui.ProgressShow("Please wait", "Reading data...", 6);
    EXPECT_TRUE(RemoveDeltas(session, text, 0));
    EXPECT_EQ(text, plain);
    EXPECT_EQ(ui.doEventsCount(), 50); // one yield in front of each piece behind the head

    ui.cancelAtDoEvents(53);
    EXPECT_FALSE(RemoveDeltas(session, cancelled, 0));
    EXPECT_EQ(cancelled, "cancel");

    session.SecondsClock = [] { return 1125; };
    EXPECT_EQ(ElapsedText(session, 1000), "Elapsed time: 2 min, 5 sec");
}

} // namespace
} // namespace gelvane
