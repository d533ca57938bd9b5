#include "windows/MainWindow.h"

#include "app/Settings.h"
#include "maps/MapCheck.h"
#include "model/Session.h"
#include "model/Text.h"
#include "platform/Interaction.h"
#include "platform/Paths.h"
#include "reader/MorphLoader.h"
#include "reports/FileStatistics.h"
#include "windows/AboutWindow.h"
#include "windows/SaveOptionsPage.h"

#if __has_include("materials/MaterialPage.h")
#include "materials/MaterialPage.h"
#else
#include "windows/StandInPages.h"
using MaterialPage = gelvane::StandInMaterialPage;
#endif
#if __has_include("channels/PosePage.h")
#include "channels/PosePage.h"
#else
#include "windows/StandInPages.h"
using PosePage = gelvane::StandInPosePage;
#endif
#if __has_include("writer/SaveCommands.h")
#include "writer/SaveCommands.h"
#define GELVANE_HAVE_SAVE_COMMANDS 1
#else
#include "writer/PoseWriter.h"
#endif

#include <QCloseEvent>
#include <QDesktopServices>
#include <QDragEnterEvent>
#include <QFile>
#include <QMenuBar>
#include <QMimeData>
#include <QProcess>
#include <QStandardPaths>
#include <QTabWidget>
#include <QUrl>

namespace gelvane {

namespace {

constexpr const char *kHomePage = "https://gelvane.sourceforge.io/GVLHome/";

QString Latin1(const std::string &text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

void RefreshMaterialPage(QWidget *page) {
    static_cast<MaterialPage *>(page)->refresh();
}

void RefreshPosePage(QWidget *page) {
    static_cast<PosePage *>(page)->refresh();
}

} // namespace

MainWindow::MainWindow(Session &session, Settings &settings, QWidget *parent)
    : QMainWindow(parent), m_session(session), m_settings(settings) {
    setObjectName("frmMain");
    setAcceptDrops(true);
    buildMenus();
    buildPages();
    resize(760, 640);
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
    windowEntry(mnuFile, "mnuExportMTL", "Export materials (.mtl)");
    windowEntry(mnuFile, "mnuImport", "Import data");
    windowEntry(mnuFile, "mnuFileInfo", "File Information");
    connect(addEntry(mnuFile, "mnuBatchConvert", "P4 <-> P5 batch converter"), &QAction::triggered, this,
            &MainWindow::mnuBatchConvert_Click);
    mnuFile->addSeparator()->setObjectName("mnuEmpty");
    connect(addEntry(mnuFile, "mnuExit", "E&xit", QKeySequence("Ctrl+X")), &QAction::triggered, this, &QWidget::close);

    QMenu *mnuSettings = menuBar()->addMenu("Se&ttings");
    mnuSettings->setObjectName("mnuSettings");
    windowEntry(mnuSettings, "mnuPreferences", "Preferences");
    connect(addEntry(mnuSettings, "mnuPoser", "Run Poser"), &QAction::triggered, this, &MainWindow::mnuPoser_Click);

    QMenu *mnuHelp = menuBar()->addMenu("&Help");
    mnuHelp->setObjectName("mnuHelp");
    connect(addEntry(mnuHelp, "mnuReadme", "License agreement", QKeySequence(Qt::Key_F1)), &QAction::triggered, this,
            [this] { openDocument("GVLLicense.txt"); });
    connect(addEntry(mnuHelp, "mnuWebSite", "Online Help", QKeySequence(Qt::Key_F2)), &QAction::triggered, this,
            [] { QDesktopServices::openUrl(QUrl(kHomePage)); });
    connect(addEntry(mnuHelp, "mnuVHistory", "Version History", QKeySequence(Qt::Key_F3)), &QAction::triggered, this,
            [this] { openDocument("VHistory.htm"); });
    mnuHelp->addSeparator()->setObjectName("mnuEmpty2");
    connect(addEntry(mnuHelp, "mnuAbout", "About", QKeySequence("Ctrl+A")), &QAction::triggered, this, [this] {
        AboutWindow about(this);
        about.exec();
    });
}

void MainWindow::buildPages() {
    m_tbsOptions = new QTabWidget(this);
    m_tbsOptions->setObjectName("tbsOptions");
    m_materialPage = new MaterialPage(m_session, m_tbsOptions);
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
    // The pages report their own changes when they offer the signal.
    for (QWidget *page : {m_materialPage, m_posePage})
        if (page->metaObject()->indexOfSignal("sessionChanged()") >= 0)
            connect(page, SIGNAL(sessionChanged()), this, SLOT(refreshFromSession()));
}

void MainWindow::setWindowOpener(const QString &menuName, std::function<void(QWidget *)> opener) {
    m_openers[menuName] = std::move(opener);
    refreshFromSession();
}

void MainWindow::setFigureSelection(std::function<void(Session &, QWidget *)> selection) {
    m_figureSelection = std::move(selection);
}

void MainWindow::refreshFromSession() {
    const ViewState &view = m_session.View;
    setWindowTitle(Latin1(view.Caption));
    const auto enable = [this](const char *name, bool on) { m_entries.at(name)->setEnabled(on); };
    enable("mnuSave", view.mnuSaveEnabled);
    enable("mnuSaveAs", view.mnuSaveAsEnabled);
    enable("mnuExportMTL", view.mnuExportMTLEnabled && m_openers.count("mnuExportMTL"));
    enable("mnuFileInfo", view.mnuFileInfoEnabled && m_openers.count("mnuFileInfo"));
    enable("mnuPoser", view.mnuPoserEnabled);
    for (const char *name : {"mnuSelSets", "mnuImport", "mnuBatchConvert", "mnuPreferences"})
        enable(name, m_openers.count(name) > 0);
    RefreshMaterialPage(m_materialPage);
    RefreshPosePage(m_posePage);
    m_saveOptions->refresh();
}

void MainWindow::tbsOptions_Click(int index) {
    if (index == 0 && !m_session.Options.chkNoMaterialData && m_session.View.MaterialControlsEnabled)
        RefreshMaterialPage(m_materialPage);
    else if (index == 1 && !m_session.Options.chkChannels)
        RefreshPosePage(m_posePage);
}

void MainWindow::StartUp(const std::string &commandText) {
    m_session.View.mnuPoserEnabled = !m_settings.PoserFolder.empty() && m_settings.PoserFolder != "none";
    ResetList(m_session.Figures);
    m_session.Actors.assign(1, Actor{});
    m_session.Options.PoserFormatP5 = !m_settings.SaveAsP4;
    m_session.Options.FileSystemDOS = m_settings.FileSystemDOS;
    refreshFromSession();
    if (commandText.empty())
        return;

    m_session.CommandLineOpen = true;
    m_session.CommandText = commandText;
    const OpenMenu menu = MenuOfCommandText(commandText);
    if (menu != OpenMenu::mnuMultiFigure) {
        if (menu != OpenMenu::None)
            RunOpenMenu(menu);
        return;
    }
    // A character from outside always goes through figure selection.
    const std::string path(Trim(Replace(commandText, "\"", "")));
    if (!FileExists(path))
        return;
    m_session.MultiFigure = true;
    m_session.SingleActorLoad = false;
    m_session.DialogFileName = ResolvePath(path).value_or(std::string());
    m_session.CommandLineOpen = false;
    m_session.PoserFileKind = KindCR2;
    runFigureSelection();
    afterOpen();
}

void MainWindow::RunOpenMenu(OpenMenu menu) {
    if (menu == OpenMenu::None)
        return;
    if (menu == OpenMenu::mnuMultiFigure && m_figureSelection) {
        m_session.PoserFileKind = KindCR2;
        m_session.MultiFigure = true;
        if (!m_session.CommandLineOpen) {
            FileDialogRequest request;
            request.Title = "Open Character file";
            request.DefaultExt = "cr2";
            request.Filter = "Characters|*.cr2|All files|*.*";
            request.Flags = 6148;
            request.Preview = m_settings.CdlgThumb;
            const std::string &folder = m_session.LastFolder[KindCR2];
            request.InitialDir = !folder.empty()                  ? folder
                                 : m_settings.CR2Folder != "none" ? m_settings.CR2Folder
                                                                  : std::string();
            const std::optional<std::string> chosen = m_session.ui().ChooseFile(request);
            if (!chosen) {
                m_session.MultiFigure = false;
                return;
            }
            m_session.DialogFileName = *chosen;
            m_session.LastFolder[KindCR2] = std::string(FolderPart(*chosen));
        }
        m_session.CommandLineOpen = false;
        runFigureSelection();
        afterOpen();
        return;
    }
    OpenCommand(m_session, KindOfMenu(menu), menu == OpenMenu::mnuOpenCR2Props || menu == OpenMenu::mnuMultiFigure);
    afterOpen();
}

void MainWindow::runFigureSelection() {
    m_session.SingleActorLoad = false;
    if (m_figureSelection) {
        m_figureSelection(m_session, this);
        if (!m_session.OpenCancelled) {
            ComputeFileStatistics(m_session);
            CheckMapReferences(m_session);
        }
    } else {
        m_session.CommandLineOpen = true;
        m_session.CommandText.clear();
        OpenCommand(m_session, KindCR2, true);
    }
}

void MainWindow::afterOpen() {
    if (!m_session.OpenCancelled && !m_session.OpenFailed && !m_session.FileName.empty())
        m_session.View.mnuFileInfoEnabled = true;
    refreshFromSession();
}

void MainWindow::DropFile(const std::string &path) {
    const std::string keptName = m_session.DialogFileName;
    const OpenMenu menu = BeginDrop(m_session, path);
    if (menu == OpenMenu::None) {
        m_session.DialogFileName = keptName;
        return;
    }
    m_session.CommandText.clear();
    RunOpenMenu(menu);
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
#ifdef GELVANE_HAVE_SAVE_COMMANDS
    gelvane::mnuSave_Click(m_session);
#else
    try {
        m_session.OutputPath = m_session.FileName;
        WritePoseFile(m_session);
    } catch (const std::exception &) {
        // Saving reports nothing; the previous file stays as it was.
    }
#endif
    refreshFromSession();
}

void MainWindow::mnuSaveAs_Click() {
#ifdef GELVANE_HAVE_SAVE_COMMANDS
    gelvane::mnuSaveAs_Click(m_session);
#else
    FileDialogRequest request;
    request.Title = "Save as";
    request.Filter = "Pose files|*.pz2|All files|*.*";
    request.DefaultExt = "pz2";
    request.Flags = 2054;
    request.ForSave = true;
    const std::optional<std::string> chosen = m_session.ui().ChooseFile(request);
    if (chosen) {
        try {
            m_session.OutputPath = *chosen;
            WritePoseFile(m_session);
            m_session.FileName = *chosen;
            m_session.View.Caption = CaptionOf(*chosen);
            m_session.View.mnuSaveEnabled = true;
        } catch (const std::exception &) {
        }
    }
#endif
    refreshFromSession();
}

void MainWindow::mnuBatchConvert_Click() {
    if (SomethingToSave(m_session) &&
        m_session.ui().MessageBox(kBatchQuestion, kProgramTitle, MsgIcon::None, MsgButtons::YesNo) != MsgResult::Yes)
        return;
    if (const auto opener = m_openers.find("mnuBatchConvert"); opener != m_openers.end())
        opener->second(this);
    refreshFromSession();
}

void MainWindow::mnuPoser_Click() {
    const std::string &folder = m_settings.PoserFolder;
    const std::optional<std::string> executable = ResolvePath(JoinPath(folder, "Poser.exe"));
    if (!executable || !FileExists(*executable)) {
        m_session.ui().MessageBox("Poser executable could not be found in\r\n" + folder + ".", kProgramTitle,
                                  MsgIcon::Exclamation, MsgButtons::OK);
        return;
    }
    // A Windows program runs through wine here.
    const QString wine = QStandardPaths::findExecutable("wine");
    if (wine.isEmpty() || !QProcess::startDetached(wine, {QFile::decodeName(executable->c_str())}))
        m_session.ui().MessageBox("Invalid procedure call or argument, 5", kProgramTitle, MsgIcon::None,
                                  MsgButtons::OK);
}

void MainWindow::openDocument(const QString &fileName) {
    const QString folder = QFile::decodeName(ExecutableFolder().c_str());
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder + "/" + fileName));
}

void MainWindow::closeEvent(QCloseEvent *event) {
    if (NeedsSaveQuestion(m_session)) {
        switch (m_session.ui().MessageBox(kSaveBeforeExiting, kProgramTitle, MsgIcon::None, MsgButtons::YesNoCancel)) {
        case MsgResult::Yes:
            if (CloseSavesUnderSameName(m_session))
                mnuSave_Click();
            else
                mnuSaveAs_Click();
            break;
        case MsgResult::No:
            break;
        default:
            event->ignore();
            return;
        }
    }
    event->accept();
}

} // namespace gelvane
