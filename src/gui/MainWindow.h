#pragma once
// frmMain: menus, the tab strip with the three pages, the title, dropping a
// file on the window and the closing rules. Handlers call one core operation
// on the session and redraw from it.
#include "core/app/OpenCommands.h"
#include "core/platform/Desktop.h"

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <map>

class QAction;
class QTabWidget;

namespace gelvane {

struct Settings;
class Session;
class ThumbnailCache;
class MaterialPage;
class PosePage;
class SaveOptionsPage;
class QtInteraction;
class BatchConverterWindow;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // The pages show the pictures of `thumbnails`.
    MainWindow(Session &session, Settings &settings, ThumbnailCache &thumbnails, QWidget *parent = nullptr);

    // Start-up once the settings are loaded (see core/app/StartUp.h), then a redraw.
    void StartUp(const std::string &commandText);
    // Runs an Open menu command and redraws.
    void RunOpenMenu(OpenMenu menu);
    // Dropping a file anywhere on the window but a path box.
    void DropFile(const std::string &path);

    // The windows that open from a menu entry, by the name of the entry (mnuSelSets,
    // mnuImport, mnuFileInfo, mnuBatchConvert, mnuPreferences); each has the program's
    // window until replaced. An entry without one stays disabled.
    void setWindowOpener(const QString &menuName, std::function<void(QWidget *owner)> opener);
    // Makes `ui` show its dialogs over this window, and redraw the window from the session
    // before each question, so that the user sees which file a question is about.
    void UseInteraction(QtInteraction &ui);
    // How the Help menu hands its documents to the desktop; tests replace it.
    void setDocumentStarter(ProcessStarter starter) { m_documentStarter = std::move(starter); }
    // How a figure of a multi-figure file is chosen; frmFigure unless replaced.
    void setFigureChooser(FigureChooser chooser);

public slots:
    // Redraws menus, title and pages from the session.
    void refreshFromSession();
    // Redraws the title and the enabled states of the menu entries.
    void refreshMenus();

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void buildMenus();
    void buildPages();
    void addWindowOpeners();
    QAction *addEntry(QMenu *menu, const QString &name, const QString &caption, const QKeySequence &shortcut = {});
    void tbsOptions_Click(int index);
    void mnuSave_Click();
    void mnuSaveAs_Click();
    void mnuBatchConvert_Click();
    FigureChooser figureChooser();

    Session &m_session;
    Settings &m_settings;
    ThumbnailCache &m_thumbnails;
    QTabWidget *m_tbsOptions = nullptr;
    MaterialPage *m_materialPage = nullptr;
    PosePage *m_posePage = nullptr;
    SaveOptionsPage *m_saveOptions = nullptr;
    std::map<QString, QAction *> m_entries;
    std::map<QString, std::function<void(QWidget *)>> m_openers;
    FigureChooser m_figureChooser;
    ProcessStarter m_documentStarter = StartDetached;
    QPointer<BatchConverterWindow> m_batch; // modeless: one at a time
};

} // namespace gelvane
