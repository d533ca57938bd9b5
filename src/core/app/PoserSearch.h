#pragma once
// The first start's question about Poser's folder. No registry names the folder on this
// system, so the places where Linux users keep an installation (Wine prefixes) or a
// content library (Documents) are searched for a "Runtime" folder instead.
#include <functional>
#include <string>
#include <vector>

namespace gelvane {

class Interaction;

struct PoserSearchPlaces {
    std::vector<std::string> WinePrefixes; // folders that hold "drive_c"
    std::string Documents;                 // the user's documents folder; empty for none
};

// $WINEPREFIX, ~/.wine and ~/Documents.
PoserSearchPlaces DefaultPoserSearchPlaces();

// The folders that hold a "Runtime" folder (any case), at most three levels below each
// "drive_c/Program Files*" and below Documents: installations with a Poser.exe first, then
// in the order of the places and of their names. Hidden folders and links aren't followed,
// and the walk stops after a few thousand folders, so that it stays well under a second.
std::vector<std::string> FindPoserFolders(const PoserSearchPlaces &places);

// The folders this machine offers as Poser's, best first.
using PoserFinder = std::function<std::vector<std::string>()>;

// Offers each of `found` with "Is ... your Poser directory?"; the first Yes is the answer.
// When all are declined, a notice says where to choose later. When nothing was found and
// this is the first start, the folder chooser asks (a chosen "Runtime" folder gives its
// parent). Returns the folder with its on-disk spelling, or empty for none.
std::string AskPoserFolder(Interaction &ui, const std::vector<std::string> &found, bool firstStart);

} // namespace gelvane
