#include "core/platform/Desktop.h"

#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace gelvane {

bool StartDetached(const std::vector<std::string> &argv, int *error) {
    if (argv.empty()) {
        if (error)
            *error = EINVAL;
        return false;
    }
    // Everything the children touch is prepared before fork.
    std::vector<char *> args;
    for (const std::string &a : argv)
        args.push_back(const_cast<char *>(a.c_str()));
    args.push_back(nullptr);
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0) {
        if (error)
            *error = errno;
        return false;
    }
    const pid_t child = fork();
    if (child < 0) {
        const int e = errno;
        close(fds[0]);
        close(fds[1]);
        if (error)
            *error = e;
        return false;
    }
    if (child == 0) {
        // The middle process exits at once, so the started program belongs to init
        // and never becomes our zombie.
        setsid();
        if (fork() == 0) {
            execvp(args[0], args.data());
            const int e = errno;
            [[maybe_unused]] ssize_t n = write(fds[1], &e, sizeof e);
            _exit(127);
        }
        _exit(0);
    }
    close(fds[1]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    // The pipe closes on a successful exec; an error number arrives otherwise.
    int e = 0;
    ssize_t got;
    do {
        got = read(fds[0], &e, sizeof e);
    } while (got < 0 && errno == EINTR);
    close(fds[0]);
    if (got == static_cast<ssize_t>(sizeof e)) {
        if (error)
            *error = e;
        return false;
    }
    return true;
}

std::string FindOnPath(const std::string &name) {
    const char *path = std::getenv("PATH");
    if (!path)
        return {};
    const std::string all(path);
    size_t start = 0;
    while (start <= all.size()) {
        size_t end = all.find(':', start);
        if (end == std::string::npos)
            end = all.size();
        const std::string dir = end > start ? all.substr(start, end - start) : ".";
        const std::string candidate = dir + "/" + name;
        if (access(candidate.c_str(), X_OK) == 0 && FileExists(candidate))
            return candidate;
        start = end + 1;
    }
    return {};
}

void OpenDocument(const std::string &target, const ProcessStarter &start) {
    start({"xdg-open", target}, nullptr);
}

std::string DocumentPath(const std::string &name) {
    const std::string beside = JoinPath(ExecutableFolder(), name);
    for (const std::string &candidate :
         {beside, JoinPath(ExecutableFolder(), "../share/doc/gelvane/" + name), JoinPath(GELVANE_SOURCE_DOCS, name)})
        if (FileExists(candidate))
            return candidate;
    return beside;
}

void OpenLicense(const ProcessStarter &start) {
    OpenDocument(DocumentPath("GVLLicense.txt"), start);
}

void OpenVersionHistory(const ProcessStarter &start) {
    OpenDocument(DocumentPath("VHistory.htm"), start);
}

void OpenManual(const ProcessStarter &start) {
    OpenDocument(DocumentPath("Manual.htm"), start);
}

void RunPoser(const std::string &poserFolder, Interaction &ui, const ProcessStarter &start) {
    const auto exe = ResolvePath(JoinPath(poserFolder, "Poser.exe"));
    const std::string wine = FindOnPath("wine");
    int error = 0;
    if (exe && FileExists(*exe) && !wine.empty()) {
        if (start({wine, *exe}, &error))
            return;
        if (error != ENOENT) {
            ui.MessageBox(std::string(std::strerror(error)) + ", " + std::to_string(error));
            return;
        }
    }
    ui.MessageBox("Poser executable could not be found in" + std::string("\r\n") + poserFolder + ".", kProgramTitle,
                  MsgIcon::Exclamation, MsgButtons::OK);
}

} // namespace gelvane
