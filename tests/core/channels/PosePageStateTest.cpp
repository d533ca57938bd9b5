#include "core/channels/PosePageState.h"

#include "support/SessionFixture.h"

namespace gelvane::test {
namespace {

TEST(PosePageState, ClickedActorIsCurrentAndListsItsNamedDials) {
    TestSession t;
    Session &session = t.session;
    session.Actors.resize(2);
    session.Actors[1].Channels = {{"xrot", "", "rotateX"}, {}, {"Smile", "", "targetGeom"}};

    lstActors_Click(session, 1);
    EXPECT_EQ(session.Pose.CurrentActor, 2);
    EXPECT_EQ(session.Pose.lstActorsCurrentRow, 2);
    ASSERT_EQ(session.Pose.lstDials.size(), 2u);
    EXPECT_EQ(session.Pose.lstDials[1].Name, "Smile");
    EXPECT_EQ(session.Pose.lstDials[1].Type, "targetGeom");
    EXPECT_EQ(session.Pose.lstDialsCurrentRow, 1);

    lstActors_Click(session, 0); // an actor without channels
    EXPECT_TRUE(session.Pose.lstDials.empty());
    EXPECT_EQ(session.Pose.lstDialsCurrentRow, 0);
}

} // namespace
} // namespace gelvane::test
