#include "core/app/CommandLine.h"

#include "core/app/OpenCommands.h"
#include "core/app/SettingsFile.h"
#include "core/app/StartUp.h"
#include "core/model/CommandText.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reader/OpenFile.h"
#include "core/writer/PoseWriter.h"

#include <exception>
#include <sys/stat.h>

namespace gelvane {

std::string CommandTextOf(int argc, char **argv) {
    std::string text;
    for (int i = 1; i < argc; ++i) {
        if (i > 1)
            text += ' ';
        text += argv[i];
    }
    return text;
}

std::string SilentOutputPath(std::string_view input) {
    return std::string(Left(input, static_cast<long long>(InStrRev(input, ".")))) + "pz2";
}

void WriteSilentPose(Session &session) {
    if (!session.SilentConvert)
        return;
    session.SilentConvert = false;
    if (session.OpenFailed || session.OpenCancelled)
        return;
    try {
        session.DialogFileName = SilentOutputPath(session.FileName);
        session.OutputPath = session.DialogFileName;
        WritePoseFile(session);
    } catch (...) {
        // The write is the open's last step, and its failure the open's.
        ReportOpenFailure(session, std::current_exception(), 65);
    }
}

namespace {

// What identifies one version of a file: a save renames a new file over the old
// one, so its inode (or its time) changes even when the path stays the same.
struct FileStamp {
    bool exists = false;
    ino_t inode = 0;
    long long seconds = 0, nanos = 0;
    bool operator==(const FileStamp &) const = default;
};

FileStamp StampOf(const std::string &path) {
    struct stat st {};
    if (path.empty() || stat(path.c_str(), &st) != 0)
        return {};
    return {true, st.st_ino, static_cast<long long>(st.st_mtim.tv_sec), static_cast<long long>(st.st_mtim.tv_nsec)};
}

} // namespace

int CheckCommandFile(Interaction &ui, const std::string &path) {
    if (FileKindOfCommand(path) < 0) {
        ui.MessageBox("Unknown file kind (not .cr2 .pz2 .pp2 .hr2 .cm2 .fc2 .hd2 .lt2): " + path, kProgramTitle,
                      MsgIcon::Exclamation, MsgButtons::OK);
        return 2;
    }
    const std::string longPath = GetLongPath(path);
    if (longPath.empty() || !FileExists(longPath)) {
        ui.MessageBox("File not found: " + path, kProgramTitle, MsgIcon::Exclamation, MsgButtons::OK);
        return 3;
    }
    return 0;
}

int RunSilentConversion(const std::string &commandText) {
    ConsoleInteraction ui;
    const Settings settings = LoadSettings(ui);
    Session session(settings, ui);
    PrepareSession(session);
    session.CommandText = commandText;
    session.CommandLineOpen = true;

    const int kind = FileKindOfCommand(commandText);
    const std::string path = CommandPath(commandText);
    if (const int status = CheckCommandFile(ui, path))
        return status;
    const std::string longPath = GetLongPath(path);

    // The writer keeps the on-disk spelling of an existing target, so "X.PZ2" is rewritten in place.
    const std::string output = SilentOutputPath(longPath);
    auto written = [&] { return StampOf(ResolvePath(output).value_or(output)); };
    const FileStamp before = written();
    if (kind == KindCR2)
        OpenCharacterFromOutside(session, {});
    else
        OpenCommand(session, kind);
    if (session.OpenFailed || session.OpenCancelled)
        return 1;
    const FileStamp after = written();
    if (!after.exists || after == before) {
        ui.MessageBox("No pose file was written for " + path, kProgramTitle, MsgIcon::Exclamation, MsgButtons::OK);
        return 1;
    }
    return 0;
}

} // namespace gelvane
