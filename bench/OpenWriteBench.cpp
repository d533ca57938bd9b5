// Opening a generated pose file with 5,000 materials and writing it back as a pose,
// the work of one silent conversion.
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/OpenFile.h"
#include "core/writer/PoseWriter.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>

using namespace gelvane;

namespace {

// 50 owners of 100 materials each; every other material names a map.
std::string GeneratedPose() {
    std::string text = "{\r\n# generated for the benchmark\r\nversion\r\n\t{\r\n\tnumber 4.01\r\n\t}\r\n";
    for (int owner = 0; owner < 50; ++owner) {
        text += "prop owner_" + std::to_string(owner) + "\r\n\t{\r\n";
        for (int i = 0; i < 100; ++i) {
            const int n = owner * 100 + i;
            text += "\tmaterial Material_" + std::to_string(n) + "\r\n\t\t{\r\n";
            text += "\t\tKdColor 1 " + std::to_string((n % 256) / 255.0).substr(0, 8) + " 0 1\r\n";
            text += "\t\tKaColor 0 0 0 1\r\n\t\tKsColor 1 1 1 1\r\n\t\tTextureColor 1 1 1 1\r\n";
            text += "\t\tNsExponent 50\r\n\t\ttMin 0\r\n\t\ttMax 1\r\n\t\ttExpo 0.6\r\n\t\tbumpStrength 0.5\r\n";
            text += "\t\tksIgnoreTexture 0\r\n\t\treflectThruLights 0\r\n\t\treflectThruKd 0\r\n";
            if (n % 2 == 0)
                text +=
                    "\t\ttextureMap \":Runtime:Textures:Bench:skin_" + std::to_string(n) + ".jpg\"\r\n\t\t\t\t0 0\r\n";
            else
                text += "\t\ttextureMap NO_MAP\r\n";
            text += "\t\tbumpMap NO_MAP\r\n\t\treflectionMap NO_MAP\r\n\t\ttransparencyMap NO_MAP\r\n";
            text += "\t\tReflectionColor 1 1 1 1\r\n\t\treflectionStrength 1\r\n\t\t}\r\n";
        }
        text += "\t}\r\n";
    }
    return text + "}\r\n";
}

class BenchFolder {
public:
    BenchFolder() : m_path(std::filesystem::temp_directory_path() / ("gelvane-openwrite-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(m_path);
        WriteFileAtomic(input(), GeneratedPose());
    }
    ~BenchFolder() { std::filesystem::remove_all(m_path); }
    std::string input() const { return (m_path / "input.pz2").string(); }
    std::string output() const { return (m_path / "output.pz2").string(); }

private:
    std::filesystem::path m_path;
};

void OpenPose(Session &session, const std::string &path) {
    session.PoserFileKind = KindPZ2;
    session.CommandLineOpen = true;
    session.DialogFileName = path;
    OpenFile(session);
    if (session.OpenFailed)
        throw std::runtime_error("the generated pose didn't open");
}

void OpenPose5000(benchmark::State &state) {
    const BenchFolder folder;
    Settings settings;
    ConsoleInteraction ui;
    size_t materials = 0;
    for (auto _ : state) {
        Session session(settings, ui);
        OpenPose(session, folder.input());
        materials = 0;
        for (const Figure &figure : session.Figures)
            materials += figure.Materials.size();
        benchmark::DoNotOptimize(materials);
    }
    state.counters["materials"] = static_cast<double>(materials);
    state.counters["bytes"] = static_cast<double>(FileSize(folder.input()));
}

void OpenAndWritePose5000(benchmark::State &state) {
    const BenchFolder folder;
    Settings settings;
    ConsoleInteraction ui;
    for (auto _ : state) {
        Session session(settings, ui);
        session.Options.PoserFormatP5 = state.range(0) != 0;
        OpenPose(session, folder.input());
        session.OutputPath = folder.output();
        WritePoseFile(session);
    }
    state.counters["bytes_out"] = static_cast<double>(FileSize(folder.output()));
}

} // namespace

BENCHMARK(OpenPose5000)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenAndWritePose5000)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
