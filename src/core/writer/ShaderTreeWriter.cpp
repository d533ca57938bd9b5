#include "core/writer/ShaderTreeWriter.h"

#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/writer/WriterValues.h"

namespace gelvane {
namespace {

constexpr std::string_view kNoNode = "node NO_NODE";

std::string NodeLink(int16_t counter) {
    return "node \"" + ImageNodeName(counter) + "\"";
}

// A Poser bump file feeds the gradient bump input, every other map the plain one.
bool IsBumFile(std::string_view map) {
    return map.size() >= 4 && EqualsNoCase(map.substr(map.size() - 4), ".bum");
}

} // namespace

std::string ImageNodeName(int16_t counter) {
    return counter < 2 ? std::string("Image_Map") : "Image_Map_" + NumberText(static_cast<int>(counter));
}

void WriteNodeInput(LineWriter &out, std::string_view name, std::string_view valueLine, bool parms,
                    std::string_view nodeLine, std::string_view fileLine) {
    out.Line(4, "nodeInput \"", name, "\"");
    out.Line(5, "{");
    if (!valueLine.empty())
        out.Line(5, valueLine);
    if (parms) {
        out.Line(5, "parmR NO_PARM");
        out.Line(5, "parmG NO_PARM");
        out.Line(5, "parmB NO_PARM");
    }
    out.Line(5, nodeLine);
    out.Line(5, fileLine);
    out.Line(5, "}");
}

void WriteShaderTree(int16_t &ImageNodeCounter, const Session &session, int figureIndex, int materialIndex,
                     LineWriter &out) {
    const Material &m = session.Figures[static_cast<size_t>(figureIndex)].Materials[static_cast<size_t>(materialIndex)];
    ImageNodeCounter = 1;
    const auto input = [&out](std::string_view name, const std::string &value, std::string_view node) {
        WriteNodeInput(out, name, value, true, node);
    };

    out.Line(2, "shaderTree");
    out.Line(3, "{");
    out.Line(3, "node \"poser\" \"PoserSurface\"");
    out.Line(4, "{");

    const bool texture = IsConnectedMap(m.textureMapEnabled, m.textureMap);
    input("Diffuse_Color", m.KdColorEnabled ? "value " + ColourText(m.KdColor) : "value 1 1 1",
          texture ? NodeLink(ImageNodeCounter) : std::string(kNoNode));
    input("Diffuse_Value", "value 1 0 10", kNoNode);
    // The image map drives the highlight colour only when the material doesn't ignore it there.
    const bool specular = texture && m.ksIgnoreTextureEnabled && !m.ksIgnoreTexture;
    input("Highlight_Color", m.KsColorEnabled ? "value " + ColourText(m.KsColor) : "value 0 0 0",
          specular ? NodeLink(ImageNodeCounter) : std::string(kNoNode));
    if (texture)
        ++ImageNodeCounter;
    input("Highlight_Value", "value 1 0 10", kNoNode);
    if (m.NsExponentEnabled)
        input("Roughness", "value " + NumberText(m.NsExponent / 100.0) + " 0 10", kNoNode);
    if (m.KaColorEnabled) {
        input("Ambient_Color", "value " + ColourText(m.KaColor), kNoNode);
        input("Ambient_Value", "value 1 1 10", kNoNode);
    }
    if (m.tMaxEnabled) {
        const bool transparency = IsConnectedMap(m.transparencyMapEnabled, m.transparencyMap);
        input("Transparency_Max", "value " + PercentText(m.tMax) + " 0 1",
              transparency ? NodeLink(ImageNodeCounter) : std::string(kNoNode));
        if (transparency)
            ++ImageNodeCounter;
    }
    if (m.tMinEnabled)
        input("Transparency_Min", "value " + PercentText(m.tMin) + " 0 1", kNoNode);
    if (m.tExpoEnabled) {
        if (session.BatchMode && m.tMin == 100 && m.tMax == 100)
            input("Transparency_Falloff", "value 0 0 100", kNoNode);
        else
            input("Transparency_Falloff", "value " + NumberText(m.tExpo) + " 0 100", kNoNode);
    }
    input("Translucence_Color", "value 0 0 0", kNoNode);
    input("Translucence_Value", "value 0 0 10", kNoNode);
    if (m.ReflectionColorEnabled || m.reflectionMapEnabled) {
        const bool reflection = IsConnectedMap(m.reflectionMapEnabled, m.reflectionMap);
        const std::string link = reflection ? NodeLink(ImageNodeCounter) : std::string(kNoNode);
        if (m.ReflectionColorEnabled)
            input("Reflection_Color", "value " + ColourText(m.ReflectionColor), link);
        else
            WriteNodeInput(out, "Reflection_Color", {}, false, link);
        if (reflection)
            ++ImageNodeCounter;
    }
    if (m.reflectionStrengthEnabled)
        input("Reflection_Value", "value " + PercentOfText(m.reflectionStrength) + " 0 10", kNoNode);
    input("Refraction_Color", "value 1 1 1", kNoNode);
    input("Refraction_Value", "value 1 0 10", kNoNode);

    const bool bumpMap = m.bumpMapEnabled && !EqualsNoCase(m.bumpMap, "no_map");
    const bool gradient = m.bumpMapEnabled && IsBumFile(m.bumpMap);
    if (bumpMap && !gradient) {
        const std::string value =
            m.bumpStrengthEnabled
                ? "value " + NumberText(RoundPlaces(StrictNumber(m.bumpStrength) / 1000.0, 6)) + " 0 10"
                : std::string();
        input("Bump", value, NodeLink(ImageNodeCounter));
        ++ImageNodeCounter;
    } else {
        input("Bump", "value 1 0 10", kNoNode);
    }
    input("Displacement", "value 1 0 10", kNoNode);
    input("AlternateDiffuse", "value 1 1 1", kNoNode);
    input("AlternateSpecular", "value 1 1 1", kNoNode);
    // Fixed: the two reflection multipliers reach only the classic lines.
    input("ReflectionLiteMult", "value 0 0 1", kNoNode);
    input("ReflectionKdMult", "value 0 0 1", kNoNode);
    if (gradient) {
        const std::string value =
            m.bumpStrengthEnabled
                ? "value " + NumberText(RoundPlaces(StrictNumber(m.bumpStrength) / 100.0, 6)) + " -1 1"
                : std::string();
        input("Gradient_Bump", value, NodeLink(ImageNodeCounter));
        ++ImageNodeCounter;
    } else {
        input("Gradient_Bump", "value 1 -1 1", kNoNode);
    }
    out.Line(4, "}");
}

} // namespace gelvane
