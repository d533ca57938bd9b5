#include "core/app/CommandLine.h"
#include "core/model/CommandText.h"
#include "core/platform/Paths.h"
#include "support/SessionFixture.h"

#include <filesystem>

namespace gelvane {
namespace {

using test::TestHome;

TEST(CommandLine, KindComesFromTheLastThreeLetters) {
    // Quotes go wherever they stand; no dot is needed in front of the letters.
    const std::pair<const char *, int> cases[] = {{"/u/Figure.cr2", 0},
                                                  {"\"/u/My Poses/Skin.PZ2\"", 1},
                                                  {"-s /a/b.pp2", 2},
                                                  {"-s \"/a/b.Hr2\"  ", 3},
                                                  {"/a/b.cm2", 4},
                                                  {"/a/\"b\".fc2", 5},
                                                  {"/a/b.hd2\"", 6},
                                                  {"/a/b.lt2", 7},
                                                  {"/a/bcr2", 0},
                                                  {"/a/b.cr2.bak", -1},
                                                  {"/a/b.obj", -1},
                                                  {"r2", -1},
                                                  {"", -1}};
    for (const auto &[text, kind] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FileKindOfCommand(text), kind);
    }
}

TEST(CommandLine, SilentSwitchAndItsPath) {
    EXPECT_TRUE(IsSilentCommand("-s /a.pz2"));
    EXPECT_TRUE(IsSilentCommand("  -S /a.pz2"));
    EXPECT_FALSE(IsSilentCommand("-s"));
    EXPECT_FALSE(IsSilentCommand("-sx /a.pz2"));
    EXPECT_FALSE(IsSilentCommand("/a -s b.pz2"));
    EXPECT_EQ(CommandPath("-s \"/My Files/a b.pz2\""), "/My Files/a b.pz2");
    EXPECT_EQ(CommandPath(" -S   /x.cr2 "), "/x.cr2");
    EXPECT_EQ(CommandPath(" \"/My Files/a b.pz2\" "), "/My Files/a b.pz2");
    EXPECT_EQ(SilentOutputPath("/My Files/a.b.CR2"), "/My Files/a.b.pz2");

    char prog[] = "gelvane", sw[] = "-s", path[] = "/a b/c.pz2";
    char *argv[] = {prog, sw, path};
    EXPECT_EQ(CommandTextOf(3, argv), "-s /a b/c.pz2");
    EXPECT_EQ(CommandTextOf(1, argv), "");
}

TEST(CommandLine, LongPathGivesTheSpellingOnDiskOrNothing) {
    TestHome home;
    const std::string file = home.write("Poser/Runtime/Libraries/Pose/Skin Tone.pz2", "{}");
    EXPECT_EQ(GetLongPath(home.path() + "\\poser\\RUNTIME\\libraries\\pose\\skin tone.PZ2"), file);
    EXPECT_EQ(GetLongPath(home.path() + "/Poser/Runtime/"), home.file("Poser/Runtime"));
    EXPECT_EQ(GetLongPath(home.path() + "/Poser/Missing/Pose/Skin Tone.pz2"), "");
    EXPECT_EQ(GetLongPath(""), "");
}

} // namespace
} // namespace gelvane
