#include "reader/ActorLoader.h"

namespace gelvane {

void LoadActorSection(Session &, std::string_view) {}
void ApplyDisableProperties(Session &) {}

} // namespace gelvane
