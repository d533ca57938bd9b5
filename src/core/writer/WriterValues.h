#pragma once
// The conversions from the model's window-side values back to the numbers of
// a Poser file, shared by the material, shader tree and .mtl writers.
#include "core/model/Model.h"

#include <string>
#include <string_view>

namespace gelvane {

// A whole text that is one number (blanks around it allowed; "&H"/"&O" forms).
// Anything else, the empty text included, is the failure "Type mismatch" (13).
double StrictNumber(std::string_view text);

// One colour channel 0..255 as the file's 0..1 number, rounded to six places.
std::string ChannelText(int16_t channel);
// The three channels, separated by blanks.
std::string ColourText(const Rgb &colour);
// A percentage as the file's fraction, rounded to six places.
std::string PercentText(double percent);
// A strength text of the model (strictly converted) as the file's fraction.
std::string PercentOfText(std::string_view percent);

// A map is connected when its flag is set and it isn't "no_map" in any case.
bool IsConnectedMap(bool enabled, std::string_view map);

} // namespace gelvane
