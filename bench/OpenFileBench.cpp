// Opening speed: a pose file with thousands of materials read whole, and a large
// character whose materials come from its tail.
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/reader/OpenFile.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace gelvane;

std::string MaterialBlock(int i) {
    const std::string n = std::to_string(i);
    return "\tmaterial mat" + n +
           "\n\t\t{\n\t\tKdColor 0.5 0.4 0.3 1 \n\t\tKaColor 0 0 0 1 \n\t\tKsColor 1 1 1 1 \n"
           "\t\tTextureColor 1 1 1 1 \n\t\tNsExponent 40 \n\t\ttMin 0 \n\t\ttMax 0 \n\t\ttExpo 0.6 \n"
           "\t\tbumpStrength 1 \n\t\tksIgnoreTexture 0 \n\t\treflectThruLights 0 \n\t\treflectThruKd 0 \n"
           "\t\ttextureMap \":Runtime:textures:tex" +
           n +
           ".jpg\"\n\t\t0 0 \n\t\tbumpMap NO_MAP\n\t\treflectionMap NO_MAP\n\t\ttransparencyMap NO_MAP\n"
           "\t\tReflectionColor 1 1 1 1 \n\t\treflectionStrength 1 \n\t\t}\n";
}

std::string TempPath(const char *name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

const std::string &PoseFile() {
    static const std::string path = [] {
        std::string text =
            "{\r\n\r\nversion\r\n\t{\r\n\tnumber 4.01\r\n\t}\r\nactor hip\r\n\t{\r\n\tchannels\r\n\t\t{\r\n"
            "\t\trotateX xrot\r\n\t\t\t{\r\n\t\t\tkeys\r\n\t\t\t\t{\r\n\t\t\t\tk  0  10\r\n\t\t\t\t}\r\n"
            "\t\t\t}\r\n\t\t}\r\n\t}\r\nfigure\r\n\t{\r\n";
        std::string materials;
        for (int i = 0; i < 5000; ++i)
            materials += MaterialBlock(i);
        std::string crlf;
        for (char c : materials) {
            if (c == '\n')
                crlf += '\r';
            crlf += c;
        }
        text += crlf + "\t}\r\n}\r\n";
        const std::string p = TempPath("gelvane-bench-5000.pz2");
        std::ofstream(p, std::ios::binary) << text;
        return p;
    }();
    return path;
}

const std::string &HugeCharacter() {
    static const std::string path = [] {
        const std::string p = TempPath("gelvane-bench-huge.cr2");
        std::ofstream out(p, std::ios::binary);
        out << "{\n\nversion\n\t{\n\tnumber 4.01\n\t}\nfigureResFile x.obj\nactor BODY\n\t{\n\t}\n";
        // 100 MB of channel data that the tail scan must not read.
        const std::string line = "\t\t\t\td 1 0.000123 0.000456 0.000789\n";
        std::string chunk;
        while (chunk.size() < (1 << 20))
            chunk += line;
        for (int i = 0; i < 100; ++i)
            out << chunk;
        out << "figure\n\t{\n\tfigureType 1318 \n";
        for (int i = 0; i < 60; ++i)
            out << MaterialBlock(i);
        out << "\tdisplayMode USEPARENT\n\t}\n\tsetGeomHandlerOffset 0 0.3487 0\n}\n";
        return p;
    }();
    return path;
}

class QuietInteraction : public ConsoleInteraction {
public:
    void ProgressShow(const std::string &, const std::string &, int) override {}
    void ProgressStatus(const std::string &) override {}
    void ProgressClose() override {}
};

void Open(benchmark::State &state, const std::string &path, int kind) {
    Settings settings;
    QuietInteraction ui;
    for (auto _ : state) {
        Session session(settings, ui);
        session.PoserFileKind = static_cast<int16_t>(kind);
        session.CommandLineOpen = true;
        session.CommandText = path;
        OpenFile(session);
        if (session.OpenFailed)
            state.SkipWithError("open failed");
        benchmark::DoNotOptimize(session.Figures.data());
    }
}

void BM_OpenPoseWith5000Materials(benchmark::State &state) {
    Open(state, PoseFile(), KindPZ2);
}
BENCHMARK(BM_OpenPoseWith5000Materials)->Unit(benchmark::kMillisecond);

void BM_OpenCharacterOf100MB(benchmark::State &state) {
    Open(state, HugeCharacter(), KindCR2);
}
BENCHMARK(BM_OpenCharacterOf100MB)->Unit(benchmark::kMillisecond);

} // namespace
