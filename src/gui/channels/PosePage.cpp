#include "gui/channels/PosePage.h"

#include "core/app/MainWindowState.h"
#include "core/channels/ChannelDeletion.h"
#include "core/channels/ChannelProperties.h"
#include "core/channels/PosePageState.h"
#include "core/model/Session.h"
#include "gui/WidgetText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
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
const char *const kCheckAllTips[3] = {"Check/uncheck all common channels", "Check/uncheck all camera channels",
                                      "Check/uncheck all light channels"};

QTreeWidget *NameTypeList(QWidget *parent, const char *name, const char *tip) {
    auto *list = Named(new QTreeWidget(parent), name, tip);
    list->setColumnCount(2);
    list->setHeaderLabels({"Name", "Type"});
    list->setRootIsDecorated(false);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setUniformRowHeights(true);
    // The type column is as wide as its longest word ("propagatingScale"); names get the rest.
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    list->setMinimumWidth(list->fontMetrics().horizontalAdvance("propagatingScaleX") * 2 + 40);
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

std::vector<int> SelectedRows(const QTreeWidget *list) {
    std::vector<int> rows;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        if (list->topLevelItem(i)->isSelected())
            rows.push_back(i + 1);
    return rows;
}

// Shows rows of the session in a list, with their selection and the focused row (1-based).
// The items are built again only when the rows changed, so the list keeps its scroll position.
void ShowRows(QTreeWidget *list, const std::vector<ListRow> &rows, int currentRow) {
    const QSignalBlocker blocker(list);
    bool same = list->topLevelItemCount() == static_cast<int>(rows.size());
    for (int i = 0; same && i < list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = list->topLevelItem(i);
        same = item->text(0) == Latin1(rows[static_cast<size_t>(i)].Name) &&
               item->text(1) == Latin1(rows[static_cast<size_t>(i)].Type);
    }
    if (!same) {
        list->clear();
        QList<QTreeWidgetItem *> items;
        for (const ListRow &row : rows)
            items.append(new QTreeWidgetItem({Latin1(row.Name), Latin1(row.Type)}));
        list->addTopLevelItems(items);
    }
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = list->topLevelItem(i);
        if (item->isSelected() != rows[static_cast<size_t>(i)].Selected)
            item->setSelected(rows[static_cast<size_t>(i)].Selected);
    }
    if (currentRow >= 1 && currentRow <= list->topLevelItemCount()) {
        QTreeWidgetItem *current = list->topLevelItem(currentRow - 1);
        if (list->currentItem() != current)
            list->setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
        if (!same)
            list->scrollToItem(current);
    }
}

void ShowText(QLineEdit *box, const std::string &text) {
    const QString shown = Latin1(text);
    if (box->text() != shown) {
        const QSignalBlocker blocker(box);
        box->setText(shown);
    }
}

void ShowRow(QComboBox *box, int row) {
    const QSignalBlocker blocker(box);
    box->setCurrentIndex(row);
}

void ShowCheck(QCheckBox *box, bool checked, bool enabled) {
    const QSignalBlocker blocker(box);
    box->setChecked(checked);
    box->setEnabled(enabled);
}

std::string TextOf(const QString &text) {
    return text.toLatin1().toStdString();
}

} // namespace

PosePage::PosePage(Session &session, QWidget *parent) : QWidget(parent), m_session(session) {
    setObjectName("picOptions_1");
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->addWidget(BuildLists(), 0, 0);
    grid->addWidget(BuildDeletePanel(), 1, 0);
    auto *panels = new QVBoxLayout;
    panels->addWidget(BuildActorPanel());
    panels->addWidget(BuildDialPanel());
    panels->addWidget(BuildThighLength());
    panels->addStretch(1);
    grid->addLayout(panels, 0, 1, 2, 1);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(0, 1);
    refresh();
}

void PosePage::Run(const std::function<void()> &command) {
    command();
    refresh();
    emit sessionChanged();
}

void PosePage::ListClicked(QTreeWidget *list, QTreeWidgetItem *item) {
    const int row = list->indexOfTopLevelItem(item) + 1;
    if (list == m_lstActors)
        Run([this, row] { lstActors_ItemClick(m_session, row); });
    else
        Run([this, row] { lstDials_ItemClick(m_session, row); });
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
    actorButtons->addStretch(1);
    auto *dialButtons = new QHBoxLayout;
    dialButtons->addWidget(m_cmdSelectAllDials);
    dialButtons->addWidget(m_cmdDeleteDials);
    dialButtons->addStretch(1);
    grid->addLayout(actorButtons, 2, 0);
    grid->addLayout(dialButtons, 2, 1);
    m_cmdCreateDial = Named(new QPushButton("Create new Morph channel...", box), "cmdCreateDial");
    m_cmdZerAll =
        Named(new QPushButton("Zero everything", box), "cmdZerAll", "Set every dial value of every actor to 0.");
    // One row under both lists, so that neither list is widened by a long caption.
    auto *commands = new QHBoxLayout;
    commands->addWidget(m_cmdZerAll);
    commands->addWidget(m_cmdCreateDial);
    commands->addStretch(1);
    grid->addLayout(commands, 3, 0, 1, 2);
    grid->setRowStretch(1, 1);

    for (QTreeWidget *list : {m_lstActors, m_lstDials}) {
        list->installEventFilter(this);
        connect(list, &QTreeWidget::itemClicked, this,
                [this, list](QTreeWidgetItem *item) { ListClicked(list, item); });
    }
    connect(m_lstActors, &QTreeWidget::itemSelectionChanged, this,
            [this] { lstActors_SelectionChange(m_session, SelectedRows(m_lstActors)); });
    connect(m_lstDials, &QTreeWidget::itemSelectionChanged, this,
            [this] { lstDials_SelectionChange(m_session, SelectedRows(m_lstDials)); });
    connect(m_cmdSelectAllActors, &QPushButton::clicked, this,
            [this] { Run([this] { cmdSelectAllActors_Click(m_session); }); });
    connect(m_cmdSelectAllDials, &QPushButton::clicked, this,
            [this] { Run([this] { cmdSelectAllDials_Click(m_session); }); });
    connect(m_cmdDeleteActors, &QPushButton::clicked, this,
            [this] { Run([this] { cmdDeleteActors_Click(m_session); }); });
    connect(m_cmdDeleteDials, &QPushButton::clicked, this,
            [this] { Run([this] { cmdDeleteDials_Click(m_session); }); });
    connect(m_cmdCreateDial, &QPushButton::clicked, this, [this] { Run([this] { cmdCreateDial_Click(m_session); }); });
    connect(m_cmdZerAll, &QPushButton::clicked, this, [this] { Run([this] { cmdZerAll_Click(m_session); }); });
    return box;
}

bool PosePage::eventFilter(QObject *watched, QEvent *event) {
    // Moving through a list with the keys is a click on the row reached.
    if (event->type() == QEvent::KeyRelease) {
        auto *list = qobject_cast<QTreeWidget *>(watched);
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_Space:
            if (list && list->currentItem())
                ListClicked(list, list->currentItem());
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
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
        connect(m_cmbActorProperties[i], &QComboBox::activated, this,
                [this, i](int row) { cmbActorProperties_Click(m_session, i, row); });
    }
    m_cmbActorProperties[0]->setToolTip("Toggle visibility of the actor");
    m_cmbActorProperties[1]->setToolTip("Toggle visibility of actor's dial controls");
    m_actorValue = {m_txtActorProperties[0], m_cmbActorProperties[0], m_cmbActorProperties[1], m_cmbActorProperties[2],
                    m_cmbActorProperties[3], m_txtActorProperties[1], m_cmbActorProperties[4]};
    for (int i = 0; i < 2; ++i)
        connect(m_txtActorProperties[i], &QLineEdit::textEdited, this,
                [this, i](const QString &text) { txtActorProperties_Change(m_session, i, TextOf(text)); });
    for (int i = 0; i < 7; ++i) {
        m_lblActorProperty[i] = Named(new QLabel(captions[i], frame), Indexed("lblActorProperty", i));
        m_chkEnable[i] = Named(new QCheckBox(frame), Indexed("chkEnable", i), kEnableTip);
        m_cmdApplyProperty[i] = Named(new QPushButton("Apply", frame), Indexed("cmdApplyProperty", i));
        m_actorValue[i]->setMinimumWidth(std::max(110, m_actorValue[i]->sizeHint().width()));
        grid->addWidget(m_lblActorProperty[i], i, 0);
        grid->addWidget(m_actorValue[i], i, 1);
        grid->addWidget(
            EnableCell(frame, Named(new QLabel("Enabled", frame), Indexed("lblDisable", i)), m_chkEnable[i]), i, 2);
        grid->addWidget(m_cmdApplyProperty[i], i, 3);
        connect(m_chkEnable[i], &QCheckBox::clicked, this,
                [this, i](bool checked) { Run([this, i, checked] { chkEnable_Click(m_session, i, checked); }); });
        connect(m_cmdApplyProperty[i], &QPushButton::clicked, this,
                [this, i] { Run([this, i] { cmdApplyProperty_Click(m_session, i); }); });
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
    connect(m_cmbDialProperties, &QComboBox::activated, this,
            [this](int row) { cmbDialProperties_Click(m_session, row); });
    for (int i = 0; i < 2; ++i)
        connect(m_txtDialProperties[i], &QLineEdit::textEdited, this,
                [this, i](const QString &text) { txtDialProperties_Change(m_session, i, TextOf(text)); });
    m_dialValue = {m_txtDialProperties[0], m_txtDialProperties[1], m_cmbDialProperties};
    for (int i = 0; i < 3; ++i) {
        m_lblDialProperty[i] = Named(new QLabel(captions[i], frame), Indexed("lblDialProperty", i));
        m_chkEnableDial[i] = Named(new QCheckBox(frame), Indexed("chkEnableDial", i), kEnableTip);
        m_cmdApplyDial[i] =
            Named(new QPushButton("Apply", frame), Indexed("cmdApplyDial", i), "Apply value for selected Dial(s)");
        m_dialValue[i]->setMinimumWidth(110);
        grid->addWidget(m_lblDialProperty[i], i + 1, 0);
        grid->addWidget(m_dialValue[i], i + 1, 1);
        grid->addWidget(m_chkEnableDial[i], i + 1, 2, Qt::AlignHCenter);
        grid->addWidget(m_cmdApplyDial[i], i + 1, 3);
        connect(m_chkEnableDial[i], &QCheckBox::clicked, this,
                [this, i](bool checked) { Run([this, i, checked] { chkEnableDial_Click(m_session, i, checked); }); });
        connect(m_cmdApplyDial[i], &QPushButton::clicked, this,
                [this, i] { Run([this, i] { cmdApplyDial_Click(m_session, i); }); });
    }
    // Enter in the value box applies it, as the button does.
    connect(m_txtDialProperties[0], &QLineEdit::returnPressed, m_cmdApplyDial[0], &QPushButton::click);
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
    connect(m_chkDisableThighLength, &QCheckBox::clicked, this,
            [this](bool checked) { Run([this, checked] { chkDisableThighLength_Click(m_session, checked); }); });
    connect(m_txtThighLength, &QLineEdit::textEdited, this, [this](const QString &text) {
        txtThighLength_Change(m_session, TextOf(text));
        refresh();
    });
    return frame;
}

QWidget *PosePage::BuildDeletePanel() {
    auto *frame = Named(new QGroupBox("Delete channels from selected actors", this), "fraDelChannels");
    auto *grid = new QGridLayout(frame);
    grid->setVerticalSpacing(1);
    grid->setHorizontalSpacing(14);
    // Common channels take two columns, camera and light one each.
    const int firstColumn[3] = {0, 2, 3};
    int rowInGroup[3] = {0, 0, 0};
    for (int g = 0; g < 3; ++g)
        grid->addWidget(
            Named(new QLabel(kChannelGroupHeadings[static_cast<size_t>(g)], frame), Indexed("lblChannelGroup", g)), 0,
            firstColumn[g], 1, g == 0 ? 2 : 1);
    for (int i = 0; i < kChannelBoxCount; ++i) {
        const ChannelBox &box = ChannelBoxes()[static_cast<size_t>(i)];
        const int g = box.Group;
        auto *cell = new QHBoxLayout;
        m_chkDelChannels[i] = Named(new QCheckBox(frame), Indexed("chkDelChannels", i));
        auto *caption = Named(new QLabel(box.Caption, frame), Indexed("lblChannels", i));
        caption->setBuddy(m_chkDelChannels[i]);
        cell->addWidget(m_chkDelChannels[i]);
        cell->addWidget(caption);
        cell->addStretch(1);
        const int r = rowInGroup[g]++;
        const int column = firstColumn[g] + (g == 0 ? r / 5 : 0);
        grid->addLayout(cell, 1 + (g == 0 ? r % 5 : r), column);
        connect(m_chkDelChannels[i], &QCheckBox::clicked, this,
                [this, i](bool checked) { Run([this, i, checked] { chkDelChannels_Click(m_session, i, checked); }); });
    }
    for (int g = 0; g < 3; ++g) {
        m_cmdCheckAll[g] = Named(new QPushButton(kCheckAll, frame), Indexed("cmdCheckAll", g), kCheckAllTips[g]);
        grid->addWidget(m_cmdCheckAll[g], 9, firstColumn[g], 1, g == 0 ? 2 : 1, Qt::AlignLeft);
        connect(m_cmdCheckAll[g], &QPushButton::clicked, this,
                [this, g] { Run([this, g] { cmdCheckAll_Click(m_session, g); }); });
    }
    m_cmdDelChannels =
        Named(new QPushButton("Delete", frame), "cmdDelChannels", "Delete checked channels from selected actors");
    grid->addWidget(m_cmdDelChannels, 10, 3, Qt::AlignLeft);
    // On a wide window the boxes stay together at the left.
    grid->setColumnStretch(4, 1);
    connect(m_cmdDelChannels, &QPushButton::clicked, this,
            [this] { Run([this] { cmdDelChannels_Click(m_session); }); });
    return frame;
}

void PosePage::tabOpened() {
    PosePageOpened(m_session);
    refresh();
}

void PosePage::refresh() {
    const PoseView &pose = m_session.Pose;
    ShowRows(m_lstActors, pose.lstActors, pose.lstActorsCurrentRow);
    ShowRows(m_lstDials, pose.lstDials, pose.lstDialsCurrentRow);
    m_lstActors->setEnabled(pose.lstActorsEnabled);
    m_lstDials->setEnabled(pose.lstDialsEnabled);
    m_cmdSelectAllActors->setEnabled(pose.cmdSelectAllActorsEnabled);
    m_cmdSelectAllDials->setEnabled(pose.cmdSelectAllDialsEnabled);
    m_cmdDeleteActors->setEnabled(pose.cmdDeleteActorsEnabled);
    m_cmdDeleteDials->setEnabled(pose.cmdDeleteDialsEnabled);
    m_cmdZerAll->setEnabled(pose.cmdZerAllEnabled);
    m_cmdCreateDial->setEnabled(pose.cmdCreateDialEnabled);

    for (int i = 0; i < 2; ++i) {
        ShowText(m_txtActorProperties[i], pose.txtActorProperties[static_cast<size_t>(i)]);
        ShowText(m_txtDialProperties[i], pose.txtDialProperties[static_cast<size_t>(i)]);
    }
    for (int i = 0; i < 5; ++i)
        ShowRow(m_cmbActorProperties[i], pose.cmbActorProperties[static_cast<size_t>(i)]);
    ShowRow(m_cmbDialProperties, pose.cmbDialProperties);
    for (int i = 0; i < kActorPropertyCount; ++i) {
        const PropertyRow &row = pose.ActorProperty[static_cast<size_t>(i)];
        ShowCheck(m_chkEnable[i], row.Checked, row.BoxEnabled);
        m_lblActorProperty[i]->setEnabled(row.LabelEnabled);
        m_actorValue[i]->setEnabled(row.ValueEnabled);
        m_cmdApplyProperty[i]->setEnabled(row.ApplyEnabled);
    }
    for (int i = 0; i < kDialPropertyCount; ++i) {
        const PropertyRow &row = pose.DialProperty[static_cast<size_t>(i)];
        ShowCheck(m_chkEnableDial[i], row.Checked, row.BoxEnabled);
        m_lblDialProperty[i]->setEnabled(row.LabelEnabled);
        m_dialValue[i]->setEnabled(row.ValueEnabled);
        m_cmdApplyDial[i]->setEnabled(row.ApplyEnabled);
    }

    ShowCheck(m_chkDisableThighLength, m_session.Options.chkDisableThighLength, pose.chkDisableThighLengthEnabled);
    ShowText(m_txtThighLength, m_session.Options.txtThighLength);
    m_txtThighLength->setEnabled(pose.txtThighLengthEnabled);

    for (int i = 0; i < kChannelBoxCount; ++i)
        ShowCheck(m_chkDelChannels[i], pose.chkDelChannels[static_cast<size_t>(i)], pose.chkDelChannelsEnabled);
    for (int g = 0; g < 3; ++g) {
        m_cmdCheckAll[g]->setText(Latin1(pose.cmdCheckAll[static_cast<size_t>(g)]));
        m_cmdCheckAll[g]->setEnabled(pose.cmdCheckAllEnabled);
    }
    m_cmdDelChannels->setEnabled(pose.cmdDelChannelsEnabled);
}

} // namespace gelvane
