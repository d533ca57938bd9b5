#include "core/platform/Process.h"

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace gelvane {

int RunProcess(const std::vector<std::string> &argv, std::string *output) {
    if (argv.empty())
        return -1;
    std::vector<char *> args;
    for (const std::string &a : argv)
        args.push_back(const_cast<char *>(a.c_str()));
    args.push_back(nullptr);

    int fds[2] = {-1, -1};
    if (output && pipe2(fds, O_CLOEXEC) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    if (output)
        posix_spawn_file_actions_adddup2(&actions, fds[1], 1);
    else
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int spawned = posix_spawnp(&child, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (output)
        close(fds[1]);
    if (spawned != 0) {
        if (output)
            close(fds[0]);
        return -1;
    }
    if (output) {
        char buffer[4096];
        while (true) {
            const ssize_t got = read(fds[0], buffer, sizeof buffer);
            if (got > 0)
                output->append(buffer, static_cast<size_t>(got));
            else if (got == 0 || errno != EINTR)
                break;
        }
        close(fds[0]);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace gelvane
