#include "core/app/MainWindowState.h"

#include "core/app/SaveCommands.h"
#include "core/model/Numbers.h"
#include "core/model/Session.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"

namespace gelvane {

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

bool BatchConvertMayStart(Session &session) {
    return !SomethingToSave(session) ||
           session.ui().MessageBox(kBatchQuestion, kProgramTitle, MsgIcon::None, MsgButtons::YesNo) == MsgResult::Yes;
}

bool QueryClose(Session &session) {
    if (!NeedsSaveQuestion(session))
        return true;
    switch (session.ui().MessageBox(kSaveBeforeExiting, kProgramTitle, MsgIcon::None, MsgButtons::YesNoCancel)) {
    case MsgResult::Yes:
        // A failed or cancelled save doesn't keep the window open.
        if (CloseSavesUnderSameName(session))
            mnuSave_Click(session);
        else
            mnuSaveAs_Click(session);
        return true;
    case MsgResult::No:
        return true;
    default:
        return false;
    }
}

} // namespace gelvane
