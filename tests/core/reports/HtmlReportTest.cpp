#include "core/reports/HtmlReport.h"
#include "ReportFixture.h"

#include "core/platform/Failure.h"
#include "core/platform/Paths.h"

#include <Magick++.h>
#include <gtest/gtest.h>

using namespace gelvane;
using namespace gelvane::test;

namespace {

// A picture of the report: a 100 x 100 JPEG of quality 80 with the map's colour
// (0xRRGGBB) in its middle.
void ExpectPicture(const std::string &path, uint32_t colour) {
    SCOPED_TRACE(path);
    Magick::Image image;
    ASSERT_NO_THROW(image.read(path));
    EXPECT_EQ(std::tuple(image.magick(), image.quality(), image.size()),
              std::tuple("JPEG", 80u, Magick::Geometry(100, 100)));
    uint8_t middle[3];
    image.write(50, 50, 1, 1, "RGB", Magick::CharPixel, middle);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(middle[c], (colour >> (16 - 8 * c)) & 0xFF, 12) << "channel " << c;
}

} // namespace

TEST(HtmlReport, PageWithThumbnailAndMaps) {
    ReportFixture f;
    f.Open("report/with-maps/Skin Tones.pz2");
    const std::string page = f.home.file("Report.htm");
    WriteHtmlReport(f.session, f.thumbs, page, FixedDate);
    EXPECT_EQ(ReadFileBytes(page), ReadTestData("report/with-maps/expected.htm"));
    // The missing first texture uses up the number 0.
    const std::string images = f.home.file("Report_Images/");
    ExpectPicture(images + "thumbnail.jpg", 0x3060C0);
    ExpectPicture(images + "tex 1.jpg", 0xE0A070);
    ExpectPicture(images + "bump 0.jpg", 0x808080);
    EXPECT_FALSE(FileExists(images + "tex 0.jpg"));

    // A second run replaces page and pictures without asking.
    WriteHtmlReport(f.session, f.thumbs, page, FixedDate);
    EXPECT_EQ(ReadFileBytes(page), ReadTestData("report/with-maps/expected.htm"));
}

TEST(HtmlReport, PageOfAFileWithOnlyActors) {
    ReportFixture f;
    f.Open("report/actors-only/Hand Pose.pz2");
    const std::string page = f.home.file("Hands.v2.htm");
    WriteHtmlReport(f.session, f.thumbs, page, FixedDate);
    EXPECT_EQ(ReadFileBytes(page), ReadTestData("report/actors-only/expected.htm"));
    // No picture, so no images folder.
    EXPECT_FALSE(FolderExists(f.home.file("Hands.v2_Images")));
}

TEST(HtmlReport, CommandAsksThenReportsFailuresWithoutAHalfPage) {
    ReportFixture f;
    f.settings.PoserFolder = f.home.path();
    f.session.FileName = f.home.write("Broken.pz2", "{}");
    f.home.write("Runtime/textures/bad.jpg", "not a picture");
    f.session.Figures[0].Name = "figure";
    f.session.Figures[0].Materials[0].textureMap = ":Runtime:textures:bad.jpg";
    f.session.cmbFigures = {"figure"};
    ComputeFileStatistics(f.session);
    const std::string page = f.home.write("Report.htm", "the page before");

    f.ui.nextFile(page);
    cmdCreateHTML_Click(f.session, f.thumbs);
    const FileDialogRequest &request = f.ui.fileRequests().at(0);
    // No question before replacing a page.
    EXPECT_EQ(std::tie(request.Title, request.InitialDir, request.Flags),
              std::tuple("Save HTML file", f.home.path(), 0));
    EXPECT_EQ(f.Texts(), std::vector<std::string>{"Invalid picture :Runtime:textures:bad.jpg, error number 481"});
    EXPECT_EQ(f.home.read("Report.htm"), "the page before");

    f.ui.nextFile(std::nullopt); // Cancel: nothing more
    cmdCreateHTML_Click(f.session, f.thumbs);
    EXPECT_EQ(f.ui.messages().size(), 1u);

    // A page name without a "." leaves no name for the pictures' folder.
    EXPECT_EQ(ImagesFolderName("/p/Report.v2.htm"), "Report.v2_Images");
    f.ui.nextFile(f.home.file("Report"));
    cmdCreateHTML_Click(f.session, f.thumbs);
    EXPECT_EQ(f.ui.messages().back().Text, "Invalid procedure call or argument, error number 5");
    EXPECT_FALSE(FileExists(f.home.file("Report")));
}

TEST(HtmlReport, MapRowReadsTheFileAReferenceOfAnyFormLocates) {
    // A reference written on Windows names the file under Poser's folder: its row decodes
    // that file (here not a picture) instead of saying "File not found".
    ReportFixture f;
    f.settings.PoserFolder = f.home.path();
    f.session.FileName = f.home.write("Windows.pz2", "{}");
    f.home.write("Runtime/Textures/bad.jpg", "not a picture");
    f.session.Figures[0].Name = "figure";
    f.session.Figures[0].Materials[0].textureMap = "D:\\Poser\\Runtime\\textures\\bad.jpg";
    f.session.cmbFigures = {"figure"};
    ComputeFileStatistics(f.session);
    EXPECT_THROW(WriteHtmlReport(f.session, f.thumbs, f.home.file("Report.htm"), FixedDate), Failure);
}
