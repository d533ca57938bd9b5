#include "core/platform/FileTimes.h"

#include "core/platform/Failure.h"
#include "core/platform/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace gelvane {

int64_t FileCreationTime(std::string_view path) {
    const auto real = ResolvePath(path);
    struct statx info {};
    if (!real || statx(AT_FDCWD, real->c_str(), 0, STATX_BTIME | STATX_MTIME, &info) != 0)
        Fail(ErrFileNotFound);
    if (info.stx_mask & STATX_BTIME)
        return info.stx_btime.tv_sec;
    return info.stx_mtime.tv_sec;
}

} // namespace gelvane
