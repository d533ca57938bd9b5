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

TEST(DeltaRemoval, ReadingInBlocksGivesThePiecewiseCut) {
    static const char *const parts[] = {"deltas", "deltas ", "deltas\n", "deltas\r", "deltas \r\n", "del", "tas\n", " ",
                                        "\n",     "\r",      "}",        "{",        "d 1\n",       "x",   "l"};
    test::TestHome home;
    std::mt19937 rng(31);
    for (int round = 0; round < 400; ++round) {
        std::string text;
        for (int n = static_cast<int>(rng() % 30); n > 0; --n)
            text += parts[rng() % std::size(parts)];
        const std::string path = home.write("figure.cr2", text);
        test::TestSession t;
        Session &session = t.session;
        session.BatchMode = true;
        std::string expected = text, read;
        RemoveDeltas(session, expected, 0);
        // Blocks of a few characters, so that words and line ends are cut at every place.
        ASSERT_TRUE(ReadFileWithoutDeltas(session, path, read, 0, 1 + rng() % 9));
        ASSERT_EQ(read, expected) << text;
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
    std::string text = "{\r\nversion\r\n}\r\n";
    for (int i = 0; i < 50; ++i)
        text += "targetGeom t" + std::to_string(i) + "\r\n{\r\ndeltas\r\n{\r\nd 0 1 1 1\r\n}\r\n}\r\n";
    std::string plain = text;
    RemoveDeltasPieces(plain);
    test::TestHome home;
    const std::string path = home.write("figure.cr2", text);

    // The text in memory, and the file read in blocks.
    const std::function<bool(Session &, std::string &)> forms[] = {
        [&](Session &session, std::string &out) {
            out = text;
            return RemoveDeltas(session, out, 0);
        },
        [&](Session &session, std::string &out) { return ReadFileWithoutDeltas(session, path, out, 0); },
    };
    for (const auto &form : forms) {
        test::TestSession t;
        Session &session = t.session;
        test::ScriptedInteraction &ui = t.ui;
        ui.ProgressShow("Please wait", "Reading data...", 6);
        std::string out;
        EXPECT_TRUE(form(session, out));
        EXPECT_EQ(out, plain);
        EXPECT_EQ(ui.doEventsCount(), 50); // one yield in front of each piece behind the head

        ui.cancelAtDoEvents(53);
        EXPECT_FALSE(form(session, out));
        EXPECT_EQ(out, "cancel");
    }

    test::TestSession t;
    t.session.SecondsClock = [] { return 1125; };
    EXPECT_EQ(ElapsedText(t.session, 1000), "Elapsed time: 2 min, 5 sec");
}

} // namespace
} // namespace gelvane
