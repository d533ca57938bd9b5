#include "core/materials/MaterialPageState.h"

#include "core/maps/MapPaths.h"
#include "core/model/Settings.h"

#include <algorithm>

namespace gelvane {

MaterialPageState &MaterialPageOf(Session &session) {
    if (!session.MaterialPage)
        session.MaterialPage = std::make_unique<MaterialPageState>();
    // Only this function makes the part, so it is always of this type.
    return static_cast<MaterialPageState &>(*session.MaterialPage);
}

MaterialControls MaterialControlsOf(const Session &session) {
    const ViewState &view = session.View;
    const bool hasRows = !session.cmbFigures.empty();
    const bool materialsOn = !session.Options.chkNoMaterialData;
    MaterialControls controls;
    controls.cmbFigures = hasRows && view.cmbFiguresEnabled && materialsOn;
    controls.cmdDelete = hasRows && view.cmdDeleteEnabled;
    controls.lstMaterials = view.MaterialControlsEnabled && materialsOn;
    // Templates can be chosen while nothing is loaded, not while the materials are switched off.
    controls.Combo1 = materialsOn && (view.MaterialControlsEnabled || !hasRows);
    return controls;
}

void cmbFigures_Click(Session &session, int row) {
    ViewState &view = session.View;
    view.cmbFiguresIndex = row;
    if (row >= 0 && row < static_cast<int>(session.Figures.size())) {
        view.MaterialControlsEnabled = true;
        view.cmbFiguresEnabled = true;
        ShowMaterialList(session);
    } else {
        view.MaterialControlsEnabled = false;
        view.lstMaterials.clear();
        view.lstMaterialsIndex = -1;
    }
    MaterialPageOf(session).SelectedMaterials.clear();
    ShowThumbnails(session);
}

void lstMaterials_Click(Session &session, const std::vector<int> &selectedRows, int focusedRow) {
    if (!selectedRows.empty() && std::find(selectedRows.begin(), selectedRows.end(), focusedRow) == selectedRows.end())
        focusedRow = selectedRows.front();
    session.View.lstMaterialsIndex = focusedRow;
    MaterialPageOf(session).SelectedMaterials = selectedRows;
    ShowThumbnails(session);
}

const Material *ShownMaterial(const Session &session) {
    if (!MaterialControlsOf(session).lstMaterials)
        return nullptr;
    const int row = session.View.cmbFiguresIndex;
    const int index = session.View.lstMaterialsIndex;
    if (row < 0 || row >= static_cast<int>(session.Figures.size()))
        return nullptr;
    const auto &materials = session.Figures[static_cast<size_t>(row)].Materials;
    return index >= 0 && index < static_cast<int>(materials.size()) ? &materials[static_cast<size_t>(index)] : nullptr;
}

void ShowThumbnails(Session &session) {
    const Material *material = ShownMaterial(session);
    for (size_t i = 0; i < session.View.imgThumb.size(); ++i) {
        std::string &shown = session.View.imgThumb[i];
        shown.clear();
        if (!material)
            continue;
        const std::string &field = i == 0   ? material->textureMap
                                   : i == 1 ? material->bumpMap
                                   : i == 2 ? material->reflectionMap
                                            : material->transparencyMap;
        // Pictures are kept under the file found, whatever form the reference has.
        if (!field.empty() && !IsNoMap(field))
            shown = LocateMapReference(session.settings().PoserFolder, field)
                        .value_or(FullMapPath(session.settings().PoserFolder, field));
    }
}

void chkTexture_Click(Session &session, bool checked) {
    session.View.chkTexture = checked;
}

} // namespace gelvane
