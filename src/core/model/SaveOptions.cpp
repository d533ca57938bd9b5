#include "core/model/SaveOptions.h"

#include "core/model/Numbers.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Failure.h"

namespace gelvane {

void VersionText_Change(Session &session, std::string_view text) {
    session.Options.VersionText = std::string(text);
    try {
        session.OutputVersion = NumberText(NumberValue(text));
    } catch (const Failure &) {
        // A number beyond any float: the previous version stays.
    }
    session.FileModified = true;
}

void optPoserFormat_Click(Session &session, int Index) {
    const Settings &settings = session.settings();
    session.Options.PoserFormatP5 = Index != 0;
    if (Index != 0 && settings.SetP5Version)
        VersionText_Change(session, settings.P5VersionNumber);
    else if (Index == 0 && settings.SetPoserVersion)
        VersionText_Change(session, settings.PVersionNumber);
}

} // namespace gelvane
