#include "core/reports/FileInfo.h"

#include "core/maps/MapPaths.h"
#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/platform/FileTimes.h"
#include "core/platform/Paths.h"

#include <ctime>

namespace gelvane {
namespace {

std::string CountText(int64_t n) {
    return NumberText(static_cast<long long>(n));
}

bool HasActors(const FileStatisticsRecord &stats) {
    return !IsEmptyList(stats.ActorStats);
}

// Sums in 64 bits: thousands of actors of thousands of channels each still add up.
template <class Field> std::string ActorSum(const FileStatisticsRecord &stats, Field field) {
    int64_t sum = 0;
    for (const ActorStat &a : stats.ActorStats)
        sum += a.*field;
    return CountText(sum);
}

} // namespace

std::string FileTypeText(std::string_view path) {
    static const std::pair<const char *, const char *> kTypes[] = {
        {".cr2", "Character (CR2)"}, {".pz2", "Pose (PZ2)"}, {".pp2", "Prop (PP2)"},   {".hr2", "Hair (HR2)"},
        {".hd2", "Hand (HD2)"},      {".fc2", "Face (FC2)"}, {".cm2", "Camera (CM2)"}, {".lt2", "Light (LT2)"},
    };
    const std::string ending = LCase(Right(path, 4));
    for (const auto &[extension, text] : kTypes)
        if (ending == extension)
            return text;
    return kNotAvailable;
}

std::string SizeText(uint64_t bytes) {
    const double size = static_cast<double>(bytes);
    if (bytes < 1000000)
        return NumberText(RoundPlaces(size / 1000, 1)) + " KB";
    return NumberText(RoundPlaces(size / 1000000, 2)) + " MB";
}

std::string DateText(int64_t seconds) {
    const std::time_t time = static_cast<std::time_t>(seconds);
    std::tm local{};
    if (!localtime_r(&time, &local))
        return {};
    char text[32];
    const size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return std::string(text, length);
}

std::string CreationDateText(const std::string &path) {
    return DateText(FileCreationTime(path));
}

FileInfoTexts FileInfoOf(const Session &session) {
    const FileStatisticsRecord &stats = session.FileStatistics;
    FileInfoTexts t;
    t.lblFileName = MapFileName(stats.FilePath);
    t.lblFileType = FileTypeText(stats.FilePath);
    t.lblSize = SizeText(FileSize(stats.FilePath));

    const bool hasObjects = !IsEmptyList(stats.FigureStats);
    t.lblFigures = hasObjects ? CountText(static_cast<int64_t>(stats.FigureStats.size())) : kNotAvailable;
    int64_t materials = 0;
    for (const FigureStat &f : stats.FigureStats)
        materials += f.Materials;
    t.lblMaterials = hasObjects ? CountText(materials) : kNotAvailable;
    for (const FigureStat &f : stats.FigureStats)
        t.cmbFigures.push_back(f.Name);

    if (HasActors(stats)) {
        t.lblActors = CountText(static_cast<int64_t>(stats.ActorStats.size()));
        t.lblSdMats = ActorSum(stats, &ActorStat::Materials);
        t.lblChannels = ActorSum(stats, &ActorStat::Channels);
        t.lblPose = ActorSum(stats, &ActorStat::PoseChannels);
        t.lblMorph = ActorSum(stats, &ActorStat::MorphChannels);
        t.lblNull = ActorSum(stats, &ActorStat::NullChannels);
        for (const ActorStat &a : stats.ActorStats)
            t.cmbActors.push_back(a.Name);
        t.cmbActorsEnabled = true;
    } else {
        t.lblActors = t.lblSdMats = t.lblChannels = t.lblPose = t.lblMorph = t.lblNull = kNotAvailable;
    }

    t.lblTexture = CountText(stats.TextureMaps);
    t.lblBump = CountText(stats.BumpMaps);
    t.lblReflection = CountText(stats.ReflectionMaps);
    t.lblTransparency = CountText(stats.TransparencyMaps);
    return t;
}

std::string FigureRowText(const FileStatisticsRecord &stats, int row) {
    if (row < 0 || static_cast<size_t>(row) >= stats.FigureStats.size())
        return {};
    return CountText(stats.FigureStats[static_cast<size_t>(row)].Materials);
}

ActorRowTexts ActorRowOf(const FileStatisticsRecord &stats, int row) {
    if (!HasActors(stats) || row < 0 || static_cast<size_t>(row) >= stats.ActorStats.size())
        return {kNotAvailable, kNotAvailable, kNotAvailable, kNotAvailable, kNotAvailable};
    const ActorStat &a = stats.ActorStats[static_cast<size_t>(row)];
    return {CountText(a.Materials), CountText(a.Channels), CountText(a.PoseChannels), CountText(a.MorphChannels),
            CountText(a.NullChannels)};
}

std::string NotesOfComment(std::string_view comment) {
    return Replace(comment, "\r\n", "\n");
}

void StoreNotes(Session &session, std::string_view notes) {
    std::string comment;
    size_t start = 0;
    while (start <= notes.size()) {
        size_t end = notes.find('\n', start);
        if (end == std::string_view::npos)
            end = notes.size();
        std::string_view line = notes.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if (start > 0)
            comment += "\r\n";
        comment += line;
        start = end + 1;
    }
    session.FileComment = std::string(Trim(comment));
}

} // namespace gelvane
