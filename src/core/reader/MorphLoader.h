#pragma once
// Morph and pose channels of figure-like files.
#include "core/model/Session.h"

#include <string>
#include <string_view>

namespace gelvane {

// What the channel load says when the file holds no channels block at all.
inline constexpr const char *kNoMorphData = "There is no morph or pose data in the file";
// What it says on any other failure (the box's title is the failure's description).
inline constexpr const char *kNoMorphDataFound =
    "There is no morph or pose data in the opened\r\nfile or the data could not be found";
// Texts longer than this lose their deltas piece by piece, with progress and Cancel.
inline constexpr size_t kPiecewiseDeltasLimit = 5'000'000;

// Loads the channels of a figure-like file into Actors. `singleActor` reads only
// the first "actor BODY" block and puts it first; `sameFile` false asks for the
// file first (an import, by PoserFileKind); `suppliedText`, when not empty, is
// read instead of the file; `keepActors` appends to Actors. A cancel in the
// progress window leaves the materials and ends quietly; failures are reported
// here and never thrown.
void LoadMorphPoseData(Session &session, bool singleActor = false, bool sameFile = true,
                       std::string_view suppliedText = {}, bool keepActors = false);

// The channel part that LoadMorphPoseData hands to the actor loader, from a
// line-feed-only text whose deltas are gone and whose "figure" lines are
// normalised, for a file named `fileName`. Throws Failure when the part's
// bounds don't fit (its end before its start).
std::string_view ChannelPart(std::string &text, std::string_view fileName, bool singleActor);

// The text of the first "actor BODY" block of `source`: from it up to the next
// "actor ". Throws Failure 62 when the source ends first.
std::string_view BodyActorText(std::string_view source);

} // namespace gelvane
