#include "core/reader/ActorLoader.h"

#include "core/model/Numbers.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/reader/MaterialParser.h"
#include "core/reader/OpenFile.h"
#include "core/reader/TextIndex.h"

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
// for each dial. Every blank of the block is put in the order of the word that follows
// it (by the word's first sixteen bytes, and the whole word where those are equal;
// blanks of one word in text order); a needle "type name" can only stand
// where the word behind its blank begins with the name's first word, so its candidates
// are one short run of that order.
class NeedleIndex {
public:
    static constexpr size_t kMaxType = 256; // longer type words are searched directly
    static constexpr size_t kMaxCandidates = 256;

    // Blanks from `from` up to where a needle that starts before `limit` can have its blank.
    NeedleIndex(std::string_view text, Pos from, Pos limit, WorkLimit &work) : m_text(text) {
        const size_t end = std::min(text.size(), limit - 1 + kMaxType);
        // Only a blank behind a letter of a type word and in front of a word can be a needle's.
        for (size_t i = std::max<size_t>(from, 2) - 1; i < end; ++i) {
            if (text[i] != ' ' || text[i - 1] == ' ' || EndsWord(text[i - 1]))
                continue;
            size_t n = 0;
            while (i + 1 + n < text.size() && !EndsWord(text[i + 1 + n]))
                ++n;
            if (n > 0)
                m_blanks.push_back({i, n, Key(text, i + 1, n), n > 8 ? Key(text, i + 9, n - 8) : 0});
        }
        work.Spend(2 * (end - (from - 1)) + 32 * m_blanks.size());
        // A radix sort by the first sixteen bytes, a byte at a time from the last; each pass
        // keeps the order before it, so blanks of one key stay in text order.
        std::vector<Blank> sorted(m_blanks.size());
        for (int byte = 15; byte >= 0; --byte) {
            const uint64_t Blank::*half = byte < 8 ? &Blank::key : &Blank::key2;
            const int shift = 8 * (7 - byte % 8);
            size_t count[257] = {};
            for (const Blank &b : m_blanks)
                ++count[((b.*half >> shift) & 0xFF) + 1];
            if (std::any_of(count + 1, count + 257, [&](size_t c) { return c == m_blanks.size(); }))
                continue; // all alike in this byte
            for (size_t d = 1; d < 257; ++d)
                count[d] += count[d - 1];
            for (const Blank &b : m_blanks)
                sorted[count[(b.*half >> shift) & 0xFF]++] = b;
            m_blanks.swap(sorted);
        }
        // Words that share their first sixteen bytes and may still differ (longer ones, or
        // ones of other lengths, whose zero bytes the keys can't tell from their end) are
        // put in order of the whole word.
        for (auto group = m_blanks.begin(); group != m_blanks.end();) {
            auto next = group + 1;
            bool differ = group->length > 16;
            while (next != m_blanks.end() && next->key == group->key && next->key2 == group->key2) {
                differ = differ || next->length > 16 || next->length != group->length;
                ++next;
            }
            if (differ && next - group > 1) {
                work.Spend(static_cast<size_t>(next - group) * 16);
                std::stable_sort(group, next, [this](const Blank &a, const Blank &b) { return Word(a) < Word(b); });
            }
            group = next;
        }
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
        const uint64_t firstKey = Key(first), firstKey2 = first.size() > 8 ? Key(first.substr(8)) : 0;
        auto it = std::lower_bound(m_blanks.begin(), m_blanks.end(), first, [&](const Blank &b, std::string_view w) {
            if (b.key != firstKey)
                return b.key < firstKey;
            if (b.key2 != firstKey2)
                return b.key2 < firstKey2;
            return Word(b) < w;
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
        uint64_t key2; // and the next 8
    };
    // The first 8 bytes of text[from, from + length) in big-endian order, zeros behind the end.
    static uint64_t Key(std::string_view text, size_t from, size_t length) {
        unsigned char bytes[8] = {};
        std::memcpy(bytes, text.data() + from, std::min<size_t>(length, 8));
        uint64_t k = 0;
        for (unsigned char b : bytes)
            k = (k << 8) | b;
        return k;
    }
    static uint64_t Key(std::string_view word) { return Key(word, 0, word.size()); }
    std::string_view Word(const Blank &b) const { return m_text.substr(b.at + 1, b.length); }

    std::string_view m_text;
    std::vector<Blank> m_blanks;
};

// A 0-based place or npos as a 1-based position or 0.
Pos Found1(size_t at) {
    return at == std::string_view::npos ? 0 : at + 1;
}

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

// Every place of one word in the text, asked for mostly in forward order.
class Places {
public:
    explicit Places(size_t size) : m_size(size) {}
    void Add(Pos at) { m_at.push_back(at); }
    // The first at or behind `start` (1-based), 0 for none: InStr from `start`.
    Pos Next(Pos start) {
        if (start < 1)
            Fail(ErrInvalidCall);
        if (m_i > 0 && m_at[m_i - 1] >= start)
            m_i = static_cast<size_t>(std::lower_bound(m_at.begin(), m_at.end(), start) - m_at.begin());
        while (m_i < m_at.size() && m_at[m_i] < start)
            ++m_i;
        return m_i < m_at.size() ? m_at[m_i] : 0;
    }
    // The last that lies wholly in the first `count` characters (InStrRev's rule), or 0.
    Pos LastWithin(size_t count) const {
        if (count < m_size)
            return 0;
        auto it = std::upper_bound(m_at.begin(), m_at.end(), count - m_size + 1);
        return it == m_at.begin() ? 0 : *std::prev(it);
    }
    const std::vector<Pos> &All() const { return m_at; }

private:
    size_t m_size; // of the word
    std::vector<Pos> m_at;
    size_t m_i = 0;
};

// The scanning state of one call: the text, its cached searches and the variables
// that the channel rounds carry from one round (and actor) to the next.
struct Scan {
    explicit Scan(std::string_view t)
        : text(t), work(t.size()), words{Places(6), Places(5), Places(6), Places(7)}, openBrace(t, '{'), channelsLf(9),
          channelsBlankLf(10), keysLf(5), keysBlankLf(6), hiddenBlank(7), nameBlank(5), hiddenWord(6), nameWord(4),
          lineEnds(t, '\n'), closesBehindActor(t, '}'), opensBehindActor(t, '{'), closesBehindChannels(t, '}'),
          closesInFront(t, '}'), closesInFrontOfNext(t, '}'), channelOpens(t, '{'), roundLineEnds(t, '\n'),
          channelEnds(t, '}'), keysOpens(t, '{'), keysShuts(t, '}') {
        // The words the reading looks for, all in one pass instead of one search for each question.
        const char *d = t.data();
        const size_t n = t.size();
        auto is = [&](size_t i, std::string_view word) {
            return n - i >= word.size() && std::memcmp(d + i, word.data(), word.size()) == 0;
        };
        for (size_t i = 0; i < n; ++i) {
            switch (d[i]) {
            case 'a':
                if (is(i, "actor "))
                    words[0].Add(i + 1);
                break;
            case 'p':
                if (is(i, "prop "))
                    words[1].Add(i + 1);
                break;
            case 'l':
                if (is(i, "light "))
                    words[2].Add(i + 1);
                break;
            case 'c':
                if (is(i, "camera "))
                    words[3].Add(i + 1);
                else if (is(i, "channels\n"))
                    channelsLf.Add(i + 1);
                else if (is(i, "channels \n"))
                    channelsBlankLf.Add(i + 1);
                break;
            case 'k':
                if (is(i, "keys\n"))
                    keysLf.Add(i + 1);
                else if (is(i, "keys \n"))
                    keysBlankLf.Add(i + 1);
                break;
            case 'h':
                if (is(i, "hidden")) {
                    hiddenWord.Add(i + 1);
                    if (is(i, "hidden "))
                        hiddenBlank.Add(i + 1);
                }
                break;
            case 'n':
                if (is(i, "name")) {
                    nameWord.Add(i + 1);
                    if (is(i, "name "))
                        nameBlank.Add(i + 1);
                }
                break;
            default:
                break;
            }
        }
    }

    std::string_view text;
    WorkLimit work;
    std::array<Places, 4> words;
    NextOf openBrace;
    Places channelsLf, channelsBlankLf;
    Places keysLf, keysBlankLf, hiddenBlank, nameBlank, hiddenWord, nameWord;

    // The next or last character of a kind, one for each place that asks, as each asks
    // from places that move forward.
    NextOf lineEnds, closesBehindActor, opensBehindActor, closesBehindChannels;
    PrevOf closesInFront, closesInFrontOfNext;
    NextOf channelOpens, roundLineEnds, channelEnds, keysOpens, keysShuts;
    // The keys block read last, and what it gave.
    Pos keysBlockOpen = 0;
    double keysValue = 0;
    bool keysEnabled = false;

    std::string ChannelType, ChannelName;
    bool NoKeys = false;

    Pos lastOpen = 0, lastClose = 0;

    // The nearer "channels" line ahead ("channels" + line feed, or with a blank before it).
    Pos ChannelsLineAt(Pos start) {
        const Pos a = channelsLf.Next(start), b = channelsBlankLf.Next(start);
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
        size_t i = open - 1;
        for (; i < text.size(); ++i) {
            if (text[i] == '{')
                ++depth;
            else if (text[i] == '}' && --depth == 0) {
                close = i + 1;
                break;
            }
        }
        work.Spend(i - (open - 1));
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
    const Pos open = Found1(scan.openBrace.At(at - 1));
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

// Where Search goes behind a channel's opening line (ending at `lineEnd`): behind the
// next keys line, unless that line lies behind the "}" that closes the channel's own
// block. A channel without keys then leaves Search at that "}", so the keys of the
// channel behind it don't make the reader pass over that channel.
Pos KeysOrOwnClose(Scan &scan, Pos lineEnd, Pos keysAt, Pos behindKeys) {
    const std::string_view text = scan.text;
    const Pos open = lineEnd == 0 ? 0 : Found1(scan.channelOpens.At(lineEnd - 1));
    if (open == 0 || open >= keysAt)
        return behindKeys;
    scan.work.Spend(keysAt - open);
    int depth = 0;
    for (size_t i = open - 1; i + 1 < keysAt; ++i) {
        if (text[i] == '{')
            ++depth;
        else if (text[i] == '}' && --depth == 0)
            return i + 1;
    }
    return behindKeys;
}

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
        // An empty block holds no channel: the first round would take the actor's own
        // header in front of it for one, and the pose written from that doesn't open.
        if (close > open && text.substr(open, close - 1 - open).find_first_not_of(" \t\n") == std::string_view::npos)
            return ChannelsResult::Done;
    }
    bool first = true;
    std::unique_ptr<NeedleIndex> index;
    // The rounds begun at the current position: it never moves back, so only those can repeat.
    std::vector<RoundStart> seen;
    std::unordered_set<RoundStart, RoundStartHash> seenMany;
    Pos seenAt = cur;
    int32_t shownSeconds = -1;

    while (cur < blockEnd) {
        if (cur != seenAt) {
            seen.clear();
            seenMany.clear();
            seenAt = cur;
        }
        RoundStart start{search, scan.ChannelType, scan.ChannelName, scan.NoKeys};
        if (seen.size() < 8) {
            if (std::find(seen.begin(), seen.end(), start) != seen.end())
                break;
            seen.push_back(std::move(start));
        } else if (!seenMany.insert(std::move(start)).second) {
            break;
        }

        if (first && channelsAt == 0)
            break;
        // Later rounds look strictly behind Search: from Search itself they would find the
        // "name " line of the channel just read, which step 10 has moved Search onto.
        const Pos markFrom = first ? search : search + 1;
        Pos keysMark = scan.keysLf.Next(markFrom);
        if (keysMark == 0)
            keysMark = scan.keysBlankLf.Next(markFrom);
        Pos hiddenMark, nameMark;
        if (first) {
            hiddenMark = nameMark = InStr(text, "{", channelsAt);
        } else {
            hiddenMark = scan.hiddenBlank.Next(markFrom);
            nameMark = scan.nameBlank.Next(markFrom);
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
        const size_t back = mark >= 2 ? scan.closesInFront.Before(mark - 1) : std::string_view::npos;
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

        const Pos lineEnd = Found1(scan.roundLineEnds.At(place + 2));
        scan.work.Spend(lineEnd > place ? lineEnd - place : 0);
        const std::string line = StripControls(Mid(text, L(place) + 2, L(lineEnd) - L(place) - 2));
        const size_t blank = line.find(' ');
        if (blank != std::string::npos) {
            scan.ChannelType = line.substr(0, blank);
            scan.ChannelName = line.substr(blank + 1);
        } else {
            scan.ChannelType = line;
        }

        if (const Pos k = scan.keysLf.Next(search))
            search = KeysOrOwnClose(scan, lineEnd, k, k + 5);
        else if (const Pos k2 = scan.keysBlankLf.Next(search))
            search = KeysOrOwnClose(scan, lineEnd, k2, k2 + 6);

        if (Trim(scan.ChannelType).empty())
            break;
        if (scan.ChannelType == "//" || scan.ChannelType == "'" || scan.ChannelType == "#")
            continue; // a comment line in front of the channel

        const std::string needle = scan.ChannelType + " " + scan.ChannelName;
        // The dial's own opening line holds it as a rule: the search up to that line's end
        // finds the first one from the current position, at the cost of the way there.
        const Pos near = std::min(std::max(lineEnd, cur), limit);
        scan.work.Spend(near - cur + needle.size());
        Pos found = FindBefore(text, needle, cur, near);
        if (found == 0 && near < limit) {
            // Elsewhere: in a large block an index keeps the search from scanning the rest
            // of the block for each dial.
            if (!index && limit > position && limit - position >= session.IndexedChannelBlockMinimum)
                index = std::make_unique<NeedleIndex>(text, position, limit, scan.work);
            std::optional<Pos> indexed = index ? index->Find(needle, near, limit) : std::nullopt;
            if (!indexed)
                scan.work.Spend(limit - near);
            found = indexed ? *indexed : FindBefore(text, needle, near, limit);
        }
        if (found != 0) {
            cur = found + scan.ChannelType.size() + 1;
            Actor &actor = session.Actors[actorIndex];
            if (!actor.Channels[0].Name.empty())
                actor.Channels.emplace_back();
            Channel &channel = actor.Channels.back();
            const Pos nameEnd = InStr(text, "\n", cur);
            scan.work.Spend(nameEnd > cur ? nameEnd - cur : 0);
            channel.Name = std::string(Mid(text, L(cur), L(nameEnd) - L(cur)));
            out.lastLineEnd = nameEnd;
            out.any = true;

            // Display name and hidden count only in front of the first "}" behind the opening.
            const Pos close = Found1(scan.channelEnds.At(cur - 1));
            const Pos nameAt = scan.nameWord.Next(cur);
            if (nameAt > 0 && nameAt < close) {
                const Pos nameBlank = InStr(text, " ", nameAt);
                const Pos lineFeed = InStr(text, "\n", nameBlank);
                scan.work.Spend(lineFeed > nameBlank ? lineFeed - nameBlank : 0);
                channel.DisplayName = std::string(Mid(text, L(nameBlank) + 1, L(lineFeed) - L(nameBlank) - 1));
                channel.NameEnabled = true;
                search = nameAt;
            } else {
                channel.NameEnabled = false;
            }
            const Pos hiddenAt = scan.hiddenWord.Next(cur);
            if (hiddenAt > 0 && hiddenAt < close) {
                const Pos hiddenBlank = InStr(text, " ", hiddenAt);
                const Pos lineFeed = InStr(text, "\n", hiddenBlank);
                scan.work.Spend(lineFeed > hiddenBlank ? lineFeed - hiddenBlank : 0);
                channel.Hidden =
                    ToInt16(NumberValue(Mid(text, L(hiddenBlank) + 1, L(lineFeed) - L(hiddenBlank) - 1)) + 1);
                channel.HiddenEnabled = true;
                search = hiddenBlank + 1;
            } else {
                channel.HiddenEnabled = false;
            }

            if (!scan.NoKeys) {
                const Pos open = Found1(scan.keysOpens.At(cur - 1));
                if (open == 0)
                    Fail(ErrInvalidCall); // a search from position 0
                if (open != scan.keysBlockOpen) {
                    // Dials whose keys block is the same (it lies behind all of them) read it once.
                    const Pos shut = Found1(scan.keysShuts.At(open - 1));
                    const std::string_view keys = Mid(text, L(open), L(shut) - L(open) + 1);
                    scan.work.Spend(keys.size());
                    const size_t k = keys.find("k  ", std::min(keys.find('{'), keys.size()));
                    if (k == std::string_view::npos) {
                        scan.keysValue = 0;
                        scan.keysEnabled = false;
                    } else {
                        size_t e = keys.find('\n', k);
                        if (e == std::string_view::npos)
                            e = keys.size();
                        const std::string_view frameAndValue = Trim(keys.substr(k + 1, e - k - 1));
                        const size_t sp = frameAndValue.find(' ');
                        const std::string_view value =
                            sp == std::string_view::npos ? Mid(frameAndValue, 2) : Mid(frameAndValue, L(sp) + 3);
                        scan.keysValue = NumberValue(value);
                        scan.keysEnabled = value == "0" || scan.keysValue != 0;
                    }
                    scan.keysBlockOpen = open;
                }
                channel.Value = scan.keysValue;
                channel.ValueEnabled = scan.keysEnabled;
            }
            channel.Type = scan.ChannelType;
            ui.DoEvents();
        }

        if (!session.BatchMode) {
            if (ui.ProgressCancelling())
                return ChannelsResult::Cancelled;
            // The line reads the same until the next second.
            const int32_t seconds = SessionSeconds(session) - startTime;
            if (seconds != shownSeconds)
                ui.ProgressDetail(ElapsedLine(seconds));
            shownSeconds = seconds;
        }
    }
    return ChannelsResult::Done;
}

// Header lines of actors, in front of their channels, read from a copy of the header
// with carriage returns made line feeds and tabs deleted. Headers run to the first "}"
// or channels line, so several openings in front of one "}" have headers that end at the
// same place: they share one copy and the places of its words instead of copying the
// same stretch once for each.
class HeaderReader {
public:
    HeaderReader(std::string_view text, WorkLimit &work) : m_text(text), m_work(work) {}

    // The header text[begin, end) (0-based).
    void Read(Actor &actor, size_t begin, size_t end, bool cameraOrLight) {
        if (end != m_end || begin < m_mapped) {
            m_plain = Deleted(CrToLf(m_text.substr(begin, end - begin)), '\t');
            m_work.Spend(2 * (end - begin) + 64);
            for (size_t w = 0; w < kWords.size(); ++w) {
                m_at[w].clear();
                const std::string_view word = kWords[w];
                for (size_t p = m_plain.find(word); p != std::string::npos; p = m_plain.find(word, p + 1))
                    m_at[w].push_back(p);
                m_next[w] = 0;
            }
            m_begin = m_mapped = begin;
            m_end = end;
            m_offset = 0;
        }
        // Where `begin` lies in the copy: the tabs in front of it are gone.
        m_work.Spend(begin - m_mapped);
        for (size_t i = m_mapped; i < begin; ++i)
            if (m_text[i] != '\t')
                ++m_offset;
        m_mapped = begin;
        const std::string_view header = std::string_view(m_plain).substr(m_offset);
        // The first line feed + word of this header (1-based in it), or 0.
        auto at = [&](size_t w) -> Pos {
            while (m_next[w] < m_at[w].size() && m_at[w][m_next[w]] < m_offset)
                ++m_next[w];
            return m_next[w] < m_at[w].size() ? m_at[w][m_next[w]] - m_offset + 1 : 0;
        };
        auto rest = [&](Pos lf, size_t w) {
            const std::string_view value = RestOfLine(header, lf, kWords[w].substr(1));
            m_work.Spend(value.size());
            return value;
        };
        if (at(kOn)) {
            actor.OnOff = 2;
            actor.OnOffEnabled = true;
        } else if (at(kOff)) {
            actor.OnOff = 1;
            actor.OnOffEnabled = true;
        } else {
            actor.OnOffEnabled = false;
        }
        if (const Pos lf = at(kHidden)) {
            // Only the digit in front of the line end counts: "hidden 10" reads as 0.
            const Pos lineEnd = InStr(header, "\n", lf + 1);
            m_work.Spend(lineEnd > lf ? lineEnd - lf : 0);
            actor.Hidden = ToInt16(NumberValue(Mid(header, L(lineEnd) - 1, 1)) + 1);
            actor.HiddenEnabled = true;
        } else {
            actor.HiddenEnabled = false;
        }
        if (const Pos lf = at(kStorageOffset); lf && cameraOrLight)
            actor.StorageOffset = std::string(Trim(rest(lf, kStorageOffset)));
        if (const Pos lf = at(kGeomResource); lf && cameraOrLight)
            actor.GeomResource = ToInt16(NumberValue(rest(lf, kGeomResource)) + 1);
        if (const Pos lf = at(kLightType); lf && cameraOrLight)
            actor.LightType = ToInt16(NumberValue(rest(lf, kLightType)) + 1);
        if (const Pos lf = at(kName)) {
            actor.DisplayName = std::string(Trim(rest(lf, kName)));
            actor.NameEnabled = true;
        } else {
            actor.NameEnabled = false;
        }
        if (const Pos lf = at(kObjFileGeom); lf && cameraOrLight)
            actor.ObjFileGeom = std::string(Trim(rest(lf, kObjFileGeom)));
    }

private:
    enum { kOn, kOff, kHidden, kStorageOffset, kGeomResource, kLightType, kName, kObjFileGeom };
    static constexpr std::array<std::string_view, 8> kWords = {
        "\non\n", "\noff\n", "\nhidden", "\nstorageOffset", "\ngeomResource", "\nlightType", "\nname", "\nobjFileGeom"};

    std::string_view m_text;
    WorkLimit &m_work;
    size_t m_begin = 0, m_end = std::string_view::npos; // the stretch of the copy
    size_t m_mapped = 0, m_offset = 0;                  // a place of the text and of the copy
    std::string m_plain;
    std::array<std::vector<size_t>, 8> m_at;
    std::array<size_t, 8> m_next{};
};

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

void ReadCustomMaterialOwners(Session &session, Scan &scan) {
    const std::string_view text = scan.text;
    WorkLimit &work = scan.work;
    session.CustomMaterialsFound = false;
    // The first place of each type + blank + name: all begin with one of the four words.
    std::vector<std::string> keys;
    std::vector<size_t> keyOf(session.Actors.size(), std::string::npos);
    for (size_t i = 0; i < session.Actors.size(); ++i) {
        const Actor &a = session.Actors[i];
        if (!a.Name.empty() && a.Type != "prop") {
            keyOf[i] = keys.size();
            keys.push_back(a.Type + " " + a.Name);
        }
    }
    std::vector<size_t> wordPlaces;
    for (Places &word : scan.words)
        for (Pos at : word.All())
            wordPlaces.push_back(at - 1);
    std::sort(wordPlaces.begin(), wordPlaces.end());
    std::vector<size_t> first = FirstKeysAt(text, wordPlaces, keys, work);
    // A key that begins otherwise (a single actor read from the text's start) is searched as it is.
    for (size_t k = 0; k < keys.size(); ++k)
        if (std::none_of(kActorWords.begin(), kActorWords.end(),
                         [&](std::string_view word) { return StartsWith(keys[k], word); })) {
            work.Spend(text.size());
            first[k] = InStr(text, keys[k]);
        }
    const Occurrences customAt(text, "customMaterial");
    Finder materialAt(text, "material ");
    // The blocks of several owners may be the same ones, when a count reaches past an
    // owner's own blocks: each keyword line is read once.
    std::optional<MaterialScan> blocks;
    NextOf closes(text, '}'), lineEnds(text, '\n');
    std::unordered_map<std::string, Occurrences> typeAt;

    for (size_t i = 0; i < session.Actors.size(); ++i) {
        const std::string type = session.Actors[i].Type;
        const std::string name = session.Actors[i].Name;
        if (name.empty() || type == "prop")
            continue;
        const Pos start = first[keyOf[i]];
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
            // A block runs to the first "}" behind it, or to the text's end.
            const Pos close = Found1(closes.At(material + 9));
            const Pos blockEnd = close != 0 ? close : text.size() + 1;
            const std::string_view block = Mid(text, L(material), L(blockEnd) - L(material));
            auto &materials = session.Figures[static_cast<size_t>(figureIndex)].Materials;
            const int materialIndex = static_cast<int>(&AppendElement(materials) - materials.data());
            if (!blocks)
                blocks.emplace(session, text, work);
            blocks->Parse(material - 1, blockEnd - 1, figureIndex, materialIndex);
            const size_t lineFeed = lineEnds.At(material - 1);
            const Pos lf = lineFeed == std::string_view::npos || lineFeed + 1 >= blockEnd ? 0 : lineFeed + 2 - material;
            work.Spend(lf + 16);
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
    FillDialList(session, 0);
    ShowLoadedChannelPage(pose, session.Options.chkDisableThighLength);
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
    HeaderReader headers(text, scan.work);

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

        const Pos lineEnd = Found1(scan.lineEnds.At(position - 1));
        scan.work.Spend(lineEnd > position ? lineEnd - position : 0);
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
        const Pos firstClose = Found1(scan.closesBehindActor.At(position - 1));
        if (headerEnd == 0 || (firstClose != 0 && firstClose < headerEnd))
            headerEnd = firstClose;
        const bool cameraOrLight = type == "camera" || type == "light";
        Mid(text, L(position), L(headerEnd) - L(position)); // a header that never ends is a failure
        headers.Read(session.Actors[actorIndex], position - 1, headerEnd - 1, cameraOrLight);

        ActorChannels channels;
        if (ReadChannels(session, scan, actorIndex, position, blockEnd, started, channels) ==
            ChannelsResult::Cancelled) {
            CancelLoad(session);
            return false;
        }

        Pos tailStart = 0;
        if (channels.any)
            tailStart = Found1(scan.closesBehindChannels.At(channels.lastLineEnd - 1));
        else if (position != 0)
            tailStart = Found1(scan.opensBehindActor.At(position - 1)) + 1;
        if (tailStart != 0) {
            const size_t before = next.at != 0 ? next.at - 1 : text.size();
            const size_t lastClose = scan.closesInFrontOfNext.Before(before);
            const Pos tailEnd = lastClose == std::string_view::npos ? 0 : lastClose + 1;
            ReadTail(session.Actors[actorIndex], Mid(text, L(tailStart), L(tailEnd) - L(tailStart)), cameraOrLight);
        }

        if (!batch)
            ui.ProgressValue(std::min(ToInt32(RoundHalfEven(static_cast<double>(position) / 100)) + 1, barMax));
        position += 6;
        if (singleActor)
            break;
    }

    ReadCustomMaterialOwners(session, scan);

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
