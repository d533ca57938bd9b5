// The first start's search for Poser: a Wine prefix with three programs and a busy
// Documents folder (40 projects of 12 folders of 12 folders each, about 6,000 folders
// within the depth searched), against the start-up budget of well under a second.
#include "core/app/PoserSearch.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

struct Places {
    std::string Root;
    gelvane::PoserSearchPlaces Search;

    Places() {
        std::string tmpl = (fs::temp_directory_path() / "gelvane-bench-XXXXXX").string();
        if (!mkdtemp(tmpl.data()))
            std::abort();
        Root = tmpl;
        for (const char *program : {"Vendor/Poser 7/Runtime", "Other/Tool/bin", "Maker/Pro 2014/Runtime"})
            fs::create_directories(Root + "/wine/drive_c/Program Files/" + program);
        for (int p = 0; p < 40; ++p)
            for (int a = 0; a < 12; ++a)
                for (int b = 0; b < 12; ++b)
                    fs::create_directories(Root + "/Documents/Project " + std::to_string(p) + "/Part " +
                                           std::to_string(a) + "/Take " + std::to_string(b));
        fs::create_directories(Root + "/Documents/Poser Content/Runtime");
        Search.WinePrefixes = {Root + "/wine"};
        Search.Documents = Root + "/Documents";
    }
    ~Places() {
        std::error_code ec;
        fs::remove_all(Root, ec);
    }
};

void BM_FindPoserFolders(benchmark::State &state) {
    static Places places;
    for (auto _ : state) {
        const auto found = gelvane::FindPoserFolders(places.Search);
        if (found.size() != 3)
            state.SkipWithError("not all folders found");
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(BM_FindPoserFolders)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
