// The command line's options, and "--batch" run as a script runs it.
#include "core/app/BatchCommand.h"
#include "core/app/CommandOptions.h"
#include "core/reports/BatchConverter.h"
#include "support/RunProgram.h"
#include "support/SessionFixture.h"

#include <sstream>

namespace gelvane {
namespace {

using test::ReadTestData;
using test::TestHome;
using Args = std::vector<std::string>;

CommandOptions Parse(Args args) {
    args.insert(args.begin(), "gelvane");
    std::vector<char *> argv;
    for (std::string &arg : args)
        argv.push_back(arg.data());
    return ParseCommandLine(static_cast<int>(argv.size()), argv.data());
}

TEST(CommandOptions, ModesTheirOptionsAndTheMistakes) {
    const struct {
        Args args;
        RunMode mode;
        Args paths;
        bool toP4, copy;
        const char *error; // a part of the usage error, or nothing
    } cases[] = {
        {{"/My Poses/a b.pz2"}, RunMode::Window, {}, false, false, ""},
        {{"-S", "/a.pz2"}, RunMode::Silent, {}, false, false, ""},
        {{"--batch", "--to", "p4", "--copy", "/a", "/b"}, RunMode::Batch, {"/a", "/b"}, true, true, ""},
        {{"--batch", "/a", "--to=P5", "--", "--odd"}, RunMode::Batch, {"/a", "--odd"}, false, false, ""},
        {{"--help"}, RunMode::Help, {}, false, false, ""},
        {{"--version"}, RunMode::Version, {}, false, false, ""},
        {{"--batch"}, RunMode::Help, {}, false, false, "--batch needs FILE|FOLDER..."},
        {{"--copy", "/a"}, RunMode::Help, {"/a"}, false, true, "--copy goes with --batch"},
        {{"--batch", "--to", "p6", "/a"}, RunMode::Help, {}, false, false, "--to takes p4|p5, not p6"},
        {{"--batch", "/a", "--to"}, RunMode::Help, {"/a"}, false, false, "--to needs p4|p5"},
        {{"--batch", "--version", "/a"}, RunMode::Help, {}, false, false, "exclude each other"},
        {{"--version", "/a"}, RunMode::Help, {"/a"}, false, false, "--version takes no /a"},
        {{"--frobnicate"}, RunMode::Help, {}, false, false, "unknown option --frobnicate"},
        {{"--info"}, RunMode::Help, {}, false, false, "--info needs FILE"},
        {{"--mtl", "/a.cr2"}, RunMode::Help, {"/a.cr2"}, false, false, "--mtl needs FILE OUT.mtl"},
        {{"--report", "/a", "/b", "/c"}, RunMode::Help, {"/a", "/b", "/c"}, false, false, "--report takes no /c"},
        {{"--mtl", "--json", "/a", "/b"}, RunMode::Help, {"/a", "/b"}, false, false, "--json goes with --info"},
        {{"--batch", "--channels", "/a"}, RunMode::Help, {"/a"}, false, false, "--channels goes with --info, --r"},
        {{"--info", "/a", "--figure"}, RunMode::Help, {"/a"}, false, false, "--figure needs NAME"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.args.front());
        const CommandOptions options = Parse(c.args);
        EXPECT_EQ(options.Mode, c.mode);
        EXPECT_EQ(options.Paths, c.paths);
        EXPECT_EQ(options.ToP4, c.toP4);
        EXPECT_EQ(options.Copy, c.copy);
        EXPECT_NE(options.Error.find(c.error), std::string::npos) << options.Error;
        EXPECT_EQ(options.Error.empty(), *c.error == '\0');
    }
    EXPECT_EQ(Parse({"-s", "/a b.pz2"}).Text, "-s /a b.pz2");
    CommandOptions options = Parse({"--report", "--channels", "/a.pp2", "--figure=Two Words", "/r.htm"});
    EXPECT_EQ(std::tie(options.Mode, options.Channels, options.Figure, options.Paths),
              std::tuple(RunMode::Report, true, "Two Words", Args{"/a.pp2", "/r.htm"}));
    options = Parse({"--info", "--json", "/a.cr2"});
    EXPECT_TRUE(options.Mode == RunMode::Info && options.Json);
    // One line for each option.
    const std::string help = HelpText();
    for (const char *option : {"--batch", "--to p4|p5", "--copy", "--info", "--json", "--report", "--mtl", "--channels",
                               "--figure NAME", "--help", "--version"})
        EXPECT_NE(help.find("\n  " + std::string(option) + "  "), std::string::npos) << option;
}

TEST(BatchCommand, AnInterruptStopsBetweenTwoFiles) {
    TestHome home;
    Settings settings;
    test::ScriptedInteraction ui;
    Session session(settings, ui);
    const Args files = {home.write("a.pz2", ReadTestData("batch/skin-p4.pz2")),
                        home.write("b.pz2", ReadTestData("batch/skin-p4.pz2")),
                        home.write("c.pz2", ReadTestData("batch/skin-p4.pz2"))};
    ui.cancelAtDoEvents(2); // Ctrl-C while the first file converts
    std::ostringstream out;
    const BatchTotals totals = RunBatchFiles(session, files, kConvertIntoP5, out);
    EXPECT_EQ(out.str(), "converted  " + files[0] + "\n");
    EXPECT_TRUE(totals.Interrupted);
    EXPECT_EQ(totals.Converted, 1);
    EXPECT_EQ(totals.NotDone, 2);
    EXPECT_EQ(home.read("b.pz2"), ReadTestData("batch/skin-p4.pz2"));
    EXPECT_FALSE(session.BatchMode);
}

#ifdef GELVANE_EXECUTABLE

TEST(BatchCommand, FolderWithABrokenFileConvertsTheOthersAndFails) {
    TestHome home;
    home.write("Settings.ini", "[General]\r\nSaveAsType=P4\r\nFileSystem=DOS\r\n");
    const std::string skin = home.write("poses/skin.pz2", ReadTestData("batch/skin-p4.pz2"));
    const std::string broken = home.write("poses/sub/broken.pz2", ReadTestData("cmdline/no-closing-brace.pz2"));
    const std::string opaque = home.write("poses/sub/opaque.PZ2", ReadTestData("batch/opaque-p4.pz2"));
    home.write("poses/notes.txt", "not a pose");

    test::RunResult run = test::RunGelvane(home, {"--batch", home.file("poses")});
    EXPECT_EQ(run.status, 1) << run.errors;
    EXPECT_EQ(run.output, "converted  " + skin + "\nfailed     " + broken + ": could not be read\nconverted  " +
                              opaque + " (partial materials)\n3 files: 2 converted, 1 failed\n");
    EXPECT_NE(run.errors.find("Error in the OpenFile function"), std::string::npos) << run.errors;
    EXPECT_EQ(home.read("poses/skin.pz2"), ReadTestData("writer/p5-skin/expected.pz2"));
    EXPECT_EQ(home.read("poses/sub/opaque.PZ2"), ReadTestData("writer/batch-texpo/expected.pz2"));
    EXPECT_EQ(home.read("poses/sub/broken.pz2"), ReadTestData("cmdline/no-closing-brace.pz2"));

    // Back to Poser 4 as a copy: every file converted is status 0.
    run = test::RunGelvane(home, {"--batch", "--to", "p4", "--copy", skin});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output,
              "copied     " + skin + " -> " + home.file("poses/skin_P4.pz2") + "\n1 file: 1 converted, 0 failed\n");
    EXPECT_EQ(home.read("poses/skin_P4.pz2"), ReadTestData("batch/skin-p4.pz2"));

    run = test::RunGelvane(home, {"--batch", home.file("nothing here")});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output.find("no such file or folder"), std::string::npos) << run.output;
    run = test::RunGelvane(home, {"--batch", "--to", "p3", skin});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.errors.find("Usage:"), std::string::npos) << run.errors;
}

#endif

} // namespace
} // namespace gelvane
