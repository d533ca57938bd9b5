#include "core/reports/FileInfoOutput.h"

#include "core/platform/Paths.h"
#include "core/reports/FileInfo.h"
#include "core/reports/JsonWriter.h"

#include <cstdlib>

namespace gelvane {
namespace {

std::vector<std::string> CommentLines(const std::string &comment) {
    std::vector<std::string> lines;
    const std::string notes = NotesOfComment(comment);
    size_t start = 0;
    while (!notes.empty() && start <= notes.size()) {
        const size_t end = std::min(notes.find('\n', start), notes.size());
        lines.push_back(notes.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

// A count label as a number, or null where the window shows "N/A".
void CountOrNull(JsonWriter &json, const char *key, const std::string &label) {
    json.Key(key);
    if (label == kNotAvailable)
        json.Null();
    else
        json.Number(std::strtoll(label.c_str(), nullptr, 10));
}

} // namespace

std::string FileInfoListing(const Session &session) {
    const FileInfoTexts t = FileInfoOf(session);
    const FileStatisticsRecord &stats = session.FileStatistics;
    std::string out;
    for (const auto &label : kGeneralLabels)
        out += std::string(label.Caption) + " " + t.*label.Text + "\n";
    if (t.lblFigures != kNotAvailable)
        for (size_t row = 0; row < t.cmbFigures.size(); ++row)
            out += std::string(kFigureFrameCaption) + ": " + t.cmbFigures[row] + "\n  " + kFigureMaterialsCaption +
                   " " + FigureRowText(stats, static_cast<int>(row)) + "\n";
    for (size_t row = 0; row < t.cmbActors.size(); ++row) {
        out += std::string(kActorFrameCaption) + ": " + t.cmbActors[row] + "\n";
        const ActorRowTexts a = ActorRowOf(stats, static_cast<int>(row));
        for (const auto &label : kActorRowLabels)
            out += "  " + std::string(label.Caption) + " " + a.*label.Text + "\n";
    }
    out += "Notes:\n";
    for (const std::string &line : CommentLines(session.FileComment))
        out += "  " + line + "\n";
    return out;
}

std::string FileInfoJson(const Session &session, const DateTextOf &dateOf) {
    const FileInfoTexts t = FileInfoOf(session);
    const FileStatisticsRecord &stats = session.FileStatistics;
    JsonWriter json;
    json.BeginObject();
    json.Key("file");
    json.String(stats.FilePath);
    json.Key("fileName");
    json.String(t.lblFileName);
    json.Key("kind");
    json.String(t.lblFileType);
    json.Key("size");
    json.Number(static_cast<int64_t>(FileSize(stats.FilePath)));
    json.Key("sizeText");
    json.String(t.lblSize);
    json.Key("created");
    json.String(dateOf(stats.FilePath));
    json.Key("version");
    if (session.FileVersion.empty())
        json.Null();
    else
        json.String(session.FileVersion);

    json.Key("objects");
    json.BeginArray();
    if (t.lblFigures != kNotAvailable)
        for (const FigureStat &f : stats.FigureStats) {
            json.BeginObject(true);
            json.Key("name");
            json.String(f.Name);
            json.Key("materials");
            json.Number(f.Materials);
            json.EndObject();
        }
    json.EndArray();
    CountOrNull(json, "materials", t.lblMaterials);

    json.Key("actors");
    json.BeginArray();
    if (t.cmbActorsEnabled)
        for (const ActorStat &a : stats.ActorStats) {
            json.BeginObject(true);
            json.Key("name");
            json.String(a.Name);
            const std::pair<const char *, int32_t> numbers[] = {
                {"materials", a.Materials},         {"channels", a.Channels},         {"poseChannels", a.PoseChannels},
                {"morphChannels", a.MorphChannels}, {"nullChannels", a.NullChannels},
            };
            for (const auto &[key, number] : numbers) {
                json.Key(key);
                json.Number(number);
            }
            json.EndObject();
        }
    json.EndArray();
    CountOrNull(json, "subdividedMaterials", t.lblSdMats);
    CountOrNull(json, "channels", t.lblChannels);
    CountOrNull(json, "poseChannels", t.lblPose);
    CountOrNull(json, "morphChannels", t.lblMorph);
    CountOrNull(json, "nullChannels", t.lblNull);

    const std::tuple<const char *, int32_t, std::string Material::*> maps[] = {
        {"textureMaps", stats.TextureMaps, &Material::textureMap},
        {"bumpMaps", stats.BumpMaps, &Material::bumpMap},
        {"reflectionMaps", stats.ReflectionMaps, &Material::reflectionMap},
        {"transparencyMaps", stats.TransparencyMaps, &Material::transparencyMap},
    };
    for (const auto &[key, count, field] : maps) {
        json.Key(key);
        json.BeginObject();
        json.Key("count");
        json.Number(count);
        json.Key("files");
        json.BeginArray();
        for (const std::string &map : DistinctMaps(session, field))
            json.String(map);
        json.EndArray();
        json.EndObject();
    }
    json.Key("comment");
    json.String(session.FileComment);
    json.EndObject();
    return json.text() + "\n";
}

} // namespace gelvane
