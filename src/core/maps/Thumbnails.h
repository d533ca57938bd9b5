#pragma once
// Thumbnails of picture files: decoded once, painted centred on black with the
// aspect kept into a fixed-size RGB image, and kept in two image lists keyed by
// the lower-cased path (list 0: the material page; list 1: the map choice and
// the open dialog's preview, emptied when those close).
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace gelvane {

class Session;

// The work surface: 1500 x 1500 logical units at 15 units a pixel.
inline constexpr int kThumbSurfaceUnits = 1500;
inline constexpr int kThumbUnitsPerPixel = 15;
inline constexpr int kThumbPixels = kThumbSurfaceUnits / kThumbUnitsPerPixel;
// Room left around the painted picture, in logical units.
inline constexpr int kThumbMargin = 60;
// JPEGs with more pixels than this on a side are decoded at a reduced size.
inline constexpr int kThumbJpegHintPixels = 400;

// An 8-bit RGB image, rows top to bottom, three bytes a pixel.
struct Thumbnail {
    int Width = 0;
    int Height = 0;
    std::vector<uint8_t> Rgb;
    bool operator==(const Thumbnail &) const = default;
};

// A decoded picture with its size in pixels as stored in the file.
struct DecodedPicture {
    int Width = 0;
    int Height = 0;
    Thumbnail Pixels; // the picture itself, possibly decoded at a reduced size
};

// Where the picture goes on the surface, in logical units.
struct ThumbPlacement {
    int16_t x = 0, y = 0, w = 0, h = 0;
    bool operator==(const ThumbPlacement &) const = default;
};

// One row of the dimension list: the path as given and "W X H" in pixels.
struct ThumbInfoRecord {
    std::string Path;
    std::string Dimensions;
};

// The image library's coder for a texture file, chosen by the name's extension alone
// ("PNG" for ".png", "BMP" for Poser's ".bum" bump files); empty for any other name.
std::string_view PictureCoder(std::string_view path);

// Decodes a texture file with the coder its extension selects, and with no other:
// content of another format, or a name that selects none, decodes to nothing. The
// first call closes every other coder of the image library for the whole process.
// `reduceLargeJpeg` lets big JPEGs decode at about the thumbnail's size.
std::optional<DecodedPicture> DecodePicture(const std::string &path, bool reduceLargeJpeg = true);

// The placement of a picture of `width` x `height` (any unit, only the ratio
// counts) on a surface of surfaceW x surfaceH logical units, less the margin.
ThumbPlacement PlaceThumbnail(double width, double height, int surfaceW = kThumbSurfaceUnits,
                              int surfaceH = kThumbSurfaceUnits);

// Paints `picture` on a black surface of kThumbPixels square at the placement.
Thumbnail PaintThumbnail(const DecodedPicture &picture);

// "W X H" for a picture size in pixels, by way of the logical units the size
// was once measured in.
std::string ThumbDimensions(int widthPixels, int heightPixels);

// The picture as a baseline JPEG file of the given quality (1..100).
std::string EncodeJpeg(const Thumbnail &picture, int quality);

// The fixed images: "Black", "NoImage", "PicPrev", "NA", "Loading".
Thumbnail FixedThumbnail(std::string_view key);

class ThumbnailCache {
public:
    ThumbnailCache();

    // Decodes `path` and adds its thumbnail to list `listIndex` (0 or 1) under the
    // lower-cased path. True only when a new picture was added: False when the key
    // was there already or decoding failed (the caller then shows "NA").
    bool LoadThumbNail(const std::string &path, int listIndex);

    // The picture kept under `key` (a fixed key, or a path in any case) in the list, or null.
    const Thumbnail *Find(std::string_view key, int listIndex) const;
    bool Contains(std::string_view key, int listIndex) const { return Find(key, listIndex) != nullptr; }
    // Keys of a list in the order they were added.
    const std::vector<std::string> &Keys(int listIndex) const { return m_lists[Index(listIndex)].Order; }
    void Add(const std::string &key, Thumbnail image, int listIndex);
    // Empties a list; list 0 keeps its fixed images.
    void Clear(int listIndex);

    // The dimension list, one empty record while nothing was loaded.
    const std::vector<ThumbInfoRecord> &ThumbInfo() const { return m_thumbInfo; }
    // The "W X H" recorded for `path` (compared without regard to case), or empty.
    std::string DimensionsOf(std::string_view path) const;

    // Lets window events run while decoding; may be empty.
    std::function<void()> DoEvents;
    // Number of decodes tried so far (each decode is the slow part).
    int DecodeCount() const { return m_decodes; }

private:
    struct List {
        std::unordered_map<std::string, Thumbnail> Images;
        std::vector<std::string> Order;
    };
    static int Index(int listIndex) { return listIndex == 1 ? 1 : 0; }
    void AddFixedImages();

    List m_lists[2];
    std::vector<ThumbInfoRecord> m_thumbInfo{1};
    int m_decodes = 0;
};

// Makes the session's map readers cache a thumbnail of each map in list 0 of `cache`,
// and a fresh open empty that list back to its fixed images. The cache belongs to the
// program's window and must outlive the session's use of it.
void ConnectThumbnails(Session &session, ThumbnailCache &cache);

// What the open dialog's preview shows for a selected path.
struct PreviewChoice {
    enum Kind { Nothing, NotAvailable, Picture } What = Nothing;
    std::string Path; // the picture to show when What is Picture
};
// A folder or a missing path shows nothing; a picture shows itself; a Poser file
// the ".png" beside it, or "NA" when there is none; anything else "NA".
PreviewChoice PreviewSelectedFile(const std::string &path);

} // namespace gelvane
