#include "core/materials/CreateMaterials.h"

#include "core/materials/MaterialPageState.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/reader/OpenFile.h"

#include <algorithm>

namespace gelvane {

namespace {

std::string WithoutActorPrefix(const std::string &row) {
    return StartsWith(row, "actor ") ? row.substr(6) : row;
}

bool ListHolds(const std::vector<std::string> &rows, const std::string &name, size_t count) {
    count = std::min(count, rows.size());
    return std::any_of(rows.begin(), rows.begin() + static_cast<long>(count),
                       [&](const std::string &row) { return EqualsNoCase(row, name); });
}

} // namespace

void SelectAllMaterials(Session &session) {
    std::vector<int> all(session.View.lstMaterials.size());
    for (size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<int>(i);
    lstMaterials_Click(session, all, session.View.lstMaterialsIndex);
}

void cmdInvertSel_Click(Session &session) {
    const std::vector<int> &selected = MaterialPageOf(session).SelectedMaterials;
    std::vector<int> inverted;
    for (int row = 0; row < static_cast<int>(session.View.lstMaterials.size()); ++row)
        if (!std::binary_search(selected.begin(), selected.end(), row))
            inverted.push_back(row);
    lstMaterials_Click(session, inverted, session.View.lstMaterialsIndex);
}

void cmdDeleteMaterials_Click(Session &session) {
    const std::vector<int> rows = GetSelectedMaterials(session);
    Figure *figure = ShownFigure(session);
    if (!figure || rows.empty())
        return; // the button is disabled without a selection
    if (rows.size() >= session.View.lstMaterials.size()) {
        RemoveObject(session);
        return;
    }
    std::vector<Material> kept;
    for (size_t i = 0; i < figure->Materials.size(); ++i)
        if (!std::binary_search(rows.begin(), rows.end(), static_cast<int>(i)))
            kept.push_back(figure->Materials[i]);
    figure->Materials = std::move(kept);
    ShowMaterialList(session);
    session.FileModified = true;
}

void RemoveObject(Session &session) {
    ViewState &view = session.View;
    const int row = view.cmbFiguresIndex;
    if (row < 0 || row >= static_cast<int>(session.cmbFigures.size()))
        return;
    if (session.Figures.size() > 1) {
        if (row < static_cast<int>(session.Figures.size()))
            session.Figures.erase(session.Figures.begin() + row);
        session.cmbFigures.erase(session.cmbFigures.begin() + row);
        if (session.cmbFigures.empty())
            view.cmdDeleteEnabled = false;
        else
            cmbFigures_Click(session, 0);
        session.FileModified = true;
        return;
    }
    // The last object: nothing with materials is left, so the materials are switched off.
    ResetList(session.Figures);
    session.Options.chkNoMaterialData = true;
    session.Options.chkNoMaterialDataEnabled = false;
    DisableMaterialControls(session);
    ClearMaterialControls(session);
    session.cmbFigures.clear();
    view.cmbFiguresIndex = -1;
    view.cmdDeleteEnabled = false;
    view.mnuExportMTLEnabled = false;
    if (session.Options.chkChannels)
        view.mnuSaveEnabled = view.mnuSaveAsEnabled = false;
}

void cmdNewMat_Click(Session &session) {
    const std::optional<std::string> answer =
        session.ui().InputBox("Enter a name for the new material", "New material", {});
    if (!answer || Trim(*answer).empty())
        return;
    int row = session.View.cmbFiguresIndex;
    if (row < 0 || row >= static_cast<int>(session.cmbFigures.size()))
        return;
    if (row >= static_cast<int>(session.Figures.size())) {
        // An actor without materials becomes an owner; its row moves to its Figure's index.
        const std::string text = session.cmbFigures[static_cast<size_t>(row)];
        Figure owner;
        owner.Name = WithoutActorPrefix(text);
        AppendElement(session.Figures, std::move(owner));
        session.cmbFigures.erase(session.cmbFigures.begin() + row);
        row = static_cast<int>(session.Figures.size()) - 1;
        session.cmbFigures.insert(session.cmbFigures.begin() + row, text);
    } else {
        for (const Material &material : session.Figures[static_cast<size_t>(row)].Materials)
            if (EqualsNoCase(material.Name, *answer)) {
                session.ui().MessageBox(kMaterialExists, kProgramTitle, MsgIcon::Exclamation);
                return;
            }
    }
    Material &added = AppendElement(session.Figures[static_cast<size_t>(row)].Materials);
    added.Name = *answer;
    session.FileModified = true; // closing asks before the new material is lost
    cmbFigures_Click(session, row);
}

CreateMatForm::CreateMatForm(const Session &session) : m_session(session) {
    if (!IsEmptyList(session.Figures))
        for (const Figure &figure : session.Figures)
            cmbFigures1.push_back(figure.Name);
    cmbFigures2 = session.cmbFigures;
    for (const std::string &row : cmbFigures2)
        PendingMaterials.push_back(PendingObject{WithoutActorPrefix(row), {PendingItem{}}});
    if (!cmbFigures1.empty())
        cmbFigures1_Click(0);
    const int chosen = session.View.cmbFiguresIndex;
    if (chosen >= 0 && chosen < static_cast<int>(cmbFigures2.size()))
        cmbFigures2_Click(chosen);
}

void CreateMatForm::cmbFigures1_Click(int row) {
    if (row < 0 || row >= static_cast<int>(cmbFigures1.size()))
        return;
    cmbFigures1Index = row;
    lstMaterials1.clear();
    for (const Material &material : m_session.Figures[static_cast<size_t>(row)].Materials)
        lstMaterials1.push_back(material.Name);
    lstMaterials1Index = 0;
}

void CreateMatForm::cmbFigures2_Click(int row) {
    if (row < 0 || row >= static_cast<int>(cmbFigures2.size()))
        return;
    cmbFigures2Index = row;
    RefreshDestination();
}

void CreateMatForm::RefreshDestination() {
    lstMaterials2.clear();
    const auto row = static_cast<size_t>(cmbFigures2Index);
    if (row < m_session.Figures.size() && !IsEmptyList(m_session.Figures))
        for (const Material &material : m_session.Figures[row].Materials)
            lstMaterials2.push_back(material.Name);
    for (const PendingItem &item : PendingMaterials[row].Items)
        if (!item.Name.empty())
            lstMaterials2.push_back(item.Name);
}

void CreateMatForm::cmdAdd_Click(const std::vector<int> &selectedRows) {
    if (cmbFigures2Index < 0 || cmbFigures1Index < 0)
        return;
    std::vector<PendingItem> &items = PendingMaterials[static_cast<size_t>(cmbFigures2Index)].Items;
    for (const int row : selectedRows) {
        if (row < 0 || row >= static_cast<int>(lstMaterials1.size()))
            continue;
        const std::string &name = lstMaterials1[static_cast<size_t>(row)];
        if (ListHolds(lstMaterials2, name, lstMaterials2.size()))
            continue;
        AppendElement(items, PendingItem{name, cmbFigures1Index, row});
    }
    RefreshDestination();
}

void CreateMatForm::cmdRemove_Click(const std::vector<int> &selectedRows) {
    if (cmbFigures2Index < 0)
        return;
    std::vector<PendingItem> &items = PendingMaterials[static_cast<size_t>(cmbFigures2Index)].Items;
    std::vector<PendingItem> kept;
    for (size_t i = 0; i < items.size(); ++i)
        if (std::find(selectedRows.begin(), selectedRows.end(), static_cast<int>(i)) == selectedRows.end())
            kept.push_back(items[i]);
    items = kept.empty() ? std::vector<PendingItem>{PendingItem{}} : std::move(kept);
    RefreshDestination();
}

void CreateMatForm::cmdRename_Click(Interaction &ui, int listIndex) {
    if (cmbFigures2Index < 0)
        return;
    std::vector<PendingItem> &items = PendingMaterials[static_cast<size_t>(cmbFigures2Index)].Items;
    if (IsEmptyList(items) || listIndex < 0 || listIndex >= static_cast<int>(items.size()))
        return;
    const std::optional<std::string> answer =
        ui.InputBox("Enter a new name for the selected material", "Rename material", {});
    if (!answer || answer->empty())
        return;
    if (ListHolds(lstMaterials2, *answer, items.size())) {
        ui.MessageBox(kMaterialExists, kProgramTitle, MsgIcon::Exclamation);
        return;
    }
    items[static_cast<size_t>(listIndex)].Name = *answer;
    RefreshDestination();
}

void CreateMatForm::cmdOK_Click(Session &session) const {
    std::vector<Figure> &figures = session.Figures;
    const size_t firstRow = IsEmptyList(figures) ? 0 : figures.size();
    std::vector<std::string> newRows;
    for (const PendingObject &pending : PendingMaterials) {
        if (IsEmptyList(pending.Items))
            continue;
        size_t target = figures.size();
        for (size_t i = 0; i < figures.size(); ++i)
            if (figures[i].Name == pending.ObjectName)
                target = i;
        if (target == figures.size() || IsEmptyList(figures)) {
            Figure owner;
            owner.Name = pending.ObjectName;
            AppendElement(figures, std::move(owner));
            target = figures.size() - 1;
            newRows.push_back("actor " + pending.ObjectName);
        }
        for (const PendingItem &item : pending.Items) {
            if (item.SourceFigure < 0 || static_cast<size_t>(item.SourceFigure) >= figures.size())
                continue;
            const std::vector<Material> &source = figures[static_cast<size_t>(item.SourceFigure)].Materials;
            if (item.SourceMaterial < 0 || static_cast<size_t>(item.SourceMaterial) >= source.size())
                continue;
            Material copy = source[static_cast<size_t>(item.SourceMaterial)];
            copy.Name = item.Name;
            AppendElement(figures[target].Materials, std::move(copy));
        }
    }
    for (size_t row = firstRow; row < session.cmbFigures.size(); ++row)
        if (std::find(newRows.begin(), newRows.end(), session.cmbFigures[row]) == newRows.end())
            newRows.push_back(session.cmbFigures[row]);
    int chosen = session.View.cmbFiguresIndex;
    if (!newRows.empty()) {
        session.cmbFigures.resize(std::min(firstRow, session.cmbFigures.size()));
        for (const std::string &row : newRows)
            AddFigureLine(session, row);
        // The chosen row went with the rows that were put back.
        if (chosen >= static_cast<int>(firstRow))
            chosen = 0;
    }
    session.FileModified = true; // closing asks before the copies are lost
    if (!session.cmbFigures.empty())
        cmbFigures_Click(session, chosen >= 0 && chosen < static_cast<int>(session.cmbFigures.size()) ? chosen : 0);
}

} // namespace gelvane
