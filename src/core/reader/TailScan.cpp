#include "core/reader/TailScan.h"

#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/OpenFile.h"
#include "core/reader/PropLines.h"
#include "core/reader/TextIndex.h"

#include <algorithm>
#include <optional>

namespace gelvane {

Source Source::FromFile(std::string path) {
    Source s;
    s.m_path = std::move(path);
    return s;
}

Source Source::FromText(std::string_view text) {
    Source s;
    s.m_isText = true;
    s.m_text = text;
    return s;
}

void Source::Open() const {
    if (m_file)
        return;
    const auto real = ResolvePath(m_path);
    if (!real || !FileExists(*real))
        Fail(ErrFileNotFound);
    auto file = std::make_shared<std::ifstream>(*real, std::ios::binary);
    if (!*file)
        Fail(ErrPermissionDenied);
    file->seekg(0, std::ios::end);
    m_length = static_cast<uint64_t>(file->tellg());
    m_file = std::move(file);
}

uint64_t Source::Length() const {
    if (m_isText)
        return m_text.size();
    Open();
    return m_length;
}

std::string Source::Range(uint64_t offset, uint64_t count) const {
    const uint64_t length = Length();
    if (offset >= length)
        return {};
    count = std::min(count, length - offset);
    if (m_isText)
        return std::string(m_text.substr(offset, count));
    std::string bytes(count, '\0');
    m_file->clear();
    m_file->seekg(static_cast<std::streamoff>(offset));
    m_file->read(bytes.data(), static_cast<std::streamsize>(count));
    if (static_cast<uint64_t>(m_file->gcount()) != count)
        Fail(ErrPathFileAccess);
    return bytes;
}

uint64_t Source::Find(std::string_view needle, uint64_t from) const {
    if (m_isText) {
        const size_t at = m_text.find(needle, from);
        return at == std::string_view::npos ? std::string::npos : at;
    }
    const uint64_t length = Length();
    constexpr uint64_t kBlock = 1 << 20;
    for (uint64_t offset = from; offset < length; offset += kBlock) {
        // Overlapping by the needle's length, so a match across two blocks is seen.
        const std::string chunk = Range(offset, kBlock + needle.size() - 1);
        const size_t at = chunk.find(needle);
        if (at != std::string::npos)
            return offset + at;
        if (offset + chunk.size() >= length)
            break;
    }
    return std::string::npos;
}

std::string ReadHeadToBrace(const Source &source, uint64_t step) {
    // Growing reads from the start until "}" is in; the result is the first read that holds it.
    const uint64_t brace = source.Find("}");
    if (brace == std::string::npos)
        Fail(ErrInputPastEnd);
    const uint64_t rounds = (brace + step) / step;
    return source.Left(rounds * step);
}

std::string ReadTailUntil(const Source &source, std::string_view key) {
    const uint64_t length = source.Length();
    // A piece of no characters would never grow the tail: the read starts at position 0.
    if (length <= 1)
        Fail(ErrBadRecordNumber);
    const uint64_t piece = length <= 2000 ? length - 1 : 2000;
    // The piecewise read never takes the file's last character.
    const uint64_t usable = length - 1;

    // The last occurrence of the key decides how many pieces the backward read takes;
    // find it from the end in growing windows instead of piece by piece.
    std::optional<uint64_t> keyAt;
    for (uint64_t window = 64 * 1024;; window *= 4) {
        const uint64_t w = std::min(window, usable);
        const std::string block = source.Range(usable - w, w);
        const size_t at = block.rfind(key);
        if (at != std::string::npos) {
            keyAt = usable - w + at;
            break;
        }
        if (w == usable)
            break;
    }
    if (!keyAt)
        Fail(ErrBadRecordNumber);
    const uint64_t pieces = std::max<uint64_t>(1, (usable - *keyAt + piece - 1) / piece);
    // A piece that would run past the start makes the read position 0.
    if (pieces * piece > usable)
        Fail(ErrBadRecordNumber);
    return source.Range(usable - pieces * piece, pieces * piece);
}

void ScanProps(Session &session, const Source &source, int &step) {
    Interaction &ui = session.ui();
    const bool progress = !session.BatchMode;
    step = 19;
    session.View.cmbFiguresEnabled = true;
    if (progress) {
        ui.ProgressShow("Please wait", "Looking for props...", 100);
        ui.ProgressValue(0);
        ui.DoEvents();
    }

    step = 20;
    // The first actor line: the section of the head declarations ends where it comes again.
    const std::string start = CrToLf(source.Left(250));
    size_t at = InStr(start, "actor ");
    if (at == 0)
        at = InStr(start, "light ");
    if (at == 0)
        at = InStr(start, "camera ");
    if (at == 0)
        at = InStr(start, "prop ");
    const long long lineEnd = static_cast<long long>(InStr(start, "\n", at == 0 ? 1 : at));
    const std::string actorLine(Mid(start, static_cast<long long>(at), lineEnd - static_cast<long long>(at)));

    step = 21;
    // Reads of 100, 600, 1100 ... characters stop at the first that holds the line twice.
    std::string text;
    const uint64_t first = source.Find(actorLine);
    const uint64_t second =
        first == std::string::npos || actorLine.empty() ? std::string::npos : source.Find(actorLine, first + 1);
    if (second != std::string::npos) {
        const uint64_t needed = second + actorLine.size();
        const uint64_t rounds = needed <= 100 ? 0 : (needed - 100 + 499) / 500;
        if (progress) {
            for (uint64_t r = 0; r <= rounds; ++r) {
                ui.ProgressDetail("Char " + std::to_string(100 + 500 * r) + "...");
                ui.ProgressValue(static_cast<int>((r + 1) % 100));
                ui.DoEvents();
            }
        }
        text = source.Left(100 + 500 * rounds);
    } else {
        // The growing read can't find a second occurrence: the whole source, cut just
        // behind the start of the line's last occurrence.
        text = source.All();
        text.resize(InStrRev(text, actorLine));
        if (progress)
            ui.ProgressValue(100);
    }

    step = 23;
    text = CrToLf(text);
    step = 24;
    if (InStr(text, "\nfigureResFile ") != 0)
        AddFigureLine(session, "figure");
    step = 25;
    // Props enter the list from the last to the first.
    WorkLimit work(text.size());
    const PropLineScan props = HeadPropLines(text, work);
    // Each line goes in front of the first "actor " row, behind the one before.
    auto &rows = session.cmbFigures;
    const auto firstActor =
        std::find_if(rows.begin(), rows.end(), [](const std::string &row) { return StartsWith(row, "actor "); });
    rows.insert(firstActor, props.Lines.begin(), props.Lines.end());
    if (props.Failed)
        Fail(ErrInvalidCall); // the last prop line has no line end behind it
    step = 26;
    if (progress)
        ui.ProgressClose();
}

std::string ReadFigureText(Session &session, const Source &source, std::string_view startKey, std::string_view endKey,
                           int &step) {
    step = 29;
    // Both keys must be there; the tail that is kept reaches back to the second.
    ReadTailUntil(source, startKey);
    const std::string tail = ReadTailUntil(source, endKey);
    step = 30;
    const std::string head = ReadHeadToBrace(source, 5);
    step = 31;
    if (session.PoserFileKind == KindPP2 || session.PoserFileKind == KindHR2) {
        const std::string longer = CrToLf(source.Left(head.size() + 50));
        const size_t propAt = InStr(longer, "prop ");
        const long long lineEnd = static_cast<long long>(InStr(longer, "\n", propAt == 0 ? 1 : propAt));
        session.Figures.at(0).Name =
            std::string(Mid(longer, static_cast<long long>(propAt), lineEnd - static_cast<long long>(propAt)));
    }
    step = 32;
    return head + "\n" + tail;
}

void CutMaterialText(Session &session, const Source &source, std::string &text, std::vector<std::string> &sections,
                     int &step) {
    Interaction &ui = session.ui();
    const bool progress = !session.BatchMode;
    step = 48;
    const std::string name = session.PoserFileKind == KindCR2 ? std::string("figure") : session.Figures.at(0).Name;

    step = 49;
    const size_t firstMaterial = InStr(text, "material ");
    std::string rebuilt = name + "\n\t{\n\t" + std::string(Mid(text, static_cast<long long>(firstMaterial)));
    const size_t lastMaterial = InStrRev(rebuilt, "material ");
    rebuilt.resize(InStr(rebuilt, "}", lastMaterial));
    rebuilt += "\n\t}";
    step = 50;
    text = source.IsText() ? std::move(rebuilt) : CrToLf(rebuilt);

    step = 51;
    if (sections.size() == 1 || !session.MultiFigure)
        return;
    step = 52;

    if (progress) {
        ui.ProgressStatus("Loading materials...");
        ui.ProgressMax(static_cast<int>(sections.size()));
        ui.ProgressValue(0);
        ui.DoEvents();
    }
    // Carriage returns become line feeds one for one, so positions stay; the owner
    // lines are then found in files of every line end convention.
    sections[0] = CrToLf(source.All());
    const std::string_view whole = sections[0];
    step = 53;
    // Every search of this step looks at the same whole text: the places of the owners'
    // lines and of the words are found once.
    std::vector<std::string> lines(sections.size());
    for (size_t i = 1; i < sections.size() && i < session.cmbFigures.size(); ++i)
        lines[i] = session.cmbFigures[i];
    WorkLimit work(whole.size());
    const std::vector<size_t> lastLf = LastLineEnds(whole, lines, "\n", work);
    const std::vector<size_t> lastBlankLf = LastLineEnds(whole, lines, " \n", work);
    const Occurrences materials(whole, "material "), figureTypes(whole, "figureType"),
        displayModes(whole, "displayMode"), closes(whole, "}");
    for (size_t i = 1; i < sections.size(); ++i) {
        const Occurrences &endKeys = i == 1 ? figureTypes : displayModes;
        const std::string &line = lines[i];
        const size_t ownerAt = lastLf[i] != 0 ? lastLf[i] : lastBlankLf[i];
        if (ownerAt == 0)
            Fail(ErrInvalidCall); // a search can't start at position 0
        const size_t materialFrom = materials.NextAt(ownerAt);
        const size_t endKeyAt = endKeys.NextAt(ownerAt);
        if (endKeyAt == 1)
            Fail(ErrInvalidCall);
        const size_t lastAt = endKeyAt == 0 ? materials.LastWithin(whole.size()) : materials.LastWithin(endKeyAt - 1);
        if (lastAt == 0)
            Fail(ErrInvalidCall);
        const long long closeAt = static_cast<long long>(closes.NextAt(lastAt));
        const std::string_view part =
            Mid(whole, static_cast<long long>(materialFrom), closeAt - static_cast<long long>(materialFrom) + 1);
        work.Spend(line.size() + part.size());
        sections[i] = CrToLf(line + "\n\t{\n\t" + std::string(part) + "\n\t}");
        if (progress) {
            ui.ProgressValue(static_cast<int>(i));
            ui.DoEvents();
        }
    }
    step = 54;
    sections[0] = text;
    if (progress)
        ui.ProgressClose();
}

} // namespace gelvane
