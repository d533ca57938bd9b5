#include "core/model/Numbers.h"
#include "core/writer/ShaderTreeWriter.h"
#include "core/writer/WriterValues.h"

namespace gelvane {
namespace {

void WriteImageMapNode(LineWriter &out, int16_t counter, const std::string &map, const std::string &strengthLine) {
    constexpr std::string_view kNoNode = "node NO_NODE";
    out.Line(3, "node \"image_map\" \"", ImageNodeName(counter), "\"");
    out.Line(4, "{");
    WriteNodeInput(out, "Image_Source", "value 0 0 0", true, kNoNode, "file \"" + map + "\"");
    WriteNodeInput(out, "U_Scale", "value 1 -1 1", true, kNoNode);
    WriteNodeInput(out, "V_Scale", "value 1 -1 1", true, kNoNode);
    WriteNodeInput(out, "U_Offset", "value 0 0 1", true, kNoNode);
    WriteNodeInput(out, "V_Offset", "value 0 0 1", true, kNoNode);
    WriteNodeInput(out, "Texture_Coords", "value 1 0 0", true, kNoNode);
    WriteNodeInput(out, "Image_Mapped", "value 4 0 0", true, kNoNode);
    WriteNodeInput(out, "Background", "value 1 1 1", true, kNoNode);
    WriteNodeInput(out, "Global_Coordinates", "value 0 0 1", true, kNoNode);
    WriteNodeInput(out, "Mirror_U", "value 0 0 0", true, kNoNode);
    WriteNodeInput(out, "Mirror_V", "value 0 0 0", true, kNoNode);
    if (!strengthLine.empty())
        WriteNodeInput(out, "Texture_Strength", strengthLine, true, kNoNode);
    out.Line(4, "}");
}

} // namespace

void WriteImageMapNodes(int16_t &ImageNodeCounter, const Session &session, int figureIndex, int materialIndex,
                        LineWriter &out) {
    const Material &m = session.Figures[static_cast<size_t>(figureIndex)].Materials[static_cast<size_t>(materialIndex)];
    ImageNodeCounter = 1;
    const std::string fullStrength = "value 1 0 1";
    if (IsConnectedMap(m.textureMapEnabled, m.textureMap)) {
        const std::string strength =
            m.TextureColorEnabled ? "value " + PercentOfText(m.TextureColor) + " 0 1" : std::string();
        WriteImageMapNode(out, ImageNodeCounter++, m.textureMap, strength);
    }
    if (IsConnectedMap(m.transparencyMapEnabled, m.transparencyMap))
        WriteImageMapNode(out, ImageNodeCounter++, m.transparencyMap, fullStrength);
    if (IsConnectedMap(m.reflectionMapEnabled, m.reflectionMap))
        WriteImageMapNode(out, ImageNodeCounter++, m.reflectionMap, fullStrength);
    if (IsConnectedMap(m.bumpMapEnabled, m.bumpMap))
        WriteImageMapNode(out, ImageNodeCounter++, m.bumpMap, fullStrength);
}

} // namespace gelvane
