#pragma once
// Everything about the open file: the model records, the loaded-file state and
// the window-side state (object list rows, save options) that the readers and
// writers depend on. The GUI shows it; the core reads and writes it.
#include "core/model/MapLists.h"
#include "core/model/Model.h"
#include "core/model/SaveOptions.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

struct Settings;
class Interaction;

// Enabled states and texts of main-window controls that core operations set.
struct ViewState {
    std::string Caption = "Gelvane";
    std::vector<std::string> lstMaterials; // rows of the material list
    int lstMaterialsIndex = -1;
    int cmbFiguresIndex = -1;
    bool MaterialControlsEnabled = false;
    bool cmbFiguresEnabled = true;
    bool cmdDeleteEnabled = false; // cmd(1), "Delete"
    bool mnuSaveEnabled = false;
    bool mnuSaveAsEnabled = false;
    bool mnuExportMTLEnabled = false;

    // Material page controls that opening a file resets.
    bool cmdNewMatEnabled = true;
    bool cmdCreateMatEnabled = true;
    std::array<std::string, 12> TXT{};     // TXT(1)..TXT(11); the version box TXT(0) is Options.VersionText
    std::array<std::string, 4> imgThumb{}; // the picture each thumbnail shows (a FullMapPath), empty for none
    std::vector<std::string> Combo1;       // the selection templates
    int Combo1Index = -1;
    std::vector<std::string> Combo2; // the groups of the loaded template
    int Combo2Index = -1;
    bool TemplateLoaded = false; // enables Combo2, cmdEditTemplate and cmdDelTemplate
    void ClearMaterialControls();
    void EnableMaterialControls();
    void DisableMaterialControls();
    // "Use full map paths": the form that repaired and browsed map references take.
    bool chkTexture = false;
    // Main window entries beyond the pages.
    bool mnuFileInfoEnabled = false;     // set by the statistics scan
    bool mnuPoserEnabled = false;        // a Poser folder is configured
    bool ChannelControlsEnabled = false; // the actor and dial lists of the morph and pose page
};

// One row of the actor or dial list of the morph and pose page: the text and the "Type" column.
struct ListRow {
    std::string Name;
    std::string Type;
    bool Selected = false;
};

// The morph and pose page's lists and the controls that loading channels sets.
struct PoseView {
    std::vector<ListRow> lstActors;
    std::vector<ListRow> lstDials;
    int lstActorsCurrentRow = 0; // 1-based row with the focus, 0 for none
    int lstDialsCurrentRow = 0;
    int16_t CurrentActor = 0; // 1-based row of the clicked actor
    int16_t CurrentDial = 0;
    bool chkDisableThighLengthEnabled = true;
    bool txtThighLengthEnabled = true;
};

struct FigureStat {
    std::string Name;
    int32_t Materials = 0;
};

struct ActorStat {
    std::string Name;
    int32_t Channels = 0;
    int32_t PoseChannels = 0;
    int32_t MorphChannels = 0;
    int32_t NullChannels = 0;
    int32_t Materials = 0;
};

// The counts of the open file, rebuilt after every load. 32-bit: a large figure
// holds more than 32,767 channels.
struct FileStatisticsRecord {
    std::string FilePath;
    std::vector<FigureStat> FigureStats{1};
    std::vector<ActorStat> ActorStats;
    int32_t TextureMaps = 0;
    int32_t BumpMaps = 0;
    int32_t ReflectionMaps = 0;
    int32_t TransparencyMaps = 0;
};

// State that an area above the model keeps for one session (the material page's, for
// one): the session owns it without knowing its type.
class SessionPart {
public:
    virtual ~SessionPart() = default;
};

class Session {
public:
    Session(const Settings &settings, Interaction &ui);

    const Settings &settings() const { return *m_settings; }
    Interaction &ui() const { return *m_ui; }

    // The model.
    std::vector<Figure> Figures{1};
    std::vector<Actor> Actors{1};
    // Rows of the figure/object list, kept in step with Figures: row i up to the
    // last Figure is Figures[i]; rows behind it begin with "actor ".
    std::vector<std::string> cmbFigures;

    // The loaded-file state.
    int16_t PoserFileKind = KindPZ2;
    std::string FileName;
    std::string FileComment;
    std::string FileVersion;
    std::string OutputVersion;
    bool MultiFigure = false;
    bool FileModified = false;
    bool CommandLineOpen = false;
    bool SilentConvert = false;
    bool OpenCancelled = false;
    bool OpenFailed = false;
    bool BatchMode = false;
    bool ImportMode = false;
    bool KeywordMissing = false;
    bool CustomMaterialsFound = false;
    bool IsHairFile = false;
    double ThighLength = 0.0;
    bool EventsEnabled = true;
    bool SkipMaterials = false;
    bool SkipChannels = false;
    bool SingleActorLoad = false;
    int16_t LoadChannelsChoice = 0;
    std::array<std::string, 8> LastFolder;
    std::string LastSaveFolder;

    std::string CommandText;    // the raw command line text after the program's name
    std::string DialogFileName; // the shared file dialog's FileName: carries a path between commands
    std::string OutputPath;     // the save dialog's file name: the writer's output path
    // The save dialog's initial folder: kept between its uses, as a dialog object keeps it.
    std::string SaveDialogInitialDir;

    SaveOptions Options;
    ViewState View;

    // The map finder's lists and the state of a run of map reference checks.
    MapLists Maps;

    // Called for each existing map file while materials are read, to cache its thumbnail.
    std::function<void(const std::string &path)> LoadThumbNail;

    // Hooks of the thumbnail image list and the template list; either may be empty.
    std::function<void()> ResetThumbnails;           // back to the fixed images, map list emptied
    std::function<void(int row)> LoadTemplateGroups; // a row of Combo1 was selected
    std::function<void()> RefreshTemplateList;       // Combo1 refilled: a fresh open, start-up, materials on again

    void ClearMaterials() { ResetList(Figures); }
    void ClearActors() { Actors.assign(1, Actor{}); }

    // Channel loading: the pose page, the end of the section read (it holds across calls),
    // the chkChannels click of the window (run on a cancelled load) and the clock in seconds.
    PoseView Pose;
    int64_t ActorSectionEnd = 0;
    std::function<void()> chkChannelsClick;
    std::function<int32_t()> SecondsClock;
    // Channels blocks at least this long get a search index for their dial lines. The
    // result is the same either way; tests lower it to compare both.
    size_t IndexedChannelBlockMinimum = 8 * 1024;

    // The material page's state (core/materials/MaterialPageState.h), made on first use.
    std::unique_ptr<SessionPart> MaterialPage;

    // The statistics of the open file.
    FileStatisticsRecord FileStatistics;

private:
    const Settings *m_settings;
    Interaction *m_ui;
};

// The caption of the main window for an open file.
std::string CaptionOf(std::string_view fileName);
// Puts the window state into "nothing loaded" and empties the model.
void ResetMainWindow(Session &session);
// Fills the material list from the Figure that the object list selects, row 0 focused.
// A row that names no Figure is the failure "Subscript out of range" (9).
void ShowMaterialList(Session &session);
// The dial list: the named channels of Actors[actorIndex] (none for an index without an
// actor), the first one focused.
void FillDialList(Session &session, int actorIndex);

} // namespace gelvane
