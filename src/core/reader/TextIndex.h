#pragma once
// Searches that the readers ask of one large text many times. Each answers exactly as
// the literal search would (positions count from 1, 0 for none), but from an index or
// a remembered answer, so that a read costs time in proportion to the text.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace gelvane {

// How much work and how much copied text a read may spend: a fixed amount beyond a
// multiple of the text's size. Files whose literal reading would need more (their
// names would hold the same long line thousands of times over) fail with "Out of
// memory" (7) instead of taking minutes and gigabytes.
// The searches for dial lines, and the index of a small channels block, have an
// allowance of their own: they take no memory and pass over a character in a fraction
// of the time a copy takes, so a file whose reading looks at its blocks a few dozen
// times over still opens, while one whose searches grow with the square of a large
// block is still refused within a second.
class WorkLimit {
public:
    explicit WorkLimit(size_t textSize);
    void Spend(size_t units);
    void Scan(size_t characters);

private:
    size_t m_left, m_scanLeft;
};

// 1-based position of the first `needle` that begins in text[begin, end) (0-based), or 0.
size_t SearchIn(std::string_view text, std::string_view needle, size_t begin, size_t end);

// InStr with a memory of its last answer: searches that move forward through a text
// with small steps back search no stretch more than a few times.
class Finder {
public:
    Finder(std::string_view text, std::string_view needle) : m_text(text), m_needle(needle) {}
    // The first needle at or behind `start` (1-based), or 0.
    size_t Next(size_t start);

private:
    std::string_view m_text, m_needle;
    bool m_known = false;
    size_t m_from = 0;  // the answer below holds for every start from here up to it
    size_t m_found = 0; // first match at or behind m_from, 0 for none
};

// The next place of one character at or behind a place (0-based, npos for none), for
// places that don't move back: each stretch is searched once.
class NextOf {
public:
    NextOf(std::string_view text, char c) : m_text(text), m_c(c) {}
    size_t At(size_t from);

private:
    std::string_view m_text;
    char m_c;
    size_t m_from = std::string_view::npos; // the answer holds for every place from here up to it
    size_t m_found = std::string_view::npos;
};

// The last place of one character in front of a place (0-based, npos for none), for
// places that mostly move forward: each stretch is searched about once.
class PrevOf {
public:
    PrevOf(std::string_view text, char c) : m_text(text), m_c(c) {}
    // The last `c` in text[0, upTo).
    size_t Before(size_t upTo);

private:
    std::string_view m_text;
    char m_c;
    size_t m_upTo = 0; // the answer below is the last in front of this
    size_t m_found = std::string_view::npos;
};

// Every occurrence of a needle, for searches backwards and by rank.
class Occurrences {
public:
    Occurrences(std::string_view text, std::string_view needle);
    // The first at or behind `start` (1-based), or 0.
    size_t NextAt(size_t start) const;
    // The last that lies wholly in the first `count` characters (InStrRev's rule), or 0.
    size_t LastWithin(size_t count) const;
    const std::vector<size_t> &All() const { return m_at; }

private:
    size_t m_size;
    std::vector<size_t> m_at;
};

// For each line, InStr(text, line feed + line): the first place where it begins a line.
std::vector<size_t> FirstLineStarts(std::string_view text, const std::vector<std::string> &lines, WorkLimit &work);

// For each line, InStrRev(text, line + ending), where `ending` is a line feed or a blank
// and a line feed: the last place where it ends a line.
std::vector<size_t> LastLineEnds(std::string_view text, const std::vector<std::string> &lines, std::string_view ending,
                                 WorkLimit &work);

// For each key, the first of the given places (0-based, ascending) where the text
// continues with the key, as a 1-based position, or 0.
std::vector<size_t> FirstKeysAt(std::string_view text, const std::vector<size_t> &places,
                                const std::vector<std::string> &keys, WorkLimit &work);

// Windows of a text that begin at given places and may reach to given ends, found by
// their content. Windows of one length are hashed when that length is first asked for;
// a place is hashed only for lengths up to its own reach, so all lengths together cost
// no more than the reaches add up to.
class PrefixBuckets {
public:
    // `starts[i]` (0-based) may be read up to, and without, `ends[i]`; the places lie
    // in `regions` (disjoint, 0-based half-open), which are hashed once.
    PrefixBuckets(std::string_view text, const std::vector<std::pair<size_t, size_t>> &regions,
                  std::vector<size_t> starts, std::vector<size_t> ends, WorkLimit &work);
    // Indices of the places whose window of pattern.size() characters equals `pattern`.
    std::vector<uint32_t> Find(std::string_view pattern);

private:
    std::string_view m_text;
    WorkLimit &m_work;
    std::vector<size_t> m_starts, m_ends;
    std::vector<uint32_t> m_byReach; // place indices, longest reach first
    std::vector<std::pair<size_t, size_t>> m_regions;
    std::vector<size_t> m_regionOf;   // region index of each place
    std::vector<size_t> m_hashOffset; // where each region's prefix hashes begin
    struct Hash {
        uint64_t a = 0, b = 0; // modulo two primes
    };
    std::vector<Hash> m_prefix; // prefix hashes of the regions, one more than characters each
    std::vector<Hash> m_power;
    struct Bucket {
        std::vector<uint32_t> head, next; // chains of the places whose windows hash alike
        std::vector<uint64_t> key;        // each place's hash, by its rank in m_byReach
    };
    std::unordered_map<size_t, Bucket> m_buckets; // by window length
};

} // namespace gelvane
