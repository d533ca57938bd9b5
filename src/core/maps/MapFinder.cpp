#include "core/maps/MapFinder.h"

#include "core/maps/MapPaths.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace fs = std::filesystem;

namespace gelvane {
namespace {

// The lists in the order their cache files are written.
struct CacheList {
    const char *File;
    std::vector<MapFile> MapLists::*List;
};
constexpr CacheList kCacheLists[] = {
    {"bmps.txt", &MapLists::BmpMaps}, {"bums.txt", &MapLists::BumMaps},     {"jpgs.txt", &MapLists::JpgMaps},
    {"tifs.txt", &MapLists::TifMaps}, {"others.txt", &MapLists::OtherMaps},
};

bool LessNoCase(const std::string &a, const std::string &b) {
    const std::string la = LCase(a), lb = LCase(b);
    return la != lb ? la < lb : a < b;
}

void AppendText(std::vector<std::string> &list, std::string text) {
    if (list.empty())
        list.emplace_back();
    if (list[0].empty())
        list[0] = std::move(text);
    else
        list.push_back(std::move(text));
}

// The cache file's text and its lower-cased copy, read again only when the file changed.
const MapLists::CacheText *ReadCacheText(MapLists &finder, const std::string &path) {
    const auto real = ResolvePath(path);
    struct stat st {};
    if (!real || stat(real->c_str(), &st) != 0 || !S_ISREG(st.st_mode))
        return nullptr;
    const int64_t time = static_cast<int64_t>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
    const uint64_t size = static_cast<uint64_t>(st.st_size);
    auto it = std::find_if(finder.CacheTexts.begin(), finder.CacheTexts.end(),
                           [&](const MapLists::CacheText &c) { return c.Path == *real; });
    if (it != finder.CacheTexts.end() && it->Size == size && it->Time == time)
        return &*it;
    MapLists::CacheText text;
    text.Path = *real;
    text.Size = size;
    text.Time = time;
    text.Content = ReadFileBytes(*real);
    text.Lower = LCase(text.Content);
    if (it != finder.CacheTexts.end()) {
        *it = std::move(text);
        return &*it;
    }
    finder.CacheTexts.push_back(std::move(text));
    return &finder.CacheTexts.back();
}

} // namespace

std::vector<MapFile> *MapListForName(MapLists &lists, std::string_view name) {
    const std::string last = LCase(name.size() > 4 ? name.substr(name.size() - 4) : name);
    if (last == ".tif" || last == "tiff")
        return &lists.TifMaps;
    if (last == ".jpg" || last == "jpeg")
        return &lists.JpgMaps;
    if (last == ".bmp")
        return &lists.BmpMaps;
    if (last == ".bum")
        return &lists.BumMaps;
    static const char *const others[] = {".gif", ".pcx", ".pgm", "pict", ".png", ".psd", ".tga", ".wmf"};
    for (const char *other : others)
        if (last == other)
            return &lists.OtherMaps;
    return nullptr;
}

const std::vector<size_t> &MatchingMaps(MapLists &lists, const std::vector<MapFile> &list, std::string_view name) {
    const std::vector<MapFile> *all[] = {&lists.TifMaps, &lists.JpgMaps, &lists.BmpMaps, &lists.BumMaps,
                                         &lists.OtherMaps};
    const size_t which = static_cast<size_t>(std::find(std::begin(all), std::end(all), &list) - std::begin(all));
    static const std::vector<size_t> none;
    if (which >= 5)
        return none;
    MapLists::NameIndex &index = lists.Indexes[which];
    const std::string first = list.empty() ? std::string() : list[0].Name;
    if (list.size() < index.Count || first != index.First) {
        index.Positions.clear();
        index.Count = 0;
        index.First = first;
    }
    for (; index.Count < list.size(); ++index.Count)
        if (!list[index.Count].Name.empty())
            index.Positions[LCase(list[index.Count].Name)].push_back(index.Count);
    const auto found = index.Positions.find(LCase(name));
    return found == index.Positions.end() ? none : found->second;
}

std::string MapCacheFolder() {
    const std::string folder = JoinPath(StateFolder(), "Cache");
    CreateFolder(folder);
    return folder;
}

void ScanFolder(Session &session, std::string_view folder) {
    Interaction &ui = session.ui();
    MapLists &finder = session.Maps;
    // Folders reached twice through links are walked once.
    std::set<std::pair<dev_t, ino_t>> visited;
    auto firstVisit = [&visited](const std::string &path) {
        struct stat st {};
        return stat(path.c_str(), &st) == 0 && visited.emplace(st.st_dev, st.st_ino).second;
    };
    // Every folder that the name stands for: "Textures" and its twin "textures" both hold maps.
    std::vector<std::string> pending;
    const std::vector<std::string> twins = ResolveAllPaths(folder);
    for (auto twin = twins.rbegin(); twin != twins.rend(); ++twin) {
        std::string start = *twin;
        while (start.size() > 1 && start.back() == '/')
            start.pop_back();
        std::error_code ec;
        if (fs::is_directory(start, ec) && firstVisit(start))
            pending.push_back(std::move(start));
    }
    // Depth first, a folder's files before its sub-folders, without recursion so that deep
    // trees can't exhaust the stack.
    while (!pending.empty()) {
        const std::string current = std::move(pending.back());
        pending.pop_back();
        std::vector<std::string> files, folders;
        std::error_code ec;
        for (fs::directory_iterator it(current, fs::directory_options::skip_permission_denied, ec), end;
             !ec && it != end; it.increment(ec)) {
            std::error_code typeError;
            const fs::file_status status = it->status(typeError);
            if (typeError)
                continue;
            if (fs::is_regular_file(status))
                files.push_back(it->path().filename().string());
            else if (fs::is_directory(status))
                folders.push_back(it->path().filename().string());
        }
        std::sort(files.begin(), files.end(), LessNoCase);
        std::sort(folders.begin(), folders.end(), LessNoCase);
        const std::string detail = std::string(FileNamePart(current)) + "...";
        for (std::string &name : files) {
            if (ui.ProgressCancelling())
                break;
            ui.ProgressDetail(detail);
            ui.DoEvents();
            if (auto *list = MapListForName(finder, name))
                AppendElement(*list, MapFile{std::move(name), current});
        }
        const std::string prefix = current == "/" ? current : current + "/";
        for (auto it = folders.rbegin(); it != folders.rend(); ++it) {
            std::string sub = prefix + *it;
            if (firstVisit(sub))
                pending.push_back(std::move(sub));
        }
    }
}

bool SaveMapLists(Session &session) {
    const std::string cache = MapCacheFolder();
    bool written = true;
    for (const CacheList &entry : kCacheLists) {
        std::string text;
        for (const MapFile &file : session.Maps.*entry.List) {
            text += file.Name;
            text += "\r\n*";
            text += file.Folder;
            text += "\r\n";
        }
        try {
            WriteFileAtomic(JoinPath(cache, entry.File), text);
        } catch (const Failure &) {
            written = false;
        }
    }
    return written;
}

void AddMapToLists(Session &session, std::string_view path) {
    const std::string real = ResolvePath(path).value_or(std::string(path));
    if (auto *list = MapListForName(session.Maps, FileNamePart(real)))
        AppendElement(*list, MapFile{std::string(FileNamePart(real)), std::string(FolderPart(real))});
}

std::string StoredMapReference(const Session &session, std::string_view path) {
    return ShortMapPath(session.settings().PoserFolder, path, session.View.chkTexture);
}

std::string FindFile(Session &session, std::string_view mapPath) {
    MapLists &finder = session.Maps;
    const Settings &settings = session.settings();
    Interaction &ui = session.ui();
    std::string result(mapPath);
    int line = 1;
    try {
        finder.ChosenMapIndex = 0;
        std::vector<std::string> matches(1);
        line = 2;
        if (IsNoMap(mapPath))
            return result;
        line = 3;
        const size_t dot = mapPath.rfind('.');
        std::string ext = LCase(dot == std::string_view::npos ? mapPath : mapPath.substr(dot + 1));
        const std::string name = MapFileName(mapPath);
        line = 4;
        // Only these extensions select a list here; the other kinds of OtherMaps are left
        // to the cache file on purpose.
        std::vector<MapFile> *list = nullptr;
        if (ext == "tif" || ext == "tiff")
            list = &finder.TifMaps;
        else if (ext == "bmp")
            list = &finder.BmpMaps;
        else if (ext == "jpg" || ext == "jpeg")
            list = &finder.JpgMaps;
        else if (ext == "bum")
            list = &finder.BumMaps;
        else if (ext == "pict")
            list = &finder.OtherMaps;
        line = 5;
        if (list) {
            for (const size_t position : MatchingMaps(finder, *list, name)) {
                const MapFile &file = (*list)[position];
                const std::string path = JoinMapPath(file.Folder, file.Name);
                if (FileExists(path))
                    AppendText(matches, StoredMapReference(session, path));
            }
        }
        line = 6;
        if (matches.size() == 1 && !matches[0].empty())
            result = matches[0];
        line = 7;
        if (result == mapPath)
            [&] {
                line = 8;
                matches.assign(1, std::string());
                if (ext == "jpeg")
                    ext = "jpg";
                static const char *const others[] = {"gif", "pcx", "pgm", "pict", "png", "psd", "tga", "wmf"};
                for (const char *other : others)
                    if (ext == other)
                        ext = "other";
                const std::string cacheFile = JoinPath(MapCacheFolder(), ext + "s.txt");
                if (!FileExists(cacheFile))
                    return;
                line = 9;
                const MapLists::CacheText *cache = ReadCacheText(finder, cacheFile);
                if (!cache)
                    return;
                const std::string lowerName = LCase(name);
                if (cache->Lower.find(lowerName) == std::string::npos)
                    return;
                line = 10;
                // Each round goes on behind the start of the folder it took, as a plain
                // substring search: "a.jpg" also finds "extra.jpg".
                size_t base = 0;
                int n = 0;
                for (;;) {
                    const size_t pos = cache->Lower.find(lowerName, base);
                    if (pos == std::string::npos)
                        break;
                    // Behind the name stand its line end and the "*" of the folder line.
                    const size_t p = pos + lowerName.size() + 3;
                    const size_t lineEnd =
                        p < cache->Content.size() ? cache->Content.find("\r\n", p) : std::string::npos;
                    if (lineEnd == std::string::npos) // a truncated or hand-edited file
                        Fail(ErrInvalidCall);
                    if (matches.size() < static_cast<size_t>(n) + 1)
                        matches.resize(static_cast<size_t>(n) + 1);
                    matches[static_cast<size_t>(n)] = cache->Content.substr(p, lineEnd - p);
                    base = p + 1;
                    ++n;
                }
                line = 11;
                const size_t count = matches.size();
                if (count > 1) {
                    matches.push_back("NO_MAP");
                    finder.ListedMaps.clear();
                    std::vector<MapCandidate> candidates;
                    for (size_t i = 0; i < matches.size(); ++i) {
                        finder.ListedMaps.push_back(JoinMapPath(matches[i], name));
                        if (i < count)
                            candidates.push_back({finder.ListedMaps.back()});
                    }
                    const int row = ui.ChooseMap(name, candidates);
                    finder.ChosenMapIndex =
                        static_cast<int16_t>(row >= 0 && static_cast<size_t>(row) < count ? row : count);
                    finder.ListedMaps.assign(1, std::string());
                }
                line = 12;
                const std::string &m = matches[static_cast<size_t>(finder.ChosenMapIndex)];
                if (LCase(m) == "no_map") {
                    result = "NO_MAP";
                    return;
                }
                const std::string path = JoinMapPath(m, name);
                if (FileExists(path)) {
                    result = StoredMapReference(session, path);
                    AddMapToLists(session, path);
                } else {
                    ui.MessageBox("File " + path + " doesn't exist.", kProgramTitle, MsgIcon::Exclamation);
                    result = "NO_MAP";
                }
            }();
        line = 13;
        if (result == mapPath && settings.SetNoMap)
            result = "NO_MAP";
        return result;
    } catch (const Failure &failure) {
        ui.MessageBox("Error in the FindFile function\r\n" + failure.Description + ", error number " +
                          std::to_string(failure.Number) + "\r\nCode line number " + std::to_string(line),
                      kProgramTitle, MsgIcon::Exclamation);
    } catch (const std::exception &error) {
        ui.MessageBox("Error in the FindFile function\r\n" + std::string(error.what()) + ", error number 5" +
                          "\r\nCode line number " + std::to_string(line),
                      kProgramTitle, MsgIcon::Exclamation);
    }
    return result;
}

} // namespace gelvane
