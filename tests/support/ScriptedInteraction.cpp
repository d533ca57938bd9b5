#include "support/ScriptedInteraction.h"

namespace gelvane::test {

MsgResult ScriptedInteraction::MessageBox(const std::string &text, const std::string &title, MsgIcon icon,
                                          MsgButtons buttons) {
    m_messages.push_back({text, title, icon, buttons});
    if (!m_answers.empty()) {
        const MsgResult r = m_answers.front();
        m_answers.pop_front();
        return r;
    }
    switch (buttons) {
    case MsgButtons::YesNo:
    case MsgButtons::YesNoCancel:
        return MsgResult::Yes;
    default:
        return MsgResult::OK;
    }
}

std::optional<std::string> ScriptedInteraction::InputBox(const std::string &prompt, const std::string &title,
                                                         const std::string &) {
    m_messages.push_back({prompt, title, MsgIcon::None, MsgButtons::OKCancel});
    if (m_inputs.empty())
        return std::nullopt;
    auto r = m_inputs.front();
    m_inputs.pop_front();
    return r;
}

std::optional<std::string> ScriptedInteraction::ChooseFile(const FileDialogRequest &request) {
    m_fileRequests.push_back(request);
    if (m_files.empty())
        return std::nullopt;
    auto r = m_files.front();
    m_files.pop_front();
    return r;
}

std::optional<std::string> ScriptedInteraction::ChooseFolder(const std::string &, const std::string &title) {
    m_messages.push_back({title, "ChooseFolder", MsgIcon::None, MsgButtons::OKCancel});
    if (m_folders.empty())
        return std::nullopt;
    auto r = m_folders.front();
    m_folders.pop_front();
    return r;
}

std::optional<RgbColor> ScriptedInteraction::ChooseColor(const RgbColor &) {
    if (m_colors.empty())
        return std::nullopt;
    auto r = m_colors.front();
    m_colors.pop_front();
    return r;
}

int ScriptedInteraction::ChooseMap(const std::string &wanted, const std::vector<MapCandidate> &candidates) {
    m_mapQuestions.push_back(wanted);
    m_mapCandidates.push_back(candidates);
    if (m_mapChoices.empty())
        return -1;
    const int r = m_mapChoices.front();
    m_mapChoices.pop_front();
    return r;
}

void ScriptedInteraction::ProgressShow(const std::string &, const std::string &status, int) {
    m_visible = true;
    m_progressShown = true;
    ProgressStatus(status);
}

void ScriptedInteraction::ProgressStatus(const std::string &status) {
    m_status = status;
    m_statusLines.push_back(status);
}

void ScriptedInteraction::ProgressDetail(const std::string &) {}
void ScriptedInteraction::ProgressMax(int) {}
void ScriptedInteraction::ProgressValue(int) {}

void ScriptedInteraction::ProgressClose() {
    m_visible = false;
    m_status.clear();
}

void ScriptedInteraction::DoEvents() {
    ++m_doEvents;
    if (m_cancelAt > 0 && m_doEvents >= m_cancelAt && m_visible) {
        m_status = kCancelling;
        m_cancelAt = 0;
    }
}

} // namespace gelvane::test
