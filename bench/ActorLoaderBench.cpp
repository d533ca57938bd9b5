// Loading the channels of generated pose sections: the time should grow with the
// text, tenfold for ten times the channels.
#include "BenchFiles.h"

#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/ActorLoader.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>

using namespace gelvane;

namespace {

const std::string &Section(int channels, int perActor) {
    static std::map<std::pair<int, int>, std::string> cache;
    auto it = cache.find({channels, perActor});
    if (it == cache.end()) {
        const std::string path =
            benchfiles::File("channels-" + std::to_string(channels) + "-" + std::to_string(perActor) + ".txt",
                             [&] { return benchfiles::ChannelSection(channels, perActor); });
        it = cache.emplace(std::make_pair(channels, perActor), ReadFileBytes(path)).first;
    }
    return it->second;
}

void LoadSection(benchmark::State &state) {
    const int channels = static_cast<int>(state.range(0));
    const int perActor = static_cast<int>(state.range(1));
    const std::string &text = Section(channels, perActor);
    Settings settings;
    ConsoleInteraction ui;
    for (auto _ : state) {
        Session session(settings, ui);
        session.BatchMode = true;
        if (!LoadActorSection(session, text))
            state.SkipWithError("cancelled");
        benchmark::DoNotOptimize(session.Actors.data());
    }
    state.SetLabel("channels-" + std::to_string(channels) + "-" + std::to_string(perActor) + ".txt");
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

} // namespace

// Many actors of 100 channels, a few actors of 1,000, and one actor with them all.
BENCHMARK(LoadSection)
    ->Args({10000, 100})
    ->Args({100000, 100})
    ->Args({10000, 1000})
    ->Args({100000, 1000})
    ->Args({10000, 10000})
    ->Args({100000, 100000})
    ->Unit(benchmark::kMillisecond);
