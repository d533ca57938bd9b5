// The readers' one-pass and indexed forms against the literal steps they replace, on
// thousands of generated texts built from the fragments that matter, so that every odd
// join, overlap and degenerate line occurs.
#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/reader/MaterialParser.h"
#include "core/reader/PropLines.h"
#include "core/reader/TextIndex.h"
#include "support/SessionFixture.h"

#include <random>

namespace gelvane::test {
namespace {

// The fragments of `joined`, which stand between "|"s.
Strings Parts(std::string_view joined) {
    Strings parts;
    for (size_t from = 0, bar = 0; bar != std::string_view::npos; from = bar + 1)
        parts.emplace_back(joined.substr(from, (bar = joined.find('|', from)) - from));
    return parts;
}

std::string Generated(std::mt19937 &rng, const Strings &parts, int most) {
    std::string text;
    for (int n = static_cast<int>(rng() % static_cast<unsigned>(most)); n > 0; --n)
        text += parts[rng() % parts.size()];
    return text;
}

// The scan as the reading steps state it: look, note, delete, look again.
PropLineScan LiteralPosePropLines(std::string scan) {
    PropLineScan out;
    while (const size_t propAt = InStrRev(scan, "\nprop ")) {
        const long long brace = static_cast<long long>(InStr(scan, "{", propAt));
        const long long from = static_cast<long long>(propAt) + 1;
        if (brace - from - 1 < 0) {
            out.Failed = true;
            break;
        }
        const std::string line = StripControls(Mid(scan, from, brace - from - 1));
        out.Lines.push_back(line);
        const std::string rest = Replace(scan, "\n" + line, "");
        if (rest.size() == scan.size())
            scan.erase(propAt - 1, 6);
        else
            scan = rest;
    }
    return out;
}

PropLineScan LiteralHeadPropLines(std::string text) {
    PropLineScan out;
    while (const size_t propAt = InStrRev(text, "\nprop ")) {
        const long long end = static_cast<long long>(InStr(text, "\n", propAt + 1));
        const long long from = static_cast<long long>(propAt) + 1;
        if (end - from < 0) {
            out.Failed = true;
            break;
        }
        const std::string line = StripControls(Mid(text, from, end - from));
        out.Lines.push_back(line);
        const std::string rest = Replace(text, line, "");
        if (rest.size() == text.size())
            text.erase(static_cast<size_t>(from) - 1, static_cast<size_t>(end - from));
        else
            text = rest;
    }
    return out;
}

TEST(LinearReading, PropLineScansMatchTheLiteralScans) {
    // Prop names that are prefixes of one another, lines that run into each other when a
    // line feed goes, "prop" alone, tabs and blanks that stripping removes.
    const Strings parts = Parts("\nprop |\nprop |\nprop|prop |prop|\n|{|\n{\n|}| |\t|a|b|ab|:1|0|x|\np|rop |\n\n");
    std::mt19937 rng(20261124);
    for (int round = 0; round < 6000; ++round) {
        std::string text = Generated(rng, parts, 30);
        if (rng() % 4 != 0)
            text += rng() % 2 ? "{" : "{\n"; // so that the scans mostly run to their end
        WorkLimit work(text.size());
        const PropLineScan pose = PosePropLines(text, work), literalPose = LiteralPosePropLines(text);
        ASSERT_EQ(pose.Lines, literalPose.Lines) << text;
        ASSERT_EQ(pose.Failed, literalPose.Failed) << text;
        const PropLineScan head = HeadPropLines(text, work), literalHead = LiteralHeadPropLines(text);
        ASSERT_EQ(head.Lines, literalHead.Lines) << text;
        ASSERT_EQ(head.Failed, literalHead.Failed) << text;
    }
}

TEST(LinearReading, LinePlacesMatchTheLiteralSearches) {
    const Strings parts = Parts("\n|prop a|prop a:1| |\n |figure|a|\t|x");
    std::mt19937 rng(7);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = Generated(rng, parts, 25);
        std::vector<std::string> lines;
        for (int n = static_cast<int>(rng() % 6); n > 0; --n)
            lines.push_back(Generated(rng, parts, 3));
        WorkLimit work(text.size());
        const auto first = FirstLineStarts(text, lines, work);
        const auto lastLf = LastLineEnds(text, lines, "\n", work);
        const auto lastBlank = LastLineEnds(text, lines, " \n", work);
        for (size_t i = 0; i < lines.size(); ++i) {
            ASSERT_EQ(first[i], InStr(text, "\n" + lines[i])) << text << "|" << lines[i];
            ASSERT_EQ(lastLf[i], InStrRev(text, lines[i] + "\n")) << text << "|" << lines[i];
            ASSERT_EQ(lastBlank[i], InStrRev(text, lines[i] + " \n")) << text << "|" << lines[i];
        }
        // The search of a stretch, which tries a few places of the first character before memmem.
        const std::string needle = Generated(rng, parts, 2);
        const size_t begin = rng() % (text.size() + 1), end = std::min<size_t>(rng() % (text.size() + 2), text.size());
        const size_t at = std::string_view(text).substr(0, end).find(needle, begin);
        ASSERT_EQ(SearchIn(text, needle, begin, end), begin >= end || at == std::string::npos ? 0 : at + 1)
            << text << "|" << needle << "|" << begin << "|" << end;
    }
}

// Every block of the scan read as ParseMaterial reads it alone; a failure must come at
// the same block, with the same number.
TEST(LinearReading, OverlappingMaterialBlocksReadAsEachBlockAlone) {
    const Strings parts = Parts(
        "material |material x\n|{|}|\n| |KdColor |KsColor 1 0 1 |0.5 |1|TextureColor 1 1 1 0.75\n|NsExponent 40\n|tMin "
        "|tExpo 0.6\n|ksIgnoreTexture 1\n|textureMap \"a b.jpg\"\n|bumpMap |NO_MAP\n|reflectionStrength 2\n|x|\t");
    Settings settings;
    ScriptedInteraction ui;
    std::mt19937 rng(11);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = Generated(rng, parts, 30);
        std::vector<size_t> starts;
        for (size_t at = 0; at < text.size(); at += 1 + rng() % 12)
            starts.push_back(at);
        Session fast(settings, ui), literal(settings, ui);
        fast.Figures.assign(1, Figure{"f", std::vector<Material>(starts.size())});
        literal.Figures = fast.Figures;
        WorkLimit work(text.size());
        MaterialScan scan(fast, text, work);
        // Without a "}" behind it, a block of the open is empty, one of a customMaterial runs to the end.
        const bool toTextEnd = round % 2 != 0;
        for (size_t k = 0; k < starts.size(); ++k) {
            const size_t close = text.find('}', starts[k]);
            const size_t end = close != std::string::npos ? close + 1 : toTextEnd ? text.size() : starts[k];
            const std::string_view block = std::string_view(text).substr(starts[k], end - starts[k]);
            const int fastFailure = FailureNumber([&] { scan.Parse(starts[k], end, 0, static_cast<int>(k)); });
            const int literalFailure = FailureNumber([&] { ParseMaterial(literal, block, 0, static_cast<int>(k)); });
            ASSERT_EQ(fastFailure, literalFailure) << text << " @" << starts[k];
            if (fastFailure != 0)
                break;
            ASSERT_EQ(fast.Figures[0].Materials[k], literal.Figures[0].Materials[k]) << text << " @" << starts[k];
            ASSERT_EQ(fast.KeywordMissing, literal.KeywordMissing);
        }
    }
}

// The customMaterial reading as stated: each block cut out and read alone.
void LiteralCustomMaterials(Session &session, std::string_view text) {
    const size_t at = InStr(text, "customMaterial");
    std::string head = Replace(Mid(text, static_cast<long long>(at), 20), "\r\n", "\n");
    head = Replace(Replace(head, "\t", " "), "  ", " ");
    const long long blank = static_cast<long long>(InStr(head, " "));
    const long long lineEnd = static_cast<long long>(InStr(head, "\n", static_cast<size_t>(blank + 1)));
    const int32_t count = ToInt32(NumberValue(Mid(head, blank + 1, lineEnd - blank - 1)));
    if (!session.Figures.empty() && !session.Figures[0].Name.empty())
        session.Figures.emplace_back();
    const int figureIndex = static_cast<int>(session.Figures.size()) - 1;
    if (count < 1)
        Fail(ErrSubscript);
    session.Figures.back().Materials.clear();
    size_t previous = at;
    for (int32_t i = 0; i < count; ++i) {
        const size_t materialAt = InStr(text, "material ", previous + 9);
        const long long blockEnd = static_cast<long long>(InStr(text, "}", materialAt == 0 ? 1 : materialAt));
        const std::string block =
            CrToLf(Mid(text, static_cast<long long>(materialAt), blockEnd - static_cast<long long>(materialAt)));
        session.Figures.back().Materials.emplace_back();
        ParseMaterial(session, block, figureIndex, static_cast<int>(i));
        const long long lf = static_cast<long long>(InStr(block, "\n"));
        session.Figures.back().Materials[static_cast<size_t>(i)].Name = std::string(Mid(block, 10, lf - 10));
        previous = materialAt;
    }
}

TEST(LinearReading, CustomMaterialsReadAsTheBlocksAlone) {
    const Strings parts = Parts("customMaterial |2\n|3\r\n|1\n|material |m\n|material x\r\n|{|}|KdColor 1 0 1 |\n|tMin "
                                "0.5\n|textureMap \"a.jpg\"\n| |\r");
    Settings settings;
    ScriptedInteraction ui;
    std::mt19937 rng(23);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = "customMaterial " + std::to_string(rng() % 4) + "\n" + Generated(rng, parts, 25);
        Session fast(settings, ui), literal(settings, ui);
        ASSERT_EQ(FailureNumber([&] { ReadCustomMaterials(fast, text); }),
                  FailureNumber([&] { LiteralCustomMaterials(literal, text); }))
            << text;
        ASSERT_EQ(fast.Figures, literal.Figures) << text; // also as far as a failure let it come
    }
}

} // namespace
} // namespace gelvane::test
