// A character with 60 materials and 120 missing maps checked against a texture tree of
// 50,000 files in 2,000 folders: the first check includes the one scan, the second
// answers from the lists in memory.
#include "core/maps/MapCheck.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace fs = std::filesystem;
using namespace gelvane;

namespace {

constexpr int kSets = 40;
constexpr int kGroups = 50; // per set: 2,000 folders
constexpr int kFiles = 25;  // per folder: 50,000 files
constexpr int kMaterials = 60;

struct Tree {
    std::string Root;
    std::string Poser;
    Figure Character;

    Tree() {
        std::string tmpl = (fs::temp_directory_path() / "gelvane-bench-XXXXXX").string();
        if (!mkdtemp(tmpl.data()))
            std::abort();
        Root = tmpl;
        Poser = Root + "/Poser";
        setenv("GELVANE_HOME", (Root + "/home").c_str(), 1);
        const char *exts[] = {".JPG", ".jpg", ".tif", ".bmp", ".png"};
        for (int s = 0; s < kSets; ++s)
            for (int g = 0; g < kGroups; ++g) {
                const std::string folder =
                    Poser + "/Runtime/Textures/Set" + std::to_string(s) + "/Group" + std::to_string(g);
                fs::create_directories(folder);
                for (int f = 0; f < kFiles; ++f)
                    std::ofstream(folder + "/Tex_" + std::to_string(s) + "_" + std::to_string(g) + "_" +
                                  std::to_string(f) + exts[f % 5]);
            }
        Character.Name = "Figure 1";
        Character.Materials.clear();
        for (int m = 0; m < kMaterials; ++m) {
            Material material;
            material.Name = "mat" + std::to_string(m);
            // Two missing maps per material, one working reference and one switched off.
            material.textureMap =
                ":Old:tex_" + std::to_string(m % kSets) + "_" + std::to_string(m % kGroups) + "_0.jpg";
            material.bumpMap = ":Old:TEX_" + std::to_string(m % kSets) + "_" + std::to_string(m % kGroups) + "_2.tif";
            material.reflectionMap = ":Runtime:Textures:Set1:Group1:Tex_1_1_1.jpg";
            material.transparencyMap = "NO_MAP";
            Character.Materials.push_back(material);
        }
        // Folders written a moment ago can still change within one time stamp; a real
        // texture tree has settled long before it is checked.
        std::this_thread::sleep_for(std::chrono::seconds(4));
    }
    ~Tree() {
        std::error_code ec;
        fs::remove_all(Root, ec);
    }
};

Tree &SharedTree() {
    static Tree tree;
    return tree;
}

void FreshStart(Session &session, const Tree &tree) {
    session.Figures.assign(1, tree.Character);
    std::error_code ec;
    fs::remove_all(tree.Root + "/home/Cache", ec);
}

void BM_FirstCheckWithScan(benchmark::State &state) {
    Tree &tree = SharedTree();
    Settings settings;
    settings.PoserFolder = tree.Poser;
    ConsoleInteraction ui;
    for (auto _ : state) {
        state.PauseTiming();
        Session session(settings, ui);
        FreshStart(session, tree);
        state.ResumeTiming();
        CheckMapReferences(session);
        benchmark::DoNotOptimize(session.Figures[0].Materials[0].textureMap);
        if (session.Figures[0].Materials[0].textureMap.find("Tex_0_0_0") == std::string::npos)
            state.SkipWithError("map not found");
    }
}
BENCHMARK(BM_FirstCheckWithScan)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_SecondCheckFromMemory(benchmark::State &state) {
    Tree &tree = SharedTree();
    Settings settings;
    settings.PoserFolder = tree.Poser;
    ConsoleInteraction ui;
    Session session(settings, ui);
    FreshStart(session, tree);
    CheckMapReferences(session);
    for (auto _ : state) {
        state.PauseTiming();
        session.Figures.assign(1, tree.Character);
        state.ResumeTiming();
        CheckMapReferences(session);
        if (session.Figures[0].Materials[59].bumpMap.find("Tex_19_9_2") == std::string::npos)
            state.SkipWithError("map not found");
    }
}
BENCHMARK(BM_SecondCheckFromMemory)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace
