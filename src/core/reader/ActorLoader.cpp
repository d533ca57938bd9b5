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
#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <bit>
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
// for each dial. The words behind the blanks of the block are gathered once each, in
// their order (a needle "type name" can only stand where the word behind its blank
// begins with the name's first word, so its candidates are one short run of that order),
// and each word keeps the places of its blanks in text order.
class NeedleIndex {
public:
    static constexpr size_t kMaxType = 256; // longer type words are searched directly
    static constexpr size_t kMaxCandidates = 256;

    // Blanks from `from` up to where a needle that starts before `limit` can have its blank.
    // `charge` is the allowance its work is taken from.
    NeedleIndex(std::string_view text, Pos from, Pos limit, WorkLimit &work, void (WorkLimit::*charge)(size_t))
        : m_text(text) {
        const size_t end = std::min(text.size(), limit - 1 + kMaxType);
        // Only a blank behind a letter of a type word and in front of a word can be a needle's.
        // Most words come back many times ("0", the dial names): each is kept once, found
        // again by a hash of its first sixteen bytes and its length.
        std::vector<uint32_t> table(64, kEmpty);
        std::vector<Blank> blanks;
        const char *d = text.data();
        const size_t n = text.size();
        blanks.reserve((end - std::min(end, from)) / 16);
        // The blank at d[i], behind a character that doesn't end a word.
        auto add = [&](size_t i) {
            size_t length = 0;
            while (i + 1 + length < n && !EndsWord(d[i + 1 + length]))
                ++length;
            if (length == 0)
                return;
            uint64_t key, key2;
            if (n - (i + 1) >= 16) {
                key = Loaded(d + i + 1, length);
                key2 = length > 8 ? Loaded(d + i + 9, length - 8) : 0;
            } else {
                key = Key(text, i + 1, length);
                key2 = length > 8 ? Key(text, i + 9, length - 8) : 0;
            }
            if (2 * (m_words.size() + 1) > table.size())
                Grow(table);
            const std::string_view word = text.substr(i + 1, length);
            const size_t mask = table.size() - 1;
            size_t slot = Hash(key, key2, length, word) & mask;
            while (table[slot] != kEmpty) {
                const Word &w = m_words[table[slot]];
                if (w.key == key && w.key2 == key2 && w.length == length &&
                    (length <= 16 || text.substr(w.at, length) == word))
                    break;
                slot = (slot + 1) & mask;
            }
            if (table[slot] == kEmpty) {
                table[slot] = static_cast<uint32_t>(m_words.size());
                m_words.push_back({key, key2, i + 1, length, 0, 0});
            }
            ++m_words[table[slot]].count;
            blanks.push_back({i, table[slot]});
        };
        size_t i = std::max<size_t>(from, 2) - 1;
#if defined(__SSE2__)
        // Sixteen places at a time: blanks between two characters that don't end words.
        auto ends = [](__m128i v) {
            auto eq = [&](char c) { return _mm_cmpeq_epi8(v, _mm_set1_epi8(c)); };
            return _mm_or_si128(_mm_or_si128(eq(' '), eq('\t')), _mm_or_si128(eq('\n'), eq('\r')));
        };
        for (; i + 16 <= end && i + 17 <= n; i += 16) {
            const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i *>(d + i));
            const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i *>(d + i - 1));
            const __m128i behind = _mm_loadu_si128(reinterpret_cast<const __m128i *>(d + i + 1));
            const __m128i blank =
                _mm_andnot_si128(_mm_or_si128(ends(before), ends(behind)), _mm_cmpeq_epi8(here, _mm_set1_epi8(' ')));
            for (unsigned bits = static_cast<unsigned>(_mm_movemask_epi8(blank)); bits != 0; bits &= bits - 1)
                add(i + static_cast<size_t>(std::countr_zero(bits)));
        }
#endif
        for (; i < end; ++i)
            if (d[i] == ' ' && d[i - 1] != ' ' && !EndsWord(d[i - 1]))
                add(i);
        (work.*charge)(2 * (end - (from - 1)) + 32 * blanks.size());
        // The words in order: by their first sixteen bytes, then the whole word.
        std::vector<uint32_t> order(m_words.size());
        for (uint32_t w = 0; w < order.size(); ++w)
            order[w] = w;
        std::sort(order.begin(), order.end(), [this](uint32_t a, uint32_t b) {
            const Word &x = m_words[a], &y = m_words[b];
            if (x.key != y.key)
                return x.key < y.key;
            if (x.key2 != y.key2)
                return x.key2 < y.key2;
            return Text(x) < Text(y);
        });
        // Blanks whose words share their first sixteen bytes and may still differ (longer
        // words, or words of other lengths) cost a comparison of the whole words each.
        for (size_t g = 0; g < order.size();) {
            const Word &head = m_words[order[g]];
            size_t next = g, blanksOfGroup = 0;
            bool differ = false;
            for (;
                 next < order.size() && m_words[order[next]].key == head.key && m_words[order[next]].key2 == head.key2;
                 ++next) {
                const Word &w = m_words[order[next]];
                differ = differ || w.length > 16 || w.length != head.length;
                blanksOfGroup += w.count;
            }
            if (differ && blanksOfGroup > 1)
                (work.*charge)(blanksOfGroup * 16);
            g = next;
        }
        std::vector<Word> sorted(m_words.size());
        std::vector<uint32_t> rank(m_words.size());
        size_t first = 0;
        for (size_t r = 0; r < order.size(); ++r) {
            sorted[r] = m_words[order[r]];
            sorted[r].first = first;
            first += sorted[r].count;
            rank[order[r]] = static_cast<uint32_t>(r);
        }
        m_words.swap(sorted);
        // The places of each word's blanks, in text order.
        m_at.resize(blanks.size());
        std::vector<size_t> fill(m_words.size());
        for (size_t r = 0; r < m_words.size(); ++r)
            fill[r] = m_words[r].first;
        for (const Blank &b : blanks)
            m_at[fill[rank[b.word]]++] = b.at;
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
        const uint64_t firstKey = Key(first, 0, first.size()),
                       firstKey2 = first.size() > 8 ? Key(first, 8, first.size() - 8) : 0;
        const auto begin =
            std::lower_bound(m_words.begin(), m_words.end(), first, [&](const Word &w, std::string_view f) {
                if (w.key != firstKey)
                    return w.key < firstKey;
                if (w.key2 != firstKey2)
                    return w.key2 < firstKey2;
                return Text(w) < f;
            });
        auto end = begin;
        size_t candidates = 0;
        for (; end != m_words.end() && Text(*end).substr(0, first.size()) == first; ++end)
            if ((candidates += end->count) > kMaxCandidates)
                return std::nullopt;
        // A blank at `b` (0-based) makes a needle that starts at b - typeLength + 1 (1-based).
        const size_t lowest = std::max<Pos>(start, 1) + typeLength - 1;
        Pos best = 0;
        for (auto w = begin; w != end; ++w) {
            const auto places = m_at.begin() + static_cast<std::ptrdiff_t>(w->first);
            for (auto it = std::lower_bound(places, places + static_cast<std::ptrdiff_t>(w->count), lowest);
                 it != places + static_cast<std::ptrdiff_t>(w->count); ++it) {
                const Pos at = *it - typeLength + 1;
                if (at >= limit || (best != 0 && at >= best))
                    break;
                if (m_text.substr(at - 1, needle.size()) == needle) {
                    best = at;
                    break;
                }
            }
        }
        return best;
    }

private:
    static constexpr uint32_t kEmpty = 0xFFFFFFFF;
    struct Word {
        uint64_t key;  // the first 8 bytes: orders as the words do, and cheaply
        uint64_t key2; // and the next 8
        size_t at;     // 0-based place of one of its copies
        size_t length;
        size_t count; // of its blanks
        size_t first; // where its places begin in m_at
    };
    struct Blank {
        size_t at; // 0-based position of the blank
        uint32_t word;
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
    // Key() of `length` bytes at `p`, where eight can be read.
    static uint64_t Loaded(const char *p, size_t length) {
        uint64_t v;
        std::memcpy(&v, p, 8);
        if constexpr (std::endian::native == std::endian::little)
            v = __builtin_bswap64(v);
        return length >= 8 ? v : v & ~(~uint64_t{0} >> (8 * length));
    }
    static size_t Hash(uint64_t key, uint64_t key2, size_t length, std::string_view word) {
        // The keys hold a short word in their high bytes: those are mixed into the low bits.
        uint64_t h = key ^ (key2 * 0x9E3779B97F4A7C15ULL) ^ length;
        if (length > 16)
            h ^= std::hash<std::string_view>{}(word);
        h = (h ^ (h >> 33)) * 0xFF51AFD7ED558CCDULL;
        h = (h ^ (h >> 33)) * 0xC4CEB9FE1A85EC53ULL;
        return static_cast<size_t>(h ^ (h >> 33));
    }
    void Grow(std::vector<uint32_t> &table) const {
        std::vector<uint32_t> bigger(table.size() * 2, kEmpty);
        const size_t mask = bigger.size() - 1;
        for (uint32_t w = 0; w < m_words.size(); ++w) {
            const Word &word = m_words[w];
            size_t slot = Hash(word.key, word.key2, word.length, Text(word)) & mask;
            while (bigger[slot] != kEmpty)
                slot = (slot + 1) & mask;
            bigger[slot] = w;
        }
        table.swap(bigger);
    }
    std::string_view Text(const Word &w) const {
        return m_text.substr(w.at, w.length);
    }

    std::string_view m_text;
    std::vector<Word> m_words; // in order, once each
    std::vector<size_t> m_at;  // the places of the words' blanks (0-based), word by word
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

// The "}" in text[from, to) that brings the nesting counted from `from` back to 0
// (0-based), or npos. Only the braces are looked at, found sixteen places at a time.
size_t DepthClose(std::string_view text, size_t from, size_t to) {
    const char *d = text.data();
    int depth = 0;
    auto brace = [&](size_t i) {
        if (d[i] == '{')
            ++depth;
        else if (--depth == 0)
            return true;
        return false;
    };
    size_t i = from;
#if defined(__SSE2__)
    const __m128i open = _mm_set1_epi8('{'), close = _mm_set1_epi8('}');
    for (; i + 16 <= to; i += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(d + i));
        for (unsigned bits = static_cast<unsigned>(
                 _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, open), _mm_cmpeq_epi8(v, close))));
             bits != 0; bits &= bits - 1) {
            const size_t at = i + static_cast<size_t>(std::countr_zero(bits));
            if (brace(at))
                return at;
        }
    }
#endif
    for (; i < to; ++i)
        if ((d[i] == '{' || d[i] == '}') && brace(i))
            return i;
    return std::string_view::npos;
}

// StripControls(raw), without a copy when it would equal `raw`; otherwise the copy is
// made in `room`.
std::string_view WithoutControls(std::string_view raw, std::string &room) {
    bool plain = raw.empty() || (raw.front() != ' ' && raw.back() != ' ');
    for (size_t i = 0; plain && i < raw.size(); ++i)
        plain = raw[i] != '\t' && raw[i] != '\r' && raw[i] != '\n';
    if (plain)
        return raw;
    room = StripControls(raw);
    return room;
}

// Every place of one word in the text, asked for mostly in forward order.
class Places {
public:
    explicit Places(size_t size) : m_size(size) {}
    void Add(Pos at) { m_at.push_back(at); }
    void Reserve(size_t n) { m_at.reserve(n); }
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
        for (Places *p : {&hiddenBlank, &nameBlank, &hiddenWord, &nameWord})
            p->Reserve(n / 256);
        // The first two characters of the words: most places begin with neither pair, and
        // one look into a table of pairs passes them over.
        static const std::array<uint64_t, 1024> pairs = [] {
            std::array<uint64_t, 1024> bits{};
            for (const char *w : {"ac", "pr", "li", "ca", "ch", "cu", "ke", "hi", "na", "\nt", "\nf"}) {
                const unsigned pair = static_cast<unsigned char>(w[0]) << 8 | static_cast<unsigned char>(w[1]);
                bits[pair >> 6] |= uint64_t{1} << (pair & 63);
            }
            return bits;
        }();
        size_t i = 0;
#if defined(__SSE2__)
        // Sixteen places at a time: a place is visited when its pair of characters is one of
        // the pairs above.
        auto eq = [](__m128i v, char c) { return _mm_cmpeq_epi8(v, _mm_set1_epi8(c)); };
        for (; i + 17 <= n; i += 16) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i *>(d + i));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i *>(d + i + 1));
            const __m128i c = eq(a, 'c');
            __m128i m = _mm_and_si128(eq(a, 'a'), eq(b, 'c'));
            m = _mm_or_si128(m, _mm_and_si128(eq(a, 'p'), eq(b, 'r')));
            m = _mm_or_si128(m, _mm_and_si128(_mm_or_si128(eq(a, 'l'), eq(a, 'h')), eq(b, 'i')));
            m = _mm_or_si128(m, _mm_and_si128(_mm_or_si128(c, eq(a, 'n')), eq(b, 'a')));
            m = _mm_or_si128(m, _mm_and_si128(c, _mm_or_si128(eq(b, 'h'), eq(b, 'u'))));
            m = _mm_or_si128(m, _mm_and_si128(eq(a, 'k'), eq(b, 'e')));
            m = _mm_or_si128(m, _mm_and_si128(eq(a, '\n'), _mm_or_si128(eq(b, 't'), eq(b, 'f'))));
            for (unsigned bits = static_cast<unsigned>(_mm_movemask_epi8(m)); bits != 0; bits &= bits - 1)
                Visit(d, n, i + static_cast<size_t>(std::countr_zero(bits)));
        }
#endif
        // No word is one character long, so the last character begins none.
        for (; i + 1 < n; ++i) {
            const unsigned pair = static_cast<unsigned char>(d[i]) << 8 | static_cast<unsigned char>(d[i + 1]);
            if ((pairs[pair >> 6] >> (pair & 63) & 1) != 0)
                Visit(d, n, i);
        }
    }

    // Records the words that begin at d[i].
    void Visit(const char *d, size_t n, size_t i) {
        switch (d[i]) {
        case 'a':
            if (Is(d, n, i, "actor "))
                words[0].Add(i + 1);
            break;
        case 'p':
            if (Is(d, n, i, "prop "))
                words[1].Add(i + 1);
            break;
        case 'l':
            if (Is(d, n, i, "light "))
                words[2].Add(i + 1);
            break;
        case 'c':
            if (Is(d, n, i, "camera "))
                words[3].Add(i + 1);
            else if (Is(d, n, i, "channels\n"))
                channelsLf.Add(i + 1);
            else if (Is(d, n, i, "channels \n"))
                channelsBlankLf.Add(i + 1);
            else if (Is(d, n, i, "customMaterial"))
                customMaterial.push_back(i + 1);
            break;
        case 'k':
            if (Is(d, n, i, "keys\n"))
                keysLf.Add(i + 1);
            else if (Is(d, n, i, "keys \n"))
                keysBlankLf.Add(i + 1);
            break;
        case 'h':
            if (Is(d, n, i, "hidden")) {
                hiddenWord.Add(i + 1);
                if (Is(d, n, i, "hidden "))
                    hiddenBlank.Add(i + 1);
            }
            break;
        case '\n':
            if (thighLength == 0 && Is(d, n, i, "\nthighLength "))
                thighLength = i + 1;
            else if (figure == 0 && Is(d, n, i, "\nfigure"))
                figure = i + 1;
            break;
        case 'n':
            if (Is(d, n, i, "name")) {
                nameWord.Add(i + 1);
                if (Is(d, n, i, "name "))
                    nameBlank.Add(i + 1);
            }
            break;
        default:
            break;
        }
    }

    // Whether `word` stands at d[i]; its length is known here, so the comparison is a few loads.
    template <size_t N> static bool Is(const char *d, size_t n, size_t i, const char (&word)[N]) {
        return n - i >= N - 1 && std::memcmp(d + i, word, N - 1) == 0;
    }

    std::string_view text;
    WorkLimit work;
    std::array<Places, 4> words;
    std::vector<Pos> customMaterial; // every "customMaterial"
    Pos thighLength = 0, figure = 0; // the first line feed + "thighLength " and + "figure"
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
    std::string strippedLine, needle; // kept for their room, filled anew in each round
    bool NoKeys = false;

    Pos lastOpen = 0, lastClose = 0;
    // The last answer of KeysOrOwnClose: the "}" in front of the keys line that closes
    // the "{" at ownCloseOpen, or 0.
    Pos ownCloseOpen = 0, ownCloseKeys = 0, ownClose = 0;

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
        const size_t i = DepthClose(text, open - 1, text.size());
        work.Spend((i == std::string_view::npos ? text.size() : i) - (open - 1));
        lastOpen = open;
        lastClose = Found1(i);
        return lastClose;
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
    const Pos open = lineEnd == 0 ? 0 : Found1(scan.channelOpens.At(lineEnd - 1));
    if (open == 0 || open >= keysAt)
        return behindKeys;
    scan.work.Spend(keysAt - open);
    // A dial's line is read twice (once more in the round behind it), with the same keys line.
    if (open != scan.ownCloseOpen || keysAt != scan.ownCloseKeys) {
        scan.ownCloseOpen = open;
        scan.ownCloseKeys = keysAt;
        scan.ownClose = Found1(DepthClose(scan.text, open - 1, keysAt - 1));
    }
    return scan.ownClose != 0 ? scan.ownClose : behindKeys;
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
    size_t scanned = 0; // by the searches behind the dials' own lines
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
        const std::string_view line =
            WithoutControls(Mid(text, L(place) + 2, L(lineEnd) - L(place) - 2), scan.strippedLine);
        const size_t blank = line.find(' ');
        if (blank != std::string::npos) {
            scan.ChannelType.assign(line.substr(0, blank));
            scan.ChannelName.assign(line.substr(blank + 1));
        } else {
            scan.ChannelType.assign(line);
        }

        if (const Pos k = scan.keysLf.Next(search))
            search = KeysOrOwnClose(scan, lineEnd, k, k + 5);
        else if (const Pos k2 = scan.keysBlankLf.Next(search))
            search = KeysOrOwnClose(scan, lineEnd, k2, k2 + 6);

        if (Trim(scan.ChannelType).empty())
            break;
        if (scan.ChannelType == "//" || scan.ChannelType == "'" || scan.ChannelType == "#")
            continue; // a comment line in front of the channel

        std::string &needle = scan.needle;
        needle.assign(scan.ChannelType).append(" ").append(scan.ChannelName);
        // The dial's own opening line holds it as a rule: the search up to that line's end
        // finds the first one from the current position, at the cost of the way there.
        const Pos near = std::min(std::max(lineEnd, cur), limit);
        scan.work.Scan(near - cur + needle.size());
        Pos found = FindBefore(text, needle, cur, near);
        if (found == 0 && near < limit) {
            // Elsewhere: an index keeps the search from scanning the rest of the block for
            // each dial, in a large block at once, in a small one when its searches have
            // looked at it a few times over (each named dial is looked for again behind
            // itself, and that search mostly finds nothing). A small block's index takes
            // little memory, and is counted as searching.
            const size_t block = limit > position ? limit - position : 0;
            if (!index && block > 0) {
                if (block >= session.IndexedChannelBlockMinimum)
                    index = std::make_unique<NeedleIndex>(text, position, limit, scan.work, &WorkLimit::Spend);
                else if (scanned / block >= session.IndexedChannelRescans)
                    index = std::make_unique<NeedleIndex>(text, position, limit, scan.work, &WorkLimit::Scan);
            }
            std::optional<Pos> indexed = index ? index->Find(needle, near, limit) : std::nullopt;
            if (!indexed) {
                scan.work.Scan(limit - near);
                scanned += limit - near;
            }
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
    // The first of `places` (ascending, 1-based) at or behind `start`, or 0.
    auto nextOf = [](const std::vector<Pos> &places, Pos start) -> Pos {
        auto it = std::lower_bound(places.begin(), places.end(), start);
        return it == places.end() ? 0 : *it;
    };
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
        // The opening words were found in the first pass; another type is searched for once.
        const auto word = std::find(kActorWords.begin(), kActorWords.end(), type + " ");
        Pos end;
        if (word != kActorWords.end()) {
            end = nextOf(scan.words[static_cast<size_t>(word - kActorWords.begin())].All(), start + 6);
        } else {
            auto [it, fresh] = typeAt.try_emplace(type, text, type + " ");
            end = it->second.NextAt(start + 6);
        }
        const Pos custom = nextOf(scan.customMaterial, start);
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
    Scan scan(text);
    const Pos thigh = scan.thighLength;
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
    const Pos figure = scan.figure;
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
