#include "core/materials/TemplateEditor.h"

#include "core/maps/MapPaths.h"
#include "core/materials/Templates.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"

#include <algorithm>

namespace gelvane {

namespace {

std::string Quoted(const std::string &name) {
    return "\"" + name + "\"";
}

} // namespace

TemplateEditor::TemplateEditor(Session &session) : m_session(session) {}

void TemplateEditor::Form_Load() {
    const auto &figures = m_session.Figures;
    if (!figures.empty() && !figures[0].Name.empty()) {
        for (const Figure &figure : figures)
            Combo1.push_back(figure.Name);
        Combo1_Click(0);
    }
    if (m_session.CommandLineOpen)
        mnuOpen_Click();
}

void TemplateEditor::Form_Unload() {
    RefreshTemplateList(m_session);
    GroupMembers.clear();
}

void TemplateEditor::Combo1_Click(int row) {
    if (row < 0 || row >= static_cast<int>(Combo1.size()) || row >= static_cast<int>(m_session.Figures.size()))
        return;
    Combo1Index = row;
    lstMaterials.clear();
    for (const Material &material : m_session.Figures[static_cast<size_t>(row)].Materials)
        lstMaterials.push_back(material.Name);
}

std::string *TemplateEditor::SelectedMembers() {
    if (cmbGroupsIndex < 0 || cmbGroupsIndex >= static_cast<int>(GroupMembers.size()))
        return nullptr;
    return &GroupMembers[static_cast<size_t>(cmbGroupsIndex)];
}

void TemplateEditor::cmbGroups_Click(int row) {
    if (row < 0 || row >= static_cast<int>(cmbGroups.size()))
        return;
    cmbGroupsIndex = row;
    ShowGroup();
}

void TemplateEditor::ShowGroup() {
    lstMatInGroup.clear();
    const std::string *members = SelectedMembers();
    if (!members)
        return;
    std::string rest = *members;
    while (true) {
        const size_t open = rest.find('"');
        if (open == std::string::npos)
            break;
        const size_t close = rest.find('"', open + 1);
        if (close == std::string::npos)
            break;
        const std::string name = rest.substr(open + 1, close - open - 1);
        lstMatInGroup.push_back(name);
        rest = Replace(rest, Quoted(name), "");
    }
}

void TemplateEditor::cmdCreate_Click() {
    std::string name;
    if (LoadingTemplate && !NewGroupName.empty()) {
        name = NewGroupName;
    } else {
        name = m_session.ui().InputBox("Enter selection group's name", "Create new group").value_or("");
        if (name.empty())
            return;
    }
    if (std::any_of(cmbGroups.begin(), cmbGroups.end(),
                    [&](const std::string &row) { return EqualsNoCase(row, name); })) {
        m_session.ui().MessageBox("Group with that name already exists", kProgramTitle, MsgIcon::Exclamation);
        return;
    }
    cmbGroups.push_back(name);
    GroupMembers.emplace_back();
    cmbGroups_Click(static_cast<int>(cmbGroups.size()) - 1);
    cmdMoveEnabled = mnuSaveAsEnabled = cmdDeleteEnabled = true;
}

void TemplateEditor::cmdDelete_Click() {
    if (cmbGroupsIndex < 0 || cmbGroupsIndex >= static_cast<int>(cmbGroups.size()))
        return;
    // Exactly one member list stays for each group row.
    cmbGroups.erase(cmbGroups.begin() + cmbGroupsIndex);
    GroupMembers.erase(GroupMembers.begin() + cmbGroupsIndex);
    cmbGroupsIndex = -1;
    if (!cmbGroups.empty()) {
        cmbGroups_Click(0);
    } else {
        lstMatInGroup.clear();
        cmdDeleteEnabled = cmdMoveEnabled = cmdDeleteMaterialsEnabled = mnuSaveAsEnabled = false;
    }
}

void TemplateEditor::cmdMove_Click(const std::vector<int> &selected) {
    std::string *members = SelectedMembers();
    if (lstMaterials.empty() || cmbGroups.empty() || !members)
        return;
    for (const int row : selected) {
        if (row < 0 || row >= static_cast<int>(lstMaterials.size()))
            continue;
        const std::string quoted = Quoted(lstMaterials[static_cast<size_t>(row)]);
        if (members->find(quoted) == std::string::npos)
            *members += quoted;
    }
    ShowGroup();
    cmdDeleteMaterialsEnabled = true;
}

void TemplateEditor::cmdDeleteMaterials_Click(const std::vector<int> &selected) {
    if (!lstMatInGroup.empty()) {
        if (std::string *members = SelectedMembers()) {
            for (const int row : selected)
                if (row >= 0 && row < static_cast<int>(lstMatInGroup.size()))
                    *members = Replace(*members, Quoted(lstMatInGroup[static_cast<size_t>(row)]), "");
        }
        ShowGroup();
    }
    if (lstMatInGroup.empty())
        cmdDeleteMaterialsEnabled = false;
}

void TemplateEditor::mnuOpen_Click() {
    std::string path;
    if (m_session.CommandLineOpen) {
        path = m_session.FileName;
    } else {
        FileDialogRequest request;
        request.Title = "Open selection template";
        request.DefaultExt = "cfg";
        request.Filter = "Selection templates|*.cfg|All files|*.*";
        request.InitialDir = TemplatesFolder();
        request.Flags = kOpenDialogFlags;
        const auto chosen = m_session.ui().ChooseFile(request);
        if (!chosen)
            return;
        path = *chosen;
    }
    m_session.CommandLineOpen = false;
    StatusText = "Current template: " + MapFileName(path);

    LoadingTemplate = true;
    for (int row = static_cast<int>(cmbGroups.size()) - 1; row >= 0; --row) {
        cmbGroupsIndex = row;
        cmdDelete_Click();
    }
    std::optional<std::vector<TemplateGroup>> groups;
    try {
        groups = ReadTemplateGroups(ReadFileBytes(path));
    } catch (const Failure &) {
    }
    if (groups) {
        for (const TemplateGroup &group : *groups) {
            NewGroupName = group.Name;
            const size_t before = cmbGroups.size();
            cmdCreate_Click();
            if (cmbGroups.size() == before)
                continue; // refused: a group of that name stands already
            for (const std::string &member : group.Members)
                GroupMembers.back() += Quoted(member);
        }
    }
    LoadingTemplate = false;
    NewGroupName.clear();
    ShowGroup();
    cmdDeleteMaterialsEnabled = true;
}

void TemplateEditor::mnuSaveAs_Click() {
    Interaction &ui = m_session.ui();
    std::string name = ui.InputBox("Enter template's name", "Save template as...").value_or("");
    if (name.empty())
        return;
    if (name.find_first_of("\"/\\*?:<>|") != std::string::npos) {
        ui.MessageBox(std::string("The name cannot contain any of the following characters:") + "\r\n" + "\\/:*?\"<>|");
        return;
    }
    if (name.size() > 4 && LCase(Right(name, 4)) == ".cfg")
        name.resize(name.size() - 4);
    const std::string path = TemplatePath(name);
    if (FileExists(path) && ui.MessageBox("A template with that name already exists. Overwrite?", kProgramTitle,
                                          MsgIcon::None, MsgButtons::YesNo) != MsgResult::Yes)
        return;

    std::vector<TemplateGroup> groups;
    for (size_t row = 0; row < cmbGroups.size(); ++row) {
        cmbGroups_Click(static_cast<int>(row));
        groups.push_back({cmbGroups[row], lstMatInGroup});
    }
    try {
        CreateStateFolders();
        WriteFileAtomic(path, TemplateText(groups));
    } catch (const Failure &failure) {
        ui.MessageBox(failure.Description + ", " + std::to_string(failure.Number));
        return;
    }
    StatusText = "Current template: " + name + ".cfg";
    ui.MessageBox("Template saved succesfully");
}

} // namespace gelvane
