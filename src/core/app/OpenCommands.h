#pragma once
// The Open commands that a menu entry, a dropped file or the command line runs end to
// end: open, ask for the channels and load them, then count and check the maps.
#include "core/reader/FigureSelection.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace gelvane {

class Session;

// The menu commands that open a file.
enum class OpenMenu {
    None,
    mnuOpenPZ2,
    mnuOpenCM2,
    mnuOpenFC2,
    mnuOpenHD2,
    mnuOpenLT2,
    mnuOpenCR2,
    mnuOpenCR2Props,
    mnuMultiFigure,
    mnuOpenPP2,
    mnuOpenHR2,
};

// The kind an Open command sets (0 CR2 ... 7 LT2).
int KindOfMenu(OpenMenu menu);
// The command for a command text, by its last three letters (see FileKindOfCommand). A
// character from outside goes through figure selection, so "cr2" gives mnuMultiFigure.
OpenMenu MenuOfCommandText(std::string_view commandText);
// A dropped file: the last four characters, a leading "." removed, lowered.
OpenMenu MenuOfDroppedFile(std::string_view path);

// The question asked after opening a character, prop or hair file.
inline constexpr const char *kLoadChannelsQuestion =
    "Do you want to load morph and pose data also?\r\nIt may take a long time with a large file.";
// Asks the channel question (Yes/No, no icon); true on Yes.
bool AskLoadChannels(Session &session);

// Shows the choice of a figure to the user and returns the chosen row, or nothing when
// the window was closed without a choice. Only called with two figures or more.
using FigureChooser = std::function<std::optional<int>(Session &, const FigureList &)>;

// The choice is made (the figure window's OK): cuts the figure, opens its materials
// unless SkipMaterials, loads its channels on request, clears the three flags and the
// list. Failures of the cut throw Failure; the open and the channel load report their own.
void ConfirmFigure(Session &session, FigureList &list, int index);
// The whole selection: load, choose (or take the only figure), confirm. Every failure of
// the listing or the cut shows "Not a valid Character file".
void RunFigureSelection(Session &session, const FigureChooser &choose);

// The Open menu command of a kind (0 CR2 ... 7 LT2); `withProps` is the "Character File
// with Props" entry. Opens, asks the channel question where the kind has one, then
// computes the statistics and checks map references. A silent command writes its pose.
void OpenCommand(Session &session, int kind, bool withProps = false);
// "Multi-Figure Character File": asks for a .cr2 (unless a path waits from outside),
// lets the user choose a figure through `choose`, opens it.
void MultiFigureCommand(Session &session, const FigureChooser &choose);
// A character file given from outside (command line or the shell): "-s " and a path
// converts silently; an existing path goes through figure selection, which opens
// directly when the file holds fewer than two figures; a missing file does nothing.
// Uses session.CommandText.
void OpenCharacterFromOutside(Session &session, const FigureChooser &choose);

// Runs an Open menu command.
void RunOpenMenu(Session &session, OpenMenu menu, const FigureChooser &choose);
// Dropping a file on the window: the command of its kind runs without a dialog. A file
// of no known kind changes nothing.
void DropFile(Session &session, const std::string &path, const FigureChooser &choose);

} // namespace gelvane
