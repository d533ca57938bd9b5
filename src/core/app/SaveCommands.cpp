#include "core/app/SaveCommands.h"

#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"
#include "core/writer/MtlExport.h"
#include "core/writer/PoseWriter.h"

namespace gelvane {

namespace {

// Runs a write. A file that can't be saved is said in a box, since the user would
// otherwise take the old file for the new one; the writer's other failures end it quietly.
template <class Write> SaveResult Quietly(Session &session, Write &&write) {
    try {
        write();
        return SaveResult::Saved;
    } catch (const SaveFailure &failure) {
        session.ui().MessageBox(failure.Description, kProgramTitle, MsgIcon::Exclamation);
    } catch (...) {
    }
    return SaveResult::Failed;
}

} // namespace

SaveResult mnuSave_Click(Session &session) {
    session.OutputPath = session.FileName;
    return Quietly(session, [&] { WritePoseFile(session); });
}

SaveResult mnuSaveAs_Click(Session &session) {
    FileDialogRequest request;
    request.ForSave = true;
    request.DefaultExt = "pz2";
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
    SaveResult result = SaveResult::Cancelled;
    if (chosen) {
        session.OutputPath = *chosen;
        result = Quietly(session, [&] { WritePoseFile(session); });
    }
    if (result != SaveResult::Saved) {
        // The dialog points at the open file again.
        session.OutputPath = session.FileName;
        return result;
    }
    session.FileName = session.OutputPath;
    session.LastSaveFolder = std::string(FolderPart(session.FileName));
    session.View.Caption = CaptionOf(session.FileName);
    session.View.mnuSaveEnabled = true;
    return result;
}

SaveResult mnuExportMTL_Click(Session &session) {
    FileDialogRequest request;
    request.ForSave = true;
    request.DefaultExt = "mtl";
    request.Filter = "Material files|*.mtl|All files|*.*";
    request.Title = "Save material file as...";
    request.Flags = kSaveDialogFlags;
    request.InitialDir = session.SaveDialogInitialDir;
    session.OutputPath.clear();
    const std::optional<std::string> chosen = session.ui().ChooseFile(request);
    SaveResult result = SaveResult::Cancelled;
    if (chosen) {
        session.OutputPath = *chosen;
        result = Quietly(session, [&] { WriteMtlFile(session, *chosen); });
    }
    // A later Save writes to the pose file again.
    session.OutputPath = session.FileName;
    return result;
}

} // namespace gelvane
