#include "reader/CustomMaterials.h"

#include "app/Settings.h"
#include "maps/MapPaths.h"
#include "model/Failure.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "platform/Paths.h"

#include <string>

namespace gelvane {
namespace {

// What stands between the keyword's end and the next line feed; a keyword on the
// block's last line without a line end makes the length negative and fails.
std::string_view ValueLine(std::string_view block, size_t keywordAt, std::string_view keyword) {
    const size_t from = keywordAt + keyword.size();
    const size_t lf = InStr(block, "\n", from);
    return Mid(block, static_cast<long long>(from), static_cast<long long>(lf) - static_cast<long long>(from));
}

Material &MaterialAt(Session &session, int figureIndex, int materialIndex) {
    if (figureIndex < 0 || static_cast<size_t>(figureIndex) >= session.Figures.size())
        Fail(ErrSubscript);
    auto &materials = session.Figures[static_cast<size_t>(figureIndex)].Materials;
    if (materialIndex < 0 || static_cast<size_t>(materialIndex) >= materials.size())
        Fail(ErrSubscript);
    return materials[static_cast<size_t>(materialIndex)];
}

} // namespace

void ReadColor(Session &session, std::string_view block, std::string_view keyword, int figureIndex, int materialIndex) {
    const size_t at = InStr(block, keyword);
    if (at == 0) {
        session.KeywordMissing = true;
        return;
    }
    session.KeywordMissing = false;
    // The line end doesn't stop the blank search: a line of three numbers reads its
    // third from a text that runs into the next line, which still gives the number.
    long long pos = static_cast<long long>(at + keyword.size());
    double component[3];
    for (double &c : component) {
        const long long blank = static_cast<long long>(InStr(block, " ", static_cast<size_t>(pos)));
        c = NumberValue(Mid(block, pos, blank - pos));
        pos = blank + 1;
    }
    Rgb rgb{ToInt16(component[0] * 255), ToInt16(component[1] * 255), ToInt16(component[2] * 255)};
    Material &m = MaterialAt(session, figureIndex, materialIndex);
    if (keyword == "KdColor ")
        m.KdColor = rgb;
    else if (keyword == "KaColor ")
        m.KaColor = rgb;
    else if (keyword == "KsColor ")
        m.KsColor = rgb;
    else if (keyword == "ReflectionColor ")
        m.ReflectionColor = rgb;
}

int16_t ReadNumber(Session &session, std::string_view block, std::string_view keyword) {
    const size_t at = InStr(block, keyword);
    if (at == 0) {
        session.KeywordMissing = true;
        return 0;
    }
    session.KeywordMissing = false;
    const std::string value = StripControls(ValueLine(block, at, keyword));
    double result;
    if (keyword == "TextureColor ") {
        const size_t blank = InStrRev(value, " ");
        result = RoundHalfEven(NumberValue(Mid(value, static_cast<long long>(blank) + 1)) * 100);
    } else if (keyword == "NsExponent ") {
        result = RoundHalfEven(101 - NumberValue(value));
    } else if (keyword == "ksIgnoreTexture " || keyword == "reflectThruLights " || keyword == "reflectThruKd ") {
        result = NumberValue(value);
    } else {
        result = RoundHalfEven(NumberValue(value) * 100);
    }
    // The sanity limit of the program: "bumpStrength 12" is taken for a mistake.
    if (result < -1000 || result > 1000)
        result = 0;
    return ToInt16(result);
}

std::string ReadText(Session &session, std::string_view block, std::string_view keyword) {
    const size_t at = InStr(block, keyword);
    if (at == 0) {
        session.KeywordMissing = true;
        return {};
    }
    session.KeywordMissing = false;
    return StripControls(Replace(ValueLine(block, at, keyword), "\"", ""));
}

void ParseMaterial(Session &session, std::string_view block, int figureIndex, int materialIndex) {
    {
        Material &m = MaterialAt(session, figureIndex, materialIndex);
        m.ksIgnoreTexture = false;
        m.reflectThruLights = false;
        m.reflectThruKd = false;
    }
    auto found = [&] { return !session.KeywordMissing; };
    auto material = [&]() -> Material & { return MaterialAt(session, figureIndex, materialIndex); };

    ReadColor(session, block, "KdColor ", figureIndex, materialIndex);
    if (found())
        material().KdColorEnabled = true;
    ReadColor(session, block, "KaColor ", figureIndex, materialIndex);
    if (found())
        material().KaColorEnabled = true;
    ReadColor(session, block, "KsColor ", figureIndex, materialIndex);
    if (found())
        material().KsColorEnabled = true;
    ReadColor(session, block, "ReflectionColor ", figureIndex, materialIndex);
    if (found())
        material().ReflectionColorEnabled = true;

    material().TextureColor = std::to_string(ReadNumber(session, block, "TextureColor "));
    if (found())
        material().TextureColorEnabled = true;
    material().bumpStrength = std::to_string(ReadNumber(session, block, "bumpStrength "));
    if (found())
        material().bumpStrengthEnabled = true;
    material().reflectionStrength = std::to_string(ReadNumber(session, block, "reflectionStrength "));
    if (found())
        material().reflectionStrengthEnabled = true;

    // A result of 0 stands for "no highlight size": "NsExponent 101" counts as missing.
    const int16_t ns = ReadNumber(session, block, "NsExponent ");
    material().NsExponent = ns;
    if (ns != 0)
        material().NsExponentEnabled = true;
    else
        material().NsExponent = 1;

    material().tMin = ReadNumber(session, block, "tMin ");
    if (found())
        material().tMinEnabled = true;
    material().tMax = ReadNumber(session, block, "tMax ");
    if (found())
        material().tMaxEnabled = true;
    material().tExpo = static_cast<float>(ReadNumber(session, block, "tExpo ")) / 100.0f;
    if (found())
        material().tExpoEnabled = true;

    material().ksIgnoreTexture = ReadNumber(session, block, "ksIgnoreTexture ") == 1;
    if (found())
        material().ksIgnoreTextureEnabled = true;
    material().reflectThruLights = ReadNumber(session, block, "reflectThruLights ") == 1;
    if (found())
        material().reflectThruLightsEnabled = true;
    material().reflectThruKd = ReadNumber(session, block, "reflectThruKd ") == 1;
    if (found())
        material().reflectThruKdEnabled = true;

    struct MapField {
        const char *keyword;
        std::string Material::*field;
        bool Material::*enabled;
    };
    static const MapField maps[] = {
        {"textureMap ", &Material::textureMap, &Material::textureMapEnabled},
        {"bumpMap ", &Material::bumpMap, &Material::bumpMapEnabled},
        {"reflectionMap ", &Material::reflectionMap, &Material::reflectionMapEnabled},
        {"transparencyMap ", &Material::transparencyMap, &Material::transparencyMapEnabled},
    };
    for (const MapField &map : maps) {
        std::string value = ReadText(session, block, map.keyword);
        const bool missing = session.KeywordMissing;
        const std::string full = FullMapPath(session.settings().PoserFolder, value);
        if (session.settings().MainThumb && session.LoadThumbNail && FileExists(full))
            session.LoadThumbNail(full);
        Material &m = material();
        if (missing) {
            m.*map.field = "NO_MAP";
        } else {
            m.*map.field = std::move(value);
            m.*map.enabled = true;
        }
    }
    session.KeywordMissing = false;
}

int16_t CustomMaterialCount(std::string_view from) {
    std::string s = Replace(Left(from, 20), "\r\n", "\n");
    s = Replace(s, "\t", " ");
    s = Replace(s, "  ", " ");
    const long long blank = static_cast<long long>(InStr(s, " "));
    const long long lf = static_cast<long long>(InStr(s, "\n", static_cast<size_t>(blank) + 1));
    return ToInt16(NumberValue(Mid(s, blank + 1, lf - blank - 1)));
}

void ReadCustomMaterials(Session &session, std::string_view text) {
    const size_t at = InStr(text, "customMaterial");
    const int16_t count = CustomMaterialCount(Mid(text, static_cast<long long>(at)));
    if (!IsEmptyList(session.Figures))
        session.Figures.emplace_back();
    const int figureIndex = static_cast<int>(session.Figures.size()) - 1;
    if (count < 1)
        Fail(ErrSubscript);
    session.Figures.back().Materials.assign(static_cast<size_t>(count), Material{});
    size_t previous = at;
    for (int i = 0; i < count; ++i) {
        const size_t materialAt = InStr(text, "material ", previous + 9);
        const size_t close = InStr(text, "}", materialAt);
        const std::string block = CrToLf(Mid(text, static_cast<long long>(materialAt),
                                             static_cast<long long>(close) - static_cast<long long>(materialAt)));
        ParseMaterial(session, block, figureIndex, i);
        const long long lf = static_cast<long long>(InStr(block, "\n"));
        session.Figures.back().Materials[static_cast<size_t>(i)].Name = std::string(Mid(block, 10, lf - 10));
        previous = materialAt;
    }
}

} // namespace gelvane
