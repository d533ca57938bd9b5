#include "core/reader/DeltaRemoval.h"

#include "core/platform/Interaction.h"
#include "core/reader/ActorLoader.h"

#include <algorithm>
#include <cstring>
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
