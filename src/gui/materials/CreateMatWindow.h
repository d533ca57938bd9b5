#pragma once
// frmCreateMat, "Import material(s)": materials of one object are copied to another.
// The rules live in CreateMatForm; this window draws it and forwards its events.
#include "core/materials/CreateMaterials.h"

#include <QDialog>

class QComboBox;
class QListWidget;

namespace gelvane {

class Session;

class CreateMatWindow : public QDialog {
    Q_OBJECT
public:
    CreateMatWindow(Session &session, QWidget *parent = nullptr);

    const CreateMatForm &form() const { return m_form; }

private:
    void Build();
    // Runs one form operation and redraws.
    template <class Op> void Run(Op &&op);
    void Redraw();
    static std::vector<int> SelectedRows(const QListWidget *list);

    Session &m_session;
    CreateMatForm m_form;
    QComboBox *m_cmbFigures1 = nullptr;
    QListWidget *m_lstMaterials1 = nullptr;
    QComboBox *m_cmbFigures2 = nullptr;
    QListWidget *m_lstMaterials2 = nullptr;
};

} // namespace gelvane
