// Thumbnail decoding: a large JPEG read at a reduced size against a full read,
// and the cost of asking the cache for a picture it already holds.
#include "core/maps/Thumbnails.h"

#include <cassert> // before Magick++, which otherwise declares assert inside its own namespace
#include <Magick++.h>
#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

const std::string &LargeJpeg() {
    static const std::string path = [] {
        Magick::InitializeMagick(nullptr);
        const auto file = std::filesystem::temp_directory_path() / "gelvane-bench-large.jpg";
        Magick::Image image(Magick::Geometry(4000, 3000), Magick::Color("#808040"));
        image.quality(90);
        image.write(file.string());
        return file.string();
    }();
    return path;
}

void BM_DecodeLargeJpegReduced(benchmark::State &state) {
    const std::string &path = LargeJpeg(); // made once, outside the timing
    for (auto _ : state)
        benchmark::DoNotOptimize(gelvane::DecodePicture(path, true));
}
BENCHMARK(BM_DecodeLargeJpegReduced)->Unit(benchmark::kMillisecond);

void BM_DecodeLargeJpegFull(benchmark::State &state) {
    const std::string &path = LargeJpeg();
    for (auto _ : state)
        benchmark::DoNotOptimize(gelvane::DecodePicture(path, false));
}
BENCHMARK(BM_DecodeLargeJpegFull)->Unit(benchmark::kMillisecond);

void BM_PaintThumbnail(benchmark::State &state) {
    const auto picture = gelvane::DecodePicture(LargeJpeg(), true);
    for (auto _ : state)
        benchmark::DoNotOptimize(gelvane::PaintThumbnail(*picture));
}
BENCHMARK(BM_PaintThumbnail)->Unit(benchmark::kMicrosecond);

void BM_CachedThumbnailHit(benchmark::State &state) {
    gelvane::ThumbnailCache cache;
    cache.LoadThumbNail(LargeJpeg(), 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(cache.LoadThumbNail(LargeJpeg(), 0));
}
BENCHMARK(BM_CachedThumbnailHit);

} // namespace
