#include "core/app/CommandOptions.h"

#include "core/app/BatchCommand.h"
#include "core/app/CommandLine.h"
#include "core/app/ReportCommands.h"
#include "core/model/CommandText.h"
#include "core/model/Text.h"

#include <algorithm>
#include <bit>
#include <iostream>
#include <string_view>

#ifndef GELVANE_VERSION
#define GELVANE_VERSION "unknown"
#endif

namespace gelvane {

namespace {

using Setter = bool (*)(CommandOptions &, std::string_view value); // false: the value is refused
using Runner = int (*)(const CommandOptions &);

constexpr unsigned Bit(RunMode mode) {
    return 1u << static_cast<unsigned>(mode);
}
constexpr unsigned kFileModes = Bit(RunMode::Info) | Bit(RunMode::Report) | Bit(RunMode::Mtl);
// Operands of a mode that takes a list of them.
constexpr int kOneOrMore = -1;

// One option. A mode option chooses how the program runs (and takes the operands);
// the others modify the modes they name.
struct OptionRow {
    std::string_view Name;
    unsigned Modes; // a mode option: its own mode; any other: the modes it goes with
    bool SelectsMode;
    std::string_view Value;    // the placeholder of its value, empty when it takes none
    std::string_view Operands; // of a mode: what follows its options
    int OperandCount;          // of a mode: exactly this many, or kOneOrMore
    std::string_view Help;     // one line
    Setter Set;
    Runner Run;
};

int RunHelp(const CommandOptions &options) {
    if (options.Error.empty()) {
        std::cout << HelpText();
        return 0;
    }
    std::cerr << "gelvane: " << options.Error << "\n\n" << HelpText();
    return 2;
}

int RunVersion(const CommandOptions &) {
    std::cout << VersionText() << '\n';
    return 0;
}

constexpr OptionRow kOptions[] = {
    {"--batch", Bit(RunMode::Batch), true, "", "FILE|FOLDER...", kOneOrMore,
     "converts pose files in place; a folder gives its .pz2 .cm2 .fc2 .hd2 .lt2 files, subfolders too", nullptr,
     RunBatchCommand},
    {"--to", Bit(RunMode::Batch), false, "p4|p5", "", 0, "the format: Poser 4 / Pro Pack or Poser 5 (p5 unless given)",
     [](CommandOptions &o, std::string_view value) {
         const std::string lowered = LCase(value);
         o.ToP4 = lowered == "p4";
         return lowered == "p4" || lowered == "p5";
     },
     nullptr},
    {"--copy", Bit(RunMode::Batch), false, "", "", 0,
     "writes a copy beside each file, NAME_P5.EXT or NAME_P4.EXT, instead",
     [](CommandOptions &o, std::string_view) {
         o.Copy = true;
         return true;
     },
     nullptr},
    {"--info", Bit(RunMode::Info), true, "", "FILE", 1, "prints the labels of the File Information window, one a line",
     nullptr, RunInfoCommand},
    {"--json", Bit(RunMode::Info), false, "", "", 0, "prints the file information as one JSON object instead",
     [](CommandOptions &o, std::string_view) {
         o.Json = true;
         return true;
     },
     nullptr},
    {"--report", Bit(RunMode::Report), true, "", "FILE OUT.html", 2,
     "writes the HTML report of FILE, and its pictures to the folder OUT_Images beside it", nullptr, RunReportCommand},
    {"--mtl", Bit(RunMode::Mtl), true, "", "FILE OUT.mtl", 2,
     "writes the materials of FILE as a Wavefront material library", nullptr, RunMtlCommand},
    {"--channels", kFileModes, false, "", "", 0, "loads the morphs and poses of a .cr2, .pp2 or .hr2 file too",
     [](CommandOptions &o, std::string_view) {
         o.Channels = true;
         return true;
     },
     nullptr},
    {"--figure", kFileModes, false, "NAME", "", 0, "takes the figure NAME of a file with several (else the first)",
     [](CommandOptions &o, std::string_view value) {
         o.Figure = std::string(value);
         return !value.empty();
     },
     nullptr},
    {"--help", Bit(RunMode::Help), true, "", "", 0, "shows this text", nullptr, RunHelp},
    {"--version", Bit(RunMode::Version), true, "", "", 0, "shows the program's version", nullptr, RunVersion},
};

// What the one-line help of each option leaves out.
constexpr const char *kHelpNotes =
    "--info, --report and --mtl open FILE as its Open command does, without a window and without a\n"
    "question (--channels answers the one about morphs and poses): map references stay as the file has\n"
    "them, and nothing is written over FILE. A failure goes to standard error and the status is not 0.\n"
    "-s follows Settings.ini for format and line ends. --batch prints one line a file, then a summary;\n"
    "Ctrl-C stops between two files; its status is 0 only when every file converted.\n";

const OptionRow *FindOption(std::string_view name) {
    for (const OptionRow &row : kOptions)
        if (row.Name == name)
            return &row;
    return nullptr;
}

const OptionRow &ModeRow(RunMode mode) {
    for (const OptionRow &row : kOptions)
        if (row.SelectsMode && row.Modes == Bit(mode))
            return row;
    return kOptions[0];
}

// "--a", "--a or --b", "--a, --b or --c": the modes an option goes with.
std::string ModeNames(unsigned modes) {
    std::vector<std::string_view> names;
    for (const OptionRow &row : kOptions)
        if (row.SelectsMode && (row.Modes & modes))
            names.push_back(row.Name);
    std::string text;
    for (size_t i = 0; i < names.size(); ++i) {
        if (i > 0)
            text += i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text;
}

std::string Head(const OptionRow &row) {
    return std::string(row.Name) + (row.Value.empty() ? "" : " " + std::string(row.Value));
}

CommandOptions Refused(CommandOptions options, std::string error) {
    options.Mode = RunMode::Help;
    options.Error = std::move(error);
    return options;
}

} // namespace

CommandOptions ParseCommandLine(int argc, char **argv) {
    CommandOptions options;
    options.Text = CommandTextOf(argc, argv);
    if (IsSilentCommand(options.Text)) {
        options.Mode = RunMode::Silent;
        return options;
    }
    if (argc < 2 || !StartsWith(argv[1], "--"))
        return options;

    const OptionRow *mode = nullptr;
    std::vector<const OptionRow *> used;
    bool onlyOperands = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (onlyOperands || !StartsWith(arg, "--")) {
            options.Paths.emplace_back(arg);
            continue;
        }
        if (arg == "--") {
            onlyOperands = true;
            continue;
        }
        const size_t equals = arg.find('=');
        const std::string_view name = arg.substr(0, equals);
        const OptionRow *row = FindOption(name);
        if (!row)
            return Refused(options, "unknown option " + std::string(name));
        std::string_view value;
        if (!row->Value.empty()) {
            if (equals != std::string_view::npos)
                value = arg.substr(equals + 1);
            else if (i + 1 < argc)
                value = argv[++i];
            else
                return Refused(options, std::string(name) + " needs " + std::string(row->Value));
        } else if (equals != std::string_view::npos) {
            return Refused(options, std::string(name) + " takes no value");
        }
        if (row->Set && !row->Set(options, value))
            return Refused(options,
                           std::string(name) + " takes " + std::string(row->Value) + ", not " + std::string(value));
        if (row->SelectsMode) {
            if (mode && mode != row)
                return Refused(options,
                               std::string(mode->Name) + " and " + std::string(row->Name) + " exclude each other");
            mode = row;
        }
        used.push_back(row);
    }
    if (!mode && !used.empty())
        return Refused(options, std::string(used.front()->Name) + " goes with " + ModeNames(used.front()->Modes));
    if (!mode)
        return Refused(options, "no option names what to do");
    for (const OptionRow *row : used)
        if (!(row->Modes & mode->Modes))
            return Refused(options, std::string(row->Name) + " goes with " + ModeNames(row->Modes));
    const size_t given = options.Paths.size();
    const size_t wanted = static_cast<size_t>(mode->OperandCount);
    if (mode->OperandCount == kOneOrMore ? given == 0 : given < wanted)
        return Refused(options, std::string(mode->Name) + " needs " + std::string(mode->Operands));
    if (mode->OperandCount != kOneOrMore && given > wanted)
        return Refused(options, std::string(mode->Name) + " takes no " + options.Paths[wanted]);
    options.Mode = static_cast<RunMode>(std::countr_zero(mode->Modes));
    return options;
}

std::string HelpText() {
    std::string text = "Usage:\n"
                       "  gelvane [FILE]\n"
                       "  gelvane -s FILE\n";
    for (const OptionRow &row : kOptions) {
        if (!row.SelectsMode)
            continue;
        text += "  gelvane " + std::string(row.Name);
        for (const OptionRow &other : kOptions)
            if (!other.SelectsMode && (other.Modes & row.Modes))
                text += " [" + Head(other) + "]";
        if (!row.Operands.empty())
            text += " " + std::string(row.Operands);
        text += '\n';
    }

    std::vector<std::pair<std::string, std::string_view>> lines = {
        {"FILE", "opens FILE (.cr2 .pz2 .pp2 .hr2 .cm2 .fc2 .hd2 .lt2) in the main window"},
        {"-s FILE", "writes the materials and channels of FILE as a MAT pose beside it, extension .pz2"},
    };
    for (const OptionRow &row : kOptions)
        lines.emplace_back(Head(row), row.Help);
    size_t width = 0;
    for (const auto &[head, help] : lines)
        width = std::max(width, head.size() + 2);
    text += '\n';
    for (auto &[head, help] : lines) {
        head.resize(width, ' ');
        text += "  " + head + std::string(help) + '\n';
    }
    return text + '\n' + kHelpNotes;
}

std::string VersionText() {
    return std::string("Gelvane ") + GELVANE_VERSION;
}

int RunWithoutWindow(const CommandOptions &options) {
    if (options.Mode == RunMode::Silent)
        return RunSilentConversion(options.Text);
    if (options.Mode == RunMode::Window)
        return RunHelp(Refused(options, "this build has no window"));
    return ModeRow(options.Mode).Run(options);
}

} // namespace gelvane
