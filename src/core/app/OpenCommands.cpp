#include "core/app/OpenCommands.h"

#include "core/app/CommandLine.h"
#include "core/maps/MapCheck.h"
#include "core/materials/MaterialPageState.h"
#include "core/model/CommandText.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/MorphLoader.h"
#include "core/reader/OpenFile.h"
#include "core/reports/FileStatistics.h"

namespace gelvane {

namespace {

// The command by which a file of `kind` from outside opens.
OpenMenu MenuOfKind(int kind) {
    static constexpr OpenMenu kMenus[] = {OpenMenu::mnuMultiFigure, OpenMenu::mnuOpenPZ2, OpenMenu::mnuOpenPP2,
                                          OpenMenu::mnuOpenHR2,     OpenMenu::mnuOpenCM2, OpenMenu::mnuOpenFC2,
                                          OpenMenu::mnuOpenHD2,     OpenMenu::mnuOpenLT2};
    return kind >= 0 && kind < 8 ? kMenus[kind] : OpenMenu::None;
}

void ClearSelectionFlags(Session &session, FigureList &list) {
    session.SkipMaterials = false;
    session.SkipChannels = false;
    session.SingleActorLoad = false;
    list = FigureList{};
}

// After every open from a menu or from outside: the statistics, the map references,
// and the File Information entry once a file is open.
void RunAfterOpen(Session &session) {
    if (session.OpenCancelled)
        return;
    ComputeFileStatistics(session);
    CheckMapReferences(session);
    // The map check may have rewritten what the material page shows.
    if (session.MaterialPage)
        ShowSelectedMaterial(session);
    if (!session.OpenFailed && !session.FileName.empty())
        session.View.mnuFileInfoEnabled = true;
}

} // namespace

int KindOfMenu(OpenMenu menu) {
    switch (menu) {
    case OpenMenu::mnuOpenCR2:
    case OpenMenu::mnuOpenCR2Props:
    case OpenMenu::mnuMultiFigure:
        return KindCR2;
    case OpenMenu::mnuOpenPP2:
        return KindPP2;
    case OpenMenu::mnuOpenHR2:
        return KindHR2;
    case OpenMenu::mnuOpenCM2:
        return KindCM2;
    case OpenMenu::mnuOpenFC2:
        return KindFC2;
    case OpenMenu::mnuOpenHD2:
        return KindHD2;
    case OpenMenu::mnuOpenLT2:
        return KindLT2;
    case OpenMenu::mnuOpenPZ2:
    case OpenMenu::None:
        break;
    }
    return KindPZ2;
}

OpenMenu MenuOfCommandText(std::string_view commandText) {
    return MenuOfKind(FileKindOfCommand(commandText));
}

OpenMenu MenuOfDroppedFile(std::string_view path) {
    std::string_view tail = Right(path, 4);
    if (!tail.empty() && tail.front() == '.')
        tail.remove_prefix(1);
    return MenuOfKind(FileKindOfExtension(tail));
}

bool AskLoadChannels(Session &session) {
    return session.ui().MessageBox(kLoadChannelsQuestion, kProgramTitle, MsgIcon::None, MsgButtons::YesNo) ==
           MsgResult::Yes;
}

void ConfirmFigure(Session &session, FigureList &list, int index) {
    Interaction &ui = session.ui();
    ui.ProgressShow("Please wait", "Reading data...", 5);
    std::string figureText;
    try {
        figureText = CutFigureText(list, index);
    } catch (...) {
        ui.ProgressClose();
        throw;
    }
    list.FileText.clear();
    list.FileText.shrink_to_fit();
    ui.ProgressValue(1);
    ui.ProgressClose();
    session.CommandLineOpen = true; // the figure's text stands in for the file: no dialog

    if (!session.SkipMaterials)
        OpenFile(session, figureText);
    else
        session.CommandLineOpen = false; // no open took the path, so the next command must ask again

    bool load = false;
    if (session.SkipChannels)
        load = false;
    else if (session.SkipMaterials)
        load = true;
    else if (!session.DialogFileName.empty())
        load = AskLoadChannels(session);
    if (load)
        LoadMorphPoseData(session, session.SingleActorLoad, true, figureText, false);
    ClearSelectionFlags(session, list);
}

void RunFigureSelection(Session &session, const FigureChooser &choose) {
    FigureList list;
    if (!LoadFigureSelection(session, list)) {
        ClearSelectionFlags(session, list);
        return;
    }
    int index = 0;
    if (list.FigureNames.size() >= 2) {
        const std::optional<int> chosen = choose ? choose(session, list) : std::nullopt;
        if (!chosen) {
            ClearSelectionFlags(session, list);
            return;
        }
        index = *chosen;
    }
    try {
        ConfirmFigure(session, list, index);
    } catch (const std::exception &) {
        session.ui().MessageBox(kNotValidCharacter, kProgramTitle, MsgIcon::Exclamation);
        ClearSelectionFlags(session, list);
    }
}

void OpenCommand(Session &session, int kind, bool withProps) {
    session.PoserFileKind = static_cast<int16_t>(kind);
    if (kind == KindCR2)
        session.MultiFigure = withProps;
    else if (kind == KindHR2)
        session.MultiFigure = false;

    OpenFile(session);
    if (session.SilentConvert) {
        WriteSilentPose(session);
        return; // the caller ends the process
    }

    if (!session.OpenCancelled && IsFigureLikeKind(kind) && !session.DialogFileName.empty()) {
        bool load;
        if (kind == KindCR2 && !withProps && session.LoadChannelsChoice != 0)
            load = session.LoadChannelsChoice == 1;
        else
            load = AskLoadChannels(session);
        if (load)
            LoadMorphPoseData(session);
    }
    RunAfterOpen(session);
}

void MultiFigureCommand(Session &session, const FigureChooser &choose) {
    session.PoserFileKind = KindCR2;
    session.MultiFigure = true;
    if (!session.CommandLineOpen) {
        const std::optional<std::string> chosen = session.ui().ChooseFile(OpenDialogRequest(session, KindCR2));
        if (!chosen || chosen->empty()) {
            session.MultiFigure = false;
            return;
        }
        session.DialogFileName = *chosen;
        session.LastFolder[KindCR2] = std::string(FolderPart(*chosen));
    }
    session.SingleActorLoad = false;
    RunFigureSelection(session, choose);
    RunAfterOpen(session);
}

void OpenCharacterFromOutside(Session &session, const FigureChooser &choose) {
    session.CommandLineOpen = true;
    session.PoserFileKind = KindCR2;
    if (IsSilentCommand(session.CommandText)) {
        OpenFile(session);
        if (session.SilentConvert)
            WriteSilentPose(session);
        return;
    }
    const std::string path = UnquotedCommand(session.CommandText);
    if (path.empty() || !FileExists(path))
        return;
    session.MultiFigure = true;
    session.SingleActorLoad = false;
    session.DialogFileName = GetLongPath(path);
    session.CommandLineOpen = false;
    RunFigureSelection(session, choose);
    RunAfterOpen(session);
}

void RunOpenMenu(Session &session, OpenMenu menu, const FigureChooser &choose) {
    if (menu == OpenMenu::None)
        return;
    if (menu == OpenMenu::mnuMultiFigure)
        MultiFigureCommand(session, choose);
    else
        OpenCommand(session, KindOfMenu(menu), menu == OpenMenu::mnuOpenCR2Props);
}

void DropFile(Session &session, const std::string &path, const FigureChooser &choose) {
    const OpenMenu menu = MenuOfDroppedFile(path);
    if (menu == OpenMenu::None)
        return; // the dialog object keeps its earlier name
    session.CommandLineOpen = true;
    session.DialogFileName = path;
    session.CommandText.clear();
    RunOpenMenu(session, menu, choose);
}

} // namespace gelvane
