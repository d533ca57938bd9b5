#include "core/app/StartUp.h"

#include "core/model/Session.h"
#include "core/model/Settings.h"

namespace gelvane {

void PrepareSession(Session &session) {
    const Settings &settings = session.settings();
    session.CommandLineOpen = false;
    session.FileModified = false;
    session.MultiFigure = false;
    session.View.mnuPoserEnabled = !settings.PoserFolder.empty() && settings.PoserFolder != "none";
    ResetList(session.Figures);
    session.Actors.assign(1, Actor{});
    session.Options.PoserFormatP5 = !settings.SaveAsP4;
    session.Options.FileSystemDOS = settings.FileSystemDOS;
}

void StartUp(Session &session, const std::string &commandText, const FigureChooser &choose) {
    PrepareSession(session);
    if (session.RefreshTemplateList)
        session.RefreshTemplateList();
    if (commandText.empty())
        return;
    session.CommandLineOpen = true;
    session.CommandText = commandText;
    const OpenMenu menu = MenuOfCommandText(commandText);
    if (menu == OpenMenu::mnuMultiFigure)
        OpenCharacterFromOutside(session, choose);
    else
        RunOpenMenu(session, menu, choose);
}

} // namespace gelvane
