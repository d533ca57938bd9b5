// --info, --report and --mtl: the options, the JSON, and the built program run as a script
// runs it, against the window's own commands on the same files.
#include "core/app/CommandOptions.h"
#include "core/app/OpenCommands.h"
#include "core/app/SaveCommands.h"
#include "core/app/SettingsFile.h"
#include "core/app/StartUp.h"
#include "core/maps/Thumbnails.h"
#include "core/model/CommandText.h"
#include "core/model/Session.h"
#include "core/reports/FileInfo.h"
#include "core/reports/HtmlReport.h"
#include "core/reports/JsonWriter.h"
#include "support/RunProgram.h"
#include "support/ScopedEnv.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace gelvane {
namespace {

using test::TestHome;
using Args = std::vector<std::string>;
namespace fs = std::filesystem;

// A strict reader of the JSON the program prints: objects, arrays, strings, integers and
// null, nothing but ASCII. Strings come back as the program's bytes.
struct Json {
    enum class Kind { Null, Number, String, Array, Object } kind = Kind::Null;
    long long number = 0;
    std::string text;
    std::vector<Json> items;
    std::vector<std::pair<std::string, Json>> members;

    const Json &operator[](std::string_view key) const {
        for (const auto &[name, value] : members)
            if (name == key)
                return value;
        throw std::runtime_error("no member " + std::string(key));
    }
};

class JsonReader {
public:
    explicit JsonReader(std::string_view text) : s(text) {}
    Json ReadAll() {
        Json value = Value();
        Space();
        Check(i == s.size());
        return value;
    }

private:
    void Check(bool ok) const {
        if (!ok)
            throw std::runtime_error("not JSON at byte " + std::to_string(i));
    }
    void Space() {
        while (i < s.size() && (s[i] == ' ' || s[i] == '\n' || s[i] == '\r' || s[i] == '\t'))
            ++i;
    }
    bool Take(char c) {
        Space();
        const bool found = i < s.size() && s[i] == c;
        i += found;
        return found;
    }
    Json Value() {
        Json v;
        if (Take('{')) {
            v.kind = Json::Kind::Object;
            if (!Take('}')) {
                do {
                    Space();
                    std::string key = String();
                    Check(Take(':'));
                    v.members.emplace_back(std::move(key), Value());
                } while (Take(','));
                Check(Take('}'));
            }
        } else if (Take('[')) {
            v.kind = Json::Kind::Array;
            if (!Take(']')) {
                do
                    v.items.push_back(Value());
                while (Take(','));
                Check(Take(']'));
            }
        } else if (i < s.size() && s[i] == '"') {
            v.kind = Json::Kind::String;
            v.text = String();
        } else if (s.substr(i, 4) == "null") {
            i += 4;
        } else {
            size_t end = i + (i < s.size() && s[i] == '-');
            while (end < s.size() && std::isdigit(static_cast<unsigned char>(s[end])))
                ++end;
            Check(end > i && std::isdigit(static_cast<unsigned char>(s[end - 1])));
            v.kind = Json::Kind::Number;
            v.number = std::stoll(std::string(s.substr(i, end - i)));
            i = end;
        }
        return v;
    }
    std::string String() {
        Check(i < s.size() && s[i] == '"');
        std::string out;
        for (++i;; ++i) {
            Check(i < s.size());
            const auto c = static_cast<unsigned char>(s[i]);
            Check(c >= 0x20 && c < 0x80);
            if (c == '"') {
                ++i;
                return out;
            }
            if (c != '\\') {
                out += static_cast<char>(c);
                continue;
            }
            Check(++i < s.size());
            const std::string_view simple = "\"\"\\\\//b\bf\fn\nr\rt\t";
            if (s[i] == 'u') {
                Check(i + 4 < s.size());
                const int code = std::stoi(std::string(s.substr(i + 1, 4)), nullptr, 16);
                Check(code <= 0xFF); // the program's texts are single bytes
                out += static_cast<char>(code);
                i += 4;
            } else {
                size_t k = 0;
                while (k < simple.size() && simple[k] != s[i])
                    k += 2;
                Check(k < simple.size());
                out += simple[k + 1];
            }
        }
    }
    std::string_view s;
    size_t i = 0;
};

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
    EXPECT_EQ(JsonReader(json.text()).ReadAll()["name"].text, bytes);
    EXPECT_ANY_THROW(JsonReader("{\"a\": 1,}").ReadAll());
}

CommandOptions Parse(Args args) {
    args.insert(args.begin(), "gelvane");
    std::vector<char *> argv;
    for (std::string &arg : args)
        argv.push_back(arg.data());
    return ParseCommandLine(static_cast<int>(argv.size()), argv.data());
}

TEST(CommandOptions, FileCommandsTheirOperandsAndSharedOptions) {
    const struct {
        Args args;
        RunMode mode;
        bool channels, json;
        const char *figure;
        const char *error; // a part of the usage error, or nothing
    } cases[] = {
        {{"--info", "--json", "/a.cr2"}, RunMode::Info, false, true, "", ""},
        {{"--report", "--channels", "/a.pp2", "/r.htm", "--figure=Bob"}, RunMode::Report, true, false, "Bob", ""},
        {{"--mtl", "--figure", "Two Words", "/a.cr2", "/a.mtl"}, RunMode::Mtl, false, false, "Two Words", ""},
        {{"--info"}, RunMode::Help, false, false, "", "--info needs FILE"},
        {{"--mtl", "/a.cr2"}, RunMode::Help, false, false, "", "--mtl needs FILE OUT.mtl"},
        {{"--report", "/a", "/b", "/c"}, RunMode::Help, false, false, "", "--report takes no /c"},
        {{"--mtl", "--json", "/a", "/b"}, RunMode::Help, false, true, "", "--json goes with --info"},
        {{"--batch", "--channels", "/a"},
         RunMode::Help,
         true,
         false,
         "",
         "--channels goes with --info, --report or --mtl"},
        {{"--info", "/a", "--figure"}, RunMode::Help, false, false, "", "--figure needs NAME"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.args.front() + " " + c.args.back());
        const CommandOptions options = Parse(c.args);
        EXPECT_EQ(options.Mode, c.mode);
        EXPECT_EQ(options.Channels, c.channels);
        EXPECT_EQ(options.Json, c.json);
        EXPECT_EQ(options.Figure, c.figure);
        EXPECT_NE(options.Error.find(c.error), std::string::npos) << options.Error;
        EXPECT_EQ(options.Error.empty(), *c.error == '\0');
    }
    // One line for each option.
    const std::string help = HelpText();
    for (const char *option : {"--batch", "--to p4|p5", "--copy", "--info", "--json", "--report", "--mtl", "--channels",
                               "--figure NAME", "--help", "--version"})
        EXPECT_NE(help.find("\n  " + std::string(option) + "  "), std::string::npos) << option;
}

#ifdef GELVANE_EXECUTABLE

test::RunResult RunGelvane(const TestHome &home, Args args) {
    args.insert(args.begin(), GELVANE_EXECUTABLE);
    return test::RunProgram(home, args);
}

std::string ReadBytes(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Every entry of a folder (none when it is missing) with its bytes, by name.
std::vector<std::pair<std::string, std::string>> FolderBytes(const std::string &folder) {
    std::vector<std::pair<std::string, std::string>> files;
    std::error_code error;
    for (const auto &entry : fs::directory_iterator(folder, error))
        files.emplace_back(entry.path().filename().string(),
                           entry.is_directory() ? "(folder)" : ReadBytes(entry.path()));
    std::sort(files.begin(), files.end());
    return files;
}

// What --info prints, made from what --json printed: the two must agree line for line.
std::string ListingOfJson(const Json &json) {
    const auto count = [](const Json &value) {
        return value.kind == Json::Kind::Null ? std::string(kNotAvailable) : std::to_string(value.number);
    };
    const auto listCount = [](const Json &list) {
        return list.items.empty() ? std::string(kNotAvailable) : std::to_string(list.items.size());
    };
    const std::pair<const char *, std::string> general[] = {
        {"File Name:", json["fileName"].text},
        {"File Type:", json["kind"].text},
        {"File Size:", json["sizeText"].text},
        {"Objects:", listCount(json["objects"])},
        {"Actors (body parts):", listCount(json["actors"])},
        {"Materials:", count(json["materials"])},
        {"Sub-divided materials:", count(json["subdividedMaterials"])},
        {"Actor and prop channels:", count(json["channels"])},
        {"Pose channels:", count(json["poseChannels"])},
        {"Morph channels:", count(json["morphChannels"])},
        {"Null channels:", count(json["nullChannels"])},
        {"Texture maps:", count(json["textureMaps"]["count"])},
        {"Bump maps:", count(json["bumpMaps"]["count"])},
        {"Reflection maps:", count(json["reflectionMaps"]["count"])},
        {"Transparency maps:", count(json["transparencyMaps"]["count"])},
    };
    std::string out;
    for (const auto &[caption, value] : general)
        out += std::string(caption) + " " + value + "\n";
    for (const Json &object : json["objects"].items)
        out += "Figure information: " + object["name"].text + "\n  Materials: " + count(object["materials"]) + "\n";
    for (const Json &actor : json["actors"].items) {
        out += "Actor and prop information: " + actor["name"].text + "\n";
        for (const auto &[caption, key] :
             {std::pair{"Materials:", "materials"}, std::pair{"Channels:", "channels"},
              std::pair{"Pose channels:", "poseChannels"}, std::pair{"Morph channels:", "morphChannels"},
              std::pair{"Null channels:", "nullChannels"}})
            out += std::string("  ") + caption + " " + count(actor[key]) + "\n";
    }
    return out;
}

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
        const std::string before = ReadBytes(path);
        fs::remove_all(home.file("window"));
        fs::remove_all(home.file("cli"));
        fs::create_directories(home.file("window"));
        fs::create_directories(home.file("cli"));

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
        try {
            const Json parsed = JsonReader(json.output).ReadAll();
            EXPECT_EQ(info.output.substr(0, info.output.find("Notes:\n")), ListingOfJson(parsed));
            EXPECT_EQ(parsed["file"].text, path);
            EXPECT_EQ(parsed["size"].number, static_cast<long long>(before.size()));
            EXPECT_EQ(parsed["comment"].text, session.FileComment);
        } catch (const std::exception &error) {
            ADD_FAILURE() << error.what() << "\n" << json.output;
        }
        EXPECT_EQ(ReadBytes(path), before);
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
        {{"--info", "--json", home.file("in/missing.pz2")}, 3, "File not found: "},
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
