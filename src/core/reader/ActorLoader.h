#pragma once
// Reading the actors, props, lights and cameras of a channel section with their channels.
#include "core/model/Session.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace gelvane {

// Reads the actors of `section` (line-feed-only text) into session.Actors, fills the
// actor list, the thigh length and the customMaterial owners. `singleActor` reads
// one actor and puts it at the head of Actors; `keepActors` appends to what is
// loaded; with both false Actors starts afresh. `startTime` (seconds of
// session clock) is when the whole load began; 0 or less means now.
// Returns false when the user cancelled: Actors is then empty, materials stay.
// Failures of the text functions (a file that ends inside a block) go to the caller.
bool LoadActorSection(Session &session, std::string_view section, bool singleActor = false, bool keepActors = false,
                      int32_t startTime = 0);

// Disables every actor and channel property other than dial values when the setting asks for it.
void ApplyDisableProperties(Session &session);

// The nearest of "actor ", "prop ", "light ", "camera " in `text`: the word, a line
// feed and the number of characters skipped; "none" when there is none. With
// `skipEmpty`, openings whose block is an empty "{ }" are passed over.
std::string NextActorKeyword(std::string_view text, bool skipEmpty);

// The session clock in whole seconds (session.SecondsClock when set).
int32_t SessionSeconds(const Session &session);

} // namespace gelvane
