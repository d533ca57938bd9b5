// Loading the channels of generated pose sections: the time should grow with the
// text, tenfold for ten times the channels.
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/reader/ActorLoader.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>

using namespace gelvane;

namespace {

// `channels` dials spread over actors of `perActor` each, with name, hidden and keys
// lines; every 50th actor carries a customMaterial block with two materials.
std::string GeneratedSection(int channels, int perActor) {
    std::string text = "thighLength 0.5\n";
    const int actors = (channels + perActor - 1) / perActor;
    for (int a = 0; a < actors; ++a) {
        text += "actor part_" + std::to_string(a) + "\n{\nname Part " + std::to_string(a) +
                "\non\nhidden 0\nbend 1\nparent BODY\nchannels\n{\n";
        for (int c = 0; c < perActor && a * perActor + c < channels; ++c) {
            const std::string name = "dial_" + std::to_string(100000 + c);
            text += (c % 3 == 0   ? "targetGeom "
                     : c % 3 == 1 ? "valueParm "
                                  : "rotateY ") +
                    name + "\n{\nname " + name +
                    "\ninitValue 0\nhidden 0\nforceLimits 0\nmin -100000\nmax 100000\ntrackingScale 0.004\nkeys\n{\n"
                    "static  0\nk  0  " +
                    std::to_string(c % 7) + "\n}\ninterpStyleLocked 0\n}\n";
        }
        text += "}\nendPoint 0 0 0\norigin 0 0 0\n";
        if (a % 50 == 0)
            text += "customMaterial 2\nmaterial Skin\n{\nKdColor 1 1 1 1\ntextureMap NO_MAP\n}\n"
                    "material Nails\n{\nKdColor 1 0 0 1\n}\n";
        else
            text += "customMaterial 0\n";
        text += "locked 0\n}\n";
    }
    return text;
}

const std::string &Section(int channels, int perActor) {
    static std::map<std::pair<int, int>, std::string> cache;
    auto it = cache.find({channels, perActor});
    if (it == cache.end())
        it = cache.emplace(std::make_pair(channels, perActor), GeneratedSection(channels, perActor)).first;
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
