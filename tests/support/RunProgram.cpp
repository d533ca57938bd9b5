#include "support/RunProgram.h"

#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>

extern char **environ;

namespace gelvane::test {

RunResult RunProgram(const TestHome &home, const std::vector<std::string> &args) {
    const std::string outFile = home.file("stdout.txt");
    const std::string errFile = home.file("stderr.txt");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    std::vector<std::string> all = args;
    std::vector<char *> argv;
    for (std::string &a : all)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    RunResult result;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) == 0) {
        int status = 0;
        waitpid(pid, &status, 0);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    posix_spawn_file_actions_destroy(&actions);
    result.output = home.read("stdout.txt");
    result.errors = home.read("stderr.txt");
    std::filesystem::remove(outFile);
    std::filesystem::remove(errFile);
    return result;
}

} // namespace gelvane::test
