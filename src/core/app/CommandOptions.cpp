#include "core/app/CommandOptions.h"

#include "core/app/BatchCommand.h"
#include "core/app/CommandLine.h"
#include "core/model/CommandText.h"
#include "core/model/Text.h"

#include <iostream>
#include <string_view>

#ifndef GELVANE_VERSION
#define GELVANE_VERSION "unknown"
#endif

namespace gelvane {

namespace {

using Setter = bool (*)(CommandOptions &, std::string_view value); // false: the value is refused
using Runner = int (*)(const CommandOptions &);

// One option. A mode option chooses how the program runs (and takes the operands);
// the others modify the mode they name.
struct OptionRow {
    std::string_view Name;
    RunMode Mode;
    bool SelectsMode;
    std::string_view Value;    // the placeholder of its value, empty when it takes none
    std::string_view Operands; // of a mode: what follows its options, empty when nothing may
    std::string_view Help;
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
    {"--batch", RunMode::Batch, true, "", "FILE|FOLDER...",
     "converts pose files in place without a window; a folder gives every .pz2 .cm2 .fc2\n"
     ".hd2 and .lt2 file in it and in its subfolders. One line a file, then a summary;\n"
     "Ctrl-C stops between two files. The status is 0 only when every file converted.",
     nullptr, RunBatchCommand},
    {"--to", RunMode::Batch, false, "p4|p5", "", "the format: Poser 4 / Pro Pack or Poser 5 (p5 unless given)",
     [](CommandOptions &o, std::string_view value) {
         const std::string lowered = LCase(value);
         o.ToP4 = lowered == "p4";
         return lowered == "p4" || lowered == "p5";
     },
     nullptr},
    {"--copy", RunMode::Batch, false, "", "", "writes a copy beside each file, NAME_P5.EXT or NAME_P4.EXT, instead",
     [](CommandOptions &o, std::string_view) {
         o.Copy = true;
         return true;
     },
     nullptr},
    {"--help", RunMode::Help, true, "", "", "shows this text", nullptr, RunHelp},
    {"--version", RunMode::Version, true, "", "", "shows the program's version", nullptr, RunVersion},
};

const OptionRow *FindOption(std::string_view name) {
    for (const OptionRow &row : kOptions)
        if (row.Name == name)
            return &row;
    return nullptr;
}

const OptionRow &ModeRow(RunMode mode) {
    for (const OptionRow &row : kOptions)
        if (row.SelectsMode && row.Mode == mode)
            return row;
    return kOptions[0];
}

CommandOptions Refused(CommandOptions options, std::string error) {
    options.Mode = RunMode::Help;
    options.Error = std::move(error);
    return options;
}

std::string Indented(std::string_view text, std::string_view indent) {
    std::string out(indent);
    for (char c : text) {
        out += c;
        if (c == '\n')
            out += indent;
    }
    return out + '\n';
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
        return Refused(options,
                       std::string(used.front()->Name) + " goes with " + std::string(ModeRow(used.front()->Mode).Name));
    if (!mode)
        return Refused(options, "no option names what to do");
    for (const OptionRow *row : used)
        if (row->Mode != mode->Mode)
            return Refused(options, std::string(row->Name) + " goes with " + std::string(ModeRow(row->Mode).Name));
    if (mode->Operands.empty() && !options.Paths.empty())
        return Refused(options, std::string(mode->Name) + " takes no " + options.Paths.front());
    if (!mode->Operands.empty() && options.Paths.empty())
        return Refused(options, std::string(mode->Name) + " needs " + std::string(mode->Operands));
    options.Mode = mode->Mode;
    return options;
}

std::string HelpText() {
    std::string text = "Usage:\n"
                       "  gelvane [FILE]\n"
                       "      opens FILE (.cr2 .pz2 .pp2 .hr2 .cm2 .fc2 .hd2 .lt2) in the main window\n"
                       "  gelvane -s FILE\n"
                       "      writes the materials and channels of FILE as a MAT pose beside it, with the\n"
                       "      extension .pz2, without a window; format and line ends follow Settings.ini\n";
    for (const OptionRow &row : kOptions) {
        if (!row.SelectsMode)
            continue;
        std::string usage = "  gelvane " + std::string(row.Name);
        std::string modifiers;
        for (const OptionRow &other : kOptions) {
            if (other.SelectsMode || other.Mode != row.Mode)
                continue;
            usage += " [" + std::string(other.Name) + (other.Value.empty() ? "" : " " + std::string(other.Value)) + "]";
            std::string head = std::string(other.Name) + (other.Value.empty() ? "" : " " + std::string(other.Value));
            head.resize(std::max<size_t>(head.size() + 2, 14), ' ');
            modifiers += "      " + head + std::string(other.Help) + '\n';
        }
        if (!row.Operands.empty())
            usage += " " + std::string(row.Operands);
        text += usage + '\n' + Indented(row.Help, "      ") + modifiers;
    }
    return text;
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
