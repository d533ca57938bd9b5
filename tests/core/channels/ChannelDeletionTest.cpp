#include "PoseFixture.h"

#include "core/channels/ChannelDeletion.h"

namespace gelvane {
namespace {

using test::KeyedChannel;
using test::MakeActor;
using Names = std::vector<std::string>;
using Rows = std::vector<int>;

using ChannelDeletion = test::PoseFixture;

TEST_F(ChannelDeletion, ByTypeOverSelectedActorsWithTheCount) {
    Actor head = MakeActor("actor", "head:1", {KeyedChannel("translateY", "yTran", 1)});
    head.Hidden = 2;
    head.HiddenEnabled = true;
    Load({MakeActor("actor", "hip:1", {KeyedChannel("translateX", "xTran", 1), KeyedChannel("rotateX", "xrot", 2)}),
          MakeActor("actor", "chest:1",
                    {KeyedChannel("translateX", "xTran", 1), KeyedChannel("translateY", "yTran", 1)}),
          MakeActor("actor", "neck:1", {KeyedChannel("translateX", "xTran", 1)}), head});
    lstActors_SelectionChange(session, {1, 2, 4});
    lstActors_ItemClick(session, 1);
    chkDelChannels_Click(session, 1, true);
    EXPECT_TRUE(pose.cmdDelChannelsEnabled);

    // hip loses a dial, chest (nothing left) goes, neck isn't selected, head keeps its hidden flag.
    cmdDelChannels_Click(session);
    EXPECT_EQ(ui.messages(), (std::vector{test::RecordedMessage{"4 channels and\r\n1 actors were deleted.", "Gelvane",
                                                                MsgIcon::Information, MsgButtons::OK}}));
    EXPECT_EQ(ActorNames(), (Names{"hip:1", "neck:1", "head:1"}));
    EXPECT_EQ((std::vector{ChannelNames(0), ChannelNames(1), ChannelNames(2)}),
              (std::vector<Names>{{"xrot"}, {"xTran"}, {""}}));
    EXPECT_EQ(Selected(pose.lstActors), Rows{1});
    EXPECT_TRUE(session.FileModified);

    chkDelChannels_Click(session, 1, false);
    EXPECT_FALSE(pose.cmdDelChannelsEnabled);
    cmdCheckAll_Click(session, 1);
    EXPECT_EQ(std::tie(pose.cmdCheckAll[1], pose.cmdDelChannelsEnabled), std::tuple("Check none", true));
    EXPECT_EQ(ChannelTypesToDelete(pose).size(), 7u);
    cmdDelChannels_Click(session);
    EXPECT_EQ(ui.messages().back().Text, "0 channels were deleted.");
    cmdCheckAll_Click(session, 1);
    EXPECT_EQ(pose.cmdCheckAll[1], "Check all");
    EXPECT_FALSE(AnyChannelBoxChecked(pose));

    // Boxes 1 and 5 stand for the same types; both count.
    chkDelChannels_Click(session, 5, true);
    chkDelChannels_Click(session, 1, true);
    EXPECT_EQ(ChannelTypesToDelete(pose).size(), 6u);
}

TEST_F(ChannelDeletion, NewMorphGoesToEverySelectedActorAndTheListGetsOneRow) {
    Load({MakeActor("actor", "BODY:1", {KeyedChannel("valueParm", "Size", 1)}), MakeActor("actor", "hip:1"),
          MakeActor("actor", "body:1", {KeyedChannel("rotateX", "xrot", 1)})});
    cmdSelectAllActors_Click(session);
    lstActors_ItemClick(session, 1);
    ui.nextInput(" Morph 1");
    cmdCreateDial_Click(session);
    EXPECT_EQ(ui.messages().at(0).Text, "Enter name for the new morph");
    EXPECT_EQ(ChannelNames(0), (Names{"Size", " Morph 1"}));
    EXPECT_EQ(ChannelNames(1), Names{" Morph 1"});
    EXPECT_EQ(std::tie(session.Actors[0].Channels[1].Type, session.Actors[0].Channels[1].ValueEnabled,
                       session.Actors[1].Channels[0].Type),
              std::tuple("valueParm", false, "targetGeom"));
    EXPECT_EQ(test::Each(pose.lstDials, &ListRow::Type), (Names{"valueParm", "targetGeom"})); // the type given last
    EXPECT_TRUE(session.FileModified);

    // A row added for another actor has no dial of the current one behind it.
    lstActors_SelectionChange(session, {2});
    ui.nextInput("Other");
    cmdCreateDial_Click(session);
    ASSERT_EQ(pose.lstDials.size(), 3u);
    lstDials_SelectionChange(session, {3});
    lstDials_ItemClick(session, 3);
    EXPECT_NE(pose.CurrentDial, 3);
    cmdDeleteDials_Click(session);
    EXPECT_EQ(ChannelNames(0), (Names{"Size", " Morph 1"}));
    EXPECT_EQ(ChannelNames(1), (Names{" Morph 1", "Other"}));

    ui.nextInput("  ");
    cmdCreateDial_Click(session);
    ui.nextInput(std::nullopt);
    cmdCreateDial_Click(session);
    EXPECT_EQ(ChannelNames(1).size(), 2u);
}

TEST_F(ChannelDeletion, DialsAndActors) {
    Actor hip = MakeActor(
        "actor", "hip:1",
        {KeyedChannel("rotateX", "xrot", 1), KeyedChannel("rotateY", "yrot", 2), KeyedChannel("rotateZ", "zrot", 3)});
    hip.StorageOffset = "0 0 0"; // not null: it stays when all its dials go
    Load({hip, MakeActor("actor", "chest:1", {KeyedChannel("rotateX", "xrot", 1)})});
    lstActors_ItemClick(session, 1);
    lstDials_SelectionChange(session, {2});
    lstDials_ItemClick(session, 2);
    cmdDeleteDials_Click(session);
    EXPECT_EQ(ChannelNames(0), (Names{"xrot", "zrot"}));
    EXPECT_EQ(std::tuple(Selected(pose.lstDials), pose.CurrentDial), std::tuple(Rows{1}, 1));

    lstDials_SelectionChange(session, {1, 2});
    cmdDeleteDials_Click(session);
    EXPECT_EQ(ChannelNames(0), Names{""});
    EXPECT_TRUE(pose.lstDials.empty());
    EXPECT_EQ(ActorNames().size(), 2u);

    lstActors_SelectionChange(session, {2});
    cmdDeleteActors_Click(session);
    EXPECT_EQ(ActorNames(), Names{"hip:1"});
    EXPECT_EQ(pose.CurrentActor, 1);

    // Deleting every actor switches morphs and poses off; with materials off too nothing is left to save.
    session.Options.chkNoMaterialData = true;
    session.View.mnuSaveEnabled = session.View.mnuSaveAsEnabled = true;
    chkDelChannels_Click(session, 0, true);
    cmdDeleteActors_Click(session);
    EXPECT_TRUE(IsEmptyList(session.Actors) && pose.lstActors.empty() && session.Options.chkChannels);
    EXPECT_FALSE(session.Options.chkChannelsEnabled || session.View.mnuSaveEnabled || session.View.mnuSaveAsEnabled ||
                 pose.lstActorsEnabled || pose.cmdDeleteActorsEnabled);
    EXPECT_TRUE(pose.cmdDelChannelsEnabled); // a checked box keeps it on, as it always was
}

} // namespace
} // namespace gelvane
