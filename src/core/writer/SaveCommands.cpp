#include "core/writer/SaveCommands.h"

#include "core/app/Settings.h"
#include "core/model/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/writer/PoseWriter.h"

namespace gelvane {
namespace {

// Prompt before overwriting, hide the read-only box, the path must exist.
constexpr int kSaveDialogFlags = 2054;

} // namespace

void mnuSave_Click(Session &session) {
    try {
        session.OutputPath = session.FileName;
        WritePoseFile(session);
    } catch (...) {
        // A failed save ends quietly; the previous file is intact.
    }
}

void mnuSaveAs_Click(Session &session) {
    try {
        FileDialogRequest request;
        request.ForSave = true;
        request.DefaultExt = "pz2";
        request.FileName.clear();
        request.Filter = "Pose files|*.pz2|Camera files|*.cm2|Hand files|*.hd2|Face files|*.fc2|Light files|*.lt2|"
                         "All files|*.*";
        if (session.settings().SaveFolder != "none")
            session.SaveDialogInitialDir = session.settings().SaveFolder;
        if (!session.LastSaveFolder.empty())
            session.SaveDialogInitialDir = session.LastSaveFolder;
        request.InitialDir = session.SaveDialogInitialDir;
        request.Title = "Save Pose file as...";
        request.Flags = kSaveDialogFlags;
        session.OutputPath.clear();
        const std::optional<std::string> chosen = session.ui().ChooseFile(request);
        if (!chosen)
            Fail(ErrDialogCancelled);
        session.OutputPath = *chosen;
        WritePoseFile(session);
        session.FileName = session.OutputPath;
        session.LastSaveFolder = std::string(FolderPart(session.FileName));
        session.View.Caption = "Gelvane - [" + std::string(FileNamePart(session.FileName)) + "]";
        session.View.mnuSaveEnabled = true;
    } catch (...) {
        // Cancel and failures alike: no message, and the dialog points at the open file again.
        session.OutputPath = session.FileName;
    }
}

} // namespace gelvane
