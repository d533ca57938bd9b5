#pragma once
// frmSettings, "Gelvane preferences", without widgets: what its boxes hold, how
// Browse fills them, and what OK stores. Nothing reaches the settings before OK;
// Cancel simply drops the form.
#include "core/model/Settings.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace gelvane {

class Interaction;
struct ViewState;

// One row of the "Default Folders" tab: TXT(i), Browse(i) and their label.
struct FolderRow {
    const char *Label;
    const char *BoxTip;
    const char *ButtonTip;
    const char *ChooserName; // the chooser's title is "Select your " + this
    const char *Key;         // the entry in Settings.ini
    std::string Settings::*Setting;
};
const std::array<FolderRow, 11> &FolderRows();
inline constexpr int kPoserFolderRow = 6;

// The association calls; the window passes the real ones, tests may count them.
struct AssociationCalls {
    std::function<bool(const std::string &extension)> IsAssociated;
    std::function<void(const std::string &extension, bool unassociate)> Associate;
    std::function<void()> RefreshShellIcons;
};
// The calls that register this program with the desktop.
AssociationCalls DesktopAssociations();

struct PreferencesForm {
    std::array<std::string, 11> TXT;
    std::array<bool, 8> chkAs{};
    std::array<bool, 8> chkAsStart{}; // what the boxes showed on opening
    bool chkThumbDialog = false;
    bool chkThumbMap = false;
    bool chkThumbMain = false;
    bool chkAutoCorrect = false;
    bool chkNOMAP = false;
    bool chkVersion = false;
    bool chkP5Version = false;
    std::string txtVersion;
    std::string txtP5Version;
    bool optPoser4 = true;
    bool optDOS = true;
    bool chkReportTime = false;
    bool chkDisableProperties = false;
    std::vector<std::string> cmbTemplate;
    int cmbTemplateIndex = -1;

    // Enabling rules: "If map file isn't found" only with automatic correction, each
    // version box with its check box, the template box when there are templates.
    bool chkNOMAPEnabled() const { return chkAutoCorrect; }
    bool txtVersionEnabled() const { return chkVersion; }
    bool txtP5VersionEnabled() const { return chkP5Version; }
    bool cmbTemplateEnabled() const { return !cmbTemplate.empty(); }
};

// Opening the window: the template list (creating the state folders), the folder
// boxes, the association boxes as the desktop reports them, the options.
PreferencesForm LoadPreferences(const Settings &settings, const AssociationCalls &calls);
// Browse(i): the folder chooser; Poser's folder also fills the other boxes that
// don't hold a folder with their defaults under it, where those exist.
void Browse_Click(PreferencesForm &form, int row, const Settings &settings, Interaction &ui);
// The main-window thumbnail box changed: a notice when it differs from the setting.
void chkThumbMain_Click(const PreferencesForm &form, const Settings &settings, Interaction &ui);
// OK: stores the form into `settings`, runs the associations that changed, writes
// Settings.ini whole, and enables "Run Poser" when Poser's folder is set. A file that
// can't be written is said in a box; the settings then hold for this run only.
void cmdOK_Click(const PreferencesForm &form, Settings &settings, ViewState &view, const AssociationCalls &calls,
                 Interaction &ui);

} // namespace gelvane
