#pragma once
// frmTemplates, "Selection template creator": groups of material names are built
// from the open file's objects and saved as a selection template. The rules live
// in TemplateEditor; this window draws it and forwards its events.
#include "core/materials/TemplateEditor.h"

#include <QDialog>

class QComboBox;
class QListWidget;
class QPushButton;
class QStatusBar;
class QAction;

namespace gelvane {

class Session;

class TemplatesWindow : public QDialog {
    Q_OBJECT
public:
    TemplatesWindow(Session &session, QWidget *parent = nullptr);

    const TemplateEditor &editor() const { return m_editor; }

protected:
    // Closing refreshes the main window's template list.
    void done(int result) override;

private:
    void Build();
    // Runs one editor operation and redraws.
    template <class Op> void Run(Op &&op);
    void Redraw();

    TemplateEditor m_editor;
    QComboBox *m_Combo1 = nullptr;
    QListWidget *m_lstMaterials = nullptr;
    QComboBox *m_cmbGroups = nullptr;
    QListWidget *m_lstMatInGroup = nullptr;
    QPushButton *m_cmdCreate = nullptr;
    QPushButton *m_cmdDelete = nullptr;
    QPushButton *m_cmdMove = nullptr;
    QPushButton *m_cmdDeleteMaterials = nullptr;
    QStatusBar *m_StatusBar1 = nullptr;
    QAction *m_mnuSaveAs = nullptr;
};

} // namespace gelvane
