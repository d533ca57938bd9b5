#include "core/reader/FigureSelection.h"

#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/ActorLoader.h"
#include "core/reader/DeltaRemoval.h"
#include "core/reader/TextIndex.h"

#include <algorithm>

namespace gelvane {

namespace {

constexpr std::string_view kResFile = "figureResFile ";

long long Pos(size_t p) {
    return static_cast<long long>(p);
}

// The text from `start` up to, and without, the next line feed; a line
// without one is a failure, as the length to take turns negative.
std::string_view LineFrom(std::string_view text, size_t start) {
    const size_t lf = InStr(text, "\n", start);
    return Mid(text, Pos(start), Pos(lf) - Pos(start));
}

} // namespace

int CountFigures(std::string_view fileText) {
    size_t count = 0;
    for (size_t at = fileText.find(kResFile); at != std::string_view::npos;
         at = fileText.find(kResFile, at + kResFile.size()))
        ++count;
    return static_cast<int>(RoundHalfEven(static_cast<double>(count) * kResFile.size() / 28.0));
}

void ScanFigures(FigureList &list) {
    const std::string_view text = list.FileText;
    const int count = CountFigures(text);
    list.FigureNames.clear();
    list.GeometryNames.clear();
    list.FigurePositions.clear();

    // The searches move forward through the text: each remembers where it stands.
    Finder blanked(text, "\nfigure \n"), plain(text, "\nfigure\n"), names(text, "name    ");
    size_t from = 1;
    for (int i = 0; i < count; ++i) {
        size_t block = blanked.Next(from);
        if (block == 0)
            block = plain.Next(from);
        const size_t name = names.Next(block == 0 ? 1 : block);
        if (block == 0)
            Fail(ErrInvalidCall); // a search from position 0
        list.FigureNames.push_back(StripControls(LineFrom(text, name + 8)));
        from = block + 1;
    }

    from = 1;
    for (int i = 0; i < count; ++i) {
        const size_t at = InStr(text, "\nfigureResFile ", from);
        const size_t behind = at + 14; // behind "\nfigureResFile"
        list.FigurePositions.push_back(static_cast<int32_t>(behind - 13));
        std::string geometry = StripControls(LineFrom(text, behind));
        if (const size_t colon = InStrRev(geometry, ":"))
            geometry.erase(0, colon);
        if (const size_t backslash = InStrRev(geometry, "\\"))
            geometry.erase(0, backslash);
        list.GeometryNames.push_back(std::move(geometry));
        from = at + 1;
    }
}

bool LoadFigureSelection(Session &session, FigureList &list) {
    Interaction &ui = session.ui();
    try {
        ui.ProgressShow("Please wait", "Reading file...", 3);
        const int32_t startTime = SessionSeconds(session);
        list.FileText = ReadFileBytes(session.DialogFileName);
        RemoveDeltas(session, list.FileText, startTime);
        ui.ProgressMax(3);
        ui.ProgressValue(2);
        ScanFigures(list);
        ui.ProgressClose();
        return true;
    } catch (const std::exception &) {
        ui.MessageBox(kNotValidCharacter, kProgramTitle, MsgIcon::Exclamation);
        ui.ProgressClose();
        list = FigureList{};
        return false;
    }
}

std::string CutFigureText(const FigureList &list, int index) {
    if (index < 0 || static_cast<size_t>(index) >= list.FigurePositions.size())
        Fail(ErrSubscript);
    const std::string_view text = list.FileText;
    const size_t start = static_cast<size_t>(list.FigurePositions[static_cast<size_t>(index)]);
    const size_t nextAt = InStr(text, kResFile, start + 15);
    const std::string_view head = Left(text, Pos(InStr(text, kResFile)) - 1);
    const std::string_view figureHead = Mid(text, Pos(start), Pos(nextAt) - Pos(start));
    const std::string_view keyLine = LineFrom(text, start);

    // Figures that share a geometry (two copies of one figure) share the key line: the n-th
    // of them owns the n-th part behind the heads that begins with it.
    const auto &positions = list.FigurePositions;
    const auto isHeadLine = [&positions](size_t at) {
        return std::find(positions.begin(), positions.end(), static_cast<int32_t>(at)) != positions.end();
    };
    int sharing = 0;
    for (int i = 0; i < index; ++i)
        if (LineFrom(text, static_cast<size_t>(positions[static_cast<size_t>(i)])) == keyLine)
            ++sharing;
    size_t bodyAt = InStr(text, keyLine, start + 15);
    for (; bodyAt != 0; bodyAt = InStr(text, keyLine, bodyAt + 1))
        if (!isHeadLine(bodyAt) && sharing-- == 0)
            break;
    size_t bodyEnd = InStr(text, kResFile, bodyAt + 15);
    const bool last = bodyEnd == 0;
    if (last)
        bodyEnd = text.size();
    const std::string_view body = Mid(text, Pos(bodyAt), Pos(bodyEnd) - Pos(bodyAt));

    std::string cut;
    cut.reserve(head.size() + figureHead.size() + body.size() + 40);
    cut.append(head).append(figureHead).append(body);
    // The part of a figure that isn't last has lost the file's tail.
    if (!last)
        cut.append("\tsetGeomHandlerOffset 0 0 0\n}");
    return cut;
}

} // namespace gelvane
