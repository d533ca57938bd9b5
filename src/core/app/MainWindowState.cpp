#include "core/app/MainWindowState.h"

#include "core/model/Failure.h"
#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/platform/Interaction.h"
#include "core/platform/Paths.h"

namespace gelvane {

namespace {

struct KindRow {
    const char *Extension;
    OpenMenu Menu;
};

// The extensions that open a file from outside; a character takes figure selection.
constexpr KindRow kOutsideKinds[] = {
    {"cr2", OpenMenu::mnuMultiFigure}, {"pp2", OpenMenu::mnuOpenPP2}, {"hr2", OpenMenu::mnuOpenHR2},
    {"pz2", OpenMenu::mnuOpenPZ2},     {"cm2", OpenMenu::mnuOpenCM2}, {"fc2", OpenMenu::mnuOpenFC2},
    {"hd2", OpenMenu::mnuOpenHD2},     {"lt2", OpenMenu::mnuOpenLT2},
};

OpenMenu MenuOfExtension(std::string_view extension) {
    for (const KindRow &row : kOutsideKinds)
        if (extension == row.Extension)
            return row.Menu;
    return OpenMenu::None;
}

} // namespace

int KindOfMenu(OpenMenu menu) {
    switch (menu) {
    case OpenMenu::mnuOpenCR2:
    case OpenMenu::mnuOpenCR2Props:
    case OpenMenu::mnuMultiFigure:
        return KindCR2;
    case OpenMenu::mnuOpenPP2:
        return KindPP2;
    case OpenMenu::mnuOpenHR2:
        return KindHR2;
    case OpenMenu::mnuOpenCM2:
        return KindCM2;
    case OpenMenu::mnuOpenFC2:
        return KindFC2;
    case OpenMenu::mnuOpenHD2:
        return KindHD2;
    case OpenMenu::mnuOpenLT2:
        return KindLT2;
    case OpenMenu::mnuOpenPZ2:
    case OpenMenu::None:
        break;
    }
    return KindPZ2;
}

OpenMenu MenuOfCommandText(std::string_view commandText) {
    const std::string unquoted = Replace(commandText, "\"", "");
    const std::string_view path = Trim(unquoted);
    return MenuOfExtension(LCase(Right(path, 3)));
}

OpenMenu MenuOfDroppedFile(std::string_view path) {
    std::string_view tail = Right(path, 4);
    if (!tail.empty() && tail.front() == '.')
        tail.remove_prefix(1);
    return MenuOfExtension(LCase(tail));
}

OpenMenu BeginDrop(Session &session, const std::string &path) {
    const OpenMenu menu = MenuOfDroppedFile(path);
    if (menu == OpenMenu::None)
        return menu; // the dialog object keeps its earlier name
    session.CommandLineOpen = true;
    session.DialogFileName = path;
    return menu;
}

void ResetMainWindow(Session &session) {
    ViewState &view = session.View;
    view.MaterialControlsEnabled = false;
    view.lstMaterials.clear();
    view.lstMaterialsIndex = -1;
    view.cmbFiguresEnabled = false;
    view.mnuSaveEnabled = false;
    view.mnuSaveAsEnabled = false;
    view.mnuExportMTLEnabled = false;
    view.ChannelControlsEnabled = false;
    session.Options.txtThighLength.clear();

    session.Actors.assign(1, Actor{});
    ResetList(session.Figures);
    session.IsHairFile = false;
    session.OutputVersion.clear();
    session.FileName.clear();
    session.FileVersion.clear();
    session.FileModified = false;
}

void ShowMaterialList(Session &session) {
    ViewState &view = session.View;
    view.lstMaterials.clear();
    view.lstMaterialsIndex = -1;
    const int row = view.cmbFiguresIndex;
    if (row < 0 || row >= static_cast<int>(session.Figures.size()))
        return;
    for (const Material &material : session.Figures[static_cast<size_t>(row)].Materials)
        view.lstMaterials.push_back(material.Name);
    view.lstMaterialsIndex = 0;
}

void cmbFigures_Click(Session &session, int row) {
    ViewState &view = session.View;
    view.cmbFiguresIndex = row;
    const int upperBound = static_cast<int>(session.Figures.size()) - 1;
    if (row <= upperBound) {
        view.MaterialControlsEnabled = true;
        view.cmbFiguresEnabled = true;
        ShowMaterialList(session);
    } else {
        view.MaterialControlsEnabled = false;
        view.lstMaterials.clear();
        view.lstMaterialsIndex = -1;
    }
}

bool chkNoMaterialData_Click(Session &session, bool checked) {
    if (!session.EventsEnabled)
        return true;
    session.FileModified = true;
    SaveOptions &options = session.Options;
    ViewState &view = session.View;
    if (checked) {
        if (options.chkChannels && !session.Figures.empty() && !session.Figures[0].Name.empty()) {
            session.EventsEnabled = false;
            options.chkNoMaterialData = false;
            session.EventsEnabled = true;
            session.ui().MessageBox(kBothDisabledMessage, kProgramTitle, MsgIcon::Exclamation, MsgButtons::OK);
            return false;
        }
        options.chkNoMaterialData = true;
        view.MaterialControlsEnabled = false;
        view.cmbFiguresEnabled = false;
    } else {
        options.chkNoMaterialData = false;
        view.MaterialControlsEnabled = true;
        view.cmbFiguresEnabled = true;
        if (session.RefreshTemplateList)
            session.RefreshTemplateList();
    }
    return true;
}

bool chkChannels_Click(Session &session, bool checked) {
    if (!session.EventsEnabled)
        return true;
    session.FileModified = true;
    SaveOptions &options = session.Options;
    if (checked && options.chkNoMaterialData && !session.Actors.empty() && !session.Actors[0].Name.empty()) {
        session.EventsEnabled = false;
        options.chkChannels = false;
        session.EventsEnabled = true;
        session.ui().MessageBox(kBothDisabledMessage, kProgramTitle, MsgIcon::Exclamation, MsgButtons::OK);
        return false;
    }
    options.chkChannels = checked;
    session.View.ChannelControlsEnabled = !checked;
    return true;
}

void VersionText_Change(Session &session, const std::string &text) {
    session.Options.VersionText = text;
    try {
        session.OutputVersion = NumberText(NumberValue(text));
    } catch (const Failure &) {
        // A number beyond any float: the previous version stays.
    }
    session.FileModified = true;
}

void txtThighLength_Change(Session &session, const std::string &text) {
    std::string corrected = Replace(text, ",", ".");
    if (StartsWith(corrected, "."))
        corrected.insert(0, "0");
    bool valid = !corrected.empty() && corrected[0] >= '0' && corrected[0] <= '9';
    if (valid) {
        try {
            const double value = NumberValue(corrected);
            valid = value >= 0.0 && value <= 1.0;
        } catch (const Failure &) {
            valid = false;
        }
    }
    session.Options.txtThighLength = valid ? corrected : "0";
    session.FileModified = true;
}

bool SomethingToSave(const Session &session) {
    return !session.Options.chkChannels || !session.Options.chkNoMaterialData;
}

bool NeedsSaveQuestion(const Session &session) {
    return session.FileModified && SomethingToSave(session);
}

bool CloseSavesUnderSameName(const Session &session) {
    const std::string extension = LCase(Right(session.FileName, 4));
    return extension == ".pz2" || extension == ".cm2" || extension == ".fc2" || extension == ".lt2" ||
           extension == ".hd2";
}

std::string CaptionOf(std::string_view fileName) {
    return std::string(kProgramTitle) + " - [" + std::string(FileNamePart(fileName)) + "]";
}

} // namespace gelvane
