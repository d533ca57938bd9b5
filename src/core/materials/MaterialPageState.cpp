#include "core/materials/MaterialPageState.h"

#include "core/maps/MapPaths.h"
#include "core/model/Numbers.h"
#include "core/model/Settings.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace gelvane {

namespace {

// SCR(0) to SCR(6) with the value each starts at.
struct BarRow {
    BarRange Range;
    int Initial;
};
constexpr BarRow kBars[7] = {
    {{1, 100, 3}, 100}, {{0, 100, 3}, 0},      {{0, 100, 3}, 0},   {{0, 1000, 30}, 0},
    {{0, 100, 3}, 100}, {{-100, 100, 4}, 100}, {{0, 100, 3}, 100},
};

// The bar of box TXT(1) to TXT(7) is SCR(box - 1); SCR(3) holds hundredths.
constexpr int kFalloffBox = 4;
constexpr int kSignedBox = 6;

std::string BarText(int bar, int value) {
    return bar == kFalloffBox - 1 ? NumberText(value / 100.0) : std::to_string(value);
}

// The number a box's text begins with; nothing when it is beyond a 64-bit float, which
// the range guards then treat as out of range.
std::optional<double> BoxNumber(std::string_view text) {
    try {
        return NumberValue(text);
    } catch (const Failure &) {
        return std::nullopt;
    }
}

bool InRange(const std::optional<double> &value, double minimum, double maximum) {
    return value && *value >= minimum && *value <= maximum;
}

Rgb &SwatchField(Material &material, int index) {
    switch (index) {
    case 1:
        return material.KsColor;
    case 2:
        return material.KaColor;
    case 3:
        return material.ReflectionColor;
    default:
        return material.KdColor;
    }
}

void SetBoxText(Session &session, int index, const std::string &text);

// A bar's change: its box shows the new value.
void SetBar(Session &session, int bar, int value) {
    MaterialPageState &page = MaterialPageOf(session);
    const BarRange range = kBars[bar].Range;
    value = std::clamp(value, range.Minimum, range.Maximum);
    if (page.SCR[static_cast<size_t>(bar)] == value)
        return; // an unchanged bar raises no change, so the typed text stays
    page.SCR[static_cast<size_t>(bar)] = value;
    SetBoxText(session, bar + 1, BarText(bar, value));
}

// A number box's change handling; each correction of the text runs it again, nested,
// and the outer run goes on with the text as the inner one left it.
void NumberBoxChanged(Session &session, int index) {
    const std::string &text = session.View.TXT[static_cast<size_t>(index)];
    const int bar = index - 1;
    const BarRange range = kBars[bar].Range;
    const std::string minimum = std::to_string(range.Minimum);
    if (index != kSignedBox && !IsNumeric(text))
        SetBoxText(session, index, minimum);
    const size_t lastMinus = text.rfind('-');
    if ((lastMinus != std::string::npos && lastMinus >= 1) ||
        (index == kSignedBox && !IsNumeric(Replace(text, "-", "0"))))
        SetBoxText(session, index, "0");
    if (index != kFalloffBox) {
        if (!InRange(BoxNumber(text), range.Minimum, range.Maximum))
            SetBoxText(session, index, minimum);
        const std::optional<double> value = BoxNumber(text);
        SetBar(session, bar, value ? static_cast<int>(RoundHalfEven(*value)) : range.Minimum);
        return;
    }
    if (!InRange(BoxNumber(text), 0.0, 10.0))
        SetBoxText(session, index, "0");
    if (const auto value = BoxNumber(text); !value || *value * 100 > range.Maximum)
        SetBoxText(session, index, "0");
    const std::optional<double> value = BoxNumber(NumberTextOfText(text));
    SetBar(session, bar, value ? static_cast<int>(RoundHalfEven(*value * 100)) : range.Minimum);
}

void SetBoxText(Session &session, int index, const std::string &text) {
    std::string &box = session.View.TXT[static_cast<size_t>(index)];
    if (box == text)
        return; // a box raises no change for the text it holds already
    box = text;
    if (index >= 1 && index <= 7)
        NumberBoxChanged(session, index);
}

// The presentation follows the flag: the disabled one exactly when the flag is False.
void MatchPresentation(Session &session, int property, bool flag) {
    if (MaterialPageOf(session).DisabledLook[static_cast<size_t>(property)] == flag)
        ToggleProperty(session, property);
}

bool PageEnabled(const Session &session) {
    return session.View.MaterialControlsEnabled && !session.Options.chkNoMaterialData;
}

const MaterialPageState *PageOf(const Session &session) {
    // Only MaterialPageOf makes the part, so it is always of this type.
    return static_cast<const MaterialPageState *>(session.MaterialPage.get());
}

Material *MaterialAtRow(Session &session, int row) {
    Figure *figure = ShownFigure(session);
    if (!figure || row < 0 || row >= static_cast<int>(figure->Materials.size()))
        return nullptr;
    return &figure->Materials[static_cast<size_t>(row)];
}

} // namespace

bool &PropertyFlag(Material &m, int property) {
    bool *const flags[kPropertyCount] = {
        &m.KdColorEnabled,
        &m.KsColorEnabled,
        &m.KaColorEnabled,
        &m.ReflectionColorEnabled,
        &m.NsExponentEnabled,
        &m.tMinEnabled,
        &m.tMaxEnabled,
        &m.tExpoEnabled,
        &m.textureMapEnabled,
        &m.bumpMapEnabled,
        &m.reflectionMapEnabled,
        &m.transparencyMapEnabled,
        &m.TextureColorEnabled,
        &m.bumpStrengthEnabled,
        &m.reflectionStrengthEnabled,
        &m.ksIgnoreTextureEnabled,
        &m.reflectThruLightsEnabled,
        &m.reflectThruKdEnabled,
    };
    return *flags[std::clamp(property, 0, kPropertyCount - 1)];
}

int PropertyOfCommand(int index) {
    if (index >= 2 && index <= 13)
        return kTextureMap + (index - 2) % 4; // No Map, Open, Browse
    if (index >= 14 && index <= 17)
        return kNsExponent + index - 14;
    if (index >= 18 && index <= 21)
        return kTextureMap + index - 18;
    if (index >= 22 && index <= 24)
        return kTextureColor + index - 22;
    if (index >= 25 && index <= 28)
        return kTextureMap + index - 25; // Fix
    return -1;
}

int PropertyOfBox(int index) {
    if (index >= 1 && index <= 4)
        return kNsExponent + index - 1;
    if (index >= 5 && index <= 7)
        return kTextureColor + index - 5;
    if (index >= 8 && index <= 11)
        return kTextureMap + index - 8;
    return -1;
}

int PropertyOfBar(int index) {
    return index >= 0 && index <= 6 ? PropertyOfBox(index + 1) : -1;
}

BarRange BarRangeOf(int bar) {
    return kBars[std::clamp(bar, 0, 6)].Range;
}

MaterialPageState::MaterialPageState() {
    for (size_t i = 0; i < SCR.size(); ++i)
        SCR[i] = kBars[i].Initial;
    SHP.fill(Rgb{192, 192, 192});
}

void MaterialPageState::MaterialListShown(Session &session) {
    const bool rows = !session.View.lstMaterials.empty();
    lstMaterials_Click(session, rows ? std::vector<int>{0} : std::vector<int>{}, session.View.lstMaterialsIndex);
}

void MaterialPageState::WindowReset(Session &session) {
    for (int p = 0; p < kPropertyCount; ++p)
        if (DisabledLook[static_cast<size_t>(p)])
            ToggleProperty(session, p);
    SelectedMaterials.clear();
    MapMissing.fill(false);
}

MaterialPageState &MaterialPageOf(Session &session) {
    if (!session.MaterialPage) {
        session.MaterialPage = std::make_unique<MaterialPageState>();
        for (size_t i = 1; i <= 7; ++i)
            if (session.View.TXT[i].empty())
                session.View.TXT[i] = BarText(static_cast<int>(i) - 1, kBars[i - 1].Initial);
        const int index = session.View.lstMaterialsIndex;
        if (index >= 0 && index < static_cast<int>(session.View.lstMaterials.size()))
            lstMaterials_Click(session, {index}, index);
    }
    return static_cast<MaterialPageState &>(*session.MaterialPage);
}

MaterialControls MaterialControlsOf(const Session &session) {
    const ViewState &view = session.View;
    const bool hasRows = !session.cmbFigures.empty();
    const bool materialsOn = !session.Options.chkNoMaterialData;
    const bool page = PageEnabled(session);
    MaterialControls c;
    c.cmbFigures = hasRows && view.cmbFiguresEnabled && materialsOn;
    c.cmdDelete = hasRows && view.cmdDeleteEnabled && materialsOn;
    c.lstMaterials = page;
    // Templates can be chosen while nothing is loaded, not while the materials are switched off.
    c.Combo1 = materialsOn && (view.MaterialControlsEnabled || !hasRows);
    const MaterialPageState *state = PageOf(session);
    const bool anySelected = state && !state->SelectedMaterials.empty();
    c.cmdInvertSel = c.cmdDeleteMaterials = page && anySelected;
    const bool objectChosen =
        view.cmbFiguresIndex >= 0 && view.cmbFiguresIndex < static_cast<int>(session.cmbFigures.size());
    c.cmdNewMat = view.cmdNewMatEnabled && c.cmbFigures && objectChosen;
    c.cmdCreateMat = view.cmdCreateMatEnabled && c.cmbFigures && objectChosen;
    // A switched-off page shows every property in its enabled presentation.
    for (int p = 0; p < kPropertyCount; ++p)
        c.DisabledLook[static_cast<size_t>(p)] = page && state && state->DisabledLook[static_cast<size_t>(p)];
    const auto on = [&](int property) {
        return page && (property < 0 || !c.DisabledLook[static_cast<size_t>(property)]);
    };
    for (int i = 0; i < 29; ++i)
        c.cmd[static_cast<size_t>(i)] = i == 1 ? c.cmdDelete : on(PropertyOfCommand(i));
    for (int i = 1; i < 12; ++i)
        c.TXT[static_cast<size_t>(i)] = on(PropertyOfBox(i));
    for (int i = 0; i < 7; ++i)
        c.SCR[static_cast<size_t>(i)] = on(PropertyOfBar(i));
    for (int i = 0; i < 4; ++i)
        c.SHP[static_cast<size_t>(i)] = on(i);
    for (int i = 0; i < 3; ++i)
        c.Checks[static_cast<size_t>(i)] = on(kKsIgnoreTexture + i);
    return c;
}

void cmbFigures_Click(Session &session, int row) {
    MaterialPageOf(session); // the page hears the list refill below
    ViewState &view = session.View;
    view.cmbFiguresIndex = row;
    if (row >= 0 && row < static_cast<int>(session.Figures.size())) {
        if (!view.MaterialControlsEnabled)
            EnableMaterialControls(session);
        ShowMaterialList(session);
    } else {
        DisableMaterialControls(session);
        ClearMaterialControls(session);
    }
}

void lstMaterials_Click(Session &session, const std::vector<int> &selectedRows, int focusedRow) {
    std::vector<int> selected = selectedRows;
    std::sort(selected.begin(), selected.end());
    selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
    if (!selected.empty() && !std::binary_search(selected.begin(), selected.end(), focusedRow))
        focusedRow = selected.front();
    session.View.lstMaterialsIndex = focusedRow;
    MaterialPageOf(session).SelectedMaterials = std::move(selected);
    ShowSelectedMaterial(session);
}

std::vector<int> GetSelectedMaterials(Session &session) {
    std::vector<int> rows;
    const Figure *figure = ShownFigure(session);
    if (!figure)
        return rows;
    const int count = static_cast<int>(std::min(figure->Materials.size(), session.View.lstMaterials.size()));
    for (const int row : MaterialPageOf(session).SelectedMaterials)
        if (row >= 0 && row < count)
            rows.push_back(row);
    return rows;
}

const Material *ShownMaterial(const Session &session) {
    if (!MaterialControlsOf(session).lstMaterials)
        return nullptr;
    const int row = session.View.cmbFiguresIndex;
    const int index = session.View.lstMaterialsIndex;
    if (row < 0 || row >= static_cast<int>(session.Figures.size()))
        return nullptr;
    const auto &materials = session.Figures[static_cast<size_t>(row)].Materials;
    return index >= 0 && index < static_cast<int>(materials.size()) ? &materials[static_cast<size_t>(index)] : nullptr;
}

Figure *ShownFigure(Session &session) {
    const int row = session.View.cmbFiguresIndex;
    if (row < 0 || row >= static_cast<int>(session.Figures.size()))
        return nullptr;
    return &session.Figures[static_cast<size_t>(row)];
}

void ShowThumbnails(Session &session) {
    const Material *material = ShownMaterial(session);
    for (size_t i = 0; i < session.View.imgThumb.size(); ++i) {
        std::string &shown = session.View.imgThumb[i];
        shown.clear();
        if (!material)
            continue;
        const std::string &field = i == 0   ? material->textureMap
                                   : i == 1 ? material->bumpMap
                                   : i == 2 ? material->reflectionMap
                                            : material->transparencyMap;
        // Pictures are kept under the file found, whatever form the reference has.
        if (!field.empty() && !IsNoMap(field))
            shown = LocateMapReference(session.settings().PoserFolder, field)
                        .value_or(FullMapPath(session.settings().PoserFolder, field));
    }
}

void chkTexture_Click(Session &session, bool checked) {
    session.View.chkTexture = checked;
}

void ShowSelectedMaterial(Session &session) {
    ShowThumbnails(session);
    // The shown material is the one at the list index; that row may not be selected.
    Material *material = ShownMaterial(session) ? MaterialAtRow(session, session.View.lstMaterialsIndex) : nullptr;
    if (!material)
        return;
    MaterialPageState &page = MaterialPageOf(session);
    session.EventsEnabled = false;
    for (const int swatch : {0, 2, 1, 3}) {
        MatchPresentation(session, swatch, PropertyFlag(*material, swatch));
        page.SHP[static_cast<size_t>(swatch)] = SwatchField(*material, swatch);
    }
    const std::string numbers[7] = {
        std::to_string(material->NsExponent), std::to_string(material->tMin), std::to_string(material->tMax),
        NumberText(material->tExpo),          material->TextureColor,         material->bumpStrength,
        material->reflectionStrength,
    };
    for (int box = 1; box <= 7; ++box) {
        const int property = PropertyOfBox(box);
        MatchPresentation(session, property, PropertyFlag(*material, property));
        SetBoxText(session, box, numbers[box - 1]);
    }
    const std::string *maps[4] = {&material->textureMap, &material->bumpMap, &material->reflectionMap,
                                  &material->transparencyMap};
    for (int k = 0; k < 4; ++k) {
        MatchPresentation(session, kTextureMap + k, PropertyFlag(*material, kTextureMap + k));
        const std::string &field = *maps[k];
        page.MapMissing[static_cast<size_t>(k)] =
            LCase(field) != "no_map" && !MapFileExists(session.settings().PoserFolder, field);
        SetBoxText(session, 8 + k, field);
    }
    page.Checks.fill(false);
    const bool checks[3] = {!material->ksIgnoreTexture, material->reflectThruLights, material->reflectThruKd};
    for (int k = 0; k < 3; ++k) {
        MatchPresentation(session, kKsIgnoreTexture + k, PropertyFlag(*material, kKsIgnoreTexture + k));
        page.Checks[static_cast<size_t>(k)] = checks[k];
    }
    session.EventsEnabled = true;
}

void MaterialsTab_Click(Session &session) {
    if (PageEnabled(session))
        ShowSelectedMaterial(session);
}

void EnableMaterialControls(Session &session) {
    session.View.EnableMaterialControls();
}

void DisableMaterialControls(Session &session) {
    MaterialPageState &page = MaterialPageOf(session);
    for (int p = 0; p < kPropertyCount; ++p)
        if (page.DisabledLook[static_cast<size_t>(p)])
            ToggleProperty(session, p);
    session.View.DisableMaterialControls();
}

void ClearMaterialControls(Session &session) {
    MaterialPageState &page = MaterialPageOf(session);
    session.View.ClearMaterialControls();
    page.SelectedMaterials.clear();
    page.MapMissing.fill(false);
    // The emptied number boxes fall back by their own rule.
    for (int box = 1; box <= 7; ++box)
        NumberBoxChanged(session, box);
}

void ToggleProperty(Session &session, int property) {
    if (property < 0 || property >= kPropertyCount)
        return;
    session.FileModified = true;
    bool &look = MaterialPageOf(session).DisabledLook[static_cast<size_t>(property)];
    look = !look;
}

void lblX_DblClick(Session &session, int property) {
    if (property < 0 || property >= kPropertyCount || !PageEnabled(session) ||
        MaterialPageOf(session).DisabledLook[static_cast<size_t>(property)])
        return; // the label isn't there to be clicked
    if ((property == kKdColor || property == kKsColor) && session.Options.PoserFormatP5) {
        session.ui().MessageBox(property == kKdColor ? kObjectColorP5Message : kHighlightColorP5Message, kProgramTitle,
                                MsgIcon::Exclamation);
        return;
    }
    ToggleProperty(session, property);
    for (const int row : GetSelectedMaterials(session))
        PropertyFlag(*MaterialAtRow(session, row), property) = false;
}

void lblCloseX_DblClick(Session &session, int property) {
    if (property < 0 || property >= kPropertyCount || !PageEnabled(session) ||
        !MaterialPageOf(session).DisabledLook[static_cast<size_t>(property)])
        return;
    ToggleProperty(session, property);
    for (const int row : GetSelectedMaterials(session))
        PropertyFlag(*MaterialAtRow(session, row), property) = true;
}

bool IsNumeric(std::string_view text) {
    text = Trim(text);
    size_t i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-'))
        ++i;
    int digits = 0;
    int marks = 0;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9')
            ++digits;
        else if ((c == '.' || c == ',') && marks == 0)
            ++marks;
        else
            break;
    }
    if (digits == 0)
        return false;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E' || text[i] == 'd' || text[i] == 'D')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-'))
            ++i;
        const size_t start = i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9')
            ++i;
        if (i == start)
            return false;
    }
    return i == text.size();
}

void TXT_Change(Session &session, int index, const std::string &text) {
    if (index < 1 || index > 11)
        return; // TXT(0), the version box, belongs to the save options
    MaterialPageOf(session);
    SetBoxText(session, index, text);
}

void SCR_Change(Session &session, int index, int value) {
    if (index < 0 || index > 6)
        return;
    SetBar(session, index, value);
}

void CheckBox_Click(Session &session, int check) {
    if (!session.EventsEnabled || check < 0 || check > 2 ||
        !MaterialControlsOf(session).Checks[static_cast<size_t>(check)])
        return;
    MaterialPageState &page = MaterialPageOf(session);
    page.Checks[static_cast<size_t>(check)] = !page.Checks[static_cast<size_t>(check)];
    bool Material::*const fields[3] = {&Material::ksIgnoreTexture, &Material::reflectThruLights,
                                       &Material::reflectThruKd};
    for (const int row : GetSelectedMaterials(session)) {
        bool &field = MaterialAtRow(session, row)->*fields[check];
        field = !field;
    }
    session.FileModified = true;
}

void SHP_Click(Session &session, int index) {
    if (index < 0 || index > 3 || !MaterialControlsOf(session).SHP[static_cast<size_t>(index)])
        return;
    MaterialPageState &page = MaterialPageOf(session);
    Rgb &swatch = page.SHP[static_cast<size_t>(index)];
    const std::optional<RgbColor> chosen = session.ui().ChooseColor({swatch.Red, swatch.Green, swatch.Blue});
    if (!chosen)
        return;
    const auto component = [](int value) { return static_cast<int16_t>(std::clamp(value, 0, 255)); };
    swatch = Rgb{component(chosen->Red), component(chosen->Green), component(chosen->Blue)};
    for (const int row : GetSelectedMaterials(session))
        SwatchField(*MaterialAtRow(session, row), index) = swatch;
    session.FileModified = true;
}

} // namespace gelvane
