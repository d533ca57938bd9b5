#include "core/model/Session.h"

#include "core/model/Settings.h"
#include "core/platform/Failure.h"
#include "support/ScriptedInteraction.h"

#include <gtest/gtest.h>

namespace gelvane {
namespace {

struct SessionTest : ::testing::Test {
    Settings settings;
    test::ScriptedInteraction ui;
    Session session{settings, ui};

    void loadTwoFiguresAndActor() {
        session.Figures.resize(2);
        session.Figures[0].Name = "figure";
        session.Figures[0].Materials.resize(2);
        session.Figures[0].Materials[0].Name = "Skin";
        session.Figures[0].Materials[1].Name = "Eyes";
        session.Figures[1].Name = "hat";
        session.cmbFigures = {"figure", "hat", "actor hip"};
        session.Actors[0].Name = "hip";
    }
};

TEST_F(SessionTest, MaterialListOfAFigureRowOnly) {
    loadTwoFiguresAndActor();
    session.View.cmbFiguresIndex = 0;
    ShowMaterialList(session);
    EXPECT_EQ(session.View.lstMaterials, (std::vector<std::string>{"Skin", "Eyes"}));
    EXPECT_EQ(session.View.lstMaterialsIndex, 0);
    for (const int row : {-1, 2}) {
        session.View.cmbFiguresIndex = row;
        try {
            ShowMaterialList(session);
            ADD_FAILURE() << "row " << row << " names no figure";
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.Number, ErrSubscript);
        }
        EXPECT_TRUE(session.View.lstMaterials.empty());
    }
}

TEST_F(SessionTest, ResetEmptiesModelAndWindowButKeepsCaption) {
    loadTwoFiguresAndActor();
    session.View.Caption = CaptionOf("C:\\Runtime\\Poses\\Walk.pz2");
    session.FileName = "/p/Walk.pz2";
    session.FileVersion = "4.01";
    session.OutputVersion = "4.01";
    session.IsHairFile = true;
    session.FileModified = true;
    session.View.mnuSaveEnabled = session.View.mnuSaveAsEnabled = session.View.mnuExportMTLEnabled = true;
    session.View.cmbFiguresIndex = 0;
    ShowMaterialList(session);
    session.View.MaterialControlsEnabled = session.View.cmbFiguresEnabled = true;
    session.Pose.lstActors = {{"hip:1", "actor"}};
    session.Pose.lstDials = {{"xrot", "rotateX"}};

    ResetMainWindow(session);
    EXPECT_TRUE(IsEmptyList(session.Figures));
    EXPECT_EQ(session.Figures.size(), 1u);
    EXPECT_TRUE(IsEmptyList(session.Actors));
    EXPECT_TRUE(session.FileName.empty());
    EXPECT_TRUE(session.FileVersion.empty());
    EXPECT_TRUE(session.OutputVersion.empty());
    EXPECT_FALSE(session.IsHairFile);
    EXPECT_FALSE(session.FileModified);
    EXPECT_FALSE(session.View.mnuSaveEnabled || session.View.mnuSaveAsEnabled || session.View.mnuExportMTLEnabled);
    EXPECT_FALSE(session.View.MaterialControlsEnabled || session.View.cmbFiguresEnabled);
    EXPECT_TRUE(session.View.lstMaterials.empty());
    // A file without channels opened next shows none of these rows.
    EXPECT_TRUE(session.Pose.lstActors.empty() && session.Pose.lstDials.empty());
    EXPECT_EQ(session.View.Caption, "Gelvane - [Walk.pz2]");
}

} // namespace
} // namespace gelvane
