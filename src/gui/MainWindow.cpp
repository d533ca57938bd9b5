#include "gui/MainWindow.h"

#include "core/app/MainWindowState.h"
#include "core/app/SaveCommands.h"
#include "core/app/StartUp.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Desktop.h"
#include "core/platform/Interaction.h"
#include "gui/AboutWindow.h"
#include "gui/AppIcon.h"
#include "gui/QtInteraction.h"
#include "gui/SaveOptionsPage.h"
#include "gui/WidgetText.h"
#include "gui/app/SettingsWindow.h"
#include "gui/channels/PosePage.h"
#include "gui/materials/MaterialPage.h"
#include "gui/materials/TemplatesWindow.h"
#include "gui/reader/FigureWindow.h"
#include "gui/reports/BatchConverterWindow.h"
#include "gui/reports/FileInfoWindow.h"
#include "gui/reports/ImportWindow.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFile>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QTabWidget>
#include <QUrl>

namespace gelvane {

MainWindow::MainWindow(Session &session, Settings &settings, ThumbnailCache &thumbnails, QWidget *parent)
    : QMainWindow(parent), m_session(session), m_settings(settings), m_thumbnails(thumbnails) {
    setObjectName("frmMain");
    setWindowIcon(AppIcon());
    setAcceptDrops(true);
    buildMenus();
    buildPages();
    addWindowOpeners();
    // Room for every page at its natural size, within a 1024 x 768 screen and its frame.
    QSize size(1000, 690);
    if (const QScreen *shown = screen())
        size = size.boundedTo(shown->availableGeometry().size() - QSize(24, 78));
    resize(size.expandedTo(minimumSizeHint()));
    refreshFromSession();
}

QAction *MainWindow::addEntry(QMenu *menu, const QString &name, const QString &caption, const QKeySequence &shortcut) {
    QAction *action = menu->addAction(caption);
    action->setObjectName(name);
    if (!shortcut.isEmpty())
        action->setShortcut(shortcut);
    m_entries[name] = action;
    return action;
}

void MainWindow::buildMenus() {
    QMenu *mnuFile = menuBar()->addMenu("&File");
    mnuFile->setObjectName("mnuFile");
    QMenu *mnuOpen = mnuFile->addMenu("Open");
    mnuOpen->setObjectName("mnuOpen");
    QMenu *mnuPoseFile = mnuOpen->addMenu("Pose File");
    mnuPoseFile->setObjectName("mnuPoseFile");

    const auto openEntry = [this](QMenu *menu, const QString &name, const QString &caption, OpenMenu command) {
        connect(addEntry(menu, name, caption), &QAction::triggered, this, [this, command] { RunOpenMenu(command); });
    };
    openEntry(mnuPoseFile, "mnuOpenPZ2", "Pose File", OpenMenu::mnuOpenPZ2);
    openEntry(mnuPoseFile, "mnuOpenCM2", "Camera File", OpenMenu::mnuOpenCM2);
    openEntry(mnuPoseFile, "mnuOpenFC2", "Face File", OpenMenu::mnuOpenFC2);
    openEntry(mnuPoseFile, "mnuOpenHD2", "Hand File", OpenMenu::mnuOpenHD2);
    openEntry(mnuPoseFile, "mnuOpenLT2", "Light File", OpenMenu::mnuOpenLT2);
    openEntry(mnuOpen, "mnuOpenCR2", "Character File", OpenMenu::mnuOpenCR2);
    openEntry(mnuOpen, "mnuOpenCR2Props", "Character File with Props", OpenMenu::mnuOpenCR2Props);
    openEntry(mnuOpen, "mnuMultiFigure", "Multi-Figure Character File", OpenMenu::mnuMultiFigure);
    openEntry(mnuOpen, "mnuOpenPP2", "Prop File", OpenMenu::mnuOpenPP2);
    openEntry(mnuOpen, "mnuOpenHR2", "Hair File", OpenMenu::mnuOpenHR2);
    mnuFile->addSeparator();
    connect(addEntry(mnuFile, "mnuSave", "&Save", QKeySequence("Ctrl+S")), &QAction::triggered, this,
            &MainWindow::mnuSave_Click);
    connect(addEntry(mnuFile, "mnuSaveAs", "S&ave as ..."), &QAction::triggered, this, &MainWindow::mnuSaveAs_Click);
    const auto windowEntry = [this](QMenu *menu, const QString &name, const QString &caption) {
        connect(addEntry(menu, name, caption), &QAction::triggered, this, [this, name] {
            if (const auto opener = m_openers.find(name); opener != m_openers.end())
                opener->second(this);
            refreshFromSession();
        });
    };
    windowEntry(mnuFile, "mnuSelSets", "Selection templates");
    connect(addEntry(mnuFile, "mnuExportMTL", "Export materials (.mtl)"), &QAction::triggered, this, [this] {
        mnuExportMTL_Click(m_session);
        refreshFromSession();
    });
    windowEntry(mnuFile, "mnuImport", "Import data");
    windowEntry(mnuFile, "mnuFileInfo", "File Information");
    connect(addEntry(mnuFile, "mnuBatchConvert", "P4 <-> P5 batch converter"), &QAction::triggered, this,
            &MainWindow::mnuBatchConvert_Click);
    mnuFile->addSeparator()->setObjectName("mnuEmpty");
    connect(addEntry(mnuFile, "mnuExit", "E&xit", QKeySequence("Ctrl+X")), &QAction::triggered, this, &QWidget::close);

    QMenu *mnuSettings = menuBar()->addMenu("Se&ttings");
    mnuSettings->setObjectName("mnuSettings");
    windowEntry(mnuSettings, "mnuPreferences", "Preferences");
    connect(addEntry(mnuSettings, "mnuPoser", "Run Poser"), &QAction::triggered, this,
            [this] { RunPoser(m_settings.PoserFolder, m_session.ui()); });

    QMenu *mnuHelp = menuBar()->addMenu("&Help");
    mnuHelp->setObjectName("mnuHelp");
    connect(addEntry(mnuHelp, "mnuReadme", "License agreement", QKeySequence(Qt::Key_F1)), &QAction::triggered, this,
            [this] { OpenLicense(m_documentStarter); });
    connect(addEntry(mnuHelp, "mnuWebSite", "Online Help", QKeySequence(Qt::Key_F2)), &QAction::triggered, this,
            [this] { OpenManual(m_documentStarter); });
    connect(addEntry(mnuHelp, "mnuVHistory", "Version History", QKeySequence(Qt::Key_F3)), &QAction::triggered, this,
            [this] { OpenVersionHistory(m_documentStarter); });
    mnuHelp->addSeparator()->setObjectName("mnuEmpty2");
    connect(addEntry(mnuHelp, "mnuAbout", "About", QKeySequence("Ctrl+A")), &QAction::triggered, this, [this] {
        AboutWindow about(this);
        about.exec();
    });
}

void MainWindow::buildPages() {
    m_tbsOptions = new QTabWidget(this);
    m_tbsOptions->setObjectName("tbsOptions");
    m_materialPage = new MaterialPage(m_session, m_thumbnails, m_tbsOptions);
    m_posePage = new PosePage(m_session, m_tbsOptions);
    m_saveOptions = new SaveOptionsPage(m_session, m_tbsOptions);
    m_tbsOptions->addTab(m_materialPage, "Materials");
    m_tbsOptions->setTabToolTip(0, "Click this tab to edit materials");
    m_tbsOptions->addTab(m_posePage, "Morph and Pose channels");
    m_tbsOptions->setTabToolTip(1, "Click this tab to edit morph and pose channels");
    m_tbsOptions->addTab(m_saveOptions, "Save Options");
    m_tbsOptions->setTabToolTip(2, "Click this tab to select what will be included in the pose");
    setCentralWidget(m_tbsOptions);

    connect(m_tbsOptions, &QTabWidget::currentChanged, this, &MainWindow::tbsOptions_Click);
    connect(m_saveOptions, &SaveOptionsPage::sessionChanged, this, &MainWindow::refreshFromSession);
    connect(m_posePage, &PosePage::sessionChanged, this, &MainWindow::refreshFromSession);
    // Choosing an object changes what the menus offer; the material commands may switch the
    // materials off (the last object removed), which the save options show.
    connect(m_materialPage, &MaterialPage::objectChosen, this, &MainWindow::refreshMenus);
    connect(m_materialPage, &MaterialPage::sessionChanged, this, &MainWindow::refreshFromSession);
}

void MainWindow::addWindowOpeners() {
    setWindowOpener("mnuFileInfo", [this](QWidget *owner) { ShowFileInfoWindow(m_session, m_thumbnails, owner); });
    setWindowOpener("mnuSelSets", [this](QWidget *owner) {
        TemplatesWindow templates(m_session, owner);
        templates.exec();
    });
    setWindowOpener("mnuPreferences", [this](QWidget *owner) {
        SettingsWindow preferences(m_settings, m_session, owner);
        preferences.exec();
    });
    setWindowOpener("mnuImport", [this](QWidget *owner) {
        ShowImportWindow(m_session, owner, [this](Session &s) { ShowFigureWindow(s, this); });
    });
    setWindowOpener("mnuBatchConvert", [this](QWidget *owner) {
        if (!m_batch) {
            m_batch = new BatchConverterWindow(m_session, owner);
            connect(m_batch, &BatchConverterWindow::sessionChanged, this, &MainWindow::refreshFromSession);
        }
        m_batch->show();
        m_batch->raise();
        m_batch->activateWindow();
    });
}

void MainWindow::setWindowOpener(const QString &menuName, std::function<void(QWidget *)> opener) {
    m_openers[menuName] = std::move(opener);
    refreshMenus();
}

void MainWindow::UseInteraction(QtInteraction &ui) {
    ui.setOwner(this);
    ui.setBeforeMessage([this] { refreshFromSession(); });
}

void MainWindow::setFigureChooser(FigureChooser chooser) {
    m_figureChooser = std::move(chooser);
}

FigureChooser MainWindow::figureChooser() {
    if (m_figureChooser)
        return m_figureChooser;
    return
        [this](Session &, const FigureList &list) { return ChooseFigure(this, list.FigureNames, list.GeometryNames); };
}

void MainWindow::refreshMenus() {
    const ViewState &view = m_session.View;
    setWindowTitle(Latin1(view.Caption));
    const auto enable = [this](const char *name, bool on) { m_entries.at(name)->setEnabled(on); };
    enable("mnuSave", view.mnuSaveEnabled);
    enable("mnuSaveAs", view.mnuSaveAsEnabled);
    enable("mnuExportMTL", view.mnuExportMTLEnabled);
    enable("mnuFileInfo", view.mnuFileInfoEnabled && m_openers.count("mnuFileInfo"));
    enable("mnuPoser", view.mnuPoserEnabled);
    for (const char *name : {"mnuSelSets", "mnuImport", "mnuBatchConvert", "mnuPreferences"})
        enable(name, m_openers.count(name) > 0);
}

void MainWindow::refreshFromSession() {
    refreshMenus();
    m_materialPage->refresh();
    m_posePage->refresh();
    m_saveOptions->refresh();
}

void MainWindow::tbsOptions_Click(int index) {
    if (index == 0 && !m_session.Options.chkNoMaterialData && m_session.View.MaterialControlsEnabled)
        m_materialPage->refresh();
    else if (index == 1)
        m_posePage->tabOpened();
}

void MainWindow::StartUp(const std::string &commandText) {
    gelvane::StartUp(m_session, commandText, figureChooser());
    refreshFromSession();
}

void MainWindow::RunOpenMenu(OpenMenu menu) {
    gelvane::RunOpenMenu(m_session, menu, figureChooser());
    refreshFromSession();
}

void MainWindow::DropFile(const std::string &path) {
    gelvane::DropFile(m_session, path, figureChooser());
    refreshFromSession();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event) {
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.first().isLocalFile())
        return;
    event->acceptProposedAction();
    DropFile(QFile::encodeName(urls.first().toLocalFile()).toStdString());
}

void MainWindow::mnuSave_Click() {
    gelvane::mnuSave_Click(m_session);
    refreshFromSession();
}

void MainWindow::mnuSaveAs_Click() {
    gelvane::mnuSaveAs_Click(m_session);
    refreshFromSession();
}

void MainWindow::mnuBatchConvert_Click() {
    if (!BatchConvertMayStart(m_session))
        return;
    if (const auto opener = m_openers.find("mnuBatchConvert"); opener != m_openers.end())
        opener->second(this);
    refreshFromSession();
}

void MainWindow::closeEvent(QCloseEvent *event) {
    const bool close = QueryClose(m_session);
    refreshFromSession();
    if (close)
        event->accept();
    else
        event->ignore();
}

} // namespace gelvane
