#pragma once
// The Poser 5 shader tree of one material: the root node with its inputs, and
// behind it one image map node for each connected map.
#include "core/model/Session.h"
#include "core/writer/LineWriter.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace gelvane {

// The head of the tree and the root node "PoserSurface". Sets the counter to 1
// first and advances it past every image map node it links to.
void WriteShaderTree(int16_t &ImageNodeCounter, const Session &session, int figureIndex, int materialIndex,
                     LineWriter &out);

// The image map nodes, numbered on their own from 1 (the counter is reset first).
// The caller closes the tree behind them.
void WriteImageMapNodes(int16_t &ImageNodeCounter, const Session &session, int figureIndex, int materialIndex,
                        LineWriter &out);

// "Image_Map" for the first node, "Image_Map_<n>" for the others.
std::string ImageNodeName(int16_t counter);

// One node input: its name line, braces, the optional value line, the optional
// parm lines, the node line and the file line.
void WriteNodeInput(LineWriter &out, std::string_view name, std::string_view valueLine, bool parms,
                    std::string_view nodeLine, std::string_view fileLine = "file \"\"");

} // namespace gelvane
