// The map cache lists: the first line of the input is a map reference, the rest the
// cache list of its kind, which the map finder searches for the reference's file name.
#include "FuzzSupport.h"

#include "core/maps/MapFinder.h"
#include "core/model/Session.h"
#include "core/platform/Paths.h"

using namespace gelvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const Settings settings = fuzz::QuietSettings();
    const std::string_view input(reinterpret_cast<const char *>(data), size);
    const size_t lineEnd = std::min(input.find('\n'), input.size());
    const std::string mapPath(input.substr(0, std::min<size_t>(lineEnd, 200)));
    const std::string_view list = input.substr(std::min(lineEnd + 1, input.size()));
    fuzz::FuzzHome();
    const std::string cache = MapCacheFolder();
    const auto *bytes = reinterpret_cast<const uint8_t *>(list.data());
    for (const char *file : {"Cache/jpgs.txt", "Cache/tifs.txt", "Cache/bmps.txt", "Cache/bums.txt", "Cache/others.txt"})
        fuzz::WriteInput(file, bytes, list.size());
    fuzz::QuietInteraction ui;
    Session session(settings, ui);
    (void)FindFile(session, mapPath);
    return 0;
}
