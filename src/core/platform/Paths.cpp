#include "core/platform/Paths.h"

#include "core/platform/AsciiCase.h"
#include "core/platform/Failure.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <unordered_map>
#include <vector>

namespace fs = std::filesystem;

namespace gelvane {
namespace {

bool IsSep(char c) {
    return c == '/' || c == '\\';
}

// Directory listings for case-insensitive lookups, keyed by folder and checked against the
// folder's change time, so that resolving hundreds of references lists each folder once.
// Each lower-cased name maps to every entry of the listing that matches it: content unpacked
// from several sources often leaves twins such as "Textures" beside "textures".
struct Listing {
    int64_t Seconds = 0;
    int64_t Nanoseconds = 0;
    std::unordered_map<std::string, std::vector<std::string>> ByLowerName;
};

// A folder changed this recently may change again within the same time stamp (file systems
// store coarse times), so its listing isn't kept.
constexpr int64_t kSettledSeconds = 3;

std::mutex g_listingMutex;
std::unordered_map<std::string, Listing> g_listings;
constexpr size_t kMaxListings = 8192;

std::string ChildPath(const std::string &folder, std::string_view name) {
    std::string out = folder;
    if (out.empty() || out.back() != '/')
        out += '/';
    out += name;
    return out;
}

// The names in `folder` that equal `part` without regard to case, in listing order.
std::vector<std::string> SpellingsIn(const std::string &folder, std::string_view part) {
    struct stat st {};
    if (stat(folder.c_str(), &st) != 0 || !S_ISDIR(st.st_mode))
        return {};
    const std::string key = LCase(part);
    const auto namesIn = [&key](const Listing &listing) {
        const auto found = listing.ByLowerName.find(key);
        return found == listing.ByLowerName.end() ? std::vector<std::string>{} : found->second;
    };
    std::lock_guard lock(g_listingMutex);
    auto it = g_listings.find(folder);
    if (it != g_listings.end() && it->second.Seconds == st.st_mtim.tv_sec &&
        it->second.Nanoseconds == st.st_mtim.tv_nsec)
        return namesIn(it->second);
    if (g_listings.size() >= kMaxListings) {
        g_listings.clear();
        it = g_listings.end();
    }
    Listing listing;
    listing.Seconds = st.st_mtim.tv_sec;
    listing.Nanoseconds = st.st_mtim.tv_nsec;
    std::error_code ec;
    for (fs::directory_iterator dir(folder, fs::directory_options::skip_permission_denied, ec), end; !ec && dir != end;
         dir.increment(ec)) {
        std::string name = dir->path().filename().string();
        listing.ByLowerName[LCase(name)].push_back(std::move(name));
    }
    std::vector<std::string> names = namesIn(listing);
    const bool settled = std::time(nullptr) - st.st_mtim.tv_sec > kSettledSeconds;
    if (settled)
        g_listings.insert_or_assign(folder, std::move(listing));
    else if (it != g_listings.end())
        g_listings.erase(it);
    return names;
}

enum class EntryKind { Any, File, Folder };

bool IsKind(const std::string &path, EntryKind kind) {
    struct stat st {};
    if (stat(path.c_str(), &st) != 0)
        return false;
    return kind == EntryKind::Any || (kind == EntryKind::File ? S_ISREG(st.st_mode) : S_ISDIR(st.st_mode));
}

// Finds real paths for `parts` under `current`: each component as written first, then its
// other on-disk spellings, going back to an earlier component when a later one isn't found
// under the spelling taken. `found` gets each match of `kind` and says whether to stop there.
bool Descend(const std::string &current, const std::vector<std::string_view> &parts, size_t k, EntryKind kind,
             const std::function<bool(const std::string &)> &found) {
    if (k == parts.size())
        return IsKind(current, kind) && found(current);
    const std::string_view part = parts[k];
    if (part == "..")
        return Descend(ChildPath(current, part), parts, k + 1, kind, found);
    const std::string asWritten = ChildPath(current, part);
    struct stat st {};
    const bool writtenExists = lstat(asWritten.c_str(), &st) == 0;
    if (writtenExists && Descend(asWritten, parts, k + 1, kind, found))
        return true;
    for (const std::string &name : SpellingsIn(current, part))
        if (!(writtenExists && name == part) && Descend(ChildPath(current, name), parts, k + 1, kind, found))
            return true;
    return false;
}

// The components of a path, without empty and "." ones.
std::vector<std::string_view> PartsOf(std::string_view path) {
    std::vector<std::string_view> parts;
    size_t i = 0;
    while (i < path.size()) {
        size_t j = i;
        while (j < path.size() && !IsSep(path[j]))
            ++j;
        const std::string_view part = path.substr(i, j - i);
        if (!part.empty() && part != ".")
            parts.push_back(part);
        i = j + 1;
    }
    return parts;
}

// Every real path that `path` names, the spelling as written first; stops at the first
// one that `found` accepts.
void VisitSpellings(std::string_view path, EntryKind kind, const std::function<bool(const std::string &)> &found) {
    if (path.empty())
        return;
    Descend(IsSep(path[0]) ? "/" : ".", PartsOf(path), 0, kind,
            [&found](const std::string &real) { return found(real.starts_with("./") ? real.substr(2) : real); });
}

std::optional<std::string> FirstSpelling(std::string_view path, EntryKind kind) {
    std::optional<std::string> first;
    VisitSpellings(path, kind, [&first](const std::string &real) {
        first = real;
        return true;
    });
    return first;
}

// The same inside a folder that is taken as it stands.
std::optional<std::string> FirstSpellingIn(std::string_view folder, std::string_view relative, EntryKind kind) {
    if (folder.empty())
        return std::nullopt;
    std::optional<std::string> first;
    Descend(std::string(folder), PartsOf(relative), 0, kind, [&first](const std::string &real) {
        first = real;
        return true;
    });
    return first;
}

} // namespace

std::optional<std::string> ResolvePath(std::string_view path) {
    return FirstSpelling(path, EntryKind::Any);
}

std::optional<std::string> ResolvePathIn(std::string_view folder, std::string_view relative) {
    return FirstSpellingIn(folder, relative, EntryKind::Any);
}

std::optional<std::string> ResolveFileIn(std::string_view folder, std::string_view relative) {
    return FirstSpellingIn(folder, relative, EntryKind::File);
}

std::vector<std::string> ResolveAllPaths(std::string_view path) {
    std::vector<std::string> all;
    VisitSpellings(path, EntryKind::Any, [&all](const std::string &real) {
        all.push_back(real);
        return false;
    });
    return all;
}

std::string GetLongPath(std::string_view path) {
    return ResolvePath(path).value_or(std::string());
}

std::optional<std::string> ResolveFile(std::string_view path) {
    return FirstSpelling(path, EntryKind::File);
}

std::optional<std::string> ResolveFolder(std::string_view path) {
    return FirstSpelling(path, EntryKind::Folder);
}

bool FileExists(std::string_view path) {
    return ResolveFile(path).has_value();
}

bool FolderExists(std::string_view path) {
    return ResolveFolder(path).has_value();
}

std::string UserFolderPath(std::string_view text) {
    std::string folder(text);
    if (folder == "~" || folder.starts_with("~/")) {
        if (const char *home = std::getenv("HOME"); home && *home)
            folder = std::string(home) + folder.substr(1);
    }
    while (folder.size() > 1 && IsSep(folder.back()))
        folder.pop_back();
    return ResolveFolder(folder).value_or(folder);
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
    const auto real = ResolveFile(path);
    if (!real)
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
    const auto real = ResolveFile(path);
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
    const auto real = ResolveFile(path);
    std::error_code ec;
    if (!real)
        Fail(ErrFileNotFound);
    const auto size = fs::file_size(*real, ec);
    if (ec)
        Fail(ErrFileNotFound);
    return size;
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
