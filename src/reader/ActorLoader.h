#pragma once
// Reading the actors, props, lights and cameras of a channel section with their channels.
#include "model/Session.h"

#include <string_view>

namespace gelvane {

// Replaces session.Actors with the actors of `section` (line-feed-only text).
void LoadActorSection(Session &session, std::string_view section);
// Disables every actor and channel property other than dial values when the setting asks for it.
void ApplyDisableProperties(Session &session);

} // namespace gelvane
