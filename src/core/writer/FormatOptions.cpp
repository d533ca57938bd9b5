#include "core/writer/FormatOptions.h"

#include "core/app/Settings.h"
#include "core/model/Numbers.h"

namespace gelvane {

void SetVersionText(Session &session, std::string_view text) {
    session.Options.VersionText = std::string(text);
    session.OutputVersion = NumberText(NumberValue(text));
    session.FileModified = true;
}

void optPoserFormat_Click(Session &session, int Index) {
    const Settings &settings = session.settings();
    session.Options.PoserFormatP5 = Index != 0;
    if (Index != 0 && settings.SetP5Version)
        SetVersionText(session, settings.P5VersionNumber);
    else if (Index == 0 && settings.SetPoserVersion)
        SetVersionText(session, settings.PVersionNumber);
}

} // namespace gelvane
