#include "PoseFixture.h"

#include "core/channels/ChannelProperties.h"

#include <optional>

namespace gelvane {
namespace {

using test::KeyedChannel;
using test::MakeActor;
using Rows = std::vector<int>;
using test::Strings;

struct PosePage : test::PoseFixture {
    // hip: a keyed morph with a display name and a rotation; chest: no channels; BODY, abdomen: one dial each.
    void LoadFour() {
        Actor hip = MakeActor("actor", "hip:1",
                              {KeyedChannel("targetGeom", "Belly", 0.5), KeyedChannel("rotateY", "yrot", -1E-05)});
        hip.Channels[0].DisplayName = "Belly Out";
        hip.Channels[0].NameEnabled = true;
        hip.DisplayName = "Hip";
        hip.NameEnabled = true;
        hip.OnOff = 2;
        hip.OnOffEnabled = true;
        Load({hip, MakeActor("actor", "chest:1"), MakeActor("actor", "BODY:1", {KeyedChannel("valueParm", "Size", 2)}),
              MakeActor("actor", "abdomen:1", {KeyedChannel("rotateX", "xrot", 3)})});
    }
};

TEST(DialValue, OnlyTheExactShortFormOfANumberInRange) {
    const std::pair<const char *, std::optional<double>> cases[] = {
        {"0.5", 0.5},     {".5", 0.5},        {"-0.5", -0.5}, {"-.5", -0.5}, {"10.5", 10.5},
        {"10000", 10000}, {"-10000", -10000}, {"0", 0},       {" 2 ", 2},    {"1E-05", 1E-05},
        {"00.5", {}},     {"1.50", {}},       {"10.0", {}},   {"+5", {}},    {"abc", {}},
        {"10000.5", {}},  {"-10000.5", {}},   {"", {}},       {"1e999", {}}, {"5abc", {}},
    };
    for (const auto &[text, value] : cases)
        EXPECT_EQ(DialValueOf(text), value) << text;
    EXPECT_EQ((std::vector{DialValueText(0.5), DialValueText(-0.5), DialValueText(1E-05)}),
              (std::vector<std::string>{"0.5", "-0.5", "1E-05"}));
}

TEST_F(PosePage, ActorClickShowsItsDialsAndProperties) {
    LoadFour();
    lstActors_ItemClick(session, 1);
    EXPECT_EQ(std::tuple(pose.CurrentActor, Selected(pose.lstActors), test::NamesOf(pose.lstDials)),
              std::tuple(1, Rows{1}, std::vector<std::string>{"Belly", "yrot"}));
    EXPECT_EQ(std::tie(pose.txtDialProperties[0], pose.txtActorProperties[0], pose.cmbActorProperties[0]),
              std::tuple("0.5", "Hip", 1));
    EXPECT_FALSE(pose.cmdDeleteDialsEnabled); // until a dial is clicked
    EXPECT_TRUE(pose.ActorProperty[1].Checked && !pose.ActorProperty[2].ValueEnabled);

    // An actor without channels: no dials; the values it lacks leave their boxes alone.
    lstActors_ItemClick(session, 2);
    EXPECT_TRUE(pose.lstDials.empty() && !pose.ActorProperty[0].Checked);
    EXPECT_EQ(std::tie(pose.txtActorProperties[0], pose.cmbActorProperties[0]), std::tuple("Hip", 1));
    EXPECT_EQ(Selected(pose.lstActors), (Rows{1, 2}));

    lstActors_ItemClick(session, 5);
    EXPECT_EQ(pose.CurrentActor, 2);
}

TEST_F(PosePage, DialClickLeavesOnlyTheCurrentActorOfTheFirstSelectedRows) {
    Load({MakeActor("actor", "a", {KeyedChannel("rotateX", "xrot", 1)}),
          MakeActor("actor", "b", {KeyedChannel("targetGeom", "Belly", 0.25)}),
          MakeActor("actor", "c", {KeyedChannel("rotateX", "xrot", 3)}),
          MakeActor("actor", "d", {KeyedChannel("rotateX", "xrot", 4)})});
    lstActors_SelectionChange(session, {1, 2, 4}); // a ctrl-click on row 2
    lstActors_ItemClick(session, 2);
    EXPECT_EQ(Selected(pose.lstActors), (Rows{1, 2, 4}));

    lstDials_SelectionChange(session, {1});
    lstDials_ItemClick(session, 1);
    // Three rows selected: rows 1 to 3 keep a selection only where current; row 4 lies behind that bound.
    EXPECT_EQ(Selected(pose.lstActors), (Rows{2, 4}));
    EXPECT_EQ(std::tie(pose.txtDialProperties[0], pose.cmdDeleteDialsEnabled), std::tuple("0.25", true));
}

TEST_F(PosePage, DialClickOnARowTakenOutOfTheSelectionShowsTheFirstSelected) {
    LoadFour();
    lstActors_ItemClick(session, 1);
    session.Actors[0].Channels.push_back(KeyedChannel("rotateX", "xrot", 7));
    FillDialList(session, 0);
    lstDials_SelectionChange(session, {2, 3});
    lstDials_ItemClick(session, 1); // row 1 was ctrl-clicked out
    EXPECT_EQ(std::tie(pose.CurrentDial, pose.txtDialProperties[0], pose.DialProperty[1].Checked),
              std::tuple(2, "-1E-05", false));
}

TEST_F(PosePage, ApplyingReachesEverySelectedActorAndDial) {
    LoadFour();
    cmdSelectAllActors_Click(session);
    EXPECT_EQ(pose.CurrentActor, 4);
    txtActorProperties_Change(session, 1, "511.5");
    cmdApplyProperty_Click(session, 5);
    for (const Actor &a : session.Actors)
        EXPECT_EQ(a.DepthMapSize, 512); // 511.5 + 1 rounds half to even
    EXPECT_TRUE(session.FileModified);

    lstActors_ItemClick(session, 1);
    cmdSelectAllDials_Click(session);
    EXPECT_EQ(Selected(pose.lstActors), Rows{1});
    txtDialProperties_Change(session, 0, "1.50");
    cmdApplyDial_Click(session, 0);
    EXPECT_EQ(Texts(), Strings{"Use a value between -10000 and 10000"});
    txtDialProperties_Change(session, 0, "-.75");
    cmdApplyDial_Click(session, 0);
    EXPECT_EQ(std::tie(session.Actors[0].Channels[0].Value, session.Actors[0].Channels[1].Value,
                       session.Actors[2].Channels[0].Value),
              std::tuple(-0.75, -0.75, 2.0));

    cmdZerAll_Click(session);
    EXPECT_EQ(std::tie(session.Actors[2].Channels[0].Value, pose.txtDialProperties[0]), std::tuple(0.0, "0"));
}

TEST_F(PosePage, PropertyBoxFailuresAreShownAndStoreNothing) {
    LoadFour();
    cmdSelectAllActors_Click(session);
    const std::vector<Actor> before = session.Actors;
    cmbActorProperties_Click(session, 4, 1);
    cmdApplyProperty_Click(session, 6); // the lightOn row
    txtActorProperties_Change(session, 1, "40000");
    cmdApplyProperty_Click(session, 5);
    EXPECT_EQ(session.Actors, before);
    EXPECT_FALSE(session.FileModified);
    EXPECT_EQ(Texts(),
              (Strings{"Control array element '5' doesn't exist, error number 340", "Overflow, error number 6"}));
    EXPECT_EQ(ui.messages()[0].Icon, MsgIcon::Exclamation);
}

TEST_F(PosePage, ClearingTheLastPropertyDeletesTheDialAndTheEmptiedActor) {
    LoadFour();
    // abdomen carries only its dial value; clearing it takes the dial and then the actor.
    lstActors_ItemClick(session, 4);
    lstDials_SelectionChange(session, {1});
    lstDials_ItemClick(session, 1);
    chkEnableDial_Click(session, 0, false);
    EXPECT_EQ(ActorNames(), (Strings{"hip:1", "chest:1", "BODY:1"}));
    EXPECT_EQ(std::tuple(pose.lstActors.size(), pose.CurrentActor, session.FileModified), std::tuple(3u, 1, true));

    // hip's morph keeps its display name, so it stays; the rotation goes; hip has a name and stays.
    lstDials_SelectionChange(session, {1, 2});
    lstDials_ItemClick(session, 1);
    chkEnableDial_Click(session, 0, false);
    EXPECT_EQ(ChannelNames(0), std::vector<std::string>{"Belly"});
    EXPECT_FALSE(session.Actors[0].Channels[0].ValueEnabled);

    // An actor without channels goes when its last property is switched off; one with channels stays.
    session.Actors[1].Hidden = 1;
    session.Actors[1].HiddenEnabled = true;
    lstActors_SelectionChange(session, {1, 2});
    chkEnable_Click(session, 0, false);
    EXPECT_EQ(ActorNames().size(), 3u);
    chkEnable_Click(session, 2, false);
    EXPECT_EQ(ActorNames(), (std::vector<std::string>{"hip:1", "BODY:1"}));

    session.EventsEnabled = false;
    chkEnable_Click(session, 1, false);
    EXPECT_TRUE(session.Actors[0].OnOffEnabled);
}

} // namespace
} // namespace gelvane
