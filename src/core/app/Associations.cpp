#include "core/app/Associations.h"

#include "core/app/EmbeddedIcons.h"
#include "core/model/Text.h"
#include "core/platform/Desktop.h"
#include "core/platform/Failure.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"
#include "core/platform/Process.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace gelvane {

namespace {

constexpr const char *kPoseType = "application/x-poser-pose";
constexpr const char *kMimePackage = "mime/packages/gelvane.xml";
constexpr const char *kServiceMenu = "kio/servicemenus/gelvane-matpose.desktop";
constexpr const char *kNautilusScript = "nautilus/scripts/Create MAT pose";

std::string EnvFolder(const char *variable, const char *underHome) {
    if (const char *value = std::getenv(variable); value && *value)
        return value;
    const char *home = std::getenv("HOME");
    return std::string(home && *home ? home : ".") + "/" + underHome;
}

std::string DataHome() {
    return EnvFolder("XDG_DATA_HOME", ".local/share");
}

std::string ConfigHome() {
    return EnvFolder("XDG_CONFIG_HOME", ".config");
}

const AssociationKind *KindOf(const std::string &extension) {
    const std::string lowered = LCase(extension);
    for (const AssociationKind &kind : AssociationKinds())
        if (lowered == kind.Extension)
            return &kind;
    return nullptr;
}

// A shell pattern that matches the extension in any case: "*.[cC][rR]2".
std::string ShellPattern(const AssociationKind &kind) {
    std::string pattern = "*.";
    for (const char c : std::string_view(kind.Extension).substr(1)) {
        const char lower = LowerChar(c), upper = UCase(std::string(1, c))[0];
        pattern += lower == upper ? std::string(1, c) : std::string("[") + lower + upper + "]";
    }
    return pattern;
}

// One argument of an Exec line: quoted where the desktop entry rules reserve a
// character, then escaped as a string value.
std::string ExecArgument(const std::string &text) {
    std::string arg;
    bool quote = false;
    for (const char c : text) {
        if (std::string_view(" \t\n\"'\\><~|&;$*?#()`").find(c) != std::string_view::npos)
            quote = true;
        if (c == '"' || c == '`' || c == '$' || c == '\\')
            arg += '\\';
        arg += c == '%' ? "%%" : std::string(1, c);
    }
    if (quote)
        arg = "\"" + arg + "\"";
    return Replace(arg, "\\", "\\\\");
}

std::string MimeTypeLine(const std::vector<std::string> &types) {
    std::string line = "MimeType=";
    for (const std::string &type : types)
        line += type + ";";
    return line + "\n";
}

// Writes a file of ours, creating its folders; failures pass silently.
void Install(const std::string &relative, const std::string &bytes, bool executable = false) {
    const fs::path path = fs::path(DataHome()) / relative;
    std::error_code ec;
    fs::create_directories(path.parent_path(), ec);
    try {
        WriteFileAtomic(path.string(), bytes);
    } catch (const std::exception &) {
        return;
    }
    if (executable)
        fs::permissions(path,
                        fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read |
                            fs::perms::others_exec,
                        ec);
}

std::string IconFile(const EmbeddedIcon &icon) {
    const bool app = std::string_view(icon.Name) == "gelvane";
    return std::string("icons/hicolor/scalable/") + (app ? "apps/" : "mimetypes/") + icon.Name + ".svg";
}

void Uninstall(const std::string &relative) {
    std::error_code ec;
    fs::remove(fs::path(DataHome()) / relative, ec);
}

// The types that our own desktop entry opens today.
std::vector<std::string> AssociatedTypes() {
    std::vector<std::string> types;
    std::string entry;
    try {
        entry = ReadFileBytes(JoinPath(DataHome(), std::string("applications/") + kDesktopId));
    } catch (const Failure &) {
        return types;
    }
    const size_t at = entry.find("\nMimeType=");
    if (at == std::string::npos)
        return types;
    const size_t end = entry.find('\n', at + 1);
    const std::string list = entry.substr(at + 10, end == std::string::npos ? std::string::npos : end - at - 10);
    for (const AssociationKind &kind : AssociationKinds())
        if (list.find(std::string(kind.MimeType) + ";") != std::string::npos)
            types.push_back(kind.MimeType);
    return types;
}

std::string NautilusScript(const std::string &exePath, const std::vector<const AssociationKind *> &kinds) {
    std::string patterns;
    for (const AssociationKind *kind : kinds)
        patterns += (patterns.empty() ? "" : "|") + ShellPattern(*kind);
    std::string quotedExe = "'" + Replace(exePath, "'", "'\\''") + "'";
    return "#!/bin/sh\n"
           "# Gelvane: makes a MAT pose beside each selected Poser file.\n"
           "for f in \"$@\"; do\n"
           "    case \"$f\" in\n"
           "        " +
           patterns + ") " + quotedExe +
           " -s \"$f\" ;;\n"
           "    esac\n"
           "done\n";
}

// Takes our desktop entry out of the user's default for `type`; other programs'
// entries stay as they are.
void RemoveDefault(const std::string &type) {
    const std::string file = JoinPath(ConfigHome(), "mimeapps.list");
    std::string text;
    try {
        text = ReadFileBytes(file);
    } catch (const Failure &) {
        return;
    }
    std::string out;
    bool inDefaults = false, changed = false;
    size_t from = 0;
    while (from < text.size()) {
        size_t end = text.find('\n', from);
        end = end == std::string::npos ? text.size() : end + 1;
        std::string line = text.substr(from, end - from);
        from = end;
        const std::string bare(Trim(StripControls(line)));
        if (!bare.empty() && bare.front() == '[')
            inDefaults = bare == "[Default Applications]";
        else if (inDefaults && StartsWith(bare, type + "=")) {
            const std::string ids = bare.substr(type.size() + 1);
            std::string kept;
            bool ours = false;
            size_t start = 0;
            while (start < ids.size()) {
                size_t stop = ids.find(';', start);
                stop = stop == std::string::npos ? ids.size() : stop;
                const std::string id = ids.substr(start, stop - start);
                if (id == kDesktopId)
                    ours = true;
                else if (!id.empty())
                    kept += id + ";";
                start = stop + 1;
            }
            if (ours) {
                changed = true;
                line = kept.empty() ? "" : type + "=" + kept + "\n";
            }
        }
        out += line;
    }
    if (changed) {
        try {
            WriteFileAtomic(file, out);
        } catch (const std::exception &) {
        }
    }
}

} // namespace

const std::array<AssociationKind, 8> &AssociationKinds() {
    static const std::array<AssociationKind, 8> kinds{{
        {".pz2", "Poser Pose file", "Pose", kPoseType},
        {".cr2", "Poser Character file", "Character", "application/x-poser-character"},
        {".pp2", "Poser Prop file", "Prop", "application/x-poser-prop"},
        {".hr2", "Poser Hair file", "Hair", "application/x-poser-hair"},
        {".cm2", "Poser Camera file", "Camera", "application/x-poser-camera"},
        {".fc2", "Poser Face file", "Face", "application/x-poser-face"},
        {".hd2", "Poser Hand file", "Hand", "application/x-poser-hand"},
        {".lt2", "Poser Light file", "Light", "application/x-poser-light"},
    }};
    return kinds;
}

std::string ExecutablePath() {
    const std::string self = JoinPath(ExecutableFolder(), "gelvane");
    const std::string onPath = FindOnPath("gelvane");
    std::error_code ec;
    if (!onPath.empty() && fs::equivalent(onPath, self, ec))
        return "gelvane";
    return self;
}

std::string MimePackageXml() {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n";
    for (const AssociationKind &kind : AssociationKinds()) {
        const std::string icon = Replace(kind.MimeType, "/", "-");
        xml += std::string("  <mime-type type=\"") + kind.MimeType + "\">\n";
        xml += std::string("    <comment>") + kind.Description + "</comment>\n";
        xml += "    <sub-class-of type=\"text/plain\"/>\n";
        xml += "    <icon name=\"" + icon + "\"/>\n";
        xml += "    <generic-icon name=\"text-x-generic\"/>\n";
        // ".cr2" also names camera raw pictures, which begin with a TIFF header: a
        // Poser file begins with its "{".
        if (std::string_view(kind.Extension) == ".cr2")
            xml += "    <magic priority=\"50\">\n"
                   "      <match type=\"string\" value=\"{\" offset=\"0:3\"/>\n"
                   "    </magic>\n";
        // Globs match without regard to case unless told otherwise: "X.CR2" is one too.
        xml += std::string("    <glob pattern=\"*") + kind.Extension + "\"/>\n";
        xml += "  </mime-type>\n";
    }
    return xml + "</mime-info>\n";
}

std::string DesktopEntryText(const std::string &exePath, const std::vector<std::string> &mimeTypes) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Version=1.4\n"
           "Name=Gelvane\n"
           "GenericName=Poser File Editor\n"
           "Comment=Edit the materials and channels of Poser files and save them as MAT poses\n"
           "Exec=" +
           ExecArgument(exePath) +
           " %f\n"
           "Icon=gelvane\n"
           "Terminal=false\n"
           "Categories=Graphics;3DGraphics;\n"
           "Keywords=Poser;MAT;pose;material;texture;\n" +
           (mimeTypes.empty() ? std::string() : MimeTypeLine(mimeTypes));
}

std::string MatPoseEntryText(const std::string &exePath, const std::vector<std::string> &mimeTypes) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Version=1.4\n"
           "Name=Create MAT pose\n"
           "Comment=Save the materials and channels of this file as a MAT pose beside it\n"
           "Exec=" +
           ExecArgument(exePath) +
           " -s %f\n"
           "Icon=gelvane\n"
           "Terminal=false\n"
           "NoDisplay=true\n" +
           MimeTypeLine(mimeTypes);
}

std::string ServiceMenuText(const std::string &exePath, const std::vector<std::string> &mimeTypes) {
    return "[Desktop Entry]\n"
           "Type=Service\n"
           "X-KDE-ServiceTypes=KonqPopupMenu/Plugin\n" +
           MimeTypeLine(mimeTypes) +
           "Actions=CreateMatPose;\n"
           "\n"
           "[Desktop Action CreateMatPose]\n"
           "Name=Create MAT pose\n"
           "Icon=gelvane\n"
           "Exec=" +
           ExecArgument(exePath) + " -s %f\n";
}

bool IsAssociated(const std::string &extension) {
    const AssociationKind *kind = KindOf(extension);
    if (!kind)
        return false;
    std::string answer;
    if (RunProcess({"xdg-mime", "query", "default", kind->MimeType}, &answer) != 0)
        return false;
    return LCase(Trim(StripControls(answer))) == kDesktopId;
}

void Associate(const std::string &extension, const std::string &exePath, bool unassociate) {
    const AssociationKind *kind = KindOf(extension);
    if (!kind)
        return;
    std::vector<std::string> types = AssociatedTypes();
    std::erase(types, std::string(kind->MimeType));
    if (!unassociate)
        types.push_back(kind->MimeType);
    // In the order of the kinds, so that the entries don't change with the order of clicks.
    std::vector<std::string> ordered;
    std::vector<const AssociationKind *> verbKinds;
    for (const AssociationKind &k : AssociationKinds())
        if (std::find(types.begin(), types.end(), k.MimeType) != types.end()) {
            ordered.push_back(k.MimeType);
            if (std::string_view(k.MimeType) != kPoseType)
                verbKinds.push_back(&k);
        }
    std::vector<std::string> verbTypes;
    for (const AssociationKind *k : verbKinds)
        verbTypes.push_back(k->MimeType);

    const std::string desktop = std::string("applications/") + kDesktopId;
    const std::string matPose = std::string("applications/") + kMatPoseDesktopId;
    if (ordered.empty()) {
        for (const std::string &file : {std::string(kMimePackage), desktop})
            Uninstall(file);
        for (const EmbeddedIcon &icon : EmbeddedIcons())
            Uninstall(IconFile(icon));
    } else {
        Install(kMimePackage, MimePackageXml());
        for (const EmbeddedIcon &icon : EmbeddedIcons())
            Install(IconFile(icon), icon.Svg);
        Install(desktop, DesktopEntryText(exePath, ordered));
    }
    if (verbTypes.empty()) {
        for (const char *file : {kServiceMenu, kNautilusScript})
            Uninstall(file);
        Uninstall(matPose);
    } else {
        Install(matPose, MatPoseEntryText(exePath, verbTypes));
        Install(kServiceMenu, ServiceMenuText(exePath, verbTypes), true);
        // Only where the user's desktop has Nautilus's folder: nothing else reads it.
        if (FolderExists(JoinPath(DataHome(), "nautilus")))
            Install(kNautilusScript, NautilusScript(exePath, verbKinds), true);
    }

    RunProcess({"update-mime-database", JoinPath(DataHome(), "mime")});
    RunProcess({"update-desktop-database", JoinPath(DataHome(), "applications")});
    if (unassociate)
        RemoveDefault(kind->MimeType);
    else
        RunProcess({"xdg-mime", "default", kDesktopId, kind->MimeType});
}

void RefreshShellIcons() {
    RunProcess({"xdg-icon-resource", "forceupdate", "--mode", "user"});
}

} // namespace gelvane
