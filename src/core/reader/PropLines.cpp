#include "core/reader/PropLines.h"

#include "core/model/Text.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

namespace gelvane {

namespace {

constexpr size_t npos = std::string_view::npos;

// The text with deleted stretches ("holes", kept merged), read without copying it.
class HoledText {
public:
    explicit HoledText(std::string_view text) : m_text(text) {}

    // The first character at or behind `i` that no hole covers (the text's size at the end).
    size_t Alive(size_t i) const {
        auto it = m_holes.upper_bound(i);
        if (it != m_holes.begin()) {
            const auto hole = std::prev(it);
            if (i < hole->second)
                return hole->second;
        }
        return i;
    }

    // The last character in front of `i` that no hole covers, or npos.
    size_t AliveBefore(size_t i) const {
        while (i > 0) {
            --i;
            auto it = m_holes.upper_bound(i);
            if (it != m_holes.begin()) {
                const auto hole = std::prev(it);
                if (i < hole->second) {
                    i = hole->first;
                    continue;
                }
            }
            return i;
        }
        return npos;
    }

    // The place behind `count` uncovered characters from the uncovered `at` on (at most the
    // text's end), found a stretch between holes at a time.
    size_t Skip(size_t at, size_t count) const {
        size_t i = at;
        auto next = m_holes.upper_bound(i);
        while (count > 0 && i < m_text.size()) {
            const size_t stretchEnd = next == m_holes.end() ? m_text.size() : next->first;
            const size_t take = std::min(count, stretchEnd - i);
            i += take;
            count -= take;
            if (count > 0 && next != m_holes.end()) {
                i = next->second;
                ++next;
            }
        }
        return i;
    }

    // Appends the uncovered characters of [from, to) to `out`, a stretch at a time.
    void Append(size_t from, size_t to, std::string &out) const {
        size_t i = Alive(from);
        auto next = m_holes.upper_bound(i);
        while (i < to) {
            const size_t stretchEnd = std::min(to, next == m_holes.end() ? m_text.size() : next->first);
            out.append(m_text.substr(i, stretchEnd - i));
            if (next == m_holes.end())
                break;
            i = next->second;
            ++next;
        }
    }

    // Deletes `count` characters from the uncovered `at` on; returns the hole that now covers them.
    std::pair<size_t, size_t> Delete(size_t at, size_t count) {
        size_t end = Skip(at, count);
        size_t begin = at;
        auto it = m_holes.lower_bound(begin);
        if (it != m_holes.begin() && std::prev(it)->second >= begin) {
            it = std::prev(it);
            begin = it->first;
        }
        while (it != m_holes.end() && it->first <= end) {
            end = std::max(end, it->second);
            it = m_holes.erase(it);
        }
        m_holes.emplace(begin, end);
        return {begin, end};
    }

    // Where the uncovered stretch that ends at `i` begins: the end of the hole in front of it, or 0.
    size_t StretchBefore(size_t i) const {
        auto it = m_holes.upper_bound(i);
        if (it == m_holes.begin())
            return 0;
        --it;
        if (it->first == i && it != m_holes.begin())
            --it; // the hole that begins at `i` itself
        return it->second <= i ? it->second : 0;
    }

    // The hole that covers `i`.
    std::pair<size_t, size_t> HoleAt(size_t i) const {
        const auto hole = std::prev(m_holes.upper_bound(i));
        return *hole;
    }

private:
    std::string_view m_text;
    std::map<size_t, size_t> m_holes;
};

template <class Set> void EraseRange(Set &set, size_t begin, size_t end) {
    set.erase(set.lower_bound(begin), set.lower_bound(end));
}

} // namespace

PropLineScan PosePropLines(std::string_view text, WorkLimit &work) {
    constexpr std::string_view kAnchor = "\nprop";
    PropLineScan out;
    const size_t n = text.size();
    HoledText holed(text);

    // A place where line feed + "prop" stands; `blank` those followed by a blank, which
    // the scan takes; `dirty` those whose line no longer reads as in the text.
    std::set<size_t> anchors, blank, dirty;
    std::vector<size_t> original; // the places of the text as read, each with its line as a window
    std::vector<std::pair<size_t, size_t>> regions;
    std::vector<size_t> starts, ends;
    for (size_t p = text.find(kAnchor); p != npos; p = text.find(kAnchor, p + 1)) {
        size_t lf = text.find('\n', p + 1);
        if (lf == npos)
            lf = n;
        work.Spend(8);
        original.push_back(p);
        regions.emplace_back(p + 1, lf);
        starts.push_back(p + 1);
        ends.push_back(lf);
        anchors.insert(anchors.end(), p);
        if (p + 5 < n && text[p + 5] == ' ')
            blank.insert(blank.end(), p);
    }
    PrefixBuckets windows(text, regions, starts, ends, work);
    auto originalIndex = [&](size_t p) -> size_t {
        const auto it = std::lower_bound(original.begin(), original.end(), p);
        return it != original.end() && *it == p ? static_cast<size_t>(it - original.begin()) : npos;
    };

    // The first "{" at or behind a place; holes never hold one. The places asked for
    // mostly move backwards, so each stretch is searched about once.
    size_t braceFrom = n, braceAt = npos; // the first "{" at or behind braceFrom
    auto nextBrace = [&](size_t p) {
        if (p <= braceFrom) {
            work.Spend(braceFrom - p);
            const void *hit = std::memchr(text.data() + p, '{', braceFrom - p);
            if (hit)
                braceAt = static_cast<size_t>(static_cast<const char *>(hit) - text.data());
        } else if (braceAt != npos && braceAt < p) {
            work.Spend(n - p);
            const void *hit = std::memchr(text.data() + p, '{', n - p);
            braceAt = hit ? static_cast<size_t>(static_cast<const char *>(hit) - text.data()) : npos;
        }
        braceFrom = p;
        return braceAt;
    };

    // After a deletion: the places it covered are gone, places in front of it may now read
    // differently, and the line that ran into it goes on behind it.
    auto repair = [&](std::pair<size_t, size_t> hole) {
        const auto [a, e] = hole;
        EraseRange(anchors, a, e);
        EraseRange(blank, a, e);
        EraseRange(dirty, a, e);
        // The six characters in front of the hole: usually all in the stretch before it.
        size_t before[6];
        int count = 0;
        const size_t stretch = holed.StretchBefore(a);
        for (size_t q = a; count < 6 && q > stretch; ++count)
            before[count] = --q;
        for (size_t q = count > 0 ? before[count - 1] : a; count < 6; ++count) {
            q = holed.AliveBefore(q);
            if (q == npos)
                break;
            before[count] = q;
        }
        for (int k = 0; k < count; ++k) {
            const size_t q = before[k];
            if (text[q] != '\n')
                continue;
            std::string w;
            holed.Append(q, holed.Skip(q, 6), w);
            const int got = static_cast<int>(w.size());
            const bool isAnchor = got >= 5 && std::string_view(w).substr(0, 5) == kAnchor;
            if (isAnchor) {
                anchors.insert(q);
                dirty.insert(q);
                if (got == 6 && w[5] == ' ')
                    blank.insert(q);
                else
                    blank.erase(q);
            } else {
                anchors.erase(q);
                blank.erase(q);
                dirty.erase(q);
            }
        }
        // The line that ended at the deleted line feed.
        size_t lf = a;
        while (lf > 0) {
            const void *hit = memrchr(text.data(), '\n', lf);
            if (!hit) {
                lf = npos;
                break;
            }
            const size_t at = static_cast<size_t>(static_cast<const char *>(hit) - text.data());
            work.Spend(lf - at);
            if (holed.Alive(at) == at) {
                lf = at;
                break;
            }
            lf = holed.HoleAt(at).first;
        }
        if (lf != npos && lf < a && anchors.count(lf))
            dirty.insert(lf);
    };

    while (!blank.empty()) {
        const size_t p = *blank.rbegin();
        const size_t brace = nextBrace(p);
        if (brace == npos) {
            out.Failed = true;
            return out;
        }
        // From behind the line feed up to one character before the "{".
        std::string raw;
        holed.Append(p + 1, brace, raw);
        work.Spend(raw.size() + 16);
        raw.pop_back();
        const std::string line = StripControls(raw);
        out.Lines.push_back(line);
        const size_t m = line.size();

        std::vector<size_t> matches;
        if (m == 4) {
            // "prop" alone: every line feed + "prop" goes.
            matches.assign(anchors.begin(), anchors.end());
        } else {
            for (uint32_t i : windows.Find(line))
                if (anchors.count(original[i]))
                    matches.push_back(original[i]);
            for (size_t d : dirty) {
                const size_t o = originalIndex(d);
                if ((o != npos && ends[o] - starts[o] >= m) || !blank.count(d))
                    continue; // read through the windows above, or unable to match
                work.Spend(m + 16);
                bool same = true;
                size_t i = d;
                for (size_t k = 0; k < m && same; ++k) {
                    i = holed.Alive(i + 1);
                    same = i < n && text[i] == line[k];
                }
                if (same)
                    matches.push_back(d);
            }
            std::sort(matches.begin(), matches.end());
        }
        work.Spend(16 * (matches.size() + 1));

        if (matches.empty()) {
            repair(holed.Delete(p, 6));
            continue;
        }
        for (size_t c : matches)
            holed.Delete(c, m + 1);
        std::pair<size_t, size_t> previous{npos, npos};
        for (size_t c : matches) {
            const auto hole = holed.HoleAt(c);
            if (hole != previous)
                repair(hole);
            previous = hole;
        }
    }
    return out;
}

PropLineScan HeadPropLines(std::string_view text, WorkLimit &work) {
    PropLineScan out;
    const size_t n = text.size();

    // Deleting a prop line never takes a line feed, so each line changes on its own, and
    // only lines that hold "prop" can be found, changed or taken.
    struct Line {
        size_t begin, end;  // 0-based, `end` at the line feed or the text's end
        bool dirty = false; // `content` holds what is left of the line
        bool gone = false;  // no "prop" left in it
        std::string content;
    };
    std::vector<Line> lines;
    std::vector<size_t> lineOf; // for each occurrence of "prop"
    std::vector<std::pair<size_t, size_t>> regions;
    std::vector<size_t> starts, ends;
    for (size_t at = text.find("prop"); at != npos; at = text.find("prop", at + 1)) {
        work.Spend(8);
        if (lines.empty() || at >= lines.back().end) {
            const size_t lf = at == 0 ? npos : text.rfind('\n', at - 1);
            const size_t begin = lf == npos ? 0 : lf + 1;
            size_t end = text.find('\n', at);
            if (end == npos)
                end = n;
            work.Spend(end - begin);
            lines.push_back({begin, end, false, false, {}});
            regions.emplace_back(begin, end);
        }
        lineOf.push_back(lines.size() - 1);
        starts.push_back(at);
        ends.push_back(lines.back().end);
    }
    PrefixBuckets windows(text, regions, starts, ends, work);

    std::set<size_t> taken;   // lines behind a line feed that begin with "prop "
    std::set<size_t> changed; // lines whose content is no longer the text's
    auto contentOf = [&](const Line &line) {
        return line.dirty ? std::string_view(line.content) : text.substr(line.begin, line.end - line.begin);
    };
    auto update = [&](size_t i) {
        Line &line = lines[i];
        const std::string_view content = contentOf(line);
        if (content.find("prop") == npos) {
            line.gone = true;
            taken.erase(i);
            changed.erase(i);
            return;
        }
        if (line.dirty)
            changed.insert(i);
        if (line.begin > 0 && content.starts_with("prop "))
            taken.insert(i);
        else
            taken.erase(i);
    };
    for (size_t i = 0; i < lines.size(); ++i)
        update(i);

    while (!taken.empty()) {
        const size_t t = *taken.rbegin();
        if (lines[t].end == n) {
            out.Failed = true; // no line end behind it
            return out;
        }
        const std::string line = StripControls(contentOf(lines[t]));
        out.Lines.push_back(line);
        work.Spend(line.size() + 16);

        std::set<size_t> holding;
        for (uint32_t i : windows.Find(line))
            if (!lines[lineOf[i]].dirty && !lines[lineOf[i]].gone)
                holding.insert(lineOf[i]);
        for (size_t c : changed) {
            work.Spend(lines[c].content.size() + 16);
            if (lines[c].content.find(line) != npos)
                holding.insert(c);
        }
        work.Spend(16 * (holding.size() + 1));
        if (holding.empty()) {
            lines[t].content.clear();
            lines[t].dirty = true;
            update(t);
            continue;
        }
        for (size_t h : holding) {
            Line &l = lines[h];
            work.Spend(l.end - l.begin + 16);
            l.content = Replace(contentOf(l), line, "");
            l.dirty = true;
            update(h);
        }
    }
    return out;
}

} // namespace gelvane
