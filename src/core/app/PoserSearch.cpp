#include "core/app/PoserSearch.h"

#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <utility>

namespace fs = std::filesystem;

namespace gelvane {

namespace {

// Levels below a start folder at which an installation or library folder may stand:
// "Program Files/Vendor/Poser 7/Runtime", "Documents/DAZ 3D/My Library/Runtime".
constexpr int kMaxDepth = 3;
// Folders listed at most in one search; a Documents folder with many projects ends the
// walk early rather than slowing the start.
constexpr int kMaxFolders = 4000;

struct Walk {
    int Listed = 0;
    std::vector<std::string> Found;
};

// Lists `start` breadth first down to kMaxDepth, noting each folder that holds "Runtime";
// such a folder isn't walked further.
void WalkForRuntime(Walk &walk, const std::string &start) {
    std::vector<std::pair<std::string, int>> level{{start, 0}};
    for (size_t next = 0; next < level.size() && walk.Listed < kMaxFolders; ++next) {
        const auto [folder, depth] = level[next];
        ++walk.Listed;
        std::vector<std::string> subs;
        bool holdsRuntime = false;
        std::error_code ec;
        for (fs::directory_iterator it(folder, fs::directory_options::skip_permission_denied, ec), end;
             !ec && it != end; it.increment(ec)) {
            std::error_code typeError;
            if (!it->is_directory(typeError))
                continue;
            const std::string name = it->path().filename().string();
            if (EqualsNoCase(name, "runtime"))
                holdsRuntime = true;
            else if (!name.starts_with(".") && !it->is_symlink(typeError))
                subs.push_back(name);
        }
        if (holdsRuntime) {
            walk.Found.push_back(folder);
            continue;
        }
        if (depth >= kMaxDepth)
            continue;
        std::sort(subs.begin(), subs.end());
        for (const std::string &sub : subs)
            level.emplace_back(folder + "/" + sub, depth + 1);
    }
}

bool HoldsPoserExe(const std::string &folder) {
    return FileExists(JoinPath(folder, "Poser.exe"));
}

} // namespace

PoserSearchPlaces DefaultPoserSearchPlaces() {
    PoserSearchPlaces places;
    if (const char *prefix = std::getenv("WINEPREFIX"); prefix && *prefix)
        places.WinePrefixes.emplace_back(prefix);
    if (const char *home = std::getenv("HOME"); home && *home) {
        places.WinePrefixes.push_back(std::string(home) + "/.wine");
        places.Documents = std::string(home) + "/Documents";
    }
    return places;
}

std::vector<std::string> FindPoserFolders(const PoserSearchPlaces &places) {
    Walk walk;
    for (const std::string &prefix : places.WinePrefixes) {
        const auto driveC = ResolveFolder(JoinPath(prefix, "drive_c"));
        if (!driveC)
            continue;
        std::vector<std::string> programFolders;
        std::error_code ec;
        for (fs::directory_iterator it(*driveC, ec), end; !ec && it != end; it.increment(ec)) {
            std::error_code typeError;
            const std::string name = it->path().filename().string();
            if (it->is_directory(typeError) && LCase(name).starts_with("program files"))
                programFolders.push_back(*driveC + "/" + name);
        }
        std::sort(programFolders.begin(), programFolders.end());
        for (const std::string &folder : programFolders)
            WalkForRuntime(walk, folder);
    }
    if (!places.Documents.empty())
        if (const auto documents = ResolveFolder(places.Documents))
            WalkForRuntime(walk, *documents);

    // One entry per real folder (a WINEPREFIX that is ~/.wine is searched once).
    std::vector<std::string> found;
    std::set<std::string> seen;
    for (const std::string &folder : walk.Found) {
        std::error_code ec;
        const fs::path real = fs::canonical(folder, ec);
        if (seen.insert(ec ? folder : real.string()).second)
            found.push_back(folder);
    }
    std::stable_partition(found.begin(), found.end(), HoldsPoserExe);
    return found;
}

std::string AskPoserFolder(Interaction &ui, const std::vector<std::string> &found, bool firstStart) {
    for (const std::string &folder : found)
        if (ui.MessageBox("Is " + folder + "\r\n" + "your Poser directory?", "Default Poser folder", MsgIcon::None,
                          MsgButtons::YesNo) == MsgResult::Yes)
            return folder;
    std::optional<std::string> chosen;
    if (found.empty() && firstStart) {
        const char *home = std::getenv("HOME");
        chosen = ui.ChooseFolder(home ? home : "/", "Where is Poser's folder (the one that holds Runtime)?");
        if (chosen)
            chosen = ResolveFolder(*chosen);
    }
    if (!chosen) {
        if (!found.empty() || firstStart)
            ui.MessageBox(std::string("You can manually choose your Poser folder later") + "\r\n" +
                          "in the Preferences form (in the Settings menu).");
        return {};
    }
    // The Runtime folder itself stands for the folder that holds it.
    if (EqualsNoCase(FileNamePart(*chosen), "runtime") && !FolderPart(*chosen).empty())
        return std::string(FolderPart(*chosen));
    return *chosen;
}

} // namespace gelvane
