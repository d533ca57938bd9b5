#pragma once
// Removing the bulky morph target numbers ("deltas" blocks) from a figure-like
// file's text, and the clean-up of its "figure" lines. Every function works in
// place and in one linear pass; the results are those of the repeated
// search-and-delete that they stand for.
#include "core/model/Session.h"

#include <cstdint>
#include <string>

namespace gelvane {

// The piecewise form: the text is cut in front of each "deltas" (the head is a
// piece of its own, so no cut joins two pieces' text); each piece is made
// line-feed-only and loses its deltas block (from "deltas" + line feed to the
// next "}" of the same piece, or the piece's end when it has none). Between
// pieces the progress window's events run; a cancel sets `text` to "cancel"
// and returns false. `startTime` (SessionSeconds) feeds the elapsed line.
bool RemoveDeltas(Session &session, std::string &text, int32_t startTime);

// ReadFileBytes and RemoveDeltas in one: the file is read in blocks and its deltas blocks
// are dropped on the way, so that their numbers never stand in memory all at once. The
// text, the progress calls, the yields and a cancel are those of RemoveDeltas on the
// whole file; a missing file is the failure 53. False when the user cancelled. `block`
// is how much is read at a time.
bool ReadFileWithoutDeltas(Session &session, std::string_view path, std::string &text, int32_t startTime,
                           size_t block = size_t{1} << 20);

// The same cut without progress, for callers that need no window.
void RemoveDeltasPieces(std::string &text);

// The one-run form over the whole text: carriage returns become line feeds,
// "deltas " + line feed becomes "deltas" + line feed, then, while the text holds
// "deltas" + line feed, the first such block up to and with the next "}" goes
// (with no "}" behind it, the rest of the text goes).
void RemoveDeltasOneRun(std::string &text);

// Every "figure " + line feed and every " figure" + line feed becomes
// "figure" + line feed until none is left.
void NormaliseFigureLines(std::string &text);

// "Elapsed time: M min, S sec" since `startTime` on the session's clock.
std::string ElapsedText(const Session &session, int32_t startTime);

} // namespace gelvane
