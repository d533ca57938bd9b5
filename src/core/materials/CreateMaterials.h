#pragma once
// Which materials and objects exist: selecting and deleting rows of the material list,
// removing an object from the pose, a new empty material, and copying materials between
// objects in the window "Import material(s)" (frmCreateMat).
//
// An object is a row of the object list: rows up to the last Figure are those Figures,
// rows behind them are actors without materials ("actor " + name).
#include <cstdint>
#include <string>
#include <vector>

namespace gelvane {

class Interaction;
class Session;

// "Select all" (cmd(0)) and "Invert sel": the list's selection, then its click handling.
void SelectAllMaterials(Session &session);
void cmdInvertSel_Click(Session &session);
// "Delete" under the material list: removes the selected materials; with every row
// selected it removes the object instead, as an object never stays without materials.
void cmdDeleteMaterials_Click(Session &session);
// "Delete" beside the object list (cmd(1)): removes the selected object. Removing the
// last one leaves no materials, and the page switches the materials off.
void RemoveObject(Session &session);
// "Create new material": asks for a name and adds a material with every property
// disabled. An actor row gets a Figure of its own for it and moves in front of the other
// actor rows, to the row of its new Figure.
void cmdNewMat_Click(Session &session);
inline constexpr const char *kMaterialExists = "A material with that name already exists";

// One material waiting to be copied: its new name and where it comes from.
struct PendingItem {
    std::string Name;
    int32_t SourceFigure = 0;
    int32_t SourceMaterial = 0;
};
// The materials waiting for one destination row. Items holds one element with an empty
// Name when nothing waits.
struct PendingObject {
    std::string ObjectName; // the row's text without a leading "actor "
    std::vector<PendingItem> Items{1};
};

// The state of "Import material(s)": nothing reaches the model before OK.
class CreateMatForm {
public:
    // The window opens with every Figure as a source and every object row as a
    // destination, the object chosen in the main window selected.
    explicit CreateMatForm(const Session &session);

    std::vector<std::string> cmbFigures1; // the sources: every Figure's Name
    int cmbFigures1Index = -1;
    std::vector<std::string> lstMaterials1; // the source's materials
    int lstMaterials1Index = -1;
    std::vector<std::string> cmbFigures2; // the destinations: the rows of the object list
    int cmbFigures2Index = -1;
    std::vector<std::string> lstMaterials2;      // the destination's materials, then its pending ones
    std::vector<PendingObject> PendingMaterials; // one for each destination row

    void cmbFigures1_Click(int row);
    void cmbFigures2_Click(int row);
    // "-->": the selected source rows join the destination's pending items, unless the
    // destination list shows their name already (compared without regard to case).
    void cmdAdd_Click(const std::vector<int> &selectedRows);
    // "Remove": pending item i goes when row i of the destination list is selected. Item
    // numbers are taken as row numbers even where the object's own materials stand.
    void cmdRemove_Click(const std::vector<int> &selectedRows);
    // "Rename": the pending item numbered like the list index `listIndex` takes a new name;
    // a row without a pending item of that number does nothing.
    void cmdRename_Click(Interaction &ui, int listIndex);
    // "OK": the pending materials are copied, with all values and flags; objects that
    // gained materials become Figures and their rows stand in front of the actor rows.
    void cmdOK_Click(Session &session) const;

private:
    void RefreshDestination();

    const Session &m_session;
};

} // namespace gelvane
