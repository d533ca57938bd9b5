#include "core/maps/MapPaths.h"
#include "core/maps/MapOpen.h"
#include "core/platform/Paths.h"

#include "MapFixture.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

namespace gelvane::test {
namespace {

using MapPathsTest = MapFixture;

TEST(MapPathForms, FullMapPathOfEachForm) {
    const std::pair<const char *, const char *> rows[] = {
        {":Runtime:textures:Skin:A.JPG", "c:\\poser\\runtime\\textures\\skin\\a.jpg"},
        {":textures:b.tif", "c:\\poser\\runtime\\textures\\b.tif"},
        {":TEXTURES:Skin:b.tif", "c:\\poser\\runtime\\textures\\skin\\b.tif"},
        {":Skin:c.bmp", "c:\\poser\\runtime\\textures\\skin\\c.bmp"},
        {"D:\\Maps\\D.jpg", "d:\\maps\\d.jpg"},
        {"NO_MAP", "no_map"},
        {"HD:Poser:e.tif", "hd:poser:e.tif"},
        {":Skin:textures:f.jpg", ":skin:textures:f.jpg"}, // ":textures:" further in: no form applies
        {"", ""},
    };
    for (const auto &[reference, full] : rows)
        EXPECT_EQ(FullMapPath("C:\\Poser", reference), full) << reference;
}

TEST_F(MapPathsTest, FolderTwinsThatDifferOnlyInCaseAreAllSearched) {
    poserFile("Runtime/Textures/Skin/skin.jpg");
    const std::string vendor = poserFile("Runtime/textures/Vendor/a.jpg");
    const std::string both = poserFile("Runtime/textures/Skin/both.jpg");
    const std::string own = poserFile("Runtime/Textures/Skin/both.jpg");
    EXPECT_TRUE(MapFileExists(poser(), ":Runtime:Textures:Vendor:a.jpg"));
    EXPECT_EQ(ResolveFile(poser() + "/Runtime/Textures/Vendor/A.JPG"), vendor);
    // The reference's own spelling comes first.
    EXPECT_EQ(ResolveFile(poser() + "/Runtime/Textures/Skin/both.jpg"), own);
    EXPECT_EQ(ResolveFile(poser() + "/Runtime/textures/Skin/both.jpg"), both);
    EXPECT_EQ(ResolveAllPaths(poser() + "/runtime/TEXTURES").size(), 2u);
    EXPECT_FALSE(MapFileExists(poser(), ":Runtime:Textures:Vendor:b.jpg"));
}

TEST_F(MapPathsTest, ShortMapPathUsesTheOnDiskSpellingBehindTheCut) {
    const std::string file = poserFile("Runtime/Textures/Skin/Face.JPG");
    const std::string typed = poser() + "/runtime/textures/skin/face.jpg";
    EXPECT_EQ(ShortMapPath(poser(), typed, false), ":Runtime:Textures:Skin:Face.JPG");
    EXPECT_EQ(ShortMapPath(poser() + "/", typed, false), ":Runtime:Textures:Skin:Face.JPG");
    EXPECT_EQ(ShortMapPath(poser(), typed, true), file);
    // Poser forms and "NO_MAP" are no files and don't contain the folder.
    EXPECT_EQ(ShortMapPath(poser(), ":Skin:face.jpg", false), ":Skin:face.jpg");
    EXPECT_EQ(ShortMapPath(poser(), "NO_MAP", false), "NO_MAP");
    // A file outside Poser keeps its absolute form, and so does a missing one.
    const std::string outside = home.write("Maps/Other.jpg", "x");
    EXPECT_EQ(ShortMapPath(poser(), home.path() + "/maps/other.JPG", false), outside);
    EXPECT_EQ(ShortMapPath(poser(), "D:\\Maps\\gone.jpg", false), "D:\\Maps\\gone.jpg");
}

TEST_F(MapPathsTest, ReferencesWrittenOnWindowsOrMacFindTheFileUnderPoser) {
    const std::string file = poserFile("Runtime/Textures/Skin/A.JPG");
    const std::string windows = "C:\\Program Files\\Poser\\Runtime\\textures\\Skin\\a.jpg";
    for (const std::string &reference :
         {std::string(":Runtime:Textures:skin:a.jpg"), std::string(":SKIN:a.jpg"), windows})
        EXPECT_TRUE(MapFileExists(poser(), reference)) << reference;
    EXPECT_EQ(LocateMapFile(poser(), FullMapPath(poser(), windows)), file);
    EXPECT_EQ(ShortMapPath(poser(), windows, false), ":Runtime:Textures:Skin:A.JPG");
    EXPECT_FALSE(MapFileExists(poser(), "C:\\Maps\\Skin\\a.jpg"));
    EXPECT_FALSE(MapFileExists(poser(), ":Runtime:Textures:Skin"));
}

TEST_F(MapPathsTest, CaseInsensitiveLookupSeesFilesAddedAfterAListing) {
    home.write("Poser/Dir/First.JPG", "x");
    EXPECT_TRUE(FileExists(poser() + "/dir/first.jpg"));
    home.write("Poser/Dir/Second.JPG", "x");
    EXPECT_TRUE(FileExists(poser() + "/dir/second.jpg"));
    // A folder whose listing is old enough to be kept still notices a new entry.
    const std::string dir = poser() + "/Dir";
    const timespec old[2] = {{1000000000, 0}, {1000000000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, dir.c_str(), old, 0), 0);
    EXPECT_TRUE(FileExists(poser() + "/dir/SECOND.jpg"));
    EXPECT_FALSE(FileExists(poser() + "/dir/third.jpg"));
    home.write("Poser/Dir/Third.jpg", "x");
    EXPECT_TRUE(FileExists(poser() + "/DIR/THIRD.JPG"));
    std::filesystem::rename(dir + "/Third.jpg", dir + "/Fourth.jpg");
    EXPECT_FALSE(FileExists(poser() + "/dir/third.jpg"));
    EXPECT_EQ(ResolvePath(poser() + "\\DIR\\fourth.JPG"), dir + "/Fourth.jpg");
}

// An opener script that ends with the given status.
std::string Opener(const TestHome &home, int status) {
    const std::string path =
        home.write("bin/opener" + std::to_string(status), "#!/bin/sh\nexit " + std::to_string(status) + "\n");
    chmod(path.c_str(), 0755);
    return path;
}

TEST_F(MapPathsTest, OpenFailuresMapToTheirMessages) {
    OpenMapFile(session, "");
    EXPECT_TRUE(ui.messages().empty());
    OpenMapFile(session, "NO_MAP");
    OpenMapFile(session, home.path() + "/nowhere/a.jpg");
    OpenMapFile(session, ":Skin:gone.jpg"); // its folder doesn't exist either
    EXPECT_EQ(Texts(), (Strings{"File not found", "Path not found", "Path not found"}));
    EXPECT_EQ(ui.messages()[0].Title, "Gelvane");

    const std::string file = poserFile("Runtime/Textures/a.jpg");
    EXPECT_EQ(ShellOpenWith(file, Opener(home, 0)), 42);
    EXPECT_EQ(ShellOpenWith(file, Opener(home, 4)), 31);
    EXPECT_EQ(ShellOpenWith(file, Opener(home, 1)), 0);
    EXPECT_EQ(ShellOpenWith(file, home.path() + "/bin/no-such-opener"), 31);
}

} // namespace
} // namespace gelvane::test
