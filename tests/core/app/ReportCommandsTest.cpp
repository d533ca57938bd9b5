// --info, --report and --mtl: the options, the JSON, and the built program run as a script
// runs it, against the window's own commands on the same files.
#include "core/app/OpenCommands.h"
#include "core/app/SaveCommands.h"
#include "core/app/SettingsFile.h"
#include "core/app/StartUp.h"
#include "core/maps/Thumbnails.h"
#include "core/model/CommandText.h"
#include "core/platform/Paths.h"
#include "core/reports/FileInfo.h"
#include "core/reports/HtmlReport.h"
#include "core/reports/JsonWriter.h"
#include "support/RunProgram.h"
#include "support/ScopedEnv.h"
#include "support/SessionFixture.h"

#include <algorithm>
#include <filesystem>

namespace gelvane {
namespace {

using test::TestHome;
using Args = std::vector<std::string>;
namespace fs = std::filesystem;

TEST(JsonWriter, EscapesEveryByteIntoAsciiAndIndents) {
    const std::string bytes = "Caf\xe9 \"A\"\\\r\n\t\x01\x7f/";
    JsonWriter json;
    json.BeginObject();
    json.Key("name");
    json.String(bytes);
    json.Key("rows");
    json.BeginArray();
    json.BeginObject(true);
    json.Key("n");
    json.Number(-3);
    json.Key("x");
    json.Null();
    json.EndObject();
    json.EndArray();
    json.Key("none");
    json.BeginArray();
    json.EndArray();
    json.EndObject();
    EXPECT_EQ(json.text(), "{\n  \"name\": \"Caf\\u00e9 \\\"A\\\"\\\\\\r\\n\\t\\u0001\\u007f/\",\n"
                           "  \"rows\": [\n    {\"n\": -3, \"x\": null}\n  ],\n  \"none\": []\n}");
}

#ifdef GELVANE_EXECUTABLE

using test::RunGelvane;

// Every entry of a folder (none when it is missing) with its bytes, by name.
std::vector<std::pair<std::string, std::string>> FolderBytes(const std::string &folder) {
    std::vector<std::pair<std::string, std::string>> files;
    std::error_code error;
    for (const auto &entry : fs::directory_iterator(folder, error))
        files.emplace_back(entry.path().filename().string(),
                           entry.is_directory() ? "(folder)" : ReadFileBytes(entry.path().string()));
    std::sort(files.begin(), files.end());
    return files;
}

// What --info prints, made by Python's own JSON reader from what --json printed: the two
// must agree line for line, and the size must be the file's.
constexpr const char *kListingOfJson = R"(
import json, os, sys
d = json.load(open(sys.argv[1], encoding='ascii'))
assert d['size'] == os.path.getsize(d['file'])
na = lambda v: 'N/A' if v is None else str(v)
count = lambda items: str(len(items)) if items else 'N/A'
rows = [('File Name', d['fileName']), ('File Type', d['kind']), ('File Size', d['sizeText']),
        ('Objects', count(d['objects'])), ('Actors (body parts)', count(d['actors'])),
        ('Materials', na(d['materials'])), ('Sub-divided materials', na(d['subdividedMaterials'])),
        ('Actor and prop channels', na(d['channels'])), ('Pose channels', na(d['poseChannels'])),
        ('Morph channels', na(d['morphChannels'])), ('Null channels', na(d['nullChannels']))]
rows += [(kind.capitalize() + ' maps', d[kind + 'Maps']['count']) for kind in ('texture', 'bump', 'reflection', 'transparency')]
out = ['%s: %s' % row for row in rows]
for o in d['objects']:
    out += ['Figure information: ' + o['name'], '  Materials: %d' % o['materials']]
for a in d['actors']:
    out.append('Actor and prop information: ' + a['name'])
    out += ['  %s: %d' % (caption, a[key]) for caption, key in (('Materials', 'materials'), ('Channels', 'channels'),
            ('Pose channels', 'poseChannels'), ('Morph channels', 'morphChannels'), ('Null channels', 'nullChannels'))]
out += ['Notes:'] + ['  ' + line for line in d['comment'].replace('\r\n', '\n').split('\n') if d['comment']]
sys.stdout.buffer.write(('\n'.join(out) + '\n').encode('latin-1'))
)";

TEST(FileCommands, SameBytesAsTheWindowForEveryKind) {
    TestHome home;
    const std::string source = GELVANE_SOURCE_DIR;
    home.write("Settings.ini", "[Folders]\r\nPoser=" + source + "/examples\r\n[General]\r\nAutoCorrect=False\r\n");
    // Any start of the window system would fail on this.
    test::ScopedEnv noPlatform("QT_QPA_PLATFORM", "no-such-platform");
    const struct {
        const char *path;
        bool channels;
        const char *figure;
    } cases[] = {
        {"examples/Runtime/Libraries/Character/Demo/Gelvane Mannequin.cr2", true, ""},
        {"examples/Runtime/Libraries/Pose/Demo Skin Tones.pz2", false, ""},
        {"examples/Runtime/Libraries/Props/Demo/Demo Crate.pp2", false, ""},
        {"examples/Runtime/Libraries/Hair/Demo Short Hair.hr2", true, ""},
        {"examples/Runtime/Libraries/Camera/Demo Close Up.cm2", false, ""},
        {"examples/Runtime/Libraries/Face/Demo Smile.fc2", false, ""},
        {"examples/Runtime/Libraries/Hand/Demo Open Hand.hd2", false, ""},
        {"examples/Runtime/Libraries/Light/Demo Two Lights.lt2", false, ""},
        {"tests/data/corpus/sl_avatar/SL_Male.cr2", false, ""},
        {"tests/data/corpus/sl_avatar/SL_skirt.pp2", true, ""},
        {"tests/data/corpus/reality/Mesh Light.pp2", false, ""},
        {"tests/data/figures/two-figures.cr2", true, "Other Figure"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.path);
        const std::string path = source + "/" + c.path;
        const std::string before = ReadFileBytes(path);
        for (const char *folder : {"window", "cli"}) {
            fs::remove_all(home.file(folder));
            fs::create_directories(home.file(folder));
        }

        // The window: the file dropped on it, the question answered, then its two commands.
        test::ScriptedInteraction ui;
        const Settings settings = LoadSettings(ui);
        Session session(settings, ui);
        PrepareSession(session);
        if (IsFigureLikeKind(FileKindOfCommand(path)))
            ui.nextAnswer(c.channels ? MsgResult::Yes : MsgResult::No);
        DropFile(session, path, [&](Session &, const FigureList &list) {
            return std::optional<int>(std::find(list.FigureNames.begin(), list.FigureNames.end(), c.figure) -
                                      list.FigureNames.begin());
        });
        ThumbnailCache thumbnails;
        ui.nextFile(home.file("window/Page.htm"));
        cmdCreateHTML_Click(session, thumbnails);
        ui.nextFile(home.file("window/Library.mtl"));
        EXPECT_EQ(mnuExportMTL_Click(session), SaveResult::Saved);
        ui.checkAllUsed();
        for (const test::RecordedMessage &message : ui.messages())
            EXPECT_EQ(message.Text, kLoadChannelsQuestion);

        Args options;
        if (c.channels)
            options.push_back("--channels");
        if (*c.figure)
            options.insert(options.end(), {"--figure", c.figure});
        const auto run = [&](Args args) {
            args.insert(args.begin() + 1, options.begin(), options.end());
            return RunGelvane(home, args);
        };
        test::RunResult result = run({"--report", path, home.file("cli/Page.htm")});
        EXPECT_EQ(result.status, 0) << result.errors;
        result = run({"--mtl", path, home.file("cli/Library.mtl")});
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(FolderBytes(home.file("cli")), FolderBytes(home.file("window")));
        EXPECT_EQ(FolderBytes(home.file("cli/Page_Images")), FolderBytes(home.file("window/Page_Images")));
        EXPECT_FALSE(home.read("cli/Library.mtl").empty());

        const test::RunResult info = run({"--info", path});
        const test::RunResult json = run({"--info", "--json", path});
        EXPECT_EQ(info.status, 0) << info.errors;
        EXPECT_EQ(json.status, 0) << json.errors;
        home.write("info.json", json.output);
        const test::RunResult python =
            test::RunProgram(home, {GELVANE_PYTHON, "-c", kListingOfJson, home.file("info.json")});
        EXPECT_EQ(python.status, 0) << python.errors << json.output;
        EXPECT_EQ(python.output, info.output);
        EXPECT_EQ(ReadFileBytes(path), before);
    }
}

TEST(FileCommands, FailuresWriteNothingAndExitNonZero) {
    TestHome home;
    const std::string pose = home.write("in/pose.pz2", test::ReadTestData("batch/skin-p4.pz2"));
    const std::string binary = home.write("in/binary.pz2", test::ReadTestData("cmdline/binary.pz2"));
    const std::string figure = home.write("in/figure.cr2", "not a character\n");
    const std::string two = home.write("in/two.cr2", test::ReadTestData("figures/two-figures.cr2"));
    const std::string notes = home.write("in/notes.txt", "notes");
    const struct {
        Args args;
        int status;
        const char *error;
    } cases[] = {
        {{"--mtl", home.file("in/missing.cr2"), home.file("out/Out.mtl")}, 3, "File not found: "},
        {{"--report", notes, home.file("out/Out.htm")}, 2, "Unknown file kind"},
        {{"--mtl", binary, home.file("out/Out.mtl")}, 1, "Error in the OpenFile function"},
        {{"--report", "--channels", figure, home.file("out/Out.htm")}, 1, "Not a valid Character file"},
        {{"--info", "--figure", "Nobody", two}, 1, "No figure \"Nobody\""},
        {{"--mtl", pose, home.file("in/./pose.pz2")}, 2, "Nothing is written over the file"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.args.back());
        const auto input = FolderBytes(home.file("in"));
        const test::RunResult run = RunGelvane(home, c.args);
        EXPECT_EQ(run.status, c.status) << run.errors;
        EXPECT_NE(run.errors.find(c.error), std::string::npos) << run.errors;
        EXPECT_EQ(run.output, "");
        EXPECT_FALSE(fs::exists(home.file("out")));
        EXPECT_EQ(FolderBytes(home.file("in")), input);
    }
}

#endif

} // namespace
} // namespace gelvane
