#include "windows/StandInPages.h"

#include "model/Session.h"
#include "windows/MainWindowState.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

namespace gelvane {

namespace {

QString Latin1(const std::string &text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QPushButton *Button(const QString &name, const QString &caption, const QString &tip, QWidget *parent) {
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setEnabled(false);
    return button;
}

QLabel *Label(const QString &name, const QString &caption, QWidget *parent) {
    auto *label = new QLabel(caption, parent);
    label->setObjectName(name);
    return label;
}

} // namespace

StandInMaterialPage::StandInMaterialPage(Session &session, QWidget *parent) : QWidget(parent), m_session(session) {
    setObjectName("picOptions_0");
    m_cmbFigures = new QComboBox(this);
    m_cmbFigures->setObjectName("cmbFigures");
    m_cmbFigures->setToolTip("Choose the object (figure, prop, hair or body part) you want to modify");
    m_lstMaterials = new QListWidget(this);
    m_lstMaterials->setObjectName("lstMaterials");
    m_lstMaterials->setToolTip("Select the material(s) you want to edit");
    m_lstMaterials->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto *Combo1 = new QComboBox(this);
    Combo1->setObjectName("Combo1");
    Combo1->setToolTip("Choose a material selection template");
    auto *Combo2 = new QComboBox(this);
    Combo2->setObjectName("Combo2");
    Combo2->setToolTip("Choose a selection group");
    Combo2->setEnabled(false);

    auto *layout = new QGridLayout(this);
    layout->addWidget(Label("lblObject", "Object", this), 0, 0);
    layout->addWidget(m_cmbFigures, 0, 1, 1, 2);
    layout->addWidget(Button("cmd_1", "Delete", "Remove selected object from the pose", this), 0, 3);
    layout->addWidget(Label("lblMaterials", "Materials", this), 1, 0, 1, 4);
    layout->addWidget(m_lstMaterials, 2, 0, 1, 4);
    layout->addWidget(Button("cmd_0", "Select all", "Select all materials", this), 3, 0);
    layout->addWidget(Button("cmdInvertSel", "Invert sel", "Select all materials", this), 3, 1);
    layout->addWidget(Button("cmdDeleteMaterials", "Delete", "Delete selected materials", this), 3, 2);
    layout->addWidget(Button("cmdNewMat", "Create new material", "Create a new material from scratch", this), 4, 0, 1,
                      2);
    layout->addWidget(Button("cmdCreateMat", "Add materials to object",
                             "Copy material(s) to the selected object from another object", this),
                      4, 2, 1, 2);
    layout->addWidget(Label("lblTemplate", "Template", this), 5, 0);
    layout->addWidget(Combo1, 5, 1, 1, 2);
    layout->addWidget(Button("cmdEditTemplate", "Edit", "Delete selected template", this), 5, 3);
    layout->addWidget(Label("lblSelGroup", "Sel. grp.", this), 6, 0);
    layout->addWidget(Combo2, 6, 1, 1, 2);
    layout->addWidget(Button("cmdDelTemplate", "Delete", "Delete selected template", this), 6, 3);
    layout->setColumnStretch(1, 1);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(2, 1);

    connect(m_cmbFigures, &QComboBox::activated, this, [this](int row) {
        cmbFigures_Click(m_session, row);
        refresh();
        emit sessionChanged();
    });
    refresh();
}

void StandInMaterialPage::refresh() {
    const ViewState &view = m_session.View;
    {
        const QSignalBlocker blocker(m_cmbFigures);
        m_cmbFigures->clear();
        for (const std::string &row : m_session.cmbFigures)
            m_cmbFigures->addItem(Latin1(row));
        m_cmbFigures->setCurrentIndex(view.cmbFiguresIndex < m_cmbFigures->count() ? view.cmbFiguresIndex : -1);
        const bool materialsOn = !m_session.Options.chkNoMaterialData;
        m_cmbFigures->setEnabled(view.cmbFiguresEnabled && materialsOn && m_cmbFigures->count() > 0);
    }
    const QSignalBlocker blocker(m_lstMaterials);
    m_lstMaterials->clear();
    for (const std::string &row : view.lstMaterials)
        m_lstMaterials->addItem(Latin1(row));
    if (view.lstMaterialsIndex >= 0 && view.lstMaterialsIndex < m_lstMaterials->count())
        m_lstMaterials->setCurrentRow(view.lstMaterialsIndex);
    m_lstMaterials->setEnabled(view.MaterialControlsEnabled);
    findChild<QPushButton *>("cmd_1")->setEnabled(view.cmdDeleteEnabled);
}

StandInPosePage::StandInPosePage(Session &session, QWidget *parent) : QWidget(parent), m_session(session) {
    setObjectName("picOptions_1");
    m_lstActors = new QListWidget(this);
    m_lstActors->setObjectName("lstActors");
    m_lstActors->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_lstDials = new QListWidget(this);
    m_lstDials->setObjectName("lstDials");
    m_lstDials->setSelectionMode(QAbstractItemView::ExtendedSelection);

    auto *layout = new QGridLayout(this);
    layout->addWidget(Label("lblActors", "Actors", this), 0, 0);
    layout->addWidget(Label("lblDials", "Dials", this), 0, 1);
    layout->addWidget(m_lstActors, 1, 0);
    layout->addWidget(m_lstDials, 1, 1);
    connect(m_lstActors, &QListWidget::currentRowChanged, this, &StandInPosePage::showDials);
    refresh();
}

void StandInPosePage::refresh() {
    {
        const QSignalBlocker blocker(m_lstActors);
        m_lstActors->clear();
        if (!IsEmptyList(m_session.Actors))
            for (const Actor &actor : m_session.Actors)
                m_lstActors->addItem(Latin1(actor.Name));
        if (m_lstActors->count() > 0)
            m_lstActors->setCurrentRow(0);
        m_lstActors->setEnabled(m_session.View.ChannelControlsEnabled);
        m_lstDials->setEnabled(m_session.View.ChannelControlsEnabled);
    }
    showDials();
}

void StandInPosePage::showDials() {
    m_lstDials->clear();
    const int row = m_lstActors->currentRow();
    if (row < 0 || row >= static_cast<int>(m_session.Actors.size()))
        return;
    const Actor &actor = m_session.Actors[static_cast<size_t>(row)];
    if (IsEmptyList(actor.Channels))
        return;
    for (const Channel &channel : actor.Channels)
        m_lstDials->addItem(Latin1(channel.Name));
}

} // namespace gelvane
