#include "gui/materials/TemplatesWindow.h"

#include "gui/AppIcon.h"
#include "gui/WidgetText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>

namespace gelvane {

namespace {

QStringList Texts(const std::vector<std::string> &rows) {
    QStringList texts;
    for (const std::string &row : rows)
        texts << Latin1(row);
    return texts;
}

std::vector<int> SelectedRows(const QListWidget *list) {
    std::vector<int> rows;
    for (const QListWidgetItem *item : list->selectedItems())
        rows.push_back(list->row(item));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ShowRows(QComboBox *box, const std::vector<std::string> &rows, int current) {
    const QSignalBlocker blocker(box);
    box->clear();
    box->addItems(Texts(rows));
    box->setCurrentIndex(current < static_cast<int>(rows.size()) ? current : -1);
}

// Keeps the selection of rows that stay the same.
void ShowRows(QListWidget *list, const std::vector<std::string> &rows) {
    const QStringList texts = Texts(rows);
    QStringList shown;
    for (int i = 0; i < list->count(); ++i)
        shown << list->item(i)->text();
    if (shown == texts)
        return;
    const QSignalBlocker blocker(list);
    list->clear();
    list->addItems(texts);
}

} // namespace

TemplatesWindow::TemplatesWindow(Session &session, QWidget *parent) : QDialog(parent), m_editor(session) {
    setObjectName("frmTemplates");
    setWindowTitle("Selection template creator");
    setWindowIcon(AppIcon());
    Build();
    m_editor.Form_Load();
    Redraw();
}

void TemplatesWindow::Build() {
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    auto *menuBar = new QMenuBar(this);
    QMenu *mnuFile = menuBar->addMenu("&File");
    mnuFile->setObjectName("mnuFile");
    QAction *mnuOpen = mnuFile->addAction("Open template");
    mnuOpen->setObjectName("mnuOpen");
    m_mnuSaveAs = mnuFile->addAction("Save template as...");
    m_mnuSaveAs->setObjectName("mnuSaveAs");
    QAction *mnuExit = mnuFile->addAction("Exit");
    mnuExit->setObjectName("mnuExit");
    outer->setMenuBar(menuBar);

    auto *body = new QWidget(this);
    auto *grid = new QGridLayout(body);
    grid->setContentsMargins(10, 10, 10, 6);
    grid->setHorizontalSpacing(12);

    auto *Label1 = Named(new QLabel("Object", body), "Label1");
    m_Combo1 = Named(new QComboBox(body), "Combo1", "Select an object (figure, prop or body part)");
    auto *lblMaterials = Named(new QLabel("All object's materials", body), "lblMaterials");
    m_lstMaterials =
        Named(new QListWidget(body), "lstMaterials", "Double-click a material to add it to the selected group");
    m_lstMaterials->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_cmdMove = Named(new QPushButton("Add to selected group", body), "cmdMove",
                      "Add selected material(s) to the selected group");

    auto *lblMatGroups = Named(new QLabel("Selection groups", body), "lblMatGroups");
    m_cmbGroups = Named(new QComboBox(body), "cmbGroups", "Select a selection group");
    m_cmdCreate = Named(new QPushButton("Create new group", body), "cmdCreate", "Create a new selection group");
    m_cmdDelete = Named(new QPushButton("Delete group", body), "cmdDelete", "Delete selected selection group");
    auto *lblMatList = Named(new QLabel("Materials in selected group", body), "lblMatList");
    m_lstMatInGroup =
        Named(new QListWidget(body), "lstMatInGroup", "Double-click a material to remove it from the group");
    m_lstMatInGroup->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_cmdDeleteMaterials = Named(new QPushButton("Remove material(s)", body), "cmdDeleteMaterials",
                                 "Remove selected material(s) from the group");

    grid->addWidget(Label1, 0, 0);
    grid->addWidget(m_Combo1, 1, 0);
    grid->addWidget(lblMaterials, 2, 0);
    grid->addWidget(m_lstMaterials, 3, 0);
    grid->addWidget(m_cmdMove, 4, 0);
    grid->addWidget(lblMatGroups, 0, 1);
    grid->addWidget(m_cmbGroups, 1, 1);
    auto *groupButtons = new QHBoxLayout;
    groupButtons->addWidget(m_cmdCreate);
    groupButtons->addWidget(m_cmdDelete);
    grid->addLayout(groupButtons, 2, 1);
    auto *right = new QVBoxLayout;
    right->addWidget(lblMatList);
    right->addWidget(m_lstMatInGroup, 1);
    grid->addLayout(right, 3, 1);
    grid->addWidget(m_cmdDeleteMaterials, 4, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
    outer->addWidget(body, 1);

    m_StatusBar1 = Named(new QStatusBar(this), "StatusBar1");
    m_StatusBar1->setSizeGripEnabled(false);
    outer->addWidget(m_StatusBar1);
    resize(560, 460);

    connect(m_Combo1, &QComboBox::activated, this, [this](int row) { Run([&] { m_editor.Combo1_Click(row); }); });
    connect(m_cmbGroups, &QComboBox::activated, this, [this](int row) { Run([&] { m_editor.cmbGroups_Click(row); }); });
    connect(m_cmdCreate, &QPushButton::clicked, this, [this] { Run([&] { m_editor.cmdCreate_Click(); }); });
    connect(m_cmdDelete, &QPushButton::clicked, this, [this] { Run([&] { m_editor.cmdDelete_Click(); }); });
    const auto move = [this] { Run([&] { m_editor.cmdMove_Click(SelectedRows(m_lstMaterials)); }); };
    connect(m_cmdMove, &QPushButton::clicked, this, move);
    connect(m_lstMaterials, &QListWidget::itemDoubleClicked, this, move);
    const auto remove = [this] { Run([&] { m_editor.cmdDeleteMaterials_Click(SelectedRows(m_lstMatInGroup)); }); };
    connect(m_cmdDeleteMaterials, &QPushButton::clicked, this, remove);
    connect(m_lstMatInGroup, &QListWidget::itemDoubleClicked, this, remove);
    connect(mnuOpen, &QAction::triggered, this, [this] { Run([&] { m_editor.mnuOpen_Click(); }); });
    connect(m_mnuSaveAs, &QAction::triggered, this, [this] { Run([&] { m_editor.mnuSaveAs_Click(); }); });
    connect(mnuExit, &QAction::triggered, this, &QDialog::accept);
}

template <class Op> void TemplatesWindow::Run(Op &&op) {
    op();
    Redraw();
}

void TemplatesWindow::Redraw() {
    ShowRows(m_Combo1, m_editor.Combo1, m_editor.Combo1Index);
    ShowRows(m_lstMaterials, m_editor.lstMaterials);
    ShowRows(m_cmbGroups, m_editor.cmbGroups, m_editor.cmbGroupsIndex);
    ShowRows(m_lstMatInGroup, m_editor.lstMatInGroup);
    m_cmdDelete->setEnabled(m_editor.cmdDeleteEnabled);
    m_cmdMove->setEnabled(m_editor.cmdMoveEnabled);
    m_cmdDeleteMaterials->setEnabled(m_editor.cmdDeleteMaterialsEnabled);
    m_mnuSaveAs->setEnabled(m_editor.mnuSaveAsEnabled);
    m_StatusBar1->showMessage(Latin1(m_editor.StatusText));
}

void TemplatesWindow::done(int result) {
    m_editor.Form_Unload();
    QDialog::done(result);
}

} // namespace gelvane
