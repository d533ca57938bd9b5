// Opening a file of one kind (GELVANE_FUZZ_EXT) as the Open command does, channels
// included; a character goes through figure selection and takes its first figure.
#include "FuzzSupport.h"

#include "core/app/ReportCommands.h"
#include "core/model/Session.h"

using namespace gelvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const Settings settings = fuzz::QuietSettings();
    const std::string path = fuzz::WriteInput("input." GELVANE_FUZZ_EXT, data, size);
    fuzz::QuietInteraction ui;
    Session session(settings, ui);
    session.LoadChannelsChoice = 1; // load the channels without asking
    OpenForCommand(session, path, FigureByName(""));
    return 0;
}
