#include "core/reports/BatchConverter.h"

#include "core/maps/MapPaths.h"
#include "core/model/CommandText.h"
#include "core/model/SaveOptions.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/OpenFile.h"
#include "core/writer/PoseWriter.h"

#include <algorithm>
#include <exception>

namespace gelvane {

namespace {

constexpr int kAddDialogFlags = kOfnAllowMultiSelect | kOfnExplorer | kOfnLongNames | kOfnHideReadOnly;

// The paths of a dialog answer: one full path, or a folder and the names in it.
std::vector<std::string> ChosenPaths(const std::string &answer) {
    std::vector<std::string> parts;
    for (size_t from = 0;;) {
        const size_t zero = answer.find('\0', from);
        parts.push_back(answer.substr(from, zero == std::string::npos ? std::string::npos : zero - from));
        if (zero == std::string::npos)
            break;
        from = zero + 1;
    }
    if (parts.size() == 1)
        return parts;
    const std::string &folder = parts[0];
    const bool ends = !folder.empty() && (folder.back() == '/' || folder.back() == '\\');
    const bool windows = folder.find('\\') != std::string::npos && folder.find('/') == std::string::npos;
    std::vector<std::string> paths;
    for (size_t i = 1; i < parts.size(); ++i)
        paths.push_back(folder + (ends ? "" : windows ? "\\" : "/") + parts[i]);
    return paths;
}

// A row for `path` with the first operation; false, after the duplicate box, when the
// list holds the path already.
bool AddRow(Session &session, BatchConverter &batch, const std::string &path) {
    auto &rows = batch.ListView1;
    if (std::any_of(rows.begin(), rows.end(), [&](const BatchRow &row) { return row.Path == path; })) {
        session.ui().MessageBox("File " + path + "\r\nis already in the list", "Duplicate file", MsgIcon::Exclamation);
        return false;
    }
    rows.push_back({path, kConvertIntoP5, false});
    return true;
}

void SetQuietly(Session &session, bool &box, bool checked) {
    session.EventsEnabled = false;
    box = checked;
    session.EventsEnabled = true;
}

struct OperationOf {
    const char *Text;
    bool P5;
    bool Copy;
};

constexpr OperationOf kOperations[] = {
    {kConvertIntoP5, true, false},
    {kConvertIntoP4, false, false},
    {kCopyInP5, true, true},
    {kCopyInP4, false, true},
};

} // namespace

BatchConverter LoadBatchConverter(const Settings &settings) {
    BatchConverter batch;
    if (settings.PoserFolder != "none")
        batch.DialogInitialDir = settings.PoserFolder;
    return batch;
}

void AddFiles(Session &session, BatchConverter &batch) {
    Interaction &ui = session.ui();
    try {
        FileDialogRequest request;
        request.Title = "Add file(s)";
        request.Filter = "Pose files|*.pz2;*.cm2;*.lt2;*.hd2;*.fc2|All files|*.*";
        request.Flags = kAddDialogFlags;
        // A folder that doesn't exist leaves the dialog where it was.
        const std::string &pz2Folder = session.settings().PZ2Folder;
        if (batch.LastBatchFolder.empty()) {
            if (FolderExists(pz2Folder))
                batch.DialogInitialDir = pz2Folder;
        } else if (FolderExists(batch.LastBatchFolder)) {
            batch.DialogInitialDir = batch.LastBatchFolder;
        }
        request.InitialDir = batch.DialogInitialDir;
        const std::optional<std::string> chosen = ui.ChooseFile(request);
        if (!chosen || chosen->empty())
            return;
        batch.DialogFileName = *chosen;
        const std::vector<std::string> paths = ChosenPaths(*chosen);
        batch.LastBatchFolder = std::string(FolderPart(paths.front()));
        for (const std::string &path : paths)
            if (!AddRow(session, batch, path))
                return;
        batch.ControlsEnabled = true;
    } catch (const std::exception &error) {
        ui.MessageBox(error.what());
    }
}

void DropFiles(Session &session, BatchConverter &batch, const std::vector<std::string> &paths) {
    for (const std::string &path : paths)
        if (!AddRow(session, batch, path))
            break;
    if (!batch.ListView1.empty())
        batch.ControlsEnabled = true;
}

void RemoveSelected(BatchConverter &batch) {
    auto &rows = batch.ListView1;
    rows.erase(std::remove_if(rows.begin(), rows.end(), [](const BatchRow &row) { return row.Selected; }), rows.end());
    if (rows.empty())
        batch.ControlsEnabled = false;
}

void SelectAll(BatchConverter &batch) {
    for (BatchRow &row : batch.ListView1)
        row.Selected = true;
}

void OptionClick(BatchConverter &batch, int option) {
    if (option < 1 || option > 4)
        return;
    batch.Option = option;
    for (BatchRow &row : batch.ListView1)
        if (row.Selected)
            row.Operation = kOperations[option - 1].Text;
}

bool HasPartialMaterials(const Session &session) {
    for (const Figure &figure : session.Figures)
        for (const Material &m : figure.Materials) {
            if (m.Name.empty())
                continue; // the element of a list that holds nothing
            const bool all = m.KdColorEnabled && m.KsColorEnabled && m.KaColorEnabled && m.ReflectionColorEnabled &&
                             m.NsExponentEnabled && m.tMinEnabled && m.tMaxEnabled && m.tExpoEnabled &&
                             m.textureMapEnabled && m.bumpMapEnabled && m.reflectionMapEnabled &&
                             m.transparencyMapEnabled && m.TextureColorEnabled && m.bumpStrengthEnabled &&
                             m.reflectionStrengthEnabled && m.ksIgnoreTextureEnabled && m.reflectThruLightsEnabled &&
                             m.reflectThruKdEnabled;
            if (!all)
                return true;
        }
    return false;
}

std::string PartialQuestion(std::string_view fileName, bool lastRow) {
    return "File " + std::string(fileName) + "\r\ncontains partial materials which don't always work in Poser 5.\r\n" +
           (lastRow ? "Would you like to cancel the operation?" : "Would you like to skip to the next file?");
}

std::string BatchCopyPath(std::string_view path, std::string_view suffix) {
    std::string_view extension = Right(path, 4);
    if (StartsWith(extension, "."))
        extension = Right(path, 3);
    const long long keep = static_cast<long long>(path.size()) - static_cast<long long>(extension.size()) - 1;
    return std::string(Left(path, keep)) + std::string(suffix) + std::string(extension);
}

void OpenBatchRow(Session &session, const std::string &path) {
    session.PoserFileKind = KindPZ2;
    // Each row opens its own file, never the one the program was started with.
    session.CommandText.clear();
    session.CommandLineOpen = true;
    session.DialogFileName = path;
    OpenFile(session);
    session.CommandLineOpen = false;
}

std::optional<std::string> RunBatchOperation(Session &session, const BatchRow &row, std::string_view dialogFileName) {
    const auto operation = std::find_if(std::begin(kOperations), std::end(kOperations),
                                        [&](const OperationOf &o) { return row.Operation == o.Text; });
    if (operation == std::end(kOperations))
        return std::nullopt;
    if (!operation->Copy && !HasPoseLikeExtension(row.Path))
        throw Failure(ErrInvalidCall, "Only .pz2 .cm2 .fc2 .hd2 and .lt2 files are converted in place");
    optPoserFormat_Click(session, operation->P5 ? 1 : 0);

    if (!operation->Copy) {
        // As Save does, a failed write leaves the file as it was and says nothing.
        session.OutputPath = session.FileName;
        try {
            WritePoseFile(session);
        } catch (...) {
            return std::nullopt;
        }
        return session.FileName;
    }

    const std::string copy = BatchCopyPath(row.Path, operation->P5 ? "_P5." : "_P4.");
    session.OutputPath = copy;
    WritePoseFile(session);
    session.FileName = copy;
    // The folder of the batch window's own dialog: a list filled only by dropping has none.
    const size_t separator = dialogFileName.find_last_of("/\\");
    if (separator == std::string_view::npos)
        Fail(ErrInvalidCall);
    session.LastSaveFolder = std::string(dialogFileName.substr(0, separator));
    session.View.Caption = CaptionOf(session.FileName);
    session.View.mnuSaveEnabled = true;
    return copy;
}

void EnterBatchClosingState(Session &session) {
    session.ui().ProgressClose();
    session.BatchMode = false;
    session.View.ClearMaterialControls();
    session.View.cmbFiguresEnabled = false;
    session.View.cmdCreateMatEnabled = false;
    session.View.cmdNewMatEnabled = false;
    ResetMainWindow(session);
    // The model is empty now, so the object list must be too.
    session.cmbFigures.clear();
    session.View.cmbFiguresIndex = -1;
    SetQuietly(session, session.Options.chkChannels, true);
    SetQuietly(session, session.Options.chkNoMaterialData, true);
    session.Options.chkChannelsEnabled = false;
    session.Options.chkNoMaterialDataEnabled = false;
    session.DialogFileName.clear();
}

BatchEnd RunBatch(Session &session, BatchConverter &batch) {
    Interaction &ui = session.ui();
    const size_t count = batch.ListView1.size();
    session.BatchMode = true;
    ui.ProgressShow(" Please wait", "Running batch conversion...", static_cast<int>(count));
    ui.ProgressValue(0);
    auto endRun = [&] {
        ui.ProgressClose();
        session.BatchMode = false;
    };

    int done = 0;
    for (size_t i = 0; i < count; ++i) {
        // Esc in the progress window arrives here, between two rows.
        ui.DoEvents();
        if (ui.ProgressCancelling()) {
            EnterBatchClosingState(session);
            return BatchEnd::Stopped;
        }
        const BatchRow &row = batch.ListView1[i];
        try {
            ui.ProgressDetail(MapFileName(row.Path));
            OpenBatchRow(session, row.Path);
            if (session.OpenCancelled) {
                endRun();
                return BatchEnd::OpenCancelled;
            }
            // The question reads the option buttons as they stand, not the row's operation.
            if ((batch.Option == 1 || batch.Option == 3) && HasPartialMaterials(session)) {
                const bool last = i + 1 == count;
                if (ui.MessageBox(PartialQuestion(session.DialogFileName, last), kPartialTitle, MsgIcon::None,
                                  MsgButtons::YesNo) == MsgResult::Yes) {
                    if (!last)
                        continue; // the bar stays where it is
                    EnterBatchClosingState(session);
                    return BatchEnd::Stopped;
                }
            }
            if (session.OpenFailed)
                Fail(ErrInvalidCall);
            RunBatchOperation(session, row, batch.DialogFileName);
        } catch (const std::exception &) {
            endRun();
            ui.MessageBox("Could not complete requested operation for " + row.Path + "\r\nBatch operations aborted.",
                          "Error", MsgIcon::Exclamation);
            return BatchEnd::Aborted;
        }
        ui.ProgressValue(++done);
    }
    ui.ProgressClose();
    ui.MessageBox(kBatchSuccess, "Job finished", MsgIcon::Information);
    EnterBatchClosingState(session);
    return BatchEnd::Completed;
}

} // namespace gelvane
