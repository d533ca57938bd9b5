#include "core/maps/MapCheck.h"

#include "core/maps/MapFinder.h"
#include "core/maps/MapPaths.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"

#include <optional>

namespace gelvane {
namespace {

void ResetChecks(MapLists &finder) {
    finder.CheckedMaps.assign(1, CheckedMap{});
    finder.ScannedFolders.assign(1, std::string());
}

size_t AppendChecked(MapLists &finder, CheckedMap entry) {
    if (finder.CheckedMaps.empty())
        finder.CheckedMaps.emplace_back();
    if (finder.CheckedMaps[0].Missing.empty()) {
        finder.CheckedMaps[0] = std::move(entry);
        return 0;
    }
    finder.CheckedMaps.push_back(std::move(entry));
    return finder.CheckedMaps.size() - 1;
}

// The folder question for a map that Poser's folder doesn't hold; nothing when the user
// cancelled or named no existing folder.
std::optional<std::string> AskWhereToLook(Session &session, std::string_view path) {
    const std::string &poser = session.settings().PoserFolder;
    std::string start = poser + "\\Runtime\\Textures";
    if (!FolderExists(start))
        start = poser;
    start = StripTrailingBackslash(start);
    const std::string shown = ResolvePath(start).value_or(start);
    auto answer = session.ui().ChooseFolder(shown, "Look for " + MapFileName(path) + " in:");
    if (!answer || !FolderExists(*answer))
        return std::nullopt;
    return answer;
}

// Walks `root` unless this run of checks walked it already, and keeps the lists on disk.
void ScanOnce(Session &session, const std::string &root) {
    MapLists &finder = session.Maps;
    if (IsFolderScanned(session, root))
        return;
    ScanFolder(session, root);
    SaveMapLists(session); // a read-only state folder only costs the next run its cache
    if (finder.ScannedFolders.empty())
        finder.ScannedFolders.emplace_back();
    if (finder.ScannedFolders[0].empty())
        finder.ScannedFolders[0] = root;
    else
        finder.ScannedFolders.push_back(root);
}

} // namespace

std::string &MapFieldText(Material &material, MapField field) {
    switch (field) {
    case MapField::Bump:
        return material.bumpMap;
    case MapField::Reflection:
        return material.reflectionMap;
    case MapField::Transparency:
        return material.transparencyMap;
    case MapField::Texture:
        break;
    }
    return material.textureMap;
}

int16_t IndexOfCheckedMap(const Session &session, std::string_view fullPath) {
    const auto &checked = session.Maps.CheckedMaps;
    for (size_t i = 0; i < checked.size(); ++i)
        if (EqualsNoCase(checked[i].Missing, fullPath))
            return static_cast<int16_t>(i);
    return -1;
}

bool IsFolderScanned(const Session &session, std::string_view folder) {
    const auto &scanned = session.Maps.ScannedFolders;
    if (scanned.empty() || scanned[0].empty())
        return false;
    for (const std::string &entry : scanned)
        if (EqualsNoCase(entry, folder))
            return true;
    return false;
}

bool FixMapReference(Session &session, Material &material, MapField field) {
    const Settings &settings = session.settings();
    Interaction &ui = session.ui();
    MapLists &finder = session.Maps;
    const std::string &poser = settings.PoserFolder;
    const bool fullPaths = session.View.chkTexture;
    std::string &text = MapFieldText(material, field);
    const std::string path = text;
    // A material without this map has nothing to repair; searching for an empty name
    // would only ask the user about nothing.
    if (Trim(path).empty())
        return true;

    const std::string fullPath = FullMapPath(poser, path);
    std::string newText;
    const bool noMap = IsNoMap(path);
    if (noMap || MapFileExists(poser, path)) {
        // A working reference: rewrite it to the form "Use full map paths" asks for.
        if (fullPaths && !noMap)
            newText = LocateMapFile(poser, fullPath).value_or(fullPath);
        else
            newText = StoredMapReference(session, path);
    } else {
        const int16_t known = IndexOfCheckedMap(session, fullPath);
        std::string found;
        if (known != -1) {
            found = finder.CheckedMaps[static_cast<size_t>(known)].Replacement;
            // An earlier question for this map was cancelled: leave the reference alone
            // rather than blank it; a remembered "no map" answer stays "NO_MAP".
            if (found.empty())
                found = path;
            else if (IsNoMap(found))
                found = "NO_MAP";
        } else {
            found = FindFile(session, path);
        }
        if (known == -1 && LCase(found) == LCase(path)) {
            // Nothing knows the file: walk a folder once, then ask the finder again.
            const size_t entry = AppendChecked(finder, CheckedMap{fullPath, {}});
            ui.ProgressShow("Please wait", "Scanning folders...", -1);
            // A Windows path into a runtime may be Poser's own, so Poser's folder is searched
            // first; it is asked about like any outside path when that finds nothing.
            const bool windowsRuntime = !WindowsPoserPart(path).empty();
            const bool outside = LCase(FullMapPath(poser, LCase(path))).find(LCase(poser)) == std::string::npos &&
                                 !StartsWith(path, ":") && !StartsWith(path, "\\") && !windowsRuntime;
            std::string root;
            if (outside) {
                const auto answer = AskWhereToLook(session, path);
                if (!answer) {
                    ui.ProgressClose();
                    return false;
                }
                root = *answer;
            } else {
                root = poser + "\\Runtime\\Textures";
                if (!FolderExists(root))
                    root = poser;
                if (!FolderExists(root)) {
                    ui.ProgressClose();
                    ui.MessageBox("The Default Poser\r\nfolder preference hasn't been set up correctly.", kProgramTitle,
                                  MsgIcon::Exclamation);
                    return false;
                }
            }
            ScanOnce(session, root);
            ui.ProgressClose();
            found = FindFile(session, path);
            // No file of that name (a choice answered "NO_MAP" is an answer, not a miss).
            if (windowsRuntime && finder.ChosenMapIndex == 0 && !MapFileExists(poser, found)) {
                ui.ProgressShow("Please wait", "Scanning folders...", -1);
                const auto answer = AskWhereToLook(session, path);
                if (!answer) {
                    ui.ProgressClose();
                    return false;
                }
                ScanOnce(session, *answer);
                ui.ProgressClose();
                found = FindFile(session, path);
            }
            finder.CheckedMaps[entry].Replacement = FullMapPath(poser, found);
        } else {
            const int16_t index = IndexOfCheckedMap(session, fullPath);
            if (index < 0) {
                // A "no map" answer is remembered too, so that it is given once per map.
                if (IsNoMap(found) || MapFileExists(poser, found))
                    AppendChecked(finder, CheckedMap{fullPath, FullMapPath(poser, found)});
            } else {
                const std::string &replacement = finder.CheckedMaps[static_cast<size_t>(index)].Replacement;
                if (!replacement.empty() && MapFileExists(poser, replacement))
                    found = replacement;
            }
        }
        newText = StoredMapReference(session, found);
        // The repaired map's picture, so that the material shows it at once.
        if (settings.MainThumb && session.LoadThumbNail)
            if (const auto file = LocateMapReference(poser, newText))
                session.LoadThumbNail(*file);
    }
    text = newText;
    session.FileModified = true;
    return true;
}

int FixMaps(Session &session, int figureIndex, const std::vector<int> &materials, MapField field) {
    if (!session.Maps.CheckingMaps)
        ResetChecks(session.Maps);
    if (figureIndex < 0 || static_cast<size_t>(figureIndex) >= session.Figures.size())
        return 0;
    auto &list = session.Figures[static_cast<size_t>(figureIndex)].Materials;
    int treated = 0;
    for (const int index : materials) {
        if (index < 0 || static_cast<size_t>(index) >= list.size())
            continue;
        if (!FixMapReference(session, list[static_cast<size_t>(index)], field))
            break;
        ++treated;
    }
    return treated;
}

void CheckMapReferences(Session &session) {
    if (session.Options.chkNoMaterialData || !session.settings().AutoCorrect)
        return;
    Interaction &ui = session.ui();
    const int steps = static_cast<int>(session.Figures.size()) * 4;
    ui.ProgressShow(" Please wait", "Checking map references...", steps);
    ui.ProgressValue(0);
    ui.DoEvents();
    ResetChecks(session.Maps);
    session.Maps.CheckingMaps = true;
    int bar = 0;
    for (size_t i = 0; i < session.Figures.size(); ++i) {
        session.View.cmbFiguresIndex = static_cast<int>(i);
        // "Select all": every row of the material list.
        std::vector<int> all;
        if (!IsEmptyList(session.Figures[i].Materials))
            for (size_t m = 0; m < session.Figures[i].Materials.size(); ++m)
                all.push_back(static_cast<int>(m));
        for (const MapField field : {MapField::Texture, MapField::Bump, MapField::Reflection, MapField::Transparency}) {
            FixMaps(session, static_cast<int>(i), all, field);
            ui.ProgressValue(++bar);
            ui.DoEvents();
        }
    }
    session.Maps.CheckingMaps = false;
    session.View.cmbFiguresIndex = 0;
    ui.ProgressClose();
}

} // namespace gelvane
