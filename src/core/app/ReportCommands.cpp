#include "core/app/ReportCommands.h"

#include "core/app/CommandLine.h"
#include "core/app/CommandOptions.h"
#include "core/app/SettingsFile.h"
#include "core/app/StartUp.h"
#include "core/maps/Thumbnails.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"
#include "core/reports/FileInfo.h"
#include "core/reports/FileInfoOutput.h"
#include "core/reports/HtmlReport.h"
#include "core/writer/MtlExport.h"

#include <filesystem>
#include <iostream>

namespace gelvane {

namespace {

// The console, with the one question these commands meet answered from the command
// line; everything else is told on standard error as the console tells it.
class CommandInteraction final : public ConsoleInteraction {
public:
    explicit CommandInteraction(bool loadChannels) : m_loadChannels(loadChannels) {}

    MsgResult MessageBox(const std::string &text, const std::string &title, MsgIcon icon, MsgButtons buttons) override {
        if (text == kLoadChannelsQuestion)
            return m_loadChannels ? MsgResult::Yes : MsgResult::No;
        return ConsoleInteraction::MessageBox(text, title, icon, buttons);
    }

private:
    bool m_loadChannels;
};

void ReportFailure(Interaction &ui, const std::exception &error) {
    const auto *failure = dynamic_cast<const Failure *>(&error);
    const int number = failure ? failure->Number : ErrInternal;
    const std::string description = failure ? failure->Description : DescribeError(ErrInternal);
    ui.MessageBox(description + ", error number " + std::to_string(number), kProgramTitle, MsgIcon::Exclamation);
}

// The settings, the session and the open that every command here shares; `work` prints or
// writes and returns the exit status.
template <class Work> int RunFileCommand(const CommandOptions &options, Work &&work) {
    CommandInteraction console(options.Channels);
    Interaction &ui = console;
    Settings settings = LoadSettings(ui);
    settings.AutoCorrect = false; // references stay as the file has them
    Session session(settings, ui);
    PrepareSession(session);

    const std::string &path = options.Paths.at(0);
    if (const int status = CheckCommandFile(ui, path))
        return status;
    std::error_code error;
    if (options.Paths.size() > 1 && std::filesystem::equivalent(options.Paths[1], GetLongPath(path), error)) {
        ui.MessageBox("Nothing is written over the file that is read: " + options.Paths[1], kProgramTitle,
                      MsgIcon::Exclamation);
        return 2;
    }
    if (!OpenForCommand(session, path, FigureByName(options.Figure)))
        return 1;
    try {
        return work(session);
    } catch (const std::exception &failure) {
        ReportFailure(ui, failure);
        return 1;
    }
}

} // namespace

FigureChooser FigureByName(const std::string &name) {
    return [name](Session &session, const FigureList &list) -> std::optional<int> {
        if (name.empty())
            return 0;
        for (size_t i = 0; i < list.FigureNames.size(); ++i)
            if (list.FigureNames[i] == name)
                return static_cast<int>(i);
        std::string names;
        for (const std::string &figure : list.FigureNames)
            names += (names.empty() ? "" : ", ") + ("\"" + figure + "\"");
        session.ui().MessageBox("No figure \"" + name + "\" in " + session.DialogFileName + "; its figures: " + names,
                                kProgramTitle, MsgIcon::Exclamation);
        return std::nullopt;
    };
}

bool OpenForCommand(Session &session, const std::string &path, const FigureChooser &choose) {
    session.CommandText.clear();
    session.CommandLineOpen = true;
    session.DialogFileName = GetLongPath(path);
    RunOpenMenu(session, MenuOfCommandText(path), choose);
    session.CommandLineOpen = false;
    return !session.OpenFailed && !session.OpenCancelled && !session.FileName.empty();
}

int RunInfoCommand(const CommandOptions &options) {
    return RunFileCommand(options, [&](Session &session) {
        std::cout << (options.Json ? FileInfoJson(session, CreationDateText) : FileInfoListing(session));
        std::cout.flush();
        return std::cout ? 0 : 1;
    });
}

int RunReportCommand(const CommandOptions &options) {
    return RunFileCommand(options, [&](Session &session) {
        ThumbnailCache thumbnails;
        return CreateHtmlReport(session, thumbnails, options.Paths[1]) ? 0 : 1;
    });
}

int RunMtlCommand(const CommandOptions &options) {
    return RunFileCommand(options, [&](Session &session) {
        WriteMtlFile(session, options.Paths[1]);
        return 0;
    });
}

} // namespace gelvane
