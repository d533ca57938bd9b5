#include "WriterModels.h"

#include "core/writer/FormatOptions.h"

#include <gtest/gtest.h>

using namespace gelvane;
using namespace gelvane::test;

TEST(FormatOptions, VersionBoxGivesTheNumberPrintedBack) {
    WriterSession w;
    for (const auto &[box, version] : {std::pair{"5.0", "5"}, std::pair{"4.01", "4.01"}, std::pair{" 6 beta", "6"},
                                       std::pair{"", "0"}, std::pair{"4,01", "4"}}) {
        w.session.FileModified = false;
        SetVersionText(w.session, box);
        EXPECT_EQ(w.session.OutputVersion, version) << box;
        EXPECT_EQ(w.session.Options.VersionText, box);
        EXPECT_TRUE(w.session.FileModified);
    }
}

TEST(FormatOptions, FormatChoiceBringsTheVersionOfItsSetting) {
    WriterSession w;
    w.settings.PVersionNumber = "4.01";
    w.settings.P5VersionNumber = "5.0";
    SetVersionText(w.session, "7");
    optPoserFormat_Click(w.session, 1);
    EXPECT_TRUE(w.session.Options.PoserFormatP5);
    EXPECT_EQ(w.session.OutputVersion, "5");
    optPoserFormat_Click(w.session, 0);
    EXPECT_FALSE(w.session.Options.PoserFormatP5);
    EXPECT_EQ(w.session.OutputVersion, "4.01");

    // With the settings off, the box keeps what it holds.
    w.settings.SetPoserVersion = w.settings.SetP5Version = false;
    SetVersionText(w.session, "7");
    optPoserFormat_Click(w.session, 1);
    EXPECT_TRUE(w.session.Options.PoserFormatP5);
    EXPECT_EQ(w.session.OutputVersion, "7");
    optPoserFormat_Click(w.session, 0);
    EXPECT_EQ(w.session.Options.VersionText, "7");
}
