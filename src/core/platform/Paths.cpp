#include "core/platform/Paths.h"

#include "core/platform/AsciiCase.h"
#include "core/platform/Failure.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <unordered_map>

namespace fs = std::filesystem;

namespace gelvane {
namespace {

bool IsSep(char c) {
    return c == '/' || c == '\\';
}

// Directory listings for case-insensitive lookups, keyed by folder and checked against the
// folder's change time, so that resolving hundreds of references lists each folder once.
// Each lower-cased name maps to the first entry of the listing that matches it.
struct Listing {
    int64_t Seconds = 0;
    int64_t Nanoseconds = 0;
    std::unordered_map<std::string, std::string> ByLowerName;
};

// A folder changed this recently may change again within the same time stamp (file systems
// store coarse times), so its listing isn't kept.
constexpr int64_t kSettledSeconds = 3;

std::mutex g_listingMutex;
std::unordered_map<std::string, Listing> g_listings;
constexpr size_t kMaxListings = 8192;

std::optional<std::string> FindNoCase(const fs::path &base, std::string_view part) {
    const std::string folder = base.string();
    struct stat st {};
    if (stat(folder.c_str(), &st) != 0 || !S_ISDIR(st.st_mode))
        return std::nullopt;
    const std::string key = LCase(part);
    std::lock_guard lock(g_listingMutex);
    auto it = g_listings.find(folder);
    if (it == g_listings.end() || it->second.Seconds != st.st_mtim.tv_sec ||
        it->second.Nanoseconds != st.st_mtim.tv_nsec) {
        if (g_listings.size() >= kMaxListings) {
            g_listings.clear();
            it = g_listings.end();
        }
        const bool settled = std::time(nullptr) - st.st_mtim.tv_sec > kSettledSeconds;
        if (!settled && it != g_listings.end())
            g_listings.erase(it);
        Listing listing;
        listing.Seconds = st.st_mtim.tv_sec;
        listing.Nanoseconds = st.st_mtim.tv_nsec;
        std::error_code ec;
        for (fs::directory_iterator dir(base, fs::directory_options::skip_permission_denied, ec), end;
             !ec && dir != end; dir.increment(ec)) {
            std::string name = dir->path().filename().string();
            listing.ByLowerName.try_emplace(LCase(name), std::move(name));
        }
        if (!settled) {
            const auto found = listing.ByLowerName.find(key);
            if (found == listing.ByLowerName.end())
                return std::nullopt;
            return (base / found->second).string();
        }
        it = g_listings.insert_or_assign(folder, std::move(listing)).first;
    }
    const auto found = it->second.ByLowerName.find(key);
    if (found == it->second.ByLowerName.end())
        return std::nullopt;
    return (base / found->second).string();
}

} // namespace

std::optional<std::string> ResolvePath(std::string_view path) {
    if (path.empty())
        return std::nullopt;
    std::error_code ec;
    std::string current;
    size_t i = 0;
    if (IsSep(path[0])) {
        current = "/";
        while (i < path.size() && IsSep(path[i]))
            ++i;
    } else {
        current = ".";
    }
    while (i < path.size()) {
        size_t j = i;
        while (j < path.size() && !IsSep(path[j]))
            ++j;
        const std::string_view part = path.substr(i, j - i);
        while (j < path.size() && IsSep(path[j]))
            ++j;
        i = j;
        if (part.empty() || part == ".")
            continue;
        const fs::path base(current);
        std::string next;
        if (part == "..") {
            next = (base / "..").string();
        } else if (fs::exists(base / std::string(part), ec)) {
            next = (base / std::string(part)).string();
        } else {
            auto match = FindNoCase(base, part);
            if (!match)
                return std::nullopt;
            next = std::move(*match);
        }
        current = next;
    }
    if (current.starts_with("./"))
        current.erase(0, 2);
    if (!fs::exists(current, ec))
        return std::nullopt;
    return current;
}

std::string GetLongPath(std::string_view path) {
    return ResolvePath(path).value_or(std::string());
}

bool FileExists(std::string_view path) {
    const auto real = ResolvePath(path);
    std::error_code ec;
    return real && fs::is_regular_file(*real, ec);
}

bool FolderExists(std::string_view path) {
    const auto real = ResolvePath(path);
    std::error_code ec;
    return real && fs::is_directory(*real, ec);
}

std::string JoinPath(std::string_view folder, std::string_view relative) {
    std::string out(folder);
    while (!out.empty() && IsSep(out.back()))
        out.pop_back();
    size_t k = 0;
    while (k < relative.size() && IsSep(relative[k]))
        ++k;
    out += '/';
    for (; k < relative.size(); ++k)
        out += relative[k] == '\\' ? '/' : relative[k];
    return out;
}

std::string_view FileNamePart(std::string_view path) {
    const size_t p = path.find_last_of("/\\");
    return p == std::string_view::npos ? path : path.substr(p + 1);
}

std::string_view FolderPart(std::string_view path) {
    const size_t p = path.find_last_of("/\\");
    return p == std::string_view::npos ? std::string_view{} : path.substr(0, p);
}

std::string ReadFileBytes(std::string_view path) {
    const auto real = ResolvePath(path);
    std::error_code ec;
    if (!real || !fs::is_regular_file(*real, ec))
        Fail(ErrFileNotFound);
    std::ifstream in(*real, std::ios::binary);
    if (!in)
        Fail(ErrPermissionDenied);
    std::string bytes;
    in.seekg(0, std::ios::end);
    bytes.resize(static_cast<size_t>(in.tellg()));
    in.seekg(0);
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

std::string ReadFileRange(std::string_view path, uint64_t offset, uint64_t count) {
    const auto real = ResolvePath(path);
    if (!real)
        Fail(ErrFileNotFound);
    std::ifstream in(*real, std::ios::binary);
    if (!in)
        Fail(ErrPermissionDenied);
    in.seekg(0, std::ios::end);
    const uint64_t size = static_cast<uint64_t>(in.tellg());
    if (offset >= size)
        return {};
    count = std::min(count, size - offset);
    std::string bytes(static_cast<size_t>(count), '\0');
    in.seekg(static_cast<std::streamoff>(offset));
    in.read(bytes.data(), static_cast<std::streamsize>(count));
    return bytes;
}

uint64_t FileSize(std::string_view path) {
    const auto real = ResolvePath(path);
    std::error_code ec;
    if (!real)
        Fail(ErrFileNotFound);
    const auto size = fs::file_size(*real, ec);
    if (ec)
        Fail(ErrFileNotFound);
    return size;
}

void WriteFileAtomic(std::string_view path, std::string_view bytes) {
    // Keep the on-disk spelling of an existing target; otherwise resolve its folder.
    std::string target(path);
    if (auto real = ResolvePath(path))
        target = *real;
    else if (auto folder = ResolvePath(FolderPart(path)); folder && !FolderPart(path).empty())
        target = JoinPath(*folder, FileNamePart(path));
    const std::string temp = target + ".gelvane-tmp";
    {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        if (!out)
            Fail(ErrPathFileAccess);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            out.close();
            std::remove(temp.c_str());
            Fail(ErrPathFileAccess);
        }
    }
    std::error_code ec;
    fs::rename(temp, target, ec);
    if (ec) {
        fs::remove(temp, ec);
        Fail(ErrPathFileAccess);
    }
}

bool CreateFolder(std::string_view path) {
    std::error_code ec;
    return fs::create_directory(std::string(path), ec) || fs::is_directory(std::string(path), ec);
}

std::string ExecutableFolder() {
    std::error_code ec;
    const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (ec)
        return fs::current_path(ec).string();
    return exe.parent_path().string();
}

std::string StateFolder() {
    if (const char *home = std::getenv("GELVANE_HOME"); home && *home) {
        CreateFolder(home);
        return home;
    }
    const std::string exe = ExecutableFolder();
    if (access(exe.c_str(), W_OK) == 0)
        return exe;
    std::string base;
    if (const char *xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg)
        base = xdg;
    else if (const char *home = std::getenv("HOME"); home && *home)
        base = std::string(home) + "/.config";
    else
        base = ".";
    CreateFolder(base);
    const std::string folder = base + "/gelvane";
    CreateFolder(folder);
    return folder;
}

} // namespace gelvane
