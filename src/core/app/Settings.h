#pragma once
// The user's preferences, kept in Settings.ini in the state folder. Loaded once
// at start-up and shared by reference; folder values are real paths or "none".
#include <optional>
#include <string>
#include <string_view>

namespace gelvane {

class Interaction;

struct Settings {
    // [Folders]
    std::string CR2Folder = "none";
    std::string PZ2Folder = "none";
    std::string PP2Folder = "none";
    std::string HR2Folder = "none";
    std::string CM2Folder = "none";
    std::string LT2Folder = "none";
    std::string FC2Folder = "none";
    std::string HD2Folder = "none";
    std::string SaveFolder = "none";
    std::string MapFolder = "none";
    std::string PoserFolder = "none";
    // [General]
    bool CdlgThumb = true;
    bool MapThumb = true;
    bool MainThumb = true;
    bool AutoCorrect = true;
    bool SetNoMap = false;
    bool SetPoserVersion = true;
    bool SetP5Version = true;
    std::string PVersionNumber = "4.01";
    std::string P5VersionNumber = "4.01";
    bool SaveAsP4 = true;
    bool FileSystemDOS = true;
    bool ReportTime = true;
    std::string DefaultTemplate;
    bool DisableProperties = true;

    // The folder setting of a file kind (0 CR2 ... 7 LT2).
    const std::string &FolderOfKind(int kind) const;
};

// The default of a folder entry ("CR2" ... "Save", "Map") under Poser's folder,
// "\Runtime\..." form; empty for other keys.
const char *DerivedFolder(std::string_view key);

// The state folder's Settings.ini path.
std::string SettingsFilePath();

// The profile-string calls on a settings file. Every caller passes an empty default,
// so a missing key and an empty value read alike; values are cut at 259 characters.
std::string ReadIni(const std::string &section, const std::string &key, const std::string &fileName,
                    const std::string &defaultValue);
// True when written. With `allowNull` an empty key removes the section and an
// empty value removes the entry; without it the texts are written as they are.
bool WriteIni(const std::string &section, const std::string &key, const std::string &value, const std::string &fileName,
              bool allowNull);

// Normalises Settings.ini (creating it when missing) and returns the settings;
// the first-run question about Poser's folder goes through `ui`. Failures of single
// steps are ignored: that setting keeps its fallback.
Settings LoadSettings(Interaction &ui);
// The same, with the folder that the system names as Poser's. No registry names it
// on this system, so the plain form passes nothing; tests pass a folder.
Settings LoadSettings(Interaction &ui, const std::optional<std::string> &registeredPoserFolder);

// Writes every setting back, in the fixed order of the file.
void SaveSettings(const Settings &settings);

} // namespace gelvane
