#include "core/model/Session.h"

#include "core/app/Settings.h"
#include "core/model/Numbers.h"

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
    cmdNewMatEnabled = true;
    cmdCreateMatEnabled = true;
}

void ViewState::DisableMaterialControls() {
    MaterialControlsEnabled = false;
    imgThumb.fill({});
}

} // namespace gelvane
