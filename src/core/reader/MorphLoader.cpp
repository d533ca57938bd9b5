#include "core/reader/MorphLoader.h"

#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Paths.h"
#include "core/reader/ActorLoader.h"
#include "core/reader/DeltaRemoval.h"
#include "core/reader/MaterialParser.h"
#include "core/reader/OpenFile.h"

#include <algorithm>

namespace gelvane {

namespace {

long long Pos(size_t p) {
    return static_cast<long long>(p);
}

// Reads the single BODY actor from the file's start, in growing stretches, so
// that a large file isn't read whole.
std::string BodyActorFromFile(const std::string &path) {
    const uint64_t size = FileSize(path);
    for (uint64_t stretch = 4096;; stretch *= 2) {
        const std::string head = ReadFileRange(path, 0, stretch);
        try {
            return std::string(BodyActorText(head));
        } catch (const Failure &failure) {
            if (failure.Number != ErrInputPastEnd || stretch >= size)
                throw;
        }
    }
}

} // namespace

std::string_view BodyActorText(std::string_view source) {
    const size_t body = source.find("actor BODY");
    if (body == std::string_view::npos)
        Fail(ErrInputPastEnd);
    const size_t next = source.find("actor ", body + 6);
    if (next == std::string_view::npos)
        Fail(ErrInputPastEnd);
    return source.substr(body, next - body);
}

std::string_view ChannelPart(std::string &text, std::string_view fileName, bool singleActor) {
    size_t start = InStr(text, "}") + 2;
    const size_t leading = text.find_first_not_of('\n');
    text.erase(0, leading == std::string::npos ? text.size() : leading);

    const std::string ending = LCase(Right(fileName, 4));
    if (ending == ".cr2")
        start = InStr(text, "\nfigureResFile", InStr(text, "\nfigureResFile") + 1) + 15;
    else if (ending == ".hr2" || ending == ".pp2")
        start = InStr(text, "\nprop ", InStr(text, "\nprop ") + 1);

    size_t end = 0;
    if (const size_t ik = InStr(text, "ikchannels")) {
        end = InStr(text, "\nfigure\n", ik);
        if (end == 0)
            end = InStr(text, "\nfigure \n", ik);
    }
    if (end == 0)
        end = InStr(text, "\nfigure\n");
    if (end == 0)
        end = InStr(text, "\nfigure \n");
    if (end == 0)
        end = text.size();

    size_t from = 0, count = text.size(); // 0-based range of the part in `text`
    if (!singleActor) {
        const std::string_view part = Mid(text, Pos(start), Pos(end) - Pos(start));
        from = part.empty() ? text.size() : static_cast<size_t>(part.data() - text.data());
        count = part.size();
    }
    if (count > 0 && text[from] == '\n') {
        ++from;
        --count;
    }

    // The hair prop gets the one name that the pose writer expects.
    if (EndsWith(LCase(fileName), ".hr2")) {
        const std::string_view part(text.data() + from, count);
        const size_t lf = part.find('\n');
        const size_t lineLength = lf == std::string_view::npos ? part.size() : lf;
        if (lineLength > 0) {
            constexpr std::string_view kHair = "prop figureHair";
            text.replace(from, lineLength, kHair);
            count = count - lineLength + kHair.size();
        }
    }
    return std::string_view(text.data() + from, count);
}

void LoadMorphPoseData(Session &session, bool singleActor, bool sameFile, std::string_view suppliedText,
                       bool keepActors) {
    Interaction &ui = session.ui();
    const bool batch = session.BatchMode;
    auto cancelEnd = [&] {
        if (!batch)
            ui.ProgressClose();
    };
    try {
        if (!sameFile) {
            const std::optional<std::string> chosen = ui.ChooseFile(OpenDialogRequest(session, session.PoserFileKind));
            if (!chosen || chosen->empty()) {
                if (!batch)
                    ui.ProgressClose();
                session.DialogFileName = session.FileName;
                return;
            }
            session.DialogFileName = *chosen;
        }
        // Rows behind the last owner are plain actors of an earlier load.
        if (session.cmbFigures.size() > session.Figures.size())
            session.cmbFigures.resize(session.Figures.size());

        const int32_t startTime = SessionSeconds(session);
        if (!batch)
            ui.ProgressShow("Please wait", "Reading file...", 6);

        std::string text;
        // A large file loses its deltas while it is read, so it never stands in memory whole.
        bool whileReading = false;
        if (!singleActor) {
            if (!suppliedText.empty()) {
                text = std::string(suppliedText);
            } else {
                const auto real = ResolvePath(session.DialogFileName);
                whileReading = real && FileExists(*real) && FileSize(*real) > kPiecewiseDeltasLimit;
                if (!whileReading)
                    text = ReadFileBytes(session.DialogFileName);
            }
        } else {
            text = suppliedText.empty() ? BodyActorFromFile(session.DialogFileName)
                                        : std::string(BodyActorText(suppliedText));
            if (text.find("material ") != std::string::npos)
                ReadCustomMaterials(session, text);
            if (!batch)
                ui.ProgressValue(1);
        }

        if (ui.ProgressCancelling())
            return cancelEnd();
        if (!batch)
            ui.ProgressStatus("Reading data...");

        if (whileReading) {
            if (!ReadFileWithoutDeltas(session, session.DialogFileName, text, startTime))
                return cancelEnd();
        } else if (text.size() > kPiecewiseDeltasLimit) {
            if (!RemoveDeltas(session, text, startTime))
                return cancelEnd();
        } else {
            RemoveDeltasOneRun(text);
        }
        NormaliseFigureLines(text);

        if (text.find("channels\n") == std::string::npos && text.find("channels \n") == std::string::npos) {
            // The progress window stays up until its next use.
            ui.MessageBox(kNoMorphData, kProgramTitle, MsgIcon::Exclamation);
            return;
        }

        const std::string_view part = ChannelPart(text, session.DialogFileName, singleActor);

        if (!batch) {
            ui.ProgressDetail(ElapsedText(session, startTime));
            ui.ProgressValue(6);
        }
        ui.DoEvents();
        if (ui.ProgressCancelling())
            return cancelEnd();
        if (!batch) {
            ui.ProgressDetail(ElapsedText(session, startTime));
            ui.ProgressClose(); // the actor loader shows it again
        }

        LoadActorSection(session, part, singleActor, keepActors, startTime);
        ApplyDisableProperties(session);
        session.FileModified = true;
    } catch (const Failure &failure) {
        if (!batch)
            ui.ProgressClose();
        session.DialogFileName = session.FileName;
        ui.MessageBox(kNoMorphDataFound, failure.Description, MsgIcon::Exclamation);
    } catch (const std::exception &error) {
        if (!batch)
            ui.ProgressClose();
        session.DialogFileName = session.FileName;
        ui.MessageBox(kNoMorphDataFound, error.what(), MsgIcon::Exclamation);
    }
}

} // namespace gelvane
