// The scripted interaction that the other tests rely on fails them when the code
// asks what was not scripted or leaves a scripted answer unused.
#include "support/ScriptedInteraction.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace gelvane::test {
namespace {

TEST(ScriptedInteraction, UnscriptedQuestionsAndUnusedAnswersFail) {
    ScriptedInteraction ui;
    EXPECT_NONFATAL_FAILURE(ui.ChooseFile({}), "not scripted: file dialog");
    EXPECT_NONFATAL_FAILURE(ui.MessageBox("Go on?", "", MsgIcon::None, MsgButtons::YesNo), "not scripted");
    EXPECT_NONFATAL_FAILURE(ui.ChooseMap("a.jpg", {}), "map choice");
    // A notice takes no answer; a scripted one is used in order.
    ui.nextAnswer(MsgResult::No);
    EXPECT_EQ(ui.MessageBox("Done.", "", MsgIcon::None, MsgButtons::OK), MsgResult::OK);
    EXPECT_EQ(ui.MessageBox("Go on?", "", MsgIcon::None, MsgButtons::YesNo), MsgResult::No);

    ui.nextFile("/a.pz2");
    EXPECT_NONFATAL_FAILURE(ui.checkAllUsed(), "1 scripted answer(s) left unused");
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedInteraction dropped;
            dropped.nextFolder("/b");
        },
        "left unused");
}

} // namespace
} // namespace gelvane::test
