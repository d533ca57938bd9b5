// Runs the built program with "-s" on files in a temporary folder.
#include "support/RunProgram.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace gelvane {
namespace {

using test::ReadTestData;
using test::TestHome;
namespace fs = std::filesystem;

#ifdef GELVANE_EXECUTABLE

// The program with `args`; GELVANE_HOME is the test home.
test::RunResult RunGelvane(const TestHome &home, std::vector<std::string> args) {
    args.insert(args.begin(), GELVANE_EXECUTABLE);
    return test::RunProgram(home, args);
}

std::vector<std::string> FilesIn(const std::string &folder) {
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string Example(const std::string &relative) {
    return ReadTestData("../../examples/Runtime/" + relative);
}

TEST(SilentConversion, MatPoseIsWrittenBesideItsSource) {
    TestHome home;
    home.write("Settings.ini", "[Folders]\r\n[General]\r\nSaveAsType=P4\r\nFileSystem=DOS\r\n");
    home.write("work/Skin Tones.FC2", Example("Libraries/Pose/Demo Skin Tones.pz2"));
    const test::RunResult run = RunGelvane(home, {"-s", "\"" + home.file("work/skin tones.fc2") + "\""});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(FilesIn(home.file("work")), (std::vector<std::string>{"Skin Tones.FC2", "Skin Tones.pz2"}));
    const std::string pose = home.read("work/Skin Tones.pz2");
    EXPECT_TRUE(pose.starts_with("{\r\n")) << pose;
    EXPECT_NE(pose.find("version\r\n\t{\r\n\tnumber 4.01\r\n\t}\r\n"), std::string::npos) << pose;
    EXPECT_NE(pose.find("\tmaterial SkinTorso\r\n\t\t{\r\n\t\tKdColor 1 0.8 0.698039 1\r\n"), std::string::npos)
        << pose;
    EXPECT_NE(pose.find("\tmaterial Lips\r\n"), std::string::npos) << pose;
    EXPECT_EQ(pose.find("shaderTree"), std::string::npos);
    EXPECT_TRUE(pose.ends_with("}\r\n"));
}

TEST(SilentConversion, OutputFollowsTheStoredFormatAndLineEnd) {
    TestHome home;
    home.write("Settings.ini", "[General]\r\nSaveAsType=P5\r\nFileSystem=UNIX\r\n");
    home.write("work/figure.cr2", Example("Libraries/Character/Demo/Gelvane Mannequin.cr2"));
    const test::RunResult run = RunGelvane(home, {"-S", home.file("work/figure.cr2")});
    ASSERT_EQ(run.status, 0) << run.errors;
    const std::string pose = home.read("work/figure.pz2");
    EXPECT_TRUE(pose.starts_with("{\r")) << pose;
    EXPECT_EQ(pose.find('\n'), std::string::npos);
    EXPECT_NE(pose.find("\tmaterial Skin\r"), std::string::npos) << pose;
    EXPECT_NE(pose.find("shaderTree"), std::string::npos) << pose;
}

TEST(SilentConversion, EveryDemoFileConverts) {
    TestHome home;
    const std::tuple<const char *, const char *, const char *> files[] = {
        {"Libraries/Hand/Demo Open Hand.hd2", "hand.hd2", "actor rThumb1:1\r\n\t{\r\n\tchannels\r\n"},
        {"Libraries/Face/Demo Smile.fc2", "face.fc2",
         "\t\ttargetGeom Blink\r\n\t\t\t{\r\n\t\t\tkeys\r\n\t\t\t\t{\r\n\t\t\t\tk  0  0.3\r\n"},
        {"Libraries/Light/Demo Two Lights.lt2", "light.lt2", "light LIGHT_2\r\n\t{\r\n\tchannels\r\n"},
        {"Libraries/Camera/Demo Close Up.cm2", "camera.cm2", "\t\tcamFocal focal\r\n"},
        {"Libraries/Pose/Demo Wave.pz2", "wave.pz2", "actor rShldr:1\r\n"},
        {"Libraries/Props/Demo/Demo Crate.pp2", "crate.pp2", "\tmaterial Bands\r\n"},
        {"Libraries/Hair/Demo Short Hair.hr2", "hair.hr2", "prop figureHair\r\n\t{\r\n\tmaterial Hair\r\n"},
        {"Libraries/Character/Demo/Two Mannequins.cr2", "two.cr2", "\tmaterial Suit\r\n"},
    };
    for (const auto &[example, name, expected] : files) {
        SCOPED_TRACE(name);
        const std::string input = home.write(std::string("work/") + name, Example(example));
        const test::RunResult run = RunGelvane(home, {"-s", input});
        EXPECT_EQ(run.status, 0) << run.errors;
        const std::string stem = std::string(name).substr(0, std::string(name).size() - 3);
        const std::string pose = home.read("work/" + stem + "pz2");
        EXPECT_TRUE(pose.starts_with("{\r\n"));
        EXPECT_NE(pose.find(expected), std::string::npos) << pose;
    }
}

TEST(SilentConversion, BadInputWritesNothing) {
    const char *fixtures[] = {"empty.pz2", "binary.pz2", "no-closing-brace.pz2", "overflowing-colour.pz2"};
    for (const char *fixture : fixtures) {
        SCOPED_TRACE(fixture);
        TestHome home;
        const std::string bytes = ReadTestData(std::string("cmdline/") + fixture);
        const std::string input = home.write(std::string("work/") + fixture, bytes);
        const test::RunResult run = RunGelvane(home, {"-s", input});
        EXPECT_NE(run.status, 0);
        EXPECT_NE(run.errors.find("Error in the OpenFile function"), std::string::npos) << run.errors;
        EXPECT_EQ(FilesIn(home.file("work")), std::vector<std::string>{fixture});
        EXPECT_EQ(home.read(std::string("work/") + fixture), bytes);
    }
}

TEST(SilentConversion, UpperCaseExtensionIsRewrittenInPlace) {
    TestHome home;
    home.write("Settings.ini", "[General]\r\nSaveAsType=P4\r\nFileSystem=UNIX\r\n");
    const std::string input =
        home.write("work/upper-case-extension.PZ2", ReadTestData("cmdline/upper-case-extension.PZ2"));
    const test::RunResult run = RunGelvane(home, {"-s", input});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(FilesIn(home.file("work")), std::vector<std::string>{"upper-case-extension.PZ2"});
    EXPECT_EQ(home.read("work/upper-case-extension.PZ2").find("\r\n"), std::string::npos); // rewritten
}

TEST(SilentConversion, AFailedSaveIsReportedAndLeavesTheFolderAsItWas) {
    TestHome home;
    home.write("work/Skin Tones.fc2", Example("Libraries/Pose/Demo Skin Tones.pz2"));
    home.write("work/Skin Tones.pz2/inside.txt", "x"); // a folder where the pose would go
    const test::RunResult run = RunGelvane(home, {"-s", home.file("work/Skin Tones.fc2")});
    EXPECT_NE(run.status, 0);
    EXPECT_NE(run.errors.find("Could not save " + home.file("work/Skin Tones.pz2") + ": a folder has that name"),
              std::string::npos)
        << run.errors;
    EXPECT_EQ(FilesIn(home.file("work")), (std::vector<std::string>{"Skin Tones.fc2", "Skin Tones.pz2"}));
    EXPECT_EQ(FilesIn(home.file("work/Skin Tones.pz2")), std::vector<std::string>{"inside.txt"});
}

TEST(SilentConversion, MissingFileOrUnknownKindFails) {
    TestHome home;
    fs::create_directories(home.file("work"));
    test::RunResult run = RunGelvane(home, {"-s", home.file("work/missing.pz2")});
    EXPECT_NE(run.status, 0);
    EXPECT_NE(run.errors.find("missing.pz2"), std::string::npos) << run.errors;

    home.write("work/notes.txt", "{\r\nversion\r\n\t{\r\n\tnumber 4\r\n\t}\r\n}\r\n");
    run = RunGelvane(home, {"-s", home.file("work/notes.txt")});
    EXPECT_NE(run.status, 0);
    EXPECT_NE(run.errors.find("notes.txt"), std::string::npos) << run.errors;
    EXPECT_EQ(FilesIn(home.file("work")), std::vector<std::string>{"notes.txt"});
}

#endif

} // namespace
} // namespace gelvane
