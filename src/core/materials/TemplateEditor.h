#pragma once
// frmTemplates, "Selection template creator", without widgets: its lists, the
// enabled states of its buttons, its status line and the groups being edited.
// The window reads its selections, calls one of these, and redraws from here.
#include <string>
#include <vector>

namespace gelvane {

class Session;

class TemplateEditor {
public:
    explicit TemplateEditor(Session &session);

    // Opening: the objects of the open file, the first chosen; a template named by
    // the session (Edit in the main window) is opened at once.
    void Form_Load();
    // Closing: the main window's template list is refreshed.
    void Form_Unload();

    void Combo1_Click(int row);
    void cmbGroups_Click(int row);
    void cmdCreate_Click();
    void cmdDelete_Click();
    // `selected`: the selected rows of lstMaterials, ascending (also a double-click).
    void cmdMove_Click(const std::vector<int> &selected);
    // `selected`: the selected rows of lstMatInGroup (also a double-click).
    void cmdDeleteMaterials_Click(const std::vector<int> &selected);
    void mnuOpen_Click();
    void mnuSaveAs_Click();

    // What the window shows.
    std::vector<std::string> Combo1; // objects
    int Combo1Index = -1;
    std::vector<std::string> lstMaterials;
    std::vector<std::string> cmbGroups;
    int cmbGroupsIndex = -1;
    std::vector<std::string> lstMatInGroup;
    bool cmdDeleteEnabled = false;
    bool cmdMoveEnabled = false;
    bool cmdDeleteMaterialsEnabled = false;
    bool mnuSaveAsEnabled = false;
    std::string StatusText;

    // One element for each row of cmbGroups: its members, each in double quotes,
    // one behind the other.
    std::vector<std::string> GroupMembers;
    std::string NewGroupName;
    bool LoadingTemplate = false;

private:
    void ShowGroup();
    std::string *SelectedMembers();

    Session &m_session;
};

} // namespace gelvane
