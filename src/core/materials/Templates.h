#pragma once
// Selection templates: small files in the state folder's "Templates" that sort
// material names into named groups, and the template boxes of the material page
// (Combo1 lists the templates, Combo2 the groups of the chosen one).
//
// A template file holds, for each group in order, the group's name, "{", one
// member a line and "}", every line ended by "\r\n" whatever the output line
// ends are; the text is single-byte and there is no header.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

class Session;

struct TemplateGroup {
    std::string Name;
    std::vector<std::string> Members;
};

// The state folder's "Templates", and the file of template `name` (no extension) in it.
std::string TemplatesFolder();
std::string TemplatePath(const std::string &name);
// Creates "Templates" and "Cache" in the state folder when missing, one level deep.
void CreateStateFolders();
// The templates: the ".cfg" files of "Templates" (extension compared in lower case)
// without their last four characters, in the order the folder lists them. Creates
// the state folders first.
std::vector<std::string> TemplateNames();

// The groups of a template's text, each with the members found from its own header
// on. Reading ends quietly where the next group can't be found behind the one before;
// an empty group has no members. Nothing when the text has no line end at all.
std::optional<std::vector<TemplateGroup>> ReadTemplateGroups(std::string_view text);
// The bytes of a template file.
std::string TemplateText(const std::vector<TemplateGroup> &groups);

// Fills Combo1 with the templates and empties Combo2; no template is loaded after it.
void RefreshTemplateList(Session &session);
// Loads the groups of the template at Combo1 row `row` into Combo2. A file that has
// gone or has no line ends leaves Combo2 empty and the template unloaded.
void LoadTemplateGroups(Session &session, int row);
// Choosing Combo2 row `row` selects exactly the rows of the material list that are
// members of the group (whole names, exact case), as a click on the list would (see
// lstMaterials_Click). False when the template can't be read any more; then no row changes.
bool SelectTemplateGroup(Session &session, int row);
// "Edit": runs `showEditor` (frmTemplates, modal) with FileName naming the chosen
// template and CommandLineOpen set, then clears CommandLineOpen and puts FileName back.
void cmdEditTemplate_Click(Session &session, const std::function<void()> &showEditor);
// "Delete": asks, then deletes the chosen template's file and refreshes the list.
void cmdDelTemplate_Click(Session &session);
// Gives the session its template hooks, which a fresh open and the main window call.
void ConnectTemplates(Session &session);

} // namespace gelvane
