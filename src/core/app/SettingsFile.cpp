#include "core/app/SettingsFile.h"

#include "core/app/PoserSearch.h"
#include "core/model/Text.h"
#include "core/platform/FileVersion.h"
#include "core/platform/Interaction.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"
#include "core/platform/ProfileFile.h"

#include <array>
#include <exception>
#include <utility>

namespace gelvane {

std::string SettingsFilePath() {
    return JoinPath(StateFolder(), "Settings.ini");
}

std::string ReadIni(const std::string &section, const std::string &key, const std::string &fileName,
                    const std::string &defaultValue) {
    return ReadProfileString(section, key, fileName, defaultValue, 260);
}

bool WriteIni(const std::string &section, const std::string &key, const std::string &value, const std::string &fileName,
              bool allowNull) {
    const std::string_view keyView(key), valueView(value);
    if (allowNull && section.empty())
        return false;
    const std::string_view *keyArg = allowNull && key.empty() ? nullptr : &keyView;
    const std::string_view *valueArg = allowNull && value.empty() ? nullptr : &valueView;
    return WriteProfileString(section, keyArg, valueArg, fileName);
}

bool IsExistingFolder(const std::string &value) {
    return !value.empty() && value != "none" && FolderExists(value);
}

namespace {

constexpr const char *kFolders = "Folders";
constexpr const char *kGeneral = "General";

// A step that fails leaves its setting as it was; loading goes on.
template <typename Step> void IgnoringFailures(Step &&step) {
    try {
        step();
    } catch (const std::exception &) {
    }
}

bool ParseBool(const std::string &text) {
    return LCase(text) == "true";
}

const char *BoolText(bool value) {
    return value ? "True" : "False";
}

// "5.0.3.1" gives "5.0"; a text with at most one "." stays as it is.
std::string ShortVersion(const std::string &version) {
    const size_t first = InStr(version, ".");
    if (first == InStrRev(version, "."))
        return version;
    const size_t second = InStr(version, ".", first + 1);
    return std::string(Left(version, static_cast<long long>(second) - 1));
}

constexpr std::array<std::pair<const char *, const char *>, 10> kDerived{{
    {"CR2", "\\Runtime\\Libraries\\Character"},
    {"PZ2", "\\Runtime\\Libraries\\Pose"},
    {"PP2", "\\Runtime\\Libraries\\Props"},
    {"HR2", "\\Runtime\\Libraries\\Hair"},
    {"CM2", "\\Runtime\\Libraries\\Camera"},
    {"FC2", "\\Runtime\\Libraries\\Face"},
    {"HD2", "\\Runtime\\Libraries\\Hand"},
    {"LT2", "\\Runtime\\Libraries\\Light"},
    {"Map", "\\Runtime\\Textures"},
    {"Save", "\\Runtime\\Libraries\\Pose"},
}};

} // namespace

const char *DerivedFolder(std::string_view key) {
    for (const auto &[name, derived] : kDerived)
        if (key == name)
            return derived;
    return "";
}

Settings LoadSettings(Interaction &ui) {
    return LoadSettings(ui, PoserFinder());
}

Settings LoadSettings(Interaction &ui, const PoserFinder &findPoser) {
    Settings s;
    const std::string file = SettingsFilePath();
    const auto read = [&](const char *section, const char *key) { return ReadIni(section, key, file, ""); };
    const auto write = [&](const char *section, const char *key, const std::string &value) {
        WriteIni(section, key, value, file, false);
    };

    IgnoringFailures([&] {
        if (!FileExists(file))
            WriteFileAtomic(file, "[Folders]\r\n");
    });

    std::string poser;
    IgnoringFailures([&] {
        const std::string stored = read(kFolders, "Poser");
        const bool none = stored.empty() || LCase(stored) == "none";
        if (const std::string folder = none ? std::string() : UserFolderPath(stored); IsExistingFolder(folder)) {
            poser = folder;
            return;
        }
        if (!none) {
            // What the user wrote stays: it may name a drive that isn't mounted yet.
            ui.MessageBox("The Poser folder " + stored + "\r\n" + "named in Settings.ini doesn't exist.", kProgramTitle,
                          MsgIcon::Exclamation);
            return;
        }
        // The command line never asks, and leaves the question to the window's next start.
        if (!findPoser)
            return;
        poser = AskPoserFolder(ui, findPoser(), stored.empty());
        write(kFolders, "Poser", poser.empty() ? "none" : poser);
    });
    const std::string workingPoser = IsExistingFolder(poser) ? poser : std::string();

    for (const auto &entry : kDerived) {
        IgnoringFailures([&, key = entry.first, derived = entry.second] {
            const std::string value = read(kFolders, key);
            if (IsExistingFolder(value))
                return;
            if (!workingPoser.empty()) {
                if (const auto real = ResolvePath(JoinPath(workingPoser, derived)); real && IsExistingFolder(*real)) {
                    write(kFolders, key, *real);
                    return;
                }
            }
            write(kFolders, key, "none");
        });
    }

    const std::array<std::pair<const char *, std::string *>, 11> folders{{
        {"CR2", &s.CR2Folder},
        {"HR2", &s.HR2Folder},
        {"PP2", &s.PP2Folder},
        {"PZ2", &s.PZ2Folder},
        {"CM2", &s.CM2Folder},
        {"FC2", &s.FC2Folder},
        {"HD2", &s.HD2Folder},
        {"LT2", &s.LT2Folder},
        {"Poser", &s.PoserFolder},
        {"Save", &s.SaveFolder},
        {"Map", &s.MapFolder},
    }};
    for (const auto &[key, target] : folders)
        IgnoringFailures([&, key = key, target = target] { *target = read(kFolders, key); });
    // Poser's folder as found above, whatever form the user gave it in the file.
    s.PoserFolder = workingPoser.empty() ? "none" : workingPoser;

    const auto loadBool = [&](const char *key, bool &target, bool fallback) {
        IgnoringFailures([&] {
            const std::string value = read(kGeneral, key);
            if (value.empty()) {
                write(kGeneral, key, BoolText(fallback));
                target = fallback;
            } else {
                target = ParseBool(value);
            }
        });
    };
    loadBool("CdlgThumb", s.CdlgThumb, true);
    loadBool("MapThumb", s.MapThumb, true);
    loadBool("MainThumb", s.MainThumb, true);
    loadBool("AutoCorrect", s.AutoCorrect, true);
    loadBool("SetNoMap", s.SetNoMap, false);
    loadBool("SetPoserVersion", s.SetPoserVersion, true);
    loadBool("SetP5Version", s.SetP5Version, true);

    for (const auto &[key, target] :
         {std::pair{"PVersionNumber", &s.PVersionNumber}, std::pair{"P5VersionNumber", &s.P5VersionNumber}}) {
        IgnoringFailures([&, key = key, target = target] {
            const std::string value = read(kGeneral, key);
            if (!value.empty()) {
                *target = value;
                return;
            }
            const std::string exe = JoinPath(s.PoserFolder, "Poser.exe");
            *target = s.PoserFolder != "none" && FileExists(exe) ? ShortVersion(FileVersionString(exe)) : "4.01";
            write(kGeneral, key, *target);
        });
    }

    IgnoringFailures([&] {
        const std::string value = read(kGeneral, "SaveAsType");
        if (value.empty()) {
            write(kGeneral, "SaveAsType", "P4");
            s.SaveAsP4 = true;
        } else {
            s.SaveAsP4 = LCase(value) == "p4";
        }
    });
    IgnoringFailures([&] {
        const std::string value = read(kGeneral, "FileSystem");
        if (value.empty()) {
            write(kGeneral, "FileSystem", "DOS");
            s.FileSystemDOS = true;
        } else {
            s.FileSystemDOS = LCase(value) == "dos";
        }
    });

    loadBool("ReportTime", s.ReportTime, true);
    loadBool("DisableProperties", s.DisableProperties, true);

    IgnoringFailures([&] {
        const std::string value = read(kGeneral, "DefaultTemplate");
        if (!value.empty() && FileExists(JoinPath(StateFolder(), "Templates/" + value + ".cfg")))
            s.DefaultTemplate = value;
    });
    return s;
}

void SaveSettings(const Settings &s) {
    const std::string file = SettingsFilePath();
    // One save of the whole file: it is written completely or not at all.
    std::string text = ReadProfileText(file);
    const auto write = [&](const char *section, const char *key, const std::string &value) {
        const std::string_view keyView(key), valueView(value);
        if (std::optional<std::string> changed = SetProfileString(text, section, &keyView, &valueView))
            text = std::move(*changed);
    };
    write(kFolders, "CR2", s.CR2Folder);
    write(kFolders, "PZ2", s.PZ2Folder);
    write(kFolders, "PP2", s.PP2Folder);
    write(kFolders, "HR2", s.HR2Folder);
    write(kFolders, "CM2", s.CM2Folder);
    write(kFolders, "FC2", s.FC2Folder);
    write(kFolders, "HD2", s.HD2Folder);
    write(kFolders, "LT2", s.LT2Folder);
    write(kFolders, "Poser", s.PoserFolder);
    write(kFolders, "Map", s.MapFolder);
    write(kFolders, "Save", s.SaveFolder);
    write(kGeneral, "CdlgThumb", BoolText(s.CdlgThumb));
    write(kGeneral, "MapThumb", BoolText(s.MapThumb));
    write(kGeneral, "MainThumb", BoolText(s.MainThumb));
    write(kGeneral, "AutoCorrect", BoolText(s.AutoCorrect));
    write(kGeneral, "SetNoMap", BoolText(s.SetNoMap));
    write(kGeneral, "SetPoserVersion", BoolText(s.SetPoserVersion));
    write(kGeneral, "SetP5Version", BoolText(s.SetP5Version));
    write(kGeneral, "PVersionNumber", s.PVersionNumber);
    write(kGeneral, "P5VersionNumber", s.P5VersionNumber);
    write(kGeneral, "ReportTime", BoolText(s.ReportTime));
    write(kGeneral, "DefaultTemplate", s.DefaultTemplate);
    write(kGeneral, "DisableProperties", BoolText(s.DisableProperties));
    write(kGeneral, "SaveAsType", s.SaveAsP4 ? "P4" : "P5");
    write(kGeneral, "FileSystem", s.FileSystemDOS ? "DOS" : "UNIX");
    WriteFileAtomic(file, text);
}

} // namespace gelvane
