#include "gui/SaveOptionsPage.h"

#include "core/app/MainWindowState.h"
#include "core/model/Session.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace gelvane {

namespace {

QLabel *NoteLabel(const QString &name, const QString &text, QWidget *parent) {
    auto *label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setIndent(22);
    return label;
}

QRadioButton *Option(const QString &name, const QString &text, QWidget *parent) {
    auto *option = new QRadioButton(text, parent);
    option->setObjectName(name);
    return option;
}

} // namespace

SaveOptionsPage::SaveOptionsPage(Session &session, QWidget *parent) : QWidget(parent), m_session(session) {
    setObjectName("picOptions_2");

    auto *fraFileSystem = new QGroupBox("File system", this);
    fraFileSystem->setObjectName("fraFileSystem");
    m_optFileSystem[0] = Option("optFileSystem_0", "DOS/Windows", fraFileSystem);
    m_optFileSystem[1] = Option("optFileSystem_1", "UNIX/Macintosh", fraFileSystem);
    auto *fileSystemLayout = new QVBoxLayout(fraFileSystem);
    fileSystemLayout->addWidget(m_optFileSystem[0]);
    fileSystemLayout->addWidget(m_optFileSystem[1]);
    fileSystemLayout->addWidget(NoteLabel("lblFileSystem_2",
                                          "The default file system for Poser is UNIX/MAC but Poser understands DOS "
                                          "format as well. Gelvane reads UNIX format slightly faster.",
                                          fraFileSystem));

    auto *fraPoserFormat = new QGroupBox("File format", this);
    fraPoserFormat->setObjectName("fraPoserFormat");
    m_optPoserFormat[0] = Option("optPoserFormat_0", "Poser 4 / Pro Pack", fraPoserFormat);
    m_optPoserFormat[1] = Option("optPoserFormat_1", "Poser 5", fraPoserFormat);
    auto *formatLayout = new QVBoxLayout(fraPoserFormat);
    formatLayout->addWidget(m_optPoserFormat[0]);
    formatLayout->addWidget(m_optPoserFormat[1]);
    formatLayout->addWidget(NoteLabel("lblPoserFormat_2",
                                      "Poser 5 files contain shader tree nodes and some other additional properties",
                                      fraPoserFormat));

    auto *fileSystemGroup = new QButtonGroup(this);
    fileSystemGroup->addButton(m_optFileSystem[0]);
    fileSystemGroup->addButton(m_optFileSystem[1]);
    auto *formatGroup = new QButtonGroup(this);
    formatGroup->addButton(m_optPoserFormat[0]);
    formatGroup->addButton(m_optPoserFormat[1]);

    auto *lblPoserVersion = new QLabel("Required Poser version", this);
    lblPoserVersion->setObjectName("lblPoserVersion");
    m_TXT0 = new QLineEdit(this);
    m_TXT0->setObjectName("TXT_0");
    m_TXT0->setToolTip("Type the Poser version number this mat pose requires. Usually you don't need to change this.");
    m_TXT0->setMaximumWidth(90);
    lblPoserVersion->setBuddy(m_TXT0);

    m_chkNoMaterialData = new QCheckBox("Don't save materials", this);
    m_chkNoMaterialData->setObjectName("chkNoMaterialData");
    m_chkNoMaterialData->setToolTip("Check if you don't want to include material data in the pose");
    m_chkChannels = new QCheckBox("Don't save morphs or poses", this);
    m_chkChannels->setObjectName("chkChannels");
    m_chkChannels->setToolTip("Check if you don't want to include pose or morph data in the pose file");

    auto *versionRow = new QHBoxLayout;
    versionRow->addWidget(lblPoserVersion);
    versionRow->addWidget(m_TXT0);
    versionRow->addStretch(1);

    // The options keep a readable width however wide the window grows.
    auto *column = new QWidget(this);
    column->setMaximumWidth(620);
    auto *outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(column, 3);
    outer->addStretch(1);
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(10);
    layout->addWidget(fraFileSystem);
    layout->addWidget(fraPoserFormat);
    layout->addLayout(versionRow);
    layout->addWidget(m_chkNoMaterialData);
    layout->addWidget(m_chkChannels);
    layout->addStretch(1);

    connect(m_optFileSystem[0], &QRadioButton::toggled, this, &SaveOptionsPage::onFileSystem);
    connect(m_optPoserFormat[0], &QRadioButton::toggled, this, &SaveOptionsPage::onPoserFormat);
    connect(m_TXT0, &QLineEdit::textChanged, this, &SaveOptionsPage::onVersionEdited);
    connect(m_chkNoMaterialData, &QCheckBox::clicked, this, &SaveOptionsPage::onNoMaterialData);
    connect(m_chkChannels, &QCheckBox::clicked, this, &SaveOptionsPage::onChannels);
    refresh();
}

void SaveOptionsPage::refresh() {
    const SaveOptions &options = m_session.Options;
    const QSignalBlocker blockers[] = {QSignalBlocker(m_optFileSystem[0]),
                                       QSignalBlocker(m_optFileSystem[1]),
                                       QSignalBlocker(m_optPoserFormat[0]),
                                       QSignalBlocker(m_optPoserFormat[1]),
                                       QSignalBlocker(m_TXT0),
                                       QSignalBlocker(m_chkNoMaterialData),
                                       QSignalBlocker(m_chkChannels)};
    m_optFileSystem[options.FileSystemDOS ? 0 : 1]->setChecked(true);
    m_optPoserFormat[options.PoserFormatP5 ? 1 : 0]->setChecked(true);
    const QString version = QString::fromLatin1(options.VersionText.c_str());
    if (m_TXT0->text() != version)
        m_TXT0->setText(version);
    m_chkNoMaterialData->setChecked(options.chkNoMaterialData);
    m_chkNoMaterialData->setEnabled(options.chkNoMaterialDataEnabled);
    m_chkChannels->setChecked(options.chkChannels);
    m_chkChannels->setEnabled(options.chkChannelsEnabled);
}

void SaveOptionsPage::onFileSystem() {
    m_session.Options.FileSystemDOS = m_optFileSystem[0]->isChecked();
}

void SaveOptionsPage::onPoserFormat() {
    optPoserFormat_Click(m_session, m_optPoserFormat[1]->isChecked() ? 1 : 0);
    refresh();
}

void SaveOptionsPage::onVersionEdited(const QString &text) {
    VersionText_Change(m_session, text.toLatin1().toStdString());
}

void SaveOptionsPage::onNoMaterialData(bool checked) {
    chkNoMaterialData_Click(m_session, checked);
    refresh();
    emit sessionChanged();
}

void SaveOptionsPage::onChannels(bool checked) {
    chkChannels_Click(m_session, checked);
    refresh();
    emit sessionChanged();
}

} // namespace gelvane
