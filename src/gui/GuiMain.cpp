#include "gui/GuiMain.h"

#include "core/app/SettingsFile.h"
#include "core/maps/Thumbnails.h"
#include "core/materials/Templates.h"
#include "core/model/Session.h"
#include "gui/MainWindow.h"
#include "gui/QtInteraction.h"
#include "gui/app/SettingsWindow.h"
#include "gui/materials/TemplatesWindow.h"
#include "gui/reader/FigureWindow.h"
#include "gui/reports/BatchConverterWindow.h"
#include "gui/reports/ImportWindow.h"

#include <QApplication>
#include <QPointer>

namespace gelvane {

int RunGui(int argc, char **argv, const std::string &commandText) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(kProgramTitle);
    Settings settings;
    // The window's image lists: the material page's thumbnails, the map choice and the
    // open dialog's previews.
    ThumbnailCache thumbnails;
    QtInteraction ui(thumbnails);
    Session session(settings, ui);
    ConnectThumbnails(session, thumbnails);
    ConnectTemplates(session);

    MainWindow window(session, settings, thumbnails);
    ui.setOwner(&window);
    ui.setBeforeMessage([&window] { window.refreshFromSession(); });
    window.setWindowOpener("mnuSelSets", [&session](QWidget *owner) {
        TemplatesWindow templates(session, owner);
        templates.exec();
    });
    window.setWindowOpener("mnuPreferences", [&settings, &session](QWidget *owner) {
        SettingsWindow preferences(settings, session, owner);
        preferences.exec();
    });
    window.setWindowOpener("mnuImport", [&session, &window](QWidget *owner) {
        ShowImportWindow(session, owner, [&window](Session &s) { ShowFigureWindow(s, &window); });
    });
    // The batch window is modeless: one at a time, redrawing the main window after a run.
    QPointer<BatchConverterWindow> batch;
    window.setWindowOpener("mnuBatchConvert", [&session, &window, &batch](QWidget *owner) {
        if (!batch) {
            batch = new BatchConverterWindow(session, owner);
            QObject::connect(batch, &BatchConverterWindow::sessionChanged, &window, &MainWindow::refreshFromSession);
        }
        batch->show();
        batch->raise();
        batch->activateWindow();
    });
    window.show();
    settings = LoadSettings(ui, [] { return FindPoserFolders(DefaultPoserSearchPlaces()); });
    window.StartUp(commandText);
    const int status = app.exec();
    ui.setOwner(nullptr);
    ui.setBeforeMessage({});
    return status;
}

} // namespace gelvane
