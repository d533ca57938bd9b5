#include "core/reports/FileStatistics.h"

#include "core/model/Numbers.h"
#include "core/model/Text.h"

#include <unordered_set>

namespace gelvane {
namespace {

int32_t Count(size_t n) {
    return ToInt32(static_cast<double>(n));
}

int32_t MaterialCount(const Figure &figure) {
    return Count(figure.Materials.size());
}

} // namespace

void ComputeFileStatistics(Session &session) {
    FileStatisticsRecord &stats = session.FileStatistics;
    stats = FileStatisticsRecord{};
    stats.FilePath = session.FileName;

    // One list serves all four kinds, so a file used as bump and texture map counts
    // once, under the kind tested first.
    std::unordered_set<std::string> seen{std::string()};
    for (const Figure &figure : session.Figures) {
        for (const Material &m : figure.Materials) {
            const std::pair<const std::string *, int32_t *> maps[] = {
                {&m.bumpMap, &stats.BumpMaps},
                {&m.reflectionMap, &stats.ReflectionMaps},
                {&m.textureMap, &stats.TextureMaps},
                {&m.transparencyMap, &stats.TransparencyMaps},
            };
            for (auto [map, counter] : maps) {
                if (seen.count(*map) || LCase(*map) == "no_map")
                    continue;
                seen.insert(*map);
                ++*counter;
            }
        }
    }

    for (const Actor &actor : session.Actors) {
        ActorStat &stat = stats.ActorStats.emplace_back();
        stat.Name = actor.Name;
        if (actor.Name.empty())
            continue;
        stat.Channels = Count(actor.Channels.size());
        for (const Channel &c : actor.Channels) {
            if (c.Type == "targetGeom" || c.Type == "geomChan" || c.Type == "handSpread" || c.Type == "thumbGrasp" ||
                c.Type == "handGrasp")
                ++stat.MorphChannels;
            else if (c.Type == "valueParm")
                ++stat.NullChannels;
            else
                ++stat.PoseChannels;
        }
        for (auto it = session.Figures.rbegin(); it != session.Figures.rend(); ++it) {
            if (it->Name == actor.Name) {
                stat.Materials = MaterialCount(*it);
                break;
            }
        }
    }

    const auto &rows = session.cmbFigures;
    if (!IsEmptyList(session.Figures) && !(rows.size() > 0 && StartsWith(rows[0], "actor "))) {
        size_t objects = 0;
        while (objects < rows.size() && !StartsWith(rows[objects], "actor "))
            ++objects;
        stats.FigureStats.assign(objects, FigureStat{});
        for (size_t i = 0; i < objects && i < session.Figures.size(); ++i) {
            stats.FigureStats[i].Name = session.Figures[i].Name;
            stats.FigureStats[i].Materials = MaterialCount(session.Figures[i]);
        }
    }
}

} // namespace gelvane
