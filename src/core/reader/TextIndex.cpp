#include "core/reader/TextIndex.h"

#include "core/platform/Failure.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace gelvane {

namespace {

// Hashes modulo two primes below 2^31, packed in 64 bits; a match is always confirmed
// by comparing the text.
constexpr uint64_t kMod1 = 2147483647, kMod2 = 2147483629;
constexpr uint64_t kBase1 = 1000003, kBase2 = 999983;

template <class H> H Extend(H h, unsigned char c) {
    return {(h.a * kBase1 + c + 1) % kMod1, (h.b * kBase2 + c + 1) % kMod2};
}

template <class H> uint64_t Packed(const H &h) {
    return (h.a << 32) | h.b;
}

// A trie of texts over bytes: node 0 is the root. The children of a node are a list in
// one array; the root's are a table, as it has the most.
class Trie {
public:
    Trie() { m_rootChild.fill(0); }
    // Adds `word` (walked in the given direction) for pattern `index`.
    void Add(std::string_view word, bool reversed, int32_t index) {
        uint32_t node = 0;
        for (size_t i = 0; i < word.size(); ++i) {
            const unsigned char c = static_cast<unsigned char>(reversed ? word[word.size() - 1 - i] : word[i]);
            uint32_t child = Child(node, c);
            if (child == 0) {
                child = static_cast<uint32_t>(m_nodes.size());
                m_nodes.push_back({0, 0, c, -1});
                if (node == 0) {
                    m_rootChild[c] = child;
                } else {
                    m_nodes[child].sibling = m_nodes[node].firstChild;
                    m_nodes[node].firstChild = child;
                }
            }
            node = child;
        }
        if (m_next.size() <= static_cast<size_t>(index))
            m_next.resize(static_cast<size_t>(index) + 1, -1);
        m_next[static_cast<size_t>(index)] = m_nodes[node].terminal;
        m_nodes[node].terminal = index;
    }
    // The child of `node` by `c`, or 0 when there is none (the root is nobody's child).
    uint32_t Child(uint32_t node, unsigned char c) const {
        if (node == 0)
            return m_rootChild[c];
        for (uint32_t child = m_nodes[node].firstChild; child != 0; child = m_nodes[child].sibling)
            if (m_nodes[child].c == c)
                return child;
        return 0;
    }
    // The first pattern that ends at `node`, then each next one, -1 at the end.
    int32_t First(uint32_t node) const { return m_nodes[node].terminal; }
    int32_t Next(int32_t index) const { return m_next[static_cast<size_t>(index)]; }

private:
    struct Node {
        uint32_t firstChild, sibling;
        unsigned char c;
        int32_t terminal;
    };
    std::vector<Node> m_nodes{Node{0, 0, 0, -1}};
    std::array<uint32_t, 256> m_rootChild;
    std::vector<int32_t> m_next; // by pattern index: the next pattern that ends at the same node
};

} // namespace

namespace {

size_t Allowance(size_t textSize, size_t fixed, size_t perCharacter) {
    return textSize > (std::numeric_limits<size_t>::max() - fixed) / perCharacter
               ? std::numeric_limits<size_t>::max()
               : fixed + perCharacter * textSize;
}

void Take(size_t &left, size_t units) {
    if (units > left)
        Fail(ErrOutOfMemory);
    left -= units;
}

} // namespace

WorkLimit::WorkLimit(size_t textSize)
    : m_left(Allowance(textSize, size_t{16} << 20, 8)), m_scanLeft(Allowance(textSize, size_t{64} << 20, 32)) {}

void WorkLimit::Spend(size_t units) {
    Take(m_left, units);
}

void WorkLimit::Scan(size_t characters) {
    Take(m_scanLeft, characters);
}

size_t SearchIn(std::string_view text, std::string_view needle, size_t begin, size_t end) {
    end = std::min(end, text.size());
    if (begin >= end || end - begin < needle.size())
        return 0;
    const char *d = text.data();
    if (!needle.empty()) {
        // Most searches here are short and find their needle soon: a few places of its first
        // character are tried before memmem, which prepares a table for every call.
        const char *at = d + begin;
        const char *const last = d + end - needle.size(); // the last place it can begin
        for (int tries = 0; tries < 8 && at <= last; ++tries) {
            at = static_cast<const char *>(std::memchr(at, needle[0], static_cast<size_t>(last - at) + 1));
            if (at == nullptr)
                return 0;
            if (std::memcmp(at, needle.data(), needle.size()) == 0)
                return static_cast<size_t>(at - d) + 1;
            ++at;
        }
        if (at > last)
            return 0;
        begin = static_cast<size_t>(at - d);
    }
    const void *hit = memmem(d + begin, end - begin, needle.data(), needle.size());
    return hit ? static_cast<size_t>(static_cast<const char *>(hit) - d) + 1 : 0;
}

size_t Finder::Next(size_t start) {
    if (start < 1)
        Fail(ErrInvalidCall);
    if (start > m_text.size() + 1)
        return 0;
    if (m_known && start >= m_from && (m_found == 0 || m_found >= start))
        return m_found;
    if (m_known && start < m_from) {
        // Only the stretch in front of the one already searched needs a look.
        const size_t hit = SearchIn(m_text, m_needle, start - 1, m_from - 1 + m_needle.size() - 1);
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

size_t NextOf::At(size_t from) {
    constexpr size_t npos = std::string_view::npos;
    if (from >= m_text.size())
        return npos;
    if (m_from != npos && from >= m_from && (m_found == npos || m_found >= from))
        return m_found;
    m_from = from;
    const void *hit = std::memchr(m_text.data() + from, m_c, m_text.size() - from);
    m_found = hit ? static_cast<size_t>(static_cast<const char *>(hit) - m_text.data()) : npos;
    return m_found;
}

size_t PrevOf::Before(size_t upTo) {
    constexpr size_t npos = std::string_view::npos;
    upTo = std::min(upTo, m_text.size());
    if (upTo < m_upTo) {
        if (m_found == npos || m_found < upTo)
            return m_found; // nothing lies between the last one and where it was asked from
        m_upTo = 0;         // asked from further back: search afresh
        m_found = npos;
    }
    const void *hit = memrchr(m_text.data() + m_upTo, m_c, upTo - m_upTo);
    if (hit)
        m_found = static_cast<size_t>(static_cast<const char *>(hit) - m_text.data());
    m_upTo = upTo;
    return m_found;
}

Occurrences::Occurrences(std::string_view text, std::string_view needle) : m_size(needle.size()) {
    if (needle.empty())
        return;
    for (size_t p = 1; (p = SearchIn(text, needle, p - 1, text.size())) != 0; ++p)
        m_at.push_back(p);
}

size_t Occurrences::NextAt(size_t start) const {
    auto it = std::lower_bound(m_at.begin(), m_at.end(), start);
    return it == m_at.end() ? 0 : *it;
}

size_t Occurrences::LastWithin(size_t count) const {
    if (count < m_size)
        return 0;
    auto it = std::upper_bound(m_at.begin(), m_at.end(), count - m_size + 1);
    return it == m_at.begin() ? 0 : *std::prev(it);
}

std::vector<size_t> FirstLineStarts(std::string_view text, const std::vector<std::string> &lines, WorkLimit &work) {
    std::vector<size_t> first(lines.size(), 0);
    Trie trie;
    size_t wanted = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        work.Spend(lines[i].size() + 1);
        if (lines[i].find('\n') != std::string::npos) {
            // A line feed inside: it can't begin at a line start alone; search it as it is.
            work.Spend(text.size());
            const size_t at = text.find("\n" + lines[i]);
            first[i] = at == std::string_view::npos ? 0 : at + 1;
        } else {
            trie.Add(lines[i], false, static_cast<int32_t>(i));
            ++wanted;
        }
    }
    auto record = [&](uint32_t node, size_t at) {
        for (int32_t i = trie.First(node); i >= 0; i = trie.Next(i))
            if (first[static_cast<size_t>(i)] == 0) {
                first[static_cast<size_t>(i)] = at;
                --wanted;
            }
    };
    // Most lines begin with a letter that no line wanted begins with: those are passed over at once.
    bool firstLetter[256] = {};
    for (const std::string &line : lines)
        if (!line.empty())
            firstLetter[static_cast<unsigned char>(line[0])] = true;
    const bool anyEmpty = trie.First(0) >= 0;
    for (size_t lf = text.find('\n'); lf != std::string_view::npos && wanted > 0; lf = text.find('\n', lf + 1)) {
        if (!anyEmpty && (lf + 1 == text.size() || !firstLetter[static_cast<unsigned char>(text[lf + 1])]))
            continue;
        uint32_t node = 0;
        record(node, lf + 1);
        for (size_t j = lf + 1; j < text.size() && text[j] != '\n'; ++j) {
            work.Spend(1);
            node = trie.Child(node, static_cast<unsigned char>(text[j]));
            if (node == 0)
                break;
            record(node, lf + 1);
        }
    }
    return first;
}

std::vector<size_t> LastLineEnds(std::string_view text, const std::vector<std::string> &lines, std::string_view ending,
                                 WorkLimit &work) {
    std::vector<size_t> last(lines.size(), 0);
    Trie trie;
    size_t wanted = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        work.Spend(lines[i].size() + 1);
        if (lines[i].find('\n') != std::string::npos) {
            work.Spend(text.size());
            const size_t at = text.rfind(lines[i] + std::string(ending));
            last[i] = at == std::string_view::npos ? 0 : at + 1;
        } else {
            trie.Add(lines[i], true, static_cast<int32_t>(i));
            ++wanted;
        }
    }
    const size_t before = ending.size() - 1; // characters of the ending in front of its line feed
    auto record = [&](uint32_t node, size_t at) {
        for (int32_t i = trie.First(node); i >= 0; i = trie.Next(i))
            if (last[static_cast<size_t>(i)] == 0) {
                last[static_cast<size_t>(i)] = at;
                --wanted;
            }
    };
    // From the end backwards, so the first place found for a line is its last.
    for (size_t lf = text.rfind('\n'); lf != std::string_view::npos && wanted > 0;
         lf = lf == 0 ? std::string_view::npos : text.rfind('\n', lf - 1)) {
        if (lf < before || text.substr(lf - before, before) != ending.substr(0, before))
            continue;
        size_t end = lf - before; // the line ends here (0-based, exclusive)
        uint32_t node = 0;
        record(node, end + 1);
        while (end > 0 && text[end - 1] != '\n') {
            work.Spend(1);
            node = trie.Child(node, static_cast<unsigned char>(text[end - 1]));
            if (node == 0)
                break;
            --end;
            record(node, end + 1);
        }
    }
    return last;
}

std::vector<size_t> FirstKeysAt(std::string_view text, const std::vector<size_t> &places,
                                const std::vector<std::string> &keys, WorkLimit &work) {
    std::vector<size_t> first(keys.size(), 0);
    Trie trie;
    for (size_t i = 0; i < keys.size(); ++i) {
        work.Spend(keys[i].size() + 1);
        trie.Add(keys[i], false, static_cast<int32_t>(i));
    }
    size_t wanted = keys.size();
    for (size_t at : places) {
        if (wanted == 0)
            break;
        uint32_t node = 0;
        for (size_t j = at; j < text.size(); ++j) {
            work.Spend(1);
            node = trie.Child(node, static_cast<unsigned char>(text[j]));
            if (node == 0)
                break;
            for (int32_t i = trie.First(node); i >= 0; i = trie.Next(i))
                if (first[static_cast<size_t>(i)] == 0) {
                    first[static_cast<size_t>(i)] = at + 1;
                    --wanted;
                }
        }
    }
    return first;
}

PrefixBuckets::PrefixBuckets(std::string_view text, const std::vector<std::pair<size_t, size_t>> &regions,
                             std::vector<size_t> starts, std::vector<size_t> ends, WorkLimit &work)
    : m_text(text), m_work(work), m_starts(std::move(starts)), m_ends(std::move(ends)), m_regions(regions) {
    size_t longest = 0, total = 0;
    for (const auto &[b, e] : m_regions) {
        longest = std::max(longest, e - b);
        total += e - b + 1;
    }
    m_work.Spend(2 * total + longest);
    m_power.resize(longest + 1);
    m_power[0] = {1, 1};
    for (size_t i = 1; i <= longest; ++i)
        m_power[i] = {m_power[i - 1].a * kBase1 % kMod1, m_power[i - 1].b * kBase2 % kMod2};
    m_prefix.reserve(total);
    for (const auto &[b, e] : m_regions) {
        m_hashOffset.push_back(m_prefix.size());
        Hash h;
        m_prefix.push_back(h);
        for (size_t i = b; i < e; ++i) {
            h = Extend(h, static_cast<unsigned char>(text[i]));
            m_prefix.push_back(h);
        }
    }
    // The region of each place: regions and places both come in text order.
    m_regionOf.resize(m_starts.size());
    size_t r = 0;
    for (size_t i = 0; i < m_starts.size(); ++i) {
        while (r < m_regions.size() && m_regions[r].second <= m_starts[i])
            ++r;
        if (r == m_regions.size() || m_starts[i] < m_regions[r].first || m_ends[i] > m_regions[r].second)
            Fail(ErrInternal);
        m_regionOf[i] = r;
    }
    m_byReach.resize(m_starts.size());
    for (uint32_t i = 0; i < m_byReach.size(); ++i)
        m_byReach[i] = i;
    std::stable_sort(m_byReach.begin(), m_byReach.end(),
                     [&](uint32_t a, uint32_t b) { return m_ends[a] - m_starts[a] > m_ends[b] - m_starts[b]; });
}

std::vector<uint32_t> PrefixBuckets::Find(std::string_view pattern) {
    const size_t m = pattern.size();
    auto [found, fresh] = m_buckets.try_emplace(m);
    Bucket &bucket = found->second;
    if (fresh) {
        // A table of chains: the head of each slot, and for each place the next in its slot.
        size_t places = 0;
        while (places < m_byReach.size() && m_ends[m_byReach[places]] - m_starts[m_byReach[places]] >= m)
            ++places;
        size_t slots = 16;
        while (slots < 2 * places)
            slots *= 2;
        m_work.Spend(4 * places + slots);
        bucket.head.assign(slots, UINT32_MAX);
        bucket.next.resize(places);
        bucket.key.resize(places);
        for (uint32_t k = 0; k < places; ++k) {
            const uint32_t i = m_byReach[k];
            const size_t r = m_regionOf[i];
            const size_t from = m_hashOffset[r] + (m_starts[i] - m_regions[r].first);
            const Hash &whole = m_prefix[from + m], &head = m_prefix[from];
            const Hash h{(whole.a + kMod1 - head.a * m_power[m].a % kMod1) % kMod1,
                         (whole.b + kMod2 - head.b * m_power[m].b % kMod2) % kMod2};
            bucket.key[k] = Packed(h);
            const size_t slot = bucket.key[k] & (slots - 1);
            bucket.next[k] = bucket.head[slot];
            bucket.head[slot] = k;
        }
    }
    Hash wanted;
    for (unsigned char c : pattern)
        wanted = Extend(wanted, c);
    const uint64_t key = Packed(wanted);
    std::vector<uint32_t> result;
    for (uint32_t k = bucket.head[key & (bucket.head.size() - 1)]; k != UINT32_MAX; k = bucket.next[k]) {
        if (bucket.key[k] != key)
            continue;
        const uint32_t i = m_byReach[k];
        m_work.Spend(1 + m / 8);
        if (m_text.compare(m_starts[i], m, pattern) == 0)
            result.push_back(i);
    }
    // In text order, as the places were given.
    std::sort(result.begin(), result.end());
    return result;
}

} // namespace gelvane
