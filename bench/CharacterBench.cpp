// A generated character of about 10 and 100 MB with thousands of morph targets:
// the silent conversion (materials from the tail, pose written) and the full
// load of morphs and poses, with the peak memory of one load in a fresh child.
#include "BenchFiles.h"

#include "core/app/OpenCommands.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/MorphLoader.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <map>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

using namespace gelvane;

namespace {

const std::string &CharacterFile(size_t megabytes) {
    static std::map<size_t, std::string> files;
    auto &path = files[megabytes];
    if (path.empty()) {
        path = benchfiles::File("character-" + std::to_string(megabytes) + ".cr2",
                                [&] { return benchfiles::Character(megabytes); });
        // Every large buffer comes fresh from the system, as in a program that loads one file, so that
        // a small file isn't favoured by memory the allocator kept from the round before.
        mallopt(M_MMAP_THRESHOLD, 1 << 20);
    }
    return path;
}

// Opens the character as the Open command does, loading its channels without asking.
void OpenWithChannels(const std::string &path) {
    Settings settings;
    settings.AutoCorrect = false;
    settings.ReportTime = false;
    ConsoleInteraction ui;
    Session session(settings, ui);
    session.CommandLineOpen = true;
    session.DialogFileName = path;
    session.LoadChannelsChoice = 1;
    OpenCommand(session, KindCR2);
    benchmark::DoNotOptimize(session.Actors.data());
}

// Peak resident memory that one load adds, measured in a child whose peak is reset first.
double PeakMegabytesOfOneLoad(const std::string &path) {
    int fds[2];
    if (pipe(fds) != 0)
        return -1;
    const pid_t child = fork();
    if (child == 0) {
        close(fds[0]);
        // What the child shares with the benchmark process (inputs of other benchmarks) is
        // resident before the load; only what the load adds is counted.
        auto statusKb = [](std::string_view field) {
            std::ifstream status("/proc/self/status");
            std::string line;
            long kb = -1;
            while (std::getline(status, line))
                if (line.starts_with(field))
                    kb = std::stol(line.substr(field.size()));
            return kb;
        };
        std::ofstream("/proc/self/clear_refs") << "5";
        const long before = statusKb("VmRSS:");
        OpenWithChannels(path);
        const long kb = statusKb("VmHWM:") - before;
        [[maybe_unused]] auto written = write(fds[1], &kb, sizeof kb);
        _exit(0);
    }
    close(fds[1]);
    long kb = -1;
    [[maybe_unused]] auto got = read(fds[0], &kb, sizeof kb);
    close(fds[0]);
    waitpid(child, nullptr, 0);
    return static_cast<double>(kb) / 1024.0;
}

void SilentConversion(benchmark::State &state) {
    const std::string &path = CharacterFile(static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        Settings settings;
        ConsoleInteraction ui;
        Session session(settings, ui);
        session.CommandLineOpen = true;
        session.CommandText = "-s " + path;
        OpenCommand(session, KindCR2);
        if (session.OpenFailed)
            state.SkipWithError("the open failed");
    }
    state.SetLabel("character-" + std::to_string(state.range(0)) + ".cr2");
    state.counters["file_MB"] = static_cast<double>(FileSize(path)) / (1024.0 * 1024.0);
}

void FullLoad(benchmark::State &state) {
    const std::string &path = CharacterFile(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        OpenWithChannels(path);
    const double fileMb = static_cast<double>(FileSize(path)) / (1024.0 * 1024.0);
    const double peakMb = PeakMegabytesOfOneLoad(path);
    state.SetLabel("character-" + std::to_string(state.range(0)) + ".cr2");
    state.counters["file_MB"] = fileMb;
    state.counters["peak_MB"] = peakMb;
    state.counters["peak_per_file"] = peakMb / fileMb;
}

} // namespace

BENCHMARK(SilentConversion)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(FullLoad)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);
