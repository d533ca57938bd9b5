#include "core/app/BatchCommand.h"

#include "core/app/CommandOptions.h"
#include "core/app/SettingsFile.h"
#include "core/app/StartUp.h"
#include "core/model/CommandText.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"
#include "core/reports/BatchConverter.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <unordered_set>

namespace gelvane {

namespace fs = std::filesystem;

std::vector<std::string> CollectBatchFiles(const std::vector<std::string> &paths, std::vector<std::string> &missing) {
    std::vector<std::string> files;
    std::unordered_set<std::string> seen;
    auto take = [&](std::string path) {
        if (seen.insert(path).second)
            files.push_back(std::move(path));
    };
    for (const std::string &path : paths) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (fs::is_directory(status)) {
            std::vector<std::string> found;
            fs::recursive_directory_iterator it(path, fs::directory_options::skip_permission_denied, error);
            for (; !error && it != fs::recursive_directory_iterator(); it.increment(error)) {
                std::error_code kind;
                if (it->is_regular_file(kind) && HasPoseLikeExtension(it->path().string()))
                    found.push_back(it->path().string());
            }
            std::sort(found.begin(), found.end());
            for (std::string &file : found)
                take(std::move(file));
        } else if (fs::exists(status)) {
            take(path);
        } else {
            missing.push_back(path);
        }
    }
    return files;
}

BatchTotals RunBatchFiles(Session &session, const std::vector<std::string> &files, const std::string &operation,
                          std::ostream &out) {
    Interaction &ui = session.ui();
    const bool p5 = operation == kConvertIntoP5 || operation == kCopyInP5;
    BatchTotals totals;
    session.BatchMode = true;
    ui.ProgressShow(" Please wait", "Running batch conversion...", static_cast<int>(files.size()));
    for (size_t i = 0; i < files.size(); ++i) {
        ui.DoEvents();
        if (ui.ProgressCancelling()) {
            totals.Interrupted = true;
            totals.NotDone = static_cast<int>(files.size() - i);
            break;
        }
        const BatchRow row{files[i], operation, false};
        std::string problem = "could not be read";
        std::optional<std::string> written;
        OpenBatchRow(session, row.Path);
        if (!session.OpenFailed && !session.OpenCancelled) {
            try {
                written = RunBatchOperation(session, row, row.Path);
                problem = "could not be written";
            } catch (const std::exception &error) {
                problem = error.what();
            }
        }
        if (!written) {
            ++totals.Failed;
            out << "failed     " << row.Path << ": " << problem << '\n';
        } else {
            ++totals.Converted;
            if (*written == row.Path)
                out << "converted  " << row.Path;
            else
                out << "copied     " << row.Path << " -> " << *written;
            out << (p5 && HasPartialMaterials(session) ? " (partial materials)\n" : "\n");
        }
        out.flush();
        ui.ProgressValue(static_cast<int>(i + 1));
    }
    ui.ProgressClose();
    session.BatchMode = false;
    return totals;
}

int RunBatchCommand(const CommandOptions &options) {
    ConsoleInteraction ui;
    ConsoleInteraction::CatchInterrupt();
    const Settings settings = LoadSettings(ui);
    Session session(settings, ui);
    PrepareSession(session);

    std::vector<std::string> missing;
    const std::vector<std::string> files = CollectBatchFiles(options.Paths, missing);
    for (const std::string &path : missing)
        std::cout << "failed     " << path << ": no such file or folder\n";
    if (files.empty() && missing.empty()) {
        std::cerr << "gelvane: no pose files (.pz2 .cm2 .fc2 .hd2 .lt2) found\n";
        return 2;
    }
    const char *operation =
        options.Copy ? (options.ToP4 ? kCopyInP4 : kCopyInP5) : (options.ToP4 ? kConvertIntoP4 : kConvertIntoP5);
    BatchTotals totals = RunBatchFiles(session, files, operation, std::cout);
    totals.Failed += static_cast<int>(missing.size());

    const size_t count = files.size() + missing.size();
    std::cout << count << (count == 1 ? " file: " : " files: ") << totals.Converted << " converted, " << totals.Failed
              << " failed";
    if (totals.Interrupted)
        std::cout << ", " << totals.NotDone << " not done (interrupted)";
    std::cout << '\n';
    if (totals.Interrupted)
        return 130;
    return totals.Failed == 0 ? 0 : 1;
}

} // namespace gelvane
