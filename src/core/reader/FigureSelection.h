#pragma once
// Listing the figures of a character file that holds several, and cutting out
// the text that belongs to one of them. The figure window shows FigureNames or
// GeometryNames; the open (core/app) confirms the chosen row.
#include "core/model/Session.h"

#include <cstdint>
#include <string>
#include <vector>

namespace gelvane {

struct FigureList {
    std::string FileText;                   // the whole file, line-feed-only, deltas removed
    std::vector<std::string> FigureNames;   // each figure's "name" line, in file order
    std::vector<std::string> GeometryNames; // each figure's geometry file name
    std::vector<int32_t> FigurePositions;   // 1-based start of each figure's "figureResFile" line
};

// The message of every failure while figures are listed or cut.
inline constexpr const char *kNotValidCharacter = "Not a valid Character file";

// Half the number of "figureResFile " in the text, rounded half to even:
// each figure names its geometry once in the head and once in its own part.
int CountFigures(std::string_view fileText);

// Fills names, geometry names and positions from list.FileText. Failures
// (a figure block without a line end behind its name) throw Failure.
void ScanFigures(FigureList &list);

// Reads the file named in session.DialogFileName into a list: progress
// "Reading file...", deltas removed piecewise, figures scanned. On failure
// shows "Not a valid Character file", closes the progress and returns false.
bool LoadFigureSelection(Session &session, FigureList &list);

// The text of figure `index` alone: the file's head, the figure's head line(s)
// and its own part; a figure that isn't the last gets a closing
// "setGeomHandlerOffset" line so that the tail scan finds its end. Throws
// Failure (9 for an index without a figure, 5 for a broken layout).
std::string CutFigureText(const FigureList &list, int index);

} // namespace gelvane
