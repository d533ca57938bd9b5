#include "core/reader/DeltaRemoval.h"

#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/ActorLoader.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace gelvane {

namespace {

constexpr std::string_view kDeltas = "deltas";
constexpr std::string_view kDeltasLf = "deltas\n";
constexpr std::string_view kDeltasBlankLf = "deltas \n";

void CrToLfInPlace(std::string &text) {
    std::replace(text.begin(), text.end(), '\r', '\n');
}

// Moves [from, to) of `text` down to `w` and returns the new write position.
size_t MoveDown(std::string &text, size_t w, size_t from, size_t to) {
    if (to > from) {
        if (w != from)
            std::memmove(text.data() + w, text.data() + from, to - from);
        w += to - from;
    }
    return w;
}

// Works on one piece [begin, end) that begins with "deltas" (or holds none):
// writes what is left of it at `w` and returns the new write position.
size_t CutPiece(std::string &text, size_t w, size_t begin, size_t end) {
    const std::string_view piece(text.data() + begin, end - begin);
    size_t body = std::string_view::npos; // where the numbers start
    if (piece.starts_with(kDeltasLf))
        body = kDeltasLf.size();
    else if (piece.starts_with(kDeltasBlankLf))
        body = kDeltasBlankLf.size();
    if (body == std::string_view::npos)
        return MoveDown(text, w, begin, end);
    const size_t close = piece.find('}', body);
    if (close == std::string_view::npos)
        return w;
    return MoveDown(text, w, begin + close + 1, end);
}

} // namespace

std::string ElapsedText(const Session &session, int32_t startTime) {
    const int32_t elapsed = std::max<int32_t>(0, SessionSeconds(session) - startTime);
    return "Elapsed time: " + std::to_string(elapsed / 60) + " min, " + std::to_string(elapsed % 60) + " sec";
}

bool RemoveDeltas(Session &session, std::string &text, int32_t startTime) {
    Interaction &ui = session.ui();
    CrToLfInPlace(text); // each piece does this; doing it once for all is the same

    // The head is a piece of its own; each further piece begins at a "deltas".
    std::vector<size_t> starts;
    for (size_t at = text.find(kDeltas); at != std::string::npos; at = text.find(kDeltas, at + kDeltas.size()))
        starts.push_back(at);
    if (!session.BatchMode)
        ui.ProgressMax(static_cast<int>(std::min<size_t>(starts.size() + 1, INT32_MAX)));

    size_t w = starts.empty() ? text.size() : starts[0];
    for (size_t k = 0; k < starts.size(); ++k) {
        ui.DoEvents();
        if (!session.BatchMode) {
            ui.ProgressValue(static_cast<int>(std::min<size_t>(k + 1, INT32_MAX)));
            ui.ProgressDetail(ElapsedText(session, startTime));
            if (ui.ProgressCancelling()) {
                text = "cancel";
                return false;
            }
        }
        const size_t end = k + 1 < starts.size() ? starts[k + 1] : text.size();
        w = CutPiece(text, w, starts[k], end);
    }
    text.resize(w);
    return true;
}

namespace {

// A file read block by block, as it stands: carriage returns are made line feeds only
// where that matters, in what is kept and behind a "deltas".
class BlockReader {
public:
    BlockReader(std::string_view path, size_t block) : m_size(block), m_block(std::make_unique<char[]>(block)) {
        const auto real = ResolvePath(path);
        if (!real || !FileExists(*real))
            Fail(ErrFileNotFound);
        m_file = std::fopen(real->c_str(), "rb");
        if (!m_file)
            Fail(ErrPermissionDenied);
    }
    ~BlockReader() { std::fclose(m_file); }
    BlockReader(const BlockReader &) = delete;
    BlockReader &operator=(const BlockReader &) = delete;

    // Appends the next block to `to`; false at the file's end.
    bool Append(std::string &to) {
        const size_t got = std::fread(m_block.get(), 1, m_size, m_file);
        if (got < m_size && std::ferror(m_file))
            Fail(ErrPathFileAccess);
        to.append(m_block.get(), got);
        return got > 0;
    }

private:
    size_t m_size;
    std::unique_ptr<char[]> m_block;
    std::FILE *m_file = nullptr;
};

// The first "deltas" in window[from, end), or npos. It is found by its "l", which the
// lines of numbers it stands among never hold.
size_t FindDeltas(const std::string &window, size_t from) {
    const char *data = window.data();
    for (size_t i = from + 2; i + 4 <= window.size();) {
        const void *hit = std::memchr(data + i, 'l', window.size() - 3 - i);
        if (!hit)
            break;
        const size_t l = static_cast<size_t>(static_cast<const char *>(hit) - data);
        if (std::memcmp(data + l - 2, kDeltas.data(), kDeltas.size()) == 0)
            return l - 2;
        i = l + 1;
    }
    return std::string::npos;
}

// How many "deltas" the file holds.
size_t CountDeltas(std::string_view path, size_t block) {
    BlockReader reader(path, block);
    std::string window;
    size_t count = 0;
    while (reader.Append(window)) {
        size_t from = 0;
        for (size_t at = FindDeltas(window, 0); at != std::string::npos; at = FindDeltas(window, from)) {
            ++count;
            from = at + kDeltas.size();
        }
        // The last few characters may begin one that the next block completes.
        const size_t keep = std::min(window.size() - std::min(from, window.size()), kDeltas.size() - 1);
        window.erase(0, window.size() - keep);
    }
    return count;
}

} // namespace

bool ReadFileWithoutDeltas(Session &session, std::string_view path, std::string &text, int32_t startTime,
                           size_t block) {
    Interaction &ui = session.ui();
    const size_t pieces = CountDeltas(path, block);
    if (!session.BatchMode)
        ui.ProgressMax(static_cast<int>(std::min<size_t>(pieces + 1, INT32_MAX)));

    BlockReader reader(path, block);
    text.clear();
    // Kept text, with its carriage returns made line feeds.
    auto keep = [&](const std::string &from, size_t begin, size_t count) {
        const size_t at = text.size();
        text.append(from, begin, count);
        std::replace(text.begin() + static_cast<long>(at), text.end(), '\r', '\n');
    };
    std::string window; // read and not yet worked on
    size_t at = 0;      // where the work stands in `window`
    bool more = reader.Append(window);
    // At least `n` characters ahead of the work, or the file's end.
    auto ensure = [&](size_t n) {
        while (more && window.size() - at < n) {
            window.erase(0, at);
            at = 0;
            more = reader.Append(window);
        }
        return window.size() - at >= n;
    };
    // The next "deltas" at or behind the work; the window grows until it is found or the file ends.
    auto nextDeltas = [&](bool kept) -> size_t {
        while (true) {
            const size_t hit = FindDeltas(window, at);
            if (hit != std::string::npos)
                return hit;
            // Up to the last few characters nothing can begin; they may begin one.
            const size_t safe = window.size() - std::min(window.size() - at, kDeltas.size() - 1);
            if (kept)
                keep(window, at, safe - at);
            at = safe;
            if (!ensure(window.size() - at + 1))
                return std::string::npos;
        }
    };

    size_t piece = 0;
    bool inBlock = false; // the numbers of a deltas block are being passed over
    while (true) {
        if (!inBlock) {
            const size_t hit = nextDeltas(true);
            if (hit == std::string::npos) {
                keep(window, at, window.size() - at);
                break;
            }
            keep(window, at, hit - at);
            at = hit;
        } else {
            // The block ends at the first "}" of its piece; the next "deltas" ends the piece.
            while (true) {
                const size_t close = window.find('}', at);
                const size_t hit = FindDeltas(window, at);
                if (close != std::string::npos && (hit == std::string::npos || close < hit)) {
                    at = close + 1;
                    inBlock = false;
                    break;
                }
                if (hit != std::string::npos) {
                    at = hit;
                    break;
                }
                at = window.size() - std::min(window.size() - at, kDeltas.size() - 1);
                if (!ensure(window.size() - at + 1)) {
                    at = window.size();
                    break;
                }
            }
            if (inBlock && at == window.size())
                break; // the last piece was all numbers
            if (!inBlock)
                continue;
        }
        // A new piece begins here, at a "deltas".
        ui.DoEvents();
        if (!session.BatchMode) {
            ui.ProgressValue(static_cast<int>(std::min<size_t>(piece + 1, INT32_MAX)));
            ui.ProgressDetail(ElapsedText(session, startTime));
            if (ui.ProgressCancelling()) {
                text = "cancel";
                return false;
            }
        }
        ++piece;
        ensure(kDeltasBlankLf.size());
        auto lineEnd = [&](size_t i) { return i < window.size() && (window[i] == '\n' || window[i] == '\r'); };
        const size_t behind = at + kDeltas.size();
        if (lineEnd(behind) || (behind < window.size() && window[behind] == ' ' && lineEnd(behind + 1))) {
            at = behind + (lineEnd(behind) ? 1 : 2);
            inBlock = true;
        } else {
            text.append(kDeltas);
            at += kDeltas.size();
            inBlock = false;
        }
    }
    return true;
}

void RemoveDeltasPieces(std::string &text) {
    CrToLfInPlace(text);
    size_t at = text.find(kDeltas);
    if (at == std::string::npos)
        return;
    size_t w = at;
    while (at != std::string::npos) {
        const size_t next = text.find(kDeltas, at + kDeltas.size());
        w = CutPiece(text, w, at, next == std::string::npos ? text.size() : next);
        at = next;
    }
    text.resize(w);
}

void RemoveDeltasOneRun(std::string &text) {
    CrToLfInPlace(text);

    // "deltas " + line feed loses its blank; no new occurrence can arise from that.
    size_t w = 0, r = 0;
    for (size_t at = text.find(kDeltasBlankLf); at != std::string::npos; at = text.find(kDeltasBlankLf, r)) {
        w = MoveDown(text, w, r, at + kDeltas.size());
        r = at + kDeltas.size() + 1;
    }
    w = MoveDown(text, w, r, text.size());
    text.resize(w);

    // Deleting a block joins the text around it, which can form a new
    // "deltas" + line feed that begins in what was kept: look there first.
    const size_t n = text.size();
    w = 0;
    r = 0;
    while (r < n) {
        size_t matchAt = std::string::npos; // start of the next block in the joined text
        for (size_t k = std::min<size_t>(kDeltasLf.size() - 1, w); k >= 1; --k) {
            const std::string_view kept(text.data() + w - k, k);
            const std::string_view rest(text.data() + r, n - r);
            if (kept == kDeltasLf.substr(0, k) && rest.starts_with(kDeltasLf.substr(k))) {
                matchAt = r;
                w -= k;
                break;
            }
        }
        if (matchAt == std::string::npos) {
            const size_t at = text.find(kDeltasLf, r);
            if (at == std::string::npos) {
                w = MoveDown(text, w, r, n);
                break;
            }
            w = MoveDown(text, w, r, at);
            matchAt = at;
        }
        const size_t close = text.find('}', matchAt);
        r = close == std::string::npos ? n : close + 1;
    }
    text.resize(w);
}

void NormaliseFigureLines(std::string &text) {
    constexpr std::string_view kFigure = "figure";
    const size_t n = text.size();
    size_t w = 0, r = 0;
    for (size_t at = text.find(kFigure); at != std::string::npos; at = text.find(kFigure, at + 1)) {
        size_t after = at + kFigure.size();
        if (after < n && text[after] == ' ')
            ++after;
        if (after >= n || text[after] != '\n')
            continue;
        w = MoveDown(text, w, r, at);
        // The blanks in front go too, however many there are.
        while (w > 0 && text[w - 1] == ' ')
            --w;
        w = MoveDown(text, w, at, at + kFigure.size());
        text[w++] = '\n';
        r = after + 1;
    }
    w = MoveDown(text, w, r, n);
    text.resize(w);
}

} // namespace gelvane
