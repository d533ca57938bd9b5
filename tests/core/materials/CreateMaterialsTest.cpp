#include "MaterialFixture.h"

#include "core/materials/CreateMaterials.h"
#include "core/materials/MaterialCommands.h"

namespace gelvane {
namespace {

using Strings = std::vector<std::string>;
using CreateMaterialsTest = test::MaterialFixture;

Strings Names(const Figure &figure) {
    return test::NamesOf(figure.Materials);
}

TEST_F(CreateMaterialsTest, RemoveObjectHasThreeBranches) {
    // An actor row goes from the list only.
    cmbFigures_Click(session, 2);
    cmd_Click(session, 1);
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "hat"}));
    EXPECT_EQ(session.Figures.size(), 2u);
    EXPECT_EQ(session.View.lstMaterials, (Strings{"Skin", "Eyes", "Lips"}));
    EXPECT_TRUE(session.FileModified);

    // A Figure's row takes its Figure along.
    cmbFigures_Click(session, 0);
    RemoveObject(session);
    EXPECT_EQ(std::tie(session.cmbFigures, session.View.lstMaterials), std::tuple(Strings{"hat"}, Strings{"Band"}));
    EXPECT_EQ(test::NamesOf(session.Figures), Strings{"hat"});

    // The last one leaves no materials: the page switches them off, and without channels
    // to save nothing can be saved.
    session.FileModified = false;
    session.Options.chkChannels = true;
    session.View.mnuSaveAsEnabled = session.View.mnuExportMTLEnabled = true;
    RemoveObject(session);
    EXPECT_TRUE(IsEmptyList(session.Figures) && session.cmbFigures.empty() && session.Options.chkNoMaterialData);
    EXPECT_FALSE(session.Options.chkNoMaterialDataEnabled || session.View.mnuSaveAsEnabled ||
                 session.View.mnuExportMTLEnabled || session.FileModified);
    const MaterialControls c = MaterialControlsOf(session);
    EXPECT_FALSE(c.lstMaterials || c.cmbFigures || c.cmdNewMat || c.cmdCreateMat || c.cmdDelete);
    EXPECT_TRUE(session.View.lstMaterials.empty());
}

TEST_F(CreateMaterialsTest, DeletingMaterialsKeepsTheOthersInOrderOrRemovesTheObject) {
    lstMaterials_Click(session, {1}, 1);
    cmdDeleteMaterials_Click(session);
    EXPECT_EQ(Names(session.Figures[0]), (Strings{"Skin", "Lips"}));
    EXPECT_EQ(page().SelectedMaterials, std::vector<int>{0});
    EXPECT_TRUE(session.FileModified);

    SelectAllMaterials(session);
    cmdInvertSel_Click(session);
    EXPECT_TRUE(page().SelectedMaterials.empty());
    cmdInvertSel_Click(session);
    cmdDeleteMaterials_Click(session); // every row: the object goes
    EXPECT_EQ(session.cmbFigures, (Strings{"hat", "actor hip"}));
}

TEST_F(CreateMaterialsTest, NewMaterial) {
    ui.nextInput("   ");
    cmdNewMat_Click(session);
    ui.nextInput("skin");
    cmdNewMat_Click(session);
    EXPECT_EQ(Names(session.Figures[0]), (Strings{"Skin", "Eyes", "Lips"}));
    EXPECT_EQ(ui.messages().back().Text, kMaterialExists);
    EXPECT_FALSE(session.FileModified);

    // An actor row becomes an owner at the row of its new Figure; the new material has
    // every property disabled.
    session.cmbFigures.push_back("actor head");
    cmbFigures_Click(session, 3);
    ui.nextInput(" Wig ");
    cmdNewMat_Click(session);
    EXPECT_EQ(test::NamesOf(session.Figures), (Strings{"figure", "hat", "head"}));
    EXPECT_EQ(Names(session.Figures[2]), Strings{" Wig "});
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "hat", "actor head", "actor hip"}));
    EXPECT_EQ(session.View.lstMaterials, Strings{" Wig "});
    const MaterialControls c = MaterialControlsOf(session);
    EXPECT_TRUE(std::all_of(c.DisabledLook.begin(), c.DisabledLook.end(), [](bool off) { return off; }));
    EXPECT_TRUE(session.FileModified);
}

// The pending items of "Import material(s)" are numbered like the destination list's rows,
// also where the object's own materials stand in the first rows.
TEST_F(CreateMaterialsTest, PendingItemsFollowTheListsRowNumbers) {
    material(0, 1).tMinEnabled = false;
    session.cmbFigures.push_back("actor head");
    CreateMatForm form(session);
    EXPECT_EQ(form.cmbFigures1, (Strings{"figure", "hat"}));
    EXPECT_EQ(form.PendingMaterials[3].ObjectName, "head");
    EXPECT_EQ(form.lstMaterials2, (Strings{"Skin", "Eyes", "Lips"})); // the chosen object

    form.cmbFigures2_Click(1);
    form.cmdAdd_Click({0, 2});
    form.cmbFigures1_Click(1);
    form.cmdAdd_Click({0}); // "Band" is there already
    EXPECT_EQ(form.lstMaterials2, (Strings{"Band", "Skin", "Lips"}));
    const auto &items = form.PendingMaterials[1].Items;
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(std::tie(items[1].SourceFigure, items[1].SourceMaterial), std::tuple(0, 2));

    // Row 2 shows "Lips" but no item has that number: Remove and Rename do nothing.
    form.cmdRemove_Click({2});
    EXPECT_EQ(items.size(), 2u);
    form.cmdRename_Click(ui, 2); // asks nothing
    ui.nextInput("band");
    form.cmdRename_Click(ui, 0);
    EXPECT_EQ(ui.messages().back().Text, kMaterialExists);
    ui.nextInput("Lips 2");
    form.cmdRename_Click(ui, 1);
    EXPECT_EQ(form.lstMaterials2, (Strings{"Band", "Skin", "Lips 2"}));
    form.cmdRemove_Click({0}); // the object's own row 0 removes item 0
    EXPECT_EQ(form.lstMaterials2, (Strings{"Band", "Lips 2"}));
    form.cmdRemove_Click({0});
    EXPECT_TRUE(IsEmptyList(items)); // one empty element again
    EXPECT_EQ(form.lstMaterials2, Strings{"Band"});

    // The last actor row gets Band, flags and all; it becomes a Figure, and its row moves
    // to its Figure's index in front of the other actor.
    form.cmbFigures2_Click(3);
    EXPECT_TRUE(form.lstMaterials2.empty());
    form.cmdAdd_Click({0});
    form.cmdOK_Click(session);
    EXPECT_EQ(test::NamesOf(session.Figures), (Strings{"figure", "hat", "head"}));
    EXPECT_EQ(session.Figures[2].Materials, std::vector<Material>{material(0, 1)});
    EXPECT_FALSE(session.Figures[2].Materials[0].tMinEnabled);
    EXPECT_EQ(session.cmbFigures, (Strings{"figure", "hat", "actor head", "actor hip"}));
    EXPECT_EQ(session.View.lstMaterials, (Strings{"Skin", "Eyes", "Lips"}));
    EXPECT_TRUE(session.FileModified);
}

} // namespace
} // namespace gelvane
