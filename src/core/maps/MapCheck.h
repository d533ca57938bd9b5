#pragma once
// Checking and repairing the map references of the open file.
#include "core/model/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

// The four map references of a material, in the order of their rows.
enum class MapField { Texture = 0, Bump = 1, Reflection = 2, Transparency = 3 };
std::string &MapFieldText(Material &material, MapField field);

// The first CheckedMaps element for this FullMapPath (compared in lower case), or -1.
int16_t IndexOfCheckedMap(const Session &session, std::string_view fullPath);
// True when the folder was already scanned in this run of checks (compared in lower case).
bool IsFolderScanned(const Session &session, std::string_view folder);

// Rewrites one reference: a working one to the form "Use full map paths" asks for, a
// missing one to the file found for it (scanning Poser's textures or a folder the user
// names). False when the user cancelled the folder question or Poser's folder is wrong:
// the whole command then ends.
bool FixMapReference(Session &session, Material &material, MapField field);

// A Fix button: FixMapReference on `field` of the given materials of Figures[figureIndex],
// in ascending order, until one ends the command. Returns how many were treated.
int FixMaps(Session &session, int figureIndex, const std::vector<int> &materials, MapField field);

// Runs after every open when AutoCorrect is on: the four Fix buttons for all materials of
// each figure, with one scan per folder and one answer per missing map.
void CheckMapReferences(Session &session);

} // namespace gelvane
