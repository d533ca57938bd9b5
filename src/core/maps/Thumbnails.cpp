#include "core/maps/Thumbnails.h"

#include "core/model/Numbers.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Paths.h"

#include <Magick++.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace gelvane {

namespace {

// The texture formats the program reads, by extension, and the image library's coder
// for each. ".bum" and ".rle" files are Windows bitmaps under other names.
constexpr std::pair<std::string_view, std::string_view> kPictureCoders[] = {
    {"jpg", "JPEG"}, {"jpeg", "JPEG"}, {"bmp", "BMP"}, {"bum", "BMP"}, {"rle", "BMP"},  {"tif", "TIFF"},
    {"tiff", "TIFF"}, {"gif", "GIF"},  {"png", "PNG"}, {"pcx", "PCX"}, {"pgm", "PGM"},  {"pict", "PICT"},
    {"psd", "PSD"},  {"tga", "TGA"},   {"wmf", "WMF"},
};

// Every coder of the image library is closed for the whole process except the ones
// above; JPEG writes the report's pictures. No delegate programs, filters or "@" lists.
// Together with the explicit coder of each read, no file can make the library read
// or fetch anything else (MVG, SVG, MSL, TEXT, URL, EPHEMERAL and the like).
bool RestrictCoders() {
    std::string allowed;
    for (const auto &[ext, coder] : kPictureCoders)
        if (allowed.find(std::string(coder) + ",") == std::string::npos)
            allowed += std::string(coder) + ",";
    allowed.pop_back();
    const std::string policy = "<policymap>"
                               "<policy domain=\"coder\" rights=\"none\" pattern=\"*\"/>"
                               "<policy domain=\"coder\" rights=\"read|write\" pattern=\"{" +
                               allowed +
                               "}\"/>"
                               "<policy domain=\"delegate\" rights=\"none\" pattern=\"*\"/>"
                               "<policy domain=\"filter\" rights=\"none\" pattern=\"*\"/>"
                               "<policy domain=\"path\" rights=\"none\" pattern=\"@*\"/>"
                               "</policymap>";
    MagickCore::ExceptionInfo *exception = MagickCore::AcquireExceptionInfo();
    const bool set = MagickCore::SetMagickSecurityPolicy(policy.c_str(), exception) != MagickCore::MagickFalse;
    MagickCore::DestroyExceptionInfo(exception);
    return set;
}

// True once the library runs under the restricted policy; without it nothing is decoded.
bool EnsureMagick() {
    static std::once_flag once;
    static bool restricted = false;
    std::call_once(once, [] {
        Magick::InitializeMagick(nullptr);
        restricted = RestrictCoders();
    });
    return restricted;
}

// Pictures were measured in hundredths of a millimetre at 96 pixels an inch.
long LogicalUnits(int pixels) {
    return static_cast<long>(RoundHalfEven(pixels * 2540.0 / 96.0));
}

constexpr double kUnitsPerPixel = 26.45864661654;

Thumbnail ToRgb(Magick::Image &image) {
    if (image.colorSpace() == Magick::CMYKColorspace)
        image.colorSpace(Magick::sRGBColorspace);
    Thumbnail out;
    out.Width = static_cast<int>(image.columns());
    out.Height = static_cast<int>(image.rows());
    const size_t pixels = static_cast<size_t>(out.Width) * out.Height;
    out.Rgb.resize(pixels * 3);
    if (!image.matte()) {
        image.write(0, 0, out.Width, out.Height, "RGB", Magick::CharPixel, out.Rgb.data());
        return out;
    }
    // Transparent parts show the black of the surface.
    std::vector<uint8_t> rgba(pixels * 4);
    image.write(0, 0, out.Width, out.Height, "RGBA", Magick::CharPixel, rgba.data());
    for (size_t i = 0; i < pixels; ++i)
        for (size_t c = 0; c < 3; ++c)
            out.Rgb[i * 3 + c] = static_cast<uint8_t>((rgba[i * 4 + c] * rgba[i * 4 + 3] + 127) / 255);
    return out;
}

// Box-averages (or repeats, when enlarging) the source into dw x dh pixels at (dx, dy).
void Blit(const Thumbnail &src, Thumbnail &dst, int dx, int dy, int dw, int dh) {
    if (src.Width <= 0 || src.Height <= 0 || dw <= 0 || dh <= 0)
        return;
    for (int y = 0; y < dh; ++y) {
        const int ty = dy + y;
        if (ty < 0 || ty >= dst.Height)
            continue;
        const int sy0 = static_cast<int>(static_cast<long long>(y) * src.Height / dh);
        const int sy1 = std::max(sy0 + 1, static_cast<int>(static_cast<long long>(y + 1) * src.Height / dh));
        for (int x = 0; x < dw; ++x) {
            const int tx = dx + x;
            if (tx < 0 || tx >= dst.Width)
                continue;
            const int sx0 = static_cast<int>(static_cast<long long>(x) * src.Width / dw);
            const int sx1 = std::max(sx0 + 1, static_cast<int>(static_cast<long long>(x + 1) * src.Width / dw));
            unsigned long sum[3] = {0, 0, 0};
            unsigned long count = 0;
            for (int sy = sy0; sy < sy1 && sy < src.Height; ++sy) {
                const uint8_t *row = &src.Rgb[(static_cast<size_t>(sy) * src.Width + sx0) * 3];
                for (int sx = sx0; sx < sx1 && sx < src.Width; ++sx, row += 3) {
                    sum[0] += row[0];
                    sum[1] += row[1];
                    sum[2] += row[2];
                    ++count;
                }
            }
            uint8_t *out = &dst.Rgb[(static_cast<size_t>(ty) * dst.Width + tx) * 3];
            for (int c = 0; c < 3; ++c)
                out[c] = static_cast<uint8_t>((sum[c] + count / 2) / std::max(count, 1UL));
        }
    }
}

Thumbnail BlackSurface() {
    Thumbnail t;
    t.Width = kThumbPixels;
    t.Height = kThumbPixels;
    t.Rgb.assign(static_cast<size_t>(t.Width) * t.Height * 3, 0);
    return t;
}

int UnitsToPixels(int units) {
    return (units + kThumbUnitsPerPixel / 2) / kThumbUnitsPerPixel;
}

// A 5 x 7 face for the few words of the fixed images.
const std::array<const char *, 7> *Glyph(char c) {
    static const std::array<const char *, 7> N{"X...X", "XX..X", "X.X.X", "X.X.X", "X..XX", "X...X", "X...X"};
    static const std::array<const char *, 7> A{".XXX.", "X...X", "X...X", "XXXXX", "X...X", "X...X", "X...X"};
    static const std::array<const char *, 7> L{"X....", "X....", "X....", "X....", "X....", "X....", "XXXXX"};
    static const std::array<const char *, 7> O{".XXX.", "X...X", "X...X", "X...X", "X...X", "X...X", ".XXX."};
    static const std::array<const char *, 7> D{"XXXX.", "X...X", "X...X", "X...X", "X...X", "X...X", "XXXX."};
    static const std::array<const char *, 7> I{"XXXXX", "..X..", "..X..", "..X..", "..X..", "..X..", "XXXXX"};
    static const std::array<const char *, 7> G{".XXX.", "X...X", "X....", "X.XXX", "X...X", "X...X", ".XXX."};
    static const std::array<const char *, 7> M{"X...X", "XX.XX", "X.X.X", "X.X.X", "X...X", "X...X", "X...X"};
    static const std::array<const char *, 7> E{"XXXXX", "X....", "X....", "XXXX.", "X....", "X....", "XXXXX"};
    static const std::array<const char *, 7> P{"XXXX.", "X...X", "X...X", "XXXX.", "X....", "X....", "X...."};
    static const std::array<const char *, 7> R{"XXXX.", "X...X", "X...X", "XXXX.", "X.X..", "X..X.", "X...X"};
    static const std::array<const char *, 7> V{"X...X", "X...X", "X...X", "X...X", "X...X", ".X.X.", "..X.."};
    static const std::array<const char *, 7> W{"X...X", "X...X", "X...X", "X.X.X", "X.X.X", "XX.XX", "X...X"};
    switch (c) {
    case 'N':
        return &N;
    case 'A':
        return &A;
    case 'L':
        return &L;
    case 'O':
        return &O;
    case 'D':
        return &D;
    case 'I':
        return &I;
    case 'G':
        return &G;
    case 'M':
        return &M;
    case 'E':
        return &E;
    case 'P':
        return &P;
    case 'R':
        return &R;
    case 'V':
        return &V;
    case 'W':
        return &W;
    default:
        return nullptr;
    }
}

void DrawWord(Thumbnail &t, std::string_view word, int scale, uint8_t grey) {
    const int width = static_cast<int>(word.size()) * 6 * scale - scale;
    const int left = (t.Width - width) / 2;
    const int top = (t.Height - 7 * scale) / 2;
    for (size_t i = 0; i < word.size(); ++i) {
        const auto *glyph = Glyph(word[i]);
        if (!glyph)
            continue;
        for (int gy = 0; gy < 7; ++gy)
            for (int gx = 0; gx < 5; ++gx) {
                if ((*glyph)[gy][gx] != 'X')
                    continue;
                for (int sy = 0; sy < scale; ++sy)
                    for (int sx = 0; sx < scale; ++sx) {
                        const int x = left + static_cast<int>(i) * 6 * scale + gx * scale + sx;
                        const int y = top + gy * scale + sy;
                        if (x < 0 || y < 0 || x >= t.Width || y >= t.Height)
                            continue;
                        uint8_t *p = &t.Rgb[(static_cast<size_t>(y) * t.Width + x) * 3];
                        p[0] = p[1] = p[2] = grey;
                    }
            }
    }
}

} // namespace

std::string_view PictureCoder(std::string_view path) {
    const size_t dot = path.rfind('.');
    const size_t slash = path.find_last_of("/\\");
    if (dot == std::string_view::npos || (slash != std::string_view::npos && slash > dot))
        return {};
    const std::string ext = LCase(path.substr(dot + 1));
    for (const auto &[known, coder] : kPictureCoders)
        if (ext == known)
            return coder;
    return {};
}

std::optional<DecodedPicture> DecodePicture(const std::string &path, bool reduceLargeJpeg) {
    const auto resolved = ResolvePath(path);
    if (!resolved || !FileExists(*resolved))
        return std::nullopt;
    const std::string coder(PictureCoder(*resolved));
    if (coder.empty() || !EnsureMagick())
        return std::nullopt;
    try {
        // The bytes go to the coder as they are: the library never sees the file name,
        // so neither a prefix nor a frame suffix in it can choose anything.
        const std::string bytes = ReadFileBytes(*resolved);
        const Magick::Blob blob(bytes.data(), bytes.size());
        DecodedPicture out;
        std::string hint;
        if (coder == "JPEG" && reduceLargeJpeg) {
            Magick::Image header;
            header.quiet(true);
            header.magick(coder);
            try {
                header.ping(blob);
            } catch (const std::exception &) {
                return std::nullopt;
            }
            out.Width = static_cast<int>(header.columns());
            out.Height = static_cast<int>(header.rows());
            if (std::max(out.Width, out.Height) > kThumbJpegHintPixels)
                hint = std::to_string(kThumbJpegHintPixels / 2) + "x" + std::to_string(kThumbJpegHintPixels / 2);
        }
        Magick::Image image;
        image.quiet(true);
        image.magick(coder);
        image.subImage(0); // the first frame or layer (a PSD's composite) is enough
        image.subRange(1);
        if (!hint.empty())
            image.defineValue("jpeg", "size", hint);
        image.read(blob);
        if (image.columns() == 0 || image.rows() == 0)
            return std::nullopt;
        if (out.Width == 0) {
            out.Width = static_cast<int>(image.columns());
            out.Height = static_cast<int>(image.rows());
        }
        // Nothing finer than twice the thumbnail is ever shown.
        constexpr unsigned kKeep = 2 * kThumbPixels;
        if (image.columns() > kKeep || image.rows() > kKeep)
            image.scale(Magick::Geometry(kKeep, kKeep));
        out.Pixels = ToRgb(image);
        return out;
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

ThumbPlacement PlaceThumbnail(double width, double height, int surfaceW, int surfaceH) {
    const float ratio = static_cast<float>(width / height);
    const int W = surfaceW - kThumbMargin;
    const int H = surfaceH - kThumbMargin;
    ThumbPlacement p;
    if (ratio < 1.0f) {
        p.h = ToInt16(H);
        p.w = ToInt16(static_cast<float>(p.h) * ratio);
        p.x = static_cast<int16_t>(std::floor(std::abs(p.w - p.h) / 2.0));
        p.y = 0;
    } else {
        p.w = ToInt16(W);
        p.h = ToInt16(static_cast<float>(p.w) / ratio);
        p.y = static_cast<int16_t>(std::floor(std::abs(p.w - p.h) / 2.0));
        p.x = 0;
    }
    return p;
}

Thumbnail PaintThumbnail(const DecodedPicture &picture) {
    Thumbnail surface = BlackSurface();
    const ThumbPlacement p = PlaceThumbnail(LogicalUnits(picture.Width), LogicalUnits(picture.Height));
    Blit(picture.Pixels, surface, UnitsToPixels(p.x), UnitsToPixels(p.y), std::max(1, UnitsToPixels(p.w)),
         std::max(1, UnitsToPixels(p.h)));
    return surface;
}

std::string ThumbDimensions(int widthPixels, int heightPixels) {
    const auto w = static_cast<long long>(RoundHalfEven(LogicalUnits(widthPixels) / kUnitsPerPixel));
    const auto h = static_cast<long long>(RoundHalfEven(LogicalUnits(heightPixels) / kUnitsPerPixel));
    return std::to_string(w) + " X " + std::to_string(h);
}

std::string EncodeJpeg(const Thumbnail &picture, int quality) {
    if (!EnsureMagick())
        throw Failure(ErrInvalidPicture, DescribeError(ErrInvalidPicture));
    Magick::Image image(static_cast<size_t>(picture.Width), static_cast<size_t>(picture.Height), "RGB",
                        Magick::CharPixel, picture.Rgb.data());
    image.magick("JPEG");
    image.quality(static_cast<size_t>(quality));
    image.strip(); // no profiles or comments: the same picture gives the same file
    Magick::Blob blob;
    image.write(&blob);
    return std::string(static_cast<const char *>(blob.data()), blob.length());
}

Thumbnail FixedThumbnail(std::string_view key) {
    Thumbnail t = BlackSurface();
    if (key == "NA")
        DrawWord(t, "NA", 4, 200);
    else if (key == "Loading")
        DrawWord(t, "LOADING", 2, 200);
    else if (key == "NoImage")
        DrawWord(t, "NO IMAGE", 2, 160);
    else if (key == "PicPrev")
        DrawWord(t, "PREVIEW", 2, 160);
    return t;
}

ThumbnailCache::ThumbnailCache() {
    AddFixedImages();
}

void ThumbnailCache::AddFixedImages() {
    for (const char *key : {"Black", "NoImage", "PicPrev", "NA", "Loading"})
        Add(key, FixedThumbnail(key), 0);
}

void ThumbnailCache::Add(const std::string &key, Thumbnail image, int listIndex) {
    List &list = m_lists[Index(listIndex)];
    auto [it, inserted] = list.Images.insert_or_assign(key, std::move(image));
    (void)it;
    if (inserted)
        list.Order.push_back(key);
}

const Thumbnail *ThumbnailCache::Find(std::string_view key, int listIndex) const {
    const List &list = m_lists[Index(listIndex)];
    auto it = list.Images.find(std::string(key));
    if (it == list.Images.end())
        it = list.Images.find(LCase(key)); // paths are kept lower case
    return it == list.Images.end() ? nullptr : &it->second;
}

void ThumbnailCache::Clear(int listIndex) {
    m_lists[Index(listIndex)] = List{};
    if (Index(listIndex) == 0)
        AddFixedImages();
}

bool ThumbnailCache::LoadThumbNail(const std::string &path, int listIndex) {
    const std::string key = LCase(path);
    if (Contains(key, listIndex))
        return false;
    if (DoEvents)
        DoEvents();
    ++m_decodes;
    const auto picture = DecodePicture(path);
    if (!picture)
        return false;
    ThumbInfoRecord info{path, ThumbDimensions(picture->Width, picture->Height)};
    if (m_thumbInfo.size() == 1 && m_thumbInfo[0].Path.empty())
        m_thumbInfo[0] = std::move(info); // the one empty element is filled first
    else
        m_thumbInfo.push_back(std::move(info));
    Add(key, PaintThumbnail(*picture), listIndex);
    if (DoEvents) {
        DoEvents();
        DoEvents();
    }
    return true;
}

std::string ThumbnailCache::DimensionsOf(std::string_view path) const {
    const std::string key = LCase(path);
    for (const auto &info : m_thumbInfo)
        if (!info.Path.empty() && LCase(info.Path) == key)
            return info.Dimensions;
    return {};
}

void ConnectThumbnails(Session &session, ThumbnailCache &cache) {
    session.LoadThumbNail = [&cache](const std::string &path) { cache.LoadThumbNail(path, 0); };
    session.ResetThumbnails = [&cache] { cache.Clear(0); };
}

PreviewChoice PreviewSelectedFile(const std::string &path) {
    if (path.empty() || FolderExists(path) || !FileExists(path))
        return {};
    static const char *const kPictures[] = {".bmp", ".jpg", "jpeg", ".gif", ".rle", ".wmf", ".emf", ".png",
                                            ".tif", "tiff", ".bum", ".pcx", ".pgm", "pict", ".psd", ".tga"};
    static const char *const kPoser[] = {".cr2", ".pz2", ".pp2", ".fc2", ".cm2", ".hr2", ".hd2", ".lt2"};
    const std::string tail = LCase(Right(path, 4));
    for (const char *picture : kPictures)
        if (tail == picture)
            return {PreviewChoice::Picture, path};
    for (const char *poser : kPoser)
        if (tail == poser) {
            std::string png = std::string(Left(path, static_cast<long long>(InStrRev(path, ".")))) + "png";
            if (FileExists(png))
                return {PreviewChoice::Picture, png};
            return {PreviewChoice::NotAvailable, {}};
        }
    return {PreviewChoice::NotAvailable, {}};
}

} // namespace gelvane
