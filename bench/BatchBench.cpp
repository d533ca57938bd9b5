// The batch without a window over 1,000 generated Poser 4 MAT poses, converted in place
// into Poser 5 (argument 1) or Poser 4 (argument 0): the files a second is the measure.
#include "core/app/BatchCommand.h"
#include "core/app/StartUp.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reports/BatchConverter.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <unistd.h>
#include <vector>

using namespace gelvane;

namespace {

constexpr int kFiles = 1000;

// A MAT pose as content makers ship them: a comment, twelve materials with maps, and a
// hand pose of two actors.
std::string GeneratedPose(int n) {
    std::string text = "{\r\n# generated pose " + std::to_string(n) + "\r\nversion\r\n\t{\r\n\tnumber 4.01\r\n\t}\r\n";
    for (const char *actor : {"rHand:1", "rIndex1:1"}) {
        text += std::string("actor ") + actor + "\r\n\t{\r\n\tchannels\r\n\t\t{\r\n";
        for (const char *dial : {"xrot", "yrot", "zrot"})
            text += std::string("\t\trotateX ") + dial + "\r\n\t\t\t{\r\n\t\t\tkeys\r\n\t\t\t\t{\r\n\t\t\t\tk  0  " +
                    std::to_string(n % 90) + "\r\n\t\t\t\t}\r\n\t\t\t}\r\n";
        text += "\t\t}\r\n\t}\r\n";
    }
    text += "figure\r\n\t{\r\n";
    for (int i = 0; i < 12; ++i) {
        text += "\tmaterial Material_" + std::to_string(i) + "\r\n\t\t{\r\n";
        text += "\t\tKdColor 1 0.8 0.7 1\r\n\t\tKaColor 0 0 0 1\r\n\t\tKsColor 0.2 0.2 0.2 1\r\n";
        text += "\t\tTextureColor 1 1 1 1\r\n\t\tNsExponent 40\r\n\t\ttMin 0\r\n\t\ttMax 0\r\n\t\ttExpo 0.6\r\n";
        text += "\t\tbumpStrength 1\r\n\t\tksIgnoreTexture 0\r\n\t\treflectThruLights 1\r\n\t\treflectThruKd 0\r\n";
        text += "\t\ttextureMap \":Runtime:Textures:Bench:skin_" + std::to_string(i) + ".jpg\"\r\n\t\t\t\t0 0\r\n";
        text += "\t\tbumpMap \":Runtime:Textures:Bench:skin_" + std::to_string(i) + ".bum\"\r\n\t\t\t\t0 0\r\n";
        text += "\t\treflectionMap NO_MAP\r\n\t\ttransparencyMap NO_MAP\r\n";
        text += "\t\tReflectionColor 1 1 1 1\r\n\t\treflectionStrength 1\r\n\t\t}\r\n";
    }
    return text + "\t}\r\n}\r\n";
}

// Swallows the per-file lines.
class NullBuffer : public std::streambuf {
protected:
    int overflow(int c) override { return c; }
};

class PoseFolder {
public:
    PoseFolder() : m_path(std::filesystem::temp_directory_path() / ("gelvane-batch-" + std::to_string(getpid()))) {
        for (int i = 0; i < kFiles; ++i) {
            m_poses.push_back(GeneratedPose(i));
            m_files.push_back((m_path / ("pose_" + std::to_string(i) + ".pz2")).string());
        }
        std::filesystem::create_directories(m_path);
        Write();
    }
    ~PoseFolder() { std::filesystem::remove_all(m_path); }
    // Puts the Poser 4 originals back, as a run converts them in place. Over the files as
    // they stand: a fresh file each would burden the run's own creations.
    void Write() const {
        for (size_t i = 0; i < m_files.size(); ++i)
            std::ofstream(m_files[i], std::ios::binary | std::ios::trunc) << m_poses[i];
    }
    const std::vector<std::string> &files() const { return m_files; }

private:
    std::filesystem::path m_path;
    std::vector<std::string> m_poses, m_files;
};

void HeadlessBatch1000(benchmark::State &state) {
    const PoseFolder folder;
    Settings settings;
    ConsoleInteraction ui;
    NullBuffer nothing;
    std::ostream out(&nothing);
    const char *operation = state.range(0) != 0 ? kConvertIntoP5 : kConvertIntoP4;
    for (auto _ : state) {
        state.PauseTiming();
        folder.Write();
        state.ResumeTiming();
        Session session(settings, ui);
        PrepareSession(session);
        const BatchTotals totals = RunBatchFiles(session, folder.files(), operation, out);
        if (totals.Converted != kFiles)
            throw std::runtime_error("a generated pose didn't convert");
    }
    state.SetItemsProcessed(state.iterations() * kFiles);
    state.counters["bytes_out"] = static_cast<double>(FileSize(folder.files().front()));
}

} // namespace

BENCHMARK(HeadlessBatch1000)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();
