#include "core/writer/MaterialBlockWriter.h"

#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/writer/ShaderTreeWriter.h"
#include "core/writer/WriterValues.h"

namespace gelvane {
namespace {

const char *FlagText(bool value) {
    return value ? "1" : "0";
}

void WriteMapLine(LineWriter &out, std::string_view keyword, const std::string &map) {
    if (EqualsNoCase(map, "no_map")) {
        out.Line(2, keyword, map);
        return;
    }
    // A quoted map brings the line "0 0" behind it.
    out.Line(2, keyword, "\"", map, "\"");
    out.Line(4, "0 0");
}

void WriteMaterialBlock(const Session &session, int figureIndex, int materialIndex, LineWriter &out) {
    const Material &m = session.Figures[static_cast<size_t>(figureIndex)].Materials[static_cast<size_t>(materialIndex)];
    out.Line(1, "material ", m.Name);
    out.Line(2, "{");
    if (m.KdColorEnabled)
        out.Line(2, "KdColor ", ColourText(m.KdColor), " 1");
    if (m.KaColorEnabled)
        out.Line(2, "KaColor ", ColourText(m.KaColor), " 1");
    if (m.KsColorEnabled)
        out.Line(2, "KsColor ", ColourText(m.KsColor), " 1");
    if (m.TextureColorEnabled)
        out.Line(2, "TextureColor 1 1 1 ", PercentOfText(m.TextureColor));
    if (m.NsExponentEnabled)
        out.Line(2, "NsExponent ", NumberText(101 - m.NsExponent));
    if (m.tMinEnabled)
        out.Line(2, "tMin ", PercentText(m.tMin));
    if (m.tMaxEnabled)
        out.Line(2, "tMax ", PercentText(m.tMax));
    if (m.tExpoEnabled) {
        // A batch run writes fully opaque materials with no falloff at all.
        if (session.BatchMode && m.tMin == 100 && m.tMax == 100)
            out.Line(2, "tExpo 0");
        else
            out.Line(2, "tExpo ", NumberText(m.tExpo));
    }
    if (m.bumpStrengthEnabled)
        out.Line(2, "bumpStrength ", PercentOfText(m.bumpStrength));
    if (m.ksIgnoreTextureEnabled)
        out.Line(2, "ksIgnoreTexture ", FlagText(m.ksIgnoreTexture));
    if (m.reflectThruLightsEnabled)
        out.Line(2, "reflectThruLights ", FlagText(m.reflectThruLights));
    if (m.reflectThruKdEnabled)
        out.Line(2, "reflectThruKd ", FlagText(m.reflectThruKd));
    if (m.textureMapEnabled)
        WriteMapLine(out, "textureMap ", m.textureMap);
    if (m.bumpMapEnabled)
        WriteMapLine(out, "bumpMap ", m.bumpMap);
    if (m.reflectionMapEnabled)
        WriteMapLine(out, "reflectionMap ", m.reflectionMap);
    if (m.transparencyMapEnabled)
        WriteMapLine(out, "transparencyMap ", m.transparencyMap);
    if (m.ReflectionColorEnabled)
        out.Line(2, "ReflectionColor ", ColourText(m.ReflectionColor), " 1");
    if (m.reflectionStrengthEnabled)
        out.Line(2, "reflectionStrength ", PercentOfText(m.reflectionStrength));
    if (session.Options.PoserFormatP5) {
        int16_t imageNodeCounter = 1;
        WriteShaderTree(imageNodeCounter, session, figureIndex, materialIndex, out);
        WriteImageMapNodes(imageNodeCounter, session, figureIndex, materialIndex, out);
        out.Line(3, "}");
    }
    out.Line(2, "}");
}

} // namespace

void WriteMaterialBlocks(const Session &session, int figureIndex, LineWriter &out) {
    const Figure &figure = session.Figures[static_cast<size_t>(figureIndex)];
    for (size_t i = 0; i < figure.Materials.size(); ++i)
        if (!figure.Materials[i].Omit)
            WriteMaterialBlock(session, figureIndex, static_cast<int>(i), out);
}

} // namespace gelvane
