#include "core/maps/MapFinder.h"
#include "core/maps/MapPaths.h"

#include "MapFixture.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace gelvane::test {
namespace {

class MapFinderTest : public MapFixture {
protected:
    void scan(const std::string &folder) {
        ui.ProgressShow("Please wait", "Scanning folders...", -1);
        ScanFolder(session, folder);
        ui.ProgressClose();
    }
};

TEST_F(MapFinderTest, ScanSortsFilesIntoTheFiveListsAndWritesTheCacheFiles) {
    for (const char *file :
         {"b.JPG", "a.jpeg", "Skin/c.tiff", "Skin/d.tif", "Skin/e.bum", "Skin/f.png", "Skin/gpict", "Skin/notes.txt"})
        poserFile(std::string("Runtime/Textures/") + file);
    scan(textures());
    EXPECT_EQ(std::tuple(NamesOf(session.Maps.JpgMaps), NamesOf(session.Maps.TifMaps), NamesOf(session.Maps.OtherMaps)),
              std::tuple(Strings{"a.jpeg", "b.JPG"}, Strings{"c.tiff", "d.tif"}, Strings{"f.png", "gpict"}));
    EXPECT_TRUE(session.Maps.TifMaps[0].Folder == textures() + "/Skin" && IsEmptyList(session.Maps.BmpMaps));

    ASSERT_TRUE(SaveMapLists(session));
    EXPECT_EQ(home.read("Cache/jpgs.txt"), "a.jpeg\r\n*" + textures() + "\r\nb.JPG\r\n*" + textures() + "\r\n");
    EXPECT_EQ(home.read("Cache/bums.txt"), "e.bum\r\n*" + textures() + "/Skin\r\n");
    EXPECT_EQ(home.read("Cache/bmps.txt"), "\r\n*\r\n");
    EXPECT_EQ(home.read("Cache/others.txt"),
              "f.png\r\n*" + textures() + "/Skin\r\ngpict\r\n*" + textures() + "/Skin\r\n");

    // A scan of another folder renews the files with only this run's lists.
    AddMapToLists(session, poserFile("Runtime/Textures/Skin/h.BMP"));
    ASSERT_TRUE(SaveMapLists(session));
    EXPECT_EQ(home.read("Cache/bmps.txt"), "h.BMP\r\n*" + textures() + "/Skin\r\n");
}

TEST_F(MapFinderTest, ScanSurvivesLinkLoopsOddNamesAndUnreadableFolders) {
    poserFile("Runtime/Textures/Loop/a b \xe9.jpg");
    fs::create_directory_symlink(textures(), textures() + "/Loop/Back");
    fs::create_symlink(textures() + "/missing.jpg", textures() + "/dangling.jpg");
    poserFile("Runtime/Textures/Locked/hidden.jpg");
    chmod((textures() + "/Locked").c_str(), 0);
    scan(textures());
    chmod((textures() + "/Locked").c_str(), 0755);
    // Root reads any folder.
    const Strings expected = geteuid() == 0 ? Strings{"hidden.jpg", "a b \xe9.jpg"} : Strings{"a b \xe9.jpg"};
    EXPECT_EQ(NamesOf(session.Maps.JpgMaps), expected);
}

TEST_F(MapFinderTest, CancelStopsEachRemainingFolderAtItsFirstFile) {
    for (const char *dir : {"A", "B", "C"})
        for (const char *file : {"1.jpg", "2.jpg", "3.jpg"})
            poserFile(std::string("Runtime/Textures/") + dir + "/" + file);
    ui.cancelAtDoEvents(2); // while the second file of A is being looked at
    scan(textures());
    std::vector<std::string> folders;
    for (const MapFile &file : session.Maps.JpgMaps)
        folders.push_back(fs::path(file.Folder).filename().string() + "/" + file.Name);
    EXPECT_EQ(folders, (Strings{"A/1.jpg", "A/2.jpg"}));
}

TEST_F(MapFinderTest, NoMapAndUnknownMapsComeBackAsTheyAre) {
    settings.SetNoMap = true;
    EXPECT_EQ(FindFile(session, " no_Map "), " no_Map ");
    EXPECT_EQ(session.Maps.ChosenMapIndex, 0);
    settings.SetNoMap = false;
    EXPECT_EQ(FindFile(session, ":Skin:gone.tif"), ":Skin:gone.tif");
    settings.SetNoMap = true;
    EXPECT_EQ(FindFile(session, ":Skin:gone.tif"), "NO_MAP");
    EXPECT_TRUE(ui.messages().empty());
}

TEST_F(MapFinderTest, OneFileInMemoryIsTheAnswerInPoserFormWithItsOnDiskCase) {
    poserFile("Runtime/Textures/Skin/Face.JPG");
    scan(textures());
    EXPECT_EQ(FindFile(session, ":Old:FACE.jpg"), ":Runtime:Textures:Skin:Face.JPG");
    // Names are compared whole: the extension only picks the list.
    EXPECT_EQ(FindFile(session, ":Old:Face.jpeg"), ":Old:Face.jpeg");
    EXPECT_TRUE(ui.mapQuestions().empty());
}

TEST_F(MapFinderTest, DuplicatesGoThroughTheCacheFileAndTheUserChooses) {
    poserFile("Runtime/Textures/One/Dup.jpg");
    poserFile("Runtime/Textures/Two/dup.JPG");
    scan(textures());
    ASSERT_TRUE(SaveMapLists(session));
    ui.nextMapChoice(1);
    EXPECT_EQ(FindFile(session, ":x:dup.jpg"), ":Runtime:Textures:Two:dup.JPG");
    ASSERT_EQ(ui.mapQuestions(), Strings{"dup.jpg"});
    EXPECT_EQ(Each(ui.mapCandidates()[0], &MapCandidate::Path),
              (Strings{textures() + "/One/dup.jpg", textures() + "/Two/dup.jpg"}));
    EXPECT_EQ(std::tie(session.Maps.ChosenMapIndex, session.Maps.ListedMaps), std::tuple(1, Strings{""}));
    // The chosen file joined the list in memory: three names now, still several.
    EXPECT_EQ(session.Maps.JpgMaps.size(), 3u);
    // Closing the window or choosing the last row is "NO_MAP", whatever SetNoMap says.
    ui.nextMapChoice(-1);
    EXPECT_EQ(FindFile(session, ":x:dup.jpg"), "NO_MAP");
    EXPECT_EQ(session.Maps.ChosenMapIndex, 2);
}

TEST_F(MapFinderTest, AMapKnownOnlyToTheCacheFileIsFoundAndRemembered) {
    const std::string file = poserFile("Runtime/Textures/Hair/Hair.TIF");
    home.write("Cache/tifs.txt", "Hair.TIF\r\n*" + textures() + "/Hair\r\n");
    EXPECT_EQ(FindFile(session, "D:\\old\\hair.tif"), ":Runtime:Textures:Hair:Hair.TIF");
    EXPECT_EQ(session.Maps.TifMaps[0].Name, "Hair.TIF");
    EXPECT_EQ(session.Maps.TifMaps[0].Folder, textures() + "/Hair");
    fs::remove(home.file("Cache/tifs.txt"));
    EXPECT_EQ(FindFile(session, "D:\\old\\hair.tif"), ":Runtime:Textures:Hair:Hair.TIF");
}

TEST_F(MapFinderTest, OtherKindsAreAnsweredFromTheCacheFileOnly) {
    poserFile("Runtime/Textures/Pics/logo.gif");
    scan(textures());
    EXPECT_EQ(FindFile(session, ":x:logo.gif"), ":x:logo.gif");
    ASSERT_TRUE(SaveMapLists(session));
    EXPECT_EQ(FindFile(session, ":x:logo.gif"), ":Runtime:Textures:Pics:logo.gif");
}

TEST_F(MapFinderTest, CacheFileMatchesArePlainSubstrings) {
    poserFile("Runtime/Textures/Same/a.jpg");
    poserFile("Runtime/Textures/Extra/extra.jpg");
    // The same entry twice gives two equal rows.
    const std::string same = "a.jpg\r\n*" + textures() + "/Same\r\n";
    home.write("Cache/jpgs.txt", same + same);
    ui.nextMapChoice(0);
    EXPECT_EQ(FindFile(session, ":a.jpg"), ":Runtime:Textures:Same:a.jpg");
    ASSERT_EQ(ui.mapCandidates().size(), 1u);
    ASSERT_EQ(ui.mapCandidates()[0].size(), 2u);
    EXPECT_EQ(ui.mapCandidates()[0][0].Path, ui.mapCandidates()[0][1].Path);
    // "b.jpg" occurs only inside "xb.jpg": that entry's folder is taken.
    home.write("Cache/jpgs.txt", "xb.jpg\r\n*" + textures() + "/Same\r\n");
    poserFile("Runtime/Textures/Same/b.jpg");
    EXPECT_EQ(FindFile(session, ":b.jpg"), ":Runtime:Textures:Same:b.jpg");
}

TEST_F(MapFinderTest, StaleOrBrokenCacheEntriesAreReportedNotFatal) {
    home.write("Cache/jpgs.txt", "gone.jpg\r\n*" + textures() + "/Nowhere\r\n");
    EXPECT_EQ(FindFile(session, ":gone.jpg"), "NO_MAP");
    EXPECT_EQ(ui.messages().at(0), (RecordedMessage{"File " + textures() + "/Nowhere/gone.jpg doesn't exist.",
                                                    "Gelvane", MsgIcon::Exclamation, MsgButtons::OK}));

    // A file cut short after the name: the failure is reported and the search gives up.
    home.write("Cache/jpgs.txt", "cut.jpg\r\n*/some/fold");
    EXPECT_EQ(FindFile(session, ":cut.jpg"), ":cut.jpg");
    ASSERT_EQ(ui.messages().size(), 2u);
    EXPECT_EQ(ui.messages()[1].Text, "Error in the FindFile function\r\nInvalid procedure call or argument, "
                                     "error number 5\r\nCode line number 10");
    // Line feeds alone, as an editor may leave them, are no crash either.
    home.write("Cache/jpgs.txt", "lf.jpg\n*/x\n");
    EXPECT_EQ(FindFile(session, ":lf.jpg"), ":lf.jpg");
    EXPECT_EQ(ui.messages().size(), 3u);
}

} // namespace
} // namespace gelvane::test
