#include "core/reader/OpenFile.h"

#include "core/model/CommandText.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/ActorLoader.h"
#include "core/reader/MaterialParser.h"
#include "core/reader/PropLines.h"
#include "core/reader/TailScan.h"
#include "core/reader/TextIndex.h"

#include <algorithm>
#include <exception>
#include <new>
#include <stdexcept>

namespace gelvane {
namespace {

struct KindDialog {
    const char *Title;
    const char *DefaultExt;
    const char *Filter;
};

const KindDialog &DialogOfKind(int kind) {
    static const KindDialog dialogs[] = {
        {"Open Character file", "cr2", "Characters|*.cr2|All files|*.*"},
        {"Open Pose file", "pz2",
         "Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Face files|*.fc2|Light files|*.lt2|All files|*.*"},
        {"Open Prop file", "pp2", "Props|*.pp2|All files|*.*"},
        {"Open Hair file", "hr2", "Hair|*.hr2|All files|*.*"},
        {"Open Camera file", "cm2",
         "Camera files|*.cm2|Pose files|*.pz2|Hand files|*.hd2|Face files|*.fc2|Light files|*.lt2|All files|*.*"},
        {"Open Face file", "fc2",
         "Face files|*.fc2|Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Light files|*.lt2|All files|*.*"},
        {"Open Hand file", "hd2",
         "Hand files|*.hd2|Pose files|*.pz2|Camera files|*.cm2|Face files|*.fc2|Light files|*.lt2|All files|*.*"},
        {"Open Light file", "lt2",
         "Light files|*.lt2|Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Face files|*.fc2|All files|*.*"},
    };
    if (kind < 0 || kind > 7)
        Fail(ErrSubscript);
    return dialogs[kind];
}

// Removes every run of the characters in `which` that directly follows a line feed:
// the result of replacing line feed + each of them by a line feed until none is left.
void DropAfterLineFeedsInPlace(std::string &text, std::string_view which) {
    bool drop[256] = {};
    for (char c : which)
        drop[static_cast<unsigned char>(c)] = true;
    char *data = text.data();
    const size_t n = text.size();
    size_t w = 0;
    bool lineStart = false;
    for (size_t r = 0; r < n; ++r) {
        const char c = data[r];
        if (lineStart && drop[static_cast<unsigned char>(c)])
            continue;
        data[w++] = c;
        lineStart = c == kLf;
    }
    text.resize(w);
}

std::string DropAfterLineFeeds(std::string_view text, std::string_view which) {
    std::string out(text);
    DropAfterLineFeedsInPlace(out, which);
    return out;
}

// Whether `pattern` (whose first letter doesn't recur in it) stands in the text once
// tabs and line ends are taken out.
bool HasIgnoringControls(std::string_view text, std::string_view pattern) {
    size_t matched = 0;
    for (char c : text) {
        if (c == '\t' || c == kCr || c == kLf)
            continue;
        if (c == pattern[matched]) {
            if (++matched == pattern.size())
                return true;
        } else {
            matched = c == pattern[0] ? 1 : 0;
        }
    }
    return false;
}

// Whether the lowered text without tabs and line ends begins with `prefix`.
bool BeginsIgnoringControls(std::string_view text, std::string_view prefix) {
    size_t matched = 0;
    for (char c : text) {
        if (matched == prefix.size())
            return true;
        if (c == '\t' || c == kCr || c == kLf)
            continue;
        if (LowerChar(c) != prefix[matched])
            return false;
        ++matched;
    }
    return matched == prefix.size();
}

void SetCheckedQuietly(Session &session, bool &box, bool checked) {
    session.EventsEnabled = false;
    box = checked;
    session.EventsEnabled = true;
}

// The file's leading comment, from the normalised head.
std::string CommentOfHead(std::string_view head) {
    std::string comment(Mid(head, static_cast<long long>(InStr(head, "{")) + 2));
    comment = DropAfterLineFeeds(comment, " ");
    comment = DropAfterLineFeeds(comment, "\t");

    size_t end = InStr(LCase(comment), "\nversion");
    for (const char *word : {"\nfigure", "\nprop ", "\nactor ", "\nlight "})
        if (end == 0)
            end = InStr(comment, word);
    // "//" on the very first line is no comment mark.
    const bool marked = StartsWith(comment, "#") || InStr(comment, "\n#") != 0 || InStr(comment, "\n//") != 0;
    if (end == 0 || !marked)
        return {};
    comment = Replace(Left(comment, static_cast<long long>(end) - 1), "\n", "\r\n");
    comment = Replace(comment, "#", "");
    comment = Replace(comment, "//", "");
    if (StartsWith(comment, "\r\n"))
        comment.erase(0, 2);
    comment = std::string(Trim(comment));
    return ReplaceUntilNone(comment, "\r\n ", "\r\n");
}

class OpenRun {
public:
    OpenRun(Session &session, std::string_view supplied, int &step)
        : s(session), ui(session.ui()), settings(session.settings()), supplied(supplied), step(step) {}

    void Run();

private:
    bool ChooseSource();
    void ReadCommentAndVersion();
    void ReadWholeFile();
    void FillFigures();
    void Finish();

    Session &s;
    Interaction &ui;
    const Settings &settings;
    std::string_view supplied;
    int &step;
    Source source;
    std::string text;
    std::vector<std::string> sections{1};
};

void OpenRun::Run() {
    step = 1;
    s.OpenFailed = false;
    s.OpenCancelled = false;
    s.CustomMaterialsFound = false;
    if (!ChooseSource())
        return;
    source = supplied.empty() ? Source::FromFile(s.DialogFileName) : Source::FromText(supplied);

    step = 6;
    if (s.ImportMode) {
        ResetList(s.Figures);
    } else {
        // A fresh open must not carry over the actors of the file before, which a
        // file without channels would otherwise write back out.
        ResetMainWindow(s);
        s.View.ClearMaterialControls();
        if (s.ResetThumbnails)
            s.ResetThumbnails();
        // The template choice goes with the old file; the end of the open picks the default.
        if (s.RefreshTemplateList)
            s.RefreshTemplateList();
        // A fresh open starts from no owners; prop and hair files name element 0 before
        // the owners are counted.
        s.ClearMaterials();
    }
    step = 7;
    s.View.EnableMaterialControls();
    s.Options.chkNoMaterialDataEnabled = true;
    SetCheckedQuietly(s, s.Options.chkNoMaterialData, false);

    if (!s.ImportMode)
        ReadCommentAndVersion();

    step = 17;
    s.cmbFigures.clear();
    s.View.cmbFiguresIndex = -1;
    step = 18;
    const bool figureLike = IsFigureLikeKind(s.PoserFileKind);
    if (figureLike && s.MultiFigure)
        ScanProps(s, source, step);

    step = 27;
    if (!s.BatchMode) {
        ui.ProgressShow("Please wait", "Reading file...");
        ui.DoEvents();
    }
    step = 28;
    sections.assign(std::max<size_t>(1, s.cmbFigures.size()), std::string());
    const bool propKeys = s.PoserFileKind == KindPP2 || s.PoserFileKind == KindHR2;
    const std::string_view startKey = propKeys ? "addActor" : "setGeomHandlerOffset";
    const std::string_view endKey = propKeys ? "displayMode" : "figureType";

    if (figureLike) {
        text = ReadFigureText(s, source, startKey, endKey, step);
        CutMaterialText(s, source, text, sections, step);
    } else {
        ReadWholeFile();
    }
    FillFigures();
    Finish();
}

bool OpenRun::ChooseSource() {
    const std::string command(Trim(s.CommandText));
    if (!command.empty() && s.CommandLineOpen) {
        step = 2;
        if (IsSilentCommand(command))
            s.SilentConvert = true;
        s.DialogFileName = GetLongPath(CommandPath(command));
        s.CommandLineOpen = false;
        return true;
    }
    if (s.CommandLineOpen) {
        step = 3;
        s.CommandLineOpen = false;
        return true;
    }
    if (!supplied.empty())
        return true;

    step = 4;
    const int kind = s.PoserFileKind;
    FileDialogRequest request = OpenDialogRequest(s, kind);
    s.DialogFileName.clear();
    const auto chosen = ui.ChooseFile(request);
    if (!chosen) {
        s.MultiFigure = false;
        s.OpenCancelled = true;
        return false;
    }
    s.DialogFileName = *chosen;
    step = 5;
    s.LastFolder[static_cast<size_t>(kind)] = std::string(FolderPart(*chosen));
    return true;
}

void OpenRun::ReadCommentAndVersion() {
    step = 8;
    s.FileName = s.DialogFileName;
    s.View.Caption = CaptionOf(s.FileName);
    step = 9;
    if (IsFigureLikeKind(s.PoserFileKind)) {
        // A figure-like file has no channels until the user asks for them.
        SetCheckedQuietly(s, s.Options.chkChannels, true);
        s.Options.chkChannelsEnabled = false;
    }

    step = 10;
    std::string head = source.IsText() ? source.Left(50) : ReadHeadToBrace(source, 50);
    step = 11;
    head = Replace(CrToLf(head), "\n\n", "\n");
    head = DropAfterLineFeeds(head, "\t");

    step = 12;
    s.FileComment = CommentOfHead(head);

    step = 15;
    const bool p5 = s.Options.PoserFormatP5;
    const size_t numberAt = InStr(head, "number ");
    if (numberAt == 0) {
        s.FileVersion.clear();
        if (!p5 && !settings.PVersionNumber.empty())
            s.OutputVersion = settings.PVersionNumber;
        else if (p5)
            s.OutputVersion = settings.P5VersionNumber;
        else
            s.OutputVersion = "4.01";
    } else {
        // Up to the line end in front of the block's "}".
        const long long from = static_cast<long long>(numberAt) + 7;
        const long long close = static_cast<long long>(InStr(head, "}", numberAt));
        s.FileVersion = std::string(Trim(Mid(head, from, close - from - 1)));
        s.OutputVersion = s.FileVersion;
    }
    step = 16;
    if (!p5 && settings.SetPoserVersion)
        s.OutputVersion = settings.PVersionNumber;
    if (p5 && settings.SetP5Version)
        s.OutputVersion = settings.P5VersionNumber;
    VersionText_Change(s, s.OutputVersion);
}

void OpenRun::ReadWholeFile() {
    step = 33;
    // Every carriage return becomes a line feed at once, as the channel reader expects.
    text = source.All();
    step = 34;
    // One pass for both: carriage returns made line feeds, and the blanks and tabs that
    // then follow a line feed dropped. A single line end (a lone line feed or carriage
    // return, as the UNIX setting writes) becomes two line feeds, as "\r\n" does: the
    // cuts below count on two characters behind each line, and a file must read the same
    // whichever line ends it was saved with.
    {
        std::string out;
        out.reserve(text.size() + text.size() / 8);
        const size_t n = text.size();
        bool lineStart = false;
        for (size_t r = 0; r < n; ++r) {
            const char c = text[r];
            if (c == kCr || c == kLf) {
                out += kLf;
                if (c == kCr && r + 1 < n && text[r + 1] == kLf)
                    ++r;
                out += kLf;
                lineStart = true;
                continue;
            }
            if (lineStart && (c == ' ' || c == '\t'))
                continue;
            out += c;
            lineStart = false;
        }
        text = std::move(out);
    }

    step = 35;
    // The plain searches first: they are quicker, and the answer is the same in any order.
    const bool hasChannels = InStr(text, "actor ") != 0 || InStr(text, "prop ") != 0 || InStr(text, "light ") != 0 ||
                             InStr(text, "camera ") != 0 || HasIgnoringControls(text, "channels{");
    auto noChannels = [&] {
        if (!s.ImportMode) {
            SetCheckedQuietly(s, s.Options.chkChannels, true);
            s.Options.chkChannelsEnabled = false;
        }
    };
    if (!hasChannels || s.ImportMode) {
        noChannels();
    } else {
        step = 36;
        // The section begins behind the version block and the line ends that follow it.
        size_t begin = InStr(text, "}") + 1;
        while (begin <= text.size() && text[begin - 1] == kLf)
            ++begin;

        step = 37;
        const size_t length = text.size();
        const size_t ik = InStr(text, "ikchannels");
        size_t figureAt = ik != 0 ? InStr(text, "\nfigure", ik) : 0;
        if (figureAt == 0)
            figureAt = InStr(text, "\nfigure");
        if (figureAt == 0)
            figureAt = length;
        size_t channelsAt = std::max(InStrRev(text, "channels\n"), InStrRev(text, "channels \n"));
        if (channelsAt == 0)
            channelsAt = InStrRev(text, "\nactor ");
        if (channelsAt == 0)
            channelsAt = InStr(text, "\nlight ");
        if (channelsAt == 0)
            channelsAt = InStr(text, "\ncamera ");
        if (channelsAt == 0) {
            noChannels();
        } else {
            size_t end = InStr(text, "\nfigure\n", channelsAt);
            if (end == 0)
                end = InStr(text, "\nfigure \n");
            if (end == 0)
                end = InStr(text, "\nprop ", channelsAt);
            if (end == 0)
                end = length;
            step = 38;
            // Props behind the channels but in front of the figure block end the section earlier.
            const size_t propAt = InStr(text, "\nprop ", channelsAt);
            if (propAt != 0 && propAt < figureAt && propAt <= end)
                end = propAt;
            step = 39;
            if (end < begin)
                end = length;
            step = 40;
            const std::string_view section =
                Mid(text, static_cast<long long>(begin), static_cast<long long>(end) - static_cast<long long>(begin));
            LoadActorSection(s, section);
            ApplyDisableProperties(s);
            text.erase(begin - 1, section.size());
        }
    }

    step = 41;
    if (InStr(text, "\nfigure\n") != 0 || InStr(text, "\nfigure \n") != 0)
        AddFigureLine(s, "figure");
    step = 42;
    size_t propIndex = s.cmbFigures.size();
    for (size_t i = 0; i < s.cmbFigures.size(); ++i)
        if (StartsWith(s.cmbFigures[i], "actor ")) {
            propIndex = i;
            break;
        }

    step = 43;
    {
        // The scan deletes the prop lines only to move on; the sections below are cut from
        // the text as it stands now.
        WorkLimit work(text.size());
        const PropLineScan props = PosePropLines(text, work);
        // Each line goes in front of the first "actor " row, behind the one before: all
        // of them together at that row.
        s.cmbFigures.insert(s.cmbFigures.begin() + static_cast<long>(propIndex), props.Lines.begin(),
                            props.Lines.end());
        if (!props.Lines.empty()) {
            propIndex += props.Lines.size();
            sections.assign(propIndex, std::string());
        }
        if (props.Failed) {
            sections.assign(propIndex + 1, std::string());
            Fail(ErrInvalidCall);
        }
    }
    step = 44;
    // Without a cut the text is still the file as read and stripped: reading it afresh gives the same.
    step = 45;
    text.resize(static_cast<size_t>(Left(text, static_cast<long long>(InStrRev(text, "}")) - 1).size()));

    step = 46;
    // Each section is what lies behind the first place where its line begins a line, in
    // the text as the sections before have left it: the place of each line is found once.
    const bool figureFirst = sections.size() > 1 && !s.cmbFigures.empty() && s.cmbFigures[0] == "figure";
    std::vector<std::string> lines(sections.size());
    for (size_t i = 0; i < sections.size() && i < s.cmbFigures.size(); ++i)
        lines[i] = s.cmbFigures[i];
    WorkLimit work(text.size());
    const std::vector<size_t> firstAt = FirstLineStarts(text, lines, work);
    size_t length = text.size();
    auto cutSection = [&](size_t i) {
        size_t at = firstAt[i]; // the line feed in front of the line, counted from 1
        if (at != 0 && at + lines[i].size() > length)
            at = 0; // the first place lies behind what is left, so every other place does too
        sections[i] = text.substr(at, length - at);
        length = at;
    };
    for (size_t i = figureFirst ? 1 : 0; i < sections.size(); ++i)
        cutSection(i);
    if (figureFirst)
        cutSection(0);
    step = 47;
    text = sections[0];
}

void OpenRun::FillFigures() {
    step = 55;
    s.FileModified = s.ImportMode;
    s.MultiFigure = false;
    if (!s.cmbFigures.empty())
        s.View.cmdDeleteEnabled = true;

    step = 56;
    // A pose file keeps its version block in front of the first owner.
    if (BeginsIgnoringControls(text, "{version{number ")) {
        text = std::string(Mid(text, static_cast<long long>(InStr(text, "}")) + 3));
        sections[0] = text;
    }

    step = 57;
    const size_t count = sections.size();
    if (s.PoserFileKind != KindPP2 && s.PoserFileKind != KindHR2) {
        if (s.CustomMaterialsFound) {
            // The customMaterial owners of body parts move behind the sections.
            std::vector<Figure> grown(count);
            grown.insert(grown.end(), std::make_move_iterator(s.Figures.begin()),
                         std::make_move_iterator(s.Figures.end()));
            s.Figures = std::move(grown);
        } else {
            s.Figures.assign(count, Figure{});
        }
    }

    step = 58;
    // Names and map references of blocks that overlap repeat the same long lines; a file
    // whose materials would hold far more text than itself is refused.
    size_t textSize = text.size();
    for (const std::string &section : sections)
        textSize += section.size();
    WorkLimit work(textSize);
    for (size_t i = 0; i < count; ++i) {
        if (i == 0 && !s.BatchMode && !ui.ProgressVisible())
            ui.ProgressShow("Please wait", "Loading materials...");
        if (i >= s.Figures.size())
            Fail(ErrSubscript);
        const std::string_view whole = sections[i].empty() ? std::string_view(text) : std::string_view(sections[i]);
        Figure &figure = s.Figures[i];
        figure.Materials.assign(1, Material{});
        figure.Name = StripControls(whole.substr(0, whole.find(kLf)));
        if (figure.Name.empty() && s.Figures.size() > 1) {
            s.Figures.erase(s.Figures.begin() + static_cast<long>(i));
            break;
        }
        if ((s.cmbFigures.empty() ? std::string() : s.cmbFigures[0]) != figure.Name && s.Figures.size() == 1)
            AddFigureLine(s, figure.Name);

        std::string piece(Mid(whole, static_cast<long long>(InStr(whole, "{")) + 1));
        if (InStrRev(piece, "{") > InStrRev(piece, "}"))
            piece += '}';
        if (!s.BatchMode) {
            ui.ProgressStatus("Loading materials...");
            ui.DoEvents();
        }

        // The piece is worked on by offsets: `from` is where it begins now. Blocks may
        // overlap (a "material " inside a block); their lines are read once.
        const std::string lowered = LCase(piece);
        MaterialScan blocks(s, piece, work);
        NextOf lineEnds(piece, kLf), closes(piece, '}');
        size_t from = 0;
        int index = 0;
        while (true) {
            const size_t at = lowered.find("material ", from);
            if (at == std::string::npos)
                break;
            const size_t lineEnd = lineEnds.At(at);
            if (lineEnd == std::string::npos)
                Fail(ErrInvalidCall);
            if (index > 0)
                figure.Materials.emplace_back();
            Material &material = figure.Materials[static_cast<size_t>(index)];
            work.Spend(lineEnd - at + 16);
            material.Name = StripControls(std::string_view(piece).substr(at, lineEnd - at).substr(9));
            if (!s.BatchMode) {
                ui.ProgressStatus(material.Name + "...");
                ui.DoEvents();
            }
            const size_t close = closes.At(from);
            // Without a "}" behind it the block is empty.
            blocks.Parse(from, close == std::string::npos ? from : close + 1, static_cast<int>(i), index);
            const size_t next = lowered.find("material ", at + 8);
            if (next != std::string::npos)
                from = next;
            else if (close != std::string::npos)
                from = close + 1;
            else
                break; // nothing left to cut: the rest would be read again for ever
            ++index;
        }
    }
}

void OpenRun::Finish() {
    step = 59;
    if (!s.cmbFigures.empty()) {
        s.View.cmbFiguresIndex = 0;
        ShowMaterialList(s);
    }
    step = 60;
    if (!s.ImportMode) {
        if (!IsFigureLikeKind(s.PoserFileKind))
            s.View.mnuSaveEnabled = true;
        s.View.mnuSaveAsEnabled = true;
    }
    step = 61;
    if (s.cmbFigures.size() >= 2)
        s.View.cmdDeleteEnabled = true;
    step = 62;
    s.DialogFileName = s.FileName;
    step = 63;
    if (s.cmbFigures.empty() || s.View.lstMaterials.empty() || Trim(s.View.lstMaterials[0]).empty()) {
        s.cmbFigures.clear();
        s.View.cmbFiguresIndex = -1;
        s.View.lstMaterials.clear();
        s.View.lstMaterialsIndex = -1;
        SetCheckedQuietly(s, s.Options.chkNoMaterialData, true);
        s.Options.chkNoMaterialDataEnabled = false;
    }
    step = 64;
    s.IsHairFile = s.PoserFileKind == KindHR2;
    if (!s.BatchMode)
        ui.ProgressClose();

    step = 65;
    if (s.SilentConvert)
        return; // the caller writes the pose and ends the process
    step = 66;
    if (s.Options.chkNoMaterialData && s.ImportMode) {
        ui.MessageBox("There is no material data in the opened file", kProgramTitle, MsgIcon::Exclamation);
    } else if (!s.View.Combo1.empty()) {
        step = 67;
        for (size_t row = 0; row < s.View.Combo1.size(); ++row)
            if (EqualsNoCase(s.View.Combo1[row], settings.DefaultTemplate)) {
                s.View.Combo1Index = static_cast<int>(row);
                if (s.LoadTemplateGroups)
                    s.LoadTemplateGroups(static_cast<int>(row));
                break;
            }
    }
    step = 68;
    if (!s.cmbFigures.empty())
        s.View.mnuExportMTLEnabled = true;
}

void ReportFailure(Session &session, int number, const std::string &description, int step) {
    session.OpenFailed = true;
    // Shown in a batch run too: the batch then reports its own abort behind it.
    session.ui().MessageBox("Error in the OpenFile function\r\n" + description + ", error number " +
                                std::to_string(number) + "\r\nCode line number " + std::to_string(step),
                            kProgramTitle, MsgIcon::Exclamation);
    session.View.DisableMaterialControls();
    session.View.cmbFiguresEnabled = false;
    session.View.cmdNewMatEnabled = false;
    session.View.cmdCreateMatEnabled = false;
    session.View.ClearMaterialControls();
    SetCheckedQuietly(session, session.Options.chkChannels, true);
    SetCheckedQuietly(session, session.Options.chkNoMaterialData, true);
    session.Options.chkChannelsEnabled = false;
    session.Options.chkNoMaterialDataEnabled = false;
    session.DialogFileName.clear();
    if (!session.BatchMode)
        session.ui().ProgressClose();
    session.OpenCancelled = false;
}

} // namespace

void OpenFile(Session &session, std::string_view suppliedText) {
    int step = 1;
    try {
        OpenRun(session, suppliedText, step).Run();
    } catch (...) {
        ReportOpenFailure(session, std::current_exception(), step);
    }
}

void ReportOpenFailure(Session &session, std::exception_ptr error, int step) {
    try {
        std::rethrow_exception(error);
    } catch (const Failure &failure) {
        ReportFailure(session, failure.Number, failure.Description, step);
    } catch (const std::bad_alloc &) {
        ReportFailure(session, ErrOutOfMemory, DescribeError(ErrOutOfMemory), step);
    } catch (const std::out_of_range &) {
        ReportFailure(session, ErrSubscript, DescribeError(ErrSubscript), step);
    } catch (...) {
        ReportFailure(session, ErrInternal, DescribeError(ErrInternal), step);
    }
}

void AddFigureLine(Session &session, const std::string &line, int position) {
    auto &rows = session.cmbFigures;
    if (position >= 1) {
        if (static_cast<size_t>(position - 1) > rows.size())
            Fail(ErrInvalidCall);
        rows.insert(rows.begin() + (position - 1), line);
        return;
    }
    if (StartsWith(line, "actor ")) {
        rows.push_back(line);
        return;
    }
    const auto firstActor =
        std::find_if(rows.begin(), rows.end(), [](const std::string &row) { return StartsWith(row, "actor "); });
    rows.insert(firstActor, line);
}

FileDialogRequest OpenDialogRequest(const Session &session, int kind) {
    const KindDialog &dialog = DialogOfKind(kind);
    FileDialogRequest request;
    request.Title = dialog.Title;
    request.Filter = dialog.Filter;
    request.DefaultExt = dialog.DefaultExt;
    const std::string &folder = session.settings().FolderOfKind(kind);
    if (folder != "none")
        request.InitialDir = folder;
    if (!session.LastFolder[static_cast<size_t>(kind)].empty())
        request.InitialDir = session.LastFolder[static_cast<size_t>(kind)];
    request.Flags = kOpenDialogFlags;
    request.Preview = session.settings().CdlgThumb;
    return request;
}

} // namespace gelvane
