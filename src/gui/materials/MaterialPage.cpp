#include "gui/materials/MaterialPage.h"

#include "core/materials/MaterialPageState.h"
#include "core/materials/Templates.h"
#include "core/model/Session.h"
#include "gui/ThumbnailImage.h"
#include "gui/WidgetText.h"
#include "gui/materials/TemplatesWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace gelvane {

namespace {

struct PropertyNames {
    const char *Open;  // label of the enabled presentation
    const char *Close; // label of the disabled presentation
    const char *Caption;
};

// In the order of the flags of a material.
constexpr PropertyNames kProperties[18] = {
    {"lblObjectColor", "lblCloseObjectColor", "Object Color"},
    {"lblHighlightColor", "lblCloseHighlightColor", "Highlight Color"},
    {"lblAmbientColor", "lblCloseAmbientColor", "Ambient Color"},
    {"lblReflectiveColor", "lblCloseReflectiveColor", "Reflective Color"},
    {"lblHighlightSub", "lblCloseHighlight", "Highlight Size"},
    {"lblTransparencyMinSub", "lblCloseTransparencyMin", "Transparency Min"},
    {"lblTransparencyMaxSub", "lblCloseTransparencyMax", "Transparency Max"},
    {"lblTransparencyFalloffSub", "lblCloseTransparencyFalloff", "Transparency Falloff"},
    {"lblTexturePath", "lblCloseTextureMap", "Texture Map"},
    {"lblBumpPath", "lblCloseBumpMap", "Bump Map"},
    {"lblReflectionPath", "lblCloseReflectionMap", "Reflection Map"},
    {"lblTransparencyPath", "lblCloseTransparencyMap", "Transparency Map"},
    {"lblTextureStrengthSub", "lblCloseTextureStrength", "Texture Strength"},
    {"lblBumpStrengthSub", "lblCloseBumpStrength", "Bump Strength"},
    {"lblReflectionStrengthSub", "lblCloseReflectionStrength", "Reflection Strength"},
    {"lblApplyTexture", "lblCloseApplyToHighlight", "Apply texture to highlight"},
    {"lblMultiplyThroughLights", "lblCloseMultiplyThroughLights", "Multiply through lights"},
    {"lblMultiplyThroughKdColor", "lblCloseMultiplyThroughKd", "Multiply through Object Color"},
};

struct CommandText {
    const char *Caption;
    const char *Tip;
};

const char *const kFixTip = "Try to correct a false path or toggle formatting between full and shortened path";

constexpr CommandText kCommands[29] = {
    {"Select all", "Select all materials"},
    {"Delete", "Remove selected object from the pose"},
    {"No Map", "Do not use a Texture Map with selected material(s)"},
    {"No Map", "Do not use a Bump Map with selected material(s)"},
    {"No Map", "Do not use a Reflection Map with selected material(s)"},
    {"No Map", "Do not use a Transparency Map with selected material(s)"},
    {"Open", "Open the Texture Map with the associated program"},
    {"Open", "Open the Bump Map with the associated program"},
    {"Open", "Open the Reflection Map with the associated program"},
    {"Open", "Open the Transparency Map with the associated program"},
    {"...", "Browse a Texture Map for selected material(s)"},
    {"...", "Browse a Bump Map for selected material(s)"},
    {"...", "Browse a Reflection Map for selected material(s)"},
    {"...", "Browse a Transparency Map for selected material(s)"},
    {"Apply", "Apply Highlight Size for selected material(s)"},
    {"Apply", "Apply Transparency Min for selected material(s)"},
    {"Apply", "Apply Transparency Max for selected material(s)"},
    {"Apply", "Apply Transparency Falloff for selected material(s)"},
    {"Apply", "Apply TextureMap for selected material(s)"},
    {"Apply", "Apply BumpMap for selected material(s)"},
    {"Apply", "Apply ReflectionMap for selected material(s)"},
    {"Apply", "Apply TransparencyMap for selected material(s)"},
    {"Apply", "Apply Texture Strength for selected material(s)"},
    {"Apply", "Apply Bump Strength for selected material(s)"},
    {"Apply", "Apply Reflection Strength for selected material(s)"},
    {"Fix", kFixTip},
    {"Fix", kFixTip},
    {"Fix", kFixTip},
    {"Fix", kFixTip},
};

// Number boxes TXT(1) to TXT(7) and their bars SCR(0) to SCR(6).
struct NumberRow {
    int Property; // index into kProperties
    int Box;
    int Minimum, Maximum, PageStep, Initial;
    const char *Tip;
    int Apply;
};

constexpr NumberRow kNumbers[7] = {
    {4, 1, 1, 100, 3, 100, "Type a value between 1 and 100", 14},
    {5, 2, 0, 100, 3, 0, "Type a value between 0 and 100", 15},
    {6, 3, 0, 100, 3, 0, "Type a value between 0 and 100", 16},
    {7, 4, 0, 1000, 30, 0, "Type a value between 0 and 10", 17},
    {12, 5, 0, 100, 3, 100, "Type a value between 0 and 100", 22},
    {13, 6, -100, 100, 4, 100, "Type a value between -100 and 100", 23},
    {14, 7, 0, 100, 3, 100, "Type a value between 0 and 100", 24},
};

const char *const kMapNames[4] = {"Texture Map", "Bump Map", "Reflection Map", "Transparency Map"};
const char *const kThumbCaptions[4] = {"Texture map", "Bump map", "Reflection map", "Transparency map"};

QStringList Rows(const QListWidget *list) {
    QStringList rows;
    for (int i = 0; i < list->count(); ++i)
        rows << list->item(i)->text();
    return rows;
}

QStringList Rows(const QComboBox *list) {
    QStringList rows;
    for (int i = 0; i < list->count(); ++i)
        rows << list->itemText(i);
    return rows;
}

} // namespace

MaterialPage::MaterialPage(Session &session, ThumbnailCache &thumbnails, QWidget *parent)
    : QWidget(parent), m_session(session), m_thumbnails(thumbnails) {
    setObjectName("picOptions_0");
    Build();
    SetMaterialControlsEnabled(false);
}

void MaterialPage::Build() {
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(BuildListColumn());
    layout->addWidget(BuildPropertyColumn(), 1);
}

QWidget *MaterialPage::BuildListColumn() {
    auto *column = new QWidget(this);
    column->setFixedWidth(250);
    auto *v = new QVBoxLayout(column);
    v->setContentsMargins(0, 0, 0, 0);

    auto *objectRow = new QHBoxLayout;
    m_lblObject = Named(new QLabel("Object", column), "lblObject");
    m_cmbFigures = Named(new QComboBox(column), "cmbFigures",
                         "Choose the object (figure, prop, hair or body part) you want to modify");
    m_cmbFigures->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_cmbFigures->setMinimumContentsLength(8);
    objectRow->addWidget(m_lblObject);
    objectRow->addWidget(m_cmbFigures, 1);
    v->addLayout(objectRow);

    m_lblMaterials = Named(new QLabel("Materials", column), "lblMaterials");
    v->addWidget(m_lblMaterials);
    m_lstMaterials = Named(new QListWidget(column), "lstMaterials", "Select the material(s) you want to edit");
    m_lstMaterials->setSelectionMode(QAbstractItemView::ExtendedSelection);
    v->addWidget(m_lstMaterials, 1);

    for (int i = 0; i < 29; ++i)
        m_cmd[i] = Named(new QPushButton(kCommands[i].Caption, this), Indexed("cmd", i), kCommands[i].Tip);

    auto *selectRow = new QHBoxLayout;
    m_cmdInvertSel = Named(new QPushButton("Invert sel", column), "cmdInvertSel", "Select all materials");
    m_cmdDeleteMaterials = Named(new QPushButton("Delete", column), "cmdDeleteMaterials", "Delete selected materials");
    selectRow->addWidget(m_cmd[0]);
    selectRow->addWidget(m_cmdInvertSel);
    selectRow->addWidget(m_cmdDeleteMaterials);
    v->addLayout(selectRow);
    m_cmdNewMat =
        Named(new QPushButton("Create new material", column), "cmdNewMat", "Create a new material from scratch");
    m_cmdCreateMat = Named(new QPushButton("Add materials to object", column), "cmdCreateMat",
                           "Copy material(s) to the selected object from another object");
    v->addWidget(m_cmdNewMat);
    v->addWidget(m_cmdCreateMat);
    v->addWidget(m_cmd[1]);

    auto *templates = new QGridLayout;
    m_lblTemplate = Named(new QLabel("Template", column), "lblTemplate");
    m_Combo1 = Named(new QComboBox(column), "Combo1", "Choose a material selection template");
    m_lblSelGroup = Named(new QLabel("Sel. grp.", column), "lblSelGroup");
    m_Combo2 = Named(new QComboBox(column), "Combo2", "Choose a selection group");
    m_cmdEditTemplate = Named(new QPushButton("Edit", column), "cmdEditTemplate", "Delete selected template");
    m_cmdDelTemplate = Named(new QPushButton("Delete", column), "cmdDelTemplate", "Delete selected template");
    templates->addWidget(m_lblTemplate, 0, 0);
    templates->addWidget(m_Combo1, 0, 1, 1, 2);
    templates->addWidget(m_lblSelGroup, 1, 0);
    templates->addWidget(m_Combo2, 1, 1, 1, 2);
    templates->addWidget(m_cmdEditTemplate, 2, 1);
    templates->addWidget(m_cmdDelTemplate, 2, 2);
    templates->setColumnStretch(1, 1);
    templates->setColumnStretch(2, 1);
    v->addLayout(templates);

    connect(m_cmbFigures, &QComboBox::activated, this, &MaterialPage::cmbFigures_Click);
    connect(m_Combo1, &QComboBox::activated, this, [this](int row) {
        m_session.View.Combo1Index = row;
        if (m_session.LoadTemplateGroups)
            m_session.LoadTemplateGroups(row);
        refresh();
        emit sessionChanged();
    });
    connect(m_Combo2, &QComboBox::activated, this, &MaterialPage::Combo2_Click);
    connect(m_cmdEditTemplate, &QPushButton::clicked, this, [this] {
        cmdEditTemplate_Click(m_session, [this] {
            TemplatesWindow editor(m_session, this);
            editor.exec();
        });
        refresh();
        emit sessionChanged();
    });
    connect(m_cmdDelTemplate, &QPushButton::clicked, this, [this] {
        cmdDelTemplate_Click(m_session);
        refresh();
        emit sessionChanged();
    });
    connect(m_lstMaterials, &QListWidget::itemSelectionChanged, this, &MaterialPage::lstMaterials_Click);
    return column;
}

QWidget *MaterialPage::BuildPropertyColumn() {
    auto *column = new QWidget(this);
    auto *halves = new QHBoxLayout(column);
    halves->setContentsMargins(0, 0, 0, 0);
    halves->setSpacing(14);
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    auto *maps = new QGridLayout;
    maps->setHorizontalSpacing(4);
    maps->setVerticalSpacing(2);
    halves->addLayout(grid, 1);
    halves->addLayout(maps);

    for (int i = 0; i < 18; ++i) {
        m_lblOpen[i] =
            Named(new QLabel(kProperties[i].Caption, column), kProperties[i].Open, "Double-click to disable");
        m_lblClose[i] = Named(new QLabel(QString(kProperties[i].Caption) + " Disabled", column), kProperties[i].Close,
                              "Double-click to enable");
        QFont bold = m_lblClose[i]->font();
        bold.setBold(true);
        m_lblClose[i]->setFont(bold);
        m_lblClose[i]->setVisible(false);
        m_lblClose[i]->setEnabled(false);
    }
    // Both labels of a property share one cell; only one of them is ever visible.
    auto placeLabels = [&](QGridLayout *in, int property, int row, int col, int span = 1) {
        in->addWidget(m_lblOpen[property], row, col, 1, span);
        in->addWidget(m_lblClose[property], row, col, 1, span);
    };
    for (int i = 2; i < 29; ++i)
        m_cmd[i]->setMaximumWidth(i >= 10 && i <= 13 ? 32 : 64);
    for (int i = 1; i < 12; ++i)
        m_TXT[i] = Named(new QLineEdit(column), Indexed("TXT", i));

    // Left half: colours, numbers, strengths and the three switches.
    int row = 0;
    for (int i = 0; i < 4; ++i, ++row) {
        placeLabels(grid, i, row, 0);
        m_SHP[i] = Named(new QFrame(column), Indexed("SHP", i),
                         QString("Select %1 for selected material(s)").arg(kProperties[i].Caption));
        m_SHP[i]->setFrameShape(QFrame::Box);
        m_SHP[i]->setFixedSize(60, 20);
        m_SHP[i]->setAutoFillBackground(true);
        m_SHP[i]->setStyleSheet("background-color: rgb(192, 192, 192);");
        grid->addWidget(m_SHP[i], row, 1, Qt::AlignLeft);
    }
    for (const NumberRow &n : kNumbers) {
        placeLabels(grid, n.Property, row, 0);
        QLineEdit *box = m_TXT[n.Box];
        box->setToolTip(n.Tip);
        box->setFixedWidth(60);
        box->setText(QString::number(n.Box == 4 ? n.Initial / 100.0 : n.Initial));
        QScrollBar *bar = Named(new QScrollBar(Qt::Horizontal, column), Indexed("SCR", n.Box - 1));
        bar->setRange(n.Minimum, n.Maximum);
        bar->setPageStep(n.PageStep);
        bar->setValue(n.Initial);
        bar->setMinimumWidth(100);
        m_SCR[n.Box - 1] = bar;
        grid->addWidget(box, row, 1);
        grid->addWidget(bar, row, 2);
        grid->addWidget(m_cmd[n.Apply], row, 3);
        ++row;
    }
    m_chkApplyTextures =
        Named(new QCheckBox(column), "chkApplyTextures",
              "Check to apply texture to highlight. In P5 the image map node will be connected to specular color");
    m_chkMultiplyThroughLights = Named(new QCheckBox(column), "chkMultiplyThroughLights");
    m_chkMultiplyThroughKdColor = Named(new QCheckBox(column), "chkMultiplyThroughKdColor");
    const std::array<QCheckBox *, 3> checks{m_chkApplyTextures, m_chkMultiplyThroughLights,
                                            m_chkMultiplyThroughKdColor};
    for (int i = 0; i < 3; ++i, ++row) {
        auto *cell = new QHBoxLayout;
        cell->addWidget(checks[i]);
        cell->addWidget(m_lblOpen[15 + i]);
        cell->addWidget(m_lblClose[15 + i]);
        cell->addStretch(1);
        grid->addLayout(cell, row, 0, 1, 4);
    }
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(row, 1);

    // Right half: the four map rows, their thumbnails and the path form switch.
    int mapRow = 0;
    for (int i = 0; i < 4; ++i) {
        placeLabels(maps, 8 + i, mapRow++, 0, 5);
        QLineEdit *box = m_TXT[8 + i];
        box->setToolTip(QString("Type path and name of the %1 for selected material(s)").arg(kMapNames[i]));
        box->setMinimumWidth(260);
        maps->addWidget(box, mapRow++, 0, 1, 5);
        // No Map, Open, Browse, Fix, Apply.
        const int buttons[5] = {2 + i, 6 + i, 10 + i, 25 + i, 18 + i};
        for (int b = 0; b < 5; ++b)
            maps->addWidget(m_cmd[buttons[b]], mapRow, b);
        maps->setRowMinimumHeight(++mapRow, 6);
        ++mapRow;
    }
    auto *thumbs = new QGridLayout;
    thumbs->setSpacing(4);
    for (int i = 0; i < 4; ++i) {
        m_imgThumb[i] = Named(new QLabel(column), Indexed("imgThumb", i));
        m_imgThumb[i]->setFixedSize(kThumbPixels + 2, kThumbPixels + 2);
        m_imgThumb[i]->setFrameShape(QFrame::Box);
        m_imgThumb[i]->setAlignment(Qt::AlignCenter);
        m_lblThumb[i] = Named(new QLabel(kThumbCaptions[i], column), Indexed("lblThumb", i));
        m_lblThumb[i]->setAlignment(Qt::AlignHCenter);
        thumbs->addWidget(m_imgThumb[i], (i / 2) * 2, i % 2, Qt::AlignHCenter);
        thumbs->addWidget(m_lblThumb[i], (i / 2) * 2 + 1, i % 2);
    }
    maps->addLayout(thumbs, mapRow++, 0, 1, 5);
    auto *pathForm = new QHBoxLayout;
    m_chkTexture = Named(new QCheckBox(column), "chkTexture",
                         "Use absolute file references with textures, bumps, reflection maps and transparency maps");
    pathForm->addWidget(m_chkTexture);
    connect(m_chkTexture, &QCheckBox::toggled, this, [this](bool checked) { chkTexture_Click(m_session, checked); });
    pathForm->addWidget(Named(new QLabel("Use full map paths", column), "lblUseFullPath"));
    pathForm->addStretch(1);
    maps->addLayout(pathForm, mapRow++, 0, 1, 5);
    maps->setRowStretch(mapRow, 1);
    return column;
}

void MaterialPage::SetMaterialControlsEnabled(bool enabled) {
    for (auto *w : m_cmd)
        w->setEnabled(false); // the commands arrive with their own handlers
    for (auto *w : m_SCR)
        w->setEnabled(false);
    for (int i = 1; i < 12; ++i)
        m_TXT[i]->setEnabled(false);
    for (auto *w : m_SHP)
        w->setEnabled(false);
    for (auto *w : m_lblOpen)
        w->setEnabled(enabled);
    for (auto *w : {m_chkApplyTextures, m_chkMultiplyThroughLights, m_chkMultiplyThroughKdColor})
        w->setEnabled(false);
    for (auto *w : {m_cmdInvertSel, m_cmdDeleteMaterials, m_cmdNewMat, m_cmdCreateMat})
        w->setEnabled(false);
    m_lstMaterials->setEnabled(enabled);
    m_lblMaterials->setEnabled(enabled);
    m_lblSelGroup->setEnabled(enabled);
}

void MaterialPage::refresh() {
    const ViewState &view = m_session.View;
    const MaterialControls controls = MaterialControlsOf(m_session);
    QStringList rows;
    for (const std::string &line : m_session.cmbFigures)
        rows << Latin1(line);
    {
        const QSignalBlocker blocker(m_cmbFigures);
        if (rows != Rows(m_cmbFigures)) {
            m_cmbFigures->clear();
            m_cmbFigures->addItems(rows);
        }
        m_cmbFigures->setCurrentIndex(view.cmbFiguresIndex < rows.size() ? view.cmbFiguresIndex : -1);
    }
    m_cmbFigures->setEnabled(controls.cmbFigures);
    m_cmd[1]->setEnabled(controls.cmdDelete);

    QStringList names;
    for (const std::string &name : view.lstMaterials)
        names << Latin1(name);
    {
        const QSignalBlocker blocker(m_lstMaterials);
        // Rows that stay the same keep the user's selection.
        if (names != Rows(m_lstMaterials)) {
            m_lstMaterials->clear();
            m_lstMaterials->addItems(names);
            if (view.lstMaterialsIndex >= 0 && view.lstMaterialsIndex < names.size())
                m_lstMaterials->setCurrentRow(view.lstMaterialsIndex);
        }
    }
    SetMaterialControlsEnabled(controls.lstMaterials);
    {
        const QSignalBlocker blocker(m_Combo1);
        QStringList templates;
        for (const std::string &name : view.Combo1)
            templates << Latin1(name);
        if (templates != Rows(m_Combo1)) {
            m_Combo1->clear();
            m_Combo1->addItems(templates);
        }
        m_Combo1->setCurrentIndex(view.Combo1Index < templates.size() ? view.Combo1Index : -1);
    }
    m_Combo1->setEnabled(controls.Combo1);
    {
        const QSignalBlocker blocker(m_chkTexture);
        m_chkTexture->setChecked(view.chkTexture);
    }
    {
        const QSignalBlocker blocker(m_Combo2);
        QStringList groups;
        for (const std::string &name : view.Combo2)
            groups << Latin1(name);
        if (groups != Rows(m_Combo2)) {
            m_Combo2->clear();
            m_Combo2->addItems(groups);
        }
        m_Combo2->setCurrentIndex(view.Combo2Index < groups.size() ? view.Combo2Index : -1);
    }
    for (QWidget *w : {static_cast<QWidget *>(m_Combo2), static_cast<QWidget *>(m_cmdEditTemplate),
                       static_cast<QWidget *>(m_cmdDelTemplate)})
        w->setEnabled(view.TemplateLoaded);
    lstMaterials_Click();
}

void MaterialPage::cmbFigures_Click(int row) {
    gelvane::cmbFigures_Click(m_session, row);
    {
        // A chosen object always starts at its first material.
        const QSignalBlocker blocker(m_lstMaterials);
        m_lstMaterials->clear();
    }
    refresh();
    emit objectChosen(row);
    emit sessionChanged();
}

void MaterialPage::Combo2_Click(int row) {
    if (!SelectTemplateGroup(m_session, row))
        return;
    ShowSelection();
    ShowThumbnails();
    emit sessionChanged();
}

void MaterialPage::ShowSelection() {
    const std::vector<int> &rows = MaterialPageOf(m_session).SelectedMaterials;
    QItemSelection selection;
    for (const int row : rows)
        if (row >= 0 && row < m_lstMaterials->count())
            selection.select(m_lstMaterials->model()->index(row, 0), m_lstMaterials->model()->index(row, 0));
    const QSignalBlocker blocker(m_lstMaterials);
    m_lstMaterials->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_lstMaterials->setCurrentRow(m_session.View.lstMaterialsIndex, QItemSelectionModel::NoUpdate);
}

void MaterialPage::lstMaterials_Click() {
    std::vector<int> selected;
    for (const QListWidgetItem *item : m_lstMaterials->selectedItems())
        selected.push_back(m_lstMaterials->row(item));
    std::sort(selected.begin(), selected.end());
    gelvane::lstMaterials_Click(m_session, selected, m_lstMaterials->currentRow());
    if (m_lstMaterials->currentRow() != m_session.View.lstMaterialsIndex) {
        const QSignalBlocker blocker(m_lstMaterials);
        m_lstMaterials->setCurrentRow(m_session.View.lstMaterialsIndex, QItemSelectionModel::NoUpdate);
    }
    ShowThumbnails();
}

void MaterialPage::ShowThumbnails() {
    for (size_t i = 0; i < m_imgThumb.size(); ++i) {
        const std::string &key = m_session.View.imgThumb[i];
        const QPixmap picture = key.empty() ? QPixmap() : CachedThumbnailPixmap(m_thumbnails, key, 0);
        m_imgThumb[i]->setPixmap(picture);
        if (picture.isNull())
            m_imgThumb[i]->clear();
        m_imgThumb[i]->setEnabled(!picture.isNull());
        m_lblThumb[i]->setEnabled(!picture.isNull());
    }
}

} // namespace gelvane
