#include "core/model/Session.h"

#include "core/model/Settings.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"

namespace gelvane {

Session::Session(const Settings &settings, Interaction &ui) : m_settings(&settings), m_ui(&ui) {
    Options.FileSystemDOS = settings.FileSystemDOS;
    Options.PoserFormatP5 = !settings.SaveAsP4;
}

void ViewState::ClearMaterialControls() {
    lstMaterials.clear();
    lstMaterialsIndex = -1;
    for (size_t i = 1; i < TXT.size(); ++i)
        TXT[i].clear();
    imgThumb.fill({});
}

void ViewState::EnableMaterialControls() {
    MaterialControlsEnabled = true;
    cmbFiguresEnabled = true;
    cmdDeleteEnabled = true;
    cmdNewMatEnabled = true;
    cmdCreateMatEnabled = true;
}

void ViewState::DisableMaterialControls() {
    MaterialControlsEnabled = false;
    imgThumb.fill({});
}

std::string CaptionOf(std::string_view fileName) {
    return std::string(kProgramTitle) + " - [" + std::string(FileNamePart(fileName)) + "]";
}

void ResetMainWindow(Session &session) {
    ViewState &view = session.View;
    view.MaterialControlsEnabled = false;
    view.lstMaterials.clear();
    view.lstMaterialsIndex = -1;
    view.cmbFiguresEnabled = false;
    view.mnuSaveEnabled = false;
    view.mnuSaveAsEnabled = false;
    view.mnuExportMTLEnabled = false;
    ResetChannelPage(session.Pose);
    session.Options.txtThighLength.clear();

    session.Actors.assign(1, Actor{});
    ResetList(session.Figures);
    session.IsHairFile = false;
    session.OutputVersion.clear();
    session.FileName.clear();
    session.FileVersion.clear();
    session.FileModified = false;
    if (session.MaterialPage)
        session.MaterialPage->WindowReset(session);
}

void ShowMaterialList(Session &session) {
    ViewState &view = session.View;
    view.lstMaterials.clear();
    view.lstMaterialsIndex = -1;
    const int row = view.cmbFiguresIndex;
    if (row < 0 || static_cast<size_t>(row) >= session.Figures.size())
        Fail(ErrSubscript);
    for (const Material &material : session.Figures[static_cast<size_t>(row)].Materials)
        view.lstMaterials.push_back(material.Name);
    view.lstMaterialsIndex = 0;
    if (session.MaterialPage)
        session.MaterialPage->MaterialListShown(session);
}

void FillDialList(Session &session, int actorIndex) {
    PoseView &pose = session.Pose;
    pose.lstDials.clear();
    if (actorIndex >= 0 && static_cast<size_t>(actorIndex) < session.Actors.size())
        for (const Channel &channel : session.Actors[static_cast<size_t>(actorIndex)].Channels)
            if (!channel.Name.empty())
                pose.lstDials.push_back({channel.Name, channel.Type, false});
    pose.lstDialsCurrentRow = pose.lstDials.empty() ? 0 : 1;
}

} // namespace gelvane
