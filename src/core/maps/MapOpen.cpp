#include "core/maps/MapOpen.h"

#include "core/maps/MapPaths.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"

#include <cerrno>
#include <ctime>
#include <sys/wait.h>
#include <unistd.h>

namespace gelvane {
namespace {

constexpr int32_t kOpened = 42;
// How long to wait for the opener's verdict; a program still running by then has started.
constexpr int kWaitMilliseconds = 3000;

std::string PoserPlace(std::string_view poser, std::string_view mapPath) {
    std::string s(mapPath);
    const std::string folder(poser);
    if (StartsWith(LCase(s), ":runtime:"))
        s = folder + Replace(s, ":", "\\");
    if (StartsWith(LCase(s), ":textures:"))
        s = folder + "\\Runtime" + Replace(s, ":", "\\");
    const std::string lower = LCase(s);
    if (StartsWith(lower, ":") && lower.find(":runtime:") == std::string::npos &&
        lower.find(":textures:") == std::string::npos)
        s = folder + "\\Runtime\\Textures" + Replace(s, ":", "\\");
    return s;
}

} // namespace

std::string ShellOpenErrorText(int32_t code) {
    switch (code) {
    case 2:
        return "File not found";
    case 3:
        return "Path not found";
    case 5:
        return "Access denied";
    case 8:
        return "Out of memory";
    case 11:
        return "Invalid EXE file or error in EXE image";
    case 26:
        return "A sharing violation occurred";
    case 27:
        return "Incomplete or invalid file association";
    case 28:
        return "DDE Time out";
    case 29:
        return "DDE transaction failed";
    case 30:
        return "DDE busy";
    case 31:
        return "No association for file extension";
    case 32:
        return "DLL not found";
    default:
        return "Unknown error";
    }
}

int32_t ShellOpen(std::string_view path) {
    return ShellOpenWith(path, "xdg-open");
}

int32_t ShellOpenWith(std::string_view path, const std::string &opener) {
    const auto real = ResolvePath(path);
    if (!real) {
        const std::string_view folder = FolderPart(path);
        return folder.empty() || FolderExists(folder) ? 2 : 3;
    }
    if (access(real->c_str(), R_OK) != 0)
        return 5;
    // The opener runs in a grandchild, so that a program that keeps running is never left
    // as our zombie; the child reports the opener's verdict, or "started" after a while.
    const pid_t child = fork();
    if (child < 0)
        return errno == ENOMEM ? 8 : 0;
    if (child == 0) {
        const pid_t grandchild = fork();
        if (grandchild < 0)
            _exit(120);
        if (grandchild == 0) {
            execlp(opener.c_str(), opener.c_str(), real->c_str(), static_cast<char *>(nullptr));
            _exit(errno == ENOENT ? 127 : 126);
        }
        for (int waited = 0; waited < kWaitMilliseconds; waited += 20) {
            int status = 0;
            if (waitpid(grandchild, &status, WNOHANG) == grandchild)
                _exit(WIFEXITED(status) ? WEXITSTATUS(status) : 121);
            const timespec pause{0, 20 * 1000 * 1000};
            nanosleep(&pause, nullptr);
        }
        _exit(0);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status))
        return 0;
    switch (WEXITSTATUS(status)) {
    case 0:
        return kOpened;
    case 2: // the opener found no such file
        return 2;
    case 3:   // a tool it needs is missing
    case 4:   // no program took the file
    case 127: // no opener at all
        return 31;
    case 120:
        return 8;
    default:
        return 0;
    }
}

void OpenMapFile(Session &session, std::string_view mapPath) {
    if (mapPath.empty())
        return;
    const std::string &poser = session.settings().PoserFolder;
    const std::string place = PoserPlace(poser, mapPath);
    // A reference written on Windows opens the same file under our Poser folder.
    const std::string target = LocateMapFile(poser, place).value_or(place);
    const int32_t result = ShellOpen(target);
    if (result < 33)
        session.ui().MessageBox(ShellOpenErrorText(result), kProgramTitle, MsgIcon::None, MsgButtons::OK);
}

} // namespace gelvane
