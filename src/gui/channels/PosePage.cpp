#include "gui/channels/PosePage.h"

#include "core/channels/PosePageState.h"
#include "core/model/Session.h"
#include "gui/WidgetText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace gelvane {

namespace {

const char *const kEnableTip = "If checked this property's value will be saved with the pose";

struct ChannelBox {
    const char *Caption;
    int Group; // 0 common, 1 camera, 2 light
};

constexpr ChannelBox kChannelBoxes[23] = {
    {"Rotate", 0},       {"Translate", 0},     {"Scale", 0},
    {"Morph", 0},        {"Null", 0},          {"Translate", 0},
    {"Offset", 0},       {"Twist", 0},         {"Joint", 0},
    {"Taper", 0},        {"Focal", 1},         {"Hither", 1},
    {"CamAutoScale", 1}, {"CamAutoCenter", 1}, {"CamAutoFocal", 1},
    {"LiteFalloff", 2},  {"LiteAtten", 2},     {"DepthMapStrength", 2},
    {"DepthMapSize", 2}, {"KdIntensity", 2},   {"KdRed", 2},
    {"KdGreen", 2},      {"KdBlue", 2},
};

const char *const kGroupHeadings[3] = {"Common channels:", "Camera channels:", "Light channels:"};
const char *const kCheckAllTips[3] = {"Check/uncheck all common channels", "Check/uncheck all camera channels",
                                      "Check/uncheck all light channels"};

QTreeWidget *NameTypeList(QWidget *parent, const char *name, const char *tip) {
    auto *list = Named(new QTreeWidget(parent), name, tip);
    list->setColumnCount(2);
    list->setHeaderLabels({"Name", "Type"});
    list->setRootIsDecorated(false);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setUniformRowHeights(true);
    list->header()->setStretchLastSection(true);
    list->setColumnWidth(0, 100);
    list->setMinimumWidth(130);
    return list;
}

// "Enabled" stands over each enable box of the actor panel.
QWidget *EnableCell(QWidget *parent, QLabel *label, QCheckBox *box) {
    auto *cell = new QWidget(parent);
    auto *v = new QVBoxLayout(cell);
    v->setContentsMargins(0, 0, 0, 0);
    v->setSpacing(0);
    QFont small = label->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    label->setFont(small);
    v->addWidget(label, 0, Qt::AlignHCenter);
    v->addWidget(box, 0, Qt::AlignHCenter);
    return cell;
}

// Shows rows of the session in a list, with their selection and the focused row (1-based).
void ShowRows(QTreeWidget *list, const std::vector<ListRow> &rows, int currentRow) {
    const QSignalBlocker blocker(list);
    list->clear();
    for (const ListRow &row : rows) {
        auto *item = new QTreeWidgetItem({Latin1(row.Name), Latin1(row.Type)});
        list->addTopLevelItem(item);
        item->setSelected(row.Selected);
    }
    if (currentRow >= 1 && currentRow <= list->topLevelItemCount())
        list->setCurrentItem(list->topLevelItem(currentRow - 1), 0, QItemSelectionModel::NoUpdate);
}

} // namespace

PosePage::PosePage(Session &session, QWidget *parent) : QWidget(parent), m_session(session) {
    setObjectName("picOptions_1");
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(BuildLists(), 1);
    auto *right = new QVBoxLayout;
    auto *panels = new QHBoxLayout;
    panels->addWidget(BuildActorPanel());
    auto *dialSide = new QVBoxLayout;
    dialSide->addWidget(BuildDialPanel());
    dialSide->addWidget(BuildThighLength());
    dialSide->addStretch(1);
    panels->addLayout(dialSide);
    right->addLayout(panels);
    right->addWidget(BuildDeletePanel());
    right->addStretch(1);
    layout->addLayout(right);
    SetChannelControlsEnabled(false);
}

QWidget *PosePage::BuildLists() {
    auto *box = new QWidget(this);
    auto *grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(Named(new QLabel("Actors", box), "lblActors"), 0, 0);
    grid->addWidget(Named(new QLabel("Dials", box), "lblDials"), 0, 1);
    m_lstActors = NameTypeList(box, "lstActors", "Select actor(s)");
    m_lstDials = NameTypeList(box, "lstDials", "Select dial(s)");
    grid->addWidget(m_lstActors, 1, 0);
    grid->addWidget(m_lstDials, 1, 1);

    m_cmdSelectAllActors = Named(new QPushButton("Select All", box), "cmdSelectAllActors", "Select all actors");
    m_cmdDeleteActors = Named(new QPushButton("Delete", box), "cmdDeleteActors", "Delete selected Actor(s)");
    m_cmdSelectAllDials = Named(new QPushButton("Select All", box), "cmdSelectAllDials");
    m_cmdDeleteDials = Named(new QPushButton("Delete", box), "cmdDeleteDials");
    auto *actorButtons = new QHBoxLayout;
    actorButtons->addWidget(m_cmdSelectAllActors);
    actorButtons->addWidget(m_cmdDeleteActors);
    auto *dialButtons = new QHBoxLayout;
    dialButtons->addWidget(m_cmdSelectAllDials);
    dialButtons->addWidget(m_cmdDeleteDials);
    grid->addLayout(actorButtons, 2, 0);
    grid->addLayout(dialButtons, 2, 1);
    m_cmdCreateDial = Named(new QPushButton("Create new Morph channel...", box), "cmdCreateDial");
    m_cmdZerAll =
        Named(new QPushButton("Zero everything", box), "cmdZerAll", "Set every dial value of every actor to 0.");
    // One row under both lists, so that neither list is widened by a long caption.
    auto *commands = new QHBoxLayout;
    commands->addWidget(m_cmdZerAll);
    commands->addWidget(m_cmdCreateDial);
    grid->addLayout(commands, 3, 0, 1, 2);
    grid->setRowStretch(1, 1);

    // Until the actor commands arrive, a click on an actor lists its dials.
    connect(m_lstActors, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) {
        lstActors_Click(m_session, m_lstActors->indexOfTopLevelItem(item));
        ShowRows(m_lstDials, m_session.Pose.lstDials, m_session.Pose.lstDialsCurrentRow);
    });
    return box;
}

QWidget *PosePage::BuildActorPanel() {
    auto *frame = Named(new QGroupBox("Actor's properties", this), "fraActorProperties");
    auto *grid = new QGridLayout(frame);
    grid->setVerticalSpacing(2);
    const char *captions[7] = {"Ext. name", "On/Off", "Hidden", "Locked", "DoShadow", "DepthMapSize", "LightOn"};
    m_txtActorProperties[0] =
        Named(new QLineEdit(frame), "txtActorProperties_0", "This is the actor's name that's visible in Poser");
    m_txtActorProperties[1] = Named(new QLineEdit(frame), "txtActorProperties_1");
    for (int i = 0; i < 5; ++i) {
        m_cmbActorProperties[i] = Named(new QComboBox(frame), Indexed("cmbActorProperties", i));
        if (i == 0)
            m_cmbActorProperties[i]->addItems({"Off (invisible)", "On (visible)"});
        else
            m_cmbActorProperties[i]->addItems({"False", "True"});
    }
    m_cmbActorProperties[0]->setToolTip("Toggle visibility of the actor");
    m_cmbActorProperties[1]->setToolTip("Toggle visibility of actor's dial controls");
    QWidget *values[7] = {m_txtActorProperties[0], m_cmbActorProperties[0], m_cmbActorProperties[1],
                          m_cmbActorProperties[2], m_cmbActorProperties[3], m_txtActorProperties[1],
                          m_cmbActorProperties[4]};
    for (int i = 0; i < 7; ++i) {
        m_lblActorProperty[i] = Named(new QLabel(captions[i], frame), Indexed("lblActorProperty", i));
        m_chkEnable[i] = Named(new QCheckBox(frame), Indexed("chkEnable", i), kEnableTip);
        m_cmdApplyProperty[i] = Named(new QPushButton("Apply", frame), Indexed("cmdApplyProperty", i));
        m_cmdApplyProperty[i]->setMaximumWidth(56);
        values[i]->setMinimumWidth(std::max(100, values[i]->sizeHint().width()));
        grid->addWidget(m_lblActorProperty[i], i, 0);
        grid->addWidget(values[i], i, 1);
        grid->addWidget(
            EnableCell(frame, Named(new QLabel("Enabled", frame), Indexed("lblDisable", i)), m_chkEnable[i]), i, 2);
        grid->addWidget(m_cmdApplyProperty[i], i, 3);
    }
    return frame;
}

QWidget *PosePage::BuildDialPanel() {
    auto *frame = Named(new QGroupBox("Channel's properties", this), "fraDialValue");
    auto *grid = new QGridLayout(frame);
    grid->addWidget(Named(new QLabel("Enabled", frame), "lblEnableDial"), 0, 2, Qt::AlignHCenter);
    const char *captions[3] = {"Dial value", "Ext. name", "Hidden"};
    m_txtDialProperties[0] =
        Named(new QLineEdit(frame), "txtDialProperties_0", "Type a value between -10000 and 10000");
    m_txtDialProperties[1] =
        Named(new QLineEdit(frame), "txtDialProperties_1", "This is the dial's name that's visible in Poser");
    m_cmbDialProperties =
        Named(new QComboBox(frame), "cmbDialProperties", "Toggle visibility of channel's dial controls");
    m_cmbDialProperties->addItems({"False", "True"});
    QWidget *values[3] = {m_txtDialProperties[0], m_txtDialProperties[1], m_cmbDialProperties};
    for (int i = 0; i < 3; ++i) {
        m_lblDialProperty[i] = Named(new QLabel(captions[i], frame), Indexed("lblDialProperty", i));
        m_chkEnableDial[i] = Named(new QCheckBox(frame), Indexed("chkEnableDial", i), kEnableTip);
        m_cmdApplyDial[i] =
            Named(new QPushButton("Apply", frame), Indexed("cmdApplyDial", i), "Apply value for selected Dial(s)");
        m_cmdApplyDial[i]->setMaximumWidth(56);
        values[i]->setMinimumWidth(100);
        grid->addWidget(m_lblDialProperty[i], i + 1, 0);
        grid->addWidget(values[i], i + 1, 1);
        grid->addWidget(m_chkEnableDial[i], i + 1, 2, Qt::AlignHCenter);
        grid->addWidget(m_cmdApplyDial[i], i + 1, 3);
    }
    return frame;
}

QWidget *PosePage::BuildThighLength() {
    auto *frame = Named(new QGroupBox("Figure's ThighLength", this), "fraThighLength");
    auto *row = new QHBoxLayout(frame);
    m_chkDisableThighLength = Named(new QCheckBox(frame), "chkDisableThighLength",
                                    "Disable ThighLength property. Usually you can disable it.");
    row->addWidget(m_chkDisableThighLength);
    row->addWidget(Named(new QLabel("Disable ThighLength", frame), "lblDisableThighLength"));
    m_txtThighLength = Named(new QLineEdit(frame), "txtThighLength");
    m_txtThighLength->setMaximumWidth(80);
    row->addWidget(m_txtThighLength);
    row->addStretch(1);
    return frame;
}

QWidget *PosePage::BuildDeletePanel() {
    auto *frame = Named(new QGroupBox("Delete channels from selected actors", this), "fraDelChannels");
    auto *grid = new QGridLayout(frame);
    grid->setVerticalSpacing(1);
    // Common channels take two columns, camera and light one each.
    const int firstColumn[3] = {0, 2, 3};
    int rowInGroup[3] = {0, 0, 0};
    for (int g = 0; g < 3; ++g)
        grid->addWidget(Named(new QLabel(kGroupHeadings[g], frame), Indexed("lblChannelGroup", g)), 0, firstColumn[g],
                        1, g == 0 ? 2 : 1);
    for (int i = 0; i < 23; ++i) {
        const int g = kChannelBoxes[i].Group;
        auto *cell = new QHBoxLayout;
        m_chkDelChannels[i] = Named(new QCheckBox(frame), Indexed("chkDelChannels", i));
        cell->addWidget(m_chkDelChannels[i]);
        cell->addWidget(Named(new QLabel(kChannelBoxes[i].Caption, frame), Indexed("lblChannels", i)));
        cell->addStretch(1);
        const int r = rowInGroup[g]++;
        const int column = firstColumn[g] + (g == 0 ? r / 5 : 0);
        grid->addLayout(cell, 1 + (g == 0 ? r % 5 : r), column);
    }
    for (int g = 0; g < 3; ++g) {
        m_cmdCheckAll[g] = Named(new QPushButton("Check all", frame), Indexed("cmdCheckAll", g), kCheckAllTips[g]);
        grid->addWidget(m_cmdCheckAll[g], 9, firstColumn[g], 1, g == 0 ? 2 : 1);
    }
    m_cmdDelChannels =
        Named(new QPushButton("Delete", frame), "cmdDelChannels", "Delete checked channels from selected actors");
    grid->addWidget(m_cmdDelChannels, 10, 3);
    return frame;
}

void PosePage::SetChannelControlsEnabled(bool listsEnabled) {
    m_lstActors->setEnabled(listsEnabled);
    m_lstDials->setEnabled(listsEnabled);
    // Editing arrives with the commands that own it; until then the panels only show.
    for (QWidget *w : std::initializer_list<QWidget *>{
             m_cmdSelectAllActors, m_cmdDeleteActors, m_cmdSelectAllDials, m_cmdDeleteDials, m_cmdCreateDial,
             m_cmdZerAll, m_cmdDelChannels, m_txtActorProperties[0], m_txtActorProperties[1], m_txtDialProperties[0],
             m_txtDialProperties[1], m_cmbDialProperties, m_chkDisableThighLength, m_txtThighLength})
        w->setEnabled(false);
    for (auto *w : m_cmbActorProperties)
        w->setEnabled(false);
    for (int i = 0; i < 7; ++i) {
        m_chkEnable[i]->setEnabled(false);
        m_cmdApplyProperty[i]->setEnabled(false);
        m_lblActorProperty[i]->setEnabled(false);
    }
    for (int i = 0; i < 3; ++i) {
        m_chkEnableDial[i]->setEnabled(false);
        m_cmdApplyDial[i]->setEnabled(false);
        m_lblDialProperty[i]->setEnabled(false);
        m_cmdCheckAll[i]->setEnabled(false);
    }
    for (auto *w : m_chkDelChannels)
        w->setEnabled(false);
}

void PosePage::refresh() {
    const PoseView &pose = m_session.Pose;
    ShowRows(m_lstActors, pose.lstActors, pose.lstActorsCurrentRow);
    ShowRows(m_lstDials, pose.lstDials, pose.lstDialsCurrentRow);
    SetChannelControlsEnabled(!pose.lstActors.empty() && m_session.View.ChannelControlsEnabled &&
                              !m_session.Options.chkChannels);
    m_chkDisableThighLength->setChecked(m_session.Options.chkDisableThighLength);
    m_txtThighLength->setText(Latin1(m_session.Options.txtThighLength));
}

} // namespace gelvane
