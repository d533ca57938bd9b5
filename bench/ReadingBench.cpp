// What one silent conversion does in the process (open, then write the pose), for a pose
// of many props and for the shapes that would make a literal reading take far more than
// linear time. bench/compare also runs the program itself on the same files.
#include "BenchFiles.h"

#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/OpenFile.h"
#include "core/writer/PoseWriter.h"

#include <benchmark/benchmark.h>

#include <filesystem>

using namespace gelvane;

namespace {

class QuietInteraction : public ConsoleInteraction {
public:
    MsgResult MessageBox(const std::string &, const std::string &, MsgIcon, MsgButtons) override {
        return MsgResult::OK;
    }
    void ProgressShow(const std::string &, const std::string &, int) override {}
    void ProgressStatus(const std::string &) override {}
    void ProgressDetail(const std::string &) override {}
};

// Opens `path` by its kind and writes the pose beside it, as "-s" does; true when it was written.
bool Convert(const std::string &path) {
    static const char *const kExtensions[] = {"cr2", "pz2", "pp2", "hr2", "cm2", "fc2", "hd2", "lt2"};
    Settings settings;
    settings.AutoCorrect = false;
    QuietInteraction ui;
    Session session(settings, ui);
    for (int kind = 0; kind < 8; ++kind)
        if (path.ends_with(kExtensions[kind]))
            session.PoserFileKind = static_cast<int16_t>(kind);
    session.CommandLineOpen = true;
    session.DialogFileName = path;
    OpenFile(session);
    if (session.OpenFailed)
        return false;
    session.OutputPath = path + ".out.pz2";
    WritePoseFile(session);
    return true;
}

void Run(benchmark::State &state, const std::string &path) {
    bool written = false;
    for (auto _ : state)
        written = Convert(path);
    state.SetLabel(std::filesystem::path(path).filename().string());
    state.counters["file_MB"] = static_cast<double>(FileSize(path)) / 1e6;
    state.counters["written"] = written ? 1 : 0;
}

void ManyProps(benchmark::State &state) {
    const int props = static_cast<int>(state.range(0));
    Run(state, benchfiles::File("props-" + std::to_string(props) + ".pz2",
                                [&] { return benchfiles::PoseWithProps(props, 10); }));
}

void Adversarial(benchmark::State &state) {
    const benchfiles::Shape shape = benchfiles::AdversarialShapes().at(static_cast<size_t>(state.range(0)));
    Run(state, benchfiles::File(shape.Name, shape.Make));
}

} // namespace

BENCHMARK(ManyProps)->Arg(50)->Arg(200)->Arg(800)->Unit(benchmark::kMillisecond);
BENCHMARK(Adversarial)
    ->DenseRange(0, static_cast<int>(benchfiles::AdversarialShapes().size()) - 1)
    ->Unit(benchmark::kMillisecond);
