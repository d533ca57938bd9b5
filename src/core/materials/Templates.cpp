#include "core/materials/Templates.h"

#include "core/materials/MaterialPageState.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace gelvane {

namespace {

constexpr std::string_view kCrLf = "\r\n";

// The members of the group whose name line starts at `header`: the lines between
// its "{" line and the first "}" behind them. A "}" right behind the "{" line (an
// empty group), or none at all, gives no members.
std::vector<std::string> MembersAt(std::string_view text, size_t header, size_t nameLength) {
    std::vector<std::string> members;
    const size_t start = header + nameLength + 5; // behind name, "\r\n{", "\r\n"
    if (start > text.size())
        return members;
    const size_t close = text.find('}', start);
    if (close == std::string_view::npos || close < start + 2)
        return members;
    const std::string_view block = text.substr(start, close - start - 2);
    size_t from = 0;
    while (true) {
        const size_t end = block.find(kCrLf, from);
        members.emplace_back(block.substr(from, end == std::string_view::npos ? std::string_view::npos : end - from));
        if (end == std::string_view::npos)
            break;
        from = end + 2;
    }
    return members;
}

const std::string *ChosenTemplate(const Session &session) {
    const auto &rows = session.View.Combo1;
    const int row = session.View.Combo1Index;
    return row >= 0 && row < static_cast<int>(rows.size()) ? &rows[static_cast<size_t>(row)] : nullptr;
}

} // namespace

std::string TemplatesFolder() {
    return JoinPath(StateFolder(), "Templates");
}

std::string TemplatePath(const std::string &name) {
    return JoinPath(TemplatesFolder(), name + ".cfg");
}

void CreateStateFolders() {
    const std::string state = StateFolder();
    for (const char *name : {"Templates", "Cache"}) {
        const std::string folder = JoinPath(state, name);
        if (!FolderExists(folder))
            CreateFolder(folder);
    }
}

std::vector<std::string> TemplateNames() {
    CreateStateFolders();
    std::vector<std::string> names;
    std::error_code ec;
    for (std::filesystem::directory_iterator entry(TemplatesFolder(), ec), end; !ec && entry != end;
         entry.increment(ec)) {
        const std::string file = entry->path().filename().string();
        if (file.size() >= 4 && LCase(Right(file, 4)) == ".cfg")
            names.push_back(file.substr(0, file.size() - 4));
    }
    return names;
}

std::optional<std::vector<TemplateGroup>> ReadTemplateGroups(std::string_view text) {
    const size_t firstEnd = text.find(kCrLf);
    if (firstEnd == std::string_view::npos)
        return std::nullopt;
    std::vector<TemplateGroup> groups{{std::string(text.substr(0, firstEnd)), {}}};
    std::vector<size_t> headers{0};

    const size_t lastClose = text.rfind('}');
    const std::string_view body = text.substr(0, lastClose == std::string_view::npos ? 0 : lastClose);
    size_t p = 0;
    while (body.find('}', p) != std::string_view::npos) {
        const size_t close = body.find("}\r\n", p);
        if (close == std::string_view::npos)
            break;
        const size_t nameStart = close + 3;
        const size_t nameEnd = body.find(kCrLf, nameStart);
        if (nameEnd == std::string_view::npos)
            break;
        const std::string name(body.substr(nameStart, nameEnd - nameStart));
        // Searched from this group's own line on, so that a name which ends an
        // earlier one (or an empty name) can't lead back to an earlier group.
        const size_t header = body.find(name + "\r\n{", nameStart);
        if (header == std::string_view::npos)
            break;
        groups.push_back({name, {}});
        headers.push_back(header);
        p = header + name.size() + 3;
    }
    for (size_t i = 0; i < groups.size(); ++i)
        groups[i].Members = MembersAt(text, headers[i], groups[i].Name.size());
    return groups;
}

std::string TemplateText(const std::vector<TemplateGroup> &groups) {
    std::string text;
    for (const TemplateGroup &group : groups) {
        text += group.Name + "\r\n{\r\n";
        for (const std::string &member : group.Members)
            text += member + "\r\n";
        text += "}\r\n";
    }
    return text;
}

void RefreshTemplateList(Session &session) {
    ViewState &view = session.View;
    view.Combo1.clear();
    view.Combo1Index = -1;
    view.Combo2.clear();
    view.Combo2Index = -1;
    view.TemplateLoaded = false;
    view.Combo1 = TemplateNames();
}

void LoadTemplateGroups(Session &session, int row) {
    ViewState &view = session.View;
    view.Combo2.clear();
    view.Combo2Index = -1;
    if (row < 0 || row >= static_cast<int>(view.Combo1.size()))
        return;
    std::optional<std::vector<TemplateGroup>> groups;
    try {
        groups = ReadTemplateGroups(ReadFileBytes(TemplatePath(view.Combo1[static_cast<size_t>(row)])));
    } catch (const Failure &) {
    }
    if (!groups)
        return;
    for (const TemplateGroup &group : *groups)
        view.Combo2.push_back(group.Name);
    view.TemplateLoaded = true;
}

bool SelectTemplateGroup(Session &session, int row) {
    ViewState &view = session.View;
    const std::string *chosen = ChosenTemplate(session);
    if (!chosen || row < 0 || row >= static_cast<int>(view.Combo2.size()))
        return false;
    view.Combo2Index = row;
    std::optional<std::vector<TemplateGroup>> groups;
    try {
        groups = ReadTemplateGroups(ReadFileBytes(TemplatePath(*chosen)));
    } catch (const Failure &) {
    }
    if (!groups)
        return false;
    // The group of this row, unless the file has changed since; then the first of that name.
    const std::string &name = view.Combo2[static_cast<size_t>(row)];
    const TemplateGroup *group = nullptr;
    if (row < static_cast<int>(groups->size()) && (*groups)[static_cast<size_t>(row)].Name == name)
        group = &(*groups)[static_cast<size_t>(row)];
    else if (const auto it =
                 std::find_if(groups->begin(), groups->end(), [&](const TemplateGroup &g) { return g.Name == name; });
             it != groups->end())
        group = &*it;
    if (!group)
        return false;
    std::vector<int> selected;
    for (size_t i = 0; i < view.lstMaterials.size(); ++i)
        if (std::find(group->Members.begin(), group->Members.end(), view.lstMaterials[i]) != group->Members.end())
            selected.push_back(static_cast<int>(i));
    lstMaterials_Click(session, selected, view.lstMaterialsIndex);
    return true;
}

void cmdEditTemplate_Click(Session &session, const std::function<void()> &showEditor) {
    const std::string *chosen = ChosenTemplate(session);
    if (!chosen)
        return;
    const std::string kept = session.FileName;
    session.CommandLineOpen = true;
    session.FileName = TemplatePath(*chosen);
    showEditor();
    session.CommandLineOpen = false;
    session.FileName = kept;
}

void cmdDelTemplate_Click(Session &session) {
    const std::string *chosen = ChosenTemplate(session);
    if (!chosen)
        return;
    if (session.ui().MessageBox("Are you sure you want to delete template" + std::string("\r\n") + *chosen + "?",
                                "Delete template?", MsgIcon::None, MsgButtons::YesNo) != MsgResult::Yes)
        return;
    if (const auto file = ResolvePath(TemplatePath(*chosen))) {
        std::error_code ec;
        std::filesystem::remove(*file, ec);
    }
    RefreshTemplateList(session);
}

void ConnectTemplates(Session &session) {
    session.RefreshTemplateList = [&session] { RefreshTemplateList(session); };
    session.LoadTemplateGroups = [&session](int row) { LoadTemplateGroups(session, row); };
}

} // namespace gelvane
