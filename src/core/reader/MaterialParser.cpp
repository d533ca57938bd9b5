#include "core/reader/MaterialParser.h"

#include "core/app/Settings.h"
#include "core/maps/MapPaths.h"
#include "core/model/Failure.h"
#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/platform/Paths.h"

#include <optional>

namespace gelvane {
namespace {

Material &MaterialAt(Session &session, int figureIndex, int materialIndex) {
    if (figureIndex < 0 || static_cast<size_t>(figureIndex) >= session.Figures.size())
        Fail(ErrSubscript);
    auto &materials = session.Figures[static_cast<size_t>(figureIndex)].Materials;
    if (materialIndex < 0 || static_cast<size_t>(materialIndex) >= materials.size())
        Fail(ErrSubscript);
    return materials[static_cast<size_t>(materialIndex)];
}

// The text between the keyword's end and the next line feed, or nothing when the
// keyword is missing. A keyword whose line has no line feed behind it is a failure:
// the length to take comes out negative.
std::optional<std::string_view> ValueText(Session &session, std::string_view block, std::string_view keyword) {
    const size_t at = InStr(block, keyword);
    session.KeywordMissing = at == 0;
    if (at == 0)
        return std::nullopt;
    const long long from = static_cast<long long>(at + keyword.size());
    const long long lineEnd = static_cast<long long>(InStr(block, "\n", at));
    return Mid(block, from, lineEnd - from);
}

} // namespace

int16_t ReadNumber(Session &session, std::string_view block, std::string_view keyword) {
    const auto raw = ValueText(session, block, keyword);
    if (!raw)
        return 0;
    const std::string value = StripControls(*raw);
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
    // Sanity limit: anything beyond is taken for a broken value.
    if (result < -1000 || result > 1000)
        result = 0;
    return ToInt16(result);
}

std::string ReadText(Session &session, std::string_view block, std::string_view keyword) {
    const auto raw = ValueText(session, block, keyword);
    if (!raw)
        return {};
    std::string unquoted;
    unquoted.reserve(raw->size());
    for (char c : *raw)
        if (c != '"')
            unquoted.push_back(c);
    return StripControls(unquoted);
}

void ReadColor(Session &session, std::string_view block, std::string_view keyword, int figureIndex, int materialIndex) {
    const size_t at = InStr(block, keyword);
    session.KeywordMissing = at == 0;
    if (at == 0)
        return;
    // Three numbers, each up to the next blank; the line end doesn't stop the search.
    long long pos = static_cast<long long>(at + keyword.size());
    double component[3];
    for (double &c : component) {
        const long long blank = static_cast<long long>(InStr(block, " ", static_cast<size_t>(pos)));
        c = NumberValue(Mid(block, pos, blank - pos));
        pos = blank + 1;
    }
    const Rgb rgb{ToInt16(component[0] * 255), ToInt16(component[1] * 255), ToInt16(component[2] * 255)};
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

void ParseMaterial(Session &session, std::string_view block, int figureIndex, int materialIndex) {
    Material &m = MaterialAt(session, figureIndex, materialIndex);
    m.ksIgnoreTexture = false;
    m.reflectThruLights = false;
    m.reflectThruKd = false;

    // Flags are only ever set here, never cleared.
    auto found = [&](bool &flag) {
        if (!session.KeywordMissing)
            flag = true;
    };
    ReadColor(session, block, "KdColor ", figureIndex, materialIndex);
    found(m.KdColorEnabled);
    ReadColor(session, block, "KaColor ", figureIndex, materialIndex);
    found(m.KaColorEnabled);
    ReadColor(session, block, "KsColor ", figureIndex, materialIndex);
    found(m.KsColorEnabled);
    ReadColor(session, block, "ReflectionColor ", figureIndex, materialIndex);
    found(m.ReflectionColorEnabled);

    m.TextureColor = std::to_string(ReadNumber(session, block, "TextureColor "));
    found(m.TextureColorEnabled);
    m.bumpStrength = std::to_string(ReadNumber(session, block, "bumpStrength "));
    found(m.bumpStrengthEnabled);
    m.reflectionStrength = std::to_string(ReadNumber(session, block, "reflectionStrength "));
    found(m.reflectionStrengthEnabled);

    // The test is on the value: "NsExponent 101" reads as a missing line.
    m.NsExponent = ReadNumber(session, block, "NsExponent ");
    if (m.NsExponent != 0)
        m.NsExponentEnabled = true;
    else
        m.NsExponent = 1;

    m.tMin = ReadNumber(session, block, "tMin ");
    found(m.tMinEnabled);
    m.tMax = ReadNumber(session, block, "tMax ");
    found(m.tMaxEnabled);
    m.tExpo = static_cast<float>(ReadNumber(session, block, "tExpo ")) / 100.0f;
    found(m.tExpoEnabled);

    m.ksIgnoreTexture = ReadNumber(session, block, "ksIgnoreTexture ") == 1;
    found(m.ksIgnoreTextureEnabled);
    m.reflectThruLights = ReadNumber(session, block, "reflectThruLights ") == 1;
    found(m.reflectThruLightsEnabled);
    m.reflectThruKd = ReadNumber(session, block, "reflectThruKd ") == 1;
    found(m.reflectThruKdEnabled);

    struct MapField {
        const char *keyword;
        std::string Material::*field;
        bool Material::*enabled;
    };
    static constexpr MapField maps[] = {
        {"textureMap ", &Material::textureMap, &Material::textureMapEnabled},
        {"bumpMap ", &Material::bumpMap, &Material::bumpMapEnabled},
        {"reflectionMap ", &Material::reflectionMap, &Material::reflectionMapEnabled},
        {"transparencyMap ", &Material::transparencyMap, &Material::transparencyMapEnabled},
    };
    for (const MapField &map : maps) {
        std::string &field = m.*map.field;
        field = ReadText(session, block, map.keyword);
        // Caching the thumbnail has no effect on the model, so nothing is looked up without a cache.
        if (session.settings().MainThumb && session.LoadThumbNail) {
            const std::string full = FullMapPath(session.settings().PoserFolder, field);
            if (FileExists(full))
                session.LoadThumbNail(full);
        }
        if (session.KeywordMissing)
            field = "NO_MAP";
        else
            m.*map.enabled = true;
    }
}

void ReadCustomMaterials(Session &session, std::string_view text) {
    const size_t at = InStr(text, "customMaterial");
    std::string head = Replace(Mid(text, static_cast<long long>(at), 20), "\r\n", "\n");
    head = Replace(head, "\t", " ");
    head = Replace(head, "  ", " ");
    const long long blank = static_cast<long long>(InStr(head, " "));
    const long long lineEnd = static_cast<long long>(InStr(head, "\n", static_cast<size_t>(blank + 1)));
    // A count beyond a 32-bit number overflows, as dimensioning the array with it would.
    const int32_t count = ToInt32(NumberValue(Mid(head, blank + 1, lineEnd - blank - 1)));

    if (!session.Figures.empty() && !session.Figures[0].Name.empty())
        session.Figures.emplace_back();
    if (session.Figures.empty())
        session.Figures.emplace_back();
    const int figureIndex = static_cast<int>(session.Figures.size()) - 1;
    // An upper bound of count - 1 below 0 can't be dimensioned.
    if (count < 1)
        Fail(ErrSubscript);
    // The materials are added one by one: a count beyond the blocks in the text fails at
    // the first block that is missing, and must not size the array first.
    auto &materials = session.Figures.back().Materials;
    materials.clear();

    size_t previous = at;
    for (int32_t i = 0; i < count; ++i) {
        const size_t materialAt = InStr(text, "material ", previous + 9);
        const long long blockEnd = static_cast<long long>(InStr(text, "}", materialAt == 0 ? 1 : materialAt));
        const std::string block =
            CrToLf(Mid(text, static_cast<long long>(materialAt), blockEnd - static_cast<long long>(materialAt)));
        materials.emplace_back();
        ParseMaterial(session, block, figureIndex, static_cast<int>(i));
        const long long lineEnd1 = static_cast<long long>(InStr(block, "\n"));
        session.Figures.back().Materials[static_cast<size_t>(i)].Name = std::string(Mid(block, 10, lineEnd1 - 10));
        previous = materialAt;
    }
}

} // namespace gelvane
