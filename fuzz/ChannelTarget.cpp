// The channel loader alone, on a channel section with line feeds only (as the readers
// hand it over), reading all actors and, with the lowest bit of the first byte, one.
#include "FuzzSupport.h"

#include "core/model/Session.h"
#include "core/platform/Failure.h"
#include "core/reader/ActorLoader.h"

using namespace gelvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const Settings settings = fuzz::QuietSettings();
    std::string section(reinterpret_cast<const char *>(data), size);
    for (char &c : section)
        if (c == '\r')
            c = '\n';
    fuzz::QuietInteraction ui;
    Session session(settings, ui);
    try {
        LoadActorSection(session, section, size > 0 && (data[0] & 1));
    } catch (const Failure &) {
        // A section that ends inside a block: the caller's failure handler reports it.
    }
    return 0;
}
