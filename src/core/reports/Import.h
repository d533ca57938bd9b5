#pragma once
// The import window: merges the materials of a second file into Figures, or its morphs
// and poses into Actors, through the ordinary readers. A cancelled dialog, a failed read
// and a file without the data asked for leave the open file as it was.
#include <functional>
#include <string_view>

namespace gelvane {

class Session;

// Shows frmFigure over the character file in session.DialogFileName; its OK reads the
// chosen figure as the selection flags (SkipMaterials, SkipChannels, SingleActorLoad) say.
using FigureWindowOpener = std::function<void(Session &)>;

inline constexpr int kImportFileTypes = 10;
inline constexpr const char *kReplaceBodyQuestion = "Do you want to replace the existing BODY actor?";

// frmImport's options.
struct ImportChoice {
    int optDataType = 0; // 0 "Materials", 1 "Morphs and poses"
    int optFileType = 0; // a row of the file type table, 0 to 9
    bool chkBody = false;
};

// The caption of file type `index` ("Pose file" ... "Hair file").
const char *FileTypeCaption(int index);
// "BODY actor only" applies to morphs and poses of the three character types.
bool chkBodyEnabled(const ImportChoice &choice);
// After a change of an option: a disabled chkBody is unchecked.
void ApplyImportRules(ImportChoice &choice);

// cmdImport, once the window is gone: the procedure of the file type table for the data type.
void RunImport(Session &session, const ImportChoice &choice, const FigureWindowOpener &showFigure);

// Exact comparisons; the scan stops at the first hit.
bool ActorExists(const Session &session, std::string_view name);
bool FigureExists(const Session &session, std::string_view name);

// The five procedures. ImportMaterials reads the owners of a file of `kind` (0 CR2 ...
// 7 LT2) in front of the open file's, `multiFigure` with the props of a character.
void ImportMaterials(Session &session, int kind, bool multiFigure = false);
void ImportFigureMaterials(Session &session, const FigureWindowOpener &showFigure);
void ImportFigureChannels(Session &session, const FigureWindowOpener &showFigure);
void ImportFigureBody(Session &session, const FigureWindowOpener &showFigure);
void ImportBodyActor(Session &session);
// The channels of a file of `kind`: replacing Actors, or appending with `keepActors`.
void ImportChannels(Session &session, int kind, bool keepActors);

} // namespace gelvane
