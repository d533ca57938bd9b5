// A generated character of about 10 and 100 MB with thousands of morph targets:
// the silent conversion (materials from the tail, pose written) and the full
// load of morphs and poses, with the peak memory of one load in a fresh child.
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

// A character with one actor per 50 morph targets, each target ~20 KB of deltas, CRLF line ends.
std::string CharacterText(size_t megabytes) {
    const size_t targets = megabytes * 1024 * 1024 / 20500;
    const size_t actors = targets / 50 + 1;
    std::string deltas = "\t\t\tdeltas\r\n\t\t\t\t{\r\n";
    for (int i = 0; i < 520; ++i)
        deltas += "\t\t\t\td " + std::to_string(i) + " 0.0123456 -0.0234567 0.0345678\r\n";
    deltas += "\t\t\t\t}\r\n";

    std::string text = "{\r\n\r\nversion\r\n\t{\r\n\tnumber 4.01\r\n\t}\r\n";
    const std::string resFile = "figureResFile :Runtime:Geometries:Bench:bench.obj\r\n";
    text += resFile;
    for (size_t a = 0; a < actors; ++a)
        text += "actor part" + std::to_string(a) + ":1\r\n\t{\r\n\tstorageOffset 0 0 0\r\n\tgeomHandlerGeom 13 part" +
                std::to_string(a) + "\r\n\t}\r\n";
    text += resFile;
    size_t target = 0;
    for (size_t a = 0; a < actors; ++a) {
        text += "actor part" + std::to_string(a) + ":1\r\n\t{\r\n\tname\tPart " + std::to_string(a) +
                "\r\n\ton\r\n\tchannels\r\n\t\t{\r\n";
        for (int t = 0; t < 50 && target < targets; ++t, ++target) {
            const std::string name = "morph" + std::to_string(target);
            text += "\t\ttargetGeom " + name + "\r\n\t\t\t{\r\n\t\t\tname " + name +
                    "\r\n\t\t\tkeys\r\n\t\t\t\t{\r\n\t\t\t\tstatic  0\r\n\t\t\t\tk  0  0.25\r\n\t\t\t\t}\r\n" +
                    "\t\t\tindexes 520\r\n\t\t\tnumbDeltas 520\r\n" + deltas + "\t\t\t}\r\n";
        }
        text += "\t\trotateX xrot\r\n\t\t\t{\r\n\t\t\tname xRot\r\n\t\t\tkeys\r\n\t\t\t\t{\r\n\t\t\t\tstatic  0\r\n"
                "\t\t\t\tk  0  12\r\n\t\t\t\t}\r\n\t\t\t}\r\n\t\t}\r\n\t}\r\n";
    }
    text += "figure \r\n\t{\r\n\tname    Bench\r\n\troot\tpart0:1\r\n\tfigureType 1\r\n";
    for (int m = 0; m < 20; ++m)
        text += "\tmaterial Mat" + std::to_string(m) +
                "\r\n\t\t{\r\n\t\tKdColor 1 0.8 0.6 1\r\n\t\tKaColor 0 0 0 1\r\n\t\tKsColor 0.2 0.2 0.2 1\r\n"
                "\t\tTextureColor 1 1 1 1\r\n\t\tNsExponent 40\r\n\t\ttExpo 0.6\r\n\t\tbumpStrength 1\r\n"
                "\t\ttextureMap \":Runtime:Textures:Bench:mat.jpg\"\r\n\t\t0 0\r\n\t\tbumpMap NO_MAP\r\n"
                "\t\treflectionMap NO_MAP\r\n\t\ttransparencyMap NO_MAP\r\n\t\tReflectionColor 1 1 1 1\r\n\t\t}\r\n";
    text += "\tdisplayMode USEPARENT\r\n\t}\r\n\tsetGeomHandlerOffset 0 0.35 0\r\n}\r\n";
    return text;
}

// The generated files of this run, removed at its end.
struct BenchFolder {
    std::filesystem::path Path =
        std::filesystem::temp_directory_path() / ("gelvane-charbench-" + std::to_string(::getpid()));
    std::map<size_t, std::string> Files;
    ~BenchFolder() {
        std::error_code ec;
        std::filesystem::remove_all(Path, ec);
    }
};

const std::string &CharacterFile(size_t megabytes) {
    static BenchFolder folder;
    auto &path = folder.Files[megabytes];
    if (path.empty()) {
        std::filesystem::create_directories(folder.Path);
        path = (folder.Path / ("bench" + std::to_string(megabytes) + ".cr2")).string();
        std::ofstream(path, std::ios::binary) << CharacterText(megabytes);
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

// Peak resident memory of one load, measured in a child whose peak is reset first.
double PeakMegabytesOfOneLoad(const std::string &path) {
    int fds[2];
    if (pipe(fds) != 0)
        return -1;
    const pid_t child = fork();
    if (child == 0) {
        close(fds[0]);
        std::ofstream("/proc/self/clear_refs") << "5";
        OpenWithChannels(path);
        std::ifstream status("/proc/self/status");
        std::string line;
        long kb = -1;
        while (std::getline(status, line))
            if (line.starts_with("VmHWM:"))
                kb = std::stol(line.substr(6));
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
    state.counters["file_MB"] = static_cast<double>(FileSize(path)) / (1024.0 * 1024.0);
}

void FullLoad(benchmark::State &state) {
    const std::string &path = CharacterFile(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        OpenWithChannels(path);
    const double fileMb = static_cast<double>(FileSize(path)) / (1024.0 * 1024.0);
    const double peakMb = PeakMegabytesOfOneLoad(path);
    state.counters["file_MB"] = fileMb;
    state.counters["peak_MB"] = peakMb;
    state.counters["peak_per_file"] = peakMb / fileMb;
}

} // namespace

BENCHMARK(SilentConversion)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(FullLoad)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);
