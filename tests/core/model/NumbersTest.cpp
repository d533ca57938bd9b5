#include "core/model/Numbers.h"

#include "support/SessionFixture.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace gelvane::test {
namespace {

TEST(NumberValue, ReadsTheLongestNumberInFront) {
    const std::pair<const char *, double> cases[] = {
        {"0.5", 0.5}, {"  -1.25abc", -1.25}, {"1 2", 12},        {"\t3\n4", 34}, {"abc", 0},
        {"", 0},      {".5", 0.5},           {"1e3", 1000},      {"1D2", 100},   {"2e", 2},
        {"&H10", 16}, {"&HFFFF", -1},        {"&H10000", 65536}, {"&O17", 15},   {"+7", 7},
        {"1,5", 1},   {"0.125 0 1", 0.12501}};
    for (const auto &[text, value] : cases)
        EXPECT_DOUBLE_EQ(NumberValue(text), value) << text;
    EXPECT_EQ(FailureNumber([] { NumberValue("1e400"); }), ErrOverflow);
}

TEST(NumberText, GeneralFormWithPoint) {
    const std::pair<double, const char *> cases[] = {
        {0.5, "0.5"},    {1.0, "1"},         {-0.25, "-0.25"}, {0.0, "0"},     {-0.0, "0"},
        {1e-5, "1E-05"}, {0.0001, "0.0001"}, {1e15, "1E+15"},  {4.01, "4.01"}, {123456789012345.0, "123456789012345"}};
    for (const auto &[value, text] : cases)
        EXPECT_EQ(NumberText(value), text) << value;
    EXPECT_EQ(NumberText(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(NumberText(0.6f), "0.6");
    EXPECT_EQ(NumberTextOfText("4,01"), "4.01");
}

TEST(NumberText, SameDigitsAsPrintfAndBackAsStrtod) {
    std::mt19937_64 rng(5);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < 20000; ++i) {
        // Half of them with few digits, as the writers' rounded values have.
        const double raw = mantissa(rng) * std::pow(10.0, exponent(rng));
        const double value = i % 2 ? raw : RoundPlaces(raw, static_cast<int>(rng() % 9));
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.*G", 15, value);
        ASSERT_EQ(NumberText(value), value == 0 ? "0" : expected) << value; // no "-0"
        std::snprintf(expected, sizeof expected, "%.*G", 7, static_cast<double>(static_cast<float>(value)));
        ASSERT_EQ(NumberText(static_cast<float>(value)), value == 0 ? "0" : expected) << value;
        std::snprintf(expected, sizeof expected, "%.*g", static_cast<int>(rng() % 19), value);
        ASSERT_EQ(NumberValue(expected), std::strtod(expected, nullptr)) << expected;
    }
}

TEST(Rounding, TiesGoToEvenAndSixteenBitsOverflow) {
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(3.5), 4);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(0.125 * 100), 12);
    EXPECT_EQ(ToInt16(127.5), 128);
    EXPECT_DOUBLE_EQ(RoundPlaces(128.0 / 255.0, 6), 0.501961);
    EXPECT_EQ(ToInt16(32767), 32767);
    EXPECT_EQ(FailureNumber([] { ToInt16(32768); }), ErrOverflow);
    EXPECT_EQ(FailureNumber([] { ToInt16(-32769); }), ErrOverflow);
    EXPECT_EQ(SignedText(1), " 1");
    EXPECT_EQ(SignedText(-1), "-1");
}

} // namespace
} // namespace gelvane::test
