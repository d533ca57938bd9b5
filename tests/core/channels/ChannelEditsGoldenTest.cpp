// Edits made on the pose page, saved as a pose, byte for byte; and the saved pose read
// back and written again holds every edit.
#include "core/app/MainWindowState.h"
#include "core/app/OpenCommands.h"
#include "core/app/SaveCommands.h"
#include "core/channels/ChannelDeletion.h"
#include "core/channels/ChannelProperties.h"
#include "core/channels/PosePageState.h"
#include "core/model/Text.h"
#include "core/writer/PoseWriter.h"
#include "support/SessionFixture.h"

#include <algorithm>

namespace gelvane {
namespace {

struct Opened {
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};

    Opened(const std::string &path, bool disableProperties, bool dos, bool p5) {
        settings.AutoCorrect = false;
        settings.MainThumb = false;
        settings.DisableProperties = disableProperties;
        session.PoserFileKind = KindPZ2;
        ui.nextFile(path);
        OpenCommand(session, KindPZ2);
        session.Options.FileSystemDOS = dos;
        session.Options.PoserFormatP5 = p5;
    }
};

void SelectAndClickDial(Session &session, int row) {
    lstDials_SelectionChange(session, {row});
    lstDials_ItemClick(session, row);
}

// A dial value with a display name and a hidden flag, a dial whose value is switched off
// (and so deleted), actor properties switched on and set, a changed value, the thigh length.
void EditProperties(Session &session, test::ScriptedInteraction &) {
    PosePageOpened(session); // BODY:1
    SelectAndClickDial(session, 1);
    txtDialProperties_Change(session, 0, "0.5");
    cmdApplyDial_Click(session, 0);
    chkEnableDial_Click(session, 1, true);
    txtDialProperties_Change(session, 1, "Breasts Size");
    cmdApplyDial_Click(session, 1);
    chkEnableDial_Click(session, 2, true);
    cmbDialProperties_Click(session, 1);
    cmdApplyDial_Click(session, 2);
    SelectAndClickDial(session, 2);
    chkEnableDial_Click(session, 0, false);

    lstActors_SelectionChange(session, {2}); // hip:1
    lstActors_ItemClick(session, 2);
    chkEnable_Click(session, 0, true);
    txtActorProperties_Change(session, 0, "Hip Part");
    cmdApplyProperty_Click(session, 0);
    chkEnable_Click(session, 1, true);
    cmbActorProperties_Click(session, 0, 0);
    cmdApplyProperty_Click(session, 1);
    chkEnable_Click(session, 3, true);
    cmbActorProperties_Click(session, 2, 1);
    cmdApplyProperty_Click(session, 3);
    chkEnable_Click(session, 5, true);
    txtActorProperties_Change(session, 1, "512");
    cmdApplyProperty_Click(session, 5);
    SelectAndClickDial(session, 1);
    txtDialProperties_Change(session, 0, "-0.25");
    cmdApplyDial_Click(session, 0);

    chkDisableThighLength_Click(session, false);
    txtThighLength_Change(session, ".75");
}

// A new morph on both actors, with a value on BODY's and a display name on hip's.
void CreateMorph(Session &session, test::ScriptedInteraction &ui) {
    PosePageOpened(session);
    lstActors_SelectionChange(session, {1, 2});
    lstActors_ItemClick(session, 1);
    ui.nextInput("MyMorph");
    cmdCreateDial_Click(session);
    SelectAndClickDial(session, 3);
    chkEnableDial_Click(session, 0, true);
    txtDialProperties_Change(session, 0, "1");
    cmdApplyDial_Click(session, 0);

    lstActors_SelectionChange(session, {2});
    lstActors_ItemClick(session, 2);
    SelectAndClickDial(session, 3);
    chkEnableDial_Click(session, 1, true);
    txtDialProperties_Change(session, 1, "My Morph");
    cmdApplyDial_Click(session, 1);
}

struct Case {
    const char *Name;
    void (*Edit)(Session &, test::ScriptedInteraction &);
};

class ChannelEditsGolden : public ::testing::TestWithParam<std::tuple<Case, bool, bool>> {};

TEST_P(ChannelEditsGolden, SavedAndReopened) {
    const auto &[edits, dos, p5] = GetParam();
    test::TestHome home;
    const std::string input = home.write("input.pz2", test::ReadTestData("channel-edits/input.pz2"));
    std::string expected = test::ReadTestData(std::string(edits.Name) + "/expected.pz2");
    if (!dos)
        expected = Replace(expected, "\r\n", "\r");

    Opened page(input, true, dos, p5);
    ASSERT_FALSE(page.session.OpenFailed);
    edits.Edit(page.session, page.ui);
    EXPECT_TRUE(page.session.FileModified);
    const std::string saved = home.file("saved.pz2");
    page.ui.nextFile(saved);
    ASSERT_EQ(mnuSaveAs_Click(page.session), SaveResult::Saved);
    EXPECT_EQ(home.read("saved.pz2"), expected);

    Opened again(saved, false, dos, p5);
    ASSERT_FALSE(again.session.OpenFailed);
    LineWriter out(again.session.Options.LineEnd());
    WritePose(again.session, out);
    EXPECT_EQ(out.text(), expected);
}

std::string CaseName(const ::testing::TestParamInfo<std::tuple<Case, bool, bool>> &info) {
    return test::TestName(std::get<0>(info.param).Name) + (std::get<1>(info.param) ? "Dos" : "Unix") +
           (std::get<2>(info.param) ? "P5" : "P4");
}

INSTANTIATE_TEST_SUITE_P(Cases, ChannelEditsGolden,
                         ::testing::Combine(::testing::Values(Case{"channel-edits", EditProperties},
                                                              Case{"new-morph", CreateMorph}),
                                            ::testing::Bool(), ::testing::Bool()),
                         CaseName);

} // namespace
} // namespace gelvane
