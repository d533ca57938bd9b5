#include "gui/GuiMain.h"

#include "core/app/SettingsFile.h"
#include "core/maps/Thumbnails.h"
#include "core/materials/Templates.h"
#include "core/model/Session.h"
#include "gui/MainWindow.h"
#include "gui/QtInteraction.h"
#include "gui/app/SettingsWindow.h"
#include "gui/materials/TemplatesWindow.h"

#include <QApplication>

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
    window.show();
    settings = LoadSettings(ui);
    window.StartUp(commandText);
    const int status = app.exec();
    ui.setOwner(nullptr);
    ui.setBeforeMessage({});
    return status;
}

} // namespace gelvane
