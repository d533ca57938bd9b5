#pragma once
// Registering the program for the eight Poser file kinds, per user, the freedesktop.org
// way: a shared-mime-info package that defines the types, a desktop entry that opens
// them, a "Create MAT pose" entry (and a file-manager service menu and script) for all
// kinds but poses, the type icons, and the user's default application. Every step
// runs with failures ignored; removing deletes only what this program installed, and
// associating never touches another program's entries.
#include <array>
#include <string>
#include <vector>

namespace gelvane {

struct AssociationKind {
    const char *Extension;   // ".pz2"
    const char *Description; // "Poser Pose file"
    const char *Word;        // "Pose": tooltips and labels
    const char *MimeType;    // "application/x-poser-pose"; its icon is named like it, "/" as "-"
};

// In the order of the check boxes chkAs(0) to chkAs(7).
const std::array<AssociationKind, 8> &AssociationKinds();

// The desktop entry's id: the name of the file in "applications".
inline constexpr const char *kDesktopId = "gelvane.desktop";
inline constexpr const char *kMatPoseDesktopId = "gelvane-matpose.desktop";

// The program that the entries start: the plain name when it is the "gelvane" found
// on PATH, else the running executable's full path.
std::string ExecutablePath();

// True when the desktop's default application for the kind's type is this program.
bool IsAssociated(const std::string &extension);
// Makes this program the handler of `extension`'s kind, or with `unassociate` takes
// that back. `exePath` is what the entries run.
void Associate(const std::string &extension, const std::string &exePath, bool unassociate);
// Lets the desktop pick up new or removed icons.
void RefreshShellIcons();

// The files themselves; `mimeTypes` are the types an entry opens. The package's
// desktop entry is DesktopEntryText("gelvane", {}): it opens nothing until associated.
std::string MimePackageXml();
std::string DesktopEntryText(const std::string &exePath, const std::vector<std::string> &mimeTypes);
std::string MatPoseEntryText(const std::string &exePath, const std::vector<std::string> &mimeTypes);
std::string ServiceMenuText(const std::string &exePath, const std::vector<std::string> &mimeTypes);

} // namespace gelvane
