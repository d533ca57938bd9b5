#pragma once
// Morph and pose channels of figure-like files, and the Open menu commands.
#include "core/model/Session.h"
#include "core/platform/Interaction.h"
#include "core/reader/FigureSelection.h"

#include <string>
#include <string_view>

namespace gelvane {

// The question asked after opening a character, prop or hair file.
inline constexpr const char *kLoadChannelsQuestion =
    "Do you want to load morph and pose data also?\r\nIt may take a long time with a large file.";
// What the channel load says when the file holds no channels block at all.
inline constexpr const char *kNoMorphData = "There is no morph or pose data in the file";
// What it says on any other failure (the box's title is the failure's description).
inline constexpr const char *kNoMorphDataFound =
    "There is no morph or pose data in the opened\r\nfile or the data could not be found";
// Texts longer than this lose their deltas piece by piece, with progress and Cancel.
inline constexpr size_t kPiecewiseDeltasLimit = 5'000'000;

// Asks the channel question (Yes/No, no icon); true on Yes.
bool AskLoadChannels(Session &session);

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

// The Open menu command of a kind (0 CR2 ... 7 LT2); `withProps` is the
// "Character File with Props" entry. Opens, asks the channel question where the
// kind has one, then computes the statistics and checks map references.
void OpenCommand(Session &session, int kind, bool withProps = false);

// "Multi-Figure Character File": asks for a .cr2 (unless a path waits from
// outside), lets the user choose a figure through `choose`, opens it.
void MultiFigureCommand(Session &session, const FigureChooser &choose);

// A character file given from outside (command line or the shell): "-s " and a
// path converts silently; an existing path goes through figure selection, which
// opens directly when the file holds fewer than two figures; a missing file
// does nothing. Uses session.CommandText.
void OpenCharacterFromOutside(Session &session, const FigureChooser &choose);

} // namespace gelvane
