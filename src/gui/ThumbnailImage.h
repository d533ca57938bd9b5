#pragma once
// Thumbnails of the picture cache as Qt images, for the windows that show them.
#include "core/maps/Thumbnails.h"

#include <QImage>
#include <QPixmap>

#include <string_view>

namespace gelvane {

QImage ThumbnailToImage(const Thumbnail &thumbnail);
// The picture kept under `key` in list `listIndex` of `cache`; a null pixmap when there is none.
QPixmap CachedThumbnailPixmap(const ThumbnailCache &cache, std::string_view key, int listIndex);

} // namespace gelvane
