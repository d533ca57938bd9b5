#include "gui/ThumbnailImage.h"

namespace gelvane {

QImage ThumbnailToImage(const Thumbnail &thumbnail) {
    if (thumbnail.Width <= 0 || thumbnail.Height <= 0)
        return {};
    const QImage view(thumbnail.Rgb.data(), thumbnail.Width, thumbnail.Height, thumbnail.Width * 3,
                      QImage::Format_RGB888);
    return view.copy(); // the view borrows the cache's bytes
}

QPixmap CachedThumbnailPixmap(const ThumbnailCache &cache, std::string_view key, int listIndex) {
    const Thumbnail *thumbnail = cache.Find(key, listIndex);
    return thumbnail ? QPixmap::fromImage(ThumbnailToImage(*thumbnail)) : QPixmap();
}

} // namespace gelvane
