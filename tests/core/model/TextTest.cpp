#include "core/model/Text.h"
#include "core/model/Model.h"
#include "core/platform/Failure.h"

#include <gtest/gtest.h>

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
