#include "core/model/Text.h"
#include "core/model/Model.h"
#include "core/platform/Failure.h"

#include <gtest/gtest.h>

#include <random>

using namespace gelvane;

TEST(Text, SearchesAreOneBased) {
    EXPECT_EQ(InStr("abcabc", "bc"), 2u);
    EXPECT_EQ(InStr("abcabc", "bc", 3), 5u);
    EXPECT_EQ(InStr("abcabc", "x"), 0u);
    EXPECT_EQ(InStr("abc", "a", 5), 0u);
    EXPECT_EQ(InStrRev("abcabc", "bc"), 5u);
    EXPECT_EQ(InStrRev("abcabc", "bc", 5), 2u);
    EXPECT_EQ(InStrNoCase("xMaterial y", "material "), 2u);
}

TEST(Text, SearchesMatchTheirPlainForms) {
    // Texts with the needle's first letter everywhere, so that the backward search gives up
    // and searches forward.
    std::mt19937 rng(3);
    const char letters[] = "aab\n";
    for (int round = 0; round < 4000; ++round) {
        std::string text(rng() % 200, ' '), find(1 + rng() % 3, ' ');
        for (char &c : text)
            c = letters[rng() % 4];
        for (char &c : find)
            c = letters[rng() % 4];
        const size_t start = rng() % (text.size() + 2);
        const size_t forward = text.find(find, start == 0 ? 0 : start - 1);
        ASSERT_EQ(InStr(text, find, start == 0 ? 1 : start), forward == std::string::npos ? 0 : forward + 1);
        const size_t within = start == 0 || start > text.size() ? text.size() : start;
        const size_t backward = within < find.size() ? std::string::npos : text.substr(0, within).rfind(find);
        ASSERT_EQ(InStrRev(text, find, start), backward == std::string::npos ? 0 : backward + 1) << text;
    }
}

TEST(Text, MidAndLeftFailOnBadArguments) {
    EXPECT_EQ(Mid("abcdef", 2, 3), "bcd");
    EXPECT_EQ(Mid("abcdef", 4), "def");
    EXPECT_EQ(Mid("abc", 10), "");
    EXPECT_THROW(Mid("abc", 0), Failure);
    EXPECT_THROW(Mid("abc", 1, -1), Failure);
    EXPECT_THROW(Left("abc", -2), Failure);
    EXPECT_EQ(Right("abcdef", 2), "ef");
}

TEST(Text, ReplaceAndStrip) {
    EXPECT_EQ(Replace("\n\n\n", "\n\n", "\n"), "\n\n");
    EXPECT_EQ(ReplaceUntilNone("\n\n\n", "\n\n", "\n"), "\n");
    EXPECT_EQ(StripControls("\t name \r\n"), "name");
    EXPECT_EQ(Trim("\t a "), "\t a");
    EXPECT_EQ(CrToLf("a\r\nb\rc"), "a\n\nb\nc");
}

TEST(Model, EmptyListHelpers) {
    std::vector<Figure> figures{1};
    EXPECT_TRUE(IsEmptyList(figures));
    AppendElement(figures, Figure{"figure"});
    EXPECT_EQ(figures.size(), 1u);
    AppendElement(figures, Figure{"prop ball"});
    ASSERT_EQ(figures.size(), 2u);
    EXPECT_EQ(figures[1].Name, "prop ball");
    ResetList(figures);
    EXPECT_TRUE(IsEmptyList(figures));
}
