#include "core/writer/WriterValues.h"

#include "support/SessionFixture.h"

using namespace gelvane;
using gelvane::test::FailureNumber;

TEST(WriterValues, NumberFormsOfColoursAndPercents) {
    EXPECT_EQ(ColourText({0, 1, 255}), "0 0.003922 1");
    EXPECT_EQ(PercentText(-5), "-0.05");
    // Small values take the exponent form of the general number text.
    EXPECT_EQ(PercentText(0.0012), "1.2E-05");
    EXPECT_TRUE(IsConnectedMap(true, ""));
    EXPECT_TRUE(IsConnectedMap(true, " NO_MAP")); // only the exact word switches a map off
    EXPECT_FALSE(IsConnectedMap(false, "a.jpg"));
}

TEST(WriterValues, StrictNumberAcceptsOnlyAWholeNumber) {
    const std::pair<const char *, double> good[] = {{"33", 33},  {" 33 ", 33}, {"-4.5", -4.5}, {"1e2", 100},
                                                    {"2D1", 20}, {".5", 0.5},  {"&H10", 16},   {"&o17", 15}};
    for (const auto &[text, value] : good)
        EXPECT_DOUBLE_EQ(StrictNumber(text), value) << text;
    for (const char *text : {"", " ", "abc", "12abc", "1 2", ".", "1e", "&H", "&X1", "+"})
        EXPECT_EQ(FailureNumber([&] { StrictNumber(text); }), ErrTypeMismatch) << text;
}
