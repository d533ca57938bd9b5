#include "core/model/SaveOptions.h"

#include "support/SessionFixture.h"

namespace gelvane::test {
namespace {

using SaveOptionsTest = SessionFixture;

TEST_F(SaveOptionsTest, VersionBoxGivesTheNumberPrintedBack) {
    const std::pair<const char *, const char *> cases[] = {
        {"5.0", "5"},  {"4.01", "4.01"}, {"6 .5", "6.5"}, {" 6 beta", "6"},
        {"4,01", "4"}, {"abc", "0"},     {"", "0"},       {"&H10", "16"},
    };
    for (const auto &[text, version] : cases) {
        session.FileModified = false;
        VersionText_Change(session, text);
        EXPECT_EQ(std::tie(session.OutputVersion, session.Options.VersionText, session.FileModified),
                  std::tuple(version, text, true));
    }
    // A number beyond any float keeps the version before it.
    VersionText_Change(session, "4.01");
    VersionText_Change(session, "1e999");
    EXPECT_EQ(std::tie(session.OutputVersion, session.Options.VersionText), std::tuple("4.01", "1e999"));
}

TEST_F(SaveOptionsTest, FormatChoiceBringsTheVersionOfItsSetting) {
    settings.PVersionNumber = "4.01";
    settings.P5VersionNumber = "5.0";
    VersionText_Change(session, "7");
    optPoserFormat_Click(session, 1);
    EXPECT_EQ(std::tie(session.Options.PoserFormatP5, session.OutputVersion), std::tuple(true, "5"));
    optPoserFormat_Click(session, 0);
    EXPECT_EQ(std::tie(session.Options.PoserFormatP5, session.OutputVersion), std::tuple(false, "4.01"));

    // With the settings off, the box keeps what it holds.
    settings.SetPoserVersion = settings.SetP5Version = false;
    VersionText_Change(session, "7");
    optPoserFormat_Click(session, 1);
    EXPECT_EQ(std::tie(session.Options.PoserFormatP5, session.OutputVersion), std::tuple(true, "7"));
    optPoserFormat_Click(session, 0);
    EXPECT_EQ(session.Options.VersionText, "7");
}

} // namespace
} // namespace gelvane::test
