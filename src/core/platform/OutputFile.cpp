#include "core/platform/OutputFile.h"

#include "core/platform/Paths.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace gelvane {
namespace {

// Reasons of our own beside the system's errno values.
constexpr int kChanged = -1;    // the target was replaced while the file was written
constexpr int kBusy = -2;       // another run is saving the same target
constexpr int kNotRegular = -3; // the target is a device, a pipe or the like
constexpr int kReadOnly = -4;   // the target file is marked read-only

thread_local SaveFaultScope::Fault t_fault;

int InjectedFault(SaveStep step, const std::string &target) {
    return t_fault ? t_fault(step, target) : 0;
}

std::string ReasonText(int error) {
    switch (error) {
    case kChanged:
        return "another program replaced the file while it was being saved";
    case kBusy:
        return "the file is being saved by another run of the program";
    case kNotRegular:
        return "it is not a plain file";
    case kReadOnly:
        return "the file is read-only";
    case ENOSPC:
    case EDQUOT:
        return "the disk is full";
    case EACCES:
    case EPERM:
        return "permission denied";
    case EROFS:
        return "the disk is read-only";
    case EISDIR:
        return "a folder has that name";
    case ENOENT:
    case ENOTDIR:
        return "the folder doesn't exist";
    case ENAMETOOLONG:
        return "the name is too long";
    case ELOOP:
        return "the symbolic links form a loop";
    default:
        return std::strerror(error);
    }
}

int ErrorNumberOf(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return ErrDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
    case kReadOnly:
        return ErrPermissionDenied;
    case ENOENT:
    case ENOTDIR:
        return ErrPathNotFound;
    default:
        return ErrPathFileAccess;
    }
}

// The on-disk spelling of an existing target, or of its folder.
std::string SpelledTarget(std::string_view path) {
    if (auto real = ResolvePath(path))
        return *real;
    if (!FolderPart(path).empty())
        if (auto folder = ResolveFolder(FolderPart(path)))
            return JoinPath(*folder, FileNamePart(path));
    return std::string(path);
}

// The file that a chain of symbolic links ends in, existing or not; ELOOP for a loop.
int FollowLinks(std::string &target) {
    for (int hops = 0; hops < 40; ++hops) {
        struct stat st {};
        if (::lstat(target.c_str(), &st) != 0 || !S_ISLNK(st.st_mode))
            return 0;
        std::error_code ec;
        const fs::path to = fs::read_symlink(target, ec);
        if (ec)
            return 0;
        target = (to.is_absolute() ? to : fs::path(target).parent_path() / to).string();
    }
    return ELOOP;
}

std::string FolderOf(const std::string &path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

bool SameEntry(int fd, const std::string &path) {
    struct stat open {
    }, named{};
    return ::fstat(fd, &open) == 0 && ::lstat(path.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

} // namespace

std::string SaveTemporaryName(std::string_view fileName) {
    // 64-bit FNV-1a: short, fixed length, and the same for every save of one target.
    uint64_t hash = 14695981039346656037ull;
    for (const char c : fileName) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ull;
    }
    char code[17];
    std::snprintf(code, sizeof code, "%016llx", static_cast<unsigned long long>(hash));
    return std::string(".gelvane-") + code + ".tmp";
}

OutputFile::OutputFile(std::string_view path) : m_path(path), m_target(SpelledTarget(path)) {
    if (const int loop = FollowLinks(m_target))
        fail(loop);
    struct stat existing {};
    m_existed = ::lstat(m_target.c_str(), &existing) == 0;
    if (m_existed) {
        if (S_ISDIR(existing.st_mode))
            fail(EISDIR);
        if (!S_ISREG(existing.st_mode))
            fail(kNotRegular);
        if (::access(m_target.c_str(), W_OK) != 0 && errno == EACCES)
            fail(kReadOnly);
        m_device = existing.st_dev;
        m_inode = existing.st_ino;
        m_seconds = existing.st_mtim.tv_sec;
        m_nanos = existing.st_mtim.tv_nsec;
        m_size = existing.st_size;
    }
    const std::string temp = FolderOf(m_target) + SaveTemporaryName(FileNamePart(m_target));
    if (const int error = InjectedFault(SaveStep::Open, m_target))
        fail(error);
    // A live save holds a lock on its temporary file; one without a lock was left by a
    // killed run and is removed. The checks of the name guard against a rival that removed
    // or renamed the file between our open and our lock.
    for (int attempt = 0; attempt < 8 && m_fd < 0; ++attempt) {
        const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd >= 0) {
            if (::flock(fd, LOCK_EX | LOCK_NB) == 0 && SameEntry(fd, temp))
                m_fd = fd;
            else
                ::close(fd);
            continue;
        }
        if (errno != EEXIST)
            fail(errno);
        const int left = ::open(temp.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
        if (left < 0) {
            if (errno == ELOOP) // not ours to follow, and in our name's place
                ::unlink(temp.c_str());
            else if (errno != ENOENT)
                fail(errno);
            continue;
        }
        if (::flock(left, LOCK_EX | LOCK_NB) != 0) {
            ::close(left);
            fail(kBusy);
        }
        if (SameEntry(left, temp))
            ::unlink(temp.c_str());
        ::close(left);
    }
    if (m_fd < 0)
        fail(kBusy);
    m_temp = temp;
    if (m_existed) {
        // A replaced file keeps its permissions, and its owners where we may set them; else
        // it becomes ours, as any editor's save makes it.
        ::fchmod(m_fd, existing.st_mode & 07777);
        const bool owned = ::fchown(m_fd, existing.st_uid, existing.st_gid) == 0 ||
                           ::fchown(m_fd, static_cast<uid_t>(-1), existing.st_gid) == 0;
        static_cast<void>(owned);
    }
}

OutputFile::~OutputFile() {
    discard();
}

void OutputFile::discard() {
    if (m_fd < 0)
        return;
    // Removed while still locked, so no other run takes it for a stale one meanwhile.
    if (SameEntry(m_fd, m_temp))
        ::unlink(m_temp.c_str());
    ::close(m_fd);
    m_fd = -1;
}

void OutputFile::fail(int error) {
    discard();
    throw SaveFailure(ErrorNumberOf(error), "Could not save " + m_path + ": " + ReasonText(error));
}

void OutputFile::write(std::string_view bytes) {
    if (const int error = InjectedFault(SaveStep::Write, m_target)) {
        // As a disk that fills up: part of the bytes, then the failure.
        [[maybe_unused]] const ssize_t part = ::write(m_fd, bytes.data(), bytes.size() / 2);
        fail(error);
    }
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_fd, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR)
                continue;
            fail(errno);
        }
        bytes.remove_prefix(static_cast<size_t>(written));
    }
}

void OutputFile::commit() {
    if (const int error = InjectedFault(SaveStep::Commit, m_target))
        fail(error);
    if (::fsync(m_fd) != 0)
        fail(errno);
    struct stat now {};
    const bool exists = ::lstat(m_target.c_str(), &now) == 0;
    if (exists != m_existed ||
        (exists && (now.st_dev != m_device || now.st_ino != m_inode || now.st_mtim.tv_sec != m_seconds ||
                    now.st_mtim.tv_nsec != m_nanos || now.st_size != m_size)))
        fail(kChanged);
    // A new target must still be missing at the rename; file systems without that
    // check take the plain rename.
    int renamed = -1;
    if (!m_existed) {
        renamed = ::renameat2(AT_FDCWD, m_temp.c_str(), AT_FDCWD, m_target.c_str(), RENAME_NOREPLACE);
        if (renamed != 0 && errno == EEXIST)
            fail(kChanged);
    }
    if (renamed != 0 && ::rename(m_temp.c_str(), m_target.c_str()) != 0)
        fail(errno);
    ::close(m_fd);
    m_fd = -1;
    // The rename itself reaches the disk with the folder.
    const std::string folder = FolderOf(m_target);
    if (const int dir = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
}

void WriteFileAtomic(std::string_view path, std::string_view bytes) {
    OutputFile file(path);
    file.write(bytes);
    file.commit();
}

SaveFaultScope::SaveFaultScope(Fault fault) : m_previous(std::move(t_fault)) {
    t_fault = std::move(fault);
}

SaveFaultScope::~SaveFaultScope() {
    t_fault = std::move(m_previous);
}

} // namespace gelvane
