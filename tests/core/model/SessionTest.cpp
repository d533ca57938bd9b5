
#include "support/SessionFixture.h"

namespace gelvane::test {
namespace {

using SessionTest = SessionFixture;

TEST_F(SessionTest, MaterialListOfAFigureRowOnly) {
    FillTwoFigures(session);
    session.View.cmbFiguresIndex = 0;
    ShowMaterialList(session);
    EXPECT_EQ(session.View.lstMaterials, (Strings{"Skin", "Eyes", "Lips"}));
    EXPECT_EQ(session.View.lstMaterialsIndex, 0);
    for (const int row : {-1, 2}) {
        session.View.cmbFiguresIndex = row;
        EXPECT_EQ(FailureNumber([&] { ShowMaterialList(session); }), ErrSubscript) << row;
        EXPECT_TRUE(session.View.lstMaterials.empty());
    }
}

TEST_F(SessionTest, ResetEmptiesModelAndWindowButKeepsCaption) {
    FillTwoFigures(session);
    session.View.Caption = CaptionOf("C:\\Runtime\\Poses\\Walk.pz2");
    session.FileName = session.FileVersion = session.OutputVersion = "4.01";
    session.IsHairFile = session.FileModified = true;
    session.View.mnuSaveEnabled = session.View.mnuSaveAsEnabled = session.View.mnuExportMTLEnabled = true;
    session.View.MaterialControlsEnabled = session.View.cmbFiguresEnabled = true;
    session.View.cmbFiguresIndex = 0;
    ShowMaterialList(session);
    session.Pose.lstActors = {{"hip:1", "actor"}};
    session.Pose.lstDials = {{"xrot", "rotateX"}};

    ResetMainWindow(session);
    EXPECT_EQ(session.Figures, std::vector<Figure>(1));
    EXPECT_TRUE(IsEmptyList(session.Actors));
    EXPECT_EQ(session.FileName + session.FileVersion + session.OutputVersion, "");
    EXPECT_FALSE(session.IsHairFile || session.FileModified);
    EXPECT_FALSE(session.View.mnuSaveEnabled || session.View.mnuSaveAsEnabled || session.View.mnuExportMTLEnabled);
    EXPECT_FALSE(session.View.MaterialControlsEnabled || session.View.cmbFiguresEnabled);
    EXPECT_TRUE(session.View.lstMaterials.empty());
    // A file without channels opened next shows none of these rows.
    EXPECT_TRUE(session.Pose.lstActors.empty() && session.Pose.lstDials.empty());
    EXPECT_EQ(session.View.Caption, "Gelvane - [Walk.pz2]");
}

} // namespace
} // namespace gelvane::test
