#include "core/app/Preferences.h"

#include "core/app/Associations.h"
#include "core/app/SettingsFile.h"
#include "core/maps/MapPaths.h"
#include "core/materials/Templates.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"

namespace gelvane {

const std::array<FolderRow, 11> &FolderRows() {
    static const std::array<FolderRow, 11> rows{{
        {"Character Folder", "Path of the default Characters (CR2) folder", "Browse the default Character folder",
         "Default Character folder", "CR2", &Settings::CR2Folder},
        {"Pose Folder", "Path of the default Poses (PZ2) folder", "Browse the default Pose folder",
         "Default Pose folder", "PZ2", &Settings::PZ2Folder},
        {"Prop Folder", "Path of the default Props (PP2) folder", "Browse the default Prop folder",
         "Default Prop folder", "PP2", &Settings::PP2Folder},
        {"Hair Folder", "Path of the default Hair (HR2) folder", "Browse the default Hair folder",
         "Default Hair folder", "HR2", &Settings::HR2Folder},
        {"Save Folder", "Path of the default Save folder", "Browse the default Save folder", "Default Save folder",
         "Save", &Settings::SaveFolder},
        {"Map Folder", "Path of the default Maps folder", "Browse the default Maps folder", "Default Map folder", "Map",
         &Settings::MapFolder},
        {"Poser Folder", "Path of the Poser folder", "Browse Poser application's folder", "Poser application folder",
         "Poser", &Settings::PoserFolder},
        {"Camera Folder", "Path of the default Cameras (CM2) folder", "Browse the default Camera folder",
         "Default Camera folder", "CM2", &Settings::CM2Folder},
        {"Light Folder", "Path of the default Lights (LT2) folder", "Browse the default Light folder",
         "Default Light folder", "LT2", &Settings::LT2Folder},
        {"Hand Folder", "Path of the default Hands (HD2) folder", "Browse the default Hand folder",
         "Default Hand folder", "HD2", &Settings::HD2Folder},
        {"Face Folder", "Path of the default Faces (FC2) folder", "Browse the default Face folder",
         "Default Face folder", "FC2", &Settings::FC2Folder},
    }};
    return rows;
}

AssociationCalls DesktopAssociations() {
    return {
        [](const std::string &extension) { return IsAssociated(extension); },
        [](const std::string &extension, bool unassociate) { Associate(extension, ExecutablePath(), unassociate); },
        [] { RefreshShellIcons(); },
    };
}

PreferencesForm LoadPreferences(const Settings &s, const AssociationCalls &calls) {
    PreferencesForm form;
    form.cmbTemplate = TemplateNames();
    for (size_t i = 0; i < FolderRows().size(); ++i)
        form.TXT[i] = s.*FolderRows()[i].Setting;
    for (size_t i = 0; i < form.chkAs.size(); ++i)
        form.chkAs[i] = form.chkAsStart[i] = calls.IsAssociated && calls.IsAssociated(AssociationKinds()[i].Extension);
    form.chkThumbDialog = s.CdlgThumb;
    form.chkThumbMap = s.MapThumb;
    form.chkThumbMain = s.MainThumb;
    form.chkAutoCorrect = s.AutoCorrect;
    form.chkNOMAP = s.SetNoMap;
    form.chkVersion = s.SetPoserVersion;
    form.chkP5Version = s.SetP5Version;
    form.txtVersion = s.PVersionNumber;
    form.txtP5Version = s.P5VersionNumber;
    form.optPoser4 = s.SaveAsP4;
    form.optDOS = s.FileSystemDOS;
    form.chkReportTime = s.ReportTime;
    form.chkDisableProperties = s.DisableProperties;
    if (!s.DefaultTemplate.empty() && FileExists(TemplatePath(s.DefaultTemplate)))
        for (size_t row = 0; row < form.cmbTemplate.size(); ++row)
            if (EqualsNoCase(form.cmbTemplate[row], s.DefaultTemplate)) {
                form.cmbTemplateIndex = static_cast<int>(row);
                break;
            }
    return form;
}

void Browse_Click(PreferencesForm &form, int row, const Settings &s, Interaction &ui) {
    if (row < 0 || row >= static_cast<int>(FolderRows().size()))
        return;
    std::string start = "/"; // the top of the file system stands for "My Computer"
    if (IsExistingFolder(form.TXT[static_cast<size_t>(row)]))
        start = form.TXT[static_cast<size_t>(row)];
    else if (IsExistingFolder(s.PoserFolder))
        start = s.PoserFolder;
    const auto chosen =
        ui.ChooseFolder(StripTrailingBackslash(start),
                        std::string("Select your ") + FolderRows()[static_cast<size_t>(row)].ChooserName);
    if (!chosen || !IsExistingFolder(*chosen))
        return;
    form.TXT[static_cast<size_t>(row)] = *chosen;
    if (row != kPoserFolderRow)
        return;
    for (size_t i = 0; i < FolderRows().size(); ++i) {
        if (static_cast<int>(i) == kPoserFolderRow || IsExistingFolder(form.TXT[i]))
            continue;
        if (const auto derived = ResolvePath(JoinPath(*chosen, DerivedFolder(FolderRows()[i].Key)));
            derived && FolderExists(*derived))
            form.TXT[i] = *derived;
    }
}

void chkThumbMain_Click(const PreferencesForm &form, const Settings &s, Interaction &ui) {
    if (form.chkThumbMain != s.MainThumb)
        ui.MessageBox(std::string("Changes will take effect the next") + "\r\n" + "time you start Gelvane.");
}

void cmdOK_Click(const PreferencesForm &form, Settings &s, ViewState &view, const AssociationCalls &calls,
                 Interaction &ui) {
    for (size_t i = 0; i < FolderRows().size(); ++i)
        if (!form.TXT[i].empty() && form.TXT[i] != "none")
            // A typed Poser folder ("~/...", a separator at the end) is stored as loading
            // Settings.ini would read it.
            s.*FolderRows()[i].Setting = static_cast<int>(i) == kPoserFolderRow ? UserFolderPath(form.TXT[i])
                                                                                : form.TXT[i];

    bool associated = false;
    for (size_t i = 0; i < form.chkAs.size(); ++i) {
        if (form.chkAs[i] == form.chkAsStart[i])
            continue;
        if (calls.Associate)
            calls.Associate(AssociationKinds()[i].Extension, !form.chkAs[i]);
        associated = true;
    }
    if (associated && calls.RefreshShellIcons)
        calls.RefreshShellIcons();

    s.CdlgThumb = form.chkThumbDialog;
    s.MapThumb = form.chkThumbMap;
    s.MainThumb = form.chkThumbMain;
    s.AutoCorrect = form.chkAutoCorrect;
    s.SetNoMap = form.chkNOMAP;
    s.SetPoserVersion = form.chkVersion;
    s.SetP5Version = form.chkP5Version;
    s.ReportTime = form.chkReportTime;
    s.DisableProperties = form.chkDisableProperties;
    s.PVersionNumber = form.txtVersion;
    s.P5VersionNumber = form.txtP5Version;
    s.SaveAsP4 = form.optPoser4;
    s.FileSystemDOS = form.optDOS;
    if (!form.cmbTemplate.empty() && form.cmbTemplateIndex >= 0 &&
        form.cmbTemplateIndex < static_cast<int>(form.cmbTemplate.size()))
        s.DefaultTemplate = form.cmbTemplate[static_cast<size_t>(form.cmbTemplateIndex)];
    try {
        SaveSettings(s);
    } catch (const SaveFailure &failure) {
        ui.MessageBox(failure.Description + "\r\n" + "The preferences hold until Gelvane is closed.", kProgramTitle,
                      MsgIcon::Exclamation);
    }
    if (!s.PoserFolder.empty() && s.PoserFolder != "none")
        view.mnuPoserEnabled = true;
}

} // namespace gelvane
