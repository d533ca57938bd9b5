#include "core/materials/MaterialCommands.h"

#include "core/maps/MapCheck.h"
#include "core/maps/MapFinder.h"
#include "core/maps/MapOpen.h"
#include "core/maps/MapPaths.h"
#include "core/materials/CreateMaterials.h"
#include "core/materials/MaterialPageState.h"
#include "core/model/Numbers.h"
#include "core/model/Settings.h"
#include "core/platform/Failure.h"
#include "core/platform/Paths.h"

#include <functional>

namespace gelvane {

namespace {

enum class Family { SelectAll, DeleteObject, NoMap, Open, Browse, ApplyNumber, ApplyPath, Fix };

struct Command {
    Family What;
    int Row; // the map row (0 texture .. 3 transparency), or the number box TXT(Row)
};

Command CommandOf(int index) {
    if (index == 0)
        return {Family::SelectAll, 0};
    if (index == 1)
        return {Family::DeleteObject, 0};
    if (index <= 5)
        return {Family::NoMap, index - 2};
    if (index <= 9)
        return {Family::Open, index - 6};
    if (index <= 13)
        return {Family::Browse, index - 10};
    if (index <= 17)
        return {Family::ApplyNumber, index - 13};
    if (index <= 21)
        return {Family::ApplyPath, index - 18};
    if (index <= 24)
        return {Family::ApplyNumber, index - 17};
    return {Family::Fix, index - 25};
}

const char *const kMapTitles[4] = {"Load Texture Map", "Load Bump Map", "Load Reflection Map", "Load Transparency Map"};

// How an Apply button writes the text of number box TXT(box) into a material. The value
// is read before any material is written, so that a failure leaves them all as they were.
std::function<void(Material &)> NumberSetter(const std::string &text, int box) {
    const double value = NumberValue(text);
    switch (box) {
    case 1:
        return [v = ToInt16(value)](Material &m) { m.NsExponent = v; };
    case 2:
        return [v = ToInt16(value)](Material &m) { m.tMin = v; };
    case 3:
        return [v = ToInt16(value)](Material &m) { m.tMax = v; };
    case 4:
        return [v = static_cast<float>(value)](Material &m) { m.tExpo = v; };
    case 5:
        return [v = NumberText(value)](Material &m) { m.TextureColor = v; };
    case 6:
        return [v = NumberText(value)](Material &m) { m.bumpStrength = v; };
    default:
        return [v = NumberText(value)](Material &m) { m.reflectionStrength = v; };
    }
}

// After a map changed, the row's thumbnail is brought into the picture cache.
void LoadRowThumbnail(Session &session, int row) {
    const std::string &key = session.View.imgThumb[static_cast<size_t>(row)];
    if (session.settings().MainThumb && session.LoadThumbNail && !key.empty() && FileExists(key))
        session.LoadThumbNail(key);
}

} // namespace

FileDialogRequest MapDialogRequest(Session &session, int index) {
    const int row = std::clamp(index - 10, 0, 3);
    std::string &last = MaterialPageOf(session).LastMapFolder;
    const std::string &mapFolder = session.settings().MapFolder;
    if (last.empty() && !mapFolder.empty() && mapFolder != "none")
        last = mapFolder;
    FileDialogRequest request;
    request.Title = kMapTitles[row];
    request.DefaultExt = index == 11 ? "bum" : "jpg";
    request.Filter = "All image files|*.jpg;*.tif;*.bmp;*.psd;*.bum|JPG Image|*.jpg|TIF Image|*.tif|BMP Image|*.bmp|"
                     "PSD Image|*.psd|BUM Image|*.bum|All files|*.*";
    request.InitialDir = last;
    request.Flags = kOpenDialogFlags;
    request.Preview = session.settings().MapThumb;
    return request;
}

void cmd_Click(Session &session, int index) {
    if (index < 0 || index > 28)
        return;
    const Command command = CommandOf(index);
    ViewState &view = session.View;
    MaterialPageState &page = MaterialPageOf(session);

    std::string browsed;
    if (command.What == Family::Browse) {
        const std::optional<std::string> chosen = session.ui().ChooseFile(MapDialogRequest(session, index));
        if (!chosen || chosen->empty())
            return;
        if (session.settings().MainThumb && session.LoadThumbNail)
            session.LoadThumbNail(*chosen);
        const size_t cut = chosen->find_last_of("/\\");
        page.LastMapFolder = cut == std::string::npos ? std::string() : chosen->substr(0, cut);
        browsed = StoredMapReference(session, *chosen);
        session.FileModified = true;
    }

    switch (command.What) {
    case Family::SelectAll:
        SelectAllMaterials(session);
        return;
    case Family::DeleteObject:
        RemoveObject(session);
        return;
    case Family::Open:
        OpenMapFile(session, view.TXT[static_cast<size_t>(8 + command.Row)]);
        return;
    default:
        break;
    }

    const std::vector<int> rows = GetSelectedMaterials(session);
    Figure *figure = ShownFigure(session);
    const auto material = [&](int row) -> Material & { return figure->Materials[static_cast<size_t>(row)]; };
    std::string &box = command.What == Family::ApplyNumber ? view.TXT[static_cast<size_t>(command.Row)]
                                                           : view.TXT[static_cast<size_t>(8 + command.Row)];
    const MapField field = static_cast<MapField>(command.Row);
    bool redraw = false;
    bool newMap = false;
    switch (command.What) {
    case Family::NoMap:
        for (const int row : rows) {
            MapFieldText(material(row), field) = "NO_MAP";
            box = "NO_MAP";
            session.FileModified = redraw = true;
        }
        break;
    case Family::Browse:
        for (const int row : rows) {
            box = browsed;
            MapFieldText(material(row), field) = browsed;
            session.FileModified = redraw = true;
        }
        break;
    case Family::ApplyNumber: {
        if (rows.empty())
            break;
        std::function<void(Material &)> apply;
        try {
            apply = NumberSetter(box, command.Row);
        } catch (const Failure &) {
            return; // a value beyond the field's type: nothing is written
        }
        for (const int row : rows)
            apply(material(row));
        session.FileModified = true;
        break;
    }
    case Family::ApplyPath:
        for (const int row : rows) {
            if (box.empty())
                continue; // "No Map" is the way to clear a map
            box = StoredMapReference(session, box);
            MapFieldText(material(row), field) = box;
            session.FileModified = redraw = newMap = true;
        }
        break;
    case Family::Fix:
        redraw = newMap = FixMaps(session, view.cmbFiguresIndex, rows, field) > 0;
        break;
    default:
        break;
    }
    if (redraw || command.What == Family::Browse) {
        ShowSelectedMaterial(session);
        if (newMap || command.What == Family::Browse)
            LoadRowThumbnail(session, command.Row);
    }
}

void TXT_Drop(Session &session, int box, const std::vector<std::string> &paths) {
    if (box < 8 || box > 11 || paths.empty() || !MaterialControlsOf(session).TXT[static_cast<size_t>(box)])
        return;
    TXT_Change(session, box, paths.front());
    cmd_Click(session, box + 10);
}

} // namespace gelvane
