// Writing a large pose: 5,000 materials over 50 owners, both formats, to a file.
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/writer/PoseWriter.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

using namespace gelvane;

namespace {

Material BenchMaterial(int i) {
    Material m;
    m.Name = "Material_" + std::to_string(i);
    m.KdColor = {255, static_cast<int16_t>(i % 256), 0};
    m.KaColor = {0, 0, 0};
    m.KsColor = {255, 255, 255};
    m.ReflectionColor = {10, 20, 30};
    m.TextureColor = "100";
    m.NsExponent = 51;
    m.tMax = 100;
    m.tExpo = 0.6f;
    m.bumpStrength = "50";
    m.reflectionStrength = "100";
    m.textureMap = ":Runtime:textures:Bench:skin_" + std::to_string(i) + ".jpg";
    m.bumpMap = ":Runtime:textures:Bench:bump_" + std::to_string(i) + ".bum";
    m.reflectionMap = m.transparencyMap = "NO_MAP";
    m.KdColorEnabled = m.KsColorEnabled = m.KaColorEnabled = m.ReflectionColorEnabled = true;
    m.NsExponentEnabled = m.tMinEnabled = m.tMaxEnabled = m.tExpoEnabled = true;
    m.textureMapEnabled = m.bumpMapEnabled = m.reflectionMapEnabled = m.transparencyMapEnabled = true;
    m.TextureColorEnabled = m.bumpStrengthEnabled = m.reflectionStrengthEnabled = true;
    m.ksIgnoreTextureEnabled = true;
    return m;
}

void WritePose5000(benchmark::State &state) {
    Settings settings;
    ConsoleInteraction ui;
    Session session(settings, ui);
    session.OutputVersion = "4.01";
    session.Figures.clear();
    for (int f = 0; f < 50; ++f) {
        Figure figure;
        figure.Name = "prop owner_" + std::to_string(f);
        figure.Materials.clear();
        for (int i = 0; i < 100; ++i)
            figure.Materials.push_back(BenchMaterial(f * 100 + i));
        session.Figures.push_back(std::move(figure));
        session.cmbFigures.push_back(session.Figures.back().Name);
    }
    session.Options.chkChannels = true;
    session.Options.PoserFormatP5 = state.range(0) != 0;
    const auto folder = std::filesystem::temp_directory_path() / ("gelvane-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    const std::string target = (folder / "bench.pz2").string();
    for (auto _ : state) {
        session.OutputPath = target;
        WritePoseFile(session);
    }
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(target));
    std::filesystem::remove_all(folder);
}

} // namespace

BENCHMARK(WritePose5000)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
