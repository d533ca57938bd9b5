// The settings and profile reader: the input as Settings.ini, loaded (which normalises
// and rewrites it), saved, loaded again; and a profile read of a few entries.
#include "FuzzSupport.h"

#include "core/app/SettingsFile.h"
#include "core/platform/ProfileFile.h"

using namespace gelvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::FuzzHome();
    const std::string path = fuzz::WriteInput("Settings.ini", data, size);
    fuzz::QuietInteraction ui;
    const Settings loaded = LoadSettings(ui);
    SaveSettings(loaded);
    (void)LoadSettings(ui);
    fuzz::WriteInput("Settings.ini", data, size);
    for (const char *key : {"PoserFolder", "DefaultTemplate", "x"})
        (void)ReadProfileString("Settings", key, path, "", 16);
    return 0;
}
