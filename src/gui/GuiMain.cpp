#include "gui/GuiMain.h"

#include "core/app/SettingsFile.h"
#include "core/maps/Thumbnails.h"
#include "core/materials/Templates.h"
#include "core/model/Session.h"
#include "gui/AppIcon.h"
#include "gui/MainWindow.h"
#include "gui/QtInteraction.h"

#include <QApplication>

namespace gelvane {

int RunGui(int argc, char **argv, const std::string &commandText) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(kProgramTitle);
    // Every window's title bar, and the desktop's window list, show the program's own icon.
    QApplication::setWindowIcon(AppIcon());
    Settings settings;
    // The window's image lists: the material page's thumbnails, the map choice and the
    // open dialog's previews.
    ThumbnailCache thumbnails;
    QtInteraction ui(thumbnails);
    Session session(settings, ui);
    ConnectThumbnails(session, thumbnails);
    ConnectTemplates(session);

    MainWindow window(session, settings, thumbnails);
    window.UseInteraction(ui);
    window.show();
    settings = LoadSettings(ui, [] { return FindPoserFolders(DefaultPoserSearchPlaces()); });
    window.StartUp(commandText);
    const int status = app.exec();
    ui.setOwner(nullptr);
    ui.setBeforeMessage({});
    return status;
}

} // namespace gelvane
