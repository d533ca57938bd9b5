#include "core/reader/MaterialParser.h"

#include "core/maps/MapPaths.h"
#include "core/model/Numbers.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Paths.h"
#include "core/reader/TextIndex.h"

#include <algorithm>
#include <cstring>
#include <vector>

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

// Where a keyword stands in a block: `after` runs from the keyword's end to the block's
// end, and `at` names the place, so that a place read before can be recognised.
struct Spot {
    bool found = false;
    std::string_view after;
    size_t at = 0;
};

Spot SpotIn(std::string_view block, std::string_view keyword) {
    const size_t at = block.find(keyword);
    if (at == std::string_view::npos)
        return {};
    return {true, block.substr(at + keyword.size()), at};
}

// The text between the keyword's end and the next line feed. A keyword whose line has
// no line feed behind it in the block is a failure: the length to take comes out negative.
std::string_view ValueText(const Spot &spot) {
    const size_t lineEnd = spot.after.find('\n');
    if (lineEnd == std::string_view::npos)
        Fail(ErrInvalidCall);
    return spot.after.substr(0, lineEnd);
}

int16_t NumberOf(const Spot &spot, std::string_view keyword) {
    const std::string_view raw = ValueText(spot);
    double result;
    if (keyword == "TextureColor ") {
        const std::string value = StripControls(raw);
        const size_t blank = InStrRev(value, " ");
        result = RoundHalfEven(NumberValue(Mid(value, static_cast<long long>(blank) + 1)) * 100);
        if (result < -1000 || result > 1000)
            result = 0;
        return ToInt16(result);
    }
    // The number reader passes over blanks wherever they stand, as trimming would take
    // them away; only a tab or a carriage return needs the stripped text.
    const bool plain = raw.find_first_of("\t\r") == std::string_view::npos;
    const std::string stripped = plain ? std::string() : StripControls(raw);
    const std::string_view value = plain ? raw : std::string_view(stripped);
    if (keyword == "NsExponent ") {
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

// Without double quotes, tabs and line ends, blanks trimmed: one copy.
std::string TextOf(const Spot &spot) {
    const std::string_view raw = ValueText(spot);
    std::string out(raw.size(), '\0');
    char *w = out.data();
    for (char c : raw) {
        *w = c;
        w += c != '"' && c != '\t' && c != '\r' && c != '\n';
    }
    out.resize(static_cast<size_t>(w - out.data()));
    const size_t first = out.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    out.erase(out.find_last_not_of(' ') + 1);
    out.erase(0, first);
    return out;
}

// Three numbers, each up to the next blank; the line end doesn't stop the search.
Rgb ColorOf(const Spot &spot) {
    size_t pos = 0;
    double component[3];
    for (double &c : component) {
        const size_t blank = spot.after.find(' ', pos);
        if (blank == std::string_view::npos)
            Fail(ErrInvalidCall);
        c = NumberValue(spot.after.substr(pos, blank - pos));
        pos = blank + 1;
    }
    return {ToInt16(component[0] * 255), ToInt16(component[1] * 255), ToInt16(component[2] * 255)};
}

enum Field {
    FKd,
    FKa,
    FKs,
    FReflectionColor,
    FTextureColor,
    FBumpStrength,
    FReflectionStrength,
    FNsExponent,
    FtMin,
    FtMax,
    FtExpo,
    FksIgnoreTexture,
    FReflectThruLights,
    FReflectThruKd,
    FTextureMap,
    FBumpMap,
    FReflectionMap,
    FTransparencyMap,
    kFieldCount
};

constexpr std::string_view kKeywords[kFieldCount] = {
    "KdColor ",
    "KaColor ",
    "KsColor ",
    "ReflectionColor ",
    "TextureColor ",
    "bumpStrength ",
    "reflectionStrength ",
    "NsExponent ",
    "tMin ",
    "tMax ",
    "tExpo ",
    "ksIgnoreTexture ",
    "reflectThruLights ",
    "reflectThruKd ",
    "textureMap ",
    "bumpMap ",
    "reflectionMap ",
    "transparencyMap ",
};

// What one place of a keyword gave; blocks that overlap share their places.
struct Remembered {
    size_t at = std::string_view::npos;
    int16_t number = 0;
    Rgb color;
    std::string text;
};

// Fills the material from the keyword places that `locate` gives, in the fixed order of
// the reading. With `memory`, a place read for an earlier block isn't read again.
template <class Locate>
void Parse(Session &session, Locate &&locate, int figureIndex, int materialIndex, Remembered *memory) {
    Material &m = MaterialAt(session, figureIndex, materialIndex);
    m.ksIgnoreTexture = false;
    m.reflectThruLights = false;
    m.reflectThruKd = false;

    auto known = [&](int field, const Spot &spot) -> Remembered * {
        if (!memory || memory[field].at != spot.at)
            return nullptr;
        return &memory[field];
    };
    auto remember = [&](int field, const Spot &spot) -> Remembered * {
        if (!memory)
            return nullptr;
        memory[field].at = spot.at;
        return &memory[field];
    };
    auto number = [&](int field) -> int16_t {
        const Spot spot = locate(field);
        session.KeywordMissing = !spot.found;
        if (!spot.found)
            return 0;
        if (Remembered *r = known(field, spot))
            return r->number;
        const int16_t value = NumberOf(spot, kKeywords[field]);
        if (Remembered *r = remember(field, spot))
            r->number = value;
        return value;
    };
    // Flags are only ever set here, never cleared.
    auto found = [&](bool &flag) {
        if (!session.KeywordMissing)
            flag = true;
    };

    struct ColorField {
        Field field;
        Rgb Material::*color;
        bool Material::*enabled;
    };
    static constexpr ColorField colors[] = {
        {FKd, &Material::KdColor, &Material::KdColorEnabled},
        {FKa, &Material::KaColor, &Material::KaColorEnabled},
        {FKs, &Material::KsColor, &Material::KsColorEnabled},
        {FReflectionColor, &Material::ReflectionColor, &Material::ReflectionColorEnabled},
    };
    for (const ColorField &c : colors) {
        const Spot spot = locate(c.field);
        session.KeywordMissing = !spot.found;
        if (spot.found) {
            if (Remembered *r = known(c.field, spot)) {
                m.*c.color = r->color;
            } else {
                m.*c.color = ColorOf(spot);
                if (Remembered *fresh = remember(c.field, spot))
                    fresh->color = m.*c.color;
            }
        }
        found(m.*c.enabled);
    }

    m.TextureColor = std::to_string(number(FTextureColor));
    found(m.TextureColorEnabled);
    m.bumpStrength = std::to_string(number(FBumpStrength));
    found(m.bumpStrengthEnabled);
    m.reflectionStrength = std::to_string(number(FReflectionStrength));
    found(m.reflectionStrengthEnabled);

    // The test is on the value: "NsExponent 101" reads as a missing line.
    m.NsExponent = number(FNsExponent);
    if (m.NsExponent != 0)
        m.NsExponentEnabled = true;
    else
        m.NsExponent = 1;

    m.tMin = number(FtMin);
    found(m.tMinEnabled);
    m.tMax = number(FtMax);
    found(m.tMaxEnabled);
    m.tExpo = static_cast<float>(number(FtExpo)) / 100.0f;
    found(m.tExpoEnabled);

    m.ksIgnoreTexture = number(FksIgnoreTexture) == 1;
    found(m.ksIgnoreTextureEnabled);
    m.reflectThruLights = number(FReflectThruLights) == 1;
    found(m.reflectThruLightsEnabled);
    m.reflectThruKd = number(FReflectThruKd) == 1;
    found(m.reflectThruKdEnabled);

    struct MapField {
        Field field;
        std::string Material::*value;
        bool Material::*enabled;
    };
    static constexpr MapField maps[] = {
        {FTextureMap, &Material::textureMap, &Material::textureMapEnabled},
        {FBumpMap, &Material::bumpMap, &Material::bumpMapEnabled},
        {FReflectionMap, &Material::reflectionMap, &Material::reflectionMapEnabled},
        {FTransparencyMap, &Material::transparencyMap, &Material::transparencyMapEnabled},
    };
    for (const MapField &map : maps) {
        std::string &value = m.*map.value;
        const Spot spot = locate(map.field);
        session.KeywordMissing = !spot.found;
        bool lookedUp = false;
        if (!spot.found) {
            value.clear();
        } else if (Remembered *r = known(map.field, spot)) {
            value = r->text;
            lookedUp = true; // this place's thumbnail was cached for the block before
        } else {
            value = TextOf(spot);
            if (Remembered *fresh = remember(map.field, spot))
                fresh->text = value;
        }
        // Caching the thumbnail has no effect on the model, so nothing is looked up without a cache.
        if (!lookedUp && session.settings().MainThumb && session.LoadThumbNail)
            if (const auto file = LocateMapReference(session.settings().PoserFolder, value))
                session.LoadThumbNail(*file);
        if (session.KeywordMissing)
            value = "NO_MAP";
        else
            m.*map.enabled = true;
    }
}

} // namespace

int16_t ReadNumber(Session &session, std::string_view block, std::string_view keyword) {
    const Spot spot = SpotIn(block, keyword);
    session.KeywordMissing = !spot.found;
    return spot.found ? NumberOf(spot, keyword) : 0;
}

std::string ReadText(Session &session, std::string_view block, std::string_view keyword) {
    const Spot spot = SpotIn(block, keyword);
    session.KeywordMissing = !spot.found;
    return spot.found ? TextOf(spot) : std::string();
}

void ReadColor(Session &session, std::string_view block, std::string_view keyword, int figureIndex, int materialIndex) {
    const Spot spot = SpotIn(block, keyword);
    session.KeywordMissing = !spot.found;
    if (!spot.found)
        return;
    const Rgb rgb = ColorOf(spot);
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
    Parse(
        session, [&](int field) { return SpotIn(block, kKeywords[field]); }, figureIndex, materialIndex, nullptr);
}

// Finds all the keywords in one pass over a text. Every keyword ends in a blank, so only
// the blanks are looked at, and the letter in front of each names the few keywords that
// can end there (no keyword ends another, so at most one does).
class KeywordFinder {
public:
    KeywordFinder() {
        for (int k = 0; k < kFieldCount; ++k)
            m_endingIn[static_cast<unsigned char>(kKeywords[k][kKeywords[k].size() - 2])].push_back(k);
    }
    // The 0-based places where each keyword ends in text[begin, end), appended in text order.
    void Scan(std::string_view text, size_t begin, size_t end, std::vector<size_t> (&places)[kFieldCount]) const {
        const char *data = text.data();
        for (size_t blank = std::max<size_t>(begin, 1); blank < end; ++blank) {
            if (data[blank] != ' ')
                continue;
            for (int k : m_endingIn[static_cast<unsigned char>(data[blank - 1])]) {
                const std::string_view keyword = kKeywords[k];
                if (blank + 1 >= keyword.size() &&
                    std::memcmp(data + blank + 1 - keyword.size(), keyword.data(), keyword.size() - 1) == 0) {
                    places[k].push_back(blank + 1 - keyword.size());
                    break;
                }
            }
        }
    }

private:
    std::vector<int> m_endingIn[256];
};

// The keyword places of the stretch of the text that the blocks have asked for so far:
// a block behind it extends it, a block outside it starts it afresh.
struct MaterialScan::Places {
    std::vector<size_t> at[kFieldCount];
    size_t next[kFieldCount] = {}; // the first place not in front of the last block's start
    size_t from = 0;               // the last block's start
    size_t begin = 0, end = 0;     // the stretch whose keywords are listed
    Remembered memory[kFieldCount];
};

MaterialScan::MaterialScan(Session &session, std::string_view text, WorkLimit &work)
    : m_session(session), m_text(text), m_work(work), m_places(std::make_unique<Places>()) {}

MaterialScan::~MaterialScan() = default;

void MaterialScan::Parse(size_t from, size_t end, int figureIndex, int materialIndex) {
    static const KeywordFinder finder;
    Places &p = *m_places;
    if (from < p.begin || from > p.end) {
        for (auto &places : p.at)
            places.clear();
        std::fill(std::begin(p.next), std::end(p.next), 0);
        p.begin = p.end = p.from = from;
    }
    if (end > p.end) {
        m_work.Spend(end - p.end);
        finder.Scan(m_text, p.end, end, p.at);
        p.end = end;
    }
    if (from < p.from) {
        // A block further back than the one before: find the places again.
        for (int field = 0; field < kFieldCount; ++field) {
            const std::vector<size_t> &places = p.at[field];
            p.next[field] = static_cast<size_t>(std::lower_bound(places.begin(), places.end(), from) - places.begin());
        }
    }
    p.from = from;
    auto locate = [&](int field) -> Spot {
        const std::vector<size_t> &places = p.at[field];
        size_t &next = p.next[field];
        while (next < places.size() && places[next] < from)
            ++next;
        if (next == places.size() || places[next] + kKeywords[field].size() > end)
            return {};
        const size_t at = places[next];
        const size_t behind = at + kKeywords[field].size();
        return {true, m_text.substr(behind, end - behind), at};
    };
    gelvane::Parse(m_session, locate, figureIndex, materialIndex, p.memory);
    const Material &m = MaterialAt(m_session, figureIndex, materialIndex);
    m_work.Spend(64 + m.textureMap.size() + m.bumpMap.size() + m.reflectionMap.size() + m.transparencyMap.size());
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

    // Each block runs from a "material " to the "}" behind it, without the "}", with its
    // carriage returns made line feeds. Blocks may overlap: their lines are read once.
    const std::string plain = CrToLf(text);
    WorkLimit work(plain.size());
    MaterialScan blocks(session, plain, work);
    Finder materialAts(plain, "material ");
    NextOf closes(plain, '}'), lineEnds(plain, '\n');
    size_t previous = at;
    for (int32_t i = 0; i < count; ++i) {
        const size_t materialAt = materialAts.Next(previous + 9);
        const size_t close = closes.At(materialAt == 0 ? 0 : materialAt - 1);
        const long long blockEnd = close == std::string::npos ? 0 : static_cast<long long>(close) + 1;
        Mid(plain, static_cast<long long>(materialAt),
            blockEnd - static_cast<long long>(materialAt)); // fails as the cut does
        materials.emplace_back();
        blocks.Parse(materialAt - 1, static_cast<size_t>(blockEnd) - 1, figureIndex, static_cast<int>(i));
        // The name: from the block's 10th character up to its first line feed.
        const size_t lineFeed = lineEnds.At(materialAt - 1);
        const long long lineEnd1 = lineFeed == std::string::npos || static_cast<long long>(lineFeed) + 1 >= blockEnd
                                       ? 0
                                       : static_cast<long long>(lineFeed + 2 - materialAt);
        work.Spend(static_cast<size_t>(std::max<long long>(lineEnd1, 0)) + 16);
        const std::string_view block = std::string_view(plain).substr(
            materialAt - 1, static_cast<size_t>(blockEnd - static_cast<long long>(materialAt)));
        session.Figures.back().Materials[static_cast<size_t>(i)].Name = std::string(Mid(block, 10, lineEnd1 - 10));
        previous = materialAt;
    }
}

} // namespace gelvane
