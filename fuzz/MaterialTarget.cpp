// The material parser: the input as one material block, then as the text whose
// customMaterial blocks a body part carries.
#include "FuzzSupport.h"

#include "core/model/Session.h"
#include "core/platform/Failure.h"
#include "core/reader/MaterialParser.h"

using namespace gelvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const Settings settings = fuzz::QuietSettings();
    const std::string_view block(reinterpret_cast<const char *>(data), size);
    fuzz::QuietInteraction ui;
    Session session(settings, ui);
    try {
        ParseMaterial(session, block, 0, 0);
    } catch (const Failure &) {
        // A value line without a line end, a colour that overflows: reported by the caller.
    }
    try {
        ReadCustomMaterials(session, block);
    } catch (const Failure &) {
    }
    return 0;
}
