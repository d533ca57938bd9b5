#include "core/reader/ActorLoader.h"

#include "core/model/Numbers.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/reader/MaterialParser.h"
#include "core/reader/OpenFile.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace gelvane {
namespace {

// Text positions count from 1; 0 means "not found".
using Pos = size_t;

constexpr std::array<std::string_view, 4> kActorWords = {"actor ", "prop ", "light ", "camera "};
constexpr int kActor = 0;

// 1-based position of the first `needle` that starts inside text[begin, end) (0-based), or 0.
Pos SearchIn(std::string_view text, std::string_view needle, size_t begin, size_t end) {
    end = std::min(end, text.size());
    if (begin >= end || end - begin < needle.size())
        return 0;
    const void *hit = memmem(text.data() + begin, end - begin, needle.data(), needle.size());
    return hit ? static_cast<Pos>(static_cast<const char *>(hit) - text.data()) + 1 : 0;
}

// The first `needle` at or behind `start` that begins in front of `limit`; 0 when none.
Pos FindBefore(std::string_view text, std::string_view needle, Pos start, Pos limit) {
    if (start < 1)
        Fail(ErrInvalidCall);
    if (limit <= start)
        return 0;
    return SearchIn(text, needle, start - 1, limit - 1 + needle.size() - 1);
}

bool EndsWord(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Finds dial lines in a large channels block without scanning the rest of the block
// for each dial. Every blank of the block is sorted by the word that follows it; a
// needle "type name" can only stand where the word behind its blank begins with the
// name's first word, so its candidates are one short run of that order.
class NeedleIndex {
public:
    static constexpr size_t kMaxType = 256; // longer type words are searched directly
    static constexpr size_t kMaxCandidates = 256;

    // Blanks from `from` up to where a needle that starts before `limit` can have its blank.
    NeedleIndex(std::string_view text, Pos from, Pos limit) : m_text(text) {
        const size_t end = std::min(text.size(), limit - 1 + kMaxType);
        for (size_t i = from - 1; i < end; ++i) {
            if (text[i] != ' ')
                continue;
            size_t n = 0;
            while (i + 1 + n < text.size() && !EndsWord(text[i + 1 + n]))
                ++n;
            m_blanks.push_back({i, n, Key(text.substr(i + 1, n))});
        }
        std::sort(m_blanks.begin(), m_blanks.end(), [this](const Blank &a, const Blank &b) {
            if (a.key != b.key)
                return a.key < b.key;
            const int c = Word(a).compare(Word(b));
            return c < 0 || (c == 0 && a.at < b.at);
        });
    }

    // The first `needle` that starts in [start, limit), 0 for none; nothing when the
    // index can't tell, and the caller searches directly.
    std::optional<Pos> Find(std::string_view needle, Pos start, Pos limit) const {
        const size_t typeLength = needle.find(' ');
        if (typeLength == std::string_view::npos || typeLength == 0 || typeLength >= kMaxType)
            return std::nullopt;
        const std::string_view name = needle.substr(typeLength + 1);
        const std::string_view first = name.substr(0, name.find(' '));
        if (first.empty() || first.find('\t') != std::string_view::npos)
            return std::nullopt;
        const uint64_t firstKey = Key(first);
        auto it = std::lower_bound(m_blanks.begin(), m_blanks.end(), first, [&](const Blank &b, std::string_view w) {
            return b.key != firstKey ? b.key < firstKey : Word(b) < w;
        });
        Pos best = 0;
        size_t candidates = 0;
        for (; it != m_blanks.end() && Word(*it).substr(0, first.size()) == first; ++it) {
            if (++candidates > kMaxCandidates)
                return std::nullopt;
            if (it->at < typeLength)
                continue;
            const Pos at = it->at - typeLength + 1;
            if (at < start || at >= limit || (best != 0 && at >= best))
                continue;
            if (m_text.substr(at - 1, needle.size()) == needle)
                best = at;
        }
        return best;
    }

private:
    struct Blank {
        size_t at;     // 0-based position of the blank
        size_t length; // of the word behind it
        uint64_t key;  // the word's first 8 bytes: orders as the words do, and cheaply
    };
    static uint64_t Key(std::string_view word) {
        uint64_t k = 0;
        for (size_t i = 0; i < 8; ++i)
            k = (k << 8) | (i < word.size() ? static_cast<unsigned char>(word[i]) : 0u);
        return k;
    }
    std::string_view Word(const Blank &b) const { return m_text.substr(b.at + 1, b.length); }

    std::string_view m_text;
    std::vector<Blank> m_blanks;
};

// InStr with a memory of its last answer. The scans move forward through a large
// text with small steps back, so no stretch is searched more than a few times.
class Finder {
public:
    Finder(std::string_view text, std::string_view needle) : m_text(text), m_needle(needle) {}

    Pos Next(Pos start) {
        if (start < 1)
            Fail(ErrInvalidCall);
        if (start > m_text.size() + 1)
            return 0;
        if (m_known && start >= m_from && (m_found == 0 || m_found >= start))
            return m_found;
        if (m_known && start < m_from) {
            // Only the stretch in front of the one already searched needs a look.
            const Pos hit = SearchIn(m_text, m_needle, start - 1, m_from - 1 + m_needle.size() - 1);
            m_from = start;
            if (hit)
                m_found = hit;
            return m_found;
        }
        m_from = start;
        m_found = SearchIn(m_text, m_needle, start - 1, m_text.size());
        m_known = true;
        return m_found;
    }

private:
    std::string_view m_text, m_needle;
    bool m_known = false;
    Pos m_from = 0;  // the answer below holds for every start from here up to it
    Pos m_found = 0; // first match at or behind m_from, 0 for none
};

// Every occurrence of a needle, for searches backwards and by rank.
class Occurrences {
public:
    Occurrences(std::string_view text, std::string_view needle) : m_size(needle.size()) {
        for (size_t p = text.find(needle); p != std::string_view::npos; p = text.find(needle, p + 1))
            m_at.push_back(p + 1);
    }
    // The first at or behind `start`.
    Pos NextAt(Pos start) const {
        auto it = std::lower_bound(m_at.begin(), m_at.end(), start);
        return it == m_at.end() ? 0 : *it;
    }
    // The last that lies wholly in the first `count` characters (InStrRev's rule).
    Pos LastWithin(size_t count) const {
        if (count < m_size)
            return 0;
        auto it = std::upper_bound(m_at.begin(), m_at.end(), count - m_size + 1);
        return it == m_at.begin() ? 0 : *std::prev(it);
    }
    const std::vector<Pos> &All() const { return m_at; }

private:
    size_t m_size;
    std::vector<Pos> m_at;
};

long long L(Pos p) {
    return static_cast<long long>(p);
}

std::string Deleted(std::string_view text, char c) {
    std::string out;
    out.reserve(text.size());
    for (char ch : text)
        if (ch != c)
            out.push_back(ch);
    return out;
}

// The scanning state of one call: the text, its cached searches and the variables
// that the channel rounds carry from one round (and actor) to the next.
struct Scan {
    explicit Scan(std::string_view t)
        : text(t), words{Finder(t, kActorWords[0]), Finder(t, kActorWords[1]), Finder(t, kActorWords[2]),
                         Finder(t, kActorWords[3])},
          openBrace(t, "{"), channelsLf(t, "channels\n"), channelsBlankLf(t, "channels \n"), keysLf(t, "keys\n"),
          keysBlankLf(t, "keys \n"), hiddenBlank(t, "hidden "), nameBlank(t, "name "), hiddenWord(t, "hidden"),
          nameWord(t, "name") {}

    std::string_view text;
    std::array<Finder, 4> words;
    Finder openBrace;
    Occurrences channelsLf, channelsBlankLf;
    Finder keysLf, keysBlankLf, hiddenBlank, nameBlank, hiddenWord, nameWord;

    std::string ChannelType, ChannelName;
    bool NoKeys = false;

    Pos lastOpen = 0, lastClose = 0;

    // The nearer "channels" line ahead ("channels" + line feed, or with a blank before it).
    Pos ChannelsLineAt(Pos start) const {
        const Pos a = channelsLf.NextAt(start), b = channelsBlankLf.NextAt(start);
        return a == 0 ? b : (b == 0 ? a : std::min(a, b));
    }
    // The later "channels" line wholly in front of `pos`.
    Pos ChannelsLineBefore(Pos pos) const {
        return pos < 2 ? 0 : std::max(channelsLf.LastWithin(pos - 1), channelsBlankLf.LastWithin(pos - 1));
    }
    // The "}" that closes the "{" at `open`, counting nesting; 0 when it never closes.
    Pos MatchingClose(Pos open) {
        if (open == lastOpen)
            return lastClose;
        int depth = 0;
        Pos close = 0;
        for (size_t i = open - 1; i < text.size(); ++i) {
            if (text[i] == '{')
                ++depth;
            else if (text[i] == '}' && --depth == 0) {
                close = i + 1;
                break;
            }
        }
        lastOpen = open;
        lastClose = close;
        return close;
    }
};

struct KeywordHit {
    int word = -1; // index into kActorWords, -1 for none
    Pos at = 0;
    size_t skipped = 0;
};

// An opening whose block is only "{ }" (the body part declarations at a character's head).
bool IsEmptyDeclaration(Scan &scan, Pos at) {
    const Pos open = scan.openBrace.Next(at);
    if (open == 0)
        return false;
    const std::string_view first20 = Mid(scan.text, L(open), 20);
    const size_t close = first20.find('}');
    if (close == std::string_view::npos)
        return false;
    std::string packed;
    for (char c : first20.substr(0, close + 1))
        if (c != '\n' && c != '\r' && c != ' ' && c != '\t')
            packed.push_back(c);
    return packed == "{}";
}

KeywordHit FindActorKeyword(Scan &scan, Pos from, bool skipEmpty) {
    Pos start = from;
    while (true) {
        KeywordHit hit;
        for (int w = 0; w < 4; ++w) {
            const Pos p = scan.words[static_cast<size_t>(w)].Next(start);
            if (p != 0 && (hit.at == 0 || p < hit.at)) {
                hit.at = p;
                hit.word = w;
            }
        }
        if (hit.at == 0)
            return {};
        if (skipEmpty && IsEmptyDeclaration(scan, hit.at)) {
            const Pos lf = InStr(scan.text, "\n", hit.at);
            if (lf == 0)
                return {};
            start = lf + 1;
            continue;
        }
        hit.skipped = start - from;
        return hit;
    }
}

// The rest of the line behind `word` found at line feed `lf` of `block`, untrimmed.
std::string_view RestOfLine(std::string_view block, Pos lf, std::string_view word) {
    const Pos from = lf + 1 + word.size();
    const Pos end = InStr(block, "\n", from);
    return Mid(block, L(from), L(end) - L(from));
}

std::string ElapsedLine(int32_t seconds) {
    return "Elapsed time: " + std::to_string(seconds / 60) + " min, " + std::to_string(seconds % 60) + " sec";
}

// One round's starting state; a round that starts as an earlier one did would
// repeat for ever, so it ends the actor's channels.
struct RoundStart {
    Pos search;
    std::string type, name;
    bool noKeys;
    bool operator==(const RoundStart &) const = default;
};
struct RoundStartHash {
    size_t operator()(const RoundStart &r) const {
        size_t h = std::hash<Pos>{}(r.search);
        h = h * 31 + std::hash<std::string>{}(r.type);
        h = h * 31 + std::hash<std::string>{}(r.name);
        return h * 2 + (r.noKeys ? 1 : 0);
    }
};

enum class ChannelsResult { Done, Cancelled };

struct ActorChannels {
    Pos lastLineEnd = 0; // the line feed behind the last channel's opening line
    bool any = false;
};

ChannelsResult ReadChannels(Session &session, Scan &scan, size_t actorIndex, Pos position, Pos blockEnd,
                            int32_t startTime, ActorChannels &out) {
    Interaction &ui = session.ui();
    const std::string_view text = scan.text;
    Pos search = position;
    Pos cur = position;
    const Pos channelsAt = scan.ChannelsLineAt(search);
    // Marks and finds never leave the actor's own channels block.
    Pos limit = blockEnd;
    if (channelsAt != 0) {
        const Pos open = InStr(text, "{", channelsAt);
        const Pos close = open != 0 ? scan.MatchingClose(open) : 0;
        if (close != 0 && close < limit)
            limit = close;
    }
    bool first = true;
    std::unique_ptr<NeedleIndex> index;
    std::unordered_set<RoundStart, RoundStartHash> seen;
    Pos seenAt = cur;

    while (cur < blockEnd) {
        // The current position never moves back, so only rounds at the same one can repeat.
        if (cur != seenAt) {
            seen.clear();
            seenAt = cur;
        }
        if (!seen.insert({search, scan.ChannelType, scan.ChannelName, scan.NoKeys}).second)
            break;

        if (first && channelsAt == 0)
            break;
        Pos keysMark = scan.keysLf.Next(search);
        if (keysMark == 0)
            keysMark = scan.keysBlankLf.Next(search);
        Pos hiddenMark, nameMark;
        if (first) {
            hiddenMark = nameMark = InStr(text, "{", channelsAt);
        } else {
            hiddenMark = scan.hiddenBlank.Next(search);
            nameMark = scan.nameBlank.Next(search);
        }
        first = false;
        Pos mark = 0;
        for (Pos m : {keysMark, hiddenMark, nameMark})
            if (m != 0 && (mark == 0 || m < mark))
                mark = m;
        if (keysMark == 0)
            scan.NoKeys = true;
        if (mark == 0 || mark >= limit || search >= blockEnd)
            break;

        // The channel's opening brace: the previous channel's end, or the channels block's "{".
        const size_t back = mark >= 2 ? text.rfind('}', mark - 2) : std::string_view::npos;
        const Pos lastBrace = back == std::string_view::npos ? 0 : back + 1;
        const Pos lastChannels = scan.ChannelsLineBefore(mark);
        Pos place;
        if (lastBrace > lastChannels)
            place = lastBrace;
        else if (scan.NoKeys)
            place = InStr(text, "{", mark);
        else
            place = InStr(text, "{", lastChannels);
        while (place + 3 <= text.size() && text[place + 2] == '\n')
            ++place; // empty lines

        const Pos lineEnd = InStr(text, "\n", place + 3);
        const std::string line = StripControls(Mid(text, L(place) + 2, L(lineEnd) - L(place) - 2));
        const size_t blank = line.find(' ');
        if (blank != std::string::npos) {
            scan.ChannelType = line.substr(0, blank);
            scan.ChannelName = line.substr(blank + 1);
        } else {
            scan.ChannelType = line;
        }

        if (const Pos k = scan.keysLf.Next(search))
            search = k + 5;
        else if (const Pos k2 = scan.keysBlankLf.Next(search))
            search = k2 + 6;

        if (Trim(scan.ChannelType).empty())
            break;
        if (scan.ChannelType == "//" || scan.ChannelType == "'" || scan.ChannelType == "#")
            continue; // a comment line in front of the channel

        const std::string needle = scan.ChannelType + " " + scan.ChannelName;
        // Dial lines are looked up again from inside themselves; in a large block an
        // index keeps that from scanning the rest of the block each time.
        if (!index && limit > position && limit - position >= session.IndexedChannelBlockMinimum)
            index = std::make_unique<NeedleIndex>(text, position, limit);
        std::optional<Pos> indexed = index ? index->Find(needle, cur, limit) : std::nullopt;
        const Pos found = indexed ? *indexed : FindBefore(text, needle, cur, limit);
        if (found != 0) {
            cur = found + scan.ChannelType.size() + 1;
            Actor &actor = session.Actors[actorIndex];
            if (!actor.Channels[0].Name.empty())
                actor.Channels.emplace_back();
            Channel &channel = actor.Channels.back();
            const Pos nameEnd = InStr(text, "\n", cur);
            channel.Name = std::string(Mid(text, L(cur), L(nameEnd) - L(cur)));
            out.lastLineEnd = nameEnd;
            out.any = true;

            // Display name and hidden count only in front of the first "}" behind the opening.
            const Pos close = InStr(text, "}", cur);
            const Pos nameAt = scan.nameWord.Next(cur);
            if (nameAt > 0 && nameAt < close) {
                const Pos nameBlank = InStr(text, " ", nameAt);
                const Pos lf = InStr(text, "\n", nameBlank);
                channel.DisplayName = std::string(Mid(text, L(nameBlank) + 1, L(lf) - L(nameBlank) - 1));
                channel.NameEnabled = true;
                search = nameAt;
            } else {
                channel.NameEnabled = false;
            }
            const Pos hiddenAt = scan.hiddenWord.Next(cur);
            if (hiddenAt > 0 && hiddenAt < close) {
                const Pos hiddenBlank = InStr(text, " ", hiddenAt);
                const Pos lf = InStr(text, "\n", hiddenBlank);
                channel.Hidden = ToInt16(NumberValue(Mid(text, L(hiddenBlank) + 1, L(lf) - L(hiddenBlank) - 1)) + 1);
                channel.HiddenEnabled = true;
                search = hiddenBlank + 1;
            } else {
                channel.HiddenEnabled = false;
            }

            if (!scan.NoKeys) {
                const Pos open = InStr(text, "{", cur);
                const Pos shut = InStr(text, "}", open);
                const std::string_view keys = Mid(text, L(open), L(shut) - L(open) + 1);
                const size_t k = keys.find("k  ", std::min(keys.find('{'), keys.size()));
                if (k == std::string_view::npos) {
                    channel.Value = 0;
                    channel.ValueEnabled = false;
                } else {
                    size_t e = keys.find('\n', k);
                    if (e == std::string_view::npos)
                        e = keys.size();
                    const std::string_view frameAndValue = Trim(keys.substr(k + 1, e - k - 1));
                    const size_t sp = frameAndValue.find(' ');
                    const std::string_view value =
                        sp == std::string_view::npos ? Mid(frameAndValue, 2) : Mid(frameAndValue, L(sp) + 3);
                    channel.Value = NumberValue(value);
                    channel.ValueEnabled = value == "0" || channel.Value != 0;
                }
            }
            channel.Type = scan.ChannelType;
            ui.DoEvents();
        }

        if (!session.BatchMode) {
            if (ui.ProgressCancelling())
                return ChannelsResult::Cancelled;
            ui.ProgressDetail(ElapsedLine(SessionSeconds(session) - startTime));
        }
    }
    return ChannelsResult::Done;
}

// Header lines of an actor, in front of its channels.
void ReadHeader(Actor &actor, std::string_view rawHeader, bool cameraOrLight) {
    const std::string header = Deleted(CrToLf(rawHeader), '\t');
    auto at = [&](std::string_view word) { return InStr(header, "\n" + std::string(word)); };
    if (InStr(header, "\non\n")) {
        actor.OnOff = 2;
        actor.OnOffEnabled = true;
    } else if (InStr(header, "\noff\n")) {
        actor.OnOff = 1;
        actor.OnOffEnabled = true;
    } else {
        actor.OnOffEnabled = false;
    }
    if (const Pos lf = at("hidden")) {
        // Only the digit in front of the line end counts: "hidden 10" reads as 0.
        const Pos lineEnd = InStr(header, "\n", lf + 1);
        actor.Hidden = ToInt16(NumberValue(Mid(header, L(lineEnd) - 1, 1)) + 1);
        actor.HiddenEnabled = true;
    } else {
        actor.HiddenEnabled = false;
    }
    if (const Pos lf = at("storageOffset"); lf && cameraOrLight)
        actor.StorageOffset = std::string(Trim(RestOfLine(header, lf, "storageOffset")));
    if (const Pos lf = at("geomResource"); lf && cameraOrLight)
        actor.GeomResource = ToInt16(NumberValue(RestOfLine(header, lf, "geomResource")) + 1);
    if (const Pos lf = at("lightType"); lf && cameraOrLight)
        actor.LightType = ToInt16(NumberValue(RestOfLine(header, lf, "lightType")) + 1);
    if (const Pos lf = at("name")) {
        actor.DisplayName = std::string(Trim(RestOfLine(header, lf, "name")));
        actor.NameEnabled = true;
    } else {
        actor.NameEnabled = false;
    }
    if (const Pos lf = at("objFileGeom"); lf && cameraOrLight)
        actor.ObjFileGeom = std::string(Trim(RestOfLine(header, lf, "objFileGeom")));
}

// Lines behind the channels block.
void ReadTail(Actor &actor, std::string_view rawTail, bool cameraOrLight) {
    // Replacing line feed + blank and line feed + tab until none is left drops every
    // blank and tab at the start of a line; one pass does the same.
    const std::string plain = CrToLf(Deleted(rawTail, '}'));
    std::string tail;
    tail.reserve(plain.size());
    bool lineStart = false;
    for (char c : plain) {
        if (lineStart && (c == ' ' || c == '\t'))
            continue;
        tail.push_back(c);
        lineStart = c == '\n';
    }
    auto at = [&](std::string_view word) { return InStr(tail, "\n" + std::string(word)); };
    if (const Pos lf = at("depthMapSize")) {
        const double v = NumberValue(RestOfLine(tail, lf, "depthMapSize"));
        actor.DepthMapSize = v != 0 ? ToInt16(v + 1) : 0;
        actor.DepthMapSizeEnabled = v != 0;
    } else {
        actor.DepthMapSizeEnabled = false;
    }
    if (const Pos lf = at("depthCamera"); lf && cameraOrLight)
        actor.DepthCamera = std::string(Trim(RestOfLine(tail, lf, "depthCamera")));
    if (const Pos lf = at("doShadow")) {
        actor.DoShadow = ToInt16(NumberValue(RestOfLine(tail, lf, "doShadow")) + 1);
        actor.DoShadowEnabled = true;
    } else {
        actor.DoShadowEnabled = false;
    }
    if (const Pos lf = at("lightOn")) {
        actor.LightOn = ToInt16(NumberValue(RestOfLine(tail, lf, "lightOn")) + 1);
        actor.LightOnEnabled = true;
    } else {
        actor.LightOnEnabled = false;
    }
    if (const Pos lf = at("port"); lf && cameraOrLight)
        actor.Port = std::string(Trim(RestOfLine(tail, lf, "port")));
    if (const Pos lf = at("cameraModel"); lf && cameraOrLight)
        actor.CameraModel = std::string(Trim(RestOfLine(tail, lf, "cameraModel")));
    if (const Pos lf = at("locked")) {
        actor.Locked = ToInt16(NumberValue(RestOfLine(tail, lf, "locked")) + 1);
        actor.LockedEnabled = true;
    } else {
        actor.LockedEnabled = false;
    }
}

// The count of a customMaterial line, from the 20 characters that begin with the word,
// read as the material reader reads it.
int16_t CustomMaterialCount(std::string_view from) {
    std::string s = Replace(Left(from, 20), "\r\n", "\n");
    s = Replace(s, "\t", " ");
    s = Replace(s, "  ", " ");
    const long long blank = L(InStr(s, " "));
    const long long lf = L(InStr(s, "\n", static_cast<size_t>(blank) + 1));
    return ToInt16(NumberValue(Mid(s, blank + 1, lf - blank - 1)));
}

// The first occurrence in `text` of each type + blank + name, found in one pass over
// the openings instead of one search from the start for every actor.
std::unordered_map<std::string, Pos> FirstOccurrences(std::string_view text, const std::vector<std::string> &keys) {
    std::unordered_map<std::string, Pos> first;
    for (const std::string &k : keys)
        first.emplace(k, 0);
    for (std::string_view word : kActorWords) {
        std::vector<size_t> lengths;
        for (const std::string &k : keys)
            if (StartsWith(k, word) && std::find(lengths.begin(), lengths.end(), k.size()) == lengths.end())
                lengths.push_back(k.size());
        if (lengths.empty())
            continue;
        std::string probe;
        for (size_t p = text.find(word); p != std::string_view::npos; p = text.find(word, p + 1)) {
            for (size_t n : lengths) {
                if (p + n > text.size())
                    continue;
                probe.assign(text.substr(p, n));
                auto it = first.find(probe);
                if (it != first.end() && it->second == 0)
                    it->second = p + 1;
            }
        }
    }
    return first;
}

void ReadCustomMaterialOwners(Session &session, std::string_view text) {
    session.CustomMaterialsFound = false;
    std::vector<std::string> keys;
    for (const Actor &a : session.Actors)
        if (!a.Name.empty() && a.Type != "prop")
            keys.push_back(a.Type + " " + a.Name);
    const auto first = FirstOccurrences(text, keys);
    const Occurrences customAt(text, "customMaterial");
    Finder materialAt(text, "material ");
    std::unordered_map<std::string, Occurrences> typeAt;

    for (size_t i = 0; i < session.Actors.size(); ++i) {
        const std::string type = session.Actors[i].Type;
        const std::string name = session.Actors[i].Name;
        if (name.empty() || type == "prop")
            continue;
        const Pos start = first.at(type + " " + name);
        if (start == 0)
            continue;
        auto [it, fresh] = typeAt.try_emplace(type, text, type + " ");
        const Pos end = it->second.NextAt(start + 6);
        const Pos custom = customAt.NextAt(start);
        Pos material = 0;
        int16_t count = 0;
        if (custom != 0 && (end == 0 || custom < end)) {
            count = CustomMaterialCount(Mid(text, L(custom)));
            material = materialAt.Next(custom);
        }
        if (material < 1 || count < 1)
            continue;
        session.CustomMaterialsFound = true;
        if (!IsEmptyList(session.Figures))
            session.Figures.emplace_back();
        const int figureIndex = static_cast<int>(session.Figures.size()) - 1;
        session.Figures.back().Name = name;
        AddFigureLine(session, type + " " + name, static_cast<int>(session.Figures.size()));
        for (int m = 0; m < count; ++m) {
            const Pos close = InStr(text, "}", material + 10);
            const Pos blockEnd = close != 0 ? close : text.size() + 1;
            const std::string_view block = Mid(text, L(material), L(blockEnd) - L(material));
            auto &materials = session.Figures[static_cast<size_t>(figureIndex)].Materials;
            const int materialIndex = static_cast<int>(&AppendElement(materials) - materials.data());
            ParseMaterial(session, block, figureIndex, materialIndex);
            const Pos lf = InStr(block, "\n");
            session.Figures[static_cast<size_t>(figureIndex)].Materials[static_cast<size_t>(materialIndex)].Name =
                std::string(Mid(block, 10, L(lf) - 10));
            material = materialAt.Next(material + 10);
        }
    }

    // Every plain body part gets a row, so the object list names all of them.
    std::unordered_set<std::string> owners;
    for (const Figure &f : session.Figures)
        owners.insert(f.Name);
    for (const Actor &a : session.Actors) {
        if (a.Name.empty() || owners.count(a.Name) || a.Type == "prop" || a.Type == "light" || a.Type == "camera")
            continue;
        AddFigureLine(session, "actor " + a.Name, 0);
    }
}

void ResetActors(Session &session) {
    session.ClearActors();
    session.Pose.lstActors.clear();
    session.Pose.lstDials.clear();
}

void CancelLoad(Session &session) {
    if (!session.BatchMode)
        session.ui().ProgressClose();
    session.Options.chkDisableThighLength = false;
    session.Pose.chkDisableThighLengthEnabled = false;
    session.Options.txtThighLength.clear();
    session.Pose.txtThighLengthEnabled = false;
    session.Pose.lstActors.clear();
    session.Pose.lstDials.clear();
    if (session.chkChannelsClick)
        session.chkChannelsClick();
    session.ClearActors();
}

// The pose page after a load: the lists show the first actor and its dials.
void ShowLoadedActors(Session &session) {
    PoseView &pose = session.Pose;
    if (pose.lstActors.empty())
        return;
    const bool events = session.EventsEnabled;
    session.EventsEnabled = false;
    session.Options.chkChannels = false;
    session.Options.chkChannelsEnabled = true;
    session.EventsEnabled = events;
    for (ListRow &row : pose.lstActors)
        row.Selected = false;
    pose.lstActorsCurrentRow = 1;
    pose.CurrentActor = 1;
    session.View.ChannelControlsEnabled = true;
    FillDialList(session, 0);
}

} // namespace

int32_t SessionSeconds(const Session &session) {
    if (session.SecondsClock)
        return session.SecondsClock();
    using namespace std::chrono;
    return static_cast<int32_t>(duration_cast<seconds>(steady_clock::now().time_since_epoch()).count());
}

std::string NextActorKeyword(std::string_view text, bool skipEmpty) {
    Scan scan(text);
    const KeywordHit hit = FindActorKeyword(scan, 1, skipEmpty);
    if (hit.word < 0)
        return "none";
    return std::string(kActorWords[static_cast<size_t>(hit.word)]) + "\n" + std::to_string(hit.skipped);
}

bool LoadActorSection(Session &session, std::string_view text, bool singleActor, bool keepActors, int32_t startTime) {
    Interaction &ui = session.ui();
    const bool batch = session.BatchMode;
    SaveOptions &options = session.Options;
    PoseView &pose = session.Pose;

    // The thigh length line. Its value is read from one character late, so that
    // "0.5" reads as ".5"; the box puts the "0" back.
    options.chkDisableThighLength = true;
    const Pos thigh = InStr(text, "\nthighLength ");
    if (StartsWith(text, "thighLength ") || thigh != 0) {
        const Pos from = thigh + 14;
        const Pos lineEnd = InStr(text, "\n", thigh + 1);
        const std::string_view value = Mid(text, L(from), L(lineEnd) - L(from));
        session.ThighLength = NumberValue(value);
        std::string shown(Trim(value));
        if (StartsWith(shown, "."))
            shown = "0" + shown;
        options.txtThighLength = shown;
        options.chkDisableThighLength = false;
    }

    if ((!singleActor && !keepActors) || pose.lstActors.empty() || pose.lstActors[0].Name.empty())
        ResetActors(session);
    if (session.Actors.empty())
        session.ClearActors();
    // Every load ends within its own text: one that appends must not stop where the load before it did.
    const Pos figure = InStr(text, "\nfigure");
    session.ActorSectionEnd = static_cast<int64_t>(figure != 0 ? figure : text.size());
    Pos position = 1;
    const Pos end = static_cast<Pos>(session.ActorSectionEnd);

    const int32_t started = startTime > 0 ? startTime : SessionSeconds(session);
    const int barMax = ToInt32(RoundHalfEven(static_cast<double>(end) / 100));
    if (!batch) {
        ui.ProgressShow(" Please wait", "Loading Morphs and Poses...", barMax);
        ui.ProgressValue(0);
    }

    const std::string fileName = LCase(session.DialogFileName);
    int keyword = EndsWith(fileName, ".hr2") || EndsWith(fileName, ".pp2") ? 1 : kActor;
    Scan scan(text);

    while (position < end) {
        const KeywordHit opening = FindActorKeyword(scan, position, true);
        if (opening.word >= 0) {
            position += opening.skipped;
            keyword = opening.word;
        } else {
            keyword = kActor;
        }
        if (!singleActor) {
            const Pos at = scan.words[static_cast<size_t>(keyword)].Next(position);
            if (at == 0 || at > end)
                break;
            position = at;
        }

        const Pos lineEnd = InStr(text, "\n", position);
        const std::string line = StripControls(Mid(text, L(position), L(lineEnd) - L(position)));
        if (!batch)
            ui.ProgressStatus(line + "...");
        ui.DoEvents();

        const size_t blank = line.find(' ');
        const std::string type = blank == std::string::npos ? line : line.substr(0, blank);
        const std::string name = blank == std::string::npos ? std::string() : line.substr(blank + 1);
        if (singleActor)
            pose.lstActors.insert(pose.lstActors.begin(), ListRow{name, type, false});
        else
            pose.lstActors.push_back(ListRow{name, type, false});

        if (!session.Actors[0].Name.empty()) {
            if (singleActor)
                session.Actors.insert(session.Actors.begin(), Actor{});
            else
                session.Actors.emplace_back();
        }
        const size_t actorIndex = singleActor ? 0 : session.Actors.size() - 1;
        {
            Actor &actor = session.Actors[actorIndex];
            actor.Channels.assign(1, Channel{});
            actor.Name = name;
            actor.Type = type;
        }

        const KeywordHit next = FindActorKeyword(scan, position + 6, false);
        keyword = next.word >= 0 ? next.word : kActor;
        Pos blockEnd = scan.words[static_cast<size_t>(keyword)].Next(position + 6);
        if (blockEnd == 0)
            blockEnd = text.size();

        // The header runs to the channels line, or to the first "}" when that comes first.
        Pos headerEnd = scan.ChannelsLineAt(position);
        const Pos firstClose = InStr(text, "}", position);
        if (headerEnd == 0 || (firstClose != 0 && firstClose < headerEnd))
            headerEnd = firstClose;
        const bool cameraOrLight = type == "camera" || type == "light";
        ReadHeader(session.Actors[actorIndex], Mid(text, L(position), L(headerEnd) - L(position)), cameraOrLight);

        ActorChannels channels;
        if (ReadChannels(session, scan, actorIndex, position, blockEnd, started, channels) ==
            ChannelsResult::Cancelled) {
            CancelLoad(session);
            return false;
        }

        Pos tailStart = 0;
        if (channels.any)
            tailStart = InStr(text, "}", channels.lastLineEnd);
        else if (position != 0)
            tailStart = InStr(text, "{", position) + 1;
        if (tailStart != 0) {
            const size_t before = next.at != 0 ? next.at - 1 : text.size();
            const size_t lastClose = before == 0 ? std::string_view::npos : text.rfind('}', before - 1);
            const Pos tailEnd = lastClose == std::string_view::npos ? 0 : lastClose + 1;
            ReadTail(session.Actors[actorIndex], Mid(text, L(tailStart), L(tailEnd) - L(tailStart)), cameraOrLight);
        }

        if (!batch)
            ui.ProgressValue(std::min(ToInt32(RoundHalfEven(static_cast<double>(position) / 100)) + 1, barMax));
        position += 6;
        if (singleActor)
            break;
    }

    ReadCustomMaterialOwners(session, text);

    if (!batch) {
        ui.ProgressClose();
        const int32_t took = SessionSeconds(session) - started;
        if (session.settings().ReportTime && took > 1)
            ui.MessageBox("Loading of Morphs and Poses took\r\n" + std::to_string(took / 60) + " minutes and " +
                              std::to_string(took % 60) + " seconds.",
                          "Loading finished", MsgIcon::None, MsgButtons::OK);
    }
    ShowLoadedActors(session);
    return true;
}

void ApplyDisableProperties(Session &session) {
    if (!session.settings().DisableProperties)
        return;
    for (Actor &a : session.Actors) {
        a.NameEnabled = a.OnOffEnabled = a.HiddenEnabled = a.LockedEnabled = false;
        a.DoShadowEnabled = a.DepthMapSizeEnabled = a.LightOnEnabled = false;
        for (Channel &c : a.Channels)
            c.NameEnabled = c.HiddenEnabled = false;
    }
}

} // namespace gelvane
