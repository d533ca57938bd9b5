#include "core/materials/Templates.h"
#include "core/materials/MaterialPageState.h"
#include "core/materials/TemplateEditor.h"

#include "core/platform/Paths.h"
#include "core/reader/OpenFile.h"
#include "support/SessionFixture.h"

namespace gelvane {
namespace {

using Names = std::vector<std::string>;

class TemplatesTest : public test::SessionFixture {
protected:
    TemplatesTest() {
        Figure body{"Body", {}};
        for (const char *name : {"SkinBody", "SkinHead", "EyeBall", "Skin"})
            body.Materials.emplace_back().Name = name;
        session.Figures = {body};
    }
    std::string Saved(const std::string &name) { return home.read("Templates/" + name + ".cfg"); }
    void SaveAs(TemplateEditor &editor, const std::string &name) {
        ui.nextInput(name);
        editor.mnuSaveAs_Click();
    }
    // Opens `name` in a fresh editor as the main window's Edit does.
    void OpenInEditor(TemplateEditor &editor, const std::string &name) {
        session.CommandLineOpen = true;
        session.FileName = TemplatePath(name);
        editor.Form_Load();
    }
};

TEST_F(TemplatesTest, CreatorWritesTheGoldenFilesAndOpenThenSaveKeepsTheBytes) {
    TemplateEditor editor(session);
    editor.Form_Load();
    ASSERT_EQ(editor.lstMaterials, (Names{"SkinBody", "SkinHead", "EyeBall", "Skin"}));
    ui.nextInput("Skin");
    editor.cmdCreate_Click();
    editor.cmdMove_Click({0, 1});
    editor.cmdMove_Click({0}); // already a member: not added twice
    ui.nextInput("Eyes");
    ui.nextInput("eyes"); // the duplicate test ignores case
    editor.cmdCreate_Click();
    editor.cmdCreate_Click();
    editor.cmdMove_Click({2});
    SaveAs(editor, "Skin and Eyes");
    EXPECT_EQ(Saved("Skin and Eyes"), test::ReadTestData("templates/skin-eyes.cfg"));
    EXPECT_EQ(editor.StatusText, "Current template: Skin and Eyes.cfg");

    editor.cmbGroups_Click(0);
    editor.cmdDeleteMaterials_Click({0, 1});
    EXPECT_FALSE(editor.cmdDeleteMaterialsEnabled);
    SaveAs(editor, "empty.CFG"); // a typed extension is dropped
    EXPECT_EQ(Saved("empty"), test::ReadTestData("templates/empty-group.cfg"));
    editor.Form_Unload();

    // Open, then save under a new name, twice in one run: the bytes stay, the empty
    // group keeps the groups behind it.
    for (const std::string from : {"Skin and Eyes", "empty"}) {
        for (int round = 0; round < 2; ++round) {
            TemplateEditor again(session);
            OpenInEditor(again, round == 0 ? from : from + " copy");
            EXPECT_EQ(again.StatusText, "Current template: " + (round == 0 ? from : from + " copy") + ".cfg");
            if (round == 1)
                ui.nextAnswer(MsgResult::Yes); // overwrite
            SaveAs(again, from + " copy");
            EXPECT_EQ(Saved(from + " copy"), Saved(from));
        }
    }
    // The boxes, without the input prompts that the scripted interaction records too.
    Names boxes = Texts();
    std::erase_if(boxes, [](const std::string &text) { return text.starts_with("Enter "); });
    const std::string saved = "Template saved succesfully",
                      overwrite = "A template with that name already exists. Overwrite?";
    EXPECT_EQ(boxes, (Names{"Group with that name already exists", saved, saved, saved, overwrite, saved, saved,
                            overwrite, saved}));
}

TEST_F(TemplatesTest, SaveAsRefusesForbiddenCharactersAndKeepsAnExistingFileOnNo) {
    TemplateEditor editor(session);
    editor.Form_Load();
    ui.nextInput("Skin");
    editor.cmdCreate_Click();
    SaveAs(editor, "a/b");
    EXPECT_EQ(ui.messages().back().Text, "The name cannot contain any of the following characters:\r\n\\/:*?\"<>|");
    home.write("Templates/Old.cfg", "x");
    ui.nextAnswer(MsgResult::No);
    SaveAs(editor, "old"); // the file system's name is compared without regard to case
    EXPECT_EQ(Saved("Old"), "x");
    SaveAs(editor, ".cfg"); // not longer than four characters: the name stays
    EXPECT_TRUE(FileExists(home.file("Templates/.cfg.cfg")));
    ui.nextInput(std::nullopt);
    editor.cmdCreate_Click(); // cancelled: nothing added
    EXPECT_EQ(editor.cmbGroups, Names{"Skin"});
}

TEST_F(TemplatesTest, DeletingGroupsKeepsOneMemberListPerRow) {
    TemplateEditor editor(session);
    editor.Form_Load();
    for (const char *name : {"A", "B"}) {
        ui.nextInput(name);
        editor.cmdCreate_Click();
        editor.cmdMove_Click({name[0] == 'A' ? 0 : 2});
    }
    editor.cmbGroups_Click(0);
    editor.cmdDelete_Click();
    editor.cmdDelete_Click();
    EXPECT_FALSE(editor.cmdDeleteEnabled || editor.cmdMoveEnabled || editor.mnuSaveAsEnabled);
    ui.nextInput("C");
    editor.cmdCreate_Click();
    EXPECT_EQ(editor.GroupMembers, Names{""});
    EXPECT_TRUE(editor.lstMatInGroup.empty());
}

struct Ruling19Case {
    const char *Text;
    std::vector<TemplateGroup> Groups;
};

TEST(ReadTemplateGroups, EveryShapeFinishes) {
    const std::vector<Ruling19Case> cases = {
        // A later group whose name ends an earlier one's.
        {"Skin\r\n{\r\na\r\n}\r\nin\r\n{\r\nb\r\n}\r\nx\r\n{\r\nc\r\n}\r\n",
         {{"Skin", {"a"}}, {"in", {"b"}}, {"x", {"c"}}}},
        // An empty name line.
        {"A\r\n{\r\na\r\n}\r\n\r\n{\r\nb\r\n}\r\nC\r\n{\r\nc\r\n}\r\n", {{"A", {"a"}}, {"", {"b"}}, {"C", {"c"}}}},
        // A missing "}" line: the members run on to the next "}".
        {"A\r\n{\r\na\r\nB\r\n{\r\nb\r\n}\r\nC\r\n{\r\nc\r\n}\r\n", {{"A", {"a", "B", "{", "b"}}, {"C", {"c"}}}},
        // Empty groups, first and last.
        {"A\r\n{\r\n}\r\nB\r\n{\r\n}\r\n", {{"A", {}}, {"B", {}}}},
        // No "}" at all, and a "}" not followed by a line end.
        {"A\r\n{\r\na\r\n", {{"A", {}}}},
        {"A\r\n{\r\na}x}\r\n", {{"A", {}}}},
    };
    for (const auto &c : cases) {
        const auto groups = ReadTemplateGroups(c.Text);
        ASSERT_TRUE(groups) << c.Text;
        EXPECT_EQ(test::NamesOf(*groups), test::NamesOf(c.Groups)) << c.Text;
        EXPECT_EQ(test::Each(*groups, &TemplateGroup::Members), test::Each(c.Groups, &TemplateGroup::Members))
            << c.Text;
    }
    EXPECT_FALSE(ReadTemplateGroups("no line end"));
}

TEST_F(TemplatesTest, MainWindowBoxesSelectWholeNamesWithExactCase) {
    home.write("Templates/Figure.CFG",
               "Skin\r\n{\r\nSkin\r\nEyeBall\r\nnothere\r\n}\r\nEmpty\r\n{\r\n}\r\nCase\r\n{\r\n"
               "skinbody\r\n}\r\n");
    home.write("Templates/notes.txt", "");
    ConnectTemplates(session);
    session.RefreshTemplateList();
    EXPECT_TRUE(FolderExists(home.file("Cache")));
    ASSERT_EQ(session.View.Combo1, Names{"Figure"});
    EXPECT_FALSE(session.View.TemplateLoaded);

    session.View.lstMaterials = {"SkinBody", "SkinHead", "EyeBall", "Skin"};
    session.View.Combo1Index = 0;
    session.LoadTemplateGroups(0);
    EXPECT_EQ(session.View.Combo2, (Names{"Skin", "Empty", "Case"}));
    EXPECT_TRUE(session.View.TemplateLoaded);
    // {group row, the selected material rows}: the shown material follows the selection.
    const std::pair<int, std::vector<int>> groups[] = {{0, {2, 3}}, {1, {}}, {2, {}}};
    for (const auto &[row, selected] : groups) {
        ASSERT_TRUE(SelectTemplateGroup(session, row));
        EXPECT_EQ(MaterialPageOf(session).SelectedMaterials, selected) << row;
        EXPECT_EQ(session.View.Combo2Index, row);
    }
    EXPECT_EQ(session.View.lstMaterialsIndex, 2);

    // Edit keeps the open file's name; Delete asks first.
    session.FileName = "open.cr2";
    std::string seen;
    cmdEditTemplate_Click(session, [&] { seen = session.FileName; });
    EXPECT_EQ(seen, TemplatePath("Figure"));
    EXPECT_TRUE(session.FileName == "open.cr2" && !session.CommandLineOpen);
    ui.nextAnswer(MsgResult::No);
    cmdDelTemplate_Click(session);
    EXPECT_EQ(ui.messages().back().Text, "Are you sure you want to delete template\r\nFigure?");
    EXPECT_EQ(ui.messages().back().Title, "Delete template?");
    ui.nextAnswer(MsgResult::Yes);
    cmdDelTemplate_Click(session);
    EXPECT_TRUE(session.View.Combo1.empty());
    EXPECT_FALSE(FileExists(home.file("Templates/Figure.CFG")));
}

TEST_F(TemplatesTest, AFreshOpenRefreshesTheListAndPicksTheDefault) {
    ConnectTemplates(session);
    home.write("Templates/Skin.cfg", "Skin\r\n{\r\nSkin\r\n}\r\n");
    settings.DefaultTemplate = "skin";
    session.PoserFileKind = KindPZ2;
    ui.nextFile(home.write("a.pz2", test::ReadTestData("gui/demo.pz2")));
    OpenFile(session);
    ASSERT_FALSE(session.OpenFailed);
    EXPECT_EQ(std::tie(session.View.Combo1, session.View.Combo1Index, session.View.Combo2),
              std::tuple(Names{"Skin"}, 0, Names{"Skin"}));
}

} // namespace
} // namespace gelvane
