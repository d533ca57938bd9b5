#pragma once
// The user's preferences. Loaded once at start-up (see core/app/SettingsFile.h) and
// shared by reference; folder values are real paths or "none".
#include <string>

namespace gelvane {

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

} // namespace gelvane
