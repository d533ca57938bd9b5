#include "model/Session.h"

#include "app/Settings.h"

namespace gelvane {

Session::Session(const Settings &settings, Interaction &ui) : m_settings(&settings), m_ui(&ui) {
    Options.FileSystemDOS = settings.FileSystemDOS;
    Options.PoserFormatP5 = !settings.SaveAsP4;
}

} // namespace gelvane
