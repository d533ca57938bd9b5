#include "reader/DeltaRemoval.h"

#include "app/Settings.h"
#include "model/Session.h"
#include "model/Text.h"
#include "support/ScriptedInteraction.h"

#include <gtest/gtest.h>

#include <random>

namespace gelvane {
namespace {

// The removals as the reading steps state them, one search and one delete at a time.
std::string LiteralOneRun(std::string text) {
    text = Replace(text, "\r", "\n");
    text = ReplaceUntilNone(text, "deltas \n", "deltas\n");
    for (size_t p = InStr(text, "deltas\n"); p != 0; p = InStr(text, "deltas\n")) {
        const size_t q = InStr(text, "}", p);
        text = q == 0 ? std::string(Left(text, p - 1)) : std::string(Left(text, p - 1)) + std::string(Mid(text, q + 1));
    }
    return text;
}

std::string LiteralPieces(const std::string &text) {
    std::vector<std::string> pieces;
    size_t from = 0;
    for (size_t at = text.find("deltas"); at != std::string::npos; at = text.find("deltas", at + 6)) {
        pieces.push_back(text.substr(from, at - from));
        from = at;
    }
    pieces.push_back(text.substr(from));
    std::string joined;
    for (std::string piece : pieces) {
        piece = ReplaceUntilNone(Replace(piece, "\r", "\n"), "deltas \n", "deltas\n");
        for (size_t p = InStr(piece, "deltas\n"); p != 0; p = InStr(piece, "deltas\n")) {
            const size_t q = InStr(piece, "}", p);
            piece = q == 0 ? std::string(Left(piece, p - 1))
                           : std::string(Left(piece, p - 1)) + std::string(Mid(piece, q + 1));
        }
        joined += piece;
    }
    return joined;
}

std::string LiteralFigureLines(std::string text) {
    while (InStr(text, "figure \n") || InStr(text, " figure\n"))
        text = Replace(Replace(text, "figure \n", "figure\n"), " figure\n", "figure\n");
    return text;
}

// Texts built from the fragments that matter, so that every odd join occurs.
std::string RandomText(std::mt19937 &rng) {
    static const char *const parts[] = {"deltas",    "deltas ", "deltas\n", "del",     "tas\n",   "de",  "ltas",
                                        "s\n",       " ",       "\n",       "\r",      "\r\n",    "}",   "{",
                                        "d 1 0.5\n", "x",       "figure",   "figure ", " figure", "fig", "ure\n"};
    std::uniform_int_distribution<size_t> pick(0, std::size(parts) - 1);
    std::uniform_int_distribution<int> length(0, 40);
    std::string text;
    for (int n = length(rng); n > 0; --n)
        text += parts[pick(rng)];
    return text;
}

TEST(DeltaRemoval, LinearFormsMatchTheLiteralSteps) {
    std::mt19937 rng(20261123);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = RandomText(rng);
        std::string oneRun = text, pieces = text, figures = text;
        RemoveDeltasOneRun(oneRun);
        RemoveDeltasPieces(pieces);
        NormaliseFigureLines(figures);
        ASSERT_EQ(oneRun, LiteralOneRun(text)) << "text: " << text;
        ASSERT_EQ(pieces, LiteralPieces(text)) << "text: " << text;
        ASSERT_EQ(figures, LiteralFigureLines(text)) << "text: " << text;
    }
}

TEST(DeltaRemoval, MorphTargetLosesItsNumbersOnly) {
    const std::string dos = "targetGeom Smile\r\n{\r\nkeys\r\n{\r\nk  0  1\r\n}\r\nnumbDeltas 2\r\ndeltas \r\n{\r\n"
                            "d 0 1 2 3\r\nd 1 1 2 3\r\n}\r\n}\r\n";
    const std::string expected = "targetGeom Smile\n\n{\n\nkeys\n\n{\n\nk  0  1\n\n}\n\nnumbDeltas 2\n\n\n\n}\n\n";
    std::string oneRun = dos, pieces = dos;
    RemoveDeltasOneRun(oneRun);
    RemoveDeltasPieces(pieces);
    EXPECT_EQ(oneRun, expected);
    EXPECT_EQ(pieces, expected);

    // Two blanks behind the word are no deltas line; a name holding the word isn't either.
    std::string kept = "deltas  \n{\nd 0\n}\nvalueParm deltasX\n{\n}\n";
    RemoveDeltasOneRun(kept);
    EXPECT_EQ(kept, "deltas  \n{\nd 0\n}\nvalueParm deltasX\n{\n}\n");
}

TEST(DeltaRemoval, FormsDifferWhereABlockRunsPastTheNextPiece) {
    // The one-run form deletes to the next "}" wherever it is; a piece ends at the next "deltas".
    const std::string text = "a\ndeltas\n1 deltas 2\n}\nb";
    std::string oneRun = text, pieces = text;
    RemoveDeltasOneRun(oneRun);
    RemoveDeltasPieces(pieces);
    EXPECT_EQ(oneRun, "a\n\nb");
    EXPECT_EQ(pieces, "a\ndeltas 2\n}\nb");
}

class RemoveDeltasProgress : public ::testing::Test {
protected:
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};

    static std::string Targets(int count) {
        std::string text = "{\r\nversion\r\n{\r\nnumber 4\r\n}\r\n";
        for (int i = 0; i < count; ++i)
            text += "targetGeom t" + std::to_string(i) + "\r\n{\r\ndeltas\r\n{\r\nd 0 1 1 1\r\n}\r\n}\r\n";
        return text;
    }
};

TEST_F(RemoveDeltasProgress, YieldsBetweenPiecesAndMatchesThePlainCut) {
    std::string text = Targets(5);
    std::string plain = text;
    ui.ProgressShow("Please wait", "Reading data...", 6);
    EXPECT_TRUE(RemoveDeltas(session, text, NowSeconds()));
    RemoveDeltasPieces(plain);
    EXPECT_EQ(text, plain);
    EXPECT_EQ(text.find("d 0"), std::string::npos);
    EXPECT_EQ(ui.doEventsCount(), 5);
}

TEST_F(RemoveDeltasProgress, CancelTurnsTheTextIntoCancel) {
    std::string text = Targets(50);
    ui.ProgressShow("Please wait", "Reading data...", 6);
    ui.cancelAtDoEvents(3);
    EXPECT_FALSE(RemoveDeltas(session, text, NowSeconds()));
    EXPECT_EQ(text, "cancel");
    EXPECT_EQ(ui.doEventsCount(), 3);
}

TEST(DeltaRemoval, ElapsedLine) {
    const std::string line = ElapsedText(NowSeconds() - 125);
    EXPECT_TRUE(line == "Elapsed time: 2 min, 5 sec" || line == "Elapsed time: 2 min, 6 sec") << line;
}

} // namespace
} // namespace gelvane
