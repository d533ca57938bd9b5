#include "gui/materials/MaterialPage.h"

#include "core/materials/CreateMaterials.h"
#include "core/materials/MaterialCommands.h"
#include "core/materials/MaterialPageState.h"
#include "core/materials/Templates.h"
#include "core/model/Session.h"
#include "gui/ThumbnailImage.h"
#include "gui/WidgetText.h"
#include "gui/materials/CreateMatWindow.h"
#include "gui/materials/TemplatesWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QMouseEvent>
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

// The number rows, top to bottom: box TXT(Box) with bar SCR(Box - 1) and its Apply button.
struct NumberRow {
    int Box;
    const char *Tip;
    int Apply;
};
constexpr NumberRow kNumbers[7] = {
    {1, "Type a value between 1 and 100", 14}, {2, "Type a value between 0 and 100", 15},
    {3, "Type a value between 0 and 100", 16}, {4, "Type a value between 0 and 10", 17},
    {5, "Type a value between 0 and 100", 22}, {6, "Type a value between -100 and 100", 23},
    {7, "Type a value between 0 and 100", 24},
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

std::vector<int> SelectedRows(const QListWidget *list) {
    std::vector<int> rows;
    for (const QListWidgetItem *item : list->selectedItems())
        rows.push_back(list->row(item));
    std::sort(rows.begin(), rows.end());
    return rows;
}

QStringList Latin1Rows(const std::vector<std::string> &rows) {
    QStringList list;
    for (const std::string &row : rows)
        list << Latin1(row);
    return list;
}

// A combo box shows `rows` with row `index` chosen, without running its handler.
void ShowRows(QComboBox *combo, const std::vector<std::string> &rows, int index) {
    const QSignalBlocker blocker(combo);
    const QStringList list = Latin1Rows(rows);
    if (list != Rows(combo)) {
        combo->clear();
        combo->addItems(list);
    }
    combo->setCurrentIndex(index >= 0 && index < list.size() ? index : -1);
}

// A control of a property keeps its room while hidden, so the page doesn't jump about.
void KeepRoom(QWidget *widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

bool HoldsFiles(const QMimeData *data) {
    const QList<QUrl> urls = data->urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); });
}

void Show(QWidget *widget, bool visible, bool enabled) {
    widget->setVisible(visible);
    widget->setEnabled(enabled);
}

} // namespace

Swatch::Swatch(QWidget *parent) : QFrame(parent) {
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    setCursor(Qt::PointingHandCursor);
}

void Swatch::setColor(const QColor &color) {
    QPalette palette = this->palette();
    palette.setColor(QPalette::Window, color);
    setPalette(palette);
}

void Swatch::mouseReleaseEvent(QMouseEvent *event) {
    QFrame::mouseReleaseEvent(event);
    if (isEnabled() && rect().contains(event->position().toPoint()))
        emit clicked();
}

PathBox::PathBox(QWidget *parent) : QLineEdit(parent) {
    setAcceptDrops(true);
}

void PathBox::dragEnterEvent(QDragEnterEvent *event) {
    if (HoldsFiles(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void PathBox::dragMoveEvent(QDragMoveEvent *event) {
    if (HoldsFiles(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void PathBox::dropEvent(QDropEvent *event) {
    QStringList paths;
    for (const QUrl &url : event->mimeData()->urls())
        if (url.isLocalFile())
            paths << url.toLocalFile();
    event->acceptProposedAction(); // never a drop on the window behind
    if (!paths.isEmpty())
        emit filesDropped(paths);
}

MaterialPage::MaterialPage(Session &session, ThumbnailCache &thumbnails, QWidget *parent)
    : QWidget(parent), m_session(session), m_thumbnails(thumbnails) {
    setObjectName("picOptions_0");
    MaterialPageOf(m_session);
    Build();
    Connect();
    refresh();
}

void MaterialPage::Build() {
    for (int i = 0; i < 29; ++i)
        m_cmd[i] = Named(new QPushButton(kCommands[i].Caption, this), Indexed("cmd", i), kCommands[i].Tip);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(12);
    // Extra room goes to the material list and the map paths; the number rows keep their size.
    layout->addWidget(BuildListColumn(), 1);
    layout->addWidget(BuildPropertyColumn());
    layout->addWidget(BuildMapColumn(), 2);
}

QWidget *MaterialPage::BuildListColumn() {
    auto *column = new QWidget(this);
    column->setMinimumWidth(200);
    column->setMaximumWidth(420);
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
    objectRow->addWidget(m_cmd[1]);
    v->addLayout(objectRow);

    m_lblMaterials = Named(new QLabel("Materials", column), "lblMaterials");
    v->addWidget(m_lblMaterials);
    m_lstMaterials = Named(new QListWidget(column), "lstMaterials", "Select the material(s) you want to edit");
    m_lstMaterials->setSelectionMode(QAbstractItemView::ExtendedSelection);
    v->addWidget(m_lstMaterials, 1);

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
    return column;
}

QWidget *MaterialPage::BuildPropertyColumn() {
    auto *column = new QWidget(this);
    auto *grid = new QGridLayout(column);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(6);

    for (int i = 0; i < 18; ++i) {
        m_lblOpen[i] = Named(new QLabel(kProperties[i].Caption, this), kProperties[i].Open, "Double-click to disable");
        m_lblClose[i] = Named(new QLabel(QString(kProperties[i].Caption) + " Disabled", this), kProperties[i].Close,
                              "Double-click to enable");
        QFont bold = m_lblClose[i]->font();
        bold.setBold(true);
        m_lblClose[i]->setFont(bold);
        m_lblClose[i]->setVisible(false);
        m_lblClose[i]->setEnabled(false);
        m_lblOpen[i]->installEventFilter(this);
        m_lblClose[i]->installEventFilter(this);
    }
    for (int i = 1; i < 12; ++i) {
        m_TXT[i] = Named(i >= 8 ? new PathBox(this) : new QLineEdit(this), Indexed("TXT", i));
        KeepRoom(m_TXT[i]);
    }
    for (int i = 2; i < 29; ++i)
        KeepRoom(m_cmd[i]);
    // Both labels of a property share one cell; only one of them is ever visible.
    const auto placeLabels = [&](int property, int row) {
        grid->addWidget(m_lblOpen[property], row, 0);
        grid->addWidget(m_lblClose[property], row, 0, 1, 4);
    };

    int row = 0;
    for (int i = 0; i < 4; ++i, ++row) {
        placeLabels(i, row);
        m_SHP[i] = Named(new Swatch(column), Indexed("SHP", i),
                         QString("Select %1 for selected material(s)").arg(kProperties[i].Caption));
        m_SHP[i]->setFixedSize(60, 20);
        KeepRoom(m_SHP[i]);
        grid->addWidget(m_SHP[i], row, 1, Qt::AlignLeft);
    }
    grid->setRowMinimumHeight(row++, 4);
    for (const NumberRow &n : kNumbers) {
        placeLabels(PropertyOfBox(n.Box), row);
        QLineEdit *box = m_TXT[n.Box];
        box->setToolTip(n.Tip);
        box->setFixedWidth(56);
        const BarRange range = BarRangeOf(n.Box - 1);
        QScrollBar *bar = Named(new QScrollBar(Qt::Horizontal, column), Indexed("SCR", n.Box - 1));
        bar->setRange(range.Minimum, range.Maximum);
        bar->setPageStep(range.PageStep);
        bar->setMinimumWidth(90);
        bar->setMaximumWidth(200);
        KeepRoom(bar);
        m_SCR[n.Box - 1] = bar;
        grid->addWidget(box, row, 1);
        grid->addWidget(bar, row, 2);
        grid->addWidget(m_cmd[n.Apply], row, 3);
        m_cmd[n.Apply]->setMaximumWidth(56);
        ++row;
    }
    grid->setRowMinimumHeight(row++, 4);
    const char *checkNames[3] = {"chkApplyTextures", "chkMultiplyThroughLights", "chkMultiplyThroughKdColor"};
    for (int i = 0; i < 3; ++i, ++row) {
        m_checks[i] = Named(new QCheckBox(column), checkNames[i]);
        KeepRoom(m_checks[i]);
        auto *cell = new QHBoxLayout;
        cell->setSpacing(4);
        cell->addWidget(m_checks[i]);
        cell->addWidget(m_lblOpen[15 + i], 1);
        grid->addLayout(cell, row, 0, 1, 4);
        grid->addWidget(m_lblClose[15 + i], row, 0, 1, 4);
    }
    m_checks[0]->setToolTip(
        "Check to apply texture to highlight. In P5 the image map node will be connected to specular color");
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(row, 1);
    return column;
}

QWidget *MaterialPage::BuildMapColumn() {
    auto *column = new QWidget(this);
    column->setMinimumWidth(300);
    auto *maps = new QGridLayout(column);
    maps->setContentsMargins(0, 0, 0, 0);
    maps->setHorizontalSpacing(4);
    maps->setVerticalSpacing(2);
    int row = 0;
    for (int i = 0; i < 4; ++i) {
        maps->addWidget(m_lblOpen[8 + i], row, 0, 1, 6);
        maps->addWidget(m_lblClose[8 + i], row++, 0, 1, 6);
        QLineEdit *box = m_TXT[8 + i];
        box->setToolTip(QString("Type path and name of the %1 for selected material(s)").arg(kMapNames[i]));
        maps->addWidget(box, row++, 0, 1, 6);
        // No Map, Open, Browse, Fix, Apply.
        const int buttons[5] = {2 + i, 6 + i, 10 + i, 25 + i, 18 + i};
        for (int b = 0; b < 5; ++b)
            maps->addWidget(m_cmd[buttons[b]], row, b);
        maps->setRowMinimumHeight(++row, 8);
        ++row;
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
    maps->addLayout(thumbs, row++, 0, 1, 6, Qt::AlignLeft);
    auto *pathForm = new QHBoxLayout;
    m_chkTexture = Named(new QCheckBox(column), "chkTexture",
                         "Use absolute file references with textures, bumps, reflection maps and transparency maps");
    pathForm->addWidget(m_chkTexture);
    pathForm->addWidget(Named(new QLabel("Use full map paths", column), "lblUseFullPath"));
    pathForm->addStretch(1);
    maps->addLayout(pathForm, row++, 0, 1, 6);
    maps->setRowStretch(row, 1);
    // The buttons keep their size; the path boxes above them take the width.
    maps->setColumnStretch(5, 1);
    return column;
}

template <class F> void MaterialPage::Run(F handler, bool beyondThePage) {
    handler();
    refresh();
    if (beyondThePage)
        emit sessionChanged();
}

void MaterialPage::Connect() {
    connect(m_cmbFigures, &QComboBox::activated, this, &MaterialPage::cmbFigures_Click);
    connect(m_lstMaterials, &QListWidget::itemSelectionChanged, this, &MaterialPage::lstMaterials_Click);
    connect(m_Combo1, &QComboBox::activated, this, [this](int row) {
        Run([&] {
            m_session.View.Combo1Index = row;
            if (m_session.LoadTemplateGroups)
                m_session.LoadTemplateGroups(row);
        });
    });
    connect(m_Combo2, &QComboBox::activated, this, &MaterialPage::Combo2_Click);
    connect(m_cmdEditTemplate, &QPushButton::clicked, this, [this] {
        Run([&] {
            cmdEditTemplate_Click(m_session, [this] {
                TemplatesWindow editor(m_session, this);
                editor.exec();
            });
        });
    });
    connect(m_cmdDelTemplate, &QPushButton::clicked, this, [this] { Run([&] { cmdDelTemplate_Click(m_session); }); });

    for (int i = 0; i < 29; ++i)
        connect(m_cmd[i], &QPushButton::clicked, this, [this, i] { Run([&] { cmd_Click(m_session, i); }, true); });
    connect(m_cmdInvertSel, &QPushButton::clicked, this, [this] { Run([&] { cmdInvertSel_Click(m_session); }); });
    connect(m_cmdDeleteMaterials, &QPushButton::clicked, this,
            [this] { Run([&] { cmdDeleteMaterials_Click(m_session); }, true); });
    connect(m_cmdNewMat, &QPushButton::clicked, this, [this] { Run([&] { cmdNewMat_Click(m_session); }, true); });
    connect(m_cmdCreateMat, &QPushButton::clicked, this, &MaterialPage::cmdCreateMat_Click);

    for (int i = 1; i < 12; ++i)
        connect(m_TXT[i], &QLineEdit::textEdited, this, [this, i](const QString &text) {
            Run([&] { TXT_Change(m_session, i, text.toLatin1().toStdString()); });
        });
    for (int i = 8; i < 12; ++i)
        connect(static_cast<PathBox *>(m_TXT[i]), &PathBox::filesDropped, this, [this, i](const QStringList &paths) {
            std::vector<std::string> files;
            for (const QString &path : paths)
                files.push_back(QFile::encodeName(path).toStdString());
            Run([&] { TXT_Drop(m_session, i, files); });
        });
    for (int i = 0; i < 7; ++i)
        connect(m_SCR[i], &QScrollBar::valueChanged, this,
                [this, i](int value) { Run([&] { SCR_Change(m_session, i, value); }); });
    for (int i = 0; i < 4; ++i)
        connect(m_SHP[i], &Swatch::clicked, this, [this, i] { Run([&] { SHP_Click(m_session, i); }); });
    for (int i = 0; i < 3; ++i)
        connect(m_checks[i], &QCheckBox::clicked, this, [this, i] { Run([&] { CheckBox_Click(m_session, i); }); });
    connect(m_chkTexture, &QCheckBox::toggled, this, [this](bool checked) { chkTexture_Click(m_session, checked); });
}

bool MaterialPage::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::MouseButtonDblClick) {
        for (int p = 0; p < 18; ++p) {
            if (watched == m_lblOpen[p]) {
                Run([&] { lblX_DblClick(m_session, p); });
                return true;
            }
            if (watched == m_lblClose[p]) {
                Run([&] { lblCloseX_DblClick(m_session, p); });
                return true;
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

void MaterialPage::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    MaterialsTab_Click(m_session);
    refresh();
}

void MaterialPage::cmbFigures_Click(int row) {
    Run([&] { gelvane::cmbFigures_Click(m_session, row); });
    emit objectChosen(row);
}

void MaterialPage::lstMaterials_Click() {
    Run([&] { gelvane::lstMaterials_Click(m_session, SelectedRows(m_lstMaterials), m_lstMaterials->currentRow()); });
}

void MaterialPage::Combo2_Click(int row) {
    Run([&] { SelectTemplateGroup(m_session, row); });
}

void MaterialPage::cmdCreateMat_Click() {
    Run(
        [&] {
            CreateMatWindow window(m_session, this);
            window.exec();
        },
        true);
}

void MaterialPage::refresh() {
    ShowList();
    ShowProperties();
    ShowTemplates();
    ShowThumbnails();
}

void MaterialPage::ShowList() {
    const ViewState &view = m_session.View;
    const MaterialControls c = MaterialControlsOf(m_session);
    ShowRows(m_cmbFigures, m_session.cmbFigures, view.cmbFiguresIndex);
    m_cmbFigures->setEnabled(c.cmbFigures);
    m_cmd[1]->setEnabled(c.cmdDelete);
    m_lblObject->setEnabled(c.lstMaterials);

    const QSignalBlocker blocker(m_lstMaterials);
    const QStringList names = Latin1Rows(view.lstMaterials);
    if (names != Rows(m_lstMaterials)) {
        m_lstMaterials->clear();
        m_lstMaterials->addItems(names);
    }
    // The list is only touched where it differs, so that a selection the user is still
    // dragging out isn't interrupted.
    const std::vector<int> &wanted = MaterialPageOf(m_session).SelectedMaterials;
    if (SelectedRows(m_lstMaterials) != wanted) {
        QItemSelection selection;
        for (const int row : wanted)
            if (row >= 0 && row < m_lstMaterials->count())
                selection.select(m_lstMaterials->model()->index(row, 0), m_lstMaterials->model()->index(row, 0));
        m_lstMaterials->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    }
    if (m_lstMaterials->currentRow() != view.lstMaterialsIndex)
        m_lstMaterials->setCurrentRow(view.lstMaterialsIndex, QItemSelectionModel::NoUpdate);
    m_lstMaterials->setEnabled(c.lstMaterials);
    m_lblMaterials->setEnabled(c.lstMaterials);
    m_cmdInvertSel->setEnabled(c.cmdInvertSel);
    m_cmdDeleteMaterials->setEnabled(c.cmdDeleteMaterials);
    m_cmdNewMat->setEnabled(c.cmdNewMat);
    m_cmdCreateMat->setEnabled(c.cmdCreateMat);
}

void MaterialPage::ShowProperties() {
    const MaterialControls c = MaterialControlsOf(m_session);
    const MaterialPageState &page = MaterialPageOf(m_session);
    const auto visible = [&](int property) { return property < 0 || !c.DisabledLook[static_cast<size_t>(property)]; };
    for (int p = 0; p < 18; ++p) {
        const bool disabled = c.DisabledLook[static_cast<size_t>(p)];
        Show(m_lblOpen[p], !disabled, c.lstMaterials && !disabled);
        Show(m_lblClose[p], disabled, disabled);
    }
    for (int i = 0; i < 29; ++i)
        Show(m_cmd[i], visible(PropertyOfCommand(i)), c.cmd[static_cast<size_t>(i)]);
    for (int i = 1; i < 12; ++i) {
        QLineEdit *box = m_TXT[i];
        const QString text = Latin1(m_session.View.TXT[static_cast<size_t>(i)]);
        if (box->text() != text)
            box->setText(text); // a box keeps its cursor while what the user typed stands
        Show(box, visible(PropertyOfBox(i)), c.TXT[static_cast<size_t>(i)]);
        if (i >= 8) {
            QPalette palette = box->palette();
            palette.setColor(QPalette::Text,
                             page.MapMissing[static_cast<size_t>(i - 8)] ? QColor(255, 0, 0) : QColor(Qt::black));
            box->setPalette(palette);
        }
    }
    for (int i = 0; i < 7; ++i) {
        const QSignalBlocker blocker(m_SCR[i]);
        m_SCR[i]->setValue(page.SCR[static_cast<size_t>(i)]);
        Show(m_SCR[i], visible(PropertyOfBar(i)), c.SCR[static_cast<size_t>(i)]);
    }
    for (int i = 0; i < 4; ++i) {
        const Rgb &colour = page.SHP[static_cast<size_t>(i)];
        m_SHP[i]->setColor(QColor(colour.Red, colour.Green, colour.Blue));
        Show(m_SHP[i], visible(i), c.SHP[static_cast<size_t>(i)]);
    }
    for (int i = 0; i < 3; ++i) {
        const QSignalBlocker blocker(m_checks[i]);
        m_checks[i]->setChecked(page.Checks[static_cast<size_t>(i)]);
        Show(m_checks[i], visible(kKsIgnoreTexture + i), c.Checks[static_cast<size_t>(i)]);
    }
    const QSignalBlocker blocker(m_chkTexture);
    m_chkTexture->setChecked(m_session.View.chkTexture);
}

void MaterialPage::ShowTemplates() {
    const ViewState &view = m_session.View;
    const MaterialControls c = MaterialControlsOf(m_session);
    ShowRows(m_Combo1, view.Combo1, view.Combo1Index);
    m_Combo1->setEnabled(c.Combo1);
    m_lblTemplate->setEnabled(c.lstMaterials);
    m_lblSelGroup->setEnabled(c.lstMaterials);
    ShowRows(m_Combo2, view.Combo2, view.Combo2Index);
    for (QWidget *w : {static_cast<QWidget *>(m_Combo2), static_cast<QWidget *>(m_cmdEditTemplate),
                       static_cast<QWidget *>(m_cmdDelTemplate)})
        w->setEnabled(view.TemplateLoaded);
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
