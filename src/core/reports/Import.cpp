#include "core/reports/Import.h"

#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/MorphLoader.h"
#include "core/reader/OpenFile.h"

#include <algorithm>
#include <optional>

namespace gelvane {

namespace {

enum class MaterialsBy { Open, OpenWithProps, FigureWindow };
enum class ChannelsBy { FreshLoad, KeptLoad, FreshLoadOrBody, FigureWindow };

struct FileType {
    const char *Caption;
    int16_t Kind;
    MaterialsBy Materials;
    ChannelsBy Channels;
};

constexpr FileType kFileTypes[kImportFileTypes] = {
    {"Pose file", KindPZ2, MaterialsBy::Open, ChannelsBy::FreshLoad},
    {"Camera file", KindCM2, MaterialsBy::Open, ChannelsBy::KeptLoad},
    {"Face file", KindFC2, MaterialsBy::Open, ChannelsBy::KeptLoad},
    {"Hand file", KindHD2, MaterialsBy::Open, ChannelsBy::KeptLoad},
    {"Light file", KindLT2, MaterialsBy::Open, ChannelsBy::KeptLoad},
    {"Character file", KindCR2, MaterialsBy::Open, ChannelsBy::FreshLoadOrBody},
    {"Character file with props", KindCR2, MaterialsBy::OpenWithProps, ChannelsBy::FigureWindow},
    {"Multi-figure character file", KindCR2, MaterialsBy::FigureWindow, ChannelsBy::FigureWindow},
    {"Prop file", KindPP2, MaterialsBy::Open, ChannelsBy::KeptLoad},
    {"Hair file", KindHR2, MaterialsBy::Open, ChannelsBy::KeptLoad},
};

// What an import may change, so that a cancel or a failed read can put it back.
class OpenFileState {
public:
    explicit OpenFileState(const Session &s)
        : m_figures(s.Figures), m_actors(s.Actors), m_rows(s.cmbFigures), m_pose(s.Pose), m_options(s.Options),
          m_view(s.View), m_dialogFileName(s.DialogFileName), m_kind(s.PoserFileKind), m_thighLength(s.ThighLength),
          m_modified(s.FileModified), m_hair(s.IsHairFile) {}

    void Restore(Session &s) const {
        s.Figures = m_figures;
        s.Actors = m_actors;
        s.cmbFigures = m_rows;
        s.Pose = m_pose;
        s.Options = m_options;
        s.View = m_view;
        s.DialogFileName = m_dialogFileName;
        s.PoserFileKind = m_kind;
        s.ThighLength = m_thighLength;
        s.FileModified = m_modified;
        s.IsHairFile = m_hair;
    }
    bool IsHairFile() const { return m_hair; }

private:
    std::vector<Figure> m_figures;
    std::vector<Actor> m_actors;
    std::vector<std::string> m_rows;
    PoseView m_pose;
    SaveOptions m_options;
    ViewState m_view;
    std::string m_dialogFileName;
    int16_t m_kind;
    double m_thighLength;
    bool m_modified;
    bool m_hair;
};

// An owner of the open file that the import keeps, with its row of the object list.
struct SavedOwner {
    Figure Owner;
    std::string Row;
};

// The owners that aren't actors (those hold the customMaterial blocks of body parts).
std::vector<SavedOwner> SavedOwners(const Session &s) {
    std::vector<SavedOwner> saved;
    if (IsEmptyList(s.Figures))
        return saved;
    for (size_t i = 0; i < s.Figures.size(); ++i) {
        const Figure &figure = s.Figures[i];
        if (ActorExists(s, figure.Name))
            continue;
        std::string row = i < s.cmbFigures.size() ? s.cmbFigures[i] : std::string();
        if (row.empty())
            row = StartsWith(figure.Name, "prop ") || StartsWith(figure.Name, "camera ") ||
                          StartsWith(figure.Name, "light ")
                      ? figure.Name
                      : "actor " + figure.Name;
        saved.push_back({figure, std::move(row)});
    }
    return saved;
}

size_t OwnerCount(const Session &s) {
    return IsEmptyList(s.Figures) ? 0 : s.Figures.size();
}

// A row for each actor that owns no materials and is no light, camera or prop.
void AddActorRows(Session &s) {
    for (const Actor &actor : s.Actors) {
        if (actor.Name.empty() || FigureExists(s, actor.Name) || actor.Type == "light" || actor.Type == "camera" ||
            actor.Type == "prop")
            continue;
        AddFigureLine(s, actor.Type + " " + actor.Name);
    }
}

// Behind the open of the imported owners: the open file's owners go in behind them.
void FinishMaterialImport(Session &s, const OpenFileState &before, const std::vector<SavedOwner> &saved) {
    s.ImportMode = false;
    s.MultiFigure = false;
    if (s.OpenCancelled || s.OpenFailed || s.Options.chkNoMaterialData) {
        before.Restore(s);
        return;
    }
    // The open file is still the one it was, whatever kind the imported one is.
    s.IsHairFile = before.IsHairFile();
    for (const SavedOwner &owner : saved) {
        const Figure &added = AppendElement(s.Figures, owner.Owner);
        const size_t index = static_cast<size_t>(&added - s.Figures.data());
        AddFigureLine(s, owner.Row, static_cast<int>(std::min(index, s.cmbFigures.size())) + 1);
    }
    AddActorRows(s);
}

void ClearSelectionFlags(Session &s) {
    s.SkipMaterials = false;
    s.SkipChannels = false;
    s.SingleActorLoad = false;
}

// The open dialog of `kind`; the path goes into the shared dialog and the kind's folder.
bool ChooseImportFile(Session &s, int kind, const char *defaultExt = nullptr) {
    FileDialogRequest request = OpenDialogRequest(s, kind);
    if (defaultExt)
        request.DefaultExt = defaultExt;
    const std::optional<std::string> chosen = s.ui().ChooseFile(request);
    if (!chosen || chosen->empty())
        return false;
    s.DialogFileName = *chosen;
    s.LastFolder[static_cast<size_t>(kind)] = std::string(FolderPart(*chosen));
    return true;
}

// Runs a channel load and tells whether it took channels; one that didn't (cancelled,
// failed, nothing in the file) is undone.
template <class Load> bool LoadOrRestore(Session &s, const OpenFileState &before, Load &&load) {
    s.FileModified = false;
    load();
    // The channel load marks the file modified only when it took channels.
    if (s.FileModified)
        return true;
    before.Restore(s);
    return false;
}

// Asks before a BODY actor at the head of the list is replaced: `replace` tells whether
// there is one; false when the user cancelled.
bool ConfirmBodyReplacement(Session &s, bool &replace) {
    replace = !s.Pose.lstActors.empty() && StartsWith(LCase(s.Pose.lstActors[0].Name), "body");
    return !replace ||
           s.ui().MessageBox(kReplaceBodyQuestion, kProgramTitle, MsgIcon::None, MsgButtons::OKCancel) == MsgResult::OK;
}

// The single actor load put the new BODY in front of the old one, which goes now.
void RemoveReplacedBody(Session &s) {
    if (s.Actors.size() < 2 || s.Pose.lstActors.size() < 2)
        return;
    s.Actors.erase(s.Actors.begin() + 1);
    s.Pose.lstActors.erase(s.Pose.lstActors.begin() + 1);
    s.cmbFigures.resize(std::min(s.cmbFigures.size(), OwnerCount(s)));
    AddActorRows(s);
}

void ImportThroughFigureWindow(Session &s, const FigureWindowOpener &showFigure, bool body) {
    bool replace = false;
    if (body && !ConfirmBodyReplacement(s, replace))
        return;
    const OpenFileState before(s);
    s.PoserFileKind = KindCR2;
    s.SingleActorLoad = body;
    s.SkipMaterials = true;
    s.SkipChannels = false;
    if (!ChooseImportFile(s, KindCR2)) {
        ClearSelectionFlags(s);
        before.Restore(s);
        return;
    }
    const bool loaded = LoadOrRestore(s, before, [&] { showFigure(s); });
    ClearSelectionFlags(s);
    if (loaded && replace)
        RemoveReplacedBody(s);
}

} // namespace

const char *FileTypeCaption(int index) {
    return index >= 0 && index < kImportFileTypes ? kFileTypes[index].Caption : "";
}

bool chkBodyEnabled(const ImportChoice &choice) {
    return choice.optDataType == 1 && choice.optFileType >= 5 && choice.optFileType <= 7;
}

void ApplyImportRules(ImportChoice &choice) {
    if (!chkBodyEnabled(choice))
        choice.chkBody = false;
}

bool ActorExists(const Session &session, std::string_view name) {
    return std::any_of(session.Actors.begin(), session.Actors.end(),
                       [&](const Actor &actor) { return actor.Name == name; });
}

bool FigureExists(const Session &session, std::string_view name) {
    return std::any_of(session.Figures.begin(), session.Figures.end(),
                       [&](const Figure &figure) { return figure.Name == name; });
}

void ImportMaterials(Session &session, int kind, bool multiFigure) {
    const OpenFileState before(session);
    session.PoserFileKind = static_cast<int16_t>(kind);
    session.ImportMode = true;
    if (multiFigure)
        session.MultiFigure = true;
    const std::vector<SavedOwner> saved = SavedOwners(session);
    OpenFile(session);
    FinishMaterialImport(session, before, saved);
}

void ImportFigureMaterials(Session &session, const FigureWindowOpener &showFigure) {
    const OpenFileState before(session);
    session.PoserFileKind = KindCR2;
    session.ImportMode = true;
    session.MultiFigure = true;
    session.SkipMaterials = false;
    session.SkipChannels = true;
    if (!ChooseImportFile(session, KindCR2)) {
        session.ImportMode = false;
        session.MultiFigure = false;
        ClearSelectionFlags(session);
        before.Restore(session);
        return;
    }
    const std::vector<SavedOwner> saved = SavedOwners(session);
    // Stays set unless the figure window's OK opens a figure.
    session.OpenCancelled = true;
    showFigure(session);
    ClearSelectionFlags(session);
    FinishMaterialImport(session, before, saved);
}

void ImportFigureChannels(Session &session, const FigureWindowOpener &showFigure) {
    ImportThroughFigureWindow(session, showFigure, false);
}

void ImportFigureBody(Session &session, const FigureWindowOpener &showFigure) {
    ImportThroughFigureWindow(session, showFigure, true);
}

void ImportBodyActor(Session &session) {
    bool replace = false;
    if (!ConfirmBodyReplacement(session, replace))
        return;
    const OpenFileState before(session);
    session.PoserFileKind = KindCR2;
    if (!ChooseImportFile(session, KindCR2)) {
        before.Restore(session);
        return;
    }
    if (LoadOrRestore(session, before, [&] { LoadMorphPoseData(session, true, true, {}, false); }) && replace)
        RemoveReplacedBody(session);
}

void ImportChannels(Session &session, int kind, bool keepActors) {
    const OpenFileState before(session);
    session.PoserFileKind = static_cast<int16_t>(kind);
    // The hair dialog offers the prop extension.
    if (!ChooseImportFile(session, kind, kind == KindHR2 ? "pp2" : nullptr)) {
        before.Restore(session);
        return;
    }
    LoadOrRestore(session, before, [&] { LoadMorphPoseData(session, false, true, {}, keepActors); });
}

void RunImport(Session &session, const ImportChoice &choice, const FigureWindowOpener &showFigure) {
    if (choice.optFileType < 0 || choice.optFileType >= kImportFileTypes)
        return;
    const FileType &type = kFileTypes[choice.optFileType];
    if (choice.optDataType == 0) {
        switch (type.Materials) {
        case MaterialsBy::Open:
            return ImportMaterials(session, type.Kind);
        case MaterialsBy::OpenWithProps:
            return ImportMaterials(session, type.Kind, true);
        case MaterialsBy::FigureWindow:
            return ImportFigureMaterials(session, showFigure);
        }
        return;
    }
    const bool body = choice.chkBody && chkBodyEnabled(choice);
    switch (type.Channels) {
    case ChannelsBy::FreshLoad:
        return ImportChannels(session, type.Kind, false);
    case ChannelsBy::KeptLoad:
        return ImportChannels(session, type.Kind, true);
    case ChannelsBy::FreshLoadOrBody:
        return body ? ImportBodyActor(session) : ImportChannels(session, type.Kind, false);
    case ChannelsBy::FigureWindow:
        return body ? ImportFigureBody(session, showFigure) : ImportFigureChannels(session, showFigure);
    }
}

} // namespace gelvane
