#include "gui/materials/CreateMatWindow.h"

#include "core/model/Session.h"
#include "gui/WidgetText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace gelvane {

namespace {

// A list shows `rows`; rows that stay as they are keep the user's selection.
void ShowRows(QListWidget *list, const std::vector<std::string> &rows) {
    QStringList wanted, shown;
    for (const std::string &row : rows)
        wanted << Latin1(row);
    for (int i = 0; i < list->count(); ++i)
        shown << list->item(i)->text();
    if (wanted == shown)
        return;
    const QSignalBlocker blocker(list);
    list->clear();
    list->addItems(wanted);
}

} // namespace

CreateMatWindow::CreateMatWindow(Session &session, QWidget *parent)
    : QDialog(parent), m_session(session), m_form(session) {
    setObjectName("frmCreateMat");
    setWindowTitle("Import material(s)");
    setModal(true);
    Build();
    Redraw();
    m_lstMaterials1->setCurrentRow(m_form.lstMaterials1Index);
}

void CreateMatWindow::Build() {
    auto *fraSource = Named(new QGroupBox("Source", this), "fraSource");
    m_cmbFigures1 =
        Named(new QComboBox(fraSource), "cmbFigures1", "Choose the source object (figure, prop, hair or body part)");
    m_lstMaterials1 = Named(new QListWidget(fraSource), "lstMaterials1");
    m_lstMaterials1->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto *source = new QVBoxLayout(fraSource);
    source->addWidget(m_cmbFigures1);
    source->addWidget(m_lstMaterials1, 1);

    auto *cmdAdd = Named(new QPushButton("-->", this), "cmdAdd", "Add selected material(s)");

    auto *fraDestination = Named(new QGroupBox("Destination", this), "fraDestination");
    m_cmbFigures2 = Named(new QComboBox(fraDestination), "cmbFigures2",
                          "Choose the destination object (figure, prop, hair or body part)");
    m_lstMaterials2 = Named(new QListWidget(fraDestination), "lstMaterials2");
    m_lstMaterials2->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto *cmdRemove = Named(new QPushButton("Remove", fraDestination), "cmdRemove", "Remove selected material(s)");
    auto *cmdRename =
        Named(new QPushButton("Rename", fraDestination), "cmdRename", "Rename the last selected material");
    auto *destination = new QGridLayout(fraDestination);
    destination->addWidget(m_cmbFigures2, 0, 0, 1, 2);
    destination->addWidget(m_lstMaterials2, 1, 0, 1, 2);
    destination->addWidget(cmdRemove, 2, 0);
    destination->addWidget(cmdRename, 2, 1);
    destination->setRowStretch(1, 1);

    auto *cmdOK = Named(new QPushButton("OK", this), "cmdOK");
    auto *cmdCancel = Named(new QPushButton("Cancel", this), "cmdCancel");
    cmdOK->setDefault(true);

    auto *lists = new QHBoxLayout;
    lists->addWidget(fraSource, 1);
    lists->addWidget(cmdAdd, 0, Qt::AlignVCenter);
    lists->addWidget(fraDestination, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(lists, 1);
    layout->addLayout(buttons);
    resize(560, 380);

    connect(m_cmbFigures1, &QComboBox::activated, this, [this](int row) {
        Run([&] { m_form.cmbFigures1_Click(row); });
        m_lstMaterials1->setCurrentRow(m_form.lstMaterials1Index);
    });
    connect(m_cmbFigures2, &QComboBox::activated, this,
            [this](int row) { Run([&] { m_form.cmbFigures2_Click(row); }); });
    connect(cmdAdd, &QPushButton::clicked, this,
            [this] { Run([&] { m_form.cmdAdd_Click(SelectedRows(m_lstMaterials1)); }); });
    connect(cmdRemove, &QPushButton::clicked, this,
            [this] { Run([&] { m_form.cmdRemove_Click(SelectedRows(m_lstMaterials2)); }); });
    connect(cmdRename, &QPushButton::clicked, this,
            [this] { Run([&] { m_form.cmdRename_Click(m_session.ui(), m_lstMaterials2->currentRow()); }); });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        m_form.cmdOK_Click(m_session);
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

template <class Op> void CreateMatWindow::Run(Op &&op) {
    op();
    Redraw();
}

std::vector<int> CreateMatWindow::SelectedRows(const QListWidget *list) {
    std::vector<int> rows;
    for (const QListWidgetItem *item : list->selectedItems())
        rows.push_back(list->row(item));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void CreateMatWindow::Redraw() {
    const auto showCombo = [](QComboBox *combo, const std::vector<std::string> &rows, int index) {
        const QSignalBlocker blocker(combo);
        if (combo->count() != static_cast<int>(rows.size())) {
            combo->clear();
            for (const std::string &row : rows)
                combo->addItem(Latin1(row));
        }
        combo->setCurrentIndex(index);
    };
    showCombo(m_cmbFigures1, m_form.cmbFigures1, m_form.cmbFigures1Index);
    showCombo(m_cmbFigures2, m_form.cmbFigures2, m_form.cmbFigures2Index);
    ShowRows(m_lstMaterials1, m_form.lstMaterials1);
    ShowRows(m_lstMaterials2, m_form.lstMaterials2);
}

} // namespace gelvane
