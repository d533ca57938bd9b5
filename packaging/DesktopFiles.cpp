// Writes the shared-mime-info package and the desktop entry that the Debian package
// installs, from the same tables that per-user association uses.
#include "core/app/Associations.h"

#include <fstream>
#include <iostream>

int main(int argc, char **argv) {
    if (argc != 3) {
        std::cerr << "usage: gelvane_desktop_files MIME-PACKAGE DESKTOP-ENTRY\n";
        return 2;
    }
    std::ofstream(argv[1], std::ios::binary) << gelvane::MimePackageXml();
    // The installed program opens nothing by itself: the user associates kinds in Preferences.
    std::ofstream(argv[2], std::ios::binary) << gelvane::DesktopEntryText("gelvane", {});
    return 0;
}
