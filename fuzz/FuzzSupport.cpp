#include "FuzzSupport.h"

#include "core/platform/Paths.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace gelvane::fuzz {

const std::string &FuzzHome() {
    // Kept to the end of the process: the exit handler below still needs it.
    static const std::string &home = *new std::string([] {
        const char *tmp = std::getenv("TMPDIR");
        std::string folder = std::string(tmp && *tmp ? tmp : "/tmp") + "/gelvane-fuzz-" + std::to_string(getpid());
        CreateFolder(folder);
        setenv("GELVANE_HOME", folder.c_str(), 1);
        return folder;
    }());
    static const bool removed = std::atexit([] {
        std::error_code ec;
        std::filesystem::remove_all(home, ec);
    }) == 0;
    (void)removed;
    return home;
}

std::string WriteInput(std::string_view relative, const uint8_t *data, size_t size) {
    const std::string path = FuzzHome() + "/" + std::string(relative);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
    return path;
}

Settings QuietSettings() {
    Settings settings;
    settings.AutoCorrect = false;
    settings.MainThumb = false;
    settings.MapThumb = false;
    settings.CdlgThumb = false;
    settings.DisableProperties = false;
    return settings;
}

} // namespace gelvane::fuzz
