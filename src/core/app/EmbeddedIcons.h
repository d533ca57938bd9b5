#pragma once
// The program's SVG icons (data/icons), built in so that associating can install
// them for the user wherever the program runs from.
#include <span>

namespace gelvane {

struct EmbeddedIcon {
    const char *Name; // the icon name: the file name without ".svg"
    const char *Svg;
};

std::span<const EmbeddedIcon> EmbeddedIcons();

} // namespace gelvane
