#include "core/maps/Thumbnails.h"

#include "support/SessionFixture.h"

#include <Magick++.h>

#include <cstdlib>
#include <filesystem>

using namespace gelvane;

namespace {

// A picture of `w` x `h` in one colour, written in the format its name implies
// (or in `format` when given).
std::string MakePicture(const std::string &path, int w, int h, const std::string &color = "#ff0000",
                        const std::string &format = {}) {
    Magick::InitializeMagick(nullptr);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    // Made from pixels: the colour coder is closed once a picture has been decoded.
    const unsigned long rgb = std::stoul(color.substr(1), nullptr, 16);
    std::vector<uint8_t> pixels(static_cast<size_t>(w) * h * 3);
    for (size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<uint8_t>(rgb >> (16 - 8 * (i % 3)));
    Magick::Image image(static_cast<size_t>(w), static_cast<size_t>(h), "RGB", Magick::CharPixel, pixels.data());
    // Written with the coder the name selects: "JPG" and other alias names are closed too.
    image.write((format.empty() ? std::string(PictureCoder(path)) : format) + ":" + path);
    return path;
}

const uint8_t *Pixel(const Thumbnail &t, int x, int y) {
    return &t.Rgb[(static_cast<size_t>(y) * t.Width + x) * 3];
}

bool IsBlack(const Thumbnail &t, int x, int y) {
    return Pixel(t, x, y)[0] == 0 && Pixel(t, x, y)[1] == 0 && Pixel(t, x, y)[2] == 0;
}

bool IsRed(const Thumbnail &t, int x, int y) {
    return Pixel(t, x, y)[0] > 200 && Pixel(t, x, y)[1] < 60 && Pixel(t, x, y)[2] < 60;
}

} // namespace

TEST(ThumbnailPlacement, KeepsAspectInsideTheMargin) {
    // Tall: the full height less the margin, centred by the difference of the two sides.
    EXPECT_EQ(PlaceThumbnail(100, 200, 1500, 1500), (ThumbPlacement{360, 0, 720, 1440}));
    // Square: fills the surface less the margin.
    EXPECT_EQ(PlaceThumbnail(300, 300, 1500, 1500), (ThumbPlacement{0, 0, 1440, 1440}));
    // Wide: the full width, moved down.
    EXPECT_EQ(PlaceThumbnail(200, 100, 1500, 1500), (ThumbPlacement{0, 360, 1440, 720}));
    // 3:1 gives a height of 480, a 16-bit rounding of 1440 / 3.
    EXPECT_EQ(PlaceThumbnail(3000, 1000), (ThumbPlacement{0, 480, 1440, 480}));
}

class ThumbnailFormats : public ::testing::TestWithParam<std::pair<const char *, const char *>> {};

// Every format the map dialogs offer decodes, and lands centred on black.
TEST_P(ThumbnailFormats, DecodesAndPaintsCentredOnBlack) {
    test::TestHome home;
    const auto [name, format] = GetParam();
    const std::string path = MakePicture(home.file(name), 40, 20, "#ff0000", format);

    const auto picture = DecodePicture(path);
    ASSERT_TRUE(picture.has_value()) << name;
    EXPECT_EQ(std::tuple(picture->Width, picture->Height), std::tuple(40, 20));

    const Thumbnail t = PaintThumbnail(*picture);
    ASSERT_EQ(std::tuple(t.Width, t.Height), std::tuple(kThumbPixels, kThumbPixels));
    // 2:1 picture: 1440 x 720 units at y 360, that is 96 x 48 pixels at y 24; the margin is on the right.
    EXPECT_TRUE(IsBlack(t, 50, 10) && IsBlack(t, 50, 90) && IsBlack(t, 99, 50)) << name;
    if (std::string(name).ends_with("pgm")) // grey only
        EXPECT_GT(Pixel(t, 50, 48)[0], 40) << name;
    else
        EXPECT_TRUE(IsRed(t, 50, 48) && IsRed(t, 1, 25) && IsRed(t, 94, 70)) << name;
}

INSTANTIATE_TEST_SUITE_P(Pictures, ThumbnailFormats,
                         ::testing::Values(std::pair{"a.jpg", ""}, std::pair{"a.jpeg", ""}, std::pair{"a.bmp", ""},
                                           std::pair{"a.png", ""}, std::pair{"a.gif", ""}, std::pair{"a.tif", ""},
                                           std::pair{"a.psd", ""}, std::pair{"a.pcx", ""}, std::pair{"a.tga", ""},
                                           std::pair{"a.pgm", ""}, std::pair{"bump.bum", "BMP"},
                                           std::pair{"Upper.JPG", ""}),
                         [](const auto &info) { return test::TestName(info.param.first); });

TEST(ThumbnailDecoding, TransparencyShowsBlack) {
    test::TestHome home;
    Magick::InitializeMagick(nullptr);
    const std::string path = home.file("clear.png");
    std::vector<uint8_t> clearRed(20 * 20 * 4, 0);
    for (size_t i = 0; i < clearRed.size(); i += 4)
        clearRed[i] = 255;
    Magick::Image image(20, 20, "RGBA", Magick::CharPixel, clearRed.data());
    image.write(path);
    const auto picture = DecodePicture(path);
    ASSERT_TRUE(picture);
    const Thumbnail t = PaintThumbnail(*picture);
    EXPECT_TRUE(IsBlack(t, 50, 50));
}

TEST(ThumbnailDecoding, LargeJpegIsReadSmallButKeepsItsSize) {
    test::TestHome home;
    const std::string path = MakePicture(home.file("big.jpg"), 2400, 1200, "#00ff00");
    const auto picture = DecodePicture(path);
    ASSERT_TRUE(picture);
    EXPECT_EQ(std::tuple(picture->Width, picture->Height), std::tuple(2400, 1200));
    EXPECT_TRUE(picture->Pixels.Width <= 2 * kThumbPixels && picture->Pixels.Height <= kThumbPixels);

    ThumbnailCache cache;
    ASSERT_TRUE(cache.LoadThumbNail(path, 0));
    EXPECT_EQ(cache.DimensionsOf(path), "2400 X 1200");
}

TEST(ThumbnailDecoding, UndecodableFilesFail) {
    test::TestHome home;
    ThumbnailCache cache;
    const std::string text = home.write("notes.jpg", "this is no picture");
    const std::string tga = home.write("empty.tga", "");
    const std::string bum = home.write("odd.bum", "BM not really");
    for (const std::string &path : {text, tga, bum, home.file("missing.png")}) {
        EXPECT_FALSE(DecodePicture(path).has_value()) << path;
        EXPECT_FALSE(cache.LoadThumbNail(path, 0)) << path;
        EXPECT_FALSE(cache.Contains(path, 0)) << path;
    }
    // Nothing was recorded for them.
    ASSERT_EQ(cache.ThumbInfo().size(), 1u);
    EXPECT_TRUE(cache.ThumbInfo()[0].Path.empty());
}

// Each picture is decoded by the coder its extension names and by no other: content of
// another kind decodes to nothing (the caller shows "NA"), and the image library's other
// coders are closed to the whole process, however a name asks for them.
TEST(ThumbnailDecoding, OnlyTheCoderOfTheExtensionReads) {
    test::TestHome home;
    const std::string secret = home.write("secret.txt", "a local text file\n");
    const std::string svgText = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\"><image href=\"" +
                                secret + "\" width=\"8\" height=\"8\"/></svg>\n";
    const std::string mvg = home.write("mvg.png", "viewbox 0 0 8 8\nimage over 0,0 8,8 \"text:" + secret + "\"\n");
    const std::string svg = home.write("svg.jpg", svgText);
    const std::string text = home.write("text.tif", "plain text\n");
    const std::string pngAsBump = MakePicture(home.file("png.bum"), 4, 4, "#ff0000", "PNG");
    ThumbnailCache cache;
    for (const std::string &path : {mvg, svg, text, pngAsBump}) {
        EXPECT_FALSE(DecodePicture(path).has_value()) << path;
        EXPECT_FALSE(cache.LoadThumbNail(path, 0)) << path;
        EXPECT_FALSE(cache.Contains(path, 0)) << path;
    }
    for (const auto &[path, coder] : {std::pair{"C:\\Maps\\Skin.JPEG", "JPEG"}, std::pair{"a/b.bum", "BMP"},
                                      std::pair{"x.PICT", "PICT"}, std::pair{"x.svg", ""}, std::pair{"x.mvg", ""},
                                      std::pair{"maps.png/readme", ""}, std::pair{"png", ""}})
        EXPECT_EQ(PictureCoder(path), coder) << path;

    // The library itself now refuses them, named by a prefix or found by content.
    for (const std::string &source : {"MVG:" + mvg, "SVG:" + svg, "TEXT:" + secret, "EPHEMERAL:" + secret,
                                      "MSL:" + secret, std::string("INLINE:data:,x"), home.write("plain.svg", svgText)}) {
        Magick::Image image;
        image.quiet(true);
        try {
            image.read(source);
            ADD_FAILURE() << source << " was read";
        } catch (const std::exception &refused) {
            EXPECT_NE(std::string(refused.what()).find("security policy"), std::string::npos) << refused.what();
        }
    }
}

TEST(ThumbnailCacheTest, OneThumbnailPerPathWhateverItsCase) {
    test::TestHome home;
    const std::string path = MakePicture(home.file("Maps/Skin.JPG"), 30, 30);
    ThumbnailCache cache;

    EXPECT_TRUE(cache.LoadThumbNail(path, 0));
    EXPECT_EQ(cache.DecodeCount(), 1);
    // The readers hand lower-cased paths; the file is still found on disk, and the
    // key is the same, so nothing is decoded again.
    std::string lower = path;
    for (char &c : lower)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_FALSE(cache.LoadThumbNail(lower, 0) || cache.LoadThumbNail(path, 0));
    EXPECT_EQ(cache.DecodeCount(), 1);
    EXPECT_TRUE(cache.Find(lower, 0) != nullptr && cache.Find(path, 0) == cache.Find(lower, 0));
    ASSERT_EQ(cache.Keys(0).size(), 6u); // the fixed images and this one
    EXPECT_EQ(cache.Keys(0).back(), lower);

    // The other list decodes for itself.
    EXPECT_TRUE(cache.LoadThumbNail(lower, 1));
    EXPECT_EQ(cache.DecodeCount(), 2);

    ASSERT_EQ(cache.ThumbInfo().size(), 2u);
    EXPECT_EQ(std::tie(cache.ThumbInfo()[0].Path, cache.ThumbInfo()[0].Dimensions), std::tuple(path, "30 X 30"));
    EXPECT_EQ(cache.DimensionsOf(lower), "30 X 30");
}

TEST(ThumbnailCacheTest, ClearingKeepsTheFixedImagesOfTheMainList) {
    test::TestHome home;
    const std::string path = MakePicture(home.file("a.png"), 8, 8);
    ThumbnailCache cache;
    for (const char *key : {"Black", "NoImage", "PicPrev", "NA", "Loading"})
        EXPECT_TRUE(cache.Contains(key, 0)) << key;
    EXPECT_FALSE(cache.Contains("NA", 1));
    EXPECT_NE(*cache.Find("NA", 0), *cache.Find("Black", 0)); // "NA" is lettered

    ASSERT_TRUE(cache.LoadThumbNail(path, 0));
    ASSERT_TRUE(cache.LoadThumbNail(path, 1));
    cache.Clear(1);
    EXPECT_TRUE(cache.Keys(1).empty());
    EXPECT_TRUE(cache.Contains(path, 0));
    cache.Clear(0);
    EXPECT_FALSE(cache.Contains(path, 0));
    EXPECT_TRUE(cache.Contains("NA", 0));
    // After a clear the picture is decoded afresh.
    EXPECT_TRUE(cache.LoadThumbNail(path, 1));
}

TEST(ThumbnailCacheTest, SessionReadersFillTheMainList) {
    test::TestHome home;
    test::TestSession t;
    ThumbnailCache cache;
    ConnectThumbnails(t.session, cache);
    const std::string path = MakePicture(home.file("t.bmp"), 4, 4);
    t.session.LoadThumbNail(path);
    EXPECT_TRUE(cache.Contains(path, 0) && !cache.Contains(path, 1));
    t.session.ResetThumbnails();
    EXPECT_TRUE(!cache.Contains(path, 0) && cache.Contains("Loading", 0));
}

TEST(PreviewSelection, PicturesPoserFilesAndTheRest) {
    test::TestHome home;
    const std::string picture = MakePicture(home.file("pic.tiff"), 4, 4);
    const std::string figure = home.write("Figures/Man.CR2", "{\n}\n");
    const std::string png = MakePicture(home.file("Figures/Man.png"), 4, 4);
    const std::string lonely = home.write("Figures/Solo.pz2", "{\n}\n");
    const std::string other = home.write("readme.txt", "hello");

    const auto shown = [](const std::string &path) {
        const PreviewChoice choice = PreviewSelectedFile(path);
        return std::tuple(choice.What, choice.Path);
    };
    EXPECT_EQ(shown(home.file("Figures")), std::tuple(PreviewChoice::Nothing, ""));
    EXPECT_EQ(shown(home.file("gone.jpg")), std::tuple(PreviewChoice::Nothing, ""));
    EXPECT_EQ(shown(picture), std::tuple(PreviewChoice::Picture, picture));
    EXPECT_EQ(shown(figure), std::tuple(PreviewChoice::Picture, png));
    EXPECT_EQ(PreviewSelectedFile(lonely).What, PreviewChoice::NotAvailable);
    EXPECT_EQ(PreviewSelectedFile(other).What, PreviewChoice::NotAvailable);
}
